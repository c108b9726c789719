# SPDX-License-Identifier: Apache-2.0
"""The man pages: they name all words, and their examples are run."""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import unittest

from support import DONE, ProgramTest, run

MAN = pathlib.Path(os.environ["FIXTOP_SOURCE"]) / "man"
PAGES = ["fixtop.1", "fixtop-path.7"]


def plain(page):
    """The text of a page with its characters as they are typed."""
    text = (MAN / page).read_text(encoding="utf-8")
    return text.replace(r"\(aq", "'").replace(r"\(dq", '"').replace(r"\-", "-")


class Man(ProgramTest):
    def test_words_are_those_of_the_program(self):
        words = re.findall(r"^  ([a-z-]+) +[A-Z]", run("--help").out.split("Subcommands:")[1], re.M)
        shown = re.findall(r"^\.TP\n\.B ([a-z-]+)\n([^.]*)", plain("fixtop.1"), re.M)
        self.assertEqual(words, [word for word, _ in shown])

    def test_examples(self):
        for page in PAGES:
            lines = re.findall(r"^fixtop .*", plain(page).split(".SH EXAMPLES")[1], re.M)
            self.assertGreater(len(lines), 3, page)
            for line in lines:
                result = self.check(run(*shlex.split(line)[1:]), DONE, err="")
                self.assertTrue(result.out, line)

    @unittest.skipUnless(shutil.which("groff"), "needs groff")
    def test_pages_are_set_without_a_warning(self):
        for page in PAGES:
            done = subprocess.run(["groff", "-man", "-Tutf8", "-ww", "-rLL=100n", MAN / page],
                                  capture_output=True, check=True, timeout=60)
            self.assertEqual(b"", done.stderr, page)


if __name__ == "__main__":
    unittest.main()
