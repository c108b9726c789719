Attribute VB_Name = "Streams"
' SPDX-License-Identifier: Apache-2.0
' Writes the streams of a case into the active sheet, one a row. The file's name stands in cell B1.
Sub ReadStreams()
    Dim c As Object, stream As Object, row As Long
    Set c = CreateObject("Fixtop.Case")
    c.Open ActiveSheet.Range("B1").Value
    row = 3
    For Each stream In c.Neutral.Flowsheet.Stream
        ActiveSheet.Cells(row, 1).Value = stream.Key
        ActiveSheet.Cells(row, 2).Value = stream.Temperature.ValueIn("C")
        ActiveSheet.Cells(row, 3).Value = stream.Pressure.ValueIn("bar")
        row = row + 1
    Next
End Sub
