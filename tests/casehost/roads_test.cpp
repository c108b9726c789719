// SPDX-License-Identifier: Apache-2.0
// Cases that are made while their text is read, beside the same read as a whole.

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "case_builder.h"
#include "case_text.h"
#include "json/case_text.h"

namespace fixtop::casehost {
namespace {

using test::Attachment;
using test::Object;
using test::Real;
using test::WithObjects;
using test::WithVariable;

std::unique_ptr<CaseData> ReadQuickly(const std::string& text) {
    std::istringstream in(text);
    return ReadGoodCase(in);
}

// A text with all kinds of values, shapes, ports, lists and a flowsheet in a flowsheet.
std::string Everything() {
    CaseData data;
    data.name = "all \"of\" it";
    data.title =
        "Gr\xc3\xb6\xc3\x9f"
        "e\n\\";
    ObjectData inner = Object("Inner", words::kMixer,
                              {Attachment("Up", "/T-100"), Real("X", "Pressure", -1.5e-7)});
    ObjectData group = Object("T-100", words::kTemplate, {Attachment("Down", "T-100/Inner")});
    group.sub_flowsheet = std::make_shared<FlowsheetData>();
    group.sub_flowsheet->objects = {inner};
    ObjectData mixer = Object("M", words::kMixer, {Real("X", "Pressure", 101.325)});
    mixer.ports = {{PortData::Role::feed, 0, "Feed"}, {PortData::Role::product, 0, "Out"}};
    data.main.objects = {Object("Feed", words::kMaterialStream, {Real("T", "Temperature", 1e22)}),
                         Object("Out", words::kMaterialStream, {}), mixer, group};
    data.utilities = {Object("A", "EnvelopeUtilityObject", {Attachment("To", "/T-100/Inner")})};
    data.compounds = {CompoundData()};
    data.compounds[0].name = "Methane";
    BasisElement element;
    element.tag = "note";
    element.text = "\t";
    data.basis = {element};
    return CaseToText(data);
}

// What is written is read on the quick road.
TEST(CaseRoads, WrittenCasesAreReadWhileTheyAreMade) {
    const std::string text = Everything();
    const auto quick = ReadQuickly(text);
    ASSERT_NE(quick, nullptr);
    EXPECT_EQ(CaseToText(*quick), text);
    const ReadResult any = ReadAnyCase("plant.json", text);
    ASSERT_NE(any.data, nullptr);
    EXPECT_EQ(CaseToText(*any.data), text);
}

TEST(CaseRoads, TextWrittenInPiecesIsTheWhole) {
    CaseData data;
    for (int i = 0; i < 3000; ++i) {
        data.main.objects.push_back(
            Object("S" + std::to_string(i), words::kMaterialStream,
                   {Real("T", "Temperature", i), Real("P", "Pressure", i)}));
    }
    std::string text;
    int pieces = 0;
    WriteCase(data, [&](std::string_view piece) {
        text += piece;
        ++pieces;
    });
    EXPECT_EQ(text, CaseToText(data));
    EXPECT_GT(pieces, 1);
}

// Text comes in pieces; wherever one ends, what stands there is read as if it went on.
TEST(CaseRoads, TextMayBeCutAnywhere) {
    constexpr std::size_t kPiece = std::size_t{1} << 16;
    const std::string text = Everything();
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        const auto quick = ReadQuickly(std::string(kPiece - cut, ' ') + text);
        ASSERT_NE(quick, nullptr) << "cut at " << cut;
        ASSERT_EQ(CaseToText(*quick), text) << "cut at " << cut;
    }
}

TEST(CaseRoads, ObjectsLargerThanAPieceAreRead) {
    std::string values = "0";
    for (int i = 1; i < 60'000; ++i) values += ", " + std::to_string(i);
    const std::string text = WithVariable(
        R"("Long": {"spec": {"dimensions": [{"count": 60000}]}, "values": [)" + values + "]}");
    const auto quick = ReadQuickly(text);
    ASSERT_NE(quick, nullptr);
    const std::vector<ValueData>& read = quick->main.objects.at(0).variables.back().values;
    ASSERT_EQ(read.size(), 60'000u);
    for (std::size_t i = 0; i < read.size(); ++i) ASSERT_EQ(read[i].number, static_cast<double>(i));
}

TEST(CaseRoads, NumbersAreTheSame) {
    for (const char* number :
         {"0", "-0", "-0.0", "0e5", "1E+2", "1e-400", "4.9e-324", "2.5e-324",
          "18446744073709551615", "18446744073709551616", "-9223372036854775809",
          "9007199254740993", "0.1", "1.7976931348623157e308", "123456789012345678901234567890"}) {
        const std::string text =
            WithVariable(R"("Own": {"spec": {}, "value": )" + std::string(number) + "}");
        const ReadResult any = ReadAnyCase("plant.json", text);
        const ReadResult read = ReadCaseText("plant.json", text);
        ASSERT_NE(any.data, nullptr) << number;
        ASSERT_NE(read.data, nullptr) << number;
        EXPECT_EQ(CaseToText(*read.data), CaseToText(*any.data)) << number;
    }
}

TEST(CaseRoads, GoodTextsInAnotherOrderAreRead) {
    const std::string flowsheet =
        R"("flowsheet": {"objects": [{"name": "A", "type": "X", "shape": "S"}]})";
    const std::string head = R"({"format": "casehost case", "version": 1, )";
    for (const std::string& text :
         {head + flowsheet + R"(, "shapes": {"S": {"T": {}}}})",
          "\xef\xbb\xbf" + head + R"("shapes": {"S": {"T": {}}}, )" + flowsheet + "}"}) {
        EXPECT_EQ(ReadQuickly(text), nullptr) << text;
        const ReadResult read = ReadCaseText("plant.json", text);
        ASSERT_NE(read.data, nullptr) << text;
        EXPECT_EQ(read.data->main.objects.at(0).variables.at(0).spec->name, "T");
    }
}

TEST(CaseRoads, NothingThatIsRefusedIsReadQuickly) {
    const std::string good = WithObjects("");
    ASSERT_NE(ReadQuickly(good), nullptr);
    std::vector<std::string> bad = {
        "",
        "{",
        "[]",
        good + "x",
        good + '\0',
        good.substr(0, good.size() - 1),
        "{}",
        WithObjects(R"({"name": "A", "type": "X"}, {"name": "A", "type": "X"})"),
        WithObjects(R"({"name": "A", "type": "X"},)"),
        WithObjects(R"({"name": "A", "name": "A", "type": "X"})"),
        WithObjects(R"({"name": "A", "type": "MixerOpObject", "ports": [{"stream": "Gone"}]})"),
        WithVariable(R"("To": {"value": "Nowhere"})"),
        R"({"format": "casehost case", "version": 1, "version": 1})",
        R"({"format": "casehost case", "version": 1, "utilities": [], "utilities": []})",
        R"({"format": "casehost case", "version": 1, "shapes": []})",
        R"({"format": "casehost case", "version": 1, "shapes": {"S": {"T": 1}}})",
        R"({"format": "casehost case", "version": 1, "flowsheet": {"objects": [], "x": 1}})"};
    for (const char* value :
         {"01", "+1", ".5", "1.", "1e", "-", "1e999", "NaN", "tru", "nul", "\"", "\"\\x\"",
          "\"\t\"", "\"\\ud800\"", "\"\xff\"", "\"\\u0000\"", "'a'", "{]", "[1 2]"}) {
        bad.push_back(WithVariable(R"("Own": {"spec": {}, "value": )" + std::string(value) + "}"));
    }
    std::string deep = "1";
    for (int i = 0; i < 61; ++i) deep = "[" + deep + "]";
    bad.push_back(WithObjects(R"({"name": "A", "type": "X", "ports": )" + deep + "}"));
    for (const std::string& text : bad) {
        EXPECT_EQ(ReadQuickly(text), nullptr) << text;
        EXPECT_EQ(ReadAnyCase("plant.json", text).data, nullptr) << text;
    }
}

// Texts with a few characters changed: the quick road may leave them alone, but reads none
// otherwise.
TEST(CaseRoads, ChangedTextsAreReadAlike) {
    const std::string text = Everything();
    constexpr std::string_view kCharacters = "{}[],:\"\\-+.0123456789eEtfn \n\t\x7f\xc3\xa9ux/";
    std::mt19937 random(20260101);
    int read = 0;
    for (int round = 0; round < 5'000; ++round) {
        std::string changed = text;
        for (unsigned i = 0; i <= random() % 2; ++i) {
            const std::size_t at = random() % changed.size();
            const char c = kCharacters[random() % kCharacters.size()];
            if (random() % 3 == 0) {
                changed.erase(at, 1 + random() % 3);
            } else if (random() % 2 == 0) {
                changed.insert(at, 1, c);
            } else {
                changed[at] = c;
            }
        }
        const auto quick = ReadQuickly(changed);
        const ReadResult any = ReadAnyCase("plant.json", changed);
        if (!quick) continue;
        ++read;
        ASSERT_NE(any.data, nullptr) << changed;
        ASSERT_EQ(CaseToText(*quick), CaseToText(*any.data)) << changed;
    }
    EXPECT_GT(read, 100);
}

}  // namespace
}  // namespace fixtop::casehost
