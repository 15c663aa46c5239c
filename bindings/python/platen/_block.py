"""Items as mappings from paths to values."""

from __future__ import annotations

import numbers
import re
from typing import TYPE_CHECKING, Iterator, MutableMapping, Union

from platen._errors import NotFoundError
from platen._library import NULL, library, text
from platen._results import Item

if TYPE_CHECKING:
    from platen._document import Document

#: What an item holds.
Value = Union[str, int, float, bool, bytes]

TYPE = re.compile(r":(str|num|bool|bin|block)$")


def value_of(item: Item) -> Value:
    """The value of an item; the text of one that is not what its type says."""
    if item.type == "bool":
        return item.text == "TRUE"
    try:
        if item.type == "bin":
            return bytes.fromhex(item.text)
        if item.type == "num" and "_" not in item.text:
            return int(item.text) if re.fullmatch(r"[+-]?\d+", item.text) else float(item.text)
    except ValueError:
        pass
    return item.text


def text_of(value: Value, type: str) -> str:
    """A value as an item of that type takes it. The library checks what comes as a text."""
    if isinstance(value, str):
        return value
    if type == "bool" and isinstance(value, bool):
        return "TRUE" if value else "FALSE"
    if type == "bin" and isinstance(value, bytes):
        return value.hex()
    if type == "num" and isinstance(value, numbers.Real) and not isinstance(value, bool):
        return str(int(value)) if isinstance(value, numbers.Integral) else repr(float(value))
    raise TypeError(f"an item of the type {type} cannot be {value!r}")


def type_for(value: Value) -> str:
    for kind, word in ((bool, "bool"), (str, "str"), (bytes, "bin"), (numbers.Real, "num")):
        if isinstance(value, kind):
            return word
    raise TypeError(f"no item can be {value!r}")


class Block(MutableMapping[str, Value]):
    """The items in a block, by the paths that lead from it to them. Blocks themselves are no
    values: `block` gives one, and iterating goes through the values below it, in the order of the
    file.

    >>> import platen
    >>> media = platen.create_configuration("Print As PDF").block("media")
    >>> media["number_of_copies"] = 3
    >>> media["number_of_copies"], media["size/name"]
    (3, 'A0')
    """

    def __init__(self, document: Document, path: str) -> None:
        self._of = document
        #: The path of the block in its document.
        self.path = path

    def _document(self) -> Document:
        return self._of

    def _full(self, path: str) -> str:
        if not isinstance(path, str):
            raise NotFoundError("not-found", f"paths are texts, unlike {path!r}")
        return f"{self.path}/{path}" if self.path else path

    def __getitem__(self, path: str) -> Value:
        return value_of(self._document()._item(self._full(path)))

    def __setitem__(self, path: str, value: Value) -> None:
        """Gives an item another value; it keeps its type. A new one has that of the value, unless
        the path ends in one, as in "level:num"."""
        self._document()._set(self._full(path), value)

    def __delitem__(self, path: str) -> None:
        """Removes an item, or a block with all that is in it."""
        document = self._document()
        document._change(library.platen_document_remove, text(self._full(path)))

    def __iter__(self) -> Iterator[str]:
        start = f"{self.path}/" if self.path else ""
        for path, item in list(self._document()._items().items()):
            if item.type != "block" and path.startswith(start):
                yield path[len(start) :]

    def __len__(self) -> int:
        return sum(1 for _ in self)

    def block(self, path: str) -> Block:
        """The block at a path."""
        document = self._document()
        full = self._full(path)
        item = document._items().get(full)
        if item is None or item.type != "block":
            raise NotFoundError("block-not-found", f'there is no block "{full}"', wanted=full)
        return Block(document, full)

    def add_block(self, path: str) -> Block:
        """Adds a block, unless it is there."""
        document = self._document()
        document._change(library.platen_document_set, text(self._full(path) + ":block"), NULL)
        return self.block(path)

    def __repr__(self) -> str:
        return f"<{type(self).__name__} {self.path!r} of {self._document()!r}>"
