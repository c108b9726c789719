// SPDX-License-Identifier: Apache-2.0
// The figures of a distillation column.

#include <gtest/gtest.h>

#include <map>

#include "semantic/column_summary.h"
#include "semantic/column_vessels.h"
#include "semantic/raw_tree.h"

namespace fixtop {

namespace {

using Flows = std::map<std::string, double>;
using Variables = std::map<std::string, std::string>;

const char* const kRatioVariables[] = {
    "MolarRefluxRatio",      "MolarDistillateRate", "MassRefluxRatio",      "MassDistillateRate",
    "MolarBoilupRatio",      "MolarBottomsRate",    "MassBoilupRatio",      "MassBottomsRate",
    "MolarDistillateToFeed", "MolarBottomsToFeed",  "MassDistillateToFeed", "MassBottomsToFeed"};

const char kMolarFeeds[] = "Feed Stream Comp Molar Flows";
const char kMassFeeds[] = "Feed Stream Comp Mass Flows";

// A column with a tray section between its vessels. Each flow has its own value, so that a wrong
// name shows in a figure.
struct Column {
    Column() {
        Add("Main Tower", {{"Reflux Molar Flow", 1000.0}, {"Liquid Molar Flow", 1000.0}});
        Add("Condenser", {{"Reflux Molar Flow", 30.0},
                          {"Overhead Molar Flow", 4.0},
                          {"Distillate Molar Flow", 6.0},
                          {"Heavy Liquid Molar Flow", 2.0},
                          {"Reflux Mass Flow", 90.0},
                          {"Overhead Mass Flow", 20.0},
                          {"Distillate Mass Flow", 25.0},
                          {"Heavy Liquid Mass Flow", 3.0}});
        Add("Reboiler", {{"BoilUp Molar Flow", 21.0},
                         {"Liquid Molar Flow", 7.0},
                         {"HvyLiq Molar Flow", 2.0},
                         {"BoilUp Mass Flow", 100.0},
                         {"Liquid Mass Flow", 40.0},
                         {"HvyLiq Mass Flow", 11.0}});
        // The total of a feed stands first, its components behind it.
        AddFeed(kMolarFeeds, {15.0, 99.0});
        AddFeed(kMolarFeeds, {9.0});
        AddFeed(kMassFeeds, {60.0, 7.0, 8.0});
        AddFeed(kMassFeeds, {40.0, 5.0});
    }
    ScriptNode& Vessel(const std::string& name) {
        for (ScriptNode* vessel : Below(node, {"Vessels"}).children) {
            if (Shown(Below(*vessel, {"Object Name"}).attributes[0].second) == name) return *vessel;
        }
        throw std::invalid_argument(name);
    }
    void Add(const std::string& name, const Flows& flows) {
        ScriptNode& vessels = Below(node, {"Vessels"});
        ScriptNode& vessel = vessels.Add("Elem" + std::to_string(vessels.children.size()));
        vessel.Add("Object Name").Set("value", name.c_str());
        for (const auto& [flow, value] : flows) vessel.Add(flow).Set("value", value);
    }
    void AddFeed(const std::string& list, const std::vector<double>& flows) {
        ScriptNode& feeds = Below(node, {list});
        ScriptNode& feed = feeds.Add("Elem" + std::to_string(feeds.children.size()));
        for (double flow : flows) feed.Add("of feed").Set("value", flow);
    }
    Ref<FIIterator> Iterate() {
        Ref<FIIterator> it = root.Iterate();
        EXPECT_TRUE(it->SeekChild("T-100"));
        return it;
    }
    Variables Ratios() {
        Ref<FIIterator> it = Iterate();
        semantic::ComputeColumnRatios(*it);
        EXPECT_EQ("Case.T-100 at 1", At(*it));
        Variables set;
        for (const char* name : kRatioVariables) {
            const std::string value = Variable(*it, name);
            if (value != "(unset)") set[name] = value;
        }
        return set;
    }

    ScriptNode root{"Case"};
    ScriptNode& node{root.Add("T-100")};
};

const Variables kAll = {
    {"MolarRefluxRatio", "REAL 3"},        {"MolarDistillateRate", "REAL 10"},
    {"MassRefluxRatio", "REAL 2"},         {"MassDistillateRate", "REAL 45"},
    {"MolarBoilupRatio", "REAL 3"},        {"MolarBottomsRate", "REAL 7"},
    {"MassBoilupRatio", "REAL 2.5"},       {"MassBottomsRate", "REAL 40"},
    {"MolarDistillateToFeed", "REAL 0.5"}, {"MolarBottomsToFeed", "REAL 0.375"},
    {"MassDistillateToFeed", "REAL 0.48"}, {"MassBottomsToFeed", "REAL 0.51"},
};

// All figures without some, and with some that differ.
Variables Without(std::vector<std::string> names, const Variables& changed = {}) {
    Variables rest = kAll;
    for (const std::string& name : names) rest.erase(name);
    for (const auto& [name, value] : changed) rest[name] = value;
    return rest;
}

TEST(ColumnRatios, are_all_told_for_a_whole_column) {
    EXPECT_EQ(kAll, Column().Ratios());
}

struct Change {
    const char* what;
    void (*apply)(Column& column);
    Variables expected;
};

void SetFlow(Column& column, const char* vessel, const char* flow, const FIValue& value) {
    Below(column.Vessel(vessel), {flow}).Set("value", value);
}

TEST(ColumnRatios, are_told_as_far_as_their_figures_go) {
    const Change changes[] = {
        {"no vessels", [](Column& c) { c.node.RemoveChild("Vessels"); }, {}},
        {"no condenser",
         [](Column& c) { Below(c.Vessel("Condenser"), {"Object Name"}).Set("value", "condenser"); },
         Without({"MolarRefluxRatio", "MolarDistillateRate", "MassRefluxRatio",
                  "MassDistillateRate", "MolarDistillateToFeed", "MassDistillateToFeed"})},
        {"no reboiler", [](Column& c) { c.Vessel("Reboiler").RemoveChild("Object Name"); },
         Without({"MolarBoilupRatio", "MolarBottomsRate", "MassBoilupRatio", "MassBottomsRate",
                  "MolarBottomsToFeed", "MassBottomsToFeed"})},
        {"no reflux", [](Column& c) { c.Vessel("Condenser").RemoveChild("Reflux Molar Flow"); },
         Without({}, {{"MolarRefluxRatio", "REAL 0"}})},
        {"NULL reflux", [](Column& c) { SetFlow(c, "Condenser", "Reflux Mass Flow", FIValue()); },
         Without({}, {{"MassRefluxRatio", "REAL 0"}})},
        {"no overhead", [](Column& c) { c.Vessel("Condenser").RemoveChild("Overhead Molar Flow"); },
         Without({}, {{"MolarRefluxRatio", "REAL 5"},
                      {"MolarDistillateRate", "REAL 6"},
                      {"MolarDistillateToFeed", "REAL 0.333333333333"}})},
        {"tops that cancel",
         [](Column& c) {
             SetFlow(c, "Condenser", "Overhead Mass Flow", FIValue::OfReal(-25.0));
             SetFlow(c, "Condenser", "Heavy Liquid Mass Flow", FIValue::OfReal(0.0));
         },
         Without({"MassRefluxRatio", "MassDistillateRate", "MassDistillateToFeed"})},
        {"tops that flow back",
         [](Column& c) { SetFlow(c, "Condenser", "Overhead Molar Flow", FIValue::OfReal(-16.0)); },
         Without({"MolarDistillateToFeed"},
                 {{"MolarRefluxRatio", "REAL -3"}, {"MolarDistillateRate", "REAL -10"}})},
        {"no bottom liquid",
         [](Column& c) { SetFlow(c, "Reboiler", "Liquid Molar Flow", FIValue()); },
         Without({"MolarBoilupRatio", "MolarBottomsRate"},
                 {{"MolarBottomsToFeed", "REAL 0.0833333333333"}})},
        {"bottoms that flow back",
         [](Column& c) { SetFlow(c, "Reboiler", "Liquid Mass Flow", FIValue::OfReal(-50.0)); },
         Without({"MassBottomsToFeed"},
                 {{"MassBoilupRatio", "REAL -2"}, {"MassBottomsRate", "REAL -50"}})},
        {"no molar feeds", [](Column& c) { c.node.RemoveChild(kMolarFeeds); },
         Without({"MolarDistillateToFeed", "MolarBottomsToFeed"})},
        {"mass feeds that cancel", [](Column& c) { c.AddFeed(kMassFeeds, {-100.0}); },
         Without({"MassDistillateToFeed", "MassBottomsToFeed"})},
        {"mass feeds below zero", [](Column& c) { c.AddFeed(kMassFeeds, {-200.0}); },
         Without({"MassDistillateToFeed", "MassBottomsToFeed"})},
        {"a feed without flows",
         [](Column& c) {
             c.AddFeed(kMolarFeeds, {});
             c.AddFeed(kMolarFeeds, {24.0});
         },
         Without({},
                 {{"MolarDistillateToFeed", "REAL 0.25"}, {"MolarBottomsToFeed", "REAL 0.1875"}})},
    };
    for (const Change& change : changes) {
        Column column;
        change.apply(column);
        EXPECT_EQ(change.expected, column.Ratios()) << change.what;
    }
}

TEST(ColumnRatios, what_cannot_be_told_keeps_what_it_was) {
    Column column;
    column.node.RemoveChild("Vessels");
    column.node.RemoveChild("Number of Trays");
    Ref<FIIterator> it = column.Iterate();
    it->SetVarText("MolarRefluxRatio", FIValue::OfReal(1.25));
    it->SetVarText("Bottom", FIValue::OfInt(5));
    semantic::ComputeColumnRatios(*it);
    semantic::SetColumnBottom(*it);
    EXPECT_EQ("REAL 1.25", Variable(*it, "MolarRefluxRatio"));
    EXPECT_EQ("INT 5", Variable(*it, "Bottom"));
}

TEST(ColumnRatios, without_distillate_keep_what_they_were) {
    Column column;
    for (const char* flow : {"Overhead Molar Flow", "Distillate Molar Flow"}) {
        SetFlow(column, "Condenser", flow, FIValue::OfReal(0.0));
    }
    Ref<FIIterator> it = column.Iterate();
    semantic::ComputeColumnRatios(*it);
    EXPECT_EQ("(unset)", Variable(*it, "MolarRefluxRatio"));
    it->SetVarText("MolarRefluxRatio", FIValue::OfReal(1.25));
    semantic::ComputeColumnRatios(*it);
    EXPECT_EQ("REAL 1.25", Variable(*it, "MolarRefluxRatio"));
    EXPECT_EQ("REAL 2", Variable(*it, "MassRefluxRatio"));
}

TEST(ColumnBottom, is_the_stage_below_the_trays) {
    struct Case {
        FIValue trays;
        const char* bottom;
    };
    const Case cases[] = {{FIValue::OfInt(10), "INT 11"},
                          {FIValue::OfReal(28.0), "INT 29"},
                          {FIValue("4"), "INT 5"},
                          {FIValue(), "INT 1"},
                          {FIValue::OfInt(2147483647), "INT -2147483648"}};
    for (const Case& each : cases) {
        Column column;
        column.node.Add("Number of Trays").Set("value", each.trays);
        Ref<FIIterator> it = column.Iterate();
        semantic::SetColumnBottom(*it);
        EXPECT_EQ(each.bottom, Variable(*it, "Bottom")) << Shown(each.trays);
        EXPECT_EQ("Case.T-100 at 1", At(*it));
    }
}

TEST(ColumnVessel, is_found_by_its_object_name) {
    Column column;
    Ref<FIIterator> it = column.Iterate();
    EXPECT_FALSE(semantic::FindVessel(*it, "Condense"));
    EXPECT_EQ("Case.T-100 at 1", At(*it));
    EXPECT_TRUE(semantic::FindVessel(*it, "Reboiler"));
    EXPECT_EQ("Case.T-100.Vessels.Elem2 at 3", At(*it));
}

TEST(ColumnVessel, is_looked_for_among_the_first_thousand) {
    Column column;
    for (int i = 3; i < 999; ++i) column.Add("Tower", {});
    column.Add("Last", {});
    column.Add("Too late", {});
    Ref<FIIterator> it = column.Iterate();
    EXPECT_FALSE(semantic::FindVessel(*it, "Too late"));
    EXPECT_EQ("Case.T-100 at 1", At(*it));
    EXPECT_TRUE(semantic::FindVessel(*it, "Last"));
    EXPECT_EQ("Case.T-100.Vessels.Elem999 at 3", At(*it));
}

TEST(NestedSum, takes_the_first_ten_thousand_elements) {
    Column column;
    for (int i = 0; i < 10001; ++i) column.AddFeed("Many", {1.0, 5.0});
    Ref<FIIterator> it = column.Iterate();
    EXPECT_EQ(10000.0, semantic::SumNestedValues(*it, "Many"));
    EXPECT_EQ("Case.T-100 at 1", At(*it));
    EXPECT_EQ(0.0, semantic::SumNestedValues(*it, "None"));
    EXPECT_EQ("Case.T-100 at 1", At(*it));
}

}  // namespace

}  // namespace fixtop
