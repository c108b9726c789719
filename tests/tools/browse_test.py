# SPDX-License-Identifier: Apache-2.0
"""ls, tree and attrs over a small case: exactly what they write."""

import json
import unittest

from small_case import STREAMS, UNITS, of_kind, small_case, write_case, write_small_case
from support import DONE, FAILED, UNREADABLE, ProgramTest, run

FEED = STREAMS + ".Feed 1"

FEED_TREE = """\
Feed 1  (MaterialStreamObject)
  Temperature := 25 C
  Pressure = 100 kPa
  Vapour Fraction := 0.5
  Notes := first line\\nsecond line
  Word := 3.50
  Unset = (none)
  Mode := Slow
  A &amp; B := 1.5
  Low &lt; := 2.5
  Dot.ted := 3.5
  Say &quot;so&quot; := 4.5
  Third := 0.333333333333
  Upstream Unit Operations  (Array)
    Elem0 -> (none)
  Downstream Unit Operations  (Array)
    Elem0 -> (none)
"""
RING_TREE = """\
UnitOps  (UnitOps)
  A  (MixerOpObject)
    To -> B
    Self -> A
  B  (MixerOpObject)
    To -> A
  T  (TemplateOpObject)
    Streams  (Streams)
    UnitOps  (UnitOps)
      In  (MixerOpObject)
        Up -> T
        Out -> A
    Utilities  (Utilities)
    Reactions  (Reactions)
"""


def attached(name, kind="MixerOpObject", **to):
    return {"name": name, "type": kind,
            "variables": {key: of_kind("attachment", path) for key, path in to.items()}}


class Rings(ProgramTest):
    """Objects that are attached to each other, and to the one that they stand in."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        group = {**attached("T", "TemplateOpObject"),
                 "flowsheet": {"objects": [attached("In", Up="/T", Out="/A")]}}
        objects = [attached("A", To="B", Self="A"), attached("B", To="A"), group]
        cls.case = write_case(cls.folder, "ring.json",
                              {**small_case(), "flowsheet": {"objects": objects}})

    def test_tree_shows_each_object_once(self):
        self.check(run("tree", self.case, UNITS), DONE, RING_TREE, "")

    def test_path_goes_round_once(self):
        for steps, name in ((".To", "B"), (".To.To", "A"), (".To.To.To", "B")):
            self.check(run("get", self.case, UNITS + ".A" + steps), DONE, name + "\n", "")
        self.check(run("ls", self.case, UNITS + ".A.To.To"), DONE, "To\nSelf\n", "")
        self.check(run("ls", self.case, UNITS + ".A.To.To.To"), DONE, "", "")
        self.check(run("ls", self.case, UNITS + ".A.Self.Self"), DONE, "", "")


class Browse(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.case = write_small_case(cls.folder)

    def test_ls(self):
        lists = {
            "": "appModel\nQSI Published Variables\nPublished Variables\n",
            "appModel": "FlowSheetObjects\nBasis\nDataBook\n",
            "appModel.FlowSheetObjects": "Streams\nUnitOps\nUtilities\nReactions\n",
            STREAMS: "Feed 1\nFeed.2\nGröße\n",
            UNITS: "Mixer 1\n",
            FEED + ".Temperature": "",
        }
        for path, names in lists.items():
            with self.subTest(path):
                self.check(run("ls", self.case, path), DONE, names, "")
        self.check(run("ls", self.case), DONE, lists[""], "")

    def test_ls_json(self):
        result = self.check(run("ls", self.case, STREAMS, "--json"), DONE, err="")
        self.assertEqual(
            [{"name": "Feed 1", "path": FEED, "type": "MaterialStreamObject"},
             {"name": "Feed.2", "path": STREAMS + '."Feed.2"', "type": "MaterialStreamObject"},
             {"name": "Größe", "path": STREAMS + ".Größe", "type": "MaterialStreamObject"}],
            [json.loads(line) for line in result.lines])

    def test_tree_of_a_stream(self):
        self.check(run("tree", self.case, FEED), DONE, FEED_TREE, "")

    def test_tree_depth(self):
        self.check(run("tree", self.case, FEED, "--depth", "0"), DONE,
                   "Feed 1  (MaterialStreamObject)\n", "")
        self.check(run("tree", self.case, "appModel", "--depth", "1"), DONE,
                   "appModel  (appModel)\n  FlowSheetObjects  (Flowsheet)\n  Basis  (Basis)\n"
                   "  DataBook  (Basis)\n", "")

    def test_tree_stops_at_attachments(self):
        self.check(run("tree", self.case, UNITS), DONE,
                   "UnitOps  (UnitOps)\n  Mixer 1  (MixerOpObject)\n    Inlet -> Feed 1\n"
                   "    Note = (none)\n", "")

    def test_tree_follows_attachments_on_demand(self):
        result = run("tree", self.case, UNITS + ".Mixer 1.Inlet", "--attachments")
        below = FEED_TREE.split("\n", 1)[1]
        self.check(result, DONE, "Inlet -> Feed 1\n" + below, "")

    def test_tree_of_everything_ends(self):
        result = self.check(run("tree", self.case), DONE, err="")
        self.assertTrue(result.out.startswith("Top  (TopNode)\n  appModel  (appModel)\n"), result)
        indented = "".join(" " * 8 + line + "\n" for line in FEED_TREE.splitlines())
        self.assertIn(indented, result.out)

    def test_tree_json(self):
        path = STREAMS + '."Feed.2"'
        result = self.check(run("tree", self.case, path, "--json"), DONE, err="")

        def variable(name, value, uom, status):
            return {"path": f"{path}.{name}", "name": name, "type": "Real", "value": value, "uom": uom,
                    "status": status}

        def ports(name):
            port = {"path": f"{path}.{name}.Elem0", "name": "Elem0", "type": "Attachment", "value": None,
                    "uom": None, "status": "Missing"}
            return {"path": f"{path}.{name}", "name": name, "type": "Array", "children": [port]}

        self.assertEqual(
            {"path": path, "name": "Feed.2", "type": "MaterialStreamObject", "children": [
                variable("Temperature", -40, "C", "Specified"), variable("Pressure", 100, "kPa", "Calculated"),
                variable("Vapour Fraction", 0.5, None, "Specified"), ports("Upstream Unit Operations"),
                ports("Downstream Unit Operations")]},
            json.loads(result.out))

    def test_tree_in_units(self):
        lines = self.check(run("tree", self.case, FEED, "--unit", "K", "--unit", "bar"), DONE, err="").lines
        self.assertEqual(["  Temperature := 298.15 K", "  Pressure = 1 bar", "  Vapour Fraction := 0.5"], lines[1:4])
        lines = self.check(run("tree", self.case, FEED, "--units", "Field"), DONE, err="").lines
        self.assertEqual("  Temperature := 77 F", lines[1])
        found = self.check(run("tree", "demo", "--neutral", "Flowsheet.Stream(Raw Gas)", "--units", "SI", "--json"), DONE)
        temperature, = [each for each in json.loads(found.out)["children"] if each["name"] == "Temperature"]
        self.assertEqual((303.15, "K", "Flowsheet.Stream(Raw Gas).Temperature"),
                         tuple(temperature[name] for name in ("value", "uom", "path")))
        self.check(run("tree", self.case, FEED, "--units", "Nonsense"), UNREADABLE, "")
        plain = run("tree", self.case, FEED, "--unit", "K").out
        result = self.check(run("tree", self.case, FEED, "--unit", "K", "--unit", "lux", "--unit", "mW"), FAILED, plain)
        self.assertEqual("no value is shown in: lux, mW\n", result.err)
        told = run("tree", self.case, FEED, "--unit", "lux", "--json").out
        self.assertEqual({"error": "no value is shown in: lux", "exit": 1}, json.loads(told.splitlines()[-1]))

    def test_attrs(self):
        result = self.check(run("attrs", self.case, FEED + ".Temperature"), DONE, err="")
        attributes = dict(line.split("\t", 1) for line in result.lines)
        self.assertEqual(len(result.lines), len(attributes))
        for name, value in {"id": "Temperature", "value": "25", "dimension": "Temperature",
                            "uom": "C", "type": "Real", "status": "Specified", "can_enter": "1",
                            "isleaf": "1"}.items():
            self.assertEqual(value, attributes.get(name), name)
        self.assertIn("\\n", attributes["uom_options"])
        self.assertIn("K", attributes["uom_options"].split("\\n"))

    def test_attrs_json(self):
        plain = run("attrs", self.case, STREAMS)
        result = self.check(run("attrs", self.case, STREAMS, "--json"), DONE, err="")
        records = [json.loads(line) for line in result.lines]
        self.assertEqual([line.split("\t")[0] for line in plain.lines], [r["name"] for r in records])
        self.assertIn({"name": "type", "value": "Streams"}, records)
        self.assertIn({"name": "has_children", "value": 1}, records)

    def test_no_such_node(self):
        for word in ("ls", "tree", "attrs"):
            with self.subTest(word):
                self.check(run(word, self.case, STREAMS + ".Fed 1"), FAILED, "",
                           f"no such node: {STREAMS}.Fed 1\n  found: {STREAMS}\n"
                           "  near: Feed 1\n")


if __name__ == "__main__":
    unittest.main()
