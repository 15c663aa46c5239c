#!/usr/bin/env bash
# Builds the libraries that the Windows programs need and Debian does not package for Windows, from
# Debian's source packages, and prints the folder they are in. That takes about eight minutes on two
# cores, once: the folder is kept in the user's cache and shared by all checkouts.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
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

# The machine's package sources, read as deb-src. They are left as they are: this apt has its lists,
# its cache and its sources in the work folder.
private_apt=(apt-get -q -y
    -o "Dir::Etc::SourceList=$work/apt/sources.list"
    -o "Dir::Etc::SourceParts=$work/apt/sources.list.d"
    -o "Dir::State::Lists=$work/apt/lists"
    -o "Dir::Cache=$work/apt/cache"
    -o APT::Sandbox::User=root)

prepare_source_lists() {
    local file
    mkdir -p "$work/apt/sources.list.d" "$work/apt/lists/partial" "$work/apt/cache/archives/partial"
    : >"$work/apt/sources.list"
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [[ -f $file ]] || continue
        sed -n -E 's/^[[:space:]]*deb[[:space:]]/deb-src /p' "$file" >>"$work/apt/sources.list"
    done
    for file in /etc/apt/sources.list.d/*.sources; do
        [[ -f $file ]] || continue
        sed -E 's/^Types:.*/Types: deb-src/' "$file" >"$work/apt/sources.list.d/${file##*/}"
    done
    quietly "reading the lists of source packages" "$logs/apt-update.log" "${private_apt[@]}" update
}

# fetch_source NAME FOLDER
fetch_source() {
    local name=$1 folder=$2 archive
    mkdir -p "$folder" "$work/downloads/$name"
    (
        cd "$work/downloads/$name"
        quietly "downloading $name" "$logs/fetch-$name.log" \
            "${private_apt[@]}" source --download-only --tar-only "$name"
    )
    # The upstream archive is all we need; Debian's own part beside it is for packaging.
    archive=$(find "$work/downloads/$name" -name '*.orig.tar.*' ! -name '*.asc' -print -quit)
    [[ -n $archive ]] || die "no upstream archive came for the source package $name"
    tar -xf "$archive" -C "$folder" --strip-components=1
}

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
