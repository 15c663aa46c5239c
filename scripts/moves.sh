#!/usr/bin/env bash
# Moves a made-up office to other printers in another folder, and back: scripts/moves.sh PLATEN [FOLDER]
# The office that came back differs from the first in exactly what the first move listed as lost.
# Everything stays in FOLDER when it is named.
set -euo pipefail

platen=$(realpath "$1")
scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
if [[ -n ${2:-} ]]; then
    mkdir -p "$2"
    work=$(cd "$2" && pwd)
    rm -rf "${work:?}"/{office,office-server,before,new,logs,*.printers}
else
    # Every file that is written waits for the disk, unless that is memory.
    work=$(mktemp -d -p "$([[ -w /dev/shm ]] && echo /dev/shm || echo "${TMPDIR:-/tmp}")")
    trap 'rm -rf "$work"' EXIT
fi
mkdir "$work/logs"
cd "$work"

fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

# Runs the command; `codes` are the exit codes that are right.
run() {
    local codes=$1 log=$2 status=0
    shift 2
    "$platen" "$@" >"logs/$log" 2>"logs/$log-messages" || status=$?
    [[ " $codes " == *" $status "* ]] || {
        tail -n 20 "logs/$log-messages" >&2
        fail "platen $* ended with status $status"
    }
    tail -n 1 "logs/$log"
}

# What was lost, as lines "FILE printer" and "FILE PMP", from what restoring to FOLDER said.
losses() {
    awk -v folder="$1/" '
        /^  lost: the PMP/ { print file " PMP"; next }
        /^  lost: / { print file " printer"; next }
        /^  / { next }
        { file = $0; sub(/: .*/, "", file); sub("^" folder, "", file) }' "logs/$2" | sort -u
}

# The same from the differences of the folders.
differences() {
    awk -v folder="$1/" '
        # A PMP that lay outside has come in.
        /^added: office\/PMP\// { sub(/^added: office\//, ""); print $0 " PMP"; next }
        /^changed: / { sub(/^changed: /, ""); sub("^" folder, ""); file = $0; next }
        /^  meta\/user_defined_model_pathname: / { print file " PMP"; next }
        /^  meta\/(win_device|friendly_net|short_net)_name: / { print file " printer"; next }
        { print file " something else: " $0 }' "logs/$2" | sort -u
}

# What an audit finds that moving could be to blame for, as lines "[CODE] FILE".
audit() {
    run "0 1 2" "audit-$2" audit "$1" --printers "$2.printers" \
        --only unreadable,damaged,pmp-missing,pmp-elsewhere,printer-missing,network-printer >/dev/null
    awk -v folder="$1/" '
        /^(warning|error) \[/ { code = $2; next }
        /^  - / { sub(/^  - /, ""); sub("^" folder, ""); sub(/: .*/, ""); print code " " $0 }' \
        "logs/audit-$2" | sort
}

"$scripts/office.sh" "$platen" office
there=() back=()
for number in {1..6}; do
    there+=(--map "Plotter $number=New plotter $number")
    back+=(--map "New plotter $number=Plotter $number")
done

# Four configurations name a PMP that is not there, and a table is cut off: warnings.
run 3 bundle bundle office -o office.zip --replace
run 3 plan restore office.zip new "${there[@]}" --names-only --dry-run
[[ ! -e new ]] || fail "a dry run wrote something"
run 3 there restore office.zip new "${there[@]}" --names-only
printf '%s\n' "New plotter "{1..6} >there.printers
printf '%s\n' "Plotter "{1..6} >here.printers
audit office here >logs/found-here
audit new there >logs/found-there
# Four PMPs that are gone and the table that is cut off move as they are; all else is in order.
[[ $(cut -d ' ' -f 1 logs/found-there | uniq -c | tr -s ' \n' ' ') == " 1 [damaged] 4 [pmp-missing] " ]] ||
    fail "the audit of the new place finds: $(cat logs/found-there)"
[[ -z $(comm -13 logs/found-here logs/found-there) ]] || fail "moving made new faults"
mv office before
run 3 bundle-new bundle new -o new.zip --replace
run 3 back restore new.zip office "${back[@]}" --names-only
run "1 2" diff diff -r before office

losses new there >logs/lost
sed -i 's/: would be written/: written/' logs/plan
losses new plan | cmp - logs/lost || fail "the dry run foresaw other losses"
differences before diff >logs/different
audit office here | cmp - logs/found-there || fail "moving back made new faults"
diff logs/lost logs/different || fail "the offices do not differ in what was said to be lost"
(($(wc -l <logs/lost) > 50)) || fail "hardly anything was lost, so that nothing was tried"
cmp before/styles/cut\ off.ctb office/styles/cut\ off.ctb

printf '\n%s files are not as they were; what was lost or is at risk:\n' \
    "$(sed -E 's/ [a-zA-Z]+$//' logs/lost | sort -u | wc -l)"
sed -n -E 's/^  (lost|at risk): //p' logs/there | sed -E 's/"[^"]*"/".."/g' | sort | uniq -c
