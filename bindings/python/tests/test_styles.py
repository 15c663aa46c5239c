"""Styles: what names them, what they are set to, what comes back."""

import sys
from types import ModuleType
from typing import Any, Dict, List

import pytest
from hypothesis import given
from hypothesis import strategies as st

import platen
from platen._styles import SETTINGS, Setting

OBJECT = "object"
numbers = st.integers(0, 255)
weights = [weight for weight in platen.create_table().lineweights if weight > 0]
values: Dict[str, st.SearchStrategy[Any]] = {
    "dither": st.booleans(),
    "grayscale": st.booleans(),
    "color": st.one_of(
        st.just(OBJECT),
        st.integers(0, 0xFFFFFF).map("#{:06x}".format),
    ),
    "pen": numbers,
    "virtual_pen": numbers,
    "screening": st.integers(0, 100),
    "pattern_size": st.integers(0, 10**8).map(lambda size: size / 10**6),
    "linetype": numbers,
    "adaptive": st.booleans(),
    "lineweight": st.sampled_from([OBJECT, *weights]),
    "fill": numbers,
    "ends": numbers,
    "joins": numbers,
    # Whatever one line of the usual code page holds.
    "description": st.text(
        st.characters(min_codepoint=32, max_codepoint=255).filter(
            lambda c: not 0x7F <= ord(c) < 0xA0
        ),
        max_size=80,
    ),
}
few: "st.SearchStrategy[Dict[str, Any]]" = st.lists(
    st.sampled_from(sorted(values)), max_size=4, unique=True
).flatmap(lambda words: st.fixed_dictionaries({word: values[word] for word in words}))


def test_settings_are_those_of_the_library() -> None:
    assert list(SETTINGS) == [setting.word for setting in platen.style_settings()] == list(values)
    assert all(isinstance(getattr(platen.Style, word), Setting) for word in SETTINGS)


@given(few, st.sampled_from(["stb", "stb", "ctb"]))
def test_what_is_set_comes_back(settings: Dict[str, Any], kind: str) -> None:
    table = platen.create_table(kind)
    style = table.styles[1]
    style.set(**settings)
    again = platen.open(table.to_bytes()).styles[1]
    assert {word: getattr(again, word) for word in settings} == settings
    fresh = platen.create_table(kind).styles[1]
    for word in set(SETTINGS) - set(settings):
        assert getattr(again, word) == getattr(fresh, word)


@given(few, few, st.integers(1, 250))
def test_spreadsheets_and_changes_carry_everything(
    first: Dict[str, Any], second: Dict[str, Any], number: int
) -> None:
    table = platen.create_table()
    table.styles[number].set(**first)
    table.styles[number : number + 5 : 2].set(**second)
    by_rows, by_changes = platen.create_table(), platen.create_table()
    by_rows.read_csv(table.csv())
    assert by_rows.csv() == table.csv() and not by_rows.compare(table)
    assert by_changes.apply(by_changes.compare(table)).misfits == []
    assert not by_changes.compare(table) and by_changes.csv() == table.csv()


@pytest.mark.parametrize(
    "which, expected",
    [
        (7, [7]),
        (slice(1, 3), [1, 2, 3]),
        (slice("Color_1", "Color_9", 4), [1, 5, 9]),
        (slice(None, 2), [1, 2]),
        (slice(254, None), [254, 255]),
        ("Color_25?", [250, 251, 252, 253, 254, 255]),
        ("color 7", [7]),
        ("1-2,250", [1, 2, 250]),
        ((250, "Color_1", slice(2, 3)), [1, 2, 3, 250]),
    ],
)
def test_styles_are_named_in_many_ways(which: Any, expected: List[int]) -> None:
    table = platen.create_table()
    chosen = table.styles[which]
    assert [style.number for style in (table.styles[(which,)])] == expected
    chosen.screening = 5
    assert [style.number for style in table.styles if style.screening == 5] == expected
    assert len(table.styles) == 255 and "Color_7" in table.styles and 0 not in table.styles


@pytest.mark.parametrize(
    "which", [0, 256, -1, slice(1, 256), slice(9, 1), slice(1, 9, -1), "Wall", "*x", ("Wall",)]
)
def test_what_is_not_there_is_refused(which: Any) -> None:
    with pytest.raises(platen.NotFoundError):
        platen.create_table().styles[which]


def test_hostile_names_are_names() -> None:
    table = platen.create_table("stb")
    names = ["7", "2", "1-3", "2,2", "=Normal", "a*", "a?", "ab"]
    for count, name in enumerate(names):
        table.styles.add(name, screening=count)
    for count, name in enumerate(names):
        assert table.styles[name].screening == count
        assert table.styles[2 + count].name == name
    table.styles[3].lineweight = 0.5
    table.styles[2:5].grayscale = True
    assert [style.name for style in table.styles if style.lineweight == 0.5] == ["2"]
    assert [style.name for style in table.styles if style.grayscale] == names[:4]
    assert table.styles["a*"].names == ["a*"] and table.styles["A?*"].names == ["a*", "a?", "ab"]


def test_styles_come_go_and_follow_their_names() -> None:
    table = platen.create_table("stb")
    wall = table.styles.add("Wall", lineweight=0.5)
    door = table.styles.add("Door", like=wall)
    assert table.styles.equal_to("Wall").names == ["Wall", "Door"]
    table.styles.add("Gate", like="Door")
    gate = table.styles["Gate"]
    with pytest.raises(platen.PlatenError):
        table.styles.add("Bad", lineweight=0.123)
    assert table.styles.merge_equal() == [["Wall", "Door", "Gate"]]
    table.styles.add("Window").copy_from(wall)
    wall.rename("Mauer")
    assert wall.number == 2 and wall in table.styles and table.styles["Window"].lineweight == 0.5
    del table.styles["Mauer"]
    for gone in (wall, door, gate):
        with pytest.raises(platen.NotFoundError, match="gone"):
            gone.screening
    assert [style.name for style in table.styles] == ["Normal", "Window"]


def test_several_things_are_set_or_none() -> None:
    table = platen.create_table()
    before = table.to_bytes()
    wrongs: List[Dict[str, Any]] = [
        {"screening": 50, "lineweight": 0.123},
        {"screening": 101},
        {"linewight": 1, "screening": 5},
    ]
    for wrong in wrongs:
        with pytest.raises(platen.PlatenError):
            table.styles[1:9].set(**wrong)
    with pytest.raises(AttributeError):
        table.styles[1].linewight = 0.35
    assert table.to_bytes() == before
    table.styles[1].set(screening=50, color=7)
    assert table.styles[1].color == "index:7"
    with pytest.raises(platen.PlatenError, match="2 different values of screening: 100, 50"):
        table.styles[1:9].screening


def test_lineweights_are_followed() -> None:
    table = platen.create_table("ctb", preset="iso-0.25")
    assert len(table.lineweights) == 27 and table.lineweights[-1] == list(table.lineweights)[26]
    users = table.lineweights.users(8)
    table.lineweights[8] = "0.01in"
    assert all(table.styles[number].lineweight == 0.254 for number in users)
    with pytest.raises(IndexError):
        table.lineweights[27] = 0.5


def test_frames_have_numbers(monkeypatch: pytest.MonkeyPatch) -> None:
    table = platen.create_table()
    table.styles[2].lineweight = 0.35
    monkeypatch.setitem(sys.modules, "pandas", None)
    with pytest.raises(ImportError, match="to_frame needs pandas"):
        table.to_frame()

    class DataFrame:
        @staticmethod
        def from_records(rows: List[Dict[str, Any]], index: str) -> Dict[int, Dict[str, Any]]:
            return {row.pop(index): row for row in rows}

    pandas = ModuleType("pandas")
    vars(pandas)["DataFrame"] = DataFrame
    monkeypatch.setitem(sys.modules, "pandas", pandas)
    frame = table.to_frame()
    assert frame[1]["lineweight"] != frame[1]["lineweight"]  # not a number
    assert frame[2]["lineweight"] == 0.35 and frame[2]["dither"] is True
    assert list(frame[255]) == ["name", "localized_name", *SETTINGS]
