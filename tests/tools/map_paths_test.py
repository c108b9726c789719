# SPDX-License-Identifier: Apache-2.0
"""The paths of the shipped maps, walked in solved flowsheets, against an independent script's tables."""

import csv
import math
import os
import pathlib
import unittest
import xml.etree.ElementTree as ElementTree

from support import CASES, DONE, FAILED, ProgramTest, run

RESOURCES = pathlib.Path(os.environ["FIXTOP_SOURCE"]) / "src/resources"
STREAMS = "appModel.FlowSheetObjects.Streams"
# Property of the table, attribute of the neutral view, and unit of the table's numbers.
PROPERTIES = {
    "T": ("QSIMaterialFlow", "Temperature", "K"),
    "P": ("QSIMaterialFlow", "Pressure", "Pa"),
    "molar flow": ("QSIMaterialFlow", "MolarFlow", "mol/s"),
    "mass flow": ("QSIMaterialFlow", "MassFlow", "kg/s"),
    "vapour fraction": ("QSIMaterialStream", "VaporFraction", ""),
    "energy flow": ("QSIHeatFlow", "HeatFlow", "kW"),
}


def map_path(owner, name, container=None, branch=None):
    """The path by which a map reaches an attribute."""
    root = ElementTree.parse(RESOURCES / "HMAPStreams.xml").getroot()
    for element in root.findall(f"Class[@Name='{owner}']/Attribute[@Name='{name}']"):
        for translator in element.findall("Translate[@Type='Map']"):
            if (element.get("Container"), translator.get("Branch")) == (container, branch):
                return translator.text.strip()
    raise KeyError(f"{owner}.{name}")


def quoted(name):
    return '"' + name.replace('"', '""') + '"'


def streams_of(table):
    """The properties of each stream of a table."""
    streams = {}
    with open(table, encoding="utf-8", newline="") as file:
        for row in csv.DictReader(file):
            if row["type"] in ("MaterialStream", "EnergyStream"):
                streams.setdefault(row["tag"], {})[row["property"]] = row["value"]
    return streams


class MapPaths(ProgramTest):
    def compare(self, case, unit, expected):
        """One run for all (path, number) pairs of a unit."""
        result = run("get", case, "-", *(["--unit", unit] if unit else []),
                     stdin="".join(path + "\n" for path, _ in expected))
        self.check(result, DONE, err="")
        self.assertEqual(len(expected), len(result.lines), result)
        for (path, number), got in zip(expected, result.lines):
            close = got != "" and math.isclose(number, float(got), rel_tol=1e-9, abs_tol=1e-12)
            self.assertTrue(close, f"{case}: {path}: {number} expected, got {got!r}")

    def compare_tables(self, unit, expected_of, at_least):
        if not CASES.is_dir():
            self.skipTest(f"no sample cases in {CASES}")
        compared = 0
        for table in sorted(CASES.glob("*.csv")):
            expected = [(f"{STREAMS}.{quoted(name)}.{path}", number)
                        for name, stream in streams_of(table).items()
                        for path, number in expected_of(stream)]
            self.compare(table.with_suffix(".dwxmz"), unit, expected)
            compared += len(expected)
        self.assertGreater(compared, at_least)

    def test_values_of_streams(self):
        for name, (owner, attribute, unit) in PROPERTIES.items():
            path = map_path(owner, attribute)
            with self.subTest(name):
                self.compare_tables(unit, lambda stream: [(path, float(stream[name]))]
                                    if stream.get(name) else [], 4)

    def test_flows_of_components(self):
        path = map_path("QSIMaterialFraction", "MolarFlow")

        def expected(stream):
            flow = float(stream.get("molar flow") or 0)
            shares = [value for name, value in stream.items() if name.startswith("x:")]
            # An empty stream has no flows of components.
            return [(path.replace("%CmpCnt", str(number)), float(share) * flow)
                    for number, share in enumerate(shares) if flow > 0]

        self.compare_tables("mol/s", expected, 100)

    def test_shares_of_phases(self):
        path = map_path("QSIPhaseFlow", "PhaseFraction").replace("%PhaseName", '"Vapour Phase"')
        # A stream that is all liquid may have no vapour to tell of.
        self.compare_tables("", lambda stream: [(path, float(stream["vapour fraction"]))]
                            if float(stream.get("vapour fraction") or 0) > 0 else [], 20)

    def test_a_value_has_a_specified_face_where_the_user_gave_it(self):
        path = map_path("QSIMaterialFlow", "Temperature", branch="Spec")
        for stream, code in (("Raw Gas", DONE), ("Mixed Gas", FAILED)):
            result = run("get", "demo", f"{STREAMS}.{quoted(stream)}.{path}")
            self.check(result, code, out="30\n" if code == DONE else "")


if __name__ == "__main__":
    unittest.main()
