# SPDX-License-Identifier: Apache-2.0
"""Watchers: who is told what has changed."""

from __future__ import annotations

from typing import Any, Callable, NamedTuple

from . import _core


class Change(NamedTuple):
    """A value that is another than it was; `unit` is the one of `now`."""

    path: str
    before: Any
    now: Any
    unit: str


class Watcher:
    """Nodes whose values are compared with what they were when it was last told."""

    def __init__(self, told: list["Watcher"], callback: Callable[[list[Change]], Any]):
        self._watch, self._callback, self._told, self._is_telling = _core.Watch(), callback, told, False
        told.append(self)
        _core.on_store(_tell_all)
        _all.append(self)

    def add(self, node: _core.Node) -> None:
        """Watches a node as well."""
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
    for watcher in list(_all):
        watcher.tell()
