# SPDX-License-Identifier: Apache-2.0
"""Fixtop: a process-simulation case as one browsable, typed tree.

    import fixtop

    with fixtop.open("plant.json") as case:
        print(case.streams(units="Field"))
        case.stream("Raw Gas").temperature.to("K")

A case belongs to the thread that opens it, and one is open at a time in a process. Numbers come in the
unit that the case shows, which stands beside them, unless one is asked for.
"""

from . import errors
from ._core import Node, Pattern, Reading, Reference, Selection, SolveResult, version
from .case import Case, demo, open
from .errors import (
    CaseError,
    Error,
    LeftOut,
    NodeGone,
    Normalised,
    NoSuchMember,
    NoSuchNode,
    NotSolved,
    PathError,
    Refused,
    SolveFailed,
    StoreRefused,
    UnitError,
    WrongThread,
)
from .differences import diff
from .nodes import NodeList
from .report import report
from .sweep import SweepInterrupted, sweep
from .watching import Change, Watcher

__version__ = version

__all__ = [
    "Case",
    "CaseError",
    "Change",
    "Error",
    "LeftOut",
    "Node",
    "NodeGone",
    "NodeList",
    "NoSuchMember",
    "NoSuchNode",
    "Normalised",
    "NotSolved",
    "PathError",
    "Pattern",
    "Reading",
    "Reference",
    "Refused",
    "Selection",
    "SolveFailed",
    "SolveResult",
    "StoreRefused",
    "SweepInterrupted",
    "UnitError",
    "Watcher",
    "WrongThread",
    "demo",
    "diff",
    "errors",
    "open",
    "report",
    "sweep",
]
