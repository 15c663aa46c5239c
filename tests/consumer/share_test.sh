#!/usr/bin/env bash
# What was installed for people and desktops is what its readers take. share_test.sh PREFIX
set -euo pipefail
prefix=$1
share=$prefix/share
platen=$prefix/bin/platen

# A page for the program and each command, and nobody has anything to say about one. (Pages have no date,
# so that they are the same however often they are made.)
# A system may keep them compressed.
pages=("$share"/man/man1/platen*.1*)
commands=$("$platen" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z-]*\) .*/\1/p' | wc -l)
((${#pages[@]} == commands + 1)) || { echo "${#pages[@]} manual pages for $commands commands"; exit 1; }
# (What a pipe after "!" says ends nothing.)
if mandoc -T lint -W warning "${pages[@]}" | grep -v 'missing date'; then exit 1; fi
said=$(for page in "${pages[@]}"; do zcat -f "$page" | groff -man -Tutf8 -ww -z 2>&1; done)
[[ -z $said ]] || { echo "$said"; exit 1; }
mandoc "$share"/man/man1/platen-chart.1* | sed 's/.\x08//g' | grep -q 'svg|html|png|pdf'

# (Debian has another folder for zsh.)
for file in bash-completion/completions/platen fish/vendor_completions.d/platen.fish \
    zsh/*/_platen platen/schema/info-1.json icons/hicolor/scalable/apps/platen.svg; do
    found=("$share"/$file)
    [[ -s ${found[0]} ]] || { echo "$file is not there"; exit 1; }
done

# Files are known by their names, and tables by what they begin with.
xmllint --noout "$share"/icons/hicolor/scalable/*/*platen*.svg
update-mime-database "$share/mime"
desktop-file-validate "$share/applications/platen.desktop"
export XDG_DATA_DIRS=$share:/usr/share XDG_DATA_HOME=$prefix/home
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$platen" create pc3 --device "print as pdf" -o "$work/a.pc3"
"$platen" create ctb -o "$work/a.ctb"
"$platen" create stb -o "$work/a.stb"
cp "$work/a.ctb" "$work/table"
cp "$work/a.pc3" "$work/a.pmp"
for file in a.ctb:ctb a.stb:stb a.pc3:pc3 a.pmp:pmp table:ctb; do
    kind=application/vnd.platen.${file#*:}
    gio info -a standard::content-type "$work/${file%:*}" | grep -q "content-type: $kind\$" ||
        { echo "${file%:*} is not known as $kind"; exit 1; }
    icon=$share/icons/hicolor/scalable/mimetypes/${kind/\//-}.svg
    [[ ${file%:*} == table || -s $icon ]] || { echo "$icon is not there"; exit 1; }
done
