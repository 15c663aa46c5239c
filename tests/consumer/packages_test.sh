#!/usr/bin/env bash
# Uses Platen's Debian packages on a system that had none of them, as people would, and takes them away
# again: packages_test.sh, as root, where apt finds them. This folder holds what is built against them.
# The last line on stdout says how many checks passed and failed.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 MANWIDTH=100 MAN_KEEP_FORMATTING=
work=$(mktemp -d)
cd "$work"
passed=0
failed=0

# check WHAT COMMAND...: COMMAND is quiet unless it fails; what passed is said.
check() {
    local what=$1 status
    shift
    # Not as a condition: in one, nothing but the end of a function would count.
    set +e
    (set -euo pipefail && "$@") >said 2>&1 </dev/null
    status=$?
    set -e
    if ((status == 0)); then
        passed=$((passed + 1))
        echo "ok      $what"
    else
        failed=$((failed + 1))
        echo "FAILED  $what"
        tail -n 40 said | sed 's/^/  | /'
    fi
}

install() { apt-get install --yes --quiet --no-install-recommends "$@"; }
absent() { ! dpkg-query -W -f '${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed; }
# lists PACKAGE FILE...: the package has the files.
lists() {
    local package=$1 file
    shift
    for file in "$@"; do
        dpkg -L "$package" | grep -x "$file" && [[ -e $file ]] || {
            echo "$file is not in $package"
            return 1
        }
    done
}
# begins FILE HEX: what the file begins with.
begins() { [[ $(od -An -tx1 -N"$((${#2} / 2))" "$1" | tr -d ' \n') == "$2" ]]; }

names=(libplaten1 libplaten-c1 libplaten-dev platen platen-page python3-platen)
library=/usr/lib/$(dpkg --print-architecture | sed 's/amd64/x86_64/; s/arm64/aarch64/')-linux-gnu

# --- The command, alone --------------------------------------------------------------------------

check "nothing of Platen is there" bash -c '! command -v platen && ! find /usr /etc /var/lib/dpkg/info -iname "*platen*" | grep .'
check "the command installs" install platen
check "it brings no toolkit for windows" absent libgtk-3-0
version() { platen --version | grep -F "$(dpkg-query -W -f '${Version}' platen | sed 's/-[^-]*$//')"; }
check "platen --version is the package's" version
make_table() { platen create ctb --preset iso-0.25 -o pens.ctb && platen style set pens.ctb 1-9 screening=50 --in-place; }
check "platen makes a table and changes it" make_table
describe() { platen info pens.ctb | grep 'colour-dependent plot style table' && platen style list pens.ctb 9 | grep 'screening 50'; }
check "platen says what is in it" describe
refuse() {
    local status=0
    platen check pens.ctb
    head -c 2000 pens.ctb >torn.ctb
    platen check torn.ctb || status=$?
    ((status > 0))
}
check "platen finds a table sound and a part of it not" refuse
svg() { platen chart pens.ctb -o pens.svg && grep -q '</svg>' pens.svg; }
check "platen draws a chart as SVG" svg
png() { platen chart pens.ctb -o pens.png && begins pens.png 89504e470d0a1a0a; }
check "platen draws a chart as PNG" png
pdf() { platen chart pens.ctb -o pens.pdf && begins pens.pdf 255044462d; }
check "platen draws a chart as PDF" pdf
no_page() { ! platen view pens.ctb -o pens.html && [[ ! -e pens.html ]]; }
check "platen view says that there is no page" no_page
check "the page installs" install platen-page
view() { platen view pens.ctb -o pens.html && grep -qF "$(base64 -w0 pens.ctb)" pens.html; }
check "platen view finds it and puts a file in" view
static() { begins /usr/share/platen/static/platen.wasm 0061736d && lists platen-page /usr/share/platen/static/index.html /usr/share/platen/static/platen.{js,css}; }
check "the page for servers is whole" static
check "the reader of manual pages and the completion install" install man-db bash-completion
manual() { man platen | grep audit && man platen-chart | grep 'svg|html|png|pdf'; }
check "man shows the command and a sub-command" manual
complete_line() {
    set +eu +o pipefail
    source /usr/share/bash-completion/bash_completion
    _completion_loader platen
    local function
    function=$(complete -p platen | sed -n 's/.* -F \([^ ]*\) .*/\1/p')
    COMP_WORDS=(platen char) COMP_CWORD=1 COMP_LINE='platen char' COMP_POINT=11
    "$function" platen char platen
    echo "${COMPREPLY[*]}"
    [[ ${COMPREPLY[*]} =~ ^chart\ *$ ]]
}
check "bash completes a sub-command" complete_line
check "dpkg lists what the command has" lists platen /usr/bin/platen /usr/share/man/man1/platen.1.gz \
    /usr/share/bash-completion/completions/platen /usr/share/zsh/vendor-completions/_platen \
    /usr/share/fish/vendor_completions.d/platen.fish /usr/share/mime/packages/platen.xml \
    /usr/share/applications/platen.desktop /usr/share/icons/hicolor/scalable/apps/platen.svg \
    /usr/share/doc/platen/copyright

# --- Python ----------------------------------------------------------------------------------------

check "the Python package installs" install python3-platen
check "it brings no toolkit for windows" absent libgtk-3-0
check "it finds the library of the system" python3 -c "import platen._library as l; assert l._NAME == 'libplaten_c.so.1'
assert any(line.rstrip().split('/')[-1].startswith('libplaten_c.so.1') for line in open('/proc/self/maps'))"
check "a program in Python uses it" python3 "$here/consumer.py"
check "dpkg lists what it has" lists python3-platen /usr/lib/python3/dist-packages/platen/{__init__.py,_ffi.py,py.typed}

# --- C and C++ -------------------------------------------------------------------------------------

check "what programs are built with installs" install libplaten-dev g++ cmake ninja-build pkg-config \
    mandoc groff-base libxml2-utils shared-mime-info desktop-file-utils libglib2.0-bin
check "dpkg lists the headers and libraries" lists libplaten-dev /usr/include/platen/{platen,plotstyle}.h \
    "$library"/{libplaten.so,libplaten_c.so,libplaten_docs.a,cmake/platen/platenConfig.cmake,pkgconfig/platen.pc}
hardened() {
    # Read-only relocations, everything bound at the start.
    for file in /usr/bin/platen "$library"/libplaten.so.1 "$library"/libplaten_c.so.1; do
        readelf -dlW "$file" >elf
        grep -q GNU_RELRO elf
        grep -Eq 'BIND_NOW|FLAGS.*NOW' elf
    done
}
check "what runs is hardened" hardened
cmake -DWORK="$work/consumer" -DCOMPILER=c++ -DEXAMPLES="$here/examples" -P "$here/package_test.cmake" >built 2>&1 </dev/null || true
# Each consumer that worked says so; a script that stopped before the last one lacks some.
mapfile -t worked < <(sed -n 's/^-- works: //p' built)
passed=$((passed + ${#worked[@]}))
[[ ${#worked[@]} == 0 ]] || printf 'ok      %s\n' "${worked[@]}"
all_worked() { ((${#worked[@]} == 8)) || { cat built && return 1; }; }
check "all consumers work" all_worked

# --- And away again --------------------------------------------------------------------------------

dpkg -L "${names[@]}" | sort -u >listed
check "they are purged" apt-get purge --yes --quiet "${names[@]}"
gone() {
    local file
    if dpkg-query -W -f '${Package} ${db:Status-Status}\n' '*platen*' 2>/dev/null | grep -v ' not-installed$' ||
        find /usr /etc /var/lib/dpkg/info -iname '*platen*' | grep .; then
        return 1
    fi
    # What others have, too, such as /usr/bin, stays.
    while IFS= read -r file; do
        [[ ! -e $file || $file == /. ]] || dpkg -S "$file" >/dev/null || { echo "$file is left"; return 1; }
    done <listed
}
check "nothing of them is left" gone

printf '%d passed, %d failed\n' "$passed" "$failed"
((failed == 0 && passed > 0))
