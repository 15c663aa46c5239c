"""Which styles of a table are meant, in numbers."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Dict, List, Sequence, Tuple, Union

from platen._errors import NotFoundError, PlatenError
from platen._library import library, text

if TYPE_CHECKING:
    from platen._document import Document
    from platen._styles import Style

#: A style's number in its table, from 1, and its name.
Key = Tuple[int, str]
#: What names one style.
One = Union[int, str, "Style"]
#: What names styles.
Which = Union[int, str, slice]


def row_of(table: Document, key: Key) -> Dict[str, Any]:
    """What the table says of a style now."""
    number, name = key
    rows = table._style_rows()
    if number <= len(rows) and rows[number - 1]["name"] == name:
        return rows[number - 1]
    for row in rows:
        if row["name"] == name:
            return row
    raise NotFoundError("not-found", f'the style "{name}" is gone', wanted=name)


def numbers_of(table: Document, which: Union[Which, Tuple[Any, ...]]) -> List[int]:
    rows = table._style_rows()
    if isinstance(which, tuple):
        found = (number for one in which for number in numbers_of(table, one))
        return sorted(set(found))
    if isinstance(which, slice):
        first, last = (
            usual if end is None else number_of(table, end)
            for end, usual in ((which.start, 1), (which.stop, len(rows)))
        )
        step = 1 if which.step is None else which.step
        if first > last or step < 1:
            raise NotFoundError(
                "not-found", f"no styles are from {first} to {last} in steps of {step}"
            )
        return list(range(first, last + 1, step))
    if isinstance(which, str):
        exact = [row["number"] for row in rows if which in (row["name"], row["localized_name"])]
        if exact:
            return exact
        return [row["number"] for row in table._json(library.platen_styles, text(which))["styles"]]
    if not isinstance(which, int):
        raise TypeError(f"styles have numbers and names, not {which!r}")
    if not 1 <= which <= len(rows):
        raise NotFoundError("not-found", f"{which} is no number from 1 to {len(rows)}")
    return [which]


def number_of(table: Document, which: One) -> int:
    numbers = numbers_of(table, which) if isinstance(which, (int, str)) else [which.number]
    if len(numbers) > 1:
        raise PlatenError("ambiguous", f'"{which}" names {len(numbers)} styles, and one is meant')
    return numbers[0]


def one(table: Document, which: One) -> bytes:
    return numbers_text(table, [number_of(table, which)])


def numbers_text(table: Document, numbers: Sequence[int]) -> bytes:
    """Numbers as the library takes them. A style may be named like a number, and a name comes first:
    the last one is said again then, until nothing is named so."""
    ranges: List[List[int]] = []
    for number in numbers:
        if ranges and ranges[-1][1] + 1 == number:
            ranges[-1][1] = number
        else:
            ranges.append([number, number])
    words = ",".join(str(a) if a == b else f"{a}-{b}" for a, b in ranges)
    taken = {row[key] for row in table._style_rows() for key in ("name", "localized_name")}
    while words in taken:
        words += f",{numbers[-1]}"
    return words.encode()


def number_text(value: Union[float, str]) -> str:
    return (
        value if isinstance(value, str) else repr(value) if isinstance(value, float) else str(value)
    )
