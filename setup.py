# SPDX-License-Identifier: Apache-2.0
"""Builds the Python package by CMake, which knows the binding and what stands beside it."""

import pathlib
import re
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).parent.resolve()


def version():
    """The one of the project."""
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"project\(fixtop VERSION ([\d.]+)", text)[1]


class BuildByCMake(build_ext):
    """Puts the whole package, with the library beside the binding, where setuptools packs it up."""

    def run(self):
        build = ROOT / "build" / "wheel"
        off = [f"-DFIXTOP_{each}=OFF" for each in ("TESTS", "PROGRAM", "INSTALL")]
        self.call(
            "-S",
            ROOT,
            "-B",
            build,
            "-G",
            "Ninja",
            "-DCMAKE_BUILD_TYPE=Release",
            "-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG",
            *off,
            "-DFIXTOP_PYTHON=ON",
            f"-DFIXTOP_PYTHON_PROGRAM={sys.executable}",
        )
        self.call("--build", build, "--target", "fixtop_python")
        target = ROOT if self.inplace else pathlib.Path(self.build_lib).resolve()
        self.call("--install", build, "--component", "wheel", "--prefix", target)

    @staticmethod
    def call(*arguments):
        subprocess.run(["cmake", *map(str, arguments)], check=True)


BUILD = ROOT / "build"  # for all that is made
BUILD.mkdir(exist_ok=True)

setup(
    version=version(),
    ext_modules=[Extension("fixtop._core", sources=[])],
    options={"egg_info": {"egg_base": str(BUILD)}},
    cmdclass={"build_ext": BuildByCMake},
)
