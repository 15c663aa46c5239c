#!/usr/bin/env bash
# What the world does to files, processes and memory, in as many rounds as say something:
# scripts/world.sh [--quick]
# Prints a line of figures for each; the exit status is 0 when nothing was wrong. With --quick as many
# rounds as ./test does. scripts/long-run.sh does a million documents in one process, which takes long.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

quick=1
case ${1:-} in
    --quick) quick=20 ;;
    '') ;;
    *) die "usage: scripts/world.sh [--quick]" ;;
esac

need_packages "${packages_build[@]}" "${packages_test[@]}" "${packages_sanitize[@]}"
build_preset dev platen_world platen_command
build_preset tsan platen_world
status=0

# Runs something for its figures.
figures() {
    local code=0
    "$@" || code=$?
    # A disk that cannot be made here has said so.
    ((code == 0 || code == 77)) || status=1
}

world=$root/build/dev/tests/world/platen_world
seed=$(date +%j)
figures "$world" kills $((2000 / quick)) "$seed"
figures "$world" editors $((1000 / quick)) "$seed"
figures "$world" changing $((200000 / quick)) "$seed"
figures "$world" handles $((10000 / quick)) "$seed"
for kind in device limit memory full flush quota; do
    figures "$root/tests/world/disks_test.sh" "$root/build/dev/platen" "$kind"
done
TSAN_OPTIONS=halt_on_error=1 figures "$root/build/tsan/tests/world/platen_world" threads $((20 / quick)) "$seed"
exit "$status"
