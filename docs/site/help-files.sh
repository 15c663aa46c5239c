# The files that examples of `platen COMMAND --help` take for granted. scripts/examples.py runs this in
# an empty folder; each manual page begins with these files, and with those of only/PAGE.
set -euo pipefail

p() { platen "$@" >/dev/null; }

p create ctb -o pens.ctb --preset iso-0.25
p create ctb -o iso.ctb --preset iso-0.35
for name in a office standard base ours theirs; do cp pens.ctb $name.ctb; done
for name in b site other; do
    p style set pens.ctb 1-9,250-255 lineweight=0.35 screening=50 -o $name.ctb
done
p style set pens.ctb 20 screening=70 -o theirs.ctb
p convert pens.ctb -o pens.txt
p convert pens.ctb -o pens.csv
p convert pens.ctb -o pens.json
p convert pens.ctb -o pens.stb
cp pens.stb b.stb

p create stb -o named.stb
for name in Wall "Wall outer" "Old wall"; do p style add named.stb "$name" lineweight=0.5 --in-place; done

p create pc3 --device "Print As PDF" -o plotter.pc3
cp plotter.pc3 pdf.pc3
cp plotter.pc3 plotter.bak
p set plotter.pc3 media/number_of_copies=3 -o new.pc3
cp plotter.pc3 old.pc3
cp plotter.pc3 office.pc3
cp plotter.pc3 a.pc3
p paper add a.pc3 --name "Wide roll" --size 914x4000 --units mm
mkdir plotters tables site office-standard "plot styles" plotters-2023 plotters-2024
cp pens.ctb b.ctb tables
cp pens.ctb "plot styles"
cp pens.ctb office-standard
cp iso.ctb site/pens.ctb
cp plotter.pc3 plotters
cp pens.ctb old.pc3 plotters-2023
cp b.ctb old.pc3 plotters-2024
p set plotter.pc3 meta/canonical_model_name= meta/win_device_name:str="Old plotter" -o plotters/old.pc3
p set plotter.pc3 meta/canonical_model_name= meta/win_device_name:str=Office -o plotters/office.pc3
printf 'Plotter\nOffice\n' >printers.txt
printf 'pens.ctb\niso.ctb\n' >tables.txt
printf 'plotters/old.pc3\n' >changed.txt
platen diff a.ctb b.ctb --json >thicker.json || test $? -eq 1

for page in restore repair; do mkdir -p only/platen-$page; done
p bundle plotters -o only/platen-restore/office.zip
# One byte is wrong here, and there the end is missing.
cp pens.ctb only/platen-repair/broken.ctb
printf '\377' | dd of=only/platen-repair/broken.ctb bs=1 seek=1000 conv=notrunc status=none
head -c 700 plotter.pc3 >only/platen-repair/broken.pc3
