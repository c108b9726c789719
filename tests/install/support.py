# SPDX-License-Identifier: Apache-2.0
"""Builds and runs projects of consumers against the installed tree."""

import os
import pathlib
import shutil
import unittest

from captured import captured

INSTALLED = pathlib.Path(os.environ["FIXTOP_INSTALLED"])
SOURCE = pathlib.Path(os.environ["FIXTOP_SOURCE"])
WORK = pathlib.Path(os.environ["FIXTOP_WORK"])
EMULATOR = os.environ.get("FIXTOP_EMULATOR", "").split()
TOOLCHAIN = os.environ.get("FIXTOP_TOOLCHAIN", "")
COMPILER = os.environ["FIXTOP_COMPILER"]
ENDING = ".exe" if EMULATOR else ""
# Of the consumer's own programs: nothing but the system's and what the build wrote into them.
PLAIN = {name: text for name, text in os.environ.items() if name != "LD_LIBRARY_PATH"}
PLAIN["WINEPATH"] = f"Z:{INSTALLED}/bin"


def done(*command, environment=None, **more):
    """What a command that must succeed writes."""
    run = captured([str(word) for word in command], text=True, timeout=800,
                   env={**PLAIN, **(environment or {})}, **more)
    if run.returncode:
        raise AssertionError(f"{command}: {run.returncode}\n{run.stdout}\n{run.stderr}")
    return run.stdout


def fresh(name):
    """An empty folder."""
    folder = WORK / name
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    return folder


def configure(project, folder, *options):
    system = [f"-DCMAKE_TOOLCHAIN_FILE={TOOLCHAIN}"] if TOOLCHAIN else []
    done("cmake", "-G", "Ninja", "-S", project, "-B", folder, f"-DCMAKE_CXX_COMPILER={COMPILER}",
         *system, *options)


def build_installed(project, name, *options):
    """The folder of a project that finds the installed tree by find_package."""
    folder = fresh(name)
    # A toolchain file seeks below roots of its own.
    found = (f"-DFixtop_DIR={INSTALLED / os.environ['FIXTOP_LIBDIR'] / 'cmake/Fixtop'}" if TOOLCHAIN
             else f"-DCMAKE_PREFIX_PATH={INSTALLED}")
    configure(project, folder, found, *options)
    done("cmake", "--build", folder)
    return folder


def run(program, *arguments, **more):
    return done(*EMULATOR, str(program) + ENDING, *arguments, **more)


main = unittest.main
