#!/usr/bin/env bash
# Real shells complete lines with what the command PROGRAM prints for them.
# completion_test.sh PROGRAM
set -euo pipefail
program=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
for shell in bash fish zsh; do
    mkdir "$folder/$shell"
    "$program" --completion "$shell" >"$folder/$shell/_platen"
done
mkdir "$folder/work" "$folder/work/folder"
cd "$folder/work"
touch pens.ctb

# A line, and the one word that it ends with when it is completed.
cat >"$folder/expected" <<'END'
platen char: chart
platen merge-: merge-pens
platen --comp: --completion
platen --completion f: fish
platen style rena: rename
platen style set --recu: --recursive
platen set pens.ctb --in: --in-place
platen chart --to h: html
platen chart --to=h: html
platen chart -o pe: pens.ctb
platen chart --gather pe: pens.ctb
platen create st: stb
platen create ctb --preset iso-0.2: iso-0.25
platen bundle fo: folder
platen restore office.zip fo: folder
END
cut -d: -f1 "$folder/expected" >"$folder/lines"

# The word alone, as all three may put it: "--to=html", "folder/", "rename".
words() { sed -E 's/: --to=/: /; s/[=/ ]*$//'; }

cat >"$folder/ask.bash" <<'END'
source "$1/bash/_platen"
while IFS= read -r line; do
    read -r -a COMP_WORDS <<<"${line/=/ = }"
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _platen
    echo "$line: ${COMPREPLY[*]}"
done <"$1/lines"
END
cat >"$folder/ask.fish" <<'END'
source $argv[1]/fish/_platen
while read -l line
    echo "$line: "(complete -C "$line" | string replace -r '\t.*' '' | string join ' ')
end <$argv[1]/lines
END
# zsh has no way to ask: keys are pressed in a terminal of its own.
cat >"$folder/ask.zsh" <<'END'
zmodload zsh/zpty
zpty z zsh -f -i
zpty -w z "PS1=; fpath=($1/zsh \$fpath); autoload -Uz compinit; compinit -u -D; \
show() { print -r -- \"<\$BUFFER>\"; BUFFER= }; zle -N show; bindkey '^X' show; print ready\$((1+1))"
zpty -r z said '*ready2*'
while IFS= read -r line; do
    zpty -w -n z "$line"$'\t\x18'
    zpty -r z said '*<*>*'
    buffer=${${${said##*<}%%>*}% }
    print -r -- "$line: ${buffer##* }"
done <$1/lines
zpty -d z
END
for shell in bash fish zsh; do
    HOME=$folder timeout 60 "$shell" "$folder/ask.$shell" "$folder" 2>&1 | words >"$folder/said"
    diff -u --label expected --label "$shell" "$folder/expected" "$folder/said"
done
