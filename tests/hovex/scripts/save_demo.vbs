' SPDX-License-Identifier: Apache-2.0
' Saves the built-in case. Argument: the file.
Option Explicit
Dim c
Set c = CreateObject("Fixtop.Case")
c.Open "demo"
c.Save WScript.Arguments(0)
Set c = Nothing
WScript.Quit 21
