# SPDX-License-Identifier: Apache-2.0
"""Unit operations of solved flowsheets in the neutral view, against what an independent script took
out of the files, and against the documents themselves."""

import collections
import csv
import math
import re
import unittest
import zipfile
from xml.etree import ElementTree

from support import CASES, DONE, ProgramTest, run

UNIT = "Flowsheet.UnitOperation"
RAW_STREAMS = "appModel.FlowSheetObjects.Streams"
RAW_UNITS = "appModel.FlowSheetObjects.UnitOps"
COLUMNS = CASES / "benzene-toluene-distillation.dwxmz"
AMMONIA = CASES / "ammonia-synthesis-single-pass.dwxmz"

# A number in the unit of its row; sign -1: the file counts in the other direction.
Number = collections.namedtuple("Number", "path sign", defaults=[1])
# A text, by the word of the file where it is another one.
Text = collections.namedtuple("Text", "path words", defaults=[None])
# Whether the user gave the value, which then has a specified face.
Given = collections.namedtuple("Given", "path")
# Without a place in the neutral view: the variable of the case, its unit, and the reason.
Absent = collections.namedtuple("Absent", "variable unit reason")

HEATER = {
    "duty": Number("Duty"),  # above zero for what a heater adds and for what a cooler removes
    "outlet temperature": Number("OutletTemperature"),
    "pressure drop": Number("PressureDrop"),
    "calculation mode": Text("CalculationMode"),
}
REACTOR = {
    "duty": Number("Duty"),  # added; below zero where a reaction gives heat off
    "outlet temperature": Number("Flash.Temperature"),
    "operation mode": Text("OperationMode"),
}
# Where a row stands below its unit operation; {} is what follows the colon of the property.
PLACES = {
    "Compressor": {
        "power": Number("Power"),
        "outlet pressure": Number("OutletPressure"),
        "adiabatic efficiency": Number("AdiabaticEfficiency"),
        "pressure ratio": Number("PressureRatio"),
    },
    "Heater": HEATER,
    "Cooler": HEATER,
    "Valve": {
        "outlet pressure": Number("OutletPressure"),
        "pressure drop": Number("PressureDrop"),
        "temperature change": Number("TemperatureChange"),
        "calculation mode": Text("CalculationMode"),
    },
    "HeatExchanger": {
        "duty": Number("Duty"),
        "area": Number("Area"),
        "overall coefficient": Number("OverallHeatTransferCoefficient"),
        "LMTD": Number("LogMeanTemperatureDifference"),
    },
    "Vessel": {
        "duty": Number("Duty"),
        "override temperature": Given("Flash.Temperature"),
    },
    "Mixer": {
        "inlet pressure rule": Text("PressureAssignment",
                                    {"Minimum": "Set Outlet to Lowest Inlet"}),
        "calculated": Text("UnitOperationStatus", {"true": "Solved"}),
    },
    "DistillationColumn": {
        "stages": Number("NumberOfStages"),
        "reflux ratio": Number("RefluxRatio"),
        "condenser duty": Number("CondenserDuty"),  # removed
        "reboiler duty": Number("ReboilerDuty", -1),  # added, which the file has below zero
    },
    "Reactor_Equilibrium": {**REACTOR, "extent:": Number("ReactionSet.Reaction({}).Extent")},
    "Reactor_Gibbs": {**REACTOR, "final Gibbs energy": Number("FinalGibbsEnergy")},
}

NO_CLASS = "the library has no class for this kind of unit operation"
NO_ATTRIBUTE = "the library's separators take the pressure of the feed and have no rule for it"
WITHOUT_PLACE = {
    "Vessel": {
        "inlet pressure rule": Absent("Outlet Pressure Assignment", "", NO_ATTRIBUTE),
    },
    "Recycle": {
        "converged": Absent("Converged", "", NO_CLASS),
        "iterations": Absent("Iterations", "", NO_CLASS),
        "error:Temperature": Absent("Temperature Error", "K", NO_CLASS),
        "error:MassFlow": Absent("Mass Flow Error", "kg/s", NO_CLASS),
    },
    "Reactor_AnaerobicDigester": {
        "volume": Absent("Volume", "m3", NO_CLASS),
        "residence time": Absent("Hydraulic Residence Time", "seconds", NO_CLASS),
        "COD removal": Absent("COD Removal Fraction", "", NO_CLASS),
        "biogas flow": Absent("Biogas Molar Flow", "mol/s", NO_CLASS),
    },
    "UnitOp_BiogasUpgrader": {
        "H2S removal": Absent("H2S Removal Fraction", "", NO_CLASS),
        "CO2 removal": Absent("CO2 Removal Fraction", "", NO_CLASS),
        "upgraded mass flow": Absent("Upgraded Gas Mass Flow", "kg/s", NO_CLASS),
        "CH4 mole fraction": Absent("Upgraded Gas CH4 Mole Fraction", "", NO_CLASS),
    },
}
NO_CLASSES = set(WITHOUT_PLACE) - set(PLACES)

# What the documents tell of unit operations beyond the tables: element, place and unit.
HEATER_ELEMENTS = {
    "DeltaT": ("TemperatureChange", "K"),
    "Eficiencia": ("Efficiency", "%"),
    "OutletVaporFraction": ("OutletVaporFraction", ""),
}
REACTOR_ELEMENTS = {
    "DeltaP": ("PressureDrop", "Pa"),
    "InitialGibbsEnergy": ("InitialGibbsEnergy", "kW"),
    "FinalGibbsEnergy": ("FinalGibbsEnergy", "kW"),
}
ELEMENTS = {
    "Compressor": {
        "OutletTemperature": ("OutletTemperature", "K"),
        "DeltaT": ("TemperatureChange", "K"),
        "DeltaP": ("PressureIncrease", "Pa"),
        "PolytropicEfficiency": ("PolytropicEfficiency", "%"),
        "AdiabaticCoefficient": ("AdiabaticExponent", ""),
        "PolytropicCoefficient": ("PolytropicExponent", ""),
        "AdiabaticHead": ("AdiabaticHead", "m"),
        "PolytropicHead": ("PolytropicHead", "m"),
    },
    "Heater": HEATER_ELEMENTS,
    "Cooler": HEATER_ELEMENTS,
    "Valve": {"OutletTemperature": ("OutletTemperature", "K")},
    "HeatExchanger": {
        "LMTD_F": ("TemperatureDifferenceCorrectionFactor", ""),
        "HotSideOutletTemperature": ("Hot.OutletTemperature", "K"),
        "ColdSideOutletTemperature": ("Cold.OutletTemperature", "K"),
        "HotSidePressureDrop": ("Hot.PressureDrop", "Pa"),
        "ColdSidePressureDrop": ("Cold.PressureDrop", "Pa"),
        "MaxHeatExchange": ("MaximumDuty", "kW"),
        "ThermalEfficiency": ("ThermalEfficiency", "%"),
        "HeatLoss": ("HeatLossDuty", "kW"),
    },
    "Vessel": {
        "DimensionRatio": ("LengthToDiameterRatio", ""),
        "SurgeFactor": ("SurgeFactor", ""),
    },
    "DistillationColumn": {
        "CondenserDeltaP": ("CondenserPressureDrop", "Pa"),
        "ColumnPressureDrop": ("PressureDrop", "Pa"),
        "TraySpacing": ("TraySpacing", "m"),
        "EstimatedDiameter": ("Diameter", "m"),
        "EstimatedHeight": ("Height", "m"),
        "MaxIterations": ("Calculation.MaximumIterations", ""),
    },
    "Reactor_Equilibrium": REACTOR_ELEMENTS,
    "Reactor_Gibbs": {**REACTOR_ELEMENTS, "ElementBalance": ("ElementBalanceError", "")},
}
VESSELS = ("Vessel", "Reactor_Equilibrium", "Reactor_Gibbs")
# Units of the tables that have another name in the library.
UNIT_NAMES = {"-": "", "W/m2/K": "W/m2-K"}
STREAM_LISTS = {"MaterialStream": "Stream", "EnergyStream": "HeatStream"}


def cases():
    return sorted(CASES.glob("*.dwxmz"))


def unit_rows(case):
    with open(case.with_suffix(".csv"), encoding="utf-8", newline="") as file:
        return [row for row in csv.DictReader(file) if row["type"] not in STREAM_LISTS]


def look_up(table, row):
    """The entry of a row, whose property may stand there as a whole or up to its colon."""
    entries = table.get(row["type"], {})
    name = row["property"]
    return entries.get(name) or entries.get(name.partition(":")[0] + ":")


def unit_of(row):
    return UNIT_NAMES.get(row["unit"], row["unit"])


class Document:
    """The document in the archive of a case, read by other means than those of the program."""

    def __init__(self, case):
        with zipfile.ZipFile(case) as archive:
            name, = [entry for entry in archive.namelist() if entry.endswith(".xml")]
            self.root = ElementTree.fromstring(archive.read(name).decode("utf-8-sig"))
        graphics = list(self.root.find("GraphicObjects"))
        self.tags = {each.findtext("Name"): each.findtext("Tag") for each in graphics}
        self.objects, self.classes = {}, {}
        for each in self.root.find("SimulationObjects"):
            tag = self.tags[each.findtext("Name")]
            self.objects[tag] = each
            self.classes[tag] = each.findtext("Type").rsplit(".", maxsplit=1)[-1]
        # (owner, its outlet, other end, its inlet), told by the outlets alone.
        self.edges = [(each.findtext("Tag"), port, self.tags[end.get("AttachedToObjID")],
                       int(end.get("AttachedToConnIndex")))
                      for each in graphics
                      for port, end in enumerate(each.find("OutputConnectors"))
                      if end.get("IsAttached").lower() == "true"]

    def is_stream(self, tag):
        return self.classes[tag] in STREAM_LISTS

    def units(self):
        """The unit operations that the library has a class for."""
        return [tag for tag, word in self.classes.items()
                if not self.is_stream(tag) and word not in NO_CLASSES]

    def ends(self, stream):
        """Names of the unit operations before and behind a stream, empty without one."""
        before = [owner for owner, _, end, _ in self.edges if end == stream]
        behind = [end for owner, _, end, _ in self.edges if owner == stream]
        return [(tags + [""])[0] for tags in (before, behind)]

    def overall(self, stream, element):
        """A number of a stream as a whole, which stands in the second list of its first phase."""
        properties = self.objects[stream].find("Phases")[0].findall("Properties")[1]
        return float(properties.findtext(element))

    def ports(self, unit):
        """The streams of a unit operation by list and name of the port."""
        ports = {}
        for owner, outlet, end, inlet in self.edges:
            if end == unit:
                self._add(ports, owner, ("MaterialFeed", "EnergyFeed"), "Inlet", inlet)
            if owner == unit:
                self._add(ports, end, ("MaterialProduct", "EnergyProduct"), "Outlet", outlet)
        return ports

    def _add(self, ports, stream, lists, side, port):
        is_energy = self.classes[stream] == "EnergyStream"
        name = ("Energy " if is_energy else "") + f"{side} {port + 1}"
        ports[f"{lists[is_energy]}({name})"] = stream


def vector(text):
    """Numbers of a text such as {1; 2; 3}."""
    return [float(number) for number in text.strip().strip("{}").split(";")]


@unittest.skipUnless(CASES.is_dir(), f"no sample cases in {CASES}")
class RealUnits(ProgramTest):
    def texts(self, case, paths, unit="", neutral=True):
        paths = list(paths)
        result = run("get", case, "-", *(["--neutral"] if neutral else []),
                     *(["--unit", unit] if unit else []),
                     stdin="".join(path + "\n" for path in paths))
        self.check(result, DONE, err="")
        self.assertEqual(len(paths), len(result.lines), result)
        return result.lines

    def compare(self, case, expected, unit="", neutral=True, relative=1e-9):
        """Numbers by their paths in one run."""
        for path, got in zip(expected, self.texts(case, expected, unit, neutral)):
            wanted = expected[path]
            close = got != "" and math.isclose(wanted, float(got), rel_tol=relative, abs_tol=1e-12)
            self.assertTrue(close, f"{case.name}: {path}: {wanted} {unit} expected, got {got!r}")
        return len(expected)

    def by_unit(self, case, rows, neutral=True):
        """(path, number, unit) triples, a run for each unit."""
        groups = {}
        for path, number, unit in rows:
            groups.setdefault(unit, {})[path] = number
        return sum(self.compare(case, expected, unit, neutral) for unit, expected in groups.items())

    def listed(self, case, unit):
        return self.check(run("ls", case, "--neutral", f"{UNIT}({unit})"), DONE, err="").lines


class Coefficients(RealUnits):
    # Element of the document, in K/Pa and 1/Pa; the variable, the attribute, and their unit.
    ROWS = (("jouleThomsonCoefficient", "Phase Joule-Thomson Coefficient", "JouleThomsonCoefficient", "K/bar"),
            ("isothermal_compressibility", "Phase Isothermal Compressibility", "IsothermalCompressibility",
             "1/bar"))

    def test_coefficients_of_the_vapour_have_units(self):
        compared = 0
        for case in cases():
            document = Document(case)
            for element, variable, attribute, unit in self.ROWS:
                numbers = {stream: self.of_vapour(document, stream, element)
                           for stream, word in document.classes.items() if word == "MaterialStream"}
                raw = {f'{RAW_STREAMS}."{stream}"."{variable}"."Vapour Phase"': number * 1e5
                       for stream, number in numbers.items() if number}
                neutral = {f'Flowsheet.Stream("{stream}").Overall.Vapor.PVT.{attribute}': number * 1e5
                           for stream, number in numbers.items() if number}
                compared += self.compare(case, raw, unit, neutral=False)
                compared += self.compare(case, neutral, unit)
        self.assertGreater(compared, 80)

    @staticmethod
    def of_vapour(document, stream, element):
        """Of the phase of number 2; 0 where there is none."""
        vapour, = [phase for phase in document.objects[stream].find("Phases") if phase.findtext("ID") == "2"]
        number = vapour.findall("Properties")[-1].findtext(element)
        return float(number) if number and float(number) == float(number) else 0.0


class Rows(RealUnits):
    def test_every_row_has_a_place_or_a_reason(self):
        seen = set()
        for case in cases():
            for row in unit_rows(case):
                with self.subTest(case=case.stem, **row):
                    places = [look_up(table, row) for table in (PLACES, WITHOUT_PLACE)]
                    self.assertEqual(1, sum(place is not None for place in places))
                    seen.add(id(next(filter(None, places))))
        entries = [entry for table in (PLACES, WITHOUT_PLACE) for rows in table.values()
                   for entry in rows.values()]
        self.assertEqual(set(map(id, entries)), seen)

    def rows_with(self, case, kind):
        for row in unit_rows(case):
            place = look_up(PLACES, row)
            if isinstance(place, kind):
                path = place.path.format(row["property"].partition(":")[2])
                yield row, place, f"{UNIT}({row['tag']}).{path}"

    def test_numbers_are_those_of_the_table(self):
        compared = 0
        for case in cases():
            with self.subTest(case.stem):
                compared += self.by_unit(case, [
                    (path, place.sign * float(row["value"]), unit_of(row))
                    for row, place, path in self.rows_with(case, Number)])
        self.assertEqual(58, compared)

    def test_words_are_those_of_the_table(self):
        compared = 0
        for case in cases():
            rows = list(self.rows_with(case, Text))
            expected = [place.words[row["value"]] if place.words else row["value"]
                        for row, place, _ in rows]
            self.assertEqual(expected, self.texts(case, [path for _, _, path in rows]), case)
            compared += len(rows)
        self.assertEqual(12, compared)

    def test_what_is_not_given_has_no_specified_face(self):
        compared = 0
        for case in cases():
            rows = list(self.rows_with(case, Given))
            faces = self.texts(case, [path + "(spec_value)" for _, _, path in rows])
            self.assertEqual([row["value"] == "true" for row, _, _ in rows],
                             [face != "" for face in faces], case)
            compared += len(rows)
        self.assertEqual(4, compared)

    def test_rows_without_a_place_are_variables_of_the_case(self):
        for case in cases():
            numbers = []
            for row in unit_rows(case):
                absent = look_up(WITHOUT_PLACE, row)
                if absent is None:
                    continue
                path = f'{RAW_UNITS}."{row["tag"]}".{absent.variable}'
                try:
                    numbers.append((path, float(row["value"]), absent.unit))
                except ValueError:
                    self.assertNotEqual([""], self.texts(case, [path], neutral=False))
            self.by_unit(case, numbers, neutral=False)

    def test_the_view_has_the_unit_operations_of_its_classes(self):
        for case in cases():
            shown = [line[len("UnitOperation("):-1]
                     for line in self.check(run("ls", case, "--neutral", "Flowsheet")).lines
                     if line.startswith("UnitOperation(")]
            self.assertEqual(Document(case).units(), shown, case)


class Elements(RealUnits):
    def test_what_the_document_tells_beyond_the_table(self):
        compared = 0
        for case in cases():
            document = Document(case)
            rows = [(f"{UNIT}({tag}).{path}", float(document.objects[tag].findtext(element)), unit)
                    for tag in document.units()
                    for element, (path, unit) in ELEMENTS.get(document.classes[tag], {}).items()]
            with self.subTest(case.stem):
                compared += self.by_unit(case, rows)
        self.assertEqual(84, compared)

    def test_an_exchanger_has_the_product_of_its_coefficient_and_area(self):
        compared = 0
        for case in cases():
            objects = Document(case).objects
            compared += self.compare(case, {
                f"{UNIT}({tag}).UA": float(node.findtext("OverallCoefficient"))
                * float(node.findtext("Area")) for tag, node in objects.items()
                if node.find("OverallCoefficient") is not None}, "W/K")
        self.assertEqual(2, compared)

    def test_a_vessel_has_the_conditions_of_its_products(self):
        compared = 0
        for case in cases():
            document = Document(case)
            ends = {tag: document.ports(tag)["MaterialProduct(Outlet 1)"]
                    for tag, word in document.classes.items()
                    if word in VESSELS}
            for name, element, unit in (("Temperature", "temperature", "K"),
                                        ("Pressure", "pressure", "Pa")):
                compared += self.compare(case, {
                    f"{UNIT}({tag}).Flash.{fluid}{name}": document.overall(stream, element)
                    for tag, stream in ends.items() for fluid in ("", "Fluid.")}, unit)
        self.assertEqual(7 * 2 * 2, compared)

    def test_numbers_that_no_mode_asked_for_are_not_shown(self):
        for case in cases():
            document = Document(case)
            paths = [f"{UNIT}({tag}).MinimumApproach" for tag in document.units()
                     if document.classes[tag] == "HeatExchanger"
                     and document.objects[tag].findtext("CalculationMode") != "PinchPoint"]
            self.assertEqual([""] * len(paths), self.texts(case, paths))

    def test_a_temperature_that_is_given_to_a_vessel_is_its_specified_face(self):
        with zipfile.ZipFile(AMMONIA) as archive:
            name, = archive.namelist()
            text = archive.read(name).decode("utf-8-sig")
        changed = self.folder / "given.dwxmz"
        with zipfile.ZipFile(changed, "w", zipfile.ZIP_DEFLATED) as archive:
            for condition in "TP":
                given = f"<Override{condition}>true<"
                self.assertIn(given.replace("true", "false"), text)
                text = text.replace(given.replace("true", "false"), given)
            archive.writestr(name, text)
        vessel = f"{UNIT}(V-1).Flash."
        self.assertEqual(["25", "101.325"], self.texts(
            changed, [vessel + "Temperature(spec_value)", vessel + "Pressure(spec_value)"]))


class Connections(RealUnits):
    def test_streams_know_the_unit_operations_at_their_ends(self):
        compared = 0
        for case in cases():
            document = Document(case)
            streams = [tag for tag in document.classes if document.is_stream(tag)]
            ends = [end for tag in streams for end in document.ends(tag)]
            paths = [f"Flowsheet.{STREAM_LISTS[document.classes[tag]]}({tag}).{end}UnitOperation"
                     for tag in streams for end in ("Upstream", "Downstream")]
            self.assertEqual(ends, self.texts(case, paths), case)
            compared += len(ends) - ends.count("")
        self.assertEqual(72, compared)

    def test_unit_operations_know_their_feeds_and_products(self):
        lists = re.compile(r"(Material|Energy)(Feed|Product)\(")
        compared = 0
        for case in cases():
            document = Document(case)
            for tag in document.units():
                with self.subTest(case=case.stem, unit=tag):
                    ports = document.ports(tag)
                    found = [name for name in self.listed(case, tag) if lists.match(name)]
                    self.assertEqual(sorted(ports), sorted(found))
                    names = [f"{UNIT}({tag}).{name}.StreamName" for name in ports]
                    self.assertEqual(list(ports.values()), self.texts(case, names))
                    compared += len(ports)
        self.assertEqual(64, compared)

    def test_energy_ports_have_the_heat_of_their_streams(self):
        for case in cases():
            document = Document(case)
            flows = {}
            for tag in document.units():
                for name, stream in document.ports(tag).items():
                    flow = document.objects[stream].findtext("EnergyFlow")
                    if name.startswith("Energy") and flow is not None:
                        flows[f"{UNIT}({tag}).{name}.HeatFlow"] = float(flow)
            self.compare(case, flows, "kW")


class Stages(RealUnits):
    COLUMN = UNIT + "(T-101)"
    # Element of the stage, or of the results, which have six digits; place; unit.
    OF_STAGES = (("T", "Temperature", "K"), ("P", "Pressure", "Pa"),
                 ("Efficiency", "Efficiency.OverallEfficiency", ""))
    OF_RESULTS = (("Vf", "VaporMolarFlow"), ("Lf", "LiquidMolarFlow"),
                  ("Vf", "VaporFrom.MolarFlow"), ("Lf", "LiquidFrom.MolarFlow"),
                  ("VSSf", "VaporDrawMolarFlow"), ("LSSf", "LiquidDrawMolarFlow"))
    COMPOSITIONS = (("xf", "LiquidFrom"), ("yf", "VaporFrom"))

    def setUp(self):
        self.node = Document(COLUMNS).objects["T-101"]
        self.stages = list(self.node.find("Stages"))

    def at(self, stage, path):
        return f"{self.COLUMN}.Stage({stage}).{path}"

    def test_names_conditions_and_efficiencies(self):
        names = [stage.findtext("Name") for stage in self.stages]
        self.assertEqual(30, len(names))
        self.assertEqual(names, self.texts(COLUMNS, [self.at(i, "Name") for i in range(30)]))
        for element, path, unit in self.OF_STAGES:
            self.compare(COLUMNS, {self.at(i, path): float(stage.findtext(element))
                                   for i, stage in enumerate(self.stages)}, unit)

    def test_flows(self):
        for element, path in self.OF_RESULTS:
            flows = vector(self.node.find("Results").findtext(element))
            self.assertEqual(30, len(flows))
            self.compare(COLUMNS, {self.at(i, path): flow for i, flow in enumerate(flows)}, "mol/s")

    def test_compositions(self):
        results = self.node.find("Results")
        components = results.findtext("compids").split(",")
        compared = 0
        for element, phase in self.COMPOSITIONS:
            compared += self.compare(COLUMNS, {
                self.at(i, f"{phase}.Composition({component}).MoleFraction"): fraction
                for i, row in enumerate(results.find(element))
                for component, fraction in zip(components, vector(row.text))})
        self.assertEqual(2 * 30 * 3, compared)

    def test_feeds_and_products_stand_at_their_stages(self):
        document = Document(COLUMNS)
        names = [stage.findtext("Name") for stage in self.stages]
        ends = {each.findtext("StreamBehavior"): (document.tags[each.get("ID")],
                                                  names.index(each.findtext("AssociatedStage")))
                for each in self.node.find("MaterialStreams")}
        feed, stage = ends["Feed"]
        self.compare(COLUMNS, {f"{self.COLUMN}.Feed({feed}).FeedStage": stage})
        flags = {"IsFeed": {stage}, "IsDraw": {ends["Distillate"][1], ends["BottomsLiquid"][1]}}
        for flag, stages in flags.items():
            shown = self.texts(COLUMNS, [self.at(i, flag) for i in range(30)])
            self.assertEqual(stages, {i for i, text in enumerate(shown) if text == "1"}, flag)
        flow = {tag: document.overall(tag, "molarflow") for tag, _ in ends.values()}
        self.compare(COLUMNS, {
            f"{self.COLUMN}.Feed({feed}).MolarFlow": flow[feed],
            f"{self.COLUMN}.Condenser.Distillate.MolarFlow": flow[ends["Distillate"][0]],
            f"{self.COLUMN}.Reboiler.LiquidProduct.MolarFlow": flow[ends["BottomsLiquid"][0]],
            f"{self.COLUMN}.MolarDistillateRate": flow[ends["Distillate"][0]],
            f"{self.COLUMN}.MolarBottomsRate": flow[ends["BottomsLiquid"][0]]}, "mol/s")

    def test_specifications(self):
        # They have no quantity of their own, so they are in the unit of the case: kmol/h.
        for name, unit, factor in (("Condenser", "", 1), ("Reboiler", "mol/s", 3.6)):
            spec, = [each for each in self.node.find("Specs") if each.get("ID") == name[0]]
            self.assertEqual(unit, spec.findtext("SpecUnit"))
            place = f"{self.COLUMN}.Specification({name} Spec)."
            self.compare(COLUMNS, {
                place + "SpecifiedValue": factor * float(spec.findtext("SpecValue")),
                place + "CalculatedValue": factor * float(spec.findtext("CalculatedValue"))})


class Reactions(RealUnits):
    def test_extents_are_those_of_the_document(self):
        compared = 0
        for case in cases():
            document = Document(case)
            names = {each.findtext("ID"): each.findtext("Name")
                     for each in document.root.find("Reactions")}
            extents = {
                f"{UNIT}({tag}).ReactionSet.Reaction({names[each.get('ID')]}).Extent":
                    float(each.get("Value"))
                for tag in document.units()
                for each in document.objects[tag].find("ReactionExtents") or ()}
            compared += self.compare(case, extents, "mol/s")
        self.assertEqual(1, compared)

    def test_what_reacts_is_the_conversion_of_the_document(self):
        compared = 0
        for case in cases():
            document = Document(case)
            for tag in document.units():
                for each in document.objects[tag].find("CompoundConversions") or ():
                    conversion = float(each.text)
                    place = f"{UNIT}({tag}).ReactionSet.ReactantBalance({each.get('ID')})."
                    fed, made = map(float, self.texts(
                        case, [place + "TotalInflow", place + "TotalReaction"]))
                    with self.subTest(case=case.stem, place=place):
                        if math.isfinite(conversion):
                            self.assertAlmostEqual(conversion, -made / fed, delta=1e-9)
                        else:
                            self.assertEqual(0, fed)
                    compared += 1
        self.assertEqual(12, compared)

    def test_reactions_have_the_heat_and_the_stoichiometry_of_the_document(self):
        compared = 0
        for case in cases():
            for each in Document(case).root.find("Reactions"):
                place = f"ReactionPackage.Reaction({each.findtext('Name')})."
                # J/mol are kJ/kmol.
                self.compare(case, {place + "ReactionHeat": float(each.findtext("ReactionHeat"))},
                             "kJ/kmol")
                compared += self.compare(case, {
                    place + f"Reactant({one.get('Name')}).StoichiometricCoefficient":
                        float(one.get("StoichCoeff")) for one in each.find("Compounds")})
                self.assertEqual([each.findtext("BaseReactant")], self.texts(
                    case, [place + "BaseReactant.ComponentName"]))
        self.assertEqual(3, compared)


if __name__ == "__main__":
    unittest.main()
