#!/usr/bin/env bash
# What scripts/schemas.py has to notice. schemas_test.sh PYTHON
set -euo pipefail
python=$1
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/docs" "$folder/sources" "$folder/seen"
cp -r "$root/docs/schema" "$folder/docs"
cp -r "$root/scripts" "$folder"
touch "$folder/program"

# expect WORDS ARGUMENT...: the script fails with WORDS
expect() {
    local words=$1 said
    shift
    if said=$("$python" "$folder/scripts/schemas.py" "$@" 2>&1); then
        echo "passed, without: $words"
        exit 1
    fi
    grep -qF -- "$words" <<<"$said" || { echo "expected: $words"; echo "$said"; exit 1; }
}
check=(--sources "$folder/sources" --seen "$folder/seen" --since "$folder/program")
apply=$folder/docs/schema/apply-1.json

expect 'no test has seen platen.apply/1' "${check[@]}"
expect 'no source has platen.apply/1' "${check[@]}"
echo 'const char* schema = "platen.other/1";' >"$folder/sources/a.cpp"
expect 'platen.other/1 has no schema' "${check[@]}"
echo '{"schema":"platen.apply/1","made":"many","already_there":0,"misfits":[]}' >"$folder/seen/T.x.jsonl"
expect "T.x: platen.apply/1 at made: 'many' is not of type 'integer'" "${check[@]}"
# The words of a schema may change, what it demands may not.
sed -i 's/"title": "[^"]*"/"title": "Better"/' "$apply"
"$python" "$folder/scripts/schemas.py" --write
sed -i 's/"misfits"/"faults"/' "$apply"
expect 'platen.apply/1 was published and is different now' "${check[@]}"
expect 'platen.apply/1 was published and is different now' --write
"$python" "$folder/scripts/schemas.py" --write --unreleased
# Those that refer to it have changed, too.
sed -i 's/"omitted"/"left_out"/' "$folder/docs/schema/check-1.json"
expect 'platen.repair/1 was published and is different now' --write
rm "$apply"
expect 'platen.apply/1 was published, and its schema is gone' --write
