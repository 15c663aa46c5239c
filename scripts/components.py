"""What others made and is shipped here: names, versions, licences and where their texts lie.

A component is found by what it is linked or bundled as, so that something new cannot be shipped
unnoticed: whatever is found and not listed here is an error.
"""

import fnmatch
import json
import re
import subprocess
import sys
from dataclasses import dataclass, field
from pathlib import Path

COMMON_LICENCES = Path("/usr/share/common-licenses")


@dataclass(frozen=True)
class Component:
    name: str
    licence: str  # an SPDX expression
    package: str  # the Debian package that has its version and its licence; of npm ones the folder
    files: tuple[str, ...] = field(default=())  # DLLs and archives that it comes as
    npm: bool = False
    version_package: str = ""  # where another package has the version of what is shipped

    def version(self, modules: Path | None = None) -> str:
        if self.npm:
            return json.loads((modules / self.package / "package.json").read_text())["version"]
        return subprocess.run(
            ["dpkg-query", "-W", "-f", "${Version}" if self.version_package else "${source:Version}",
             self.version_package or self.package],
            check=True, capture_output=True, text=True).stdout

    def purl(self, version: str) -> str:
        if self.npm:
            return f"pkg:npm/{self.package.replace('@', '%40')}@{version}"
        source = subprocess.run(["dpkg-query", "-W", "-f", "${source:Package}", self.package],
                                check=True, capture_output=True, text=True).stdout
        return f"pkg:deb/debian/{source}@{version.replace('+', '%2B')}?arch=source&distro=bookworm"

    def licence_text(self, modules: Path | None = None) -> str:
        if self.npm:
            files = sorted((modules / self.package).glob("LICENSE*"))
            if not files:
                sys.exit(f"error: {self.package} has no licence in {modules}")
            return "\n".join(file.read_text() for file in files)
        return Path(f"/usr/share/doc/{self.package}/copyright").read_text(errors="replace")


COMPONENTS = [
    Component("wxWidgets", "LGPL-2.0-or-later WITH WxWindows-exception-3.1", "wx3.2-headers",
              ("wxbase32u*.dll", "wxmsw32u*.dll", "libwxbase32u*.a", "libwxmsw32u*.a")),
    Component("zlib", "Zlib", "libz-mingw-w64", ("zlib1.dll", "libz.dll.a", "libz.a")),
    Component("GCC runtime libraries", "GPL-3.0-or-later WITH GCC-exception-3.1",
              "gcc-mingw-w64-base", ("libgcc_s_seh-1.dll", "libstdc++-6.dll"),
              version_package="gcc-mingw-w64-x86-64-posix-runtime"),
    Component("mingw-w64 runtime and winpthreads", "ZPL-2.1 AND MIT AND BSD-3-Clause",
              "mingw-w64-common", ("libwinpthread-1.dll",)),
    Component("libdeflate", "MIT", "libdeflate-dev", ("libdeflate.a",)),
    Component("minizip", "Zlib", "libminizip-dev", ("libminizip.a",)),
    Component("libmd", "BSD-3-Clause", "libmd-dev", ("libmd.a",)),
    Component("cairo", "LGPL-2.1-only OR MPL-1.1", "libcairo2-dev", ("libcairo.a",)),
    Component("pixman", "MIT", "libpixman-1-dev", ("libpixman-1.a",)),
    Component("libpng", "libpng-2.0", "libpng-dev", ("libpng.a", "libpng16.a")),
    Component("Expat", "MIT", "libexpat1-dev", ("libexpat.a",)),
    Component("JSON for Modern C++", "MIT", "nlohmann-json3-dev"),
    Component("CLI11", "BSD-3-Clause", "libcli11-dev"),
    Component("GoogleTest", "BSD-3-Clause", "googletest", ("libgtest*.a", "libgmock*.a")),
    Component("LLVM runtime libraries for WebAssembly", "Apache-2.0 WITH LLVM-exception",
              "libc++-22-dev-wasm32"),
    Component("WASI C library", "Apache-2.0 WITH LLVM-exception AND MIT AND CC0-1.0", "wasi-libc"),
    Component("Preact", "MIT", "preact", npm=True),
    Component("Browser WASI shim", "MIT OR Apache-2.0", "@bjorn3/browser_wasi_shim", npm=True),
]

# What has no file of its own in what it is part of.
EVERY_WINDOWS_PROGRAM = {"GCC runtime libraries", "mingw-w64 runtime and winpthreads"}
CORE = {"JSON for Modern C++"}
COMMAND = {"CLI11"}
WX_LIBRARIES = {"Expat", "libpng", "zlib"}  # scripts/windows-recipe.sh builds wxWidgets with them
PAGE = CORE | {"LLVM runtime libraries for WebAssembly", "WASI C library", "zlib", "libdeflate",
               "minizip", "libmd"}


def named(names: set[str]) -> list[Component]:
    found = [component for component in COMPONENTS if component.name in names]
    if len(found) != len(names):
        sys.exit(f"error: not all of these are components: {sorted(names)}")
    return found


def of_file(name: str) -> Component:
    """The component that a DLL or an archive belongs to."""
    for component in COMPONENTS:
        if any(fnmatch.fnmatch(name.lower(), pattern) for pattern in component.files):
            return component
    sys.exit(f"error: {name} belongs to no component in scripts/components.py: say whose it is, and "
             "under which licence")


def of_page(modules: Path) -> list[Component]:
    """What is bundled into the page: the packages that package.json names, and what is in the module."""
    wanted = json.loads((Path(__file__).parent.parent / "web/package.json").read_text())["dependencies"]
    known = {component.package: component for component in COMPONENTS if component.npm}
    for package, version in wanted.items():
        if package not in known:
            sys.exit(f"error: the package {package} of the page is no component in scripts/components.py")
        if known[package].version(modules) != version:
            sys.exit(f"error: {package} is not {version} in {modules}")
    return [known[package] for package in wanted] + named(PAGE)


def common_licences(text: str) -> set[Path]:
    """The texts that a copyright file of Debian only refers to."""
    names = re.findall(r"/usr/share/common-licenses/([A-Za-z0-9.+-]*[A-Za-z0-9])", text)
    return {(COMMON_LICENCES / name).resolve() for name in names}
