// SPDX-License-Identifier: Apache-2.0
// What is read out of case files, and what is told about those that can't be read.

#include <gtest/gtest.h>

#include "case_builder.h"
#include "case_text.h"
#include "live/case.h"

namespace fixtop::casehost {
namespace {

using test::Attachment;
using test::Object;
using test::Read;
using test::Real;
using test::WithBasis;
using test::WithObjects;
using test::WithVariable;

std::string WithShape(const std::string& inside) {
    return "{\"format\": \"casehost case\", \"version\": 1, \"shapes\": {\"S\": {\n" + inside +
           "}}}";
}

TEST(CaseReading, ProblemsNameFileLineAndPath) {
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
         "plant.json:6: /flowsheet/objects/0/variables/T: syntax error while parsing value - "
         "invalid "
         "literal; last read: '\"value\": N'; expected a text in quotes, a finite number, true, "
         "false, null, [ or {"},
        {WithVariable(R"("T": {"value": Infinity})"),
         "plant.json:6: /flowsheet/objects/0/variables/T: syntax error"},
        {WithVariable(R"("T": {"value": 1e999})"),
         "plant.json:6: /flowsheet/objects/0/variables/T: number overflow parsing '1e999'; "
         "expected "
         "a number of double precision"},
        {WithVariable("\"T\": {\"value\": " + std::string(100'000, '9') + "}"),
         "plant.json:6: /flowsheet/objects/0/variables/T: number overflow parsing "
         "'9999999999999999999999999999999999999999999999999999999; expected a number of double "
         "precision"},
        {WithVariable(R"("P": {"spec": {"quantity": "Pressure"}, "value": 1e308, "unit": "bar"})"),
         "plant.json:6: /flowsheet/objects/0/variables/P/value: the value is too large for a "
         "number "
         "in kPa"},
        {WithVariable(R"("T": {"spec": {"quantity": "Pressure"}, "value": 1})"),
         "plant.json:6: /flowsheet/objects/0/variables/T/spec: the object's shape declares \"T\" "
         "already"},
        {WithVariable(R"("Notes": {"value": "a\u0000b"})"),
         "plant.json:6: /flowsheet/objects/0/variables/Notes/value: a text with a NUL in it; "
         "expected one without"},
        {WithVariable(R"("T\u0000": {"value": 1})"),
         "plant.json:6: /flowsheet/objects/0/variables: a text with a NUL in it; expected one "
         "without"},
        {WithObjects("") + '\0', "plant.json:6: a NUL byte; expected the end of the text"},
        {WithObjects("") + '\n' + '\0' + "{}",
         "plant.json:7: a NUL byte; expected the end of the text"},
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
        {WithVariable(R"("V": {"spec": {"maximum": 5}, "value": 5.5})"),
         "plant.json:6: /flowsheet/objects/0/variables/V/value: the value is above the maximum of "
         "\"V\""},
        {WithVariable(R"("Mode": {"value": 0.5})"),
         "plant.json:6: /flowsheet/objects/0/variables/Mode/value: expected a whole number"},
        {WithVariable(R"("Grid": {"values": [1, 2], "state": "missing",
"states": ["missing", "missing"]})"),
         "plant.json:7: /flowsheet/objects/0/variables/Grid/states: \"state\" and \"states\" "
         "exclude each other"},
        {WithVariable(R"("Grid": {"values": [1, 2], "states": ["missing"]})"),
         "plant.json:6: /flowsheet/objects/0/variables/Grid/states: expected 2 states, found 1"},
        {WithVariable(R"("T": {"value": 1, "states": ["missing"]})"),
         "plant.json:6: /flowsheet/objects/0/variables/T/states: unknown member \"states\""},
        {WithVariable(R"("Notes": {"value": "x", "unit": "C"})"),
         "plant.json:6: /flowsheet/objects/0/variables/Notes/unit: the variable has no quantity "
         "and so no unit"},
        {WithVariable(R"("a/b~c": {"value": 1})"),
         "plant.json:6: /flowsheet/objects/0/variables/a~1b~0c: the object's shape has no variable "
         "\"a/b~c\""},
        {WithObjects(R"({"name": "S", "type": "MaterialStreamObject"},
{"name": "A", "type": "MixerOpObject", "ports": [{"stream": "S"}],
"variables": {"Inlet 1": {"spec": {}, "value": 1}}})"),
         "plant.json:7: /flowsheet/objects/1/ports/0: a variable has the name of the port: Inlet "
         "1"},
        {WithShape(R"("A": {"number": 7}, "B": {"number": 7})"),
         "plant.json:1: /shapes/S: the variables \"A\" and \"B\" have one number"},
        {WithShape(R"("A": {"dimensions": [{}, {}, {},
{}]})"),
         "plant.json:3: /shapes/S/A/dimensions/3: more than three dimensions"},
        {WithShape(R"("A": {"dimensions": [{"count": 2, "naming": "text", "labels": ["a"]}]})"),
         "plant.json:2: /shapes/S/A/dimensions/0: expected one label for each of the 2 elements, "
         "found 1"},
        {WithShape(R"("A": {"dimensions": [{"count": 1, "labels": ["a"]}]})"),
         "plant.json:2: /shapes/S/A/dimensions/0: numbered elements have no labels"},
    };
    for (const auto& each : cases) {
        const ReadResult result = ReadCaseText("plant.json", each.text);
        EXPECT_EQ(result.data, nullptr) << each.text;
        const std::string told = result.problems.empty() ? "" : result.problems[0].Text();
        EXPECT_EQ(told.rfind(each.message, 0), 0u) << told << "\nexpected: " << each.message;
    }
}

TEST(CaseReading, NestingIsBounded) {
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
TEST(CaseReading, RingsOfAttachmentsAreRead) {
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
TEST(CaseReading, FlowsheetThatIsNamedInsteadOfHeldIsRefused) {
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

TEST(CaseReading, CountsAreBounded) {
    const ReadResult result = ReadCaseText("big.json", R"({"format": "casehost case", "version": 1,
        "shapes": {"S": {"X": {"dimensions": [{"count": 1000000}, {"count": 1000000}, {"count": 1000000}]}}}})");
    ASSERT_EQ(result.data, nullptr);
    EXPECT_EQ(result.problems[0].Text(),
              "big.json:2: /shapes/S/X/dimensions: more than 1000000 elements");
}

// A shape makes values for each object that has it, so that a short text could fill any memory.
TEST(CaseReading, ValuesOfAllObjectsAreBounded) {
    std::string shape;
    for (int i = 0; i < 21; ++i) {
        shape += (i == 0 ? "\"" : ", \"") + std::to_string(i) +
                 "\": {\"dimensions\": [{\"count\": 1000000}]}";
    }
    const ReadResult result = ReadCaseText("big.json", R"({"format": "casehost case", "version": 1,
        "shapes": {"S": {)" + shape + R"(}}, "flowsheet": {"objects": [
        {"name": "A", "type": "MixerOpObject", "shape": "S"},
        {"name": "B", "type": "MixerOpObject", "shape": "S"}]}})");
    ASSERT_EQ(result.data, nullptr);
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_EQ(result.problems[0].Text(),
              "big.json:3: /flowsheet/objects/0: more than 20000000 values in the case");
}

TEST(CaseReading, NumbersMayBeSharedByVariablesOfDifferentKinds) {
    Read(WithShape(R"("A": {"number": 7}, "B": {"number": 7, "kind": "text"}, "C": {}, "D": {})"));
}

TEST(CaseReading, NamesOfLargeObjectsStandOnceToo) {
    std::string members;
    for (int i = 0; i < 40; ++i) members += "\"m" + std::to_string(i) + "\": {},";
    for (const int again : {0, 16, 39}) {
        const std::string name = "m" + std::to_string(again);
        const ReadResult result =
            ReadCaseText("plant.json", WithShape(members + "\n\"" + name + "\": {}"));
        ASSERT_EQ(result.data, nullptr) << name;
        EXPECT_EQ(result.problems.at(0).Text(), "plant.json:3: /shapes/S/" + name +
                                                    ": the name \"" + name +
                                                    "\" stands twice in one object");
    }
    Read(WithShape(members + "\"last\": {}"));
}

TEST(CaseReading, ProblemsAreToldUpToTwenty) {
    std::string variables;
    for (int i = 0; i < 50; ++i) {
        variables += (i == 0 ? "\"" : ", \"") + std::to_string(i) + "\": {\"value\": 1}";
    }
    EXPECT_EQ(ReadCaseText("plant.json", WithVariable(variables)).problems.size(), 20u);
}

TEST(CaseReading, VariablesStandInAnyOrder) {
    const CaseData data = Read(WithVariable(
        R"("Notes": {"value": "n"}, "T": {"value": 1}, "Own": {"spec": {}, "value": 2},
           "Grid": {"values": [3, 4]}, "Mode": {"value": "off"})"));
    const std::vector<VariableData>& variables = data.main.objects.at(0).variables;
    ASSERT_EQ(variables.size(), 6u) << "those of the shape in its order, then its own";
    const char* const names[] = {"T", "Mode", "Grid", "To", "Notes", "Own"};
    for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(variables[i].spec->name, names[i]);
    EXPECT_EQ(variables[0].values.at(0).number, 1);
    EXPECT_EQ(variables[1].values.at(0).number, 1);
    EXPECT_EQ(variables[2].values.at(1).number, 4);
    EXPECT_EQ(variables[3].values.at(0), ValueData());
    EXPECT_EQ(variables[4].values.at(0).text, "n");
    EXPECT_EQ(variables[5].values.at(0).number, 2);
}

TEST(CaseReading, VariablesFarFromTheirPlaceAreFound) {
    constexpr int kCount = 100;
    std::string shape;
    std::string values;
    for (int i = 0; i < kCount; ++i) {
        shape += (i == 0 ? "\"" : ", \"") + std::to_string(i) + "\": {}";
        const std::string name = std::to_string(i * 37 % kCount);
        values += (i == 0 ? "\"" : ", \"") + name + "\": {\"value\": " + name + "}";
    }
    const CaseData data = Read(R"({"format": "casehost case", "version": 1,
        "shapes": {"S": {)" + shape +
                               R"(}}, "flowsheet": {"objects": [
        {"name": "A", "type": "MixerOpObject", "shape": "S", "variables": {)" +
                               values + "}}]}}");
    const std::vector<VariableData>& variables = data.main.objects.at(0).variables;
    ASSERT_EQ(variables.size(), std::size_t{kCount});
    for (int i = 0; i < kCount; ++i) {
        EXPECT_EQ(variables[i].spec->name, std::to_string(i));
        EXPECT_EQ(variables[i].values.at(0).number, i) << variables[i].spec->name;
    }
}

// The text depends on the data alone, not on which objects share a description.
TEST(CaseReading, EqualDescriptionsMakeOneShape) {
    CaseData data;
    for (const char* name : {"A", "B"}) {
        data.main.objects.push_back(Object(name, words::kMixer, {Real("X", "Pressure", 1)}));
    }
    data.main.objects.push_back(Object("C", words::kMixer, {Real("X", "Temperature", 1)}));
    CaseData shared = data;
    shared.main.objects[1].variables[0].spec = shared.main.objects[0].variables[0].spec;
    const std::string text = CaseToText(data);
    EXPECT_EQ(text, CaseToText(shared));
    EXPECT_NE(text.find("\"MixerOpObject #2\": {"), std::string::npos) << text;
    EXPECT_EQ(text.find("\"MixerOpObject #3\""), std::string::npos) << text;
}

}  // namespace
}  // namespace fixtop::casehost
