' SPDX-License-Identifier: Apache-2.0
' cscript //nologo streams.vbs [case file]
Option Explicit
Dim c, stream
Set c = CreateObject("Fixtop.Case")
If WScript.Arguments.Count > 0 Then
    c.Open WScript.Arguments(0)
Else
    c.Open "demo"
End If
For Each stream In c.Neutral.Flowsheet.Stream
    WScript.Echo stream.Key & vbTab & stream.Temperature.ValueIn("C") & vbTab & stream.Pressure.ValueIn("bar")
Next
Set stream = Nothing
Set c = Nothing
