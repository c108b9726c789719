# SPDX-License-Identifier: Apache-2.0
"""Tables of the built-in case by hand, and of solved flowsheets against their truth files."""

import collections
import csv
import math
import subprocess
import sys

import pytest

import fixtop
from conftest import ROOT
from fixtop.quantities import pint_unit
from small_case import STREAMS, real, small_case, stream

sys.path.insert(0, str(ROOT / "examples" / "python"))
import five_questions  # noqa: E402

POUND = 0.45359237  # kg
PSI = 6894.757293168361  # Pa
FIELD = {
    "Temperature [F]": ("T", lambda kelvin: kelvin * 9 / 5 - 459.67),
    "Pressure [psi]": ("P", lambda pascal: pascal / PSI),
    "Molar flow [lbmol/h]": ("molar flow", lambda mol: mol * 3600 / 1000 / POUND),
    "Mass flow [lb/h]": ("mass flow", lambda kg: kg * 3600 / POUND),
    "Vapor fraction": ("vapour fraction", lambda share: share),
}


def truth_of(path):
    """Of each object its properties as numbers or texts, and its type."""
    rows = collections.defaultdict(dict)
    with open(path.with_suffix(".csv"), encoding="utf-8", newline="") as file:
        for row in csv.DictReader(file):
            rows[row["tag"]][row["property"]] = row["value"]
            rows[row["tag"]]["type"] = row["type"]
    return rows


def number(text):
    return float(text) if text else math.nan


def check_streams(streams, truth):
    expected = {tag for tag, row in truth.items() if row["type"] == "MaterialStream"}
    assert set(streams.index) == expected and len(streams) == len(expected)
    for tag in expected:
        for column, (name, told) in FIELD.items():
            wanted = told(number(truth[tag][name]))
            assert streams.loc[tag, column] == pytest.approx(wanted, rel=1e-9, nan_ok=True), (tag, column)


def check_composition(composition, truth):
    for tag in composition.index:
        told = {name[2:]: number(value) for name, value in truth[tag].items() if name.startswith("x:")}
        assert told, tag
        for compound, fraction in told.items():
            shown = composition.loc[tag, compound]
            assert shown == pytest.approx(fraction, rel=1e-9, nan_ok=True), (tag, compound)


def check_energy(energy, truth):
    machines = {"Heater": "duty", "Cooler": "duty", "Compressor": "power", "Expander": "power"}
    expected = {tag: row for tag, row in truth.items() if row["type"] in machines}
    assert set(energy.index) == set(expected)
    for tag, row in expected.items():
        column = "Power [W]" if machines[row["type"]] == "power" else "Duty [W]"
        column = next(each for each in energy.columns if each.split()[0] == column.split()[0])
        scale = {"[W]": 1000, "[kW]": 1}[column.split()[1]]
        wanted = abs(number(row[machines[row["type"]]])) * scale
        assert abs(energy.loc[tag, column]) == pytest.approx(wanted, rel=1e-9), tag


def check_balance(overall, truth, streams):
    """Feeds come from nowhere, products go nowhere; in kg/s."""
    ends = {"Mass in [kg/s]": "From", "Mass out [kg/s]": "To"}
    for column, end in ends.items():
        tags = [tag for tag in streams.index if not streams.loc[tag, end]]
        wanted = sum(number(truth[tag]["mass flow"]) for tag in tags)
        assert overall[column] == pytest.approx(wanted, rel=1e-9)


def test_five_questions_to_a_real_case(real_case):
    truth = truth_of(real_case)
    streams, composition, energy, overall, changed = five_questions.answers(real_case, real_case)
    check_streams(streams, truth)
    check_composition(composition, truth)
    check_energy(energy, truth)
    check_balance(overall, truth, streams)
    assert changed.empty


def test_what_a_change_makes_different(case, feed, tmp_path):
    file = str(tmp_path / "before.json")
    case.save(file)
    feed.temperature.store(35)
    told = fixtop.diff(file, case)
    row = told.loc[feed.temperature.raw().path]
    assert (row["A"], row["B"], row["Unit"], row["Change"]) == (30, 35, "C", 5)
    assert fixtop.diff(case, case).empty
    assert len(fixtop.diff(file, case, tolerance=0.5)) < len(told)
    with pytest.raises(fixtop.CaseError, match="none.json"):
        fixtop.diff(str(tmp_path / "none.json"), case)


def test_two_files_are_compared_from_any_script(write):
    """Also from one that does its work as it is loaded."""
    content = small_case()
    one, two = write(content, "one.json"), write(content, "two.json")
    text = f"import fixtop; print(len(fixtop.diff({str(one)!r}, {str(two)!r})))"
    script = one.with_suffix(".py")
    script.write_text(text, encoding="utf-8")
    done = subprocess.run([sys.executable, script], capture_output=True, text=True, timeout=120)
    assert (done.stdout, done.stderr) == ("0\n", "")


def test_what_only_one_case_has(write):
    content = small_case()
    content["flowsheet"]["objects"] = [stream("One", 25, Extra=real(1))]
    one = write(content, "one.json")
    content["flowsheet"]["objects"] = [stream("One", 25, Other=real(2, "Pressure"))]
    told = fixtop.diff(one, write(content, "two.json"))
    extra, other = f"{STREAMS}.One.Extra", f"{STREAMS}.One.Other"
    assert told.loc[extra, "A"] == 1 and math.isnan(told.loc[extra, "B"])
    assert told.loc[other, "B"] == 2 and told.loc[other, "Unit"] == "kPa"


def test_streams_of_the_built_in_case(case):
    table = case.streams()
    assert table.index.name == "Name" and table.index[0] == "Raw Gas" and len(table) == 57
    row = table.loc["Raw Gas"]
    assert (row["Temperature [C]"], row["Pressure [kPa]"], row["Molar flow [kmol/h]"]) == (30, 6000, 1000)
    assert (row["From"], row["To"]) == ("", "MIX-100") and math.isnan(row["Volume flow [m3/h]"])
    assert table.dtypes["Temperature [C]"] == float


def test_a_table_in_another_set_of_units_leaves_the_case_as_it_was(case):
    table = case.streams(units="Field")
    assert table.loc["Raw Gas", "Temperature [F]"] == pytest.approx(86, rel=1e-14)
    assert case.unit_set == "Process" and case.stream("Raw Gas").temperature.unit == "C"
    with pytest.raises(fixtop.CaseError, match="Process, SI, Field"):
        case.streams(units="Imperial")


def test_cells_as_quantities(case):
    pytest.importorskip("pint")
    table = case.streams(quantities=True)
    assert table.loc["Raw Gas", "Temperature"].to("kelvin").magnitude == pytest.approx(303.15)
    assert table.loc["Raw Gas", "Molar flow"].to("mol/s").magnitude == pytest.approx(1000 / 3.6)


@pytest.mark.parametrize(
    "unit,other,factor",
    [
        ("kmol/h", "mol/s", 1 / 3.6),
        ("lbmol/h", "mol/hour", 453.59237),
        ("kJ/h", "W", 1 / 3.6),
        ("Btu/h", "W", 0.2930710701722222),
        ("m3/h", "l/s", 1 / 3.6),
        ("kg/kmol", "g/mol", 1),
        ("%", "", 0.01),
        ("psi", "Pa", PSI),
        ("ft3/h", "m**3/hour", 0.028316846592),
        ("lb/h", "kg/hour", POUND),
    ],
)
def test_units_of_cases_are_units_of_pint(unit, other, factor):
    pytest.importorskip("pint")
    from fixtop.quantities import registry

    quantity = registry().Quantity(1.0, pint_unit(unit))
    assert quantity.to(other or "dimensionless").magnitude == pytest.approx(factor, rel=1e-4)


def test_every_unit_of_the_built_in_case_is_one_of_pint(case):
    pytest.importorskip("pint")
    units = {unit for node in case.find("**") if node.is_variable for unit in node.units}
    assert len(units) > 100
    for unit in sorted(units):
        pint_unit(unit)


@pytest.mark.parametrize("member", ["temperature", "pressure", "molar_flow", "mass_flow", "heat_flow"])
def test_pint_tells_a_value_in_all_units_as_the_case_does(feed, member):
    """Two roads from one number to another unit."""
    pytest.importorskip("pint")
    node = getattr(feed, member)
    for unit in node.units:
        told = node.quantity().to(pint_unit(unit)).magnitude
        assert told == pytest.approx(node.to(unit), rel=1e-4), unit


def test_compositions(case):
    table = case.compositions()
    assert table.loc["Raw Gas"].tolist() == [0.02, 0.02, 0.75, 0.1, 0.06, 0.03, 0.019, 0.001]
    assert case.compositions("mass").loc["Raw Gas", "Nitrogen"] == pytest.approx(0.0251712264299)
    with pytest.raises(ValueError, match="mole, mass"):
        case.compositions("volume")


def test_profiles_of_a_column(case):
    profile = case.column("T-100").profile(units="SI")
    assert profile.index.name == "Stage" and len(profile) == 12
    assert profile.iloc[0, 0] == pytest.approx(case.column("T-100").profile().iloc[0, 0] + 273.15)
    for fractions in (case.column("T-100").vapor(), case.column("T-100").liquid()):
        assert fractions.sum(axis=1).tolist() == pytest.approx([1] * 12, rel=1e-6)
    with pytest.raises(fixtop.Refused, match="has no stages"):
        case.column("V-100").profile()
    with pytest.raises(fixtop.NoSuchNode, match="near: T-100"):
        case.column("T-10")


def test_a_balance_closes(case):
    table = case.balance()
    assert list(table.index)[-1] == "Overall" and table.loc["V-100", "Feeds"] == "Chilled Gas"
    assert table.loc["V-100", "Products"] == "Cold Gas, Cold Liquid"
    assert table["Mass error"].abs().max() < 1e-4
    assert table["Energy error"].abs().max() < 1e-8
    mass = case.streams()["Mass flow [kg/h]"]
    assert table.loc["MIX-100", "Mass in [kg/h]"] == pytest.approx(mass["Raw Gas"] + mass["Tail Gas"])


def test_an_empty_flowsheet(write):
    content = small_case()
    content["flowsheet"]["objects"] = []
    with fixtop.open(write(content)) as opened:
        for table in (opened.streams(), opened.compositions(), opened.unit_operations()):
            assert table.empty
        assert opened.balance().index.tolist() == ["Overall"]
