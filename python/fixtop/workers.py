# SPDX-License-Identifier: Apache-2.0
"""Who solves the variants of a sweep: processes of this machine, or the workers of a cluster."""

from __future__ import annotations

import concurrent.futures
import contextlib
import multiprocessing
import os
import signal
import threading
from concurrent.futures.process import BrokenProcessPool
from typing import Any, Callable, Iterator, Optional

from .errors import Error


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


class Processes:
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


class Cluster:
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
