#!/usr/bin/env bash
# Draws charts of a made-up table and a made-up configuration: scripts/charts.sh PLATEN...   (the
# command and what must come before it). They stay in build/charts.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

platen=("$@")
((${#platen[@]} > 0)) || die "usage: scripts/charts.sh PLATEN..."

# Relative names, which mean the same to a Windows program.
rm -rf "$root/build/charts"
mkdir -p "$root/build/charts"
cd "$root/build/charts"

platen() { "${platen[@]}" "$@" >/dev/null; }
style() { platen style set "$1" "$2" --in-place "${@:3}"; }
paper() { platen paper add office.pc3 --name "$1" --size "$2" "${@:3}"; }

platen create ctb -o office.ctb --description 'Pens of the drawing office'
style office.ctb 1-255 color=#000000 lineweight=0.25
style office.ctb 1,8 lineweight=0.18
style office.ctb 2,30-39 lineweight=0.35
style office.ctb 3,90-99 lineweight=0.5
style office.ctb 5,170-179 lineweight=0.7
style office.ctb 6,210-219 lineweight=1
style office.ctb 9,250-251 lineweight=0.13 screening=60
style office.ctb 252-255 lineweight=0.13 screening=30
style office.ctb 40-49 color=#b5651d lineweight=0.3
style office.ctb 130-139 color=object lineweight=0.2
style office.ctb 150-159 color=object lineweight=0.35 grayscale=on screening=50
style office.ctb 200-205 lineweight=1.4 linetype=5 ends=1 joins=2

platen create stb -o named.stb --description 'House styles'
style named.stb Normal lineweight=0.25
platen style add named.stb 'Wall cut' lineweight=0.7 color=#000000 --in-place
platen style add named.stb Furniture lineweight=0.13 screening=60 color=#2c6fbb \
    'description=behind the cut' --in-place

platen create pc3 --device 'Print As PDF' -o office.pc3
paper 'Site plan long' 1189x594 --margins 20,10,10,10
paper 'Section roll' 2400x594 --margins 10,10,10,10
paper 'A1 with strip' 871x594 --margins 25,10,10,10
paper 'A3 title' 420x297 --margins 20,10,10,10
paper 'A2 extended' 900x420 --margins 20,10,10,10
paper 'Half A4' 148x210
paper 'Square 600' 600x600 --margins 10,10,10,10
paper Banner 2000x300
paper 'Letter wide' 17x11 --units in --margins 0.25,0.25,0.25,0.75
paper 'Arch D' 24x36 --units in --margins 0.5,0.5,0.5,0.5
paper Detail 297x297
paper 'Cover sheet of the tender' 594x420 --margins 20,10,10,10

platen chart office.ctb -o office.svg
platen chart office.ctb -o gathered.svg --gather
platen chart office.ctb -o at-300-dpi.pdf --dpi 300
platen chart office.ctb -o office.html
platen chart named.stb -o named.png
platen chart office.pc3 -o papers.svg
platen chart office.pmp -o parameters.pdf
printf 'The charts are in %s:\n' "$root/build/charts"
ls -- *.svg *.pdf *.html *.png
