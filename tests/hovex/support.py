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


def command(program, *arguments):
    return EMULATOR + [str(program), *(native(a) if isinstance(a, pathlib.Path) else str(a)
                                       for a in arguments)]


def start(program, *arguments):
    """One that is talked to, and starts no other."""
    return subprocess.Popen(command(program, *arguments), stdin=subprocess.PIPE,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=PLAIN, text=True)


def run(program, *arguments, **more):
    """Exit status, standard output and standard error of a program that is waited for. A host that it
    starts writes to the same places, and may outlive it."""
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        code = subprocess.run(command(program, *arguments), stdin=subprocess.DEVNULL, stdout=out,
                              stderr=err, env=PLAIN, timeout=180, check=False, **more).returncode
        texts = []
        for file in (out, err):
            file.seek(0)
            texts.append(file.read().decode().replace("\r", ""))
    return code, *texts


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
