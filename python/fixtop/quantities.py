# SPDX-License-Identifier: Apache-2.0
"""Numbers with units as quantities of pint."""

from __future__ import annotations

import functools
import re
from typing import Any

# Names of units that pint knows by another name, or not at all.
_NAMES = {
    "C": "degC", "F": "degF", "R": "degR", "%": "percent", "-": "dimensionless", "": "dimensionless",
    "kmol": "kilomole", "kgmole": "kilomole", "gmole": "mole", "mol": "mole", "lbmole": "pound_mole",
    "lbmol": "pound_mole", "lb": "pound", "hr": "hour", "h": "hour", "m3": "meter**3", "m2": "meter**2",
    "ft3": "foot**3", "ft2": "foot**2", "psia": "psi", "Btu": "Btu", "MMBtu": "MMBtu", "cP": "centipoise",
    "kW": "kilowatt", "hp": "horsepower", "tonne": "metric_ton", "d": "day", "s": "second",
}


@functools.lru_cache(maxsize=1)
def registry() -> Any:
    """The registry of pint that all quantities of the package share."""
    import pint

    units = pint.UnitRegistry(autoconvert_offset_to_baseunit=True)
    units.define("pound_mole = 453.59237 * mole = lbmol")
    units.define("MMBtu = 1e6 * Btu")
    return units


@functools.lru_cache(maxsize=None)
def pint_unit(unit: str) -> Any:
    """The unit of pint that a unit of the case is.

    Raises ValueError for one that pint has no name for.
    """
    import pint

    words = re.sub(r"[A-Za-z%][A-Za-z]*\d?|^-$", lambda word: _NAMES.get(word[0], word[0]), unit)
    try:
        return registry().Unit(words or "dimensionless")
    except (pint.UndefinedUnitError, pint.DefinitionSyntaxError, AttributeError) as error:
        raise ValueError(f"pint has no unit that is {unit!r}") from error


def quantity(number: Any, unit: str) -> Any:
    """A number, or an array of numbers, with a unit of the case."""
    return registry().Quantity(number, pint_unit(unit))
