# SPDX-License-Identifier: Apache-2.0
"""The module is loaded by names that are no full path, and then looks for other modules while the
working directory is a folder with libraries of their names."""

import os
import pathlib
import shutil
import sys
import tempfile
import unittest

from captured import captured

PROGRAM, MODULE, PLANTED = [part.split("|") for part in sys.argv[1:4]]
WINDOWS = MODULE[0].endswith(".dll")
NAMES = ["hovexeng.dll", "QSIUOMAdapter2004_2.dll"]


def file_name(name):
    return name if WINDOWS else f"lib{name.removesuffix('.dll')}.so"


class ModuleLookup(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.mark = self.folder / "mark"
        self.home = self.folder / "home"
        self.other = self.folder / "other"
        for path in (self.home / "lib", self.other / "lib"):
            path.mkdir(parents=True)

    def put_module(self, folder):
        shutil.copy(MODULE[0], folder / file_name("fixtop.dll"))

    def plant(self, folder):
        for name in NAMES:
            shutil.copy(PLANTED[0], folder / file_name(name))

    def planted_that_ran(self, module, **environment):
        """How many planted libraries ran after the module was loaded in one folder by this name and
        asked in the other."""
        done = captured(
            PROGRAM + [module, self.other], cwd=self.home, timeout=120,
            env=dict(os.environ, FIXTOP_PLANTED_MARK=self.mark, **environment))
        self.assertEqual((0, b""), (done.returncode, done.stderr.replace(b"\r", b"")))
        return self.mark.read_text().count("ran") if self.mark.exists() else 0

    def by_relative_name(self):
        return self.planted_that_ran(".\\fixtop.dll" if WINDOWS else "./libfixtop.so")

    def by_relative_search_path(self):
        variable, joint = ("WINEPATH", ";") if WINDOWS else ("LD_LIBRARY_PATH", ":")
        rest = os.environ.get(variable, "")
        path = joint.join(["lib"] + ([rest] if rest else []))
        return self.planted_that_ran(file_name("fixtop.dll"), **{variable: path})

    def test_beside_the_module_others_are_found_wherever_we_are(self):
        self.put_module(self.home)
        self.plant(self.home)
        self.assertEqual(len(NAMES), self.by_relative_name())

    def test_the_working_directory_is_no_place_of_a_relative_name(self):
        self.put_module(self.home)
        self.plant(self.other)
        self.assertEqual(0, self.by_relative_name())

    def test_the_working_directory_is_no_place_of_a_relative_search_path(self):
        self.put_module(self.home / "lib")
        self.plant(self.other)
        self.plant(self.other / "lib")
        self.assertEqual(0, self.by_relative_search_path())

    def test_beside_the_module_others_are_found_with_a_relative_search_path(self):
        self.put_module(self.home / "lib")
        self.plant(self.home / "lib")
        self.assertEqual(len(NAMES), self.by_relative_search_path())

    @unittest.skipIf(WINDOWS, "the loader's own search path is the system's there")
    def test_full_paths_of_the_search_path_stay_places(self):
        self.put_module(self.home)
        places = self.folder / "places"
        places.mkdir()
        self.plant(places)
        for path in (str(places), f"lib:{places}", f":{places}"):
            self.mark.unlink(missing_ok=True)
            ran = self.planted_that_ran("./libfixtop.so", LD_LIBRARY_PATH=path)
            self.assertEqual(len(NAMES), ran, path)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
