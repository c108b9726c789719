# SPDX-License-Identifier: Apache-2.0
"""Sweeps: many variants of a case, each solved in a process that has nothing else to do."""

from __future__ import annotations

import collections
import concurrent.futures
import contextlib
import dataclasses
import itertools
import multiprocessing
import os
import signal
import threading
import warnings
from concurrent.futures.process import BrokenProcessPool
from typing import TYPE_CHECKING, Any, Callable, Iterable, Iterator, Mapping, Optional, Union

from . import _core
from .case import Case, open as open_case
from .errors import Error, Normalised, NoSuchMember, NoSuchNode, Refused
from .nodes import member_of as _member

if TYPE_CHECKING:
    import pandas

_COMPLETE, _FAILED = "Complete", "Failed"


class SweepInterrupted(KeyboardInterrupt):
    """A sweep that ^C has ended.

    table: the rows that were done until then, by the numbers of their variants.
    """

    def __init__(self, table: "pandas.DataFrame"):
        self.table = table
        super().__init__(f"interrupted after {len(table)} variants")


def sweep(
    case_file: "Union[str, os.PathLike[str]]",
    inputs: "Union[Mapping[str, Any], pandas.DataFrame]",
    outputs: Iterable[str],
    client: Any = None,
    processes: Optional[int] = None,
    progress: "Union[bool, Callable[[int, int], Any]]" = True,
    how: str = "product",
) -> "pandas.DataFrame":
    """Solves variants of a case, and answers a table with one row for each, in their order.

    Each variant starts from the file, whatever was solved before it: its values are stored together,
    the case is solved once, and the outputs are read. It runs in a process of its own, so that a case
    that is open here stays open. A script that sweeps does so below `if __name__ == "__main__":`, for
    each of these processes reads it.

    case_file: a case file, or `demo()`. With a client the machines of its workers must see it too.
    inputs: values by path: numbers in the unit that the case shows, or texts with a unit ("30 C").
        A data frame has a row for each variant, and paths as the names of its columns.
    outputs: paths. A path is what `case[...]` takes, members of an object may follow with a dot:
        "Flowsheet.Stream(Raw Gas).Temperature", "Raw Gas.Temperature".
    client: a client of Dask distributed, whose workers solve the variants then.
    processes: how many on this machine; one for each processor when left out.
    progress: a bar (when tqdm is there), or a function that is told how many are done, and of how many.
    how: "product" combines each value with each, the last path changing fastest; "zip" takes the first
        of each, then the second, and so on.

    Columns: the inputs, with their unit where they are numbers; the outputs with their unit; "Complete",
    whether the solve was; "Failed", why a variant has no outputs, else "". A process that dies loses the
    variant that it was at, which is tried again; after some tries its row says so.

    Raises CaseError for a file that can't be read, NoSuchNode for a path that leads nowhere, Refused for
    an output that is no single value, ValueError for inputs that don't go together, Error when no process
    can be started, and SweepInterrupted, which has the rows that are done, after ^C.
    """
    chosen = [outputs] if isinstance(outputs, str) else list(outputs)
    variants = _Variants.of(inputs, how)
    variants.check(chosen)
    job = _Job(_file(case_file), tuple(variants.paths), tuple(chosen))
    pool: Any = _Cluster(client) if client else _Processes(processes, len(variants.rows))
    with contextlib.closing(pool):
        found, units = pool.first(_found, job)
        table = _Table(variants, job, units)
        with _progress_call(progress, len(variants.rows)) as call:
            try:
                _Runs(pool, found, variants.rows, table.rows, call).run()
            except KeyboardInterrupt:
                raise SweepInterrupted(table.frame()) from None
    table.warn()
    return table.frame()


# ---- What is asked for ----


@dataclasses.dataclass
class _Variants:
    """Rows of values, one for each path."""

    paths: list[str]
    rows: list[tuple[Any, ...]]
    index: Any = None  # of the data frame from which they are

    @classmethod
    def of(cls, inputs: Any, how: str) -> "_Variants":
        if how not in ("product", "zip"):
            raise ValueError(f"no such way to combine values: {how}; expected product, zip")
        if hasattr(inputs, "itertuples"):
            rows = [tuple(map(_plain, row)) for row in inputs.itertuples(index=False, name=None)]
            return cls(list(inputs.columns), rows, inputs.index)
        paths = list(inputs)
        values = [_values(inputs[path]) for path in paths]
        if how == "product":
            return cls(paths, list(itertools.product(*values)))
        if len({len(each) for each in values}) > 1:
            counts = ", ".join(f"{path}: {len(each)}" for path, each in zip(paths, values))
            raise ValueError(f"as many values are wanted of each path, there are {counts}")
        return cls(paths, list(zip(*values)))

    def check(self, outputs: list[str]) -> None:
        """Each path is a text and stands once."""
        every = [*self.paths, *outputs]
        for path, count in collections.Counter(every).items():
            if not isinstance(path, str):
                raise ValueError(f"a path is a text, not {path!r}")
            if count > 1:
                raise ValueError(f"{path} stands among inputs and outputs more than once")


def _values(given: Any) -> list[Any]:
    if isinstance(given, str) or not isinstance(given, Iterable):
        return [given]
    return list(map(_plain, given))


def _plain(value: Any) -> Any:
    """A scalar of numpy as Python has it."""
    return value.item() if hasattr(value, "item") and getattr(value, "ndim", 1) == 0 else value


def _file(file: "Union[str, os.PathLike[str]]") -> str:
    """The file from wherever a worker stands; what is no file here may be a name, as `demo()` is."""
    name = os.fspath(file)
    return os.path.abspath(name) if os.path.exists(name) else name


# ---- What a worker does ----


@dataclasses.dataclass(frozen=True)
class _Job:
    """Inputs and outputs are paths; of a job that was found, each has "raw." or "neutral." before it."""

    file: str
    inputs: tuple[str, ...]
    outputs: tuple[str, ...]


@dataclasses.dataclass
class _Row:
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
            node = _member(_node(case, name), member)
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


def _found(job: _Job) -> tuple[_Job, list[str]]:
    """The job with its nodes found, and their units. Raises what is wrong with the file or a path."""
    with open_case(job.file) as case:
        inputs = [_place(case, path) for path in job.inputs]
        outputs = [_place(case, path, is_output=True) for path in job.outputs]
    places = (tuple(place for place, _ in each) for each in (inputs, outputs))
    return _Job(job.file, *places), [unit for _, unit in inputs + outputs]


def _at(case: Case, place: str) -> _core.Node:
    view, _, path = place.partition(".")
    return getattr(case, view).at(path)


def _run(job: _Job, values: tuple[Any, ...]) -> _Row:
    """Solves a variant, of a case that is opened anew: nothing of the one before it is left."""
    try:
        with open_case(job.file) as case, warnings.catch_warnings(record=True) as told:
            warnings.simplefilter("always", Normalised)
            _solve(case, zip(job.inputs, values))
            outputs = tuple(_at(case, place).value for place in job.outputs)
            remarks = tuple(str(each.message) for each in told)
            return _Row(outputs, case.is_complete, "", remarks)
    except Error as error:
        return _Row(failed=str(error))
    except Exception as error:  # what is wrong with one variant must not end the others
        return _Row(failed=f"{type(error).__name__}: {error}")


def _solve(case: Case, stores: Iterable[tuple[str, Any]]) -> None:
    with case.hold():
        for place, value in stores:
            _at(case, place).value = value
    if not case.is_complete:
        case.solve()


def _begin() -> None:
    """^C goes to all processes of a terminal; the one that sweeps ends the others."""
    signal.signal(signal.SIGINT, signal.SIG_IGN)


@contextlib.contextmanager
def _without_interrupts() -> Iterator[None]:
    """A process that is started within it is spared ^C from its first moment."""
    if not hasattr(signal, "pthread_sigmask"):
        yield
        return
    before = signal.pthread_sigmask(signal.SIG_BLOCK, {signal.SIGINT})
    try:
        yield
    finally:
        signal.pthread_sigmask(signal.SIG_SETMASK, before)


_thread: Any = None
_thread_lock = threading.Lock()


def _on_own_thread(function: Callable[..., Any], *arguments: Any) -> Any:
    """Calls on the one thread of this process to which its cases belong, whoever asks."""
    global _thread
    with _thread_lock:
        if _thread is None:
            _thread = concurrent.futures.ThreadPoolExecutor(1, "fixtop")
    return _thread.submit(function, *arguments).result()


# ---- Who works ----


class _Seat:
    """A process that does one thing at a time, and is replaced when it has died."""

    def __init__(self) -> None:
        self._pool: Any = None
        self._pid: Any = None

    def submit(self, function: Callable[..., Any], *arguments: Any) -> "concurrent.futures.Future[Any]":
        pool = self._pool or self._started()
        try:
            return pool.submit(function, *arguments)
        except BrokenProcessPool:  # it died while it had nothing to do
            return self._started().submit(function, *arguments)

    def _started(self) -> Any:
        self.clear()
        spawn = multiprocessing.get_context("spawn")
        self._pool = concurrent.futures.ProcessPoolExecutor(1, mp_context=spawn, initializer=_begin)
        with _without_interrupts():
            self._pid = self._pool.submit(os.getpid)
        return self._pool

    def clear(self) -> None:
        """Lets the process go; the next thing gets another."""
        if self._pool is not None:
            self._pool.shutdown(wait=False)
            self._pool = None

    def end(self, at_once: bool) -> None:
        """Ends the process, also in the middle of its work when `at_once`."""
        if self._pool is None:
            return
        if at_once and self._pid.done() and not self._pid.exception():
            with contextlib.suppress(OSError):
                os.kill(self._pid.result(), signal.SIGTERM)
        self._pool.shutdown(wait=not at_once, cancel_futures=True)
        self._pool = None


class _Processes:
    """Processes of this machine. As each has a pool of its own, it is known at what one has died."""

    lost = BrokenProcessPool
    tries = 3

    def __init__(self, count: Optional[int], variants: int):
        if count is not None and count < 1:
            raise ValueError(f"no number of processes: {count}")
        count = max(1, min(count or _processors(), variants))
        self._idle = [_Seat() for _ in range(count)]
        self._busy: dict[Any, _Seat] = {}
        self.places = count

    def submit(self, function: Callable[..., Any], *arguments: Any) -> Any:
        seat = self._idle.pop()
        future = seat.submit(function, *arguments)
        self._busy[future] = seat
        return future

    def done(self, future: Any) -> None:
        """Its place is free again."""
        seat = self._busy.pop(future)
        if isinstance(future.exception(), BrokenProcessPool):
            seat.clear()
        self._idle.append(seat)

    def first(self, function: Callable[..., Any], *arguments: Any) -> Any:
        """Calls in one of the processes, to see that there are any."""
        future = self.submit(function, *arguments)
        try:
            return future.result()
        except BrokenProcessPool as error:
            raise Error(
                "the processes of a sweep end as they start; a script that sweeps is a file, and "
                'does it below `if __name__ == "__main__":`'
            ) from error
        finally:
            if future.done():
                self.done(future)

    def close(self) -> None:
        for seat in self._idle:
            seat.end(at_once=False)
        for seat in self._busy.values():
            seat.end(at_once=True)


class _Cluster:
    """The workers of a client of Dask. It moves tasks between threads, so each worker keeps one for cases."""

    tries = 2  # Dask itself has tried some times before it gives a task up

    def __init__(self, client: Any):
        from distributed.scheduler import KilledWorker

        self.lost, self._client, self._flying = KilledWorker, client, set[Any]()
        if any(address.startswith("inproc:") for address in client.scheduler_info()["workers"]):
            raise Error("the workers of this client are threads of this process; they have to be processes")
        self._executor = client.get_executor(pure=False)

    @property
    def places(self) -> int:
        """Two for each worker, so that none waits for the next."""
        return 2 * max(1, len(self._client.scheduler_info()["workers"]))

    def submit(self, function: Callable[..., Any], *arguments: Any) -> Any:
        future = self._executor.submit(_on_own_thread, function, *arguments)
        self._flying.add(future)
        return future

    def done(self, future: Any) -> None:
        self._flying.discard(future)

    def first(self, function: Callable[..., Any], *arguments: Any) -> Any:
        """Calls on one of the workers, to see that there are any."""
        future = self.submit(function, *arguments)
        try:
            return future.result()
        except self.lost as error:
            raise Error(f"no worker of the cluster opens the case: {error}") from error
        finally:
            self.done(future)

    def close(self) -> None:
        for future in self._flying:
            future.cancel()
        self._executor.shutdown(wait=False)


def _processors() -> int:
    """Those that this process may use."""
    return len(os.sched_getaffinity(0)) if hasattr(os, "sched_getaffinity") else os.cpu_count() or 1


# ---- The run ----


class _Runs:
    """Gives variants to whoever works, and keeps what comes back."""

    def __init__(self, pool: Any, job: _Job, variants: list[Any], rows: dict[int, _Row], call: Any):
        self._pool, self._job, self._variants, self._rows, self._call = pool, job, variants, rows, call
        self._waiting = collections.deque(range(len(variants)))
        self._lost: collections.deque[int] = collections.deque()
        self._flying: dict[Any, int] = {}
        self._tries: collections.Counter[int] = collections.Counter()

    def run(self) -> None:
        while self._waiting or self._lost or self._flying:
            self._submit()
            done, _ = concurrent.futures.wait(self._flying, return_when=concurrent.futures.FIRST_COMPLETED)
            for future in done:
                self._take(future)

    def _submit(self) -> None:
        places = self._pool.places
        while self._waiting and len(self._flying) < places:
            self._start(self._waiting.popleft())
        # One with which a process has died runs alone: what else runs then is not lost with it.
        if self._lost and not self._flying:
            self._start(self._lost.popleft())

    def _start(self, number: int) -> None:
        self._flying[self._pool.submit(_run, self._job, self._variants[number])] = number

    def _take(self, future: Any) -> None:
        number = self._flying.pop(future)
        self._pool.done(future)
        try:
            row = future.result()
        except self._pool.lost as error:
            self._tries[number] += 1
            if self._tries[number] < self._pool.tries:
                self._lost.append(number)
                return
            row = _Row(failed=f"the process died, in {self._tries[number]} tries: {error}")
        except Exception as error:  # such as values that can't be sent to a process
            row = _Row(failed=f"{type(error).__name__}: {error}")
        self._rows[number] = row
        self._call(len(self._rows), len(self._variants))


@contextlib.contextmanager
def _progress_call(progress: Any, total: int) -> Iterator[Any]:
    if callable(progress):
        yield progress
        return
    bar = None
    if progress:
        with contextlib.suppress(ImportError):
            from tqdm.auto import tqdm

            bar = tqdm(total=total, desc="Sweep", unit="variant")
    with bar or contextlib.nullcontext():
        yield lambda done, _: bar and bar.update(done - bar.n)


class _Table:
    """The rows that are done, by the numbers of their variants."""

    def __init__(self, variants: _Variants, job: _Job, units: list[str]):
        self.rows: dict[int, _Row] = {}
        self._variants, self._job, self._units = variants, job, units

    def frame(self) -> "pandas.DataFrame":
        import pandas

        numbers = sorted(self.rows)
        rows = [self.rows[number] for number in numbers]
        table: dict[str, Any] = {}
        for at, path in enumerate(self._job.inputs):
            every = [row[at] for row in self._variants.rows]
            unit = self._units[at] if all(map(_is_number, every)) else ""
            given = [every[number] for number in numbers]
            table[_heading(path, unit)] = pandas.Series(given, dtype=None if given else object)
        for at, path in enumerate(self._job.outputs):
            cells = [row.outputs[at] if row.outputs else None for row in rows]
            is_real = all(cell is None or _is_number(cell) for cell in cells)
            unit = self._units[len(self._job.inputs) + at]
            table[_heading(path, unit)] = pandas.Series(cells, dtype=float if is_real else object)
        table[_COMPLETE] = pandas.Series([row.complete for row in rows], dtype=bool)
        table[_FAILED] = pandas.Series([row.failed for row in rows], dtype=object)
        index = pandas.Index(numbers, name="Variant", dtype=int)
        if self._variants.index is not None:
            index = self._variants.index[numbers]
        return pandas.DataFrame(table).set_axis(index)

    def warn(self) -> None:
        """Passes on what workers warned of, each once."""
        for text in dict.fromkeys(text for row in self.rows.values() for text in row.remarks):
            warnings.warn(text, Normalised, stacklevel=3)


def _is_number(value: Any) -> bool:
    return isinstance(value, (int, float)) and not isinstance(value, bool)


def _heading(path: str, unit: str) -> str:
    return f"{path} [{unit}]" if unit else path
