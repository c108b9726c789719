# SPDX-License-Identifier: Apache-2.0
"""The neutral view: classes of the library in place of the simulator's objects."""

import csv
import io
import json
import math
import os
import pathlib
import re
import unittest

from small_case import array, of_kind, real, small_case, stream, write_case
from support import CASES, DONE, FAILED, UNREADABLE, ProgramTest, run

SOURCE = pathlib.Path(os.environ["FIXTOP_SOURCE"])

LIBRARY = """<QZClassLibrary Name="own">
 <Class Name="QSISimulation"/>
 <ClassAttributes Name="QSISimulation">
  <Attribute Name="Plant" Type="Object" Multiplicity="1"><ClassName>Plant</ClassName></Attribute>
 </ClassAttributes>
 <Enumeration Name="eSpeed" EnumIsClosed="1"><Option Name="High"/><Option Name="Low"/></Enumeration>
 <Class Name="Base"/>
 <ClassAttributes Name="Base"><Attribute Name="Label" Type="String" Multiplicity="1"/></ClassAttributes>
 <Class Name="Plant"><Superclass>Base</Superclass></Class>
 <ClassAttributes Name="Plant">
  <Attribute Name="Heat" Type="Real" Multiplicity="1"><QuantityType>Temperature</QuantityType></Attribute>
  <Attribute Name="Speed" Type="Enumeration" Multiplicity="1"><EnumName>eSpeed</EnumName></Attribute>
  <Attribute Name="Lost" Type="Real" Multiplicity="1"/>
  <Attribute Name="Unmapped" Type="Real" Multiplicity="1"/>
 </ClassAttributes>
</QZClassLibrary>
"""
MAP = """<CCDMMapFile Name="own">
 <TranslateName>Own</TranslateName>
 <Linkage><DLL>fixtop.dll</DLL></Linkage>
 <Translate Type="Function">Find1</Translate>
 <TopNode FunctionName="GetTopHovexEntry"/>
 <Class Name="QSISimulation">
  <Attribute Name="Plant"><Translate Type="Map">FlowSheetObjects.Streams.Only</Translate></Attribute>
 </Class>
 <Class Name="Base">
  <Attribute Name="Label"><Translate Type="Dummy"><NodeAttributes>
   <Attribute Name="value">(id)</Attribute></NodeAttributes></Translate></Attribute>
 </Class>
 <Class Name="Plant">
  <Attribute Name="Heat"><Translate Type="Map">Temperature</Translate></Attribute>
  <Attribute Name="Speed"><Translate Type="Map">Mode</Translate>
   <Enumeration Name="eSpeed"><Option Name="High" AppName="Fast"/><Option Name="Low" AppName="Slow"/>
   </Enumeration></Attribute>
  <Attribute Name="Lost"><Translate Type="Map">Nowhere</Translate></Attribute>
 </Class>
</CCDMMapFile>
"""
RAW_GAS = "Flowsheet.Stream(Raw Gas)"


def nodes_of(node):
    """The node and all below it, as tree --json writes them."""
    yield node
    for each in node.get("children", []):
        yield from nodes_of(each)


def child(node, name):
    return next(each for each in node["children"] if each["name"] == name)


class Neutral(ProgramTest):
    def values_of(self, *arguments):
        return self.check(run("get", "demo", "--neutral", *arguments), DONE, err="").lines

    def test_paths_begin_below_the_root_class(self):
        self.check(run("ls", "demo", "--neutral"), DONE, "Flowsheet\nReactionPackage\n", "")
        self.check(run("ls", "demo"), DONE, "appModel\nQSI Published Variables\nPublished Variables\n", "")

    def test_elements_are_listed_with_their_keys(self):
        names = self.check(run("ls", "demo", "Flowsheet", "--neutral"), DONE, err="").lines
        self.assertEqual(["Name", "Stream(Raw Gas)", "Stream(Tail Gas)"], names[:3])
        self.assertIn("HeatStream(Chiller Duty)", names)

    def test_an_element_is_reached_by_key_count_and_filter(self):
        for path in ('Flowsheet.Stream(Tail Gas).Temperature', 'Flowsheet.Stream("Tail Gas").Temperature',
                     "Flowsheet.Stream#1.Temperature", 'Flowsheet.Stream[Name="Tail Gas"].Temperature'):
            self.assertEqual(["25"], self.values_of(path), path)
        self.assertEqual(["Tail Gas"], self.values_of("Flowsheet.Stream(Tail Gas).Name"))

    def test_a_path_may_end_in_a_key_or_an_attribute(self):
        self.assertEqual(["Object(QSIMaterialStream)"],
                         self.values_of("Flowsheet.Stream(Tail Gas)", "--attr", "type"))
        self.assertEqual(["Real"], self.values_of("Flowsheet.Stream(Tail Gas).Temperature(type)"))
        self.assertEqual(["Object(QSIMaterialStream)"], self.values_of("Flowsheet.Stream(Tail Gas).(type)"))

    def test_units_have_the_names_of_the_library(self):
        self.assertEqual(["kmol/h"], self.values_of(RAW_GAS + ".MolarFlow(uom)"))
        self.assertEqual(["303.15"], self.values_of(RAW_GAS + ".Temperature", "--unit", "K"))
        # 1000 kmol/h are 1000 / 3.6 mol/s.
        self.assertEqual(["277.777777778"], self.values_of(RAW_GAS + ".MolarFlow", "--unit", "mol/s"))
        result = run("get", "demo", "--neutral", RAW_GAS + ".Temperature", "--unit", "furlong")
        self.check(result, FAILED, "", RAW_GAS + ".Temperature: no such unit: furlong; expected C, K, F, R\n")

    def test_json(self):
        line, = self.values_of(RAW_GAS + ".Temperature", "--json")
        self.assertEqual({"path": RAW_GAS + ".Temperature", "value": 30, "uom": "C",
                          "status": "Specified"}, json.loads(line))

    def test_a_missing_node_is_told_as_in_the_raw_view(self):
        self.check(run("get", "demo", "--neutral", "Flowsheet.Stream(Raw Gas).Temprature"), FAILED, "",
                   "no such node: Flowsheet.Stream(Raw Gas).Temprature\n"
                   "  found: Flowsheet.Stream(Raw Gas)\n  near: Temperature\n")

    def test_a_key_that_is_not_there_is_told_with_near_ones(self):
        stream = "  found: Flowsheet.Stream\n"
        component = "Flowsheet.Stream(Raw Gas).Composition.Component"
        for path, told in (
                ("Flowsheet.Stream(nope)", stream),
                ("Flowsheet.Stream(Raw Gaz)", stream + "  near: Stream(Raw Gas)\n"),
                ("Flowsheet.Stream(Raw Gaz).Temperature", stream + "  near: Stream(Raw Gas)\n"),
                ("Flowsheet.Stream(Raw Gaz).Temprature", stream + "  near: Stream(Raw Gas)\n"),
                ("Flowsheet.Stream(type).Temperature", stream),
                ('Flowsheet.Stream[Name="Raw Gas"](Tail Gas)',
                 '  found: Flowsheet.Stream[Name="Raw Gas"]\n'),
                (component + "(Methan).MoleFraction",
                 f"  found: {component}\n  near: Component(Methane), Component(Ethane)\n"),
                (RAW_GAS + "(nope)", f"  found: {RAW_GAS}\n"),
                (RAW_GAS + "(nope).Temperature", f"  found: {RAW_GAS}\n"),
                (RAW_GAS + "()", f"  found: {RAW_GAS}\n"),
                (RAW_GAS + "(typo)", f"  found: {RAW_GAS}\n  near: (type)\n"),
                ("Flowsheet.Stream(type)(value)", stream),
                (RAW_GAS + ".Temperature(statos)",
                 f"  found: {RAW_GAS}.Temperature\n  near: Temperature(status)\n"),
        ):
            for word in ("get", "tree"):
                self.check(run(word, "demo", "--neutral", path), FAILED, "",
                           f"no such node: {path}\n{told}")
        self.check(run("find", "demo", "--neutral", "Flowsheet.Stream(nope)"), FAILED, "",
                   "nothing matches: Flowsheet.Stream(nope)\n")

    def test_an_attribute_of_an_element_stands_behind_its_key(self):
        found = self.check(run("find", "demo", "--neutral", "Flowsheet.Stream(container_type)"), DONE).lines
        self.assertEqual("Flowsheet.Stream(Raw Gas)(container_type)", found[0])
        read = self.check(run("get", "demo", "--neutral", *found), DONE, err="").lines
        self.assertEqual(["QSIMaterialStream"] * len(found), read)
        for path in (found[1], found[1].replace(")(", ").(")):
            self.check(run("find", "demo", "--neutral", path), DONE, found[1] + "\n", "")
        self.check(run("find", "demo", "--neutral", "Flowsheet.Stream(Sales Gas)(nope)"), FAILED, "",
                   "nothing matches: Flowsheet.Stream(Sales Gas)(nope)\n")

    def test_find_gives_paths_that_get_reads(self):
        found = self.check(run("find", "demo", "--neutral", "Flowsheet.Stream.Temperature"), DONE).lines
        self.assertEqual("Flowsheet.Stream(Raw Gas).Temperature", found[0])
        values = self.check(run("get", "demo", "--neutral", "-",
                                stdin="".join(path + "\n" for path in found)), DONE, err="").lines
        raw = self.check(run("table", "demo", 'appModel.FlowSheetObjects.Streams.*'
                             '[(type)="MaterialStreamObject"]', "Temperature", "--csv"), DONE).lines
        self.assertEqual([line.rsplit(",", 1)[1] for line in raw[1:]], values)
        self.assertGreater(len(values), 20)

    def test_tree_shows_values_and_classes(self):
        lines = self.check(run("tree", "demo", RAW_GAS, "--neutral", "--depth", "1"), DONE).lines
        self.assertEqual("Stream(Raw Gas)  (Object(QSIMaterialStream))", lines[0])
        self.assertIn("  Temperature := 30 C", lines)
        self.assertIn("  VolumeFlow = (none)", lines)
        self.assertIn("  Composition  (Object(QSICompositionProperties))", lines)

    def test_table_of_streams(self):
        result = run("table", "demo", "--neutral", "Flowsheet.Stream[Name]", "Temperature", "MolarFlow",
                     "--unit", "Temperature=K", "--csv")
        rows = list(csv.reader(io.StringIO(self.check(result, DONE, err="").out)))
        self.assertEqual(["Name", "Temperature [K]", "MolarFlow [kmol/h]"], rows[0])
        self.assertEqual(["Stream(Raw Gas)", "303.15", "1000"], rows[1])

    def test_set_reaches_the_simulator(self):
        saved = self.folder / "warmer.json"
        self.check(run("set", "demo", "--neutral", RAW_GAS + ".Temperature", "310", "--unit", "K",
                       "--save", saved), DONE, "310\n", "")
        raw = "appModel.FlowSheetObjects.Streams.Raw Gas.Temperature"
        self.check(run("get", saved, raw, "--unit", "K"), DONE, "310\n", "")

    def test_attrs(self):
        rows = dict(line.split("\t") for line in self.check(
            run("attrs", "demo", RAW_GAS + ".Temperature", "--neutral"), DONE, err="").lines)
        self.assertEqual(("Temperature", "30", "C", "30", "C"),
                         tuple(rows[name] for name in ("id", "value", "uom", "spec_value", "spec_uom")))

    def test_shell_stands_in_the_view(self):
        result = run("shell", "demo", "--neutral", stdin='cd Flowsheet.Stream("Raw Gas")\nget Temperature\n')
        self.check(result, DONE, "30\n")
        self.check(run("complete", "demo", "--neutral", "get Flowsheet.Stream(\"Tail G"), DONE,
                   'Flowsheet.Stream("Tail Gas")\n', "")
        lines = self.check(run("complete", "demo", "--neutral", "get Flowsheet.SubF"), DONE).lines
        self.assertEqual(["Flowsheet.SubFlowsheet(Stabiliser)",
                          'Flowsheet.SubFlowsheet("T-100 Flowsheet")'], lines[:2])

    def test_no_log_is_left_behind_unless_it_is_asked_for(self):
        folder = self.folder / "of_its_own"
        folder.mkdir()
        log = self.folder / "model.log"
        self.check(run("ls", "demo", "--neutral", cwd=folder), DONE)
        self.assertEqual([], list(folder.iterdir()))
        self.check(run("ls", "demo", "--neutral", "--log", log), DONE)
        self.assertFalse(log.exists(), "the shipped files give no message")
        short = self.folder / "short.xml"
        short.write_text('<QZClassLibrary Name="Short" Format="1"/>')
        self.check(run("ls", "demo", "--neutral", "--library", short, "--log", log), UNREADABLE)
        self.assertIn("could not find class type QSISimulation", log.read_text())

    def test_the_views_end(self):
        for case in ["demo", *sorted(CASES.glob("*.dwxmz"))]:
            with self.subTest(case):
                result = self.check(run("tree", case, "--neutral"), DONE, err="")
                self.assertGreater(len(result.lines), 1000)

    def test_what_the_case_does_not_have_is_null(self):
        for case in ["demo", *sorted(CASES.glob("*.dwxmz"))]:
            with self.subTest(case):
                tree = json.loads(self.check(run("tree", case, "--neutral", "--json"), DONE, err="").out)
                values = [(node["type"], node["value"]) for node in nodes_of(tree) if "value" in node]
                self.assertEqual([], [v for v in values if v[1] == "" or f"({v[1]})" in v[0]])
                self.assertEqual([], [v for v in values if v[0] == "Real" and isinstance(v[1], str)])
                self.assertGreater(sum(v == ("Real", None) for v in values), 1000)
                text = self.check(run("tree", case, "--neutral"), DONE).out
                self.assertNotIn("eComponentName", text)

    def test_absent_phases_have_no_components(self):
        phases = {"Vapor": "Vapour Phase", "Liquid1": "Liquid Phase", "Liquid2": "Second Liquid Phase",
                  "MixedLiquid": "Total Liquid Phase"}
        for case in ["demo", *sorted(CASES.glob("*.dwxmz"))]:
            with self.subTest(case):
                shown, absent = 0, 0
                tree = json.loads(self.check(run("tree", case, "--neutral", "--json"), DONE).out)
                for stream in child(tree, "Flowsheet")["children"]:
                    if stream["name"] != "Stream":
                        continue
                    name = child(stream, "Name")["value"]
                    raw = self.fractions_of(case, name)
                    for phase, raw_phase in phases.items():
                        # The function that counts them looks at the vapour, whatever the phase.
                        fractions = raw.get(raw_phase, []) if "Vapour Phase" in raw else []
                        composition = child(child(child(stream, "Overall"), phase), "Composition")
                        components = [child(each, "ComponentName")["value"]
                                      for each in composition["children"] if each["name"] == "Component"]
                        self.assertEqual(fractions, components, (name, phase))
                        shown += len(fractions) > 0
                        absent += not fractions
                self.assertGreater(shown, 0)
                self.assertGreater(absent, 0)

    def fractions_of(self, case, stream):
        """Names of the components by phase, as the raw view lists them."""
        if case not in self.raw_fractions:
            tree = json.loads(run("tree", case, "appModel.FlowSheetObjects.Streams", "--json", "--all").out)
            self.raw_fractions[case] = {
                each["name"]: {phase["name"]: [c["name"] for c in phase.get("children", [])]
                               for phase in child(each, "Phase Comp Mole Frac").get("children", [])}
                for each in tree["children"] if each["type"] == "MaterialStreamObject"}
        return self.raw_fractions[case][stream]

    raw_fractions = {}


class Explain(ProgramTest):
    def test_both_sides_and_the_choice(self):
        out = self.check(run("explain", "demo", RAW_GAS + ".MolarFlow"), DONE, err="").out
        raw = "appModel.FlowSheetObjects.Streams.Raw Gas.Molar Flow"
        for part in (f"path\t{RAW_GAS}.MolarFlow\n", "type\tReal\n", f"calculated\t{raw}\n",
                     "  neutral\t1000 kmol/h\n", "  raw\t1000 kgmole/h\n", "****   USED   ****",
                     '<Translate Type="Map">"Molar Flow"</Translate>'):
            self.assertIn(part, out)

    def test_what_is_nowhere_in_the_case(self):
        out = self.check(run("explain", "demo", RAW_GAS + ".VolumeFlow"), DONE, err="").out
        self.assertIn("calculated\t(nothing in the case)\n", out)

    def test_json(self):
        record = json.loads(self.check(run("explain", "demo", RAW_GAS + ".MolarFlow", "--json"), DONE).out)
        self.assertEqual({"path": "appModel.FlowSheetObjects.Streams.Raw Gas.Molar Flow", "value": 1000,
                          "uom": "kmol/h", "raw_value": 1000, "raw_uom": "kgmole/h"}, record["calculated"])
        self.assertIn("USED", record["converters"])

    def test_a_missing_node(self):
        self.assertIn("no such node: Flowsheet.Nothing",
                      self.check(run("explain", "demo", "Flowsheet.Nothing"), FAILED, "").err)

    def test_a_node_of_the_other_view(self):
        path = "appModel.FlowSheetObjects.Streams.Raw Gas.Molar Flow"
        told = (f"no such node: {path}\n  nothing of it was found\n  it is a node of the case's own tree; "
                "expected one of the neutral view, which find --neutral lists\n")
        self.check(run("explain", "demo", path), FAILED, "", told)
        self.check(run("explain", "demo", "a[b"), FAILED, "", "Parse error, ] expected in: a[b\n")

    def test_objects_have_no_values(self):
        told = "calculated\tappModel.FlowSheetObjects.Streams.Raw Gas"
        lines = self.check(run("explain", "demo", RAW_GAS), DONE, err="").lines
        self.assertEqual([told, "translators"], lines[2:4])
        lines = self.check(run("explain", "demo", RAW_GAS + ".Name"), DONE, err="").lines
        self.assertEqual([told, "  neutral\tRaw Gas", "translators"], lines[2:5])

    def test_what_is_specified_is_the_variable_that_is_calculated(self):
        count = 0
        for case in ["demo", *CASES.glob("*.dwxmz")]:
            members = [path for kind in ("Stream", "HeatStream", "UnitOperation")
                       for path in run("find", case, "--neutral", f"Flowsheet.{kind}.*").lines]
            lines = "".join(f"explain '{path}' --json\n" for path in members)
            for record in map(json.loads, run("shell", case, "--neutral", stdin=lines).lines):
                if not {"calculated", "specified"} <= set(record):
                    continue
                count += 1
                self.assertEqual(record["calculated"]["path"], record["specified"]["path"], (case, record["path"]))
        self.assertGreater(count, 20)

    def test_a_value_that_is_missing(self):
        file = self.folder / "lacking.json"
        run("set", "demo", "appModel.FlowSheetObjects.Streams.Raw Gas.Molar Flow", "", "--save", file)
        out = self.check(run("explain", file, RAW_GAS + ".MolarFlow"), DONE).out
        self.assertIn("  neutral\t(none)\n  raw\t(none)\n", out)


class Classes(ProgramTest):
    def test_names(self):
        names = self.check(run("classes"), DONE, err="").lines
        self.assertEqual(186, len(names))
        self.assertEqual(sorted(names), names)
        self.assertEqual(79, len(self.check(run("classes", "--enumerations"), DONE).lines))

    def test_a_class(self):
        lines = self.check(run("classes", "QSIHeatStream"), DONE, err="").lines
        self.assertEqual(["class\tQSIHeatStream", "superclass\tQSIHeatFlow",
                          "attribute\ttype\tquantity\tkeys\tdeclared by"], lines[:3])
        self.assertIn("HeatFlow\tReal\tPower\t\tQSIHeatFlow", lines)
        self.assertIn("Stream\tObject(QSIMaterialStream)[]\t\tName\tQSIFlowsheet",
                      self.check(run("classes", "QSIFlowsheet"), DONE).lines)

    def test_an_enumeration(self):
        lines = self.check(run("classes", "eEnergyType"), DONE, err="").lines
        self.assertEqual(["enumeration\teEnergyType\topen", "option\tElectricity", "option\tHeat",
                          "option\tWork"], lines)

    def test_json(self):
        record = json.loads(self.check(run("classes", "QSIHeatFlow", "--json"), DONE).out)
        self.assertEqual("QSIHeatFlow", record["class"])
        self.assertIn({"name": "HeatFlow", "type": "Real", "array": False, "quantity": "Power",
                       "keys": [], "owner": "QSIHeatFlow"}, record["attributes"])
        self.assertEqual(186, len(self.check(run("classes", "--json"), DONE).lines))

    def test_an_unknown_name(self):
        self.check(run("classes", "QSIHeatStrem"), FAILED, "",
                   "no such class: QSIHeatStrem\n  near: QSIHeatStream\n  near: QSIHeatCurve\n"
                   "  near: QSILoadStream\n")


class OwnFiles(ProgramTest):
    def setUp(self):
        self.library = self.file("own_library.xml", LIBRARY)
        self.map = self.file("own_map.xml", MAP)
        case = small_case()
        case["flowsheet"]["objects"] = [
            stream("Only", 25, Mode=of_kind("enumeration", "Slow", options=["Fast", "Slow"]),
                   Fractions=array([("text", ["A", "B"])], [0.5, 0.5]), Plain=real(1.0))]
        self.case = write_case(self.folder, "own.json", case)

    def view(self, word, *arguments, library=None, map_file=None, **options):
        files = ["--library", library or self.library, "--map", map_file or self.map,
                 "--translate", options.get("translate", "Own")]
        return run(word, self.case, *([] if word == "explain" else ["--neutral"]), *files, *arguments)

    def test_another_library_and_map(self):
        self.check(self.view("ls", "Plant"), DONE, "Label\nHeat\nSpeed\nLost\n", "")
        self.check(self.view("get", "Plant.Label", "Plant.Heat", "Plant.Speed", "Plant.Lost"), DONE,
                   "Only\n25\nLow\n\n", "")
        self.check(self.view("get", "Plant.Heat", "--unit", "F"), DONE, "77\n", "")

    def test_a_list_that_is_cut_is_told(self):
        case = small_case()
        case["flowsheet"]["objects"] = [stream(f"S{i}", i) for i in range(300)]
        path, log = write_case(self.folder, "many.json", case), self.folder / "cut.log"
        told = "List Flowsheet.Stream on Top.appModel.FlowSheetObjects: 300 elements, 44 of them are shown"
        result = run("ls", path, "Flowsheet", "--neutral", "--log", log)
        self.check(result, DONE, err=told + "\n")
        self.assertEqual([f"Stream(S{i})" for i in range(44)],
                         [line for line in result.lines if line.startswith("Stream")])
        self.assertEqual(1, log.read_text().count(told))
        self.check(run("ls", path, "appModel.FlowSheetObjects"), DONE, err="")

    def test_a_long_list_is_whole_for_all_but_a_listing(self):
        case = small_case()
        case["flowsheet"]["objects"] = [stream(f"S{i}", i) for i in range(300)]
        path = write_case(self.folder, "many.json", case)
        names = [f"Flowsheet.Stream(S{i})" for i in range(300)]
        found = self.check(run("find", path, "Flowsheet.Stream", "--neutral"), DONE, err="").lines
        self.assertEqual(names, found)
        table = self.check(run("table", path, "Flowsheet.Stream", "Temperature", "--csv", "--neutral"),
                           DONE, err="").lines
        self.assertEqual([f"Stream(S{i}),{i}" for i in range(300)], table[1:])
        tree = self.check(run("tree", path, "Flowsheet", "--depth", "1", "--neutral"), DONE, err="").lines
        self.assertEqual([f"Stream(S{i})" for i in range(300)],
                         [line.split()[0] for line in tree if line.startswith("  Stream(")])
        result = run("get", path, "--neutral", *(f"{name}.Temperature" for name in found))
        self.check(result, DONE, "".join(f"{i}\n" for i in range(300)), err="")
        for name in (found[44], found[255], found[256], found[299]):
            number = name[len("Flowsheet.Stream(S"):-1]
            shown = self.check(run("explain", path, f"{name}.Temperature"), DONE, err="").lines
            self.assertIn(f"calculated\tappModel.FlowSheetObjects.Streams.S{number}.Temperature", shown)
            result = run("set", path, f"{name}.Temperature", "77", "--neutral")
            self.check(result, FAILED, "77\n", "the case is a recording and can't be computed again\n")

    def spinning(self, word, *arguments):
        """On a stream with a speed of 3000 rpm and a fraction that has no unit."""
        quantities = {"Turns": "Rotational Frequency", "Spin": "Angular Velocity", "Rate": "Frequency",
                      "Way": "Velocity", "Share": "Fraction", "Part": "Percentage"}
        raw = {name: "Plain" if name in ("Share", "Part") else "Speed" for name in quantities}
        library = LIBRARY.replace("</ClassAttributes>\n</QZ", "".join(
            f'<Attribute Name="{name}" Type="Real" Multiplicity="1"><QuantityType>{quantity}</QuantityType>'
            "</Attribute>" for name, quantity in quantities.items()) + "</ClassAttributes>\n</QZ")
        map_text = MAP.replace("</Class>\n</CCDM", "".join(
            f'<Attribute Name="{name}"><Translate Type="Map">{raw[name]}</Translate></Attribute>'
            for name in quantities) + "</Class>\n</CCDM")
        case = small_case()
        case["flowsheet"]["objects"] = [
            stream("Only", 25, Speed=real(3000, "RotationalSpeed", maximum=4000), Plain=real(0.25))]
        self.case = write_case(self.folder, "spinning.json", case)
        return self.view(word, *arguments, library=self.file("spin_library.xml", library),
                         map_file=self.file("spin_map.xml", map_text))

    def read_json(self, code, *arguments):
        result = self.spinning("get", *arguments, "--json")
        record = json.loads(self.check(result, code).out)
        return record["value"], record["uom"], result.err

    # A turn is 2 pi rad; 3000 rpm are 50 a second.
    def test_speeds_of_rotation_are_converted(self):
        for name in ("Turns", "Spin", "Rate"):
            self.assertEqual((3000, "rpm", ""), self.read_json(DONE, f"Plant.{name}"))
            self.assertEqual((50, "rev/s", ""), self.read_json(DONE, f"Plant.{name}", "--unit", "rev/s"))
            self.assertEqual((314.1592653589793, "rad/s", ""),
                             self.read_json(DONE, f"Plant.{name}", "--unit", "rad/s"))
        saved = self.folder / "slower.json"
        self.check(self.spinning("set", "Plant.Turns", "100", "--unit", "rad/s", "--save", saved), FAILED, "100\n")
        raw = "appModel.FlowSheetObjects.Streams.Only.Speed"
        self.check(run("get", saved, raw), DONE, "954.929658551\n", "")

    def test_a_fraction_without_a_unit_is_converted(self):
        self.assertEqual((0.25, None, ""), self.read_json(DONE, "Plant.Share"))
        self.assertEqual((25, "%", ""), self.read_json(DONE, "Plant.Share", "--unit", "%"))
        self.assertEqual((0.25, "fraction", ""), self.read_json(DONE, "Plant.Share", "--unit", "fraction"))
        saved = self.folder / "half.json"
        self.check(self.spinning("set", "Plant.Share", "50", "--unit", "%", "--save", saved), FAILED, "50\n")
        self.check(run("get", saved, "appModel.FlowSheetObjects.Streams.Only.Plain"), DONE, "0.5\n", "")

    # A number of turns is no velocity, and nobody says whether 0.25 is of a hundred.
    def test_a_unit_that_is_not_known_is_told_as_it_is(self):
        self.assertEqual((3000, "rpm", ""), self.read_json(DONE, "Plant.Way"))
        self.assertEqual((3000, "rpm", "Plant.Way: shown in rpm, not in m/s\n"),
                         self.read_json(FAILED, "Plant.Way", "--unit", "m/s"))
        self.assertEqual((0.25, None, "Plant.Part: shown without a unit, not in %\n"),
                         self.read_json(FAILED, "Plant.Part", "--unit", "%"))
        result = self.spinning("table", "Plant", "Way", "Turns", "--unit", "Way=m/s", "--unit", "Turns=rev/s")
        self.check(result, FAILED, "Name    Way  Turns\n        rpm  rev/s\nPlant  3000     50\n",
                   "Way: shown in rpm, not in m/s\n")

    def test_a_store_in_a_unit_that_is_not_known_is_refused(self):
        self.check(self.spinning("set", "Plant.Way", "10", "--unit", "m/s"), FAILED, "",
                   "Plant.Way: No conversion from unit m/s to unit rpm of the application\n")
        self.check(self.spinning("set", "Plant.Part", "10", "--unit", "%"), FAILED, "",
                   "Plant.Part: No conversion from unit %, the application tells no unit\n")
        self.check(self.spinning("set", "Plant.Way", "2000"), FAILED, "2000\n")

    def test_the_unit_that_is_told_is_that_of_the_attribute(self):
        limit = ("Plant.Turns", "--attr", "upper_limit")
        self.assertEqual((4000, "rpm", ""), self.read_json(DONE, *limit))
        self.assertEqual((4000, "rpm", "Plant.Turns: shown in rpm, not in rev/s\n"),
                         self.read_json(FAILED, *limit, "--unit", "rev/s"))
        raw = ("appModel.FlowSheetObjects.Streams.Only.Speed", "--attr", "upper_limit", "--unit", "rev/s", "--json")
        record = json.loads(self.check(run("get", self.case, *raw), DONE, err="").out)
        self.assertEqual((66.66666666666667, "rev/s"), (record["value"], record["uom"]))
        self.assertEqual(("Real", None, ""), self.read_json(DONE, "Plant.Turns(type)"))
        spec = (RAW_GAS + ".Temperature", "--attr", "spec_value", "--unit", "K", "--json")
        record = json.loads(self.check(run("get", "demo", "--neutral", *spec), DONE, err="").out)
        self.assertEqual((303.15, "K"), (record["value"], record["uom"]))
        result = run("set", "demo", "--neutral", RAW_GAS + ".Temperature(spec_value)", "313.15", "--unit", "K", "--json")
        record = json.loads(self.check(result, DONE).out)
        self.assertEqual((313.15, "K"), (record["value"], record["uom"]))

    def test_options_cross_both_ways(self):
        self.check(self.view("set", "Plant.Speed", "High"), FAILED, "High\n",
                   "the case is a recording and can't be computed again\n")
        self.assertIn("  raw\tSlow\n", self.check(self.view("explain", "Plant.Speed"), DONE).out)

    def test_a_translation_that_the_map_does_not_have(self):
        self.check(self.view("ls", translate="Other"), UNREADABLE, "",
                   "no such translation: Other; expected Own\n")
        self.check(run("ls", "demo", "--neutral", "--translate", "own"), UNREADABLE, "",
                   "no such translation: own; expected Hovex\n")
        self.check(run("get", "demo", "--neutral", "--translate", "Hovex", RAW_GAS + ".Temperature"),
                   DONE, "30\n", "")

    def test_a_log_that_cannot_be_written(self):
        log = self.folder / "no such folder" / "model.log"
        problem = f"the log can't be written: {log}; expected a file in a folder that can be written to\n"
        for word in (["ls", "demo", "--neutral"], ["get", "demo", "--neutral", RAW_GAS + ".Temperature"],
                     ["classes"]):
            with self.subTest(word):
                self.check(run(*word, "--log", log), UNREADABLE, "", problem)
        self.check(run("check-map", "--log", log), UNREADABLE, "", problem)
        self.check(run("ls", "demo", "--neutral", "--log", self.folder), UNREADABLE, "",
                   f"the log can't be written: {self.folder}: is a folder; expected a file\n")

    def test_a_log_that_was_there_is_kept_when_nothing_is_said(self):
        log = self.file("kept.log", "before\n")
        self.check(run("ls", "demo", "--neutral", "--log", log), DONE, err="")
        self.assertEqual("before\n", log.read_text())

    def test_nothing_is_logged_of_what_is_shipped(self):
        log = self.folder / "quiet.log"
        for word in (["tree", "demo", "--neutral"], ["report", "demo"], ["classes"], ["check-map"],
                     ["explain", "demo", RAW_GAS + ".Temperature"], ["streams", "demo"]):
            with self.subTest(word):
                self.check(run(*word, "--log", log), DONE, err="")
                self.assertFalse(log.exists())

    def test_a_file_in_place_of_a_built_in_one_is_told_once(self):
        folder = self.folder / "replaced"
        folder.mkdir()
        replaced = folder / "hunits.xml"
        replaced.write_bytes((SOURCE / "src/resources/hunits.xml").read_bytes())
        result = run("ls", "demo", "--neutral", "Flowsheet", cwd=folder)
        self.check(result, DONE)
        # On Windows the path has a drive.
        told, = result.err.split("\n")[:-1]
        self.assertTrue(told.endswith("hunits.xml is read in place of the built-in file of that name"), told)
        definitions = folder / "CCDM_UOMDefinitions.xml"
        definitions.write_bytes((SOURCE / "src/resources" / definitions.name).read_bytes())
        self.assertEqual([definitions.name, replaced.name],
                         sorted(re.split(r"[/\\]", line.split(" is read in place")[0])[-1] for line in
                                run("report", "demo", cwd=folder).err.split("\n")[:-1]))
        self.check(run("ls", "demo", "appModel", cwd=folder), DONE, err="")
        self.check(run("ls", "demo", "--neutral", cwd=self.folder), DONE, err="")

    def test_classes_of_the_library(self):
        self.check(run("classes", "--library", self.library), DONE, "Base\nPlant\nQSISimulation\n", "")
        self.check(run("classes", "eSpeed", "--library", self.library), DONE,
                   "enumeration\teSpeed\tclosed\noption\tHigh\noption\tLow\n", "")

    def test_without_units_values_pass_as_they_are(self):
        units = ["--units", self.folder / "missing_units.xml"]
        result = self.check(self.view("get", "Plant.Heat", *units), DONE, "25\n")
        told = result.err.split("\n")
        self.assertEqual("values are not converted", told[0], result)
        self.assertIn("missing_units.xml", told[1], result)

    def test_files_that_cannot_be_read(self):
        broken = self.file("broken.xml", "<QZClassLibrary>\n<Class></QZClassLibrary>")
        for options, message in (
                ({"library": self.folder / "missing.xml"}, "Failed to find CCDM Resource"),
                ({"map_file": self.folder / "missing.xml"}, "Failed to find Convert Resource"),
                ({"library": broken}, "Failed parsing CCDM File"),
                ({"map_file": broken}, "Failed parsing Convert File")):
            with self.subTest(message):
                result = self.check(self.view("ls", **options), UNREADABLE, "")
                self.assertTrue(result.err.startswith("the neutral view can't be opened\n"), result)
                self.assertIn(message, result.err)
        result = self.check(run("classes", "--library", broken), UNREADABLE, "")
        self.assertTrue(result.err.startswith("the class library can't be opened\n"), result)
        self.assertRegex(result.err, r"broken\.xml.*\b2\b", "names file and line")

    def test_a_module_that_is_not_offered_is_not_loaded(self):
        for module in ("libc.so.6", "msvcrt.dll", "kernel32.dll", "../fixtop.dll"):
            foreign = self.file("foreign.xml", MAP.replace("fixtop.dll", module))
            result = self.check(self.view("ls", map_file=foreign), UNREADABLE, "")
            self.assertIn("Converter Semantic function: Find1 not found", result.err)


@unittest.skipUnless(CASES.is_dir(), f"no sample cases in {CASES}")
class RealCases(ProgramTest):
    # Property of the table: list, attribute, and unit of the table's numbers.
    PROPERTIES = {
        "T": ("Stream", "Temperature", "K"),
        "P": ("Stream", "Pressure", "Pa"),
        "molar flow": ("Stream", "MolarFlow", "mol/s"),
        "mass flow": ("Stream", "MassFlow", "kg/s"),
        "vapour fraction": ("Stream", "VaporFraction", ""),
        "energy flow": ("HeatStream", "HeatFlow", "kW"),
    }

    def path_of(self, row):
        """(path, unit) of a row of a table."""
        name = '"' + row["tag"].replace('"', '""') + '"'
        if row["property"].startswith("x:"):
            return (f"Flowsheet.Stream({name}).Composition.Component"
                    f"(\"{row['property'][2:]}\").MoleFraction"), ""
        group, attribute, unit = self.PROPERTIES[row["property"]]
        return f"Flowsheet.{group}({name}).{attribute}", unit

    def test_every_row_of_every_stream(self):
        compared = 0
        for table in sorted(CASES.glob("*.csv")):
            by_unit = {}
            with open(table, encoding="utf-8", newline="") as file:
                for row in csv.DictReader(file):
                    if row["type"] not in ("MaterialStream", "EnergyStream"):
                        continue
                    path, unit = self.path_of(row)
                    by_unit.setdefault(unit, []).append((path, row["value"]))
            for unit, rows in by_unit.items():
                with self.subTest(f"{table.stem} {unit}"):
                    result = run("get", table.with_suffix(".dwxmz"), "--neutral", "-",
                                 *(["--unit", unit] if unit else []),
                                 stdin="".join(path + "\n" for path, _ in rows))
                    self.check(result, DONE, err="")
                    self.assertEqual(len(rows), len(result.lines), result)
                    for (path, expected), got in zip(rows, result.lines):
                        same = expected == got or (expected != "" and got != "" and math.isclose(
                            float(expected), float(got), rel_tol=1e-9, abs_tol=1e-300))
                        self.assertTrue(same, f"{path}: {expected!r} expected, got {got!r}")
                    compared += len(rows)
        self.assertGreater(compared, 400)


if __name__ == "__main__":
    unittest.main()
