"""Plotter documents: plot style tables (CTB, STB), configurations (PC3) and parameters (PMP).

>>> import platen
>>> platen.create_table("ctb", preset="iso-0.25").save("pens.ctb")
>>> with platen.edit("pens.ctb") as table:
...     table.styles["Color_1":"Color_9"].lineweight = 0.35
...     table.styles[250].color = "#202020"
>>> platen.open("pens.ctb").styles[9].lineweight
0.35
"""

from __future__ import annotations

import os
from contextlib import contextmanager
from pathlib import Path
from typing import Any, Iterator, List, NamedTuple, Optional, Union

from platen._block import Block, Value
from platen._document import Document, document_of_bytes
from platen._errors import Finding, LossWarning, NotFoundError, PlatenError, error_from
from platen._library import (
    NULL,
    AnyPath,
    Session,
    Source,
    ffi,
    library,
    path_text,
    text,
    text_or_null,
)
from platen._lineweights import Lineweights
from platen._papers import Margins, Paper, Papers, SavedFile, SavedPapers
from platen._results import (
    Applied,
    Assumption,
    Chart,
    Comparison,
    Conversion,
    Item,
    Loss,
    Merged,
    Repair,
    RepairError,
    assumptions_of,
    losses_of,
)
from platen._styles import Selection, Style, Styles, TableStyles

__all__ = [
    "AnyPath",
    "Applied",
    "Assumption",
    "Block",
    "Chart",
    "Comparison",
    "Conversion",
    "Document",
    "Finding",
    "Item",
    "Lineweights",
    "Loss",
    "LossWarning",
    "Margins",
    "Merged",
    "NotFoundError",
    "Paper",
    "Papers",
    "PlatenError",
    "Preset",
    "Repair",
    "RepairError",
    "SavedFile",
    "SavedPapers",
    "Selection",
    "Source",
    "Style",
    "StyleSetting",
    "Styles",
    "TableStyles",
    "Value",
    "__version__",
    "compare",
    "create_configuration",
    "create_table",
    "devices",
    "edit",
    "edit_papers",
    "open",
    "open_papers",
    "palette",
    "presets",
    "repair",
    "style_settings",
]

#: Of the library that is loaded.
__version__: str = ffi.string(library.platen_version()).decode()


def open(
    source: Source, *, path: Optional[AnyPath] = None, max_body: Optional[int] = None
) -> Document:
    """Reads a file, or its bytes, in any form: compressed, JSON, or bare body text.

    Damage that can be tolerated is no failure; `Document.findings` lists it. `path` says where
    bytes are from. `max_body` is the largest body in bytes that is read, 256 MiB unless told.
    """
    if isinstance(source, bytes):
        return document_of_bytes(source, path, max_body)
    session = Session(max_body)
    handle = library.platen_document_open(session.context, path_text(source))
    if handle == NULL:
        raise session.failure(os.fspath(source))
    return Document(session, handle, source)


@contextmanager
def edit(path: AnyPath, *, max_body: Optional[int] = None) -> Iterator[Document]:
    """A document that is saved at the end, whole or not at all: after an exception the file stays
    as it was, and so it does when somebody else has written it meanwhile (a PlatenError, then, with
    the code "file-changed")."""
    document = open(path, max_body=max_body)
    yield document
    if document.changed:
        document.save()


def create_table(kind: str = "ctb", *, preset: Optional[str] = None) -> Document:
    """A new plot style table, "ctb" or "stb". `presets` lists the presets."""
    session = Session()
    handle = library.platen_document_create_table(session.context, text(kind), text_or_null(preset))
    if handle == NULL:
        raise session.failure()
    return Document(session, handle)


def create_configuration(device: str) -> Document:
    """A new plot configuration of a built-in device, such as "Print As PDF"."""
    session = Session()
    handle = library.platen_document_create_configuration(session.context, text(device))
    if handle == NULL:
        raise session.failure()
    return Document(session, handle)


def compare(before: Union[Document, Source], after: Union[Document, Source]) -> Comparison:
    """How two documents or files differ by what they mean."""
    one, other = (each if isinstance(each, Document) else open(each) for each in (before, after))
    return one.compare(other)


def repair(source: Source, *, safe_only: bool = False, path: Optional[AnyPath] = None) -> Repair:
    """Saves what can be saved of a damaged file, or raises a RepairError. With `safe_only` only
    what is certain is mended.

    >>> import platen
    >>> whole = platen.create_table("ctb").to_bytes()
    >>> mended = platen.repair(whole[:-9])
    >>> mended.document.findings()
    []
    >>> print(mended.assumptions[0].code)
    stream-truncated
    """
    data = source if isinstance(source, bytes) else Path(source).read_bytes()
    origin = path if isinstance(source, bytes) else source
    session = Session()
    report = ffi.new("platen_buffer**")
    handle = library.platen_repair(
        session.context, data, len(data), path_text(origin), safe_only, report
    )
    if handle == NULL:
        why = session.failure()
        error = RepairError(why.code, why.message, remedy=why.remedy)
    said: Any = session.json(report[0]) if report[0] != NULL else {}
    if handle == NULL:
        error.assumptions, error.losses = assumptions_of(said), losses_of(said)
        raise error
    return Repair(Document(session, handle, origin), assumptions_of(said), losses_of(said))


def open_papers(path: AnyPath, *, max_body: Optional[int] = None) -> Papers:
    """The custom papers of a plot configuration and its PMP, or of a PMP."""
    return Papers(path, max_body)


@contextmanager
def edit_papers(path: AnyPath, *, max_body: Optional[int] = None) -> Iterator[Papers]:
    """Custom papers that are saved at the end, unless there was an exception."""
    papers = Papers(path, max_body)
    yield papers
    papers.save()


class Preset(NamedTuple):
    """A public standard that a new table can follow."""

    name: str
    purpose: str


class StyleSetting(NamedTuple):
    """One thing that styles can be set to, and what its values look like."""

    word: str
    key: str
    values: str


def presets() -> List[Preset]:
    """What `create_table` takes as a preset."""
    session = Session()
    listed = session.json(library.platen_presets(session.context))["presets"]
    return [Preset(**preset) for preset in listed]


def devices() -> List[str]:
    """The built-in devices, as `create_configuration` takes them."""
    session = Session()
    names: List[str] = session.json(library.platen_devices(session.context))["devices"]
    return names


def palette() -> List[str]:
    """What the colours 1 to 255 look like, "#rrggbb"; the first is colour 1."""
    session = Session()
    colors: List[str] = session.json(library.platen_palette(session.context))["colors"]
    return colors


def style_settings() -> List[StyleSetting]:
    """The settings of styles."""
    session = Session()
    listed = session.json(library.platen_style_settings(session.context))["settings"]
    return [StyleSetting(**setting) for setting in listed]
