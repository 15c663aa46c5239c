#!/usr/bin/env bash
# Fuzzes one entry point: scripts/fuzz.sh NAME [SECONDS]   (60 seconds unless told)
# Starts from fuzz/corpus/NAME and keeps what it finds in build/fuzz/NAME: new inputs in corpus/,
# inputs that fail beside it. The last line says how many inputs were tried.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

name=${1:-}
seconds=${2:-60}
if [[ -z $name || ! -f $root/fuzz/fuzz_$name.cpp ]]; then
    die "usage: scripts/fuzz.sh NAME [SECONDS], where fuzz/fuzz_NAME.cpp is there"
fi
[[ $seconds =~ ^[1-9][0-9]*$ ]] || die "not a number of seconds: $seconds"

need_packages "${packages_build[@]}" "${packages_test[@]}" "${packages_sanitize[@]}"
build_preset sanitize "fuzz_$name"

found=$root/build/fuzz/$name
mkdir -p "$found/corpus"
options=(-max_total_time="$seconds" -print_final_stats=1 -artifact_prefix="$found/")
if [[ -f $root/fuzz/$name.dict ]]; then
    options+=(-dict="$root/fuzz/$name.dict")
fi
corpora=("$found/corpus")
if [[ -d $root/fuzz/corpus/$name ]]; then
    corpora+=("$root/fuzz/corpus/$name")
fi

status=0
"$root/build/sanitize/fuzz/fuzz_$name" "${options[@]}" "${corpora[@]}" 2>&1 |
    tee "$found/log" >&2 || status=$?
tried=$(sed -n -E 's/^stat::number_of_executed_units: *([0-9]+)$/\1/p' "$found/log")
if ((status != 0)); then
    say "fuzz_$name failed (status $status); the input is in $found"
fi
printf 'fuzz_%s: %s inputs tried\n' "$name" "${tried:-0}"
exit "$status"
