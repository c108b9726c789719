"""Solved flowsheets from files against what an independent script took out of them."""

import csv
import math
import unittest

from support import CASES, DONE, ProgramTest, run

STREAMS = "appModel.FlowSheetObjects.Streams"
# Property of the table, variable, and unit of the table's numbers as the program calls it.
PROPERTIES = {
    "T": ("Temperature", "K"),
    "P": ("Pressure", "Pa"),
    "molar flow": ("Molar Flow", "mol/s"),
    "mass flow": ("Mass Flow", "kg/s"),
    "vapour fraction": ("Vapour Fraction", ""),
    "energy flow": ("Heat Flow", "kW"),
}


def quoted(name):
    return '"' + name.replace('"', '""') + '"'


def rows_of(table):
    with open(table, encoding="utf-8", newline="") as file:
        return [row for row in csv.DictReader(file)
                if row["type"] in ("MaterialStream", "EnergyStream")]


@unittest.skipUnless(CASES.is_dir(), f"no sample cases in {CASES}")
class RealCases(ProgramTest):
    def compare(self, case, rows, unit):
        """One run for all rows of a unit: (path, expected text) pairs."""
        result = run("get", case, "-", *(["--unit", unit] if unit else []),
                     stdin="".join(path + "\n" for path, _ in rows))
        self.check(result, DONE, err="")
        self.assertEqual(len(rows), len(result.lines), result)
        for (path, expected), got in zip(rows, result.lines):
            if expected == "":
                self.assertEqual("", got, path)
            else:
                close = got != "" and math.isclose(float(expected), float(got), rel_tol=1e-11,
                                                   abs_tol=1e-300)
                self.assertTrue(close, f"{case.name}: {path}: {expected} expected, got {got!r}")

    def test_every_stream_row(self):
        compared = 0
        for table in sorted(CASES.glob("*.csv")):
            by_unit = {}
            for row in rows_of(table):
                if row["property"].startswith("x:"):
                    continue
                variable, unit = PROPERTIES[row["property"]]
                path = f"{STREAMS}.{quoted(row['tag'])}.{variable}"
                by_unit.setdefault(unit, []).append((path, row["value"]))
            for unit, rows in by_unit.items():
                with self.subTest(f"{table.stem} {unit}"):
                    self.compare(table.with_suffix(".dwxmz"), rows, unit)
                    compared += len(rows)
        self.assertGreater(compared, 200)

    def test_every_composition(self):
        compared = 0
        for table in sorted(CASES.glob("*.csv")):
            rows = [(f"{STREAMS}.{quoted(row['tag'])}.Comp Mole Frac.{quoted(row['property'][2:])}",
                     row["value"]) for row in rows_of(table) if row["property"].startswith("x:")]
            with self.subTest(table.stem):
                self.compare(table.with_suffix(".dwxmz"), rows, "")
                compared += len(rows)
        self.assertGreater(compared, 100)

    def test_all_stream_names(self):
        for table in sorted(CASES.glob("*.csv")):
            with self.subTest(table.stem):
                names = list(dict.fromkeys(row["tag"] for row in rows_of(table)))
                listed = self.check(run("ls", table.with_suffix(".dwxmz"), STREAMS), DONE, err="")
                self.assertEqual(sorted(names), sorted(listed.lines))

    def test_every_found_path_can_be_read(self):
        for case in sorted(CASES.glob("*.dwxmz")):
            with self.subTest(case.stem):
                found = self.check(run("find", case, "*.*.*.*.*.*"), DONE, err="").lines
                self.assertGreater(len(found), 300)
                paths = (found * (10000 // len(found) + 1))[:10000]
                read = run("get", case, "-", stdin="\n".join(paths) + "\n")
                self.check(read, DONE, err="")
                self.assertEqual(10000, len(read.lines))


if __name__ == "__main__":
    unittest.main()
