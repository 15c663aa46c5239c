#!/usr/bin/env bash
# One process reads, edits, compares and writes documents at random: scripts/long-run.sh [N] [SEED]
# N is a million unless it is said. Prints how much memory it has after each tenth, and the figures at
# the end; fails when that grows after the first tenth.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

need_packages "${packages_build[@]}" "${packages_test[@]}"
build_preset dev platen_world
exec "$root/build/dev/tests/world/platen_world" long-run "${1:-1000000}" "${2:-1}"
