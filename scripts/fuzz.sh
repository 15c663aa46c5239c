#!/usr/bin/env bash
# Fuzzes what fuzz/fuzz_NAME.cpp calls, and keeps account of it:
#   scripts/fuzz.sh NAME [SECONDS]   one fuzzer (60 seconds unless told)
#   scripts/fuzz.sh all MINUTES      all of them on all cores, then the report
#   scripts/fuzz.sh minimise [NAME]  puts the fewest inputs that reach what was reached into fuzz/corpus
#   scripts/fuzz.sh report           writes the table into docs/trust.md
#   scripts/fuzz.sh --prove [FAULT]  makes each fault of fuzz/faults in a copy; an oracle must notice it
# Most of the time goes to a build that finds inputs fast (preset fuzz-fast), the rest to one with the
# address sanitizer (preset fuzz), which tries all of them. What is found is in build/fuzz/NAME: new
# inputs in corpus/, inputs that fail beside it. build/fuzz/ledger.tsv has a line for each run: when,
# fuzzer, build, executions, seconds of the processor, edges, features, new inputs, exit status.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

found=$root/build/fuzz
ledger=$found/ledger.tsv

usage() {
    sed -n '2,/^set/{/^set/d;s/^# \{0,1\}//;p}' "${BASH_SOURCE[0]}"
}

names() {
    local source
    for source in "$root"/fuzz/fuzz_*.cpp; do
        source=${source##*/fuzz_}
        printf '%s\n' "${source%.cpp}"
    done
}

# The longest input that is worth its time; a table with colours takes more than 4 KB.
longest() {
    case $1 in
        texts | os_texts | sub_image) echo 128 ;;
        words | wrap_text) echo 400 ;;
        plot_style_table | compare | csv) echo 6000 ;;
        bundle) echo 2048 ;;
        *) echo 4096 ;;
    esac
}

build() { # PRESET NAME...
    local preset=$1
    shift
    build_preset "$preset" "${@/#/fuzz_}"
}

# Runs a built fuzzer once and writes it into the ledger.
run_once() { # PRESET NAME SECONDS
    local preset=$1 name=$2 seconds=$3 folder=$found/$2 log status=0 before after line
    local -a options
    log=$folder/$preset.log
    mkdir -p "$folder/corpus"
    options=(-max_total_time="$seconds" -max_len="$(longest "$name")" -print_final_stats=1 -reload=0
        -entropic=0 -timeout=60 -artifact_prefix="$folder/")
    [[ ! -f $root/fuzz/$name.dict ]] || options+=(-dict="$root/fuzz/$name.dict")
    before=$(find "$folder/corpus" -type f | wc -l)
    local TIMEFORMAT='%U %S'
    { time nice -n 19 "$root/build/$preset/fuzz/fuzz_$name" "${options[@]}" "$folder/corpus" \
        "$root/fuzz/corpus/$name" >"$log" 2>&1; } 2>"$folder/time" || status=$?
    after=$(find "$folder/corpus" -type f | wc -l)
    line=$(grep -a -E 'cov: [0-9]+ ft: [0-9]+' "$log" | tail -n 1)
    printf '%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\n' "$(date -u +%FT%TZ)" "$name" "$preset" \
        "$(sed -n -E 's/^stat::number_of_executed_units: *([0-9]+)$/\1/p' "$log" | grep . || echo 0)" \
        "$(awk 'END { printf "%.1f", $1 + $2 }' "$folder/time")" \
        "$(sed -E 's/.*cov: ([0-9]+) .*/\1/' <<<"${line:-cov: 0 }")" \
        "$(sed -E 's/.*ft: ([0-9]+) .*/\1/' <<<"${line:-ft: 0 }")" \
        "$((after - before))" "$status" >>"$ledger"
    if ((status != 0)); then
        say "fuzz_$name ($preset) failed (status $status); the input is in $folder:"
        grep -a -E 'oracle failed|ERROR|runtime error|allocated .* allowed|Test unit written' "$log" >&2 || true
    fi
    return "$status"
}

run_both() { # NAME SECONDS
    local fast=$(($2 * 3 / 4)) status=0
    ((fast > 0)) || fast=1
    run_once fuzz-fast "$1" "$fast" || status=$?
    run_once fuzz "$1" "$(($2 - fast > 0 ? $2 - fast : 1))" || status=$?
    return "$status"
}

minimise() { # NAME
    local name=$1 fresh=$found/$1/minimised
    rm -rf "$fresh"
    mkdir -p "$fresh" "$found/$name/corpus"
    "$root/build/fuzz-fast/fuzz/fuzz_$name" -merge=1 -max_len="$(longest "$name")" "$fresh" \
        "$root/fuzz/corpus/$name" "$found/$name/corpus" >"$found/$name/merge.log" 2>&1 ||
        die "merging $name failed: $found/$name/merge.log"
    "$PYTHON" "$root/scripts/fuzz_corpus.py" "$fresh" "$root/fuzz/corpus/$name" >&2
}

# Applies a patch in a folder that git is to take for no part of this one.
apply() { # FOLDER PATCH [OPTION]
    (cd "$1" && GIT_CEILING_DIRECTORIES=$found git apply ${3:+"$3"} "$2")
}

prove() { # [FAULT]
    local copy=$found/prove patch name status failed=0 total=0
    mkdir -p "$copy"
    # Files that are as they were keep their times, so that little is built.
    git -C "$root" ls-files -z | while IFS= read -r -d '' file; do
        cmp -s "$root/$file" "$copy/$file" || install -D -p "$root/$file" "$copy/$file"
    done
    for patch in "$root"/fuzz/faults/${1:-*}.patch; do
        name=$(sed -n '1s/^fuzzer: //p' "$patch")
        apply "$copy" "$patch" || die "$patch does not fit"
        status=0
        (CCACHE_BASEDIR=$copy CCACHE_NOHASHDIR=1 "$copy/scripts/fuzz.sh" --replay "$name") \
            >"$copy/replay.log" 2>&1 || status=$?
        apply "$copy" "$patch" -R
        total=$((total + 1))
        if ((status != 0)) && grep -a -q 'oracle failed' "$copy/replay.log"; then
            say "noticed: $(basename "$patch" .patch): $(grep -a 'oracle failed' "$copy/replay.log" | head -n 1)"
        else
            say "NOT noticed: $(basename "$patch" .patch) ($copy/replay.log)"
            failed=$((failed + 1))
            cp "$copy/replay.log" "$found/$(basename "$patch" .patch).log"
        fi
    done
    printf '%d of %d faults noticed\n' "$((total - failed))" "$total"
    ((failed == 0 && total > 0))
}

# Read whole before anything runs, since a run takes long and the file may change meanwhile.
main() {
    PYTHON=$(command -v /usr/bin/python3 || command -v python3)
    [[ ${1:-} == --once ]] ||
        need_packages "${packages_build[@]}" "${packages_test[@]}" "${packages_sanitize[@]}"
    mkdir -p "$found"
    case ${1:-} in
        '' | --help) usage ;;
        all)
            [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || die "not a number of minutes: ${2:-}"
            mapfile -t all < <(names)
            build fuzz-fast "${all[@]}"
            build fuzz "${all[@]}"
            seconds=$(($2 * 60 * $(nproc) / ${#all[@]}))
            status=0
            printf '%s\n' "${all[@]}" |
                xargs -P "$(nproc)" -I{} "${BASH_SOURCE[0]}" --built {} "$((seconds > 4 ? seconds : 4))" || status=1
            "${BASH_SOURCE[0]}" report
            exit "$status"
            ;;
        --built) run_both "$2" "$3" ;;
        --once) run_once "$2" "$3" "$4" ;;
        --replay)
            build_preset dev "replay_$2"
            "$root/build/dev/fuzz/replay_$2" "$root/fuzz/corpus/$2"
            ;;
        minimise)
            mapfile -t all < <(if [[ -n ${2:-} ]]; then echo "$2"; else names; fi)
            build fuzz-fast "${all[@]}"
            for name in "${all[@]}"; do
                minimise "$name"
            done
            ;;
        report) "$PYTHON" "$root/scripts/fuzz_report.py" "$ledger" "$root/fuzz/corpus" "$root/docs/trust.md" ;;
        --prove) prove "${2:-}" ;;
        *)
            [[ -f $root/fuzz/fuzz_$1.cpp ]] || die "no fuzzer is called $1; there are: $(names | tr '\n' ' ')"
            [[ ${2:-60} =~ ^[1-9][0-9]*$ ]] || die "not a number of seconds: $2"
            build fuzz-fast "$1"
            build fuzz "$1"
            run_both "$1" "${2:-60}"
            tail -n 2 "$ledger"
            ;;
    esac
}

main "$@"; exit
