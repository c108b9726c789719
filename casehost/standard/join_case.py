#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Joins the parts of a case file into one.

usage: join_case.py <out.json> <first.json> <part.json>...

A part is written as a whole case file is, but needs to say only what it adds. Members of objects are
joined by their names; so are the elements of a list that have a "name" or "tag". Other lists are put
behind each other. What two parts say differently is an error.
"""

import json
import pathlib
import sys


def key_of(element):
    return isinstance(element, dict) and (element.get("name") or element.get("tag"))


def joined_lists(whole, part, place):
    by_key = {key_of(element): index for index, element in enumerate(whole) if key_of(element)}
    for element in part:
        index = by_key.get(key_of(element))
        if index is None:
            whole.append(element)
        else:
            whole[index] = joined(whole[index], element, f"{place}/{key_of(element)}")
    return whole


def joined(whole, part, place):
    if isinstance(whole, list) and isinstance(part, list):
        return joined_lists(whole, part, place)
    if isinstance(whole, dict) and isinstance(part, dict):
        for name, value in part.items():
            whole[name] = joined(whole[name], value, f"{place}/{name}") if name in whole else value
        return whole
    if whole != part:
        raise SystemExit(f"{place}: {json.dumps(part)} differs from {json.dumps(whole)}")
    return whole


def main():
    out, *parts = map(pathlib.Path, sys.argv[1:])
    case = {}
    for part in parts:
        case = joined(case, json.loads(part.read_text(encoding="utf-8")), part.name)
    out.parent.mkdir(parents=True, exist_ok=True)
    out.write_text(json.dumps(case, ensure_ascii=False, indent=1) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
