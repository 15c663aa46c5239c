"""The package as it is installed: its library, its documentation, its types."""

import doctest
import importlib.metadata
import os
import pkgutil
import re
import subprocess
import sys
from pathlib import Path
from types import ModuleType

import pytest

import platen
from platen._library import _NAME, ffi, library

project = Path(__file__).parents[1]
header = (project.parents[1] / "include/platen/platen.h").read_text()
modules = [platen] + [
    __import__(f"platen.{module.name}", fromlist=["x"])
    for module in pkgutil.iter_modules(platen.__path__)
]


def run(*words: str, **environment: str) -> "subprocess.CompletedProcess[str]":
    merged = {**os.environ, **environment}
    return subprocess.run(words, env=merged, capture_output=True, text=True, cwd=project / "tests")


def test_every_function_of_the_header_can_be_called() -> None:
    names = re.findall(r"^PLATEN_C_API [^(]*?(platen_\w+)\(", header, re.MULTILINE)
    assert len(names) > 50
    for name in names:
        assert ffi.typeof(getattr(library, name)).kind == "function"


def test_versions_agree() -> None:
    assert importlib.metadata.version("platen") == platen.__version__


@pytest.mark.parametrize("module", modules, ids=lambda module: module.__name__)
def test_examples_of_docstrings(module: ModuleType) -> None:
    assert doctest.testmod(module, optionflags=doctest.IGNORE_EXCEPTION_DETAIL).failed == 0


def test_examples_of_the_readme(folder: Path) -> None:
    text = re.sub(r"^```.*$", "", (project / "README.md").read_text(), flags=re.MULTILINE)
    example = doctest.DocTestParser().get_doctest(text, {}, "README.md", "README.md", 0)
    assert len(example.examples) > 20
    assert doctest.DocTestRunner(optionflags=doctest.ELLIPSIS).run(example).failed == 0


def test_types(tmp_path: Path) -> None:
    for words in (["-p", "platen"], ["typed_use.py"]):
        config = ["--config-file", str(project / "pyproject.toml"), "--cache-dir", str(tmp_path)]
        checked = run("mypy", "--python-executable", sys.executable, *config, *words)
        assert checked.returncode == 0, checked.stdout


def test_a_library_that_is_missing_or_older_is_named(tmp_path: Path) -> None:
    missing = run(sys.executable, "-c", "import platen", PLATEN_LIBRARY="/none/libplaten_c.so")
    assert "ImportError: platen cannot load its library (PLATEN_LIBRARY is /none/" in missing.stderr
    assert f"set PLATEN_LIBRARY to the path of {_NAME}" in missing.stderr
    other = run(sys.executable, "-c", "import platen", PLATEN_LIBRARY="libm.so.6")
    assert "ImportError: platen cannot load its library" in other.stderr


def test_a_library_beside_the_module_comes_before_the_systems(tmp_path: Path) -> None:
    for source in Path(platen.__file__).parent.glob("*.py"):
        (tmp_path / "platen").mkdir(exist_ok=True)
        (tmp_path / "platen" / source.name).write_bytes(source.read_bytes())
    (tmp_path / "platen" / _NAME).write_bytes(Path(os.environ["PLATEN_LIBRARY"]).read_bytes())
    found = run(
        sys.executable,
        "-c",
        "import platen; print(platen.__file__, platen.__version__)",
        PLATEN_LIBRARY="",
        PYTHONPATH=str(tmp_path),
    )
    assert found.stdout.split() == [str(tmp_path / "platen/__init__.py"), platen.__version__]
