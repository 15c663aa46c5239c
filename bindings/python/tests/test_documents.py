"""Documents as mappings, in files, against each other."""

import json
import threading
from pathlib import Path
from typing import Any, Callable, Dict, List

import pytest

import platen


def test_a_document_is_a_mapping_of_typed_values() -> None:
    config = platen.create_configuration("Print As PDF")
    assert config["media/size/name"] == "A0"
    assert config["io/plot_to_file"] is True
    assert config["res_color_mem/resolution/phys_resolution_x"] == 2400.0
    assert len(config) == len(list(config)) == len(dict(config))
    assert "media" not in config and "media/size/name" in config
    media = config.block("media")
    assert media["size/name"] == "A0" and "size/name" in list(media)

    config.add_block("vendor")
    added: Dict[str, platen.Value] = {
        "level": 3,
        "ratio": 0.25,
        "on": True,
        "name": "Plotter \xe4",
        "data": b"\x00\xff",
    }
    for name, value in added.items():
        config["vendor/" + name] = value
    again = platen.open(config.to_bytes())
    assert dict(again.block("vendor")) == added
    assert again["vendor/level:num"] == 3 and "vendor/level:str" not in again
    del again["vendor"]
    assert again == platen.create_configuration("Print As PDF")
    assert [item.type for item in config.stored_items()][0] == "block"


@pytest.mark.parametrize(
    "path, value, error",
    [
        ("media/number_of_copies", True, TypeError),
        ("media/number_of_copies", "many", platen.PlatenError),
        ("media/size/name", 3, TypeError),
        ("media/size/name", "a\0b", ValueError),
        ("media/size/name", "a\nb", platen.PlatenError),
        ("nothing/at/all", 3, KeyError),
        ("new", None, TypeError),
    ],
)
def test_a_value_that_does_not_fit_changes_nothing(path: str, value: Any, error: type) -> None:
    config = platen.create_configuration("Print As PDF")
    before = config.to_bytes()
    with pytest.raises(error):
        config[path] = value
    assert config.to_bytes() == before


def test_a_text_that_a_file_cannot_hold_is_warned_of() -> None:
    table = platen.create_table("stb")
    with pytest.warns(platen.LossWarning, match=r"description was kept as \"\?\""):
        table["description"] = "\u65e5"
    with pytest.warns(platen.LossWarning):
        table.styles[1].description = "x" * 600
    with pytest.warns(platen.LossWarning):
        table.styles.add("\u65e5").rename("\u65e5\u65e5")


def test_edit_saves_whole_or_not_at_all(folder: Path) -> None:
    pens = folder / "pens.ctb"
    platen.create_table().save(pens)
    with platen.edit(pens) as table:
        table.styles[1].screening = 50
    assert platen.open(pens).styles[1].screening == 50

    before = pens.read_bytes()
    with pytest.raises(ZeroDivisionError), platen.edit(pens) as table:
        table.styles[1].screening = 60
        1 / 0
    assert pens.read_bytes() == before
    with pytest.raises(platen.PlatenError) as failure, platen.edit(pens) as table:
        table.styles[1].screening = 60
        pens.write_bytes(platen.create_table().to_bytes())
    assert failure.value.code == "file-changed" and failure.value.remedy
    assert platen.open(pens).styles[1].screening == 100
    stamp = pens.stat().st_mtime_ns, pens.stat().st_ino
    with platen.edit(pens):
        pass
    assert (pens.stat().st_mtime_ns, pens.stat().st_ino) == stamp


def test_failures_say_why_and_what_to_do(folder: Path) -> None:
    with pytest.raises(platen.PlatenError) as failure:
        platen.open(folder / "none.ctb")
    assert failure.value.code == "file-unreadable"
    assert "none.ctb" in str(failure.value) and "check that the file exists" in str(failure.value)
    with pytest.raises(platen.NotFoundError, match='"Print As PDF" is there') as missing:
        platen.create_configuration("Print A PDF")
    assert "Print As PNG" in missing.value.present
    with pytest.raises(platen.PlatenError, match="argument-not-utf-8|UTF-8"):
        platen.open("\udcff.ctb")
    with pytest.raises(platen.PlatenError) as large:
        platen.open(platen.create_table().to_bytes(), max_body=10)
    assert large.value.code == "body-too-large"
    with pytest.raises(platen.PlatenError):
        platen.create_table().save()


def test_damage_is_found_and_mended(folder: Path) -> None:
    whole = platen.create_table().to_bytes()
    torn = folder / "torn.ctb"
    torn.write_bytes(whole[: len(whole) // 2])
    with pytest.raises(platen.PlatenError):
        platen.open(torn)
    with pytest.raises(platen.RepairError, match="ends too early"):
        platen.repair(torn, safe_only=True)
    with pytest.raises(platen.RepairError) as failure:
        platen.repair(b"PIA")
    assert failure.value.losses[0].text == "PIA" and failure.value.message
    mended = platen.repair(torn)
    assert "[stream-truncated]" in str(mended.assumptions[0]) and mended.document.changed
    mended.document.save()
    assert platen.open(torn).findings() == []

    flipped = bytearray(whole)
    flipped[48] ^= 1
    finding = platen.open(bytes(flipped)).findings()[0]
    assert finding.severity == "warning" and finding.code == "checksum-mismatch"
    assert finding.remedy in str(finding)


def test_forms_and_kinds(folder: Path) -> None:
    table = platen.create_table("ctb", preset="iso-0.25")
    for form, start in (("json", b"{"), ("text", b"description="), ("compressed", b"PIAFILE")):
        bytes_ = table.convert(form).document.to_bytes()
        assert start in bytes_[:99]
        assert not table.compare(platen.open(bytes_))
    named = table.convert("stb", prefix="Pen")
    assert named.styles["Pen_2"] == [2] and named.lost == []
    assert named.document.convert("ctb").document.styles[2].lineweight == 0.35
    assert table.info()["kind"] == "ctb" and named.document.kind == "stb"
    assert "Print As PNG" in platen.devices()
    assert len(platen.palette()) == 255 and platen.palette()[0] == "#ff0000"
    assert {preset.name for preset in platen.presets()} > {"black", "iso-0.25"}


def test_changes_go_into_other_documents(folder: Path) -> None:
    base = platen.create_table()
    base.save("base.ctb")
    ours, theirs = base.copy(), base.copy()
    ours.styles[1].set(screening=10, lineweight=0.35)
    theirs.styles[1].screening = 20
    theirs.styles[2].color = "#112233"
    changes = platen.compare("base.ctb", theirs)
    assert changes.lines[0] == "Color 1: screening 100 % -> 20 %"
    merged = ours.merge(base, theirs)
    assert merged.taken >= 1 and len(merged.conflicts) == 1 and ours.styles[1].screening == 10
    for form in (changes, changes.json, json.dumps(changes.json)):
        target = base.copy()
        assert target.apply(form).misfits == [] and not target.compare(theirs)
    with pytest.raises(platen.PlatenError):
        base.apply("{}")


def test_papers_are_kept_in_their_files(folder: Path) -> None:
    platen.create_configuration("Print As PDF").save("a.pc3")
    with platen.edit_papers("a.pc3") as papers:
        flag = papers.add("Flag", 900, 600, margins=(1, 2, 3, 4), units="mm")
        assert flag.margins.top == 4 and flag.width_mm == 900
        papers.add("Banner", 900, 5000)
        papers.rename("Flag", "Pennant")
        assert papers.resize("Pennant", 800, 500).margins == (1, 2, 3, 4)
        with pytest.raises(platen.PlatenError):
            papers.add("pennant", 1, 1)
    assert list(platen.open_papers(folder / "a.pmp")) == ["Pennant", "Banner"]
    before = (folder / "a.pmp").read_bytes()
    with pytest.raises(ZeroDivisionError), platen.edit_papers("a.pc3") as papers:
        del papers["Banner"]
        1 / 0
    assert (folder / "a.pmp").read_bytes() == before
    papers = platen.open_papers("a.pc3")
    assert papers.current == "A0" and papers.largest > (1000, 1000)
    with pytest.raises(KeyError, match='"Banner" is there'):
        papers["Baner"]
    del papers["Banner"]
    saved = papers.save()
    assert saved.parameters is not None and saved.parameters.path == folder / "a.pmp"


def test_charts_are_pictures(folder: Path) -> None:
    table = platen.create_table("ctb", preset="iso-0.25")
    chart = table.chart(title="A <b>", gather=True, dpi=300, sheet="A3")
    assert "A &lt;b" in chart._repr_svg_() and json.loads(chart.json)["schema"] == "platen.scene/1"
    chart.save("a.html")
    assert Path("a.html").read_text() == chart.html and [p.name for p in folder.iterdir()] == [
        "a.html"
    ]
    with pytest.raises(ValueError, match=".svg, .html or .json"):
        chart.save("a.gif")
    shown = table._repr_svg_()
    assert shown and shown.startswith("<svg") and table.chart(gather=True).svg.endswith(shown)
    assert platen.open(b"a=1\n")._repr_svg_() is None


def in_threads(work: Callable[[int], None], count: int = 8) -> None:
    failures: List[BaseException] = []

    def guarded(number: int) -> None:
        try:
            work(number)
        except BaseException as failure:
            failures.append(failure)

    threads = [threading.Thread(target=guarded, args=(number,)) for number in range(count)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join(120)
        assert not thread.is_alive()
    assert failures == []


def test_threads_have_documents_of_their_own() -> None:
    def work(number: int) -> None:
        table = platen.create_table("stb")
        for turn in range(3):
            with pytest.raises(platen.PlatenError, match=f'"Pen {number} {turn}"'):
                table.styles[f"Pen {number} {turn}"]
            table.styles.add(f"Pen {number} {turn}", screening=number)
        assert [style.screening for style in table.styles] == [100, number, number, number]

    in_threads(work)


def test_threads_share_documents() -> None:
    table, other = platen.create_table("stb"), platen.create_table("stb")

    def work(number: int) -> None:
        table.styles.add(f"Pen {number}", lineweight=0.35)
        one, two = (table, other) if number % 2 else (other, table)
        assert one.compare(two)
        assert table.convert("text").document.kind == "stb"
        table.styles[f"Pen {number}"].screening = number

    in_threads(work)
    assert sorted(style.screening for style in table.styles) == [*range(8), 100]
