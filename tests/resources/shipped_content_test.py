#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The class library and the maps as XML, read apart from the module: counts and references.

shipped_content_test.py RESOURCES QUANTITY_NAMES EXPORTS: the folder of the files, the header that
lists the quantities in their order, and the list of what the module exports.
"""

import collections
import pathlib
import re
import sys
import unittest
import xml.etree.ElementTree as ElementTree

import content_tables as tables

# The functions with the attributes that they give;
# one without an attribute stands at the root.
FUNCTION_PLACES = """
Find1
CTStreams QSIFlowsheet.Stream
CTHeatStreams QSIFlowsheet.HeatStream
CTFlowsheets QSIFlowsheet.SubFlowsheet
CTUnitOperations QSIFlowsheet.UnitOperation
CTPhaseEnvelopes QSIFlowsheet.PhaseEnvelope
CTDistillationCurves QSIFlowsheet.DistillationCurve
CTComponentArray QSICompositionProperties.Component
CTComponent QSIComponentProperties.ComponentName
CTMoleFraction QSIMaterialFraction.MoleFraction
CTMassFraction QSIMaterialFraction.MassFraction
CTVolumeFraction QSIMaterialFraction.VolumeFraction
CTPhaseComponentArray QSICompositionProperties.Component
CTPhaseComponent QSIComponentProperties.ComponentName
CTPhaseMoleFraction QSIMaterialFraction.MoleFraction
CTPhaseMassFraction QSIMaterialFraction.MassFraction
CTPhaseVolumeFraction QSIMaterialFraction.VolumeFraction
CTKVMLArray QSIMixedEquilibriumPhase.KVML
CTKVLArray QSIMixedEquilibriumPhase.KVL1
CTKVL2Array QSIMixedEquilibriumPhase.KVL2
CTKL1L2Array QSIMixedEquilibriumPhase.KL1L2
CTKVML QSIDistributionCoefficient.ComponentID QSIDistributionCoefficient.K
CTKVL QSIDistributionCoefficient.K
CTKVL2 QSIDistributionCoefficient.K
CTKL1L2 QSIDistributionCoefficient.K
CTFluidPhaseComponentArray QSIUoFluidPhaseProperties.Composition
CTFluidPhaseComponent QSISimpleComposition.ComponentName QSISimpleComposition.MoleFraction
CTVaporPhaseComponentArray QSIFlash.VaporComposition
CTLiquidPhaseComponentArray QSIFlash.Liquid1Composition
CTLiquid2PhaseComponentArray QSIFlash.Liquid2Composition
CTVaporPhaseComponent QSISimpleComposition.ComponentName QSISimpleComposition.MoleFraction
CTLiquidPhaseComponent QSISimpleComposition.ComponentName QSISimpleComposition.MoleFraction
CTLiquid2PhaseComponent QSISimpleComposition.ComponentName QSISimpleComposition.MoleFraction
CTEntrainment QSIPhaseSeparation.Entrainment
CTMixerNozzle QSIMixer.InletNozzle
CTTeeNozzle QSITee.OutletNozzle
CTTeeSplit QSITee.Split
CTBubblePointCurve PhaseEnvelopeCurves.BubblePointCurve
CTDewPointCurve PhaseEnvelopeCurves.DewPointCurve
CTHydratePointCurve PhaseEnvelopeCurves.HydrateCurve
CTCutPercent QSIDistillationCurve.Cut
CTViscosity QSIDistillationCurveBulk.Viscosity
CTPipeSegment QSIPipe.Segment
CTPipeCell QSIPipeSegment.Cell
CTPipeProfile QSIPipe.Profile
CTComprPerfCurve QSICompressor.EfficiencyCurve QSICompressor.PerformanceCurve
CTPerfCurvePoint QSIComprPerformanceCurve.Point QSIPumpCurve.Point
CTSpeedFlowCurve QSISpeedFlowCurve.Point
CTValveCurve QSIValve.PerformanceCurve
CTPumpCurve QSIPump.PumpCurve
CTEfficiencyCurve QSIPump.EfficiencyCurve
CTNPSHCurve QSIPump.NPSHCurve
CTNPSHCurvePoint QSINPSHCurve.Point
CTExchangerHot QSIHeatExchanger.Hot
CTExchangerCold QSIHeatExchanger.Cold
CTHeaterVF QSIHeaterCooler.OutletVaporFraction
CTHeaterZone QSIHeaterCooler.Zone
CTHeaterProfile QSIHeatCurve.Point
CTReactions QSIReactionPkg.Reaction
CTActiveReactions QSIReactionSet.Reaction
CTReactionDenominatorTerm QSICatalyticRateReaction.AdsorptionTerm
CTReactionComponentOrder QSIReactionRateTerm.DrivingForce
CTLocalReaction QSILocalReactionSet.Reaction
CTReactantBalance QSILocalReactionSet.ReactantBalance
CTLocalConvReaction QSILocalConvReactionSet.ReactionOverride
CTLocalEquilReaction QSILocalEquilReactionSet.ReactionOverride
CTGibbsFlowSpec QSIGibbsReactor.FlowSpec
CTColumnStages QSIDistillationColumn.Stage
CTColumnFeeds QSIDistillationColumn.Feed
CTSectionTray QSIColumnSection.Tray QSIColumnSection.Stage QSISideColumn.Stage
CTColumnSideDraws QSIColumnSection.SideDraw
CTSideDrawFluid QSISideDraw.Fluid
CTColumnCompMoleFrac QSIUoFluidProperties.Composition
CTLiquidFromComposition QSIUoFluidPhaseProperties.Composition
CTColumnComponentEfficiency QSIDistillationEfficiency.ComponentEfficiency
CTCondNozzle QSICondenser.Nozzle
CTCondVapor QSICondenser.Vapor
CTCondDistillate QSICondenser.Distillate
CTCondHeavyDistillate QSICondenser.HeavyDistillate
CTCondReflux QSICondenser.Reflux
CTRebNozzle QSIReboiler.Nozzle
CTRebBoilup QSIReboiler.Boilup
CTRebLiquid QSIReboiler.LiquidProduct
CTRebLiquid2 QSIReboiler.Liquid2Product
CTRebVapor QSIReboiler.VaporDraw
CTSideColumnDraw QSISideColumn.Draw
CTSideColumnReturn QSISideColumn.Return
CTSideColumnReboiler QSISideColumn.Reboiler
CTSideColumnBottoms QSISideColumn.Bottoms
CTPumparoundDraw QSIPumpAround.Draw
CTPumparoundReturn QSIPumpAround.Return
"""

PHASE_NAMES = {
    "Overall",
    "Vapour Phase",
    "Total Liquid Phase",
    "Liquid Phase",
    "Second Liquid Phase",
    "Aqueous Phase",
    "Solid Phase",
}

ROOT_CLASSES = {"GenericClass", "DataSet"}


def text_of(element):
    return (element.text or "").strip()


class Content:
    """All shipped files, parsed."""

    def __init__(self, folder, quantity_header, exports):
        parse = lambda name: ElementTree.parse(folder / f"{name}.xml").getroot()
        self.folder = folder
        self.libraries = {name: parse(name) for name in tables.LIBRARY_FILES}
        self.maps = {name: parse(name) for name in tables.MAP_FILES}
        self.units = parse("CCDM_UOMDefinitions")
        self.quantities = re.findall(r'^    "(.*)",$', quantity_header.read_text(), re.MULTILINE)
        self.exported = {line.partition("#")[0].strip() for line in exports.open()}
        self.classes = {}
        self.attributes = {}
        self.enumerations = {}
        for root in self.libraries.values():
            for element in root.findall("Class"):
                self.classes[element.get("Name")] = element
            for element in root.findall("ClassAttributes"):
                for attribute in element.findall("Attribute"):
                    self.attributes[element.get("Name"), attribute.get("Name")] = attribute
            for element in root.findall("Enumeration"):
                self.enumerations[element.get("Name")] = element

    def superclass(self, name):
        return text_of(self.classes[name].find("Superclass"))

    def has_attribute(self, name, attribute):
        """Whether a shipped class has an attribute, of its own or inherited."""
        while name in self.classes:
            if (name, attribute) in self.attributes:
                return True
            name = self.superclass(name)
        return False

    def mapped(self):
        """File, class, element of each attribute that a map translates."""
        for file, root in self.maps.items():
            for element in root.findall("Class"):
                for attribute in element.findall("Attribute"):
                    yield file, element.get("Name"), attribute

    def translators(self):
        for root in self.maps.values():
            for element in root.iter():
                if element.tag in ("Translate", "TranslateArray"):
                    yield element


CONTENT = None


class Files(unittest.TestCase):
    def test_each_file_holds_what_its_row_says(self):
        for name, root in CONTENT.libraries.items():
            counts = [
                len(root.findall("Class")),
                len(root.findall("Enumeration")),
                len(root.findall("QuantityTypeDefn")),
                len(root.findall(".//Include")),
            ]
            self.assertEqual(counts, tables.LIBRARY_FILES[name], name)
        for name, root in CONTENT.maps.items():
            counts = [
                len(root.findall("Class")),
                sum(1 for e in root.iter() if e.tag in ("Translate", "TranslateArray")),
                len(list(root.iter("Enumeration"))),
            ]
            self.assertEqual(counts, tables.MAP_FILES[name], name)

    def test_every_file_of_the_folder_is_known(self):
        present = {path.stem for path in CONTENT.folder.glob("*.xml")}
        expected = set(tables.LIBRARY_FILES) | set(tables.MAP_FILES)
        self.assertEqual(present - expected, {"CCDM_UOMDefinitions", "hunits"})

    def test_includes_name_files_of_the_tables(self):
        for name, root in CONTENT.libraries.items():
            for element in root.iter("Include"):
                file = element.get("Library")
                self.assertIn(file.removesuffix(".xml"), tables.LIBRARY_FILES, name)
                self.assertTrue(file.endswith(".xml"), file)
        all_of_them = {e.get("Library") for e in CONTENT.libraries["QSIAllLibraries"].iter("Include")}
        others = set(tables.LIBRARY_FILES) - {"QSIAllLibraries"}
        self.assertEqual(all_of_them, {f"{name}.xml" for name in others})

    def test_root_map_begins_with_what_the_rest_needs(self):
        root = CONTENT.maps["hovexmap"]
        included = [e.get("Mapfile") for e in root.findall("Include")]
        self.assertEqual(
            [e.tag for e in root][:4], ["TranslateName", "Linkage", "Translate", "TopNode"]
        )
        self.assertEqual(text_of(root.find("TranslateName")), "Hovex")
        self.assertEqual(text_of(root.find("Linkage/DLL")), "fixtop.dll")
        self.assertEqual(text_of(root.find("Translate")), "Find1")
        self.assertEqual(root.find("Translate").get("Type"), "Function")
        self.assertEqual(root.find("TopNode").get("FunctionName"), "GetTopHovexEntry")
        others = set(tables.MAP_FILES) - {"hovexmap", "HMAPSharedClasses"}
        self.assertEqual(len(included), 11)
        self.assertEqual(set(included), {f"{name}.xml" for name in others})
        shared = [e.get("Mapfile") for e in CONTENT.maps["HMAPStreams"].iter("Include")]
        self.assertEqual(shared, ["HMAPSharedClasses.xml"])


class Library(unittest.TestCase):
    def test_classes_have_their_superclass_and_number_of_attributes(self):
        defined = collections.Counter(
            e.get("Name") for root in CONTENT.libraries.values() for e in root.findall("Class")
        )
        own = collections.Counter(owner for owner, _ in CONTENT.attributes)
        for name, times in defined.items():
            superclass, count = tables.CLASSES[name]
            with self.subTest(name):
                self.assertEqual(times, 1)
                self.assertEqual(
                    [text_of(e) for e in CONTENT.classes[name].findall("Superclass")],
                    [] if superclass == "none" else [superclass],
                )
                self.assertEqual(own[name], count)
        self.assertLessEqual(set(own), set(defined))
        self.assertEqual(set(defined), set(tables.CLASSES))

    def test_attribute_lists_tell_their_length(self):
        for root in CONTENT.libraries.values():
            for element in root.findall("ClassAttributes"):
                names = [e.get("Name") for e in element.findall("Attribute")]
                self.assertEqual(len(names), int(element.get("Count")), element.get("Name"))
                self.assertEqual(len(names), len(set(names)), element.get("Name"))

    def test_enumerations_are_closed_and_have_their_number_of_options(self):
        self.assertEqual(set(CONTENT.enumerations), set(tables.ENUMERATIONS))
        for name, element in CONTENT.enumerations.items():
            options = [e.get("Name") for e in element.findall("Option")]
            closed, count = tables.ENUMERATIONS[name]
            with self.subTest(name):
                self.assertEqual(element.get("EnumIsClosed"), str(closed))
                self.assertEqual(len(options), count)
                self.assertEqual(len(set(options)), count)

    def test_a_superclass_is_at_hand_where_a_file_is_read_alone(self):
        for name, root in CONTENT.libraries.items():
            at_hand = set(ROOT_CLASSES)
            waiting = [name]
            while waiting:
                file = CONTENT.libraries.get(waiting.pop())
                if file is None:
                    continue
                at_hand |= {e.get("Name") for e in file.findall("Class")}
                waiting += [e.get("Library").removesuffix(".xml") for e in file.iter("Include")]
            for element in root.findall("Class/Superclass"):
                self.assertIn(text_of(element), at_hand, name)

    def test_attributes_refer_to_what_there_is(self):
        for (owner, name), element in CONTENT.attributes.items():
            kind = element.get("Type")
            referred = {
                tag: text_of(element.find(tag))
                for tag in ("ClassName", "EnumName", "QuantityType")
                if element.find(tag) is not None
            }
            with self.subTest(f"{owner}.{name}"):
                self.assertIn(kind, tables.ATTRIBUTE_TYPES)
                self.assertIn(element.get("Multiplicity"), ("1", "n"))
                if kind == "Object":
                    self.assertIn(referred.pop("ClassName", None), tables.CLASSES)
                elif kind == "Enumeration":
                    self.assertIn(referred.pop("EnumName", None), tables.ENUMERATIONS)
                elif kind == "Real":
                    self.assertIn(referred.pop("QuantityType", "Yield"), CONTENT.quantities)
                self.assertEqual(referred, {}, "what another type of attribute refers to")

    def test_keys_are_attributes_of_the_elements(self):
        for (owner, name), element in CONTENT.attributes.items():
            for key in element.iter("CustomProperty"):
                with self.subTest(f"{owner}.{name}"):
                    self.assertEqual(element.get("Multiplicity"), "n")
                    self.assertEqual(key.get("Name"), "Key")
                    of = text_of(element.find("ClassName"))
                    if of in CONTENT.classes:
                        self.assertTrue(CONTENT.has_attribute(of, key.get("Value")))

    def test_attributes_have_their_types(self):
        found = collections.Counter(e.get("Type") for e in CONTENT.attributes.values())
        self.assertEqual({kind: [count] for kind, count in found.items()}, tables.ATTRIBUTE_TYPES)

    def test_quantities_stand_in_their_order_with_their_units(self):
        definitions = CONTENT.libraries["QSIAllLibraries"].findall("QuantityTypeDefn")
        self.assertEqual(len(CONTENT.quantities), 365)
        self.assertEqual([e.get("Name") for e in definitions], CONTENT.quantities)
        facts = lambda element: (element.attrib, [unit.attrib for unit in element])
        converted = {e.get("Name"): facts(e) for e in CONTENT.units.findall("QuantityTypeDefn")}
        for element in definitions:
            self.assertEqual(facts(element), converted[element.get("Name")])


class Maps(unittest.TestCase):
    def test_classes_and_attributes_are_those_of_the_library(self):
        for file, owner, element in CONTENT.mapped():
            self.assertIn((owner, element.get("Name")), CONTENT.attributes, file)

    def test_a_class_stands_once_in_a_file(self):
        for file, root in CONTENT.maps.items():
            names = [e.get("Name") for e in root.findall("Class")]
            self.assertEqual(len(names), len(set(names)), file)

    def test_arrays_have_array_translators_and_others_have_none(self):
        for _, owner, element in CONTENT.mapped():
            array = CONTENT.attributes[owner, element.get("Name")].get("Multiplicity") != "1"
            tags = {e.tag for e in element if e.tag.startswith("Translate")}
            expected = {"TranslateArray" if array else "Translate"}
            self.assertEqual(tags, expected, f"{owner}.{element.get('Name')}")

    def test_no_two_translators_apply_at_one_place(self):
        seen = set()
        for _, owner, element in CONTENT.mapped():
            conditions = tuple((e.get("Var"), text_of(e)) for e in element.findall("Condition"))
            where = (owner, element.get("Name"), element.get("Container"), element.get("ContainerId"))
            for translator in element:
                if not translator.tag.startswith("Translate"):
                    continue
                place = where + (conditions, translator.get("Branch"))
                self.assertNotIn(place, seen)
                seen.add(place)

    def test_containers_are_classes_and_attributes(self):
        attributes = {name for _, name in CONTENT.attributes}
        for _, owner, element in CONTENT.mapped():
            if (container := element.get("Container")) is not None:
                self.assertIn(container, tables.CLASSES, owner)
            if (container := element.get("ContainerId")) is not None:
                self.assertLessEqual(set(container.split(".")), attributes, owner)

    def test_bodies_are_one_piece_of_text(self):
        for element in CONTENT.translators():
            with self.subTest(ElementTree.tostring(element)):
                self.assertEqual(text_of(element) == "", element.get("Type") == "Dummy")
                for child in element:
                    self.assertEqual(child.tag, "NodeAttributes")
                    self.assertIsNone(child.tail, "text behind the body would be a body too")

    def test_translators_have_their_forms(self):
        forms = collections.Counter((e.tag, e.get("Type")) for e in CONTENT.translators())
        self.assertEqual(dict(forms), tables.TRANSLATOR_FORMS)

    def test_functions_are_named_where_they_belong_and_as_often(self):
        named = collections.Counter(
            text_of(e) for e in CONTENT.translators() if e.get("Type") in ("Function", "ArrayFunc")
        )
        places = collections.defaultdict(set, {name: set() for name in named})
        for _, owner, element in CONTENT.mapped():
            for translator in element:
                if translator.get("Type") in ("Function", "ArrayFunc"):
                    places[text_of(translator)].add(f"{owner}.{element.get('Name')}")
        self.assertEqual(places, {row[0]: set(row[1:]) for row in tables.rows(FUNCTION_PLACES)})
        self.assertEqual({name: [count] for name, count in named.items()}, tables.FUNCTIONS)

    def test_functions_are_exported(self):
        named = {text_of(e) for e in CONTENT.translators() if e.get("Type") != "Map"} - {""}
        named.add(CONTENT.maps["hovexmap"].find("TopNode").get("FunctionName"))
        self.assertEqual(named - CONTENT.exported, set())

    def test_phases_are_named_in_the_words_of_the_functions(self):
        named = []
        for file, _, element in CONTENT.mapped():
            for variable in element.findall("SetVar"):
                if variable.get("Var") == "PhaseName":
                    self.assertIn(text_of(variable), PHASE_NAMES, file)
                if file == "HMAPStreams":
                    self.assertEqual(variable.get("Var"), "PhaseName")
                    named.append(text_of(variable))
        self.assertEqual(len(named), len(PHASE_NAMES))
        self.assertEqual(set(named), PHASE_NAMES)

    def test_words_of_the_application_lead_to_options(self):
        for file, root in CONTENT.maps.items():
            for element in root.iter("Enumeration"):
                enumeration = CONTENT.enumerations[element.get("Name")]
                options = {e.get("Name") for e in enumeration}
                words = [e.get("AppName") for e in element]
                self.assertEqual(len(words), len(set(words)), file)
                for option in element:
                    self.assertIn(option.get("Name"), options, element.get("Name"))

    def test_constants_of_enumerations_are_options(self):
        for _, owner, element in CONTENT.mapped():
            attribute = CONTENT.attributes[owner, element.get("Name")]
            for value in element.iter("NodeAttributes"):
                text = text_of(value.find("Attribute"))
                if attribute.get("Type") != "Enumeration" or not text.startswith("'\""):
                    continue
                enumeration = CONTENT.enumerations[text_of(attribute.find("EnumName"))]
                self.assertIn(text[2:-1], {e.get("Name") for e in enumeration}, owner)


if __name__ == "__main__":
    CONTENT = Content(*map(pathlib.Path, sys.argv[1:4]))
    unittest.main(argv=sys.argv[:1])
