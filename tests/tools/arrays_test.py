# SPDX-License-Identifier: Apache-2.0
"""Arrays: elements by name and by place, folded where they are long, stored into."""

import json
import unittest

from small_case import STREAMS, array_case, write_case
from support import DONE, FAILED, ProgramTest, run

FEED = STREAMS + ".Feed"
NUMBERS = [f"Elem{i}" for i in range(13)]


class Arrays(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.case = write_case(cls.folder, "arrays.json", array_case())

    def test_ls_names_the_elements(self):
        self.check(run("ls", self.case, FEED + ".Fractions"), DONE,
                   "Methane\nn-Butane\nA.b\nMethane\n", "")
        self.check(run("ls", self.case, FEED + ".Phases"), DONE, "Vapour\nLiquid\n", "")
        self.check(run("ls", self.case, FEED + ".Phases.Liquid"), DONE,
                   "Methane\nn-Butane\nA.b\nMethane\n", "")

    def test_ls_folds_more_than_twelve_elements(self):
        lines = "".join(name + "\n" for name in NUMBERS)
        twelve = "".join(name + "\n" for name in NUMBERS[:12])
        self.check(run("ls", self.case, FEED + ".Twelve"), DONE, twelve, "")
        self.check(run("ls", self.case, FEED + ".Thirteen"), DONE, twelve,
                   "... 1 more, shown by --all\n")
        self.check(run("ls", self.case, FEED + ".Thirteen", "--all"), DONE, lines, "")

    def test_records_are_complete(self):
        result = self.check(run("ls", self.case, FEED + ".Thirteen", "--json"), DONE, err="")
        self.assertEqual(NUMBERS, [json.loads(line)["name"] for line in result.lines])
        tree = self.check(run("tree", self.case, FEED + ".Thirteen", "--json"), DONE, err="")
        self.assertEqual(list(range(13)), [c["value"] for c in json.loads(tree.out)["children"]])

    def test_every_listed_path_leads_to_its_element(self):
        for name, values in (("Fractions", ["0.5", "0.25", "0.125", "0.0625"]),
                             ("Phases.Liquid", ["0.5", "0.625", "0.75", "0.875"]),
                             ("Thirteen", [str(n) for n in range(13)])):
            listed = run("ls", self.case, FEED + "." + name, "--json").lines
            paths = "".join(json.loads(line)["path"] + "\n" for line in listed)
            self.check(run("get", self.case, "-", stdin=paths), DONE,
                       "".join(value + "\n" for value in values), "")

    def test_tree_folds_more_than_twelve_elements(self):
        self.check(run("tree", self.case, FEED + ".Fractions"), DONE,
                   "Fractions  (Array)\n  Methane := 0.5\n  n-Butane := 0.25\n  A.b := 0.125\n"
                   "  Methane := 0.0625\n", "")
        shown = ["Thirteen  (Array)"] + [f"  Elem{n} := {n}" for n in range(13)]
        whole = "".join(line + "\n" for line in shown)
        folded = "".join(line + "\n" for line in shown[:13])
        self.check(run("tree", self.case, FEED + ".Thirteen", "--all"), DONE, whole, "")
        self.check(run("tree", self.case, FEED + ".Thirteen"), DONE,
                   folded + "  ... 1 more, shown by --all\n", "")
        levels = run("tree", self.case, FEED + ".Phases").lines
        self.assertEqual(["Phases  (2-Dim Array)", "  Vapour  (Array)", "    Methane := 0"],
                         levels[:3])

    def test_lists_of_objects_are_never_folded(self):
        self.assertNotIn("more", run("tree", "demo", STREAMS, "--depth", "1").out)
        self.assertGreater(len(run("ls", "demo", STREAMS + ".Raw Gas").lines), 12)

    def test_an_element_by_number_or_place(self):
        for step, value in (("Elem1", "0.25"), ("*#1", "0.25"), ("#2", "0.125"),
                            ('"A.b"', "0.125"), ("Methane#1", "0.0625")):
            self.check(run("get", self.case, f"{FEED}.Fractions.{step}"), DONE, value + "\n", "")
        self.check(run("get", self.case, FEED + ".Fractions.Elem4"), FAILED, "")

    def test_a_fraction_of_the_demo_is_stored_and_normalised(self):
        fractions = f'{STREAMS}."Raw Gas"."Comp Mole Frac"'
        lines = (f"set {fractions}.Methane 1.5", f"get {fractions}.Methane",
                 f"get {fractions}.Ethane", "quit")
        result = self.check(run("shell", "demo", stdin="".join(l + "\n" for l in lines)), DONE)
        methane, ethane = (float(line) for line in result.lines[-2:])
        # 0.75 became 1.5, and all were divided by their sum of 1.75.
        self.assertAlmostEqual(1.5 / 1.75, methane, 11)
        self.assertAlmostEqual(0.1 / 1.75, ethane, 11)


if __name__ == "__main__":
    unittest.main()
