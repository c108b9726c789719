# SPDX-License-Identifier: Apache-2.0
"""python streams.py [case file]; needs the package pywin32."""

import sys

import win32com.client

case = win32com.client.dynamic.Dispatch("Fixtop.Case")
case.Open(sys.argv[1] if len(sys.argv) > 1 else "demo")
for stream in case.Neutral.Flowsheet.Stream:
    print(stream.Key, stream.Temperature.ValueIn("C"), stream.Pressure.ValueIn("bar"), sep="\t")
