# SPDX-License-Identifier: Apache-2.0
"""What differs between two cases."""

from __future__ import annotations

import os
import pickle
import subprocess
import sys
from typing import TYPE_CHECKING, Any, NamedTuple, Union

from . import case as cases
from .errors import Error

if TYPE_CHECKING:
    import pandas

CaseOrFile = Union["cases.Case", "str", "os.PathLike[str]"]

# Every value of the case's own tree, each once.
_ALL = "**"


class _Shown(NamedTuple):
    value: Any
    unit: str


def _values(case: "cases.Case") -> dict[str, _Shown]:
    found = {}
    for node in case.find(_ALL):
        if node.is_variable:
            found[node.path] = _Shown(node.value, node.unit)
    return found


def _values_of_file(file: str) -> dict[str, _Shown]:
    """Read in a process of its own, since one case is open at a time in each. That is no process of
    multiprocessing, which would run the caller's script once more."""
    paths = {**os.environ, "PYTHONPATH": os.pathsep.join(path for path in sys.path if path)}
    work = "import sys; from fixtop.differences import write_values; write_values(sys.argv[1])"
    command = [sys.executable, "-c", work, file]
    done = subprocess.run(command, env=paths, stdout=subprocess.PIPE, check=True)
    values = pickle.loads(done.stdout)  # of our own making
    if isinstance(values, Exception):
        raise values
    return {path: _Shown(*shown) for path, shown in values.items()}


def write_values(file: str) -> None:
    """Writes the values of a file, or the error, for `_values_of_file`."""
    values: Any
    try:
        with cases.open(file) as case:
            values = {path: tuple(shown) for path, shown in _values(case).items()}
    except Error as error:
        values = error
    sys.stdout.buffer.write(pickle.dumps(values))


def _values_of(case_or_file: CaseOrFile) -> dict[str, _Shown]:
    if isinstance(case_or_file, cases.Case):
        return _values(case_or_file)
    return _values_of_file(os.fspath(case_or_file))


def _is_same(one: _Shown, other: _Shown, tolerance: float) -> bool:
    if one.value is None and other.value is None:
        return True
    numbers = isinstance(one.value, (int, float)) and isinstance(other.value, (int, float))
    if not numbers or one.unit != other.unit:
        return one == other
    return bool(abs(one.value - other.value) <= tolerance * max(abs(one.value), abs(other.value)))


def diff(a: CaseOrFile, b: CaseOrFile, tolerance: float = 0.0) -> "pandas.DataFrame":
    """The values of two cases that differ, by path: columns A, B, Unit, and Change for numbers (b - a).

    a, b: open cases, or files. As one case is open at a time, at most one of them is open; a file is
        read in a process of its own.
    tolerance: relative; numbers that are nearer are the same.

    Where a case has no such value the cell is None, or NaN in a column of numbers. Where the units differ
    both stand in Unit, and there is no change. Raises CaseError.
    """
    import pandas

    if not tolerance >= 0:
        raise ValueError(f"no such tolerance: {tolerance}; expected 0 or more")
    before, after = _values_of(a), _values_of(b)
    nothing = _Shown(None, "")
    rows = {}
    for path in [*before, *(path for path in after if path not in before)]:
        one, other = before.get(path, nothing), after.get(path, nothing)
        if path in before and path in after and _is_same(one, other, tolerance):
            continue
        units = list(dict.fromkeys(unit for unit in (one.unit, other.unit) if unit))
        numbers = isinstance(one.value, (int, float)) and isinstance(other.value, (int, float))
        change = other.value - one.value if numbers and len(units) < 2 else float("nan")
        rows[path] = [one.value, other.value, " / ".join(units), change]
    columns = ["A", "B", "Unit", "Change"]
    return pandas.DataFrame.from_dict(rows, orient="index", columns=columns).rename_axis("Path")
