// SPDX-License-Identifier: Apache-2.0
// The steps from a column and its parts to what is connected to them, told by name.

#include <gtest/gtest.h>

#include "fixtop/semantic_functions.h"
#include "semantic/column_tree.h"

namespace fixtop {

namespace {

constexpr int kColumnDepth = 2;
constexpr char kColumn[] = "Case.Main.T-100";

const std::string kUnmoved = std::string(kColumn) + " at 2";

void AddVessels(ColumnTree& column) {
    int number = 0;
    for (const char* vessel : {"Main", "Condenser", "Reboiler"}) {
        const std::string element = "Elem" + std::to_string(number++);
        column.Set({"Vessels", element, "Object Name"}, vessel);
    }
}

// ---- Steps along one name

// The variable with the name, and its owner below the node on which the step is called.
struct LinkRow {
    const char* name;
    SemanticFunction function;
    NamePath owner;
    const char* variable;
};

const NamePath kColumnItself = {};
const NamePath kCondenser = {"Vessels", "Elem1"};
const NamePath kReboiler = {"Vessels", "Elem2"};

const LinkRow kLinks[] = {
    {"CTCondVapor", CTCondVapor, kCondenser, "Overhead Vapour Stream"},
    {"CTCondDistillate", CTCondDistillate, kCondenser, "Distillate Stream"},
    {"CTCondHeavyDistillate", CTCondHeavyDistillate, kCondenser, "Heavy Liquid Stream"},
    {"CTCondReflux", CTCondReflux, kCondenser, "Reflux Stream"},
    {"CTRebBoilup", CTRebBoilup, kReboiler, "Boilup Stream"},
    {"CTRebLiquid", CTRebLiquid, kReboiler, "Liquid Product Stream"},
    {"CTRebLiquid2", CTRebLiquid2, kReboiler, "2nd Liquid Draw Stream"},
    {"CTRebVapor", CTRebVapor, kReboiler, "Vapour Draw Stream"},
    // Those of the vessels end here.
    {"CTSideColumnBottoms", CTSideColumnBottoms, kColumnItself, "bottom liquid product"},
    {"CTPumparoundDraw", CTPumparoundDraw, kColumnItself, "Feed"},
    {"CTPumparoundReturn", CTPumparoundReturn, kColumnItself, "Product"},
};
constexpr int kVesselLinks = 8;

void PrintTo(const LinkRow& row, std::ostream* out) {
    *out << row.name;
}

std::string NameOfRow(const testing::TestParamInfo<LinkRow>& row) {
    return row.param.name;
}

class ColumnLink : public testing::TestWithParam<LinkRow> {
 protected:
    // All vessels and the column itself have all variables, but only that of the row has the name.
    static void Fill(ColumnTree& column, const FIValue& stream) {
        AddVessels(column);
        for (const NamePath& owner : {kColumnItself, kCondenser, kReboiler}) {
            for (const LinkRow& row : kLinks) Link(column, owner, row.variable, FIValue("Decoy"));
        }
        Link(column, GetParam().owner, GetParam().variable, stream);
        column.beside.Add("Decoy");
    }
    static void Link(ColumnTree& column, NamePath owner, const char* variable,
                     const FIValue& stream) {
        owner.emplace_back(variable);
        column.Set(owner, stream);
    }
    // What a step answers, and where it leaves the iterator.
    static std::string Step(ColumnTree& column, int move) {
        Ref<FIIterator> it = column.Iterate();
        const bool found = Call(GetParam().function, it.Get(), move);
        return (found ? "found " : "none ") + At(*it);
    }
    static void ExpectNone(ColumnTree& column, const std::string& left, const char* what) {
        EXPECT_EQ("none " + kUnmoved, Step(column, 0)) << what;
        for (int move : {1, -1}) EXPECT_EQ("none " + left, Step(column, move)) << what;
    }
};

INSTANTIATE_TEST_SUITE_P(Columns, ColumnLink, testing::ValuesIn(kLinks), NameOfRow);

TEST_P(ColumnLink, leads_to_the_object_of_that_name_beside_the_column) {
    ColumnTree column;
    Fill(column, FIValue("Naphtha"));
    column.beside.Add("Naphtha");
    EXPECT_EQ("found " + kUnmoved, Step(column, 0));
    for (int move : {1, 2, -1}) EXPECT_EQ("found Case.Main.Naphtha at 2", Step(column, move));
}

TEST_P(ColumnLink, takes_any_text_for_a_name) {
    for (const char* name : {"1.5 bar \"wet\" (C3) #2", "#1", "(value)", "*", "%Draw"}) {
        ColumnTree column;
        Fill(column, FIValue(name));
        ExpectNone(column, "Case.Main at 1", name);
        column.beside.Add(name);
        Ref<FIIterator> it = column.Iterate();
        EXPECT_TRUE(Call(GetParam().function, it.Get(), 1)) << name;
        EXPECT_EQ(name, NameAt(*it));
    }
}

TEST_P(ColumnLink, takes_a_number_for_a_name) {
    ColumnTree column;
    Fill(column, FIValue::OfInt(12));
    column.beside.Add("12");
    EXPECT_EQ("found Case.Main.12 at 2", Step(column, 1));
}

TEST_P(ColumnLink, leads_into_the_lists_of_the_flowsheet) {
    ColumnTree column({"Main", "UnitOps"});
    Fill(column, FIValue("Naphtha"));
    Below(column.root, {"Streams", "Naphtha"});
    EXPECT_EQ("found Case.Streams.Naphtha at 2", Step(column, 1));
    Below(column.root, {"Main", "Streams", "Naphtha"});
    EXPECT_EQ("found Case.Main.UnitOps.T-100 at 3", Step(column, 0));
    EXPECT_EQ("found Case.Main.Streams.Naphtha at 3", Step(column, 1)) << "the nearest flowsheet";
    column.beside.Add("Naphtha");
    EXPECT_EQ("found Case.Main.UnitOps.Naphtha at 3", Step(column, 1)) << "its own list";
}

TEST_P(ColumnLink, without_its_variable_leads_nowhere) {
    ColumnTree column;
    Fill(column, FIValue("Naphtha"));
    column.beside.Add("Naphtha");
    Below(column.node, GetParam().owner).RemoveChild(GetParam().variable);
    const bool of_vessel = !GetParam().owner.empty();
    const std::string vessel = ".Vessels." + (of_vessel ? GetParam().owner[1] : "");
    ExpectNone(column, of_vessel ? kColumn + vessel + " at 4" : kUnmoved, "no variable");
}

TEST_P(ColumnLink, that_is_null_or_empty_leads_nowhere) {
    ColumnTree column;
    Fill(column, FIValue());
    std::string variable = kColumn;
    for (const std::string& name : GetParam().owner) variable += "." + name;
    variable += std::string(".") + GetParam().variable;
    const int depth = kColumnDepth + static_cast<int>(GetParam().owner.size()) + 1;
    ExpectNone(column, variable + " at " + std::to_string(depth), "NULL");
    Fill(column, FIValue(""));
    ExpectNone(column, "Case.Main at 1", "empty");
}

TEST_P(ColumnLink, to_what_is_not_there_leads_nowhere) {
    ColumnTree column;
    Fill(column, FIValue("Naphtha"));
    ExpectNone(column, "Case.Main at 1", "no such object");
}

using VesselLink = ColumnLink;

INSTANTIATE_TEST_SUITE_P(Columns, VesselLink, testing::ValuesIn(kLinks, kLinks + kVesselLinks),
                         NameOfRow);

TEST_P(VesselLink, needs_the_vessel) {
    ColumnTree column;
    Fill(column, FIValue("Naphtha"));
    column.beside.Add("Naphtha");
    Below(column.node, GetParam().owner).RemoveChild("Object Name");
    ExpectNone(column, kUnmoved, "no such vessel");
    column.node.RemoveChild("Vessels");
    ExpectNone(column, kUnmoved, "no vessels");
}

// ---- The fluid of a side draw

TEST(SideDrawFluid, is_the_stream_beside_the_section) {
    ColumnTree column;
    column.beside.Add("Kerosene");
    for (int move : {0, 1, -1}) {
        Ref<FIIterator> it = column.Iterate();
        EXPECT_FALSE(Call(CTSideDrawFluid, it.Get(), move)) << "no stream is known";
        EXPECT_EQ(kUnmoved, At(*it)) << move;
        it->SetVarText("StreamId", "Kerosene");
        EXPECT_TRUE(Call(CTSideDrawFluid, it.Get(), move)) << move;
        EXPECT_EQ(move ? "Case.Main.Kerosene at 2" : kUnmoved, At(*it));
    }
}

TEST(SideDrawFluid, is_none_where_no_stream_has_the_name) {
    ColumnTree column;
    for (const FIValue& stream : {FIValue(), FIValue(""), FIValue("Kerosene")}) {
        for (int move : {0, 1}) {
            Ref<FIIterator> it = column.Iterate();
            it->SetVarText("StreamId", stream);
            EXPECT_FALSE(Call(CTSideDrawFluid, it.Get(), move)) << Shown(stream);
            EXPECT_EQ(move ? "Case.Main at 1" : kUnmoved, At(*it)) << Shown(stream);
        }
    }
    Ref<FIIterator> it = column.root.Iterate();
    it->SetVarText("StreamId", "Main");
    EXPECT_FALSE(Call(CTSideDrawFluid, it.Get(), 1)) << "nothing is above the case";
    EXPECT_EQ("Case at 0", At(*it));
}

// ---- Draw and return of a side column

struct SideRow {
    const char* name;
    SemanticFunction function;
    const char* variable;
    const char* of_stripper;
    const char* of_rectifier;
};

const SideRow kSides[] = {
    {"CTSideColumnDraw", CTSideColumnDraw, "Draw", "top liquid feed", "bottom vapour feed"},
    {"CTSideColumnReturn", CTSideColumnReturn, "Return", "overhead vapour product",
     "bottom liquid product"},
};

void PrintTo(const SideRow& row, std::ostream* out) {
    *out << row.name;
}

std::string NameOfSide(const testing::TestParamInfo<SideRow>& row) {
    return row.param.name;
}

class SideColumn : public testing::TestWithParam<SideRow> {
 protected:
    void Fill(const FIValue& type) {
        for (const SideRow& row : kSides) {
            column_.Set({row.of_stripper}, "Decoy");
            column_.Set({row.of_rectifier}, "Decoy");
        }
        column_.Set({GetParam().of_stripper}, "of stripper");
        column_.Set({GetParam().of_rectifier}, "of rectifier");
        column_.Set({"Type of Tray Section"}, type);
        for (const char* stream : {"of stripper", "of rectifier"}) column_.beside.Add(stream);
    }
    static bool Step(FIIteratorBase& it, int move) { return Call(GetParam().function, &it, move); }
    static std::string Known(FIIteratorBase& it) { return Variable(it, GetParam().variable); }

    ColumnTree column_;
};

INSTANTIATE_TEST_SUITE_P(Columns, SideColumn, testing::ValuesIn(kSides), NameOfSide);

TEST_P(SideColumn, is_asked_for_its_stream_and_then_moves_there) {
    for (const auto& [type, stream] :
         {std::pair{"Side Stripper", "of stripper"}, {"Side Rectifier", "of rectifier"}}) {
        Fill(FIValue(type));
        for (int move : {1, -1}) {
            Ref<FIIterator> it = column_.Iterate();
            EXPECT_TRUE(Step(*it, 0)) << type;
            EXPECT_EQ(kUnmoved, At(*it)) << type;
            EXPECT_EQ(stream, Known(*it));
            EXPECT_TRUE(Step(*it, move)) << type;
            EXPECT_EQ(std::string("Case.Main.") + stream + " at 2", At(*it));
        }
    }
}

TEST_P(SideColumn, does_not_move_before_it_was_asked) {
    Fill(FIValue("Side Stripper"));
    for (int move : {1, -1}) {
        Ref<FIIterator> it = column_.Iterate();
        EXPECT_FALSE(Step(*it, move));
        EXPECT_EQ(kUnmoved, At(*it));
        EXPECT_EQ("(unset)", Known(*it));
    }
}

TEST_P(SideColumn, of_another_type_has_no_streams) {
    for (const FIValue& type : {FIValue("Standard"), FIValue("side stripper"), FIValue(""),
                                FIValue("Side Stripper "), FIValue(), FIValue::OfInt(1)}) {
        Fill(type);
        for (int move : {0, 1}) {
            Ref<FIIterator> it = column_.Iterate();
            EXPECT_FALSE(Step(*it, move)) << Shown(type);
            EXPECT_EQ(kUnmoved, At(*it)) << Shown(type);
            EXPECT_EQ("(unset)", Known(*it)) << Shown(type);
        }
    }
    column_.node.RemoveChild("Type of Tray Section");
    Ref<FIIterator> it = column_.Iterate();
    EXPECT_FALSE(Step(*it, 0));
    EXPECT_EQ(kUnmoved, At(*it));
}

TEST_P(SideColumn, without_a_stream_keeps_what_it_knew) {
    Fill(FIValue("Side Stripper"));
    column_.Set({GetParam().of_stripper}, FIValue());
    Ref<FIIterator> it = column_.Iterate();
    it->SetVarText(GetParam().variable, "before");
    EXPECT_FALSE(Step(*it, 0)) << "NULL";
    column_.node.RemoveChild(GetParam().of_stripper);
    EXPECT_FALSE(Step(*it, 0)) << "no variable";
    EXPECT_EQ("before", Known(*it));
    EXPECT_EQ(kUnmoved, At(*it));
}

TEST_P(SideColumn, says_yes_to_a_stream_that_is_not_there) {
    Fill(FIValue("Side Stripper"));
    column_.beside.RemoveChild("of stripper");
    Ref<FIIterator> it = column_.Iterate();
    EXPECT_TRUE(Step(*it, 0));
    EXPECT_EQ(kUnmoved, At(*it));
    EXPECT_TRUE(Step(*it, 1));
    EXPECT_EQ("Case.Main at 1", At(*it));
}

// ---- The reboiler of a side column

class SideReboiler : public testing::Test {
 protected:
    SideReboiler() {
        column_.Set({"bottom liquid product"}, "Kerosene");
        Below(stream_, {"Downstream Unit Operations", "Elem0"}).Set("value", "E-101");
        Below(stream_, {"Downstream Unit Operations", "Elem1"}).Set("value", "Decoy");
        unit_.Set("type", "BPReboilerObject");
        column_.beside.Add("Decoy").Set("type", "BPReboilerObject");
    }
    std::string Step(int move) {
        Ref<FIIterator> it = column_.Iterate();
        const bool found = Call(CTSideColumnReboiler, it.Get(), move);
        return (found ? "found " : "none ") + At(*it);
    }
    void ExpectNone(const std::string& left, const std::string& what) {
        EXPECT_EQ("none " + kUnmoved, Step(0)) << what;
        EXPECT_EQ("none " + left, Step(1)) << what;
    }

    ColumnTree column_;
    ScriptNode& stream_{column_.beside.Add("Kerosene")};
    ScriptNode& unit_{column_.beside.Add("E-101")};
};

TEST_F(SideReboiler, is_the_first_unit_below_the_bottoms) {
    EXPECT_EQ("found " + kUnmoved, Step(0));
    for (int move : {1, -1}) EXPECT_EQ("found Case.Main.E-101 at 2", Step(move));
}

TEST_F(SideReboiler, is_none_when_that_unit_is_something_else) {
    for (const FIValue& type : {FIValue("HeaterOpObject"), FIValue("bpreboilerobject"), FIValue(""),
                                FIValue("BPReboilerObjects"), FIValue()}) {
        unit_.Set("type", type);
        ExpectNone("Case.Main.E-101 at 2", Shown(type));
    }
}

// Each takes one thing more away, from the far end.
TEST_F(SideReboiler, is_none_when_the_way_ends_before) {
    column_.beside.RemoveChild("E-101");
    ExpectNone("Case.Main at 1", "no unit");
    Below(stream_, {"Downstream Unit Operations", "Elem0"}).Set("value", FIValue());
    ExpectNone("Case.Main.Kerosene.Downstream Unit Operations.Elem0 at 4", "no name of a unit");
    Below(stream_, {"Downstream Unit Operations"}).RemoveChild("Elem0");
    ExpectNone("Case.Main.Kerosene at 2", "no element");
    stream_.RemoveChild("Downstream Unit Operations");
    ExpectNone("Case.Main.Kerosene at 2", "no units below");
    column_.beside.RemoveChild("Kerosene");
    ExpectNone("Case.Main at 1", "no stream");
    column_.Set({"bottom liquid product"}, FIValue());
    ExpectNone("Case.Main.T-100.bottom liquid product at 3", "no name of a stream");
    column_.node.RemoveChild("bottom liquid product");
    ExpectNone(kUnmoved, "no bottoms");
}

TEST_F(SideReboiler, stands_in_the_lists_of_the_flowsheet) {
    ColumnTree column({"Main", "UnitOps"});
    column.Set({"bottom liquid product"}, "Kerosene");
    ScriptNode& stream = Below(column.root, {"Main", "Streams", "Kerosene"});
    Below(stream, {"Downstream Unit Operations", "Elem0"}).Set("value", "E-101");
    column.beside.Add("E-101").Set("type", "BPReboilerObject");
    Ref<FIIterator> it = column.Iterate();
    EXPECT_TRUE(Call(CTSideColumnReboiler, it.Get(), 1));
    EXPECT_EQ("Case.Main.UnitOps.E-101 at 3", At(*it));
}

// ---- Rows of condenser and reboiler

struct RowStep {
    const char* name;
    SemanticFunction function;
    const char* array;
};

const RowStep kRowSteps[] = {
    {"CTCondRebVesselComponent", CTCondRebVesselComponent, "Vessel Mole Frac"},
    {"CTCondRebVaporComponent", CTCondRebVaporComponent, "Vapour Mole Fraction"},
    {"CTCondRebLiquidComponent", CTCondRebLiquidComponent, "Liquid Mole Fraction"},
};

TEST(VesselComponentStep, goes_to_the_row_of_the_variable) {
    for (const RowStep& row : kRowSteps) {
        ColumnTree column;
        AddArray(column.node, {row.array}, {"Methane", "Ethane"});
        for (int move : {0, 1, -1}) {
            Ref<FIIterator> it = column.Iterate();
            it->SetVarText("FlashPhaseCmpCnt", FIValue::OfInt(1));
            EXPECT_TRUE(Call(row.function, it.Get(), move)) << row.name;
            const std::string place = std::string(kColumn) + "." + row.array + ".Ethane at 4";
            EXPECT_EQ(move ? place : kUnmoved, At(*it)) << row.name;
        }
    }
}

TEST(VesselComponentStep, fails_without_variable_array_or_row) {
    for (const RowStep& row : kRowSteps) {
        for (int move : {0, 1}) {
            ColumnTree column;
            Ref<FIIterator> it = column.Iterate();
            it->SetVarText("FlashPhaseCmpCnt", FIValue::OfInt(2));
            EXPECT_FALSE(Call(row.function, it.Get(), move)) << row.name << ": no array";
            EXPECT_EQ(kUnmoved, At(*it)) << row.name;
            AddArray(column.node, {row.array}, {"Methane", "Ethane"});
            EXPECT_FALSE(Call(row.function, it.Get(), move)) << row.name << ": no row";
            const std::string array = std::string(kColumn) + "." + row.array + " at 3";
            EXPECT_EQ(move ? array : kUnmoved, At(*it)) << row.name;
            it = column.Iterate();
            EXPECT_FALSE(Call(row.function, it.Get(), move)) << row.name << ": no variable";
            EXPECT_EQ(kUnmoved, At(*it)) << row.name;
        }
    }
}

}  // namespace

}  // namespace fixtop
