' SPDX-License-Identifier: Apache-2.0
' What a case answers while it is being solved. Arguments: a case of which a solve takes long, a file
' that is not to be written.
Option Explicit
Dim c, flow, solver, chosen
Set c = CreateObject("Fixtop.Case")
c.Open WScript.Arguments(0)
Set flow = c.Flowsheet.Stream("Raw Gas").MolarFlow
Set solver = c.Solver
solver.SolvesOnStore = False
Set chosen = c.Collect
chosen.Add flow, "kmol/h"
WScript.Echo "before: " & flow.ValueIn("kmol/h")
solver.Start
On Error Resume Next
flow.SetValue 1, "kmol/h"
Tell "SetValue"
flow.Value = 1
Tell "Value"
c.Flowsheet.Stream("Raw Gas").MolarFlow = 1
Tell "member"
chosen.Write Array(1)
Tell "Write"
solver.SolvesOnStore = True
Tell "SolvesOnStore"
c.Save WScript.Arguments(1)
Tell "Save"
c.Open "demo"
Tell "Open"
c.Close
Tell "Close"
solver.Start
Tell "Start"
c.Solve
Tell "Solve"
WScript.Echo "reads: " & flow.ValueIn("kmol/h") & ", running: " & solver.IsRunning
solver.Stop
Tell "Stop"
On Error GoTo 0
Do While solver.IsRunning
Loop
WScript.Echo "complete: " & solver.IsComplete & ", open: " & c.IsOpen & ", solves on store: " & solver.SolvesOnStore
flow.SetValue 1200, "kmol/h"
WScript.Echo "after: " & flow.ValueIn("kmol/h")
Set chosen = Nothing
Set solver = Nothing
Set flow = Nothing
Set c = Nothing
WScript.Quit 20

Sub Tell(what)
    WScript.Echo what & ": " & Err.Description
    Err.Clear
End Sub
