# The gate of format and lint. Sourced after lib.sh by ./test --lint.
#
# Format is asked of every file. clang-tidy takes seconds a file, so it sees what changed: the sources
# that differ from a base commit, and for each header that does, one source that includes it. What was
# found clean is remembered in the cache folder by its preprocessed text, and not looked at again.
# Sources of Windows alone are not linted: clang-tidy reads the compile commands of the sanitized
# build, which is clang's own on this system.

packages_lint=(clang clang-format clang-tidy libclang-rt-14-dev llvm git python3)

# The commit that changes are counted from: the argument, where the branch left its upstream, or, on
# the upstream itself, the one before.
# lint_base [COMMIT]
lint_base() {
    local base=${1:-}
    if [[ -z $base ]]; then
        base=$(git -C "$root" merge-base HEAD '@{upstream}' 2>/dev/null || true)
        [[ -n $base && $base != $(git -C "$root" rev-parse HEAD) ]] ||
            base=$(git -C "$root" rev-list --first-parent --max-count=2 HEAD | tail -n 1)
    fi
    git -C "$root" rev-parse --verify --quiet "$base^{commit}" || die "no such commit: $base"
}

# Prints the sources to lint, relative to the root.
# lint_sources BASE DATABASE
lint_sources() {
    python3 - "$root" "$1" "$2" <<'END_PYTHON'
import json, os, re, subprocess, sys
root, base, database = sys.argv[1:]

def git(*arguments):
    text = subprocess.run(["git", "-C", root, *arguments], check=True, capture_output=True, text=True)
    return text.stdout.split("\n")

changed = {name for name in git("diff", "--name-only", "--diff-filter=d", base)
           + git("ls-files", "--others", "--exclude-standard") if name.endswith((".cpp", ".h"))}
compiled = {os.path.relpath(entry["file"], root) for entry in json.load(open(database))}
compiled = {name for name in compiled if not name.startswith("build/")}
sources = changed & compiled
includes = {}
for name in sorted(compiled):
    text = open(os.path.join(root, name), encoding="utf-8").read()
    for quoted in re.findall(r'#include [<"]([^">]+)[">]', text):
        includes.setdefault("include/" + quoted if quoted.startswith("platen/") else quoted, name)
for header in sorted(name for name in changed if name.endswith(".h")):
    if header in includes and not any(header in open(os.path.join(root, s), encoding="utf-8").read()
                                      for s in sources):
        sources.add(includes[header])
print("\n".join(sorted(sources)))
END_PYTHON
}

# Lints one source of the sanitized build. What it prints goes to the standard output.
# lint_one SOURCE
lint_one() {
    local source=$1 folder=$root/build/sanitize key stamp
    local -a preprocess
    mapfile -t preprocess < <(python3 -c 'import json, shlex, sys
for entry in json.load(open(sys.argv[1])):
    if entry["file"] == sys.argv[2]:
        print("\n".join(shlex.split(entry["command"].rpartition(" -o ")[0])))
        break' "$folder/compile_commands.json" "$root/$source")
    [[ ${preprocess[0]} != *ccache ]] || preprocess=("${preprocess[@]:1}")
    key=$({
        cat "$root/.clang-tidy"
        clang-tidy --version
        (cd "$folder" && "${preprocess[@]}" -E -C "$root/$source")
    } | sed "s#$root##g" | sha256sum) || return
    stamp=$cache_folder/lint/${key%% *}
    [[ ! -f $stamp ]] || return 0
    clang-tidy --quiet -p "$folder" "$root/$source" 2>/dev/null || return
    mkdir -p "$cache_folder/lint"
    : >"$stamp"
}

# Prints nothing and succeeds when everything is in order.
# lint [BASE]
lint() {
    local base log=$root/build/logs/lint.log status=0
    local -a sources=()
    base=$(lint_base "${1:-}") || return
    mkdir -p "$root/build/logs"
    (
        cd "$root"
        git ls-files -z --cached --others --exclude-standard '*.cpp' '*.h' |
            xargs -0 clang-format --dry-run -Werror
    ) 2>"$log" || {
        say "error: these are not laid out as .clang-format says (clang-format -i FILE mends them):"
        sed -n -E 's/^([^:]+):[0-9]+:[0-9]+: error.*/  \1/p' "$log" | uniq -c | head -n 40 >&2
        return 1
    }
    configure_preset sanitize || return
    mapfile -t sources < <(lint_sources "$base" "$root/build/sanitize/compile_commands.json")
    ((${#sources[@]} > 0)) || return 0
    say "lint: ${#sources[@]} sources"
    export -f lint_one say
    export root cache_folder
    printf '%s\n' "${sources[@]}" |
        xargs -P "$(nproc)" -I '{}' bash -c 'set -uo pipefail; lint_one {} && echo "[done] {}"' |
        awk -v all="${#sources[@]}" '/^\[done\]/ { print "[" ++n "/" all "] " $2; fflush(); next } { print }' |
        condense "linting" "$log" || status=$?
    if ((status != 0)) || grep -q ': error:' "$log"; then
        say "error: clang-tidy found:"
        grep -v '^\[' "$log" | head -n 120 | sed 's/^/  | /' >&2
        return 1
    fi
}
