#!/usr/bin/env python3
"""Runs the examples of the documentation and compares what they print with what the pages say.

    scripts/examples.py --command build/dev/platen --programs build/dev/examples \
        --library build/dev/c_interface/libplaten_c.so [--update] [PAGE...]

Without pages it takes README.md, docs/*.md and docs/site/**, the Python package's README.md and
the examples of every command's help. Fenced blocks:

    console    lines "$ COMMAND", then what it prints on both outputs; "..." stands for anything, and a
               comment "# exit 2" behind a command for the status that it ends with (0 otherwise)
    python     as in doctest
    cpp c cmake sh    stand in a file that is built and run: the comment above names it
    text       and blocks without a word: no examples, and must not look like commands

Comments directly above a block, for this program alone:

    <!-- example: setup         commands that readers need not see follow, up to -->
    <!-- example: fresh -->     goes on in an empty folder
    <!-- example: from FILE --> the block is a piece of this file
    <!-- example: run by FILE -->  a test that runs these very lines
    <!-- example: not run: REASON -->

Whatever is neither run nor has a reason is an error. --update writes what commands print into the
pages. The last line says how many examples ran.
"""

import argparse
import difflib
import doctest
import fnmatch
import os
import re
import select
import shutil
import subprocess
import sys
import tempfile
import textwrap
from dataclasses import dataclass, field
from pathlib import Path

root = Path(__file__).resolve().parents[1]
MARK = "\x01"
LOOKS_LIKE_A_COMMAND = re.compile(r"^\s*(\$ |platen [a-z]|(git|cmake|pip|apt-get|sudo|\./\w+|scripts/\w)\b)", re.M)


class Failure(Exception):
    """An example that is not as the page says."""


# --- Reading pages -------------------------------------------------------------------------------


@dataclass
class Block:
    language: str
    body: list
    first: int  # line of the page, from 0, of the first line of the body
    indent: int
    marks: list = field(default_factory=list)

    @property
    def text(self):
        return "\n".join(self.body) + "\n"


FENCE = re.compile(r"^(\s*)(```+)\s*(\{?[\w:-]*\}?)")


def blocks_of(lines):
    """The fenced blocks of a page, each with the comments for us above it."""
    blocks, marks, number = [], [], 0
    while number < len(lines):
        line = lines[number]
        comment = re.match(r"^\s*<!-- example: ?", line)
        if comment:
            begin = number
            while "-->" not in lines[number]:
                number += 1
            words = "\n".join(lines[begin : number + 1])
            marks.append(words[words.index("example:") + 8 : words.rindex("-->")].strip())
            number += 1
            continue
        fence = FENCE.match(line)
        if not fence:
            if line.strip() and marks and not all(m.startswith("setup") or m == "fresh" for m in marks):
                raise Failure(f"line {number + 1}: a comment for examples stands above no block")
            number += 1
            continue
        indent, ticks, language = len(fence[1]), fence[2], fence[3]
        begin = number + 1
        number = begin
        while number < len(lines) and lines[number].strip() != ticks:
            number += 1
        body = [text[indent:] for text in lines[begin:number]]
        blocks.append(Block(language, body, begin, indent, marks))
        marks = []
        number += 1
    return blocks


# --- Commands ------------------------------------------------------------------------------------


class Shell:
    """One bash for a folder: what a command sets, the next one finds."""

    def __init__(self, folder, environment):
        self.folder = folder
        self.process = subprocess.Popen(
            ["bash", "--noprofile", "--norc"], cwd=folder, env=environment, bufsize=0,
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
        )

    def run(self, command, seconds=120):
        """What the command prints, and its status."""
        line = f"{{ {command}\n}} </dev/null\nprintf '\\n{MARK}%d\\n' \"$?\"\n"
        self.process.stdin.write(line.encode())
        printed = b""
        end = re.compile(rb"\n" + MARK.encode() + rb"(\d+)\n$")
        while not end.search(printed):
            ready, _, _ = select.select([self.process.stdout], [], [], seconds)
            more = os.read(self.process.stdout.fileno(), 65536) if ready else b""
            if not more:
                self.process.kill()
                raise Failure(f"the shell ended or waited too long in: {command}")
            printed += more
        status = int(end.search(printed)[1])
        return end.sub(b"", printed).decode("utf-8", "replace").rstrip("\n"), status

    def close(self):
        self.process.stdin.close()
        self.process.wait(20)
        self.process.stdout.close()


def agrees(expected, printed):
    """True when `printed` is what the page says; "..." stands for anything, on a line of its own for
    any lines."""
    pattern = ""
    for line in expected:
        if line.strip() == "...":
            pattern += r"(?:.*\n)*?"
        else:
            pattern += ".*?".join(re.escape(piece) for piece in line.split("...")) + "\n"
    return re.fullmatch(pattern, printed + "\n" if printed else "") is not None


def steps_of(body):
    """The commands of a block with what they print: (command, [expected lines])."""
    steps = []
    for line in body:
        if line.startswith("$ "):
            steps.append([line[2:], []])
        elif line.startswith("> ") and steps and not steps[-1][1]:
            steps[-1][0] += "\n" + line[2:]
        elif not steps:
            raise Failure(f'a console block begins with a line "$ COMMAND", not with: {line}')
        else:
            steps[-1][1].append(line)
    return steps


def expected_status(command):
    said = re.search(r"#.*\bexit (\d+)", command)
    return int(said[1]) if said else 0


# --- The runner ----------------------------------------------------------------------------------


class Runner:
    def __init__(self, options):
        self.options = options
        self.counts = {"shell": 0, "python": 0, "files": 0, "help": 0, "elsewhere": 0, "not run": 0}
        self.failures = 0
        self.reasons = []
        memory = Path("/dev/shm")
        place = memory if os.access(memory, os.W_OK) else None
        self.work = Path(tempfile.mkdtemp(prefix="platen-examples-", dir=place))
        self.folders = 0
        self.environment = self.make_environment()

    def make_environment(self):
        tools, home = self.work / "bin", self.work / "home"
        tools.mkdir()
        home.mkdir()
        (tools / "platen").symlink_to(self.options.command.resolve())
        for program in sorted(self.options.programs.iterdir()):
            if program.is_file() and os.access(program, os.X_OK):
                (tools / program.name).symlink_to(program.resolve())
        # A pager that pages nothing, and the Python that examples mean.
        (tools / "less").symlink_to(shutil.which("cat"))
        (tools / "python3").symlink_to(sys.executable)
        python_package(self.work / "python")
        kept = {name: os.environ[name] for name in ("TMPDIR",) if name in os.environ}
        return kept | {
            "PATH": f"{tools}:/usr/bin:/bin",
            "HOME": str(home),
            "LC_ALL": "C.UTF-8",
            "TZ": "UTC",
            "GIT_CONFIG_NOSYSTEM": "1",
            "PLATEN_SOURCES": str(root),
            "PLATEN_LIBRARY": str(self.options.library.resolve()),
            "PYTHONPATH": str(self.work / "python"),
            "PYTHONDONTWRITEBYTECODE": "1",
        }

    def fresh_folder(self):
        self.folders += 1
        folder = self.work / str(self.folders) / "plots"
        folder.mkdir(parents=True)
        return folder

    def fail(self, where, message):
        self.failures += 1
        lines = [line[:200] for line in str(message).split("\n")]
        print("\n  ".join([f"{where}: {lines[0]}", *lines[1:40]]) + "\n")

    # A page

    def page(self, path):
        lines = path.read_text(encoding="utf-8").split("\n")
        name = path.relative_to(root) if path.is_relative_to(root) else path
        try:
            blocks = blocks_of(lines)
        except Failure as failure:
            self.fail(name, failure)
            return
        folder = self.fresh_folder()
        shell, python, changes = None, [], []
        for block in blocks:
            where = f"{name}:{block.first}"
            try:
                for mark in block.marks:
                    if mark == "fresh":
                        self.doctest(name, python, folder)
                        python, folder = [], self.fresh_folder()
                        shell = shell and shell.close()
                    elif mark.startswith("setup"):
                        shell = shell or Shell(folder, self.environment)
                        printed, status = shell.run(f"set -e\n{mark[5:]}\nset +e")
                        if status != 0:
                            raise Failure(f"what is set up ended with status {status}:\n{printed}")
                elsewhere = [m for m in block.marks if m != "fresh" and not m.startswith("setup")]
                if elsewhere:
                    self.marked(block, elsewhere)
                elif block.language == "console":
                    shell = shell or Shell(folder, self.environment)
                    self.console(where, block, shell, changes)
                elif block.language in ("python", "pycon") or ">>> " in block.text:
                    python.append(block)
                elif block.language == "{literalinclude}":
                    self.included(path, block, lines[block.first - 1])
                elif block.language.startswith("{"):
                    pass  # what Sphinx makes of it
                elif block.language in ("cpp", "c", "cmake", "sh", "bash"):
                    raise Failure(f"a block of {block.language} is not run; say which file it is from")
                elif LOOKS_LIKE_A_COMMAND.search(block.text):
                    raise Failure("a block has commands that are not run; is it a console?")
            except Failure as failure:
                self.fail(where, failure)
        self.doctest(name, python, folder)
        if shell:
            shell.close()
        if changes and self.options.update:
            for block, body in reversed(changes):
                lines[block.first : block.first + len(block.body)] = [
                    " " * block.indent + line if line else "" for line in body
                ]
            path.write_text("\n".join(lines), encoding="utf-8")
            print(f"{name}: {len(changes)} blocks written anew")

    def console(self, where, block, shell, changes):
        body, different = [], False
        for command, expected in steps_of(block.body):
            self.counts["shell"] += 1
            printed, status = shell.run(command)
            if status != expected_status(command):
                self.fail(where, f"$ {command}\nended with status {status}:\n{printed}")
            body += ("$ " + command.replace("\n", "\n> ")).split("\n")
            if agrees([line for line in expected], printed):
                body += expected
                continue
            different = True
            # Nobody else has this folder.
            printed = printed.replace(str(shell.folder), "...")
            body += printed.split("\n") if printed else []
            if not self.options.update:
                lines = difflib.unified_diff(expected, printed.split("\n"), "the page", "the command", lineterm="")
                self.fail(where, f"$ {command}\n" + "\n".join(lines))
        if different:
            changes.append((block, body))

    def doctest(self, name, blocks, folder):
        if not blocks:
            return
        # As many lines as the page has, so that failures have its numbers.
        text = ""
        for block in blocks:
            text += "\n" * (block.first - text.count("\n")) + block.text
        examples = doctest.DocTestParser().get_examples(text)
        self.counts["python"] += len(examples)
        program = (
            "import doctest, sys\n"
            "text = sys.stdin.read()\n"
            f"test = doctest.DocTestParser().get_doctest(text, {{}}, {str(name)!r}, {str(name)!r}, 0)\n"
            "flags = doctest.ELLIPSIS | doctest.IGNORE_EXCEPTION_DETAIL | doctest.NORMALIZE_WHITESPACE\n"
            "sys.exit(doctest.DocTestRunner(optionflags=flags).run(test).failed > 0)\n"
        )
        # The last block of a fence has no empty line after it that would end what it prints.
        done = subprocess.run(
            [sys.executable, "-c", program], input=text, cwd=folder, env=self.environment,
            capture_output=True, text=True, timeout=120,
        )
        if done.returncode != 0:
            self.fail(name, done.stdout + done.stderr)

    def marked(self, block, marks):
        (mark,) = marks if len(marks) == 1 else [marks[0] + " (and more)"]
        if mark.startswith("not run: "):
            self.counts["not run"] += 1
            self.reasons.append(mark[9:])
        elif mark.startswith("run by "):
            if not (root / mark[7:]).is_file():
                raise Failure(f"there is no {mark[7:]}")
            self.counts["elsewhere"] += 1
        elif mark.startswith("from "):
            self.counts["files"] += 1
            source = (root / mark[5:]).read_text(encoding="utf-8")
            piece = textwrap.dedent(block.text)
            flat = "\n".join(line.strip() for line in source.split("\n"))
            if "\n".join(line.strip() for line in piece.strip().split("\n")) not in flat:
                raise Failure(f"the block is no piece of {mark[5:]}")
        else:
            raise Failure(f"what does this mean: {mark}")

    def included(self, page, block, line):
        """Files that pages show must be ones that tests build."""
        source = (page.parent / line.split()[-1]).resolve()
        self.counts["files"] += 1
        if not source.is_file() or source.parent not in built_folders:
            raise Failure(f"{source} is not built by a test")

    # Help and headers

    def help(self):
        """Every example of every command's help is tried, with the files that it takes for granted."""
        pages = self.work / "man"
        pages.mkdir()
        subprocess.run([self.options.command, "--man", pages], check=True)
        usual = self.fresh_folder()
        done = subprocess.run(
            ["bash", "-e", str(root / "docs/site/help-files.sh")], cwd=usual, env=self.environment,
            capture_output=True, text=True,
        )
        if done.returncode != 0:
            self.fail("docs/site/help-files.sh", done.stdout + done.stderr)
            return
        kept = self.work / "kept"
        shutil.copytree(usual, kept)
        for page in sorted(pages.glob("*.1")):
            examples = help_examples(page.read_text(encoding="utf-8"))
            # In the same folder each time, since configurations name their PMPs by full paths.
            shutil.rmtree(usual)
            shutil.copytree(kept, usual, ignore=shutil.ignore_patterns("only"))
            if (kept / "only" / page.stem).is_dir():
                shutil.copytree(kept / "only" / page.stem, usual, dirs_exist_ok=True)
            shell = Shell(usual, self.environment)
            for command in examples:
                reason = next((why for pattern, why in NOT_RUN.items() if fnmatch.fnmatch(command, pattern)), None)
                if reason:
                    self.counts["not run"] += 1
                    self.reasons.append(reason)
                    continue
                self.counts["help"] += 1
                printed, status = shell.run(command)
                here_only = any(fnmatch.fnmatch(command, pattern) for pattern in WINDOWS)
                if here_only and (status != 2 or "Windows" not in printed):
                    self.fail(f"help of {page.stem}", f"{command}\ndoes not say that this takes Windows:\n{printed}")
                elif not here_only and status not in (0, 1, 3):
                    self.fail(f"help of {page.stem}", f"{command}\nended with status {status}:\n{printed}")
            shell.close()

    def finish(self):
        shutil.rmtree(self.work)
        counts = self.counts
        ran = counts["shell"] + counts["python"] + counts["help"]
        for reason in sorted(set(self.reasons)):
            print(f"not run ({self.reasons.count(reason)}): {reason}")
        print(
            f"{ran} examples were run ({counts['shell']} commands of pages, {counts['help']} of helps,"
            f" {counts['python']} of Python), {counts['files']} are pieces of files that tests build,"
            f" {counts['elsewhere']} are run by other tests, {counts['not run']} are not run,"
            f" {self.failures} failed"
        )
        return 1 if self.failures or not ran else 0


built_folders = [root / "docs/examples", root / "docs/examples/embedded"]

# Examples of helps that cannot run here, and those that only say so here.
NOT_RUN = {
    "platen view *": "opens a browser, or needs the page; tests of the page run it",
}
WINDOWS = (
    "platen printers*", "platen devmode *", "platen papers --printer *", "platen create * --printer *",
    "platen check --printers *",
)


def help_examples(manual):
    """The commands of a manual page's examples, without what is said of them."""
    section = re.search(r"^\.SH EXAMPLES\n(.*?)(?=^\.SH |\Z)", manual, re.M | re.S)
    commands = []
    for line in section[1].split("\n") if section else []:
        line = plain_roff(line)
        if line.startswith("platen "):
            commands.append(re.split(r" {2,}(?=(?:[^\"]*\"[^\"]*\")*[^\"]*$)", line)[0].rstrip())
    return commands


def plain_roff(line):
    for escape, letter in (
        (r"\-", "-"), (r"\(aq", "'"), (r"\(ha", "^"), (r"\(ti", "~"), (r"\(ga", "`"), (r"\&", ""), (r"\e", "\\"),
    ):
        line = line.replace(escape, letter)
    return line


def python_package(folder):
    """Puts the Python package, as it is when installed, into a folder."""
    shutil.copytree(
        root / "bindings/python/platen", folder / "platen", ignore=shutil.ignore_patterns("__pycache__")
    )
    made = subprocess.run(
        [sys.executable, "-c",
         "import declarations, sys; declarations.ffi.emit_python_code(sys.argv[1])",
         str(folder / "platen/_ffi.py")],
        cwd=root / "bindings/python", env={**os.environ, "PYTHONDONTWRITEBYTECODE": "1"},
        stdout=subprocess.DEVNULL,
    )
    if made.returncode != 0:
        sys.exit("error: the Python package needs Debian's python3-cffi")


def usual_pages():
    pages = [root / "README.md", root / "bindings/python/README.md"]
    for name in ("SECURITY.md", "CONTRIBUTING.md"):
        pages += [root / name] if (root / name).exists() else []
    return pages + sorted((root / "docs").glob("*.md")) + sorted((root / "docs/site").rglob("*.md"))


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--command", type=Path, required=True, help="the command")
    parser.add_argument("--programs", type=Path, required=True, help="folder of the examples' programs")
    parser.add_argument("--library", type=Path, required=True, help="libplaten_c, for Python")
    parser.add_argument("--update", action="store_true", help="write what commands print into the pages")
    parser.add_argument("pages", nargs="*", type=Path, metavar="PAGE")
    options = parser.parse_args()
    runner = Runner(options)
    for page in [page.resolve() for page in options.pages] or usual_pages():
        runner.page(page)
    if not options.pages:
        runner.help()
    sys.exit(runner.finish())


if __name__ == "__main__":
    main()
