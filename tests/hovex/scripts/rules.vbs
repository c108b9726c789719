' SPDX-License-Identifier: Apache-2.0
' What scripts may rely on when they mistake something. Argument: the case file.
Option Explicit
Dim c, feed, chosen, answers
Set c = CreateObject("Fixtop.Case")
c.Open WScript.Arguments(0)
Set feed = c.Flowsheet.Stream("Feed")
Set chosen = c.Collect
chosen.Add feed.Temperature, "C"
chosen.Add feed.Pressure, "bar"
WScript.Echo "units: " & chosen.Unit(0) & " " & chosen.Unit(1)
answers = chosen.Write(Array("warm", 6))
WScript.Echo "texts beside numbers: [" & answers(0) & "][" & answers(1) & "] " & feed.Temperature.ValueIn("C") & " " & feed.Pressure.ValueIn("bar")
answers = chosen.Write(Array("", 7))
WScript.Echo "nothing beside numbers: [" & answers(0) & "][" & answers(1) & "] " & feed.Temperature.ValueIn("C") & " " & feed.Pressure.ValueIn("bar")
On Error Resume Next
chosen.Write Array(1, 2, 3)
Tell "too many values"
c.Flowsheet.Stream = 45
Tell "a store into a list"
chosen.Save ""
Tell "no file"
c.Solver.SolvesOnStore = "True"
Tell "a text for a truth"
c.Find "a" & Chr(0) & "b"
Tell "a text with NUL"
c.Open "nosuch.json"
WScript.Echo "after a failed Open: " & c.IsOpen & " " & feed.Temperature.ValueIn("C")
Err.Clear
c.Close
WScript.Echo "closed: " & c.IsOpen
feed.Temperature.SetValue 3
Tell "a store into what is closed"
WScript.Echo feed.Path
Tell "the path of what is closed"
On Error GoTo 0
c.Open "demo"
WScript.Echo "opened: " & c.Solver.IsComplete & " " & c.Solver.SolvesOnStore
c.Solve
WScript.Echo "solved: " & c.Solver.IsComplete & " " & c.Solver.SolvesOnStore
c.Flowsheet.Stream("Raw Gas").Pressure.SetValue 60, "kPa"
WScript.Echo "stored: " & c.Solver.IsComplete & " [" & c.Solver.Problem & "]"
WScript.Echo "solved: " & c.Solve & " [" & c.Solver.Problem & "]"
Set chosen = Nothing
Set feed = Nothing
Set c = Nothing
WScript.Quit 22

Sub Tell(what)
    WScript.Echo what & ": " & Hex(Err.Number) & " " & Err.Description
    Err.Clear
End Sub
