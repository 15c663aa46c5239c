"""Why something failed, and what was found."""

import difflib
import warnings
from dataclasses import dataclass
from typing import Any, Mapping, Optional, Tuple


class PlatenError(Exception):
    """A failure, which has changed nothing.

    >>> import platen
    >>> table = platen.create_table("ctb")
    >>> try:
    ...     table.styles[1].lineweight = 0.36
    ... except platen.PlatenError as error:
    ...     print(error.code, "|", error)
    value-invalid | lineweight cannot be "0.36": the table has no such line weight; the nearest is 0.35 mm
    """

    __module__ = "platen"

    #: A word that stays the same from release to release, such as "checksum-mismatch".
    code: str
    #: What happened, one sentence.
    message: str
    #: What to do about it, one sentence; may be empty.
    remedy: str
    #: The path of the item; may be empty.
    place: str
    #: The name that was not found; may be empty.
    wanted: str
    #: The names that are there instead.
    present: Tuple[str, ...]
    #: The file in question; may be empty.
    file: str

    def __init__(
        self,
        code: str,
        message: str,
        *,
        remedy: str = "",
        place: str = "",
        wanted: str = "",
        present: Tuple[str, ...] = (),
        file: str = "",
    ) -> None:
        super().__init__(code, message)
        self.code = code
        self.message = message
        self.remedy = remedy
        self.place = place
        self.wanted = wanted
        self.present = present
        self.file = file

    def __str__(self) -> str:
        text = f"{self.file}: {self.message}" if self.file else self.message
        near = difflib.get_close_matches(self.wanted, self.present, 1) if self.wanted else []
        if near:
            text += f'; "{near[0]}" is there'
        elif self.present:
            more = ", ..." if len(self.present) > 8 else ""
            text += f"; there are: {', '.join(self.present[:8])}{more}"
        return f"{text}; {self.remedy}" if self.remedy else text


class NotFoundError(PlatenError, KeyError):
    """What was named is not there. It is a KeyError, too."""

    __module__ = "platen"
    __str__ = PlatenError.__str__


class LossWarning(UserWarning):
    """A file holds lines of 511 characters of its code page; what is more is cut or replaced."""


def warn_of_loss(what: str, given: str, kept: str) -> None:
    """Says so when a text was not kept as it was given."""
    if kept != given:
        short = kept if len(kept) < 60 else f"{kept[:57]}..."
        warnings.warn(f'{what} was kept as "{short}"', LossWarning, stacklevel=4)


def error_from(json: Mapping[str, Any], file: str = "") -> PlatenError:
    """The exception for an object of schema "platen.error/1"."""
    code = json.get("code", "unknown")
    missing = code in ("not-found", "block-not-found", "type-missing")
    return (NotFoundError if missing else PlatenError)(
        code,
        json.get("message", "the library gave no reason"),
        remedy=json.get("remedy", ""),
        place=json.get("place", ""),
        wanted=json.get("wanted", ""),
        present=tuple(json.get("present", ())),
        file=file,
    )


@dataclass(frozen=True)
class Finding:
    """One thing that is wrong with a document, or was tolerated when it was read."""

    #: "warning" or "error".
    severity: str
    #: A word that stays the same from release to release.
    code: str
    message: str
    remedy: str
    #: The path of the item, as the document takes it; may be empty.
    path: str
    #: Of the body's text, from 1.
    line: Optional[int]
    #: In bytes.
    offset: Optional[int]
    expected: str
    found: str

    def __str__(self) -> str:
        text = f"{self.severity} [{self.code}] {self.message}"
        text += f", at {self.path}" if self.path else ""
        text += f", line {self.line}" if self.line is not None else ""
        text += f", byte {self.offset}" if self.offset is not None and self.line is None else ""
        text += f", expected {self.expected}" if self.expected else ""
        text += f", found {self.found}" if self.found else ""
        return f"{text}; {self.remedy}" if self.remedy else text
