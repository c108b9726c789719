// SPDX-License-Identifier: Apache-2.0
// What the check of class and map files tells, and where.

#include "mapping/check/check_model.h"
#include "mapping/check/findings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mapping_fixture.h"
#include "model/fake_unit_source.h"
#include "platform/xml_reader.h"
#include "support/troubled_xml_reader.h"
#include "xml/xml_file.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Without a mistake. More of it may stand on line 12.
std::string Classes(const std::string& more = "") {
    return R"(<QZClassLibrary Name="n" Format="1">
<Header><Version Major="1" Minor="2"/></Header>
<Class Name="Top"><Description>The whole.</Description><Superclass>GenericClass</Superclass></Class>
<ClassAttributes Name="Top" Count="3">
<Attribute Name="Items" Type="Object" Multiplicity="n"><ClassName>Item</ClassName><CustomProperties><CustomProperty Name="Key" Value="Name"/></CustomProperties></Attribute>
<Attribute Name="Heat" Type="Real" Multiplicity="1"><QuantityType>Temperature</QuantityType></Attribute>
<Attribute Name="Speed" Type="Enumeration" Multiplicity="1"><EnumName>Speeds</EnumName></Attribute>
</ClassAttributes>
<Enumeration Name="Speeds" EnumIsClosed="1"><Option Name="High" IntegerValue="0"/><Option Name="Low"/></Enumeration>
<ClassAttributes Name="Base"><Attribute Name="Name" Type="String"/></ClassAttributes>
<Class Name="Item"><Superclass>Base</Superclass></Class>
)" + more + "</QZClassLibrary>";
}

// Likewise, on line 9.
std::string Map(const std::string& more = "") {
    return R"(<CCDMMapFile Name="n" RefOnly="1">
<TranslateName>T</TranslateName><Linkage><DLL>recording.dll</DLL></Linkage><TopNode FunctionName="MakeTop"/><Translate Type="Function">CTScalar</Translate>
<Class Name="Top">
<Attribute Name="Items"><TranslateArray Type="ArrayFunc">CTArray</TranslateArray></Attribute>
<Attribute Name="Heat"><Translate Type="Map">"Heat Flow"</Translate><Translate Type="Map" Branch="Spec">Heat[(status)="Specified"]</Translate></Attribute>
<Attribute Name="Speed"><Translate Type="Map"> Mode </Translate><Enumeration Name="Speeds"><Option Name="High" AppName="Fast"/></Enumeration></Attribute>
</Class>
<Class Name="Base"><Attribute Name="Name"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">(id)</Attribute></NodeAttributes></Translate></Attribute></Class>
)" + more + "</CCDMMapFile>";
}

class CheckModelTest : public testing::Test {
 protected:
    CheckModelTest() {
        folder_.Write("units.xml",
                      "<CCDMUnitFile><Provider>FakeUnits</Provider><InitString>x</InitString>"
                      "</CCDMUnitFile>");
        Write(Classes(), Map());
    }
    void Write(const std::string& classes, const std::string& map) {
        folder_.Write("classes.xml", classes);
        folder_.Write("map.xml", map);
    }
    // "map.xml:9: text", without the folder.
    std::vector<std::string> Told(FindingKind kind = FindingKind::kMistake) {
        ModelFiles files;
        files.classes = "classes.xml";
        files.map = "map.xml";
        files.units = "units.xml";
        files.translateName = translation_;
        std::vector<std::string> told;
        for (const Finding& each : CheckModel(files)) {
            if (each.kind != kind) continue;
            told.push_back(Short(each.file) + ":" + std::to_string(each.line) + ": " +
                           Short(each.text));
        }
        return told;
    }
    // The text with the folder left out.
    std::string Short(std::string text) const {
        const std::string folder = folder_.File("");
        for (std::size_t at = 0; (at = text.find(folder)) != std::string::npos;) {
            text.erase(at, folder.size());
        }
        return text;
    }

    std::string translation_ = "T";
    TemporaryFolder folder_;
    LogLines log_{folder_};
    OfferedFake units_;
    OfferedFunctions functions_;
};

TEST_F(CheckModelTest, files_without_a_mistake_give_nothing) {
    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_THAT(Told(FindingKind::kUnmapped), IsEmpty());
}

TEST_F(CheckModelTest, a_translation_that_no_translator_has_is_told_with_those_that_there_are) {
    translation_ = "Other";
    EXPECT_THAT(Told(), ElementsAre("map.xml:1: no such translation: Other; expected T"));
    EXPECT_THAT(Told(FindingKind::kUnmapped), testing::Not(IsEmpty()));
}

// ---- one mistake each

struct MistakeRow {
    const char* text;  // in the one file or the other
    const char* told;  // behind the file and the line of the text
};

class ClassFileMistake : public CheckModelTest, public testing::WithParamInterface<MistakeRow> {};
class MapFileMistake : public CheckModelTest, public testing::WithParamInterface<MistakeRow> {};

TEST_P(ClassFileMistake, is_told_with_its_line) {
    Write(Classes(GetParam().text), Map());
    EXPECT_THAT(Told(), ElementsAre("classes.xml:12: " + std::string(GetParam().told)));
}

TEST_P(MapFileMistake, is_told_with_its_line) {
    Write(Classes(), Map(GetParam().text));
    EXPECT_THAT(Told(), ElementsAre("map.xml:9: " + std::string(GetParam().told)));
}

INSTANTIATE_TEST_SUITE_P(
    Names, ClassFileMistake,
    testing::Values(
        MistakeRow{"<Class Name='X'><Superclass>Bass</Superclass></Class>",
                   "superclass Bass of class X is not known; near: Base"},
        MistakeRow{"<Class Name='X'><Superclass> Base</Superclass></Class>",
                   "superclass  Base of class X is not known; near: Base"},
        MistakeRow{"<Class Name='X'><Superclass>X</Superclass></Class>",
                   "superclass X of class X leads back to it"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a' Type='Object'>"
                   "<ClassName>Iten</ClassName></Attribute></ClassAttributes>",
                   "class Iten of attribute a is not known; near: Item"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a' Type='Object'/>"
                   "</ClassAttributes>",
                   "attribute a of Type Object has no <ClassName>"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a' Type='Enumeration'>"
                   "<EnumName>Speed</EnumName></Attribute></ClassAttributes>",
                   "enumeration Speed of attribute a is not known; near: Speeds"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a' Type='Enumeration'/>"
                   "</ClassAttributes>",
                   "attribute a of Type Enumeration has no <EnumName>"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a' Type='String'>"
                   "<EnumName>Speeds</EnumName></Attribute></ClassAttributes>",
                   "<EnumName> is for attributes of Type Enumeration, a is String"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a' Type='Real'>"
                   "<QuantityType>Temperatur</QuantityType></Attribute></ClassAttributes>",
                   "quantity Temperatur is not known"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a' Type='Float'/>"
                   "</ClassAttributes>",
                   "Type Float is not known; right: None, Real, String, Integer, Boolean, "
                   "Enumeration, Object"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a'/></ClassAttributes>",
                   "<Attribute> has no Type"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Type='Real'/></ClassAttributes>",
                   "<Attribute> has no Name"},
        MistakeRow{"<ClassAttributes/>", "<ClassAttributes> has no Name"}));

INSTANTIATE_TEST_SUITE_P(
    Keys, ClassFileMistake,
    testing::Values(
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a' Type='Object' Multiplicity='n'>"
                   "<ClassName>Item</ClassName><CustomProperties><CustomProperty Name='Key' "
                   "Value='Nome'/></CustomProperties></Attribute></ClassAttributes>",
                   "key Nome of attribute a is no attribute of class Item; near: Name"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a' Type='Object' Multiplicity='n'>"
                   "<ClassName>Item</ClassName><CustomMetaData>Key~Name,No~</CustomMetaData>"
                   "</Attribute></ClassAttributes>",
                   "key No of attribute a is no attribute of class Item"},
        MistakeRow{"<ClassAttributes Name='X'><Attribute Name='a' Type='Real' Multiplicity='n'>"
                   "<CustomMetaData>Key~Name~</CustomMetaData></Attribute></ClassAttributes>",
                   "a key is for lists of objects, attribute a is none"}));

INSTANTIATE_TEST_SUITE_P(
    Twice, ClassFileMistake,
    testing::Values(MistakeRow{"<ClassAttributes Name='Base'><Attribute Name='Name' Type='String'/>"
                               "</ClassAttributes>",
                               "attribute Name of class Base is declared twice, first on line 10"},
                    MistakeRow{
                        "<Enumeration Name='Speeds'><Option Name='Low'/></Enumeration>",
                        "option Low of enumeration Speeds is declared twice, first on line 9"}));

INSTANTIATE_TEST_SUITE_P(
    Unread, ClassFileMistake,
    testing::Values(
        MistakeRow{"<Clas Name='X'/>",
                   "nobody reads <Clas> in <QZClassLibrary>; near: Class, ClassAttributes"},
        MistakeRow{"<Class Name='X'><Superclas>Base</Superclas></Class>",
                   "nobody reads <Superclas> in <Class>; near: Superclass"},
        MistakeRow{"<Class Nam='X' Name='X'/>", "nobody reads Nam of <Class>; near: Name"},
        MistakeRow{"<Class Name='X'>Base</Class>", "nobody reads the text in <Class>"},
        MistakeRow{"<Include/>", "<Include> has no Library"}));

INSTANTIATE_TEST_SUITE_P(
    Files, ClassFileMistake,
    testing::Values(
        MistakeRow{"<Include Library='no.xml'/>", "file no.xml can't be found"},
        MistakeRow{"<Header><Include Library='no.xml'/></Header>", "file no.xml can't be found"},
        MistakeRow{"<Include Library='../no.xml'/>",
                   "file ../no.xml can't be found: it has to lie in the folders where files are "
                   "sought"}));

#define IN_HEAT(inside) \
    "<Class Name='Top'><Attribute Name='Heat' Container='Item'>" inside "</Attribute></Class>"

INSTANTIATE_TEST_SUITE_P(
    Names, MapFileMistake,
    testing::Values(
        MistakeRow{"<Class Name='Tup'/>", "class Tup is not known; near: Top"},
        MistakeRow{"<Class Name='Top'><Attribute Name='Heet'/></Class>",
                   "attribute Heet of class Top is not known; near: Heat"},
        MistakeRow{"<Class Name='Item'><Attribute Name='Name'/></Class>",
                   "attribute Name of class Item is declared by Base; it has to be mapped in that "
                   "class"},
        MistakeRow{"<Class Name='Top'><Attribute Name='Heat' Container='Top.Iten'/></Class>",
                   "class Iten in Container is not known; near: Item"},
        MistakeRow{"<Class Name='Top'><Attribute Name='Heat' ContainerId='Itms'/></Class>",
                   "attribute Itms in ContainerId is not known; near: Items"},
        MistakeRow{"<DefaultBranch>Clac</DefaultBranch>",
                   "branch Clac is not known; right: Both, Calc, Spec"},
        MistakeRow{IN_HEAT("<Translate Type='Map' Branch='spec'>a</Translate>"),
                   "Branch spec is not known; right: Both, Calc, Spec"},
        MistakeRow{"<Enumeration Name='Speds'/>", "enumeration Speds is not known; near: Speeds"},
        MistakeRow{"<Enumeration Name='Speeds'><Option Name='Hig' AppName='Fast'/></Enumeration>",
                   "option Hig of enumeration Speeds is not known; near: High"},
        MistakeRow{"<Class Name='Top'><Attribute Name='Speed'><Enumeration Name='Kinds'/>"
                   "</Attribute></Class>",
                   "enumeration Kinds is not that of attribute Speed; right: Speeds"},
        MistakeRow{IN_HEAT("<Enumeration Name='Speeds'/>"),
                   "nobody reads <Enumeration> in attribute Heat, which is Real"}));

INSTANTIATE_TEST_SUITE_P(
    Functions, MapFileMistake,
    testing::Values(
        MistakeRow{
            IN_HEAT("<Translate Type='Function'>CTScaler</Translate>"),
            "function CTScaler is not known; wanted: a function to one node; near: CTScalar"},
        MistakeRow{IN_HEAT("<Translate Type='Function'>CTArray</Translate>"),
                   "function CTArray is a function of a list, for <TranslateArray "
                   "Type=\"ArrayFunc\">; wanted: a function to one node"},
        MistakeRow{"<Class Name='Top'><Attribute Name='Items' Container='Item'><TranslateArray "
                   "Type='ArrayFunc'>CTScalar</TranslateArray></Attribute></Class>",
                   "function CTScalar is a function to one node, for Type Function; wanted: a "
                   "function of a list"},
        MistakeRow{"<TopNode FunctionName='MakeTup'/>",
                   "function MakeTup is not known; wanted: a function of a top node; near: "
                   "MakeTop"},
        MistakeRow{IN_HEAT("<Translate Type='Function'> </Translate>"),
                   "<Translate> has no function"},
        MistakeRow{"<Linkage><DLL>other.dll</DLL></Linkage>",
                   "module other.dll is offered by nobody; that of this library is fixtop.dll"}));

INSTANTIATE_TEST_SUITE_P(
    Translators, MapFileMistake,
    testing::Values(
        MistakeRow{IN_HEAT("<Translate>a</Translate>"), "<Translate> has no Type"},
        MistakeRow{IN_HEAT("<Translate Type='map'>a</Translate>"),
                   "Type map of <Translate> is not known; right: Dummy, Function, Map"},
        MistakeRow{"<Class Name='Top'><Attribute Name='Items'><TranslateArray Type='Dummy'/>"
                   "</Attribute></Class>",
                   "Type Dummy of <TranslateArray> is not known; right: Function, Map, ArrayFunc"},
        MistakeRow{IN_HEAT("<TranslateArray Type='Map'>*</TranslateArray>"),
                   "attribute Heat is no list; right: <Translate>"},
        MistakeRow{"<Class Name='Top'><Attribute Name='Items' Container='Item'><TranslateArray "
                   "Type='Map'/></Attribute></Class>",
                   "<TranslateArray> has no path"},
        MistakeRow{"<Class Name='Top'><Attribute Name='Items' Container='Item'><TranslateArray "
                   "Type='Function'>CTScalar</TranslateArray></Attribute></Class>",
                   "<TranslateArray> has no path in <Map>"},
        MistakeRow{IN_HEAT("<Translate Type='Map'>a<!-- or --> b</Translate>"),
                   "a path stands in several pieces; the last one counts"},
        MistakeRow{IN_HEAT("<Translate Type='Map'>a<Function>CTScalar</Function></Translate>"),
                   "nobody reads <Function> in a <Translate> of Type Map"},
        MistakeRow{IN_HEAT("<SetVar Var='a'>1</SetVar><SetVar Var='b'>2</SetVar>"),
                   "one <SetVar> is read in an <Attribute>, and this is another"},
        MistakeRow{IN_HEAT("<Condition>1</Condition>"), "<Condition> has no Var"}));

INSTANTIATE_TEST_SUITE_P(
    Paths, MapFileMistake,
    testing::Values(
        MistakeRow{IN_HEAT("<Translate Type='Map'>a[b</Translate>"),
                   "Parse error, ] expected in: a[b"},
        MistakeRow{IN_HEAT("<Translate Type='Map'><Map>a#</Map></Translate>"),
                   "Parse error, count expected following # in: a#"},
        MistakeRow{IN_HEAT("<Translate Type='Map'>a(b).c</Translate>"),
                   "of the path a(b).c nobody reads .c"},
        MistakeRow{"<Class Name='Top'><Attribute Name='Items' Container='Item'><TranslateArray "
                   "Type='Map'>*[=]</TranslateArray></Attribute></Class>",
                   "Parse error, string expected in: *[=]"},
        MistakeRow{IN_HEAT("<Translate Type='Dummy'><NodeAttributes><Attribute Name='value'>(id"
                           "</Attribute></NodeAttributes></Translate>"),
                   "Parse error, ) expected in: (id"},
        MistakeRow{IN_HEAT("<Translate Type='Dummy'><NodeAttributes><Attribute Name='a'>x"
                           "</Attribute><Attribute Name='a'>y</Attribute></NodeAttributes>"
                           "</Translate>"),
                   "node attribute a is given twice; the last one counts"}));

INSTANTIATE_TEST_SUITE_P(
    Twice, MapFileMistake,
    testing::Values(
        MistakeRow{"<Class Name='Top'><Attribute Name='Heat'><Translate Type='Dummy'/></Attribute>"
                   "</Class>",
                   "attribute Heat has another translator for the same container, conditions and "
                   "branch on line 5"},
        MistakeRow{"<Enumeration Name='Speeds'><Option Name='Low' AppName='Slow'/>"
                   "<Option Name='High' AppName='Slow'/></Enumeration>",
                   "AppName Slow is declared twice, and the one on line 9 counts"},
        MistakeRow{"<Class Name='Top'><Attribute Name='Speed'><Enumeration Name='Speeds'/>"
                   "</Attribute></Class>",
                   "enumeration Speeds takes the place of the one on line 6"}));

INSTANTIATE_TEST_SUITE_P(
    Unread, MapFileMistake,
    testing::Values(
        MistakeRow{"<Clas/>", "nobody reads <Clas> in <CCDMMapFile>; near: Class"},
        MistakeRow{IN_HEAT("<Translat Type='Map'>a</Translat>"),
                   "nobody reads <Translat> in <Attribute>; near: Translate, TranslateArray"},
        MistakeRow{"<Class Name='Top' Container='Item'/>", "nobody reads Container of <Class>"},
        MistakeRow{IN_HEAT("a.b"), "nobody reads the text in <Attribute>"},
        MistakeRow{"<Include Mapfile='no.xml'/>", "file no.xml can't be found"}));

// ---- what is no mistake

class NoMistake : public CheckModelTest, public testing::WithParamInterface<const char*> {};

TEST_P(NoMistake, in_a_map_is_not_told) {
    Write(Classes(), Map(GetParam()));
    EXPECT_THAT(Told(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Maps, NoMistake,
    testing::Values(
        IN_HEAT("<Translate Type='Map'>a</Translate>"),
        "<Class Name='Top'><Attribute Name='Heat' ContainerId='Items.Name'>"
        "<Translate Type='Map'/></Attribute></Class>",
        "<Class Name='Top'><Attribute Name='Heat'><Translate Type='Dummy'/>"
        "<Condition Var='a'>1</Condition></Attribute></Class>",
        "<Class Name='Top'><Attribute Name='Heat'><Translate Type='Dummy' TranslateName='U'/>"
        "<Translate Type='Dummy' Branch='Calc'/></Attribute></Class>",
        // A translator of its own may lead to where a list is walked from.
        "<Class Name='Top'><Attribute Name='Items'><Translate Type='Map'>a</Translate></Attribute>"
        "</Class>",
        "<Author><x/>me</Author><Comment a='1'/><Log Level='3'/>", "<Include Mapfile='map.xml'/>"));

// ---- both files together

TEST_F(CheckModelTest, attributes_without_a_translator_are_a_finding_of_another_kind) {
    Write(Classes("<ClassAttributes Name='Item'><Attribute Name='Size' Type='Real'/>"
                  "</ClassAttributes>"),
          Map());
    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_THAT(Told(FindingKind::kUnmapped),
                ElementsAre("classes.xml:12: attribute Size of class Item has no translator"));
}

TEST_F(CheckModelTest, a_list_needs_a_translator_of_lists) {
    Write(Classes("<ClassAttributes Name='Item'><Attribute Name='Parts' Type='Real' "
                  "Multiplicity='n'/></ClassAttributes>"),
          Map("<Class Name='Item'><Attribute Name='Parts'><Translate Type='Map'>a</Translate>"
              "</Attribute></Class>"));
    EXPECT_THAT(Told(),
                ElementsAre("map.xml:9: attribute Parts is a list; right: <TranslateArray>"));
}

TEST_F(CheckModelTest, superclasses_in_a_circle_are_told_of_each) {
    Write(Classes("<Class Name='X'><Superclass>Y</Superclass></Class>\n"
                  "<Class Name='Y'><Superclass>X</Superclass></Class>"),
          Map());
    EXPECT_THAT(Told(), ElementsAre("classes.xml:12: superclass Y of class X leads back to it",
                                    "classes.xml:13: superclass X of class Y leads back to it"));
}

TEST_F(CheckModelTest, functions_need_a_module_before_them) {
    folder_.Write("map.xml",
                  "<CCDMMapFile>\n<TopNode FunctionName='MakeTop'/>\n<Translate Type='Function'>"
                  "CTScalar</Translate></CCDMMapFile>");
    EXPECT_THAT(Told(),
                ElementsAre("map.xml:2: function MakeTop is looked up before a <Linkage> names its "
                            "module",
                            "map.xml:3: function CTScalar is looked up before a <Linkage> names "
                            "its module"));
}

TEST_F(CheckModelTest, a_map_without_a_top_is_told) {
    folder_.Write("map.xml", "\n<CCDMMapFile/>");
    EXPECT_THAT(Told(), ElementsAre("map.xml:2: no <TopNode> names the function that gives the top "
                                    "of a case"));
}

TEST_F(CheckModelTest, included_files_are_checked_once_and_in_their_place) {
    folder_.Write("more.xml", "<QZClassLibrary>\n<Class Name='Top'/><Clas/></QZClassLibrary>");
    folder_.Write("part.xml", "<CCDMMapFile>\n\n<Class Name='Nix'/></CCDMMapFile>");
    Write(Classes("<Include Library='more.xml'/><Include Library='more.xml'/>"
                  "<Include Library='old.qcl'/>"),
          Map("<Include Mapfile='part.xml'/><Include Mapfile='part.xml'/>"));
    EXPECT_THAT(Told(),
                ElementsAre("more.xml:2: nobody reads <Clas> in <QZClassLibrary>; near: Class, "
                            "ClassAttributes",
                            "part.xml:3: class Nix is not known"));
}

TEST_F(CheckModelTest, a_second_translator_in_another_file_is_told_with_the_file_of_the_first) {
    folder_.Write("part.xml",
                  "<CCDMMapFile><Class Name='Top'><Attribute Name='Heat'><Translate Type='Dummy'/>"
                  "</Attribute></Class></CCDMMapFile>");
    Write(Classes(), Map("<Include Mapfile='part.xml'/>"));
    EXPECT_THAT(Told(), ElementsAre("part.xml:1: attribute Heat has another translator for the "
                                    "same container, conditions and branch on map.xml:5"));
}

// ---- files that can't be read

TEST_F(CheckModelTest, a_missing_file_is_told_by_its_name) {
    ModelFiles files;
    files.classes = "no.xml";
    files.map = "map.xml";
    files.units = "no_units.xml";
    const std::vector<Finding> findings = CheckModel(files);
    ASSERT_THAT(findings, SizeIs(2));
    EXPECT_EQ(findings[0].file, "no_units.xml");
    EXPECT_EQ(findings[0].text, "units can't be read; quantities are not looked up");
    EXPECT_EQ(findings[1].file, "no.xml");
    EXPECT_EQ(findings[1].line, 0);
    EXPECT_EQ(findings[1].text, "file no.xml can't be found");
}

TEST_F(CheckModelTest, another_root_is_told) {
    Write(Map(), Map());
    EXPECT_THAT(Told(), ElementsAre("classes.xml:1: nobody reads <CCDMMapFile>; the file has to "
                                    "begin with <QZClassLibrary>"));
}

TEST_F(CheckModelTest, what_is_no_xml_is_told_with_its_line) {
    Write(Classes(), "<CCDMMapFile>\n<Class>\n</CCDMMapFile>");
    const std::vector<std::string> told = Told();
    ASSERT_THAT(told, testing::Not(IsEmpty()));
    // That of one or the other of the tags that don't fit, as the system's parser has it.
    EXPECT_THAT(told.back(), testing::AnyOf(testing::StartsWith("map.xml:2: "),
                                            testing::StartsWith("map.xml:3: ")));
    EXPECT_THAT(told.back(), testing::EndsWith("; nothing is read from here on"));
}

TEST_F(CheckModelTest, a_document_type_is_refused_as_the_readers_refuse_it) {
    Write(Classes(), "<!DOCTYPE CCDMMapFile>\n" + Map());
    EXPECT_THAT(Told(), ElementsAre(testing::StartsWith("map.xml:1: ")));
}

TEST_F(CheckModelTest, deep_nesting_is_refused_as_the_readers_refuse_it) {
    std::string deep;
    for (int i = 0; i < kMaxXmlDepth; ++i) deep += "<Comment>";
    Write(Classes(), Map(deep));
    EXPECT_THAT(Told(), ElementsAre("map.xml:9: Elements are nested too deep; nothing is read from "
                                    "here on"));
}

TEST_F(CheckModelTest, files_that_include_each_other_too_deep_are_told) {
    const int levels = kMostIncludes + 2;
    for (int i = 0; i < levels; ++i) {
        folder_.Write(
            "m" + std::to_string(i) + ".xml",
            "<CCDMMapFile><Include Mapfile='m" + std::to_string(i + 1) + ".xml'/></CCDMMapFile>");
    }
    Write(Classes(), Map("<Include Mapfile='m0.xml'/>"));
    EXPECT_THAT(Told(), ElementsAre("m63.xml:1: file m64.xml is not read: too many files include "
                                    "each other"));
}

TEST_F(CheckModelTest, texts_that_are_cut_are_told) {
    const std::string much(SaxElementHandler::kTextLimit + 1, 'a');
    Write(Classes(), Map("<Comment>" + much + "</Comment>"));
    EXPECT_THAT(Told(), ElementsAre("map.xml:9: a text is longer than 4096 bytes; what is beyond "
                                    "them is not read"));
}

TEST_F(CheckModelTest, without_a_reader_each_file_is_told) {
    const TroubledXmlReader troubled(TroubledXmlReader::Trouble::kNotMade);
    EXPECT_THAT(Told(),
                ElementsAre("units.xml:0: units can't be read; quantities are not looked up",
                            "classes.xml:0: the system has no reader for it"));
}

TEST_F(CheckModelTest, beyond_a_limit_findings_are_counted) {
    std::string mistakes;
    for (std::size_t i = 0; i < Findings::kMost + 2; ++i) mistakes += "<Clas/>";
    Write(Classes(), Map(mistakes));
    const std::vector<std::string> told = Told();
    ASSERT_THAT(told, SizeIs(Findings::kMost + 1));
    EXPECT_EQ(told.back(), "map.xml:0: 2 more findings are not told");
}

}  // namespace

}  // namespace fixtop
