// SPDX-License-Identifier: Apache-2.0
#include "casehost/case_file.h"
#include "casehost/file_path.h"
#include "live/case.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "case_builder.h"
#include "case_text.h"

namespace fixtop::casehost {
namespace {

using test::Array;
using test::Attachment;
using test::Choice;
using test::Element;
using test::Object;
using test::Read;
using test::Real;
using test::SmallCase;
using test::TextVariable;
using test::WithBasis;

using Kind = BasisElement::Kind;

std::vector<BasisElement> FullBasis() {
    BasisElement number = Element("n", Kind::number, 1.0 / 3);
    number.quantity = "Pressure";
    BasisElement given = Element("v", Kind::variable, -0.5);
    given.quantity = "Temperature";
    given.state = VariableState::specified;
    given.adjustable = true;
    BasisElement found = Element("v", Kind::variable, 2);
    found.state = VariableState::calculated;
    found.fixed = true;
    BasisElement table = Element("table", Kind::table);
    table.columns = {{"Kij", {1.5, kEmpty, 0}, {}}, {kObjectColumn, {}, {"/Feed", ""}}};
    BasisElement inner = Element("inner", Kind::group);
    inner.elements = {number, given, found, Element("unset", Kind::variable), table};
    BasisElement group = Element("group", Kind::group);
    group.elements = {inner, Element("status", Kind::status), Element("empty", Kind::group)};
    return {group,
            Element("words", Kind::text, kEmpty, "a \"text\""),
            Element("words", Kind::text),
            Element("custom", Kind::custom, 4),
            Element("custom", Kind::custom, kEmpty, "own"),
            Element("object", Kind::object, kEmpty, "/@utilities/Envelope"),
            Element("nothing", Kind::object),
            Element("document", Kind::document, kEmpty, "<x/>"),
            Element("bare table", Kind::table)};
}

// A case with something of everything that a file can hold.
CaseData FullCase() {
    CaseData data = SmallCase();
    data.title = "a \"title\" with\nlines, a \\ and \xC3\xA4";
    data.source = "own";
    data.recorded = true;
    data.dynamic = true;
    data.online = true;
    data.unit_set = 2;
    data.solve_turns = 5;
    data.property_package = "PR";
    CompoundData methane;
    methane.name = "Methane";
    methane.formula = "CH4";
    methane.molar_mass = 16.0425;
    methane.cp = {19.25, 0.05213, 1.197e-5};
    methane.other = {{"CAS", "74-82-8"}};
    data.compounds = {methane};
    data.basis = FullBasis();
    auto odd = std::make_shared<VariableSpec>(*test::Spec("Odd", ValueKind::real, "Pressure"));
    odd->number = 77;
    odd->variable_type = 12;
    odd->minimum = -1.5;
    odd->maximum = 1e300;
    odd->flagged = true;
    data.main.objects.push_back(Object(
        "Everything", words::kTemplate,
        {Real("Tiny", "", 4.9406564584124654e-324),
         Real("Third", "", 1.0 / 3),
         Real("MinusZero", "", -0.0),
         Real("Big", "", 1.7976931348623157e308),
         Real("Whole", "", 9007199254740992.0),
         Real("Unset", "", kEmpty, VariableState::missing),
         {odd, {{0.25, "", VariableState::defaulted}}},
         Choice("Mode", {"on", "off"}, 1),
         TextVariable("Notes", "tab\there"),
         Attachment("To", "/@utilities/Envelope"),
         Array("Grid", "Temperature",
               {{1, 2, ElementNaming::enumeration, {"a", "b"}}, {0, 2, ElementNaming::number, {}}},
               {1, kEmpty, 3, 4})}));
    ObjectData& everything = data.main.objects.back();
    everything.variables.back().values[1].state = VariableState::missing;
    everything.status = ObjectStatus::warning;
    everything.status_text = "careful";
    everything.stale = true;
    everything.sub_flowsheet = std::make_shared<FlowsheetData>();
    everything.sub_flowsheet->objects = {test::Stream("Inner", VariableState::specified)};
    data.utilities = {Object("Envelope", "EnvelopeUtilityObject", {Attachment("Stream", "Feed")})};
    data.data_tables = {Object("Day", "ProcessDataTableObject")};
    data.reactions = {
        Object("Rxn-1", "ConversionReactionObject", {Real("Conversion", "Percent", 80)})};
    data.published = {Object("PV", "RTIVariable", {Real("Value", "Pressure", 3)})};
    return data;
}

void ExpectSameObjects(const std::vector<ObjectData>& a, const std::vector<ObjectData>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        SCOPED_TRACE(a[i].name);
        EXPECT_EQ(a[i].name, b[i].name);
        EXPECT_EQ(a[i].type, b[i].type);
        EXPECT_EQ(a[i].status, b[i].status);
        EXPECT_EQ(a[i].status_text, b[i].status_text);
        EXPECT_EQ(a[i].stale, b[i].stale);
        EXPECT_EQ(a[i].ports, b[i].ports);
        ASSERT_EQ(a[i].variables.size(), b[i].variables.size());
        for (std::size_t v = 0; v < a[i].variables.size(); ++v) {
            SCOPED_TRACE(a[i].variables[v].spec->name);
            EXPECT_EQ(*a[i].variables[v].spec, *b[i].variables[v].spec);
            EXPECT_EQ(a[i].variables[v].values, b[i].variables[v].values);
        }
        ASSERT_EQ(a[i].sub_flowsheet == nullptr, b[i].sub_flowsheet == nullptr);
        if (a[i].sub_flowsheet) {
            ExpectSameObjects(a[i].sub_flowsheet->objects, b[i].sub_flowsheet->objects);
        }
    }
}

TEST(CaseFile, SavingAndLoadingLosesNothing) {
    const CaseData data = FullCase();
    const std::string text = CaseToText(data);
    const CaseData back = Read(text);
    EXPECT_EQ(back.name, data.name);
    EXPECT_EQ(back.title, data.title);
    EXPECT_EQ(back.dynamic, data.dynamic);
    EXPECT_EQ(back.unit_set, data.unit_set);
    EXPECT_EQ(back.solve_turns, data.solve_turns);
    EXPECT_EQ(back.property_package, data.property_package);
    ASSERT_EQ(back.compounds.size(), 1u);
    EXPECT_EQ(back.compounds[0].cp, data.compounds[0].cp);
    EXPECT_EQ(back.compounds[0].other, data.compounds[0].other);
    EXPECT_EQ(back.compounds[0].acentric_factor, kEmpty);
    EXPECT_EQ(back.basis, data.basis);
    ExpectSameObjects(back.main.objects, data.main.objects);
    ExpectSameObjects(back.utilities, data.utilities);
    ExpectSameObjects(back.data_tables, data.data_tables);
    ExpectSameObjects(back.reactions, data.reactions);
    ExpectSameObjects(back.published, data.published);
    EXPECT_TRUE(std::signbit(back.main.objects.back().variables[2].values[0].number));
    EXPECT_EQ(CaseToText(back), text) << "the second save has the same bytes";
    CaseHost host;
    EXPECT_EQ(CaseToText(host.Open(back).opened->ToData()), text) << "through a live case too";
}

TEST(CaseFile, UnitsAreConvertedAndStatesDefaultToSpecified) {
    const CaseData data = Read(R"({"format": "casehost case", "version": 1,
      "shapes": {"S": {"Temperature": {"quantity": "Temperature"}, "Pressure": {"quantity": "Pressure"},
                       "Flow": {"quantity": "MolarFlow"}}},
      "flowsheet": {"objects": [
        {"name": "Feed", "type": "MaterialStreamObject", "shape": "S", "variables": {
          "Temperature": {"value": 212, "unit": "F"},
          "Pressure": {"value": 1, "unit": "atm", "state": "calculated"}}}]}})");
    const ObjectData& feed = data.main.objects.at(0);
    EXPECT_DOUBLE_EQ(feed.variables[0].values[0].number, 100);
    EXPECT_EQ(feed.variables[0].values[0].state, VariableState::specified);
    EXPECT_DOUBLE_EQ(feed.variables[1].values[0].number, 101.325);
    EXPECT_EQ(feed.variables[1].values[0].state, VariableState::calculated);
    EXPECT_EQ(feed.variables[2].values[0].number, kEmpty);
    EXPECT_EQ(feed.variables[2].values[0].state, VariableState::missing);
}

TEST(CaseFile, EveryPrefixOfAFileIsRefusedWithoutHarm) {
    const std::string text = CaseToText(FullCase());
    for (std::size_t length = 0; length + 2 < text.size(); length += 7) {
        EXPECT_EQ(ReadCaseText("cut.json", text.substr(0, length)).data, nullptr) << length;
    }
}

class CaseFileOnDisk : public ::testing::Test {
 protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() /
                  ("casehost-" +
                   std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
        std::filesystem::create_directory(folder_);
        RegisterCaseFiles();
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }
    std::string Path(const std::string& name) {
        const std::u8string path = (folder_ / FilePath(name)).u8string();
        return {path.begin(), path.end()};
    }

    std::filesystem::path folder_;
};

TEST_F(CaseFileOnDisk, HostOpensChangesSavesAndOpensAgain) {
    ASSERT_TRUE(WriteCaseFile(FullCase(), Path("plant.json")));
    CaseHost host;
    const OpenResult opened = host.Open(Path("plant.json"));
    ASSERT_TRUE(opened) << opened.problems.at(0).Text();
    EXPECT_EQ(opened.opened->GetDocumentName().Name().Str(), "plant");
    host::Viewable* feed = opened.opened->FindByPath("Feed", nullptr)->View();
    feed->SetRealValue(Node::Of(feed)->GetShape()->ByName("Temperature")->description, 41);
    EXPECT_TRUE(opened.opened->Save());
    const OpenResult again = host.Open(Path("plant.json"));
    ASSERT_TRUE(again);
    Node* node = again.opened->FindByPath("Feed", nullptr);
    EXPECT_EQ(node->ReadReal(node->GetShape()->ByName("Temperature")->description), 41);
    EXPECT_EQ(host.Cases().size(), 2u);
    EXPECT_EQ(host.ActiveCase(), again.opened);
}

TEST_F(CaseFileOnDisk, FailedSaveLeavesTheOldFileAlone) {
    std::filesystem::create_directory(Path("taken.json"));
    std::ofstream(Path("taken.json") + "/inside") << "x";
    const SaveResult result = WriteCaseFile(FullCase(), Path("taken.json"));
    EXPECT_FALSE(result);
    EXPECT_TRUE(std::filesystem::exists(Path("taken.json") + "/inside"));
    EXPECT_FALSE(std::filesystem::exists(Path("taken.json.part")));
    EXPECT_FALSE(WriteCaseFile(FullCase(), Path("no/such/folder.json")));
}

TEST_F(CaseFileOnDisk, NamesOfFilesAreUtf8) {
    const std::string name = Path(
        "Gr\xC3\xB6\xC3\x9F"
        "e.json");
    ASSERT_TRUE(WriteCaseFile(FullCase(), name));
    EXPECT_TRUE(std::filesystem::exists(folder_ / u8"Gr\u00F6\u00DFe.json"));
    ASSERT_TRUE(WriteCaseFile(FullCase(), name)) << "over the former file";
    EXPECT_NE(ReadCaseFile(name).data, nullptr);
}

TEST_F(CaseFileOnDisk, SampleOfTheFormatPageIsRead) {
    std::ifstream page(CASEHOST_FORMAT_PAGE);
    const std::string text((std::istreambuf_iterator<char>(page)),
                           std::istreambuf_iterator<char>());
    const std::size_t from = text.find("```json\n") + 8;
    ASSERT_GT(from, 8u);
    const CaseData data = Read(text.substr(from, text.find("```", from) - from));
    ASSERT_EQ(data.main.objects.size(), 3u);
    EXPECT_DOUBLE_EQ(data.main.objects[0].variables[1].values[0].number, 6000);
}

TEST_F(CaseFileOnDisk, BasisOfTheFormatPageIsRead) {
    std::ifstream page(CASEHOST_FORMAT_PAGE);
    const std::string text((std::istreambuf_iterator<char>(page)),
                           std::istreambuf_iterator<char>());
    const std::size_t from = text.find("\"basis\": [\n");
    ASSERT_NE(from, std::string::npos);
    const std::string basis = text.substr(from, text.find("```", from) - from);
    const CaseData data = Read(R"({"format": "casehost case", "version": 1, "flowsheet": {
        "objects": [{"name": "Feed", "type": "MaterialStreamObject"}]}, )" +
                               basis + "}");
    ASSERT_EQ(data.basis.size(), 1u);
    ASSERT_EQ(data.basis[0].elements.size(), 3u);
    EXPECT_EQ(data.basis[0].elements[0].text, "Basis-1");
    EXPECT_EQ(data.basis[0].elements[1].number, 101.325);
    EXPECT_EQ(data.basis[0].elements[2].columns[1].objects, (std::vector<std::string>{"Feed", ""}));
}

TEST_F(CaseFileOnDisk, UnknownKindsOfFileAreTold) {
    CaseHost host;
    EXPECT_EQ(host.Open(Path("plant.xyz")).problems.at(0).message,
              "there is no such file; expected .json");
    std::ofstream(Path("plant.xyz")) << "plant";
    EXPECT_EQ(host.Open(Path("plant.xyz")).problems.at(0).message,
              "no reader for this kind of file; expected .json");
    EXPECT_NE(host.Open(Path("missing.json")).problems.at(0).message.find("can't be read"),
              std::string::npos);
    const OpenResult opened = host.Open(SmallCase());
    EXPECT_EQ(host.Save(*opened.opened, Path("plant.xyz")).problem.message,
              "cases can't be written to this kind of file; expected .json");
    EXPECT_TRUE(host.Save(*opened.opened, Path("plant")));
    EXPECT_TRUE(std::filesystem::exists(Path("plant.json")));
}

TEST_F(CaseFileOnDisk, FolderIsNotTakenForANameWithoutExtension) {
    CaseHost host;
    const OpenResult opened = host.Open(SmallCase());
    std::filesystem::create_directory(folder_ / "plant");
    EXPECT_EQ(host.Save(*opened.opened, Path("plant")).problem.message,
              "can't be written: not a file");
    EXPECT_FALSE(std::filesystem::exists(Path("plant.json")));
}

TEST_F(CaseFileOnDisk, HundredThousandObjectsLoad) {
    CaseData data;
    std::vector<VariableData> variables;
    for (int v = 0; v < 10; ++v)
        variables.push_back(Real("V" + std::to_string(v), "Pressure", v + 0.1));
    for (int i = 0; i < 100'000; ++i) {
        data.main.objects.push_back(
            Object("S" + std::to_string(i), words::kMaterialStream, variables));
    }
    ASSERT_TRUE(WriteCaseFile(data, Path("big.json")));
    CaseHost host;
    const OpenResult opened = host.Open(Path("big.json"));
    ASSERT_TRUE(opened);
    EXPECT_EQ(opened.opened->MainFlowSheet()->Objects().EntryAt(99'999) != nullptr, true);
}

TEST_F(CaseFileOnDisk, PublishedSchemaAcceptsWhatIsWritten) {
    if (std::system("python3 -c \"import jsonschema\" 2> /dev/null") != 0) {
        GTEST_SKIP() << "python3 has no jsonschema";
    }
    ASSERT_TRUE(WriteCaseFile(FullCase(), Path("plant.json")));
    const std::string check =
        "python3 -c \"import json, sys, jsonschema; jsonschema.validate(*[json.load(open(f)) for f "
        "in sys.argv[1:]])\" ";
    EXPECT_EQ(std::system((check + Path("plant.json") + " " CASEHOST_SCHEMA).c_str()), 0);
    std::ofstream(Path("wrong.json"))
        << R"({"format": "casehost case", "version": 1, "unitSet": 9})";
    EXPECT_NE(
        std::system((check + Path("wrong.json") + " " CASEHOST_SCHEMA " 2> /dev/null").c_str()), 0);
    std::ofstream(Path("odd.json")) << WithBasis(R"({"tag": "x", "kind": "status", "text": "y"})");
    EXPECT_NE(std::system((check + Path("odd.json") + " " CASEHOST_SCHEMA " 2> /dev/null").c_str()),
              0);
}

}  // namespace
}  // namespace fixtop::casehost
