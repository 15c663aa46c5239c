#!/usr/bin/env bash
# Shows the command at work: scripts/demo.sh PLATEN...   (the command and what must come before it)
# Prints each command line and what it answers, and stops at the first that fails.
# The files stay in build/demo.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

platen=("$@")
((${#platen[@]} > 0)) || die "usage: scripts/demo.sh PLATEN..."

# Relative names, which mean the same to a Windows program.
rm -rf "$root/build/demo"
mkdir -p "$root/build/demo"
cd "$root/build/demo"

show() {
    local word line='$ platen'
    for word in "$@"; do
        [[ $word =~ ^[A-Za-z0-9_./-]+$ ]] || word="'$word'"
        line+=" $word"
    done
    printf '%s\n' "$line"
    "${platen[@]}" "$@"
    printf '\n'
}

show create ctb -o office.ctb --description 'Pens of the drawing office'
show info office.ctb
show get office.ctb plot_style/0/name
show check office.ctb
show convert office.ctb -o office.stb --to stb
show get office.stb plot_style/1/name
show convert office.ctb -o office.json
show convert office.ctb -o office.txt
printf 'The files are in build/demo.\n'
