' SPDX-License-Identifier: Apache-2.0
' Goes over lists of the built-in case.
Option Explicit
Dim c, each_one, list, i, twice
Set c = CreateObject("Fixtop.Case")
c.Open "demo"
For Each each_one In c.Flowsheet.Stream
    WScript.Echo "stream " & each_one.Key
Next
Set list = c.Raw.Find("appModel.FlowSheetObjects").Children
For i = 0 To list.Count - 1
    WScript.Echo "child " & list(i).Name & " " & list.Item(i).Parent.Name
Next
WScript.Echo "by name: " & list("UnitOps").Name
For Each each_one In c.Matches("appModel.FlowSheetObjects.Streams.*[Pressure=6000]")
    WScript.Echo "match " & each_one.Name
Next
twice = 0
For Each each_one In list
    For Each i In list
        twice = twice + 1
    Next
Next
WScript.Echo "pairs: " & (twice = list.Count * list.Count)
WScript.Echo "none: " & c.Matches("appModel.Nobody.*").Count
WScript.Echo "first child: " & c.Raw.appModel.Children(0).Parent.Name
Set i = Nothing
Set list = Nothing
Set each_one = Nothing
Set c = Nothing
WScript.Quit 14
