"""The test programs of Windows, run under Wine, for the code that only Windows has."""

import json
import os
import re
import shlex
import subprocess
import threading

from program import Program, checked, run

LEVELS = {"plain": ["-O0"], "optimised": ["-O2"]}
PRINTERS = "spooler: "


class WindowsProgram(Program):
    """Compiles and links as the windows preset does. There are no figures of which test comes where:
    all tests of printing run, those with real printers last, each in a process of its own."""

    def __init__(self, tree, work):
        self.tree = tree
        self.work = work
        self.build = f"{tree}/build/windows"
        with open(f"{self.build}/compile_commands.json", encoding="utf-8") as stream:
            self.commands = {os.path.relpath(unit["file"], tree): unit for unit in json.load(stream)
                             if "/platen_print.dir/" in unit["command"]}
        self.printers = threading.Lock()

    def prepare(self):
        self.read_dependents(r"CMakeFiles/platen_print\.dir/(.*)\.obj:")
        self.links = {}
        for name in ("platen_tests", "platen_spooler_tests"):
            output = checked(["ninja", "-C", self.build, "-t", "commands", f"tests/{name}.exe"], self.build,
                             "asking ninja")
            words = shlex.split(output.strip().splitlines()[-1].removeprefix(": && ").removesuffix(" && :"))
            at = words.index("-o")
            words = [word for word in words if not word.startswith("-Wl,--out-implib")]
            self.links[name] = words[:at], words[at + 2:]
        self.names = self.listed("platen_tests", r"/tests/(print/|command/print)")
        self.names += [PRINTERS + name for name in self.listed("platen_spooler_tests", r"/tests/spooler/")]

    def listed(self, name, files):
        path = f"{self.work}/list-{name}.json"
        checked([f"{self.tree}/scripts/wine", "--with-test-printers", f"{self.build}/tests/{name}.exe",
                 "--gtest_list_tests", f"--gtest_output=json:Z:{path}"], self.work, "listing the tests")
        with open(path, encoding="utf-8") as stream:
            return [f"{suite['name']}.{test['name']}" for suite in json.load(stream)["testsuites"]
                    for test in suite["testsuite"] if re.search(files, test["file"].replace("\\", "/"))]

    def compile(self, unit, source, target, level="plain", extra=(), before=()):
        compiler = shlex.split(self.commands[unit]["command"])[0]
        command = [compiler, *before, *self.flags(unit), *LEVELS[level], *extra, "-c", source, "-o", target]
        return run(command, self.build, 120)[0] == 0

    def parse_arguments(self, unit):
        """For libclang, which has to be told where the headers of the other compiler are."""
        compiler = shlex.split(self.commands[unit]["command"])[0]
        said = subprocess.run([compiler, "-E", "-v", "-x", "c++", "/dev/null"], text=True, capture_output=True,
                              check=True).stderr
        folders = [line.strip() for line in said.splitlines() if line.startswith(" /")]
        cpp = [word for folder in folders if "/c++" in folder for word in ("-isystem", folder)]
        resources = checked(["clang++", "-print-resource-dir"], self.work, "asking clang").strip()
        return ["-x", "c++", "--target=x86_64-w64-mingw32", "-nostdinc++", *cpp, "-resource-dir", resources,
                *self.flags(unit), "-O0"]

    def link(self, objects, target, level="plain", extra=("-Wl,--strip-all",)):
        for name, suffix in (("platen_tests", ""), ("platen_spooler_tests", "-spooler")):
            before, after = self.links[name]
            if run([*before, *extra, "-o", f"{target}{suffix}.exe", *objects, *after], self.build, 240)[0] != 0:
                return False
        return True

    def all_tests(self, target, folder):
        """What a run of all tests of printing says."""
        result = self.one_run(f"{target}.exe", [name for name in self.names if not name.startswith(PRINTERS)],
                              folder)
        for name in self.names:
            if result[0] == "passed" and name.startswith(PRINTERS):
                # They share the default printer and the files that are printed into.
                with self.printers:
                    result = self.one_run(f"{target}-spooler.exe", [name.removeprefix(PRINTERS)], folder)
        return result

    def one_run(self, program, names, folder):
        os.makedirs(folder, exist_ok=True)
        environment = {**os.environ, "GTEST_FAIL_FAST": "1", "GTEST_BRIEF": "1"}
        with open(f"{folder}.flags", "w", encoding="utf-8") as stream:
            stream.write(f"--gtest_filter={':'.join(names)}\n")
        # Wine reserves more memory than it uses.
        status, output = run([f"{self.tree}/scripts/wine", "--with-test-printers", program,
                              f"--gtest_flagfile=Z:{folder}.flags"], folder, 60, wall=240,
                             environment=environment, memory=-1)
        subprocess.run(["rm", "-rf", folder], check=False)
        if status is None:
            return "time-out", ""
        if status == 0:
            return "passed", output
        failed = re.search(r"\[  FAILED  \] ([\w./]+)", output)
        return "failed", failed[1] if failed else f"status {status}"
