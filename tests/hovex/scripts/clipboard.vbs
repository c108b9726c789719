' SPDX-License-Identifier: Apache-2.0
' The selection that is on the clipboard. Argument: a case file with the streams Feed and Product.
Option Explicit
Function Joined(values)
    Dim value
    For Each value In values
        Joined = Joined & "[" & value & "]"
    Next
End Function

Dim c, pasted
Set c = CreateObject("Fixtop.Case")
c.Open WScript.Arguments(0)
On Error Resume Next
Set pasted = c.Paste
If Err.Number <> 0 Then
    WScript.Echo "refused: " & Err.Description
ElseIf pasted Is Nothing Then
    WScript.Echo "nothing"
Else
    WScript.Echo "pasted: " & Joined(pasted.Paths)
End If
Set pasted = Nothing
Set c = Nothing
WScript.Quit 18
