# SPDX-License-Identifier: Apache-2.0
"""Runs the program and lets memory run out in it: at places that take some, spread over all of
them, or with MEMORY_STEP at each step-th allocation from MEMORY_FIRST; once so that one allocation
fails, once so that all do from there on. The program then ends with 3 and says why, or has done what it does with
memory."""

import os
import pathlib
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tools"))

from small_case import STREAMS, write_small_case  # noqa: E402
from support import DONE, FAILED, PROGRAM, UNREADABLE, ProgramTest  # noqa: E402

PRELOAD = os.environ["MEMORY_PRELOAD"]
STEP = int(os.environ.get("MEMORY_STEP", "0"))
FIRST = int(os.environ.get("MEMORY_FIRST", "1"))
# That are tried in a run without a step.
PLACES = 40
# The others are how the system calls it, of a file that it can't open.
MESSAGES = ["fixtop: out of memory\n", "can't be read: Cannot allocate memory\n",
            "can't be written: Cannot allocate memory\n"]
# The save is what a command does last: so many of its last allocations are tried one by one.
OF_THE_SAVE = 60
WITHIN = f"{STREAMS}.\"Feed 1\".Temperature"


def run(arguments, folder, **environment):
    environment = {f"FAILING_MEMORY_{name.upper()}": value for name, value in environment.items()}
    done = subprocess.run(PROGRAM + arguments, cwd=folder, stdin=subprocess.DEVNULL,
                          capture_output=True, timeout=60, check=False,
                          env={**os.environ, "LD_PRELOAD": PRELOAD, **environment})
    return done.returncode, done.stdout, done.stderr.decode()


class ProgramWithoutMemory(ProgramTest):
    def numbers(self, arguments, last, prepare):
        file = self.folder / "places"
        prepare()
        run(arguments, self.folder, places=str(file))
        count, *places = map(int, file.read_text(encoding="utf-8").split())
        self.assertTrue(places)
        if STEP:
            return range(FIRST, count + 1, STEP)
        return {*places[::len(places) // PLACES + 1], *range(count + 1 - last, count + 1)}

    def disturb(self, arguments, check, last=0, prepare=lambda: None):
        """Gives each order, and what the program then did to a check."""
        for number in sorted(self.numbers(arguments, last, prepare)):
            for order in ({}, {"onwards": "1"}):
                with self.subTest(allocation=number, **order):
                    prepare()
                    check(run(arguments, self.folder, at=str(number), **order))

    def is_told(self, done, expected):
        """Whether it told that it has no memory; else it did as it does with memory."""
        code, out, err = done
        if code == UNREADABLE:
            self.assertTrue(any(message in err for message in MESSAGES), err)
            return True
        self.assertEqual((expected[0], expected[1]), (code, out), err)
        return False

    def read_all(self, *arguments):
        write_small_case(self.folder)
        expected = run(list(arguments), self.folder)
        self.assertEqual(DONE, expected[0], expected)
        told = []
        self.disturb(list(arguments), lambda done: told.append(self.is_told(done, expected)))
        self.assertTrue(any(told))

    def test_a_tree_is_whole_or_memory_ran_out(self):
        self.read_all("tree", "small.json")

    def test_a_neutral_tree_is_whole_or_memory_ran_out(self):
        self.read_all("tree", "small.json", "--neutral", "Flowsheet.Stream(Feed 1)")

    def test_a_value_is_right_or_memory_ran_out(self):
        self.read_all("get", "small.json", WITHIN, "--unit", "K")

    def test_json_is_whole_or_memory_ran_out(self):
        self.read_all("get", "small.json", WITHIN, "--json")

    def test_a_table_is_whole_or_memory_ran_out(self):
        self.read_all("table", "small.json", f"{STREAMS}.*", "Temperature", "Pressure")

    def test_classes_are_all_listed_or_memory_ran_out(self):
        self.read_all("classes")

    def test_a_selection_is_read_whole_or_memory_ran_out(self):
        write_small_case(self.folder)
        run(["collect", "add", "read.xml", "small.json", f"{STREAMS}.*.Temperature"], self.folder)
        self.read_all("collect", "read", "read.xml", "small.json")

    def test_fractions_are_stored_together_or_memory_ran_out(self):
        self.read_all("set", "demo", STREAMS + ".Raw Gas.Comp Mole Frac", "1,1,0,0,0,0,0,2")

    def writes_whole_or_not_at_all(self, arguments, file, old, code=DONE):
        """The file is as it was, or as it is to be, and there is no other that was not there."""
        expected = run(arguments, self.folder)
        self.assertEqual(code, expected[0], expected)
        new = file.read_bytes()
        names = sorted({*os.listdir(self.folder), "places"})
        self.assertNotEqual(old, new)

        def check(done):
            found = file.read_bytes()
            told = self.is_told(done, expected)
            self.assertIn(found, [old, new] if told else [new])
            self.assertEqual(names, sorted(os.listdir(self.folder)))

        self.disturb(arguments, check, OF_THE_SAVE, lambda: file.write_bytes(old))

    def test_a_save_is_done_whole_or_not_at_all(self):
        old = write_small_case(self.folder).read_bytes()
        self.writes_whole_or_not_at_all(
            ["set", "small.json", WITHIN, "30", "--save", "saved.json"],
            self.folder / "saved.json", old, FAILED)  # a recording can't be solved again

    def test_a_selection_is_extended_whole_or_not_at_all(self):
        write_small_case(self.folder)
        add = ["collect", "add", "chosen.xml", "small.json"]
        run([*add, WITHIN], self.folder)
        chosen = self.folder / "chosen.xml"
        self.writes_whole_or_not_at_all([*add, f"{STREAMS}.*.Pressure"], chosen,
                                        chosen.read_bytes())


if __name__ == "__main__":
    unittest.main()
