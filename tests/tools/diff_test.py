# SPDX-License-Identifier: Apache-2.0
"""diff: all values of two cases."""

import csv
import io
import json
import unittest

from small_case import STREAMS, real, small_case, stream, write_case
from support import DONE, FAILED, UNREADABLE, USAGE, ProgramTest, run

TEMPERATURE = STREAMS + ".One.Temperature"
ONLY = STREAMS + ".Two.Extra"


def case_of(temperature, pressure, **more):
    case = small_case()
    case["flowsheet"]["objects"] = [
        stream("One", temperature, Pressure=real(pressure, "Pressure")), stream("Two", 40, **more)]
    return case


class Diff(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.a = write_case(cls.folder, "a.json", case_of(25, 100))
        cls.b = write_case(cls.folder, "b.json", case_of(26.5, 100, Extra=real(5, "Pressure")))

    def diff(self, *arguments):
        return run("diff", self.a, self.b, *arguments)

    def records(self, *arguments):
        return [json.loads(line) for line in self.check(self.diff("--json", *arguments), FAILED).lines]

    def test_a_case_does_not_differ_from_itself(self):
        self.check(run("diff", self.a, self.a), DONE, "", "")
        self.check(run("diff", "demo", "demo", "--neutral"), DONE, "", "")
        self.check(run("diff", "demo", "demo", "--json"), DONE, "", "")

    def test_only_what_differs_is_shown(self):
        first, second = self.records()
        self.assertEqual({"path": TEMPERATURE, "a": {"value": 25, "uom": "C"}, "b": {"value": 26.5, "uom": "C"},
                          "difference": 1.5}, first)
        self.assertEqual({"path": ONLY, "a": None, "b": {"value": 5, "uom": "kPa"}, "difference": None}, second)
        result = self.check(self.diff("--csv"), FAILED, err=f"{self.a}: has no such node as the other case: 1\n")
        rows = list(csv.reader(io.StringIO(result.out)))
        self.assertEqual([["Path", str(self.a), str(self.b), "Unit", "Difference"],
                          [TEMPERATURE, "25", "26.5", "C", "1.5"], [ONLY, "", "5", "kPa", ""]], rows)
        plain = self.check(self.diff(), FAILED).lines
        self.assertEqual([TEMPERATURE, "25", "26.5", "C", "1.5"], plain[1].split())

    def test_a_tolerance_in_a_unit(self):
        def paths(*arguments):
            return [record["path"] for record in self.records(*arguments)]

        self.assertEqual([ONLY], paths("--tolerance", "1.5"))
        self.assertEqual([ONLY], paths("--tolerance", "C=1.5"))
        self.assertEqual([TEMPERATURE, ONLY], paths("--tolerance", "C=1.4", "--tolerance", "2"))
        self.check(self.diff("--tolerance", "x"), USAGE, "")

    def test_a_tolerance_in_a_unit_that_nothing_has_is_told(self):
        note = "--tolerance: no value is compared in bar; units: "
        told = [line for line in self.diff("--tolerance", "bar=3", "--tolerance", "C=1").err.split("\n")
                if line.startswith("--tolerance")]
        self.assertEqual(1, len(told), told)
        self.assertTrue(told[0].startswith(note), told)
        self.assertIn("C", told[0][len(note):].split(", "))

    def test_units_of_a_set(self):
        first = self.records("--units", "Field")[0]
        # Fahrenheit from Celsius: times 1.8, plus 32.
        self.assertEqual(("F", 77), (first["a"]["uom"], first["a"]["value"]))
        self.assertAlmostEqual(2.7, first["difference"])
        self.check(self.diff("--units", "Nonsense"), UNREADABLE, "")

    def test_below_a_node(self):
        self.check(self.diff(STREAMS + ".Two", "--tolerance", "100"), FAILED)
        self.check(self.diff(TEMPERATURE, "--tolerance", "2"), DONE, "", "")
        self.check(self.diff("nowhere"), FAILED, "")

    def test_the_neutral_view(self):
        paths = [record["path"] for record in self.records("--neutral")]
        self.assertIn("Flowsheet.Stream(One).Temperature", paths)

    def test_a_changed_input_shows_what_follows_from_it(self):
        file = self.folder / "warmer.json"
        feed = "appModel.FlowSheetObjects.Streams.Raw Gas"
        self.check(run("set", "demo", feed + ".Temperature", "35", "--save", file), DONE)
        records = [json.loads(line) for line in self.check(run("diff", "demo", file, "--json"), FAILED, err="").lines]
        changed = {record["path"]: record["difference"] for record in records}
        self.assertEqual(5, changed[feed + ".Temperature"])
        self.assertIn(feed + ".Molar Enthalpy", changed)
        self.assertNotIn(feed + ".Molar Flow", changed)

    def test_what_can_not_be_read(self):
        self.check(run("diff", "demo", self.folder / "missing.json"), UNREADABLE, "")
        self.check(run("diff", "demo"), USAGE, "")


if __name__ == "__main__":
    unittest.main()
