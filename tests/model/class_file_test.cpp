// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fake_unit_source.h"
#include "model/attribute_walker.h"
#include "model/class_library.h"
#include "platform/resources.h"
#include "support/log_lines.h"
#include "support/temporary_folder.h"
#include "support/troubled_xml_reader.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

std::string Library(const std::string& body) {
    return "<?xml version='1.0'?>\n<QZClassLibrary Name='n' Format='f'>" + body +
           "</QZClassLibrary>";
}

// One attribute X of class A, with what stands inside of it.
std::string WithAttribute(const std::string& attributes, const std::string& inside = "") {
    return Library("<ClassAttributes Name='A'><Attribute Name='X' " + attributes + ">" + inside +
                   "</Attribute></ClassAttributes>");
}

// A library read from one text; the log of the reading, "Using local" left out.
struct ReadLibrary {
    explicit ReadLibrary(const std::string& text) : log(folder) {
        folder.Write("lib.xml", text);
        done = library.ReadClassFile("lib.xml");
        lines = log.Lines();
    }
    const CCDMAttribute* X() const {
        const CCDMClass* record = library.FindClass("A");
        return record == nullptr ? nullptr : record->FindAttribute("X");
    }
    TemporaryFolder folder;
    LogLines log;
    CCDMClassLibrary library;
    bool done = false;
    std::vector<std::string> lines;
};

std::vector<std::string> NamesOf(const CCDMClass& record) {
    std::vector<std::string> names;
    for (const CCDMAttribute* attribute : record.attributes) names.push_back(attribute->name);
    return names;
}

std::vector<std::string> TextsOf(const std::vector<FIValue>& values) {
    std::vector<std::string> texts;
    for (const FIValue& value : values) texts.push_back(value.ToText());
    return texts;
}

TEST(ClassFile, class_and_its_superclasses) {
    const ReadLibrary read(
        Library("<Class Name='A'><Superclass>B</Superclass><Superclass>C</Superclass>"
                "<Superclass>GenericClass</Superclass><Superclass>DataSet</Superclass>"
                "<Superclass>genericclass</Superclass><Superclass/></Class>"
                "<Class Name='R'><Superclass>GenericClass</Superclass></Class>"));
    EXPECT_TRUE(read.done);
    EXPECT_THAT(read.library.FindClass("A")->superclasses, ElementsAre("B", "C", "genericclass"));
    EXPECT_THAT(read.library.FindClass("R")->superclasses, IsEmpty());
    EXPECT_EQ(read.library.FindClass("B"), nullptr) << "a superclass alone makes no class";
    EXPECT_THAT(read.lines, IsEmpty());
}

TEST(ClassFile, split_superclass_text_names_two) {
    const ReadLibrary read(
        Library("<Class Name='A'><Superclass>B<!-- and -->C</Superclass></Class>"));
    EXPECT_THAT(read.library.FindClass("A")->superclasses, ElementsAre("B", "C"));
}

TEST(ClassFile, enumeration_options_and_closedness) {
    const ReadLibrary read(Library(
        "<Enumeration Name='E' EnumIsClosed='1'><Option Name='b' IntegerValue='1'/>"
        "<Option Name='a'/><Option Name='b'/></Enumeration>"
        "<Enumeration Name='E' EnumIsClosed='0'><Option Name='c'/></Enumeration>"
        "<Enumeration Name='Open' EnumIsClosed='0'/><Enumeration Name='Text' EnumIsClosed='true'/>"
        "<Enumeration Name='Many' EnumIsClosed='10'/><Enumeration Name='Bare'/>"));
    EXPECT_THAT(read.library.FindEnumeration("E")->options, ElementsAre("a", "b", "c"));
    EXPECT_TRUE(read.library.FindEnumeration("E")->isClosed) << "never cleared";
    EXPECT_EQ(read.library.FindEnumeration("E")->library, &read.library);
    EXPECT_FALSE(read.library.FindEnumeration("Open")->isClosed);
    EXPECT_FALSE(read.library.FindEnumeration("Text")->isClosed);
    EXPECT_TRUE(read.library.FindEnumeration("Many")->isClosed) << "the first character counts";
    EXPECT_FALSE(read.library.FindEnumeration("Bare")->isClosed);
}

TEST(ClassFile, class_of_attributes_is_named_by_attribute_or_element) {
    const ReadLibrary read(
        Library("<ClassAttributes Name='A'><Attribute Name='x'/></ClassAttributes>"
                "<ClassAttributes Count='2'><ClassName>B</ClassName><Attribute Name='y'/>"
                "<ClassName>C</ClassName><Attribute Name='z'/></ClassAttributes>"
                "<ClassAttributes Name='D' Count='7'><ClassName>E</ClassName></ClassAttributes>"));
    EXPECT_THAT(NamesOf(*read.library.FindClass("A")), ElementsAre("x"));
    EXPECT_THAT(NamesOf(*read.library.FindClass("B")), ElementsAre("y"));
    EXPECT_THAT(NamesOf(*read.library.FindClass("C")), ElementsAre("z"));
    EXPECT_EQ(read.library.FindClass("B")->FindAttribute("y")->owner, read.library.FindClass("B"));
    EXPECT_NE(read.library.FindClass("D"), nullptr);
    EXPECT_NE(read.library.FindClass(""), nullptr) << "a missing name is the empty one";
    EXPECT_GE(read.library.FindClass("E")->attributes.capacity(), 7u);
}

TEST(ClassFile, count_is_read_as_a_number_and_never_trusted) {
    for (const char* count : {"2000000000", "-5", "many", "", "99999999999999999999"}) {
        const ReadLibrary read(Library("<ClassAttributes Count='" + std::string(count) +
                                       "'><ClassName>A</ClassName></ClassAttributes>"));
        EXPECT_TRUE(read.done) << count;
        EXPECT_LE(read.library.FindClass("A")->attributes.capacity(), 4096u) << count;
    }
}

TEST(ClassFile, attribute_type_and_multiplicity) {
    struct Row {
        const char* attributes;
        int type;
        bool array;
    };
    for (const Row& row :
         {Row{"Type='Real' Multiplicity='1'", 1, false}, Row{"Type='String'", 2, false},
          Row{"Type='Integer' Multiplicity='n'", 3, true},
          Row{"Type='Boolean' Multiplicity='0'", 4, true},
          Row{"Type='Enumeration' Multiplicity=''", 5, true},
          Row{"Type='Object' Multiplicity='1 '", 6, true}, Row{"Type='Float'", 0, false},
          Row{"Type='None'", 0, false}, Row{"", 0, false}}) {
        const ReadLibrary read(WithAttribute(row.attributes));
        ASSERT_NE(read.X(), nullptr) << row.attributes;
        EXPECT_EQ(static_cast<int>(read.X()->type), row.type) << row.attributes;
        EXPECT_EQ(read.X()->isArray, row.array) << row.attributes;
        EXPECT_EQ(read.X()->owner, read.library.FindClass("A"));
        EXPECT_EQ(read.X()->quantity, 0);
    }
}

TEST(ClassFile, attribute_names_its_class_or_enumeration) {
    EXPECT_EQ(ReadLibrary(WithAttribute("Type='Object'", "<ClassName>B</ClassName>")).X()->typeName,
              "B");
    const ReadLibrary read(WithAttribute("Type='Enumeration'", "<EnumName>E</EnumName>"));
    EXPECT_EQ(read.X()->typeName, "E");
    EXPECT_EQ(ReadLibrary(WithAttribute("Type='Real'")).X()->typeName, "");
    EXPECT_EQ(read.library.FindClass("B"), nullptr);
}

TEST(ClassFile, keys_in_custom_meta_data) {
    struct Row {
        const char* text;
        std::vector<std::string> keys;
    };
    const Row rows[] = {
        {"Key~A,B~", {"A", "B"}},
        {"Key~A", {"A"}},
        {"Ordered~Key~A~", {"A"}},
        {"Ordered~x~Key~A,B~Key~C~", {"A", "B", "C"}},
        {"Key~A~Key~B", {"A", "B"}},
        {"MyKey~A~", {}},
        {"KeyA~", {}},
        {"Key", {}},
        {"Keys~A~", {}},
        {"Key~~", {}},
        {"Key~", {}},
        {"key~A~", {}},
        {"Key~A,,B~", {"A", "", "B"}},
        {"xKey~A~Key~B~", {"B"}},
        {"Key~Key~", {"Key"}},
        {"", {}},
    };
    for (const Row& row : rows) {
        const ReadLibrary read(WithAttribute(
            "Type='Object'", "<CustomMetaData>" + std::string(row.text) + "</CustomMetaData>"));
        EXPECT_EQ(TextsOf(read.X()->keys), row.keys) << row.text;
    }
}

TEST(ClassFile, keys_in_custom_properties) {
    const ReadLibrary read(WithAttribute(
        "Type='Object'",
        "<CustomProperties><CustomProperty Name='Key' Value='A'/>"
        "<CustomProperty Name='Ordered' Value='1'/><CustomProperty Value='no name'/>"
        "<CustomProperty Name='Key' Value='B'/><CustomProperty Name='Key'/></CustomProperties>"
        "<CustomProperty Name='Key' Value='outside'/><CustomMetaData>Key~C~</CustomMetaData>"));
    EXPECT_THAT(TextsOf(read.X()->keys), ElementsAre("A", "B", "C"));
}

TEST(ClassFile, redefined_attribute_is_one_record_listed_twice) {
    const ReadLibrary read(
        Library("<ClassAttributes Name='A'><Attribute Name='X' Type='Real'/><Attribute Name='Y'/>"
                "</ClassAttributes><ClassAttributes Name='A'>"
                "<Attribute Name='X' Type='String' Multiplicity='n'/></ClassAttributes>"));
    EXPECT_THAT(NamesOf(*read.library.FindClass("A")), ElementsAre("X", "Y", "X"));
    EXPECT_EQ(read.library.FindClass("A")->attributes[0], read.X());
    EXPECT_EQ(read.library.FindClass("A")->attributes[2], read.X());
    EXPECT_EQ(read.X()->type, CCDMAttrType::kString);
    EXPECT_TRUE(read.X()->isArray);
}

TEST(ClassFile, unknown_elements_and_attributes_are_left_out_in_silence) {
    const ReadLibrary read(Library(
        "<QuantityTypeDefn Name='Pressure'><UOM Name='kPa'><Class Name='No'/></UOM>"
        "</QuantityTypeDefn><PrimaryGUID>1</PrimaryGUID><Header><Format/><Class Name='No'/>"
        "</Header><Class Name='A' CategoryName='c'><Description>d<Superclass>No</Superclass>"
        "</Description><Superclass>B</Superclass></Class><Superclass>No</Superclass>"
        "<ClassAttributes Name='A'><Attribute Name='X' CaseFixed='1'><DisplayName>n"
        "</DisplayName><DefaultValue>1</DefaultValue></Attribute></ClassAttributes>"
        "<Attribute Name='No'/><Option Name='No'/>text"));
    EXPECT_TRUE(read.done);
    EXPECT_EQ(read.library.FindClass("No"), nullptr);
    EXPECT_THAT(read.library.FindClass("A")->superclasses, ElementsAre("B"));
    EXPECT_THAT(NamesOf(*read.library.FindClass("A")), ElementsAre("X"));
    EXPECT_THAT(read.lines, IsEmpty());
}

TEST(ClassFile, log_element_names_file_and_level) {
    const ReadLibrary read(Library("<Log Level='8'/><Log File='other.log'/>"));
    EXPECT_TRUE(read.done);
    EXPECT_FALSE(read.folder.Has("other.log")) << "written with the first message";
    LogAtLevel("quiet", 6);
    EXPECT_FALSE(read.folder.Has("other.log")) << "a new file is back at the default level";
    LogMessage("line");
    EXPECT_TRUE(read.folder.Has("other.log"));
    const ReadLibrary level(Library("<Log Level='8'/>"));
    EXPECT_EQ(SetLogLevel(9), 8);
}

TEST(ClassFile, log_may_lie_in_a_folder_below) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    std::filesystem::create_directory(folder.Path() / "sub");
    folder.Write("lib.xml", Library("<Log File='sub/other.log' Level='-1'/>"));
    CCDMClassLibrary library;
    EXPECT_TRUE(library.ReadClassFile("lib.xml"));
    EXPECT_THAT(log.Lines(), IsEmpty());
    LogMessage("line");
    EXPECT_TRUE(folder.Has("sub/other.log"));
    EXPECT_EQ(SetLogLevel(9), -1);
}

// Opening a log empties the file that it names.
TEST(ClassFile, log_element_never_reaches_other_files) {
    const TemporaryFolder outside;
    outside.Write("precious.log", "kept");
    for (const std::string& name :
         {std::string("../") + outside.Path().filename().string() + "/precious.log",
          outside.File("precious.log"), std::string("sub/../../precious.log"),
          std::string("precious.txt"), std::string("precious.log.txt"), std::string("precious.LOG"),
          std::string("precious"), std::string("nul.log"), std::string("C:precious.log"),
          std::string("\\\\host\\share\\precious.log"), std::string()}) {
        const TemporaryFolder folder;
        const LogLines log(folder, 6);
        folder.Write("precious.txt", "kept");
        folder.Write("lib.xml", Library("<Log File='" + name + "'/><Class Name='A'/>"));
        CCDMClassLibrary library;
        EXPECT_TRUE(library.ReadClassFile("lib.xml")) << name;
        EXPECT_NE(library.FindClass("A"), nullptr) << name;
        LogMessage("behind");
        EXPECT_THAT(log.Lines(),
                    ElementsAre("  XML Parser Severe Error: file " + folder.File("lib.xml") +
                                    " at line 2, Log File " + name.substr(0, 128) +
                                    " is not used: give a name that ends in .log and stays below "
                                    "the working directory",
                                "behind"))
            << name;
        EXPECT_EQ(SetLogLevel(9), 6) << name << ": the present log goes on as it was";
        EXPECT_EQ(folder.Read("precious.txt"), "kept") << name;
    }
    EXPECT_EQ(outside.Read("precious.log"), "kept");
}

TEST(ClassFile, log_level_is_a_whole_number) {
    for (const char* text : {"", "many", "7x", "7.5", " 7", "0x7", "99999999999"}) {
        const TemporaryFolder folder;
        const LogLines log(folder, 6);
        folder.Write("lib.xml", Library("<Log Level='" + std::string(text) + "'/>"));
        CCDMClassLibrary library;
        EXPECT_TRUE(library.ReadClassFile("lib.xml")) << text;
        EXPECT_EQ(SetLogLevel(9), 6) << text;
        EXPECT_THAT(log.Lines(), ElementsAre("  XML Parser Severe Error: file " +
                                             folder.File("lib.xml") + " at line 2, Log Level " +
                                             text + " is not used: give a whole number"));
    }
}

TEST(ClassFile, quantity_comes_from_the_unit_source) {
    const OfferedFake fake;
    const TemporaryFolder folder;
    const LogLines log(folder);
    CCDMClassLibrary library;
    library.units.SetProvider("FakeUnits");
    library.units.SetInitString("ok");
    folder.Write("lib.xml", Library("<ClassAttributes Name='A'>\n"
                                    "<Attribute Name='P'><QuantityType>Pressure</QuantityType>"
                                    "</Attribute>\n<Attribute Name='N'><QuantityType>Nothing"
                                    "</QuantityType></Attribute></ClassAttributes>"));
    EXPECT_TRUE(library.ReadClassFile("lib.xml"));
    EXPECT_EQ(library.FindClass("A")->FindAttribute("P")->quantity, 1);
    EXPECT_EQ(library.FindClass("A")->FindAttribute("N")->quantity, 0);
    EXPECT_THAT(log.Lines(),
                ElementsAre("  XML Parser Message: file " + folder.File("lib.xml") +
                            " at line 4, Quantity type Nothing not found in unit list"));
}

TEST(ClassFile, quantity_without_units_is_a_message_at_level_6) {
    const std::string text = WithAttribute("Type='Real'", "<QuantityType>Pressure</QuantityType>");
    for (const int level : {5, 6}) {
        const TemporaryFolder folder;
        const LogLines log(folder, level);
        folder.Write("lib.xml", text);
        CCDMClassLibrary library;
        EXPECT_TRUE(library.ReadClassFile("lib.xml"));
        EXPECT_EQ(log.Lines().size(), level == 6 ? 1u : 0u) << level;
        EXPECT_EQ(library.FindClass("A")->FindAttribute("X")->quantity, 0);
    }
}

// ---- files, resources and includes

TEST(ClassFile, local_file_is_told_at_level_7_with_its_path) {
    const TemporaryFolder folder;
    folder.Write("lib.xml", Library(""));
    for (const int level : {6, 7}) {
        const LogLines log(folder, level);
        CCDMClassLibrary library;
        EXPECT_TRUE(library.ReadClassFile("lib.xml"));
        const std::string line =
            "  Using local CCDM File: " + folder.File("lib.xml").substr(0, 128);
        EXPECT_EQ(log.Lines(true),
                  level == 7 ? std::vector<std::string>{line} : std::vector<std::string>{})
            << level;
    }
}

TEST(ClassFile, file_is_read_once) {
    const TemporaryFolder folder;
    CCDMClassLibrary library;
    folder.Write("lib.xml", Library("<Class Name='A'/>"));
    EXPECT_TRUE(library.ReadClassFile("lib.xml"));
    folder.Write("lib.xml", Library("<Class Name='B'/>"));
    EXPECT_TRUE(library.ReadClassFile("lib.xml"));
    EXPECT_EQ(library.FindClass("B"), nullptr);
    EXPECT_THAT(library.classFiles, ElementsAre("lib.xml"));
    folder.Write("LIB.xml", Library("<Class Name='B'/>"));
    EXPECT_TRUE(library.ReadClassFile("LIB.xml"));
    EXPECT_NE(library.FindClass("B"), nullptr) << "names are compared exactly";
}

TEST(ClassFile, missing_file_and_resource_fail_and_are_remembered) {
    const TemporaryFolder folder;
    const LogLines log(folder, 0);
    CCDMClassLibrary library;
    const std::string name = "none" + std::string(200, 'x') + ".xml";
    EXPECT_FALSE(library.ReadClassFile(name));
    EXPECT_THAT(log.Lines(), ElementsAre("  Failed to find CCDM Resource: " + name.substr(0, 128)));
    EXPECT_TRUE(library.ReadClassFile(name)) << "the second time it counts as read";
}

TEST(ClassFile, resource_serves_where_there_is_no_file) {
    static const std::string good = Library("<Class Name='FromResource'/>");
    static const CompiledResource rows[] = {{"class_resource.xml", good},
                                            {"class_broken.xml", "<QZClassLibrary>"}};
    static CompiledResources table(rows);
    RegisterResources(table);
    const TemporaryFolder folder;
    const LogLines log(folder, 7);
    CCDMClassLibrary library;
    EXPECT_TRUE(library.ReadClassFile("class_resource.xml"));
    EXPECT_NE(library.FindClass("FromResource"), nullptr);
    EXPECT_THAT(log.Lines(true), IsEmpty());
    EXPECT_FALSE(library.ReadClassFile("class_broken.xml"));
    ASSERT_EQ(log.Lines().size(), 2u);
    EXPECT_THAT(log.Lines()[0], StartsWith("  XML Parser Severe Error: file class_broken.xml at "));
    EXPECT_EQ(log.Lines()[1], "  Failed parsing CCDM Resource: class_broken.xml");
    folder.Write("class_resource.xml", Library("<Class Name='FromFile'/>"));
    CCDMClassLibrary local;
    EXPECT_TRUE(local.ReadClassFile("class_resource.xml"));
    EXPECT_NE(local.FindClass("FromFile"), nullptr);
    EXPECT_EQ(local.FindClass("FromResource"), nullptr) << "the file takes the resource's place";
}

TEST(ClassFile, broken_files_fail_and_keep_what_was_read) {
    const std::string start = "<QZClassLibrary><Class Name='A'/>";
    std::string deep = "<QZClassLibrary>";
    for (int i = 0; i < 100000; ++i) deep += "<x>";
    std::string deep_known = start;
    for (int i = 0; i < 100000; ++i) deep_known += "<Header>";
    const std::string bomb =
        "<!DOCTYPE a [<!ENTITY x 'xx'><!ENTITY y '&x;&x;'>]><QZClassLibrary>&y;</QZClassLibrary>";
    for (const std::string& text :
         {deep_known, start, start + "<Class></QZClassLibrary>", std::string(),
          std::string("no xml"), start + "&none;</QZClassLibrary>", deep, bomb,
          start + "\xFF</QZClassLibrary>"}) {
        const ReadLibrary read(text);
        EXPECT_FALSE(read.done) << text.substr(0, 80);
        ASSERT_EQ(read.lines.size(), 2u) << text.substr(0, 80);
        EXPECT_THAT(read.lines[0], StartsWith("  XML Parser Severe Error: file " +
                                              read.folder.File("lib.xml") + " at line "));
        EXPECT_EQ(read.lines[1], "  Failed parsing CCDM File: lib.xml");
        if (text.starts_with(start)) {
            EXPECT_NE(read.library.FindClass("A"), nullptr) << text.substr(0, 80);
        }
    }
}

// What the declared defaults would give each element is never made.
TEST(ClassFile, document_types_are_refused_with_their_line) {
    const ReadLibrary read(
        "<?xml version='1.0'?>\n<!DOCTYPE QZClassLibrary [<!ATTLIST Class Name CDATA 'A'>]>\n"
        "<QZClassLibrary><Class/></QZClassLibrary>");
    EXPECT_FALSE(read.done);
    EXPECT_THAT(read.lines, testing::ElementsAre(
                                "  XML Parser Severe Error: file " + read.folder.File("lib.xml") +
                                    " at line 2, a document type declaration is not allowed; "
                                    "expected plain elements only",
                                "  Failed parsing CCDM File: lib.xml"));
    EXPECT_TRUE(read.library.classes.empty());
}

TEST(ClassFile, other_root_elements_are_skipped_in_silence) {
    for (const char* text : {"<Other><Class Name='A'/></Other>", "<qzclasslibrary/>",
                             "<Other><QZClassLibrary><Class Name='A'/></QZClassLibrary></Other>"}) {
        const ReadLibrary read(text);
        EXPECT_TRUE(read.done) << text;
        EXPECT_THAT(read.library.classes, IsEmpty()) << text;
        EXPECT_THAT(read.lines, IsEmpty()) << text;
    }
}

TEST(ClassFile, includes_are_read_in_place) {
    const TemporaryFolder folder;
    folder.Write("top.xml",
                 Library("<Header><Include Library='one.xml'/></Header>"
                         "<ClassAttributes Name='A'><Attribute Name='mid'/></ClassAttributes>"
                         "<Include Library='two.xml'/>"
                         "<ClassAttributes Name='A'><Attribute Name='last'/></ClassAttributes>"));
    folder.Write("one.xml",
                 Library("<ClassAttributes Name='A'><Attribute Name='one'/></ClassAttributes>"));
    folder.Write("two.xml",
                 Library("<ClassAttributes Name='A'><Attribute Name='two'/></ClassAttributes>"));
    CCDMClassLibrary library;
    EXPECT_TRUE(library.ReadClassFile("top.xml"));
    EXPECT_THAT(NamesOf(*library.FindClass("A")), ElementsAre("one", "mid", "two", "last"));
    EXPECT_THAT(library.classFiles, ElementsAre("top.xml", "one.xml", "two.xml"));
}

TEST(ClassFile, include_circle_ends) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    folder.Write("a.xml", Library("<Include Library='b.xml'/><Class Name='A'/>"));
    folder.Write("b.xml", Library("<Include Library='a.xml'/><Include Library='b.xml'/>"
                                  "<Class Name='B'/>"));
    CCDMClassLibrary library;
    EXPECT_TRUE(library.ReadClassFile("a.xml"));
    EXPECT_EQ(library.classes.size(), 2u);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(ClassFile, include_chain_is_bounded) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    for (int i = 0; i < 100; ++i) {
        folder.Write(std::to_string(i) + ".xml",
                     Library("<Include Library='" + std::to_string(i + 1) + ".xml'/><Class Name='" +
                             std::to_string(i) + "'/>"));
    }
    CCDMClassLibrary library;
    EXPECT_TRUE(library.ReadClassFile("0.xml"));
    EXPECT_EQ(library.classes.size(), 65u);
    EXPECT_THAT(log.Lines(), ElementsAre("  Failed parsing CCDM File: 65.xml"));
}

TEST(ClassFile, includes_of_other_formats_are_skipped_in_silence) {
    const ReadLibrary read(
        Library("<Include Library='x.qcl'/><Include Library='x.qzcs'/><Include/>"
                "<Include Library='x.qcl.xml'/><Header><Include Library='a.qzcs.old'/></Header>"));
    EXPECT_TRUE(read.done);
    EXPECT_THAT(read.lines, IsEmpty());
    EXPECT_THAT(read.library.classFiles, ElementsAre("lib.xml"));
}

TEST(ClassFile, failing_include_is_passed_over) {
    const TemporaryFolder folder;
    const LogLines log(folder, 0);
    folder.Write("bad.xml", "<QZClassLibrary>");
    folder.Write("top.xml", Library("<Include Library='none.xml'/><Include Library='bad.xml'/>"
                                    "<Class Name='A'/>"));
    CCDMClassLibrary library;
    EXPECT_TRUE(library.ReadClassFile("top.xml"));
    EXPECT_NE(library.FindClass("A"), nullptr);
    ASSERT_EQ(log.Lines().size(), 3u);
    EXPECT_EQ(log.Lines()[0], "  Failed to find CCDM Resource: none.xml");
    EXPECT_EQ(log.Lines()[2], "  Failed parsing CCDM File: bad.xml");
}

TEST(ClassFile, includes_never_leave_the_search_folders) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    folder.Write("secret.xml", Library("<Class Name='Secret'/>"));
    std::filesystem::create_directories(folder.Path() / "inner" / "sub");
    folder.Write("inner/sub/near.xml", Library("<Class Name='Near'/>"));
    folder.Write("inner/top.xml",
                 Library("<Include Library='../secret.xml'/>"
                         "<Include Library='..\\secret.xml'/>"
                         "<Include Library='sub/../../secret.xml'/>"
                         "<Include Library='" +
                         folder.File("secret.xml") + "'/><Include Library='sub/near.xml'/>"));
    OpenErrorLog(folder.File("lines.log").c_str());
    std::filesystem::current_path(folder.Path() / "inner");
    CCDMClassLibrary library;
    EXPECT_TRUE(library.ReadClassFile("top.xml"));
    std::filesystem::current_path(folder.Path());
    EXPECT_EQ(library.FindClass("Secret"), nullptr);
    const std::string missing = "  Failed to find CCDM Resource: ";
    EXPECT_THAT(log.Lines(), ElementsAre(missing + "../secret.xml", missing + "..\\secret.xml",
                                         missing + "sub/../../secret.xml",
                                         missing + folder.File("secret.xml").substr(0, 128)));
    EXPECT_NE(library.FindClass("Near"), nullptr) << "a folder below is within";
    CCDMClassLibrary direct;
    EXPECT_TRUE(direct.ReadClassFile(folder.File("secret.xml"))) << "a caller may name any file";
    EXPECT_NE(direct.FindClass("Secret"), nullptr);
}

TEST(ClassFile, second_file_extends_the_records_of_the_first) {
    const TemporaryFolder folder;
    folder.Write("one.xml",
                 Library("<Class Name='A'><Superclass>B</Superclass></Class>"
                         "<ClassAttributes Name='A'><Attribute Name='x'/></ClassAttributes>"));
    folder.Write("two.xml",
                 Library("<Class Name='A'><Superclass>C</Superclass></Class><Class Name='B'/>"
                         "<ClassAttributes Name='A'><Attribute Name='x'/><Attribute Name='y'/>"
                         "</ClassAttributes>"));
    CCDMClassLibrary library;
    EXPECT_TRUE(library.ReadClassFile("one.xml"));
    CCDMClass* record = library.FindClass("A");
    EXPECT_TRUE(library.ReadClassFile("two.xml"));
    EXPECT_EQ(library.FindClass("A"), record);
    EXPECT_THAT(record->superclasses, ElementsAre("B", "C"));
    EXPECT_THAT(NamesOf(*record), ElementsAre("x", "x", "y"));
    EXPECT_EQ(record->DistanceToClass("B"), 1);
}

// ---- the reader itself

TEST(ClassFile, trouble_with_the_reader_is_told) {
    using Trouble = TroubledXmlReader::Trouble;
    for (const auto& [trouble, line] : {
             std::pair{Trouble::kNotMade, "  Unable to create SAX2 reader for file lib.xml"},
             {Trouble::kNotAttached, "  Unable to attach SAX2 handler for file lib.xml"},
             {Trouble::kNotFound, "  Unable to locate CCDM File: lib.xml"},
         }) {
        const TroubledXmlReader reader(trouble);
        const ReadLibrary read(Library(""));
        EXPECT_FALSE(read.done) << line;
        EXPECT_THAT(read.lines, ElementsAre(line));
    }
}

}  // namespace

}  // namespace fixtop
