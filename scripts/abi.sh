#!/usr/bin/env bash
# The functions and types that the C interface exports, against the list in the repository:
#   scripts/abi.sh LIBRARY [LIST]          says what is different (default list: c_interface/platen_c.abi)
#   scripts/abi.sh --write LIBRARY         makes the list anew, for a change on purpose
# LIBRARY is libplaten_c.so of a build with debug information, as the preset dev makes it.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

need_packages abigail-tools
write=false
if [[ ${1:-} == --write ]]; then
    write=true
    shift
fi
library=${1:?usage: scripts/abi.sh [--write] LIBRARY [LIST]}
list=${2:-$root/c_interface/platen_c.abi}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

abidw --exported-interfaces-only --no-elf-needed --no-show-locs --no-corpus-path \
    --no-comp-dir-path --headers-dir "$root/include/platen" --drop-private-types \
    "$(realpath "$library")" >"$work/now.abi"
if [[ $write == true ]]; then
    cp "$work/now.abi" "$list"
    say "$list says what $library exports now"
    exit 0
fi
status=0
abidiff "$list" "$work/now.abi" >&2 || status=$?
((status == 0)) || die "the C interface has changed (status $status). Functions are added, never changed or" \
    "removed: if that is meant, raise PLATEN_INTERFACE_VERSION and run scripts/abi.sh --write $library"
say "the C interface exports what $(basename "$list") lists:" \
    "$(grep -c '<function-decl' "$list") functions"
