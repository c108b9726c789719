#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the quantities of the case host as rows of C++, with the factors of the unit definitions.

usage: write_units.py <definitions.xml> <unit names.xml> <quantities.txt> <out>
"""

import pathlib
import sys
import xml.etree.ElementTree as ET
from fractions import Fraction


def exact(text):
    """The number that was meant by a rounded one, 5/9 by 0.5555555555555556, where it is simple."""
    number = Fraction(text)
    simple = number.limit_denominator(1000000)
    return simple if float(simple) == float(number) else number


def definitions_of(file):
    """(quantity, unit): factor and offset to the quantity's base unit."""
    return {(quantity.get("Name"), unit.get("Name")): (exact(unit.get("Factor")), exact(unit.get("Offset")))
            for quantity in ET.parse(file).iter("QuantityTypeDefn")
            for unit in quantity.iter("UOM") if unit.get("Formula") == "Linear"}


def names_of(file):
    return {row.get("App"): row.get("Ccdm", row.get("App")) for row in ET.parse(file).iter("Translate")}


def row(line, definitions, names):
    quantity, defined, units, defaults = (field.split() for field in line.split(";"))
    base = lambda unit: definitions[" ".join(defined), names[unit]]
    factor, offset = base(units[0])
    records = (f'{{{float(base(unit)[0] / factor)!r}, '
               f'{float((base(unit)[1] - offset) / factor)!r}, "{unit}"}}' for unit in units)
    texts = (f'"{unit}"' for unit in defaults)
    return f'{{"{quantity[0]}", {{{", ".join(records)}}}, {{{", ".join(texts)}}}}},\n'


def main():
    definitions, names = definitions_of(sys.argv[1]), names_of(sys.argv[2])
    lines = pathlib.Path(sys.argv[3]).read_text(encoding="utf-8").splitlines()
    rows = [row(line, definitions, names) for line in lines if line and line[0] != "#"]
    pathlib.Path(sys.argv[4]).write_text("".join(rows), encoding="utf-8")


if __name__ == "__main__":
    main()
