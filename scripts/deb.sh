#!/usr/bin/env bash
# Makes the Debian packages of this tree, also of what is not committed yet:
#   scripts/deb.sh [--output DIR]
# DIR (default: build/deb/packages) gets the source package and the binary packages; lintian has no error and
# no warning about any of them. They are the same, byte for byte, however often they are made of a commit.
# Nothing is done when nothing has changed. The last line on stdout is the folder.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

case "$#:${1:-}" in
    0:) output=$root/build/deb/packages ;;
    2:--output) mkdir -p "$2" && output=$(cd "$2" && pwd) ;;
    1:--help) sed -n '2,6s/^# //p' "$0" && exit 0 ;;
    *) die "usage: scripts/deb.sh [--output DIR]" ;;
esac
need_packages "${packages_build[@]}" "${packages_python[@]}" "${packages_deb[@]}"
"$root/scripts/web.sh" >/dev/null

folder=$root/build/deb
log=$root/build/logs/deb.log
work=$folder/work
made=$folder/made
mkdir -p "$folder"
exec 9>"$folder/lock"
flock 9

version=$(sed -n 's/^project(Platen VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
revision=$(dpkg-parsechangelog -l "$root/packaging/debian/changelog" -S Version)
[[ $revision == "$version"-* ]] ||
    die "packaging/debian/changelog is about $revision, and this is Platen $version"

# The tree as it stands, as git would commit it.
cp "$(git -C "$root" rev-parse --path-format=absolute --git-path index)" "$folder/index"
tree=$(cd "$root" && export GIT_INDEX_FILE=$folder/index && git add --all && git write-tree)
SOURCE_DATE_EPOCH=$(git -C "$root" log -1 --format=%ct)
export SOURCE_DATE_EPOCH

# pack FOLDER ARCHIVE: the same bytes for the same files.
pack() {
    tar --create --directory "$(dirname "$1")" --sort=name --format=gnu --mtime="@$SOURCE_DATE_EPOCH" \
        --owner=0 --group=0 --numeric-owner --mode=go=rX,u+w "$(basename "$1")" | xz -T1 >"$2"
}

build_packages() {
    local source=$work/platen-$version base=$work/platen_$version
    rm -rf "$work"
    mkdir -p "$source" "$work/page-built"
    git -C "$root" archive "$tree" | tar --extract --directory "$source"
    pack "$source" "$base.orig.tar.xz"
    cp -r "$root"/build/web/{platen.html,static} "$work/page-built"
    pack "$work/page-built" "$base.orig-page-built.tar.xz"
    mv "$work/page-built" "$source"
    cp -r "$source/packaging/debian" "$source/debian"
    cd "$source"
    # Debian's helpers give the build a home of its own, without what is compiled already.
    CCACHE_DIR=$(ccache --get-config cache_dir)
    export CCACHE_DIR CCACHE_BASEDIR=$source CCACHE_NOHASHDIR=1
    # A Python of somebody's own has not what Debian's has.
    export PATH=/usr/sbin:/usr/bin:/sbin:/bin
    dpkg-buildpackage --no-sign --build=full "--jobs=$(nproc)"
    lintian --allow-root --fail-on error,warning --tag-display-limit 0 ../*.changes
}
export -f build_packages pack
export root work tree version

# Whatever could make other packages.
from="$tree $SOURCE_DATE_EPOCH $(cat "$root"/build/web/{platen.html,static/*} | sha256sum)"
if [[ $(cat "$made/from" 2>/dev/null || true) != "$from" ]]; then
    rm -rf "$made"
    quietly "building the Debian packages" "$log" bash -euo pipefail -c build_packages
    mkdir "$made"
    find "$work" -maxdepth 1 -type f -exec mv -t "$made" {} +
    rm -rf "$work"
    printf '%s\n' "$from" >"$made/from"
fi
mkdir -p "$output"
# Those of another commit have the same names, or those of another version.
rm -f "$output"/*platen*_*.{deb,dsc,changes,buildinfo,tar.xz}
cp "$made"/*_* "$output"
say "$(find "$output" -name '*.deb' | wc -l) packages of Platen $revision; lintian found nothing"
printf '%s\n' "$output"
