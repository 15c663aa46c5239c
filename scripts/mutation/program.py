"""The test program, and how it is made again with a fault in one of its files."""

import json
import os
import re
import resource
import shlex
import signal
import subprocess
import time

MEMORY = 6 << 30

SANITIZERS = ["-fsanitize=address,undefined", "-fno-sanitize-recover=all"]
LEVELS = {"plain": ["-O0"], "optimised": ["-O2"], "sanitized": ["-O1", *SANITIZERS]}


def run(command, folder, seconds, wall=None, environment=None, memory=MEMORY):
    """(exit status, output); the status is None where time ran out. Time is the processor's, since
    others may use the machine; a process that waits for ever is stopped by the clock."""
    def limits():
        resource.setrlimit(resource.RLIMIT_CPU, (int(seconds) + 1, int(seconds) + 2))
        resource.setrlimit(resource.RLIMIT_AS, (memory, memory))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 30, 1 << 30))
    process = subprocess.Popen(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, env=environment, preexec_fn=limits,
                               start_new_session=True)
    try:
        output = process.communicate(timeout=wall or 60 + 15 * seconds)[0].decode(errors="replace")
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.communicate()
        return None, ""
    if process.returncode in (-signal.SIGXCPU, -signal.SIGKILL):
        return None, output
    return process.returncode, output


def checked(command, folder, what):
    status, output = run(command, folder, 900)
    if status != 0:
        raise SystemExit(f"error: {what} failed:\n{output[-4000:]}")
    return output


class Program:
    """Compiles with clang and a precompiled header, whatever the tests are compiled with, and links
    with lld: a fault takes a second of the machine that way."""

    def __init__(self, tree, work):
        self.tree = tree
        self.work = work
        self.build = f"{tree}/build/dev"
        with open(f"{self.build}/compile_commands.json", encoding="utf-8") as stream:
            self.commands = {os.path.relpath(unit["file"], tree): unit for unit in json.load(stream)
                             if "/platen_docs.dir/" in unit["command"]}
        self.read_links()

    # --- Compiling ------------------------------------------------------------------------------------

    def flags(self, unit):
        words = shlex.split(self.commands[unit]["command"])[1:]
        kept = []
        skip = False
        for word in words:
            if skip:
                skip = False
            elif word in ("-o", "-c"):
                skip = True
            elif not re.match(r"-W|-g|-O", word):
                kept.append(word)
        # The same command without the two that name files.
        return kept + ["-w", "-fno-ident"]

    def precompile(self, folders):
        """The headers that many of them include, once for all. What only few need stays out: a name of
        another's header can hide one of ours."""
        headers = {}
        for unit in self.commands:
            if unit.split("/")[0] in folders:
                with open(f"{self.tree}/{unit}", encoding="utf-8") as stream:
                    for header in re.findall(r"^#include (<.*>)", stream.read(), re.M):
                        headers[header] = headers.get(header, 0) + 1
        text = "".join(f"#include {header}\n" for header in sorted(headers) if headers[header] >= 9)
        os.makedirs(f"{self.work}/prefix", exist_ok=True)
        path = f"{self.work}/prefix/prefix.h"
        with open(path, "w", encoding="utf-8") as stream:
            stream.write(text)
        for level, flags in LEVELS.items():
            checked(["clang++", "-fpch-instantiate-templates", *self.flags(next(iter(self.commands))), *flags,
                     "-x", "c++-header", path, "-o", f"{path}.{level}.pch"], self.build, "compiling the headers")

    def prefix(self, level):
        return ["-include-pch", f"{self.work}/prefix/prefix.h.{level}.pch"]

    def compile(self, unit, source, target, level="plain", extra=(), before=()):
        command = ["clang++", *before, *self.flags(unit), *LEVELS[level], *extra, *self.prefix(level), "-c", source,
                   "-o", target]
        return run(command, self.build, 120)[0] == 0

    def parse_arguments(self, unit):
        return ["-x", "c++", *self.flags(unit), "-O0", *self.prefix("plain")]

    # --- What includes a header ------------------------------------------------------------------------

    def read_dependents(self, object_of=r"CMakeFiles/platen_docs\.dir/(.*)\.o:"):
        output = checked(["ninja", "-C", self.build, "-t", "deps"], self.build, "asking ninja")
        self.dependents = {}
        unit = None
        for line in output.splitlines():
            if line and not line.startswith(" "):
                match = re.match(object_of, line)
                unit = match[1] if match else None
            elif unit and line.strip():
                path = os.path.normpath(os.path.join(self.build, line.strip()))
                if path.startswith(self.tree + "/") and path.endswith(".h"):
                    self.dependents.setdefault(os.path.relpath(path, self.tree), []).append(unit)

    # --- Linking ----------------------------------------------------------------------------------------

    def read_links(self):
        output = checked(["ninja", "-C", self.build, "-t", "commands", "tests/platen_tests"], self.build,
                         "asking ninja")
        words = shlex.split(output.strip().splitlines()[-1].removeprefix(": && ").removesuffix(" && :"))
        self.objects = [word for word in words if word.endswith(".o")]
        rest = words[words.index("-o") + 2:]
        self.libraries = [word for word in rest if word.endswith(".a") and not word.startswith("/")]
        folder = f"{self.work}/link"
        self.link_rest = [f"{folder}/tests.o"]
        self.link_rest += [f"{folder}/{os.path.basename(word)}" if word in self.libraries else word for word in rest]

    def prelink(self):
        """The tests as one object, and what they are linked with, without what debuggers need."""
        folder = f"{self.work}/link"
        os.makedirs(folder, exist_ok=True)
        checked(["ld.lld", "-r", "--strip-debug", "-o", f"{folder}/tests.o", *self.objects], self.build,
                "linking the tests")
        checked(["objcopy", "--strip-debug", f"{folder}/tests.o"], self.build, "stripping the tests")
        for library in sorted(set(self.libraries)):
            checked(["objcopy", "--strip-debug", f"{self.build}/{library}", f"{folder}/{os.path.basename(library)}"],
                    self.build, "stripping the libraries")

    def link(self, objects, target, level="plain", extra=("-Wl,--strip-all",)):
        compiler = ["g++"]
        if level == "sanitized":
            # Leaks of other libraries are named in a file of the tests.
            compiler = ["clang++", *SANITIZERS, "-std=c++20", f"{self.tree}/tests/support/leaks_of_others.cpp"]
        # What is named first is taken, so that the object of the same name in the library is not.
        command = [*compiler, "-fuse-ld=lld", "-Wl,--build-id=none", "-Wl,-O0", *extra, *objects, *self.link_rest,
                   "-o", target]
        return run(command, self.build, 120)[0] == 0

    # --- Running ----------------------------------------------------------------------------------------

    def tests(self, program, names, seconds, folder, visits=None, level="plain"):
        """What a run of these tests says: passed, failed, or time-out."""
        os.makedirs(folder, exist_ok=True)
        environment = {**os.environ, "TMPDIR": folder, "GTEST_FAIL_FAST": "1", "GTEST_BRIEF": "1"}
        if visits:
            environment["PLATEN_VISITS"] = visits
        # Too long for a command line, perhaps.
        with open(f"{folder}.flags", "w", encoding="utf-8") as stream:
            stream.write(f"--gtest_filter={':'.join(names)}\n")
        status, output = run([program, f"--gtest_flagfile={folder}.flags"], f"{self.build}/tests", seconds,
                             environment=environment,
                             memory=resource.RLIM_INFINITY if level == "sanitized" else MEMORY)
        subprocess.run(["rm", "-rf", folder], check=False)
        if status is None:
            return "time-out", ""
        if status == 0:
            return "passed", output
        failed = re.search(r"\[  FAILED  \] ([\w./]+)", output)
        return "failed", failed[1] if failed else f"status {status}"


class Visits:
    """Which tests come to which lines, and how long each takes."""

    def __init__(self, program, work):
        self.program = program
        self.path = f"{work}/visits.json"
        self.work = work

    def measure(self, units, key, file_keys, jobs):
        """By a build whose code counts, a process a test: what is made once would be seen only by the
        first test otherwise. A test is visited again when its file or the code has changed."""
        stored = {"key": key, "tests": {}}
        if os.path.exists(self.path):
            with open(self.path, encoding="utf-8") as stream:
                before = json.load(stream)
            stored = before if before["key"] == key else stored
        self.folder = f"{self.work}/visits"
        os.makedirs(self.folder, exist_ok=True)
        target = f"{self.folder}/tests"
        if not stored["tests"]:
            list(jobs.map(self.compile, sorted(units)))
            checked(["clang++", "-std=c++20", "-O1", "-c", f"{os.path.dirname(__file__)}/visits.cpp", "-o",
                     f"{self.folder}/visits.o"], self.folder, "compiling visits.cpp")
        objects = [f"{self.folder}/visits.o", *map(self.object, sorted(units))]
        if not self.program.link(objects, target, extra=["-no-pie"]):
            raise SystemExit("error: the tests that count visits were not linked")
        listed = f"{self.folder}/list.json"
        checked([target, "--gtest_list_tests", f"--gtest_output=json:{listed}"], self.folder, "listing the tests")
        with open(listed, encoding="utf-8") as stream:
            suites = json.load(stream)["testsuites"]
        keys = {f"{suite['name']}.{test['name']}": file_keys[os.path.basename(test["file"])]
                for suite in suites for test in suite["testsuite"]}
        kept = {name: test for name, test in stored["tests"].items() if keys.get(name) == test["key"]}
        visited = list(jobs.map(self.visit, sorted(keys.keys() - kept.keys())))
        places = self.places(target, {address for _, _, addresses in visited for address in addresses})
        for name, took, addresses in visited:
            lines = sorted({places[address] for address in addresses if address in places})
            kept[name] = {"key": keys[name], "took": took, "lines": [f"{file}:{line}" for file, line in lines]}
        if visited or len(kept) != len(stored["tests"]):
            with open(self.path, "w", encoding="utf-8") as stream:
                json.dump({"key": key, "tests": kept}, stream)
        self.tests = {name: test["took"] for name, test in kept.items()}
        self.lines = {}
        for name in sorted(kept):
            for place in kept[name]["lines"]:
                file, line = place.rsplit(":", 1)
                self.lines.setdefault(file, {}).setdefault(int(line), []).append(name)

    def object(self, unit):
        return f"{self.folder}/{unit.replace('/', '_')}.o"

    def compile(self, unit):
        extra = ["-gline-tables-only", "-fsanitize-coverage=bb,no-prune,inline-8bit-counters,pc-table"]
        if not self.program.compile(unit, f"{self.program.tree}/{unit}", self.object(unit), extra=extra):
            raise SystemExit(f"error: clang does not compile {unit}")

    def visit(self, name):
        started = time.monotonic()
        seen = f"{self.folder}/{name.replace('/', '_')}"
        result = self.program.tests(f"{self.folder}/tests", [name], 200, f"{seen}.tmp", seen)
        if result[0] != "passed":
            raise SystemExit(f"error: {name} fails without any fault: {result}")
        took = time.monotonic() - started
        with open(seen, encoding="utf-8") as stream:
            addresses = stream.read().split()
        for file in (seen, f"{seen}.tmp.flags"):
            os.remove(file)
        return name, took, addresses

    def places(self, target, addresses):
        addresses = sorted(addresses)
        asked = subprocess.run(["llvm-symbolizer", "--no-inlines", "--output-style=JSON", f"--obj={target}"],
                               input="".join(f"0x{address}\n" for address in addresses), text=True,
                               capture_output=True, check=True).stdout
        found = {}
        for address, line in zip(addresses, asked.splitlines()):
            symbols = json.loads(line).get("Symbol") or []
            if symbols and symbols[0]["FileName"].startswith(self.program.tree + "/"):
                found[address] = os.path.relpath(symbols[0]["FileName"], self.program.tree), symbols[0]["Line"]
        return found

    def of(self, fault):
        """The tests that come to the function of a fault, those first that come nearest to it."""
        lines = self.lines.get(fault.file, {})
        nearest = 0
        found = set()
        for line, tests in lines.items():
            if fault.function[0] <= line <= fault.function[1]:
                found.update(tests)
                if nearest < line <= fault.line:
                    nearest = line
        close = set(lines.get(nearest, ()))
        return sorted(found, key=lambda name: (name not in close, self.tests[name]))
