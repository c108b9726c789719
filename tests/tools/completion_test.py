# SPDX-License-Identifier: Apache-2.0
"""The completions for bash and zsh, asked as they ask."""

import os
import pathlib
import re
import select
import shutil
import subprocess
import time
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
        return done.stdout.split("\n")[:-1] if done.stdout != "\n" else []

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

    def test_paths_in_quotes_and_with_backslashes(self):
        streams = "appModel.FlowSheetObjects.Streams"
        gas = f'{streams}."Raw Gas"'
        self.assertEqual([gas], self.complete("get", "demo", f"'{streams}.Raw G"))
        self.assertEqual([gas.replace('"', r'\"')], self.complete("get", "demo", f'"{streams}.Raw G'))
        self.assertEqual([gas.replace('"', r'\"').replace(" ", r"\ ")],
                         self.complete("get", "demo", rf"{streams}.Raw\ G"))
        for row in (f"'{streams}.Raw Gas'", rf"{streams}.Raw\ Gas", f'"{streams}.Raw Gas"'):
            self.assertEqual(["Temperature"], self.complete("table", "demo", row, "Temp"), row)

    def test_options_in_any_order(self):
        self.assertEqual(["appModel"], self.complete("get", "--unit", "K", "--json", "demo", "app"))
        self.assertEqual(["appModel"], self.complete("get", "demo", "--unit", "K", "app"))
        self.assertEqual(["appModel"], self.complete("solve", "--save", "x.json", "demo", "--set", "app"))
        self.assertEqual([], self.complete("solve", "demo", "--set", "appModel", "app"))
        self.assertEqual(["Temperature"], self.complete(
            "table", "--unit", "Pressure=bar", "demo", "--json", "'appModel.FlowSheetObjects.Streams.*'", "Temp"))
        self.assertEqual(["type"], self.complete("get", "--attr", "value", "demo", "appModel", "--attr", "ty"))
        self.file("saved.json", "{}")
        self.assertEqual(["saved.json"], self.complete("solve", "demo", "--save", "sav"))

    def test_the_neutral_view(self):
        for line in (["get", "demo", "--neutral"], ["get", "--neutral", "demo"], ["explain", "demo"]):
            self.assertEqual(['Flowsheet.Stream("Raw Gas")'], self.complete(*line, "'Flowsheet.Stream(Raw"), line)
            self.assertEqual(["Flowsheet.Stream(Raw Gas).MolarFlow"],
                             self.complete(*line, "'Flowsheet.Stream(Raw Gas).MolarFl"), line)
        self.assertEqual([], self.complete("get", "demo", "'Flowsheet.Stream(Raw"))


@unittest.skipIf(len(PROGRAM) > 1 or not shutil.which("bash"), "needs bash and a program of this machine")
class InBash(ProgramTest):
    """Keys as a person presses them."""

    def handed_over(self, text):
        """The words of a line in which tabs are pressed, as the shell cuts it."""
        import pty

        pid, keyboard = pty.fork()
        if pid == 0:
            path = os.path.dirname(PROGRAM[0]) + os.pathsep + os.environ["PATH"]
            os.environ.update(PATH=path, TERM="dumb", PS1="$ ", INPUTRC="/dev/null", LC_ALL="C.UTF-8")
            os.execvp("bash", ["bash", "--norc", "--noprofile", "-i"])
        words = self.folder / "words"
        words.unlink(missing_ok=True)
        lines = ["bind 'set enable-bracketed-paste off'", "stty cols 500", f"source '{SCRIPT}'",
                 "hand_over() { printf '%s\\n' \"$@\" > \"$WORDS.part\"; mv \"$WORDS.part\" \"$WORDS\"; }",
                 f"WORDS='{words}'", text + "\x01hand_over \x05"]
        try:
            os.write(keyboard, "".join(line + "\n" for line in lines).encode())
            end = time.monotonic() + 60
            shown = b""
            while not words.exists():
                self.assertLess(time.monotonic(), end, shown)
                if select.select([keyboard], [], [], 0.05)[0]:
                    shown += os.read(keyboard, 4096)
        finally:
            os.close(keyboard)
            os.waitpid(pid, 0)
        return words.read_text(encoding="utf-8").splitlines()

    def test_a_path_is_handed_over_whole(self):
        streams = "appModel.FlowSheetObjects.Streams"
        gas = f'{streams}."Raw Gas"'
        lines = {f"'{streams}.Raw G\t": gas, f'"{streams}.Raw G\t"': gas, rf"{streams}.Raw\ G" + "\t": gas,
                 f"'{streams}.Raw G\t.Temp\t": gas + ".Temperature", f"--neutral 'Flowsheet.Stream(Raw\t":
                 'Flowsheet.Stream("Raw Gas")'}
        for text, path in lines.items():
            with self.subTest(text):
                self.assertEqual(path, self.handed_over(f"fixtop get demo {text}")[-1])


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

    def test_options_in_any_order(self):
        self.assertEqual(["appModel"], self.complete("get", "--unit", "K", "--json", "demo", "app"))
        self.assertEqual(["appModel"], self.complete("solve", "--save", "x.json", "demo", "--set", "app"))
        self.assertEqual(["files"], self.complete("solve", "demo", "--save", "sav"))
        self.assertEqual(["Temperature"], self.complete(
            "table", "--unit", "Pressure=bar", "demo", "--json", "'appModel.FlowSheetObjects.Streams.*'", "Temp"))

    def test_the_neutral_view(self):
        for line in (["get", "demo", "--neutral"], ["get", "--neutral", "demo"], ["explain", "demo"]):
            self.assertEqual(['Flowsheet.Stream("Raw Gas")'], self.complete(*line, r"Flowsheet.Stream\(Raw"), line)


if __name__ == "__main__":
    unittest.main()
