# SPDX-License-Identifier: Apache-2.0
"""Profiles of a column as a picture, drawn by matplotlib."""

from __future__ import annotations

import io
from typing import TYPE_CHECKING, Any

from . import svg
from .errors import Error

if TYPE_CHECKING:
    import pandas

_LEAST_FRACTION = 1e-4  # a component that has less on each stage is left out


def profiles(
    name: str, prefix: str, profile: "pandas.DataFrame", liquid: "pandas.DataFrame", vapor: "pandas.DataFrame"
) -> str:
    """Temperature, flows and fractions over the stages, as an `svg` element.

    profile: as `Column.profile()` gives it, units in the names of its columns.
    liquid, vapor: mole fractions by component.
    prefix: stands before each id in the picture.
    Raises Error when matplotlib is missing.
    """
    try:
        import matplotlib
        from matplotlib.figure import Figure
    except ImportError as error:
        raise Error("a report needs matplotlib") from error
    with matplotlib.rc_context(
        {
            "svg.fonttype": "path",
            "svg.hashsalt": prefix,
            "font.size": 8,
            "text.parse_math": False,
            "axes.grid": True,
            "grid.alpha": 0.3,
        }
    ):
        figure = Figure(figsize=(12, 3.6), layout="constrained")
        axes = figure.subplots(1, 4, sharey=True)
        _lines(axes[0], profile.filter(regex="^Temperature"), "Temperature")
        _lines(axes[1], profile.filter(regex=" flow"), "Flows")
        _lines(axes[2], _seen(liquid), "Liquid mole fraction", legend_outside=True)
        _lines(axes[3], _seen(vapor), "Vapor mole fraction", legend_outside=True)
        axes[0].set_ylabel("Stage, from the top")
        axes[0].invert_yaxis()
        picture = io.StringIO()
        figure.savefig(
            picture, format="svg", metadata={key: None for key in ("Creator", "Date", "Format", "Type")}
        )
    return svg.inline(picture.getvalue(), prefix, f"Profiles of {name}")


def _seen(fractions: "pandas.DataFrame") -> "pandas.DataFrame":
    return fractions.loc[:, fractions.max() >= _LEAST_FRACTION]


def _lines(axes: Any, table: "pandas.DataFrame", title: str, legend_outside: bool = False) -> None:
    stages = range(len(table))
    for heading in table.columns:
        # A label that begins with _ would be left out of the legend.
        axes.plot(
            table[heading].astype(float),
            stages,
            marker=".",
            markersize=4,
            linewidth=1.2,
            label=svg.clean(heading).lstrip("_"),
        )
    axes.set_yticks(_ticks(len(table)), [svg.clean(str(table.index[at])) for at in _ticks(len(table))])
    axes.set_title(title, fontsize=9)
    if len(table.columns) == 1:
        axes.set_xlabel(svg.clean(table.columns[0]))
    elif len(table.columns):
        place = {"loc": "upper center", "bbox_to_anchor": (0.5, -0.1), "ncols": 2}
        axes.legend(fontsize=7, **(place if legend_outside else {"loc": "best"}))


def _ticks(count: int) -> list[int]:
    step = max(1, -(-count // 16))
    return list(range(0, count, step))
