"""Makes faults in the sources, one at a time, and names those that no test notices. Called by mutate.sh."""

import argparse
import concurrent.futures
import hashlib
import itertools
import json
import os
import pickle
import queue
import random
import re
import subprocess
import sys
import threading
import time

from program import Program, Visits
from windows import WindowsProgram

FOLDERS = ["pia", "plotstyle", "pmp", "plotcfg", "inspect", "edit"]
# Only Windows has these.
WINDOWS = ["print"]
RESULTS = ["not compiling", "equal code", "explained", "noticed", "time-out", "survived"]


def say(text):
    print(text, file=sys.stderr, flush=True)


def digest(*parts):
    whole = hashlib.sha256()
    for part in parts:
        whole.update(part if isinstance(part, bytes) else str(part).encode())
    return whole.hexdigest()[:24]


class Ledger:
    """What was found before. A fault that was noticed is not made again while its file is the same;
    one that was not is, when the tests have changed."""

    def __init__(self, path, tests):
        self.path = path
        self.tests = tests
        self.lock = threading.Lock()
        self.known = {}
        if os.path.exists(path):
            with open(path, encoding="utf-8") as stream:
                for line in stream:
                    entry = json.loads(line)
                    self.known[entry["name"]] = entry

    def find(self, name):
        entry = self.known.get(name)
        if entry and (entry["result"] != "survived" or entry["tests"] == self.tests):
            return entry
        return None

    def add(self, name, result, by, fault):
        entry = {"name": name, "result": result, "by": by, "tests": self.tests, "file": fault.file,
                 "line": fault.line, "kind": fault.kind, "text": fault.text}
        with self.lock:
            self.known[name] = entry
            with open(self.path, "a", encoding="utf-8") as stream:
                stream.write(json.dumps(entry) + "\n")
        return entry


class Explained:
    """Faults that change nothing that anybody could see, each with the reason."""

    def __init__(self, path):
        self.reasons = {}
        self.used = set()
        if not os.path.exists(path):
            return
        with open(path, encoding="utf-8") as stream:
            for block in re.split(r"\n\s*\n", stream.read()):
                lines = [line for line in block.splitlines() if line and not line.startswith("#")]
                if not lines:
                    continue
                if len(lines) < 4 or lines[1][:2] != "- " or lines[2][:2] != "+ ":
                    raise SystemExit(f"error: {path}: a file, a - line, a + line and a reason belong here:\n{block}")
                self.reasons[lines[0], lines[1][2:].strip(), lines[2][2:].strip()] = " ".join(lines[3:])

    def find(self, file, old, new):
        key = file, old, new
        if key in self.reasons:
            self.used.add(key)
        return self.reasons.get(key)


class Mutation:
    def __init__(self, options):
        self.options = options
        self.tree = options.tree
        self.work = options.work
        self.program = Program(options.tree, options.work)
        self.program.read_dependents()
        self.windows = None
        if any(folder in WINDOWS for folder in options.folder):
            self.windows = WindowsProgram(options.tree, options.work)
            self.windows.prepare()
        self.sources = {}
        self.bases = {}
        self.base_lock = threading.Lock()
        self.done = 0
        self.count_lock = threading.Lock()

    def source(self, file):
        if file not in self.sources:
            with open(f"{self.tree}/{file}", "rb") as stream:
                self.sources[file] = stream.read()
        return self.sources[file]

    # --- What there is --------------------------------------------------------------------------------

    def program_of(self, file):
        return self.windows if file.split("/")[0] in WINDOWS else self.program

    def units(self, folders):
        commands = self.program_of(folders[0]).commands
        return sorted(unit for unit in commands if unit.split("/")[0] in folders)

    def all_faults(self, folders):
        """Of every file; kept, since nothing of it changes while the sources do not."""
        program = self.program_of(folders[0])
        units = self.units(folders)
        headers = sorted(header for header in program.dependents if header.split("/")[0] in folders)
        owner = {}
        for header in headers:
            # Any unit that includes it sees its functions.
            inside = [unit for unit in program.dependents[header] if unit in units]
            if inside:
                owner.setdefault(min(inside), []).append(header)
        with open(f"{os.path.dirname(__file__)}/faults.py", "rb") as stream:
            key = digest(stream.read(), *(self.source(file) for file in units + headers))
        path = f"{self.work}/faults-{folders[0]}.pickle"
        if os.path.exists(path):
            with open(path, "rb") as stream:
                stored = pickle.load(stream)
            if stored[0] == key:
                return stored[1]
        say("looking for places of faults")
        found = {}
        with concurrent.futures.ProcessPoolExecutor(self.options.jobs) as pool:
            asked = [pool.submit(find_in, self.tree, unit, program.parse_arguments(unit),
                                 [unit, *owner.get(unit, ())]) for unit in units]
            for one in asked:
                found.update(one.result())
        with open(path, "wb") as stream:
            pickle.dump((key, found), stream)
        return found

    def changed_lines(self):
        """By file; lines as they are now."""
        out = subprocess.run(["git", "diff", "-U0", "--no-ext-diff", self.options.since, "--"], text=True,
                             cwd=self.options.root, capture_output=True, check=True).stdout
        changed = {}
        file = None
        for line in out.splitlines():
            if line.startswith("+++ "):
                file = line[6:]
            match = re.match(r"@@ -\S+ \+(\d+)(?:,(\d+))? @@", line)
            if match:
                first, count = int(match[1]), int(match[2] or 1)
                changed.setdefault(file, set()).update(range(first, first + count))
        return changed

    def chosen(self, found):
        """The faults to make: of each folder as many as asked for, by the seed."""
        changed = self.changed_lines() if self.options.since else None
        folders = {}
        for file in sorted(found):
            if self.options.file and not any(file.startswith(name) for name in self.options.file):
                continue
            for fault in found[file]:
                if changed is None or fault.line in changed.get(file, ()):
                    folders.setdefault(file.split("/")[0], []).append(fault)
        chosen = []
        for folder in self.options.folder:
            faults = folders.get(folder, [])
            if self.options.survivors:
                faults = [fault for fault in faults if self.known(fault) in ("survived", "explained")]
            elif self.options.sample:
                # A larger sample has all of a smaller one.
                random.Random(f"{self.options.seed} {folder}").shuffle(faults)
                faults = faults[: self.options.sample]
            chosen.append(faults)
        # Folders take turns, so that what is there when time is over is of all of them.
        turns = itertools.chain.from_iterable(itertools.zip_longest(*chosen))
        return [fault for fault in turns if fault is not None]

    def known(self, fault):
        entry = self.ledger.known.get(fault.name(self.source(fault.file)))
        return entry["result"] if entry else None

    # --- A fault --------------------------------------------------------------------------------------

    def base(self, unit, level):
        """The bytes of the unit's object as it is."""
        with self.base_lock:
            lock, held = self.bases.setdefault((unit, level), (threading.Lock(), []))
        with lock:
            if not held:
                folder = f"{self.work}/base"
                os.makedirs(folder, exist_ok=True)
                target = f"{folder}/{unit.replace('/', '_')}.{level}.o"
                if not self.program_of(unit).compile(unit, f"{self.tree}/{unit}", target, level):
                    raise RuntimeError(f"{unit} does not compile")
                with open(target, "rb") as stream:
                    held.append(stream.read())
                os.remove(target)
            return held[0]

    def objects(self, fault, folder, level):
        """The objects with the fault, or None; and whether all are as they were."""
        source = fault.apply(self.source(fault.file))
        program = self.program_of(fault.file)
        path = f"{folder}/sources/{fault.file}"
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as stream:
            stream.write(source)
        try:
            units = program.dependents[fault.file] if fault.file.endswith(".h") else [fault.file]
            made = []
            equal = True
            for unit in units:
                target = f"{folder}/{unit.replace('/', '_')}.{level}.o"
                given = path if unit == fault.file else f"{self.tree}/{unit}"
                if not program.compile(unit, given, target, level, before=[f"-I{folder}/sources"]):
                    return None, False
                with open(target, "rb") as stream:
                    equal = stream.read() == self.base(unit, level) and equal
                made.append(target)
            return made, equal
        finally:
            os.remove(path)

    def make(self, fault, folder):
        """(result, what noticed it)"""
        made, equal = self.objects(fault, folder, "plain")
        if made is None:
            return "not compiling", ""
        if equal:
            return "equal code", ""
        target = f"{folder}/tests"
        if not self.program_of(fault.file).link(made, target):
            return "not compiling", ""
        if fault.file.split("/")[0] in WINDOWS:
            return self.make_for_windows(fault, folder, target)
        names = self.visits.of(fault)
        times = self.visits.tests
        parts = [[]]
        for limit in (1.0, 8.0, 1e9):
            # Few and quick ones first; nearly every fault is noticed by them.
            while names and sum(times[name] for name in parts[-1]) + times[names[0]] <= limit:
                parts[-1].append(names.pop(0))
            parts.append([])
        for index, part in enumerate(part for part in parts if part):
            if index == 1 and self.objects(fault, folder, "optimised")[1]:
                return "equal code", ""
            seconds = 10 + 5 * sum(times[name] for name in part)
            result, by = self.program.tests(target, part, seconds, f"{folder}/tmp")
            if result != "passed":
                return ("time-out" if result == "time-out" else "noticed"), by
        if not names and sum(bool(part) for part in parts) < 2 and self.objects(fault, folder, "optimised")[1]:
            return "equal code", ""
        if not any(parts):
            return "survived", "no test comes here"
        return self.make_sanitized(fault, folder, parts[0] + parts[1])

    def make_for_windows(self, fault, folder, target):
        if self.objects(fault, folder, "optimised")[1]:
            return "equal code", ""
        result, by = self.windows.all_tests(target, f"{folder}/tmp")
        return ("survived", "") if result == "passed" else ("time-out" if result == "time-out" else "noticed", by)

    def make_sanitized(self, fault, folder, names):
        """The tests run with sanitizers, too, which see leaks and what is read beside an object."""
        target = f"{folder}/tests-sanitized"
        names = [name for name in names if not name.startswith("DeviceTranslations")]
        made = self.objects(fault, folder, "sanitized")[0]
        if names and made and self.program.link(made, target, "sanitized"):
            seconds = 60 + 20 * sum(self.visits.tests[name] for name in names)
            result, by = self.program.tests(target, names, seconds, f"{folder}/tmp", level="sanitized")
            if result == "failed":
                return "noticed", f"{by} (sanitized)"
        return "survived", ""

    def run_all(self, chosen):
        folders = queue.Queue()
        for number in range(self.options.jobs):
            folder = f"{self.work}/job{number}"
            os.makedirs(folder, exist_ok=True)
            folders.put(folder)

        end = time.monotonic() + 60 * self.options.minutes if self.options.minutes else None

        def one(fault):
            name = fault.name(self.source(fault.file))
            entry = self.ledger.find(name)
            new = entry is None
            if new and end and time.monotonic() > end:
                return fault, None
            if new:
                folder = folders.get()
                try:
                    result, by = self.make(fault, folder)
                finally:
                    folders.put(folder)
                entry = self.ledger.add(name, result, by, fault)
            with self.count_lock:
                self.done += 1
                if new:
                    say(f"[{self.done}/{len(chosen)}] {fault.file}:{fault.line} {fault.kind}: "
                        f"{entry['result']} {entry['by']}")
            return fault, entry
        with concurrent.futures.ThreadPoolExecutor(self.options.jobs) as pool:
            results = list(pool.map(one, chosen))
        made = [result for result in results if result[1]]
        if len(made) < len(results):
            say(f"time is over: {len(made)} of {len(results)} faults were made")
        return made

    # --- What is printed --------------------------------------------------------------------------------

    def report(self, results):
        explained = Explained(f"{self.options.root}/tests/mutation/explained.txt")
        counts = {folder: dict.fromkeys(RESULTS, 0) for folder in self.options.folder}
        survivors = []
        for fault, entry in results:
            result = entry["result"]
            if result == "survived":
                old, new = fault.lines(self.source(fault.file))
                if explained.find(fault.file, old, new):
                    result = "explained"
                else:
                    survivors.append((fault, old, new, entry["by"]))
            counts[fault.file.split("/")[0]][result] += 1
        counts["all"] = {result: sum(count[result] for count in counts.values()) for result in RESULTS}
        print("| Folder | Faults | not compiling | equal code | explained | noticed | of these by time-out "
              "| not noticed | noticed of 100 |")
        print("|---|--:|--:|--:|--:|--:|--:|--:|--:|")
        for folder, count in counts.items():
            noticed = count["noticed"] + count["time-out"]
            real = noticed + count["survived"]
            share = f"{100 * noticed / real:.1f}" if real else "-"
            print(f"| {folder} | {sum(count.values())} | {count['not compiling']} | {count['equal code']} | "
                  f"{count['explained']} | {noticed} | {count['time-out']} | {count['survived']} | {share} |")
        for fault, old, new, by in survivors:
            print(f"\n{fault.file}:{fault.line}: {fault.kind}" + (f" ({by})" if by else ""))
            print(f"- {old}\n+ {new}")
        return not survivors


def find_in(tree, unit, arguments, wanted):
    import faults  # libclang, in a process of its own
    return faults.find(tree, unit, arguments, wanted)


def parse():
    parser = argparse.ArgumentParser(prog="scripts/mutate.sh", description=__doc__)
    parser.add_argument("--folder", action="append",
                        help=f"only in this folder (any of {', '.join(FOLDERS)}; {', '.join(WINDOWS)} under Wine)")
    parser.add_argument("--file", action="append", help="only in files whose names begin like this")
    parser.add_argument("--since", metavar="COMMIT", help="only in lines changed since")
    parser.add_argument("--sample", type=int, metavar="N", help="as many faults in each folder (all unless told)")
    parser.add_argument("--seed", default="1", help="which ones (1 unless told)")
    parser.add_argument("--survivors", action="store_true", help="only what was not noticed before")
    parser.add_argument("--minutes", type=float, metavar="M", help="stop making faults after this time")
    parser.add_argument("--list", action="store_true", help="only say how many there are")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), metavar="J")
    for hidden in ("--tree", "--work", "--root"):
        parser.add_argument(hidden, required=True, help=argparse.SUPPRESS)
    options = parser.parse_args()
    options.folder = options.folder or FOLDERS
    for folder in options.folder:
        if folder not in FOLDERS + WINDOWS:
            parser.error(f"faults are made in {', '.join(FOLDERS + WINDOWS)}, not in {folder}")
    return options


def test_keys(tree):
    """A digest of each test's file with all that tests share, by its name."""
    sources = {}
    for folder, folders, files in os.walk(f"{tree}/tests"):
        for file in files:
            with open(f"{folder}/{file}", "rb") as stream:
                sources[os.path.relpath(f"{folder}/{file}", tree)] = stream.read()
    shared = digest(*(text for file, text in sorted(sources.items()) if not file.endswith("_test.cpp")
                      and "/mutation/" not in file))
    keys = {}
    for file, text in sorted(sources.items()):
        # Files of the same name in two folders have one key.
        name = os.path.basename(file)
        keys[name] = digest(keys.get(name, shared), text)
    return keys


def main():
    options = parse()
    mutation = Mutation(options)
    program = mutation.program
    # All, whatever folders are asked for, so that what is kept stays good.
    everything = mutation.units(FOLDERS)
    keys = test_keys(options.tree)
    tests = digest(*(f"{name} {key}" for name, key in sorted(keys.items()) if name.endswith("_test.cpp")))
    code = digest(*(f"{unit} {mutation.source(unit)}" for unit in sorted(program.commands)),
                  *(mutation.source(header) for header in sorted(program.dependents)))
    built = digest(code, os.stat(f"{program.build}/tests/platen_tests").st_mtime_ns)
    mutation.ledger = Ledger(f"{options.work}/ledger.jsonl", tests)
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as jobs:
        stamp = f"{options.work}/built"
        before = open(stamp, encoding="utf-8").read() if os.path.exists(stamp) else ""
        if before != built:
            say("compiling the headers and linking the tests")
            program.precompile(FOLDERS)
            program.prelink()
            with open(stamp, "w", encoding="utf-8") as stream:
                stream.write(built)
        found = mutation.all_faults(FOLDERS)
        if mutation.windows:
            found.update(mutation.all_faults(WINDOWS))
        if options.list:
            for folder in options.folder:
                number = sum(len(faults) for file, faults in found.items() if file.split("/")[0] == folder)
                print(f"{folder}: {number} faults")
            return 0
        mutation.visits = Visits(program, options.work)
        mutation.visits.measure(everything, code, keys, jobs)
    results = mutation.run_all(mutation.chosen(found))
    return 0 if mutation.report(results) else 1


if __name__ == "__main__":
    sys.exit(main())
