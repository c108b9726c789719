# SPDX-License-Identifier: Apache-2.0
"""The flowsheet as a picture, laid out by Graphviz."""

from __future__ import annotations

import dataclasses
import re
import textwrap
from typing import Any, Iterable

from . import svg
from .errors import Error

Key = tuple[str, str]  # what stands before the name of an object, as "Stabiliser/", and its name

_LABEL_WIDTH, _LABEL_LINES = 18, 3
_GRAPH = {
    "rankdir": "LR",
    "compound": "true",
    "nodesep": "0.35",
    "ranksep": "0.45",
    "fontsize": "11",
    "labeljust": "l",
    "style": "rounded",
    "color": "#8a94a3",
}
_NODE = {
    "shape": "box",
    "style": "rounded,filled",
    "fillcolor": "#eef2f7",
    "color": "#44546a",
    "fontsize": "11",
    "margin": "0.12,0.06",
}
_EDGE = {"fontsize": "9", "color": "#1f5f99", "fontcolor": "#1f3f5f", "arrowsize": "0.7"}
_FONT = {"fontname": "DejaVu Sans"}
_ENERGY = {"style": "dashed", "color": "#b3541e", "fontcolor": "#8a3f14"}
_WITHOUT_CLASS = {"style": "rounded,dashed"}
_TROUBLE = {"color": "#b00020", "penwidth": "2"}
_POINT = {"shape": "point", "width": "0.06", "color": "#8a94a3", "label": ""}
_HIDDEN = {"shape": "point", "width": "0.02", "style": "invis", "label": ""}


@dataclasses.dataclass
class Unit:
    """A unit operation. `hover` is what is told where the pointer stands."""

    key: Key
    kind: str
    hover: str
    is_ok: bool = True


@dataclasses.dataclass
class Stream:
    """A stream with the unit operations, or inner flowsheets, at its ends; "" is the outside."""

    key: Key
    source: str
    target: str
    hover: str
    is_energy: bool = False

    @property
    def is_connected(self) -> bool:
        return bool(self.source or self.target)


class Drawing:
    """The units and the connected streams of a case as one graph; inner flowsheets are clusters.

    In the picture a unit operation is a `g` of class `unit-operation`, a stream one of class
    `material-stream` or `energy-stream`, the end of a stream outside a `g` of class `outside`.
    """

    def __init__(self, units: Iterable[Unit], streams: Iterable[Stream], flowsheets: Iterable[Key]):
        every = list(streams)
        self.unconnected = [each.key for each in every if not each.is_connected]
        self._streams = [each for each in every if each.is_connected]
        self._units = {each.key: each for each in units}
        self._flowsheets = list(dict.fromkeys(flowsheets))
        self._add_unlisted()
        self._unit_ids = {key: f"unit-{number}" for number, key in enumerate(self._units)}
        self._inner_ids = {key: f"inner-{number}" for number, key in enumerate(self._flowsheets)}
        self._stream_ids = {id(each): f"stream-{number}" for number, each in enumerate(self._streams)}
        self._hover: dict[str, str] = {}

    def svg(self) -> str:
        """The picture, as an `svg` element. Raises Error when Graphviz is missing."""
        graph = _graphviz().Digraph(
            "flowsheet", graph_attr=_GRAPH | _FONT, node_attr=_NODE | _FONT, edge_attr=_EDGE | _FONT
        )
        self._hover = {}
        self._fill(graph, "")
        for stream in reversed(self._streams):
            self._draw_stream(graph, stream)
        return svg.inline(_laid_out(graph), "flowsheet-", "Flowsheet", self._title)

    def _title(self, name: str, _: str) -> str:
        return self._hover.get(name, "")

    def _add_unlisted(self) -> None:
        """Ends of streams that no list has are unit operations too, for which there is no class."""
        for stream in self._streams:
            for end in (stream.source, stream.target):
                key = (stream.key[0], end)
                if end and key not in self._units and key not in self._flowsheets:
                    self._units[key] = Unit(key, "", "".join(key))

    def _fill(self, graph: Any, prefix: str) -> None:
        """Units, inner flowsheets and ends outside of one flowsheet.

        Of parts that hang on nothing common Graphviz puts the last at the top.
        """
        for unit in reversed(self._units.values()):
            if unit.key[0] == prefix:
                self._draw_unit(graph, unit)
        for key in self._flowsheets:
            if key[0] == prefix and self._has_part(key):
                self._draw_inner(graph, key)
        for stream in self._streams:
            if stream.key[0] == prefix:
                for side, end in (("from", stream.source), ("to", stream.target)):
                    if not end:
                        graph.node(self._outside(side, stream), **_POINT, **{"class": "outside"})

    def _draw_inner(self, graph: Any, key: Key) -> None:
        name = self._inner_ids[key]
        self._hover[name] = "".join(key)
        with graph.subgraph(name=f"cluster_{name}") as cluster:
            cluster.attr(label=_label(key[1]), id=name, **{"class": "inner-flowsheet"})
            self._fill(cluster, _below(key))
            if self._is_end(key):
                self._draw_anchors(cluster, name, _below(key))

    def _draw_anchors(self, cluster: Any, name: str, prefix: str) -> None:
        """What streams hang on that come to an inner flowsheet, left of its units, and leave it, right."""
        for side in ("in", "out"):
            cluster.node(f"{name}-{side}", **_HIDDEN)
        for key, unit in self._unit_ids.items():
            if key[0] == prefix:
                cluster.edge(f"{name}-in", unit, style="invis")
                cluster.edge(unit, f"{name}-out", style="invis")

    def _has_part(self, key: Key) -> bool:
        parts = [*self._units, *(each.key for each in self._streams)]
        return self._is_end(key) or any(part[0].startswith(_below(key)) for part in parts)

    def _is_end(self, key: Key) -> bool:
        return key not in self._units and any(
            each.key[0] == key[0] and key[1] in (each.source, each.target) for each in self._streams
        )

    def _outside(self, side: str, stream: Stream) -> str:
        return f"{side}-{self._stream_ids[id(stream)]}"

    def _draw_unit(self, graph: Any, unit: Unit) -> None:
        name = self._unit_ids[unit.key]
        self._hover[name] = unit.hover
        label = _label(unit.key[1]) + (f"\\n{_label(unit.kind)}" if unit.kind else "")
        style = ({} if unit.kind else _WITHOUT_CLASS) | ({} if unit.is_ok else _TROUBLE)
        graph.node(name, label=label, id=name, **style, **{"class": "unit-operation"})

    def _draw_stream(self, graph: Any, stream: Stream) -> None:
        name = self._stream_ids[id(stream)]
        self._hover[name] = stream.hover
        ends, bounds = [], {}
        for side, end, bound, anchor in (
            ("from", stream.source, "ltail", "out"),
            ("to", stream.target, "lhead", "in"),
        ):
            key = (stream.key[0], end)
            if not end:
                ends.append(self._outside(side, stream))
            elif key in self._units:
                ends.append(self._unit_ids[key])
            else:
                ends.append(f"{self._inner_ids[key]}-{anchor}")
                bounds[bound] = f"cluster_{self._inner_ids[key]}"
        word = "energy-stream" if stream.is_energy else "material-stream"
        graph.edge(
            *ends,
            label=_label(stream.key[1]),
            id=name,
            **bounds,
            **(_ENERGY if stream.is_energy else {}),
            **{"class": word},
        )


def _below(flowsheet: Key) -> str:
    return "".join(flowsheet) + "/"


def _graphviz() -> Any:
    try:
        import graphviz
    except ImportError as error:
        raise Error("a report needs the package graphviz of Python") from error
    return graphviz


def _laid_out(graph: Any) -> str:
    graphviz = _graphviz()
    try:
        return graph.pipe(format="svg", encoding="utf-8", quiet=True)
    except graphviz.ExecutableNotFound as error:
        raise Error("a report needs the program dot of Graphviz") from error
    except graphviz.CalledProcessError as error:
        raise Error(f"Graphviz can't lay out the flowsheet: {error}") from error


def _label(name: str) -> str:
    """A name as Graphviz writes labels: short lines, and nothing in it means something."""
    lines = textwrap.wrap(svg.clean(name), _LABEL_WIDTH) or [" "]
    if len(lines) > _LABEL_LINES:
        lines = lines[: _LABEL_LINES - 1] + [lines[_LABEL_LINES - 1][: _LABEL_WIDTH - 1] + "\u2026"]
    return "\\n".join(re.sub(r"\\", r"\\\\", line.replace("&", "&amp;")) for line in lines)
