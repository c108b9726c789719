# SPDX-License-Identifier: Apache-2.0
"""The tutorial and the page on many variants do what they say."""

import contextlib
import io
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

import pytest

import fixtop

DOCS = pathlib.Path(__file__).resolve().parents[2] / "docs"
BUILT = pathlib.Path(fixtop.__file__).absolute().parents[2] / "tools" / "fixtop" / "fixtop"
PROGRAM = os.environ.get("FIXTOP_PROGRAM") or (str(BUILT) if BUILT.exists() else shutil.which("fixtop"))
STREAM = "appModel.FlowSheetObjects.Streams.{}.{}"


def lines(text):
    return [line.rstrip() for line in text.rstrip().splitlines()]


def test_tutorial_prints_what_stands_in_it(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    book = json.loads((DOCS / "python-tutorial.ipynb").read_text(encoding="utf-8"))
    cells = [cell for cell in book["cells"] if cell["cell_type"] == "code"]
    assert len(cells) > 8 and [cell["execution_count"] for cell in cells] == list(range(1, len(cells) + 1))
    space = {"__name__": "__main__"}
    for cell in cells:
        source, printed = "".join(cell["source"]), io.StringIO()
        with contextlib.redirect_stdout(printed):
            exec(compile(source, f"cell {cell['execution_count']}", "exec"), space)
        told = "".join(line for output in cell["outputs"] for line in output["text"])
        assert lines(printed.getvalue()) == lines(told), source
    assert (tmp_path / "tutorial.html").stat().st_size > 10_000
    assert space["case"].closed and len(space["table"]) == 3


def blocks(kind):
    text = (DOCS / "scale.md").read_text(encoding="utf-8")
    return re.findall(rf"<!-- run:{kind} -->\n```\w+\n(.*?)```", text, re.S)


def run_python(code, folder):
    (folder / "script.py").write_text(code, encoding="utf-8")
    around = {**os.environ, "PYTHONPATH": str(pathlib.Path(fixtop.__file__).absolute().parents[1])}
    command = [sys.executable, "script.py"]
    done = subprocess.run(command, cwd=folder, env=around, capture_output=True, text=True, timeout=100)
    assert done.returncode == 0, done.stderr
    return done.stdout


@pytest.fixture
def folder(tmp_path):
    with fixtop.open(fixtop.demo()) as case:
        case.save(str(tmp_path / "plant.json"))
    return tmp_path


def test_sweep_of_the_page_runs_on_one_machine(folder):
    assert run_python(blocks("python")[0], folder) == "6 variants, 0 failed\n"
    assert len((folder / "variants.csv").read_text(encoding="utf-8").splitlines()) == 7


def test_sweep_of_the_page_runs_on_workers(folder):
    pytest.importorskip("distributed")
    assert run_python(blocks("python")[1], folder) == "3 variants, 0 failed\n"


@pytest.mark.skipif(not PROGRAM or not shutil.which("bash"), reason="no program fixtop")
def test_tasks_of_the_page_make_the_table_of_a_sweep(folder):
    (folder / "sweep.sh").write_text(blocks("task")[0], encoding="utf-8")
    text = (DOCS / "scale.md").read_text(encoding="utf-8")
    variants = re.search(r"\n\n((?:    \d+ \d+\n)+)\n", text)[1].replace("    ", "")
    (folder / "variants.txt").write_text(variants, encoding="utf-8")
    path = os.pathsep.join([os.path.dirname(PROGRAM), os.environ["PATH"]])
    for task in ("1", "2", "3"):
        around = {**os.environ, "PATH": path, "SLURM_ARRAY_TASK_ID": task}
        subprocess.run(["bash", "sweep.sh"], cwd=folder, env=around, check=True, capture_output=True)
    made = [line.split() for line in run_python(blocks("python")[2], folder).splitlines()[2:]]
    given = [line.split() for line in variants.splitlines()]
    inputs = {
        STREAM.format("Raw Gas", "Temperature"): [f"{temperature} C" for temperature, _ in given],
        STREAM.format("Raw Gas", "Molar Flow"): [f"{flow} kmol/h" for _, flow in given],
    }
    outputs = [STREAM.format("Sales Gas", name) for name in ("Temperature", "Molar Flow")]
    table = fixtop.sweep(folder / "plant.json", inputs, outputs, how="zip", progress=False)
    assert [row[0] for row in made] == ["1", "2", "3"]
    for row, (_, expected) in zip(made, table.iterrows()):
        assert [float(row[-2]), float(row[-1])] == pytest.approx(list(expected.iloc[2:4]), rel=1e-5)


@pytest.mark.skipif(not PROGRAM or not shutil.which("bash"), reason="no program fixtop")
def test_task_of_the_page_fails_when_its_variant_does(folder):
    (folder / "sweep.sh").write_text(blocks("task")[0], encoding="utf-8")
    (folder / "variants.txt").write_text("-400 1000\n", encoding="utf-8")
    path = os.pathsep.join([os.path.dirname(PROGRAM), os.environ["PATH"]])
    around = {**os.environ, "PATH": path, "SLURM_ARRAY_TASK_ID": "1"}
    done = subprocess.run(["bash", "sweep.sh"], cwd=folder, env=around, capture_output=True, text=True)
    assert done.returncode == 1 and "outside the range" in done.stderr
    assert not (folder / "row-1.csv").exists()
