' SPDX-License-Identifier: Apache-2.0
' Stores values in units and saves the case. Arguments: a case file, and the file to save it to.
Option Explicit
Dim c, t, p, text
Set c = CreateObject("Fixtop.Case")
c.Open WScript.Arguments(0)
Set t = c.Flowsheet.Stream("Feed").Temperature
Set p = c.Find("appModel.FlowSheetObjects.Streams.Feed.Pressure")
t.Value = 40
WScript.Echo "40 C: " & t.ValueIn("K")
t.SetValue 300, "K"
WScript.Echo "300 K: " & t.ValueIn("C")
p.SetValue 45, "bar"
WScript.Echo "45 bar: " & p.ValueIn("kPa")
p.SetValue "4.6", "MPa"
WScript.Echo "4.6 MPa as text: " & p.ValueIn("bar")
c.Flowsheet.Stream("Product").Temperature = 55.5
WScript.Echo "by the member: " & c.Flowsheet.Stream("Product").Temperature
Set t = c.Find("appModel.FlowSheetObjects.Streams.Product.Pressure")
t.Unit = "bar"
t.Value = 7
WScript.Echo "in the unit that is shown: " & t.Value & " " & t.Unit & ", " & t.ValueIn("kPa")
t.Value = Null
WScript.Echo "taken away: " & IsNull(t.Value)
c.Save WScript.Arguments(1)
Set p = Nothing
Set t = Nothing
c.Open WScript.Arguments(1)
WScript.Echo "saved: " & c.Flowsheet.Stream("Feed").Pressure.ValueIn("bar") & " " & c.Flowsheet.Stream("Product").Temperature.ValueIn("C")
Set c = Nothing
WScript.Quit 13
