// SPDX-License-Identifier: Apache-2.0
// Every operation that the module may ask of a host, asked of a live case: it stands where it
// should and answers for what it is asked about.

#include <gtest/gtest.h>

#include "case_builder.h"
#include "casehost/case_host.h"
#include "casehost/units.h"
#include "live/case.h"
#include "support/vtable_slot.h"

namespace fixtop::casehost {
namespace {

using host::VarDescription;
using test::Attachment;
using test::Choice;
using test::Object;
using test::Real;
using test::TextVariable;

TEST(SlotOrder, ViewableOperationsStandAsTheModuleExpects) {
    using host::Viewable;
    const int slots[] = {
        VtableSlot(&Viewable::GetName),
        VtableSlot(&Viewable::GetRealValue),
        VtableSlot(&Viewable::SetRealValue),
        VtableSlot(&Viewable::GetTextValue),
        VtableSlot(&Viewable::SetTextValue),
        VtableSlot(&Viewable::VariableNames),
        VtableSlot(&Viewable::FindVariableName),
        VtableSlot(&Viewable::GetVariableEnum),
        VtableSlot(&Viewable::ResolveVariableOwner),
        VtableSlot(&Viewable::GetVariableDimensions),
        VtableSlot(&Viewable::GetOwner),
        VtableSlot(&Viewable::IsSameFlowSheet),
        VtableSlot(&Viewable::GetVariableUnitType),
        VtableSlot(&Viewable::GetSpecSource),
        VtableSlot(&Viewable::SubFlowSheet),
    };
    for (std::size_t i = 0; i < std::size(slots); ++i) EXPECT_EQ(slots[i], static_cast<int>(i));
}

TEST(SlotOrder, CallbackOperationsStandAsTheHostCallsThem) {
    using host::IModelCallback;
    const int slots[] = {
        VtableSlot(&IModelCallback::QueryInterface),
        VtableSlot(&IModelCallback::AddRef),
        VtableSlot(&IModelCallback::Release),
        VtableSlot(&IModelCallback::SimulationStarted),
        VtableSlot(&IModelCallback::SimulationStopped),
        VtableSlot(&IModelCallback::SimulationStep),
        VtableSlot(&IModelCallback::SimulationEvent),
    };
    for (std::size_t i = 0; i < std::size(slots); ++i) EXPECT_EQ(slots[i], static_cast<int>(i));
}

TEST(Constants, AreThoseOfTheHost) {
    EXPECT_EQ(host::kEmptyReal, -32767.0);
    EXPECT_EQ(host::kVariableUnitType, 65);
    EXPECT_EQ(host::kEmptyDimensionMarker, -32767);
    EXPECT_EQ(host::kStringArrayType, 1519);
    EXPECT_NE(host::TRUEVALUE, host::FALSEVALUE);
    EXPECT_EQ(host::FALSEVALUE, 0.0) << "a variable of two states is tested for 0";
}

TEST(Constants, WordsOfTheHostHaveItsNumbers) {
    const struct {
        const char* word;
        int number;
        int expected;
    } cases[] = {
        {"real part", host::kPartReal, 1},
        {"text part", host::kPartText, 2},
        {"attachment part", host::kPartAttachment, 3},
        {"real", host::kReal, 1},
        {"enumeration", host::kEnumeration, 2},
        {"text", host::kText, 3},
        {"attachment", host::kAttachment, 4},
        {"message", host::kMessage, 5},
        {"calculated", host::kCalculated, 0},
        {"specified", host::kSpecified, 1},
        {"default", host::kDefaulted, 2},
        {"specified by another route", host::kSpecifiedByOtherRoute, 3},
        {"ok", host::Viewable::kOk, 0},
        {"not solved", host::Viewable::kNotSolved, 1},
        {"warning", host::Viewable::kWarning, 2},
        {"under-specified", host::Viewable::kUnderSpecified, 3},
    };
    for (const auto& each : cases) EXPECT_EQ(each.number, each.expected) << each.word;
}

// A case in which every operation has something to answer.
CaseData EverythingCase() {
    CaseData data = test::SmallCase();
    data.property_package = "PR";
    ObjectData group = Object("T-100", words::kTemplate);
    group.sub_flowsheet = std::make_shared<FlowsheetData>();
    group.sub_flowsheet->objects = {test::Stream("Inner", VariableState::specified)};
    data.main.objects.push_back(group);
    data.main.objects.push_back(
        Object("A", words::kMixer,
               {Real("X", "Pressure", 7), Choice("Mode", {"on", "off"}, 1),
                TextVariable("Notes", "hello"), Attachment("To", "Feed"),
                test::Array("Grid", "", {{0, 2, ElementNaming::number, {}}}, {1, 2}),
                test::Array("Names", "", {{0, 2, ElementNaming::number, {}}}, {1, 2})}));
    data.utilities = {Object("Envelope", "EnvelopeUtilityObject")};
    data.data_tables = {Object("Day", "ProcessDataTableObject")};
    data.reactions = {Object("Rxn-1", "ConversionReactionObject")};
    data.published = {Object("PV", "RTIVariable", {Real("Value", "Pressure", 3)})};
    return data;
}

class Operations : public ::testing::Test {
 protected:
    Operations() : open_(*host_.Open(EverythingCase()).opened), services_(host_.Services()) {}

    host::Viewable& Get(const std::string& path) {
        return *open_.FindByPath(path, nullptr)->View();
    }
    const VarDescription& Variable(const std::string& name) {
        return Node::Of(&Get("A"))->GetShape()->ByName(name)->description;
    }
    bool HasStatus() {
        host::ModifyState state = host::kMissing;
        int detail = 0;
        services_.GetVariableStatus(&Get("A"), Variable("X"), state, detail);
        return state == host::kSpecified;
    }
    unsigned Dimensions() {
        host::DimInfo info;
        Get("A").GetVariableDimensions(Variable("Grid"), info);
        return info.count;
    }
    unsigned PublishedDimensions() {
        host::DimInfo info;
        open_.OnlineManager()->GetVariableDimensions(VarDescription("RTIVariable.500", 0), info);
        return info.count;
    }

    CaseHost host_;
    Case& open_;
    host::HostServices& services_;
};

TEST_F(Operations, AnswerWhatTheyAreAskedFor) {
    const host::VarType pressure = FindQuantity("Pressure")->type;
    const host::ObjectTypeInfo* any = services_.ObjectTypes().ViewableObject;
    const VarDescription feed("FlowSht.1/StreamObject.400(Feed)", 0);
    host::VariableNameInfo* mode = Get("A").FindVariableName(Variable("Mode"));
    const struct {
        const char* name;
        std::function<bool()> answers;
    } cases[] = {
        {"variable names", [&] { return Get("A").VariableNames(); }},
        {"variable row", [&] { return Get("A").FindVariableName(Variable("X")); }},
        {"variable owner", [&] { return open_.ResolveVariableOwner(feed) == &Get("Feed"); }},
        {"variable enum", [&] { return Get("A").GetVariableEnum(mode); }},
        {"real value", [&] { return Get("A").GetRealValue(Variable("X")) == 7; }},
        {"text value", [&] { return Get("A").GetTextValue(Variable("Notes")) == "hello"; }},
        {"attachment",
         [&] { return Get("A").GetVariableAttachment(Variable("To")) == &Get("Feed"); }},
        {"dimensions", [&] { return Dimensions() == 1; }},
        {"published dimensions", [&] { return PublishedDimensions() == 1; }},
        {"variable status", [&] { return HasStatus(); }},
        {"owner", [&] { return Get("A").GetOwner(any) == open_.MainFlowSheet(); }},
        {"spec source", [&] { return open_.Basis()->GetSpecSource(); }},
        {"sub-flowsheet", [&] { return Get("T-100").SubFlowSheet(); }},
        {"solver", [&] { return open_.MainSolver(); }},
        {"solver of the flowsheet",
         [&] { return open_.MainFlowSheet()->Solver() == &open_.Solver(); }},
        {"active solver", [&] { return open_.ActiveSolver() == open_.MainSolver(); }},
        {"basis", [&] { return open_.Basis(); }},
        {"reactions", [&] { return open_.Basis()->ReactionPackages(); }},
        {"data tables", [&] { return open_.ProcessDataTables(); }},
        {"utilities", [&] { return open_.CaseUtilities(); }},
        {"online manager", [&] { return open_.OnlineManager(); }},
        {"active case", [&] { return services_.pSession()->ActiveCase() == &open_; }},
        {"window", [&] { return services_.pSession()->GetAppForm(); }},
        {"default unit", [&] { return services_.def_unit(pressure, 0); }},
        {"unit by name", [&] { return services_.findunit("kPa", pressure); }},
        {"variable info",
         [&] {
             return services_.pVarTypes()->FindVarInfo(VariableTypeOfUnitType(pressure)) != nullptr;
         }},
        {"moniker",
         [&] { return !services_.RelativeMoniker(nullptr, &Get("A"), false).IsEmpty(); }},
    };
    for (const auto& each : cases) {
        EXPECT_TRUE(each.answers()) << each.name;
    }
}

TEST_F(Operations, StatusOfAnObjectAndStateOfAVariableAreNumbers) {
    for (const int number : {0, 1, 2, 3, 4}) {
        CaseData data;
        data.main.objects = {Object("A", words::kMixer, {Real("X", "", 1)})};
        data.main.objects[0].status = static_cast<ObjectStatus>(number);
        data.main.objects[0].variables[0].values[0].state = static_cast<VariableState>(number);
        Node& node = *host_.Open(data).opened->FindByPath("A", nullptr);
        EXPECT_EQ(node.View()->GetMyStatusCondition(), number);
        host::ModifyState state = static_cast<host::ModifyState>(7);
        int detail = 0;
        services_.GetVariableStatus(node.View(), node.GetShape()->ByName("X")->description, state,
                                    detail);
        EXPECT_EQ(state, number);
    }
}

TEST_F(Operations, CaseIsInDynamicsAsItsDataSays) {
    EXPECT_FALSE(open_.Dynamic());
    EXPECT_FALSE(open_.SimCaseDynamic());
    CaseData data;
    data.dynamic = true;
    host::SimulationCase& dynamic = *host_.Open(data).opened;
    EXPECT_TRUE(dynamic.Dynamic());
    EXPECT_TRUE(dynamic.SimCaseDynamic());
}

TEST_F(Operations, HostWithoutACaseAnswersForNone) {
    CaseHost empty;
    EXPECT_EQ(empty.Services().DefaultUnits(), 0u);
    EXPECT_EQ(empty.Services().pSession()->ActiveCase(), nullptr);
    host::VarDescription::Facts facts;
    EXPECT_FALSE(empty.Services().DescribeMoniker(host::Text(":Double.501"), facts));
    EXPECT_TRUE(empty.Services().RelativeMoniker(nullptr, nullptr, true).IsEmpty());
}

TEST_F(Operations, OwnVariablesAreHeldByTheObjectItself) {
    host::Viewable& mixer = Get("A");
    EXPECT_EQ(mixer.ResolveVariableOwner(Variable("X")), nullptr);
    EXPECT_EQ(mixer.ResolveVariableOwner(VarDescription(":Name.0", 0)), nullptr);
    EXPECT_EQ(mixer.ResolveVariableOwner(host::TheEmptyVarDesc), nullptr);
    EXPECT_EQ(open_.ResolveVariableOwner(VarDescription("/:Name.0", 0)), nullptr);
    EXPECT_EQ(mixer.FindVariableName(VarDescription(":Double.999999", 0)), nullptr);
    host::DimInfo info;
    info.count = 2;
    mixer.GetVariableDimensions(Variable("X"), info);
    EXPECT_EQ(info.count, 0u) << "a scalar";
    EXPECT_EQ(mixer.GetVariableUnitType(Variable("X")), Variable("X").Type());
    EXPECT_EQ(mixer.GetVariableUnitType(Variable("Notes")), host::kEmptyDimensionMarker);
}

TEST_F(Operations, DescriptionsFromMonikersAreTheHostsOwn) {
    auto limited = std::make_shared<VariableSpec>(*test::Spec("L", ValueKind::real, "Pressure"));
    limited->minimum = 2;
    limited->maximum = 9;
    CaseData data;
    data.main.objects = {Object(
        "B", words::kMixer, {{limited, {{5, "", VariableState::specified}}}, Real("Free", "", 1)})};
    const Shape& shape = *host_.Open(data).opened->FindByPath("B", nullptr)->GetShape();
    for (const char* name : {"L", "Free"}) {
        const VarDescription& own = shape.ByName(name)->description;
        const VarDescription same(own.GetMoniker().CStr(), 0);
        EXPECT_TRUE(same.IsEqual(own, false)) << name;
        EXPECT_EQ(same.Number(), own.Number()) << name;
        EXPECT_EQ(same.Type(), own.Type()) << name;
        EXPECT_EQ(same.UnitType(), own.UnitType()) << name;
        EXPECT_EQ(same.MinValue(), own.MinValue()) << name;
        EXPECT_EQ(same.MaxValue(), own.MaxValue()) << name;
    }
    EXPECT_EQ(shape.ByName("L")->description.MinValue(), 2);
    EXPECT_EQ(shape.ByName("L")->description.MaxValue(), 9);
    EXPECT_EQ(shape.ByName("L")->description.UnitType(), FindQuantity("Pressure")->type);
    EXPECT_EQ(shape.ByName("Free")->description.MinValue(), host::kEmptyReal);
    EXPECT_EQ(shape.ByName("Free")->description.MaxValue(), host::kEmptyReal);
    EXPECT_EQ(shape.ByName("Free")->description.UnitType(), host::kVariableUnitType);
}

TEST_F(Operations, VariableInfoLooksItsUnitsUpUnderItself) {
    const host::VariableType type = VariableTypeOfUnitType(FindQuantity("Pressure")->type);
    host::VariableInfo* info = services_.pVarTypes()->FindVarInfo(type);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->UnitLookupType(), type);
    EXPECT_EQ(services_.pVarTypes()->FindVarInfo(9), nullptr) << "fractions have no units";
}

TEST_F(Operations, ApplicationIsToldWhatTheModuleTellsIt) {
    EXPECT_EQ(host_.ConfigData("ErrorsToTrace"), kEmpty);
    services_.SetConfigData("ErrorsToTrace", 3, true);
    services_.SetConfigData("NumErrsToTrace", 20, true);
    services_.SetConfigData("ErrorsToTrace", 4, false);
    services_.SetConfigData(nullptr, 5, true);
    EXPECT_EQ(host_.ConfigData("ErrorsToTrace"), 4);
    EXPECT_EQ(host_.ConfigData("NumErrsToTrace"), 20);
    const unsigned long before = host_.ViewUpdates();
    services_.UpdateViews(nullptr);
    EXPECT_EQ(host_.ViewUpdates(), before + 1);
}

TEST_F(Operations, NumbersBecomeTexts) {
    const struct {
        double number;
        const char* text;
    } cases[] = {{0, "0"},
                 {-2.5, "-2.5"},
                 {1.0 / 3, "0.333333333333"},
                 {1e20, "1e+20"},
                 {123456789012.0, "123456789012"},
                 {host::kEmptyReal, ""}};
    for (const auto& each : cases) {
        EXPECT_STREQ(services_.NumToText(each.number).CStr(), each.text) << each.number;
    }
}

TEST_F(Operations, UnitsOfUnknownTypesAreNone) {
    constexpr host::VarType kUnknown = 12345;
    EXPECT_STREQ(services_.utypetoa(kUnknown), "");
    EXPECT_EQ(services_.def_unit(kUnknown, 0), nullptr);
    EXPECT_EQ(services_.findunit("kPa", kUnknown), nullptr);
    EXPECT_EQ(services_.findunit(nullptr, FindQuantity("Pressure")->type), nullptr);
    EXPECT_EQ(services_.GetUnitConvTypeFromVarType(kUnknown), host::kVariableUnitType);
    EXPECT_EQ(services_.GetVarTypeFromUnitString(nullptr), host::kEmptyDimensionMarker);
    services_.UnitConvList(kUnknown);
    EXPECT_TRUE(services_.GetFirstConvName().IsEmpty());
    EXPECT_EQ(services_.calc_unit(5, nullptr), 5);
    const host::UnitRecord* fahrenheit = services_.findunit("F", FindQuantity("Temperature")->type);
    ASSERT_NE(fahrenheit, nullptr);
    EXPECT_EQ(services_.calc_unit(host::kEmptyReal, fahrenheit), host::kEmptyReal);
    EXPECT_EQ(services_.calc_ounit(host::kEmptyReal, fahrenheit), host::kEmptyReal);
}

TEST_F(Operations, HeapGivesKeepsAndTakesBack) {
    char* block = static_cast<char*>(services_.IFace_malloc(4));
    ASSERT_NE(block, nullptr);
    std::copy_n("abc", 4, block);
    block = static_cast<char*>(services_.IFace_realloc(block, 4000));
    ASSERT_NE(block, nullptr);
    EXPECT_STREQ(block, "abc");
    services_.IFace_free(block);
    services_.IFace_free(nullptr);
}

TEST_F(Operations, SessionNamesItsDocuments) {
    host::Session& session = *services_.pSession();
    EXPECT_EQ(session.SessionText(false).Str().find("small"), std::string::npos);
    EXPECT_NE(session.SessionText(true).Str().find("small"), std::string::npos);
    CaseHost other;
    Case& foreign = *other.Open(test::SmallCase()).opened;
    EXPECT_FALSE(session.HideDocument(&foreign, true)) << "it is another session's";
    EXPECT_TRUE(foreign.IsVisible());
}

TEST_F(Operations, SpecificationIsFilledForAnOwnerAlone) {
    host::CSpecSource* source = open_.Basis()->GetSpecSource();
    host::CSpecInfo* info = services_.NewSpecInfo();
    EXPECT_FALSE(source->FillSpecInfo(info));
    EXPECT_EQ(info->CollectionCount(), 0u);
    info->SetOwner(open_.Basis());
    EXPECT_TRUE(source->FillSpecInfo(info));
    const std::size_t count = info->CollectionCount();
    EXPECT_GT(count, 0u);
    EXPECT_TRUE(source->FillSpecInfo(info));
    EXPECT_EQ(info->CollectionCount(), count) << "in place of what it held";
    EXPECT_FALSE(source->FillSpecInfo(nullptr));
    services_.DeleteSpecInfo(info);
    services_.DeleteSpecInfo(nullptr);
}

TEST_F(Operations, PlainObjectsHaveNoPartsOfOtherKinds) {
    host::Viewable& mixer = Get("A");
    EXPECT_EQ(mixer.SubFlowSheet(), nullptr);
    EXPECT_EQ(mixer.AsProcessStream(), nullptr);
    EXPECT_EQ(mixer.GetSpecSource(), nullptr);
    EXPECT_NE(Get("Feed").AsProcessStream(), nullptr);
    EXPECT_EQ(Get("Duty").AsProcessStream(), nullptr) << "an energy stream has no composition";
    EXPECT_EQ(mixer.GetVariableAttachment(Variable("X")), nullptr);
    EXPECT_EQ(mixer.GetTextValue(Variable("X")).Str(), "");
    EXPECT_EQ(mixer.GetRealValue(Variable("Notes")), host::kEmptyReal);
}

TEST_F(Operations, StatusOfAForeignVariableStaysAsPreset) {
    host::ModifyState state = host::kSpecifiedByOtherRoute;
    int detail = 42;
    services_.GetVariableStatus(&Get("Feed"), Variable("Notes"), state, detail);
    EXPECT_EQ(state, host::kSpecifiedByOtherRoute);
    EXPECT_EQ(detail, 42);
    services_.GetVariableStatus(nullptr, Variable("X"), state, detail);
    EXPECT_EQ(state, host::kSpecifiedByOtherRoute);
}

}  // namespace
}  // namespace fixtop::casehost
