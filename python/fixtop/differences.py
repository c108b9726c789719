# SPDX-License-Identifier: Apache-2.0
"""What differs between two cases."""

from __future__ import annotations

import concurrent.futures
import multiprocessing
import os
from typing import TYPE_CHECKING, Any, NamedTuple, Union

from . import case as cases

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
    with cases.open(file) as case:
        return _values(case)


def _values_of(case_or_file: CaseOrFile) -> dict[str, _Shown]:
    """Those of a file are read in a process of its own: one case is open at a time in each."""
    if isinstance(case_or_file, cases.Case):
        return _values(case_or_file)
    spawn = multiprocessing.get_context("spawn")
    with concurrent.futures.ProcessPoolExecutor(1, mp_context=spawn) as process:
        return process.submit(_values_of_file, os.fspath(case_or_file)).result()


def _is_same(one: _Shown, other: _Shown, tolerance: float) -> bool:
    numbers = isinstance(one.value, (int, float)) and isinstance(other.value, (int, float))
    if not numbers or one.unit != other.unit:
        return one == other
    return bool(abs(one.value - other.value) <= tolerance * max(abs(one.value), abs(other.value)))


def diff(a: CaseOrFile, b: CaseOrFile, tolerance: float = 0.0) -> "pandas.DataFrame":
    """The values of two cases that differ, by path: columns A, B, Unit, and Change for numbers (b - a).

    a, b: open cases, or files. As one case is open at a time, at most one of them is open; a file is
        read in a process of its own.
    tolerance: relative; numbers that are nearer are the same.

    Where a case has no such value the cell is None. Where the units differ both stand in Unit, and there
    is no change. Raises CaseError.
    """
    import pandas

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
