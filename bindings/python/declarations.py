"""Makes platen/_ffi.py from the C interface's header, so that nothing is declared twice.

The module that comes out is Python alone: nothing is compiled, neither here nor when it is loaded.
"""

import os
import re
from pathlib import Path

from cffi import FFI


def header() -> Path:
    """The header of this tree; of $PLATEN_INCLUDE or the system where there is no tree around."""
    folders = [Path.cwd().parents[1] / "include" if len(Path.cwd().parents) > 1 else Path()]
    folders += [Path(os.environ["PLATEN_INCLUDE"])] if "PLATEN_INCLUDE" in os.environ else []
    folders += [Path("/usr/local/include"), Path("/usr/include")]
    found = [
        folder / "platen/platen.h" for folder in folders if (folder / "platen/platen.h").is_file()
    ]
    if not found:
        raise SystemExit(
            "platen/platen.h was not found; set PLATEN_INCLUDE to the folder that has platen/"
        )
    return found[0]


def declarations(text: str) -> str:
    """What stands in the header without comments, directives and marks for compilers."""
    version = re.search(r"#define PLATEN_INTERFACE_VERSION (\d+)", text)
    assert version, "the header does not say its version"
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.DOTALL)
    lines = [
        line
        for line in text.replace("PLATEN_C_API ", "").splitlines()
        if line.strip() and not line.startswith("#") and line.strip() not in ('extern "C" {', "}")
    ]
    return "\n".join([f"#define PLATEN_INTERFACE_VERSION {version[1]}", *lines])


ffi = FFI()
ffi.cdef(declarations(header().read_text(encoding="utf-8")))
ffi.set_source("platen._ffi", None)
