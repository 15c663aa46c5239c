#!/usr/bin/env bash
# Makes the folder that everything for WebAssembly is found in, and prints its name: the C and C++
# libraries of Debian's packages, and zlib, libdeflate, minizip, libmd and nlohmann/json, which Debian
# does not package for it, all but the last from Debian's source packages. That takes half a minute,
# once: the folder is kept in the user's cache and shared by all checkouts.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
source "$root/scripts/source-packages.sh"

prefix=$(wasm_prefix)
if [[ -d $prefix ]]; then
    printf '%s\n' "$prefix"
    exit 0
fi

need_packages "${packages_wasm[@]}"
mkdir -p "$cache_folder"
# Two checkouts may come here at the same time; the second waits and finds the work done.
exec 9>"$cache_folder/wasm.lock"
flock 9
if [[ -d $prefix ]]; then
    printf '%s\n' "$prefix"
    exit 0
fi

# Under the lock, whatever an interrupted run has left belongs to nobody.
rm -rf "$cache_folder"/wasm-building.*
work=$(mktemp -d "$cache_folder/wasm-building.XXXXXX")
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
staging=$work/prefix
logs=$root/build/logs/wasm-deps
mkdir -p "$staging/include" "$staging/lib"

ln -s /usr/include/wasm32-wasi "$staging/include/wasm32-wasi"
ln -s /usr/lib/wasm32-wasi "$staging/lib/wasm32-wasi"
cp -rL /usr/include/nlohmann "$staging/include/nlohmann"

say "building the libraries for WebAssembly, once: $prefix"
prepare_source_lists
for name in zlib libdeflate minizip libmd; do
    fetch_source "$name" "$work/sources/$name"
    cp "$root/cmake/$name.cmake" "$work/sources/$name/CMakeLists.txt"
    quietly "configuring $name for WebAssembly" "$logs/configure-$name.log" \
        cmake -S "$work/sources/$name" -B "$work/build/$name" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-wasm.cmake" \
        -DPLATEN_WASM_PREFIX="$staging" -DCMAKE_INSTALL_PREFIX="$staging" \
        -DCMAKE_BUILD_TYPE=Release
    quietly "building $name for WebAssembly" "$logs/build-$name.log" \
        cmake --build "$work/build/$name" --target install
done
mv -T "$staging" "$prefix"
printf '%s\n' "$prefix"
