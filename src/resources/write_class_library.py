#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the class library with the quantities of the unit definitions.

usage: write_class_library.py <definitions.xml> <library.xml.in> <library.xml>

The definitions have the common quantities first; the library has all of them by name, whatever
their case. They stand where the template has its line @QUANTITIES@.
"""

import pathlib
import re
import sys

QUANTITY = re.compile(r'^  <QuantityTypeDefn Name="([^"]*)".*?^  </QuantityTypeDefn>\n', re.M | re.S)
PLACE = "@QUANTITIES@\n"


def library(definitions, template):
    found = sorted(QUANTITY.finditer(definitions), key=lambda each: each.group(1).lower())
    if not found or len(found) != definitions.count("<QuantityTypeDefn"):
        raise SystemExit("the definitions have a quantity that is not written as the others")
    if template.count(PLACE) != 1:
        raise SystemExit(f"the template needs one line {PLACE.strip()}")
    return template.replace(PLACE, "".join(each.group(0) for each in found))


def main():
    definitions, template, out = map(pathlib.Path, sys.argv[1:])
    read = lambda path: path.read_bytes().decode("utf-8")
    data = library(read(definitions), read(template)).encode("utf-8")
    if not out.exists() or out.read_bytes() != data:
        out.parent.mkdir(parents=True, exist_ok=True)
        out.write_bytes(data)


if __name__ == "__main__":
    main()
