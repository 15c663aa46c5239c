#!/usr/bin/env bash
# Lists the schemas of JSON outputs in docs/schema/published.txt, by which tests notice a change without
# a new version: scripts/schemas.sh --write [--unreleased]. CONTRIBUTING.md says when.
set -euo pipefail
exec python3 "$(dirname "${BASH_SOURCE[0]}")/schemas.py" "$@"
