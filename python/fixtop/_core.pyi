# SPDX-License-Identifier: Apache-2.0
"""What the package takes of the library. All of it is for the thread that opened the case."""

from typing import Any, Callable, Iterator, Optional, Sequence, Union, overload

import numpy
import pandas
from numpy.typing import NDArray

Value = Union[None, int, float, str]

demo_case: str
version: str
FRESHNESS_OLD: int

class Reading:
    """A value as it is shown."""

    @property
    def value(self) -> Value:
        """None for no value."""
    @property
    def unit(self) -> str:
        """In which a number is told; "" for none."""
    @property
    def status(self) -> str:
        """ "Specified", "Calculated", "Missing"; "" where none is shown."""
    @property
    def stale(self) -> bool:
        """Older than a change of the case."""

class Pattern:
    """A path expression that is parsed once and walked many times, on any case."""

    def __init__(self, expression: str) -> None:
        """Raises PathError."""
    @property
    def text(self) -> str: ...

class Node:
    """A place in the tree of a case. It raises NodeGone when its object is no longer there."""

    @property
    def name(self) -> str: ...
    @property
    def key(self) -> str:
        """What tells it from siblings of its name; "" when nothing does."""
    @property
    def label(self) -> str:
        """What an engineer calls it: its key, or its name."""
    @property
    def path(self) -> str:
        """From the top, to this node and no other; "" for the top."""
    @property
    def type(self) -> str:
        """ "Real", "Array", "Object(QSIMaterialStream)"."""
    @property
    def is_variable(self) -> bool:
        """It shows a value of its own: it is no list and no object."""
    @property
    def is_array(self) -> bool: ...
    @property
    def is_gone(self) -> bool:
        """Its object is no longer there."""
    @property
    def parent(self) -> Optional[Node]:
        """None for the top."""
    def children(self) -> list[Node]: ...
    def steps(self) -> list[tuple[str, Node]]:
        """Each child with the step of a path that leads to it and to no other."""
    def __iter__(self) -> Iterator[Node]: ...
    @overload
    def __getitem__(self, path: str) -> Node: ...
    @overload
    def __getitem__(self, path: int) -> Node: ...
    @overload
    def __getitem__(self, path: slice) -> NDArray[numpy.float64]: ...
    def __contains__(self, path: str) -> bool: ...
    def __getattr__(self, name: str) -> Any: ...
    def at(self, path: str) -> Node:
        """Raises PathError and NoSuchNode."""
    def find(self, pattern: Union[str, Pattern]) -> list[Node]:
        """All nodes that a path expression leads to. In a text, a * within a name is any text and **
        any number of levels. Raises PathError."""
    def first(self, pattern: Pattern) -> Optional[Node]:
        """The first of them, or None."""
    def raw(self, specified: bool = False) -> Optional[Node]:
        """The node of the case that a node of the neutral view is mapped to: its calculated side, or
        its specified one."""
    def neutral(self) -> Optional[Node]:
        """The object of the neutral view that is mapped to this node of the case."""
    @property
    def class_name(self) -> str:
        """Of an object of the neutral view; "" for any other node."""
    def is_a(self, name: str) -> bool:
        """Whether its class is this one, or has it among its bases."""
    def members(self) -> list[tuple[str, int]]:
        """Names and kinds (1 value, 2 object, 3 list) of what its class has."""
    def member(self, name: str) -> Any:
        """A node, or a list of nodes. Raises NoSuchMember; NoSuchNode where the case has nothing."""
    value: Value
    """In the unit that the node shows; storing it may solve the case."""
    def number(self, unit: str = "") -> float:
        """The value in a unit; NaN for none. Raises UnitError, and Refused for a text."""
    def to(self, unit: str) -> float:
        """As `number`."""
    def numbers(self, unit: str = "") -> NDArray[numpy.float64]:
        """All elements of an array in their order, one dimension; NaN for those without a value."""
    def read(self, unit: str = "", attribute: str = "value") -> Reading:
        """Raises UnitError."""
    def store(self, value: Any, unit: str = "") -> None:
        """Stores a number, a text as it is typed ("30 C"), or None for no value, in a unit or in the one
        that is shown. Within `Case.hold` a composition takes a list, in which
        None leaves an element as it is.

        Raises StoreRefused and UnitError, ValueError for NaN and the infinities, and TypeError for a
        bool; warns with NotSolved when the solve that it starts is not complete."""
    def show_in(self, unit: str) -> str:
        """Has values told in a unit from now on; answers what the node calls it. Raises UnitError."""
    @property
    def unit(self) -> str: ...
    @property
    def units(self) -> list[str]:
        """Those in which the value can be told."""
    @property
    def status(self) -> str: ...
    @property
    def is_stale(self) -> bool: ...
    def attribute(self, name: str) -> Value:
        """None for one that it does not have."""
    def attributes(self) -> dict[str, Value]: ...
    def set_attribute(self, name: str, value: Value) -> None:
        """Raises Refused."""
    def quantity(self, unit: str = "") -> Any:
        """The value as a quantity of pint."""
    def reference(self) -> Reference: ...
    def _repr_html_(self) -> str: ...

class SolveResult:
    """How a solve ended; true when it is complete."""

    complete: bool
    @property
    def message(self) -> str: ...
    @property
    def problem(self) -> str:
        """Why it is not complete, as far as the host tells."""
    def __bool__(self) -> bool: ...

class Released:
    solve: SolveResult
    @property
    def normalised(self) -> list[str]: ...
    @property
    def refused(self) -> list[str]: ...

class Case:
    def __init__(self, file: str) -> None: ...
    @property
    def raw(self) -> Node:
        """The root of the case's own tree."""
    @property
    def neutral(self) -> Node:
        """The root of the neutral view. Raises CaseError."""
    @property
    def remarks(self) -> list[str]:
        """What the reader of the file had to say, though it could read it."""
    @property
    def unit_sets(self) -> list[str]: ...
    unit_set: str
    """The set of default units in which numbers are shown. Raises CaseError."""
    @property
    def has_old_results(self) -> bool:
        """Results are shown that are older than a change of the case."""
    def save(self, file: str) -> None:
        """Raises CaseError."""
    def close(self) -> None: ...

class Hold:
    def __init__(self, case: Case) -> None: ...
    def release(self, case: Case, progress: Any = None) -> Released: ...
    def drop(self) -> None: ...

class Reference:
    """A durable handle on a node, which follows its object through changes of the case."""

    def __init__(self, node: Node) -> None: ...
    @property
    def is_live(self) -> bool: ...
    @property
    def state(self) -> str:
        """ "live", "moved" when its path is another than when it was made, or "gone"."""
    @property
    def why_gone(self) -> str: ...
    @property
    def path(self) -> str: ...
    @property
    def first_path(self) -> str: ...
    def get(self) -> Node:
        """Raises NodeGone."""
    @property
    def value(self) -> Value:
        """Raises NodeGone."""

class Watch:
    def add(self, node: Node) -> None: ...
    def changes(self) -> list[tuple[str, Value, Value, str]]: ...

class Selection:
    """Chosen nodes in an order, each with the unit in which it is shown."""

    def __init__(self, root: Node) -> None: ...
    @staticmethod
    def load(file: str, case: Case) -> Selection:
        """Raises CaseError."""
    def save(self, file: str) -> None:
        """Raises CaseError."""
    def publish(self) -> str: ...
    def __len__(self) -> int: ...
    def add(self, node: Node, unit: str = "") -> bool:
        """False when it is an item already. Raises Refused."""
    def remove(self, path: str) -> bool: ...
    def node(self, item: int) -> Optional[Node]: ...
    @property
    def paths(self) -> list[str]: ...
    @property
    def units(self) -> list[str]: ...
    @property
    def remarks(self) -> list[str]: ...
    @property
    def states(self) -> list[tuple[str, int, list[str], bool]]: ...
    def numbers(self) -> NDArray[numpy.float64]:
        """All values in one pass; NaN where there is no number."""
    def values(self) -> list[Value]: ...
    def table(self) -> tuple[list[Value], list[Value], list[Value], list[int]]:
        """Values, units, statuses and ages."""
    def store(self, values: Sequence[Any], unit: str = "") -> list[str]:
        """Numbers, in `unit` or in that of the item, or texts; None leaves an item. Answers why each was
        refused, "" when it was taken."""
    def frame(self) -> pandas.DataFrame: ...
    def _repr_html_(self) -> str: ...

def solve(case: Case, progress: Optional[Callable[[Optional[float]], Any]] = None) -> SolveResult: ...
def is_running(case: Case) -> bool: ...
def is_complete(case: Case) -> bool: ...
def solves_on_store(case: Case) -> bool: ...
def solve_on_store(case: Case, on: bool) -> None: ...
def on_store(call: Optional[Callable[[], Any]]) -> None: ...
