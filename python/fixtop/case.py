# SPDX-License-Identifier: Apache-2.0
"""Case: one open case, its objects by name, its solver and its tables."""

from __future__ import annotations

import contextlib
import functools
import os
import warnings
import weakref
from typing import Any, Callable, Iterator, Optional

from . import _core, tables, watching
from .errors import CaseError, Error, Normalised, NoSuchNode, SolveFailed, StoreRefused
from .nodes import _near

_STREAMS, _UNITS = "Stream", "UnitOperation"


def demo() -> str:
    """The name of the case that comes with the package, for `open`."""
    return _core.demo_case


def open(file: "str | os.PathLike[str]") -> "Case":
    """Opens a case: a file (.json, .dwxmz), or `demo()`.

    One case is open at a time in a process; it belongs to the thread that opens it. One that was
    open is closed, and its nodes are gone. Raises CaseError with the file and what is wrong in it.
    """
    return Case(os.fspath(file))


class Case(_core.Case):
    """An open case; a context manager that closes it.

    `case["Raw Gas"]` is an object of the flowsheet by name, or a node by its path.
    """

    def __init__(self, file: str):
        super().__init__(file)
        Case._end_of_open()
        Case._open = weakref.ref(self)
        self.file = file
        self._watchers: list[watching.Watcher] = []
        self._closed = False

    def __enter__(self) -> "Case":
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<Case {self.file}{', closed' if self._closed else ''}>"

    def _repr_html_(self) -> str:
        return self.streams()._repr_html_()

    @property
    def closed(self) -> bool:
        """Whether it was closed; its nodes are gone then."""
        return self._closed

    def close(self) -> None:
        """Closes the case. What was not saved is lost. A second call does nothing."""
        if not self._closed:
            super().close()
            self._end()

    def _end(self) -> None:
        self._closed = True
        for watcher in list(self._watchers):
            watcher.stop()

    # The case that is open in this process, which another one closes.
    _open: "Optional[weakref.ref[Case]]" = None

    @staticmethod
    def _end_of_open() -> None:
        former = Case._open() if Case._open else None
        if former is not None:
            former._end()

    def _opened(self) -> "Case":
        """This case; raises CaseError when it was closed."""
        if self._closed:
            raise CaseError(f"{self.file}: the case is closed")
        return self

    @property
    def raw(self) -> _core.Node:
        """The root of the case's own tree."""
        return _core.Case.raw.fget(self._opened())  # type: ignore[attr-defined]

    @property
    def neutral(self) -> _core.Node:
        """The root of the neutral view. Raises CaseError."""
        return _core.Case.neutral.fget(self._opened())  # type: ignore[attr-defined]

    @property
    def unit_set(self) -> str:
        """The set of units in which numbers are shown. Setting it raises CaseError for an unknown one."""
        return _core.Case.unit_set.fget(self._opened())  # type: ignore[attr-defined]

    @unit_set.setter
    def unit_set(self, name: str) -> None:
        _core.Case.unit_set.fset(self._opened(), name)  # type: ignore[attr-defined]

    def save(self, file: "str | os.PathLike[str]") -> None:
        """Writes the case, as the ending of the name says (.json). Raises CaseError."""
        name = os.fspath(file)
        if not name:
            raise CaseError("a case is saved to a file, and no name was given")
        _core.Case.save(self._opened(), name)

    # ---- Objects and nodes ----

    def objects(self, kind: str = _STREAMS) -> Iterator[tuple[str, _core.Node]]:
        """Name and node of each object of a kind ("Stream", "HeatStream", "UnitOperation").

        Those of an inner flowsheet stand behind its name and a slash: "Stabiliser/Inlet".
        """
        pattern, inner = _core.Pattern(kind), _core.Pattern("SubFlowsheet")

        def below(flowsheet: _core.Node, prefix: str) -> Iterator[tuple[str, _core.Node]]:
            for node in flowsheet.find(pattern):
                yield prefix + node.key, node
            for sub in flowsheet.find(inner):
                yield from below(sub, f"{prefix}{sub.key}/")

        if "Flowsheet" in self.neutral:
            yield from below(self.neutral["Flowsheet"], "")

    def _named(self, name: str, *kinds: str) -> Optional[_core.Node]:
        """The object that `objects` has under this name, sought by its key."""

        def keyed(flowsheet: _core.Node, kind: str, key: str) -> Optional[_core.Node]:
            written = key.replace('"', '""')
            node = flowsheet.first(_core.Pattern(f'{kind}("{written}")'))
            return node if node is not None and node.key == key else None

        def below(flowsheet: _core.Node, kind: str, rest: str) -> Optional[_core.Node]:
            found = keyed(flowsheet, kind, rest)
            slash = rest.find("/")
            while found is None and slash >= 0:
                sub = keyed(flowsheet, "SubFlowsheet", rest[:slash])
                if sub is not None:
                    found = below(sub, kind, rest[slash + 1 :])
                slash = rest.find("/", slash + 1)
            return found

        if "Flowsheet" not in self.neutral:
            return None
        found = (below(self.neutral["Flowsheet"], kind, name) for kind in kinds)
        return next((each for each in found if each is not None), None)

    def _object(self, name: str, *kinds: str) -> _core.Node:
        named = self._named(name, *kinds)
        if named is not None:
            return named
        names = []
        for kind in kinds:
            for each, node in self.objects(kind):
                if each == name:
                    return node
                names.append(each)
        raise NoSuchNode(name, "", _near(name, names))

    def stream(self, name: str) -> _core.Node:
        """A material stream by name. Raises NoSuchNode."""
        return self._object(name, _STREAMS)

    def unit_operation(self, name: str) -> _core.Node:
        """A unit operation by name. Raises NoSuchNode."""
        return self._object(name, _UNITS)

    def column(self, name: str) -> "tables.Column":
        """A distillation column by name. Raises NoSuchNode."""
        return tables.Column(self, name, self.unit_operation(name))

    def __getitem__(self, name: str) -> _core.Node:
        named = self._named(name, _STREAMS, _UNITS, "HeatStream")
        if named is not None:
            return named
        for top in (self.raw, self.neutral):
            if name in top:
                return top.at(name)
        try:
            return self.raw.at(name)
        except NoSuchNode as error:
            if error.found:
                raise
        return self._object(name, _STREAMS, _UNITS, "HeatStream")

    def __iter__(self) -> Iterator[_core.Node]:
        for kind in (_STREAMS, _UNITS):
            for _, node in self.objects(kind):
                yield node

    def find(self, pattern: "str | _core.Pattern") -> list[_core.Node]:
        """All nodes of the case's own tree that a path expression leads to.

        A * within a name is any text, ** any number of levels. Raises PathError.
        """
        return self.raw.find(pattern)

    # ---- Change ----

    def solve(
        self, progress: "bool | Callable[[Optional[float]], Any] | None" = None, check: bool = True
    ) -> _core.SolveResult:
        """Solves the case and waits for its end; ^C stops it.

        progress: called now and then with the share that is done (0 to 1, None when nobody knows);
            False as its answer stops the solve. True shows a bar (tqdm).
        check: raise SolveFailed when the solve is not complete.
        """
        with _progress_call(progress) as call:
            result = _core.solve(self._opened(), self._telling(call))
        self.tell_changes()
        if check and not result.complete:
            raise _failed(result)
        if check and not self.is_complete:
            raise SolveFailed("", "something was changed while the case was solved")
        return result

    @contextlib.contextmanager
    def hold(self, progress: Any = None, check: bool = True) -> Iterator[None]:
        """Stores within it are solved together at its end, and a composition is normalised once.

        Warns with Normalised. Raises StoreRefused, and SolveFailed unless `check` is False; when the
        block raises, what was stored until then stays, and nothing is solved.
        """
        held = _core.Hold(self._opened())
        try:
            yield
        except BaseException:
            held.drop()
            if not self._closed:
                self.tell_changes()
            raise
        with _progress_call(progress) as call:
            released = held.release(self, self._telling(call))
        self.tell_changes()
        for text in released.normalised:
            warnings.warn(text, Normalised, stacklevel=3)
        if released.refused:
            raise StoreRefused(*_cut(released.refused[0]))
        if check and not released.solve.complete:
            raise _failed(released.solve)

    @property
    def is_complete(self) -> bool:
        """Nothing has changed since a solve that was complete."""
        return _core.is_complete(self._opened())

    @property
    def is_running(self) -> bool:
        """A solve is under way."""
        return _core.is_running(self._opened())

    @property
    def solves_on_store(self) -> bool:
        """Whether a store starts the solver."""
        return _core.solves_on_store(self._opened())

    @solves_on_store.setter
    def solves_on_store(self, on: bool) -> None:
        _core.solve_on_store(self._opened(), on)

    def watch(self, callback: Callable[[list["watching.Change"]], Any], *nodes: Any) -> "watching.Watcher":
        """Calls back with a list of changes after stores and solves, and during a solve.

        nodes: nodes, or path expressions in the case's own tree. What the callback raises comes out of
        the store or the solve, after that has ended. `stop()` of what is answered ends it.
        """
        chosen = list(self._nodes(nodes))
        watcher = watching.Watcher(self._watchers, callback)
        try:
            for node in chosen:
                watcher.add(node)
        except BaseException:
            watcher.stop()
            raise
        return watcher

    def tell_changes(self) -> None:
        """Has each watcher called back that has something to tell."""
        watching.tell_each(self._watchers)

    def _telling(self, call: Any) -> Any:
        if not self._watchers:
            return call

        def progress(share: Optional[float]) -> Any:
            self.tell_changes()
            return call(share) if call else None

        return progress

    def _nodes(self, chosen: Any) -> Iterator[_core.Node]:
        for each in chosen:
            if isinstance(each, _core.Node):
                yield each
                continue
            found = self.find(each)
            if not found:
                raise NoSuchNode(str(each))
            yield from found

    # ---- Selections ----

    def select(self, *nodes: Any, unit: str = "") -> _core.Selection:
        """A selection of nodes, or of what path expressions lead to, each shown in `unit`.

        All of them are of one view. Raises UnitError, Refused and PathError.
        """
        chosen = list(self._nodes(nodes))
        if chosen and _is_below(chosen[0], self.neutral):
            selection = _core.Selection(self.neutral)
        else:
            selection = _core.Selection(self.raw)
        for node in chosen:
            selection.add(node, unit)
        return selection

    def load_selection(self, file: "str | os.PathLike[str]") -> _core.Selection:
        """Reads a saved selection and finds its nodes in this case. Raises CaseError."""
        return _core.Selection.load(os.fspath(file), self._opened())

    # ---- Tables ----

    def streams(self, units: str = "", quantities: bool = False) -> Any:
        """The material streams: state, flows, where they come from and go to.

        units: a set of units ("Process", "SI", "Field"); that of the case when left out.
        quantities: cells as quantities of pint, without units in the names of columns.
        """
        return tables.streams(self, units, quantities)

    def compositions(self, basis: str = "mole") -> Any:
        """Fractions of the components in each material stream; basis "mole" or "mass"."""
        return tables.compositions(self, basis)

    def unit_operations(self, units: str = "", quantities: bool = False) -> Any:
        """The unit operations: class, duties, powers, conditions."""
        return tables.unit_operations(self, units, quantities)

    def energy_streams(self, units: str = "", quantities: bool = False) -> Any:
        """The energy streams: heat flow, where they come from and go to."""
        return tables.energy_streams(self, units, quantities)

    def balance(self, units: str = "") -> Any:
        """What goes in and out of each unit operation, and of the flowsheet as a whole ("Overall").

        Errors are (in - out) over the larger of both; NaN where a flow is not known.
        """
        return tables.balance(self, units)

    @contextlib.contextmanager
    def in_units(self, units: str) -> Iterator[None]:
        """Shows the numbers of the case in a set of units within it; "" changes nothing."""
        before = self.unit_set
        if units:
            self.unit_set = units
        try:
            yield
        finally:
            if units and not self._closed:
                self.unit_set = before


def _failed(result: _core.SolveResult) -> SolveFailed:
    """A host tells the object first, where it names one: "stream Raw Gas: temperature ..."."""
    text = result.problem or result.message
    path, found, _ = text.partition(": ")
    return SolveFailed(path if found else "", text[len(path) + 2 :] if found else text)


def _is_below(node: _core.Node, top: _core.Node) -> bool:
    while node.parent is not None:
        node = node.parent
    return bool(node == top)


def _cut(text: str) -> tuple[str, str]:
    path, _, why = text.partition(": ")
    return path, why


@contextlib.contextmanager
def _progress_call(progress: Any) -> Iterator[Any]:
    if progress is None or progress is False:
        yield None
    elif progress is not True:
        yield progress
    else:
        try:
            from tqdm.auto import tqdm
        except ImportError as error:
            raise Error("a bar of the progress needs tqdm") from error
        with tqdm(total=100, unit="%", desc="Solve") as bar:
            yield functools.partial(_advance, bar)


def _advance(bar: Any, share: Optional[float]) -> None:
    if share is not None:
        bar.update(round(100 * share) - bar.n)
