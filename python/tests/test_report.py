# SPDX-License-Identifier: Apache-2.0
"""The page of a case: its picture, its tables, its marks, and that nothing is fetched from elsewhere."""

import html.parser
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

import pytest

import fixtop

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests" / "tools"))
import small_case  # noqa: E402

REAL = sorted(pathlib.Path(os.environ.get("FIXTOP_CASES", "")).glob("real/*.dwxmz"))
CASES = [fixtop.demo(), *map(str, REAL)]
ODD_NAMES = [
    "<script>alert(1)</script>",
    "A & B \"so\" 'so'",
    "&lt;b&gt; &#65;",
    "Größe 温度 \U0001f525 e\u0301",
    "first line\nsecond line",
    "back\\slash \\N \\n \\",
    "{record|<port>} \\G",
    "slash/within",
    "__proto__ {{ 7 * 7 }} {% raw %}",
    "L" + "ong " * 100,
    "W" * 200,
    "control \x01 \x7f",
]


class Page(html.parser.HTMLParser):
    """A page as its tables: rows of cells, each with its classes and its text."""

    def __init__(self, text):
        super().__init__()
        self.text, self.tables, self.tags, self._cell, self._id = text, {}, [], None, None
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.tags.append((tag, given))
        if tag == "table":
            self._id = given["id"]
            self.tables[self._id] = []
        elif tag == "tr":
            self.tables[self._id].append([])
        elif tag in ("td", "th"):
            self._cell = {"class": given.get("class", "").split(), "text": ""}
            self.tables[self._id][-1].append(self._cell)

    def handle_endtag(self, tag):
        if tag in ("td", "th"):
            self._cell = None

    def handle_data(self, data):
        if self._cell is not None:
            self._cell["text"] += data

    def column(self, table, heading):
        """Cells by the name of their row."""
        head, *rows = self.tables[table]
        at = [cell["text"] for cell in head].index(heading)
        return {row[0]["text"]: row[at] for row in rows}

    def pictures(self):
        return [ElementTree.fromstring(each) for each in re.findall("<svg.*?</svg>", self.text, re.S)]

    def drawn(self, word):
        """Elements of a class in the picture of the flowsheet: hover text and label of each."""
        found = {}
        for group in self.pictures()[0].iter("{http://www.w3.org/2000/svg}g"):
            if word in group.get("class", "").split():
                label = " ".join(each.text for each in group if each.tag.endswith("}text"))
                found[group.get("id")] = (group.findtext("{http://www.w3.org/2000/svg}title"), label)
        return dict(sorted(found.items(), key=lambda item: int(item[0].rpartition("-")[2])))


def page_of(case, folder, units=""):
    fixtop.report(case, folder / "report.html", units)
    return Page((folder / "report.html").read_text(encoding="utf-8"))


def expected_parts(case):
    """Names of unit operations, and of connected streams, by the tables of the case."""
    units, streams = set(case.unit_operations().index), {}
    inner = {name for name, _ in case.objects("SubFlowsheet")}
    for kind, table in (("Stream", case.streams()), ("HeatStream", case.energy_streams())):
        nodes, streams[kind] = dict(case.objects(kind)), set()
        for name, row in table.iterrows():
            ends = [row[end] for end in ("From", "To") if end in table.columns and row[end]]
            if ends:
                streams[kind].add(name)
            prefix = name[: len(name) - len(nodes[name].key)]
            units |= {prefix + end for end in ends} - inner
    return units, streams["Stream"], streams["HeatStream"]


def first_lines(drawn):
    return sorted(title.split("\n")[0] for title, _ in drawn.values())


@pytest.mark.parametrize("file", CASES, ids=os.path.basename)
def test_picture_has_each_unit_operation_and_each_connected_stream_once(file, tmp_path):
    with fixtop.open(file) as case:
        units, streams, energies = expected_parts(case)
        page = page_of(case, tmp_path)
    assert units and streams
    for word, names in (("unit-operation", units), ("material-stream", streams), ("energy-stream", energies)):
        drawn = page.drawn(word)
        assert len(drawn) == len(names)
        assert first_lines(drawn) == sorted(names)
        for title, label in drawn.values():
            assert label.startswith(title.split("\n")[0].rpartition("/")[2])


@pytest.mark.parametrize("file", CASES, ids=os.path.basename)
def test_page_refers_to_nothing_outside(file, tmp_path):
    assert_nothing_outside(page_of(file, tmp_path))


def assert_nothing_outside(page):
    links = re.findall(r"\w+://[^\s\"'<>]*", page.text)
    assert set(links) <= {"http://www.w3.org/2000/svg"}
    assert not re.search(r"@import|@font-face|url\((?!#)", page.text)
    for tag, given in page.tags:
        assert tag not in ("script", "link", "iframe", "object", "embed", "img", "base", "image")
        assert not {"src", "srcset", "data", "action", "background"} & given.keys()
        assert given.get("href", "#").startswith("#") and "xlink:href" not in given
        assert not [name for name in given if name.startswith("on")]
    ids = [given["id"] for _, given in page.tags if "id" in given]
    assert len(ids) == len(set(ids))
    for _, given in page.tags:
        for target in re.findall(r"url\(#([^)]*)\)", " ".join(filter(None, given.values()))):
            assert target in ids
        if "href" in given:
            assert given["href"][1:] in ids


@pytest.mark.parametrize("units", ["", "SI", "Field"])
def test_tables_have_the_numbers_of_the_case_with_units_in_heads(units, tmp_path):
    with fixtop.open(fixtop.demo()) as case:
        page = page_of(case, tmp_path, units)
        frames = {"streams": case.streams(units), "unit-operations": case.unit_operations(units)}
        assert case.unit_set == "Process"
    for table, frame in frames.items():
        for heading, values in frame.select_dtypes("number").items():
            cells = page.column(table, re.sub(r" \[(.*)\]$", r"\1", heading))
            assert list(cells) == list(frame.index)
            for name, value in values.items():
                shown = cells[name]["text"]
                assert float(shown or "nan") == pytest.approx(value, rel=1e-5, nan_ok=True)


def test_cells_are_marked_by_the_status_of_their_nodes(tmp_path):
    with fixtop.open(fixtop.demo()) as case:
        page = page_of(case, tmp_path)
        statuses = {name: node.temperature.status for name, node in case.objects()}
    assert set(statuses.values()) == {"Specified", "Calculated"}
    for name, cell in page.column("streams", "TemperatureC").items():
        assert cell["class"] == [statuses[name].lower(), "number"]
    assert "specified" in page.column("compositions", "Methane")["Raw Gas"]["class"]
    assert not page.column("streams", "To")["Raw Gas"]["class"]
    assert 'id="legend"' in page.text and "Solved:" in page.text


@pytest.mark.skipif(not REAL, reason="FIXTOP_CASES has no real cases")
def test_stale_numbers_are_marked_and_the_state_says_so(tmp_path):
    with fixtop.open(str(REAL[0])) as case:
        feed = next(node for _, node in case.objects() if node.temperature.status == "Specified")
        name_of_feed = feed.key
        with pytest.raises(fixtop.SolveFailed), case.hold():
            feed.temperature.value = feed.temperature.value + 5
        page = page_of(case, tmp_path)
        stale = {name: node.temperature.is_stale for name, node in case.objects()}
        assert set(stale.values()) == {True, False}
    for name, cell in page.column("streams", "TemperatureC").items():
        assert ("stale" in cell["class"]) == stale[name]
    assert "Not solved:" in page.text and "Some results are stale" in page.text
    told = re.search("Not Solved: (.*)</li>", page.text)[1].split(", ")
    assert name_of_feed in told and len(told) > 2


def odd_case(folder):
    """A case whose every stream and unit operation has an odd name, each stream from unit to unit."""
    objects = []
    for number, name in enumerate(ODD_NAMES):
        objects.append(small_case.stream(name + "s", number))
        ports = [{"role": "feed", "stream": name + "s"}]
        ports.append({"role": "product", "stream": ODD_NAMES[number - 1] + "s"})
        objects.append({"name": name, "type": "MixerOpObject", "ports": ports, "variables": {}})
    case = small_case.small_case()
    case["flowsheet"]["objects"] = objects
    return small_case.write_case(folder, "odd <b> & name.json", case)


def as_told(name):
    return re.sub("[\x01\x7f]", "\ufffd", name)


def test_odd_names_stand_in_the_page_as_they_are(tmp_path):
    page = page_of(odd_case(tmp_path), tmp_path)
    assert_nothing_outside(page)
    titles = [title for title, _ in page.drawn("unit-operation").values()]
    assert len(titles) == len(ODD_NAMES)
    for name, title in zip(ODD_NAMES, titles):
        assert title.startswith(as_told(name) + "\nMixer")
    assert len(page.drawn("material-stream")) == len(ODD_NAMES)
    assert [row[0]["text"] for row in page.tables["streams"][1:]] == [
        as_told(each) + "s" for each in ODD_NAMES
    ]
    labels = [label for _, label in page.drawn("unit-operation").values()]
    for name, label in zip(ODD_NAMES, labels):
        words = "".join(as_told(name).split())
        shown = "".join(label.removesuffix("Mixer").split())
        assert shown == words or shown.endswith("\u2026") and words.startswith(shown[:-1])
        assert len(shown) <= 60
    assert "<title>odd &lt;b&gt; &amp; name.json</title>" in page.text


def test_browser_shows_the_page_without_errors(tmp_path):
    browser = shutil.which("chromium")
    if not browser:
        pytest.skip("no chromium")
    page_of(odd_case(tmp_path), tmp_path)
    done = subprocess.run(
        [
            browser,
            "--headless",
            "--no-sandbox",
            "--disable-gpu",
            f"--user-data-dir={tmp_path}/profile",
            "--enable-logging=stderr",
            "--dump-dom",
            (tmp_path / "report.html").as_uri(),
        ],
        capture_output=True,
        text=True,
        timeout=50,
        check=True,
    )
    assert done.stdout.count('class="node unit-operation"') == len(ODD_NAMES)
    assert done.stdout.count('class="edge material-stream"') == len(ODD_NAMES)
    assert "<script" not in done.stdout.lower()
    assert "CONSOLE" not in done.stderr


def test_profiles_of_columns_are_drawn(tmp_path):
    page = page_of(fixtop.demo(), tmp_path)
    assert len(page.pictures()) == 2
    labels = [each.get("aria-label") for each in page.pictures()]
    assert labels == ["Flowsheet", "Profiles of T-100"]


def test_inner_flowsheets_are_clusters_and_unconnected_streams_are_named(tmp_path):
    page = page_of(fixtop.demo(), tmp_path)
    assert first_lines(page.drawn("inner-flowsheet")) == ["Stabiliser", "Vessels"]
    assert "T-100 Flowsheet/Reflux," in page.text


def test_same_case_gives_the_same_page(tmp_path):
    assert page_of(fixtop.demo(), tmp_path).text == page_of(fixtop.demo(), tmp_path).text


def test_case_without_anything_gives_a_page(tmp_path):
    case = small_case.small_case()
    case["flowsheet"]["objects"] = []
    page = page_of(small_case.write_case(tmp_path, "empty.json", case), tmp_path)
    assert page.tables == {} and not page.drawn("unit-operation")


@pytest.mark.parametrize("name", ["graphviz", "jinja2", "matplotlib"])
def test_missing_library_is_named(name, tmp_path, monkeypatch):
    monkeypatch.setitem(sys.modules, name, None)
    with pytest.raises(fixtop.Error, match=f"(?i){name}"):
        fixtop.report(fixtop.demo(), tmp_path / "report.html")
    assert not (tmp_path / "report.html").exists()


def test_missing_program_is_named(tmp_path, monkeypatch):
    monkeypatch.setenv("PATH", str(tmp_path))
    with pytest.raises(fixtop.Error, match="program dot"):
        fixtop.report(fixtop.demo(), tmp_path / "report.html")


def test_libraries_are_loaded_when_they_are_used():
    code = "import sys, fixtop; print({'graphviz', 'jinja2', 'matplotlib', 'pandas'} & set(sys.modules))"
    assert subprocess.run([sys.executable, "-c", code], capture_output=True, text=True).stdout == "set()\n"


def run(*arguments):
    return subprocess.run(
        [sys.executable, "-m", "fixtop.report", *map(str, arguments)], capture_output=True, text=True
    )


def test_command_line_writes_the_page(tmp_path):
    done = run(fixtop.demo(), tmp_path / "out.html", "--units", "Field")
    assert (done.returncode, done.stdout, done.stderr) == (0, "", "")
    assert "Set of units: Field" in (tmp_path / "out.html").read_text(encoding="utf-8")


def test_command_line_tells_what_is_wrong(tmp_path):
    (tmp_path / "bad.json").write_text(json.dumps({"format": "other"}), encoding="utf-8")
    out = tmp_path / "out.html"
    for status, word, arguments in (
        (2, "OUT.html", (fixtop.demo(),)),
        (2, "--unit-set", (fixtop.demo(), out, "--unit-set", "SI")),
        (3, "none.json", (tmp_path / "none.json", out)),
        (3, "bad.json", (tmp_path / "bad.json", out)),
        (3, "expected Process", (fixtop.demo(), out, "--units", "Fiel")),
        (1, "none/out.html", (fixtop.demo(), tmp_path / "none" / "out.html")),
    ):
        done = run(*arguments)
        assert (done.returncode, done.stdout) == (status, "")
        assert word in done.stderr and "Traceback" not in done.stderr
    assert not out.exists()
    helped = run("--help")
    assert (helped.returncode, helped.stderr) == (0, "") and "exit status" in helped.stdout


@pytest.mark.skipif("FIXTOP_PROGRAM" not in os.environ, reason="the program is not named")
def test_the_program_has_the_page_written(tmp_path, monkeypatch):
    program, page = os.environ["FIXTOP_PROGRAM"], tmp_path / "by program.html"

    def run(*arguments):
        return subprocess.run([program, "report", *arguments], capture_output=True, text=True, timeout=120)

    monkeypatch.setenv("FIXTOP_PYTHON", sys.executable)
    done = run("demo", "--html", str(page), "--units", "SI")
    assert (done.returncode, done.stdout, done.stderr) == (0, "", "")
    fixtop.report(fixtop.demo(), tmp_path / "by package.html", units="SI")
    assert page.read_bytes() == (tmp_path / "by package.html").read_bytes()
    assert run("demo", "--html", str(tmp_path / "none" / "x.html")).returncode == 1
    assert run("demo", "--html", str(page), "--units", "Imperial").returncode == 3
    assert run("demo", "--html", str(page), "--csv", str(tmp_path)).returncode == 2
    for absent in ("/bin/false", str(tmp_path / "none")):
        monkeypatch.setenv("FIXTOP_PYTHON", absent)
        done = run("demo", "--html", str(tmp_path / "other.html"))
        assert done.returncode == 1 and "python3-fixtop" in done.stderr
    assert not (tmp_path / "other.html").exists()
