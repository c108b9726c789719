// SPDX-License-Identifier: Apache-2.0
// What all lists of equipment, curves and reactions have in common: what is counted, where `it` is
// before and after, and what an element sets where the host has nothing. A row a function.

#include <gtest/gtest.h>

#include <algorithm>

#include "fixtop/semantic_functions.h"
#include "semantic/unit_node.h"

namespace fixtop {

namespace {

enum class By { kChildren, kNumber, kVariable, kNothing };

struct ListRow {
    const char* name;
    ArrayFunction function;
    By by;
    // The array, the number or the variable that is counted by.
    NamePath path;
    // Variables that element 4 of a node without anything sets.
    Variables alone;
    // The count is so much more than what is there.
    int more = 0;
    // `it` goes to the element.
    bool moves = false;
    // What the children are called, by their places when empty.
    std::string key = {};
    // The variable that the count leaves.
    std::string counted = {};
};

const ListRow kLists[] = {
    {"CTPipeSegment",
     CTPipeSegment,
     By::kChildren,
     {"Pipe Length"},
     {{"SegElemNum", "Elem4"}, {"SegStartCell", "INT 0"}, {"SegNumCell", "INT 0"}}},
    {"CTPipeCell", CTPipeCell, By::kVariable, {"SegNumCell"}, {{"CellElemNum", "Elem"}}},
    {"CTPipeProfile",
     CTPipeProfile,
     By::kChildren,
     {"Profile Length"},
     {{"ProfileElemNum", "Elem4"}}},
    {"CTComprPerfCurve", CTComprPerfCurve, By::kChildren, {"Compressor curve"}, {}, 0, true},
    {"CTComprPerfCurve", CTComprPerfCurve, By::kChildren, {"Expander Curve"}, {}, 0, true},
    {"CTPerfCurvePoint",
     CTPerfCurvePoint,
     By::kChildren,
     {"Head"},
     {{"PointElem", "Elem4"}, {"PointNo", "INT 5"}}},
    {"CTSpeedFlowCurve", CTSpeedFlowCurve, By::kChildren, {"Speed"}, {{"PointElem", "Elem4"}}},
    {"CTValveCurve",
     CTValveCurve,
     By::kChildren,
     {"Performance Curve", "Lift (% of max)"},
     {{"Elem", "Elem4"}},
     -1},
    {"CTPumpCurve", CTPumpCurve, By::kChildren, {"Pump Curve"}, {}, 1, true},
    {"CTEfficiencyCurve", CTEfficiencyCurve, By::kChildren, {"Pump Curve"}, {}, 0, true},
    {"CTNPSHCurve", CTNPSHCurve, By::kChildren, {"NPSH Curve"}, {}, 0, true},
    {"CTNPSHCurvePoint",
     CTNPSHCurvePoint,
     By::kNothing,
     {},
     {{"NPSH", "Point 2 NPSH"}, {"Flow", "Point 2 Vol Flow"}, {"PointNo", "INT 2"}},
     2},
    {"CTTeeNozzle",
     CTTeeNozzle,
     By::kChildren,
     {"Enhanced Holdup", "Product Nozzle Diameter"},
     {{"Elem", "Elem4"}}},
    {"CTMixerNozzle",
     CTMixerNozzle,
     By::kChildren,
     {"Enhanced Hold Up", "Feed Nozzle Diameter"},
     {{"Elem", "Elem4"}}},
    {"CTTeeSplit",
     CTTeeSplit,
     By::kNumber,
     {"Number of Product Streams"},
     {{"SplitElem", "Elem4"}}},
    {"CTEntrainment",
     CTEntrainment,
     By::kChildren,
     {"CO results label"},
     {{"EntrainmentElem", "Elem4"}}},
    {"CTDewPointCurve",
     CTDewPointCurve,
     By::kNumber,
     {"Number of Points, Dew Point Curve"},
     {{"CurveElement", "Elem4"}, {"PointNo", "INT 4"}, {"DewCurveElement", "Elem4"}}},
    {"CTBubblePointCurve",
     CTBubblePointCurve,
     By::kNumber,
     {"Number of Points, Bubble Point Curve"},
     {{"CurveElement", "Elem4"}, {"PointNo", "INT 4"}}},
    {"CTHydratePointCurve",
     CTHydratePointCurve,
     By::kNumber,
     {"Number of Points, Hydrate Curve"},
     {{"CurveElement", "Elem4"}, {"PointNo", "INT 4"}}},
    {"CTCutPercent",
     CTCutPercent,
     By::kNothing,
     {},
     {{"CutPercent", "Cut Pt-5.00%"}, {"CutPoint", "REAL 5"}},
     31},
    {"CTHeaterZone",
     CTHeaterZone,
     By::kChildren,
     {"Zone duty"},
     {{"HeaterZoneElemNum", "Elem4"}, {"HeaterZoneElemNum1", "Elem5"}, {"ZoneNo", "INT 5"}}},
    {"CTHeaterProfile",
     CTHeaterProfile,
     By::kChildren,
     {"Zone pressures"},
     {{"ProfileElemNum", "Elem4"}, {"ProfileZoneNo", "INT 4"}}},
    {"CTGibbsFlowSpec",
     CTGibbsFlowSpec,
     By::kChildren,
     {"Frac Spec"},
     {{"GibbsFlowSpecElemNum", "Elem4"}}},
    {"CTReactions", CTReactions, By::kChildren, {"ReactionList"}, {}, 0, true, "Reaction"},
    {"CTActiveReactions",
     CTActiveReactions,
     By::kNumber,
     {"ActiveReactionList", "NumberOfActiveRxns"},
     {{"RxnRank", "(NULL)"}}},
    {"CTActiveReactions",
     CTActiveReactions,
     By::kNumber,
     {"InactiveReactionList", "NumberOfInactiveRxns"},
     {{"RxnRank", "(NULL)"}}},
    {"CTLocalReaction",
     CTLocalReaction,
     By::kChildren,
     {"Est. Molar Extent"},
     {{"RxnElemNum", "Elem4"}, {"RxnIndex", "INT 4"}}},
    {"CTReactantBalance",
     CTReactantBalance,
     By::kChildren,
     {"Total Inflow"},
     {{"BalanceElemNum", "Elem4"}}},
    {"CTLocalConvReaction",
     CTLocalConvReaction,
     By::kChildren,
     {"Reaction"},
     {{"ConvRxnElemNum", "Elem4"}}},
    {"CTLocalEquilReaction",
     CTLocalEquilReaction,
     By::kChildren,
     {"Temperature Approach"},
     {{"EquilRxnElemNum", "Elem4"}, {"EquilRxnNum", "INT 4"}}},
    {"CTReactionDenominatorTerm",
     CTReactionDenominatorTerm,
     By::kNumber,
     {"NumberOfRows"},
     {{"row", "INT 4"}}},
    {"CTReactionComponentOrder",
     CTReactionComponentOrder,
     By::kNumber,
     {"NumberOfReactants"},
     {},
     0,
     false,
     {},
     "ncomp"},
};

// A node with that many of what the row counts, and nothing else.
struct CountedNode : UnitNode {
    CountedNode(const ListRow& list, int elements) : row(list), count(elements) {
        if (row.by == By::kNumber) Set(row.path, FIValue::OfInt(count));
        if (row.by != By::kChildren) return;
        ScriptNode& array = Below(node, row.path);
        for (int i = 0; i < count; ++i) {
            array.Add(row.key.empty() ? "Elem" + std::to_string(i) : row.key).Set("place", i);
        }
    }
    Ref<FIIterator> IterateCounted() {
        Ref<FIIterator> it = Iterate();
        if (row.by == By::kVariable) it->SetVarText(row.path[0].c_str(), FIValue::OfInt(count));
        return it;
    }
    int Expected() const {
        if (row.by == By::kNothing) return row.more;
        return std::max(count + row.more, 0);
    }

    const ListRow& row;
    int count;
};

TEST(EquipmentList, counts_and_stays) {
    for (const ListRow& row : kLists) {
        for (int count : {0, 1, 3, 300}) {
            CountedNode unit(row, count);
            Ref<FIIterator> it = unit.IterateCounted();
            Variables expected = VariablesOf(*it);
            if (!row.counted.empty()) expected[row.counted] = "INT " + std::to_string(count);
            FIValue subclass;
            EXPECT_EQ(unit.Expected(), Call(row.function, it.Get(), &subclass, kCountIndex))
                << row.name << " of " << count;
            EXPECT_EQ(1, it->Depth()) << row.name;
            EXPECT_EQ("Case.Unit", Place(*it)) << row.name;
            EXPECT_EQ(expected, VariablesOf(*it)) << row.name;
            EXPECT_TRUE(subclass.IsNull()) << row.name;
        }
    }
}

TEST(EquipmentList, is_empty_without_what_it_counts) {
    for (const ListRow& row : kLists) {
        if (row.by == By::kNothing) continue;
        for (std::size_t found = 0; found <= row.path.size(); ++found) {
            UnitNode unit;
            if (row.by != By::kVariable) {
                Below(unit.node, {row.path.begin(), row.path.begin() + found});
            }
            EXPECT_EQ(std::max(row.more, 0), CountOf(unit, row.function))
                << row.name << " with " << found << " names";
        }
    }
}

TEST(EquipmentList, a_number_is_read_as_one_whatever_its_kind) {
    for (const ListRow& row : kLists) {
        if (row.by != By::kNumber) continue;
        for (const auto& [value, count] :
             {std::pair{FIValue::OfReal(7.9), 7}, {FIValue("12"), 12}, {FIValue(), 0}}) {
            UnitNode unit;
            unit.Set(row.path, value);
            EXPECT_EQ(count, CountOf(unit, row.function)) << row.name << " of " << Shown(value);
        }
    }
}

TEST(EquipmentList, an_element_is_below_its_array_or_where_the_list_is) {
    for (const ListRow& row : kLists) {
        CountedNode unit(row, 3);
        for (int index : {1, 0}) {
            const Element element = ElementOf(unit, row.function, index);
            const std::string expected =
                row.moves ? "Case.Unit." + row.path[0] + "." +
                                (row.key.empty() ? "Elem" + std::to_string(index) : row.key)
                          : "Case.Unit";
            EXPECT_EQ(expected, element.place) << row.name;
            EXPECT_EQ(row.moves ? 3 : 1, element.it->Depth()) << row.name;
            if (row.moves) {
                EXPECT_EQ("INT " + std::to_string(index), Read(*element.it, "place")) << row.name;
            }
            EXPECT_EQ("(NULL)", element.subclass) << row.name;
        }
    }
}

TEST(EquipmentList, an_element_of_nothing_stays_and_sets_what_it_can) {
    for (const ListRow& row : kLists) {
        UnitNode unit;
        const Element element = ElementOf(unit, row.function, 4);
        EXPECT_EQ("Case.Unit", element.place) << row.name;
        EXPECT_EQ(row.alone, element.variables) << row.name;
        EXPECT_EQ("(NULL)", element.subclass) << row.name;
    }
}

TEST(EquipmentList, an_element_behind_the_last_is_not_reached) {
    for (const ListRow& row : kLists) {
        CountedNode unit(row, 3);
        const Element element = ElementOf(unit, row.function, 7);
        const std::string expected = row.moves ? "Case.Unit." + row.path[0] : "Case.Unit";
        EXPECT_EQ(expected, element.place) << row.name;
        EXPECT_EQ("(NULL)", element.subclass) << row.name;
    }
}

}  // namespace

}  // namespace fixtop
