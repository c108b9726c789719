# SPDX-License-Identifier: Apache-2.0
"""What a sweep gives to a process: a variant of a case, which is opened, changed, solved and read there."""

from __future__ import annotations

import dataclasses
import warnings
from typing import Any, Iterable

from . import _core
from .case import Case, open as open_case
from .errors import Error, Normalised, NoSuchMember, NoSuchNode, Refused
from .nodes import member_of


@dataclasses.dataclass(frozen=True)
class Job:
    """Inputs and outputs are paths; of a job that was found, each has "raw." or "neutral." before it."""

    file: str
    inputs: tuple[str, ...]
    outputs: tuple[str, ...]


@dataclasses.dataclass
class Row:
    """What came of a variant."""

    outputs: tuple[Any, ...] = ()
    complete: bool = False
    failed: str = ""
    remarks: tuple[str, ...] = ()


def _node(case: Case, path: str) -> _core.Node:
    for top in (case.raw, case.neutral):
        if path in top:
            return top.at(path)
    try:
        return case[path]
    except NoSuchNode as error:
        name, dot, member = path.rpartition(".")
        if not dot:
            raise
        try:
            node = member_of(_node(case, name), member)
        except (NoSuchNode, NoSuchMember):
            raise error from None
    if not isinstance(node, _core.Node):
        raise Refused(path, "is a list of objects")
    return node


def _place(case: Case, path: str, is_output: bool = False) -> tuple[str, str]:
    """Where a node is to be found at once, in another opening of the case too; and its unit."""
    node = _node(case, path)
    if is_output and not node.is_variable:
        raise Refused(path, "is no single value")
    for view in ("raw", "neutral"):
        top = getattr(case, view)
        if node.path in top and top.at(node.path) == node:
            return f"{view}.{node.path}", node.unit
    raise Refused(path, f"its own path {node.path} leads elsewhere")


def _check_distinct(case: Case, paths: Iterable[str]) -> None:
    """Raises ValueError for paths that lead to one value of the case, be it in different views."""
    first: dict[str, str] = {}
    for path in paths:
        node = _node(case, path)
        its = (node.raw(specified=True) or node.raw() or node).path
        if its in first:
            raise ValueError(f"{first[its]} and {path} are one value of the case")
        first[its] = path


def found(job: Job) -> tuple[Job, list[str]]:
    """The job with its nodes found, and their units. Raises what is wrong with the file or a path."""
    with open_case(job.file) as case:
        _check_distinct(case, job.inputs)
        inputs = [_place(case, path) for path in job.inputs]
        outputs = [_place(case, path, is_output=True) for path in job.outputs]
    places = (tuple(place for place, _ in each) for each in (inputs, outputs))
    return Job(job.file, *places), [unit for _, unit in inputs + outputs]


def _at(case: Case, place: str) -> _core.Node:
    view, _, path = place.partition(".")
    return getattr(case, view).at(path)


def run(job: Job, values: tuple[Any, ...]) -> Row:
    """Solves a variant, of a case that is opened anew: nothing of the one before it is left."""
    try:
        with open_case(job.file) as case, warnings.catch_warnings(record=True) as told:
            warnings.simplefilter("always", Normalised)
            _solve(case, zip(job.inputs, values))
            outputs = tuple(_at(case, place).value for place in job.outputs)
            remarks = tuple(str(each.message) for each in told)
            return Row(outputs, case.is_complete, "", remarks)
    except Error as error:
        return Row(failed=str(error))
    except Exception as error:  # what is wrong with one variant must not end the others
        return Row(failed=f"{type(error).__name__}: {error}")


def _solve(case: Case, stores: Iterable[tuple[str, Any]]) -> None:
    with case.hold():
        for place, value in stores:
            _at(case, place).value = value
    if not case.is_complete:
        case.solve()
