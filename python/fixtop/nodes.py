# SPDX-License-Identifier: Apache-2.0
"""What nodes, selections and readings can do beside what the library gives them."""

from __future__ import annotations

import functools
import html
import re
from typing import TYPE_CHECKING, Any, Iterable

from . import _core
from .errors import NoSuchMember, NoSuchNode

if TYPE_CHECKING:
    import pandas

_LIST = 3  # the kind of a member that is a list of objects


class NodeList(list):
    """Objects of one list, by place, slice or key: `streams[0]`, `streams["Raw Gas"]`."""

    def __init__(self, nodes: Iterable[_core.Node], path: str = ""):
        super().__init__(nodes)
        self.path = path

    def __getitem__(self, which: Any) -> Any:
        if not isinstance(which, str):
            return super().__getitem__(which)
        for node in self:
            if node.key == which:
                return node
        raise NoSuchNode(f"{self.path}({which})", self.path, _near(which, self.keys()))

    def keys(self) -> list[str]:
        """What tells the objects from each other."""
        return [node.key for node in self]


def snake(name: str) -> str:
    """A member's name as attributes are written: MolarFlow is molar_flow."""
    parts = re.findall(r"[A-Z]+(?![a-z])|[A-Z]?[a-z]+|\d+|[^A-Za-z\d]+", name)
    return "_".join(part.lower() for part in parts)


def _near(name: str, names: Iterable[str]) -> list[str]:
    import difflib

    return difflib.get_close_matches(name, list(names), n=3, cutoff=0.5)


@functools.lru_cache(maxsize=None)
def _attributes(members: tuple[tuple[str, int], ...]) -> dict[str, tuple[str, int]]:
    """Members by both of their spellings."""
    table = {snake(name): (name, kind) for name, kind in members}
    table.update({name: (name, kind) for name, kind in members})
    return table


def member_of(self: _core.Node, name: str) -> Any:
    if name.startswith("_"):
        raise AttributeError(name)
    members = _attributes(tuple(self.members()))
    if not members:
        return _child(self, name)
    if name not in members:
        text = f"{self.class_name} has no member {name}"
        near = _near(name, members)
        raise NoSuchMember(text + ("\n  near: " + ", ".join(near) if near else ""), name, near)
    member, kind = members[name]
    found = self.member(member)
    return NodeList(found, f"{self.path}.{member}") if kind == _LIST else found


def _child(self: _core.Node, name: str) -> _core.Node:
    for child in self:
        if child.name == name:
            return child
    near = _near(name, [child.name for child in self])
    text = f"{self.path or 'the top'} has no child {name}"
    raise NoSuchMember(text + ("\n  near: " + ", ".join(near) if near else ""), name, near)


def _dir(self: _core.Node) -> list[str]:
    if self.is_gone:
        return list(object.__dir__(self))
    members = _attributes(tuple(self.members()))
    names = list(members) if members else [child.name for child in self]
    return sorted({*object.__dir__(self), *(each for each in names if each.isidentifier())})


def _label(self: _core.Node) -> str:
    """What an engineer calls it: the key of an object in a list, else its name."""
    return self.key or self.name


def _units(self: _core.Node) -> list[str]:
    """The units in which its value can be told; empty for a value without units."""
    options = self.attribute("uom_options")
    return [each for each in str(options or "").split("\n") if each]


def _quantity(self: _core.Node, unit: str = "") -> Any:
    """The value as a quantity of pint, in a unit of the node or in the one that it shows."""
    from .quantities import quantity

    return quantity(self.number(unit), unit or self.unit)


def _shown(value: Any, unit: str) -> str:
    text = "(none)" if value is None else f"{value:.12g}" if isinstance(value, float) else str(value)
    return f"{text} {unit}" if unit and value is not None else text


def _repr(self: _core.Node) -> str:
    if self.is_gone:
        return "<Node, gone>"
    path = self.path or "(top)"
    if self.is_variable:
        return f"<Node {path} = {_shown(self.value, self.unit)}>"
    return f"<Node {path} ({self.type})>"


_MOST_ROWS = 60


def _html(self: _core.Node) -> str:
    if self.is_gone or self.is_variable:
        return html.escape(repr(self))
    rows, count = [], 0
    for step, child in self.steps():
        count += 1
        if count > _MOST_ROWS:
            rows.append("<tr><td colspan=3>&hellip;</td></tr>")
            break
        value = _shown(child.value, child.unit) if child.is_variable else child.type
        cells = (step, value, child.status if child.is_variable else "")
        rows.append("<tr>" + "".join(f"<td>{html.escape(str(each))}</td>" for each in cells) + "</tr>")
    title = html.escape(f"{self.path or '(top)'} ({self.type})")
    return (
        f"<table><caption>{title}</caption><tr><th>Name</th><th>Value</th><th>Status</th></tr>"
        + "".join(rows)
        + "</table>"
    )


def _reading_repr(self: _core.Reading) -> str:
    old = ", stale" if self.stale else ""
    return f"<Reading {_shown(self.value, self.unit)}, {self.status or 'no status'}{old}>"


def _frame(self: _core.Selection) -> "pandas.DataFrame":
    """The items with their values, units, statuses and ages; one row each, by path."""
    import pandas

    values, units, statuses, ages = self.table()
    table = {
        "Value": values,
        "Unit": units,
        "Status": statuses,
        "Stale": [age == _core.FRESHNESS_OLD for age in ages],
    }
    return pandas.DataFrame(table, index=pandas.Index(self.paths, name="Path"))


def _selection_repr(self: _core.Selection) -> str:
    return f"<Selection of {len(self)} items>"


def _reference_repr(self: _core.Reference) -> str:
    return f"<Reference to {self.path}>" if self.is_live else f"<Reference, {self.why_gone}>"


def _reference_state(self: _core.Reference) -> str:
    """ "live", "moved" when its path is another than when it was made, or "gone"."""
    if not self.is_live:
        return "gone"
    return "live" if self.path == self.first_path else "moved"


def _extend(cls: type, **members: Any) -> None:
    for name, member in members.items():
        setattr(cls, name, member)


_extend(
    _core.Node,
    __getattr__=member_of,
    __dir__=_dir,
    __repr__=_repr,
    _repr_html_=_html,
    label=property(_label),
    units=property(_units),
    quantity=_quantity,
    reference=lambda self: _core.Reference(self),
)
_extend(_core.Reading, __repr__=_reading_repr)
_extend(
    _core.Selection,
    __repr__=_selection_repr,
    frame=_frame,
    _repr_html_=lambda self: self.frame()._repr_html_(),
)
_extend(_core.Reference, __repr__=_reference_repr, state=property(_reference_state))
