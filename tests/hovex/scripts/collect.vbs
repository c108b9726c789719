' SPDX-License-Identifier: Apache-2.0
' A selection: made, read, written, saved and loaded. Arguments: a case file with the streams Feed and
' Product, a file for the selection, and another case file, which lacks the stream Feed.
Option Explicit
Function Joined(values)
    Dim value
    For Each value In values
        Joined = Joined & "[" & value & "]"
    Next
End Function

Dim c, chosen, again, answers, node
Const streams = "appModel.FlowSheetObjects.Streams."
Set c = CreateObject("Fixtop.Case")
c.Open WScript.Arguments(0)
Set chosen = c.Collect
WScript.Echo "new: " & chosen.Add(c.Find(streams & "Feed.Temperature"), "K")
WScript.Echo "new: " & chosen.Add(streams & "Product.Pressure", "bar")
WScript.Echo "new: " & chosen.Add(streams & "Product.Temperature")
WScript.Echo "new: " & chosen.Add(streams & "Feed.Temperature", "K")
WScript.Echo "count: " & chosen.Count
WScript.Echo "values: " & Joined(chosen.Read)
WScript.Echo "units: " & Joined(chosen.Units)
WScript.Echo "statuses: " & Joined(chosen.Statuses)
For Each node In chosen
    WScript.Echo "item: " & node.Path
Next
answers = chosen.Write(Array(310, 6, Null))
WScript.Echo "answers: " & Joined(answers) & " values: " & Joined(chosen.Read)
answers = chosen.Write(Array("320", "many"))
WScript.Echo "first answer: [" & answers(0) & "] second: [" & answers(1) & "] values: " & Joined(chosen.Read)
WScript.Echo "item 2: " & chosen(2).Path & ", unit of item 1: " & chosen.Unit(1)
chosen.Save WScript.Arguments(1)
WScript.Echo "removed: " & chosen.Remove(streams & "Product.Pressure") & " " & chosen.Remove(streams & "Product.Pressure")
WScript.Echo "left: " & Joined(chosen.Paths)
Set again = c.Collect
again.Load WScript.Arguments(1)
WScript.Echo "loaded: " & Joined(again.Paths) & " " & Joined(again.Units) & " " & Joined(again.States)
Set node = Nothing
Set chosen = Nothing
Set again = Nothing
c.Open WScript.Arguments(2)
Set again = c.Collect
again.Load WScript.Arguments(1)
WScript.Echo "elsewhere: " & Joined(again.States) & ", item 0: " & (again(0) Is Nothing)
answers = again.Read
WScript.Echo "values there: " & Joined(answers)
Set again = c.Collect
again.Add c.Flowsheet.Stream("Product").Temperature, "K"
WScript.Echo "neutral: " & again.Path(0) & " " & Joined(again.Read)
Set again = Nothing
Set c = Nothing
WScript.Quit 16
