# SPDX-License-Identifier: Apache-2.0
"""Scripts of another process read, store, solve, walk, collect and paste."""

import csv
import json
import math
import unittest

from support import CASES, CLIENT, PLANT, SCRIPTS, SOURCE, HovexTest, main, script, start

DEMO = SOURCE / "casehost/standard/demo"
STREAMS = "appModel.FlowSheetObjects.Streams."
FEED, PRODUCT = STREAMS + "Feed.", STREAMS + "Product."
# The properties in a line that table.vbs prints, in its order and units.
COLUMNS = ["T", "P", "molar flow", "mass flow", "vapour fraction"]

# Feed has 25 C and 60 bar, Product 300 K and 500 kPa in the file; 0 C is 273.15 K.
READ = f"""\
open: False
open: True
Stream Feed Flowsheet.Stream(Feed) Object(QSIMaterialStream)
25 C Specified
298.15
5
default property: 26
letters: 300
{FEED}Pressure 60 Real
300 Product Streams
attribute that is not there: True
exists: False True
not in this case: True 0 0
raw: {STREAMS}Feed, neutral: Flowsheet.Stream(Feed)
parent of the root: True
F
open: False
"""

ERRORS = f"""\
before a case is open: 80040200 no case is open: call Open with a file, or with "demo"
no such file: 80040204 Z:\\nosuch\\folder\\no.json: can't be read: No such file or directory
a number for a file: D Type mismatch
no argument: 1C2 Wrong number of arguments or invalid property assignment
a case: 0 
a path that leads nowhere: 80040201 no such node: {STREAMS}Feedd.Temperature |  found: {STREAMS[:-1]} |  near: Feed
no path: 80040205 appModel..x[: Parse error, ] expected in: appModel..x[
a unit of another quantity: 80040202 Flowsheet.Stream(Feed).Temperature: no such unit: kg; expected C, K, F, R
no number: 80040202 Flowsheet.Stream(Feed).Temperature: not a number: warm
no member: 1B6 Object doesn't support this property or method
beyond the last: 80040200 no element 2: there are 2, counted from 0
no such key: 80040201 no such node: Stream(Feet) |  found: Stream |  near: Stream(Feed)
no such units: 80040204 no such set of units: Imperial; expected Process, SI, Field
half a selection: 80040200 the text is no selection
a file that can't be written: 80040204 Z:\\nosuch\\folder\\copy.json: can't be written: Path not found
after all that: 25
"""

WRITE = """\
40 C: 313.15
300 K: 26.85
45 bar: 4500
4.6 MPa as text: 46
by the member: 55.5
in the unit that is shown: 7 bar, 700
taken away: True
saved: 46 55.5
"""

# The mixer joins Raw Gas, which is stored, and Tail Gas, 150 kmol/h.
SOLVE = """\
solves on store: True
mixed: 1250, old: False
mixed: , none: True
solved: True Solve is complete
mixed: 1350, old: False
started, then complete: True, mixed: 1050
stopped or complete, and solved again: True, mixed: 1150
"""

COLLECT = f"""\
new: True
new: True
new: True
new: False
count: 3
values: [298.15][5][26.85]
units: [K][bar][]
statuses: [Specified][Specified][Specified]
item: {FEED}Temperature
item: {PRODUCT}Pressure
item: {PRODUCT}Temperature
answers: [][][] values: [310][6][26.85]
first answer: [] second: [not a number: many] values: [320][6][26.85]
item 2: {PRODUCT}Temperature, unit of item 1: bar
removed: True False
left: [{FEED}Temperature][{PRODUCT}Temperature]
loaded: [{FEED}Temperature][{PRODUCT}Pressure][{PRODUCT}Temperature] [K][bar][] [Same][Same][Same]
elsewhere: [Gone][Same][Same], item 0: True
values there: [No element under this node][5][26.85]
neutral: Flowsheet.Stream(Product).Temperature [300]
"""

PASTE = f"""\
pasted: [{PRODUCT}Temperature][{FEED}Pressure]
values: 300 60
empty: 0
"""

RULES = """\
units: C bar
texts beside numbers: [not a number: warm][] 25 6
nothing beside numbers: [][] 25 7
too many values: 80040200 3 values for 2 items
a store into a list: 80040200 Stream is a list: store into one of it
no file: 80040200 Save needs the name of a file
a text for a truth: D Type mismatch
a text with NUL: D Type mismatch
after a failed Open: True 25
closed: False
a store into what is closed: 80040203 the node: is no longer there
the path of what is closed: 80040203 the node: is no longer there
opened: True True
solved: True True
stored: False [EX-100: product pressure 3000 kPa is above feed pressure 10 kPa]
solved: False [EX-100: product pressure 3000 kPa is above feed pressure 10 kPa]
"""


def selection(*paths):
    items = "".join(f"<Item><Path>{path}</Path></Item>" for path in paths)
    return f"<Selection><Items>{items}</Items></Selection>"


def demo_objects(word):
    """Names of the objects of the built-in case that its files describe, by a word of their types."""
    names = set()
    for file in DEMO.glob("*.json"):
        flowsheet = json.loads(file.read_text(encoding="utf-8")).get("flowsheet", {})
        names |= {each["name"] for each in flowsheet.get("objects", ())
                  if word in each.get("type", "")}
    return names


class Scripts(HovexTest):
    def check(self, name, code, expected, *arguments):
        self.assertEqual((code, expected), script(SCRIPTS / (name + ".vbs"), *arguments))

    def without_feed(self):
        case = json.loads(PLANT.read_text(encoding="utf-8"))
        case["flowsheet"]["objects"] = [each for each in case["flowsheet"]["objects"]
                                        if each["name"] != "Feed"]
        path = self.folder / "without_feed.json"
        path.write_text(json.dumps(case), encoding="utf-8")
        return path

    def test_read(self):
        self.check("read", 11, READ, PLANT)

    def test_errors_are_told_with_text_and_path(self):
        self.check("errors", 12, ERRORS, PLANT)

    def test_write_in_units_and_save(self):
        saved = self.folder / "saved.json"
        self.check("write", 13, WRITE, PLANT, saved)
        objects = {each["name"]: each["variables"] for each in
                   json.loads(saved.read_text(encoding="utf-8"))["flowsheet"]["objects"]}
        self.assertEqual(4600, objects["Feed"]["Pressure"]["value"])
        self.assertNotIn("value", objects["Product"].get("Pressure", {}))

    def test_walk(self):
        code, out = script(SCRIPTS / "walk.vbs")
        self.assertEqual(14, code, out)
        lines = out.splitlines()
        streams = [line.removeprefix("stream ") for line in lines if line.startswith("stream ")]
        self.assertEqual(len(streams), len(set(streams)))
        described = demo_objects("MaterialStream")
        self.assertGreater(len(described), 10)
        self.assertLessEqual(set(streams), described)
        self.assertGreater(len(streams), 10)
        self.assertEqual(
            [f"child {name} FlowSheetObjects" for name in ("Streams", "UnitOps", "Utilities", "Reactions")]
            + ["by name: UnitOps", "match Raw Gas", "match Tail Gas", "match Mixed Gas", "pairs: True",
               "none: 0", "first child: appModel"], lines[len(streams):])

    def test_solve(self):
        self.check("solve", 15, SOLVE)

    def test_what_is_mistaken_is_told_and_nothing_lost(self):
        self.check("rules", 22, RULES, PLANT)

    def test_collect(self):
        chosen = self.folder / "chosen.xml"
        self.check("collect", 16, COLLECT, PLANT, chosen, self.without_feed())
        self.assertIn("<CollectionBackup", chosen.read_text(encoding="utf-8"))

    def test_paste_text(self):
        self.check("paste", 17, PASTE, PLANT)

    def test_paste_from_the_clipboard(self):
        both = f"pasted: [{FEED}Temperature][{PRODUCT}Pressure]\n"
        whole = selection(FEED + "Temperature", PRODUCT + "Pressure")
        rows = [("whole.xml", whole, True, both), ("unterminated.xml", whole, False, both),
                ("empty.xml", "", True, "nothing\n"),
                ("broken.xml", whole[:-20], True, "refused: the text is no selection\n"),
                (None, "", False, "nothing\n")]
        for name, text, is_terminated, expected in rows:
            with self.subTest(name):
                self.assertEqual((18, expected), self.pasted(name, text, is_terminated))

    def pasted(self, name, text, is_terminated):
        words = ["clip"]
        if name:
            (self.folder / name).write_text(text, encoding="utf-8")
            words += [self.folder / name, *(["terminated"] if is_terminated else [])]
        holder = start(CLIENT, *words)
        try:
            self.assertEqual("there", holder.stdout.readline().strip())
            return script(SCRIPTS / "clipboard.vbs", PLANT)
        finally:
            holder.communicate("\n", timeout=60)

    @unittest.skipUnless(CASES.is_dir(), f"no sample cases in {CASES}")
    def test_streams_of_real_cases(self):
        for table in sorted(CASES.glob("*.csv")):
            with self.subTest(table.stem):
                expected = {}
                with open(table, encoding="utf-8", newline="") as file:
                    for row in csv.DictReader(file):
                        if row["type"] == "MaterialStream" and row["property"] in COLUMNS:
                            expected.setdefault(row["tag"], {})[row["property"]] = row["value"]
                self.compare(expected, *script(SCRIPTS / "table.vbs", table.with_suffix(".dwxmz")))

    def compare(self, expected, code, out):
        self.assertEqual(19, code, out)
        rows = [line.split("\t") for line in out.splitlines()]
        self.assertEqual(sorted(expected), sorted(row[0] for row in rows))
        self.assertGreater(len(rows), 3)
        for tag, *values in rows:
            self.assertEqual(len(COLUMNS), len(values))
            for column, text in zip(COLUMNS, values):
                wanted = expected[tag][column]
                if wanted == "":
                    self.assertEqual("", text, (tag, column))
                else:
                    self.assertTrue(math.isclose(float(wanted), float(text), rel_tol=1e-11),
                                    (tag, column, wanted, text))


if __name__ == "__main__":
    main()
