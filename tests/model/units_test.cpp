// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fake_unit_source.h"
#include "model/class_library.h"
#include "platform/resources.h"
#include "support/log_lines.h"
#include "support/temporary_folder.h"
#include "support/troubled_xml_reader.h"
#include "support/vtable_slot.h"

namespace fixtop {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const FIValue kNone;

FIValue Text(const char* text) {
    return FIValue(text);
}

std::string UnitFile(const std::string& rows, const char* provider = "FakeUnits",
                     const char* init = "defs.xml") {
    return std::string("<CCDMUnitFile Name='n'><Provider>") + provider + "</Provider><InitString>" +
           init + "</InitString>" + rows + "</CCDMUnitFile>";
}

// Units read from one text over the fake adapter.
struct ReadUnits {
    explicit ReadUnits(const std::string& text) : log(folder) {
        folder.Write("units.xml", text);
        done = library.ReadUnitFile("units.xml");
        lines = log.Lines();
    }
    std::string ToCcdm(const char* unit, const FIValue& quantity = kNone) {
        FIValue out;
        library.units.ToCcdmUnit(Text(unit), quantity, out);
        return out.ToText();
    }
    std::string ToApp(const char* unit, const FIValue& quantity = kNone) {
        FIValue out;
        library.units.ToAppUnit(Text(unit), quantity, out);
        return out.ToText();
    }
    OfferedFake fake;
    TemporaryFolder folder;
    LogLines log;
    CCDMClassLibrary library;
    bool done = false;
    std::vector<std::string> lines;
};

TEST(UnitSource, operations_stand_in_a_fixed_order) {
    const int slots[] = {
        VtableSlot(&CCDMUnitSource::Init),           VtableSlot(&CCDMUnitSource::Destroy),
        VtableSlot(&CCDMUnitSource::QuantityId),     VtableSlot(&CCDMUnitSource::UnitId),
        VtableSlot(&CCDMUnitSource::QuantityOfUnit), VtableSlot(&CCDMUnitSource::QuantityName),
        VtableSlot(&CCDMUnitSource::UnitName),       VtableSlot(&CCDMUnitSource::Convert)};
    for (int i = 0; i < 8; ++i) EXPECT_EQ(slots[i], i);
}

TEST(UnitsList, adapter_is_attached_once_both_texts_are_there) {
    const OfferedFake fake;
    {
        CCDMUnitsList units;
        units.SetInitString("defs.xml");
        EXPECT_FALSE(units.Initialized());
        EXPECT_THAT(FakeUnitSource::Calls(), IsEmpty());
        units.SetProvider("FakeUnits");
        EXPECT_TRUE(units.Initialized());
        EXPECT_NE(units.Source(), nullptr);
        units.SetProvider("Other");
        units.SetInitString("again");
        EXPECT_THAT(FakeUnitSource::Calls(), ElementsAre("Create", "Init defs.xml"));
    }
    EXPECT_THAT(FakeUnitSource::Calls(),
                ElementsAre("Create", "Init defs.xml", "Destroy", "Delete"));
}

TEST(UnitsList, refusing_adapter_is_put_away) {
    const TemporaryFolder folder;
    const LogLines log(folder, 0);
    const OfferedFake fake;
    CCDMUnitsList units;
    units.SetProvider("FakeUnits");
    units.SetInitString("refuse");
    EXPECT_FALSE(units.Initialized());
    EXPECT_EQ(units.Source(), nullptr);
    EXPECT_THAT(FakeUnitSource::Calls(), ElementsAre("Create", "Init refuse", "Destroy", "Delete"));
    EXPECT_THAT(log.Lines(), ElementsAre("Unable to initialize CCDM unit conversion adpater"));
    units.SetInitString("defs.xml");
    EXPECT_TRUE(units.Initialized()) << "may be tried again";
}

CCDMUnitSource* CreateNothing() {
    return nullptr;
}

TEST(UnitsList, adapter_that_makes_no_source_is_put_away) {
    const TemporaryFolder folder;
    const LogLines log(folder, 0);
    OfferModule("NoSource",
                {{"CreateUnitSource", reinterpret_cast<void*>(CreateNothing)},
                 {"DeleteUnitSource", reinterpret_cast<void*>(FakeUnitSource::Delete)}});
    OfferModule("NoDelete", {{"CreateUnitSource", reinterpret_cast<void*>(CreateNothing)}});
    OfferModule("NoFunctions", {});
    for (const char* name : {"NoSource", "NoDelete", "NoFunctions"}) {
        CCDMUnitsList units;
        units.SetProvider(name);
        units.SetInitString("x");
        EXPECT_FALSE(units.Initialized()) << name;
        WithdrawModule(name);
    }
    EXPECT_THAT(log.Lines(),
                ElementsAre("Unable to initialize CCDM unit conversion adpater",
                            "Unable to locate CCDM unit conversion adpater NoDelete",
                            "Unable to locate CCDM unit conversion adpater NoFunctions"));
}

TEST(UnitsList, modules_that_nobody_offers_are_not_loaded) {
    const TemporaryFolder folder;
    const LogLines log(folder, 0);
    for (const char* name :
         {"kernel32.dll", "libc.so.6", "./libQSIUOMAdapter2004_2.so", "../QSIUOMAdapter2004_2.dll",
          "/tmp/QSIUOMAdapter2004_2", "C:\\QSIUOMAdapter2004_2.dll", "QSIUOMAdapter2005", ""}) {
        CCDMUnitsList units;
        units.SetInitString("x");
        log.Restart();
        units.SetProvider(name);
        EXPECT_FALSE(units.Initialized()) << name;
        EXPECT_THAT(log.Lines(), ElementsAre(std::string("Unable to locate CCDM unit conversion "
                                                         "adpater ") +
                                             name));
    }
}

TEST(UnitsList, offered_module_may_stand_for_the_expected_one) {
    const OfferedFake fake(kUnitAdapterName);
    CCDMUnitsList units;
    units.SetProvider(kUnitAdapterName);
    units.SetInitString("x");
    EXPECT_TRUE(units.Initialized());
}

TEST(UnitsList, without_an_adapter_nothing_is_answered_or_converted) {
    CCDMUnitsList units;
    FIValue out;
    EXPECT_FALSE(units.ToCcdmUnit(Text("kPa"), kNone, out));
    EXPECT_STREQ(out.CStr(), "Units not initiliazed");
    out.Clear();
    EXPECT_FALSE(units.ToAppUnit(Text("kPa"), kNone, out));
    EXPECT_STREQ(out.CStr(), "Units not initiliazed");
    EXPECT_EQ(units.Convert(2.5, Text("kPa"), Text("bar")), 2.5);
    units.AddTranslation("a", "kPa", nullptr, false);
    EXPECT_FALSE(units.ToCcdmUnit(Text("a"), kNone, out));
}

TEST(UnitsList, convert_takes_names_and_numbers) {
    ReadUnits read(UnitFile(""));
    const CCDMUnitsList& units = read.library.units;
    // The fake answers value * 10000 + from * 100 + to.
    EXPECT_EQ(units.Convert(1, Text("kPa"), Text("bar")), 11011);
    EXPECT_EQ(units.Convert(1, FIValue::OfInt(21), Text("bar")), 12111);
    EXPECT_EQ(units.Convert(1, Text("K"), FIValue::OfInt(20)), 12120);
}

TEST(UnitFile, rows_translate_both_ways) {
    ReadUnits read(UnitFile("<Translate App='kg/cm2' Ccdm='at'/><Translate App='kPa'/>"));
    EXPECT_TRUE(read.done);
    EXPECT_EQ(read.ToCcdm("kg/cm2"), "at");
    EXPECT_EQ(read.ToApp("at"), "kg/cm2");
    EXPECT_EQ(read.ToCcdm("kPa"), "kPa") << "a missing Ccdm is the same text";
    EXPECT_EQ(read.ToApp("kPa"), "kPa");
    EXPECT_THAT(read.lines, IsEmpty());
}

TEST(UnitFile, reverse_lookup_takes_the_first_of_equals) {
    ReadUnits read(UnitFile("<Translate App='at' Ccdm='at'/><Translate App='kg/cm2' Ccdm='at'/>"));
    EXPECT_EQ(read.ToApp("at"), "at");
    ReadUnits other(UnitFile("<Translate App='kg/cm2' Ccdm='at'/><Translate App='at' Ccdm='at'/>"));
    EXPECT_EQ(other.ToApp("at"), "kg/cm2");
}

TEST(UnitFile, row_of_a_quantity_wins) {
    ReadUnits read(
        UnitFile("<Translate App='u' Ccdm='K'/>"
                 "<Translate App='u' Ccdm='bar' Quantity='Pressure'/>"));
    EXPECT_EQ(read.ToCcdm("u", Text("Pressure")), "bar");
    EXPECT_EQ(read.ToCcdm("u", FIValue::OfInt(1)), "bar") << "a quantity may be a number";
    EXPECT_EQ(read.ToCcdm("u", Text("Temperature")), "K");
    EXPECT_EQ(read.ToCcdm("u"), "K");
    EXPECT_EQ(read.ToCcdm("u", Text("Unknown")), "K") << "an unknown quantity is none";
}

TEST(UnitFile, reverse_lookup_prefers_quantity_then_last_default_then_first_for_all) {
    ReadUnits read(
        UnitFile("<Translate App='all' Ccdm='kPa'/><Translate App='all2' Ccdm='kPa'/>"
                 "<Translate App='p' Ccdm='kPa' Quantity='Pressure'/>"));
    EXPECT_EQ(read.ToApp("kPa", Text("Pressure")), "p");
    EXPECT_EQ(read.ToApp("kPa", Text("Temperature")), "all");
    ReadUnits defaults(
        UnitFile("<Translate App='all' Ccdm='kPa'/>"
                 "<Translate App='d1' Ccdm='kPa' Quantity='Pressure' Default=''/>"
                 "<Translate App='d2' Ccdm='kPa' Quantity='Pressure' Default='no'/>"));
    EXPECT_EQ(defaults.ToApp("kPa", Text("Temperature")), "d2");
    EXPECT_EQ(defaults.ToApp("kPa", Text("Pressure")), "d1");
    EXPECT_EQ(defaults.ToApp("kPa"), "all") << "none is a quantity as any other";
}

TEST(UnitFile, unknown_reverse_units_are_not_learned) {
    ReadUnits read(UnitFile(""));
    EXPECT_EQ(read.ToApp("bar"), "Unit not found");
    EXPECT_EQ(read.ToApp("bar"), "Unit not found");
    EXPECT_THAT(read.log.Lines(), ElementsAre("Unable to locate unit bar in units list",
                                              "Unable to locate unit bar in units list"));
}

TEST(UnitFile, valid_application_units_are_learned) {
    ReadUnits read(UnitFile(""));
    EXPECT_EQ(read.ToCcdm("bar", Text("Temperature")), "Unit not found") << "not of this quantity";
    EXPECT_THAT(read.log.Lines(), ElementsAre("Unable to locate unit bar in units list"));
    EXPECT_EQ(read.ToCcdm("bar", Text("Pressure")), "bar");
    EXPECT_EQ(read.ToApp("bar", Text("Pressure")), "bar") << "learned both ways";
    EXPECT_EQ(read.ToCcdm("none"), "Unit not found");
}

TEST(UnitFile, rows_that_are_left_out_say_why) {
    struct Row {
        const char* rows;
        const char* line;
    };
    const Row rows[] = {
        {"<Translate App='u' Ccdm='kPa'/><Translate App='u' Ccdm='bar'/>",
         "Unit u already mapped in units list for all quantities"},
        {"<Translate App='u' Ccdm='kPa' Quantity='Pressure'/>"
         "<Translate App='u' Ccdm='bar' Quantity='Pressure'/>",
         "Unit u already mapped in units list for Pressure"},
        {"<Translate App='u' Ccdm='kPa'/><Translate App='u' Ccdm='bar' Quantity='Unknown'/>",
         "Unit u already mapped in units list for all quantities"},
        {"<Translate App='u' Ccdm='kPa' Quantity='Pressure' Default='1'/>"
         "<Translate App='u' Ccdm='K' Quantity='Temperature' Default='1'/>",
         "Unit u already mapped in units list for default quantity"},
        {"<Translate App='u' Ccdm='K' Quantity='Pressure'/>",
         "Unable to locate unit K in units list"},
        {"<Translate App='none'/>", "Unable to locate unit none in units list"},
        {"<Translate/>", "Unable to locate unit  in units list"},
    };
    for (const Row& row : rows) {
        const ReadUnits read(UnitFile(row.rows));
        EXPECT_TRUE(read.done) << row.rows;
        EXPECT_THAT(read.lines, ElementsAre(row.line)) << row.rows;
    }
}

TEST(UnitFile, reasons_are_told_at_level_6) {
    for (const int level : {5, 6}) {
        const OfferedFake fake;
        const TemporaryFolder folder;
        const LogLines log(folder, level);
        folder.Write("units.xml", UnitFile("<Translate App='none'/><Translate App='kPa'/>"
                                           "<Translate App='kPa'/>"));
        CCDMClassLibrary library;
        EXPECT_TRUE(library.ReadUnitFile("units.xml"));
        EXPECT_EQ(log.Lines().size(), level == 6 ? 2u : 0u);
    }
}

TEST(UnitFile, same_unit_may_be_mapped_for_several_quantities) {
    ReadUnits read(
        UnitFile("<Translate App='u' Ccdm='kPa' Quantity='Pressure' Default='1'/>"
                 "<Translate App='u' Ccdm='K' Quantity='Temperature'/>"));
    EXPECT_THAT(read.lines, IsEmpty());
    EXPECT_EQ(read.ToCcdm("u", Text("Temperature")), "K");
}

TEST(UnitFile, rows_before_the_adapter_are_skipped) {
    ReadUnits read(
        "<CCDMUnitFile><Translate App='u' Ccdm='kPa'/><Provider>FakeUnits</Provider>"
        "<InitString>x</InitString></CCDMUnitFile>");
    EXPECT_THAT(read.lines, IsEmpty());
    EXPECT_EQ(read.ToCcdm("u"), "Unit not found");
}

TEST(UnitFile, only_what_is_unknown_is_warned_of) {
    const ReadUnits read(
        "<CCDMUnitFile Name='n'><Version a='1'><x/></Version><Author/><Company/><Comments/>\n"
        "<Other/><Translate App='kPa' Strange='1'/></CCDMUnitFile>");
    EXPECT_TRUE(read.done);
    const std::string place = "  XML Parser Warning: file " + read.folder.File("units.xml");
    EXPECT_THAT(read.lines, ElementsAre(place + " at line 2, unknown element <Other>",
                                        place + " at line 2, unexpected attribute in Translate"));
    const ReadUnits root("<Wrong><Provider>FakeUnits</Provider></Wrong>");
    EXPECT_TRUE(root.done);
    ASSERT_EQ(root.lines.size(), 1u);
    EXPECT_THAT(root.lines[0], testing::HasSubstr("unknown element <Wrong>"));
}

TEST(UnitFile, is_read_again_each_time) {
    ReadUnits read(UnitFile("<Translate App='u' Ccdm='kPa'/>"));
    read.folder.Write("units.xml", UnitFile("<Translate App='v' Ccdm='bar'/>"));
    EXPECT_TRUE(read.library.ReadUnitFile("units.xml"));
    EXPECT_EQ(read.ToCcdm("v"), "bar");
    EXPECT_EQ(read.ToCcdm("u"), "kPa");
}

TEST(UnitFile, document_types_are_refused_with_their_line) {
    ReadUnits read("\n\n<!DOCTYPE CCDMUnitFile>" + UnitFile("<Translate App='u' Ccdm='kPa'/>"));
    EXPECT_FALSE(read.done);
    EXPECT_THAT(read.lines, testing::ElementsAre(
                                "  XML Parser Severe Error: file " + read.folder.File("units.xml") +
                                    " at line 3, a document type declaration is not allowed; "
                                    "expected plain elements only",
                                "  Failed parsing Unit File: units.xml"));
    EXPECT_FALSE(read.library.units.Initialized());
}

TEST(UnitFile, broken_files_fail_and_keep_what_was_read) {
    const std::string start =
        "<CCDMUnitFile><Provider>FakeUnits</Provider><InitString>x</InitString>"
        "<Translate App='u' Ccdm='kPa'/>";
    const std::string end = "</CCDMUnitFile>";
    std::string deep = start;
    std::string deep_known = start;
    for (int i = 0; i < 100000; ++i) {
        deep += "<x>";
        deep_known += "<Translate>";
    }
    std::string bomb = "<!DOCTYPE a [<!ENTITY a0 'xx'>";
    for (int i = 1; i < 30; ++i) {
        const std::string former = "&a" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY a" + std::to_string(i) + " '" + former + former + "'>";
    }
    bomb += "]>" + start + "<Provider>&a29;</Provider>" + end;
    const std::string outside =
        "<!DOCTYPE a [<!ENTITY f SYSTEM 'units.xml'>]>" + start + "<Version>&f;</Version>" + end;
    for (const std::string& text :
         {start, start + "<Translate></CCDMUnitFile>", std::string(), std::string("no xml"),
          start + "<Version>&none;</Version>" + end, deep, deep_known, bomb, outside,
          start + "\xFF" + end, start + "<Translate App='a' App='b'/>" + end,
          start + end + start + end}) {
        ReadUnits read(text);
        EXPECT_FALSE(read.done) << text.substr(0, 120);
        ASSERT_FALSE(read.lines.empty());
        EXPECT_EQ(read.lines.back(), "  Failed parsing Unit File: units.xml");
        const std::string severe =
            "  XML Parser Severe Error: file " + read.folder.File("units.xml") + " at line ";
        EXPECT_THAT(read.lines, Contains(StartsWith(severe)).Times(1)) << text.substr(0, 120);
        if (text.starts_with(start)) {
            EXPECT_EQ(read.ToCcdm("u"), "kPa") << text.substr(0, 120);
        }
    }
}

TEST(UnitFile, provider_that_nobody_offers_is_told_and_not_loaded) {
    for (const char* provider : {"kernel32.dll", "libc.so.6", "../FakeUnits", "fixtop.dll"}) {
        ReadUnits read(UnitFile("<Translate App='u' Ccdm='kPa'/>", provider));
        EXPECT_TRUE(read.done) << provider;
        EXPECT_THAT(read.lines, ElementsAre(std::string("Unable to locate CCDM unit conversion "
                                                        "adpater ") +
                                            provider));
        EXPECT_EQ(read.ToCcdm("u"), "Units not initiliazed") << provider;
        EXPECT_THAT(FakeUnitSource::Calls(), IsEmpty()) << provider;
    }
}

TEST(UnitFile, trouble_is_told) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    static const CompiledResource rows[] = {{"unit_broken.xml", "<CCDMUnitFile>"},
                                            {"unit_good.xml", "<CCDMUnitFile/>"}};
    static CompiledResources table(rows);
    RegisterResources(table);
    folder.Write("bad.xml", "<CCDMUnitFile>");
    int module = 0;
    CCDMClassLibrary bare;
    CCDMClassLibrary library(&module);
    EXPECT_FALSE(bare.ReadUnitFile(nullptr));
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_FALSE(bare.ReadUnitFile("unit_good.xml"));
    EXPECT_FALSE(library.ReadUnitFile("none.xml"));
    EXPECT_THAT(log.Lines(), ElementsAre("  Failed to find Unit File or Resource: unit_good.xml",
                                         "  Failed to find Unit Resource: none.xml"));
    EXPECT_TRUE(library.ReadUnitFile("unit_good.xml"));
    log.Restart();
    EXPECT_FALSE(library.ReadUnitFile("unit_broken.xml"));
    EXPECT_FALSE(bare.ReadUnitFile("bad.xml"));
    ASSERT_EQ(log.Lines().size(), 4u);
    EXPECT_EQ(log.Lines()[1], "  Failed parsing Unit Resource: unit_broken.xml");
    EXPECT_EQ(log.Lines()[3], "  Failed parsing Unit File: bad.xml");
    EXPECT_EQ(log.Lines(true)[2],
              "  Using local Unit File: " + folder.File("bad.xml").substr(0, 128));
}

TEST(UnitFile, trouble_with_the_reader_is_told) {
    using Trouble = TroubledXmlReader::Trouble;
    for (const auto& [trouble, line] : {
             std::pair{Trouble::kNotMade, "  Unable to create SAX2 reader for file units.xml"},
             {Trouble::kNotAttached, "  Unable to attach SAX2 handler for file units.xml"},
             {Trouble::kNotFound, "  Unable to locate Unit File: units.xml"},
         }) {
        const TroubledXmlReader reader(trouble);
        const ReadUnits read("<CCDMUnitFile/>");
        EXPECT_FALSE(read.done) << line;
        EXPECT_THAT(read.lines, ElementsAre(line));
    }
}

}  // namespace

}  // namespace fixtop
