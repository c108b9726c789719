' SPDX-License-Identifier: Apache-2.0
' Reads single nodes in both views. Argument: a case file with the streams Feed and Product.
Option Explicit
Dim c, feed, node
Set c = CreateObject("Fixtop.Case")
WScript.Echo "open: " & c.IsOpen
c.Open WScript.Arguments(0)
WScript.Echo "open: " & c.IsOpen
Set feed = c.Neutral.Flowsheet.Stream(0)
WScript.Echo feed.Name, feed.Key, feed.Path, feed.Type
WScript.Echo feed.Temperature.Value, feed.Temperature.Unit, feed.Temperature.Status
WScript.Echo feed.Temperature.ValueIn("K")
WScript.Echo c.Flowsheet.Stream("Product").Pressure.ValueIn("bar")
WScript.Echo "default property: " & (feed.Temperature + 1)
WScript.Echo "letters: " & c.neutral.FLOWSHEET.stream("Product").TEMPERATURE.valuein("K")
Set node = c.Raw.appModel.FlowSheetObjects.Streams("Feed").Pressure
WScript.Echo node.Path, node.ValueIn("bar"), node.Attribute("type")
Set node = c.Find("appModel.FlowSheetObjects.Streams.Product.Temperature")
WScript.Echo node.ValueIn("K"), node.Parent.Name, node.Parent.Parent.Name
WScript.Echo "attribute that is not there: " & IsNull(node.Attribute("nosuch"))
WScript.Echo "exists: " & c.Raw.Exists("appModel.Nothing") & " " & c.Raw.Exists("appModel.FlowSheetObjects")
WScript.Echo "not in this case: " & IsNull(feed.MolarFlow.Value) & " " & feed.CustomProperty.Count & " " & c.Flowsheet.UnitOperation.Count
WScript.Echo "raw: " & feed.Raw.Path & ", neutral: " & feed.Raw.Neutral.Path
WScript.Echo "parent of the root: " & (c.Raw.Parent Is Nothing)
c.UseUnitSet "Field"
WScript.Echo c.Find("appModel.FlowSheetObjects.Streams.Product.Temperature").Unit
c.Close
WScript.Echo "open: " & c.IsOpen
Set node = Nothing
Set feed = Nothing
Set c = Nothing
WScript.Quit 11
