# SPDX-License-Identifier: Apache-2.0
"""Watchers: who is told what has changed."""

from __future__ import annotations

from typing import Any, Callable, NamedTuple, Optional

from . import _core
from .errors import Refused


class Change(NamedTuple):
    """A value that is another than it was; `unit` is the one of `now`."""

    path: str
    before: Any
    now: Any
    unit: str


class Watcher:
    """Nodes whose values are compared with what they were when it was last told."""

    def __init__(self, told: list["Watcher"], callback: Callable[[list[Change]], Any]):
        if not callable(callback):
            raise TypeError("a watcher calls a function with a list of changes")
        self._watch, self._callback, self._told, self._is_telling = _core.Watch(), callback, told, False
        told.append(self)
        _core.on_store(_tell_all)
        _all.append(self)

    def add(self, node: _core.Node) -> None:
        """Watches a node as well. Raises Refused for one without a value of its own."""
        if not node.is_variable:
            raise Refused(node.path, "has no value of its own to be watched")
        self._watch.add(node)

    def tell(self) -> None:
        """Calls back when something has changed. A store within the callback tells nothing."""
        if self._is_telling:
            return
        self._is_telling = True
        try:
            changes = [Change(*each) for each in self._watch.changes()]
            if changes:
                self._callback(changes)
        finally:
            self._is_telling = False

    def stop(self) -> None:
        """Ends it. A second call does nothing."""
        for each in (self._told, _all):
            if self in each:
                each.remove(self)
        if not _all:
            _core.on_store(None)


_all: list[Watcher] = []


def _tell_all() -> None:
    tell_each(_all)


def tell_each(watchers: list[Watcher]) -> None:
    """Tells all of them; then raises what the first one raised that did."""
    first: Optional[BaseException] = None
    for watcher in list(watchers):
        if watcher not in watchers:
            continue  # another one has stopped it
        try:
            watcher.tell()
        except BaseException as error:
            first = first or error
    if first is not None:
        raise first
