# SPDX-License-Identifier: Apache-2.0
"""A session at a prompt: `python3 -i -m fixtop.session [CASE]` opens a case as `case`."""

import sys

import fixtop

if __name__ == "__main__":
    case = fixtop.open(sys.argv[1] if len(sys.argv) > 1 else fixtop.demo())
    print(f"fixtop {fixtop.__version__}: `case` is {case.file}")
    print(
        'Try case.streams(), case.stream(NAME).temperature.to("K"), case.find("**.Temperature"), help(case)'
    )
