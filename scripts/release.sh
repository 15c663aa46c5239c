#!/usr/bin/env bash
# Makes everything that a release consists of, from a clean clone of a tag:
#   scripts/release.sh [--output DIR] [--twice] [--no-cache] [--bench] [--without NAME]... [TAG|HEAD]
#   --output DIR    where it goes (default: build/release-VERSION)
#   --twice         makes everything a second time in another folder and compares every byte
#   --no-cache      compiles without ccache, so that the second time nothing comes from the first
#   --bench         has a summary of bench/report in the report
#   --without NAME  leaves out source, deb, windows, page, python, schemas or site; the report says so
# Besides the artefacts there are SHA256SUMS, a bill of materials (platen-VERSION.spdx.json) and
# REPORT.md. Test counts come from build/*/test-report.xml of this checkout. Nothing is published.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

output=
twice=false
bench=false
tag=HEAD
without=' '
parts=(source deb windows page python schemas site)
while (($# > 0)); do
    case $1 in
        --output | --without)
            (($# > 1)) || die "$1 needs a value"
            if [[ $1 == --output ]]; then
                output=$2
            else
                [[ " ${parts[*]} " == *" $2 "* ]] || die "there is no part $2: ${parts[*]}"
                without+="$2 "
            fi
            shift
            ;;
        --twice) twice=true ;;
        --no-cache) export CCACHE_DISABLE=1 ;;
        --bench) bench=true ;;
        --help)
            sed -n '2,/^set/{s/^# \?//;/^set/!p}' "$0"
            exit 0
            ;;
        -*) die "unknown option: $1 (--help says what there is)" ;;
        *) tag=$1 ;;
    esac
    shift
done

need_packages "${packages_build[@]}" "${packages_python[@]}" "${packages_zip[@]}"
commit=$(git -C "$root" rev-parse --verify --quiet "$tag^{commit}") || die "there is no tag or commit $tag"
SOURCE_DATE_EPOCH=$(git -C "$root" log -1 --format=%ct "$commit")
export SOURCE_DATE_EPOCH PYTHONDONTWRITEBYTECODE=1 TZ=UTC
version=$(git -C "$root" show "$commit:CMakeLists.txt" | sed -n -E 's/^project\(Platen VERSION ([0-9.]+).*/\1/p')
[[ -n $version ]] || die "$tag has no version in CMakeLists.txt"
# A tag is called like its version; anything else makes files of that version that are nobody's release.
[[ $tag != v[0-9]* || $tag == "v$version" ]] || die "the tag $tag has the version $version in CMakeLists.txt"
output=${output:-$root/build/release-$version}
mkdir -p "$output" "$root/build/logs"
output=$(cd "$output" && pwd)
[[ -z $(ls -A "$output") ]] || die "$output is not empty"
export root commit version
umask 022

# Packs a folder, the same bytes for the same content. zip_folder FOLDER FILE
zip_folder() { /usr/bin/python3 "$root/scripts/windows_zip.py" zip "$1" "$2"; }

# --- The parts: each works in the clone, the current folder, and leaves its artefacts in a folder ---

make_source() {
    git -C "$root" archive --format=tar --prefix="platen-$version/" "$commit" |
        gzip -n -9 >"$1/platen-$version.tar.gz"
}
make_deb() { scripts/deb.sh --output "$1"; }
make_windows() { scripts/windows-zip.sh --output "$1"; }
make_site() {
    scripts/site.sh --output "build/platen-$version-site"
    zip_folder "build/platen-$version-site" "$1/platen-$version-site.zip"
}
make_page() {
    scripts/web.sh
    cp -r build/web/static "build/platen-$version-page"
    cp build/web/platen.html "build/platen-$version-page"
    zip_folder "build/platen-$version-page" "$1/platen-$version-page.zip"
    cp build/wasm/c_interface/platen.wasm "$1/platen-$version.wasm"
}
make_schemas() {
    mkdir -p build
    cp -r docs/schema "build/platen-$version-schemas"
    zip_folder "build/platen-$version-schemas" "$1/platen-$version-schemas.zip"
}
make_python() {
    local archive
    cd bindings/python
    /usr/bin/python3 setup.py -q sdist bdist_wheel
    cp dist/*.whl "$1"
    # The archive has the times and the user of today.
    archive=$(echo dist/*.tar.gz)
    mkdir repacked
    tar -xzf "$archive" -C repacked
    tar -C repacked --sort=name --owner=0 --group=0 --numeric-owner --mtime="@$SOURCE_DATE_EPOCH" -cf - . |
        gzip -n -9 >"$1/${archive##*/}"
}

# make_all FOLDER ARTEFACTS
make_all() {
    local folder=$1 artefacts=$2 part
    rm -rf "$folder"
    mkdir -p "$artefacts"
    # The packages are made of what git knows of a folder.
    git clone --quiet --no-checkout "$root" "$folder"
    git -C "$folder" checkout --quiet --detach "$commit"
    for part in "${parts[@]}"; do
        [[ $without != *" $part "* ]] || continue
        say "making $part"
        (
            cd "$folder"
            # Objects from one folder serve the other.
            export CCACHE_BASEDIR=$folder CCACHE_NOHASHDIR=1
            # In a shell of its own, which ends at the first failure.
            quietly "making $part" "$root/build/logs/release-$part.log" bash -euo pipefail -c \
                "$(declare -f zip_folder "make_$part"); make_$part \"\$1\"" - "$artefacts"
        )
    done
}

# The bill needs the zips for what is in them and the page's packages for their versions.
make_bill() {
    [[ $without != *' windows '* ]] || return 0
    local modules
    modules=$(web_modules)/node_modules
    /usr/bin/python3 "$root/scripts/sbom.py" write "$1" "$version" "$modules" "$1/platen-$version.spdx.json"
    bill=$(/usr/bin/python3 "$root/scripts/sbom.py" check "$1" "$1/platen-$version.spdx.json")
}

bill="none, since it is made from the zips for Windows"
make_all "$root/build/release/first" "$output"
make_bill "$output"

# --- Twice: the same bytes from another folder ---

same="not tried (--twice)"
if [[ $twice == true ]]; then
    second=$root/build/release/another-folder-for-the-second-time
    rm -rf "$second.artefacts"
    make_all "$second" "$second.artefacts"
    make_bill "$second.artefacts"
    different=$(diff -rq "$output" "$second.artefacts" || true)
    [[ -z $different ]] || same="DIFFERENT: $different"
    [[ -n $different ]] || same="all $(find "$output" -type f | wc -l) files made twice, in two folders, are the same"
    [[ ${CCACHE_DISABLE:-} == 1 ]] || same+=" (compiled objects may have come from ccache)"
fi
(cd "$output" && find . -type f ! -name SHA256SUMS -printf '%P\n' | sort | xargs -d '\n' sha256sum >SHA256SUMS)

# --- The report ---

abi_report() {
    local last
    last=$(git -C "$root" describe --tags --abbrev=0 --match 'v[0-9]*' "$commit^" 2>/dev/null || true)
    if [[ -z $last ]]; then
        printf 'no release before this one; it exports %s functions\n' \
            "$(git -C "$root" show "$commit:c_interface/platen_c.abi" | grep -c "<elf-symbol name=")"
        return
    fi
    git -C "$root" show "$last:c_interface/platen_c.abi" >"$root/build/release/last.abi"
    git -C "$root" show "$commit:c_interface/platen_c.abi" >"$root/build/release/this.abi"
    printf 'since %s:\n' "$last"
    abidiff "$root/build/release/last.abi" "$root/build/release/this.abi" || true
}
test_report() {
    local report count
    for report in "$root"/build/*/test-report.xml; do
        [[ -f $report ]] || continue
        count=$(tr '\n' ' ' <"$report" | grep -o '<testsuite [^>]*' | head -n 1 |
            grep -o -E '(tests|failures|skipped|disabled)="[0-9]+"' | tr '\n' ' ')
        printf -- '- %s: %s\n' "$(basename "$(dirname "$report")")" "${count//\"/}"
    done | grep . || printf 'no test has left a report in build\n'
}
fuzz_report() {
    git -C "$root" show "$commit:docs/trust.md" 2>/dev/null | grep -i -E 'fuzz|hours' || printf 'no figures in docs/trust.md\n'
}
{
    printf '# Platen %s\n\nFrom %s (%s).\n' "$version" "$tag" "$commit"
    [[ $without == ' ' ]] || printf '\nLeft out: %s\n' "${without}"
    printf '\n## Artefacts\n\n```\n%s\n```\n' "$(cat "$output/SHA256SUMS")"
    printf '\nMade twice: %s\n\nBill of materials: %s\n' "$same" "$bill"
    printf '\n## C interface\n\n%s\n' "$(abi_report)"
    printf '\n## Tests\n\n%s\n' "$(test_report)"
    printf '\n## Fuzzing\n\n%s\n' "$(fuzz_report)"
    if [[ $bench == true ]]; then
        printf '\n## Speed\n\n```\n%s\n```\n' "$(cd "$root" && bench/report 2>&1 | tail -n 60)"
    fi
    printf '\nThe owner of Platen has not chosen a licence yet.\n'
} >"$output/REPORT.md"
say "$output: $(find "$output" -type f | wc -l) files"
cat "$output/REPORT.md"
[[ $same != DIFFERENT* ]] || die "two builds are different: $same"
