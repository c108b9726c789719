' SPDX-License-Identifier: Apache-2.0
' A selection from text. Argument: a case file with the streams Feed and Product.
Option Explicit
Function Joined(values)
    Dim value
    For Each value In values
        Joined = Joined & "[" & value & "]"
    Next
End Function

Dim c, pasted, text
Set c = CreateObject("Fixtop.Case")
c.Open WScript.Arguments(0)
text = "<Selection><Items>" & _
       "<Item><Path>appModel.FlowSheetObjects.Streams.Product.Temperature</Path></Item>" & _
       "<Item><Path>appModel.FlowSheetObjects.Streams.Nobody.Temperature</Path></Item>" & _
       "<Item><Path>appModel.FlowSheetObjects.Streams.Feed.Pressure</Path></Item></Items></Selection>"
Set pasted = c.Paste(text)
WScript.Echo "pasted: " & Joined(pasted.Paths)
WScript.Echo "values: " & pasted(0).ValueIn("K") & " " & pasted(1).ValueIn("bar")
Set pasted = c.Paste("<Selection><Items></Items></Selection>")
WScript.Echo "empty: " & pasted.Count
Set pasted = Nothing
Set c = Nothing
WScript.Quit 17
