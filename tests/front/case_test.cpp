// SPDX-License-Identifier: Apache-2.0
// The module as a program that loads it sees it, on a case of the in-memory host.

#include <gtest/gtest.h>

#include <vector>

#include "live/case.h"
#include "open_module.h"
#include "support/host_script.h"

namespace fixtop {

namespace {

using casehost::CaseData;
using casehost::ObjectData;
using casehost::ValueKind;
using casehost::VariableData;
using casehost::VariableSpec;
using casehost::VariableState;

VariableData Real(const char* name, const char* quantity, double value,
                  VariableState state = VariableState::specified) {
    auto spec = std::make_shared<VariableSpec>();
    spec->name = name;
    spec->quantity = quantity;
    return {spec, {{value, "", state}}};
}

VariableData Words(const char* name, const char* text) {
    auto spec = std::make_shared<VariableSpec>();
    spec->name = name;
    spec->kind = ValueKind::text;
    return {spec, {{casehost::kEmpty, text, VariableState::specified}}};
}

ObjectData Object(const char* name, const char* type, std::vector<VariableData> variables) {
    ObjectData object;
    object.name = name;
    object.type = type;
    object.variables = std::move(variables);
    return object;
}

CaseData SmallCase() {
    CaseData data;
    data.name = "small";
    data.main.objects = {
        Object("Feed", "MaterialStreamObject",
               {Real("Temperature", "Temperature", 25.0), Real("Pressure", "Pressure", 101.325),
                Words("Notes", "first")}),
        Object("Heat", "EnergyStreamObject", {Real("Heat Flow", "Energy", 10.0)}),
        Object("E-100", "HeaterObject", {Real("Duty", "Energy", casehost::kEmpty)}),
    };
    data.utilities = {Object("Envelope", "UtilityObject", {})};
    return data;
}

class ModuleOnCase : public OpenModule {
 protected:
    void SetUp() override {
        OpenModule::SetUp();
        ASSERT_TRUE(host_.Open(SmallCase()));
        OpenTop();
    }

    std::shared_ptr<HostScript> script_ = HostScript::Over(host_);
};

TEST_F(ModuleOnCase, shows_the_levels_of_the_raw_tree) {
    EXPECT_EQ(Names({"FlowSheetObjects", "Basis", "DataBook"}), Children("appModel"));
    EXPECT_EQ(Names({"Streams", "UnitOps", "Utilities", "Reactions"}),
              Children("appModel.FlowSheetObjects"));
    EXPECT_EQ(Names({"Feed", "Heat"}), Children("appModel.FlowSheetObjects.Streams"));
    EXPECT_EQ(Names({"E-100"}), Children("appModel.FlowSheetObjects.UnitOps"));
    EXPECT_EQ(Names({"Envelope"}), Children("appModel.FlowSheetObjects.Utilities"));
    EXPECT_EQ(Names({"Temperature", "Pressure", "Notes", "Upstream Unit Operations",
                     "Downstream Unit Operations"}),
              Children("appModel.FlowSheetObjects.Streams.Feed"));
}

TEST_F(ModuleOnCase, reads_values_units_and_status) {
    const char* temperature = "appModel.FlowSheetObjects.Streams.Feed.Temperature";
    EXPECT_EQ("25", Read(temperature, "value"));
    EXPECT_EQ("C", Read(temperature, "uom"));
    EXPECT_EQ("Temperature", Read(temperature, "dimension"));
    EXPECT_EQ("Specified", Read(temperature, "status"));
    const char* duty = "appModel.FlowSheetObjects.UnitOps.E-100.Duty";
    EXPECT_EQ("(NULL)", Read(duty, "value"));
    EXPECT_EQ("Missing", Read(duty, "status"));
}

TEST_F(ModuleOnCase, stores_values_and_reads_them_back) {
    const char* notes = "appModel.FlowSheetObjects.Streams.Feed.Notes";
    EXPECT_EQ("(NULL)", Write(notes, FIValue("second")));
    EXPECT_EQ("second", Read(notes, "value"));
    const char* pressure = "appModel.FlowSheetObjects.Streams.Feed.Pressure";
    EXPECT_EQ("(NULL)", Write(pressure, FIValue::OfReal(250.0)));
    EXPECT_EQ("250", Read(pressure, "value"));
    script_->RefuseStore(1);
    EXPECT_EQ("Value not stored", Write(pressure, FIValue::OfReal(300.0)));
    EXPECT_EQ("250", Read(pressure, "value"));
}

// The host finds the quantity of a published variable by the name of a unit: % leads to fractions,
// C to points of a scale.
TEST_F(OpenModule, published_variables_are_in_the_unit_that_is_told) {
    struct Row {
        const char* quantity;
        double value;
        const char* shown;
        const char* unit;
    };
    const Row rows[] = {{"Pressure", 101.325, "14.6959487755", "psia"},
                        {"PressureDifference", 100, "14.503773773", "psi"},
                        {"Power", 3600, "1.3410220896", "hp"},
                        {"Percent", 50, "50", "(NULL)"},
                        {"TemperatureDifference", 10, "10", "(NULL)"},
                        {"Fraction", 0.5, "0.5", "fraction"}};
    casehost::CaseData data;
    data.unit_set = 2;
    data.online = true;
    for (const Row& row : rows) {
        auto spec = std::make_shared<casehost::VariableSpec>();
        spec->name = "Value";
        spec->quantity = row.quantity;
        casehost::ObjectData& object = data.published.emplace_back();
        object.name = row.quantity;
        object.type = "RTIVariable";
        object.variables = {{spec, {{row.value, "", casehost::VariableState::specified}}}};
    }
    ASSERT_TRUE(host_.Open(data));
    OpenTop();
    root_ = "\"Published Variables\"";
    for (const Row& row : rows) {
        EXPECT_EQ(row.shown, Read(row.quantity)) << row.quantity;
        EXPECT_EQ(row.unit, Read(row.quantity, "uom")) << row.quantity;
    }
}

TEST_F(OpenModule, a_host_that_is_installed_while_the_end_of_another_is_told_stays) {
    casehost::CaseHost next;
    for (casehost::CaseHost* each : {&host_, &next}) {
        casehost::UseStandardParts(*each);
        ASSERT_TRUE(casehost::OpenCase(*each, "demo"));
    }
    FixtopNotify notify = nullptr;
    const auto old_top = Ref<FIEntry>::Adopt(GetTopFIEntry(&notify));
    ASSERT_TRUE(old_top->Subscribe(&next, kNodeDeleted, [](void* owner, int) {
        FixtopInstallHost(&static_cast<casehost::CaseHost*>(owner)->Services());
    }));
    FixtopInstallHost(nullptr);
    OpenTop();
    root_ = "appModel.FlowSheetObjects.Streams.\"Raw Gas\"";
    EXPECT_EQ("Raw Gas", Read("", "id"));
    EXPECT_EQ("Node deleted", [&] {
        FIValue out;
        old_top->GetAttribute(FIValue("id"), out);
        return out.ToText();
    }());
    top_.Reset();
    FixtopInstallHost(nullptr);
}

}  // namespace

}  // namespace fixtop
