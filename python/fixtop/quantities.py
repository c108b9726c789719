# SPDX-License-Identifier: Apache-2.0
"""Numbers with units as quantities of pint."""

from __future__ import annotations

import functools
import re
from typing import Any

# Units that are more than their parts, alone: temperatures with their zero, pressures above the
# atmosphere, and what no rule reads.
_WHOLE = {
    "": "dimensionless",
    "-": "dimensionless",
    "fraction": "dimensionless",
    "C": "degC",
    "F": "degF",
    "R": "degR",
    "barg": "bar_gauge",
    "kPag": "kilopascal_gauge",
    "psig": "psi_gauge",
    "kg/cm2": "kgf/cm**2",
    "USGPM": "gallon/minute",
}
# Parts that pint knows by another name. A degree in a part is a difference.
_PARTS = {
    "%": "percent",
    "C": "delta_degC",
    "F": "delta_degF",
    "R": "delta_degF",
    "kgmole": "kilomole",
    "kmol": "kilomole",
    "gmole": "mole",
    "lbmol": "pound_mole",
    "lbmole": "pound_mole",
    "lb": "pound",
    "hr": "hour",
    "h": "hour",
    "psia": "psi",
    "in": "inch",
    "d": "day",
    "tonne": "metric_ton",
    "rev": "revolution",
    "USGAL": "gallon",
    "cal": "calorie_of_steam",
    "kcal": "kilocalorie_of_steam",
}
_DEFINED = (
    "pound_mole = 453.59237 * mole",
    "percent = 0.01",
    "MMBtu = 1e6 * Btu",
    # The calorie of the steam tables, 4.1868 J; the one of pint is that of thermochemistry, 4.184 J.
    "calorie_of_steam = 4.1868 * joule",
    "kilocalorie_of_steam = 4186.8 * joule",
    "bar_gauge = 1e5 * pascal; offset: 101325",
    "kilopascal_gauge = 1e3 * pascal; offset: 101325",
    "psi_gauge = 6894.757293168361 * pascal; offset: 101325",
)


@functools.lru_cache(maxsize=1)
def registry() -> Any:
    """The registry of pint that all quantities of the package share."""
    import pint

    units = pint.UnitRegistry(autoconvert_offset_to_baseunit=True)
    for definition in _DEFINED:
        units.define(definition)
    return units


def _product(text: str) -> str:
    """Parts with a dash between them, each with its power behind it: "h-m2-C"."""
    parts = []
    for part in text.split("-"):
        name, power = re.fullmatch(r"(\D*)(\d*)", part).groups()  # type: ignore[union-attr]
        parts.append(f"{_PARTS.get(name, name)}**{power or 1}")
    return "*".join(parts)


def _spelled(unit: str) -> str:
    """As pint reads it; all that stands behind a slash divides."""
    if unit in _WHOLE:
        return _WHOLE[unit]
    return "/".join(f"({_product(text)})" for text in unit.split("/"))


@functools.lru_cache(maxsize=None)
def pint_unit(unit: str) -> Any:
    """The unit of pint that a unit of the case is.

    Raises ValueError for one that pint has no name for.
    """
    try:
        return registry().Unit(_spelled(unit))
    except Exception as error:  # its parser lets many kinds out
        raise ValueError(f"pint has no unit that is {unit!r}") from error


def quantity(number: Any, unit: str) -> Any:
    """A number, or an array of numbers, with a unit of the case."""
    return registry().Quantity(number, pint_unit(unit))
