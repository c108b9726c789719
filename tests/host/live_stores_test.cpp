// SPDX-License-Identifier: Apache-2.0
// Stores into a live case: what is stored is read back, or the refusal is told.

#include <cmath>

#include "casehost/solve_engine.h"
#include "host/variables/variable_node.h"
#include "live_case.h"

namespace fixtop {

namespace {

constexpr char kFlowsheet[] = "FlowSheetObjects.";
constexpr char kPackage[] = "Basis.FluidPackage.";

class LiveStores : public LiveCase {
 protected:
    void SetUp() override { Open("demo"); }
};

TEST_F(LiveStores, texts_enumerations_and_elements_are_read_back) {
    struct Case {
        const char* path;
        FIValue value;
        const char* read;
    };
    const Case cases[] = {
        {"Streams.Raw Gas.Temperature", FIValue::OfReal(31.5), "REAL 31.5"},
        {"Streams.Raw Gas.Temperature", FIValue("32.5"), "REAL 32.5"},
        {"Streams.Raw Gas.Temperature", FIValue::OfInt(33), "REAL 33"},
        {"UnitOps.E-100.Notes", FIValue("Ammonia chiller"), "Ammonia chiller"},
        {"UnitOps.E-100.Notes", FIValue::OfReal(2.5), "2.5"},
        {"UnitOps.MIX-100.Outlet Pressure Assignment", FIValue("Equalize All"), "Equalize All"},
        {"UnitOps.PL-100.Correlation", FIValue("Homogeneous"), "Homogeneous"},
        {"UnitOps.PL-100.Pipe Length.Elem1", FIValue::OfReal(3500), "REAL 3500"},
        {"UnitOps.PL-100.Pipe Length.Elem1", FIValue(), "(NULL)"},
        {"UnitOps.PL-100.Meter.Meter Factor", FIValue::OfReal(1.5), "REAL 1.5"},
        {"UnitOps.CRV-100.Reaction.Elem0", FIValue("Reforming"), "Reforming"},
        {"UnitOps.K-100.Compressor curve.Elem1.Head.Elem2", FIValue::OfReal(6700), "REAL 6700"},
    };
    for (const Case& each : cases) {
        NodeRef node = At(std::string(kFlowsheet) + each.path);
        EXPECT_EQ("(NULL)", Store(*node, each.value)) << each.path;
        EXPECT_EQ(each.read, Read(*node, "value")) << each.path;
    }
}

TEST_F(LiveStores, numbers_are_stored_in_the_unit_that_is_shown) {
    struct Case {
        const char* path;
        const char* unit;
        double value;
        double internal;
    };
    const Case cases[] = {{"Streams.Raw Gas.Temperature", "K", 305.15, 32},
                          {"Streams.Raw Gas.Pressure", "bar", 59, 5900},
                          {"UnitOps.PL-100.Pipe Length.Elem0", "km", 1.5, 1500}};
    for (const Case& each : cases) {
        NodeRef node = At(std::string(kFlowsheet) + each.path);
        EXPECT_EQ("(NULL)", StoreAttribute(*node, "uom", FIValue(each.unit))) << each.path;
        EXPECT_EQ("(NULL)", Store(*node, FIValue::OfReal(each.value))) << each.path;
        EXPECT_NEAR(each.value, Number(*node), 1e-9) << each.path;
        EXPECT_NEAR(each.internal, Number(*At(std::string(kFlowsheet) + each.path)), 1e-9);
    }
}

TEST_F(LiveStores, process_variables_are_stored_in_three_modes) {
    struct Case {
        const char* name;
        int mode;
        double value;
        const char* answer;
        double read;
        const char* status;
    };
    // In this order: each begins where the one before has ended.
    const Case cases[] = {
        {"Vapour Pressure", 1, 910, "(NULL)", 900, "Calculated"},
        {"Vapour Pressure", 2, 920, "(NULL)", 920, "Calculated"},
        {"Vapour Pressure", 3, 930, "(NULL)", 920, "Calculated"},
        {"Vapour Pressure", 0, 940, "(NULL)", 940, "Specified"},
        {"Vapour Pressure", 1, 950, "(NULL)", 950, "Specified"},
        {"Vapour Pressure", 2, 960, "(NULL)", 960, "Calculated"},
        {"Reference Temperature", 0, 26, "Cannot specify this value.", 25, "Specified"},
    };
    for (const Case& each : cases) {
        NodeRef node = At(std::string(kPackage) + each.name);
        EXPECT_EQ(each.answer, Store(*node, FIValue::OfReal(each.value), each.mode));
        EXPECT_EQ(each.read, Number(*At(std::string(kPackage) + each.name)))
            << each.name << " mode " << each.mode;
        EXPECT_EQ(each.status, Read(*At(std::string(kPackage) + each.name), "status"))
            << each.name << " mode " << each.mode;
    }
}

TEST_F(LiveStores, a_batch_of_fractions_is_normalised_at_its_end) {
    auto models = Ref<HAandCContext>::Share(new HAandCContext(host.ActiveCase(), {}));
    auto streams = Child(*Child(*Child(*models, "appModel"), "FlowSheetObjects"), "Streams");
    auto entry = Child(*streams, "Raw Gas");
    auto array = Child(*entry, "Comp Mole Frac");
    ASSERT_TRUE(array);
    const std::string fractions = "FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac.";
    EXPECT_TRUE(entry->CanHold());
    for (const auto& [name, fraction] :
         {std::pair("Methane", 1.5), std::pair("Ethane", 0.2), std::pair("CO2", 0.15)}) {
        EXPECT_EQ("(NULL)", Write(*Child(*array, name), "value", FIValue::OfReal(fraction)));
    }
    EXPECT_EQ(1.5, Number(*At(fractions + "Methane"))) << "not divided before the end";
    entry->BeginBatch();
    // 0.02 + 0.15 + 1.5 + 0.2 + 0.06 + 0.03 + 0.019 + 0.001
    constexpr double kSum = 1.98;
    EXPECT_NEAR(1.5 / kSum, Number(*At(fractions + "Methane")), 1e-12);
    EXPECT_NEAR(0.2 / kSum, Number(*At(fractions + "Ethane")), 1e-12);
    EXPECT_NEAR(0.02 / kSum, Number(*At(fractions + "Nitrogen")), 1e-12);
    EXPECT_FALSE(std::isnan(Number(*At("FlowSheetObjects.Streams.Sales Gas.Molar Flow"))));
    EXPECT_EQ("Calculated", Read(*At("FlowSheetObjects.Streams.Sales Gas.Molar Flow"), "status"));
}

// Counts the solves and leaves the case as it is.
class CountingEngine final : public casehost::SolveEngine {
 public:
    explicit CountingEngine(int& solves) : solves_(solves) {}
    Outcome Prepare(const casehost::CaseData& problem) override {
        ++solves_;
        results_ = problem;
        return {Progress::running, ""};
    }
    Outcome Step(int) override { return {Progress::done, ""}; }
    const casehost::CaseData& Results() const override { return results_; }

 private:
    int& solves_;
    casehost::CaseData results_;
};

TEST_F(LiveStores, a_batch_is_solved_once_and_single_stores_each_for_themselves) {
    int solves = 0;
    host.ActiveLiveCase()->SetEngine(std::make_unique<CountingEngine>(solves));
    auto models = Ref<HAandCContext>::Share(new HAandCContext(host.ActiveCase(), {}));
    auto streams = Child(*Child(*Child(*models, "appModel"), "FlowSheetObjects"), "Streams");
    auto entry = Child(*streams, "Raw Gas");
    auto array = Child(*entry, "Comp Mole Frac");
    ASSERT_TRUE(array);
    const char* names[] = {"Methane", "Ethane", "CO2"};
    EXPECT_TRUE(entry->CanHold());
    for (const char* name : names) {
        EXPECT_EQ("(NULL)", Write(*Child(*array, name), "value", FIValue::OfReal(0.2)));
    }
    EXPECT_EQ(0, solves);
    entry->BeginBatch();
    EXPECT_EQ(1, solves);
    for (const char* name : names) {
        NodeRef fraction =
            At(std::string("FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac.") + name);
        EXPECT_EQ("(NULL)", Store(*fraction, FIValue::OfReal(0.2)));
    }
    EXPECT_EQ(4, solves);
}

// ---- Refusals ----

constexpr char kNoStore[] = "Store not supported for this attribute.";

TEST_F(LiveStores, every_refusal_has_its_text) {
    struct Case {
        const char* path;
        const char* attribute;
        FIValue value;
        const char* text;
    };
    const FIValue number = FIValue::OfReal(1);
    const Case cases[] = {
        // Variables and their elements.
        {"FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac", "value", number, "Non scalar variable"},
        {"FlowSheetObjects.Streams.Raw Gas.Phase Comp Mole Frac.Overall", "value", number,
         "Non scalar variable"},
        {"FlowSheetObjects.UnitOps.MIX-100.Outlet Pressure Assignment", "value", FIValue("None"),
         "Value not stored"},
        {"FlowSheetObjects.Streams.Sales Gas.Temperature", "value", number, "Value not stored"},
        {"FlowSheetObjects.UnitOps.MIX-100.Inlet 1", "value", FIValue("Tail Gas"),
         "Cannot set attachment"},
        {"FlowSheetObjects.UnitOps.T-100.Vessels.Elem1", "value", FIValue("Reboiler"),
         "Cannot set attachment"},
        {"FlowSheetObjects.UnitOps.V-100.Advice", "value", FIValue("text"), "Cannot set message"},
        {"FlowSheetObjects.Streams.Raw Gas.Temperature", "status", FIValue("Specified"),
         "Not supported"},
        {"FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac", "id", number, "Not supported"},
        {"FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac.Methane", "id", number, "Not supported"},
        {"FlowSheetObjects.Streams.Raw Gas.Temperature", "uom", FIValue("bar"),
         "Invalid unit for variable type"},
        {"FlowSheetObjects.UnitOps.PL-100.Pipe Length.Elem0", "uom", FIValue("K"),
         "Invalid unit for variable type"},
        // Specifications and array sets.
        {"Basis.FluidPackage.Tuned Pressure", "status", FIValue("Specified"), kNoStore},
        {"Basis.FluidPackage.Tuned Pressure", "uom", FIValue("bar"), kNoStore},
        {"Basis.FluidPackage.Name", "value", FIValue("Basis-2"), kNoStore},
        {"Basis.FluidPackage.Standard Pressure", "value", number, kNoStore},
        {"Basis.FluidPackage", "value", number, kNoStore},
        {"Basis.FluidPackage.Reference Temperature", "value", number, "Cannot specify this value."},
        {"Basis.FluidPackage.Interaction Parameters.Set0", "value", number, "Not supported"},
        {"Basis.FluidPackage.Interaction Parameters.Set0.Kij", "value", number, "Not supported"},
        {"Basis.FluidPackage.Interaction Parameters.Set0.Kij", "uom", FIValue("K"),
         "Not supported"},
    };
    for (const Case& each : cases) {
        NodeRef node = At(each.path);
        const std::string before = Read(*node, "value");
        EXPECT_EQ(each.text, StoreAttribute(*node, each.attribute, each.value))
            << each.path << " " << each.attribute;
        EXPECT_EQ(before, Read(*At(each.path), "value")) << each.path;
    }
}

TEST_F(LiveStores, without_a_var_set_there_are_no_units_and_switches) {
    auto models = Ref<HAandCContext>::Share(new HAandCContext(host.ActiveCase(), {}));
    auto streams = Child(*Child(*Child(*models, "appModel"), "FlowSheetObjects"), "Streams");
    auto raw_gas = Child(*streams, "Raw Gas");
    auto array = Child(*raw_gas, "Comp Mole Frac");
    for (const Ref<FIEntry>& entry :
         {Child(*raw_gas, "Temperature"), array, Child(*array, "Methane")}) {
        for (const char* name : {"uom", "skipattachments", "skipcorrelations"}) {
            EXPECT_EQ("Not supported", Write(*entry, name, FIValue("K"))) << NameOf(*entry) << name;
        }
        EXPECT_EQ("(NULL)", Write(*entry, "attachments", FIValue::OfInt(0))) << NameOf(*entry);
    }
}

TEST_F(LiveStores, a_refusal_of_the_host_is_told_for_every_kind) {
    struct Case {
        const char* path;
        FIValue value;
    };
    const Case cases[] = {
        {"Streams.Raw Gas.Temperature", FIValue::OfReal(31)},
        {"UnitOps.E-100.Notes", FIValue("other")},
        {"UnitOps.PL-100.Correlation", FIValue("Homogeneous")},
        {"UnitOps.PL-100.Pipe Length.Elem1", FIValue::OfReal(7)},
        {"UnitOps.CRV-100.Reaction.Elem0", FIValue("other")},
    };
    for (const Case& each : cases) {
        NodeRef node = At(std::string(kFlowsheet) + each.path);
        const std::string before = Read(*node, "value");
        script->RefuseStore(1);
        EXPECT_EQ("Value not stored", Store(*node, each.value)) << each.path;
        EXPECT_EQ(before, Read(*node, "value")) << each.path;
        EXPECT_EQ("(NULL)", Store(*node, each.value)) << each.path;
    }
}

TEST_F(LiveStores, results_of_a_recording_are_told_to_be_older_than_a_store) {
    casehost::CaseData recording = host.ActiveLiveCase()->ToData();
    recording.recorded = true;
    ASSERT_TRUE(host.Open(recording));
    constexpr char kSales[] = "FlowSheetObjects.Streams.Sales Gas.Temperature";
    constexpr char kMethane[] = "FlowSheetObjects.Streams.Sales Gas.Comp Mole Frac.Methane";
    constexpr char kGiven[] = "FlowSheetObjects.Streams.Raw Gas.Temperature";
    for (const char* path : {kSales, kMethane, kGiven}) {
        EXPECT_EQ("(NULL)", Read(*At(path), "stale")) << path;
    }
    const std::string before = Read(*At(kSales), "value");
    EXPECT_EQ("(NULL)", Store(*At(kGiven), FIValue::OfReal(35)));
    for (const char* path : {kSales, kMethane}) {
        EXPECT_EQ("INT 1", Read(*At(path), "stale")) << path;
        EXPECT_EQ("Calculated", Read(*At(path), "status")) << path;
    }
    EXPECT_EQ(before, Read(*At(kSales), "value"));
    EXPECT_EQ("(NULL)", Read(*At(kGiven), "stale")) << "it was given";
    EXPECT_EQ("(NULL)", Read(*At("FlowSheetObjects.Streams.Sales Gas.Comp Mole Frac"), "stale"));
    EXPECT_EQ("Not Solved", Read(*At("FlowSheetObjects.Streams.Sales Gas"), "status"));
    At("FlowSheetObjects.Streams.Sales Gas.*[(stale)=1]");
}

TEST_F(LiveStores, what_a_solve_fills_is_never_told_to_be_older) {
    constexpr char kSales[] = "FlowSheetObjects.Streams.Sales Gas.Temperature";
    EXPECT_EQ("(NULL)",
              Store(*At("FlowSheetObjects.Streams.Raw Gas.Temperature"), FIValue::OfReal(35)));
    EXPECT_EQ("(NULL)", Read(*At(kSales), "stale"));
    EXPECT_EQ("(NULL)", Store(*At("FlowSheetObjects.Streams.Raw Gas.Molar Flow"), FIValue()));
    EXPECT_EQ("Missing", Read(*At(kSales), "status"));
    EXPECT_EQ("(NULL)", Read(*At(kSales), "stale"));
}

}  // namespace

}  // namespace fixtop
