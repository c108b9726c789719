// SPDX-License-Identifier: Apache-2.0
// The lists of a flowsheet, and the classes of its unit operations.

#include <gtest/gtest.h>

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"
#include "semantic/raw_tree.h"

namespace fixtop {

namespace {

struct ListRow {
    const char* name;
    ArrayFunction function;
    const char* container;
    const char* type;
};

const ListRow kTypedLists[] = {
    {"CTFlowsheets", CTFlowsheets, "UnitOps", "TemplateOpObject"},
    {"CTStreams", CTStreams, "Streams", "MaterialStreamObject"},
    {"CTHeatStreams", CTHeatStreams, "Streams", "EnergyStreamObject"},
    {"CTPhaseEnvelopes", CTPhaseEnvelopes, "Utilities", "EnvelopeUtilityObject"},
    {"CTDistillationCurves", CTDistillationCurves, "Utilities", "BPTableUtilityObject"},
};

// The same with the list whose elements differ in class.
std::vector<ListRow> AllLists() {
    std::vector<ListRow> all(std::begin(kTypedLists), std::end(kTypedLists));
    all.push_back({"CTUnitOperations", CTUnitOperations, "UnitOps", "PumpOpObject"});
    return all;
}

// A flowsheet with one container of children "0", "1", ... of these types.
struct Flowsheet {
    Flowsheet(const char* container_name, const std::vector<std::string>& types)
        : container(main.Add(container_name)) {
        for (const std::string& type : types) {
            container.Add(std::to_string(container.children.size())).Set("type", type.c_str());
        }
    }
    Ref<FIIterator> Iterate() {
        Ref<FIIterator> it = root.Iterate();
        EXPECT_TRUE(it->SeekChild("Main"));
        return it;
    }
    int Count(ArrayFunction function) {
        FIValue subclass;
        return Call(function, Iterate().Get(), &subclass, kCountIndex);
    }

    ScriptNode root{"Case"};
    ScriptNode& main{root.Add("Main")};
    ScriptNode& container;
};

// Goes to element `index`; the class name is left in `subclass`.
Ref<FIIterator> Element(Flowsheet& flowsheet, ArrayFunction function, int index,
                        FIValue& subclass) {
    Ref<FIIterator> it = flowsheet.Iterate();
    EXPECT_EQ(index, Call(function, it.Get(), &subclass, index));
    return it;
}

TEST(FlowsheetList, counts_the_children_of_its_type_and_stays) {
    for (const ListRow& row : AllLists()) {
        const std::string type = row.type;
        struct Case {
            std::vector<std::string> types;
            int count;
        };
        const Case cases[] = {
            {{}, 0},
            {{type}, 1},
            {{type, type, type}, 3},
            {{"Other", type, "Other", "Other", type}, 2},
            {{type, "Other", type, "Other"}, 2},
            {{"Other", "Other"}, 0},
            {{type + "s", type.substr(1), type + " ", "pumpopobject", ""}, 0},
        };
        for (const Case& each : cases) {
            Flowsheet flowsheet(row.container, each.types);
            Ref<FIIterator> it = flowsheet.Iterate();
            FIValue subclass;
            EXPECT_EQ(each.count, Call(row.function, it.Get(), &subclass, kCountIndex))
                << row.name << " of " << testing::PrintToString(each.types);
            EXPECT_EQ("Case.Main", Place(*it)) << row.name;
        }
    }
}

TEST(FlowsheetList, is_empty_without_its_container) {
    for (const ListRow& row : AllLists()) {
        Flowsheet flowsheet("Elsewhere", {row.type});
        EXPECT_EQ(0, flowsheet.Count(row.function)) << row.name;
    }
}

TEST(FlowsheetList, skips_children_without_a_type) {
    for (const ListRow& row : AllLists()) {
        Flowsheet flowsheet(row.container, {row.type});
        flowsheet.container.Add("no type");
        EXPECT_EQ(1, flowsheet.Count(row.function)) << row.name;
    }
}

TEST(FlowsheetList, an_element_is_the_nth_of_its_type_whatever_stands_between) {
    for (const ListRow& row : AllLists()) {
        const std::string type = row.type;
        Flowsheet flowsheet(row.container, {"Other", type, type, "Other", "Other", type, "Other"});
        const char* const expected[] = {"1", "2", "5"};
        for (int index = 0; index < 3; ++index) {
            FIValue subclass;
            Ref<FIIterator> it = Element(flowsheet, row.function, index, subclass);
            EXPECT_EQ(expected[index], NameAt(*it)) << row.name;
            EXPECT_EQ(3, it->Depth()) << row.name;
        }
    }
}

TEST(FlowsheetList, steps_from_element_to_element_until_there_is_none) {
    for (const ListRow& row : AllLists()) {
        const std::string type = row.type;
        Flowsheet flowsheet(row.container, {"Other", type, type, "Other", type, "Other"});
        FIValue subclass;
        Ref<FIIterator> it = Element(flowsheet, row.function, 0, subclass);
        const std::string subclass_of_first = Shown(subclass);
        for (const char* expected : {"2", "4"}) {
            FIValue of_next;
            EXPECT_EQ(kNextIndex, Call(row.function, it.Get(), &of_next, kNextIndex)) << row.name;
            EXPECT_EQ(expected, NameAt(*it)) << row.name;
            EXPECT_EQ(subclass_of_first, Shown(of_next)) << row.name;
        }
        EXPECT_EQ(kCountIndex, Call(row.function, it.Get(), &subclass, kNextIndex)) << row.name;
    }
}

TEST(FlowsheetList, the_first_child_may_be_the_first_element) {
    for (const ListRow& row : AllLists()) {
        Flowsheet flowsheet(row.container, {row.type, "Other", row.type});
        FIValue subclass;
        EXPECT_EQ("0", NameAt(*Element(flowsheet, row.function, 0, subclass))) << row.name;
        EXPECT_EQ("2", NameAt(*Element(flowsheet, row.function, 1, subclass))) << row.name;
    }
}

TEST(FlowsheetList, streams_stand_side_by_side) {
    Flowsheet flowsheet("Streams", {"EnergyStreamObject", "MaterialStreamObject",
                                    "EnergyStreamObject", "MaterialStreamObject"});
    Ref<FIIterator> it = flowsheet.Iterate();
    using Elements = std::vector<ListElement>;
    EXPECT_EQ((Elements{{"1", "(NULL)"}, {"3", "(NULL)"}}), ReadList(CTStreams, *it));
    EXPECT_EQ((Elements{{"0", "(NULL)"}, {"2", "(NULL)"}}), ReadList(CTHeatStreams, *it));
    EXPECT_EQ("Case.Main", Place(*it));
}

// A host may refuse a move that it made: the count ends there, the way to an element goes on.
TEST(FlowsheetList, the_way_to_an_element_does_not_ask_whether_it_moved) {
    for (const ListRow& row : AllLists()) {
        Flowsheet flowsheet(row.container, {row.type, "Other", row.type});
        flowsheet.container.denies_moves = true;
        EXPECT_EQ(1, flowsheet.Count(row.function)) << row.name;
        FIValue subclass;
        EXPECT_EQ("2", NameAt(*Element(flowsheet, row.function, 1, subclass))) << row.name;
    }
}

// Between the count and the way to an element the host may have deleted some.
TEST(FlowsheetList, an_element_that_is_gone_since_the_count_ends_the_walk) {
    for (const ListRow& row : AllLists()) {
        Flowsheet flowsheet(row.container, {row.type, "Other"});
        FIValue subclass;
        Ref<FIIterator> it = Element(flowsheet, row.function, 3, subclass);
        EXPECT_TRUE(it->AtLast()) << row.name;
        EXPECT_TRUE(it->Up()) << row.name;
        EXPECT_EQ(row.container, NameAt(*it)) << row.name;
    }
}

TEST(FlowsheetList, typed_lists_give_no_subclass) {
    for (const ListRow& row : kTypedLists) {
        Flowsheet flowsheet(row.container, {row.type});
        FIValue subclass;
        Element(flowsheet, row.function, 0, subclass);
        EXPECT_TRUE(subclass.IsNull()) << row.name;
    }
}

struct ClassRow {
    const char* type;
    const char* class_name;
    const char* is_compressor = "(unset)";
    bool has_summary = false;
};

const ClassRow kClasses[] = {
    {"PipeSegObject", "QSIPipe"},
    {"CompressorObject", "QSICompressor", "YES"},
    {"ExpandOpObject", "QSICompressor", "NO"},
    {"FlashTankObject", "QSISeparator"},
    {"Sep3OpObject", "QSISeparator"},
    {"TankOpObject", "QSISeparator"},
    {"ValveOpObject", "QSIValve"},
    {"PumpOpObject", "QSIPump"},
    {"HeatExOpObject", "QSIHeatExchanger"},
    {"MixerOpObject", "QSIMixer"},
    {"TeeOpObject", "QSITee"},
    {"DistillationObject", "QSIDistillationColumn", "(unset)", true},
    {"ColumnOpObject", "QSIDistillationColumn"},
    {"ConversionReactorOpObject", "QSIConversionReactor"},
    {"EquilibriumReactorOpObject", "QSIEquilibriumReactor"},
    {"GibbsReactorOpObject", "QSIGibbsReactor"},
    {"HeaterOpObject", "QSIHeaterCooler"},
    {"CoolerOpObject", "QSIHeaterCooler"},
};

// Every object is given what a summary of a column reads.
void MakeColumn(ScriptNode& node) {
    Below(node, {"Number of Trays"}).Set("value", 10);
    Below(node, {"Vessels", "0", "Object Name"}).Set("value", "Reboiler");
    Below(node, {"Vessels", "0", "BoilUp Molar Flow"}).Set("value", 6.0);
    Below(node, {"Vessels", "0", "Liquid Molar Flow"}).Set("value", 4.0);
}

TEST(UnitOperationList, every_type_has_its_class_and_its_variables) {
    std::vector<std::string> types;
    for (const ClassRow& row : kClasses) types.push_back(row.type);
    Flowsheet flowsheet("UnitOps", types);
    for (ScriptNode* child : flowsheet.container.children) MakeColumn(*child);
    EXPECT_EQ(18, flowsheet.Count(CTUnitOperations));
    for (int index = 0; index < 18; ++index) {
        const ClassRow& row = kClasses[index];
        FIValue subclass;
        Ref<FIIterator> it = Element(flowsheet, CTUnitOperations, index, subclass);
        EXPECT_EQ(std::to_string(index), NameAt(*it)) << row.type;
        EXPECT_EQ(row.class_name, Shown(subclass)) << row.type;
        EXPECT_EQ(row.is_compressor, Variable(*it, "IsCompressor")) << row.type;
        EXPECT_EQ(row.has_summary ? "INT 11" : "(unset)", Variable(*it, "Bottom")) << row.type;
        EXPECT_EQ(row.has_summary ? "REAL 1.5" : "(unset)", Variable(*it, "MolarBoilupRatio"))
            << row.type;
    }
}

TEST(UnitOperationList, leaves_out_what_has_no_class) {
    Flowsheet flowsheet("UnitOps", {"TemplateOpObject", "PumpOpObject", "SpreadsheetObject",
                                    "MaterialStreamObject", "TeeOpObject", "pumpopobject"});
    using Elements = std::vector<ListElement>;
    EXPECT_EQ((Elements{{"1", "QSIPump"}, {"4", "QSITee"}}),
              ReadList(CTUnitOperations, *flowsheet.Iterate()));
}

// What is passed on the way is classified too; only a class overwrites a class.
TEST(UnitOperationList, classifies_every_child_on_the_way) {
    Flowsheet flowsheet("UnitOps", {"CompressorObject", "PumpOpObject", "Other"});
    FIValue subclass;
    EXPECT_EQ(2, Call(CTUnitOperations, flowsheet.Iterate().Get(), &subclass, kCountIndex));
    EXPECT_EQ("QSIPump", Shown(subclass)) << "the last class of the count";

    std::vector<std::string> read;
    for (ScriptNode* child : flowsheet.container.children) {
        child->on_read = [&read, child](FIVarSet*, const std::string& attribute) {
            read.push_back(child->name.ToText() + " " + attribute);
        };
    }
    CTUnitOperations(flowsheet.Iterate().Get(), &subclass, 1);
    EXPECT_EQ((std::vector<std::string>{"0 type", "1 type"}), read);
    EXPECT_EQ("QSIPump", Shown(subclass));
}

TEST(UnitOperationList, counting_sets_no_variables) {
    Flowsheet flowsheet("UnitOps", {"CompressorObject", "DistillationObject"});
    for (ScriptNode* child : flowsheet.container.children) MakeColumn(*child);
    Ref<FIIterator> it = flowsheet.Iterate();
    FIValue subclass;
    EXPECT_EQ(2, Call(CTUnitOperations, it.Get(), &subclass, kCountIndex));
    for (const char* variable : {"IsCompressor", "Bottom", "MolarBoilupRatio"}) {
        EXPECT_EQ("(unset)", Variable(*it, variable));
    }
}

TEST(Find1, goes_to_the_raw_tree_when_it_moves) {
    ScriptNode root("Case");
    root.Add("Other");
    root.Add("appModel");
    for (int move : {0, 1, 2, -5}) {
        Ref<FIIterator> it = root.Iterate();
        EXPECT_TRUE(Call(Find1, it.Get(), move)) << move;
        EXPECT_EQ(move ? "Case.appModel" : "Case", Place(*it)) << move;
        EXPECT_TRUE(Call(Find1, it.Get(), move)) << "also where there is none";
        EXPECT_EQ(move ? "Case.appModel" : "Case", Place(*it)) << move;
    }
}

TEST(Idioms, elements_by_name_and_by_number_are_variables) {
    ScriptNode root("Case");
    Ref<FIIterator> it = root.Iterate();
    for (int index : {0, 7, 12345}) {
        EXPECT_EQ(index, semantic::SetElementName(*it, "SegElemNum", index));
        EXPECT_EQ("Elem" + std::to_string(index), Variable(*it, "SegElemNum"));
        EXPECT_EQ(index, semantic::SetElementIndex(*it, "PointNo", index));
        EXPECT_EQ("INT " + std::to_string(index), Variable(*it, "PointNo"));
    }
}

TEST(Idioms, an_element_by_moving_stands_below_its_array) {
    ScriptNode root("Case");
    AddArray(root, {"Pump Curve"}, {"a", "b"});
    Ref<FIIterator> it = root.Iterate();
    EXPECT_EQ(1, semantic::MoveToElement(*it, "Pump Curve", 1));
    EXPECT_EQ("Case.Pump Curve.b", Place(*it));

    it = root.Iterate();
    EXPECT_EQ(5, semantic::MoveToElement(*it, "Pump Curve", 5));
    EXPECT_EQ("Case.Pump Curve", Place(*it));

    it = root.Iterate();
    EXPECT_EQ(0, semantic::MoveToElement(*it, "NPSH Curve", 0));
    EXPECT_EQ("Case", Place(*it));
}

TEST(Idioms, whole_lists_count_and_give_elements) {
    ScriptNode root("Case");
    AddArray(root, {"Enhanced Holdup", "Diameter"}, {"a", "b", "c"});
    AddArray(root, {"Curve"}, {"a", "b"});
    root.Add("Number").Set("value", 7);
    Ref<FIIterator> it = root.Iterate();
    EXPECT_EQ(3, semantic::ArrayList(*it, kCountIndex, "Elem", {"Enhanced Holdup", "Diameter"}));
    EXPECT_EQ(7, semantic::NumberList(*it, kCountIndex, "Elem", "Number"));
    EXPECT_EQ(0, semantic::NumberList(*it, kCountIndex, "Elem", "Numbers"));
    EXPECT_EQ(2, semantic::MovingList(*it, kCountIndex, "Curve"));
    EXPECT_EQ("(unset)", Variable(*it, "Elem"));
    EXPECT_EQ(1, semantic::ArrayList(*it, 1, "Elem", {"Enhanced Holdup", "Diameter"}));
    EXPECT_EQ("Elem1", Variable(*it, "Elem"));
    EXPECT_EQ(2, semantic::NumberList(*it, 2, "Elem", "Number"));
    EXPECT_EQ("Elem2", Variable(*it, "Elem"));
    EXPECT_EQ("Case", Place(*it));
    EXPECT_EQ(1, semantic::MovingList(*it, 1, "Curve"));
    EXPECT_EQ("Case.Curve.b", Place(*it));
}

TEST(Idioms, a_value_below_is_read_from_where_it_stands) {
    ScriptNode root("Case");
    Below(root, {"Reaction Set", "Name"}).Set("value", "Set-1");
    Ref<FIIterator> it = root.Iterate();
    EXPECT_EQ("Set-1", Shown(semantic::ReadValueBelow(*it, {"Reaction Set", "Name"})));
    EXPECT_EQ("(NULL)", Shown(semantic::ReadValueBelow(*it, {"Reaction Set"})));
    EXPECT_EQ("(NULL)", Shown(semantic::ReadValueBelow(*it, {"Reaction Set", "Names"})));
    EXPECT_EQ("Case", Place(*it));
}

TEST(Idioms, children_of_one_key_are_told_by_their_place_among_them) {
    ScriptNode root("Case");
    const std::string long_name = "Reaction" + std::string(300, ' ');
    for (const std::string& name : {std::string("Number"), std::string("Reaction"),
                                    std::string("Reactions"), long_name, std::string("Reaction")}) {
        root.Add(name).Set("place", static_cast<int>(root.children.size()) - 1);
    }
    Ref<FIIterator> it = root.Iterate();
    for (int none : {2, -1}) {
        EXPECT_FALSE(semantic::SeekOfKey(*it, "Reaction", none)) << none;
        EXPECT_EQ("Case", Place(*it)) << none;
    }
    EXPECT_FALSE(semantic::SeekOfKey(*it, "None", 0));
    EXPECT_TRUE(semantic::SeekOfKey(*it, "Reaction", 1));
    EXPECT_EQ("INT 4", Read(*it, "place"));

    it = root.Iterate();
    EXPECT_TRUE(semantic::SeekOfKey(*it, "Reaction", 0));
    EXPECT_EQ("INT 1", Read(*it, "place"));
    EXPECT_TRUE(semantic::NextOfKey(*it, "Reaction"));
    EXPECT_EQ("INT 4", Read(*it, "place"));
    EXPECT_FALSE(semantic::NextOfKey(*it, "Reaction"));
    EXPECT_EQ(1, it->Depth());
}

TEST(Idioms, siblings_are_stepped_over_whatever_their_key) {
    ScriptNode root("Case");
    AddArray(root, {}, {"a", "b", "c"});
    Ref<FIIterator> it = root.Iterate();
    ASSERT_TRUE(it->DownFirst());
    EXPECT_TRUE(semantic::NextTimes(*it, 0));
    EXPECT_EQ("a", NameAt(*it));
    EXPECT_TRUE(semantic::NextTimes(*it, 2));
    EXPECT_EQ("c", NameAt(*it));
    EXPECT_FALSE(semantic::NextTimes(*it, 1));
    EXPECT_EQ(1, it->Depth());
}

TEST(Idioms, sums_beyond_all_numbers_wrap) {
    EXPECT_EQ(5, semantic::WrappedSum(7, -2));
    EXPECT_EQ(-2147483647 - 1, semantic::WrappedSum(2147483647, 1));
}

}  // namespace

}  // namespace fixtop
