// SPDX-License-Identifier: Apache-2.0
// Curves of compressors, pumps and valves, of phase envelopes and of distillation.

#include <gtest/gtest.h>

#include "fixtop/semantic_functions.h"
#include "semantic/unit_node.h"

namespace fixtop {

namespace {

// ---- Compressors and expanders

TEST(MachineCurve, of_an_expander_is_in_its_own_array) {
    UnitNode expander;
    AddArray(expander.node, {"Expander Curve"}, {"Elem0", "Elem1"});
    EXPECT_EQ(2, CountOf(expander, CTComprPerfCurve));
    EXPECT_EQ("Case.Unit.Expander Curve.Elem1", ElementOf(expander, CTComprPerfCurve, 1).place);
}

TEST(MachineCurve, of_a_compressor_comes_first_also_when_there_is_none) {
    UnitNode compressor;
    AddArray(compressor.node, {"Expander Curve"}, {"Elem0", "Elem1"});
    Below(compressor.node, {"Compressor curve"});
    EXPECT_EQ(0, CountOf(compressor, CTComprPerfCurve));
    compressor.AddElements({"Compressor curve"}, {FIValue(), FIValue(), FIValue()});
    EXPECT_EQ(3, CountOf(compressor, CTComprPerfCurve));
    EXPECT_EQ("Case.Unit.Compressor curve.Elem2", ElementOf(compressor, CTComprPerfCurve, 2).place);
}

TEST(MachineCurve, points_are_numbered_from_one) {
    UnitNode curve;
    EXPECT_EQ((Variables{{"PointElem", "Elem0"}, {"PointNo", "INT 1"}}),
              ElementOf(curve, CTPerfCurvePoint, 0).variables);
    EXPECT_EQ((Variables{{"PointElem", "Elem11"}, {"PointNo", "INT 12"}}),
              ElementOf(curve, CTPerfCurvePoint, 11).variables);
}

// ---- Valves

TEST(ValveCurve, rows_are_counted_from_0) {
    for (const auto& [rows, count] : {std::pair{5, 4}, {2, 1}, {1, 0}, {0, 0}}) {
        UnitNode valve;
        valve.AddElements({"Performance Curve", "Lift (% of max)"}, std::vector<FIValue>(rows));
        EXPECT_EQ(count, CountOf(valve, CTValveCurve)) << rows;
        EXPECT_EQ((Variables{{"Elem", "Elem3"}}), ElementOf(valve, CTValveCurve, 3).variables);
    }
}

// ---- Pumps

// A pump with one curve for each name.
struct Pump : UnitNode {
    explicit Pump(const NamePath& curves) {
        Below(node, {"Pump Curve"});
        for (const std::string& curve : curves) {
            ScriptNode& array = Below(node, {"Pump Curve"});
            ScriptNode& element = array.Add("Elem" + std::to_string(array.children.size()));
            element.Add("Object Name").Set("value", curve.c_str());
        }
    }
};

TEST(PumpCurve, that_of_the_coefficients_takes_the_place_of_the_last) {
    Pump pump({"Low", "Middle", "High"});
    EXPECT_EQ(4, CountOf(pump, CTPumpCurve));

    const Element low = ElementOf(pump, CTPumpCurve, 0);
    EXPECT_EQ("Case.Unit.Pump Curve.Elem0", low.place);
    EXPECT_EQ((Variables{{"Name", "Low"}}), low.variables);
    const Element middle = ElementOf(pump, CTPumpCurve, 1);
    EXPECT_EQ("Case.Unit.Pump Curve.Elem1", middle.place);
    EXPECT_EQ((Variables{{"Name", "Middle"}}), middle.variables);

    const Element coefficients = ElementOf(pump, CTPumpCurve, 2);
    EXPECT_EQ("Case.Unit", coefficients.place);
    EXPECT_EQ((Variables{{"Name", "CoefficientCurve"}}), coefficients.variables);
}

TEST(PumpCurve, the_one_behind_the_coefficients_keeps_their_name) {
    Pump pump({"Low", "High"});
    Ref<FIIterator> it = pump.Iterate();
    Call(CTPumpCurve, it.Get(), nullptr, 1);
    EXPECT_EQ(2, Call(CTPumpCurve, it.Get(), nullptr, 2));
    EXPECT_EQ("Case.Unit.Pump Curve", Place(*it));
    EXPECT_EQ("CoefficientCurve", Variable(*it, "Name"));
}

TEST(PumpCurve, the_only_one_gives_way_to_the_coefficients) {
    Pump pump({"Low"});
    EXPECT_EQ(2, CountOf(pump, CTPumpCurve));
    EXPECT_EQ("CoefficientCurve", ElementOf(pump, CTPumpCurve, 0).variables["Name"]);
}

TEST(PumpCurve, of_a_pump_without_curves_is_one_without_a_name) {
    Pump empty({});
    UnitNode none;
    for (UnitNode* pump : {static_cast<UnitNode*>(&empty), &none}) {
        EXPECT_EQ(1, CountOf(*pump, CTPumpCurve));
        EXPECT_EQ(Variables(), ElementOf(*pump, CTPumpCurve, 0).variables);
    }
}

TEST(PumpCurve, has_the_name_that_the_host_gives) {
    Pump pump({"", "Middle", "High"});
    ScriptNode& curves = Below(pump.node, {"Pump Curve"});
    EXPECT_EQ((Variables{{"Name", ""}}), ElementOf(pump, CTPumpCurve, 0).variables);
    Below(curves, {"Elem0", "Object Name"}).Set("value", FIValue());
    EXPECT_EQ((Variables{{"Name", "(NULL)"}}), ElementOf(pump, CTPumpCurve, 0).variables);
    curves.children[0]->RemoveChild("Object Name");
    const Element unnamed = ElementOf(pump, CTPumpCurve, 0);
    EXPECT_EQ(Variables(), unnamed.variables);
    EXPECT_EQ("Case.Unit.Pump Curve.Elem0", unnamed.place);
}

TEST(NpshCurve, has_two_points) {
    UnitNode curve;
    EXPECT_EQ(2, CountOf(curve, CTNPSHCurvePoint));
    const Variables first = {
        {"NPSH", "Point 1 NPSH"}, {"Flow", "Point 1 Vol Flow"}, {"PointNo", "INT 1"}};
    const Variables second = {
        {"NPSH", "Point 2 NPSH"}, {"Flow", "Point 2 Vol Flow"}, {"PointNo", "INT 2"}};
    EXPECT_EQ(first, ElementOf(curve, CTNPSHCurvePoint, 0).variables);
    EXPECT_EQ(second, ElementOf(curve, CTNPSHCurvePoint, 1).variables);
    EXPECT_EQ(second, ElementOf(curve, CTNPSHCurvePoint, 9).variables);
}

// ---- Phase envelopes

TEST(DewCurve, comes_behind_the_bubble_points_in_the_arrays_of_both) {
    UnitNode envelope;
    envelope.Set({"Number of Points, Bubble Point Curve"}, FIValue::OfInt(7));
    EXPECT_EQ(
        (Variables{{"CurveElement", "Elem2"}, {"PointNo", "INT 2"}, {"DewCurveElement", "Elem9"}}),
        ElementOf(envelope, CTDewPointCurve, 2).variables);
}

TEST(DewCurve, alone_begins_the_arrays) {
    UnitNode envelope;
    EXPECT_EQ("Elem2", ElementOf(envelope, CTDewPointCurve, 2).variables["DewCurveElement"]);
    envelope.Set({"Number of Points, Bubble Point Curve"}, FIValue());
    EXPECT_EQ("Elem2", ElementOf(envelope, CTDewPointCurve, 2).variables["DewCurveElement"]);
}

TEST(EnvelopeCurve, each_has_its_own_number_of_points) {
    UnitNode envelope;
    envelope.Set({"Number of Points, Dew Point Curve"}, FIValue::OfInt(5));
    envelope.Set({"Number of Points, Bubble Point Curve"}, FIValue::OfInt(7));
    envelope.Set({"Number of Points, Hydrate Curve"}, FIValue::OfInt(3));
    EXPECT_EQ(5, CountOf(envelope, CTDewPointCurve));
    EXPECT_EQ(7, CountOf(envelope, CTBubblePointCurve));
    EXPECT_EQ(3, CountOf(envelope, CTHydratePointCurve));
}

// ---- Distillation curves

TEST(DistillationCut, has_the_name_of_the_host_and_its_number) {
    struct Cut {
        const char* name;
        double percent;
    };
    const Cut cuts[] = {
        {"Cut Pt-0.0%", 0.0},      {"Cut Pt-1.00%", 1.0},   {"Cut Pt-2.00%", 2.0},
        {"Cut Pt-3.50%", 3.5},     {"Cut Pt-5.00%", 5.0},   {"Cut Pt-7.50%", 7.5},
        {"Cut Pt-10.00%", 10.0},   {"Cut Pt-12.50%", 12.5}, {"Cut Pt-15.00%", 15.0},
        {"Cut Pt-17.50%", 17.5},   {"Cut Pt-20.00%", 20.0}, {"Cut Pt-25.00%", 25.0},
        {"Cut Pt-30.00%", 30.0},   {"Cut Pt-35.00%", 35.0}, {"Cut Pt-40.00%", 40.0},
        {"Cut Pt-45.00%", 45.0},   {"Cut Pt-50.00%", 50.0}, {"Cut Pt-55.00%", 55.0},
        {"Cut Pt-60.00%", 60.0},   {"Cut Pt-65.00%", 65.0}, {"Cut Pt-70.00%", 70.0},
        {"Cut Pt-75.00%", 75.0},   {"Cut Pt-80.00%", 80.0}, {"Cut Pt-85.00%", 85.0},
        {"Cut Pt-90.00%", 90.0},   {"Cut Pt-92.50%", 92.5}, {"Cut Pt-95.00%", 95.0},
        {"Cut Pt-96.50%", 96.5},   {"Cut Pt-98.00%", 98.0}, {"Cut Pt-99.00%", 99.0},
        {"Cut Pt-100.00%", 100.0},
    };
    UnitNode curve;
    ASSERT_EQ(31, CountOf(curve, CTCutPercent));
    for (int index = 0; index < 31; ++index) {
        const Element element = ElementOf(curve, CTCutPercent, index);
        EXPECT_EQ((Variables{{"CutPercent", cuts[index].name},
                             {"CutPoint", Shown(FIValue::OfReal(cuts[index].percent))}}),
                  element.variables);
        FIValue percent;
        element.it->GetVarText("CutPoint", percent);
        EXPECT_EQ(cuts[index].percent, percent.AsDouble());
        EXPECT_EQ("Case.Unit", element.place);
    }
}

TEST(DistillationCut, is_a_step_of_paths) {
    UnitNode curve;
    AddArray(curve.node, {"ASTM D86"}, {"Cut Pt-0.0%", "Cut Pt-1.00%", "Cut Pt-2.00%"});
    Ref<FIIterator> it = curve.Iterate();
    Call(CTCutPercent, it.Get(), nullptr, 1);
    ASSERT_TRUE(it->SeekPath(FIValue("\"ASTM D86\".%CutPercent")));
    EXPECT_EQ("Cut Pt-1.00%", NameAt(*it));
}

TEST(DistillationCut, behind_the_last_sets_nothing) {
    UnitNode curve;
    EXPECT_EQ(Variables(), ElementOf(curve, CTCutPercent, 31).variables);
}

TEST(BulkViscosity, is_told_at_two_temperatures) {
    UnitNode curve;
    EXPECT_EQ(2, CountOf(curve, CTViscosity));
    EXPECT_EQ((Variables{{"ViscosityName", "Viscosity at 100 F"}, {"ReferenceTemp", "REAL 100"}}),
              ElementOf(curve, CTViscosity, 0).variables);
    const Element second = ElementOf(curve, CTViscosity, 1);
    EXPECT_EQ((Variables{{"ViscosityName", "Viscosity at 210 F"}, {"ReferenceTemp", "REAL 210"}}),
              second.variables);
    EXPECT_EQ("Case.Unit", second.place);
    EXPECT_EQ(1, second.it->Depth());
}

TEST(BulkViscosity, behind_the_last_answers_0_and_sets_nothing) {
    UnitNode curve;
    Ref<FIIterator> it = curve.Iterate();
    EXPECT_EQ(0, Call(CTViscosity, it.Get(), nullptr, 2));
    EXPECT_EQ(0, Call(CTViscosity, it.Get(), nullptr, 7));
    EXPECT_EQ(Variables(), VariablesOf(*it));
    EXPECT_EQ("Case.Unit", Place(*it));
}

}  // namespace

}  // namespace fixtop
