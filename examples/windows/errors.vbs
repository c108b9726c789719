' SPDX-License-Identifier: Apache-2.0
' What a script does about errors.
Option Explicit
Dim c
Set c = CreateObject("Fixtop.Case")
c.Open "demo"
On Error Resume Next
c.Flowsheet.Stream("Raw Gas").Temperature.SetValue 300, "kg"
If Err.Number <> 0 Then WScript.Echo Err.Description
On Error GoTo 0
Set c = Nothing
