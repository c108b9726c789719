# SPDX-License-Identifier: Apache-2.0
"""get over a small case."""

import json
import os
import subprocess
import unittest

from small_case import STREAMS, write_small_case
from support import DONE, FAILED, PROGRAM, UNREADABLE, ProgramTest, run

FEED = STREAMS + ".Feed 1"


class Read(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.case = write_small_case(cls.folder)

    def get(self, *arguments, stdin=""):
        return run("get", self.case, *arguments, stdin=stdin)

    def test_values_as_text(self):
        values = {"Temperature": "25", "Vapour Fraction": "0.5", "Third": "0.333333333333",
                  "Notes": "first line\\nsecond line", "Word": "3.50", "Unset": "", "Mode": "Slow",
                  "\"A & B\"": "1.5", "\"Dot.ted\"": "3.5",
                  "\"Say \"\"so\"\"\"": "4.5", "Low <": "2.5"}
        for name, value in values.items():
            with self.subTest(name):
                self.check(self.get(f"{FEED}.{name}"), DONE, value + "\n", "")
        self.check(self.get(*(f"{FEED}.{name}" for name in values)), DONE,
                   "".join(value + "\n" for value in values.values()), "")

    def test_names_may_be_other_than_ascii(self):
        self.check(self.get(STREAMS + ".Größe.Temperature"), DONE, "300\n", "")

    def test_parentheses_end_a_path_of_the_raw_view(self):
        self.check(self.get(f"{FEED}(status).Temperature"), DONE, "OK\n", "")

    def test_attributes(self):
        self.check(self.get(FEED, "--attr", "type"), DONE, "MaterialStreamObject\n", "")
        self.check(self.get(f"{FEED}(type)"), DONE, "MaterialStreamObject\n", "")
        self.check(self.get(f"{FEED}.Temperature(uom)", f"{FEED}.(status)"), DONE, "C\nOK\n", "")
        # Listed without a value, and not listed at all.
        self.check(self.get(f"{FEED}.Temperature", "--attr", "upper_limit"), DONE, "\n", "")
        self.check(self.get(FEED, "--attr", "statsu"), FAILED, "", f"{FEED}: no such attribute: statsu; near: status\n")
        record = json.loads(self.get(FEED, "--attr", "nonsense", "--json").out)
        self.assertEqual({"path": FEED, "error": "no such attribute: nonsense"}, record)

    def test_units(self):
        self.check(self.get(f"{FEED}.Temperature", "--unit", "K"), DONE, "298.15\n", "")
        self.check(self.get(f"{FEED}.Temperature", "--unit", "F"), DONE, "77\n", "")
        self.check(self.get(f"{FEED}.Pressure", "--unit", "bar"), DONE, "1\n", "")

    def test_json_has_all_digits_of_the_case_file(self):
        self.assertEqual(1 / 3, json.loads(self.get(FEED + ".Third", "--json").out)["value"])
        file = self.folder / "digits.json"
        self.check(run("solve", "demo", "--save", file), DONE)
        objects = json.loads(file.read_text())["flowsheet"]["objects"]
        for each in objects[:5]:
            value = each["variables"]["Mass Flow"]["value"]
            read = run("get", file, f"{STREAMS}.{each['name']}.Mass Flow", "--json")
            self.assertEqual(value, json.loads(self.check(read, DONE).out)["value"])

    def test_a_path_to_several_nodes_is_refused_and_they_are_named(self):
        several = STREAMS + ".*.Temperature"
        paths = [FEED + ".Temperature", STREAMS + '."Feed.2".Temperature', STREAMS + ".Größe.Temperature"]
        told = "".join(f"\n  {path}" for path in paths)
        problem = f"leads to several nodes: {several}{told}"
        self.check(self.get(several), FAILED, "", problem + "\n")
        result = self.check(self.get(several, FEED + ".Pressure", "--json"), FAILED, err=problem + "\n")
        self.assertEqual({"path": several, "error": problem}, json.loads(result.lines[0]))
        self.assertEqual(100, json.loads(result.lines[1])["value"])
        self.check(self.get(several, "--first"), DONE, "25\n", "")
        self.check(self.get(several, "--all"), DONE, "25\n-40\n300\n", "")
        records = [json.loads(line) for line in self.check(self.get(several, "--all", "--json"), DONE).lines]
        self.assertEqual(paths, [record["path"] for record in records])
        self.check(self.get(FEED + ".Nowhere", "--all"), FAILED, "", f"nothing matches: {FEED}.Nowhere\n")
        self.check(self.get(STREAMS + ".*[Temperature=300].Temperature"), DONE, "300\n", "")
        for word in ("tree", "attrs", "ls"):
            self.check(run(word, self.case, several), FAILED, "", problem + "\n")

    def test_lists_of_the_neutral_view_want_a_key(self):
        path = "Flowsheet.Stream(Raw Gas).Composition.Component.MoleFraction"
        result = self.check(run("get", "demo", "--neutral", path), FAILED, "")
        self.assertIn("\n  Flowsheet.Stream(Raw Gas).Composition.Component(CO2).MoleFraction\n", result.err)
        self.assertTrue(result.err.endswith("\n  and more\n"), result)
        values = self.check(run("get", "demo", "--neutral", path, "--all"), DONE, err="").lines
        self.assertEqual(["0.02", "0.02", "0.75", "0.1"], values[:4])
        self.check(run("get", "demo", "--neutral", path.replace("Component", "Component(CO2)")), DONE, "0.02\n", "")

    def test_objects_and_lists_tell_what_they_hold(self):
        objects = "appModel.FlowSheetObjects"
        held = ["Streams", "UnitOps", "Utilities", "Reactions"]
        self.check(run("get", "demo", objects), DONE, "\n",
                   f"{objects}: no value, but Flowsheet with {', '.join(held)}\n")
        record = json.loads(self.check(run("get", "demo", objects, "--json"), DONE, err="").out)
        self.assertEqual((None, held), (record["value"], record["holds"]))
        streams = run("ls", "demo", objects + ".Streams").lines
        self.check(run("get", "demo", objects + ".Streams"), DONE, "\n",
                   f"{objects}.Streams: no value, but Streams with {', '.join(streams[:6])} and {len(streams) - 6} more\n")
        neutral = json.loads(run("get", "demo", "--neutral", "Flowsheet.Stream(Raw Gas).Composition", "--json").out)
        self.assertEqual(("Object(QSICompositionProperties)", "CompositionBasis", "Component(Nitrogen)"),
                         (neutral["type"], *neutral["holds"][:2]))
        self.check(self.get(FEED + ".Unset"), DONE, "\n", "")
        self.check(self.get("-", stdin=FEED + "\n"), DONE, "\n", "")

    def test_refused_units(self):
        path = f"{FEED}.Temperature"
        self.check(self.get(path, "--unit", "bar"), FAILED, "",
                   f"{path}: no such unit: bar; expected C, K, F, R\n")
        result = self.get(path, f"{FEED}.Pressure", f"{FEED}.Notes", "--unit", "bar")
        self.check(result, FAILED, "1\n")
        self.assertEqual([f"{FEED}.Temperature: no such unit: bar; expected C, K, F, R",
                          f"{FEED}.Notes: no such unit: bar; it has none"], result.err.split("\n")[:-1])

    def test_a_unit_for_what_has_no_value_is_answered_with_what_takes_it(self):
        raw, neutral = "appModel.FlowSheetObjects.Streams.Raw Gas", "Flowsheet.Stream(Raw Gas)"
        for view, path, unit, rest in (
                ([], raw, "barg", "Molar Enthalpy and 11 more; in barg can be shown: Pressure"),
                ([], raw, "lux", "Molar Enthalpy and 11 more; in lux can be shown: nothing"),
                ([], raw + ".Comp Mole Frac", "K", "n-Butane and 2 more; in K can be shown: nothing"),
                ([], "", "K", "TopNode with appModel, QSI Published Variables, Published Variables; in K can be shown: nothing"),
                (["--neutral"], neutral, "kg/h", "; in kg/h can be shown: MassFlow")):
            with self.subTest(path, unit=unit):
                result = self.check(run("get", "demo", *view, path, "--unit", unit), FAILED, "")
                self.assertTrue(result.err.startswith(f"{path or 'the top node'}: no value, but "), result)
                self.assertTrue(result.err.endswith(rest + "\n"), result)
                record = json.loads(run("get", "demo", *view, path, "--unit", unit, "--json").out)
                self.assertEqual(path, record["path"])
                self.assertTrue(result.err.endswith(f": {record['error']}\n"), result)

    def test_units_as_they_are_typed(self):
        raw, neutral = "appModel.FlowSheetObjects.Streams.Raw Gas.", "Flowsheet.Stream(Raw Gas)."
        self.check(run("get", "demo", raw + "Temperature", "--unit", "deg F"), DONE, "86\n", "")
        self.check(run("get", "demo", "--neutral", neutral + "MolarFlow", "--unit", "kgmole/hr"), DONE, "1000\n", "")
        self.check(run("set", "demo", raw + "Pressure", "58.98675 bar(g)"), DONE, "58.98675\n", "")
        self.check(run("set", "demo", "--neutral", neutral + "Temperature", "303.15", "--unit", "kelvin"), DONE,
                   "303.15\n", "")
        # 60 bar are 58.98675 above the atmosphere.
        table = run("table", "demo", raw[:-1], "Pressure", "Temperature", "--csv", "--unit", "Pressure=barg",
                    "--unit", "Temperature=°F")
        self.check(table, DONE, "Name,Pressure [barg],Temperature [F]\nRaw Gas,58.98675,86\n", "")
        shown = run("tree", "demo", raw[:-1], "--unit", "degF", "--unit", "psi", "--depth", "1").lines
        self.assertIn("  Temperature := 86 F", shown)
        self.assertIn("  Pressure := 870.226426381 psia", shown)

    def test_filters(self):
        self.check(self.get(STREAMS + '.*[Temperature="-40"](id)'), DONE, "Feed.2\n", "")
        self.check(self.get(STREAMS + ".#2(id)"), DONE, "Größe\n", "")

    def test_another_node_that_passes_a_filter_is_not_meant(self):
        # The pressure is calculated; what is specified beside it is of other names.
        path = FEED + ".Pressure[(status)=Specified]"
        for several in ([], ["--first"], ["--all"]):
            self.check(self.get(path, *several), FAILED, "", f"nothing matches: {path}\n")
        self.check(run("set", self.case, path, "7"), FAILED, "", f"nothing matches: {path}\n")
        self.check(self.get(FEED + ".Temperature[(status)=Specified]"), DONE, "25\n", "")
        self.check(self.get(FEED + ".*[(status)=Calculated]"), DONE, "100\n", "")

    def test_a_file_that_is_not_there(self):
        self.check(run("get", "nofile", "appModel"), UNREADABLE, "",
                   "nofile: there is no such file; expected .dwxmz or .json\n")
        text = self.file("notes.txt", "notes")
        self.check(run("get", text, "appModel"), UNREADABLE, "",
                   f"{text}: no reader for this kind of file; expected .dwxmz or .json\n")

    def test_missing_nodes(self):
        self.check(self.get(f"{STREAMS}.Fed 1.Temperature"), FAILED, "",
                   f"no such node: {STREAMS}.Fed 1.Temperature\n  found: {STREAMS}\n"
                   "  near: Feed 1\n")
        self.check(self.get(f"{FEED}.Temprature"), FAILED, "",
                   f"no such node: {FEED}.Temprature\n  found: {FEED}\n  near: Temperature\n")
        self.check(self.get("zzz"), FAILED, "", "no such node: zzz\n  nothing of it was found\n")

    def test_missing_attributes_in_parentheses(self):
        for path, near in (("(nonsense)", ""), (".Temperature(nonsense)", ""),
                           (".Temperature(statos)", ".Temperature(status)"),
                           (".Temperature(nonsense).Notes", "")):
            found = FEED + path.split("(")[0]
            near = f"  near: {near.lstrip('.')}\n" if near else ""
            self.check(self.get(FEED + path), FAILED, "",
                       f"no such node: {FEED}{path}\n  found: {found}\n{near}")
        # What any node may be asked for is empty where there is none.
        self.check(self.get(FEED + "(uom)", FEED + ".Notes(uom)", "appModel(attachments)"), DONE,
                   "\n\n\n", "")

    def test_the_other_paths_are_still_read(self):
        result = self.get("zzz", f"{FEED}.Temperature", "a[b", f"{FEED}.Word")
        self.check(result, FAILED, "25\n3.50\n", "no such node: zzz\n  nothing of it was found\n"
                   "Parse error, ] expected in: a[b\n")

    def test_json(self):
        result = self.get(f"{FEED}.Temperature", f"{FEED}.Unset", f"{FEED}.Notes", "zzz", "--json")
        self.check(result, FAILED)
        records = [json.loads(line) for line in result.lines]
        self.assertEqual(
            [{"path": f"{FEED}.Temperature", "value": 25, "uom": "C", "status": "Specified"},
             {"path": f"{FEED}.Unset", "value": None, "uom": "kPa", "status": "Missing"},
             {"path": f"{FEED}.Notes", "value": "first line\nsecond line", "uom": None,
              "status": "Specified"}], records[:3])
        self.assertEqual("zzz", records[3]["path"])
        self.assertIn("no such node", records[3]["error"])
        unit = self.get(f"{FEED}.Temperature", "--json", "--unit", "K")
        self.assertEqual({"path": f"{FEED}.Temperature", "value": 298.15, "uom": "K",
                          "status": "Specified"}, json.loads(unit.out))

    def test_what_is_no_number_in_a_unit_tells_none(self):
        for attribute, value in (("type", "Real"), ("uom", "K"), ("status", "Specified")):
            result = self.check(self.get(f"{FEED}.Temperature", "--attr", attribute, "--unit", "K", "--json"), DONE)
            record = json.loads(result.out)
            self.assertEqual((value, None), (record["value"], record["uom"]))

    def test_paths_from_standard_input(self):
        result = self.get("-", stdin=f"{FEED}.Temperature\r\n{FEED}.Word\n{FEED}.Unset")
        self.check(result, DONE, "25\n3.50\n\n", "")
        result = self.get(f"{FEED}.Mode", "-", f"{FEED}.Word", stdin=f"{FEED}.Temperature\n")
        self.check(result, DONE, "Slow\n25\n3.50\n", "")
        self.check(self.get("-", stdin=""), DONE, "", "")

    def test_ten_thousand_paths_in_one_run(self):
        paths = [f"{FEED}.Temperature", f"{STREAMS}.\"Feed.2\".Temperature", f"{FEED}.Unset",
                 f"{FEED}.Mode"] * 2500
        result = self.get("-", stdin="\n".join(paths) + "\n")
        self.check(result, DONE, "25\n-40\n\nSlow\n" * 2500, "")

    @unittest.skipIf(os.name == "nt" or len(PROGRAM) > 1, "needs a folder that can be opened")
    def test_standard_input_that_cannot_be_read(self):
        folder = os.open(self.folder, os.O_RDONLY)
        self.addCleanup(os.close, folder)
        done = subprocess.run(PROGRAM + ["get", str(self.case), f"{FEED}.Word", "-"],
                              stdin=folder, capture_output=True, timeout=600, check=False)
        self.assertEqual(
            (UNREADABLE, b"3.50\n", b"standard input can't be read\n"),
            (done.returncode, done.stdout, done.stderr))


class HostPaths(ProgramTest):
    def test_monikers_are_paths_from_everywhere(self):
        streams = "appModel.FlowSheetObjects.Streams"
        paths = [f"{streams}.Raw Gas.Temperature", f'{streams}."Raw Gas"."Comp Mole Frac".Methane',
                 "appModel.FlowSheetObjects.UnitOps.E-100.Duty",
                 "appModel.FlowSheetObjects.UnitOps.Stabiliser.UnitOps.V-201.Pressure Drop"]
        monikers = run("get", "demo", *paths, "--attr", "moniker").lines
        self.assertEqual(4, len(monikers))
        values = self.check(run("get", "demo", *paths), DONE, err="").out
        self.check(run("get", "demo", *monikers), DONE, values, "")
        for place in ("appModel", streams):
            lines = [f"cd {place}"] + [f"get '{moniker}'" for moniker in monikers]
            self.check(run("shell", "demo", stdin="\n".join(lines) + "\n"), DONE, values, "")
        self.check(run("get", "demo", "/FlowSht.1/StreamObject.400(No Gas):Double.201"), FAILED, "")

    def test_names_of_elements_stand_in_them(self):
        for path in ("/FlowSht.1/StreamObject.400(Raw Gas):Double.501.2",
                     "/FlowSht.1/StreamObject.400(Raw Gas)/:Double.501(Methane)"):
            self.check(run("get", "demo", path), DONE, "0.75\n", "")
            self.check(run("get", "demo", path, "--attr", "id"), DONE, "Methane\n", "")


if __name__ == "__main__":
    unittest.main()
