// SPDX-License-Identifier: Apache-2.0
// The lists of a column: what they count, and how their elements are told.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fixtop/semantic_functions.h"
#include "framework/reference/reference.h"
#include "mapping/walks/function_walk.h"
#include "semantic/column_tree.h"
#include "semantic/stage_kind.h"

namespace fixtop {

namespace {

using semantic::kStageKinds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kColumnDepth = 2;

const Values kThree = {FIValue::OfReal(0.5), FIValue::OfReal(0.3), FIValue::OfReal(0.2)};

// ---- What makes each list three elements long

void AddTrays(ColumnTree& column) {
    column.Set({"Number of Trays"}, FIValue::OfInt(1));
    column.SetArray({"My SubFlowsheet", "Stage Name"},
                    {FIValue("Condenser"), FIValue("1_Main"), FIValue("Reboiler")});
    column.SetArray({"My SubFlowsheet", "Stage Net Molar Draw"},
                    {FIValue::OfReal(40.0), FIValue::OfReal(3.0), FIValue::OfReal(60.0)});
}

// The second list of inlet stages has two stages with a stream each.
void AddInlets(ColumnTree& column) {
    for (const char* name : {"Naphtha", "Gas Oil", "Steam", "Left out"}) {
        ScriptNode& inlets = Below(column.node, {"Inlets"});
        inlets.Add("Elem" + std::to_string(inlets.children.size()))
            .Add("Object Name")
            .Set("value", name);
    }
    column.node.Add("Inlet Stream Stages").Set("id", "Inlet Stream Stages");
    ScriptNode& stages = column.node.Add("Inlet Stream Stages");
    stages.Set("id", "Inlet Stream Stages");
    int number = 4;
    for (const char* stream : {"Naphtha", "Gas Oil"}) {
        ScriptNode& stage = stages.Add("Elem");
        stage.Add("Stage Number").Set("value", number++);
        stage.Add("Stage Stream Names").Add("Elem0").Set("value", stream);
    }
}

void AddStages(ColumnTree& column) {
    column.Set({"Number of Stages"}, FIValue::OfInt(3));
}

void AddDraws(ColumnTree& column) {
    column.SetArray({"Liquid Draw"}, {FIValue("Kerosene"), FIValue("Diesel")});
    column.SetArray({"Water Draw"}, {FIValue("Sour Water")});
    column.SetArray({"Liquid Draws", "Elem0", "Vap and Liq draws"}, {FIValue("Kerosene")});
    column.SetArray({"Liquid Draws", "Elem1", "Vap and Liq draws"}, {FIValue("Diesel")});
}

void AddInletComposition(ColumnTree& column) {
    ScriptNode& fractions =
        Below(column.node, {"Inlet Stream Stages", "4_Main", "Naphtha", "Comp Mole Frac"});
    for (const char* name : {"Methane", "Ethane", "Water"}) {
        fractions.Add(std::string("row of ") + name).Set("id", name);
    }
}

void AddRows(ColumnTree& column, const NamePath& path) {
    for (const char* stage : {"Condenser", "1_Main", "Reboiler"}) {
        NamePath rows = path;
        rows.push_back(stage);
        column.SetArray(rows, kThree);
    }
    AddInletComposition(column);
}

void AddVessel(ColumnTree& column, const char* vessel, const char* array) {
    column.Set({"Vessels", "Elem0", "Object Name"}, "Main");
    column.SetArray({"Vessels", "Elem0", array}, {FIValue()});
    column.Set({"Vessels", "Elem1", "Object Name"}, vessel);
    column.SetArray({"Vessels", "Elem1", array}, kThree);
}

struct ListRow {
    const char* name;
    ArrayFunction function;
    void (*fill)(ColumnTree& column);
    const char* place;       // of element 1, below the column
    Variables element;       // which element 1 sets
    Variables bare_element;  // of them, those that it sets where there is nothing
};

const Variables kPlainStage = {{"StageElemNo", "INT 1"}, {"IsCondenser", "INT 0"},
                               {"IsReboiler", "INT 0"},  {"IsFeed", "INT 0"},
                               {"IsDraw", "INT 0"},      {"IsReturn", "INT 0"}};

Variables With(Variables variables, const char* name, const char* value) {
    variables[name] = value;
    return variables;
}

const ListRow kLists[] = {
    {"CTColumnStages", CTColumnStages, AddTrays, "", With(kPlainStage, "IsDraw", "INT 1"),
     kPlainStage},
    {"CTColumnFeeds",
     CTColumnFeeds,
     AddInlets,
     "",
     {{"FeedElemNum", "Elem1"}, {"FeedName", "Gas Oil"}, {"FeedStage", "INT 5"}},
     {{"FeedElemNum", "Elem1"}}},
    {"CTSectionTray",
     CTSectionTray,
     AddStages,
     "",
     {{"Element", "Elem1"}, {"Elemno", "INT 1"}},
     {{"Element", "Elem1"}, {"Elemno", "INT 1"}}},
    {"CTColumnSideDraws",
     CTColumnSideDraws,
     AddDraws,
     "",
     {{"DrawElemNum", "Elem1"},
      {"Draw", "Liquid Draw"},
      {"StreamId", "Diesel"},
      {"DrawsElemNum", "Elem1"},
      {"Draws", "Liquid Draws"}},
     {{"DrawElemNum", "Elem1"}, {"Draw", "Water Draw"}, {"StreamId", "(NULL)"}}},
    {"CTColumnCompMoleFrac",
     CTColumnCompMoleFrac,
     [](ColumnTree& column) { column.SetArray({"Comp Mole Frac"}, kThree); },
     ".Comp Mole Frac.Elem1",
     {},
     {}},
    {"CTLiquidFromComposition",
     CTLiquidFromComposition,
     [](ColumnTree& column) {
         AddRows(column, {"My SubFlowsheet", "Comp Frac vs Stage"});
     },
     ".My SubFlowsheet.Comp Frac vs Stage.1_Main.Elem1",
     {{"ColumnComponentID", "Ethane"}},
     {}},
    {"CTColumnComponentEfficiency",
     CTColumnComponentEfficiency,
     [](ColumnTree& column) { AddRows(column, {"?"}); },
     ".?.1_Main.Elem1",
     {{"ColumnComponentID", "Ethane"}},
     {}},
    {"CTCondNozzle",
     CTCondNozzle,
     [](ColumnTree& column) { AddVessel(column, "Condenser", "Nozzle Diameter"); },
     "",
     {{"NozzleElemNum", "Elem1"}},
     {{"NozzleElemNum", "Elem1"}}},
    {"CTRebNozzle",
     CTRebNozzle,
     [](ColumnTree& column) { AddVessel(column, "Reboiler", "Nozzle Diameter"); },
     "",
     {{"NozzleElemNum", "Elem1"}},
     {{"NozzleElemNum", "Elem1"}}},
    {"CTCondRebVesselComponentArray",
     CTCondRebVesselComponentArray,
     [](ColumnTree& column) { column.SetArray({"Vessel Mole Frac"}, kThree); },
     "",
     {{"FlashPhaseCmpCnt", "INT 1"}},
     {{"FlashPhaseCmpCnt", "INT 1"}}},
    {"CTCondRebVaporComponentArray",
     CTCondRebVaporComponentArray,
     [](ColumnTree& column) { column.SetArray({"Vapour Mole Fraction"}, kThree); },
     "",
     {{"FlashPhaseCmpCnt", "INT 1"}},
     {{"FlashPhaseCmpCnt", "INT 1"}}},
    {"CTCondRebLiquidComponentArray",
     CTCondRebLiquidComponentArray,
     [](ColumnTree& column) { column.SetArray({"Liquid Mole Fraction"}, kThree); },
     "",
     {{"FlashPhaseCmpCnt", "INT 1"}},
     {{"FlashPhaseCmpCnt", "INT 1"}}},
};

std::string NameOfRow(const testing::TestParamInfo<ListRow>& row) {
    return row.param.name;
}

void PrintTo(const ListRow& row, std::ostream* out) {
    *out << row.name;
}

// ---- All lists

class ColumnList : public testing::TestWithParam<ListRow> {
 protected:
    // On the column, with a stage selected for those lists that do not select one.
    Ref<FIIterator> Iterate(bool filled) {
        if (filled) GetParam().fill(column_);
        Ref<FIIterator> it = column_.Iterate();
        if (GetParam().element.count("StageElemNo") == 0) {
            it->SetVarText("StageElemNo", FIValue::OfInt(1));
        }
        return it;
    }
    Variables SetBy(FIIteratorBase& it) const { return SetOf(it, NamesOf(GetParam().element)); }

    ColumnTree column_;
};

INSTANTIATE_TEST_SUITE_P(Columns, ColumnList, testing::ValuesIn(kLists), NameOfRow);

TEST_P(ColumnList, counts_and_stays) {
    Ref<FIIterator> it = Iterate(true);
    FIValue subclass;
    EXPECT_EQ(3, Call(GetParam().function, it.Get(), &subclass, kCountIndex));
    EXPECT_EQ(kColumnDepth, it->Depth());
    EXPECT_EQ("Case.Main.T-100", Place(*it));
    EXPECT_THAT(SetBy(*it), IsEmpty());
    EXPECT_TRUE(subclass.IsNull());
}

TEST_P(ColumnList, is_empty_where_there_is_nothing) {
    Ref<FIIterator> it = Iterate(false);
    FIValue subclass;
    EXPECT_EQ(0, Call(GetParam().function, it.Get(), &subclass, kCountIndex));
    EXPECT_EQ(kColumnDepth, it->Depth());
    EXPECT_EQ("Case.Main.T-100", Place(*it));
    EXPECT_THAT(SetBy(*it), IsEmpty());
}

TEST_P(ColumnList, an_element_is_its_place_and_its_variables) {
    Ref<FIIterator> it = Iterate(true);
    FIValue subclass;
    EXPECT_EQ(1, Call(GetParam().function, it.Get(), &subclass, 1));
    const std::string place = GetParam().place;
    EXPECT_EQ("Case.Main.T-100" + place, Place(*it));
    EXPECT_EQ(kColumnDepth + std::count(place.begin(), place.end(), '.'), it->Depth());
    EXPECT_EQ(GetParam().element, SetBy(*it));
    EXPECT_TRUE(subclass.IsNull());
}

TEST_P(ColumnList, an_element_where_there_is_nothing_leaves_the_rest_unset) {
    Ref<FIIterator> it = Iterate(false);
    FIValue subclass;
    EXPECT_EQ(1, Call(GetParam().function, it.Get(), &subclass, 1));
    EXPECT_EQ(kColumnDepth, it->Depth());
    EXPECT_EQ("Case.Main.T-100", Place(*it));
    EXPECT_EQ(GetParam().bare_element, SetBy(*it));
    EXPECT_TRUE(subclass.IsNull());
}

// ---- All lists below the cursor that walks them

struct RecordedList {
    ArrayFunction function = nullptr;
    std::vector<int> calls;
};

RecordedList& Recorded() {
    static RecordedList recorded;
    return recorded;
}

int RecordedFunction(FIIteratorBase* it, FIValue* subclass, int index) {
    Recorded().calls.push_back(index);
    return Call(Recorded().function, it, subclass, index);
}

class ColumnListWalk : public ColumnList {
 protected:
    Ref<FIReference> Stand(bool filled) {
        Recorded() = {GetParam().function, {}};
        Ref<FIIterator> it = Iterate(filled);
        it->SetVarText("Subclass", "QSIOther");
        return Ref<FIReference>::Adopt(new FIReference(*it));
    }
    static std::string Subclass(FIReference& reference) {
        FIValue value;
        return reference.GetVarText("Subclass", value) ? Shown(value) : "(unset)";
    }
};

INSTANTIATE_TEST_SUITE_P(Columns, ColumnListWalk, testing::ValuesIn(kLists), NameOfRow);

TEST_P(ColumnListWalk, the_end_clears_the_subclass_without_a_call) {
    const Ref<FIReference> reference = Stand(true);
    {
        CDTVariableIterator walk(RecordedFunction, *reference);
        EXPECT_EQ("(NULL)", Subclass(*reference)) << "no class is named for the element";
        EXPECT_TRUE(walk.Next());
        EXPECT_TRUE(walk.Next());
        EXPECT_THAT(Recorded().calls, ElementsAre(-1, 0, 1, 2));
        EXPECT_FALSE(walk.Next());
        EXPECT_FALSE(walk.HasMore());
        EXPECT_EQ("(NULL)", Subclass(*reference));
        EXPECT_FALSE(walk.Next());
        EXPECT_THAT(Recorded().calls, ElementsAre(-1, 0, 1, 2));
    }
    EXPECT_EQ(kColumnDepth, reference->Depth());
}

TEST_P(ColumnListWalk, an_empty_list_is_never_asked_for_an_element) {
    const Ref<FIReference> reference = Stand(false);
    {
        CDTVariableIterator walk(RecordedFunction, *reference);
        EXPECT_FALSE(walk.HasMore());
        EXPECT_FALSE(walk.First());
        EXPECT_FALSE(walk.Next());
        EXPECT_FALSE(walk.Prev());
        EXPECT_FALSE(walk.Last());
        EXPECT_THAT(Recorded().calls, ElementsAre(-1));
    }
    EXPECT_EQ(kColumnDepth, reference->Depth());
}

// ---- Numbers that the host tells

struct NumberedList {
    const char* name;
    ArrayFunction function;
    const char* number;
    int more;  // elements than the number
};

const NumberedList kNumbered[] = {{"CTColumnStages", CTColumnStages, "Number of Trays", 2},
                                  {"CTSectionTray", CTSectionTray, "Number of Stages", 0}};

TEST(NumberedColumnList, is_as_long_as_a_number_says) {
    struct Case {
        FIValue number;
        int read;
    };
    const Case cases[] = {{FIValue::OfInt(10), 10}, {FIValue::OfReal(28.9), 28},
                          {FIValue("4"), 4},        {FIValue(), 0},
                          {FIValue("many"), 0},     {FIValue::OfInt(298), 298}};
    for (const NumberedList& row : kNumbered) {
        for (const Case& each : cases) {
            ColumnTree column;
            column.Set({row.number}, each.number);
            Ref<FIIterator> it = column.Iterate();
            EXPECT_EQ(each.read + row.more, Call(row.function, it.Get(), nullptr, kCountIndex))
                << row.name << " of " << Shown(each.number);
            EXPECT_EQ(kColumnDepth, it->Depth()) << row.name;
            const int kept = (each.read + row.more) % 256;
            EXPECT_EQ(kept, static_cast<int>(ReadList(row.function, *it).size())) << row.name;
        }
    }
}

TEST(ColumnStages, more_trays_than_there_are_numbers_wrap) {
    ColumnTree column;
    column.Set({"Number of Trays"}, FIValue::OfInt(2147483647));
    EXPECT_EQ(-2147483647, Call(CTColumnStages, column.Iterate().Get(), nullptr, kCountIndex));
}

// ---- Kinds of stages

// "CRFDB" of condenser, reboiler, feed, draw, return, a dot where it is not.
std::string KindOf(FIIteratorBase& it) {
    const std::pair<const char*, char> flags[] = {{"IsCondenser", 'C'},
                                                  {"IsReboiler", 'R'},
                                                  {"IsFeed", 'F'},
                                                  {"IsDraw", 'D'},
                                                  {"IsReturn", 'B'}};
    std::string kind;
    for (const auto& [variable, letter] : flags) {
        const std::string value = Variable(it, variable);
        kind += value == "INT 1" ? letter : value == "INT 0" ? '.' : '?';
    }
    return kind;
}

struct Stage {
    FIValue name;
    FIValue feed;
    FIValue draw;
    const char* kind;
};

class ColumnStageKinds : public testing::Test {
 protected:
    void Fill(const std::vector<Stage>& stages, const Values& inlets) {
        Values names, feeds, draws;
        for (const Stage& stage : stages) {
            names.push_back(stage.name);
            feeds.push_back(stage.feed);
            draws.push_back(stage.draw);
        }
        column_.SetArray({"My SubFlowsheet", "Stage Name"}, names);
        column_.SetArray({"My SubFlowsheet", "Stage Net Molar Feed"}, feeds);
        column_.SetArray({"My SubFlowsheet", "Stage Net Molar Draw"}, draws);
        AddInletStages(inlets);
    }
    void AddInletStages(const Values& names) {
        ScriptNode& list = Below(column_.node, {"Inlet Stream Stages"});
        for (const FIValue& name : names) {
            list.Add("Elem").Add("Object Name").Set("value", name);
        }
    }
    std::string Kind(int stage) {
        Ref<FIIterator> it = column_.Iterate();
        EXPECT_EQ(stage, Call(CTColumnStages, it.Get(), nullptr, stage));
        EXPECT_EQ("Case.Main.T-100", Place(*it));
        EXPECT_EQ("INT " + std::to_string(stage), Variable(*it, "StageElemNo"));
        EXPECT_EQ(KindOf(*it), LateKind(stage));
        return KindOf(*it);
    }

    // As a walk asks for it that keeps the flags for later.
    std::string LateKind(int stage) {
        Ref<FIIterator> it = column_.Iterate();
        EXPECT_EQ(stage, kStageKinds.select(it.Get(), nullptr, stage));
        EXPECT_EQ("INT " + std::to_string(stage), Variable(*it, "StageElemNo"));
        for (const char* flag : kStageKinds.names) EXPECT_EQ("(unset)", Variable(*it, flag));
        kStageKinds.set(it.Get(), stage);
        EXPECT_EQ("Case.Main.T-100", Place(*it));
        return KindOf(*it);
    }

    ColumnTree column_;
};

TEST_F(ColumnStageKinds, are_told_by_names_and_flows) {
    const FIValue none;
    const FIValue some = FIValue::OfReal(12.5);
    const FIValue zero = FIValue::OfReal(0.0);
    const std::vector<Stage> stages = {
        {FIValue("Condenser"), none, some, "C..D."},
        {FIValue("1_Main"), none, none, "....."},
        {FIValue("2_Main"), some, none, "..F.."},
        {FIValue("3_Main"), some, none, "....B"},
        {FIValue("4_Main"), zero, zero, "..FD."},
        {FIValue("5_Main"), some, some, "...DB"},
        {FIValue("condenser"), none, none, "....."},
        {FIValue("Reboiler "), none, none, "....."},
        {none, some, none, "....B"},
        {FIValue("Condenser"), some, none, "C.F.."},
        {FIValue("Reboiler"), none, some, ".R.D."},
    };
    Fill(stages, {none, FIValue("4_Main"), FIValue(""), FIValue("Condenser"), FIValue("2_Main")});
    for (std::size_t i = 0; i < stages.size(); ++i) {
        EXPECT_EQ(stages[i].kind, Kind(static_cast<int>(i))) << i;
    }
    EXPECT_EQ(".....", Kind(static_cast<int>(stages.size()))) << "behind the last";
}

TEST_F(ColumnStageKinds, a_feed_that_enters_no_inlet_stage_comes_back) {
    const FIValue some = FIValue::OfReal(12.5);
    Fill({{FIValue("1_Main"), some, FIValue(), ""}}, {FIValue("2_Main")});
    EXPECT_EQ("....B", Kind(0));
    column_.node.RemoveChild("Inlet Stream Stages");
    EXPECT_EQ("....B", Kind(0)) << "without the list";
}

TEST_F(ColumnStageKinds, are_none_without_the_profiles) {
    Ref<FIIterator> it = column_.Iterate();
    for (const char* flag : {"IsCondenser", "IsReboiler", "IsFeed", "IsDraw", "IsReturn"}) {
        it->SetVarText(flag, FIValue::OfInt(1));
    }
    Call(CTColumnStages, it.Get(), nullptr, 0);
    EXPECT_EQ(".....", KindOf(*it));
    EXPECT_EQ(kColumnDepth, it->Depth());
}

TEST_F(ColumnStageKinds, each_array_counts_by_itself) {
    const FIValue some = FIValue::OfReal(12.5);
    Fill({{FIValue("Reboiler"), some, some, ""}}, {FIValue("Reboiler")});
    ScriptNode& profiles = Below(column_.node, {"My SubFlowsheet"});
    profiles.RemoveChild("Stage Net Molar Draw");
    EXPECT_EQ(".RF..", Kind(0));
    profiles.RemoveChild("Stage Name");
    EXPECT_EQ("....B", Kind(0)) << "a stage without a name is no inlet";
    profiles.RemoveChild("Stage Net Molar Feed");
    EXPECT_EQ(".....", Kind(0));
}

TEST_F(ColumnStageKinds, of_a_name_255_characters_count) {
    const std::string kept(255, 'x');
    const FIValue some = FIValue::OfReal(12.5);
    Fill({{Text(kept), some, FIValue(), ""}, {Text(kept + "yz"), some, FIValue(), ""}},
         {Text(kept + "yz")});
    EXPECT_EQ("....B", Kind(0));
    EXPECT_EQ("....B", Kind(1)) << "the inlet has the whole name";
    AddInletStages({Text(kept)});
    EXPECT_EQ("..F..", Kind(0));
    EXPECT_EQ("..F..", Kind(1));
}

TEST_F(ColumnStageKinds, inlets_are_looked_for_among_the_first_ten_thousand) {
    const FIValue some = FIValue::OfReal(12.5);
    Values inlets(9999, FIValue("Other"));
    inlets.push_back(FIValue("Last"));
    inlets.push_back(FIValue("Too late"));
    Fill({{FIValue("Last"), some, FIValue(), ""}, {FIValue("Too late"), some, FIValue(), ""}},
         inlets);
    EXPECT_EQ("..F..", Kind(0));
    EXPECT_EQ("....B", Kind(1));
}

// ---- Feeds

class ColumnFeeds : public testing::Test {
 protected:
    void AddInlet(const FIValue& name) {
        ScriptNode& inlets = Below(column_.node, {"Inlets"});
        inlets.Add("Elem" + std::to_string(inlets.children.size()))
            .Add("Object Name")
            .Set("value", name);
    }
    ScriptNode& AddList(const char* id) {
        return column_.node.Add("Inlet Stream Stages").Set("id", id);
    }
    static ScriptNode& AddStage(ScriptNode& list, int number, const Values& streams) {
        ScriptNode& stage = list.Add("Elem");
        stage.Add("Stage Number").Set("value", number);
        ScriptNode& names = stage.Add("Stage Stream Names");
        for (const FIValue& stream : streams) names.Add("Elem").Set("value", stream);
        return stage;
    }
    // Both lists, of which the second has the stages.
    ScriptNode& AddLists() {
        AddList("Inlet Stream Stages");
        return AddList("Inlet Stream Stages");
    }
    Variables Feed(FIIteratorBase& it, int index) {
        EXPECT_EQ(index, Call(CTColumnFeeds, &it, nullptr, index));
        EXPECT_EQ("Case.Main.T-100", Place(it));
        return SetOf(it, {"FeedElemNum", "FeedName", "FeedStage"});
    }
    Variables Feed(int index) { return Feed(*column_.Iterate(), index); }

    ColumnTree column_;
};

TEST_F(ColumnFeeds, are_all_inlets_but_the_last) {
    for (int inlets = 0; inlets < 4; ++inlets) {
        EXPECT_EQ(std::max(inlets - 1, 0),
                  Call(CTColumnFeeds, column_.Iterate().Get(), nullptr, kCountIndex))
            << inlets;
        AddInlet(FIValue("Naphtha"));
    }
}

TEST_F(ColumnFeeds, have_the_stage_of_the_second_list_of_that_id) {
    AddInlet(FIValue("Naphtha"));
    AddStage(AddList("Inlet Stream Stages"), 1, {FIValue("Naphtha")});
    AddStage(AddList("Other Stages"), 2, {FIValue("Naphtha")});
    ScriptNode& list = AddList("Inlet Stream Stages");
    AddStage(list, 3, {FIValue("Gas Oil")});
    AddStage(list, 4, {FIValue(), FIValue("Steam"), FIValue("Naphtha")});
    AddStage(list, 5, {FIValue("Naphtha")});
    AddStage(AddList("Inlet Stream Stages"), 6, {FIValue("Naphtha")});
    EXPECT_EQ(
        (Variables{{"FeedElemNum", "Elem0"}, {"FeedName", "Naphtha"}, {"FeedStage", "INT 4"}}),
        Feed(0));
}

TEST_F(ColumnFeeds, without_a_second_list_have_no_stage) {
    AddInlet(FIValue("Naphtha"));
    const Variables expected = {{"FeedElemNum", "Elem0"}, {"FeedName", "Naphtha"}};
    EXPECT_EQ(expected, Feed(0)) << "no list";
    AddStage(AddList("Inlet Stream Stages"), 1, {FIValue("Naphtha")});
    EXPECT_EQ(expected, Feed(0)) << "one list";
    AddStage(AddList("Other Stages"), 2, {FIValue("Naphtha")});
    EXPECT_EQ(expected, Feed(0)) << "one of another id";
}

TEST_F(ColumnFeeds, one_that_enters_no_stage_keeps_the_stage_of_the_one_before) {
    for (const char* name : {"Naphtha", "Steam", "Gas Oil"}) AddInlet(FIValue(name));
    ScriptNode& list = AddLists();
    AddStage(list, 4, {FIValue("Naphtha")});
    AddStage(list, 9, {FIValue("Gas Oil")});
    Ref<FIIterator> it = column_.Iterate();
    EXPECT_EQ(
        (Variables{{"FeedElemNum", "Elem0"}, {"FeedName", "Naphtha"}, {"FeedStage", "INT 4"}}),
        Feed(*it, 0));
    EXPECT_EQ((Variables{{"FeedElemNum", "Elem1"}, {"FeedName", "Steam"}, {"FeedStage", "INT 4"}}),
              Feed(*it, 1));
    EXPECT_EQ(
        (Variables{{"FeedElemNum", "Elem2"}, {"FeedName", "Gas Oil"}, {"FeedStage", "INT 9"}}),
        Feed(*it, 2));
}

TEST_F(ColumnFeeds, without_a_name_keep_what_was_known) {
    AddInlet(FIValue());
    Below(column_.node, {"Inlets"}).Add("Elem1");
    AddStage(AddLists(), 4, {FIValue(), FIValue("")});
    for (int index = 0; index < 3; ++index) {
        Ref<FIIterator> it = column_.Iterate();
        it->SetVarText("FeedName", "before");
        EXPECT_EQ(
            (Variables{{"FeedElemNum", "Elem" + std::to_string(index)}, {"FeedName", "before"}}),
            Feed(*it, index));
    }
}

TEST_F(ColumnFeeds, an_empty_name_is_not_a_missing_one) {
    AddInlet(FIValue(""));
    ScriptNode& list = AddLists();
    AddStage(list, 4, {FIValue()});
    AddStage(list, 5, {FIValue("")});
    EXPECT_EQ((Variables{{"FeedElemNum", "Elem0"}, {"FeedName", ""}, {"FeedStage", "INT 5"}}),
              Feed(0));
}

TEST_F(ColumnFeeds, names_and_numbers_are_converted) {
    AddInlet(FIValue::OfInt(12));
    ScriptNode& list = AddLists();
    list.Add("no streams").Add("Stage Number").Set("value", 3);
    Below(AddStage(list, 0, {FIValue("12")}), {"Stage Number"}).Set("value", 7.9);
    EXPECT_EQ((Variables{{"FeedElemNum", "Elem0"}, {"FeedName", "12"}, {"FeedStage", "INT 7"}}),
              Feed(0));
    list.children.back()->RemoveChild("Stage Number");
    EXPECT_EQ("INT 0", Feed(0)["FeedStage"]) << "a stage without a number";
}

TEST_F(ColumnFeeds, look_at_the_first_ten_thousand_stages) {
    AddInlet(FIValue("Naphtha"));
    AddInlet(FIValue("Too late"));
    ScriptNode& list = AddLists();
    for (int i = 0; i < 9999; ++i) list.Add("Elem");
    AddStage(list, 4, {FIValue("Naphtha")});
    AddStage(list, 5, {FIValue("Too late")});
    EXPECT_EQ("INT 4", Feed(0)["FeedStage"]);
    EXPECT_EQ(0u, Feed(1).count("FeedStage"));
}

TEST_F(ColumnFeeds, look_at_the_first_ten_thousand_streams_of_a_stage) {
    AddInlet(FIValue("Naphtha"));
    AddInlet(FIValue("Too late"));
    Values streams(9999, FIValue("Other"));
    streams.push_back(FIValue("Naphtha"));
    streams.push_back(FIValue("Too late"));
    AddStage(AddLists(), 4, streams);
    EXPECT_EQ("INT 4", Feed(0)["FeedStage"]);
    EXPECT_EQ(0u, Feed(1).count("FeedStage"));
}

// ---- Side draws

class ColumnSideDraws : public testing::Test {
 protected:
    void AddSections(const char* list, const std::vector<Values>& sections) {
        ScriptNode& node = Below(column_.node, {list});
        for (const Values& draws : sections) {
            ScriptNode& section = node.Add("Section");
            if (draws.empty()) continue;
            ScriptNode& names = section.Add("Vap and Liq draws");
            for (const FIValue& draw : draws) names.Add("Draw").Set("value", draw);
        }
    }
    int Count() { return Call(CTColumnSideDraws, column_.Iterate().Get(), nullptr, kCountIndex); }
    // "Elem0 of Liquid Draw: Kerosene, Elem1 of Liquid Draws".
    std::string Draw(int index) {
        Ref<FIIterator> it = column_.Iterate();
        EXPECT_EQ(index, Call(CTColumnSideDraws, it.Get(), nullptr, index));
        EXPECT_EQ("Case.Main.T-100", Place(*it));
        return Variable(*it, "DrawElemNum") + " of " + Variable(*it, "Draw") + ": " +
               Variable(*it, "StreamId") + ", " + Variable(*it, "DrawsElemNum") + " of " +
               Variable(*it, "Draws");
    }

    ColumnTree column_;
};

TEST_F(ColumnSideDraws, are_liquid_then_vapour_then_water) {
    column_.SetArray({"Water Draw"}, {FIValue("W1")});
    column_.SetArray({"Vapour Draw"}, {FIValue("V1"), FIValue("V2")});
    column_.SetArray({"Liquid Draw"}, {FIValue("L1"), FIValue("L2")});
    AddSections("Liquid Draws", {{}, {FIValue("other"), FIValue("L1")}, {FIValue("L1")}});
    AddSections("Vapour Draws", {{FIValue("V1"), FIValue("L1")}, {FIValue("L2")}});
    AddSections("Water Draws", {{FIValue("V1")}, {FIValue()}, {FIValue("W1")}});
    ASSERT_EQ(5, Count());
    EXPECT_EQ("Elem0 of Liquid Draw: L1, Elem1 of Liquid Draws", Draw(0));
    EXPECT_EQ("Elem1 of Liquid Draw: L2, Elem1 of Vapour Draws", Draw(1));
    EXPECT_EQ("Elem0 of Vapour Draw: V1, Elem0 of Vapour Draws", Draw(2));
    EXPECT_EQ("Elem1 of Vapour Draw: V2, Elem-1 of Water Draws", Draw(3)) << "no section draws it";
    EXPECT_EQ("Elem0 of Water Draw: W1, Elem2 of Water Draws", Draw(4));
    EXPECT_EQ("Elem1 of Water Draw: (NULL), (unset) of (unset)", Draw(5)) << "behind the last";
}

TEST_F(ColumnSideDraws, an_entry_without_a_stream_is_not_counted_but_takes_a_place) {
    column_.SetArray({"Liquid Draw"}, {FIValue(), FIValue("L1")});
    column_.SetArray({"Vapour Draw"}, {FIValue("V1"), FIValue()});
    AddSections("Liquid Draws", {{FIValue(), FIValue("L1")}});
    ASSERT_EQ(2, Count());
    EXPECT_EQ("Elem0 of Liquid Draw: (NULL), (unset) of (unset)", Draw(0));
    EXPECT_EQ("Elem0 of Vapour Draw: V1, Elem-1 of Water Draws", Draw(1));
}

TEST_F(ColumnSideDraws, one_without_a_stream_does_not_keep_the_stream_of_the_one_before) {
    column_.SetArray({"Liquid Draw"}, {FIValue("L1"), FIValue(), FIValue("L3")});
    column_.beside.Add("L1");
    Ref<FIIterator> it = column_.Iterate();
    Call(CTColumnSideDraws, it.Get(), nullptr, 0);
    EXPECT_TRUE(Call(CTSideDrawFluid, it.Get(), 0));
    Call(CTColumnSideDraws, it.Get(), nullptr, 1);
    EXPECT_FALSE(Call(CTSideDrawFluid, it.Get(), 0));
}

TEST_F(ColumnSideDraws, sections_are_counted_from_the_first_one_with_or_without_draws) {
    column_.SetArray({"Liquid Draw"}, {FIValue::OfInt(7)});
    AddSections("Liquid Draws", {{}, {FIValue()}, {}, {FIValue("77"), FIValue("7")}});
    EXPECT_EQ("Elem0 of Liquid Draw: 7, Elem3 of Liquid Draws", Draw(0));
}

// ---- Compositions of a stage

struct StageRowList {
    const char* name;
    ArrayFunction function;
    NamePath path;
    const char* place;
};

const StageRowList kStageRowLists[] = {
    {"CTLiquidFromComposition",
     CTLiquidFromComposition,
     {"My SubFlowsheet", "Comp Frac vs Stage"},
     ".My SubFlowsheet.Comp Frac vs Stage"},
    {"CTColumnComponentEfficiency", CTColumnComponentEfficiency, {"?"}, ".?"},
};

TEST(ColumnStageRows, are_as_many_as_the_first_stage_has) {
    for (const StageRowList& row : kStageRowLists) {
        ColumnTree column;
        ScriptNode& stages = Below(column.node, row.path);
        Ref<FIIterator> it = column.Iterate();
        it->SetVarText("StageElemNo", FIValue::OfInt(1));
        EXPECT_EQ(0, Call(row.function, it.Get(), nullptr, kCountIndex))
            << row.name << ": no stage";
        ScriptNode& first = stages.Add("Condenser");
        AddArray(stages, {"1_Main"}, {"a", "b", "c"});
        EXPECT_EQ(0, Call(row.function, it.Get(), nullptr, kCountIndex)) << row.name << ": no row";
        AddArray(first, {}, {"a", "b"});
        EXPECT_EQ(2, Call(row.function, it.Get(), nullptr, kCountIndex)) << row.name;
        EXPECT_EQ(kColumnDepth, it->Depth()) << row.name;
    }
}

TEST(ColumnStageRows, an_element_is_that_of_the_selected_stage) {
    for (const StageRowList& row : kStageRowLists) {
        ColumnTree column;
        AddRows(column, row.path);
        const std::pair<FIValue, const char*> stages[] = {{FIValue::OfInt(0), ".Condenser.Elem2"},
                                                          {FIValue("2"), ".Reboiler.Elem2"},
                                                          {FIValue(), ".Condenser.Elem2"},
                                                          {FIValue::OfInt(3), ""}};
        for (const auto& [stage, place] : stages) {
            Ref<FIIterator> it = column.Iterate();
            it->SetVarText("StageElemNo", stage);
            EXPECT_EQ(2, Call(row.function, it.Get(), nullptr, 2)) << row.name;
            EXPECT_EQ(std::string("Case.Main.T-100") + row.place + place, Place(*it)) << row.name;
            EXPECT_EQ("Water", Variable(*it, "ColumnComponentID")) << row.name;
        }
    }
}

TEST(ColumnStageRows, without_a_stage_an_element_stays_and_knows_its_component) {
    for (const StageRowList& row : kStageRowLists) {
        ColumnTree column;
        AddRows(column, row.path);
        Ref<FIIterator> it = column.Iterate();
        EXPECT_EQ(0, Call(row.function, it.Get(), nullptr, 0)) << row.name;
        EXPECT_EQ("Case.Main.T-100", Place(*it)) << row.name;
        EXPECT_EQ("Methane", Variable(*it, "ColumnComponentID")) << row.name;
    }
}

TEST(ColumnStageRows, an_id_that_is_a_number_becomes_its_text) {
    ColumnTree column;
    AddInletComposition(column);
    const NamePath row = {"Inlet Stream Stages", "4_Main", "Naphtha", "Comp Mole Frac",
                          "row of Ethane"};
    Below(column.node, row).Set("id", 12);
    Ref<FIIterator> it = column.Iterate();
    Call(CTLiquidFromComposition, it.Get(), nullptr, 1);
    EXPECT_EQ("12", Variable(*it, "ColumnComponentID"));
}

// Each removal takes one level of the way to the id away.
TEST(ColumnStageRows, a_component_that_the_first_inlet_lacks_has_no_id) {
    const std::pair<NamePath, const char*> removals[] = {
        {{"Inlet Stream Stages", "4_Main", "Naphtha", "Comp Mole Frac"}, "row of Ethane"},
        {{"Inlet Stream Stages", "4_Main", "Naphtha"}, "Comp Mole Frac"},
        {{"Inlet Stream Stages", "4_Main"}, "Naphtha"},
        {{"Inlet Stream Stages"}, "4_Main"},
        {{}, "Inlet Stream Stages"},
    };
    for (const StageRowList& row : kStageRowLists) {
        for (const auto& [path, child] : removals) {
            ColumnTree column;
            AddRows(column, row.path);
            ScriptNode& fractions =
                Below(column.node, {"Inlet Stream Stages", "4_Main", "Naphtha", "Comp Mole Frac"});
            fractions.RemoveChild("row of Water");
            Below(column.node, path).RemoveChild(child);
            Ref<FIIterator> it = column.Iterate();
            it->SetVarText("StageElemNo", FIValue::OfInt(1));
            EXPECT_EQ(1, Call(row.function, it.Get(), nullptr, 1)) << row.name;
            EXPECT_EQ(std::string("Case.Main.T-100") + row.place + ".1_Main.Elem1", Place(*it));
            EXPECT_EQ("(unset)", Variable(*it, "ColumnComponentID")) << row.name << child;
        }
    }
}

// ---- Nozzles

TEST(ColumnNozzles, are_those_of_the_own_vessel) {
    struct Case {
        ArrayFunction function;
        const char* vessel;
        const char* other;
    };
    for (const Case& each : {Case{CTCondNozzle, "Condenser", "Reboiler"},
                             Case{CTRebNozzle, "Reboiler", "Condenser"}}) {
        ColumnTree column;
        AddVessel(column, each.other, "Nozzle Diameter");
        Ref<FIIterator> it = column.Iterate();
        EXPECT_EQ(0, Call(each.function, it.Get(), nullptr, kCountIndex)) << each.vessel;
        column.Set({"Vessels", "Elem2", "Object Name"}, each.vessel);
        EXPECT_EQ(0, Call(each.function, it.Get(), nullptr, kCountIndex)) << each.vessel;
        column.SetArray({"Vessels", "Elem2", "Nozzle Diameter"}, {FIValue(), FIValue()});
        EXPECT_EQ(2, Call(each.function, it.Get(), nullptr, kCountIndex)) << each.vessel;
        EXPECT_EQ(kColumnDepth, it->Depth()) << each.vessel;
    }
}

}  // namespace

}  // namespace fixtop
