' SPDX-License-Identifier: Apache-2.0
' cscript //nologo raise_flow.vbs <folder>: stores two values, solves once, and saves into the folder.
Option Explicit
Dim c, chosen
Set c = CreateObject("Fixtop.Case")
c.Open "demo"
c.Folder = WScript.Arguments(0)
Set chosen = c.Collect
chosen.Add c.Flowsheet.Stream("Raw Gas").MolarFlow, "kmol/h"
chosen.Add c.Flowsheet.Stream("Tail Gas").MolarFlow, "kmol/h"
c.Solver.SolvesOnStore = False
chosen.Write Array(1200, 160)
If Not c.Solve Then WScript.Echo c.Solver.Message & " " & c.Solver.Problem
WScript.Echo c.Flowsheet.Stream("Mixed Gas").MolarFlow.ValueIn("kmol/h")
chosen.Save "flows.xml"
c.Save "larger.json"
Set chosen = Nothing
Set c = Nothing
