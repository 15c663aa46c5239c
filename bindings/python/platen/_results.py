"""What calls give back beside documents."""

from __future__ import annotations

import os
import tempfile
from dataclasses import dataclass
from pathlib import Path
from typing import TYPE_CHECKING, Any, Callable, Dict, List, Mapping, Optional

from platen._errors import PlatenError
from platen._library import AnyPath

if TYPE_CHECKING:
    from platen._document import Document


@dataclass(frozen=True)
class Item:
    """An item as it is stored."""

    path: str
    #: "str", "num", "bool", "bin" or "block".
    type: str
    #: Empty for a block.
    text: str
    depth: int
    line: Optional[int]


@dataclass(frozen=True)
class Comparison:
    """How two documents differ by what they mean. It is true when they do.

    >>> import platen
    >>> before = platen.create_table("ctb")
    >>> after = before.copy()
    >>> bool(platen.compare(before, after))
    False
    >>> after.styles[1:9].screening = 50
    >>> difference = platen.compare(before, after)
    >>> print(difference)
    Color 1-9: screening 100 % -> 50 %
    >>> len(difference.json["differences"])
    9
    """

    #: For people: a line for each difference, equal changes gathered.
    lines: List[str]
    #: For programs: schema "platen.diff/1".
    json: Dict[str, Any]
    #: The same as it came, which `Document.apply` takes.
    text: str

    def __bool__(self) -> bool:
        return not self.json["equal"]

    def __str__(self) -> str:
        return "\n".join(self.lines)


@dataclass(frozen=True)
class Applied:
    """What became of changes."""

    made: int
    already_there: int
    #: Changes that do not fit the document, in words; they were left out.
    misfits: List[str]


@dataclass(frozen=True)
class Merged:
    """What a merge took over."""

    taken: int
    #: What both sides changed, in words; there the document keeps its own.
    conflicts: List[str]


@dataclass(frozen=True)
class Conversion:
    """A document in another form or of another kind."""

    document: Document
    #: The colours, 1 to 255, that each new style stands for.
    styles: Dict[str, List[int]]
    #: What the other kind cannot hold, in words.
    lost: List[str]


@dataclass(frozen=True)
class Assumption:
    """What a repair took for granted."""

    code: str
    #: It is certain.
    safe: bool
    message: str
    path: str
    line: Optional[int]
    offset: Optional[int]
    found: str
    taken: str

    def __str__(self) -> str:
        text = f"[{self.code}] {self.message}"
        text += f", at {self.path}" if self.path else ""
        text += f", line {self.line}" if self.line is not None else ""
        text += f", byte {self.offset}" if self.offset is not None else ""
        text += f', found "{self.found}"' if self.found else ""
        return f'{text}, taken "{self.taken}"' if self.taken else text


@dataclass(frozen=True)
class Loss:
    """What a repair could not save."""

    unit: str
    count: int
    text: str
    path: str
    line: Optional[int]
    offset: Optional[int]


@dataclass(frozen=True)
class Repair:
    """What could be saved of a damaged file. `document.save()` writes it to where it is from."""

    document: Document
    assumptions: List[Assumption]
    losses: List[Loss]


class RepairError(PlatenError):
    """Nothing could be saved, and why."""

    __module__ = "platen"

    assumptions: List[Assumption]
    losses: List[Loss]


def assumptions_of(report: Mapping[str, Any]) -> List[Assumption]:
    return [Assumption(**entry) for entry in report.get("assumptions", ())]


def losses_of(report: Mapping[str, Any]) -> List[Loss]:
    return [Loss(**entry) for entry in report.get("losses", ())]


class Chart:
    """A picture of a document, which notebooks show. It is drawn when it is asked for."""

    def __init__(self, draw: Callable[[str], str]) -> None:
        self._draw = draw

    @property
    def svg(self) -> str:
        """At true size; several pages stand below each other."""
        return self._draw("svg")

    @property
    def html(self) -> str:
        """A page that prints true sizes and needs nothing else."""
        return self._draw("html")

    @property
    def json(self) -> str:
        """The picture as data: schema "platen.scene/1"."""
        return self._draw("json")

    def save(self, path: AnyPath) -> None:
        """Writes .svg, .html or .json, by the name, whole or not at all."""
        target = Path(path)
        format = target.suffix.lower().lstrip(".")
        if format not in ("svg", "html", "json"):
            raise ValueError(f"a chart is saved as .svg, .html or .json, not {target.name!r}")
        write_whole(target, self._draw(format).encode())

    def _repr_svg_(self) -> str:
        # Notebooks put it into pages, where no declaration of XML may stand.
        svg = self.svg
        return svg[svg.index("<svg") :]


def write_whole(target: Path, data: bytes) -> None:
    """The old file stays until the new one is there."""
    handle, beside = tempfile.mkstemp(dir=target.parent, prefix=f".{target.name}.")
    try:
        with os.fdopen(handle, "wb") as file:
            file.write(data)
        mode = target.stat().st_mode & 0o777 if target.exists() else 0o666 & ~_umask()
        os.chmod(beside, mode)
        os.replace(beside, target)
    except BaseException:
        os.unlink(beside)
        raise


def _umask() -> int:
    mask = os.umask(0o077)
    os.umask(mask)
    return mask
