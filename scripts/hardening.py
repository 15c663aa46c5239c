#!/usr/bin/env python3
"""Tells what protections built files have: scripts/hardening.py FILE...

A file is a program or a shared library, for Linux or for Windows. A line a file; a protection that
a file lacks is named with what would bring it, and makes the exit status 1.
"""

import re
import subprocess
import sys


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def elf(path):
    """Each protection of an ELF file and whether it is there."""
    headers = output("readelf", "-lW", path)
    dynamic = output("readelf", "-dW", path)
    symbols = output("readelf", "--dyn-syms", "-W", path)
    stack = re.search(r"GNU_STACK .*", headers)
    yield "loaded anywhere (-fPIE -pie, -shared)", "Elf file type is DYN" in headers
    yield "read-only relocations (-z relro)", "GNU_RELRO" in headers
    yield "bound when loaded (-z now)", bool(re.search(r"BIND_NOW|FLAGS.* NOW", dynamic))
    yield "no code on the stack (-z noexecstack)", bool(stack) and "RWE" not in stack[0]
    yield "nothing both written and run", not re.search(r"LOAD .* RWE ", headers)
    yield "stack canaries (-fstack-protector-strong)", "__stack_chk_fail" in symbols
    yield "checked copies (-D_FORTIFY_SOURCE)", bool(re.search(r"__\w+_chk\b", symbols.replace(
        "__stack_chk_fail", "")))


def pe(path):
    """The same of a PE file."""
    text = output("x86_64-w64-mingw32-objdump", "-p", path)
    for what, word in (("loaded anywhere (--dynamicbase)", "DYNAMIC_BASE"),
                       ("loaded anywhere in 64 bits (--high-entropy-va)", "HIGH_ENTROPY_VA"),
                       ("no code in data (--nxcompat)", "NX_COMPAT")):
        yield what, word in text


def main():
    if len(sys.argv) < 2 or sys.argv[1] in ("-h", "--help"):
        print(__doc__.strip())
        return 2
    status = 0
    for path in sys.argv[1:]:
        with open(path, "rb") as file:
            kind = {b"\x7fEL": elf, b"MZ\x90": pe}.get(file.read(3))
        if kind is None:
            print(f"{path}: no program and no shared library for Linux or Windows")
            return 2
        found = list(kind(path))
        lacking = [what for what, there in found if not there]
        status |= bool(lacking)
        print(f"{path}: " + (f"lacks {'; '.join(lacking)}" if lacking else f"{len(found)} protections"))
    return status


if __name__ == "__main__":
    sys.exit(main())
