#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Compares the names that the built module exports with the list, both ways.

usage: check_exports.py <libfixtop.so, fixtop.dll or a Windows program> <exports.txt>
"""

import re
import subprocess
import sys

PE_DUMPER = "x86_64-w64-mingw32-objdump"


def listed_names(text):
    """The names of an export list: one a line, `#` begins a comment."""
    lines = (line.split("#", 1)[0].strip() for line in text.splitlines())
    return [line for line in lines if line]


def names_from_nm(output):
    """`nm -D --defined-only`: address, kind, name; absolute symbols are version nodes."""
    rows = (line.split() for line in output.splitlines())
    return {row[2].split("@")[0] for row in rows if len(row) == 3 and row[1] != "A"}


def names_from_objdump(output):
    """The name table of `objdump -p`: `[ 0] GetQSINode`, with an RVA column in newer versions."""
    table = output.partition("[Ordinal/Name Pointer] Table")[2]
    rows = re.findall(r"^\s*\[\s*\d+\](?:\s+\+base\[\s*\d+\]\s+[0-9a-f]+)?\s+(\S+)\s*$", table,
                      re.MULTILINE)
    return set(rows)


def exported_names(path):
    if path.endswith((".dll", ".exe")):
        command, reader = [PE_DUMPER, "-p", path], names_from_objdump
    else:
        command, reader = ["nm", "-D", "--defined-only", path], names_from_nm
    return reader(subprocess.run(command, check=True, capture_output=True, text=True).stdout)


def differences(listed, exported):
    """One line a difference; empty when the file exports exactly what is listed."""
    found = [f"listed twice: {name}" for name in sorted(set(listed)) if listed.count(name) > 1]
    found += [f"listed but not exported: {name}" for name in sorted(set(listed) - exported)]
    found += [f"exported but not listed: {name}" for name in sorted(exported - set(listed))]
    return found


def main():
    module, list_file = sys.argv[1:]
    with open(list_file, encoding="utf-8") as file:
        listed = listed_names(file.read())
    exported = exported_names(module)
    found = differences(listed, exported)
    for line in found:
        print(line)
    print(f"{module}: {len(exported)} names exported, {len(listed)} listed")
    return 1 if found or not listed else 0


if __name__ == "__main__":
    sys.exit(main())
