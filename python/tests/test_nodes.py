# SPDX-License-Identifier: Apache-2.0
"""Nodes: by name, index and pattern; values with units; arrays; references; selections."""

import math

import numpy
import pytest

import fixtop
from fixtop.nodes import snake
from small_case import STREAMS, array_case, real, small_case, stream

RAW_FEED = "appModel.FlowSheetObjects.Streams.Raw Gas"


def test_a_stream_is_found_by_name_and_by_path(case):
    by_name = case["Raw Gas"]
    assert by_name == case.stream("Raw Gas") == case.neutral.at("Flowsheet.Stream(Raw Gas)")
    assert case[RAW_FEED] == case.raw.at(RAW_FEED)
    assert case["Flowsheet.Stream(Raw Gas)"] == by_name
    assert by_name.label == "Raw Gas" and by_name.class_name == "QSIMaterialStream"
    assert by_name.is_a("QSIMaterialStream") and not by_name.is_a("QSIColumn")


def test_names_are_looked_up_without_a_walk(write, monkeypatch):
    def walk(self, kind="Stream"):
        raise AssertionError("all objects are walked")

    content = small_case()
    names = ('q"q', "a/b", "a.b", "(x)", "*", "Feed 1")
    content["flowsheet"]["objects"] = [stream(name, 1) for name in names]
    for file in ("demo", write(content)):
        with fixtop.open(file) as opened:
            walked = {}
            for kind in ("Stream", "UnitOperation"):
                for name, node in opened.objects(kind):
                    walked.setdefault(name, node.path)
            with monkeypatch.context() as patch:
                patch.setattr(fixtop.Case, "objects", walk)
                assert {name: opened[name].path for name in walked} == walked
                assert opened["appModel"].path == "appModel"


def test_objects_of_inner_flowsheets_stand_behind_their_name(case):
    assert case["Stabiliser/Inlet"].key == "Inlet"
    assert case.unit_operation("Stabiliser/V-201").class_name == "QSISeparator"


def test_a_value_is_read_in_units(feed):
    assert feed.temperature.value == 30 and feed.temperature.unit == "C"
    assert feed.temperature.to("K") == pytest.approx(303.15, rel=1e-15)
    assert feed.temperature.number("F") == pytest.approx(86, rel=1e-14)
    reading = feed.pressure.read("bar")
    assert (reading.value, reading.unit, reading.status, reading.stale) == (60, "bar", "Specified", False)
    assert feed.temperature.units == ["C", "K", "F", "R"]
    feed.temperature.show_in("K")
    assert feed.temperature.unit == "C", "each look makes a node of its own"


def test_a_node_shows_its_value_in_a_unit_from_then_on(feed):
    temperature = feed.temperature
    assert temperature.show_in("degF") == "F"
    assert temperature.value == pytest.approx(86, rel=1e-14)


def test_a_quantity_has_its_unit(feed):
    pint = pytest.importorskip("pint")
    quantity = feed.temperature.quantity()
    assert quantity.to("kelvin").magnitude == pytest.approx(303.15)
    assert feed.molar_flow.quantity().to("mol/s").magnitude == pytest.approx(1000 / 3.6)
    assert isinstance(quantity, pint.Quantity)


def test_members_by_both_spellings(feed):
    assert feed.molar_flow == feed.MolarFlow
    assert snake("StdLiquidVolumeFlow") == "std_liquid_volume_flow" and snake("ComponentID") == "component_id"
    assert {"temperature", "Temperature", "molar_flow"} <= set(dir(feed))
    methane = feed.composition.component["Methane"]
    assert methane.mole_fraction.value == 0.75
    assert feed.composition.component[2] == methane
    with pytest.raises(fixtop.NoSuchNode) as wrong:
        feed.composition.component["Methan"]
    assert wrong.value.near[0] == "Methane"


def test_children_of_the_raw_tree_are_attributes(case):
    assert case.raw.appModel.FlowSheetObjects == case.raw["appModel.FlowSheetObjects"]
    with pytest.raises(AttributeError, match="near: appModel"):
        case.raw.appModl


def test_children_by_index_and_in_turn(case):
    streams = case.raw.at("appModel.FlowSheetObjects.Streams")
    children = list(streams)
    assert streams[0] == children[0] and streams[-1] == children[-1]
    assert [child.name for child in children[:2]] == ["Raw Gas", "Tail Gas"]
    with pytest.raises(IndexError, match="has .* children"):
        streams[len(children)]
    for step, child in streams.steps():
        assert streams[step] == child
    assert "Raw Gas" in streams and "Raw Gaz" not in streams
    assert children[0].parent == streams and case.raw.parent is None


def test_patterns_find_all_nodes(case):
    pattern = "appModel.FlowSheetObjects.Streams.*.Temperature"
    found = case.find(pattern)
    assert len(found) == len(case.raw.find(fixtop.Pattern(pattern))) == 40
    assert case.find("appModel.FlowSheetObjects.Streams.Raw*.Temp*")[0].value == 30
    assert [node.name for node in case.find("appModel.FlowSheetObjects.Streams.*[Temperature=30]")] == [
        "Raw Gas"
    ]
    assert case.raw.first(fixtop.Pattern("nothing")) is None
    deep = case.find("appModel.FlowSheetObjects.Streams.Raw Gas.**")
    assert case.raw.at(RAW_FEED + ".Temperature") in deep


def test_arrays_are_numpy(write):
    with fixtop.open(write(array_case())) as opened:
        feed = opened.raw.at(STREAMS + ".Feed")
        assert feed.Fractions.numbers().tolist() == [0.5, 0.25, 0.125, 0.0625]
        assert feed.Twelve[2:9:3].tolist() == [2, 5, 8]
        assert isinstance(feed.Twelve[1:], numpy.ndarray)
        assert feed.Phases.numbers().tolist() == [n / 8 for n in range(8)]
        assert feed.Twelve[3].value == 3


def test_an_array_in_units_and_with_gaps(write):
    content = small_case()
    gaps = {
        "spec": {"kind": "real", "quantity": "Pressure", "dimensions": [{"count": 3}]},
        "values": [100, None, 300],
        "state": "specified",
    }
    content["flowsheet"]["objects"] = [stream("One", 25, Gaps=gaps)]
    with fixtop.open(write(content)) as opened:
        numbers = opened.raw.at(STREAMS + ".One.Gaps").numbers("bar")
        assert numbers[0] == 1 and math.isnan(numbers[1]) and numbers[2] == 3


def test_no_value_is_none_and_nan(feed):
    assert feed.volume_flow.value is None
    assert math.isnan(feed.volume_flow.number())
    assert "(none)" in repr(feed.volume_flow)


def test_attributes(feed):
    attributes = feed.temperature.attributes()
    assert attributes["value"] == 30 and attributes["uom"] == "C" and attributes["status"] == "Specified"
    assert feed.temperature.attribute("uom") == "C" and feed.temperature.attribute("nothing") is None


def test_both_views_lead_to_each_other(case, feed):
    raw = case.raw.at(RAW_FEED)
    assert raw.neutral() == feed and feed.temperature.raw() == raw.Temperature
    assert raw.Temperature.neutral() is None or raw.Temperature.neutral().path.startswith("Flowsheet")


@pytest.mark.parametrize(
    "name",
    [
        "Dot.ted",
        'Say "so"',
        "A & B",
        "Low <",
        "(key)",
        "[0]",
        "#1",
        "with space ",
        " before",
        "Größe",
        "日本語",
        "new\nline",
        "tab\tbed",
        "a*b",
        "**",
        "!",
        "a'b",
        "\\back",
        "/slash",
        "x" * 250,
        "status",
        "value",
        "😀",
    ],
)
def test_awkward_names_find_their_way_back(write, name):
    content = small_case()
    content["flowsheet"]["objects"] = [stream("Feed", 25), stream(name, 50, **{name: real(3.5)})]
    with fixtop.open(write(content)) as opened:
        steps = {child.name: step for step, child in opened.raw.at(STREAMS).steps()}
        node = opened.raw.at(f"{STREAMS}.{steps[name]}")
        assert opened.raw.at(node.path) == node and node.Temperature.value == 50
        assert opened.raw.find(fixtop.Pattern(node.path + ".Temperature"))[0].value == 50
        variable = next(child for child in node if child.name == name)
        assert opened.raw.at(variable.path).value == 3.5
        assert name in opened.streams().index or not name.strip()


def test_a_reference_follows_its_node(case, feed):
    reference = feed.reference()
    assert reference.state == "live" and reference.get() == feed and reference.path == feed.path
    case.close()
    assert reference.state == "gone" and not reference.is_live and reference.why_gone
    with pytest.raises(fixtop.NodeGone):
        reference.get()


def test_nodes_after_close_are_gone(case, feed):
    temperature = feed.temperature
    case.close()
    case.close()
    assert feed.is_gone and case.closed
    for read in (
        lambda: temperature.value,
        lambda: temperature.to("K"),
        lambda: feed.temperature,
        lambda: temperature.store(3),
        lambda: temperature.read(),
    ):
        with pytest.raises(fixtop.NodeGone):
            read()
    assert "Node" in repr(temperature) and "Node" in temperature._repr_html_()


def test_another_case_closes_the_first():
    first = fixtop.open(fixtop.demo())
    held = first.stream("Raw Gas").temperature
    with fixtop.open(fixtop.demo()) as second:
        with pytest.raises(fixtop.NodeGone):
            held.value
        assert second.stream("Raw Gas").temperature.value == 30
        first.close()
        assert second.stream("Raw Gas").temperature.value == 30


def test_a_selection_reads_into_numpy(case, tmp_path):
    pattern = "appModel.FlowSheetObjects.Streams.*.Temperature"
    selection = case.select(pattern, unit="K")
    numbers = selection.numbers()
    assert numbers.dtype == float and len(numbers) == len(selection) == 40
    assert numbers[0] == pytest.approx(303.15, rel=1e-15)
    assert selection.values() == numbers.tolist()
    frame = selection.frame()
    assert frame.iloc[0].tolist() == [pytest.approx(303.15), "K", "Specified", False]
    file = tmp_path / "chosen.xml"
    selection.save(str(file))
    again = case.load_selection(file)
    assert again.paths == selection.paths and again.units == ["K"] * 40
    assert again.remove(again.paths[0]) and len(again) == 39 and not again.remove("nothing")


def test_a_selection_stores_in_one_batch(case):
    selection = case.select(RAW_FEED + ".Temperature", RAW_FEED + ".Pressure")
    assert selection.store([31, None]) == ["", ""]
    assert case.stream("Raw Gas").temperature.value == 31 and case.is_complete
    with pytest.raises(ValueError, match="1 values for 2 items"):
        selection.store([1])
    refused = case.select("appModel.FlowSheetObjects.Streams.Mixed Gas.Temperature").store([300])
    assert refused[0], "a calculated value can't be stored"


def test_a_selection_of_the_neutral_view(case, feed):
    selection = case.select(feed.temperature, feed.pressure)
    assert selection.numbers().tolist() == [30, 6000]
    with pytest.raises(fixtop.Refused):
        selection.add(case.raw.at(RAW_FEED + ".Temperature"))


def test_what_a_notebook_shows(case, feed):
    assert "Raw Gas" in case._repr_html_() and "<table" in feed._repr_html_()
    assert "30 C" in feed._repr_html_() and "&lt;" not in feed._repr_html_()
    assert repr(feed.temperature) == "<Node Flowsheet.Stream(Raw Gas).Temperature = 30 C>"


def test_deletion_while_iterating(case):
    """Nodes of a list that was made before the case was closed say that they are gone."""
    names = []
    with pytest.raises(fixtop.NodeGone):
        for node in case:
            names.append(node.temperature.value)
            if len(names) == 3:
                case.close()
    assert len(names) == 3
