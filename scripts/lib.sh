# Functions shared by ./run, ./test and scripts/*. Sourced; expects bash with -euo pipefail.

export LC_ALL=C.UTF-8

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# --- Packages ------------------------------------------------------------------------------------

# What the command is built with, and what everything is.
packages_command=(g++ cmake ninja-build zlib1g-dev libdeflate-dev libminizip-dev libmd-dev
    nlohmann-json3-dev libcli11-dev pkg-config libpango1.0-dev)
packages_build=("${packages_command[@]}" ccache libwxgtk3.2-dev)
packages_bench=(libbenchmark-dev rapidjson-dev)
packages_test=(libgtest-dev libgmock-dev libexpat1-dev git abigail-tools python3 python3-jsonschema
    fish zsh groff-base mandoc libxml2-utils shared-mime-info desktop-file-utils libglib2.0-bin pkg-config
    python3-cffi)
packages_sanitize=(clang libclang-rt-14-dev llvm)
packages_mutate=(lld python3-clang-14)
packages_windows=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev googletest
    nlohmann-json3-dev libcli11-dev rapidjson-dev cmake ninja-build ccache
    wine wine64 xz-utils bzip2)
# The zips for Windows: an import library for other compilers, and a program that is linked with it.
packages_zip=(llvm-22 clang-22 lld-22 git python3 unzip)
packages_python=(python3-venv python3-pip python3-setuptools python3-wheel python3-cffi python3-pytest
    python3-hypothesis mypy)
# The Debian packages, and a system with nothing on it to use them in.
packages_deb=(dpkg-dev debhelper dh-python pybuild-plugin-pyproject python3-all lintian git xz-utils)
packages_chroot=(debootstrap)
# The site: Python's cffi, since it documents the package by loading it.
packages_site=(doxygen furo python3-breathe python3-cffi python3-myst-parser python3-sphinx)
# WebAssembly: clang's own libraries, WASI's C library, and Node, which runs the module.
packages_wasm=(clang-22 lld-22 llvm-22 libc++-22-dev-wasm32 libc++abi-22-dev-wasm32 libclang-rt-22-dev-wasm32
    wasi-libc cmake ninja-build nlohmann-json3-dev xz-utils)
# The page: what bundles it, unless it is there from elsewhere, and the browser of its tests.
packages_web=()
command -v node >/dev/null || packages_web+=(nodejs)
command -v npm >/dev/null || packages_web+=(npm)
packages_browser=(chromium)

# --- Messages: always on stderr, stdout belongs to the program that is run -----------------------

say() { printf '%s\n' "$*" >&2; }

die() {
    say "error: $*"
    exit 1
}

# Prints how far a build or a test run has come, reading its output: everything goes to the log,
# and on stderr appears a line every 15 seconds at most, the first one after 5 seconds.
# A short step therefore prints nothing.
# condense LABEL LOG
condense() {
    local label=$1 log=$2 line='' position='' started=$SECONDS next=$((SECONDS + 5)) status
    : >"$log"
    while :; do
        status=0
        IFS= read -r -t 5 line || status=$?
        if ((status > 128)); then # nothing was printed for a while; what was read is kept below
            [[ -z $line ]] || printf '%s' "$line" >>"$log"
        elif ((status != 0)); then
            [[ -z $line ]] || printf '%s\n' "$line" >>"$log"
            break
        else
            printf '%s\n' "$line" >>"$log"
        fi
        if [[ $line =~ ^\[([0-9]+/[0-9]+)\] || $line =~ ^\ *([0-9]+/[0-9]+)\ Test\  ]]; then
            position=" ${BASH_REMATCH[1]}"
        fi
        if ((SECONDS >= next)); then
            say "  $label$position ($((SECONDS - started)) s)"
            next=$((SECONDS + 15))
        fi
    done
}

# Runs a step quietly. Its output goes to LOG; when it fails, what matters of that is shown: of a
# build the first failure, otherwise the end.
# quietly LABEL LOG COMMAND...
quietly() {
    local label=$1 log=$2 status=0
    shift 2
    mkdir -p "$(dirname "$log")"
    "$@" </dev/null 2>&1 | condense "$label" "$log" || status=$?
    if ((status != 0)); then
        say "error: $label failed (status $status):"
        if grep -q '^FAILED:' "$log"; then
            awk '/^FAILED:/ { on = 1 } on && lines++ < 120 { print "  | " $0 }' "$log" >&2
        else
            tail -n 120 "$log" | sed 's/^/  | /' >&2
        fi
        say "  (all of it: $log)"
    fi
    return "$status"
}

# --- Installing packages -------------------------------------------------------------------------

# Prints those of the packages that are not installed.
missing_packages() {
    local installed name
    installed=" $(dpkg-query -W -f '${db:Status-Status}=${Package} ' "$@" 2>/dev/null || true)"
    for name in "$@"; do
        [[ $installed == *" installed=$name "* ]] || printf '%s\n' "$name"
    done
}

# Installs what is missing of the packages; calls apt only when something is.
need_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@" | sort -u)
    ((${#missing[@]} > 0)) || return 0

    local -a apt=(env DEBIAN_FRONTEND=noninteractive apt-get -y -o DPkg::Lock::Timeout=600)
    if ((EUID != 0)); then
        die "these packages are missing: ${missing[*]}
type: sudo apt-get update && sudo apt-get install --no-install-recommends ${missing[*]}"
    fi
    say "installing ${missing[*]}"
    quietly "apt-get update" "$root/build/logs/apt-update.log" "${apt[@]}" update || return
    quietly "apt-get install" "$root/build/logs/apt-install.log" \
        "${apt[@]}" install --no-install-recommends "${missing[@]}"
}

# --- Folders -------------------------------------------------------------------------------------

# A build machine may run us without HOME; ccache, Wine and the cache folder all need it.
if [[ -z ${HOME:-} ]]; then
    HOME=$(getent passwd "$(id -u)" | cut -d: -f6 || true)
    [[ -n $HOME && -w $HOME ]] || HOME=$root/build/home
    export HOME
fi

cache_folder=${XDG_CACHE_HOME:-$HOME/.cache}/platen

# The folder of the Windows libraries, named after what it is made by.
windows_prefix() {
    local hash
    hash=$(cat "$root/scripts/windows-recipe.sh" "$root/cmake/toolchain-mingw64.cmake" \
        "$root"/cmake/{libdeflate,minizip,libmd,cairo}.cmake | sha256sum)
    printf '%s/windows-%s\n' "$cache_folder" "${hash:0:16}"
}

# The folder of the libraries for WebAssembly, named in the same way.
wasm_prefix() {
    local hash
    hash=$(cat "$root/scripts/wasm-deps.sh" "$root/cmake/toolchain-wasm.cmake" \
        "$root"/cmake/{zlib,libdeflate,minizip,libmd}.cmake | sha256sum)
    printf '%s/wasm-%s\n' "$cache_folder" "${hash:0:16}"
}

# Prints the folder of the packages that the page is made and tested with, after installing them.
web_modules() {
    local hash folder
    hash=$(cat "$root/web/package.json" "$root/web/package-lock.json" | sha256sum)
    folder=$cache_folder/web-${hash:0:16}
    mkdir -p "$folder"
    (
        flock 9
        [[ ! -f $folder/made ]] || exit 0
        cp "$root/web/package.json" "$root/web/package-lock.json" "$folder"
        quietly "installing the packages of the page" "$root/build/logs/npm.log" \
            npm ci --prefix "$folder" --ignore-scripts --no-audit --no-fund || exit
        touch "$folder/made"
    ) 9>"$folder.lock" || return
    printf '%s\n' "$folder"
}

# --- Building ------------------------------------------------------------------------------------

# Configures a preset when it is new or when the presets or the libraries of a cross build have changed;
# CMake itself notices everything else.
# configure_preset PRESET
configure_preset() {
    local preset=$1 folder=$root/build/$1 made_from
    made_from=$(cksum <"$root/CMakePresets.json")
    if [[ $preset == windows ]]; then
        PLATEN_WINDOWS_PREFIX=$(windows_prefix)
        [[ -d $PLATEN_WINDOWS_PREFIX ]] || "$root/scripts/windows-deps.sh" >/dev/null || return
        export PLATEN_WINDOWS_PREFIX
        made_from+=" $PLATEN_WINDOWS_PREFIX"
    elif [[ $preset == wasm ]]; then
        PLATEN_WASM_PREFIX=$("$root/scripts/wasm-deps.sh") || return
        export PLATEN_WASM_PREFIX
        made_from+=" $PLATEN_WASM_PREFIX"
    fi
    mkdir -p "$folder"
    [[ $(cat "$folder/made-from" 2>/dev/null || true) != "$made_from" ]] || return 0
    rm -f "$folder/made-from"
    (
        cd "$root" || exit
        quietly "configuring $preset" "$root/build/logs/configure-$preset.log" \
            cmake --fresh --preset "$preset"
    ) || return
    printf '%s\n' "$made_from" >"$folder/made-from"
}

# Builds targets of a preset (all when none is named), configuring it first if need be.
# build_preset PRESET [TARGET...]
build_preset() {
    local preset=$1 folder=$root/build/$1
    shift
    mkdir -p "$folder"
    (
        flock 9
        configure_preset "$preset" || exit
        quietly "building $preset" "$root/build/logs/build-$preset.log" \
            ninja -C "$folder" "$@"
    ) 9>"$folder/build.lock"
}

# --- Wine ----------------------------------------------------------------------------------------

# Every checkout has a Wine of its own, so that two of them do not disturb each other.
wine_environment() {
    export WINEPREFIX=$root/build/windows/wineprefix
    # Its server keeps a folder for its socket, which would stay behind in /tmp.
    export TMPDIR=$root/build/windows/wine-server
    mkdir -p "$TMPDIR"
    export WINEDEBUG=-all
    # Wine's own helpers for .NET and HTML would be asked for in dialogs; nothing here needs them.
    # Tests have a mail service of their own, which Wine would otherwise take for its.
    export WINEDLLOVERRIDES='mscoree=;mshtml=;mapi32=n,b'
}

# Waits for the end of a Wine of a moment ago. Its desktop may be on a display that is gone, or on
# none, and programs that find it there show nothing.
wine_rest() {
    timeout 20 wineserver -w 2>/dev/null || wineserver -k -w 2>/dev/null || true
}

# Makes this checkout's Wine prefix if it is missing. Several tests may come here at once.
wine_prefix() {
    [[ ! -d $WINEPREFIX/pristine ]] || return 0
    (
        flock 9
        [[ ! -d $WINEPREFIX/pristine ]] || exit 0
        wineserver -k -w 2>/dev/null || true
        final=$WINEPREFIX
        export WINEPREFIX=$final.new
        rm -rf "$WINEPREFIX" "$final"
        # Wine's server lives on for seconds; it must not inherit the lock.
        quietly "preparing Wine" "$root/build/logs/wine.log" make_wine_prefix 9>&-
        mv -T "$WINEPREFIX" "$final"
    ) 9>"$root/build/windows/wineprefix.lock"
}

# Starts Wine's services, for a server that has none yet, apart from our input and output: the first
# program of a prefix starts them, and they would hold its output open long after it has ended.
wine_services() {
    wine cmd /c exit </dev/null >/dev/null 2>&1
}

# The same until wineserver -k. Wine's desktop ends a moment after the last program, and the next one
# starts it anew: while programs follow each other without a pause, the one that started it would
# seem to run on.
wine_keep() {
    local never=$TMPDIR/never
    [[ -p $never ]] || mkfifo "$never"
    wine_services
    # It waits for a line that never comes.
    wine cmd /c 'set /p line=' <>"$never" >/dev/null 2>&1 &
}

# The prefix moves once it is complete, so its server has to end first. Its registry is kept as it
# is now, before any program has left something in it: no printer of this machine is known there.
make_wine_prefix() {
    env -u DISPLAY CUPS_SERVER="$WINEPREFIX/none" wineboot -i && wineserver -w || return
    mkdir "$WINEPREFIX/pristine"
    find "$WINEPREFIX" -maxdepth 1 -type f -exec cp -p -t "$WINEPREFIX/pristine" {} +
}
