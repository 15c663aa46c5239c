"""The pens of plot style tables, and their line weights."""

from __future__ import annotations

from typing import (
    TYPE_CHECKING,
    Any,
    Callable,
    Collection,
    Dict,
    Generic,
    Iterator,
    List,
    Optional,
    Tuple,
    TypeVar,
    Union,
    overload,
)

from platen._errors import NotFoundError, PlatenError, warn_of_loss
from platen._library import NULL, library, text
from platen._selecting import Key, One, Which, number_text, numbers_of, numbers_text, one, row_of

if TYPE_CHECKING:
    from platen._document import Document

Got = TypeVar("Got")
Given = TypeVar("Given")


class Setting(Generic[Got, Given]):
    """One thing that styles can be set to."""

    def __init__(self, read: Callable[[str], Got], write: Callable[[Given], str], doc: str) -> None:
        self._read = read
        self._write = write
        self.__doc__ = doc

    def __set_name__(self, owner: type, name: str) -> None:
        self.word = name

    @overload
    def __get__(self, styles: None, owner: type) -> Setting[Got, Given]:
        ...

    @overload
    def __get__(self, styles: Selection, owner: type) -> Got:
        ...

    def __get__(self, styles: Optional[Selection], owner: type) -> Union[Got, Setting[Got, Given]]:
        return self if styles is None else self._read(styles._common(self.word))

    def __set__(self, styles: Selection, value: Given) -> None:
        styles.set(**{self.word: value})

    def of(self, row: Dict[str, Any]) -> Got:
        return self._read(row[self.word])

    def assignment(self, value: Given) -> bytes:
        return text(f"{self.word}={self._write(value)}")


def _switch(value: Union[bool, str]) -> str:
    return value if isinstance(value, str) else "on" if value else "off"


def _color(value: Union[str, int]) -> str:
    return value if isinstance(value, str) else f"index:{value}"


def _weight(words: str) -> Union[float, str]:
    return float(words[:-3]) if words.endswith(" mm") else words


def _is_on(word: str) -> bool:
    return word == "on"


class Selection:
    """What a style and several have in common: the settings. Reading one of several styles needs
    that they agree, setting it sets all of them, or none."""

    __slots__ = ("_table",)
    _table: Document

    dither = Setting[bool, Union[bool, str]](
        _is_on, _switch, "Colours that cannot be printed are dithered."
    )
    grayscale = Setting[bool, Union[bool, str]](_is_on, _switch, "Colours become grays.")
    color = Setting[str, Union[str, int]](
        str,
        _color,
        'As plotted: "#rrggbb", "object" (the object\'s own) or "index:7", which the number 7 sets, too.'
        " An index becomes its RGB unless the style dithers without grayscale.",
    )
    pen = Setting[int, Union[int, str]](
        int, number_text, "The physical pen; 0 when the device chooses."
    )
    virtual_pen = Setting[int, Union[int, str]](
        int, number_text, "The virtual pen; 0 when the device chooses."
    )
    screening = Setting[int, Union[int, str]](int, number_text, "Ink in percent, 0 to 100.")
    pattern_size = Setting[float, Union[float, str]](
        float, number_text, "The size of line patterns, to six digits."
    )
    linetype = Setting[int, Union[int, str]](
        int, number_text, 'The line type, a number or "standard".'
    )
    adaptive = Setting[bool, Union[bool, str]](
        _is_on, _switch, "Line types are fitted to the length of lines."
    )
    lineweight = Setting[Union[float, str], Union[float, str]](
        _weight,
        number_text,
        "In millimetres, one of the table's 27, or \"object\", the object's own. which 0 is, too."
        ' Also takes "0.014in" and "index:0" to "index:26".',
    )
    fill = Setting[int, Union[int, str]](
        int, number_text, 'How areas are filled, a number or "standard".'
    )
    ends = Setting[int, Union[int, str]](int, number_text, 'How lines end, a number or "standard".')
    joins = Setting[int, Union[int, str]](
        int, number_text, 'How lines join, a number or "standard".'
    )
    description = Setting[str, str](str, str, "Any text in one line.")

    def __init__(self, table: Document) -> None:
        self._table = table

    def _current(self) -> List[Dict[str, Any]]:
        raise NotImplementedError

    def _common(self, word: str) -> Any:
        found = {row[word]: row["number"] for row in reversed(self._current())}
        if len(found) > 1:
            values = ", ".join(sorted(map(str, found))[:5])
            raise PlatenError(
                "styles-differ",
                f"{len(found)} different values of {word}: {values}",
                remedy="read it of one style after the other",
            )
        return next(iter(found))

    def _words(self) -> bytes:
        return numbers_text(self._table, [row["number"] for row in self._current()])

    @property
    def number(self) -> int:
        """The style's number, from 1: the colour of a colour table."""
        return int(self._common("number"))

    @property
    def name(self) -> str:
        """The style's name, which objects of a drawing use."""
        return str(self._common("name"))

    @property
    def localized_name(self) -> str:
        """The style's name as people see it."""
        return str(self._common("localized_name"))

    def set(self, **settings: Any) -> None:
        """Sets several things, or none when one of them is refused.

        >>> import platen
        >>> table = platen.create_table("ctb")
        >>> table.styles[1:9].set(lineweight=0.35, color="#202020", screening=80)
        """
        unknown = [word for word in settings if word not in SETTINGS]
        if unknown:
            raise NotFoundError(
                "not-found",
                f'a style has no setting "{unknown[0]}"',
                wanted=unknown[0],
                present=tuple(SETTINGS),
            )
        changes = [
            SETTINGS[word].assignment(settings[word]) for word in SETTINGS if word in settings
        ]
        table = self._table
        with table._session.lock:
            selection = self._words()
            if len(changes) > 1:
                trial = table.copy()
                for change in changes:
                    trial._change(library.platen_style_set, selection, change)
            for change in changes:
                table._change(library.platen_style_set, selection, change)
            if "description" in settings:
                warn_of_loss("the description", settings["description"], self.description)

    def copy_from(self, style: One) -> None:
        """Gives these styles the settings of another one."""
        table = self._table
        with table._session.lock:
            table._change(library.platen_style_copy, one(table, style), self._words())

    def remove(self) -> None:
        """Removes these styles from a named table."""
        with self._table._session.lock:
            self._table._change(library.platen_style_remove, self._words())


#: The settings by their words, in the order in which several take effect.
SETTINGS: Dict[str, Setting[Any, Any]] = {
    name: value for name, value in vars(Selection).items() if isinstance(value, Setting)
}


class Style(Selection):
    """One style. It follows its name when others are added and removed."""

    __slots__ = ("_key",)

    def __init__(self, table: Document, key: Key) -> None:
        super().__init__(table)
        self._key = key

    def _current(self) -> List[Dict[str, Any]]:
        return [row_of(self._table, self._key)]

    def rename(self, name: str) -> None:
        """Gives a style of a named table another name."""
        with self._table._session.lock:
            number = self.number
            self._table._change(library.platen_style_rename, self._words(), text(name))
            row = self._table._style_rows()[number - 1]
            self._key = (number, row["name"])
            warn_of_loss("the name", name, row["localized_name"])

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Style) and (
            self._table is other._table and self._key == other._key
        )

    def __hash__(self) -> int:
        return hash((id(self._table), self._key))

    def __repr__(self) -> str:
        row = self._current()[0]
        return f"<Style {row['number']} {row['name']!r}: {row['color']}, {row['lineweight']}>"


class Styles(Selection, Collection[Style]):
    """Several styles of a table, which are set as one."""

    __slots__ = ("_keys",)

    def __init__(self, table: Document, keys: Optional[List[Key]]) -> None:
        super().__init__(table)
        self._keys = keys

    def _current(self) -> List[Dict[str, Any]]:
        if self._keys is None:
            return self._table._style_rows()
        return [row_of(self._table, key) for key in self._keys]

    @overload
    def __getitem__(self, which: int) -> Style:
        ...

    @overload
    def __getitem__(self, which: Union[str, slice, Tuple[Which, ...]]) -> Styles:
        ...

    def __getitem__(self, which: Union[Which, Tuple[Which, ...]]) -> Union[Style, Styles]:
        """Numbers are those of the field, from 1, and slices include both ends: [1:9] are the
        colours 1 to 9, ["Color_1":"Color_9"] too. A text is a name, one in which * and ? stand for
        others, numbers as in "1-9,250", or "=7" for all that are equal to one. [1, 5, "W*"] joins.
        """
        with self._table._session.lock:
            rows = self._current()
            numbers = numbers_of(self._table, which)
            keys = {row["number"]: (row["number"], row["name"]) for row in rows}
            missing = [number for number in numbers if number not in keys]
            if missing:
                raise NotFoundError("not-found", f"style {missing[0]} is not among these")
            if isinstance(which, int):
                return Style(self._table, keys[which])
            return Styles(self._table, [keys[number] for number in numbers])

    def __delitem__(self, which: Which) -> None:
        self[which].remove()

    def __iter__(self) -> Iterator[Style]:
        for row in self._current():
            yield Style(self._table, (row["number"], row["name"]))

    def __len__(self) -> int:
        return len(self._current())

    def __contains__(self, style: object) -> bool:
        """A number, a name or a style."""
        if isinstance(style, Style):
            return style._table is self._table and style in list(self)
        return any(
            style in (row["number"], row["name"], row["localized_name"]) for row in self._current()
        )

    @property
    def names(self) -> List[str]:
        return [row["name"] for row in self._current()]

    def rows(self) -> List[Dict[str, Any]]:
        """A dictionary for each style."""
        return [
            {"number": row["number"], "name": row["name"], "localized_name": row["localized_name"]}
            | {word: setting.of(row) for word, setting in SETTINGS.items()}
            for row in self._current()
        ]

    def to_frame(self) -> Any:
        """A pandas DataFrame with a row for each style, by their numbers. A line weight of the
        object's own is not a number there."""
        try:
            import pandas
        except ImportError:
            raise ImportError(
                "to_frame needs pandas (python3-pandas); rows() gives the same as dictionaries"
            ) from None
        rows = self.rows()
        for row in rows:
            if isinstance(row["lineweight"], str):
                row["lineweight"] = float("nan")
        return pandas.DataFrame.from_records(rows, index="number")

    def __repr__(self) -> str:
        names = self.names
        more = f", ... {len(names)} styles" if len(names) > 6 else ""
        return f"<{type(self).__name__} {', '.join(names[:6])}{more}>"


class TableStyles(Styles):
    """The styles of a table.

    >>> import platen
    >>> table = platen.create_table("stb")
    >>> wall = table.styles.add("Wall", lineweight=0.5)
    >>> table.styles.add("Wall_hidden", like="Wall").screening = 40
    >>> table.styles["Wall*"].lineweight = 0.7
    >>> wall.lineweight, [style.name for style in table.styles]
    (0.7, ['Normal', 'Wall', 'Wall_hidden'])
    """

    __slots__ = ()

    def __init__(self, table: Document) -> None:
        super().__init__(table, None)

    def add(self, name: str, like: Optional[One] = None, **settings: Any) -> Style:
        """Adds a style to a named table, like another one if that is told."""
        table = self._table
        with table._session.lock:
            model = NULL if like is None else one(table, like)
            table._change(library.platen_style_add, text(name), model)
            row = table._style_rows()[-1]
            style = Style(table, (row["number"], row["name"]))
            warn_of_loss("the name", name, row["localized_name"])
            try:
                style.set(**settings)
            except BaseException:
                style.remove()
                raise
            return style

    def equal_to(self, style: One) -> Styles:
        """All styles that are equal to one, with it."""
        table = self._table
        with table._session.lock:
            found = table._json(library.platen_styles, b"=" + one(table, style))
        return Styles(table, [(row["number"], row["name"]) for row in found["styles"]])

    def merge_equal(self) -> List[List[str]]:
        """Lets one style of a named table stand for all that are equal; the names of each group."""
        table = self._table
        with table._session.lock:
            table._forget()
            groups: List[List[str]] = table._json(library.platen_styles_merge_equal)["groups"]
        return groups
