#!/usr/bin/env python3
"""Puts the pages of the site together and lets Sphinx build them; scripts/site.sh calls it.

    scripts/site.py --command PLATEN --library LIBPLATEN_C --work DIR

What is written nowhere else comes from docs/site. The rest is made of what there is: README-like pages
of docs, a page a command of its manual page, a page a header of Doxygen's XML, a page of all schemas.
The site is in DIR/html.
"""

import argparse
import json
import os
import posixpath
import re
import shutil
import subprocess
import sys
from pathlib import Path
from xml.etree import ElementTree

sys.path.insert(0, str(Path(__file__).resolve().parent))
sys.dont_write_bytecode = True

from examples import plain_roff, python_package, root  # noqa: E402

# Pages that stand elsewhere in the repository, by their places on the site; those that are not there
# yet are left out.
PAGES = {
    "docs/format.md": "format.md",
    "docs/architecture.md": "architecture.md",
    "docs/glossary.md": "glossary.md",
    "docs/git.md": "git.md",
    "docs/rent.md": "rent.md",
    "docs/abi.md": "abi.md",
    "docs/trust.md": "trust.md",
    "SECURITY.md": "security.md",
    "CONTRIBUTING.md": "contributing.md",
    "CHANGELOG.md": "changes.md",
    "bindings/python/README.md": "python.md",
}


def fail(message):
    sys.exit(f"error: {message}")


def write(path, text):
    """Writes a page unless it says that already: Sphinx reads again what is newer."""
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")
    written.add(path)


written = set()

# --- Pages of people -----------------------------------------------------------------------------


def page_of(text, place, target):
    """A page of the repository for its place on the site: links lead to pages, and what is not on the
    site is named only."""
    text = re.sub(r"<!-- example:.*?-->\n?", "", text, flags=re.S)

    def link(match):
        words, goal = match[1], match[2]
        if re.match(r"[a-z]+:|#", goal):
            return match[0]
        path, _, anchor = goal.partition("#")
        there = posixpath.normpath(posixpath.join(posixpath.dirname(place), path))
        known = {**PAGES, "docs/schema": "reference/schemas.md", "README.md": "index.md"}
        if there.startswith("docs/site/"):
            page = there[len("docs/site/") :]
        elif there in known and (root / there).exists():
            page = known[there]
        else:
            return words
        page = posixpath.relpath(page, posixpath.dirname(target) or ".")
        return f"[{words}]({page}{'#' + anchor if anchor else ''})"

    return re.sub(r"(?<!!)\[([^\]]*)\]\(([^)\s]+)\)", link, text)


def pages(source):
    for place, target in PAGES.items():
        if (root / place).exists():
            text = (root / place).read_text(encoding="utf-8")
            write(source / target, page_of(text, place, target))
    site = root / "docs/site"
    for path in sorted(site.rglob("*.md")):
        target = path.relative_to(site).as_posix()
        text = path.read_text(encoding="utf-8")
        # Files that are shown stand beside the pages' folder in the repository, and in it here.
        text = text.replace("../../examples/", "../examples/").replace("{{ version }}", version())
        if target == "index.md":
            there = [page for place, page in PAGES.items() if (root / place).exists()]
            more = [page[:-3] for page in ("abi.md", "trust.md", "security.md") if page in there]
            text = text.replace("\nrent\n", "\n".join(["", "rent", *more, ""]))
        write(source / target, re.sub(r"<!-- example:.*?-->\n?", "", text, flags=re.S))
    for folder, target in (("docs/examples", "examples"), ("docs/site/static", "static")):
        for path in sorted((root / folder).rglob("*")):
            if path.is_file():
                write(source / target / path.relative_to(root / folder), path.read_text())
    write(source / "static/platen.svg", (root / "packaging/icons/platen.svg").read_text())
    write(source / "conf.py", (site / "conf.py").read_text())


def version():
    return re.search(r"project\(Platen VERSION ([\d.]+)", (root / "CMakeLists.txt").read_text())[1]


# --- Commands ------------------------------------------------------------------------------------


def words(line):
    """A line of a manual page as Markdown."""
    line = re.sub(r"\\f([BI])(.*?)\\fR", lambda found: f"`{found[2]}`" if found[1] == "B" else f"*{found[2]}*", line)
    line = plain_roff(line)
    return re.sub(r"(?<![`\w])([<_])", r"\\\1", line)


def from_manual(roff, known):
    """A manual page as Markdown. Its macros are those that tools/platen/help/manual.cpp writes."""
    title = re.search(r"^\.SH NAME\n(.*)$", roff, re.M)[1]
    name, purpose = plain_roff(title).split(" - ", 1)
    name = name.replace("-", " ", 1)
    out = [f"# {name}", "", purpose[:1].upper() + purpose[1:] + ".", ""]
    lines = roff[roff.index(".SH SYNOPSIS") :].split("\n")
    literal, term, section = False, 0, ""
    for line in lines:
        if line.startswith(".SH "):
            section = line[4:]
            if section == "SEE ALSO":
                break
            out += ["", f"## {section.capitalize()}", ""]
        elif line.startswith(".SS "):
            out += ["", f"### {plain_roff(line[4:])}", ""]
        elif line == ".TP":
            term = 2
        elif line == ".nf":
            literal = True
            out += ["", "```text"]
        elif line == ".fi":
            literal = False
            out += ["```", ""]
        elif line == ".PP":
            out += [""]
        elif line == ".br":
            out[-1] += "\\"
        elif line.startswith("."):
            if line.split()[0] not in (".RS", ".RE", ".ad", ".nh", ".TH"):
                fail(f"a manual page has a macro that is not known here: {line}")
        elif literal:
            out.append(plain_roff(line))
        elif term == 2:
            command = re.fullmatch(r"\\fBplaten\\-(.*)\\fR\(1\)", line)
            linked = command and plain_roff(command[1])
            out += ["", f"[`platen {linked}`](platen-{linked}.md)" if linked in known else words(line)]
            term = 1
        elif term == 1 and line:
            out.append(f": {words(line)}")
            term = 0
        else:
            out.append(words(line))
    return "\n".join(out).rstrip() + "\n"


def commands(source, command, work):
    manual = work / "man"
    shutil.rmtree(manual, ignore_errors=True)
    manual.mkdir(parents=True)
    subprocess.run([command, "--man", manual], check=True)
    found = sorted(manual.glob("*.1"))
    known = [path.stem.partition("-")[2] for path in found]
    order = re.findall(r"^\\fBplaten\\-(.*)\\fR\(1\)$", (manual / "platen.1").read_text(), re.M)
    for path in found:
        text = from_manual(path.read_text(encoding="utf-8"), known)
        if path.stem == "platen":
            text = text.replace("# platen\n", "# Every command\n", 1)
            listed = "\n".join(f"platen-{plain_roff(name)}" for name in order)
            text += f"\n```{{toctree}}\n:hidden:\n\n{listed}\n```\n"
        name = "index" if path.stem == "platen" else path.stem
        write(source / "reference/commands" / f"{name}.md", text)


# --- Headers -------------------------------------------------------------------------------------

SUBJECTS = {
    "Documents": ("plotstyle", "plotcfg", "pmp", "papers", "custom_papers"),
    "Looking and checking": ("inspect", "inspect_papers", "compare", "audit", "style_words"),
    "Changing": tuple(
        "edit edit_items edit_files edit_styles edit_papers edit_table_presets edit_apply edit_merge"
        " edit_repair edit_result edit_file_mark".split()
    ),
    "Drawing": ("chart", "scene", "chart_files"),
    "Moving": ("house", "house_bundle", "house_restore", "house_move"),
    "Containers and items": tuple(
        "pia pia_items pia_tree pia_paths pia_text pia_text_forms pia_report pia_sink cloned_pointer".split()
    ),
    "For C": ("platen",),
    "Applications with wxWidgets": tuple(
        "gui gui_images gui_look gui_os gui_text gui_windows print wx_layer log".split()
    ),
    "What a host brings": ("oda", "utcore", "utcore_host", "utcore_replace", "utcore_theme",
                           "platen_api"),
}


def head_comment(text):
    """What a header says of itself: its first comment, as Markdown."""
    if text.startswith("/*"):
        lines = [re.sub(r"^ \*? ?", "", line) for line in text[2 : text.index("*/")].split("\n")]
        lines = [line for line in lines]
    else:
        lines = []
        for line in text.split("\n"):
            if not line.startswith("///"):
                break
            lines.append(line[4:])
    return fenced("\n".join(lines).strip() + "\n", "c" if text.startswith("/*") else "cpp")


def fenced(text, language):
    """Code that is indented by four spaces as a block of its language."""
    def block(match):
        code = "\n".join(line[4:] for line in match[0].rstrip("\n").split("\n"))
        return f"```{language}\n{code}\n```\n"

    return re.sub(r"(?:^ {4}.*\n(?:\n(?= {4}))?)+", block, text, flags=re.M)


def filtered(folder):
    """The headers as Doxygen takes them: comments in C become docstrings."""
    folder.mkdir(parents=True, exist_ok=True)
    there = sorted((root / "include/platen").glob("*.h"))
    for header in there:
        text = header.read_text(encoding="utf-8")
        if text.startswith("/*"):
            text = re.sub(r"^/\*", "/**", text[text.index("*/") + 2 :], flags=re.M)
        else:
            # What it says of itself stands on the page already.
            text = re.sub(r"\A(///.*\n)+", "", text)
        # What a class takes over stands in its base.
        text = re.sub(r"^ +using Pia\w+::\w+;\n", "", text, flags=re.M)
        # The parser of C++ in Sphinx stumbles over wide literals here.
        text = re.sub(r'(static constexpr const wchar_t\* \w+)\s*=\s*L"[^"]*"', r"\1", text)
        write(folder / header.name, "/** @file */\n" + text)
    return there


def ungroup(xml):
    """Puts the members of unnamed groups back among the others of their kind, in the order of the header:
    a group only says one thing of several members."""
    outside = {"function": "func", "variable": "var"}
    inside = {"function": "func", "variable": "attrib", "typedef": "type", "enum": "type"}
    for file in sorted(xml.glob("*.xml")):
        tree = ElementTree.parse(file)
        changed = False
        for compound in tree.iterfind("compounddef"):
            sections = {one.get("kind"): one for one in compound.iterfind("sectiondef")}
            groups = compound.findall("sectiondef[@kind='user-defined']")
            for group in groups:
                place = list(compound).index(group)
                compound.remove(group)
                for member in group.iterfind("memberdef"):
                    kind = member.get("kind")
                    name = outside.get(kind, kind)
                    if compound.get("kind") in ("class", "struct"):
                        static = "static-" if member.get("static") == "yes" else ""
                        name = f"{member.get('prot')}-{static}{inside.get(kind, kind)}"
                    if name not in sections:
                        sections[name] = ElementTree.Element("sectiondef", kind=name)
                        compound.insert(place, sections[name])
                    sections[name].append(member)
            if groups:
                changed = True
                for section in sections.values():
                    section[:] = sorted(section, key=lambda one: int(one.find("location").get("line")))
        if changed:
            tree.write(file, encoding="utf-8", xml_declaration=True)


def headers(source, work):
    there = filtered(work / "headers/platen")
    xml = work / "xml"
    settings = {
        "INPUT": work / "headers/platen",
        "STRIP_FROM_PATH": work / "headers",
        "OUTPUT_DIRECTORY": work,
        "GENERATE_HTML": "NO",
        "GENERATE_LATEX": "NO",
        "GENERATE_XML": "YES",
        "XML_PROGRAMLISTING": "NO",
        "QUIET": "YES",
        "EXTRACT_ALL": "YES",
        "WARN_IF_UNDOCUMENTED": "NO",
        "JAVADOC_AUTOBRIEF": "YES",
        # One line may say what a family of fields has in common.
        "DISTRIBUTE_GROUP_DOC": "YES",
        "MACRO_EXPANSION": "YES",
        "EXPAND_ONLY_PREDEF": "YES",
        "SKIP_FUNCTION_MACROS": "YES",
        "BUILTIN_STL_SUPPORT": "YES",
        # Windows is where most is declared.
        "PREDEFINED": "PLATEN_API= PLATEN_C_API= PLATEN_CHART_API= _WIN32 __cplusplus=202002"
        " wxDECLARE_EXPORTED_EVENT(place,name,type)=",
        "WARN_AS_ERROR": "FAIL_ON_WARNINGS",
    }
    doxyfile = "".join(f"{key} = {value}\n" for key, value in settings.items())
    done = subprocess.run(["doxygen", "-"], input=doxyfile, capture_output=True, text=True)
    if done.returncode != 0:
        fail("Doxygen finds docstrings that are wrong:\n" + done.stderr)
    ungroup(xml)
    named = {name for names in SUBJECTS.values() for name in names}
    if named != {header.stem for header in there}:
        fail(f"scripts/site.py has to list all headers: {named ^ {header.stem for header in there}}")
    index = ["# Public headers", "", "A subsystem's header brings the whole subsystem.", ""]
    for subject, names in SUBJECTS.items():
        index += [f"## {subject}", ""]
        for name in names:
            text = (root / f"include/platen/{name}.h").read_text(encoding="utf-8")
            said = head_comment(text)
            summary = " ".join(re.split(r"\n\n|```", said)[0].split())
            index += [f"- [`<platen/{name}.h>`]({name}.md): {summary}"]
            page = [f"# {name}.h", "", f"`#include <platen/{name}.h>`", "", said, ""]
            page += ["```{eval-rst}", f".. doxygenfile:: {name}.h", "   :sections: innerclass innernamespace"
                     " public-type public-func public-static-func public-attrib public-static-attrib"
                     " define enum typedef var func user-defined", "```", ""]
            write(source / f"reference/headers/{name}.md", "\n".join(page))
        index += [""]
    index += ["```{toctree}", ":hidden:", ""] + [n for names in SUBJECTS.values() for n in names] + ["```", ""]
    write(source / "reference/headers/index.md", "\n".join(index))
    return xml


# --- Schemas -------------------------------------------------------------------------------------


def kind_of(schema):
    """What values look like, in words."""
    if "$ref" in schema:
        goal = schema["$ref"]
        name = goal.split("/")[-1].removesuffix(".json")
        return f"[{name}](#{name})" if goal.endswith(".json") else f"*{name}*"
    if "const" in schema:
        return f"`{json.dumps(schema['const'])}`"
    if "enum" in schema:
        return ", ".join(f"`{json.dumps(value)}`" for value in schema["enum"])
    for word in ("oneOf", "anyOf"):
        if word in schema:
            return " or ".join(kind_of(one) for one in schema[word])
    types = schema.get("type", "anything")
    types = " or ".join(types) if isinstance(types, list) else types
    if "items" in schema:
        return f"{types} of {kind_of(schema['items'])}" if schema["items"] else types
    return types


def rows_of(schema, prefix=""):
    """A row for each member of an object, and for those of the objects in it."""
    rows = []
    for name, member in schema.get("properties", {}).items():
        needed = "" if name in schema.get("required", []) else " (not always)"
        said = " ".join(member.get("description", "").split()).replace("|", "\\|")
        kind = kind_of(member).replace("|", "\\|")
        rows.append(f"| `{prefix}{name}`{needed} | {kind} | {said} |")
        rows += rows_of(member, f"{prefix}{name}.")
        if isinstance(member.get("items"), dict):
            rows += rows_of(member["items"], f"{prefix}{name}[].")
    return rows


def table_of(schema):
    rows = rows_of(schema)
    return ["| Member | Value | What it says |", "|---|---|---|", *rows, ""] if rows else []


def schemas(source):
    out = [
        "# JSON outputs", "",
        "Every JSON output names its schema, and has what that demands. A schema that changes in more than"
        " its words gets a new number. The files (JSON Schema, draft 2020-12) are installed in"
        " `share/platen/schema`.", "",
    ]
    for path in sorted((root / "docs/schema").glob("*.json")):
        schema = json.loads(path.read_text(encoding="utf-8"))
        out += [f"## {path.stem}", "", f"**{schema['title']}.** {schema.get('description', '')}", ""]
        out += table_of(schema)
        for name, part in schema.get("$defs", {}).items():
            out += [f"*{name}*: {part.get('description', '')} {'' if rows_of(part) else kind_of(part)}", ""]
            out += table_of(part)
    write(source / "reference/schemas.md", "\n".join(out))


# --- Python --------------------------------------------------------------------------------------


def python(source):
    page = [
        "# Python: every class and function", "",
        "[Installing it, and five tasks](../python.md).", "",
        "```{eval-rst}", ".. automodule:: platen", "   :members:", "   :imported-members:",
        "   :undoc-members:", "   :exclude-members: AnyPath, Source, Value", "```", "",
    ]
    write(source / "reference/python.md", "\n".join(page))


# --- Pictures ------------------------------------------------------------------------------------


def pictures(source, command, work):
    """The pens of a made-up office, drawn by the command."""
    folder = work / "pictures"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    made = [["create", "ctb", "-o", "office.ctb", "--description", "Pens of the drawing office"]]
    for pens, *settings in (
        ("1-255", "color=#000000", "lineweight=0.25"),
        ("1,8", "lineweight=0.18"),
        ("2,30-39", "lineweight=0.35"),
        ("3,90-99", "lineweight=0.5"),
        ("5,170-179", "lineweight=0.7", "color=#2c6fbb"),
        ("6,210-219", "lineweight=1", "color=#b5651d"),
        ("9,250-251", "lineweight=0.13", "screening=60"),
        ("252-255", "lineweight=0.13", "screening=30"),
    ):
        made.append(["style", "set", "office.ctb", pens, "--in-place", *settings])
    made.append(["chart", "office.ctb", "-o", "pens.svg", "--gather", "--title", "Pens of the drawing office"])
    for words_of_it in made:
        subprocess.run([command, *words_of_it], cwd=folder, check=True, stdout=subprocess.DEVNULL)
    write(source / "pictures/pens.svg", (folder / "pens.svg").read_text(encoding="utf-8"))


# --- The theme ---------------------------------------------------------------------------------


def replaced(text, old, new):
    if old not in text:
        fail(f"the theme is another one than this script mends: it has no {old!r}")
    return text.replace(old, new, 1)


def mend_theme(static):
    """Debian's Furo is neither bundled nor compiled as its authors do it: its script imports another one,
    which browsers refuse to pages on disk, its sheet imports one of a server, and it has lost the colours
    of systems that are dark."""
    script = static / "scripts/furo.js"
    text = replaced(script.read_text(), 'import Gumshoe from "./gumshoe-patched.js";', "")
    script.write_text((static / "scripts/gumshoe-patched.js").read_text() + text)
    (static / "scripts/gumshoe-patched.js").unlink()

    sheet = static / "styles/furo.css"
    text = sheet.read_text()
    normal = Path("/usr/share/javascript/normalize.css/normalize.css").read_text()
    text = replaced(text, "@import url(/javascript/normalize.css/normalize.css);", normal)
    dark = re.search(r'@media not print \{\n  body\[data-theme="dark"\] \{(.*?)\}', text, re.S)
    if not dark or "prefers-color-scheme" in text:
        fail("the theme's sheet is another one than this script mends")
    auto = f'@media screen and (prefers-color-scheme: dark) {{ body[data-theme="auto"] {{{dark[1]}}} }}\n'
    end = text.index("body[data-theme=\"auto\"] .theme-toggle")
    sheet.write_text(text[:end] + auto + text[end:])


# --- All of it -----------------------------------------------------------------------------------


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--command", type=Path, required=True)
    parser.add_argument("--library", type=Path, required=True)
    parser.add_argument("--work", type=Path, required=True)
    options = parser.parse_args()
    work = options.work.resolve()
    command = options.command.resolve()
    source = work / "source"

    pages(source)
    commands(source, command, work)
    xml = headers(source, work)
    schemas(source)
    python(source)
    pictures(source, command, work)
    for path in [path for path in source.rglob("*") if path.is_file() and path not in written]:
        path.unlink()

    package = work / "python"
    shutil.rmtree(package, ignore_errors=True)
    python_package(package)
    environment = {
        **os.environ,
        "PYTHONPATH": str(package),
        "PYTHONDONTWRITEBYTECODE": "1",
        "PYTHONHASHSEED": "0",
        "PLATEN_LIBRARY": str(options.library.resolve()),
        "PLATEN_XML": str(xml),
        "PLATEN_VERSION": version(),
    }
    # What pages of before have left is not a part of the site.
    # Nor may what Sphinx remembers decide: where a name is declared twice, links go to what it read first.
    for folder in ("html", "doctrees"):
        shutil.rmtree(work / folder, ignore_errors=True)
    # -W: a warning is an error, once all of them were said.
    done = subprocess.run(
        [sys.executable, "-m", "sphinx", "-W", "--keep-going", "-q", "-b", "html",
         "-d", work / "doctrees", source, work / "html"],
        env=environment,
    )
    if done.returncode != 0:
        fail("Sphinx finds faults in the pages")
    mend_theme(work / "html/_static")


if __name__ == "__main__":
    main()
