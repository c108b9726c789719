# SPDX-License-Identifier: Apache-2.0
"""The zip for Windows users: its page shows the samples, and they run on what was unpacked."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest
import zipfile

from support import SOURCE, main, run, script

SAMPLES = SOURCE / "examples/windows"
BUILD = pathlib.Path(os.environ["FIXTOP_BUILD"])
COMPILER = os.environ["FIXTOP_COMPILER"]
# Inputs of the built-in case: 30 C and 60 bar.
RAW_GAS = "Raw Gas\t30\t60"


def shown_samples(page):
    """Names of the samples of the page, each with its lines."""
    for name, block in re.findall(r"<!-- sample:(\S+) -->\n(.*?)<!-- sample:end -->", page, re.S):
        yield name, [line[4:] for line in block.rstrip("\n").split("\n")]


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        subprocess.run(["cpack", "-G", "ZIP", "-B", cls.folder], cwd=BUILD, check=True, timeout=300,
                       capture_output=True)
        packed, = cls.folder.glob("*.zip")
        with zipfile.ZipFile(packed) as archive:
            archive.extractall(cls.folder / "unpacked")
        cls.home, = (cls.folder / "unpacked").iterdir()
        cls.register("/regserver")
        cls.addClassCleanup(cls.register, "/unregserver")

    @classmethod
    def register(cls, word):
        code, out, err = run(cls.home / "hovex.exe", word)
        if code:
            raise AssertionError(f"hovex {word}: {code}\n{out}\n{err}")

    def sample(self, name):
        return self.home / "samples" / name

    def test_zip_holds_the_programs_the_page_and_the_samples(self):
        names = sorted(path.relative_to(self.home).as_posix() for path in self.home.rglob("*")
                       if path.is_file())
        samples = [f"samples/{path.name}" for path in SAMPLES.iterdir()]
        self.assertEqual(sorted(["LICENSE", "QSIUOMAdapter2004_2.dll", "fixtop.dll", "fixtop.exe",
                                 "hovex.exe", "qsicom.dll", "windows.md", *samples]), names)

    def test_page_shows_each_sample_as_it_is(self):
        shown = dict(shown_samples((self.home / "windows.md").read_text(encoding="utf-8")))
        self.assertEqual({f"examples/windows/{path.name}" for path in SAMPLES.iterdir()}, set(shown))
        for name, lines in shown.items():
            text = (SOURCE / name).read_text(encoding="utf-8").rstrip("\n").split("\n")
            self.assertEqual([line for line in text
                              if "SPDX" not in line and not line.startswith("Attribute")], lines, name)

    def test_streams(self):
        code, out = script(self.sample("streams.vbs"))
        self.assertEqual((0, RAW_GAS), (code, out.split("\n")[0]))
        code, out = script(self.sample("streams.vbs"), SOURCE / "tests/install/consumer/plant.json")
        self.assertEqual((0, "Feed\t25\t60\nProduct\t26.85\t5\n"), (code, out))

    def test_raise_flow(self):
        folder = self.folder / "saved"
        folder.mkdir()
        # 1200 and 160 kmol/h are mixed.
        self.assertEqual((0, "1360\n"), script(self.sample("raise_flow.vbs"), folder))
        self.assertEqual({"flows.xml", "larger.json"}, {path.name for path in folder.iterdir()})

    def test_errors(self):
        self.assertEqual((0, "Flowsheet.Stream(Raw Gas).Temperature: no such unit: kg; expected C, K, F, R\n"),
                         script(self.sample("errors.vbs")))

    def test_program_in_cpp(self):
        program = self.folder / "temperature.exe"
        subprocess.run([COMPILER, "-std=c++20", "-static", "-Wall", "-Wextra", "-Werror",
                        self.sample("temperature.cpp"), "-o", program, "-lole32", "-loleaut32",
                        "-luuid"], check=True, timeout=300)
        self.assertEqual((0, "303.15 K\n"), run(program)[:2])

    def test_python_is_python(self):
        compile(self.sample("streams.py").read_text(encoding="utf-8"), "streams.py", "exec")


if __name__ == "__main__":
    main()
