' SPDX-License-Identifier: Apache-2.0
' What scripts are told of errors. Argument: a case file with the stream Feed.
Option Explicit
Dim c, feed
On Error Resume Next

Sub Told(what)
    WScript.Echo what & ": " & Hex(Err.Number) & " " & Replace(Err.Description, vbLf, " |")
    Err.Clear
End Sub

Set c = CreateObject("Fixtop.Case")
c.Raw.Name
Told "before a case is open"
c.Open "Z:\nosuch\folder\no.json"
Told "no such file"
c.Open 5
Told "a number for a file"
c.Open
Told "no argument"
c.Open WScript.Arguments(0)
Told "a case"
c.Find "appModel.FlowSheetObjects.Streams.Feedd.Temperature"
Told "a path that leads nowhere"
c.Find "appModel..x["
Told "no path"
Set feed = c.Flowsheet.Stream("Feed")
feed.Temperature.ValueIn "kg"
Told "a unit of another quantity"
feed.Temperature.Value = "warm"
Told "no number"
feed.NoSuchMember.Value = 1
Told "no member"
Set feed = c.Flowsheet.Stream(2)
Told "beyond the last"
Set feed = c.Flowsheet.Stream("Feet")
Told "no such key"
c.UseUnitSet "Imperial"
Told "no such units"
c.Paste "<Selection><Items>"
Told "half a selection"
c.Save "Z:\nosuch\folder\copy.json"
Told "a file that can't be written"
WScript.Echo "after all that: " & c.Flowsheet.Stream("Feed").Temperature.ValueIn("C")
Set feed = Nothing
Set c = Nothing
WScript.Quit 12
