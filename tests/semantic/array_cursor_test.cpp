// SPDX-License-Identifier: Apache-2.0
// Lists as maps read them: through the walk of an array attribute, which cuts the count to a byte,
// keeps the class of the element in Subclass and goes back between elements.

#include <gtest/gtest.h>

#include "fixtop/semantic_functions.h"
#include "framework/reference/reference.h"
#include "mapping/walks/function_walk.h"
#include "semantic/unit_node.h"

namespace fixtop {

namespace {

// A reference at Case.Unit, and what the elements of a list leave there.
struct Reader {
    explicit Reader(UnitNode& unit)
        : reference(Ref<FIReference>::Adopt(new FIReference(*unit.Iterate()))) {}
    std::string Variable(const char* name) {
        FIValue value;
        return reference->GetVarText(name, value) ? Shown(value) : "(unset)";
    }
    // The variable at each element, and behind the last one.
    std::vector<std::string> Along(ArrayFunction function, const char* variable) {
        std::vector<std::string> values;
        CDTVariableIterator walk(function, *reference);
        for (bool on = walk.HasMore(); on; on = walk.Next()) values.push_back(Variable(variable));
        values.push_back(Variable(variable));
        return values;
    }

    Ref<FIReference> reference;
};

TEST(ListOnTheWalk, of_more_than_a_byte_is_cut) {
    for (const auto& [segments, kept] : {std::pair{255, 255}, {256, 0}, {300, 44}}) {
        UnitNode pipe;
        pipe.AddElements({"Pipe Length"}, std::vector<FIValue>(segments));
        const auto names = Reader(pipe).Along(CTPipeSegment, "SegElemNum");
        EXPECT_EQ(kept + 1, static_cast<int>(names.size())) << segments;
        EXPECT_EQ(kept ? "Elem" + std::to_string(kept - 1) : "(unset)", names.back()) << segments;
    }
}

TEST(ListOnTheWalk, of_a_number_beyond_a_byte_is_cut) {
    UnitNode tee;
    tee.Set({"Number of Product Streams"}, FIValue::OfInt(258));
    EXPECT_EQ((std::vector<std::string>{"Elem0", "Elem1", "Elem1"}),
              Reader(tee).Along(CTTeeSplit, "SplitElem"));
}

TEST(ListOnTheWalk, that_is_empty_is_asked_for_no_element) {
    UnitNode pipe;
    Below(pipe.node, {"Profile Length"});
    EXPECT_EQ((std::vector<std::string>{"(unset)"}),
              Reader(pipe).Along(CTPipeProfile, "ProfileElemNum"));
}

TEST(ListOnTheWalk, without_classes_leaves_none) {
    UnitNode pump;
    pump.AddElements({"Pump Curve"}, std::vector<FIValue>(2));
    Reader reader(pump);
    reader.reference->SetVar(FIValue("Subclass"), Text("QSIPump"));
    for (ArrayFunction function : {CTEfficiencyCurve, CTPumpCurve, CTNPSHCurvePoint}) {
        for (const std::string& subclass : reader.Along(function, "Subclass")) {
            EXPECT_EQ("(NULL)", subclass);
        }
    }
}

TEST(ListOnTheWalk, of_reactions_has_the_class_of_each) {
    UnitNode package;
    for (const char* type : {"KineticRxnObject", "another", "LHKineticRxnObject"}) {
        package.Append({"ReactionList"}, "Reaction", FIValue())
            .Add("ReactionType")
            .Set("value", type);
    }
    Reader reader(package);
    EXPECT_EQ((std::vector<std::string>{"QSIReversibleKineticReaction", "(NULL)",
                                        "QSICatalyticRateReaction", "(NULL)"}),
              reader.Along(CTReactions, "Subclass"));
    EXPECT_EQ((std::vector<std::string>{"", "(NULL)", "KineticBasis", "KineticBasis"}),
              reader.Along(CTReactions, "rxnPath"));
    EXPECT_EQ(1, reader.reference->Depth());
}

TEST(ListOnTheWalk, goes_back_from_each_element) {
    UnitNode pump;
    pump.AddElements({"Pump Curve"}, std::vector<FIValue>(3));
    for (const char* element : {"Elem0", "Elem1", "Elem2"}) {
        Below(pump.node, {"Pump Curve", element, "Object Name"}).Set("value", element);
    }
    Reader reader(pump);
    EXPECT_EQ((std::vector<std::string>{"Elem0", "Elem1", "CoefficientCurve", "CoefficientCurve",
                                        "CoefficientCurve"}),
              reader.Along(CTPumpCurve, "Name"));
    EXPECT_EQ(1, reader.reference->Depth());
}

// The list of cells is that of the segment on which the list of segments is.
TEST(ListOnTheWalk, of_cells_is_as_long_as_their_segment) {
    UnitNode pipe;
    pipe.AddElements({"Pipe Length"}, std::vector<FIValue>(2));
    pipe.AddElements({"No of Increments"}, {FIValue::OfInt(2), FIValue::OfInt(3)});
    Reader reader(pipe);
    CDTVariableIterator segments(CTPipeSegment, *reader.reference);
    EXPECT_EQ((std::vector<std::string>{"Elem0", "Elem1", "Elem1"}),
              reader.Along(CTPipeCell, "CellElemNum"));
    ASSERT_TRUE(segments.Next());
    EXPECT_EQ((std::vector<std::string>{"Elem2", "Elem3", "Elem4", "Elem4"}),
              reader.Along(CTPipeCell, "CellElemNum"));
}

}  // namespace

}  // namespace fixtop
