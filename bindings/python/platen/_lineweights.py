"""The line weights of plot style tables."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Dict, List, Sequence, Union, overload

from platen._library import library, text
from platen._selecting import number_text

if TYPE_CHECKING:
    from platen._document import Document


class Lineweights(Sequence[float]):
    """The line weights of a table in millimetres, numbered from 0 to 26 as in the file.

    >>> import platen
    >>> table = platen.create_table("ctb", preset="iso-0.25")
    >>> table.lineweights[8]
    0.25
    >>> table.lineweights[8] = 0.26
    >>> table.styles[1].lineweight
    0.26
    """

    __slots__ = ("_table",)

    def __init__(self, table: Document) -> None:
        self._table = table

    def _entries(self) -> List[Dict[str, Any]]:
        entries: List[Dict[str, Any]] = self._table._json(library.platen_lineweights)["lineweights"]
        return entries

    @overload
    def __getitem__(self, index: int) -> float:
        ...

    @overload
    def __getitem__(self, index: slice) -> List[float]:
        ...

    def __getitem__(self, index: Union[int, slice]) -> Union[float, List[float]]:
        return [float(entry["millimetres"]) for entry in self._entries()][index]

    def __setitem__(self, index: int, value: Union[float, str]) -> None:
        """Sets one, which all styles that have it follow: 0.35, "0.35mm" or "0.014in"."""
        places = range(len(self))
        self._table._change(library.platen_lineweight_set, places[index], text(number_text(value)))

    def __len__(self) -> int:
        return len(self._entries())

    def users(self, index: int) -> List[int]:
        """The numbers of the styles that have it."""
        users: List[int] = self._entries()[index]["styles"]
        return users

    def __repr__(self) -> str:
        return f"<Lineweights {', '.join(map(str, self))}>"
