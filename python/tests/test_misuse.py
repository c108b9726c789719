# SPDX-License-Identifier: Apache-2.0
"""What nobody should do ends in an error, and never in a crash."""

import copy
import gc
import pickle
import subprocess
import sys
import threading

import pytest

import fixtop
from fixtop import _core


def run(text):
    """The text as a program of its own."""
    return subprocess.run([sys.executable, "-c", text], capture_output=True, text=True, timeout=120)


def test_nodes_come_from_a_case_alone():
    for work in (
        _core.Node,
        lambda: _core.Node.__new__(_core.Node),
        lambda: type("Sub", (_core.Node,), {})(),
    ):
        with pytest.raises(TypeError, match="come from a case"):
            work()
    for kind in (_core.Reference, _core.Selection, _core.Case, _core.Hold):
        with pytest.raises(TypeError):
            kind()
    with pytest.raises(TypeError):
        type("Sub", (_core.Case,), {"__init__": lambda self: None})()


def test_nodes_are_neither_copied_nor_pickled(feed):
    for work in (copy.copy, copy.deepcopy, pickle.dumps):
        with pytest.raises(TypeError):
            work(feed)
    with pytest.raises(TypeError):
        hash(feed)
    with pytest.raises(TypeError, match="can't be deleted"):
        del feed.temperature.value


def test_wrong_arguments_are_told(case, feed):
    for work in (
        lambda: case.raw.at(3),
        lambda: feed.to(3),
        lambda: feed[None],
        lambda: case.find(3),
        lambda: case.select(3),
        lambda: fixtop.open(None),
        lambda: case.solve(progress=3),
        lambda: fixtop.Pattern(None),
    ):
        with pytest.raises((TypeError, fixtop.Error)):
            work()
    assert feed != 3 and feed is not None


@pytest.mark.parametrize(
    "text",
    [
        "import fixtop; case = fixtop.open('demo'); node = case['Raw Gas'].temperature",
        "import fixtop; case = fixtop.open('demo'); w = case.watch(print, case['Raw Gas'].temperature)",
        "import fixtop; case = fixtop.open('demo'); hold = case.hold(); hold.__enter__()",
        "import fixtop, sys; case = fixtop.open('demo'); nodes = list(case); sys.exit(0)",
        "import fixtop, threading\n"
        "def work():\n global case; case = fixtop.open('demo')\n"
        "t = threading.Thread(target=work); t.start(); t.join()",
        "import fixtop, os\ncase = fixtop.open('demo')\npid = os.fork()\n"
        "if pid: raise SystemExit(os.waitpid(pid, 0)[1])\ncase['Raw Gas'].temperature.store(35)",
    ],
)
def test_an_interpreter_ends_well_whatever_is_open(text):
    done = run(text)
    assert done.returncode == 0, done.stderr


def test_a_hold_of_a_case_that_is_closed(case, feed):
    with pytest.raises(fixtop.Error):
        with case.hold():
            feed.temperature.store(35)
            case.close()
            feed.temperature.store(36)
    with fixtop.open(fixtop.demo()) as again:
        again.stream("Raw Gas").temperature.store(31)
        assert again.is_complete


def test_a_case_that_is_closed_while_it_is_solved(case, feed):
    case.solves_on_store = False
    feed.temperature.store(35)
    with pytest.raises(fixtop.Error):
        case.solve(progress=lambda share: case.close())


def test_a_case_that_is_opened_while_another_is_solved(case, feed):
    case.solves_on_store = False
    feed.temperature.store(35)
    others = []
    try:
        case.solve(progress=lambda share: others.append(fixtop.open(fixtop.demo())))
    except fixtop.Error:
        pass
    for other in others:
        other.close()


def test_a_thousand_nodes_come_and_go(case):
    for _ in range(20):
        nodes = case.find("**")
        del nodes
    gc.collect()
    assert case.stream("Raw Gas").temperature.value == 30


# ---- What an outsider found ----


def test_texts_of_a_selection_are_numbers_where_the_nodes_are(case, feed):
    selection = case.select(feed.temperature)
    for text in ("abc", "310 K", "1200 mol/s"):
        assert selection.store([text])[0], text
    assert feed.temperature.value == 30
    assert selection.store([""]) == [""] and feed.temperature.value == 30
    assert selection.store(["31.5"]) == [""] and feed.temperature.value == 31.5
    with pytest.raises(TypeError, match="not one text"):
        selection.store("3")


def test_a_selection_leaves_the_unit_of_a_node_as_it_is(case, feed):
    temperature = feed.temperature
    assert case.select(temperature, unit="K").numbers()[0] == pytest.approx(303.15)
    assert temperature.unit == "C"
    temperature.store(31)
    assert temperature.value == 31


NAMES = """name key path type is_variable is_array parent value unit units status is_stale class_name label
    temperature""".split()


def test_all_that_is_asked_of_a_gone_node_raises(case, feed):
    temperature, streams = feed.temperature, case.raw.at("appModel.FlowSheetObjects.Streams")
    case.close()
    for node in (temperature, streams):
        for name in NAMES:
            with pytest.raises(fixtop.NodeGone, match="Node deleted"):
                getattr(node, name)
        plain = (node.children, node.steps, node.attributes, node.members, node.neutral, node.raw)
        for work in (*plain, node.numbers, node.reference, node.quantity, node.read, node.number):
            with pytest.raises(fixtop.NodeGone):
                work()
        for work in (node.at, node.find, node.attribute, node.show_in, node.to, node.store, node.is_a):
            with pytest.raises(fixtop.NodeGone):
                work("K")
        for index in (0, slice(None), "K"):
            with pytest.raises(fixtop.NodeGone):
                node[index]


def test_a_selection_of_gone_nodes_shows_no_values(case, feed):
    selection = case.select(feed.temperature)
    case.close()
    assert selection.values() == [None] and str(selection.numbers()) == "[nan]"
    row = selection.frame().iloc[0]
    assert row["Value"] is None and row["Unit"] is None and row["Status"] == "Node deleted"


def works_of(case, folder):
    return (
        case.streams,
        case.compositions,
        case.unit_operations,
        case.balance,
        case.solve,
        lambda: list(case),
        lambda: case.find("**"),
        lambda: case.raw,
        lambda: case.neutral,
        lambda: case["Raw Gas"],
        lambda: case.select("**"),
        lambda: case.is_complete,
        lambda: case.save(folder / "x.json"),
        lambda: case.unit_set,
        lambda: case.hold().__enter__(),
        lambda: case.in_units("SI").__enter__(),
        lambda: fixtop.report(case, folder / "x.html"),
    )


@pytest.mark.parametrize("another", [False, True])
def test_all_that_is_asked_of_a_closed_case_raises(tmp_path, another):
    case = fixtop.open(fixtop.demo())
    if another:
        fixtop.open(fixtop.demo()).close()
    else:
        case.close()
    assert case.closed and "closed" in repr(case)
    for work in works_of(case, tmp_path):
        with pytest.raises(fixtop.CaseError, match="demo: the case is closed"):
            work()
    assert not list(tmp_path.iterdir())


def test_a_close_that_is_refused_leaves_the_case_open(case):
    refused = []

    def close():
        try:
            case.close()
        except fixtop.WrongThread as error:
            refused.append(error)

    thread = threading.Thread(target=close)
    thread.start()
    thread.join()
    assert refused and not case.closed and case.stream("Raw Gas").temperature.value == 30


def test_watchers_end_with_their_case(case, feed):
    told = []
    case.watch(told.extend, feed.temperature)
    with fixtop.open(fixtop.demo()) as other:
        other.stream("Raw Gas").temperature.store(31)
    assert not told


def test_what_can_not_be_watched_is_refused(case, feed):
    with pytest.raises(TypeError):
        case.watch(5, feed.temperature)
    with pytest.raises(fixtop.Refused, match="no value of its own"):
        case.watch(print, feed)
    with pytest.raises(fixtop.NoSuchNode):
        case.watch(print, "nope.x")
    feed.temperature.store(31)


def test_all_watchers_are_told_though_one_raises(case, feed):
    told = []

    def fail(changes):
        raise LookupError

    first = case.watch(fail, feed.temperature)
    case.watch(told.extend, feed.temperature)
    with pytest.raises(LookupError):
        feed.temperature.store(31)
    assert [change.now for change in told] == [31]
    first.stop()


def test_a_change_during_a_solve_is_no_success(case, feed):
    case.solves_on_store = False
    feed.temperature.store(35)
    try:
        case.solve(progress=lambda share: feed.temperature.store(50))
    except fixtop.SolveFailed as error:
        assert "changed while" in str(error) and not case.is_complete
    else:
        assert case.is_complete
    assert case.solve().complete and case.is_complete


def test_texts_with_nul_are_refused(case, feed, tmp_path):
    for work in (
        lambda: feed.temperature.store(30, "C\0x"),
        lambda: feed.temperature.store("38 C\0"),
        lambda: case.save(str(tmp_path / "a\0b.json")),
        lambda: case.raw.at("a\0b"),
    ):
        with pytest.raises(ValueError, match="NUL"):
            work()
    assert feed.temperature.value == 30 and not list(tmp_path.iterdir())


def test_saves_take_paths_and_want_names(case, tmp_path):
    case.save(tmp_path / "plant.json")
    assert (tmp_path / "plant.json").exists()
    with pytest.raises(fixtop.CaseError, match="no name"):
        case.save("")


def test_a_list_outside_of_a_hold_is_told_where_it_belongs(feed):
    with pytest.raises(TypeError, match="case.hold"):
        feed.composition.store([1, 2])


def test_tolerances_of_a_diff(case):
    for tolerance in (-1, float("nan")):
        with pytest.raises(ValueError, match="tolerance"):
            fixtop.diff(case, case, tolerance=tolerance)
