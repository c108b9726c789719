# SPDX-License-Identifier: Apache-2.0
"""The check of class and map files, and of what a map gives in a case."""

import json
import re
import unittest

from small_case import small_case, write_case
from support import DONE, FAILED, UNREADABLE, USAGE, ProgramTest, run

LIBRARY = """<QZClassLibrary Name="own">
<Class Name="QSISimulation"/>
<ClassAttributes Name="QSISimulation">
<Attribute Name="Stream" Type="Object" Multiplicity="n"><ClassName>Stream</ClassName><CustomMetaData>Key~Name~</CustomMetaData></Attribute>
<Attribute Name="Again" Type="Object" Multiplicity="n"><ClassName>Stream</ClassName><CustomMetaData>Key~Name~</CustomMetaData></Attribute>
</ClassAttributes>
<Enumeration Name="eSpeed" EnumIsClosed="1"><Option Name="High"/><Option Name="Low"/></Enumeration>
<Class Name="Box"/>
<ClassAttributes Name="Stream">
<Attribute Name="Name" Type="String"/>
<Attribute Name="Heat" Type="Real"><QuantityType>Temperature</QuantityType></Attribute>
<Attribute Name="Boxed" Type="Real"/>
<Attribute Name="Deep" Type="Real"/>
<Attribute Name="Lost" Type="Real"/>
<Attribute Name="Parts" Type="Object" Multiplicity="n"><ClassName>Box</ClassName></Attribute>
<Attribute Name="Speed" Type="Enumeration"><EnumName>eSpeed</EnumName></Attribute>
<Attribute Name="Unmapped" Type="Real"/>
<Attribute Name="Unset" Type="Real"/>
<Attribute Name="When" Type="Real"/>
<Attribute Name="Width" Type="Real"><QuantityType>Length</QuantityType></Attribute>
</ClassAttributes>
</QZClassLibrary>
"""
MAP = """<CCDMMapFile Name="own">
<TranslateName>Hovex</TranslateName>
<Linkage><DLL>fixtop.dll</DLL></Linkage>
<Translate Type="Function">Find1</Translate>
<TopNode FunctionName="GetTopHovexEntry"/>
<Class Name="QSISimulation">
<Attribute Name="Stream"><TranslateArray Type="Map">FlowSheetObjects.Streams.*</TranslateArray></Attribute>
<Attribute Name="Again"><TranslateArray Type="Map">FlowSheetObjects.Streams.*</TranslateArray></Attribute>
</Class>
<Class Name="Stream">
<Attribute Name="Name"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">(id)</Attribute></NodeAttributes></Translate></Attribute>
<Attribute Name="Heat"><Translate Type="Map">Temperature</Translate></Attribute>
<Attribute Name="Boxed" Container="Box"><Translate Type="Map">Temperature</Translate></Attribute>
<Attribute Name="Deep"><Translate Type="Map">"A &amp; B".Nix</Translate></Attribute>
<Attribute Name="Lost"><Translate Type="Map">Temprature</Translate></Attribute>
<Attribute Name="Parts"><TranslateArray Type="Map">Nix.*</TranslateArray></Attribute>
<Attribute Name="Speed"><Translate Type="Map">Mode</Translate></Attribute>
<Attribute Name="Unset"><Translate Type="Map">Unset</Translate></Attribute>
<Attribute Name="When"><Translate Type="Map">Temperature</Translate><Condition Var="Mode">1</Condition></Attribute>
<Attribute Name="Width"><Translate Type="Map">Pressure</Translate></Attribute>
</Class>
</CCDMMapFile>
"""
NOTHING = "leads nowhere; nothing of it was found"
# Of the streams Feed 1, with all variables, Feed.2 and Größe.
TOLD = f"""\
Stream.Boxed: no translator in 3 of 3: container Box is not above it, as in Stream(Feed 1)
Stream.Deep: no node in 2 of 3: path "A & B".Nix {NOTHING}, as in Stream("Feed.2")
Stream.Deep: no node in 1 of 3: path "A & B".Nix leads nowhere; found: "A & B", then no Nix, as in Stream(Feed 1)
Stream.Lost: no node in 3 of 3: path Temprature {NOTHING}; near: Temperature, as in Stream(Feed 1)
Stream.Parts: no value in 3 of 3: the list is empty, or no element of it has a key, as in Stream(Feed 1)
Stream.Speed: no node in 2 of 3: path Mode {NOTHING}, as in Stream("Feed.2")
Stream.Speed: refused in 1 of 3: option Slow is none of eSpeed, as in Stream(Feed 1)
Stream.Unset: no node in 2 of 3: path Unset {NOTHING}, as in Stream("Feed.2")
Stream.Unset: no value in 1 of 3: the node has no value (Missing), as in Stream(Feed 1)
Stream.When: no translator in 3 of 3: condition Mode = 1 fails, as in Stream(Feed 1)
Stream.Width: refused in 3 of 3: unit kPa is none of quantity Length, as in Stream(Feed 1)
"""

COUNTED = "8 of 12 mapped attributes of 2 classes have a value nowhere\n"


class CheckMap(ProgramTest):
    def setUp(self):
        self.case = write_case(self.folder, "small.json", small_case())

    def checked(self, *arguments, library=LIBRARY, map_text=MAP):
        self.library = self.file("own_library.xml", library)
        self.map = self.file("own_map.xml", map_text)
        return run("check-map", "--library", self.library, "--map", self.map, *arguments)

    def test_without_a_mistake_nothing_is_written(self):
        self.check(self.checked(), DONE, "", "")

    def test_a_mistake_is_a_line_with_file_and_line(self):
        result = self.checked(map_text=MAP.replace('Name="Heat"', 'Name="Heet"'))
        self.check(result, FAILED, f"{self.map}:12: attribute Heet of class Stream is not known; near: Heat\n", "")

    def test_quantities_are_those_of_the_units(self):
        result = self.checked(library=LIBRARY.replace(">Temperature<", ">Temperatur<"))
        self.assertTrue(self.check(result, FAILED, err="").out.startswith(
            f"{self.library}:11: quantity Temperatur is not known; near: Temperature"), result)

    def test_attributes_without_a_translator_are_told_when_they_are_asked_for(self):
        text = "attribute Unmapped of class Stream has no translator"
        self.check(self.checked("--unmapped"), DONE, f"{self.library}:17: {text}\n", "")
        record = json.loads(self.check(self.checked("--unmapped", "--json"), DONE, err="").out)
        self.assertEqual({"kind": "unmapped", "file": str(self.library), "line": 17, "text": text}, record)

    def test_a_translation_that_the_map_does_not_have(self):
        text = "no such translation: Other; expected Hovex"
        for case in ((), ("--case", "demo")):
            self.check(run("check-map", "--translate", "Other", *case), UNREADABLE, "", text + "\n")
        record = json.loads(self.check(run("check-map", "--translate", "Other", "--json"), UNREADABLE).out)
        self.assertEqual({"error": text, "exit": 3}, record)
        self.check(run("check-map", "--translate", "Hovex"), DONE, "", "")

    def test_files_that_can_not_be_read(self):
        result = run("check-map", "--library", "missing.xml", "--units", "missing_units.xml")
        self.check(result, FAILED, "missing_units.xml: units can't be read; quantities are not looked up\n"
                                   "missing.xml: file missing.xml can't be found\n", "")
        result = self.checked(map_text="<CCDMMapFile>\n<Class>")
        self.assertRegex(self.check(result, FAILED, err="").out, r"own_map\.xml:2: .*; nothing is read from here on\n")

    def test_what_gives_nothing_in_a_case_is_told_with_the_reason(self):
        self.check(self.checked("--case", self.case), DONE, TOLD, COUNTED)

    def test_reasons_as_json(self):
        lines = self.check(self.checked("--case", self.case, "--json"), DONE, err=COUNTED).lines
        self.assertEqual(len(TOLD.splitlines()), len(lines))
        self.assertEqual({"kind": "refused", "class": "Stream", "attribute": "Speed", "declared_by": "Stream",
                          "instances": 3, "count": 1, "text": "option Slow is none of eSpeed",
                          "example": "Stream(Feed 1)"}, json.loads(lines[6]))

    def test_mistakes_come_before_the_case(self):
        result = self.checked("--case", self.case, map_text=MAP.replace(">Temprature<", ">a[b<"))
        lines = self.check(result, FAILED, err=COUNTED).lines
        self.assertEqual(f"{self.map}:15: Parse error, ] expected in: a[b", lines[0])
        self.assertIn("Stream.Lost: no node in 3 of 3: Parse error, ] expected in: a[b, as in Stream(Feed 1)", lines)

    def test_a_case_that_can_not_be_opened(self):
        self.check(self.checked("--case", self.folder / "missing.json"), UNREADABLE, "")
        result = self.checked("--case", self.case, map_text=MAP.replace("fixtop.dll", "other.dll"))
        self.check(result, UNREADABLE)
        self.assertIn("the neutral view can't be opened\n", result.err)
        self.check(run("check-map", "--nothing"), USAGE)

    def test_built_in_case_has_nine_in_ten(self):
        told = self.check(run("check-map", "--case", "demo"), DONE).err
        empty, mapped = map(int, re.match(r"(\d+) of (\d+) mapped attributes of \d+ classes", told).groups())
        self.assertGreater(mapped, 1200)
        self.assertLessEqual(empty, mapped / 10)

    def test_shipped_files_have_no_mistake(self):
        self.check(run("check-map"), DONE, "", "")


if __name__ == "__main__":
    unittest.main()
