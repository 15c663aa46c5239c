#!/usr/bin/env bash
# Installs the Python package into a new virtual environment, as anybody would, and tests it there
# against this tree's library: its own tests, every example in its documentation, its types. Nothing
# is fetched. The last line on stdout says how many tests passed and failed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

need_packages "${packages_build[@]}" "${packages_python[@]}"
build_preset dev platen_c

package=$root/bindings/python
work=$root/build/python
log=$root/build/logs/python.log
report=$work/report.xml
# Debian's own: it is what has the packages above.
python=/usr/bin/python3
rm -rf "$work" "$package/build" "$package"/*.egg-info
mkdir -p "$work"

export PIP_NO_INDEX=1 PIP_DISABLE_PIP_VERSION_CHECK=1 PYTHONDONTWRITEBYTECODE=1
quietly "a virtual environment" "$log" "$python" -m venv --system-site-packages "$work/venv"
quietly "installing the Python package" "$log" \
    "$work/venv/bin/python" -m pip install --no-build-isolation "$package"

# pytest ends with an error when a test fails; the report says how many.
status=0
(
    cd "$work"
    PLATEN_LIBRARY=$root/build/dev/c_interface/libplaten_c.so \
        quietly "testing the Python package" "$log" "$work/venv/bin/python" -m pytest \
        --rootdir "$package" -p no:cacheprovider -q --junit-xml "$report" "$package/tests"
) || status=$?
[[ -f $report ]] || die "testing the Python package gave no results (status $status)"

# count ATTRIBUTE
count() { sed -n -E "s/.*<testsuite [^>]* $1=\"([0-9]+)\".*/\1/p" "$report"; }
failed=$(($(count failures) + $(count errors)))
passed=$(($(count tests) - failed - $(count skipped)))
((status == 0 || failed > 0)) || failed=1
printf '%d passed, %d failed\n' "$passed" "$failed"
((failed == 0 && passed > 0))
