' SPDX-License-Identifier: Apache-2.0
' Prints the streams of a real case, one a line. Argument: the case file.
Option Explicit
Dim c, stream, fraction
Set c = CreateObject("Fixtop.Case")
c.Open WScript.Arguments(0)
For Each stream In c.Flowsheet.Stream
    WScript.Echo stream.Key & vbTab & stream.Temperature.ValueIn("K") & vbTab & _
                 stream.Pressure.ValueIn("Pa") & vbTab & stream.MolarFlow.ValueIn("mol/s") & vbTab & _
                 stream.MassFlow.ValueIn("kg/s") & vbTab & stream.VaporFraction.Value
Next
Set stream = Nothing
Set c = Nothing
WScript.Quit 19
