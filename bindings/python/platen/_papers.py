"""Custom papers of plot configurations and of plot model parameters."""

from __future__ import annotations

import os
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Dict, Iterator, List, Mapping, NamedTuple, Optional, Tuple

from platen._errors import NotFoundError
from platen._library import NULL, AnyPath, Session, ffi, library, path_text, text, text_or_null


class Margins(NamedTuple):
    """What cannot be printed, in the paper's units."""

    left: float
    bottom: float
    right: float
    top: float


@dataclass(frozen=True)
class Paper:
    """A custom paper."""

    name: str
    global_name: str
    #: "mm", "in" or "px".
    units: str
    width: float
    height: float
    width_mm: Optional[float]
    height_mm: Optional[float]
    margins: Margins
    #: "parameters" (the PMP) or "configuration".
    kept_in: str


@dataclass(frozen=True)
class SavedFile:
    """A file that was written."""

    path: Path
    papers: int
    #: Items of the old file that the new one does not have.
    lost: List[str]


@dataclass(frozen=True)
class SavedPapers:
    """What a save wrote: a configuration keeps its papers in its PMP, and names that."""

    parameters: Optional[SavedFile]
    configuration: Optional[SavedFile]
    names_other_parameters: bool


class Papers(Mapping[str, Paper]):
    """The custom papers of a configuration and its PMP, or of a PMP, by their names.

    >>> import platen
    >>> platen.create_configuration("Print As PDF").save("office.pc3")
    >>> with platen.edit_papers("office.pc3") as papers:
    ...     roll = papers.add("Long roll", 914, 5000, units="mm")
    ...     papers.rename("Long roll", "Roll")
    >>> papers = platen.open_papers("office.pc3")
    >>> papers["Roll"].width, papers["Roll"].kept_in
    (914.0, 'parameters')
    """

    def __init__(self, path: AnyPath, max_body: Optional[int] = None) -> None:
        self.file = Path(path)
        self._session = Session(max_body)
        handle = library.platen_papers_open(self._session.context, path_text(path))
        if handle == NULL:
            raise self._session.failure(os.fspath(path))
        self._handle = ffi.gc(handle, library.platen_papers_destroy)

    def _list(self) -> Dict[str, Any]:
        with self._session.lock:
            listed: Dict[str, Any] = self._session.json(library.platen_papers_list(self._handle))
            return listed

    def _papers(self) -> Dict[str, Paper]:
        papers = {}
        for entry in self._list()["papers"]:
            known = {key: entry[key] for key in Paper.__dataclass_fields__ if key != "margins"}
            papers[entry["name"]] = Paper(margins=Margins(**entry["margins"]), **known)
        return papers

    def __getitem__(self, name: str) -> Paper:
        papers = self._papers()
        if name not in papers:
            raise NotFoundError(
                "not-found", f'there is no paper "{name}"', wanted=str(name), present=tuple(papers)
            )
        return papers[name]

    def __iter__(self) -> Iterator[str]:
        return iter(self._papers())

    def __len__(self) -> int:
        return len(self._papers())

    @property
    def current(self) -> Optional[str]:
        """The paper that a configuration plots on."""
        name: Optional[str] = self._list()["current"]
        return name

    @property
    def largest(self) -> Tuple[float, float]:
        """Width and height in millimetres of the largest paper that the device takes."""
        size = self._list()["largest"]
        return size["width"], size["height"]

    def _shape(
        self,
        function: Any,
        name: str,
        width: float,
        height: float,
        margins: Optional[Tuple[float, float, float, float]],
        units: Optional[str],
    ) -> Paper:
        edges = NULL if margins is None else ffi.new("double[4]", list(Margins(*margins)))
        with self._session.lock:
            self._session.done(
                function(self._handle, text(name), width, height, edges, text_or_null(units))
            )
            return self[name]

    def add(
        self,
        name: str,
        width: float,
        height: float,
        *,
        margins: Optional[Tuple[float, float, float, float]] = None,
        units: Optional[str] = None,
    ) -> Paper:
        """Adds a paper. `units` are "mm", "in" or "px", those of the device unless told; `margins`
        are left, bottom, right, top."""
        return self._shape(library.platen_papers_add, name, width, height, margins, units)

    def resize(
        self,
        name: str,
        width: float,
        height: float,
        *,
        margins: Optional[Tuple[float, float, float, float]] = None,
        units: Optional[str] = None,
    ) -> Paper:
        """Gives a paper another size; margins and units stay unless told."""
        return self._shape(library.platen_papers_resize, name, width, height, margins, units)

    def rename(self, name: str, new_name: str) -> None:
        with self._session.lock:
            self._session.done(
                library.platen_papers_rename(self._handle, text(name), text(new_name))
            )

    def remove(self, name: str) -> None:
        with self._session.lock:
            self._session.done(library.platen_papers_remove(self._handle, text(name)))

    __delitem__ = remove

    def save(self) -> SavedPapers:
        """Writes the files that are different, each whole or not at all."""
        with self._session.lock:
            buffer = library.platen_papers_save(self._handle)
            if buffer == NULL:
                raise self._session.failure(os.fspath(self.file))
            said = self._session.json(buffer)
        files = [
            entry and SavedFile(Path(entry["path"]), entry["papers"], entry["lost"])
            for entry in (said["parameters"], said["configuration"])
        ]
        return SavedPapers(files[0], files[1], said["names_other_parameters"])

    def __repr__(self) -> str:
        return f"<platen.Papers of {self.file}: {', '.join(self)}>"
