#!/usr/bin/env bash
# Makes faults in the sources, one at a time, and names those that no test notices.
#   scripts/mutate.sh [--folder NAME]... [--since COMMIT] [--sample N] [--seed S] [--jobs J]
#                     [--file PREFIX]... [--minutes M] [--survivors] [--list]
# Works in build/mutate on a copy of the sources, which may go on changing. What it finds is kept in
# build/mutate/ledger.jsonl: started again it goes on, and repeats only what the tests have missed,
# and that only when they have changed. Ends with a table by folder and each fault that was missed.
# The folder print, which only Windows has, takes Wine, and so it is there when it is asked for.
# (Debian 12 has no program that does this for C++.)
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

need_packages "${packages_build[@]}" "${packages_test[@]}" "${packages_sanitize[@]}" "${packages_mutate[@]}"

work=$root/build/mutate
tree=$work/tree
scripts=$root/scripts/mutation
mkdir -p "$tree"
exec 8>"$work/lock"
flock -n 8 || die "another mutate.sh works in $work"

# Files that have not changed keep their time, so that little is built again.
git -C "$root" ls-files -co --exclude-standard -z | LC_ALL=C sort -z >"$work/files.new"
if [[ -f $work/files ]]; then
    LC_ALL=C comm -z -23 "$work/files" "$work/files.new" | (cd "$tree" && xargs -0r rm -f)
fi
while IFS= read -r -d '' file; do
    if [[ -f $root/$file ]] && ! cmp -s "$root/$file" "$tree/$file"; then
        mkdir -p "$(dirname "$tree/$file")"
        cp -p "$root/$file" "$tree/$file.new"
        touch "$tree/$file.new"
        mv "$tree/$file.new" "$tree/$file"
    fi
done <"$work/files.new"
mv "$work/files.new" "$work/files"

case " $* " in
    *" --help "* | *" -h "*) ;;
    *) (root=$tree CCACHE_BASEDIR=$tree CCACHE_NOHASHDIR=1 && export CCACHE_BASEDIR CCACHE_NOHASHDIR &&
        build_preset dev platen_tests) ;;
esac
command=(env PYTHONPATH=/usr/lib/python3/dist-packages PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3)
case " $* " in
    *" --help "* | *" -h "*) ;;
    *" print "*)
        (root=$tree CCACHE_BASEDIR=$tree CCACHE_NOHASHDIR=1 && export CCACHE_BASEDIR CCACHE_NOHASHDIR &&
            build_preset windows platen_tests platen_spooler_tests)
        command=("$tree/scripts/test-printers" run "${command[@]}")
        ;;
esac

# Debian's Python, which has the module of libclang.
"${command[@]}" "$scripts/mutate.py" \
    --root "$root" --tree "$tree" --work "$work" "$@" 8>&-
