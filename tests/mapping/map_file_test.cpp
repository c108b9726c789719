// SPDX-License-Identifier: Apache-2.0
// Reading map files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mapping/translators/find_translator.h"
#include "mapping/translators/translator.h"
#include "mapping_fixture.h"
#include "platform/resources.h"
#include "support/troubled_xml_reader.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr char kMistake[] = " Error in Convert File:";

// The body begins on line 3.
std::string Map(const std::string& body) {
    return "<?xml version='1.0'?>\n<CCDMMapFile Name='n' RefOnly='1'>\n" + body + "</CCDMMapFile>";
}

// Attributes X (real), E (enumeration Kinds) and L (an array) of class A.
std::string InX(const std::string& inside, const std::string& attributes = "") {
    return Map("<Class Name='A'><Attribute Name='X' " + attributes + ">" + inside +
               "</Attribute></Class>");
}

struct ReadMap {
    explicit ReadMap(const std::string& text = "", bool with_resources = true)
        : library(with_resources ? &library : nullptr) {
        for (const char* name : {"A", "Base"}) library.GetOrCreateClass(name);
        Attribute("A", "X")->type = CCDMAttrType::kReal;
        Attribute("A", "L")->isArray = true;
        Attribute("A", "E")->type = CCDMAttrType::kEnumeration;
        Attribute("A", "E")->typeName = "Kinds";
        Attribute("Base", "Inherited");
        library.FindClass("A")->superclasses.insert("Base");
        library.GetOrCreateEnumeration("Kinds");
        library.defaultTranslateName = "T";
        if (!text.empty()) Read(text);
    }
    void Read(const std::string& text) {
        folder.Write("map.xml", text);
        library.mapFiles.clear();
        log.Restart();
        done = ReadMapFile(library, "map.xml");
        lines = log.Lines();
    }
    CCDMAttribute* Attribute(const char* owner, const char* name) {
        return library.FindClass(owner)->GetOrCreateAttribute(name);
    }
    // In the order of the map, by name.
    std::vector<const CCDMTranslator*> Translators(const TranslatorMap& map) const {
        std::vector<const CCDMTranslator*> all;
        for (const auto& [name, record] : map) {
            all.push_back(static_cast<const CCDMTranslator*>(record.get()));
            EXPECT_EQ(all.back()->name, name);
        }
        return all;
    }
    std::vector<const CCDMTranslator*> OfX() {
        return Translators(Attribute("A", "X")->translators);
    }
    std::vector<const CCDMTranslator*> ArraysOfX() {
        return Translators(Attribute("A", "X")->arrayTranslators);
    }

    TemporaryFolder folder;
    LogLines log{folder};
    CCDMClassLibrary library;
    bool done = false;
    std::vector<std::string> lines;
};

std::string DumpOf(const CCDMTranslator* translator) {
    std::string text;
    const char* closing = translator->DumpBody(text);
    return text + closing;
}

std::vector<std::string> DumpsOf(const std::vector<const CCDMTranslator*>& translators) {
    std::vector<std::string> dumps;
    for (const CCDMTranslator* translator : translators) dumps.push_back(DumpOf(translator));
    return dumps;
}

std::string TextOf(const VariableList& pairs) {
    std::string text;
    for (const auto& [name, value] : pairs) text += name + "=" + value.ToText() + ";";
    return text;
}

std::string Warning(const ReadMap& read, int line, const std::string& what) {
    return "  XML Parser Warning: file " + read.folder.File("map.xml") + " at line " +
           std::to_string(line) + ", " + what;
}

// ---- settings

TEST(MapFile, root_attributes_and_ignored_elements_are_no_matter) {
    const ReadMap read(
        Map("<Author><x/>me</Author><Comment a='1'/><Comments/><Company/>"
            "<Copyright/><Version/>"));
    EXPECT_TRUE(read.done);
    EXPECT_THAT(read.lines, IsEmpty());
    EXPECT_THAT(read.library.mapFiles, ElementsAre("map.xml"));
}

TEST(MapFile, default_branch_by_its_text) {
    const std::pair<const char*, CCDMBranch> rows[] = {{"Both", CCDMBranch::kBoth},
                                                       {"Calc", CCDMBranch::kCalc},
                                                       {"Spec", CCDMBranch::kSpec},
                                                       {"calc", CCDMBranch::kUnspecified},
                                                       {" Calc", CCDMBranch::kUnspecified}};
    for (const auto& [text, branch] : rows) {
        const ReadMap read(Map("<DefaultBranch>" + std::string(text) + "</DefaultBranch>"));
        EXPECT_EQ(read.library.defaultBranch, branch) << text;
        EXPECT_THAT(read.lines, IsEmpty());
    }
    EXPECT_EQ(ReadMap(Map("<DefaultBranch/>")).library.defaultBranch, CCDMBranch::kBoth);
}

TEST(MapFile, translate_name_is_trimmed) {
    const std::pair<const char*, const char*> rows[] = {{"Hovex", "Hovex"},
                                                        {"\n \tHovex \n", "Hovex"},
                                                        {"Hovex\t", "Hovex\t"},
                                                        {"\tHovex\t", "Hovex"},
                                                        {"A B", "A B"},
                                                        {" ", "T"},
                                                        {"", "T"}};
    for (const auto& [text, name] : rows) {
        const ReadMap read(Map("<TranslateName>" + std::string(text) + "</TranslateName>"));
        EXPECT_EQ(read.library.defaultTranslateName, name) << testing::PrintToString(text);
    }
}

TEST(MapFile, linkage_takes_offered_modules) {
    const OfferedFunctions offered;
    const ReadMap read(
        Map("<Linkage><DLL>Recording.DLL</DLL></Linkage>"
            "<TopNode FunctionName='MakeTop'/>"));
    EXPECT_EQ(read.library.semanticModule, offered.Module());
    EXPECT_EQ(read.library.topNodeFunction, &RecordingTop);
    EXPECT_THAT(read.lines, IsEmpty());
}

TEST(MapFile, module_that_is_offered_again_gives_the_new_functions) {
    static constexpr NamedFunction kOther[] = {{"CTOther", RecordingScalar}};
    const OfferedFunctions offered;
    OfferSemanticModule("RECORDING.dll", kOther);
    const ReadMap read(
        Map("<Linkage><DLL>recording.dll</DLL></Linkage>"
            "<Translate Type='Function'>CTOther</Translate>"
            "<Translate Type='Function'>CTScalar</Translate>"));
    EXPECT_THAT(read.lines, ElementsAre(" Converter Semantic function: CTScalar not found"));
    WithdrawSemanticModule("recording.DLL");
    EXPECT_EQ(offered.Module(), nullptr);
}

// Neither what the loader finds nor what is offered to other rooms says how it wants to be called.
TEST(MapFile, linkage_refuses_every_other_module) {
    OfferModule("loaded.dll", {{"Find1", reinterpret_cast<void*>(RecordingScalar)}});
    for (const char* name : {"evil.dll", "libc.so.6", "kernel32.dll", "/lib/x.dll", "fixtop", "",
                             "../fixtop.dll", " fixtop.dll", "fixtop.dll", "loaded.dll"}) {
        ReadMap read(Map("<Linkage><DLL>" + std::string(name) +
                         "</DLL></Linkage>"
                         "<TopNode FunctionName='abort'/>"
                         "<Translate Type='Function'>Find1</Translate>"));
        EXPECT_TRUE(read.done) << name;
        EXPECT_EQ(read.library.semanticModule, nullptr) << name;
        EXPECT_EQ(read.library.topNodeFunction, nullptr) << name;
        EXPECT_THAT(read.lines, ElementsAre(" Converter Semantic function: Find1 not found"))
            << name;
    }
    WithdrawModule("loaded.dll");
}

// Called with the arguments of another kind, a function reads and writes what is not its own.
TEST(MapFile, function_of_another_kind_is_not_found) {
    const OfferedFunctions offered;
    const std::string linkage = "<Linkage><DLL>recording.dll</DLL></Linkage>";
    struct Row {
        const char* element;
        const char* line;
    };
    const Row rows[] = {
        {"<Translate Type='Function'>CTArray</Translate>",
         " Converter Semantic function: CTArray not found"},
        {"<Translate Type='Function'>MakeTop</Translate>",
         " Converter Semantic function: MakeTop not found"},
        {"<TranslateArray Type='Function'><Map>*</Map>CTArray</TranslateArray>",
         " Filter Semantic function: CTArray not found"},
        {"<TranslateArray Type='ArrayFunc'>CTScalar</TranslateArray>",
         " Filter Semantic function: CTScalar not found"},
        {"<TranslateArray Type='ArrayFunc'>MakeTop</TranslateArray>",
         " Filter Semantic function: MakeTop not found"},
    };
    ScriptNode node("Node");
    node.Add("Child");
    const Ref<FIIterator> it = node.Iterate();
    for (const Row& row : rows) {
        ReadMap read(Map(linkage + "<Class Name='A'><Attribute Name='X'>" + row.element +
                         "</Attribute></Class>"));
        EXPECT_THAT(read.lines, ElementsAre(row.line)) << row.element;
        const Ref<FIReference> reference = ReferenceTo(*it);
        auto translators = read.OfX();
        for (const CCDMTranslator* array : read.ArraysOfX()) translators.push_back(array);
        ASSERT_THAT(translators, SizeIs(1)) << row.element;
        EXPECT_FALSE(translators[0]->Test(*reference)) << row.element;
        EXPECT_FALSE(translators[0]->Apply(*reference)) << row.element;
    }
    for (const char* name : {"CTArray", "CTScalar"}) {
        const ReadMap read(Map(linkage + "<TopNode FunctionName='" + name + "'/>"));
        EXPECT_EQ(read.library.topNodeFunction, nullptr) << name;
    }
    EXPECT_THAT(Recorded::Now().calls, IsEmpty());
}

TEST(MapFile, order_in_the_file_counts) {
    const OfferedFunctions offered;
    ReadMap read(
        Map("<TopNode FunctionName='MakeTop'/>"
            "<Translate Type='Function'>CTScalar</Translate>"
            "<TranslateName>Late</TranslateName><DefaultBranch>Spec</DefaultBranch>"
            "<Class Name='A'><Attribute Name='X'><Translate Type='Map'/></Attribute>"
            "</Class><TranslateName>Later</TranslateName>"
            "<DefaultBranch>Calc</DefaultBranch>"
            "<Class Name='A'><Attribute Name='X'><Translate Type='Map'/></Attribute>"
            "</Class><Linkage><DLL>recording.dll</DLL></Linkage>"));
    EXPECT_EQ(read.library.topNodeFunction, nullptr);
    EXPECT_THAT(read.lines, ElementsAre(" Converter Semantic function: CTScalar not found"));
    const auto translators = read.OfX();
    ASSERT_THAT(translators, SizeIs(2));
    EXPECT_EQ(translators[0]->name, "Late");
    EXPECT_EQ(translators[0]->branch, CCDMBranch::kSpec);
    EXPECT_EQ(translators[1]->name, "Later");
    EXPECT_EQ(translators[1]->branch, CCDMBranch::kCalc);
}

TEST(MapFile, log_element_names_file_and_level) {
    ReadMap read(Map("<Log File='other.log' Level='3'/><Class Name='None'/>"));
    EXPECT_EQ(SetLogLevel(ErrorLog::kDefaultLevel), 3);
    EXPECT_THAT(read.folder.Read("other.log"), testing::HasSubstr("Class None not found"));
}

TEST(MapFile, log_element_never_reaches_other_files) {
    const ReadMap read(Map("<Log File='map.xml' Level='much'/>"));
    EXPECT_TRUE(read.done);
    const std::string place =
        "  XML Parser Severe Error: file " + read.folder.File("map.xml") + " at line 3, ";
    EXPECT_THAT(
        read.lines,
        ElementsAre(place + "Log File map.xml is not used: give a name that ends in .log and "
                            "stays below the working directory",
                    place + "Log Level much is not used: give a whole number"));
    EXPECT_THAT(read.folder.Read("map.xml"), testing::HasSubstr("CCDMMapFile"));
}

// ---- translators

TEST(MapFile, root_translators_have_no_container) {
    const OfferedFunctions offered;
    const ReadMap read(
        Map("<Linkage><DLL>recording.dll</DLL></Linkage>"
            "<DefaultBranch>Calc</DefaultBranch>"
            "<Translate Type='Function'>CTScalar</Translate>"
            "<Translate Type='Map' TranslateName='U' Branch='Spec'>a</Translate>"));
    const auto roots = read.Translators(read.library.rootTranslators);
    ASSERT_THAT(roots, SizeIs(2));
    EXPECT_EQ(roots[0]->name, "T");
    EXPECT_EQ(roots[0]->container + roots[0]->containerId, "");
    EXPECT_EQ(roots[0]->branch, CCDMBranch::kBoth) << "the default when the file began";
    EXPECT_EQ(roots[1]->name, "U");
    EXPECT_EQ(roots[1]->branch, CCDMBranch::kSpec);
    EXPECT_EQ(roots[0]->conditions, nullptr);
    EXPECT_THAT(read.lines, IsEmpty());
}

TEST(MapFile, kinds_of_translators) {
    const OfferedFunctions offered;
    const std::string linkage =
        "<Linkage><DLL>recording.dll</DLL></Linkage><Class Name='A'>"
        "<Attribute Name='X'>";
    const std::string end = "</Attribute></Class>";
    struct Row {
        const char* element;
        const char* dump;
    };
    const Row scalars[] = {
        {"<Translate Type='Map'>\n\ta.b \n</Translate>",
         "\t<Translate Type=\"Map\">a.b</Translate>\n"},
        {"<Translate Type='Map'><Map> a </Map></Translate>",
         "\t<Translate Type=\"Map\">a</Translate>\n"},
        {"<Translate Type='Map'>a<Map>b</Map></Translate>",
         "\t<Translate Type=\"Map\">b</Translate>\n"},
        {"<Translate Type='Map'>a\n<NodeAttributes/>\n</Translate>",
         "\t<Translate Type=\"Map\">a</Translate>\n"},
        {"<Translate Type='Map'>a<!-- -->b</Translate>",
         "\t<Translate Type=\"Map\">b</Translate>\n"},
        {"<Translate Type='Map'>a\t</Translate>", "\t<Translate Type=\"Map\">a\t</Translate>\n"},
        {"<Translate Type='Map'/>", "\t<Translate Type=\"Map\"></Translate>\n"},
        {"<Translate Type='Function'> CT Scalar\n\t<NodeAttributes/>\n</Translate>",
         "\t<Translate Type=\"Func\">CTScalar</TranslateArray>\n"},
        {"<Translate Type='Function'><Function>CTScalar</Function></Translate>",
         "\t<Translate Type=\"Func\">CTScalar</TranslateArray>\n"},
        {"<Translate Type='Dummy'> x </Translate>", "\t<Translate Type=\"Dummy\">x</Translate>\n"},
    };
    for (const Row& row : scalars) {
        ReadMap read(Map(linkage + row.element + end));
        EXPECT_THAT(DumpsOf(read.OfX()), ElementsAre(row.dump)) << row.element;
        EXPECT_THAT(read.lines, IsEmpty()) << row.element;
        EXPECT_THAT(read.ArraysOfX(), IsEmpty()) << row.element;
    }
    const Row arrays[] = {
        {"<TranslateArray Type='Map'> *\n</TranslateArray>",
         "\t<TranslateArray Type=\"Map\">*</TranslateArray>"},
        {"<TranslateArray Type='Map'><Map>*</Map></TranslateArray>",
         "\t<TranslateArray Type=\"Map\">*</TranslateArray>"},
        {"<TranslateArray Type='ArrayFunc'>\nCT\tArray</TranslateArray>",
         "\t<TranslateArray Type=\"ArrayFunc\">CTArray</TranslateArray>\n"},
        {"<TranslateArray Type='Function'>CTScalar</TranslateArray>",
         "\t<TranslateArray Type=\"Func\">CTScalar</TranslateArray>\n"},
        {"<TranslateArray Type='Function'>\n<Map>a.*</Map>\n<Function>CTScalar</Function>\n"
         "</TranslateArray>",
         "\t<TranslateArray Type=\"Func\">a.* CTScalar</TranslateArray>\n"},
    };
    for (const Row& row : arrays) {
        ReadMap read(Map(linkage + row.element + end));
        EXPECT_THAT(DumpsOf(read.ArraysOfX()), ElementsAre(row.dump)) << row.element;
        EXPECT_THAT(read.lines, IsEmpty()) << row.element;
        EXPECT_THAT(read.OfX(), IsEmpty()) << row.element;
    }
}

TEST(MapFile, other_types_create_nothing) {
    for (const char* element :
         {"<Translate Type='map'>a</Translate>", "<Translate Type='ArrayFunc'>CTx</Translate>",
          "<Translate Type='Func'>CTx</Translate>",
          "<TranslateArray Type='Dummy'>x</TranslateArray>",
          "<Translate Type='Map '>a</Translate>"}) {
        ReadMap read(InX(element));
        EXPECT_TRUE(read.done) << element;
        EXPECT_THAT(read.OfX(), IsEmpty()) << element;
        EXPECT_THAT(read.ArraysOfX(), IsEmpty()) << element;
        EXPECT_THAT(read.lines, IsEmpty()) << element;
    }
    ReadMap read(InX("<Translate Type='Map'>a</Translate><Translate Type='none'>b</Translate>"));
    EXPECT_THAT(DumpsOf(read.OfX()), ElementsAre("\t<Translate Type=\"Map\">a</Translate>\n"))
        << "its text is no body of the one before";
}

TEST(MapFile, type_is_needed) {
    for (const char* element : {"Translate", "TranslateArray"}) {
        const std::string name(element);
        for (const char* attribute : {"", " Type=''", " Branch='Calc'"}) {
            ReadMap read(InX("\n<" + name + attribute + ">a<Map>b</Map></" + name +
                             "><Translate Type='Map'>c</Translate>"));
            EXPECT_TRUE(read.done);
            EXPECT_THAT(DumpsOf(read.OfX()),
                        ElementsAre("\t<Translate Type=\"Map\">c</Translate>\n"));
            EXPECT_THAT(
                read.lines,
                ElementsAre("  XML Parser Severe Error: file " + read.folder.File("map.xml") +
                                " at line 4, No Type attribute specified for " + name,
                            Warning(read, 4, "unknown element <" + name + ">")));
        }
    }
}

TEST(MapFile, unknown_functions_are_told) {
    const std::string longest = "CT" + std::string(60, 'n');
    ReadMap read(
        InX("<Translate Type='Function'>CT None</Translate>"
            "<Translate Type='Function'><Function>" +
            longest +
            "</Function></Translate>"
            "<TranslateArray Type='Function'>CTNone</TranslateArray>"
            "<TranslateArray Type='ArrayFunc'>CTNone</TranslateArray>"
            "<TranslateArray Type='ArrayFunc'> </TranslateArray>"));
    EXPECT_THAT(read.lines,
                ElementsAre(" Converter Semantic function: CTNone not found",
                            " Converter Semantic function: " + longest.substr(0, 40) + " not found",
                            " Filter Semantic function: CTNone not found",
                            " Filter Semantic function: CTNone not found"));
    EXPECT_THAT(read.OfX(), SizeIs(2));
    EXPECT_THAT(read.ArraysOfX(), SizeIs(3));
}

TEST(MapFile, branch_and_translate_name_have_defaults) {
    struct Row {
        const char* attributes;
        const char* name;
        CCDMBranch branch;
    };
    const Row rows[] = {{"", "T", CCDMBranch::kSpec},
                        {"Branch='Calc'", "T", CCDMBranch::kCalc},
                        {"Branch='Both' TranslateName='U'", "U", CCDMBranch::kBoth},
                        {"Branch='none' TranslateName=''", "T", CCDMBranch::kSpec}};
    for (const Row& row : rows) {
        ReadMap read(
            Map("<DefaultBranch>Spec</DefaultBranch><Class Name='A'>"
                "<Attribute Name='X'><Translate Type='Map' " +
                std::string(row.attributes) + "/></Attribute></Class>"));
        ASSERT_THAT(read.OfX(), SizeIs(1)) << row.attributes;
        EXPECT_EQ(read.OfX()[0]->name, row.name) << row.attributes;
        EXPECT_EQ(read.OfX()[0]->branch, row.branch) << row.attributes;
    }
    ReadMap none(
        Map("<DefaultBranch>None</DefaultBranch><Class Name='A'><Attribute Name='X'>"
            "<Translate Type='Map'/></Attribute></Class>"));
    EXPECT_EQ(none.OfX().at(0)->branch, CCDMBranch::kUnspecified);
}

TEST(MapFile, containers_are_those_of_the_attribute_element) {
    ReadMap read(
        Map("<Class Name='A'>"
            "<Attribute Name='X' Container='C.D' ContainerId='i'>"
            "<Translate Type='Map'/><TranslateArray Type='Map'/></Attribute>"
            "<Attribute Name='X'><Translate Type='Map'/></Attribute></Class>"));
    ASSERT_THAT(read.OfX(), SizeIs(2));
    EXPECT_EQ(read.OfX()[0]->container, "C.D");
    EXPECT_EQ(read.OfX()[0]->containerId, "i");
    EXPECT_EQ(read.ArraysOfX().at(0)->container, "C.D");
    EXPECT_EQ(read.OfX()[1]->container, "");
    EXPECT_EQ(read.OfX()[1]->containerId, "");
}

TEST(MapFile, two_elements_of_one_attribute_are_ambiguous_only_when_chosen) {
    ReadMap read(
        Map("<Class Name='A'><Attribute Name='X'><Translate Type='Map'>a</Translate>"
            "</Attribute><Attribute Name='X'><Translate Type='Map'>b</Translate>"
            "</Attribute></Class>"));
    EXPECT_THAT(read.lines, IsEmpty());
    const Levels levels("A:a/:X");
    const CCDMTranslator* chosen = FindTranslator(
        "T", levels.Path(), read.Attribute("A", "X")->translators, nullptr, BranchRequest::kCalc);
    EXPECT_EQ(chosen, read.OfX()[0]);
    EXPECT_THAT(read.log.Lines(), ElementsAre("Duplicate translators: Class , Attribute X, "
                                              "Container <blank>, ContainerID <blank>"));
}

TEST(MapFile, node_attributes_are_compiled) {
    ReadMap read(
        InX("<Translate Type='Dummy'><NodeAttributes>"
            "<Attribute Name='id'>(id)</Attribute>"
            "<Attribute Name='value'>'\"VLLE\"</Attribute>"
            "<Attribute Name='uom'>a<!-- -->.b</Attribute>"
            "<Attribute Name='bad'>a[b</Attribute>"
            "<Attribute Name='twice'>a</Attribute><Attribute Name='twice'>b</Attribute>"
            "</NodeAttributes></Translate><Translate Type='Map'>c</Translate>"));
    ASSERT_THAT(read.OfX(), SizeIs(2));
    std::map<std::string, std::string> described;
    for (const auto& [name, path] : read.OfX()[0]->nodeAttributes)
        described[name] = Describe(*path);
    EXPECT_THAT(described,
                ElementsAre(std::pair("id", "\"\"(\"id\")"), std::pair("twice", "\"b\""),
                            std::pair("uom", "\"a\".\"b\""), std::pair("value", "'\"VLLE\"")));
    EXPECT_TRUE(read.OfX()[0]->nodeAttributes.at("value")->IsLiteral());
    EXPECT_THAT(read.OfX()[1]->nodeAttributes, IsEmpty());
    EXPECT_THAT(read.lines, ElementsAre("Parse error, ] expected in: a[b"));
    EXPECT_EQ(DumpOf(read.OfX()[0]), "\t<Translate Type=\"Dummy\"></Translate>\n");
}

TEST(MapFile, conditions_and_variables_are_shared_before_and_behind) {
    ReadMap read(
        InX("<Translate Type='Map'>a</Translate>"
            "<Condition Var='v'>1</Condition><SetVar Var='s'>x<!-- -->y</SetVar>"
            "<Translate Type='Map'>b</Translate><TranslateArray Type='Map'>c"
            "</TranslateArray><Condition Var='w'> 2 </Condition>"
            "<SetVar Var='t'>z</SetVar>"));
    ASSERT_THAT(read.OfX(), SizeIs(2));
    ASSERT_THAT(read.ArraysOfX(), SizeIs(1));
    const CCDMTranslator& first = *read.OfX()[0];
    ASSERT_NE(first.conditions, nullptr);
    EXPECT_EQ(TextOf(first.conditions->pairs), "v=1;w= 2 ;");
    ASSERT_NE(first.setVars, nullptr);
    EXPECT_EQ(TextOf(first.setVars->pairs), "s=xy;") << "a second one is not recorded";
    for (const CCDMTranslator* other : {read.OfX()[1], read.ArraysOfX()[0]}) {
        EXPECT_EQ(other->conditions, first.conditions);
        EXPECT_EQ(other->setVars, first.setVars);
    }
    EXPECT_THAT(read.lines, IsEmpty());
}

TEST(MapFile, conditions_belong_to_one_element) {
    ReadMap read(
        Map("<Class Name='A'><Attribute Name='X'><Condition Var='v'>1</Condition>"
            "<Translate Type='Map'/></Attribute><Attribute Name='X'>"
            "<Translate Type='Map'/><SetVar Var='s'/></Attribute></Class>"));
    ASSERT_THAT(read.OfX(), SizeIs(2));
    EXPECT_NE(read.OfX()[0]->conditions, nullptr);
    EXPECT_EQ(read.OfX()[0]->setVars, nullptr);
    EXPECT_EQ(read.OfX()[1]->conditions, nullptr);
    ASSERT_NE(read.OfX()[1]->setVars, nullptr);
    EXPECT_EQ(TextOf(read.OfX()[1]->setVars->pairs), "s=;");
}

// ---- enumerations

std::string TableOf(const EnumMaps& maps, const char* translate_name) {
    const auto found = maps.find(translate_name);
    if (found == maps.end()) return "(none)";
    EXPECT_EQ(found->second->name, translate_name);
    std::string text;
    for (const auto& [application, neutral] : found->second->entries) {
        text += application + ">" + neutral + ";";
    }
    return text;
}

TEST(MapFile, enumeration_at_the_root) {
    const ReadMap read(
        Map("<Enumeration Name='Kinds'><Option Name='n1' AppName='a'/>"
            "<Option Name='n2' AppName='b'/><Option Name='n3' AppName='a'/>"
            "</Enumeration><Enumeration Name='Kinds' TranslateName='U'/>"));
    const EnumMaps& maps = read.library.FindEnumeration("Kinds")->enumMaps;
    EXPECT_EQ(TableOf(maps, "T"), "a>n1;b>n2;") << "the first of a name stays";
    EXPECT_EQ(TableOf(maps, "U"), "");
    EXPECT_THAT(read.lines, IsEmpty());
}

TEST(MapFile, later_enumeration_takes_the_place_of_an_earlier_one) {
    const ReadMap read(
        Map("<Enumeration Name='Kinds'><Option Name='n1' AppName='a'/>"
            "</Enumeration><Enumeration Name='Kinds' TranslateName='T'>"
            "<Option Name='n2' AppName='b'/></Enumeration>"));
    EXPECT_EQ(TableOf(read.library.FindEnumeration("Kinds")->enumMaps, "T"), "b>n2;");
}

TEST(MapFile, unknown_enumeration_is_told_and_left_out) {
    const ReadMap read(
        Map("<Enumeration Name='None'><Option Name='n' AppName='a'/><x/>"
            "</Enumeration><Enumeration/>"));
    EXPECT_TRUE(read.done);
    EXPECT_THAT(read.lines,
                ElementsAre(kMistake, "Enum None not found", kMistake, "Enum  not found"));
    EXPECT_EQ(read.library.FindEnumeration("None"), nullptr);
}

TEST(MapFile, enumeration_of_an_attribute) {
    ReadMap read(
        Map("<Class Name='A'><Attribute Name='E'><Enumeration Name='Kinds'>"
            "<Option Name='n1' AppName='a'/></Enumeration>"
            "<Enumeration Name='Other'><Option Name='n' AppName='a'/></Enumeration>"
            "</Attribute></Class>"));
    EXPECT_EQ(TableOf(read.Attribute("A", "E")->enumMaps, "T"), "a>n1;");
    EXPECT_THAT(read.library.FindEnumeration("Kinds")->enumMaps, IsEmpty());
    EXPECT_THAT(read.lines, ElementsAre(kMistake,
                                        "Enum Other for Attribute E does not match Attribute Enum "
                                        "name (Kinds)"));
}

TEST(MapFile, only_enumeration_attributes_have_enumerations) {
    ReadMap read(InX("<Enumeration Name='Kinds'/>"));
    EXPECT_THAT(read.lines, ElementsAre(Warning(read, 3, "unknown element <Enumeration>")));
    EXPECT_THAT(read.Attribute("A", "X")->enumMaps, IsEmpty());
}

// ---- mistakes

TEST(MapFile, unknown_classes_and_attributes_are_told_and_left_out) {
    const std::string inside = "<Attribute Name='X'><Translate/></Attribute><unknown/>";
    ReadMap read(Map("<Class Name='None'>" + inside + "</Class><Class>" + inside +
                     "</Class><Class Name='A'><Attribute Name='Y'><Translate/><x/></Attribute>"
                     "<Attribute Name='Inherited'><Translate Type='Map'/></Attribute>"
                     "<Attribute/><Attribute Name='X'><Translate Type='Map'/></Attribute></Class>"
                     "<Class Name='Base'><Attribute Name='Inherited'><Translate Type='Map'/>"
                     "</Attribute></Class>"));
    EXPECT_TRUE(read.done);
    EXPECT_THAT(read.lines,
                ElementsAre(kMistake, "Class None not found", kMistake, "Class  not found",
                            kMistake, "Attribute Y in class A not found", kMistake,
                            "Attribute Inherited in class A not found", kMistake,
                            "Attribute  in class A not found"));
    EXPECT_THAT(read.OfX(), SizeIs(1));
    EXPECT_THAT(read.Attribute("Base", "Inherited")->translators, SizeIs(1));
    EXPECT_EQ(read.library.FindClass("None"), nullptr) << "a map creates no classes";
    EXPECT_EQ(read.library.FindClass("A")->FindAttribute("Y"), nullptr);
}

TEST(MapFile, unknown_elements_warn_where_it_is_told) {
    struct Row {
        std::string body;
        bool warns;
    };
    const auto in_x = [](const std::string& inside) {
        return "<Class Name='A'><Attribute Name='X'>" + inside + "</Attribute></Class>";
    };
    const Row rows[] = {
        {"<q/>", true},
        {"<DefaultBranch>Both<q/></DefaultBranch>", true},
        {"<Linkage><q/></Linkage>", true},
        {"<Linkage><DLL>fixtop.dll<q/></DLL></Linkage>", false},
        {"<TopNode FunctionName='x'><q/></TopNode>", false},
        {"<Translate Type='Map'><q/></Translate>", true},
        {"<TranslateName>T<q/></TranslateName>", false},
        {"<Class Name='A'><q/></Class>", true},
        {"<Include Mapfile='map.xml'><q/></Include>", false},
        {"<Enumeration Name='Kinds'><q/></Enumeration>", true},
        {"<Log><q/></Log>", false},
        {"<Author><q/></Author>", false},
        {in_x("<q/>"), true},
        {in_x("<TranslateArray Type='Map'><q/></TranslateArray>"), true},
        {in_x("<Translate Type='Map'><NodeAttributes><q/></NodeAttributes></Translate>"), true},
        {in_x("<Translate Type='Map'><Function/></Translate>"), true},
        {in_x("<Condition Var='v'>1<q/></Condition>"), false},
        {in_x("<SetVar Var='v'>1<q/></SetVar>"), false},
    };
    for (const Row& row : rows) {
        const ReadMap read(Map("\n" + row.body));
        EXPECT_TRUE(read.done) << row.body;
        const char* name = row.body.find("<Function/>") != std::string::npos ? "Function" : "q";
        if (row.warns) {
            EXPECT_THAT(read.lines, ElementsAre(Warning(
                                        read, 4, std::string("unknown element <") + name + ">")))
                << row.body;
        } else {
            EXPECT_THAT(read.lines, IsEmpty()) << row.body;
        }
    }
}

TEST(MapFile, unexpected_attributes_warn) {
    const char* const elements[] = {"Class", "TopNode", "Include", "Enumeration"};
    for (const char* element : elements) {
        const ReadMap read(Map("<" + std::string(element) +
                               " Name='A' FunctionName='x' Mapfile='map.xml' q='1'/>"));
        EXPECT_THAT(read.lines, testing::Contains(Warning(
                                    read, 3, "unexpected attribute in " + std::string(element))))
            << element;
    }
    const std::pair<const char*, const char*> inner[] = {
        {"<Translate Type='Map' Name='x'/>", "Translate"},
        {"<TranslateArray Type='Map' Branch='Calc' TranslateName='T' q='1'/>", "TranslateArray"},
        {"<Condition Var='v' q='1'>1</Condition>", "Condition"},
        {"<SetVar Name='v'>1</SetVar>", "SetVar"},
    };
    for (const auto& [element, name] : inner) {
        const ReadMap read(InX(element));
        EXPECT_THAT(read.lines,
                    ElementsAre(Warning(read, 3, std::string("unexpected attribute in ") + name)))
            << element;
    }
    EXPECT_THAT(ReadMap(InX("", "Container='c' ContainerId='i'")).lines, IsEmpty());
    EXPECT_THAT(ReadMap(InX("", "Type='Real'")).lines, SizeIs(1));
}

TEST(MapFile, warnings_are_of_level_5) {
    ReadMap read;
    SetLogLevel(4);
    read.Read(Map("<q/>"));
    EXPECT_THAT(read.lines, IsEmpty());
    SetLogLevel(5);
    read.Read(Map("<q/>"));
    EXPECT_THAT(read.lines, SizeIs(1));
}

TEST(MapFile, other_root_elements_are_warned_of_and_skipped) {
    for (const char* root : {"Other", "ccdmmapfile", "QZClassLibrary"}) {
        const std::string name(root);
        const ReadMap read("<" + name +
                           "><CCDMMapFile><TranslateName>U</TranslateName>"
                           "</CCDMMapFile></" +
                           name + ">");
        EXPECT_TRUE(read.done) << root;
        EXPECT_THAT(read.lines, ElementsAre(Warning(read, 1, "unknown element <" + name + ">")));
        EXPECT_EQ(read.library.defaultTranslateName, "T");
    }
}

// ---- files

TEST(MapFile, messages_about_files) {
    {
        ReadMap read("", true);
        EXPECT_FALSE(ReadMapFile(read.library, "none.xml"));
        EXPECT_THAT(read.log.Lines(), ElementsAre("  Failed to find Convert Resource: none.xml"));
        EXPECT_FALSE(ReadMapFile(read.library, std::string(200, 'n')));
        EXPECT_EQ(read.log.Lines().at(1),
                  "  Failed to find Convert Resource: " + std::string(128, 'n'));
    }
    {
        ReadMap read("", false);
        EXPECT_FALSE(ReadMapFile(read.library, "none.xml"));
        EXPECT_THAT(read.log.Lines(),
                    ElementsAre("  Failed to find Convert File or Resource: none.xml"));
    }
    {
        const ReadMap read(Map(""));
        EXPECT_THAT(read.log.Lines(true), ElementsAre("  Using local Convert File: " +
                                                      read.folder.File("map.xml").substr(0, 128)));
        SetLogLevel(6);
        CCDMClassLibrary again;
        read.log.Restart();
        EXPECT_TRUE(ReadMapFile(again, "map.xml"));
        EXPECT_THAT(read.log.Lines(true), IsEmpty()) << "of level 7";
    }
}

TEST(MapFile, resource_stands_in_for_a_file) {
    static constexpr CompiledResource kRows[] = {
        {"map_in_resources.xml", "<CCDMMapFile><TranslateName>R</TranslateName></CCDMMapFile>"},
        {"map_broken.xml", "<CCDMMapFile>"}};
    static CompiledResources table(kRows);
    RegisterResources(table);
    ReadMap read;
    EXPECT_TRUE(ReadMapFile(read.library, "map_in_resources.xml"));
    EXPECT_EQ(read.library.defaultTranslateName, "R");
    EXPECT_FALSE(ReadMapFile(read.library, "map_broken.xml"));
    EXPECT_EQ(read.log.Lines().back(), "  Failed parsing Convert Resource: map_broken.xml");
    read.folder.Write("map_in_resources.xml", Map("<TranslateName>F</TranslateName>"));
    read.library.mapFiles.clear();
    EXPECT_TRUE(ReadMapFile(read.library, "map_in_resources.xml"));
    EXPECT_EQ(read.library.defaultTranslateName, "F") << "a file goes before the resource";
}

TEST(MapFile, document_types_are_refused_with_their_line) {
    ReadMap read;
    read.Read("<!-- a map -->\n<!DOCTYPE CCDMMapFile [<!ATTLIST Log Level CDATA '9'>]>\n" +
              Map("<TranslateName>F</TranslateName>"));
    EXPECT_FALSE(read.done);
    EXPECT_THAT(read.lines, testing::ElementsAre(
                                "  XML Parser Severe Error: file " + read.folder.File("map.xml") +
                                    " at line 2, a document type declaration is not allowed; "
                                    "expected plain elements only",
                                "  Failed parsing Convert File: map.xml"));
    EXPECT_NE(read.library.defaultTranslateName, "F");
}

TEST(MapFile, broken_files_fail_and_keep_what_was_read) {
    const std::string start = "<CCDMMapFile><TranslateName>Read</TranslateName>";
    std::string deep = "<CCDMMapFile>";
    for (int i = 0; i < 100000; ++i) deep += "<x>";
    std::string deep_known = start;
    for (int i = 0; i < 100000; ++i) deep_known += "<Linkage>";
    const std::string bomb =
        "<!DOCTYPE a [<!ENTITY x 'xx'><!ENTITY y '&x;&x;'>]><CCDMMapFile>&y;</CCDMMapFile>";
    for (const std::string& text : {start, start + "<Class></CCDMMapFile>", std::string("no xml"),
                                    start + "&none;</CCDMMapFile>", deep, deep_known, bomb}) {
        ReadMap read;
        read.Read(text);
        EXPECT_FALSE(read.done) << text.substr(0, 80);
        ASSERT_FALSE(read.lines.empty());
        EXPECT_EQ(read.lines.back(), "  Failed parsing Convert File: map.xml");
        EXPECT_THAT(read.lines[read.lines.size() - 2],
                    StartsWith("  XML Parser Severe Error: file " + read.folder.File("map.xml") +
                               " at line "));
        if (text.starts_with(start)) {
            EXPECT_EQ(read.library.defaultTranslateName, "Read") << text.substr(0, 80);
        }
    }
}

TEST(MapFile, trouble_with_the_reader_is_told) {
    using Trouble = TroubledXmlReader::Trouble;
    for (const auto& [trouble, line] : {
             std::pair{Trouble::kNotMade, "  Unable to create SAX2 reader for file map.xml"},
             {Trouble::kNotAttached, "  Unable to attach SAX2 handler for file map.xml"},
             {Trouble::kNotFound, "  Unable to locate Convert File: map.xml"},
         }) {
        const TroubledXmlReader reader(trouble);
        const ReadMap read(Map(""));
        EXPECT_FALSE(read.done) << line;
        EXPECT_THAT(read.lines, ElementsAre(line));
    }
}

// ---- includes

TEST(MapFile, include_is_read_in_place) {
    const OfferedFunctions offered;
    ReadMap read;
    read.folder.Write("inner.xml", Map("<Translate Type='Function'>CTScalar</Translate>"
                                       "<Class Name='A'><Attribute Name='X'>"
                                       "<Translate Type='Map'>inner</Translate></Attribute></Class>"
                                       "<TranslateName>Inner</TranslateName>"));
    read.Read(
        Map("<Linkage><DLL>recording.dll</DLL></Linkage>"
            "<DefaultBranch>Spec</DefaultBranch><Include Mapfile='inner.xml'/>"
            "<Class Name='A'><Attribute Name='X'><Translate Type='Map'>outer</Translate>"
            "</Attribute></Class>"));
    EXPECT_TRUE(read.done);
    EXPECT_THAT(read.library.mapFiles, ElementsAre("map.xml", "inner.xml"));
    const auto translators = read.OfX();
    ASSERT_THAT(translators, SizeIs(2));
    EXPECT_EQ(translators[0]->name, "Inner") << "what the include said is in force behind it";
    EXPECT_EQ(translators[1]->name, "T");
    EXPECT_EQ(translators[1]->branch, CCDMBranch::kSpec);
    const auto roots = read.Translators(read.library.rootTranslators);
    ASSERT_THAT(roots, SizeIs(1));
    EXPECT_EQ(roots[0]->branch, CCDMBranch::kBoth) << "as at the root of the first file";
    EXPECT_THAT(read.lines, IsEmpty());
}

TEST(MapFile, included_file_tells_its_own_lines) {
    ReadMap read;
    read.folder.Write("inner.xml", Map("\n\n<q/>"));
    read.Read(Map("<Include Mapfile='inner.xml'/>\n<q/>"));
    EXPECT_THAT(read.lines,
                ElementsAre("  XML Parser Warning: file " + read.folder.File("inner.xml") +
                                " at line 5, unknown element <q>",
                            Warning(read, 4, "unknown element <q>")));
}

TEST(MapFile, file_included_twice_is_read_once) {
    ReadMap read;
    read.folder.Write("inner.xml", Map("<Class Name='A'><Attribute Name='X'>"
                                       "<Translate Type='Map'/></Attribute></Class>"));
    read.Read(Map("<Include Mapfile='inner.xml'/><Include Mapfile='inner.xml'/>"));
    EXPECT_THAT(read.OfX(), SizeIs(1));
    EXPECT_TRUE(ReadMapFile(read.library, "inner.xml"));
    EXPECT_THAT(read.OfX(), SizeIs(1));
}

TEST(MapFile, include_circle_ends) {
    ReadMap read;
    read.folder.Write("inner.xml", Map("<Include Mapfile='map.xml'/><Include Mapfile='inner.xml'/>"
                                       "<TranslateName>Inner</TranslateName>"));
    read.Read(Map("<Include Mapfile='inner.xml'/>"));
    EXPECT_TRUE(read.done);
    EXPECT_THAT(read.lines, IsEmpty());
    EXPECT_EQ(read.library.defaultTranslateName, "Inner");
}

TEST(MapFile, include_chain_is_bounded) {
    ReadMap read;
    for (int i = 0; i < 100; ++i) {
        read.folder.Write(std::to_string(i) + ".xml",
                          Map("<Include Mapfile='" + std::to_string(i + 1) + ".xml'/>"));
    }
    EXPECT_TRUE(ReadMapFile(read.library, "0.xml"));
    EXPECT_THAT(read.log.Lines(), ElementsAre("  Failed parsing Convert File: 65.xml"));
    EXPECT_THAT(read.library.mapFiles, SizeIs(65));
}

TEST(MapFile, number_of_files_is_bounded) {
    ReadMap read;
    SetLogLevel(0);
    read.library.mapFiles.assign(4095, "read before");
    read.folder.Write("last.xml", Map("<Include Mapfile='more.xml'/>"));
    read.folder.Write("more.xml", Map("<TranslateName>More</TranslateName>"));
    EXPECT_TRUE(ReadMapFile(read.library, "last.xml"));
    EXPECT_EQ(read.library.defaultTranslateName, "T");
    EXPECT_THAT(read.log.Lines(), ElementsAre("  Failed parsing Convert File: more.xml"));
}

TEST(MapFile, failing_include_is_passed_over) {
    ReadMap read;
    read.folder.Write("bad.xml", "<CCDMMapFile>");
    read.Read(
        Map("<Include Mapfile='none.xml'/><Include Mapfile='bad.xml'/><Include/>"
            "<TranslateName>Behind</TranslateName>"));
    EXPECT_TRUE(read.done);
    EXPECT_EQ(read.library.defaultTranslateName, "Behind");
    ASSERT_THAT(read.lines, SizeIs(3));
    EXPECT_EQ(read.lines[0], "  Failed to find Convert Resource: none.xml");
    EXPECT_EQ(read.lines[2], "  Failed parsing Convert File: bad.xml");
}

TEST(MapFile, includes_never_leave_the_search_folders) {
    ReadMap read;
    const std::string secret = Map("<TranslateName>Secret</TranslateName>");
    read.folder.Write("secret.xml", secret);
    std::filesystem::create_directories(read.folder.Path() / "inner" / "sub");
    read.folder.Write("inner/sub/near.xml", Map("<DefaultBranch>Calc</DefaultBranch>"));
    read.folder.Write("inner/top.xml",
                      Map("<Include Mapfile='../secret.xml'/><Include Mapfile='..\\secret.xml'/>"
                          "<Include Mapfile='sub/../../secret.xml'/><Include Mapfile='" +
                          read.folder.File("secret.xml") + "'/><Include Mapfile='sub/near.xml'/>"));
    OpenErrorLog(read.folder.File("lines.log").c_str());
    std::filesystem::current_path(read.folder.Path() / "inner");
    EXPECT_TRUE(ReadMapFile(read.library, "top.xml"));
    std::filesystem::current_path(read.folder.Path());
    EXPECT_EQ(read.library.defaultTranslateName, "T");
    EXPECT_EQ(read.library.defaultBranch, CCDMBranch::kCalc) << "a folder below is within";
    const std::string missing = "  Failed to find Convert Resource: ";
    EXPECT_THAT(read.log.Lines(),
                ElementsAre(missing + "../secret.xml", missing + "..\\secret.xml",
                            missing + "sub/../../secret.xml",
                            missing + read.folder.File("secret.xml").substr(0, 128)));
    read.library.mapFiles.clear();
    EXPECT_TRUE(ReadMapFile(read.library, read.folder.File("secret.xml")));
    EXPECT_EQ(read.library.defaultTranslateName, "Secret") << "a caller may name any file";
}

TEST(MapFile, many_translators_of_one_attribute_are_read_quickly) {
    std::string inside;
    for (int i = 0; i < 50000; ++i) inside += "<Translate Type='Dummy'/>";
    ReadMap read(InX(inside + "<Condition Var='v'>1</Condition>"));
    EXPECT_THAT(read.Attribute("A", "X")->translators, SizeIs(50000));
    ASSERT_NE(read.OfX().front()->conditions, nullptr);
    EXPECT_EQ(read.OfX().front()->conditions, read.OfX().back()->conditions);
}

}  // namespace

}  // namespace fixtop
