"""What pyproject.toml cannot say: the declarations, and a library to go with the package."""

import os
import shutil
import sys
from pathlib import Path

from setuptools import Distribution, setup
from setuptools.command.build_py import build_py

# The library that the package is to carry; usually none, then it is found when it is loaded.
bundle = os.environ.get("PLATEN_BUNDLE")
# The same names as in platen/_library.py.
name = {"win32": "platen_c.dll", "darwin": "libplaten_c.1.dylib"}.get(
    sys.platform, "libplaten_c.so.1"
)


class BuildPackage(build_py):
    def run(self):
        super().run()
        if bundle:
            shutil.copyfile(bundle, Path(self.build_lib, "platen", name))


class PlatenDistribution(Distribution):
    def has_ext_modules(self):
        return bool(bundle)  # such a package is for one kind of machine


setup(
    distclass=PlatenDistribution,
    cmdclass={"build_py": BuildPackage},
    cffi_modules=["declarations.py:ffi"],
)
