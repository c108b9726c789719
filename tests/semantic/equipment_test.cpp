// SPDX-License-Identifier: Apache-2.0
// Pipes, nozzles, heaters and exchangers.

#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include "fixtop/semantic_functions.h"
#include "semantic/unit_node.h"

namespace fixtop {

namespace {

constexpr int kLargest = std::numeric_limits<int>::max();

Variables SegmentAt(int index, int first, int count) {
    return {{"SegElemNum", "Elem" + std::to_string(index)},
            {"SegStartCell", "INT " + std::to_string(first)},
            {"SegNumCell", "INT " + std::to_string(count)}};
}

// A pipe whose segments have so many cells.
struct Pipe : UnitNode {
    explicit Pipe(const std::vector<FIValue>& increments) {
        AddElements({"No of Increments"}, increments);
    }
};

const std::vector<FIValue> k345 = {FIValue::OfInt(3), FIValue::OfInt(4), FIValue::OfInt(5)};

TEST(PipeSegment, begins_behind_the_cells_of_those_before_it) {
    Pipe pipe(k345);
    EXPECT_EQ(SegmentAt(0, 0, 3), ElementOf(pipe, CTPipeSegment, 0).variables);
    EXPECT_EQ(SegmentAt(1, 3, 4), ElementOf(pipe, CTPipeSegment, 1).variables);
    EXPECT_EQ(SegmentAt(2, 7, 5), ElementOf(pipe, CTPipeSegment, 2).variables);
    EXPECT_EQ("Case.Unit", ElementOf(pipe, CTPipeSegment, 2).place);
}

TEST(PipeSegment, behind_the_last_one_has_its_cells) {
    Pipe pipe(k345);
    EXPECT_EQ(SegmentAt(3, 7, 5), ElementOf(pipe, CTPipeSegment, 3).variables);
    EXPECT_EQ(SegmentAt(9, 7, 5), ElementOf(pipe, CTPipeSegment, 9).variables);
}

TEST(PipeSegment, without_a_number_has_no_cells) {
    Pipe pipe({FIValue(), FIValue("4"), FIValue::OfReal(2.0), FIValue("many")});
    EXPECT_EQ(SegmentAt(0, 0, 0), ElementOf(pipe, CTPipeSegment, 0).variables);
    EXPECT_EQ(SegmentAt(1, 0, 4), ElementOf(pipe, CTPipeSegment, 1).variables);
    EXPECT_EQ(SegmentAt(2, 4, 2), ElementOf(pipe, CTPipeSegment, 2).variables);
    EXPECT_EQ(SegmentAt(3, 6, 0), ElementOf(pipe, CTPipeSegment, 3).variables);
    Pipe empty({});
    EXPECT_EQ(SegmentAt(1, 0, 0), ElementOf(empty, CTPipeSegment, 1).variables);
}

TEST(PipeSegment, overwrites_the_cells_of_the_one_before) {
    Pipe pipe(k345);
    Ref<FIIterator> it = pipe.Iterate();
    for (int index : {2, 0}) Call(CTPipeSegment, it.Get(), nullptr, index);
    EXPECT_EQ(SegmentAt(0, 0, 3), VariablesOf(*it));
    pipe.node.RemoveChild("No of Increments");
    Call(CTPipeSegment, it.Get(), nullptr, 1);
    EXPECT_EQ(SegmentAt(1, 0, 0), VariablesOf(*it));
}

TEST(PipeSegment, cells_beyond_all_numbers_do_no_harm) {
    Pipe pipe({FIValue::OfInt(kLargest), FIValue::OfInt(2), FIValue::OfInt(1)});
    // 2147483647 + 2 - 2^32
    EXPECT_EQ(SegmentAt(2, -2147483647, 1), ElementOf(pipe, CTPipeSegment, 2).variables);
}

TEST(PipeCell, is_counted_from_the_begin_of_its_segment) {
    Pipe pipe(k345);
    Ref<FIIterator> it = pipe.Iterate();
    Call(CTPipeSegment, it.Get(), nullptr, 2);
    EXPECT_EQ(5, Call(CTPipeCell, it.Get(), nullptr, kCountIndex));
    EXPECT_EQ(1, Call(CTPipeCell, it.Get(), nullptr, 1));
    EXPECT_EQ("Elem8", Variable(*it, "CellElemNum"));
    EXPECT_EQ(0, Call(CTPipeCell, it.Get(), nullptr, 0));
    EXPECT_EQ("Elem7", Variable(*it, "CellElemNum"));
    EXPECT_EQ("Case.Unit", Place(*it));
}

TEST(PipeCell, without_a_segment_there_are_none_and_the_name_has_no_number) {
    Pipe pipe({FIValue::OfInt(3)});
    EXPECT_EQ(0, CountOf(pipe, CTPipeCell));
    EXPECT_EQ((Variables{{"CellElemNum", "Elem"}}), ElementOf(pipe, CTPipeCell, 1).variables);
}

TEST(PipeCell, of_a_segment_whose_begin_is_unknown_is_counted_from_the_first) {
    UnitNode pipe;
    Ref<FIIterator> it = pipe.Iterate();
    it->SetVarText("SegStartCell", FIValue());
    it->SetVarText("SegNumCell", FIValue());
    EXPECT_EQ(0, Call(CTPipeCell, it.Get(), nullptr, kCountIndex));
    Call(CTPipeCell, it.Get(), nullptr, 6);
    EXPECT_EQ("Elem6", Variable(*it, "CellElemNum"));
    it->SetVarText("SegStartCell", FIValue::OfInt(kLargest));
    Call(CTPipeCell, it.Get(), nullptr, 1);
    EXPECT_EQ("Elem-2147483648", Variable(*it, "CellElemNum"));
}

TEST(Nozzle, of_a_tee_and_of_a_mixer_have_arrays_of_like_names) {
    UnitNode unit;
    unit.AddElements({"Enhanced Holdup", "Product Nozzle Diameter"}, {FIValue(), FIValue()});
    unit.AddElements({"Enhanced Holdup", "Feed Nozzle Diameter"}, {FIValue()});
    EXPECT_EQ(2, CountOf(unit, CTTeeNozzle));
    EXPECT_EQ(0, CountOf(unit, CTMixerNozzle));
    unit.AddElements({"Enhanced Hold Up", "Feed Nozzle Diameter"},
                     {FIValue(), FIValue(), FIValue()});
    EXPECT_EQ(2, CountOf(unit, CTTeeNozzle));
    EXPECT_EQ(3, CountOf(unit, CTMixerNozzle));
}

// ---- Heaters

TEST(HeaterProfile, a_point_has_the_duty_of_the_zone_before_it) {
    UnitNode heater;
    heater.AddElements({"Zone duty"}, {FIValue::OfReal(10.5), FIValue::OfReal(20.5), FIValue()});
    const char* const transferred[] = {"REAL 0", "REAL 10.5", "REAL 20.5", "(NULL)"};
    for (int point = 0; point < 4; ++point) {
        const Element element = ElementOf(heater, CTHeaterProfile, point);
        EXPECT_EQ((Variables{{"ProfileElemNum", "Elem" + std::to_string(point)},
                             {"ProfileZoneNo", "INT " + std::to_string(point)},
                             {"HeatTransferred", transferred[point]}}),
                  element.variables);
        EXPECT_EQ("Case.Unit", element.place);
    }
}

TEST(HeaterProfile, a_point_without_a_zone_keeps_the_duty_of_the_one_before) {
    UnitNode heater;
    heater.AddElements({"Zone duty"}, {FIValue::OfReal(10.5)});
    Ref<FIIterator> it = heater.Iterate();
    Call(CTHeaterProfile, it.Get(), nullptr, 1);
    Call(CTHeaterProfile, it.Get(), nullptr, 2);
    EXPECT_EQ("REAL 10.5", Variable(*it, "HeatTransferred"));
    EXPECT_EQ("INT 2", Variable(*it, "ProfileZoneNo"));
    EXPECT_EQ("Case.Unit", Place(*it));
}

TEST(HeaterOutlet, is_the_last_zone) {
    UnitNode heater;
    AddArray(heater.node, {"Zone vapour frac"}, {"Elem0", "Elem1", "Elem2"});
    for (int move : {1, 2, -1}) {
        Ref<FIIterator> it = heater.Iterate();
        EXPECT_TRUE(Call(CTHeaterVF, it.Get(), move));
        EXPECT_EQ("Case.Unit.Zone vapour frac.Elem2", Place(*it)) << move;
        EXPECT_EQ("REAL 2.5", Read(*it, "value")) << move;
    }
}

TEST(HeaterOutlet, asked_only_stays_where_it_is) {
    UnitNode heater;
    AddArray(heater.node, {"Zone vapour frac"}, {"Elem0", "Elem1", "Elem2"});
    Ref<FIIterator> it = heater.Iterate();
    EXPECT_TRUE(Call(CTHeaterVF, it.Get(), 0));
    EXPECT_EQ("Case.Unit", Place(*it));
    EXPECT_EQ(1, it->Depth());
}

TEST(HeaterOutlet, of_a_heater_without_zones_is_none) {
    for (const char* array : {"Zone duty", "Zone vapour frac"}) {
        UnitNode heater;
        Below(heater.node, {array});
        for (int move : {0, 1}) {
            Ref<FIIterator> it = heater.Iterate();
            EXPECT_FALSE(Call(CTHeaterVF, it.Get(), move)) << array;
            EXPECT_EQ("Case.Unit", Place(*it)) << array << ", move " << move;
            EXPECT_EQ(1, it->Depth()) << array << ", move " << move;
        }
    }
}

// ---- Exchangers

const Variables kTubeSide = {{"DeltaT", "Tube Side Delta T"},
                             {"DeltaP", "Tube Side Pressure Drop"},
                             {"OutletT", "Tube Outlet Temperature"},
                             {"OutletP", "Tube Outlet Pressure"}};
const Variables kShellSide = {{"DeltaT", "Shell Side Delta T"},
                              {"DeltaP", "Shell Side Pressure Drop"},
                              {"OutletT", "Shell Outlet Temperature"},
                              {"OutletP", "Shell Outlet Pressure"}};

struct Exchanger : UnitNode {
    Exchanger(const std::optional<FIValue>& tube, const std::optional<FIValue>& shell) {
        if (tube) Set({"Tube Inlet Temperature"}, *tube);
        if (shell) Set({"Shell Inlet Temperature"}, *shell);
    }
    Variables Side(SemanticFunction function, int move) {
        Ref<FIIterator> it = Iterate();
        EXPECT_TRUE(Call(function, it.Get(), move));
        EXPECT_EQ("Case.Unit", Place(*it));
        EXPECT_EQ(1, it->Depth());
        return VariablesOf(*it);
    }
};

FIValue Real(double number) {
    return FIValue::OfReal(number);
}

TEST(ExchangerSide, hot_and_cold_are_told_by_the_inlets) {
    struct Case {
        FIValue tube;
        FIValue shell;
        const Variables& hot;
        const Variables& cold;
    };
    const Case cases[] = {
        {Real(80), Real(20), kTubeSide, kShellSide},
        {Real(20), Real(80), kShellSide, kTubeSide},
        {Real(50), Real(50), kShellSide, kTubeSide},
        {Real(-40), Real(-30), kShellSide, kTubeSide},
        {FIValue::OfInt(9), FIValue("10.5"), kShellSide, kTubeSide},
        // What the host has not set reads as 0.
        {FIValue(), Real(-10), kTubeSide, kShellSide},
        {Real(-10), FIValue(), kShellSide, kTubeSide},
        {FIValue(), FIValue(), kShellSide, kTubeSide},
        {Real(std::numeric_limits<double>::quiet_NaN()), Real(1), kShellSide, kTubeSide},
    };
    for (const Case& each : cases) {
        Exchanger exchanger(each.tube, each.shell);
        const std::string what = Shown(each.tube) + " in the tubes, " + Shown(each.shell);
        for (int move : {1, -1}) {
            EXPECT_EQ(each.hot, exchanger.Side(CTExchangerHot, move)) << what;
            EXPECT_EQ(each.cold, exchanger.Side(CTExchangerCold, move)) << what;
        }
    }
}

TEST(ExchangerSide, asked_only_is_there_and_sets_nothing) {
    Exchanger exchanger(Real(80), Real(20));
    Exchanger empty({}, {});
    for (SemanticFunction function : {CTExchangerHot, CTExchangerCold}) {
        EXPECT_EQ(Variables(), exchanger.Side(function, 0));
        EXPECT_EQ(Variables(), empty.Side(function, 0));
    }
}

TEST(ExchangerSide, without_an_inlet_nothing_is_set) {
    for (SemanticFunction function : {CTExchangerHot, CTExchangerCold}) {
        EXPECT_EQ(Variables(), Exchanger(Real(80), {}).Side(function, 1));
        EXPECT_EQ(Variables(), Exchanger({}, Real(80)).Side(function, 1));
        EXPECT_EQ(Variables(), Exchanger({}, {}).Side(function, 1));
    }
}

}  // namespace

}  // namespace fixtop
