# SPDX-License-Identifier: Apache-2.0
"""A project outside the tree that opens a case and prints a table, along each road to the library."""

import os
import shlex
import unittest

from support import (COMPILER, EMULATOR, INSTALLED, SOURCE, build_installed, configure, done, fresh,
                     main, run)

PROJECT = SOURCE / "tests/install/consumer"
# As the case file gives them: 60 bar; 300 K; 25 C above 273.15 K.
TABLE = "Feed\t25\t6000\t298.15\nProduct\t26.85\t500\t300\n"


def below_licence(path):
    licence, text = path.read_text(encoding="utf-8").split("\n", 1)
    assert "SPDX" in licence, path
    return text


class Consumer(unittest.TestCase):
    def test_is_small(self):
        self.assertLessEqual(len(below_licence(PROJECT / "main.cpp").rstrip("\n").split("\n")), 15)

    def test_is_shown_on_the_front_page(self):
        readme = (SOURCE / "README.md").read_text(encoding="utf-8")
        name, block = readme.split("<!-- sample:")[1].split(" -->\n")
        shown = "".join(f"{line[4:]}\n" for line in block.split("<!--")[0].rstrip("\n").split("\n"))
        self.assertEqual(below_licence(SOURCE / name), shown)

    def test_find_package(self):
        folder = build_installed(PROJECT, "find_package")
        self.assertEqual(TABLE, run(folder / "streams", PROJECT / "plant.json"))

    @unittest.skipIf(EMULATOR, "pkg-config files are for Linux")
    def test_pkg_config(self):
        folder = fresh("pkg_config")
        found = {"PKG_CONFIG_PATH": str(INSTALLED / os.environ["FIXTOP_LIBDIR"] / "pkgconfig")}
        flags = shlex.split(done("pkg-config", "--cflags", "--libs", "fixtop-client",
                                 environment=found))
        done(COMPILER, "-std=c++20", PROJECT / "main.cpp", "-o", folder / "streams", *flags)
        libraries = {"LD_LIBRARY_PATH": str(INSTALLED / os.environ["FIXTOP_LIBDIR"])}
        self.assertEqual(TABLE, run(folder / "streams", PROJECT / "plant.json",
                                    environment=libraries))

    @unittest.skipIf(EMULATOR, "once is enough")
    def test_add_subdirectory(self):
        folder = fresh("add_subdirectory")
        configure(PROJECT, folder, f"-DFIXTOP_SOURCE={SOURCE}", "-DCMAKE_BUILD_TYPE=Release")
        targets = done("cmake", "--build", folder, "--target", "help")
        self.assertIn("\nfixtop_client: ", targets)
        self.assertNotIn("fixtop_cli:", targets)
        self.assertNotIn("_test:", targets)
        # The rest compiles all of the library a second time.
        if os.environ.get("FIXTOP_LONG"):
            done("cmake", "--build", folder, "--target", "streams")
            self.assertEqual(TABLE, run(folder / "streams", PROJECT / "plant.json"))
        else:
            done("cmake", "--build", folder, "--target", "CMakeFiles/streams.dir/main.cpp.o")


class Program(unittest.TestCase):
    def test_runs_where_it_is_installed(self):
        program = INSTALLED / "bin/fixtop"
        self.assertIn("appModel", run(program, "demo"))
        self.assertEqual("298.15\n", run(program, "get", PROJECT / "plant.json", "--neutral",
                                         "Flowsheet.Stream(Feed).Temperature", "--unit", "K"))

    @unittest.skipIf(EMULATOR, "names of files carry no version there")
    def test_library_carries_its_version(self):
        library = INSTALLED / os.environ["FIXTOP_LIBDIR"] / "libfixtop.so"
        version = done(INSTALLED / "bin/fixtop", "--version").split()[1]
        self.assertEqual(f"libfixtop.so.{version}", library.resolve().name)
        shown = done("readelf", "-d", library)
        self.assertIn(f"Library soname: [libfixtop.so.{version.rpartition('.')[0]}]", shown)


if __name__ == "__main__":
    main()
