#!/usr/bin/env bash
# Builds the libraries that the Windows programs need and Debian does not package for Windows, from
# Debian's source packages, and prints the folder they are in. That takes about ten minutes on two
# cores, once: the folder is kept in the user's cache and shared by all checkouts.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
source "$root/scripts/source-packages.sh"
source "$root/scripts/windows-recipe.sh"

prefix=$(windows_prefix)

# Complete or not there at all: it is renamed into place as the very last step.
if [[ -d $prefix ]]; then
    printf '%s\n' "$prefix"
    exit 0
fi

need_packages "${packages_windows[@]}"
mkdir -p "$cache_folder"

# Two checkouts may come here at the same time; the second waits and finds the work done.
exec 9>"$cache_folder/windows.lock"
if ! flock -n 9; then
    say "waiting for another run that builds the Windows libraries"
    flock 9
fi
if [[ -d $prefix ]]; then
    printf '%s\n' "$prefix"
    exit 0
fi

# Under the lock, whatever an interrupted run has left belongs to nobody.
rm -rf "$cache_folder"/windows-building.*
work=$(mktemp -d "$cache_folder/windows-building.XXXXXX")
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
staging=$work/prefix
mkdir -p "$work/apt" "$work/sources" "$work/build" "$staging"

# Logs outlive a failure.
logs=$root/build/logs/windows-deps

# build_project LABEL SOURCE PREFIX CMAKE-ARGUMENTS...
build_project() {
    local label=$1 source=$2 into=$3
    shift 3
    quietly "configuring $label for Windows" "$logs/configure-$label.log" \
        cmake -S "$source" -B "$work/build/$label" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-mingw64.cmake" \
        -DPLATEN_WINDOWS_PREFIX="$into" -DCMAKE_INSTALL_PREFIX="$into" \
        -DCMAKE_BUILD_TYPE=Release "$@"
    quietly "building $label for Windows" "$logs/build-$label.log" \
        cmake --build "$work/build/$label" --target install
    rm -rf "${work:?}/build/$label"
}

say "building the Windows libraries, once (about 12 minutes on two cores): $prefix"
prepare_source_lists
build_windows_libraries "$work/sources" "$staging"
mv -T "$staging" "$prefix"
printf '%s\n' "$prefix"
