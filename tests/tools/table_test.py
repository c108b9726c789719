# SPDX-License-Identifier: Apache-2.0
"""table: many nodes beside each other, in all three forms."""

import csv
import io
import json
import unittest

from small_case import (STREAMS, UNITS, array, of_kind, real, small_case, stream, write_case,
                        write_small_case)
from support import DONE, FAILED, USAGE, ProgramTest, run

ROWS = STREAMS + ".*"


def column_case():
    """Streams whose arrays differ in their elements, of which one holds what needs quotes."""
    def fractions(labels, values):
        return array([("text", labels)], values)

    odd = {"Dot.ted": real(3.5), 'Say "so"': of_kind("text", 'a "b", c\nd'), "Plain": real(None),
           "Unit": real(1, "Pressure"), "Fractions": fractions(["Methane", "A.b"], [0.5, 0.25]),
           "Phases": array([("enumeration", ["Vapour", "Liquid"]), ("text", ["Methane", "A.b"])],
                           [0.125, 0.25, 0.375, 0.5])}
    other = {"Unit": real(300, "Temperature"),
             "Fractions": fractions(["Ethane", "A.b", "Ethane"], [0.1, 0.2, 0.3])}
    case = small_case()
    case["flowsheet"]["objects"] = [stream("One", 25, **odd), stream("Two", 50, **other),
                                    stream("Three", 75)]
    return case


def many_streams(count):
    case = small_case()
    case["flowsheet"]["objects"] = [
        stream(f"S{i}", i / 8, Fractions=array([("text", ["Methane", "Ethane"])], [i / 1024, 0.5]))
        for i in range(count)]
    return case


def text(*lines):
    return "".join(line + "\n" for line in lines)


class Table(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.case = write_small_case(cls.folder)
        cls.columns = write_case(cls.folder, "columns.json", column_case())

    def csv_of(self, *arguments, code=DONE):
        result = self.check(run("table", *arguments, "--csv"), code)
        return list(csv.reader(io.StringIO(result.out, newline="")))

    def cells_of(self, *arguments):
        result = self.check(run("table", *arguments, "--json"), DONE, err="")
        return [json.loads(line)["cells"] for line in result.lines]

    def test_columns_stand_below_each_other(self):
        self.check(run("table", self.case, ROWS, "Temperature", "Pressure", "Mode"), DONE, text(
            "Name    Temperature  Pressure  Mode",
            "                  C       kPa",
            "Feed 1           25       100  Slow",
            "Feed.2          -40       100",
            "Größe           300       100"), "")

    def test_a_table_without_units_has_no_line_for_them(self):
        self.check(run("table", self.case, ROWS, "Vapour Fraction"), DONE, text(
            "Name    Vapour Fraction", "Feed 1              0.5", "Feed.2              0.5",
            "Größe               0.5"), "")

    def test_rows_are_what_find_finds(self):
        pattern = STREAMS + '.*[Temperature=25]|[Temperature=300]'
        self.assertEqual([["Name", "Temperature [C]"], ["Feed 1", "25"], ["Größe", "300"]],
                         self.csv_of(self.case, pattern, "Temperature"))

    def test_a_column_of_several_nodes_is_several_that_are_named(self):
        rows = self.csv_of("demo", "--neutral", "Flowsheet.Stream(Raw Gas)", "Temperature",
                           "Composition.Component.MoleFraction")
        self.assertEqual(["Name", "Temperature [C]", "Composition.Component(Nitrogen).MoleFraction",
                          "Composition.Component(CO2).MoleFraction"], rows[0][:4])
        self.assertEqual(["Stream(Raw Gas)", "30", "0.02", "0.02", "0.75"], rows[1][:5])
        cells, = self.cells_of(self.case, STREAMS, "*.Pressure")
        self.assertEqual({"Feed 1.Pressure", '"Feed.2".Pressure', "Größe.Pressure"}, set(cells))
        # While each row has one it is what the path says.
        pattern = "*[(id)=Pressure]"
        self.assertEqual(["Name", pattern + " [kPa]"], self.csv_of(self.case, ROWS, pattern)[0])

    def test_texts_that_look_like_formulas_are_guarded_in_csv(self):
        texts = {"=1+2": "'=1+2", "@SUM(A1)": "'@SUM(A1)", "+x": "'+x", "-x": "'-x", "-12.5": "-12.5", "a=b": "a=b",
                 '=A1&",b"': "'=A1&\",b\""}
        case = small_case()
        case["flowsheet"]["objects"] = [stream(f"S{i}", -25, Note=of_kind("text", each))
                                        for i, each in enumerate(texts)] + [stream("=cmd", 25)]
        case = write_case(self.folder, "formulas.json", case)
        rows = self.csv_of(case, ROWS, "Note", "Temperature")
        self.assertEqual([[f"S{i}", each, "-25"] for i, each in enumerate(texts.values())] + [["'=cmd", "", "25"]],
                         rows[1:])
        plain = self.check(run("table", case, ROWS, "Note"), DONE).out
        self.assertNotIn("'", plain)

    def test_a_unit_for_a_column(self):
        for name in ("Temperature", '"Temperature"'):
            self.check(run("table", self.case, ROWS, "Temperature", "Pressure", "--unit", name + "=K",
                           "--unit", "Pressure=bar"), DONE, text(
                               "Name    Temperature  Pressure",
                               "                  K       bar",
                               "Feed 1       298.15         1",
                               "Feed.2       233.15         1",
                               "Größe        573.15         1"), "")

    def test_a_unit_for_one_of_two_keys(self):
        row = "Flowsheet.Stream(Raw Gas).Composition"
        columns = ["Component(Methane).MoleFraction", "Component(Ethane).MoleFraction"]
        self.check(run("table", "demo", "--neutral", row, *columns, "--unit", columns[1] + "=%"), DONE, text(
            "Name         " + "  ".join(columns),
            " " * (13 + len(columns[0])) + "  " + "%".rjust(len(columns[1])),
            "Composition  " + "0.75".rjust(len(columns[0])) + "  " + "10".rjust(len(columns[1]))), "")

    def test_a_unit_for_an_array(self):
        case = small_case()
        lengths = array([3], [1, 2, 3])
        lengths["spec"]["quantity"] = "Pressure"
        case["flowsheet"]["objects"] = [stream("One", 25, Profile=lengths)]
        case = write_case(self.folder, "profile.json", case)
        self.assertEqual(
            [["Name"] + [f"Profile.Elem{i} [bar]" for i in range(3)], ["One", "0.01", "0.02", "0.03"]],
            self.csv_of(case, ROWS, "Profile", "--unit", "Profile=bar"))
        cells, = self.cells_of(case, ROWS, "Profile", "--unit", "Profile=bar")
        self.assertEqual({"value": 0.02, "uom": "bar"}, cells["Profile.Elem1"])

    def test_a_unit_that_does_not_fit_is_told_once(self):
        result = run("table", self.case, ROWS, "Temperature", "Pressure", "--unit", "Temperature=bar")
        self.check(result, FAILED, text(
            "Name    Temperature  Pressure", "                          kPa",
            "Feed 1                    100", "Feed.2                    100",
            "Größe                     100"), "Temperature: no such unit: bar; expected C, K, F, R\n")

    def test_an_array_makes_a_column_for_each_element(self):
        heading = ["Name", "Fractions.Methane", 'Fractions."A.b"', "Fractions.Ethane",
                   "Fractions.Ethane#1", "Temperature [C]"]
        self.assertEqual([heading, ["One", "0.5", "0.25", "", "", "25"],
                          ["Two", "", "0.2", "0.1", "0.3", "50"], ["Three", "", "", "", "", "75"]],
                         self.csv_of(self.columns, ROWS, "Fractions", "Temperature"))

    def test_an_array_of_two_dimensions(self):
        rows = self.csv_of(self.columns, STREAMS + ".One", "Phases")
        self.assertEqual([["Name", "Phases.Vapour.Methane", 'Phases.Vapour."A.b"',
                           "Phases.Liquid.Methane", 'Phases.Liquid."A.b"'],
                          ["One", "0.125", "0.25", "0.375", "0.5"]], rows)

    def test_headings_lead_to_their_cells(self):
        cells, *_ = self.cells_of(self.columns, STREAMS + ".One", "Fractions", "Phases", '"Dot.ted"')
        paths = [f"{STREAMS}.One.{heading}" for heading in cells]
        self.assertEqual(7, len(paths))
        self.check(run("get", self.columns, *paths), DONE,
                   text(*(f"{cell['value']}" for cell in cells.values())), "")

    def test_csv_quotes_what_needs_it(self):
        result = run("table", self.columns, STREAMS + ".One", 'Say "so"', '"Say ""so"""', "--csv")
        self.check(result, FAILED, 'Name,"""Say """"so"""""""\nOne,"a ""b"", c\nd"\n')
        self.assertEqual([["Name", '"Say ""so"""'], ["One", 'a "b", c\nd']],
                         self.csv_of(self.columns, STREAMS + ".One", '"Say ""so"""'))

    def test_plain_text_keeps_a_row_on_its_line(self):
        self.check(run("table", self.columns, STREAMS + ".One", '"Say ""so"""', '"Dot.ted"'), DONE,
                   text('Name  "Say ""so"""  "Dot.ted"', 'One   a "b", c\\nd         3.5'), "")

    def test_json(self):
        result = self.check(run("table", self.columns, ROWS, "Plain", "Temperature", "--unit",
                                "Temperature=K", "--json"), DONE, err="")
        self.assertEqual(
            [{"path": STREAMS + ".One", "name": "One",
              "cells": {"Plain": {"value": None, "uom": None},
                        "Temperature": {"value": 298.15, "uom": "K"}}},
             {"path": STREAMS + ".Two", "name": "Two",
              "cells": {"Plain": None, "Temperature": {"value": 323.15, "uom": "K"}}},
             {"path": STREAMS + ".Three", "name": "Three",
              "cells": {"Plain": None, "Temperature": {"value": 348.15, "uom": "K"}}}],
            [json.loads(line) for line in result.lines])

    def test_units_that_differ_stand_in_the_cells(self):
        self.assertEqual([["Name", "Unit"], ["One", "1 kPa"], ["Two", "300 C"], ["Three", ""]],
                         self.csv_of(self.columns, ROWS, "Unit"))

    def test_another_attribute(self):
        self.assertEqual(
            [["Name", "Temperature", "Fractions.Methane", 'Fractions."A.b"', "Pressure(uom)"],
             ["One", "Specified", "Specified", "Specified", "kPa"]],
            self.csv_of(self.columns, STREAMS + ".One", "Temperature", "Fractions", "Pressure(uom)",
                        "--attr", "status"))
        record = json.loads(run("table", self.columns, STREAMS + ".One", "Temperature", "--attr",
                                "status", "--json").out)
        self.assertEqual("status", record["attr"])
        self.assertEqual({"Temperature": {"value": "Specified", "uom": None}}, record["cells"])

    def test_the_rest_of_a_table_without_one_column(self):
        for column, near in (("Temperatur", "Temperature"), ("Fraction.Methane", "Fractions"),
                             ("Nonsense", None)):
            near = f"\n  near: {near}" if near else ""
            self.check(run("table", self.columns, STREAMS + ".One", "Pressure", column, "--csv"),
                       FAILED, text("Name,Pressure [kPa]", "One,100"),
                       f"no such node: {column}\n  nothing of it was found{near}\n")
        self.check(run("table", self.columns, STREAMS + ".One", "Pressure", "Fractions.Methan"),
                   FAILED, err="no such node: Fractions.Methan\n  found: Fractions\n  near: Methane\n")
        # The first row has nothing near, a later one has.
        self.check(run("table", self.columns, STREAMS + ".*[Unit]", "Ethan"), FAILED,
                   text("Name", "One", "Two"), "no such node: Ethan\n  nothing of it was found\n")

    def test_a_column_that_does_not_parse(self):
        self.check(run("table", self.case, ROWS, "a[b", "Pressure", "--csv"), FAILED,
                   text("Name,Pressure [kPa]", "Feed 1,100", "Feed.2,100", "Größe,100"),
                   "Parse error, ] expected in: a[b\n")

    def test_no_rows(self):
        for pattern in (STREAMS + ".*[Nonsense]", "nonsense.*"):
            self.check(run("table", self.case, pattern, "Pressure"), FAILED, "",
                       f"nothing matches: {pattern}\n")
        self.check(run("table", self.case, "a[b", "Pressure"), FAILED, "",
                   "Parse error, ] expected in: a[b\n")

    def test_wrong_lines(self):
        for options in (["--unit", "K"], ["--unit", "=K"], ["--unit", "Pressure="], ["--unit"],
                        ["--unit", "Temperature=K"], ["--nonsense"]):
            with self.subTest(options):
                result = self.check(run("table", self.case, ROWS, "Pressure", *options), USAGE, "")
                self.assertIn("Usage: fixtop table", result.err)
        self.check(run("table", self.case, ROWS), USAGE, "")
        self.check(run("table", self.case, ROWS, "Pressure", "--csv", "--json"), USAGE,
                   '{"error":"--csv excludes --json","exit":2}\n')

    def test_attachments_and_objects(self):
        self.assertEqual([["Name", "Inlet", "Inlet.Temperature [C]"], ["Mixer 1", "Feed 1", "25"]],
                         self.csv_of(self.case, UNITS + ".*", "Inlet", "Inlet.Temperature"))

    def test_a_thousand_streams(self):
        case = write_case(self.folder, "many.json", many_streams(1000))
        rows = self.csv_of(case, ROWS, "Temperature", "Fractions")
        self.assertEqual(["Name", "Temperature [C]", "Fractions.Methane", "Fractions.Ethane"], rows[0])
        self.assertEqual([[f"S{i}", i / 8, i / 1024, 0.5] for i in range(1000)],
                         [[name, *map(float, cells)] for name, *cells in rows[1:]])

    def test_in_the_shell_from_where_it_stands(self):
        lines = (f"cd {STREAMS}", "table * Temperature --csv", "")
        self.check(run("shell", self.case, stdin="\n".join(lines)), DONE, text(
            "Name,Temperature [C]", "Feed 1,25", "Feed.2,-40", "Größe,300"), "")

    def test_completion_of_a_column_goes_on_from_a_row(self):
        for line, candidates in ((f"table {ROWS} Temp", ["Temperature"]),
                                 (f"table {ROWS} Pressure Temp", ["Temperature"]),
                                 (f"table {ROWS} Pressure(uo", ["Pressure(uom)", "Pressure(uom_options)"]),
                                 ("table appMod", ["appModel"]), ("tab", ["table"])):
            self.assertEqual(candidates, run("complete", self.case, line).lines, line)


if __name__ == "__main__":
    unittest.main()
