# SPDX-License-Identifier: Apache-2.0
"""Solved flowsheets from files against what an independent script took out of them."""

import csv
import math
import unittest
import zipfile
from xml.etree import ElementTree

from support import CASES, DONE, ProgramTest, run

FLOWSHEET = "appModel.FlowSheetObjects"
STREAMS = FLOWSHEET + ".Streams"
UNITS = FLOWSHEET + ".UnitOps"
STREAM_CLASSES = {"MaterialStream", "EnergyStream"}
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
    return [row for row in all_rows_of(table) if row["type"] in STREAM_CLASSES]


def all_rows_of(table):
    with open(table, encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file))


def tags_in_table(table):
    """(streams, unit operations) that the table names, each sorted."""
    tags = {row["tag"]: row["type"] in STREAM_CLASSES for row in all_rows_of(table)}
    return [sorted(tag for tag, is_stream in tags.items() if is_stream == wanted)
            for wanted in (True, False)]


def tags_in_file(case):
    """The same, as the document in the archive tells them."""
    with zipfile.ZipFile(case) as archive:
        name, = [entry for entry in archive.namelist() if entry.endswith(".xml")]
        root = ElementTree.fromstring(archive.read(name).decode("utf-8-sig"))
    classes = {each.findtext("Name"): each.findtext("Type").rsplit(".", maxsplit=1)[-1]
               for each in root.find("SimulationObjects")}
    tags = [(each.findtext("Tag"), classes[each.findtext("Name")] in STREAM_CLASSES)
            for each in root.find("GraphicObjects")]
    return [sorted(tag for tag, is_stream in tags if is_stream == wanted)
            for wanted in (True, False)]


def column_sheets(table):
    """The flowsheets that stand around the columns of a table."""
    return {f'{row["tag"]} Flowsheet' for row in all_rows_of(table)
            if row["type"] == "DistillationColumn"}


def children_in_tree(lines, branch):
    """Names of the children of `branch`, a line of the tree with its indentation."""
    start = lines.index(branch)
    indent = len(branch) - len(branch.lstrip())
    names = []
    for line in lines[start + 1:]:
        depth = len(line) - len(line.lstrip())
        if depth <= indent:
            break
        if depth == indent + 2:
            names.append(line.strip().rsplit("  (", maxsplit=1)[0])
    return sorted(names)


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

    def test_every_tag_stands_at_its_place(self):
        found = 0
        for table in sorted(CASES.glob("*.csv")):
            case = table.with_suffix(".dwxmz")
            with self.subTest(table.stem):
                streams, units = tags_in_file(case)
                self.assertEqual([streams, units], tags_in_table(table))
                units = sorted({*units, *column_sheets(table)})
                tree = self.check(run("tree", case, FLOWSHEET, "--depth", "2"), DONE, err="").lines
                for tags, path, branch in ((streams, STREAMS, "  Streams  (Streams)"),
                                           (units, UNITS, "  UnitOps  (UnitOps)")):
                    listed = self.check(run("ls", case, path), DONE, err="")
                    self.assertEqual(tags, sorted(listed.lines))
                    self.assertEqual(tags, children_in_tree(tree, branch))
                    found += len(tags)
        self.assertGreater(found, 50)

    def test_compounds_are_lists(self):
        for case in sorted(CASES.glob("*.dwxmz")):
            with self.subTest(case.stem):
                tree = self.check(run("tree", case, "appModel.Basis"), DONE, err="").lines
                compounds = children_in_tree(tree, "  Compounds  (SpecCollection)")
                self.assertEqual(sorted(compounds), sorted(
                    run("ls", case, "appModel.Basis.Compounds").lines))
                self.assertGreater(len(compounds), 1)
                self.assertNotIn("    Water = (none)", tree)

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
