#!/usr/bin/env bash
# Builds the core for WebAssembly and lets it read and write documents in Node: the sample files of the
# fuzzers, and documents of its own. The core of this machine must leave the same files, byte for byte.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

need_packages "${packages_build[@]}" "${packages_test[@]}" "${packages_wasm[@]}"
command -v node >/dev/null || need_packages nodejs
build_preset wasm platen_documents
build_preset dev platen_documents

work=$root/build/wasm/documents
rm -rf "$work"
mkdir -p "$work/native" "$work/wasm"
mapfile -t samples < <(find "$root"/fuzz/corpus/{body_text,container,json_body,plot_*,repair} -type f | sort)

# Both see the same paths, since a configuration keeps that of its parameters.
for system in native wasm; do
    program=("$root/build/dev/tests/wasm/platen_documents")
    [[ $system == native ]] || program=(node --no-warnings "$root/tests/wasm/run.mjs"
        "$root/build/wasm/tests/wasm/platen_documents.wasm")
    mkdir "$work/out"
    quietly "documents of $system" "$root/build/logs/wasm-$system.log" \
        timeout 120 "${program[@]}" "$work/out" "${samples[@]}"
    mv -T "$work/out" "$work/$system"
done
diff -r "$work/native" "$work/wasm" >&2 || die "WebAssembly leaves other files than this machine"
say "WebAssembly leaves the same $(find "$work/wasm" -type f | wc -l) files as this machine;" \
    "the program takes $(stat -c %s "$root/build/wasm/tests/wasm/platen_documents.wasm") bytes"
