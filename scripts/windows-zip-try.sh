#!/usr/bin/env bash
# Tries the zips for Windows as somebody would who has nothing else: in a fresh Wine prefix, unpacked into
# a folder with a space and a letter beyond ASCII in its name.
#   scripts/windows-zip-try.sh [DIR]      DIR has the zips (default: build/windows-zip)
# The command is run; programs in C and C++ are built with what is in the zip and run; the tests run, once
# without printers and once with those of scripts/printers.sh. The last line says how many checks passed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
source "$root/scripts/display.sh"
source "$root/scripts/printers.sh"

if [[ ${1:-} == --help ]]; then
    sed -n '2,/^set/{s/^# \?//;/^set/!p}' "$0"
    exit 0
fi
zips=${1:-$root/build/windows-zip}
need_packages "${packages_windows[@]}" "${packages_zip[@]}" "${packages_display[@]}" "${packages_printers[@]}" \
    pkg-config

work=$root/build/windows-zip-try
rm -rf "$work"
place="$work/Pläne und Stifte"
mkdir -p "$place/work" "$root/build/logs"
log=$root/build/logs/windows-zip-try.log
: >"$log"
export PYTHONDONTWRITEBYTECODE=1

passed=0
failed=0
finished=false
finish() {
    WINEPREFIX=$work/prefix wineserver -k 2>/dev/null || true
    printers_stop || true
    display_stop
    [[ $finished == true ]] || failed=$((failed + 1))
    printf '%d checks passed, %d failed\n' "$passed" "$failed"
    ((failed == 0 && passed > 0)) || exit 1
}
trap finish EXIT

# check WHAT COMMAND...: passes when the command does; its output is shown when it does not.
check() {
    local what=$1 status=0
    shift
    set +e
    (
        set -euo pipefail
        "$@"
    ) >"$work/said" 2>&1 </dev/null
    status=$?
    set -e
    { printf '== %s\n' "$what" && cat "$work/said"; } >>"$log"
    if ((status == 0)); then
        passed=$((passed + 1))
        say "  passed: $what"
    else
        failed=$((failed + 1))
        say "  FAILED: $what (status $status)"
        tail -n 40 "$work/said" | sed 's/^/  | /' >&2
    fi
}

windows() { timeout 1500 wine "$@"; }
platen() { windows "$folder/bin/platen.exe" "$@"; }
step() { /usr/bin/python3 "$root/scripts/windows_zip.py" "$@"; }

# says TEXT COMMAND...: the command ends well, and its output has the text.
says() {
    local text=$1 output
    shift
    output=$("$@")
    printf '%s\n' "$output"
    [[ $output == *"$text"* ]]
}

# --- A Wine of its own ---

wine_environment
unset WINEPATH
export WINEPREFIX=$work/prefix
quietly "preparing a fresh Wine" "$root/build/logs/wine.log" make_wine_prefix
wine_services

# --- The command ---

unzip -q "$zips"/platen-*-windows-x86_64.zip -d "$place"
folder=$(echo "$place"/platen-*-windows-x86_64)
version=${folder##*/platen-}
version=${version%-windows-x86_64}
cd "$place/work"

uses_msvcrt() {
    local imported
    imported=$(for file in "$folder"/bin/*.{dll,exe}; do x86_64-w64-mingw32-objdump -p "$file"; done)
    grep -q -F 'DLL Name: msvcrt.dll' <<<"$imported"
    ! grep -i -E 'DLL Name: (ucrt|api-ms-win-crt)' <<<"$imported"
}
makes_charts() {
    platen chart Stifte-ä.ctb -o pens.svg
    platen chart Stifte-ä.ctb -o pens.png
    [[ $(head -c 4 pens.svg) == '<svg' || $(head -c 5 pens.svg) == '<?xml' ]]
    xmllint --noout pens.svg
    [[ $(head -c 8 pens.png | od -An -tx1 | tr -d ' ') == 89504e470d0a1a0a ]]
}
shows_the_page() {
    platen view Stifte-ä.ctb -o page.html
    cmp -s "$folder/share/platen/platen.html" page.html && return 1
    grep -q -F '"name":"Stifte-\u00e4.ctb"' page.html
}

check "the DLLs are those that are needed, and their licences are there" step needed "$folder/bin"
check "programs have their version in their properties" \
    step versions "$version" "$folder"/bin/platen{.exe,.dll,_c.dll}
check "the C library is MSVCRT" uses_msvcrt
check "platen --version" says "platen $version" platen --version
check "create" platen create ctb -o Stifte-ä.ctb --preset iso-0.25
check "info" says "colour-dependent plot style table" platen info Stifte-ä.ctb
check "check" platen check Stifte-ä.ctb
check "charts as SVG and PNG" makes_charts
check "the page with a file in it" shows_the_page

# --- Programs that are built with it ---

# Users have the folder of the DLLs on their PATH.
with_dlls() {
    WINEPATH="Z:${folder//\//\\}\\bin" windows "$@"
}
builds_by_cmake() {
    env -u PLATEN_WINDOWS_PREFIX cmake -S "$root/tests/consumer" -B consumers -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-mingw64.cmake" -Dplaten_DIR="$folder/lib/cmake/platen"
    cmake --build consumers
    # Nothing came from the tree or its libraries.
    ! grep -F -e "$root/build/windows/" -e "$(windows_prefix)" consumers/build.ninja
}
builds_by_pkg_config() {
    local flags
    # Paths come with their spaces quoted for a shell.
    flags=$(PKG_CONFIG_LIBDIR="$folder/lib/pkgconfig" pkg-config --cflags --libs platen-c)
    eval "x86_64-w64-mingw32-gcc-posix -std=c99 $(printf %q "$root/tests/consumer/c.c") -o by_pkg_config.exe $flags"
}
builds_for_other_compilers() {
    step compare "$folder/lib/platen_c.def" "$folder/lib/platen_c.lib" "$root/c_interface/platen_c.abi"
    clang-22 --target=x86_64-pc-windows-msvc -ffreestanding -Wall -Werror -O1 -I "$folder/include" \
        -c "$root/tests/consumer/no_crt.c" -o no_crt.obj
    printf 'LIBRARY kernel32.dll\nEXPORTS\n    ExitProcess\n' >kernel32.def
    llvm-dlltool-22 -m i386:x86-64 -d kernel32.def -l kernel32.lib
    lld-link-22 /nodefaultlib /entry:start /subsystem:console /out:no_crt.exe no_crt.obj \
        "$folder/lib/platen_c.lib" kernel32.lib
}

check "programs are built by CMake" builds_by_cmake
check "a C program runs" says "Color 1-9, 250: screening" with_dlls consumers/c_consumer.exe
check "a C++ program with the library runs" says "written, read and checked" with_dlls consumers/consumer.exe
check "a C++ program with the core runs" with_dlls consumers/core_consumer.exe
check "a C program is built by pkg-config" builds_by_pkg_config
check "it runs" says "Color 1-9, 250: screening" with_dlls by_pkg_config.exe
check "a C program is linked as other compilers do" builds_for_other_compilers
check "it runs" with_dlls no_crt.exe

# --- The tests ---

unzip -q "$zips"/platen-*-windows-tests.zip -d "$place"
cd "$place"/platen-*-windows-tests
run_tests() {
    local status=0
    # For Wine "/" is always on drive Z:, and tests count on it that "/" is on the drive that they are on.
    windows cmd /c "set TMP=Z:${work//\//\\}&& run-tests.cmd $*" || status=$?
    sed -n '1,/^Passed:/p' report.txt
    return "$status"
}
# runs_everything: no test fails, settings are as they were, and no file is left.
runs_everything() {
    run_tests "$@"
    grep -q '^Settings before and after: the same' report.txt
    ! compgen -G "$work/platen-test*"
}
prints_nothing() {
    runs_everything
    ! compgen -G "$PLATEN_TEST_PRINTERS/spool/d*" && [[ ! -s $PLATEN_TEST_PRINTERS/out/office.ps ]]
}
prints_when_asked() {
    local waited file
    run_tests --print --only platen_machine_tests
    for file in office.ps plotter.prn; do
        for ((waited = 0; waited < 300; waited++)); do
            [[ ! -s $PLATEN_TEST_PRINTERS/out/$file ]] || break
            sleep 0.2
        done
        [[ -s $PLATEN_TEST_PRINTERS/out/$file ]]
    done
}
# The tests that know the queues are told of them.
uses_the_queues() {
    PLATEN_TEST_PRINTERS=$printers run_tests --only platen_spooler_tests
}

display_start
# The tests take what the display shows from the system, as they have to elsewhere.
unset PLATEN_TEST_SCREEN
wine_rest
check "the tests run without printers" runs_everything
cp report.txt "$work/report.txt"
say "$(head -n 1 report.txt)"
check "those that change settings and put them back" run_tests --settings --only platen_gui_tests
wineserver -k -w || true

printers_start
printers=$PLATEN_TEST_PRINTERS
# Known to this script alone, so that the tests do as they do on a machine of somebody's own.
export -n PLATEN_TEST_PRINTERS
printers_environment
check "the tests run with printers, and print nothing" prints_nothing
cp report.txt "$work/report-printers.txt"
say "$(head -n 1 report.txt)"
check "they print when they are asked to" prints_when_asked
check "those that know the queues run with them" uses_the_queues
say "reports: $work/report.txt, $work/report-printers.txt"

finished=true
