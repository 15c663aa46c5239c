"""A program in Python that uses the installed package and library: makes a table, changes it, finds out why
something is refused, saves it, and sees in the file what it changed."""

import platen

platen.create_table("ctb", preset="iso-0.25").save("pens.ctb")
before = platen.open("pens.ctb")
with platen.edit("pens.ctb") as table:
    table.styles["Color_1":"Color_9"].screening = 50
    try:
        table.styles[1].screening = 200
    except platen.PlatenError as refused:
        print(refused)
    else:
        raise SystemExit("a screening of 200 % was taken")

after = platen.open("pens.ctb")
assert str(platen.compare(before, after)) == "Color 1-9: screening 100 % -> 50 %"
assert after.styles[9].screening == 50 and after.findings() == []
assert after.chart()._repr_svg_().startswith("<svg")
