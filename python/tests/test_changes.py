# SPDX-License-Identifier: Apache-2.0
"""Stores, solving, watchers, and the errors of each."""

import os
import pickle
import signal
import threading
import warnings

import numpy
import pytest

import fixtop


def test_a_store_in_units_is_solved_at_once(case, feed):
    before = case["Mixed Gas"].temperature.value
    feed.temperature.store(310, "K")
    assert feed.temperature.value == pytest.approx(36.85, rel=1e-14) and case.is_complete
    assert case["Mixed Gas"].temperature.value > before
    feed.temperature.value = "30 C"
    feed.temperature.value = numpy.float64(31)
    feed.pressure.value = numpy.int32(5900)
    assert feed.temperature.value == 31 and feed.pressure.value == 5900


@pytest.mark.parametrize("value", [float("nan"), float("inf"), -float("inf"), 10**400])
def test_what_no_node_can_hold_is_refused(feed, value):
    with pytest.raises((ValueError, OverflowError)):
        feed.temperature.store(value)
    assert feed.temperature.value == 30


@pytest.mark.parametrize("value", [[1, 2], {}, object(), b"30", 1j])
def test_what_is_no_value_is_refused(feed, value):
    with pytest.raises(TypeError):
        feed.temperature.store(value)
    assert feed.temperature.value == 30


@pytest.mark.parametrize("value", [True, False, numpy.True_, [True, 1]])
def test_a_bool_is_no_number(case, feed, value):
    with pytest.raises(TypeError, match="give a number" if not isinstance(value, list) else None):
        feed.temperature.store(value)
    with pytest.raises(TypeError), case.hold():
        feed.temperature.store(value)
    assert feed.temperature.value == 30


def test_a_long_text_is_not_repeated(feed):
    with pytest.raises(fixtop.StoreRefused) as refused:
        feed.temperature.store("\u00e4" * 5_000_000)
    assert refused.value.text == "not a number: " + "\u00e4" * 30 + "... (10000000 bytes)"


def test_refused_stores_name_node_and_reason(case, feed):
    for node, value in ((case["Mixed Gas"].temperature, 300), (feed.temperature, "warm")):
        with pytest.raises(fixtop.StoreRefused) as refused:
            node.store(value)
        assert refused.value.path == node.path and refused.value.text
    assert feed.temperature.value == 30


def test_wrong_units_name_the_right_ones(feed):
    for work in (
        lambda: feed.temperature.to("bar"),
        lambda: feed.temperature.store(1, "bar"),
        lambda: feed.temperature.read("bar"),
        lambda: feed.temperature.show_in("bar"),
        lambda: feed.temperature.store("1 bar"),
    ):
        with pytest.raises(fixtop.UnitError, match="expected C, K, F, R") as wrong:
            work()
        assert wrong.value.path == feed.temperature.path
    assert feed.temperature.value == 30 and feed.temperature.unit == "C"


def test_paths_that_lead_nowhere(case):
    with pytest.raises(fixtop.NoSuchNode) as missing:
        case.raw.at("appModel.FlowSheetObjects.Streams.Raw Gaz.Temperature")
    assert (
        missing.value.found == "appModel.FlowSheetObjects.Streams"
        and missing.value.near[0] == '"Raw Gas"'
        or missing.value.near[0] == "Raw Gas"
    )
    with pytest.raises(fixtop.NoSuchNode, match="Raw Gas"):
        case["Raw Gaz"]
    with pytest.raises(fixtop.PathError, match="expected"):
        case.find("a[b")
    with pytest.raises(fixtop.NoSuchMember, match="near: temperature"):
        case.stream("Raw Gas").temprature


def test_errors_go_through_pickle():
    for error in (
        fixtop.NoSuchNode("a.b", "a", ["c"]),
        fixtop.StoreRefused("a", "no"),
        fixtop.CaseError(["x: y"]),
        fixtop.SolveFailed("a", "b"),
        fixtop.NoSuchMember("t", "m", ["n"]),
        fixtop.PathError("a[", "Parse error"),
    ):
        again = pickle.loads(pickle.dumps(error))
        assert type(again) is type(error) and str(again) == str(error) and vars(again) == vars(error)


def test_files_that_are_no_case(tmp_path):
    for name, content in (("a.json", "{"), ("b.dwxmz", "PK"), ("c.txt", "x")):
        file = tmp_path / name
        file.write_text(content)
        with pytest.raises(fixtop.CaseError, match=name):
            fixtop.open(file)
    with pytest.raises(fixtop.CaseError, match="none.json"):
        fixtop.open(tmp_path / "none.json")


def test_a_failed_open_leaves_the_open_case(case, tmp_path):
    with pytest.raises(fixtop.CaseError):
        fixtop.open(tmp_path / "none.json")
    assert case.stream("Raw Gas").temperature.value == 30


def test_a_store_that_can_not_be_solved_warns(case, feed):
    with pytest.warns(fixtop.NotSolved, match="outside the range"):
        feed.temperature.store(1e9)
    assert not case.is_complete
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        feed.temperature.store(30)
    assert case.is_complete


def test_a_failed_solve_raises_with_the_cause(case, feed):
    case.solves_on_store = False
    feed.temperature.store(1e9)
    with pytest.raises(fixtop.SolveFailed, match="outside the range") as failed:
        case.solve()
    assert failed.value.path == "stream Raw Gas" and "1e+09 C" in failed.value.text
    result = case.solve(check=False)
    assert not result and not result.complete


def test_a_hold_solves_once(case, feed):
    calls = []
    with case.hold(progress=calls.append):
        feed.temperature.store(35)
        feed.pressure.store(58, "bar")
        assert not case.is_complete
    assert case["Mixed Gas"].temperature.value > 30 and case.is_complete and calls
    assert (feed.temperature.value, feed.pressure.value) == (35, 5800)


def test_a_composition_in_a_hold_is_normalised_once(case, feed):
    part = feed.composition.component
    with pytest.warns(fixtop.Normalised, match="sum to"):
        with case.hold():
            part["Methane"].mole_fraction.value = 0.80
            part["Ethane"].mole_fraction.value = 0.15
    share = 0.80 + 0.15 + 0.02 + 0.02 + 0.06 + 0.03 + 0.019 + 0.001
    assert part["Methane"].mole_fraction.value == pytest.approx(0.80 / share, rel=1e-12)
    assert part["Ethane"].mole_fraction.value == pytest.approx(0.15 / share, rel=1e-12)


def test_a_whole_composition_at_once(case, feed):
    fractions = [0.02, 0.02, 0.70, 0.15, 0.06, 0.03, 0.019, 0.001]
    with case.hold():
        feed.composition.store(fractions)
    assert [part.mole_fraction.value for part in feed.composition.component] == pytest.approx(
        fractions, rel=1e-12
    )


def test_a_hold_that_is_left_by_an_error_solves_nothing(case, feed):
    with pytest.raises(KeyError):
        with case.hold():
            feed.temperature.store(35)
            raise KeyError("x")
    assert feed.temperature.value == 35
    feed.temperature.store(36)
    assert case.is_complete, "stores start the solver again"


def test_holds_do_not_nest(case, feed):
    with case.hold():
        with pytest.raises(RuntimeError, match="open already"):
            with case.hold():
                pass
        feed.temperature.store(35)
    assert case.is_complete and feed.temperature.value == 35


def test_a_hold_whose_solve_fails(case, feed):
    with pytest.raises(fixtop.SolveFailed, match="outside the range"):
        with case.hold():
            feed.temperature.store(1e9)


def test_progress_can_stop_a_solve(case, feed):
    case.solves_on_store = False
    feed.temperature.store(35)
    with pytest.raises(fixtop.SolveFailed):
        case.solve(progress=lambda share: False)
    assert case.solve()


def test_what_progress_raises_comes_out_of_the_solve(case, feed):
    case.solves_on_store = False
    feed.temperature.store(35)
    with pytest.raises(ZeroDivisionError):
        case.solve(progress=lambda share: 1 / 0)
    assert case.solve().complete and feed.temperature.value == 35


def test_an_interrupt_stops_a_solve(case, feed):
    case.solves_on_store = False
    feed.temperature.store(35)
    with pytest.raises(KeyboardInterrupt):
        case.solve(progress=lambda share: os.kill(os.getpid(), signal.SIGINT))
    assert case.solve().complete


def test_a_bar_of_the_progress(case, feed, capfd):
    pytest.importorskip("tqdm")
    case.solves_on_store = False
    feed.temperature.store(35)
    case.solve(progress=True)
    assert "Solve" in capfd.readouterr().err


def test_watchers_are_told_of_changes(case, feed):
    told = []
    watcher = case.watch(
        told.extend, feed.temperature, "appModel.FlowSheetObjects.Streams.Mixed Gas.Temperature"
    )
    feed.temperature.store(35)
    assert {change.path.split(".")[-2].strip('"') for change in told} == {"Stream(Raw Gas)", "Mixed Gas"}
    assert (told[0].before, told[0].now, told[0].unit) == (30, 35, "C")
    told.clear()
    with case.hold():
        feed.temperature.store(36)
    assert [change.now for change in told if "Raw" in change.path] == [36]
    watcher.stop()
    watcher.stop()
    told.clear()
    feed.temperature.store(37)
    assert not told


def test_what_a_callback_raises_comes_out_of_the_store(case, feed):
    def fail(changes):
        raise LookupError(len(changes))

    watcher = case.watch(fail, feed.temperature)
    with pytest.raises(LookupError):
        feed.temperature.store(35)
    assert feed.temperature.value == 35 and case.is_complete
    watcher.stop()
    feed.temperature.store(36)


def test_a_callback_may_store(case, feed):
    told = []

    def follow(changes):
        told.append(changes)
        case["Tail Gas"].temperature.store(20)

    with_watcher = case.watch(follow, feed.temperature)
    feed.temperature.store(35)
    assert len(told) == 1 and case["Tail Gas"].temperature.value == 20
    with_watcher.stop()


def test_saved_cases_hold_what_was_stored(case, feed, tmp_path):
    feed.temperature.store(35)
    file = str(tmp_path / "saved.json")
    case.save(file)
    with fixtop.open(file) as again:
        assert again.stream("Raw Gas").temperature.value == 35
        with pytest.raises(fixtop.CaseError):
            again.save(str(tmp_path / "none" / "x.json"))


# ---- Threads and processes ----


def in_thread(work):
    result = []

    def call():
        try:
            result.append(work())
        except BaseException as error:
            result.append(error)

    thread = threading.Thread(target=call)
    thread.start()
    thread.join()
    return result[0]


def test_another_thread_is_refused(case, feed):
    for work in (
        lambda: feed.temperature,
        lambda: case.streams(),
        lambda: fixtop.open("demo"),
        lambda: case.solve(),
        lambda: feed.reference(),
        lambda: fixtop.Pattern("a"),
    ):
        assert isinstance(in_thread(work), fixtop.WrongThread)
    assert feed.temperature.value == 30


def test_nodes_that_another_thread_drops(case):
    nodes = [list(case) for _ in range(20)]
    in_thread(nodes.clear)
    assert case.stream("Raw Gas").temperature.value == 30


def test_another_thread_may_open_a_case_when_none_is_open():
    def work():
        with fixtop.open(fixtop.demo()) as opened:
            return opened.stream("Raw Gas").temperature.value

    import gc

    gc.collect()
    assert in_thread(work) == 30
    with fixtop.open(fixtop.demo()) as opened:
        assert opened.stream("Raw Gas").temperature.value == 30


def test_other_threads_go_on_while_a_case_is_solved(case, feed):
    case.solves_on_store = False
    feed.temperature.store(35)
    refused = []

    def call():
        while not refused:
            try:
                feed.temperature
            except fixtop.WrongThread as error:
                refused.append(error)

    thread = threading.Thread(target=call)
    thread.start()
    assert case.solve().complete
    thread.join()
    assert refused


def answer(file):
    with fixtop.open(file) as opened:
        return opened.stream("Raw Gas").temperature.value


@pytest.mark.parametrize("how", ["fork", "spawn"])
def test_other_processes_have_cases_of_their_own(case, feed, how):
    import multiprocessing

    feed.temperature.store(35)
    with multiprocessing.get_context(how).Pool(2) as pool:
        assert pool.map(answer, [fixtop.demo()] * 4) == [30] * 4
    assert feed.temperature.value == 35
