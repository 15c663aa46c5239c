#!/usr/bin/env python3
"""Writes what the fuzzers have done into a page: fuzz_report.py LEDGER CORPORA PAGE

The section "Fuzzing" of the page has a table between two comments, which is made anew; the rest of the
page stays. A page or a section that is not there is added.
"""
import collections
import os
import sys

BEGIN = "<!-- made by scripts/fuzz.sh report -->"
END = "<!-- end -->"


def group(number):
    return f"{number:,}".replace(",", " ")


def main():
    ledger, corpora, page = sys.argv[1:]
    runs = collections.defaultdict(list)
    with open(ledger, encoding="utf-8") as file:
        for line in file:
            _, name, build, executions, seconds, edges, features, new, status = line.rstrip("\n").split("\t")
            runs[name].append((build, int(executions), float(seconds), int(edges), int(features), int(new)))
    rows = []
    sums = [0, 0]
    for name in sorted(runs):
        counts, speeds = [], []
        for build in ("fuzz-fast", "fuzz"):
            ours = [run for run in runs[name] if run[0] == build]
            executions = sum(run[1] for run in ours)
            seconds = sum(run[2] for run in ours)
            counts.append(executions)
            speeds.append(round(executions / seconds) if seconds else 0)
        sums = [one + two for one, two in zip(sums, counts)]
        edges = max(run[3] for run in runs[name])
        features = max(run[4] for run in runs[name])
        folder = os.path.join(corpora, name)
        files = [os.path.join(folder, each) for each in os.listdir(folder)] if os.path.isdir(folder) else []
        size = sum(map(os.path.getsize, files))
        rows.append(f"| {name} | {group(counts[0])} | {group(speeds[0])} | {group(counts[1])} | {group(speeds[1])} "
                    f"| {group(edges)} | {group(features)} | {sum(run[5] for run in runs[name])} "
                    f"| {len(files)}, {size // 1000} KB |")
    table = "\n".join([
        BEGIN, "",
        "| Fuzzer | Executions | a second | with sanitizers | a second | Edges | Features | New inputs | Kept |",
        "|---|--:|--:|--:|--:|--:|--:|--:|--:|", *rows,
        f"| **all** | **{group(sums[0])}** | | **{group(sums[1])}** | | | | | |", "",
        "Seconds are those of one processor. Executions are what the fuzzers themselves report.", "", END])
    text = ""
    if os.path.exists(page):
        with open(page, encoding="utf-8") as file:
            text = file.read()
    if BEGIN in text:
        text = text[:text.index(BEGIN)] + table + text[text.index(END) + len(END):]
    else:
        text = (text or "# Trust\n") + "\n## Fuzzing\n\n" + table + "\n"
    with open(page, "w", encoding="utf-8") as file:
        file.write(text)
    print(f"{sum(sums)} executions of {len(rows)} fuzzers: {page}")


main()
