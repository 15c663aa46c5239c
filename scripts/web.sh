#!/usr/bin/env bash
# Builds the page: build/web/platen.html, which is everything in one file, and build/web/static/, the
# same for a server. What it is made with comes from package-lock.json and is kept in the user's cache.
# The last line on stdout is the folder of those packages.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

need_packages "${packages_wasm[@]}" "${packages_web[@]}"
build_preset wasm platen_module
modules=$(web_modules)
module=$root/build/wasm/c_interface/platen.wasm
page=$root/build/web/platen.html
if [[ ! -f $page || -n $(find "$root/web" "$module" "$modules/made" -newer "$page" -print -quit) ]]; then
    quietly "building the page" "$root/build/logs/web.log" \
        node "$root/web/build.mjs" "$modules/node_modules" "$module" "$root/build/web"
    say "$(tail -n 1 "$root/build/logs/web.log")"
fi
printf '%s\n' "$modules/node_modules"
