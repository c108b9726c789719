# SPDX-License-Identifier: Apache-2.0
"""What nobody should do ends in an error, and never in a crash."""

import copy
import gc
import pickle
import subprocess
import sys

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
