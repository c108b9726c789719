# SPDX-License-Identifier: Apache-2.0
"""Selections in files: collect and publish."""

import csv
import io
import json
import math
import shutil
import subprocess
import unittest

from real_cases_test import PROPERTIES, STREAMS as REAL_STREAMS, quoted, rows_of
from small_case import STREAMS, small_case, stream, write_case, write_small_case
from support import CASES, DONE, FAILED, PROGRAM, UNREADABLE, USAGE, ProgramTest, run

GAS = "appModel.FlowSheetObjects.Streams.Raw Gas"
FEED = STREAMS + ".Feed 1"
RECORDING = "the case is a recording and can't be computed again\n"
BROKEN = "<CollectionBackup><Pathnode id=\"Top\""


class CollectTest(ProgramTest):
    def setUp(self):
        self.file_name = self.folder / f"{self.id().rsplit('.', maxsplit=1)[-1]}.xml"

    def collect(self, word, *arguments, stdin=""):
        return run("collect", word, self.file_name, *arguments, stdin=stdin)

    def add(self, case, *arguments):
        return self.check(self.collect("add", case, *arguments), DONE, err="")

    def records(self, case):
        lines = self.check(self.collect("read", case, "--json"), DONE).lines
        return [json.loads(line) for line in lines]

    def text(self):
        return self.file_name.read_bytes()


class Units(CollectTest):
    """A unit in a file that the node does not have."""

    def setUp(self):
        super().setUp()
        self.add("demo", GAS + ".Temperature", "--unit", "K")
        self.file_name.write_bytes(self.text().replace(b'uom="K"', b'uom="degF"'))

    def test_is_told_and_the_value_is_shown_in_the_node_s_own(self):
        result = self.check(self.collect("read", "demo", "--json"), FAILED)
        self.assertIn("shown in C", result.err)
        self.assertEqual((30, "C"), tuple(json.loads(result.lines[0])[k] for k in ("value", "uom")))

    def test_stores_nothing(self):
        case = self.folder / "degf.json"
        result = self.collect("write", "demo", "86", "--save", case)
        self.check(result, FAILED)
        self.assertIn("degF", result.err)
        self.assertIn(30, [json.loads(line).get("value") for line in self.collect("write", "demo", "86", "--json").lines])
        self.assertFalse(case.exists())

    def test_is_not_published(self):
        case = write_small_case(self.folder)
        self.file_name.unlink()
        self.add(case, FEED + ".Temperature", "--unit", "K")
        self.file_name.write_bytes(self.text().replace(b'uom="K"', b'uom="degF"'))
        self.check(run("publish", self.file_name, case), UNREADABLE, "")


class PassedOver(CollectTest):
    """What is in a file and is not understood, or leads nowhere."""

    def write(self, text):
        self.file_name.write_text(text, encoding="utf-8")

    def test_is_told_and_the_rest_is_read(self):
        self.write("<Selection><Items><Item><Path>" + GAS + ".Temperature</Path></Item>"
                   "<Item><Path>appModel.Nope</Path></Item></Items></Selection>")
        result = self.check(self.collect("read", "demo"), FAILED)
        self.assertIn("appModel.Nope", result.err)
        self.assertIn(GAS + ".Temperature", result.out)

    def test_keeps_the_file_from_being_written_anew(self):
        self.write('<CollectionBackup><Pathnode id="Top"><PathNode id="a"/></Pathnode>'
                   "</CollectionBackup>")
        before = self.text()
        for words in (("add", "demo", GAS + ".Temperature"), ("remove", "appModel")):
            result = self.check(self.collect(*words), UNREADABLE, "")
            self.assertIn("PathNode", result.err)
            self.assertEqual(before, self.text())


class AtOnce(CollectTest):
    def test_several_that_change_one_file_all_do(self):
        paths = [f"{GAS}.{name}" for name in ("Temperature", "Pressure", "Molar Flow")]
        self.add("demo", GAS + ".Mass Flow", *paths)
        running = [subprocess.Popen(PROGRAM + ["collect", "remove", self.file_name, path])
                   for path in paths]
        self.assertEqual([0, 0, 0], [each.wait(60) for each in running])
        self.check(self.collect("list"), DONE, GAS + ".Mass Flow\n", "")
        running = [subprocess.Popen(PROGRAM + ["collect", "add", self.file_name, "demo", path],
                                    stdout=subprocess.DEVNULL) for path in paths]
        self.assertEqual([0, 0, 0], [each.wait(120) for each in running])
        listed = self.check(self.collect("list"), DONE).lines
        self.assertEqual(sorted(paths + [GAS + ".Mass Flow"]), sorted(listed))
        self.assertEqual([], list(self.folder.glob(self.file_name.name + ".*")))


class Add(CollectTest):
    def test_begins_and_extends_a_file(self):
        self.assertEqual([GAS + ".Temperature"], self.add("demo", GAS + ".Temperature").lines)
        self.assertEqual([GAS + ".Pressure"], self.add("demo", GAS + ".Pressure").lines)
        self.check(self.collect("list"), DONE, f"{GAS}.Temperature\n{GAS}.Pressure\n", "")

    def test_a_node_is_an_item_once_and_takes_the_later_unit(self):
        self.add("demo", GAS + ".Temperature", GAS + ".Pressure")
        self.assertEqual([], self.add("demo", GAS + ".Temperature", "--unit", "K").lines)
        self.check(self.collect("list"), DONE, f"{GAS}.Temperature\tK\n{GAS}.Pressure\n", "")

    def test_what_can_not_be_added_is_told_and_the_rest_is(self):
        result = self.collect("add", "demo", "nonsense", GAS + ".Temperature", GAS + ".Notes(type)")
        self.check(result, FAILED, GAS + ".Temperature\n")
        self.assertIn("nothing matches: nonsense\n", result.err)
        result = self.collect("add", "demo", GAS + ".Pressure", "--unit", "K")
        self.check(result, FAILED, "")
        self.assertIn(GAS + ".Pressure: ", result.err)
        self.check(self.collect("list"), DONE, GAS + ".Temperature\n", "")

    def test_json_has_what_was_added_and_its_unit(self):
        paths = [GAS + ".Temperature", GAS + ".Pressure"]
        result = self.check(self.collect("add", "demo", paths[0], "--unit", "degF", "--json"), DONE, err="")
        self.assertEqual([{"path": paths[0], "uom": "F"}], [json.loads(line) for line in result.lines])
        result = self.check(self.collect("add", "demo", *paths, "--json"), DONE, err="")
        self.assertEqual([{"path": paths[1], "uom": None}], [json.loads(line) for line in result.lines])
        self.check(self.collect("add", "demo", *paths, "--json"), DONE, "", "")

    def test_nothing_found_makes_no_file(self):
        self.check(self.collect("add", "demo", "nonsense"), FAILED, "")
        self.assertFalse(self.file_name.exists())

    def test_a_name_that_can_not_come_back_is_refused_by_its_path(self):
        case = small_case()
        case["flowsheet"]["objects"] = [stream(name, 25) for name in ("A\tB", "C&amp;D", "E&F")]
        case = write_case(self.folder, "names.json", case)
        result = self.collect("add", case, STREAMS + ".*.Temperature")
        self.check(result, FAILED, STREAMS + ".\"E&F\".Temperature\n")
        told = result.err.splitlines()
        self.assertEqual(2, len(told), result)
        for line, name in zip(told, ("A\\tB", "C&amp;D")):
            self.assertIn(name, line)
            self.assertIn("can't be kept in a file", line)

    def test_a_broken_file_stays_as_it_is(self):
        for text in (BROKEN, "", "<Other/>", "x"):
            self.file_name.write_text(text, encoding="utf-8")
            for word, arguments in (("add", ["demo", GAS]), ("read", ["demo"]), ("list", []),
                                    ("remove", ["x"]), ("write", ["demo", "1"]),
                                    ("watch", ["demo"]), ("diff", ["demo", "demo"])):
                result = self.collect(word, *arguments)
                self.check(result, UNREADABLE, "")
                self.assertIn(str(self.file_name.name), result.err)
            self.assertEqual(text, self.file_name.read_text(encoding="utf-8"))

    def test_both_views_do_not_mix(self):
        self.add("demo", GAS + ".Temperature")
        result = self.collect("add", "demo", "--neutral", "Flowsheet.Stream.Temperature")
        self.check(result, UNREADABLE, "")
        self.assertIn("leave --neutral out", result.err)
        self.check(self.collect("remove", GAS + ".Temperature"), DONE, "", "")
        self.add("demo", "--neutral", "Flowsheet.Stream(Raw Gas).Temperature")
        result = self.collect("add", "demo", GAS + ".Temperature")
        self.check(result, UNREADABLE, "")
        self.assertIn("give --neutral", result.err)


class Read(CollectTest):
    def test_values_units_statuses_and_ages(self):
        self.add("demo", GAS + ".Temperature", "--unit", "K")
        self.add("demo", GAS + ".Pressure")
        rows = list(csv.reader(io.StringIO(self.check(self.collect("read", "demo", "--csv")).out)))
        self.assertEqual([["Path", "Value", "Unit", "Status", "Age"],
                          [GAS + ".Temperature", "303.15", "K", "Specified", "specified"],
                          [GAS + ".Pressure", "6000", "kPa", "Specified", "specified"]], rows)
        record = self.records("demo")[0]
        self.assertEqual({"path": GAS + ".Temperature", "found": "same", "value": 303.15, "uom": "K",
                          "status": "Specified", "age": "specified"}, record)
        lines = self.check(self.collect("read", "demo"), DONE, err="").lines
        self.assertEqual(["Path", "Value", "Unit", "Status", "Age"], lines[0].split())
        self.assertEqual(3, len(lines))

    def test_formats_exclude_each_other(self):
        self.add("demo", GAS + ".Temperature")
        result = self.check(self.collect("read", "demo", "--csv", "--json"), USAGE)
        self.assertEqual(USAGE, json.loads(result.out)["exit"])

    def test_a_missing_item_has_a_line_without_values(self):
        case = small_case()
        self.add(write_case(self.folder, "one.json", case), FEED + ".Temperature",
                 STREAMS + ".Größe.Temperature")
        case["flowsheet"]["objects"] = [stream("Feed 11", 25), stream("Größe", 300)]
        other = write_case(self.folder, "other.json", case)
        result = self.collect("read", other, "--json")
        self.assertEqual(FAILED, result.code)
        moved, same, error = (json.loads(line) for line in result.lines)
        self.assertIn(FEED + ".Temperature: not in the case", error["error"])
        self.assertEqual({"path": FEED + ".Temperature", "found": "moved",
                          "candidates": [STREAMS + ".Feed 11.Temperature"]}, moved)
        self.assertEqual(["same", 300.0], [same["found"], same["value"]])
        self.assertIn(FEED + ".Temperature: not in the case\n  may be: " + STREAMS, result.err)
        rows = list(csv.reader(io.StringIO(self.collect("read", other, "--csv").out)))
        self.assertEqual([FEED + ".Temperature", "", "", "", ""], rows[1])

    def test_what_is_found_by_place_alone_is_told(self):
        case = small_case()
        case["flowsheet"]["objects"] = [stream("Feed", 25, Plain={
            "spec": {"kind": "real", "dimensions": [{"count": 3}]}, "values": [1, 2, 3],
            "state": "specified"})]
        case = write_case(self.folder, "places.json", case)
        self.add(case, STREAMS + ".Feed.Plain.*", STREAMS + ".Feed.Temperature")
        result = self.check(self.collect("read", case, "--json"), DONE)
        found = [json.loads(line)["found"] for line in result.lines]
        self.assertEqual("same", found[-1])
        self.assertEqual([json.loads(line)["value"] for line in result.lines[:3]], [1, 2, 3])

    def test_neutral_items_are_read_without_an_option(self):
        self.add("demo", "--neutral", "Flowsheet.Stream(Raw Gas).Temperature")
        self.assertEqual(30, self.records("demo")[0]["value"])

    def test_files_and_cases_that_are_not_there(self):
        self.assertIn("missing.json", self.check(self.collect("read", "missing.json"), UNREADABLE).err)
        self.assertIn(self.file_name.name, self.check(self.collect("read", "demo"), UNREADABLE).err)


class Write(CollectTest):
    def setUp(self):
        super().setUp()
        self.case = write_small_case(self.folder)
        self.add(self.case, FEED + ".Temperature", "--unit", "K")
        self.add(self.case, FEED + ".Third", FEED + ".Notes")

    def test_stores_in_order_and_an_empty_value_leaves_a_node(self):
        saved = self.folder / "saved.json"
        result = self.check(self.collect("write", self.case, "310", "", "text", "--save", saved), FAILED)
        self.assertTrue(result.err.endswith(RECORDING), result)
        self.check(run("get", saved, FEED + ".Temperature", "--unit", "K"), DONE, "310\n")
        self.check(run("get", saved, FEED + ".Third"), DONE, "0.333333333333\n")
        self.check(run("get", saved, FEED + ".Notes"), DONE, "text\n")

    def test_values_from_standard_input_in_a_unit(self):
        saved = self.folder / "lines.json"
        self.check(self.collect("write", self.case, "-", "--unit", "C", "--save", saved,
                                stdin="50\n\n\n"), FAILED)
        self.check(run("get", saved, FEED + ".Temperature", "--unit", "K"), DONE, "323.15\n")

    def test_without_one_of_its_stores_the_case_is_not_saved(self):
        saved = self.folder / "lacking.json"
        result = self.check(self.collect("write", self.case, "many", "2", "", "--save", saved), FAILED)
        self.assertIn(f"{FEED}.Temperature: not a number: many\n{saved}: not saved\n", result.err)
        self.assertFalse(saved.exists())

    def test_what_is_no_number_is_refused_and_the_rest_stands(self):
        result = self.check(self.collect("write", self.case, "12 apples", "2", "", "--json"), FAILED)
        self.assertIn(FEED + ".Temperature: no such unit: apples; expected C, K, F, R\n", result.err)
        values = [json.loads(line)["value"] for line in result.lines[:-1]]
        self.assertIn("no such unit: apples", json.loads(result.lines[-1])["error"])
        self.assertAlmostEqual(298.15, values[0])
        self.assertEqual(2, values[1])

    def test_a_value_brings_a_unit_of_its_own(self):
        saved = self.folder / "units.json"
        self.collect("write", self.case, "104F", "", "", "--save", saved)
        self.check(run("get", saved, FEED + ".Temperature", "--unit", "C"), DONE, "40\n")
        refused = self.check(self.collect("write", self.case, "104F", "", "", "--unit", "K"), FAILED)
        self.assertIn(FEED + ".Temperature: two units: F and K\n", refused.err)

    def test_the_solve_after_it_decides_the_exit_status(self):
        streams = "appModel.FlowSheetObjects.Streams.Raw Gas"
        alone = self.folder / "flow.xml"
        self.check(run("collect", "add", alone, "demo", streams + ".Molar Flow"), DONE)
        self.check(run("collect", "write", alone, "demo", "1200", "--csv"), DONE, err="")
        # Less than nothing can't be solved.
        result = self.check(run("collect", "write", alone, "demo", "-5", "--csv"), FAILED)
        self.assertNotEqual("", result.err)

    def test_fractions_that_sum_to_one_stand_as_they_are_given(self):
        fractions = "appModel.FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac"
        chosen = self.folder / "fractions.xml"
        self.check(run("collect", "add", chosen, "demo", fractions + ".Methane", fractions + ".Ethane"), DONE)
        result = self.check(run("collect", "write", chosen, "demo", "0.8", "0.05", "--json"), DONE, err="")
        self.assertEqual([0.8, 0.05], [json.loads(line)["value"] for line in result.lines])
        result = self.check(run("collect", "write", chosen, "demo", "0.8", "0.1", "--json"), DONE)
        self.assertEqual(f"{fractions}: the fractions sum to 1.05 and are normalised\n", result.err)
        self.assertAlmostEqual(0.8 / 1.05, json.loads(result.lines[0])["value"], delta=1e-12)

    def test_another_number_of_values_is_refused(self):
        before = self.case.read_bytes()
        for values in (["1"], ["1", "2", "3", "4"]):
            result = self.check(self.collect("write", self.case, *values), USAGE, "")
            self.assertIn("expected a value for each node, 3 and not " + str(len(values)), result.err)
        self.assertEqual(before, self.case.read_bytes())


class WatchAndRemove(CollectTest):
    def test_changes_are_told_in_the_units_of_the_selection(self):
        self.add("demo", GAS + ".Temperature", "--unit", "K")
        result = self.collect("watch", "demo", "--set", GAS + ".Temperature", "35")
        self.check(result, DONE, f"{GAS}.Temperature\t303.15\t308.15\tK\n", "Solve is complete\n")

    def test_json_has_what_was_removed(self):
        self.add("demo", GAS + ".Temperature", GAS + ".Pressure")
        result = self.check(self.collect("remove", GAS + ".Pressure", "nowhere", "--json"), FAILED)
        first, last = map(json.loads, result.lines)
        self.assertEqual({"removed": GAS + ".Pressure"}, first)
        self.assertEqual({"error": "not in the selection: nowhere", "exit": 1}, last)
        self.assertEqual([GAS + ".Temperature"], self.collect("list").lines)

    def test_removes_what_it_has_and_tells_what_not(self):
        self.add("demo", GAS + ".Temperature", GAS + ".Pressure")
        result = self.collect("remove", "nonsense", GAS + ".Temperature")
        self.check(result, FAILED, "", "not in the selection: nonsense\n")
        self.check(self.collect("list", "--json"), DONE,
                   json.dumps({"path": GAS + ".Pressure", "uom": None}, separators=(",", ":")) + "\n")


class Diff(CollectTest):
    def setUp(self):
        super().setUp()
        self.a = write_small_case(self.folder)
        case = small_case()
        case["flowsheet"]["objects"][0]["variables"]["Temperature"]["value"] = 25.5
        case["flowsheet"]["objects"][0]["variables"]["Notes"]["value"] = "other"
        case["unitSet"] = 2
        self.b = write_case(self.folder, "b.json", case)
        self.add(self.a, FEED + ".Temperature", FEED + ".Pressure", FEED + ".Notes")

    def differing(self, *arguments):
        result = self.collect("diff", self.a, self.b, "--json", *arguments)
        self.assertEqual(FAILED if result.lines else DONE, result.code, result)
        return [json.loads(line) for line in result.lines]

    def test_the_same_case_is_the_same(self):
        self.check(self.collect("diff", self.a, self.a), DONE, "", "")

    def test_values_are_compared_in_the_units_of_the_first(self):
        temperature, notes = self.differing()
        self.assertEqual(FEED + ".Temperature", temperature["path"])
        self.assertEqual([25, "C", "C"], [temperature["a"]["value"], temperature["a"]["uom"],
                                          temperature["b"]["uom"]])
        self.assertAlmostEqual(25.5, temperature["b"]["value"])
        self.assertAlmostEqual(0.5, temperature["difference"])
        self.assertEqual(["first line\nsecond line", "other", None],
                         [notes["a"]["value"], notes["b"]["value"], notes["difference"]])

    def test_tolerances(self):
        def paths(*arguments):
            return [record["path"] for record in self.differing(*arguments)]
        self.assertEqual([FEED + ".Notes"], paths("--tolerance", "C=0.6"))
        self.assertEqual([FEED + ".Notes"], paths("--tolerance", "0.6"))
        self.assertEqual(2, len(paths("--tolerance", "C=0.4", "--tolerance", "1")))
        self.assertEqual(2, len(paths("--tolerance", "K=1")))
        for wrong in ("x", "C=", "=1", "-1", "C=-1", "nan", "C=1x"):
            result = self.collect("diff", self.a, self.b, "--tolerance=" + wrong)
            self.check(result, USAGE, "")
            self.assertIn("UNIT=NUMBER", result.err)

    def test_an_item_that_one_case_lacks_differs(self):
        case = small_case()
        case["flowsheet"]["objects"] = [stream("Other", 25)]
        other = write_case(self.folder, "lacking.json", case)
        result = self.collect("diff", self.a, other, "--json")
        self.assertEqual(FAILED, result.code)
        self.assertEqual([None] * 3, [json.loads(line)["b"] for line in result.lines])
        self.assertEqual(3, result.err.count(": not in "))


class Publish(CollectTest):
    def test_the_case_lists_what_was_published(self):
        case = write_small_case(self.folder)
        self.add(case, FEED + ".Temperature", "--unit", "K")
        result = self.check(run("publish", self.file_name, case), DONE, err="")
        self.assertEqual(str(case.with_suffix(".atpub")), result.lines[0])
        self.assertEqual(self.text(), case.with_suffix(".atpub").read_bytes())
        shown = self.check(run("tree", case, '"QSI Published Variables"'), DONE, err="").lines
        self.assertEqual([f'  "Top.{FEED}.Temperature" := 298.15 K'], shown[1:])
        record = json.loads(self.check(run("publish", self.file_name, case, "--json"), DONE, err="").out)
        self.assertEqual({"file": str(case.with_suffix(".atpub"))}, record)

    def test_what_the_case_does_not_have_is_not_published(self):
        case = write_small_case(self.folder)
        self.add("demo", GAS + ".Temperature")
        other = write_case(self.folder, "unpublished.json", small_case())
        result = self.check(run("publish", self.file_name, other), UNREADABLE, "")
        self.assertIn(GAS + ".Temperature: not in the case", result.err)
        self.assertFalse(other.with_suffix(".atpub").exists())
        self.assertTrue(case.exists())

    def test_neutral_items_are_refused(self):
        case = write_case(self.folder, "neutral.json", small_case())
        self.add("demo", "--neutral", "Flowsheet.Stream(Raw Gas).Temperature")
        self.assertIn("neutral view", self.check(run("publish", self.file_name, case), UNREADABLE).err)
        self.assertFalse(case.with_suffix(".atpub").exists())


class Words(CollectTest):
    def test_a_group_needs_a_word_of_its_own(self):
        self.assertIn("no such word: collect ad; near: collect add",
                      self.check(run("collect", "ad"), USAGE, "").err)
        self.assertIn("Usage: fixtop collect", self.check(run("collect"), USAGE, "").err)
        listed = self.check(run("collect", "--help"), DONE, err="").out
        for word in ("add", "list", "read", "write", "watch", "remove", "diff"):
            self.assertIn(f"\n  {word} ", listed)

    def test_in_the_shell(self):
        done = run("shell", "demo", cwd=self.folder,
                   stdin=f"collect add shell.xml '{GAS}.Temperature'\n"
                         "collect list shell.xml\ncollect diff shell.xml demo demo\n")
        self.assertEqual([GAS + ".Temperature"] * 2, done.lines)
        self.assertIn("no such word: collect diff", done.err)

    def test_completion(self):
        self.check(run("complete", "demo", "collect r"), DONE, "read\nremove\n", "")
        self.check(run("complete", "demo", "coll"), DONE, "collect\n", "")


@unittest.skipUnless(CASES.is_dir(), f"no sample cases in {CASES}")
class RealCases(CollectTest):
    """Against the tables that an independent script took out of the files."""

    def rows(self, table):
        """By path and unit, what the table has of streams."""
        for row in rows_of(table):
            if row["property"].startswith("x:"):
                path = f"{REAL_STREAMS}.{quoted(row['tag'])}.Comp Mole Frac.{quoted(row['property'][2:])}"
                yield path, "", row["value"]
            else:
                variable, unit = PROPERTIES[row["property"]]
                yield f"{REAL_STREAMS}.{quoted(row['tag'])}.{variable}", unit, row["value"]

    def test_every_stream_value_is_read_through_a_saved_selection(self):
        compared = 0
        for table in sorted(CASES.glob("*.csv")):
            case = table.with_suffix(".dwxmz")
            self.file_name = self.folder / (table.stem + ".xml")
            rows = list(self.rows(table))
            for unit in sorted({unit for _, unit, _ in rows}):
                paths = [path for path, of, _ in rows if of == unit]
                self.add(case, *paths, *(["--unit", unit] if unit else []))
            expected = sorted(rows, key=lambda row: row[1])
            records = self.records(case)
            self.assertEqual(len(expected), len(records))
            for (path, unit, value), record in zip(expected, records):
                self.assertEqual("same", record["found"], path)
                if value == "":
                    self.assertIsNone(record["value"], path)
                    continue
                self.assertEqual(unit or None, record["uom"], path)
                self.assertTrue(math.isclose(float(value), record["value"], rel_tol=1e-11,
                                             abs_tol=1e-300), (path, value, record))
                compared += 1
            before = self.text()
            self.add(case, rows[0][0])
            self.assertEqual(before, self.text())
            self.check(self.collect("diff", case, case), DONE, "", "")
        self.assertGreater(compared, 300)

    def test_published_beside_each_case(self):
        for original in sorted(CASES.glob("*.dwxmz")):
            case = shutil.copy(original, self.folder)
            self.file_name = self.folder / (original.stem + "-published.xml")
            self.add(case, REAL_STREAMS + ".*.Temperature")
            self.check(run("publish", self.file_name, case), DONE, err="")
            shown = self.check(run("tree", case, '"QSI Published Variables"'), DONE, err="").lines
            self.assertEqual(len(self.records(case)), len(shown) - 1)


if __name__ == "__main__":
    unittest.main()
