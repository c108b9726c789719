# SPDX-License-Identifier: Apache-2.0
"""The completions for bash and zsh, asked as they ask."""

import os
import pathlib
import shutil
import subprocess
import unittest

from support import PROGRAM, ProgramTest

FOLDER = pathlib.Path(os.environ["FIXTOP_SOURCE"]) / "tools/completion"
SCRIPT = FOLDER / "fixtop.bash"
# What zsh's own functions would offer is written, without being matched with what is typed.
ZSH = """
compadd() { while [[ $1 != -- && $# -gt 1 ]]; do shift; done; [[ $1 == -- ]] && shift; print -rl -- "$@"; }
_describe() { print -rl -- ${${(P)2}%%:*}; }
_files() { print -rl -- files; }
script=$1; shift
words=(fixtop "$@"); CURRENT=$#words; PREFIX=$words[-1]
source $script
"""


@unittest.skipIf(len(PROGRAM) > 1 or not shutil.which("bash"), "needs bash and a program of this machine")
class BashCompletion(ProgramTest):
    def complete(self, *words):
        """The candidates for the last of the words."""
        line = "\n".join(["source \"$1\"", "shift", "COMP_WORDS=(fixtop \"$@\")",
                          "COMP_CWORD=$#", "_fixtop", 'printf "%s\\n" "${COMPREPLY[@]}"'])
        path = os.path.dirname(PROGRAM[0]) + os.pathsep + os.environ["PATH"]
        done = subprocess.run(["bash", "-c", line, "bash", SCRIPT, *words], capture_output=True,
                              text=True, check=True, cwd=self.folder, timeout=60,
                              env={**os.environ, "PATH": path})
        return done.stdout.split()

    def test_words(self):
        self.assertEqual(["find"], self.complete("fi"))
        self.assertLessEqual({"ls", "get", "set", "solve", "shell"}, set(self.complete("")))

    def test_cases(self):
        self.file("plant.json", "{}")
        self.file("plant.txt", "")
        self.assertEqual(["plant.json"], self.complete("get", "plant"))
        self.assertEqual(["demo"], self.complete("get", "de"))

    def test_options(self):
        self.assertEqual(["--unit", "--units"], self.complete("get", "demo", "--u"))
        self.assertEqual(["--depth"], self.complete("tree", "demo", "--de"))

    def test_words_of_a_group(self):
        self.assertEqual(["read", "remove"], self.complete("collect", "re"))
        self.file("chosen.xml", "")
        self.assertEqual(["chosen.xml"], self.complete("collect", "add", "cho"))
        self.assertEqual(["demo"], self.complete("collect", "add", "chosen.xml", "de"))
        self.assertEqual(["--tolerance"], self.complete("collect", "diff", "--to"))
        self.assertEqual(["appModel"], self.complete("collect", "add", "chosen.xml", "demo", "app"))
        self.assertEqual(["chosen.xml"], self.complete("publish", "cho"))

    def test_paths(self):
        streams = "appModel.FlowSheetObjects.Streams"
        self.assertEqual([streams], self.complete("get", "demo", streams[:-3]))
        self.assertEqual([streams], self.complete("get", "demo", "'" + streams[:-3]))
        self.assertEqual(["Temperature"], self.complete("table", "demo", f"'{streams}.*'", "Temp"))
        self.assertEqual(["appModel\\(type\\)"], self.complete("get", "demo", "appModel(ty"))
        self.assertEqual(["appModel(type)"], self.complete("get", "demo", "'appModel(ty"))


@unittest.skipIf(len(PROGRAM) > 1 or not shutil.which("zsh"), "needs zsh and a program of this machine")
class ZshCompletion(ProgramTest):
    def complete(self, *words):
        """What is offered for the last of the words."""
        path = os.path.dirname(PROGRAM[0]) + os.pathsep + os.environ["PATH"]
        done = subprocess.run(["zsh", "-f", "-c", ZSH, "zsh", FOLDER / "_fixtop", *words],
                              capture_output=True, text=True, check=True, cwd=self.folder, timeout=60,
                              env={**os.environ, "PATH": path})
        self.assertEqual("", done.stderr)
        return done.stdout.splitlines()

    def test_words(self):
        self.assertLessEqual({"ls", "get", "set", "solve", "shell"}, set(self.complete("")))

    def test_cases(self):
        self.assertEqual(["demo", "files"], self.complete("get", ""))

    def test_words_of_a_group(self):
        self.assertLessEqual({"add", "list", "diff"}, set(self.complete("collect", "")))
        self.assertEqual(["demo", "files"], self.complete("collect", "add", "chosen.xml", ""))
        self.assertIn("--tolerance", self.complete("collect", "diff", "--to"))
        self.assertEqual(["appModel"], self.complete("collect", "add", "chosen.xml", "demo", "app"))

    def test_options(self):
        offered = self.complete("get", "demo", "--u")
        self.assertLessEqual({"--unit", "--json", "--neutral"}, set(offered))
        self.assertNotIn("--depth", offered)

    def test_paths(self):
        streams = "appModel.FlowSheetObjects.Streams"
        self.assertEqual([streams], self.complete("get", "demo", streams[:-3]))
        for typed in (".Raw", r".Raw\ G", ".'Raw G'"):
            self.assertEqual([f'{streams}."Raw Gas"'],
                             self.complete("get", "demo", streams + typed), typed)
        self.assertEqual(["Temperature"], self.complete("table", "demo", f"{streams}.*", "Temp"))


if __name__ == "__main__":
    unittest.main()
