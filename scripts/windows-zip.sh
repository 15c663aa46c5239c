#!/usr/bin/env bash
# Makes the zips for Windows from the preset windows:
#   scripts/windows-zip.sh [--output DIR]     (default: build/windows-zip)
#   platen-VERSION-windows-x86_64.zip   the command, the libraries with all DLLs that they need, what
#                                       programs are built with, the page, licences
#   platen-VERSION-windows-tests.zip    the tests, to be run on a machine of somebody's own
# The same sources give the same bytes: times come from SOURCE_DATE_EPOCH, or else the last commit.
# The names of the zips are printed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

output=$root/build/windows-zip
while (($# > 0)); do
    case $1 in
        --output)
            output=${2:?--output needs a folder}
            shift
            ;;
        --help)
            sed -n '2,/^set/{s/^# \?//;/^set/!p}' "$0"
            exit 0
            ;;
        *) die "usage: scripts/windows-zip.sh [--output DIR]" ;;
    esac
    shift
done

need_packages "${packages_windows[@]}" "${packages_build[@]}" "${packages_wasm[@]}" "${packages_web[@]}" \
    "${packages_zip[@]}"
if [[ -z ${SOURCE_DATE_EPOCH:-} ]]; then
    SOURCE_DATE_EPOCH=$(git -C "$root" log -1 --format=%ct) ||
        die "this is no clone: set SOURCE_DATE_EPOCH to the seconds of the release"
fi
export SOURCE_DATE_EPOCH PYTHONDONTWRITEBYTECODE=1
build_preset windows
modules=$("$root/scripts/web.sh")

build=$root/build/windows
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
prefix=$(windows_prefix)
work=$root/build/windows-zip-work
name=platen-$version-windows-x86_64
folder=$work/$name
tests=$work/platen-$version-windows-tests
rm -rf "$work"
mkdir -p "$folder" "$tests/bin" "$tests/samples" "$output"
output=$(cd "$output" && pwd)
zip_step() { /usr/bin/python3 "$root/scripts/windows_zip.py" "$@"; }

# Where a DLL that is needed may lie.
searched=("$build/c_interface" "$build" "$prefix/lib/gcc_x64_dll"
    "$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")"
    /usr/x86_64-w64-mingw32/lib /usr/x86_64-w64-mingw32/bin)

# Prints the archives of others that the programs named are linked with, as the build says.
# linked_archives TARGET...
linked_archives() {
    local target
    for target in "$@"; do
        ninja -C "$build" -t commands "$target" | tail -n 1 | tr ' ' '\n' |
            sed -n "s,^\(/usr/.*\|$prefix/.*\)/\([^/]*\.a\)$,\2,p"
    done | sort -u
}

# --- The command and the libraries ---

quietly "installing for Windows" "$root/build/logs/windows-zip.log" \
    cmake --install "$build" --prefix "$folder" --strip
# Charts as files need cairo's headers, too, which are nobody's to find.
rm "$folder"/lib/libplaten_chart_files.a "$folder"/lib/cmake/platen/{cairo_library,platenChartFiles*}.cmake
mkdir -p "$folder/share/platen"
cp "$root/build/web/platen.html" "$folder/share/platen"
zip_step dlls "$folder/bin" "${searched[@]}"
# For compilers that do not know the other import library's form.
zip_step def "$folder/bin/platen_c.dll" "$folder/lib/platen_c.def"
llvm-dlltool-22 -m i386:x86-64 -D platen_c.dll -d "$folder/lib/platen_c.def" -l "$folder/lib/platen_c.lib"
mkdir -p "$folder/docs"
cp "$root"/docs/{abi,format,git,glossary}.md "$root/CHANGELOG.md" "$folder/docs"
sed "s/@VERSION@/$version/g" "$root/packaging/windows/README.txt" | sed 's/$/\r/' >"$folder/README.txt"
mapfile -t archives < <(linked_archives platen.exe platen.dll c_interface/platen_c.dll)
zip_step licences "$folder" "$modules" "${archives[@]}"

# --- The tests ---

cp "$build"/tests/*.exe "$build/tests/MAPI32.DLL" "$tests/bin"
# What the check of built files is tried on says nothing on another machine.
rm "$tests/bin/unprotected.exe"
# Those of this tree: the folder may have others from before.
mapfile -t replays < <(ninja -C "$build" -t targets all | sed -n 's|^\(fuzz/replay_[a-z_]*\.exe\): .*|\1|p')
((${#replays[@]} > 0)) || die "there are no replays in $build"
for program in "${replays[@]}"; do
    samples=${program#fuzz/replay_}
    cp "$build/$program" "$tests/bin"
    cp -r "$root/fuzz/corpus/${samples%.exe}" "$tests/samples"
done
x86_64-w64-mingw32-strip "$tests"/bin/*
zip_step dlls "$tests/bin" "${searched[@]}"
cp "$root/tests/machine/not_run.txt" "$tests/not-run.txt"
sed 's/$/\r/' "$root/packaging/windows/run-tests.cmd" >"$tests/run-tests.cmd"
sed "s/@VERSION@/$version/g" "$root/packaging/windows/README-tests.txt" | sed 's/$/\r/' >"$tests/README.txt"
mapfile -t archives < <(cd "$build" && linked_archives tests/*.exe "${replays[@]}")
zip_step licences "$tests" "$modules" "${archives[@]}"

for made in "$folder" "$tests"; do
    zip_step zip "$made" "$output/${made##*/}.zip"
    printf '%s\n' "$output/${made##*/}.zip"
done
