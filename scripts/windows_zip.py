"""The steps of scripts/windows-zip.sh that want more than a shell.

  windows_zip.py dlls FOLDER SEARCHED...          copies into FOLDER the DLLs that its programs need
  windows_zip.py def DLL FILE.def                 writes what the DLL exports
  windows_zip.py licences FOLDER MODULES NAME...  the licences of the DLLs in FOLDER/bin, of the libraries
                                                  named, and of the page if it is there
  windows_zip.py compare FILE.def FILE.lib LIST   whether all three name the same functions
  windows_zip.py versions VERSION FILE...         whether the programs have the version in their properties
  windows_zip.py needed FOLDER                    whether every DLL that is needed lies there, and no other
  windows_zip.py zip FOLDER FILE.zip              packs FOLDER, the same bytes for the same content
"""

import fnmatch
import os
import re
import shutil
import subprocess
import sys
import time
import zipfile
from pathlib import Path

import components

# What every Windows has had since 7; everything else comes along.
SYSTEM = """advapi32.dll bcrypt.dll comctl32.dll comdlg32.dll crypt32.dll gdi32.dll imm32.dll kernel32.dll
msimg32.dll msvcrt.dll ntdll.dll ole32.dll oleacc.dll oleaut32.dll rpcrt4.dll shell32.dll shlwapi.dll
user32.dll uxtheme.dll version.dll winmm.dll winspool.drv ws2_32.dll wsock32.dll""".split()

PROGRAMS = ("*.exe", "*.dll", "*.drv")


def objdump(file: Path) -> str:
    return subprocess.run(["x86_64-w64-mingw32-objdump", "-p", str(file)], check=True,
                          capture_output=True, text=True).stdout


def programs(folder: Path) -> list[Path]:
    return sorted(file for file in folder.iterdir()
                  if any(fnmatch.fnmatch(file.name.lower(), pattern) for pattern in PROGRAMS))


def imported(file: Path) -> list[str]:
    return re.findall(r"^\s*DLL Name: (\S+)$", objdump(file), re.MULTILINE)


def copy_dlls(folder: Path, searched: list[Path]) -> None:
    waiting = programs(folder)
    while waiting:
        program = waiting.pop()
        for name in imported(program):
            if name.lower() in SYSTEM or (folder / name).exists():
                continue
            found = next((place / name for place in searched if (place / name).exists()), None)
            if found is None:
                sys.exit(f"error: {program.name} needs {name}, which is neither a part of Windows nor in "
                         + ", ".join(map(str, searched)))
            components.of_file(name)
            shutil.copyfile(found, folder / name)
            subprocess.run(["x86_64-w64-mingw32-strip", "--strip-unneeded", str(folder / name)],
                           check=True)
            waiting.append(folder / name)


def exported(dll: Path) -> list[str]:
    table = objdump(dll).partition("[Ordinal/Name Pointer] Table")[2].partition("\n\n")[0]
    return re.findall(r"^\s*\[\s*\d+\](?: \+base\[\s*\d+\]\s+[0-9a-f]+)? (\w+)$", table, re.MULTILINE)


def write_def(dll: Path, file: Path) -> None:
    names = sorted(exported(dll))
    if not names:
        sys.exit(f"error: {dll} exports nothing")
    file.write_text(f"LIBRARY {dll.name}\nEXPORTS\n" + "".join(f"    {name}\n" for name in names))


def write_licences(folder: Path, modules: Path, linked: list[str]) -> None:
    whole = {component.name for component in components.named(components.EVERY_WINDOWS_PROGRAM)}
    whole |= components.CORE
    files = [file.name for file in programs(folder / "bin")]
    whole |= {components.of_file(name).name for name in linked}
    whole |= {components.of_file(name).name for name in files
              if not name.startswith("platen") and not name.startswith("replay_")
              and name not in ("run_tests.exe", "MAPI32.DLL")}
    if any(fnmatch.fnmatch(name, "wx*.dll") for name in files):
        whole |= components.WX_LIBRARIES
    if "platen.exe" in files or "platen_tests.exe" in files:
        whole |= components.COMMAND
    found = components.named(whole)
    if list(folder.glob("share/platen/platen.html")):
        found += [component for component in components.of_page(modules) if component not in found]
    texts = folder / "licences"
    texts.mkdir()
    lines = ["Platen itself: its owner has not chosen a licence yet.", "",
             "What others made and is part of what is in this archive:", ""]
    for component in sorted(found, key=lambda component: component.name.lower()):
        file = re.sub(r"[^A-Za-z0-9.]+", "-", component.name) + ".txt"
        text = component.licence_text(modules)
        (texts / file).write_text(text)
        for common in components.common_licences(text):
            if common.exists():
                shutil.copyfile(common, texts / (common.name + ".txt"))
        lines.append(f"{component.name} {component.version(modules)}: {component.licence} ({file})")
    lines += ["", "Files named after a licence are texts that the others refer to."]
    (texts / "INDEX.txt").write_text("\r\n".join(lines) + "\r\n")


def compare(definition: Path, library: Path, listed: Path) -> None:
    names = {line.strip() for line in definition.read_text().splitlines()[2:]}
    symbols = subprocess.run(["llvm-nm-22", "--defined-only", str(library)], check=True,
                             capture_output=True, text=True).stdout
    offered = set(re.findall(r" T (platen_\w+)$", symbols, re.MULTILINE))
    pointers = set(re.findall(r" T __imp_(platen_\w+)$", symbols, re.MULTILINE))
    headers = subprocess.run(["llvm-readobj-22", "--file-headers", str(library)], check=True,
                             capture_output=True, text=True).stdout
    members = set(re.findall(r"^Symbol: (platen_\w+)$", headers, re.MULTILINE))
    promised = set(re.findall(r"<elf-symbol name='(\w+)'", listed.read_text()))
    if not (names == offered == pointers == members == promised != set()):
        sys.exit("error: these are not in all lists: " + ", ".join(sorted(
            (names | offered | pointers | members | promised)
            - (names & offered & pointers & members & promised))))
    print(f"{len(names)} functions")


def has_version(version: str, files: list[Path]) -> None:
    for file in files:
        resource = file.read_bytes()
        for name, value in (("FileVersion", version), ("ProductVersion", version),
                            ("ProductName", "Platen"), ("OriginalFilename", file.name),
                            ("FileDescription", "Plotter documents")):
            # Names and values are UTF-16, and begin at multiples of four.
            text = re.escape((name + "\0").encode("utf-16le")) + b"(?:\0\0)?" + value.encode("utf-16le")
            if not re.search(text, resource):
                sys.exit(f"error: {file.name} does not say {name} {value}")


def is_complete(folder: Path) -> None:
    here = {file.name for file in programs(folder)}
    needed = {name for file in programs(folder) for name in imported(file)}
    missing = {name for name in needed if name not in here and name.lower() not in SYSTEM}
    extra = {name for name in here - needed if name.lower().endswith(".dll") and not name.startswith("platen")}
    if missing or extra:
        sys.exit(f"error: missing {sorted(missing)}, needed by nobody {sorted(extra)}")
    licences = (folder.parent / "licences/INDEX.txt").read_text()
    for name in here & needed:
        if not name.startswith("platen") and f"\n{components.of_file(name).name} " not in licences:
            sys.exit(f"error: the licences do not have that of {name}")
    print(f"{len(here & needed)} DLLs")


def pack(folder: Path, archive: Path) -> None:
    # Times of a zip are local, even, and after 1980.
    moment = max(int(os.environ["SOURCE_DATE_EPOCH"]), 315619200)
    date = time.gmtime(moment)[:6]
    with zipfile.ZipFile(archive, "w") as packed:
        for file in sorted(folder.rglob("*"), key=lambda file: file.relative_to(folder).as_posix()):
            if not file.is_file():
                continue
            entry = zipfile.ZipInfo(f"{folder.name}/{file.relative_to(folder).as_posix()}", date)
            entry.create_system = 3  # or the bits of permission would say nothing
            entry.external_attr = 0o100644 << 16
            entry.compress_type = zipfile.ZIP_DEFLATED
            packed.writestr(entry, file.read_bytes(), compresslevel=9)


def main() -> None:
    command, *arguments = sys.argv[1:]
    if command == "dlls":
        copy_dlls(Path(arguments[0]), [Path(place) for place in arguments[1:]])
    elif command == "def":
        write_def(Path(arguments[0]), Path(arguments[1]))
    elif command == "licences":
        write_licences(Path(arguments[0]), Path(arguments[1]), arguments[2:])
    elif command == "compare":
        compare(*map(Path, arguments))
    elif command == "versions":
        has_version(arguments[0], [Path(file) for file in arguments[1:]])
    elif command == "needed":
        is_complete(Path(arguments[0]))
    elif command == "zip":
        pack(Path(arguments[0]), Path(arguments[1]))
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()
