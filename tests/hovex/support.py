# SPDX-License-Identifier: Apache-2.0
"""The case host for scripts, as the system knows it, and what runs beside it."""

import os
import pathlib
import subprocess
import tempfile
import unittest

EMULATOR = os.environ.get("FIXTOP_EMULATOR", "").split()
HOVEX = pathlib.Path(os.environ["FIXTOP_HOVEX"])
MODULE = pathlib.Path(os.environ["FIXTOP_MODULE"])
CLIENT = pathlib.Path(os.environ["FIXTOP_CLIENT"])
SOURCE = pathlib.Path(os.environ["FIXTOP_SOURCE"])
CASES = pathlib.Path(os.environ.get("FIXTOP_CASES", "")) / "real"
SCRIPTS = SOURCE / "tests/hovex/scripts"
PLANT = SOURCE / "tests/install/consumer/plant.json"
# The compiler's own libraries and the built module stand beside the host; clients need neither.
PLAIN = {name: text for name, text in os.environ.items() if name != "WINEPATH"}


def native(path):
    """A path as programs of the system are told it."""
    return "Z:" + str(path).replace("/", "\\") if EMULATOR else str(path)


def start(program, *arguments, **more):
    words = [str(program), *(native(a) if isinstance(a, pathlib.Path) else str(a) for a in arguments)]
    return subprocess.Popen(EMULATOR + words, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, env=PLAIN, text=True, **more)


def run(program, *arguments, **more):
    """Exit status, standard output and standard error of a program that is waited for."""
    process = start(program, *arguments, **more)
    try:
        out, err = process.communicate(timeout=180)
    except subprocess.TimeoutExpired:
        process.kill()
        raise
    return process.returncode, out.replace("\r", ""), err.replace("\r", "")


def script(path, *arguments, **more):
    """The same of a script, without what the script host itself says."""
    code, out, _ = run("cscript", "//nologo", path, *arguments, **more)
    return code, out


def registered(*words):
    code, out, err = run(HOVEX, *words)
    if code:
        raise AssertionError(f"hovex {words}: {code}\n{out}\n{err}")


class HovexTest(unittest.TestCase):
    """Has the host made known to the system while its tests run."""

    maxDiff = None

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        registered("/regserver")
        cls.addClassCleanup(registered, "/unregserver")

    def client(self, *words):
        code, out, err = run(CLIENT, *words)
        self.assertEqual(0, code, out + err)
        return out.splitlines()


main = unittest.main
