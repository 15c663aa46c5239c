"""Documents: files of all kinds as mappings, and what can be done with them as a whole."""

from __future__ import annotations

import json
import os
from pathlib import Path
from typing import Any, Callable, Dict, List, Mapping, Optional, Union

from platen._block import TYPE, Block, Value, text_of, type_for
from platen._errors import Finding, NotFoundError, PlatenError, warn_of_loss
from platen._library import (
    NULL,
    AnyPath,
    Session,
    ffi,
    library,
    locked,
    path_text,
    text,
    text_or_null,
)
from platen._lineweights import Lineweights
from platen._results import Applied, Chart, Comparison, Conversion, Item, Merged
from platen._styles import TableStyles


class Document(Block):
    """A plotter file: a plot style table (CTB, STB), a plot configuration (PC3), plot model
    parameters (PMP). Come by one with `platen.open`, `platen.edit` or `platen.create_table`.

    As a mapping it has the values of its items by their paths:

    >>> import platen
    >>> config = platen.create_configuration("Print As PDF")
    >>> config["media/number_of_copies"]
    1
    >>> config["media/number_of_copies"] = 2
    >>> config.changed
    True
    >>> config["media/size/nmae"]
    Traceback (most recent call last):
    ...
    platen.NotFoundError: there is no item "media/size/nmae"; "media/size/name" is there

    Any thread may use it; it waits while another one does. A change that fails changes nothing.
    """

    def __init__(self, session: Session, handle: Any, path: Optional[AnyPath] = None) -> None:
        super().__init__(self, "")
        del self._of  # no cycle: the file's memory goes with the last reference
        self._session = session
        self._handle = ffi.gc(handle, library.platen_document_destroy)
        self._stored: Optional[Dict[str, Item]] = None
        self._rows: Optional[List[Dict[str, Any]]] = None
        #: Where it is from, and where `save` goes.
        self.file: Optional[Path] = None if path is None else Path(path)

    def _document(self) -> Document:
        return self

    # --- Calling the library ---

    def _json(self, function: Callable[..., Any], *arguments: Any) -> Any:
        with self._session.lock:
            return self._session.json(function(self._handle, *arguments))

    def _change(self, function: Callable[..., Any], *arguments: Any) -> None:
        with self._session.lock:
            self._forget()
            self._session.done(function(self._handle, *arguments))

    def _forget(self) -> None:
        self._stored = None
        self._rows = None

    def _items(self) -> Dict[str, Item]:
        with self._session.lock:
            if self._stored is None:
                self._stored = {}
                for item in self.stored_items():
                    self._stored.setdefault(item.path, item)
            return self._stored

    def _item(self, path: str) -> Item:
        items = self._items()
        found = items.get(path)
        suffix = TYPE.search(path)
        if found is None and suffix:
            found = items.get(path[: suffix.start()])
            found = found if found is not None and found.type == suffix[1] else None
        if found is None:
            raise NotFoundError(
                "not-found", f'there is no item "{path}"', wanted=path, present=tuple(items)
            )
        if found.type == "block":
            raise NotFoundError("not-found", f'"{path}" is a block: take .block("{path}")')
        return found

    def _set(self, path: str, value: Value) -> None:
        with self._session.lock:
            item = self._items().get(path)
            suffix = TYPE.search(path)
            kind = item.type if item else suffix[1] if suffix else type_for(value)
            if item is None and not suffix:
                path += f":{kind}"
            self._change(library.platen_document_set, text(path), text(text_of(value, kind)))
            if kind == "str":
                warn_of_loss(path, str(value), self._item(path).text)

    def _style_rows(self) -> List[Dict[str, Any]]:
        with self._session.lock:
            if self._rows is None:
                self._rows = list(self._json(library.platen_styles, NULL)["styles"])
            return self._rows

    # --- The file ---

    @property
    def kind(self) -> str:
        """ "ctb", "stb", "pc3", "pmp", or "pia" for something else in a sound container."""
        with self._session.lock:
            return str(ffi.string(library.platen_document_kind(self._handle)).decode())

    @property
    def changed(self) -> bool:
        """True when `save` would write other bytes than were read or saved last."""
        with self._session.lock:
            return bool(library.platen_document_is_changed(self._handle))

    def to_bytes(self) -> bytes:
        """The file as it would be saved."""
        with self._session.lock:
            return self._session.taken(library.platen_document_bytes(self._handle))

    __bytes__ = to_bytes

    def save(self, path: Optional[AnyPath] = None) -> None:
        """Writes the file, whole or not at all. Without a path it goes where it is from, unless
        somebody else has written that since (code "file-changed")."""
        with self._session.lock:
            if not library.platen_document_save(self._handle, path_text(path)):
                target = self.file if path is None else path
                raise self._session.failure("" if target is None else os.fspath(target))
            if path is not None:
                self.file = Path(path)

    def copy(self) -> Document:
        """Another document of the same bytes, which is from nowhere."""
        return document_of_bytes(self.to_bytes())

    __copy__ = copy

    def __repr__(self) -> str:
        return f"<platen.Document {self.kind}{f' {self.file}' if self.file else ''}>"

    # --- What it says ---

    def info(self) -> Dict[str, Any]:
        """Everything that the document says: schema "platen.info/1"."""
        info: Dict[str, Any] = self._json(library.platen_document_info)
        return info

    def findings(self) -> List[Finding]:
        """What is wrong with it, and what was tolerated when it was read."""
        found = self._json(library.platen_document_findings)
        return [Finding(**finding) for finding in found["findings"]]

    def stored_items(self) -> List[Item]:
        """Every item as it is stored, blocks included, in the order of the file."""
        items: List[Item] = []
        names: List[str] = []
        for entry in self._json(library.platen_document_items)["items"]:
            names[entry["depth"] :] = [entry["name"]]
            path, value = "/".join(names), entry.get("value", "")
            items.append(Item(path, entry["type"], value, entry["depth"], entry["line"]))
        return items

    # --- Tables ---

    @property
    def styles(self) -> TableStyles:
        """The pens of a plot style table."""
        return TableStyles(self)

    @property
    def lineweights(self) -> Lineweights:
        """The 27 line weights of a plot style table."""
        return Lineweights(self)

    def csv(self) -> str:
        """The table for a spreadsheet."""
        with self._session.lock:
            return self._session.taken(library.platen_table_csv(self._handle)).decode()

    def read_csv(self, rows: Union[str, bytes]) -> None:
        """Sets whatever the rows of a spreadsheet say.

        >>> import platen
        >>> table = platen.create_table("ctb")
        >>> table.read_csv("number,lineweight\\n1,0.5 mm\\n")
        >>> table.styles[1].lineweight
        0.5
        """
        data = rows.encode() if isinstance(rows, str) else rows
        self._change(library.platen_table_read_csv, data, len(data))

    def to_frame(self) -> Any:
        """The table's styles as a pandas DataFrame; see `Styles.to_frame`."""
        return self.styles.to_frame()

    # --- Charts ---

    def chart(
        self,
        *,
        title: Optional[str] = None,
        sheet: Optional[str] = None,
        orientation: Optional[str] = None,
        gather: bool = False,
        dpi: Optional[float] = None,
        device_papers: bool = False,
    ) -> Chart:
        """What the pens of a table draw, or the papers of a configuration, to scale.

        `sheet` is "A3" or "594x420", `orientation` "portrait" or "landscape". With `gather` equal
        styles share a row, `dpi` shows weights as such a device prints them, `device_papers` those
        of the built-in device, too. Notebooks show it:

        >>> import platen
        >>> platen.create_table("ctb").chart(gather=True, dpi=300).svg[:5]
        '<?xml'
        """
        options = {key: value for key, value in locals().items() if key != "self" and value}
        chosen = text(json.dumps(options))

        def draw(format: str) -> str:
            with self._session.lock:
                drawn = library.platen_chart(self._handle, text(format), chosen)
                return self._session.taken(drawn).decode()

        return Chart(draw)

    def _repr_svg_(self) -> Optional[str]:
        try:
            return self.chart(gather=True)._repr_svg_()
        except PlatenError:
            return None  # it has neither pens nor papers

    # --- More than one document ---

    def convert(self, to: str, *, prefix: Optional[str] = None) -> Conversion:
        """The same document in another form ("compressed", "json", "text") or of another kind
        ("ctb", "stb"). `prefix` begins the names of styles that are made from colours.

        >>> import platen
        >>> made = platen.create_table("ctb", preset="iso-0.25").convert("stb", prefix="Pen")
        >>> made.document.kind, made.styles["Pen_2"]
        ('stb', [2])
        """
        with self._session.lock:
            notes = ffi.new("platen_buffer**")
            handle = library.platen_document_convert(
                self._handle, text(to), text_or_null(prefix), notes
            )
            if handle == NULL:
                raise self._session.failure()
            document = Document(self._session, handle)
            said = self._session.json(notes[0])
        styles = {style["name"]: style["colors"] for style in said["styles"]}
        return Conversion(document, styles, said["lost"])

    def compare(self, after: Document) -> Comparison:
        """How another document differs from this one by what it means."""
        with locked(self._session, after._session):
            found = after._session.taken(library.platen_compare(self._handle, after._handle))
            words = after._session.taken(library.platen_compare_text(self._handle, after._handle))
        changes = found.decode()
        return Comparison(words.decode().splitlines(), json.loads(changes), changes)

    def apply(self, changes: Union[Comparison, Mapping[str, Any], str]) -> Applied:
        """Makes the changes of a comparison, where they fit."""
        if isinstance(changes, Comparison):
            changes = changes.text
        words = changes if isinstance(changes, str) else json.dumps(changes)
        with self._session.lock:
            self._forget()
            done = self._json(library.platen_apply, text(words))
        return Applied(done["made"], done["already_there"], done["misfits"])

    def merge(self, base: Document, theirs: Document) -> Merged:
        """Takes over what changed from `base` to `theirs`.

        >>> import platen
        >>> base = platen.create_table("ctb")
        >>> ours, theirs = base.copy(), base.copy()
        >>> ours.styles[1].screening, theirs.styles[2].screening = 50, 60
        >>> ours.merge(base, theirs).conflicts
        []
        >>> ours.styles[1].screening, ours.styles[2].screening
        (50, 60)
        """
        with locked(self._session, base._session, theirs._session):
            self._forget()
            done = self._session.json(
                library.platen_merge(base._handle, self._handle, theirs._handle)
            )
        return Merged(done["taken"], done["conflicts"])


def document_of_bytes(
    data: bytes, path: Optional[AnyPath] = None, max_body: Optional[int] = None
) -> Document:
    session = Session(max_body)
    handle = library.platen_document_open_bytes(session.context, data, len(data), path_text(path))
    if handle == NULL:
        raise session.failure("" if path is None else os.fspath(path))
    return Document(session, handle, path)
