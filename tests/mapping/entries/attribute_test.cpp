// SPDX-License-Identifier: Apache-2.0
// Attribute services: the table, values across units and option names, writes, display units.

#include <cstring>

#include "mapping/nodes/attribute_cursor.h"
#include "model_fixture.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string Shown(FIIteratorBase& it, const char* name) {
    return Read(it, name);
}

std::string DisplayIn(FIIteratorBase& it, const char* unit, bool spec = false,
                      const FIValue& quantity = FIValue()) {
    FIValue out("left over");
    if (spec) {
        it.SetDisplaySpecUnit(FIValue(unit), quantity, out);
    } else {
        it.SetDisplayUnit(FIValue(unit), quantity, out);
    }
    return fixtop::Shown(out);
}

double Number(FIIteratorBase& it, const char* name = "value") {
    FIValue out;
    it.GetAttribute(FIValue(name), out);
    EXPECT_EQ(FIValue::kReal, out.Kind()) << name;
    return out.AsDouble();
}

TEST_F(Model, rows_that_need_no_application) {
    struct Case {
        const char* path;
        const char* name;
        const char* expected;
    };
    for (const Case& each : {
             Case{"Flowsheet", "id", "Flowsheet"},
             Case{"Flowsheet", "browser_name", "Flowsheet"},
             Case{"Flowsheet", "display_name", "Flowsheet"},
             Case{"Flowsheet", "value", "QSIFlowsheet"},
             Case{"Flowsheet", "spec_value", "QSIFlowsheet"},
             Case{"Flowsheet", "type", "Object(QSIFlowsheet)"},
             Case{"Flowsheet", "container", "Flowsheet"},
             Case{"Flowsheet", "container_type", "QSIFlowsheet"},
             Case{"Flowsheet", "isleaf", "INT 0"},
             Case{"Flowsheet", "has_children", "INT 1"},
             Case{"Flowsheet", "parent", ""},
             Case{"Flowsheet", "path", "QSISimulation.Flowsheet"},
             Case{"Flowsheet", "dumpvars", "(NULL)"},
             Case{"Flowsheet", "status", "(NULL)"},
             Case{"Flowsheet", "uom", "(NULL)"},
             Case{"Flowsheet", "no such row", "(NULL)"},
             Case{"Flowsheet.Stream", "display_name", "Stream"},
             Case{"Flowsheet.Stream", "parent", "Flowsheet"},
             Case{"Flowsheet.Stream.Temperature", "type", "Real"},
             Case{"Flowsheet.Stream.Temperature", "value", ""},
             Case{"Flowsheet.Stream.Temperature", "container", "Stream"},
             Case{"Flowsheet.Stream.Temperature", "container_type", "QSIStream"},
             Case{"Flowsheet.Stream.Temperature", "isleaf", "INT 1"},
             Case{"Flowsheet.Stream.Temperature", "has_children", "INT 0"},
             Case{"Flowsheet.Stream.Phase", "type", "Enumeration(ePhase)"},
             Case{"Flowsheet.Stream.Label", "type", "String"},
             Case{"Flowsheet.Stream.Bare", "type", "Integer"},
             Case{"Flowsheet.Stream.Odd", "type", "None"},
         }) {
        EXPECT_EQ(each.expected, Shown(*At(OpenPure(), each.path), each.name))
            << each.path << " " << each.name;
    }
}

TEST_F(Model, rows_of_a_bound_entry) {
    struct Case {
        const char* path;
        const char* name;
        const char* expected;
    };
    for (const Case& each : {
             Case{"Flowsheet.Stream", "id", "Stream"},
             Case{"Flowsheet.Stream", "display_name", "Stream[Name=Feed]"},
             Case{"Flowsheet.Stream#1", "display_name", "Stream[Name=Product]"},
             Case{"Flowsheet.Level", "display_name", "Level"},
             Case{"Flowsheet.Stream", "value", "(NULL)"},
             Case{"Flowsheet.Stream", "container", "Stream"},
             Case{"Flowsheet.Stream.Temperature", "path",
                  "Top.appModel.Sheet.Streams.Feed.Temperature"},
             Case{"Flowsheet.Stream.Temperature", "id", "Temperature"},
             Case{"Flowsheet.Stream.Temperature", "status", "OK"},
             Case{"Flowsheet.Stream.Temperature", "type", "Real"},
             Case{"Flowsheet.Stream.Temperature", "uom", "C"},
             Case{"Flowsheet.Stream.Pressure", "uom", "psi"},
             Case{"Flowsheet.Stream.Pressure", "uom_options", "psi\nkPa\nbar"},
             Case{"Flowsheet.Stream.Pressure", "spec_value", "REAL 50"},
             Case{"Flowsheet.Stream.Pressure", "spec_uom", "kPa"},
             Case{"Flowsheet.Stream.Pressure", "dumpvars", "Frame\tVariable\t\tType\tValue\n"},
         }) {
        EXPECT_EQ(each.expected, Value(each.path, each.name)) << each.path << " " << each.name;
    }
}

TEST_F(Model, overrides_answer_before_the_node) {
    EXPECT_EQ("Main", Value("Flowsheet.Name"));
    EXPECT_EQ("Feed", Value("Flowsheet.Stream.Name"));
    EXPECT_EQ("fixed text", Value("Flowsheet.Stream.Label"));
    EXPECT_EQ("said", Value("Flowsheet.Stream.Label", "description"));
    EXPECT_EQ("REAL 0.5", Value("Flowsheet.Stream.Half"));
    EXPECT_EQ("INT 12", Value("Flowsheet.Stream.Whole"));
    EXPECT_EQ("Liquid", Value("Flowsheet.Stream.Kind")) << "translated like a value";
    EXPECT_EQ("degC", Value("Flowsheet.Stream.Unit"));
    EXPECT_EQ("REAL 100", Value("Flowsheet.Stream.Elsewhere"));
    feed.RemoveChild("Pressure");
    EXPECT_EQ("(NULL)", Value("Flowsheet.Stream.Elsewhere"));
}

TEST_F(Model, overrides_of_the_second_face) {
    std::string map = kTestMap;
    const std::string from =
        R"(<Translate Type="Map" Branch="Spec">Specified</Translate></Attribute>
    <Attribute Name="Turned">)";
    map.replace(map.find(from), from.size(),
                R"(<Translate Type="Map" Branch="Spec">Specified<NodeAttributes>
        <Attribute Name="value">'"77"</Attribute><Attribute Name="description">(status)</Attribute>
        </NodeAttributes></Translate></Attribute><Attribute Name="Turned">)");
    folder.Write("map.xml", map);
    EXPECT_EQ("specified", Value("Flowsheet.Faces.Split", "description"));
    EXPECT_EQ("REAL 77", Value("Flowsheet.Faces.Split", "value"));
    EXPECT_EQ("REAL 400", Value("Flowsheet.Faces.Split", "spec_value")) << "the node's own value";
}

TEST_F(Model, overrides_of_one_translator_stay_beside_another_without_any) {
    std::string map = kTestMap;
    const std::string list = R"(<TranslateArray Type="Map">Levels.*</TranslateArray>)";
    map.replace(map.find(list), list.size(),
                R"(<Translate Type="Dummy"><NodeAttributes>
        <Attribute Name="description">'said</Attribute></NodeAttributes></Translate>)" +
                    list);
    folder.Write("map.xml", map);
    EXPECT_EQ("said", Value("Flowsheet.Level#1", "description"));
    EXPECT_EQ("REAL 2.5", Value("Flowsheet.Level#1"));
}

// Half is a Real, Whole an Integer.
TEST_F(Model, constants_take_the_type_of_the_attribute_as_value_alone) {
    std::string map = kTestMap;
    for (const char* value : {R"('"0.5"</Attribute>)", R"('"12"</Attribute>)"}) {
        const std::string also =
            std::string(value) + "<Attribute Name=\"spec_value\">'\"3\"</Attribute>";
        map.replace(map.find(value), std::strlen(value), also);
    }
    folder.Write("map.xml", map);
    EXPECT_EQ("REAL 0.5", Value("Flowsheet.Stream.Half"));
    EXPECT_EQ("3", Value("Flowsheet.Stream.Half", "spec_value"));
    EXPECT_EQ("INT 12", Value("Flowsheet.Stream.Whole"));
    EXPECT_EQ("3", Value("Flowsheet.Stream.Whole", "spec_value"));
}

TEST_F(Model, options_are_read_by_the_attributes_table_then_the_enumerations) {
    EXPECT_EQ("Vapor", Value("Flowsheet.Stream.Phase"));
    EXPECT_EQ("Liquid", Value("Flowsheet.Stream.Phase", "spec_value"));
    EXPECT_EQ("Liquid", Value("Flowsheet.Stream.Own"));
    EXPECT_EQ("VAP", Value("Flowsheet.Stream.Loose")) << "no table";
}

TEST_F(Model, unknown_option_of_a_closed_enumeration_is_logged_and_returned) {
    ScriptNode& phase = *feed.children[2];
    struct Case {
        const char* raw;
        const char* read;
        const char* line;
    };
    for (const Case& each :
         {Case{"GAS", "GAS", "Enum value: GAS does not appear in Enum: ePhase"},
          Case{"PLA", "Plasma", "Enum value: Plasma does not appear in Enum: ePhase"}}) {
        phase.Set("value", each.raw);
        const auto it = At("Flowsheet.Stream.Phase");
        log.Restart();
        EXPECT_EQ(each.read, Read(*it, "value"));
        EXPECT_THAT(log.Lines(), ElementsAre(each.line));
    }
    phase.Set("value", 7);
    EXPECT_EQ("7", Value("Flowsheet.Stream.Phase")) << "numbers as text";
    const auto loose = At("Flowsheet.Stream.Loose");
    log.Restart();
    Read(*loose, "value");
    EXPECT_THAT(log.Lines(), IsEmpty()) << "open enumerations take any value";
}

TEST_F(Model, options_are_written_in_the_applications_words) {
    struct Case {
        const char* path;
        const char* written;
        const char* raw;
    };
    for (const Case& each : {Case{"Flowsheet.Stream.Phase", "Liquid", "LIQ"},
                             Case{"Flowsheet.Stream.Own", "Liquid", "VAP"},
                             Case{"Flowsheet.Stream.Phase", "Other", "Other"},
                             Case{"Flowsheet.Stream.Loose", "Yes", "Yes"}}) {
        EXPECT_EQ("(NULL)", Set(*At(each.path), "value", Text(each.written)));
        EXPECT_EQ(each.raw, Raw(*feed.children[2])) << each.path;
    }
    EXPECT_EQ("(NULL)", Set(*At("Flowsheet.Stream.Phase"), "spec_value", Text("Vapor")));
    EXPECT_EQ("VAP", Raw(*feed.children[2], "spec_value"));
}

// 25 degC = 77 degF; 100 psia = 689.4757293168 kPa; 3 bar = 300 kPa.
TEST_F(Model, values_are_shown_in_the_display_unit) {
    const auto temperature = At("Flowsheet.Stream.Temperature");
    EXPECT_EQ("REAL 25", Read(*temperature, "value")) << "none set: the application's unit";
    EXPECT_EQ("(NULL)", DisplayIn(*temperature, "F"));
    EXPECT_NEAR(77.0, Number(*temperature), 1e-9);
    EXPECT_EQ("F", Read(*temperature, "uom"));
    EXPECT_EQ("(NULL)", DisplayIn(*temperature, "C"));
    EXPECT_EQ("REAL 25", Read(*temperature, "value")) << "the application's own unit";
    const auto pressure = At("Flowsheet.Stream.Pressure");
    EXPECT_EQ("(NULL)", DisplayIn(*pressure, "kPa"));
    EXPECT_NEAR(689.4757293168, Number(*pressure), 1e-9);
    EXPECT_EQ("REAL 50", Read(*pressure, "spec_value")) << "a unit of its own";
    EXPECT_EQ("(NULL)", DisplayIn(*pressure, "bar", true));
    EXPECT_NEAR(0.5, Number(*pressure, "spec_value"), 1e-12);
    EXPECT_EQ("bar", Read(*pressure, "spec_uom"));
    EXPECT_EQ("(NULL)", DisplayIn(*pressure, ""));
    EXPECT_EQ("REAL 100", Read(*pressure, "value")) << "taken back";
    const auto stages = At("Flowsheet.Stream.Stages");
    EXPECT_EQ("(NULL)", DisplayIn(*stages, "kPa"));
    EXPECT_NEAR(300.0, Number(*stages), 1e-9) << "an integer with a quantity";
}

TEST_F(Model, display_unit_goes_with_the_iterator_and_the_quantity) {
    const auto it = At("Flowsheet.Stream.Temperature");
    EXPECT_EQ("(NULL)", DisplayIn(*it, "F"));
    ASSERT_TRUE(it->Up());
    ASSERT_TRUE(it->Next());
    ASSERT_TRUE(it->SeekChild("Temperature"));
    EXPECT_NEAR(212.0, Number(*it), 1e-9);
    ASSERT_TRUE(it->Next());
    EXPECT_EQ("REAL 100", Read(*it, "value")) << "another quantity";
    EXPECT_EQ("(NULL)", DisplayIn(*it, "K", false, Text("Temperature")));
    ASSERT_TRUE(it->Prev());
    EXPECT_NEAR(373.15, Number(*it), 1e-9);
    EXPECT_EQ("REAL 100", Value("Flowsheet.Stream#1.Temperature")) << "other iterators";
}

TEST_F(Model, nothing_to_convert_stays) {
    const auto it = At("Flowsheet.Stream.Temperature");
    EXPECT_EQ("(NULL)", DisplayIn(*it, "F"));
    feed.children[0]->Set("uom", "furlong");
    EXPECT_EQ("REAL 25", Read(*it, "value")) << "a unit that nobody knows";
    feed.children[0]->Set("uom", FIValue());
    EXPECT_EQ("REAL 25", Read(*it, "value"));
    feed.children[0]->Set("value", "warm").Set("uom", "degC");
    EXPECT_EQ("warm", Read(*it, "value"));
    EXPECT_EQ("C", Read(*it, "uom"));
    feed.children[0]->Set("value", FIValue());
    EXPECT_EQ("(NULL)", Read(*it, "value"));
}

TEST_F(Model, unit_that_nobody_knows_is_told_by_the_applications_name) {
    ScriptNode& pressure = *feed.children[1];
    pressure.Set("uom", "furlong").Set("spec_uom", "degC");
    const auto it = At("Flowsheet.Stream.Pressure");
    EXPECT_EQ("furlong", Read(*it, "uom"));
    EXPECT_EQ("degC", Read(*it, "spec_uom")) << "known, but not of a pressure";
    EXPECT_EQ("(NULL)", DisplayIn(*it, "bar"));
    EXPECT_EQ("(NULL)", DisplayIn(*it, "bar", true));
    EXPECT_EQ("REAL 100", Read(*it, "value"));
    EXPECT_EQ("furlong", Read(*it, "uom"));
    EXPECT_EQ("REAL 50", Read(*it, "spec_value"));
    EXPECT_EQ("degC", Read(*it, "spec_uom"));
    pressure.Set("uom", FIValue());
    EXPECT_EQ("REAL 100", Read(*it, "value"));
    EXPECT_EQ("(NULL)", Read(*it, "uom"));
}

TEST_F(Model, nothing_is_stored_in_a_unit_that_nobody_knows) {
    ScriptNode& pressure = *feed.children[1];
    pressure.Set("uom", "furlong").Set("spec_uom", FIValue());
    const auto it = At("Flowsheet.Stream.Pressure");
    const FIValue two = FIValue::OfReal(2);
    EXPECT_EQ("(NULL)", Set(*it, "value", FIValue::OfReal(90))) << "as the application has it";
    EXPECT_EQ("(NULL)", DisplayIn(*it, "bar"));
    EXPECT_EQ("(NULL)", DisplayIn(*it, "bar", true));
    constexpr char kRefused[] = "No conversion from unit bar to unit furlong of the application";
    EXPECT_EQ(kRefused, Set(*it, "value", two));
    EXPECT_EQ(kRefused, Set(*it, "value", Text("2")));
    EXPECT_EQ("No conversion from unit bar, the application tells no unit",
              Set(*it, "spec_value", two));
    FIValue out;
    it->SetValue(two, 0, out);
    EXPECT_EQ(kRefused, out.ToText());
    it->SetSpecValue(two, 0, out);
    EXPECT_EQ("No conversion from unit bar, the application tells no unit", out.ToText());
    EXPECT_EQ("REAL 90", Raw(pressure));
    EXPECT_EQ("REAL 50", Raw(pressure, "spec_value"));
    EXPECT_EQ("(NULL)", Set(*it, "value", FIValue())) << "nothing is in no unit";
    EXPECT_EQ("(NULL)", DisplayIn(*it, ""));
    EXPECT_EQ("(NULL)", Set(*it, "value", two)) << "taken back";
    EXPECT_EQ("REAL 2", Raw(pressure));
}

TEST_F(Model, display_unit_of_another_quantity_is_none) {
    const auto it = At("Flowsheet.Stream.Temperature");
    const auto other = OpenModelOnTop(Files());
    CCDMUnitSource* source = other->Library().units.Source();
    const FIValue bar = FIValue::OfInt(source->UnitId("bar", source->QuantityId("Pressure")));
    const FIValue kelvin = FIValue::OfInt(source->UnitId("K", source->QuantityId("Temperature")));
    EXPECT_EQ("Unable to find unit", Set(*it, "uom", bar));
    EXPECT_EQ("(NULL)", Set(*it, "uom", kelvin));
    EXPECT_NEAR(298.15, Number(*it), 1e-9);
    FIValue old;
    it->GetVarSet()->SetUnit(FIValue::OfInt(source->QuantityId("Temperature")), bar, old);
    EXPECT_EQ("REAL 25", Read(*it, "value"));
    EXPECT_EQ("C", Read(*it, "uom"));
    EXPECT_EQ("(NULL)", Set(*it, "value", FIValue::OfReal(30)));
    EXPECT_EQ("REAL 30", Raw(*feed.children[0]));
}

TEST_F(Model, number_without_a_unit_is_what_the_unit_file_says) {
    std::string units = kTestUnits;
    units.insert(units.find("</CCDMUnitFile>"),
                 R"(<Translate App="" Ccdm="bar" Quantity="Pressure"/>)");
    folder.Write("units.xml", units);
    ScriptNode& pressure = *feed.children[1];
    pressure.Set("uom", FIValue());
    const auto it = At("Flowsheet.Stream.Pressure");
    EXPECT_EQ("REAL 100", Read(*it, "value"));
    EXPECT_EQ("(NULL)", Read(*it, "uom")) << "none is asked for";
    EXPECT_EQ("(NULL)", DisplayIn(*it, "kPa"));
    EXPECT_NEAR(10000, Number(*it), 1e-9);
    EXPECT_EQ("kPa", Read(*it, "uom"));
    EXPECT_EQ("(NULL)", Set(*it, "value", FIValue::OfReal(200)));
    EXPECT_EQ("REAL 2", Raw(pressure));
    FIValue out;
    it->SetUnit(Text("bar"), out);
    EXPECT_EQ("bar", Raw(pressure, "uom")) << "a unit has its name";
}

// The map gives values and their units of its own: what the unit says holds for the value.
TEST_F(Model, overridden_units_are_those_of_the_value) {
    std::string map = kTestMap;
    const std::string from = R"(<Translate Type="Map">Pressure</Translate></Attribute>)";
    map.replace(map.find(from), from.size(),
                R"(<Translate Type="Map">Pressure<NodeAttributes>
        <Attribute Name="value">'"3"</Attribute><Attribute Name="uom">'bar</Attribute>
        </NodeAttributes></Translate></Attribute>)");
    folder.Write("map.xml", map);
    const auto it = At("Flowsheet.Stream.Pressure");
    EXPECT_EQ("bar", Read(*it, "uom"));
    EXPECT_EQ("(NULL)", DisplayIn(*it, "kPa"));
    EXPECT_NEAR(300, Number(*it), 1e-9) << "and not from the psia of the node";
    EXPECT_EQ("kPa", Read(*it, "uom"));
    EXPECT_EQ("(NULL)", Set(*it, "value", FIValue::OfReal(500)));
    EXPECT_EQ("REAL 5", Raw(*feed.children[1]));
}

TEST_F(Model, value_of_the_second_face_is_shown_in_that_faces_unit) {
    std::string map = kTestMap;
    const std::string from =
        R"(<Translate Type="Map" Branch="Spec">Specified</Translate></Attribute>
    <Attribute Name="Turned">)";
    map.replace(map.find(from), from.size(),
                R"(<Translate Type="Map" Branch="Spec">Specified<NodeAttributes>
        <Attribute Name="value">(value)</Attribute><Attribute Name="uom">(uom)</Attribute>
        </NodeAttributes></Translate></Attribute><Attribute Name="Turned">)");
    folder.Write("map.xml", map);
    const auto it = At("Flowsheet.Faces.Split");
    EXPECT_EQ("REAL 400", Read(*it, "value"));
    EXPECT_EQ("(NULL)", DisplayIn(*it, "psi"));
    EXPECT_EQ("(NULL)", DisplayIn(*it, "bar", true));
    EXPECT_NEAR(4, Number(*it), 1e-9);
    EXPECT_EQ("bar", Read(*it, "uom"));
}

TEST_F(Model, values_are_written_from_the_display_unit) {
    const auto it = At("Flowsheet.Stream.Temperature");
    EXPECT_EQ("(NULL)", Set(*it, "value", FIValue::OfReal(30)));
    EXPECT_EQ("REAL 30", Raw(*feed.children[0]));
    EXPECT_EQ("(NULL)", DisplayIn(*it, "F"));
    EXPECT_EQ("(NULL)", Set(*it, "value", FIValue::OfReal(212)));
    EXPECT_EQ("REAL 100", Raw(*feed.children[0]));
    EXPECT_EQ("(NULL)", Set(*it, "value", Text("32")));
    EXPECT_NEAR(0.0,
                At("Flowsheet.Stream.Temperature")->Depth()
                    ? Number(*At("Flowsheet.Stream.Temperature"))
                    : 1,
                1e-9);
    EXPECT_EQ("(NULL)", Set(*it, "value", Text("hot")));
    EXPECT_EQ("hot", Raw(*feed.children[0])) << "no number";
    const auto pressure = At("Flowsheet.Stream.Pressure");
    EXPECT_EQ("(NULL)", DisplayIn(*pressure, "bar", true));
    EXPECT_EQ("(NULL)", Set(*pressure, "spec_value", FIValue::OfReal(2)));
    EXPECT_EQ("REAL 200", Raw(*feed.children[1], "spec_value"));
    EXPECT_EQ("(NULL)", Set(*pressure, "value", FIValue()));
    EXPECT_EQ("(NULL)", Raw(*feed.children[1])) << "NULL is passed on";
}

TEST_F(Model, unit_rows_set_the_display_unit_even_of_a_pure_entry) {
    const auto it = At("Flowsheet.Stream.Pressure");
    EXPECT_EQ("(NULL)", Set(*it, "uom", Text("bar")));
    EXPECT_NEAR(6.894757293168, Number(*it), 1e-9);
    EXPECT_EQ("(NULL)", Set(*it, "spec_uom", Text("bar")));
    EXPECT_NEAR(0.5, Number(*it, "spec_value"), 1e-12);
    EXPECT_EQ("psia", Raw(*feed.children[1], "uom")) << "the application's unit stays";
    const auto lost = At("Flowsheet.Stream.Gone");
    EXPECT_EQ("Uanable to find quantity", Set(*lost, "uom", Text("bar")));
    const auto pure = At(OpenPure(), "Flowsheet.Stream.Pressure");
    EXPECT_EQ("Uanable to find quantity", Set(*pure, "uom", Text("bar"))) << "no units";
    EXPECT_EQ("Uanable to find quantity", Set(*pure, "spec_uom", Text("bar")));
    for (const char* name : {"value", "spec_value", "status"}) {
        EXPECT_EQ("Not Supported for pure CCDM class", Set(*pure, name, Text("x"))) << name;
    }
}

TEST_F(Model, display_units_that_are_refused) {
    const auto it = At("Flowsheet.Stream.Temperature");
    EXPECT_EQ("Unable to find unit", DisplayIn(*it, "kPa"));
    EXPECT_EQ("Unable to find unit", DisplayIn(*it, "furlong", true));
    EXPECT_EQ("Uanable to find quantity", DisplayIn(*it, "C", false, Text("Happiness")));
    EXPECT_EQ("Uanable to find quantity", DisplayIn(*At("Flowsheet.Stream.Bare"), "C"));
    const auto entry = EntryAt(*it);
    FIValue out;
    entry->SetDisplayUnit(Text("C"), FIValue(), out);
    EXPECT_EQ("No display information implemented", out.ToText());
    entry->SetDisplaySpecUnit(Text("C"), FIValue(), out);
    EXPECT_EQ("No display information implemented", out.ToText());
}

TEST_F(Model, faces_are_read_where_they_are) {
    struct Case {
        const char* path;
        const char* value;
        const char* spec_value;
        const char* uom;
        const char* spec_uom;
        const char* status;
    };
    for (const Case& each :
         {Case{"Flowsheet.Faces.Both", "REAL 1", "REAL 2", "bar", "kPa", "(NULL)"},
          Case{"Flowsheet.Faces.Split", "REAL 3", "REAL 400", "bar", "kPa", "calculated"},
          Case{"Flowsheet.Faces.Turned", "REAL 3", "REAL 400", "bar", "kPa", "calculated"},
          Case{"Flowsheet.Faces.OnlySpec", "(NULL)", "REAL 400", "(NULL)", "kPa", "(NULL)"},
          Case{"Flowsheet.Faces.OnlyCalc", "REAL 3", "(NULL)", "bar", "(NULL)", "calculated"}}) {
        EXPECT_EQ(each.value, Value(each.path)) << each.path;
        EXPECT_EQ(each.spec_value, Value(each.path, "spec_value")) << each.path;
        EXPECT_EQ(each.uom, Value(each.path, "uom")) << each.path;
        EXPECT_EQ(each.spec_uom, Value(each.path, "spec_uom")) << each.path;
        EXPECT_EQ(each.status, Value(each.path, "status")) << each.path;
    }
    const auto split = At("Flowsheet.Faces.Split");
    EXPECT_EQ("(NULL)", DisplayIn(*split, "kPa"));
    EXPECT_NEAR(300.0, Number(*split), 1e-9);
    EXPECT_EQ("(NULL)", DisplayIn(*split, "bar", true));
    EXPECT_NEAR(4.0, Number(*split, "spec_value"), 1e-12);
}

TEST_F(Model, face_that_nobody_asked_for_goes_with_the_other) {
    for (const char* path : {"Flowsheet.Faces.Split", "Flowsheet.Faces.Turned"}) {
        const auto unasked = At(path);
        const auto asked = At(path);
        EXPECT_EQ("REAL 400", Read(*asked, "spec_value")) << path;
        for (const auto& it : {unasked, asked}) {
            const auto entry = EntryAt(*it);
            static_cast<CCDMClassEntry&>(*entry).Faces().OfValue().Node()->OnDeleted();
        }
        EXPECT_EQ("Node deleted", Read(*unasked, "spec_value")) << path;
        EXPECT_TRUE(unasked->IsGone()) << path;
        EXPECT_EQ("REAL 400", Read(*asked, "spec_value")) << path;
        EXPECT_FALSE(asked->IsGone()) << path;
    }
}

TEST_F(Model, faces_are_written_where_they_are) {
    ScriptNode& both = *faces.children[0];
    ScriptNode& calculated = *faces.children[1];
    ScriptNode& specified = *faces.children[2];
    const FIValue nine = FIValue::OfReal(9);
    EXPECT_EQ("(NULL)", Set(*At("Flowsheet.Faces.Both"), "spec_value", nine));
    EXPECT_EQ("REAL 9", Raw(both, "spec_value"));
    for (const char* path : {"Flowsheet.Faces.Split", "Flowsheet.Faces.Turned"}) {
        calculated.Set("value", 3.0);
        specified.Set("value", 400.0);
        EXPECT_EQ("(NULL)", Set(*At(path), "spec_value", nine));
        EXPECT_EQ("REAL 9", Raw(specified)) << path;
        EXPECT_EQ("REAL 3", Raw(calculated)) << path;
        EXPECT_EQ("(NULL)", Set(*At(path), "value", FIValue::OfReal(8)));
        EXPECT_EQ("REAL 8", Raw(calculated)) << path;
        EXPECT_EQ("(NULL)", Set(*At(path), "status", Text("new")));
        EXPECT_EQ("new", Raw(calculated, "status")) << path;
    }
    constexpr char kNone[] = "No application node on default branch, can't map CCDM entry";
    EXPECT_EQ(kNone, Set(*At("Flowsheet.Faces.OnlySpec"), "value", nine));
    EXPECT_EQ(kNone, Set(*At("Flowsheet.Faces.OnlyCalc"), "spec_value", nine));
}

// One face alone was asked for, so there is no second node to be specified.
TEST_F(Model, face_that_stands_alone_is_told_its_specification_by_that_name) {
    for (const char* branch : {"Calc", "Spec"}) {
        std::string map = kTestMap;
        map.insert(map.find("<Class Name=\"QSISimulation\">"),
                   std::string("<DefaultBranch>") + branch + "</DefaultBranch>");
        folder.Write("map.xml", map);
        feed.children[1]->Set("value", 100.0).Set("spec_value", 50.0);
        const auto it = At("Flowsheet.Stream.Pressure");
        EXPECT_EQ("(NULL)", Set(*it, "spec_value", FIValue::OfReal(60))) << branch;
        EXPECT_EQ("REAL 60", Raw(*feed.children[1], "spec_value")) << branch;
        EXPECT_EQ("REAL 100", Raw(*feed.children[1])) << branch;
        EXPECT_EQ("(NULL)", Set(*it, "value", FIValue::OfReal(90))) << branch;
        EXPECT_EQ("REAL 90", Raw(*feed.children[1])) << branch;
        EXPECT_EQ("REAL 90", Read(*it, "value")) << branch;
        EXPECT_EQ(std::string(branch) == "Calc" ? "(NULL)" : "REAL 90", Read(*it, "spec_value"));
    }
}

TEST_F(Model, units_of_the_nodes_are_set_by_the_applications_names) {
    const auto set = [](const char* path, const char* unit, bool spec) {
        FIValue out("left over");
        const auto it = At(path);
        if (spec) {
            it->SetSpecUnit(Text(unit), out);
        } else {
            it->SetUnit(Text(unit), out);
        }
        return fixtop::Shown(out);
    };
    ScriptNode& calculated = *faces.children[1];
    ScriptNode& specified = *faces.children[2];
    EXPECT_EQ("(NULL)", set("Flowsheet.Stream.Temperature", "F", false));
    EXPECT_EQ("degF", Raw(*feed.children[0], "uom"));
    for (const char* path : {"Flowsheet.Faces.Split", "Flowsheet.Faces.Turned"}) {
        calculated.Set("uom", "bar");
        specified.Set("uom", "kPa");
        EXPECT_EQ("(NULL)", set(path, "psi", false));
        EXPECT_EQ("psia", Raw(calculated, "uom")) << path;
        EXPECT_EQ("(NULL)", set(path, "bar", true));
        EXPECT_EQ("bar", Raw(specified, "uom")) << path;
    }
    EXPECT_EQ("Unit not found", set("Flowsheet.Stream.Temperature", "furlong", false));
    EXPECT_EQ("No current application node", set("Flowsheet.Stream.Gone", "C", false));
    EXPECT_EQ("No current application node", set("Flowsheet.Stream.Gone", "C", true));
}

TEST_F(Model, value_operations_reach_the_face) {
    const auto value = [](const char* path, double number, bool spec, const char* unit = nullptr) {
        FIValue out("left over");
        const auto it = At(path);
        const FIValue given = FIValue::OfReal(number);
        if (unit && spec) it->SetSpecValueInUnit(given, Text(unit), 0, out);
        if (unit && !spec) it->SetValueInUnit(given, Text(unit), 0, out);
        if (!unit && spec) it->SetSpecValue(given, 0, out);
        if (!unit && !spec) it->SetValue(given, 0, out);
        return fixtop::Shown(out);
    };
    EXPECT_EQ("(NULL)", value("Flowsheet.Stream.Pressure", 8, false));
    EXPECT_EQ("REAL 8", Raw(*feed.children[1]));
    EXPECT_EQ("(NULL)", value("Flowsheet.Faces.Split", 11, true));
    EXPECT_EQ("REAL 11", Raw(*faces.children[2]));
    EXPECT_EQ("(NULL)", value("Flowsheet.Faces.Turned", 12, false));
    EXPECT_EQ("REAL 12", Raw(*faces.children[1]));
    EXPECT_EQ("Not Supported", value("Flowsheet.Faces.Both", 1, true)) << "the application's slot";
    EXPECT_EQ("Not Supported", value("Flowsheet.Faces.Both", 1, false, "psi"));
    EXPECT_EQ("Not Supported", value("Flowsheet.Faces.Both", 1, true, "psi"));
    EXPECT_EQ("Not Supported", value("Flowsheet.Faces.Split", 1, true, "psi"));
    EXPECT_EQ("Unit not found", value("Flowsheet.Faces.Both", 1, false, "furlong"));
    EXPECT_EQ("Unit not found", value("Flowsheet.Faces.Both", 1, true, "furlong"));
    for (bool spec : {false, true}) {
        EXPECT_EQ("No current application node", value("Flowsheet.Stream.Gone", 1, spec));
        EXPECT_EQ("No current application node", value("Flowsheet.Stream.Gone", 1, spec, "C"));
    }
    const auto it = At("Flowsheet.Stream.Temperature");
    EXPECT_EQ("(NULL)", DisplayIn(*it, "F"));
    FIValue out;
    it->SetValue(FIValue::OfReal(212), 0, out);
    EXPECT_EQ("REAL 100", Raw(*feed.children[0]));
}

TEST_F(Model, without_units_values_pass_and_units_say_so) {
    folder.Write("units.xml", "<CCDMUnitFile/>");
    const auto it = At("Flowsheet.Stream.Pressure");
    EXPECT_EQ("REAL 100", Read(*it, "value"));
    EXPECT_EQ("Units not initiliazed", Read(*it, "uom"));
    EXPECT_EQ("Uanable to find quantity", DisplayIn(*it, "kPa"));
    FIValue out;
    it->SetUnit(Text("kPa"), out);
    EXPECT_EQ("Units not initiliazed", out.ToText());
}

TEST_F(Model, converters_tell_each_translator_and_which_is_used) {
    EXPECT_EQ(
        "\t<Translate Type=\"Map\">Calculated</Translate>\n"
        "<!--   ****   USED   ****   -->\n",
        [&] {
            std::string text = Value("Flowsheet.Faces.Split", "converters");
            const std::size_t comment = text.find("<!--");
            const std::size_t line = text.find('\n', comment) + 1;
            return text.substr(line, text.find('\n', line) + 1 - line) +
                   text.substr(comment, line - comment);
        }());
    EXPECT_THAT(Value("Flowsheet.Faces.Split", "converters"), HasSubstr(">Specified</Translate>"));
    EXPECT_THAT(Value("Flowsheet.Stream", "converters"),
                HasSubstr("<TranslateArray Type=\"Map\">Streams.*</TranslateArray>"));
    EXPECT_THAT(Value("Flowsheet.Faces.Below.Amount", "converters"), HasSubstr("USED"));
    EXPECT_THAT(Value("Flowsheet.Faces.SpecBelow.Amount", "converters"), HasSubstr("USED"));
}

// ---- the attribute cursor ----

std::vector<std::string> Rows(FIIterator& it) {
    const auto source = Ref<FIAttributeSource>::Adopt(it.GetAttributeSource());
    return ShownRows(*source);
}

TEST_F(Model, attributes_of_the_node_are_listed) {
    EXPECT_THAT(Rows(*At("Flowsheet.Stream.Temperature")), ElementsAre("value", "uom", "status"));
    EXPECT_THAT(Rows(*At("Flowsheet.Faces.Both")),
                ElementsAre("value", "uom", "spec_value", "spec_uom"));
}

TEST_F(Model, attributes_of_two_nodes_are_listed_together) {
    EXPECT_THAT(Rows(*At("Flowsheet.Faces.Split")),
                ElementsAre("value", "uom", "status", "spec_value", "spec_uom"));
    EXPECT_THAT(Rows(*At("Flowsheet.Faces.Turned")),
                ElementsAre("value", "uom", "status", "spec_value", "spec_uom"));
    EXPECT_THAT(Rows(*At("Flowsheet.Faces.OnlySpec")), ElementsAre("spec_value", "spec_uom"));
    EXPECT_THAT(Rows(*At("Flowsheet.Faces.OnlyCalc")),
                ElementsAre("alt_value", "alt_uom", "status"));
}

TEST_F(Model, alternate_rows_are_the_second_nodes) {
    faces.children[2]->attributes = {{"status", Text("specified")}};
    const auto it = At("Flowsheet.Faces.Turned");
    EXPECT_THAT(Rows(*it), ElementsAre("status", "alt_value", "alt_uom"));
    const auto source = Ref<FIAttributeSource>::Adopt(it->GetAttributeSource());
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    FIValue out;
    for (const char* name : {"value", "alt_value"}) {
        ASSERT_TRUE(cursor->SeekName(kFromFirst, name)) << name;
        cursor->GetKey(out);
        EXPECT_EQ("alt_value", out.ToText());
        cursor->GetValue(out);
        EXPECT_EQ("REAL 3", fixtop::Shown(out));
    }
    ASSERT_TRUE(cursor->SeekName(kFromFirst, "uom"));
    cursor->GetValue(out);
    EXPECT_EQ("bar", out.ToText());
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "spec_value"));
    EXPECT_TRUE(cursor->AtEnd());
    cursor->GetValue(out);
    EXPECT_TRUE(out.IsNull());
}

TEST_F(Model, misspelt_browser_name_asks_for_the_right_one) {
    feed.children[0]->Set("broswer_name", "from the node");
    const auto it = At("Flowsheet.Stream.Temperature");
    const auto source = Ref<FIAttributeSource>::Adopt(it->GetAttributeSource());
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    ASSERT_TRUE(cursor->SeekName(kFromFirst, "broswer_name"));
    FIValue out;
    cursor->GetValue(out);
    EXPECT_EQ("Temperature", out.ToText());
}

TEST_F(Model, table_of_a_pure_entry) {
    EXPECT_THAT(Rows(*At(OpenPure(), "Flowsheet.Stream.Temperature")),
                ElementsAre("id", "value", "dimension", "uom", "spec_value", "spec_uom",
                            "can_enter", "option_list", "uom_options", "browser_name", "type",
                            "container", "container_category", "container_type", "display_name",
                            "isleaf", "has_children", "path", "upper_limit", "lower_limit",
                            "description", "status", "enabled", "history_enabled", "is_container",
                            "no_containers_below", "is_hierarchy", "parent"));
}

TEST_F(Model, attribute_cursor_moves_like_a_table) {
    const auto it = At("Flowsheet.Stream.Temperature");
    const auto source = Ref<FIAttributeSource>::Adopt(it->GetAttributeSource());
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    const auto key = [](FIAttributeCursorBase& at) {
        FIValue out;
        at.GetKey(out);
        return fixtop::Shown(out);
    };
    EXPECT_TRUE(cursor->AtBegin());
    EXPECT_EQ("value", key(*cursor));
    EXPECT_TRUE(cursor->Seek(kFromFirst, 2));
    EXPECT_EQ("status", key(*cursor));
    const auto clone = Ref<FIAttributeCursorBase>::Adopt(cursor->Clone(true));
    const auto same = Ref<FIAttributeCursorBase>::Adopt(cursor->Clone(false));
    EXPECT_EQ(same.Get(), cursor.Get());
    EXPECT_EQ(clone->TypeId(), cursor->TypeId());
    EXPECT_EQ(0, cursor->Compare(*clone));
    EXPECT_TRUE(cursor->Seek(kFromPresent, -1));
    EXPECT_EQ("uom", key(*cursor));
    EXPECT_EQ("status", key(*clone));
    EXPECT_NE(0, cursor->Compare(*clone));
    EXPECT_EQ(0, cursor->Compare(*cursor));
    EXPECT_FALSE(cursor->Seek(kFromFirst, -1));
    EXPECT_TRUE(cursor->AtBegin());
    EXPECT_FALSE(cursor->Seek(kFromFirst, 3));
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_EQ("(NULL)", key(*cursor));
    EXPECT_FALSE(cursor->Seek(kFromEnd, -1)) << "from the end nothing moves back";
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_FALSE(cursor->SeekName(kFromFirst, nullptr));
    ScriptNode named("uom");
    EXPECT_TRUE(cursor->SeekValue(kFromFirst, *named.Entry()));
    EXPECT_EQ("uom", key(*cursor));
    cursor->SetVarSet(it->GetVarSet());
    EXPECT_EQ(it->GetVarSet(), cursor->GetVarSet());
    EXPECT_EQ("(NULL)", DisplayIn(*it, "F"));
    FIValue out;
    cursor->GetValue(out);
    EXPECT_EQ("F", out.ToText()) << "with the caller's units";
    cursor->SetVarSet(nullptr);
}

TEST_F(Model, attribute_cursor_reads_without_the_variables_of_a_reader_that_has_gone) {
    const auto it = At("Flowsheet.Stream.Temperature");
    const auto source = Ref<FIAttributeSource>::Adopt(it->GetAttributeSource());
    auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    const auto read = [](FIAttributeCursorBase& at, const char* name) {
        FIValue out;
        EXPECT_TRUE(at.SeekName(kFromFirst, name));
        at.GetValue(out);
        return fixtop::Shown(out);
    };
    const std::string own = read(*cursor, "value");
    auto reader = Ref<FIIteratorBase>::Adopt(it->Copy());
    EXPECT_EQ("(NULL)", DisplayIn(*reader, "F"));
    cursor->SetVarSet(reader->GetVarSet());
    EXPECT_EQ("F", read(*cursor, "uom"));
    auto clone = Ref<FIAttributeCursorBase>::Adopt(cursor->Clone(true));
    cursor.Reset();
    EXPECT_EQ("F", read(*clone, "uom")) << "the copy was given them too";
    reader.Reset();
    EXPECT_EQ(nullptr, clone->GetVarSet());
    EXPECT_EQ("C", read(*clone, "uom"));
    EXPECT_EQ(own, read(*clone, "value"));
    clone->SetVarSet(it->GetVarSet());
    clone.Reset();
    const auto another = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    EXPECT_EQ(nullptr, another->GetVarSet()) << "the cursor that lent them has gone";
}

}  // namespace

}  // namespace fixtop
