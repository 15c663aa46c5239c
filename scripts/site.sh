#!/usr/bin/env bash
# Builds the documentation site from the repository: scripts/site.sh [--output DIR]
# Without --output it is left in build/site/html. It needs no server and no network: open index.html.
# Quick when nothing has changed; the same sources give the same files. Its links are checked each time
# that it is built. Prints the folder.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

output=
while (($# > 0)); do
    case $1 in
        --output)
            (($# > 1)) || die "--output needs a folder"
            output=$2
            shift 2
            ;;
        --help)
            sed -n '2,5s/^# //p' "${BASH_SOURCE[0]}"
            exit 0
            ;;
        *) die "usage: scripts/site.sh [--output DIR]" ;;
    esac
done

need_packages "${packages_build[@]}" "${packages_site[@]}"
build_preset dev platen_command platen_c

# Debian's own: it is what has the packages above.
python=/usr/bin/python3
work=$root/build/site
log=$root/build/logs/site.log
command=$root/build/dev/platen
library=$root/build/dev/c_interface/libplaten_c.so
mkdir -p "$work"

# Everything that pages are made of.
made_from() {
    local -a sources=(CMakeLists.txt CHANGELOG.md CONTRIBUTING.md README.md docs include/platen
        bindings/python packaging/icons scripts/site.py scripts/examples.py scripts/check_links.py)
    [[ ! -e $root/SECURITY.md ]] || sources+=(SECURITY.md)
    (
        cd "$root"
        find "${sources[@]}" -type f -not -path '*/__pycache__/*' -print0 | sort -z | xargs -0 sha256sum
        # What the command draws and what its help says, not how it was compiled.
        "$command" --help | sha256sum
        rm -rf "$work/man-now"
        mkdir "$work/man-now"
        "$command" --man "$work/man-now"
        cat "$work"/man-now/* | sha256sum
        dpkg-query -W -f '${Package} ${Version}\n' "${packages_site[@]}"
    ) | sha256sum
}

now=$(made_from)
if [[ $(cat "$work/made-from" 2>/dev/null || true) != "$now" ]]; then
    rm -f "$work/made-from"
    quietly "building the site" "$log" "$python" "$root/scripts/site.py" \
        --command "$command" --library "$library" --work "$work"
    "$python" "$root/scripts/check_links.py" "$work/html" >&2
    printf '%s\n' "$now" >"$work/made-from"
fi

if [[ -n $output ]]; then
    mkdir -p "$output"
    # What Sphinx keeps for itself does not belong to the site.
    (cd "$work/html" && tar -c --exclude=./.buildinfo --exclude=./.doctrees .) | tar -x -C "$output"
    printf '%s\n' "$output"
else
    printf '%s\n' "$work/html"
fi
