# SPDX-License-Identifier: Apache-2.0
"""Sweeps: many variants of a case, each solved in a process that has nothing else to do."""

from __future__ import annotations

import collections
import concurrent.futures
import contextlib
import dataclasses
import itertools
import os
import warnings
from typing import TYPE_CHECKING, Any, Callable, Iterable, Iterator, Mapping, Optional, Union

from .errors import Normalised
from .variants import Job, Row, found, run
from .workers import Cluster, Processes

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
    job = Job(_file(case_file), tuple(variants.paths), tuple(chosen))
    pool: Any = Cluster(client) if client else Processes(processes, len(variants.rows))
    with contextlib.closing(pool):
        places, units = pool.first(found, job)
        table = _Table(variants, job, units)
        with _progress_call(progress, len(variants.rows)) as call:
            try:
                _Runs(pool, places, variants.rows, table.rows, call).run()
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


# ---- The run ----


class _Runs:
    """Gives variants to whoever works, and keeps what comes back."""

    def __init__(self, pool: Any, job: Job, variants: list[Any], rows: dict[int, Row], call: Any):
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
        self._flying[self._pool.submit(run, self._job, self._variants[number])] = number

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
            row = Row(failed=f"the process died, in {self._tries[number]} tries: {error}")
        except Exception as error:  # such as values that can't be sent to a process
            row = Row(failed=f"{type(error).__name__}: {error}")
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

    def __init__(self, variants: _Variants, job: Job, units: list[str]):
        self.rows: dict[int, Row] = {}
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
