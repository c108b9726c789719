#include "casehost/case_file.h"
#include "casehost/file_path.h"
#include "live/case.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "case_builder.h"

namespace casehost {
namespace {

using test::Array;
using test::Attachment;
using test::Choice;
using test::Object;
using test::Real;
using test::SmallCase;
using test::TextVariable;

using Kind = BasisElement::Kind;

BasisElement Element(const char* tag, Kind kind, double number = kEmpty, const char* text = "") {
    BasisElement element;
    element.tag = tag;
    element.kind = kind;
    element.number = number;
    element.text = text;
    return element;
}

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
    everything.sub_flowsheet = std::make_shared<FlowsheetData>();
    everything.sub_flowsheet->objects = {test::Stream("Inner", VariableState::specified)};
    data.utilities = {Object("Envelope", "EnvelopeUtilityObject", {Attachment("Stream", "Feed")})};
    data.data_tables = {Object("Day", "ProcessDataTableObject")};
    data.reactions = {
        Object("Rxn-1", "ConversionReactionObject", {Real("Conversion", "Percent", 80)})};
    data.published = {Object("PV", "RTIVariable", {Real("Value", "Pressure", 3)})};
    return data;
}

CaseData Read(const std::string& text) {
    const ReadResult result = ReadCaseText("plant.json", text);
    for (const CaseProblem& problem : result.problems) ADD_FAILURE() << problem.Text();
    return result.data ? *result.data : CaseData();
}

void ExpectSameObjects(const std::vector<ObjectData>& a, const std::vector<ObjectData>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        SCOPED_TRACE(a[i].name);
        EXPECT_EQ(a[i].name, b[i].name);
        EXPECT_EQ(a[i].type, b[i].type);
        EXPECT_EQ(a[i].status, b[i].status);
        EXPECT_EQ(a[i].status_text, b[i].status_text);
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

// `inside` becomes the objects of the flowsheet, on line 6.
std::string WithObjects(const std::string& inside) {
    return R"({"format": "casehost case", "version": 1, "shapes": {"S": {
"T": {"quantity": "Temperature", "minimum": -273.15}, "Mode": {"kind": "enumeration", "options": ["on", "off"]},
"Grid": {"dimensions": [{"count": 2}]}, "To": {"kind": "attachment"},
"Notes": {"kind": "text"}}},
"flowsheet": {"objects": [
)" + inside +
           "]}}";
}

std::string WithBasis(const std::string& inside) {
    return "{\"format\": \"casehost case\", \"version\": 1, \"basis\": [\n" + inside + "]}";
}

std::string WithVariable(const std::string& inside) {
    return WithObjects(R"({"name": "A", "type": "MixerOpObject", "shape": "S", "variables": {)" +
                       inside + "}}");
}

TEST(CaseFile, ProblemsNameFileLineAndPath) {
    const struct {
        std::string text;
        const char* message;
    } cases[] = {
        {WithVariable(R"("T": {"value": "abc"})"),
         "plant.json:6: /flowsheet/objects/0/variables/T/value: expected a number, found \"abc\""},
        {WithVariable(R"("T": {"value": -300})"),
         "plant.json:6: /flowsheet/objects/0/variables/T/value: the value is below the minimum of "
         "\"T\""},
        {WithVariable(R"("T": {"value": 1, "unit": "kPa"})"),
         "plant.json:6: /flowsheet/objects/0/variables/T/unit: the unit \"kPa\" is none of "
         "Temperature (C, K, F, R)"},
        {WithVariable(R"("Mode": {"value": "maybe"})"),
         "plant.json:6: /flowsheet/objects/0/variables/Mode/value: \"maybe\" is no option of "
         "\"Mode\" (on, off)"},
        {WithVariable(R"("Grid": {"values": [1]})"),
         "plant.json:6: /flowsheet/objects/0/variables/Grid/values: expected 2 values, found 1"},
        {WithVariable(R"("Grid": {"values": [1, {}]})"),
         "plant.json:6: /flowsheet/objects/0/variables/Grid/values/1: expected a number, found an "
         "object"},
        {WithVariable(R"("To": {"value": "Nowhere"})"),
         "plant.json:6: /flowsheet/objects/0/variables/To: the attachment \"Nowhere\" names no "
         "object"},
        {WithVariable(R"("T": {"value": 1, "state": "guessed"})"),
         "plant.json:6: /flowsheet/objects/0/variables/T/state: \"guessed\" is none of calculated, "
         "specified, "
         "defaulted, specifiedOtherwise, missing"},
        {WithVariable(R"("T": {"value": 1}, "T": {"value": 2})"),
         "plant.json:6: /flowsheet/objects/0/variables/T: the name \"T\" stands twice in one "
         "object"},
        {WithVariable(R"("X": {"value": 1})"),
         "plant.json:6: /flowsheet/objects/0/variables/X: the object's shape has no variable "
         "\"X\""},
        {WithVariable(R"("T": {"value": NaN})"),
         "plant.json:6: /flowsheet/objects/0/variables/T: syntax error"},
        {WithVariable(R"("T": {"value": Infinity})"),
         "plant.json:6: /flowsheet/objects/0/variables/T: syntax error"},
        {WithVariable(R"("T": {"value": 1e999})"),
         "plant.json:6: /flowsheet/objects/0/variables/T: number overflow"},
        {WithVariable(R"("T": {"valu": 1})"),
         "plant.json:6: /flowsheet/objects/0/variables/T/valu: unknown member \"valu\""},
        {WithObjects(R"({"name": "A", "type": "X"},
{"name": "A", "type": "Y"})"),
         "plant.json:7: /flowsheet/objects/1: another object of this list is called \"A\""},
        {WithObjects(R"({"type": "X"})"),
         "plant.json:6: /flowsheet/objects/0: \"name\" is missing"},
        {WithObjects(R"({"name": "A", "type": "X", "shape": "None"})"),
         "plant.json:6: /flowsheet/objects/0/shape: no such shape: \"None\""},
        {WithObjects(R"({"name": "A", "type": "MixerOpObject", "ports": [{"stream": "Gone"}]})"),
         "plant.json:6: /flowsheet/objects/0/ports/0: no stream \"Gone\" in this flowsheet"},
        {WithObjects(R"({"name": "A", "type": "MixerOpObject", "ports": [{"stream": "A"}]})"),
         "plant.json:6: /flowsheet/objects/0/ports/0: no stream \"A\" in this flowsheet"},
        {WithObjects(R"({"name": "S", "type": "MaterialStreamObject"},
{"name": "A", "type": "MixerOpObject", "ports": [{"stream": "S"}, {"stream": "S"}]})"),
         "plant.json:7: /flowsheet/objects/1/ports/1: the port stands twice: Inlet 1"},
        {WithBasis(R"({"kind": "text"})"), "plant.json:2: /basis/0: \"tag\" is missing"},
        {WithBasis(R"({"tag": "x", "kind": "taste"})"),
         "plant.json:2: /basis/0/kind: \"taste\" is none of group, custom, status, table, "
         "variable, object, number, text, document"},
        {WithBasis(R"({"tag": "x", "number": 1})"),
         "plant.json:2: /basis/0/number: unknown member \"number\""},
        {WithBasis(R"({"tag": "x", "kind": "group", "elements": [{"tag": "y", "text": 1}]})"),
         "plant.json:2: /basis/0/elements/0/text: expected a text, found a number"},
        {WithBasis(R"({"tag": "x", "kind": "number", "quantity": "Taste"})"),
         "plant.json:2: /basis/0/quantity: no such quantity: \"Taste\""},
        {WithBasis(R"({"tag": "x", "kind": "object", "object": "Gone"})"),
         "plant.json:2: /basis/0: the object \"Gone\" names no object"},
        {WithBasis(R"({"tag": "g", "kind": "group", "elements": [{"tag": "t", "kind": "table",
"columns": [{"name": "Attachment", "objects": [null, "Gone"]}]}]})"),
         "plant.json:2: /basis/0/elements/0: the object \"Gone\" names no object"},
        {WithBasis(
             R"({"tag": "t", "kind": "table", "columns": [{"name": "Attachment", "numbers": [1]}]})"),
         "plant.json:2: /basis/0/columns/0/numbers: unknown member \"numbers\""},
        {WithBasis(
             R"({"tag": "t", "kind": "table", "columns": [{"name": "a", "numbers": ["x"]}]})"),
         "plant.json:2: /basis/0/columns/0/numbers/0: expected a number, found \"x\""},
        {"{\"format\": \"casehost case\", \"version\": 2}",
         "plant.json:1: /: not a case file: expected format"},
        {"[]", "plant.json:1: /: expected an object, found an array"},
        {"", "plant.json:1: syntax error"},
        {"{\"format\": \"casehost case\",\n \"version\": 1,\n \"unitSet\": 3}",
         "plant.json:3: /unitSet: expected a whole number from 0 to 2"},
        {"{\"format\": \"casehost case\", \"version\": 1, \"shapes\": {\"S\": {\"X\": "
         "{\"quantity\": \"Taste\"}}}}",
         "plant.json:1: /shapes/S/X/quantity: no such quantity: \"Taste\""},
        {std::string(100, '['), "plant.json:1: "},
    };
    for (const auto& each : cases) {
        const ReadResult result = ReadCaseText("plant.json", each.text);
        EXPECT_EQ(result.data, nullptr) << each.text;
        ASSERT_FALSE(result.problems.empty()) << each.text;
        EXPECT_EQ(result.problems[0].Text().rfind(each.message, 0), 0u)
            << result.problems[0].Text() << "\nexpected: " << each.message;
    }
}

TEST(CaseFile, NestingIsBounded) {
    for (const int depth : {65, 200, 100'000}) {
        for (const std::string open : {"[", "{\"a\": ", "[{\"a\": "}) {
            std::string inside;
            for (int i = 0; i < depth; ++i) inside += open;
            const ReadResult result = ReadCaseText("deep.json", inside);
            ASSERT_EQ(result.data, nullptr) << open;
            ASSERT_EQ(result.problems.size(), 1u) << open;
            const std::string message = result.problems[0].Text();
            EXPECT_EQ(message.rfind("deep.json:1: /", 0), 0u) << message;
            EXPECT_NE(message.find(": nested deeper than 64 levels"), std::string::npos) << message;
        }
    }
    EXPECT_EQ(
        ReadCaseText("deep.json", std::string(64, '[') + std::string(64, ']')).problems[0].Text(),
        "deep.json:1: /: expected an object, found an array")
        << "64 levels are no problem";
}

// Objects may well be attached to each other in a ring: the references name objects, and whoever
// walks them has to know where it has been.
TEST(CaseFile, RingsOfAttachmentsAreRead) {
    CaseData data;
    ObjectData inner = Object("Inner", words::kMixer,
                              {Attachment("Up", "/T-100"), Attachment("Self", "Inner"),
                               Real("X", "", 1), Real("Y", "", 2, VariableState::calculated)});
    ObjectData group = Object("T-100", words::kTemplate, {Attachment("Down", "T-100/Inner")});
    group.sub_flowsheet = std::make_shared<FlowsheetData>();
    group.sub_flowsheet->objects = {inner};
    data.main.objects = {group};
    data.utilities = {
        Object("A", "EnvelopeUtilityObject", {Attachment("To", "/@utilities/B")}),
        Object("B", "EnvelopeUtilityObject",
               {Attachment("To", "/@utilities/A"), Attachment("In", "/T-100/Inner")})};
    CaseHost host;
    const OpenResult opened = host.Open(Read(CaseToText(data)));
    ASSERT_TRUE(opened);
    EXPECT_TRUE(opened.problems.empty());
    host::Viewable* at = opened.opened->FindByPath("/@utilities/A", nullptr)->View();
    host::Viewable* const begin = at;
    for (int step = 0; step < 2; ++step) {
        at = at->GetVariableAttachment(Node::Of(at)->GetShape()->ByName("To")->description);
    }
    EXPECT_EQ(at, begin) << "two steps round the ring";
    // A store makes all that depends on it stale, once round and no further.
    host::Viewable* changed = opened.opened->FindByPath("/T-100/Inner", nullptr)->View();
    changed->SetRealValue(Node::Of(changed)->GetShape()->ByName("X")->description, 5);
    for (const char* path : {"/T-100", "/T-100/Inner", "/@utilities/A", "/@utilities/B"}) {
        EXPECT_TRUE(opened.opened->FindByPath(path, nullptr)->IsStale()) << path;
    }
    // A path through the ring is followed as far as it is written.
    const auto number =
        std::to_string(Node::Of(begin)->GetShape()->ByName("To")->description.Number());
    const std::string ring =
        "/:Attachment." + number + "/:Attachment." + number + "/:Attachment." + number + "/:Name.0";
    EXPECT_EQ(begin->GetTextValue(host::VarDescription(ring.c_str() + 1, 0)).Str(), "B");
}

// Flowsheets stand inside the objects that hold them, so that none can hold itself.
TEST(CaseFile, FlowsheetThatIsNamedInsteadOfHeldIsRefused) {
    const ReadResult result = ReadCaseText(
        "ring.json", WithObjects(
                         R"({"name": "T", "type": "TemplateOpObject", "flowsheet": {"objects": [
{"name": "U", "type": "TemplateOpObject", "flowsheet": "T"}]}})"));
    ASSERT_EQ(result.data, nullptr);
    EXPECT_EQ(
        result.problems.at(0).Text(),
        "ring.json:7: /flowsheet/objects/0/flowsheet/objects/0/flowsheet: expected an object, "
        "found \"T\"");
}

TEST(CaseFile, CountsAreBounded) {
    const ReadResult result = ReadCaseText("big.json", R"({"format": "casehost case", "version": 1,
        "shapes": {"S": {"X": {"dimensions": [{"count": 1000000}, {"count": 1000000}, {"count": 1000000}]}}}})");
    ASSERT_EQ(result.data, nullptr);
    EXPECT_EQ(result.problems[0].Text(),
              "big.json:2: /shapes/S/X/dimensions: more than 1000000 elements");
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
              "no reader for this kind of file");
    EXPECT_NE(host.Open(Path("missing.json")).problems.at(0).message.find("can't be read"),
              std::string::npos);
    const OpenResult opened = host.Open(SmallCase());
    EXPECT_FALSE(host.Save(*opened.opened, Path("plant.xyz")));
    EXPECT_TRUE(host.Save(*opened.opened, Path("plant")));
    EXPECT_TRUE(std::filesystem::exists(Path("plant.json")));
}

TEST_F(CaseFileOnDisk, HundredThousandObjectsLoadInSeconds) {
    CaseData data;
    std::vector<VariableData> variables;
    for (int v = 0; v < 10; ++v)
        variables.push_back(Real("V" + std::to_string(v), "Pressure", v + 0.1));
    for (int i = 0; i < 100'000; ++i) {
        data.main.objects.push_back(
            Object("S" + std::to_string(i), words::kMaterialStream, variables));
    }
    ASSERT_TRUE(WriteCaseFile(data, Path("big.json")));
    const auto begin = std::chrono::steady_clock::now();
    CaseHost host;
    const OpenResult opened = host.Open(Path("big.json"));
    ASSERT_TRUE(opened);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(opened.opened->MainFlowSheet()->Objects().EntryAt(99'999) != nullptr, true);
    RecordProperty("seconds", std::to_string(seconds.count()));
    EXPECT_LT(seconds.count(), 60) << "sanitizers included";
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
}  // namespace casehost
