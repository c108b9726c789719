# SPDX-License-Identifier: Apache-2.0
"""Sweeps: one table whoever solves the variants, in whatever order, and whatever happens meanwhile."""

import contextlib
import json
import logging
import multiprocessing
import os
import pathlib
import signal
import subprocess
import sys
import time

import pandas
import pytest

import fixtop

STREAMS = "appModel.FlowSheetObjects.Streams"
TEMPERATURE, FLOW = f"{STREAMS}.Raw Gas.Temperature", f"{STREAMS}.Raw Gas.Molar Flow"
OUTPUTS = [f"{STREAMS}.Sales Gas.Temperature", "appModel.FlowSheetObjects.UnitOps.E-100.Duty"]
CHILLED = "appModel.FlowSheetObjects.UnitOps.E-100.Product Temperature"


def sweep(inputs, outputs=OUTPUTS, **more):
    return fixtop.sweep(fixtop.demo(), inputs, outputs, **{"processes": 2, "progress": False, **more})


def solved_here(values):
    """The outputs of a variant, as the case itself gives them."""
    with fixtop.open(fixtop.demo()) as case:
        with case.hold():
            for path, value in values.items():
                case.raw.at(path).value = value
        return [case.raw.at(path).value for path in OUTPUTS]


@contextlib.contextmanager
def dask_workers(**more):
    distributed = pytest.importorskip("distributed")
    given = {"n_workers": 2, "threads_per_worker": 2, "processes": True, "dashboard_address": None}
    with distributed.LocalCluster(**{**given, "silence_logs": logging.CRITICAL, **more}) as cluster:
        with distributed.Client(cluster) as client:
            yield client


@pytest.fixture(scope="module")
def client():
    with dask_workers() as client:
        yield client


def test_all_roads_give_the_same_table(client):
    inputs = {
        TEMPERATURE: [20 + each / 2 for each in range(20)],
        FLOW: [800 + 50 * each for each in range(10)],
    }
    one = sweep(inputs, processes=1)
    assert len(one) == 200 and one["Complete"].all() and set(one["Failed"]) == {""}
    assert list(one.columns) == [
        f"{TEMPERATURE} [C]",
        f"{FLOW} [kgmole/h]",
        f"{OUTPUTS[0]} [C]",
        f"{OUTPUTS[1]} [kJ/h]",
        "Complete",
        "Failed",
    ]
    assert list(one.index) == list(range(200))
    assert one.iloc[:, :2].values.tolist() == [[t, f] for t in inputs[TEMPERATURE] for f in inputs[FLOW]]
    for number in (0, 77, 199):
        row = one.iloc[number]
        assert list(row.iloc[2:4]) == solved_here({TEMPERATURE: row.iloc[0], FLOW: row.iloc[1]})
    assert one.iloc[:, 3].nunique() == 200
    pandas.testing.assert_frame_equal(sweep(inputs), one, check_exact=True)
    pandas.testing.assert_frame_equal(sweep(inputs, client=client), one, check_exact=True)


def case_with_a_trace(folder):
    """A case whose result is another than the one that is solved, until the first solve."""
    with fixtop.open(fixtop.demo()) as case:
        case.save(str(folder / "trace.json"))
    plant = json.loads((folder / "trace.json").read_text(encoding="utf-8"))
    sales = next(each for each in plant["flowsheet"]["objects"] if each["name"] == "Sales Gas")
    assert sales["variables"]["Temperature"]["state"] == "calculated"
    sales["variables"]["Temperature"]["value"] = -44
    (folder / "trace.json").write_text(json.dumps(plant), encoding="utf-8")
    return folder / "trace.json"


def test_variant_does_not_depend_on_the_one_before(tmp_path):
    # Some fail and leave a case that is not solved; a variant that changes nothing is as in the file.
    file = case_with_a_trace(tmp_path)
    values = ["30 C", -400, 5, "1000 C", 30, "80 F", 45]
    frame = pandas.DataFrame({TEMPERATURE: values, CHILLED: [-20, -20, -60, 5, -20, "-30 C", -1000]})
    orders = [list(range(7)), [6, 5, 4, 3, 2, 1, 0], [1, 4, 6, 0, 3, 5, 2]]
    tables = [fixtop.sweep(file, frame.iloc[order], OUTPUTS, processes=1, progress=False) for order in orders]
    tables = [table.sort_index() for table in tables]
    assert 1 < (tables[0]["Failed"] != "").sum() < 6
    assert list(tables[0].iloc[[0, 4], 2]) == [-44, -44] and tables[0].iloc[5, 2] != -44
    for table in tables[1:]:
        pandas.testing.assert_frame_equal(table, tables[0], check_exact=True)


def test_failed_variant_is_a_row_with_its_reason():
    table = sweep({TEMPERATURE: [30, -400, "warm", "30 kPa", 35]}, processes=1)
    assert list(table["Complete"]) == [True, False, False, False, True]
    for number, word in ((1, "outside the range"), (2, "not a number"), (3, "no such unit")):
        assert word in table["Failed"][number]
        assert table.iloc[number][table.columns[1:3]].isna().all()
    assert list(table["Failed"][[0, 4]]) == ["", ""]
    assert list(table.iloc[4, 1:3]) == solved_here({TEMPERATURE: 35})


def test_killed_process_loses_only_the_variant_it_was_at():
    inputs = {TEMPERATURE: list(range(20, 32))}
    killed = []

    def kill(done, total):
        if done in (2, 5):
            killed.append(children()[0])
            os.kill(killed[-1].pid, signal.SIGKILL)

    table = sweep(inputs, progress=kill)
    assert [each.exitcode for each in killed] == [-signal.SIGKILL] * 2
    pandas.testing.assert_frame_equal(table, sweep(inputs), check_exact=True)


class Deadly:
    """A value that ends each process to which it is sent."""

    def __reduce__(self):
        return os._exit, (1,)


def test_variant_that_kills_its_process_is_a_row_after_some_tries():
    table = sweep({TEMPERATURE: [30, Deadly(), 31, 32]})
    assert list(table["Complete"]) == [True, False, True, True]
    assert table["Failed"][1].startswith("the process died, in 3 tries")
    assert list(table["Failed"][[0, 2, 3]]) == [""] * 3


def test_interrupted_sweep_has_the_rows_that_are_done():
    inputs = {TEMPERATURE: list(range(20, 60))}

    def interrupt(done, total):
        if done == 4:
            signal.raise_signal(signal.SIGINT)

    with pytest.raises(fixtop.SweepInterrupted) as raised:
        sweep(inputs, progress=interrupt)
    assert isinstance(raised.value, KeyboardInterrupt)
    table = raised.value.table
    assert 4 <= len(table) < 40
    assert [20 + number for number in table.index] == list(table.iloc[:, 0])
    for _, row in table.iterrows():
        assert row["Complete"] and list(row.iloc[1:3]) == solved_here({TEMPERATURE: row.iloc[0]})
    assert_children_end()


def children():
    """Processes of sweeps; those of Dask are daemons."""
    return [each for each in multiprocessing.active_children() if not each.daemon]


def assert_children_end():
    until = time.monotonic() + 10
    while children() and time.monotonic() < until:
        time.sleep(0.05)
    assert not children()


INTERRUPTED = """
import fixtop

if __name__ == "__main__":
    tell = lambda done, total: print(done, flush=True)
    inputs = {{{path!r}: [20 + each / 1000 for each in range(5000)]}}
    try:
        fixtop.sweep({demo!r}, inputs, [], processes=2, progress=tell)
    except KeyboardInterrupt as stopped:
        print("rows", len(stopped.table), stopped.table["Complete"].all())
"""


def test_interrupt_at_the_terminal_ends_all_processes(tmp_path):
    script = tmp_path / "script.py"
    script.write_text(INTERRUPTED.format(demo=fixtop.demo(), path=TEMPERATURE), encoding="utf-8")
    running = subprocess.Popen(
        [sys.executable, str(script)],
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        text=True,
        start_new_session=True,
    )
    try:
        assert running.stdout.readline() == "1\n"
        os.killpg(running.pid, signal.SIGINT)
        out, error = running.communicate(timeout=40)
    finally:
        with contextlib.suppress(ProcessLookupError):
            os.killpg(running.pid, signal.SIGKILL)
    words = out.splitlines()[-1].split()
    assert words[0] == "rows" and 1 <= int(words[1]) < 5000 and words[2] == "True"
    assert (running.returncode, error) == (0, "")
    # Both pipes are at their end: no process that was started has them any more.


def test_paths_are_those_of_both_trees_and_of_objects():
    outputs = [
        "Flowsheet.Stream(Sales Gas).Temperature",
        "Sales Gas.MolarFlow",
        "Sales Gas.temperature",
        "E-100.duty",
        "Sales Gas.upstream_unit_operation",
    ]
    for path in (
        TEMPERATURE,
        "Flowsheet.Stream(Raw Gas).Temperature",
        "Raw Gas.Temperature",
        "Raw Gas.temperature",
    ):
        table = sweep({path: ["86 F", 35]}, outputs, processes=1)
        assert list(table.columns[:4]) == [
            path,
            "Flowsheet.Stream(Sales Gas).Temperature [C]",
            "Sales Gas.MolarFlow [kmol/h]",
            "Sales Gas.temperature [C]",
        ]
        assert [table.iloc[1, 1], table.iloc[1, 4]] == solved_here({TEMPERATURE: 35})
        assert list(table.iloc[:, 3]) == list(table.iloc[:, 1])
        assert list(table.iloc[:, 5]) == ["TEE-100", "TEE-100"]


def test_values_go_together_or_combine():
    both = {TEMPERATURE: [20, 30], FLOW: [900, 1000]}
    assert sweep(both, []).iloc[:, :2].values.tolist() == [[20, 900], [20, 1000], [30, 900], [30, 1000]]
    assert sweep(both, [], how="zip").iloc[:, :2].values.tolist() == [[20, 900], [30, 1000]]
    frame = pandas.DataFrame(both, index=["a", "b"])
    table = sweep(frame)
    assert list(table.index) == ["a", "b"]
    assert table.iloc[:, :2].values.tolist() == [[20, 900], [30, 1000]]
    assert len(sweep({}, processes=1)) == 1 and len(sweep({TEMPERATURE: []})) == 0


def test_case_that_is_open_here_stays_as_it_is():
    with fixtop.open(fixtop.demo()) as case:
        case.raw.at(TEMPERATURE).value = 33
        sweep({TEMPERATURE: [40]}, processes=1)
        assert case.raw.at(TEMPERATURE).value == 33 and case.is_complete


def test_normalised_fractions_are_told(tmp_path):
    fractions = [0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1]
    with pytest.warns(fixtop.Normalised):
        table = sweep(
            {"Flowsheet.Stream(Raw Gas).Composition": [fractions]},
            ["Flowsheet.Stream(Raw Gas).Composition.Component(Methane).MoleFraction"],
            processes=1,
        )
    assert list(table["Failed"]) == [""]
    assert table.iloc[0, 1] == pytest.approx(1 / 8)


def test_what_is_wrong_is_told_before_anything_is_solved(tmp_path):
    (tmp_path / "bad.json").write_text("{}", encoding="utf-8")
    for error, inputs, outputs, more in (
        (fixtop.NoSuchNode, {f"{STREAMS}.Raw Gas.Temprature": [1]}, OUTPUTS, {}),
        (fixtop.NoSuchNode, {TEMPERATURE: [1]}, ["Raw Gas.nothing"], {}),
        (fixtop.Refused, {TEMPERATURE: [1]}, ["Raw Gas"], {}),
        (fixtop.Refused, {TEMPERATURE: [1]}, ["V-100.material_feed"], {}),
        (ValueError, {TEMPERATURE: [1]}, [TEMPERATURE], {}),
        (ValueError, {TEMPERATURE: [1], FLOW: [1, 2]}, OUTPUTS, {"how": "zip"}),
        (ValueError, {TEMPERATURE: [1]}, OUTPUTS, {"how": "all"}),
        (ValueError, {TEMPERATURE: [1]}, OUTPUTS, {"processes": 0}),
        (ValueError, {TEMPERATURE: [1], "Raw Gas.Temperature": [2]}, OUTPUTS, {}),
    ):
        with pytest.raises(error):
            sweep(inputs, outputs, **more)
    with pytest.raises(fixtop.CaseError, match="bad.json"):
        fixtop.sweep(tmp_path / "bad.json", {TEMPERATURE: [1]}, OUTPUTS, progress=False)
    assert_children_end()


def test_script_that_can_not_be_read_again_is_told_so():
    code = f"import fixtop\nfixtop.sweep({fixtop.demo()!r}, {{{TEMPERATURE!r}: [1]}}, [])"
    done = subprocess.run([sys.executable], input=code, capture_output=True, text=True, timeout=30)
    assert done.returncode == 1 and '`if __name__ == "__main__":`' in done.stderr.splitlines()[-1]


def test_killed_worker_of_a_cluster_is_replaced(client):
    inputs = {TEMPERATURE: list(range(20, 32))}
    pid = next(iter(client.run(os.getpid).values()))
    table = sweep(inputs, client=client, progress=lambda done, _: done == 2 and os.kill(pid, signal.SIGKILL))
    client.wait_for_workers(2, timeout=30)
    assert pid not in client.run(os.getpid).values()
    pandas.testing.assert_frame_equal(table, sweep(inputs), check_exact=True)


def test_failed_variant_of_a_cluster_is_a_row_with_its_reason(client):
    table = sweep({TEMPERATURE: [30, -400, 31]}, client=client)
    assert list(table["Complete"]) == [True, False, True] and "outside the range" in table["Failed"][1]
    with pytest.raises(fixtop.NoSuchNode):
        sweep({"nowhere": [1]}, client=client)


def test_interrupted_sweep_on_a_cluster_has_the_rows_that_are_done(client):
    def interrupt(done, total):
        if done == 3:
            signal.raise_signal(signal.SIGINT)

    with pytest.raises(fixtop.SweepInterrupted) as raised:
        sweep({TEMPERATURE: list(range(20, 60))}, client=client, progress=interrupt)
    table = raised.value.table
    assert 3 <= len(table) < 40 and [20 + number for number in table.index] == list(table.iloc[:, 0])
    assert len(sweep({TEMPERATURE: [30, 31]}, client=client)) == 2


def test_threads_of_this_process_are_refused_as_workers():
    with dask_workers(n_workers=1, processes=False) as client:
        with pytest.raises(fixtop.Error, match="have to be processes"):
            sweep({TEMPERATURE: [30]}, client=client)


def test_bar_shows_the_progress(capfd):
    pytest.importorskip("tqdm")
    sweep({TEMPERATURE: [30, 31]}, progress=True)
    assert "2/2" in capfd.readouterr().err


def test_file_is_found_from_a_relative_name(tmp_path, monkeypatch):
    with fixtop.open(fixtop.demo()) as case:
        case.save(str(tmp_path / "plant.json"))
    monkeypatch.chdir(tmp_path)
    assert sweep({TEMPERATURE: [30]}).iloc[0, 1] == solved_here({TEMPERATURE: 30})[0]
    table = fixtop.sweep(pathlib.Path("plant.json"), {TEMPERATURE: [40]}, OUTPUTS, progress=False)
    assert list(table.iloc[0, 1:3]) == solved_here({TEMPERATURE: 40})
