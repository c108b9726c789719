# SPDX-License-Identifier: Apache-2.0
"""A case as one page: its flowsheet as a picture, its tables, its columns' profiles.

    python3 -m fixtop.report CASE OUT.html [--units SET]

Exit status: 0 done; 1 the page can't be made or written; 2 the command line is wrong; 3 the case can't
be read.
"""

from __future__ import annotations

import argparse
import contextlib
import dataclasses
import functools
import math
import os
import pathlib
import re
import sys
import warnings
from typing import Any, Iterable, Iterator, Optional, Union

from . import _core, drawing, plots, svg, tables
from .case import Case, open as open_case
from .errors import CaseError, Error, Refused

_TEMPLATE = "report.html"
_FROM, _TO = "From", "To"
_ENDS = (_FROM, _TO)

# With -m this is loaded a second time, which does no harm: it keeps nothing.
warnings.filterwarnings("ignore", f"'{__name__}' found in sys.modules", RuntimeWarning)


def report(
    case: "Union[Case, str, os.PathLike[str]]", file: "Union[str, os.PathLike[str]]", units: str = ""
) -> None:
    """Writes a case as one page, an HTML file that refers to nothing outside of it.

    It holds the flowsheet as a picture, tables of streams, compositions and unit operations, the
    profiles of columns, and for each number whether it is specified, calculated or stale.

    case: an open case, or the file of one, which is opened and closed again; the case that was open in
        this process is closed then.
    units: a set of units ("Process", "SI", "Field"); that of the case when left out.
    Raises CaseError for a case that can't be read, Error for another set of units and when Graphviz,
    Jinja2 or matplotlib are missing, and OSError when the file can't be written.
    """
    with contextlib.ExitStack() as stack:
        if not isinstance(case, Case):
            case = stack.enter_context(open_case(case))
        stack.enter_context(case.in_units(units))
        page = _page(case)
    pathlib.Path(file).write_text(page, encoding="utf-8", errors="replace")


# ---- What is read ----


@dataclasses.dataclass
class Cell:
    """A value as it is shown. `mark` is its status in small letters."""

    value: Any
    unit: str = ""
    mark: str = ""
    stale: bool = False

    @property
    def text(self) -> str:
        return shown(self.value)

    @property
    def is_number(self) -> bool:
        return isinstance(self.value, (int, float)) and not isinstance(self.value, bool)

    @property
    def hover(self) -> str:
        words = [
            f"{self.value!r} {self.unit}".rstrip() if self.is_number else svg.clean(str(self.value or "")),
            self.mark,
            "stale" if self.stale else "",
        ]
        return ", ".join(word for word in words if word)

    @property
    def classes(self) -> str:
        words = [self.mark, "stale" if self.stale else "", "number" if self.is_number else ""]
        return " ".join(word for word in words if word)


_NO_CELL = Cell(None)


@dataclasses.dataclass
class Row:
    """An object with its cells by heading."""

    prefix: str
    key: str
    kind: str
    status: str
    cells: dict[str, Cell]

    @property
    def name(self) -> str:
        return svg.clean(self.prefix + self.key)

    @property
    def is_ok(self) -> bool:
        return self.status in ("", "OK")

    def end(self, heading: str) -> str:
        """The name of the unit operation at one end; "" outside."""
        return str(self.cells[heading].value or "")

    def hover(self) -> str:
        """Name and conditions, one a line."""
        lines = [self.name, self.kind, "" if self.is_ok else self.status]
        lines += [
            f"{heading}: {cell.text} {cell.unit}".rstrip()
            for heading, cell in self.cells.items()
            if heading not in _ENDS and cell.text
        ]
        return "\n".join(line for line in lines if line)


@dataclasses.dataclass
class Table:
    """Rows under common headings. A heading has the unit of all cells; where they differ each has its own."""

    title: str
    id: str
    rows: list[Row]

    @functools.cached_property
    def headings(self) -> list[tuple[str, str, bool]]:
        """Those with something in them, each with its unit, and whether all of it is numbers."""
        names = dict.fromkeys(
            heading for row in self.rows for heading, cell in row.cells.items() if cell.text
        )
        every = [heading for row in self.rows[:1] for heading in row.cells]
        ordered = [each for each in every if each in names] + [each for each in names if each not in every]
        return [
            (heading, self._unit(heading), all(cell.is_number for cell in self._filled(heading)))
            for heading in ordered
        ]

    def cells(self, row: Row) -> Iterator[tuple[Cell, str]]:
        """Each cell with the unit that is to stand beside it."""
        for heading, unit, _ in self.headings:
            cell = row.cells.get(heading, _NO_CELL)
            yield cell, "" if unit == cell.unit or not cell.text else cell.unit

    @property
    def has_kinds(self) -> bool:
        return any(row.kind for row in self.rows)

    def _filled(self, heading: str) -> Iterator[Cell]:
        for row in self.rows:
            cell = row.cells.get(heading, _NO_CELL)
            if cell.text:
                yield cell

    def _unit(self, heading: str) -> str:
        units = {cell.unit for cell in self._filled(heading)}
        return units.pop() if len(units) == 1 else ""


def shown(value: Any) -> str:
    """A value as tables show it: six digits of a number, "" where there is none."""
    if value is None or isinstance(value, float) and math.isnan(value):
        return ""
    if isinstance(value, bool) or not isinstance(value, (int, float)):
        return svg.clean(str(value))
    size = abs(value)
    if size != 0 and not 1e-4 <= size < 1e9:
        return f"{value:.6g}"
    decimals = 0 if size == 0 else max(0, 5 - math.floor(math.log10(size)))
    text = f"{value:.{decimals}f}"
    return text.rstrip("0").rstrip(".") if "." in text else text


def _cell(node: Optional[_core.Node]) -> Cell:
    if node is None:
        return Cell(None)
    reading = node.read()
    return Cell(reading.value, reading.unit, reading.status.lower(), reading.stale)


def _kind(node: _core.Node) -> str:
    """The class in words: QSIHeaterCooler is a heater cooler."""
    words = re.sub("^QSI", "", node.class_name)
    return re.sub(r"(?<=[a-z])(?=[A-Z])", " ", words).capitalize()


def _rows(case: Case, kind: str, columns: Iterable[tuple[str, str]], with_kind: bool = False) -> list[Row]:
    patterns = [(heading, _core.Pattern(path)) for heading, path in columns]
    rows = []
    for name, node in case.objects(kind):
        cells = {heading: _cell(node.first(pattern)) for heading, pattern in patterns}
        for end in _ENDS:  # a connection, neither specified nor calculated
            if end in cells:
                cells[end].mark = ""
        rows.append(
            Row(
                name[: len(name) - len(node.key)],
                node.key,
                _kind(node) if with_kind else "",
                str(node.attribute("status") or ""),
                cells,
            )
        )
    return rows


def _composition_rows(case: Case) -> list[Row]:
    components, fraction = _core.Pattern("Composition.Component"), _core.Pattern("MoleFraction")
    rows = []
    for name, node in case.objects("Stream"):
        cells = {each.key: _cell(each.first(fraction)) for each in node.find(components)}
        rows.append(Row(name[: len(name) - len(node.key)], node.key, "", "", cells))
    return rows


# ---- Pictures ----


def _drawn_streams(rows: Iterable[Row], is_energy: bool) -> Iterator[drawing.Stream]:
    for row in rows:
        yield drawing.Stream((row.prefix, row.key), row.end(_FROM), row.end(_TO), row.hover(), is_energy)


def _flowsheet(case: Case, streams: list[Row], energies: list[Row], units: list[Row]) -> drawing.Drawing:
    inner = [(name[: len(name) - len(node.key)], node.key) for name, node in case.objects("SubFlowsheet")]
    return drawing.Drawing(
        [drawing.Unit((row.prefix, row.key), row.kind, row.hover(), row.is_ok) for row in units],
        [*_drawn_streams(streams, False), *_drawn_streams(energies, True)],
        inner,
    )


def _profiles(case: Case) -> Iterator[tuple[str, str]]:
    """Name and picture of each column."""
    for number, (name, node) in enumerate(case.objects("UnitOperation")):
        column = tables.Column(case, name, node)
        try:
            profile = column.profile()
        except Refused:
            continue
        yield svg.clean(name), plots.profiles(
            svg.clean(name), f"profile-{number}-", profile, column.liquid(), column.vapor()
        )


# ---- The page ----


def _jinja2() -> tuple[Any, Any]:
    try:
        import jinja2
        import markupsafe
    except ImportError as error:
        raise Error("a report needs Jinja2") from error
    return jinja2, markupsafe.Markup


def _page(case: Case) -> str:
    jinja2, markup = _jinja2()
    environment = jinja2.Environment(
        autoescape=True, undefined=jinja2.StrictUndefined, trim_blocks=True, lstrip_blocks=True
    )
    text = pathlib.Path(__file__).with_name(_TEMPLATE).read_text(encoding="utf-8")
    streams = _rows(case, "Stream", tables.STREAM_COLUMNS)
    energies = _rows(case, "HeatStream", tables.ENERGY_STREAM_COLUMNS)
    units = _rows(case, "UnitOperation", tables.UNIT_OPERATION_COLUMNS, with_kind=True)
    flowsheet = _flowsheet(case, streams, energies, units)
    all_tables = [
        Table("Streams", "streams", streams),
        Table("Compositions, mole fractions", "compositions", _composition_rows(case)),
        Table("Energy streams", "energy-streams", energies),
        Table("Unit operations", "unit-operations", units),
    ]
    return environment.from_string(text).render(
        name=svg.clean(os.path.basename(case.file)),
        states=_states(case, [*streams, *energies, *units]),
        unit_set=case.unit_set,
        remarks=[svg.clean(each) for each in case.remarks],
        flowsheet=markup(flowsheet.svg()),
        unconnected=[svg.clean("".join(key)) for key in flowsheet.unconnected],
        tables=[each for each in all_tables if each.headings],
        profiles=[(each, markup(picture)) for each, picture in _profiles(case)],
    )


def _states(case: Case, rows: list[Row]) -> list[tuple[bool, str]]:
    """Whether all is well, and what is to be told, for the top of the page."""
    states = [
        (True, "Solved: nothing has changed since the last solve that was complete.")
        if case.is_complete
        else (
            False,
            "Not solved: something has changed since the last solve that was complete, or there " "was none.",
        )
    ]
    if case.is_running:
        states.append((False, "A solve is under way."))
    if case.has_old_results:
        states.append((False, "Some results are stale: older than a change of the case."))
    for status in dict.fromkeys(row.status for row in rows if not row.is_ok):
        names = ", ".join(row.name for row in rows if row.status == status)
        states.append((False, f"{svg.clean(status)}: {names}"))
    return states


# ---- The command line ----


def _arguments(arguments: Optional[list[str]]) -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        prog="python3 -m fixtop.report",
        description="Writes a case as one page of HTML.",
        epilog="exit status: 0 done; 1 the page can't be made or written; 2 the command line is wrong; "
        "3 the case can't be read",
    )
    parser.add_argument("case", metavar="CASE", help="a case file (.json, .dwxmz), or demo")
    parser.add_argument("out", metavar="OUT.html", help="the file that is written")
    parser.add_argument(
        "--units",
        metavar="SET",
        default="",
        help="the set of units in which numbers are shown: Process, SI, Field",
    )
    return parser.parse_args(arguments)


def main(arguments: Optional[list[str]] = None) -> int:
    """The command line; the exit status."""
    asked = _arguments(arguments)
    try:
        report(asked.case, asked.out, asked.units)
    except CaseError as error:
        return _failed(error, 3)
    except (Error, ValueError, OSError) as error:
        return _failed(error, 1)
    return 0


def _failed(error: Exception, status: int) -> int:
    print(f"fixtop.report: {error}", file=sys.stderr)
    return status


if __name__ == "__main__":
    sys.exit(main())
