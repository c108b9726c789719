# SPDX-License-Identifier: Apache-2.0
"""What the header of the typed interfaces declares, as rows that a test compiles:
list_interfaces.py <header> <rows>."""

import re
import sys

BEGIN = re.compile(r"struct (\w+) : (?:::)?(\w+) \{")
MEMBER = re.compile(r"    virtual ::HRESULT STDMETHODCALLTYPE (\w+)\(")


def rows(header):
    name = None
    for line in header:
        if begin := BEGIN.match(line):
            name = begin[1]
            yield f"TYPED_INTERFACE({name}, {begin[2]})"
        elif member := MEMBER.match(line):
            yield f"TYPED_MEMBER({name}, {member[1]})"


def main():
    with open(sys.argv[1], encoding="utf-8") as header:
        listed = list(rows(header))
    with open(sys.argv[2], "w", encoding="utf-8") as out:
        out.write("\n".join(listed) + "\n")


main()
