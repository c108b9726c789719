' SPDX-License-Identifier: Apache-2.0
' Stores into the built-in case, which solves then, at once, when it is told to, or beside the script.
Option Explicit
Dim c, raw_gas, mixed_gas, solver, turns
Set c = CreateObject("Fixtop.Case")
c.Open "demo"
Set raw_gas = c.Flowsheet.Stream("Raw Gas").MolarFlow
Set mixed_gas = c.Flowsheet.Stream("Mixed Gas").MolarFlow
Set solver = c.Solver
WScript.Echo "solves on store: " & solver.SolvesOnStore
raw_gas.SetValue 1100, "kmol/h"
WScript.Echo "mixed: " & mixed_gas.ValueIn("kmol/h") & ", old: " & mixed_gas.IsOld
solver.SolvesOnStore = False
raw_gas.SetValue 1200, "kmol/h"
WScript.Echo "mixed: " & mixed_gas.ValueIn("kmol/h") & ", none: " & IsNull(mixed_gas.Value)
WScript.Echo "solved: " & c.Solve & " " & solver.Message
WScript.Echo "mixed: " & mixed_gas.ValueIn("kmol/h") & ", old: " & c.HasOldResults
raw_gas.SetValue 900, "kmol/h"
solver.Start
turns = 0
Do While solver.IsRunning
    turns = turns + 1
    If turns > 100000 Then WScript.Quit 99
Loop
WScript.Echo "started, then complete: " & solver.IsComplete & ", mixed: " & mixed_gas.ValueIn("kmol/h")
raw_gas.SetValue 1000, "kmol/h"
solver.Start
solver.Stop
Do While solver.IsRunning
Loop
WScript.Echo "stopped or complete, and solved again: " & solver.Solve & ", mixed: " & mixed_gas.ValueIn("kmol/h")
Set solver = Nothing
Set mixed_gas = Nothing
Set raw_gas = Nothing
Set c = Nothing
WScript.Quit 15
