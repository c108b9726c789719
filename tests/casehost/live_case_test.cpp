// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include "case_builder.h"
#include "casehost/case_host.h"
#include "casehost/units.h"
#include "fixtop/host/array_set.h"
#include "live/case.h"

namespace fixtop::casehost {
namespace {

using host::VarDescription;
using test::Array;
using test::Attachment;
using test::Choice;
using test::Composition;
using test::Object;
using test::Real;
using test::SmallCase;
using test::Stream;
using test::TextVariable;

constexpr auto kGiven = VariableState::specified;
constexpr auto kFound = VariableState::calculated;

class LiveCase : public ::testing::Test {
 protected:
    Case& Open(const CaseData& data) {
        const OpenResult result = host_.Open(data);
        for (const CaseProblem& problem : result.problems) ADD_FAILURE() << problem.Text();
        return *result.opened;
    }
    host::Viewable* Get(const std::string& path) {
        Node* node = host_.ActiveLiveCase()->FindByPath(path, nullptr);
        return node ? node->View() : nullptr;
    }
    static host::VariableNameInfo* Row(host::Viewable* object, const std::string& name) {
        host::VariableNameIterator rows(object->VariableNames());
        for (auto* row = rows.Reset(); row; row = rows.Next()) {
            if (name == row->name) return row;
        }
        return nullptr;
    }
    static double Value(host::Viewable* object, const std::string& name) {
        return object->GetRealValue(Row(object, name)->description);
    }
    int State(host::Viewable* object, const std::string& name) {
        host::ModifyState state = host::kSpecified;
        int detail = 0;
        host_.Services().GetVariableStatus(object, Row(object, name)->description, state, detail);
        return state;
    }
    std::string Moniker(const std::string& path, bool full) {
        return host_.Services().RelativeMoniker(nullptr, Get(path), full).Str();
    }

    CaseHost host_;
};

TEST_F(LiveCase, RowsCarryNamesKindsAndDescriptions) {
    auto array = Array("Table", "Pressure",
                       {{5, 2, ElementNaming::number, {}}, {1, 3, ElementNaming::number, {}}},
                       {1, 2, 3, 4, 5, 6});
    auto flagged = test::Spec("Flagged");
    flagged->flagged = true;
    CaseData data;
    data.main.objects = {Object("A", words::kMixer,
                                {Real("X", "Temperature", 7),
                                 Choice("Mode", {"on", "off"}, 1),
                                 TextVariable("Notes", "hello"),
                                 Attachment("Self", "A"),
                                 array,
                                 {flagged, {{1, "", kGiven}}},
                                 {test::Spec("Advice", ValueKind::message), {{}}}})};
    Open(data);
    host::Viewable* a = Get("A");
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(Row(a, "X")->value_kind, host::kReal);
    EXPECT_EQ(Row(a, "Mode")->value_kind, host::kEnumeration);
    EXPECT_EQ(Row(a, "Notes")->value_kind, host::kText);
    EXPECT_EQ(Row(a, "Self")->value_kind, host::kAttachment);
    EXPECT_EQ(Row(a, "Advice")->value_kind, host::kMessage);
    EXPECT_EQ(Row(a, "X")->description.Kind(), host::kPartReal);
    EXPECT_EQ(Row(a, "Notes")->description.Kind(), host::kPartText);
    EXPECT_EQ(Row(a, "Self")->description.Kind(), host::kPartAttachment);
    EXPECT_EQ(Row(a, "Flagged")->flags, 1 << 6);
    EXPECT_EQ(Row(a, "X")->flags, 0);
    const std::pair<const char*, int> dimensions[] = {{"X", 0}, {"Table", 2}};
    for (const auto& [name, count] : dimensions) {
        const std::string text = Row(a, name)->TextDescription().Str();
        EXPECT_EQ(std::count(text.begin(), text.end(), '['), count) << text;
        EXPECT_EQ(Row(a, name)->offset_description_count, count) << name;
        EXPECT_EQ(Row(a, name)->offset_descriptions != nullptr, count > 0) << name;
    }
    EXPECT_EQ(Value(a, "X"), 7);
    EXPECT_EQ(Value(a, "Mode"), 1);
    EXPECT_EQ(a->GetTextValue(Row(a, "Notes")->description).Str(), "hello");
    EXPECT_EQ(a->GetVariableAttachment(Row(a, "Self")->description), a);
    host::VarEnumInfo* mode = a->GetVariableEnum(Row(a, "Mode"));
    EXPECT_STREQ(mode->Reset()->name, "on");
    EXPECT_STREQ(mode->Next()->name, "off");
    EXPECT_EQ(mode->Next(), nullptr);
    int ordinal = -1;
    EXPECT_NE(mode->FindEntry(host::Text("off"), ordinal), nullptr);
    EXPECT_EQ(ordinal, 1);
    EXPECT_EQ(mode->FindEntry(host::Text("Off"), ordinal), nullptr) << "letters count";
    EXPECT_EQ(ordinal, 1) << "left alone";
    EXPECT_STREQ(mode->FindEntry(0)->name, "on");
    EXPECT_EQ(mode->FindEntry(2), nullptr);
    EXPECT_EQ(mode->FindEntry(-1), nullptr);
    EXPECT_EQ(Row(a, "X")->GetEnumInfo(a), nullptr);
}

TEST_F(LiveCase, ArrayElementsAreCountedFromTheirLowBoundLastDimensionFastest) {
    CaseData data;
    data.main.objects = {Object(
        "A", words::kMixer,
        {Array("Table", "", {{5, 2, ElementNaming::number, {}}, {1, 3, ElementNaming::number, {}}},
               {1, 2, 3, 4, 5, 6})})};
    Open(data);
    host::Viewable* a = Get("A");
    host::VarDescription table = Row(a, "Table")->description;
    host::DimInfo dimensions;
    a->GetVariableDimensions(table, dimensions);
    EXPECT_EQ(dimensions.count, 2u);
    EXPECT_EQ(dimensions.low[0], 5);
    EXPECT_EQ(dimensions.high[0], 6);
    EXPECT_EQ(dimensions.high[1], 3);
    EXPECT_EQ(a->GetRealValue(table), host::kEmptyReal) << "offsets are not filled";
    struct {
        int first, second;
        double value;
    } cases[] = {{5, 1, 1},
                 {5, 3, 3},
                 {6, 1, 4},
                 {6, 3, 6},
                 {4, 1, host::kEmptyReal},
                 {7, 1, host::kEmptyReal},
                 {5, 0, host::kEmptyReal},
                 {5, 4, host::kEmptyReal}};
    for (const auto& each : cases) {
        table.SetOffset(0, each.first, false);
        table.SetOffset(1, each.second, false);
        EXPECT_EQ(a->GetRealValue(table), each.value) << each.first << ',' << each.second;
        const std::string moniker = table.GetFilledMoniker().Str();
        EXPECT_EQ(a->GetRealValue(VarDescription(moniker.c_str(), 0)), each.value) << moniker;
    }
}

TEST_F(LiveCase, BoundsAtTheEndsOfTheNumbersAreKept) {
    CaseData data;
    const DimensionData low{INT_MIN, 2, ElementNaming::number, {}};
    const DimensionData high{INT_MAX - 1, 3, ElementNaming::number, {}};
    const DimensionData named{INT_MIN, 2, ElementNaming::enumeration, {"Vapour", "Liquid"}};
    const DimensionData texts{INT_MIN, 2, ElementNaming::text, {"Methane", "Ethane"}};
    data.main.objects = {
        Object("A", words::kMixer,
               {Array("Low", "", {low}, {1, 2}), Array("High", "", {high}, {1, 2, 3}),
                Array("Named", "", {named, texts}, {1, 2, 3, 4})})};
    Open(data);
    host::Viewable* a = Get("A");
    struct {
        const char* name;
        int low, high;
    } bounds[] = {{"Low", INT_MIN, INT_MIN + 1}, {"High", INT_MAX - 1, INT_MAX}};
    for (const auto& each : bounds) {
        VarDescription description = Row(a, each.name)->description;
        host::DimInfo dimensions;
        a->GetVariableDimensions(description, dimensions);
        EXPECT_EQ(dimensions.low[0], each.low);
        EXPECT_EQ(dimensions.high[0], each.high) << "no number is higher";
        for (const int offset : {INT_MIN, INT_MIN + 1, -1, 0, INT_MAX - 1, INT_MAX}) {
            const bool inside =
                offset >= each.low && offset <= each.high && offset != VarDescription::kNoOffset;
            description.SetOffset(0, offset, false);
            EXPECT_EQ(a->GetRealValue(description) != host::kEmptyReal, inside) << offset;
        }
    }
    const host::VariableNameInfo* row = Row(a, "Named");
    host::VarEnumInfo* names = a->GetVariableEnum(a->FindVariableName(row->offset_descriptions[0]));
    EXPECT_STREQ(names->FindEntry(long{INT_MIN} + 1)->name, "Liquid");
    for (const long ordinal : {LONG_MIN, 0L, LONG_MAX}) {
        const bool is_first = ordinal == INT_MIN;
        EXPECT_EQ(names->FindEntry(ordinal) != nullptr, is_first) << ordinal;
    }
    VarDescription label = row->offset_descriptions[1];
    for (const int offset : {INT_MIN + 1, INT_MAX}) {
        label.SetOffset(0, offset, false);
        EXPECT_EQ(a->GetTextValue(label).Str(), offset == INT_MAX ? "" : "Ethane");
    }
}

TEST_F(LiveCase, OrdinalsFarFromAnEnumerationAreNone) {
    CaseData data;
    const DimensionData phases{1, 2, ElementNaming::enumeration, {"Vapour", "Liquid"}};
    data.main.objects = {Object(
        "A", words::kMixer, {Choice("Mode", {"on", "off"}, 1), Array("T", "", {phases}, {1, 2})})};
    Open(data);
    host::Viewable* a = Get("A");
    const host::VarDescription& element = Row(a, "T")->offset_descriptions[0];
    host::VarEnumInfo* names = a->GetVariableEnum(a->FindVariableName(element));
    EXPECT_STREQ(names->FindEntry(1)->name, "Vapour");
    for (const long ordinal : {LONG_MIN, LONG_MIN + 1, LONG_MAX}) {
        EXPECT_EQ(names->FindEntry(ordinal), nullptr) << ordinal;
        EXPECT_EQ(a->GetVariableEnum(Row(a, "Mode"))->FindEntry(ordinal), nullptr) << ordinal;
    }
    for (const double number : {double{NAN}, double{INFINITY}, 1e300, -1e300, 0.5, 2.0, -1.0}) {
        a->SetRealValue(Row(a, "Mode")->description, number);
        EXPECT_EQ(Value(a, "Mode"), 1) << number;
    }
}

TEST_F(LiveCase, VariableTypesBelowThoseOfQuantitiesHaveNoUnits) {
    for (const host::VariableType type : {INT_MIN, INT_MIN + 1999, -1, 0, 2000, INT_MAX}) {
        EXPECT_EQ(UnitTypeOfVariableType(type), host::kVariableUnitType) << type;
    }
    EXPECT_EQ(UnitTypeOfVariableType(2001), 1);
}

TEST_F(LiveCase, ElementNamesComeFromTheOffsetDescription) {
    CaseData data;
    DimensionData by_enumeration{0, 2, ElementNaming::enumeration, {"Vapour", "Liquid"}};
    DimensionData by_text{0, 2, ElementNaming::text, {"Methane", "Ethane"}};
    DimensionData by_object{3, 1, ElementNaming::attached_object, {"A"}};
    data.main.objects = {Object("A", words::kMixer,
                                {Array("T", "", {by_enumeration, by_text, by_object}, {1, 2, 3, 4}),
                                 Array("N", "", {{0, 1, ElementNaming::number, {}}}, {1})})};
    Open(data);
    host::Viewable* a = Get("A");
    const host::VariableNameInfo* row = Row(a, "T");
    ASSERT_EQ(row->offset_description_count, 3);
    const VarDescription& first = row->offset_descriptions[0];
    EXPECT_EQ(first.GetMoniker().Str().find('['), std::string::npos);
    host::VariableNameInfo* names = a->FindVariableName(first);
    ASSERT_NE(names, nullptr);
    EXPECT_STREQ(a->GetVariableEnum(names)->FindEntry(1)->name, "Liquid");
    VarDescription second = row->offset_descriptions[1];
    EXPECT_EQ(second.Kind(), host::kPartText);
    EXPECT_NE(second.GetMoniker().Str().find('['), std::string::npos);
    const int one = 1;
    second.FillRunning(&one, 1);
    EXPECT_EQ(a->GetTextValue(second).Str(), "Ethane");
    VarDescription third = row->offset_descriptions[2];
    EXPECT_EQ(third.Kind(), host::kPartAttachment);
    const int three = 3;
    third.FillRunning(&three, 1);
    EXPECT_EQ(a->GetVariableAttachment(third), a);
    EXPECT_EQ(Row(a, "N")->offset_descriptions[0].GetMoniker().Str(), ":");
}

TEST_F(LiveCase, PortsAreAttachmentRows) {
    Open(SmallCase());
    host::Viewable* heater = Get("Heater");
    struct {
        const char* row;
        const char* stream;
    } cases[] = {{"Inlet 1", "Low"}, {"Outlet 1", "Hot"}, {"Energy Inlet 1", "Duty"}};
    for (const auto& each : cases) {
        ASSERT_NE(Row(heater, each.row), nullptr) << each.row;
        EXPECT_EQ(heater->GetVariableAttachment(Row(heater, each.row)->description),
                  Get(each.stream));
    }
}

TEST_F(LiveCase, StreamsShowTheUnitOperationsAtTheirEnds) {
    CaseData data = SmallCase();
    Case& live = Open(data);
    const auto linked = [&](const char* stream, const char* row) -> std::string {
        host::VarDescription element = Row(Get(stream), row)->description;
        element.SetOffset(0, 0, false);
        host::Viewable* unit = Get(stream)->GetVariableAttachment(element);
        return unit ? unit->GetName().Str() : "";
    };
    struct {
        const char* stream;
        const char* upstream;
        const char* downstream;
    } rows[] = {{"Feed", "", "Valve"},
                {"Low", "Valve", "Heater"},
                {"Hot", "Heater", ""},
                {"Duty", "", "Heater"}};
    for (const auto& row : rows) {
        EXPECT_EQ(linked(row.stream, "Upstream Unit Operations"), row.upstream) << row.stream;
        EXPECT_EQ(linked(row.stream, "Downstream Unit Operations"), row.downstream) << row.stream;
    }
    EXPECT_EQ(Row(Get("Valve"), "Upstream Unit Operations"), nullptr);
    live.Rename(Get("Valve"), "VLV-1");
    EXPECT_EQ(linked("Low", "Upstream Unit Operations"), "VLV-1");
    live.Delete(Get("VLV-1"));
    EXPECT_EQ(linked("Low", "Upstream Unit Operations"), "");
    live.PurgeDeleted();
    EXPECT_EQ(linked("Low", "Upstream Unit Operations"), "");
    live.Add(nullptr, Object("New", words::kValve, {}, {{PortData::Role::product, 0, "Low"}}));
    EXPECT_EQ(linked("Low", "Upstream Unit Operations"), "New");
    for (const ObjectData& object : live.ToData().main.objects) {
        for (const VariableData& variable : object.variables) {
            EXPECT_EQ(variable.spec->name.find(" Unit Operations"), std::string::npos)
                << "what ports say is not saved twice";
        }
    }
}

TEST_F(LiveCase, VariablesNamedLikePortsLinkStreamsToo) {
    CaseData data = SmallCase();
    data.main.objects.push_back(
        Object("Tower", words::kDistillation,
               {Attachment("Inlet 2", "Hot"), Attachment("Outlet 1", "Feed"),
                Attachment("Inlet", "Duty"), Attachment("Outlet x", "Duty")},
               {}));
    Open(data);
    const auto linked = [&](const char* stream, const char* row) -> std::string {
        host::VarDescription element = Row(Get(stream), row)->description;
        element.SetOffset(0, 0, false);
        host::Viewable* unit = Get(stream)->GetVariableAttachment(element);
        return unit ? unit->GetName().Str() : "";
    };
    EXPECT_EQ(linked("Hot", "Downstream Unit Operations"), "Tower");
    EXPECT_EQ(linked("Feed", "Upstream Unit Operations"), "Tower");
    EXPECT_EQ(linked("Duty", "Downstream Unit Operations"), "Heater");
    EXPECT_EQ(linked("Duty", "Upstream Unit Operations"), "");
}

TEST_F(LiveCase, StreamWithAVariableOfTheNameOfALinkShowsThatAlone) {
    CaseData data = SmallCase();
    data.main.objects[2].variables.push_back(TextVariable("Upstream Unit Operations", "elsewhere"));
    Open(data);
    host::VariableNameIterator rows(Get("Low")->VariableNames());
    int count = 0;
    for (auto* row = rows.Reset(); row; row = rows.Next()) {
        count += std::string(row->name) == "Upstream Unit Operations";
    }
    EXPECT_EQ(count, 1);
    EXPECT_EQ(Row(Get("Low"), "Upstream Unit Operations")->value_kind, host::kText);
    EXPECT_EQ(Row(Get("Low"), "Downstream Unit Operations")->value_kind, host::kAttachment);
}

TEST_F(LiveCase, ObjectsOfOneShapeShareTheirRows) {
    Open(SmallCase());
    EXPECT_EQ(Get("Feed")->VariableNames(), Get("Low")->VariableNames());
    EXPECT_NE(Get("Feed")->VariableNames(), Get("Duty")->VariableNames());
}

TEST_F(LiveCase, DescriptionOfAnotherShapeIsFoundByItsMoniker) {
    CaseData data;
    data.main.objects = {
        Object("A", words::kMixer, {Real("P", "Pressure", 1), Real("T", "Temperature", 2)}),
        Object("B", words::kTee, {Real("T", "Temperature", 3)})};
    Open(data);
    EXPECT_EQ(Get("B")->GetRealValue(Row(Get("A"), "T")->description), 3);
    EXPECT_EQ(Get("B")->GetRealValue(Row(Get("A"), "P")->description), host::kEmptyReal);
}

TEST_F(LiveCase, StoresAreKeptRefusedOrLimited) {
    auto limited = std::make_shared<VariableSpec>(*test::Spec("Limited"));
    limited->minimum = 0;
    limited->maximum = 10;
    CaseData data;
    data.main.objects = {Object("A", words::kMixer,
                                {Real("Given", "", 1),
                                 Real("Found", "", 2, kFound),
                                 Real("Default", "", 3, VariableState::defaulted),
                                 Real("Open", "", kEmpty, VariableState::missing),
                                 {limited, {{5, "", kGiven}}},
                                 Choice("Mode", {"on", "off"}, 0)})};
    Open(data);
    host::Viewable* a = Get("A");
    struct {
        const char* name;
        double stored, after;
        int state;
    } cases[] = {{"Given", 8, 8, 1},     {"Found", 8, 2, 0},          {"Default", 8, 8, 1},
                 {"Open", 8, 8, 1},      {"Limited", -1, 5, 1},       {"Limited", 11, 5, 1},
                 {"Limited", 10, 10, 1}, {"Mode", 1, 1, 1},           {"Mode", 2, 1, 1},
                 {"Mode", 0.5, 1, 1},    {"Given", kEmpty, kEmpty, 4}};
    for (const auto& each : cases) {
        // A fresh solve would fill the stale calculated values; here only stores are looked at.
        Node::Of(a)->SetStale(false);
        a->SetRealValue(Row(a, each.name)->description, each.stored);
        Node::Of(a)->SetStale(false);
        EXPECT_EQ(Value(a, each.name), each.after) << each.name << " <- " << each.stored;
        EXPECT_EQ(State(a, each.name), each.state) << each.name << " <- " << each.stored;
    }
    a->SetRealValue(Row(a, "Given")->description, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(Value(a, "Given"), kEmpty);
}

TEST_F(LiveCase, TextsAreStoredUnlessTheyAreCalculated) {
    CaseData data;
    data.main.objects = {Object("A", words::kMixer,
                                {TextVariable("Given", "g"), TextVariable("Found", "f"),
                                 Attachment("To", "A"), Real("X", "", 1)})};
    data.main.objects[0].variables[1].values[0].state = kFound;
    Open(data);
    host::Viewable* a = Get("A");
    const auto text = [&](const char* name) {
        return a->GetTextValue(Row(a, name)->description).Str();
    };
    a->SetTextValue(Row(a, "Found")->description, "new");
    EXPECT_EQ(text("Found"), "f") << "refused";
    EXPECT_FALSE(Node::Of(a)->IsStale());
    a->SetTextValue(Row(a, "X")->description, "2");
    EXPECT_EQ(Value(a, "X"), 1);
    a->SetTextValue(Row(a, "Given")->description, "new");
    EXPECT_EQ(text("Given"), "new");
    EXPECT_EQ(text("Found"), "") << "what was calculated before is stale";
    EXPECT_EQ(State(a, "Found"), host::kMissing);
}

TEST_F(LiveCase, StoreMakesWhatDependsOnItStale) {
    Open(SmallCase());
    Get("Low");
    host::Viewable* feed = Get("Feed");
    feed->SetRealValue(Row(feed, "Temperature")->description, 40);
    EXPECT_EQ(Value(feed, "Temperature"), 40);
    for (const char* name : {"Feed", "Valve", "Low", "Heater", "Hot", "Duty"}) {
        EXPECT_EQ(Get(name)->GetMyStatusCondition(), host::Viewable::kNotSolved) << name;
    }
    for (const char* name : {"Other", "Pump", "Pumped"}) {
        EXPECT_EQ(Get(name)->GetMyStatusCondition(), host::Viewable::kOk) << name;
    }
    EXPECT_EQ(Value(Get("Hot"), "Temperature"), host::kEmptyReal);
    EXPECT_EQ(State(Get("Hot"), "Temperature"), host::kMissing);
    EXPECT_EQ(Value(Get("Pumped"), "Temperature"), 20.5);
}

TEST_F(LiveCase, StaleValuesAreSavedWithoutNumbers) {
    Case& live = Open(SmallCase());
    host::Viewable* feed = Get("Feed");
    feed->SetRealValue(Row(feed, "Temperature")->description, 40);
    const CaseData data = live.ToData();
    EXPECT_EQ(data.main.objects[5].name, "Hot");
    EXPECT_EQ(data.main.objects[5].variables[0].values[0].number, kEmpty);
    EXPECT_EQ(data.main.objects[5].status, ObjectStatus::not_solved);
    EXPECT_EQ(data.main.objects[8].variables[0].values[0].number, 20.5);
}

TEST_F(LiveCase, CompositionIsNormalisedAtOnceOrWhenTheEditEnds) {
    Open(SmallCase());
    host::Viewable* feed = Get("Feed");
    const VarDescription row = Row(feed, names::kCompMoleFrac)->description;
    EXPECT_EQ(row.Number(), 501);
    EXPECT_EQ(row.Type(), 9);
    EXPECT_EQ(row.GetMoniker().Str(), ":Double.501.[]");
    auto fraction = [&](int i) {
        VarDescription element = row;
        element.SetOffset(0, i, false);
        return feed->GetRealValue(element);
    };
    auto store = [&](int i, double value) {
        VarDescription element = row;
        element.SetOffset(0, i, false);
        element.SetOffset(0, 1351, false);
        feed->SetRealValue(element, value);
    };
    store(0, 0.25);  // 0.25 and 0.25
    EXPECT_DOUBLE_EQ(fraction(0), 0.5);
    EXPECT_DOUBLE_EQ(fraction(1), 0.5);
    host::ProcessStream* stream = feed->AsProcessStream();
    ASSERT_NE(stream, nullptr);
    stream->BeginDeferCompNormalize();
    stream->StartCompositionEditSession();
    store(0, 3);
    store(1, 1);
    EXPECT_EQ(fraction(0), 3);
    stream->EndDeferCompNormalize();
    EXPECT_DOUBLE_EQ(fraction(0), 0.75);
    EXPECT_DOUBLE_EQ(fraction(1), 0.25);
    stream->BeginDeferCompNormalize();
    stream->StartCompositionEditSession();
    store(0, 0);
    store(1, 0);
    stream->EndDeferCompNormalize();
    EXPECT_DOUBLE_EQ(fraction(0), 0.75) << "nothing to normalise: the old composition comes back";
}

CaseData NestedCase() {
    CaseData data = SmallCase();
    ObjectData group = Object("T-100", words::kTemplate);
    group.sub_flowsheet = std::make_shared<FlowsheetData>();
    group.sub_flowsheet->objects = {Stream("Inner", kGiven), Object("V", words::kValve)};
    data.main.objects.push_back(group);
    data.main.objects.push_back(Object("Sheet Utility", "EnvelopeUtilityObject"));
    data.utilities = {Object("Envelope", "EnvelopeUtilityObject", {Attachment("Stream", "Feed")})};
    data.data_tables = {Object("Table", "ProcessDataTableObject")};
    data.reactions = {Object("Rxn-1", "ConversionReactionObject"), Object("Rxn-2", "MyReaction")};
    data.published = {Object("PV-1", "RTIVariable", {Real("Value", "Pressure", 12)})};
    return data;
}

TEST_F(LiveCase, MonikersNameEveryOwner) {
    Open(NestedCase());
    struct {
        const char* path;
        const char* plain;
        const char* full;
    } cases[] = {
        {"Feed", "/FlowSht.1/StreamObject.400Feed", "/FlowSht.1/StreamObject.400(Feed)"},
        {"Valve", "/FlowSht.1/UnitOpObject.400Valve", "/FlowSht.1/UnitOpObject.400(Valve)"},
        {"/T-100/Inner", "/FlowSht.1/UnitOpObject.400T-100/FlowSht.1/StreamObject.400Inner",
         "/FlowSht.1/UnitOpObject.400(T-100)/FlowSht.1/StreamObject.400(Inner)"},
        {"Sheet Utility", "/FlowSht.1/Utility.300Sheet Utility",
         "/FlowSht.1/Utility.300(Sheet Utility)"},
        {"/@utilities/Envelope", "/Utility.300Envelope", "/Utility.300(Envelope)"},
        {"/@tables/Table", "/ProcessDataTable.300Table", "/ProcessDataTable.300(Table)"},
        {"/@reactions/Rxn-1", "/FluidPkgMgr.300/RxnPackageManager.300/Rxn.300Rxn-1",
         "/FluidPkgMgr.300/RxnPackageManager.300/Rxn.300(Rxn-1)"},
    };
    host::SimulationCase* open_case = host_.ActiveCase();
    for (const auto& each : cases) {
        EXPECT_EQ(Moniker(each.path, false), each.full) << "names tell objects apart";
        EXPECT_EQ(Moniker(each.path, true), each.full);
        for (const char* moniker : {each.plain, each.full}) {
            EXPECT_EQ(open_case->ResolveVariableOwner(VarDescription(moniker, 0)), Get(each.path))
                << moniker;
            const std::string named = std::string(moniker) + "/:Name.0";
            EXPECT_EQ(open_case->ResolveVariableOwner(VarDescription(named.c_str(), 0)),
                      Get(each.path));
            EXPECT_EQ(open_case->GetTextValue(VarDescription(named.c_str(), 0)).Str(),
                      Get(each.path)->GetName().Str());
        }
    }
    EXPECT_EQ(host_.Services().RelativeMoniker(Get("T-100"), Get("/T-100/Inner"), true).Str(),
              "FlowSht.1/StreamObject.400(Inner)");
    EXPECT_EQ(open_case->ResolveVariableOwner(VarDescription("FlowSht.1/Solver.400", 0)),
              open_case->MainSolver());
    EXPECT_EQ(
        open_case->ResolveVariableOwner(VarDescription("FlowSht.1/StreamObject.400(None)", 0)),
        nullptr);
}

TEST_F(LiveCase, OwnersLeadUpToTheCase) {
    Open(NestedCase());
    host::Viewable* inner = Get("/T-100/Inner");
    const host::ObjectTypeRecords& types = host_.Services().ObjectTypes();
    host::Viewable* sheet = inner->GetOwner(types.ViewableObject);
    EXPECT_EQ(sheet, Get("T-100")->SubFlowSheet());
    EXPECT_TRUE(inner->IsSameFlowSheet(sheet));
    EXPECT_FALSE(inner->IsSameFlowSheet(host_.ActiveCase()->MainFlowSheet()));
    EXPECT_EQ(Get("T-100")->SubFlowSheet()->Solver(), host_.ActiveCase()->MainSolver())
        << "one solver computes all";
    EXPECT_EQ(inner->GetOwner(types.FlowSheetObjectObject), Get("T-100"));
    EXPECT_EQ(Get("T-100")->GetOwner(types.FlowSheetObjectObject), nullptr);
    EXPECT_EQ(host_.ActiveCase()->GetOwner(types.ViewableObject), nullptr);
}

TEST_F(LiveCase, TypesKnowTheirBases) {
    Open(NestedCase());
    host::HostServices& services = host_.Services();
    const auto* stream = services.FindObjectType("StreamObject");
    const auto* unit_op = services.FindObjectType("UnitOpObject");
    EXPECT_TRUE(services.FindObjectType("MaterialStreamObject")->IsA(stream));
    EXPECT_TRUE(services.FindObjectType("EnergyStreamObject")->IsA(stream));
    EXPECT_TRUE(services.FindObjectType("TemplateOpObject")->IsA(unit_op));
    EXPECT_FALSE(services.FindObjectType("EnvelopeUtilityObject")
                     ->IsA(services.ObjectTypes().FlowSheetObjectObject));
    EXPECT_NE(services.FindObjectType("HovexCorrelationObject"), nullptr);
    EXPECT_EQ(services.FindObjectType("NoSuchWord"), nullptr);
    CaseData odd;
    odd.main.objects = {Object("X", "WindMillObject")};
    Open(odd);
    EXPECT_TRUE(Get("X")->Type()->IsA(unit_op));
    EXPECT_EQ(Get("X")->Type()->DisplayName().Str(), "WindMillObject");
    EXPECT_EQ(services.FindObjectType("WindMillObject"), Get("X")->Type());
}

TEST_F(LiveCase, RecordsOfTheClassesStandBelowEachOther) {
    CaseData data = NestedCase();
    data.main.objects.push_back(Object("Bare Group", words::kTemplate));
    Open(data);
    const host::ObjectTypeRecords& types = host_.Services().ObjectTypes();
    const host::ObjectTypeInfo* chain[] = {types.ViewableObject, types.SimulationObjectObject,
                                           types.FlowSheetObjectObject, types.UnitOpObject,
                                           types.TemplateOpObject};
    for (std::size_t i = 0; i < std::size(chain); ++i) {
        for (std::size_t j = 0; j < std::size(chain); ++j) {
            EXPECT_EQ(chain[i]->IsA(chain[j]), i >= j) << i << ' ' << j;
        }
    }
    // How many records of the chain, from the top, each object belongs to.
    const std::pair<const char*, std::size_t> cases[] = {{"T-100", 5},
                                                         {"Valve", 4},
                                                         {"Feed", 3},
                                                         {"Duty", 3},
                                                         {"/@utilities/Envelope", 2},
                                                         {"/@tables/Table", 2},
                                                         {"/@reactions/Rxn-1", 2}};
    for (const auto& [path, count] : cases) {
        for (std::size_t i = 0; i < std::size(chain); ++i) {
            EXPECT_EQ(Get(path)->Type()->IsA(chain[i]), i < count) << path << ' ' << i;
        }
    }
    EXPECT_EQ(Get("T-100")->Type(), types.TemplateOpObject) << "the class itself";
    EXPECT_EQ(Get("Feed")->Type(), Get("Low")->Type()) << "one record for each class";
    EXPECT_EQ(Get("Feed")->Type()->ClassName().Str(), "MaterialStreamObject");
    EXPECT_EQ(Get("Bare Group")->SubFlowSheet(), nullptr);
}

TEST_F(LiveCase, RevisionsChangeWithEveryChangeAndAreNeverTheSame) {
    Case& live = Open(SmallCase());
    const host::LinkedList* list = live.MainFlowSheet()->Objects().List();
    std::vector<std::uint64_t> seen = {list->Revision(), Get("Feed")->VariableNames()->Revision(),
                                       Get("Duty")->VariableNames()->Revision()};
    EXPECT_NE(live.Add(nullptr, Object("New", words::kMixer)), nullptr);
    seen.push_back(list->Revision());
    EXPECT_TRUE(live.Rename(Get("New"), "Newer"));
    seen.push_back(list->Revision());
    EXPECT_TRUE(live.Move(Get("Newer"), 0));
    seen.push_back(list->Revision());
    EXPECT_EQ(static_cast<host::Viewable*>(list->EntryAt(0))->GetName().Str(), "Newer");
    EXPECT_TRUE(live.Delete(Get("Newer")));
    seen.push_back(list->Revision());
    for (std::size_t i = 0; i < seen.size(); ++i) {
        EXPECT_NE(seen[i], 0u);
        for (std::size_t j = 0; j < i; ++j) EXPECT_NE(seen[i], seen[j]) << i << ' ' << j;
    }
    EXPECT_FALSE(live.Rename(Get("Feed"), "Low")) << "the name is taken";
    EXPECT_EQ(live.Add(nullptr, Object("Feed", words::kMixer)), nullptr);
}

TEST_F(LiveCase, ListsWalkBothWays) {
    Open(SmallCase());
    host::FlowSheetObjectIterator objects = host_.ActiveCase()->MainFlowSheet()->Objects();
    std::vector<std::string> forward, backward;
    for (host::Viewable* each = objects.Reset(); each; each = objects.Next()) {
        forward.push_back(each->GetName().Str());
    }
    for (host::Viewable* each = objects.Last(); each; each = objects.Prev()) {
        backward.insert(backward.begin(), each->GetName().Str());
    }
    EXPECT_EQ(forward, (std::vector<std::string>{"Feed", "Valve", "Low", "Duty", "Heater", "Hot",
                                                 "Other", "Pump", "Pumped"}));
    EXPECT_EQ(backward, forward);
    EXPECT_EQ(objects.EntryAt(9), nullptr);
}

TEST_F(LiveCase, DeletedObjectsStayReadableUntilTheHostIsBackInItsLoop) {
    Case& live = Open(SmallCase());
    host::Viewable* low = Get("Low");
    host::Viewable* heater = Get("Heater");
    EXPECT_TRUE(live.Delete(low));
    EXPECT_FALSE(live.Delete(low)) << "it is gone already";
    EXPECT_EQ(low->GetName().Str(), "Low");
    EXPECT_EQ(low->Type()->DisplayName().Str(), "MaterialStreamObject");
    EXPECT_EQ(Get("Low"), nullptr);
    EXPECT_EQ(heater->GetVariableAttachment(Row(heater, "Inlet 1")->description), nullptr);
    host_.Turn();
    EXPECT_EQ(live.DeletedCount(), 1u);
    EXPECT_EQ(low->GetName().Str(), "Low");
    host_.RunHostLoop();
    EXPECT_EQ(live.DeletedCount(), 0u);
    const casehost::Row& inlet = *Node::Of(heater)->GetShape()->ByName("Inlet 1");
    EXPECT_EQ(Node::Of(heater)->CellAt(inlet.first_cell).target, nullptr) << "nothing dangles";
    EXPECT_EQ(heater->GetVariableAttachment(Row(heater, "Inlet 1")->description), nullptr);
}

TEST_F(LiveCase, EmptyListsAndMissingPartsAnswerNull) {
    CaseData data;
    data.online = false;
    data.main.objects = {Object("Bare", words::kMixer)};
    Open(data);
    EXPECT_EQ(Get("Bare")->VariableNames(), nullptr);
    EXPECT_EQ(host_.ActiveCase()->OnlineManager(), nullptr);
    EXPECT_EQ(host_.ActiveCase()->CaseUtilities(), nullptr);
    EXPECT_EQ(host_.ActiveCase()->ProcessDataTables(), nullptr);
    EXPECT_EQ(host_.ActiveCase()->Basis()->ReactionPackages(), nullptr);
}

TEST_F(LiveCase, ReactionsAreNumbered) {
    Open(NestedCase());
    host::ReactionPackageManager* reactions = host_.ActiveCase()->Basis()->ReactionPackages();
    ASSERT_NE(reactions, nullptr);
    EXPECT_EQ(reactions->ReactionCount(), 2);
    EXPECT_EQ(reactions->RxnNumber(1)->GetName().Str(), "Rxn-2");
    EXPECT_EQ(reactions->RxnNumber(2), nullptr);
    EXPECT_EQ(reactions->RxnNumber(-1), nullptr);
}

TEST_F(LiveCase, StoreIntoAReactionMakesAllStaleButWhatIsPublished) {
    CaseData data = NestedCase();
    data.reactions[0].variables = {Real("Conversion", "Percent", 80)};
    Open(data);
    host::Viewable* reaction = Get("/@reactions/Rxn-1");
    reaction->SetRealValue(Row(reaction, "Conversion")->description, 70);
    for (const char* path : {"Feed", "Pumped", "/T-100", "/T-100/Inner", "/@utilities/Envelope"}) {
        EXPECT_TRUE(Node::Of(Get(path))->IsStale()) << path;
    }
    host::Viewable* published = host_.ActiveCase()->OnlineManager()->ResolveVariableOwner(
        VarDescription("RTIVariable.500.0", 0));
    EXPECT_FALSE(Node::Of(published)->IsStale());
    EXPECT_EQ(Value(published, "Value"), 12);
}

TEST_F(LiveCase, CaseWithAnUnsolvedObjectNeedsToRun) {
    Open(SmallCase());
    EXPECT_FALSE(host_.ActiveCase()->MainSolver()->NeedsToRun());
    CaseData data = NestedCase();
    data.main.objects[9].sub_flowsheet->objects[1].status = ObjectStatus::not_solved;
    Open(data);
    EXPECT_TRUE(host_.ActiveCase()->MainSolver()->NeedsToRun());
}

TEST_F(LiveCase, InnerFlowsheetIsCalledAsItsOperation) {
    Case& live = Open(NestedCase());
    EXPECT_EQ(Get("T-100")->SubFlowSheet()->GetName().Str(), "T-100");
    EXPECT_TRUE(live.Rename(Get("T-100"), "T-200"));
    EXPECT_EQ(Get("T-200")->SubFlowSheet()->GetName().Str(), "T-200");
}

TEST_F(LiveCase, ResultsReplaceWhatIsNotGivenInACaseOfTheSameStructure) {
    Case& live = Open(SmallCase());
    CaseData results = live.ToData();
    for (ObjectData& object : results.main.objects) {
        for (VariableData& variable : object.variables) {
            for (ValueData& value : variable.values) value.number += 1;
        }
    }
    CaseData renamed = results;
    renamed.main.objects[5].name = "Cold";
    EXPECT_FALSE(live.ApplyResults(renamed));
    EXPECT_EQ(Value(Get("Hot"), "Temperature"), 60) << "nothing is taken";
    EXPECT_TRUE(live.ApplyResults(results));
    EXPECT_EQ(Value(Get("Hot"), "Temperature"), 61);
    EXPECT_EQ(Value(Get("Feed"), "Temperature"), 25) << "given";
}

TEST_F(LiveCase, PublishedVariablesAreReachedThroughTheManager) {
    Open(NestedCase());
    host::COnlineConnectivityManager* manager = host_.ActiveCase()->OnlineManager();
    host::DimInfo dimensions;
    manager->GetVariableDimensions(VarDescription("RTIVariable.500", 0), dimensions);
    EXPECT_EQ(dimensions.count, 1u);
    EXPECT_EQ(dimensions.low[0], 0);
    EXPECT_EQ(dimensions.high[0], 0);
    host::Viewable* found = manager->ResolveVariableOwner(VarDescription("RTIVariable.500.0", 0));
    host::RTIVariable* variable = manager->AsPublished(found);
    ASSERT_NE(variable, nullptr);
    EXPECT_EQ(variable->GetName().Str(), "PV-1");
    EXPECT_EQ(variable->GetValue(), 12);
    EXPECT_EQ(variable->UnitText().Str(), "kPa");
    variable->SetValue(15);
    EXPECT_EQ(variable->GetValue(), 15);
    EXPECT_FALSE(host_.ActiveCase()->MainSolver()->NeedsToRun()) << "no part of the flowsheet";
    EXPECT_EQ(manager->ResolveVariableOwner(VarDescription("RTIVariable.500.1", 0)), nullptr);
    EXPECT_EQ(manager->AsPublished(host_.ActiveCase()), nullptr);
}

TEST_F(LiveCase, DataGoesInAndComesOutAlike) {
    CaseData data = NestedCase();
    Case& live = Open(data);
    const CaseData out = live.ToData();
    ASSERT_EQ(out.main.objects.size(), data.main.objects.size());
    for (std::size_t i = 0; i < data.main.objects.size(); ++i) {
        const ObjectData& before = data.main.objects[i];
        const ObjectData& after = out.main.objects[i];
        EXPECT_EQ(after.name, before.name);
        EXPECT_EQ(after.type, before.type);
        EXPECT_EQ(after.ports, before.ports) << before.name;
        ASSERT_EQ(after.variables.size(), before.variables.size()) << before.name;
        for (std::size_t v = 0; v < before.variables.size(); ++v) {
            EXPECT_EQ(*after.variables[v].spec, *before.variables[v].spec);
            EXPECT_EQ(after.variables[v].values, before.variables[v].values) << before.name;
        }
    }
    EXPECT_EQ(out.main.objects[9].sub_flowsheet->objects.size(), 2u);
    EXPECT_EQ(out.utilities[0].variables[0].values[0].text, "Feed");
    EXPECT_EQ(out.reactions.size(), 2u);
    EXPECT_EQ(out.published.size(), 1u);
}

TEST_F(LiveCase, PathsEscapeWhatTheyAreMadeOf) {
    for (const char* name : {"a/b", "a~1b", "@utilities", "~", "plain", "a/b/c~0"}) {
        CaseData data;
        data.main.objects = {Object(name, words::kMixer), Object("b", words::kTee)};
        Case& live = Open(data);
        Node& node = live.MainFlowSheet() ? *Node::Of(live.MainFlowSheet()->Objects().EntryAt(0))
                                          : *live.FindByPath("b", nullptr);
        EXPECT_EQ(live.FindByPath(live.PathOf(node, nullptr), nullptr), &node)
            << live.PathOf(node, nullptr);
        EXPECT_EQ(live.FindByPath(live.PathOf(node, &node), &node), &node)
            << live.PathOf(node, &node);
    }
}

TEST_F(LiveCase, ReferencesThatNameNothingAreTold) {
    CaseData data;
    data.main.objects = {Object("A", words::kMixer, {Attachment("To", "Nowhere")},
                                {{PortData::Role::feed, 0, "Gone"}})};
    const OpenResult result = host_.Open(data);
    ASSERT_EQ(result.problems.size(), 2u);
    EXPECT_EQ(result.problems[0].Text(), "/A: To: attachment \"Nowhere\" names no object");
    EXPECT_EQ(result.problems[1].Text(), "/A: Inlet 1: port stream \"Gone\" names no object");
}

TEST_F(LiveCase, UnitsFollowTheCaseAndTheType) {
    CaseData data;
    data.unit_set = 2;
    data.main.objects = {
        Object("A", words::kMixer, {Real("T", "Temperature", 100), Real("N", "", 1)})};
    Open(data);
    host::HostServices& services = host_.Services();
    const VarDescription& t = Row(Get("A"), "T")->description;
    EXPECT_EQ(services.DefaultUnits(), 2u);
    EXPECT_STREQ(services.utypetoa(t.UnitType()), "Temperature");
    const host::UnitRecord* unit = services.def_unit(t.UnitType(), services.DefaultUnits());
    EXPECT_STREQ(unit->name, "F");
    EXPECT_DOUBLE_EQ(services.calc_ounit(100, unit), 212);
    EXPECT_DOUBLE_EQ(services.calc_unit(212, unit), 100);
    EXPECT_EQ(services.findunit("furlong", t.UnitType()), nullptr);
    EXPECT_EQ(services.GetUnitConvTypeFromVarType(t.Type()), t.UnitType());
    const VarDescription& n = Row(Get("A"), "N")->description;
    EXPECT_EQ(n.UnitType(), host::kVariableUnitType);
    EXPECT_EQ(services.GetUnitConvTypeFromVarType(Get("A")->GetVariableUnitType(n)),
              host::kVariableUnitType);
    std::vector<std::string> names;
    services.UnitConvList(t.UnitType());
    for (host::Text name = services.GetFirstConvName(); !name.IsEmpty();
         name = services.GetNextConvName()) {
        names.push_back(name.Str());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"C", "K", "F", "R"}));
    EXPECT_EQ(services.GetUnitConvTypeFromVarType(services.GetVarTypeFromUnitString("kPa")),
              FindQuantity("Pressure")->type);
    EXPECT_EQ(services.GetVarTypeFromUnitString("furlong"), host::kEmptyDimensionMarker);
    host::VarDescription::Facts facts;
    EXPECT_TRUE(services.DescribeMoniker(t.GetMoniker(), facts));
    EXPECT_EQ(facts.type, t.Type());
    EXPECT_FALSE(services.DescribeMoniker(":Double.99999999", facts));
}

TEST_F(LiveCase, SessionHidesAndShowsCases) {
    Case& first = Open(SmallCase());
    host::Session* session = host_.Services().pSession();
    EXPECT_EQ(session->ActiveCase(), &first);
    EXPECT_TRUE(session->HideDocument(&first, true));
    EXPECT_EQ(session->ActiveCase(), nullptr);
    EXPECT_FALSE(first.IsVisible());
    EXPECT_TRUE(session->HideDocument(&first, false));
    EXPECT_EQ(session->ActiveCase(), &first);
    host::WindowPlacement placement;
    ASSERT_NE(session->GetAppForm(), nullptr);
    session->GetAppForm()->SetWindowPlacement({0});
    session->GetAppForm()->GetWindowPlacement(placement);
    EXPECT_EQ(placement.show_state, 0);
    CaseHost without_window(false);
    EXPECT_EQ(without_window.Services().pSession()->GetAppForm(), nullptr);
}

TEST_F(LiveCase, BasisShowsItsSpecification) {
    CaseData data;
    data.property_package = "Peng-Robinson";
    CompoundData methane;
    methane.name = "Methane";
    methane.molar_mass = 16.043;
    data.compounds = {methane};
    Open(data);
    host::Viewable* basis = host_.ActiveCase()->Basis();
    host::CSpecSource* source = basis->GetSpecSource();
    ASSERT_NE(source, nullptr);
    host::CSpecInfo* info = host_.Services().NewSpecInfo();
    info->SetOwner(basis);
    ASSERT_TRUE(source->FillSpecInfo(info));
    std::vector<std::string> tags;
    host::TypedListIterator<host::CSpecElement> elements(info->Elements());
    for (auto* each = elements.Reset(); each; each = elements.Next())
        tags.push_back(each->tag.Str());
    EXPECT_EQ(tags, (std::vector<std::string>{"Property Package", "Compounds", "Constants"}));
    EXPECT_EQ(elements.EntryAt(0)->value_text.Str(), "Peng-Robinson");
    EXPECT_EQ(elements.EntryAt(1)->child->CollectionCount(), 1u);
    EXPECT_EQ(elements.EntryAt(2)->array_set->source_numbers[0][0], 16.043);
    host_.Services().DeleteSpecInfo(info);
}

}  // namespace
}  // namespace fixtop::casehost
