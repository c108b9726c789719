// SPDX-License-Identifier: Apache-2.0
// Rows of compositions: every list and every step over a tree that holds nothing but its own array.

#include <gtest/gtest.h>

#include "fixtop/semantic_functions.h"
#include "semantic/raw_tree.h"

namespace fixtop {

namespace {

// What stands behind a function. A list counts `path` and sets `variable`, a step goes to the
// element of that number below `path`.
template <class Function>
struct Row {
    const char* name;
    Function function;
    NamePath path;
    const char* variable;
};

using ListRow = Row<ArrayFunction>;

const ListRow kLists[] = {
    {"CTComponentArray", CTComponentArray, {"Comp Mole Frac"}, "CmpCnt"},
    {"CTKVMLArray", CTKVMLArray, {"Comp K Value - Mixed Liquid"}, "CmpCnt"},
    {"CTKVLArray", CTKVLArray, {"Comp K Value - Light Liquid"}, "CmpCnt"},
    {"CTKVL2Array", CTKVL2Array, {"Comp K Value - Heavy Liquid"}, "CmpCnt"},
    {"CTKL1L2Array", CTKL1L2Array, {"Comp K Value - Liq1 / Liq2"}, "CmpCnt"},
    {"CTPhaseComponentArray",
     CTPhaseComponentArray,
     {"Phase Comp Mole Frac", "Vapour Phase"},
     "PhaseCmpCnt"},
    {"CTFluidPhaseComponentArray",
     CTFluidPhaseComponentArray,
     {"Comp Mole Frac"},
     "FluidPhaseCmpCnt"},
    {"CTVaporPhaseComponentArray",
     CTVaporPhaseComponentArray,
     {"Vapour", "Comp Mole Frac"},
     "FlashPhaseCmpCnt"},
    {"CTLiquidPhaseComponentArray",
     CTLiquidPhaseComponentArray,
     {"Liquid", "Comp Mole Frac"},
     "FlashPhaseCmpCnt"},
    {"CTLiquid2PhaseComponentArray",
     CTLiquid2PhaseComponentArray,
     {"Heavy Liquid", "Comp Mole Frac"},
     "FlashPhaseCmpCnt"},
};

// What a failed move leaves on the iterator, in frames.
struct FramesLeft {
    int without_first;
    int without_second;  // of a path of two names
    int without_variable;
    int past_end;
};

struct StepRow : Row<SemanticFunction> {
    FramesLeft left;
};

constexpr FramesLeft kComposition = {0, 0, 0, 0};
constexpr FramesLeft kPhase = {0, 1, 1, 1};
constexpr FramesLeft kFluid = {0, 0, 0, 1};
constexpr FramesLeft kFlash = {0, 1, 0, 2};

const StepRow kSteps[] = {
    {{"CTComponent", CTComponent, {"Comp Mole Frac"}, "CmpCnt"}, kComposition},
    {{"CTMoleFraction", CTMoleFraction, {"Comp Mole Frac"}, "CmpCnt"}, kComposition},
    {{"CTMassFraction", CTMassFraction, {"Master Comp Mass Frac"}, "CmpCnt"}, kComposition},
    {{"CTVolumeFraction", CTVolumeFraction, {"Master Comp Volume Frac"}, "CmpCnt"}, kComposition},
    {{"CTKVML", CTKVML, {"Comp K Value - Mixed Liquid"}, "CmpCnt"}, kComposition},
    {{"CTKVL", CTKVL, {"Comp K Value - Light Liquid"}, "CmpCnt"}, kComposition},
    {{"CTKVL2", CTKVL2, {"Comp K Value - Heavy Liquid"}, "CmpCnt"}, kComposition},
    {{"CTKL1L2", CTKL1L2, {"Comp K Value - Liq1 / Liq2"}, "CmpCnt"}, kComposition},
    {{"CTPhaseComponent",
      CTPhaseComponent,
      {"Phase Comp Mole Frac", "Aqueous Phase"},
      "PhaseCmpCnt"},
     kPhase},
    {{"CTPhaseMoleFraction",
      CTPhaseMoleFraction,
      {"Phase Comp Mole Frac", "Aqueous Phase"},
      "PhaseCmpCnt"},
     kPhase},
    {{"CTPhaseMassFraction",
      CTPhaseMassFraction,
      {"Phase Comp Mass Frac", "Aqueous Phase"},
      "PhaseCmpCnt"},
     kPhase},
    {{"CTPhaseVolumeFraction",
      CTPhaseVolumeFraction,
      {"Phase Comp Volume Frac", "Aqueous Phase"},
      "PhaseCmpCnt"},
     kPhase},
    {{"CTFluidPhaseComponent", CTFluidPhaseComponent, {"Comp Mole Frac"}, "FluidPhaseCmpCnt"},
     kFluid},
    {{"CTVaporPhaseComponent",
      CTVaporPhaseComponent,
      {"Vapour", "Comp Mole Frac"},
      "FlashPhaseCmpCnt"},
     kFlash},
    {{"CTLiquidPhaseComponent",
      CTLiquidPhaseComponent,
      {"Liquid", "Comp Mole Frac"},
      "FlashPhaseCmpCnt"},
     kFlash},
    {{"CTLiquid2PhaseComponent",
      CTLiquid2PhaseComponent,
      {"Liquid2", "Comp Mole Frac"},
      "FlashPhaseCmpCnt"},
     kFlash},
};

const NamePath kComponents = {"Methane", "Ethane", "Water"};

// A stream below a case; `path` leads to its only array.
struct Stream {
    explicit Stream(const NamePath& path) {
        if (!path.empty()) AddArray(node, path, kComponents);
    }
    // On the stream, where the caller of a list of phases has set the phase.
    Ref<FIIterator> Iterate(const char* phase = "Aqueous Phase") {
        Ref<FIIterator> it = root.Iterate();
        EXPECT_TRUE(it->SeekChild("Feed"));
        if (phase) it->SetVarText("PhaseName", phase);
        return it;
    }

    ScriptNode root{"Case"};
    ScriptNode& node{root.Add("Feed")};
};

TEST(ComponentList, counts_the_array_and_stays) {
    for (const ListRow& row : kLists) {
        Stream stream(row.path);
        Ref<FIIterator> it = stream.Iterate();
        FIValue subclass;
        EXPECT_EQ(3, Call(row.function, it.Get(), &subclass, kCountIndex)) << row.name;
        EXPECT_EQ("Case.Feed", Place(*it)) << row.name;
        EXPECT_EQ("(unset)", Variable(*it, row.variable)) << row.name;
        EXPECT_TRUE(subclass.IsNull()) << row.name;
    }
}

TEST(ComponentList, is_empty_without_its_array_or_its_elements) {
    for (const ListRow& row : kLists) {
        for (std::size_t found = 0; found <= row.path.size(); ++found) {
            Stream stream({});
            Below(stream.node, {row.path.begin(), row.path.begin() + found});
            Ref<FIIterator> it = stream.Iterate();
            FIValue subclass;
            EXPECT_EQ(0, Call(row.function, it.Get(), &subclass, kCountIndex))
                << row.name << " with " << found << " names";
            EXPECT_EQ("Case.Feed", Place(*it)) << row.name;
        }
    }
}

TEST(ComponentList, an_element_is_its_number_in_the_variable) {
    for (const ListRow& row : kLists) {
        Stream stream(row.path);
        Ref<FIIterator> it = stream.Iterate();
        for (int index : {0, 2, 1, 7}) {
            FIValue subclass;
            EXPECT_EQ(index, Call(row.function, it.Get(), &subclass, index)) << row.name;
            EXPECT_EQ("INT " + std::to_string(index), Variable(*it, row.variable)) << row.name;
            EXPECT_EQ("Case.Feed", Place(*it)) << row.name;
            EXPECT_TRUE(subclass.IsNull()) << row.name;
        }
    }
}

TEST(ComponentList, counts_beyond_a_byte_and_callers_keep_the_low_one) {
    for (const ListRow& row : kLists) {
        for (const auto& [elements, kept] : {std::pair{255, 255}, {256, 0}, {300, 44}}) {
            Stream stream({});
            ScriptNode& array = Below(stream.node, row.path);
            for (int i = 0; i < elements; ++i) array.Add("C" + std::to_string(i));
            Ref<FIIterator> it = stream.Iterate();
            FIValue subclass;
            EXPECT_EQ(elements, Call(row.function, it.Get(), &subclass, kCountIndex)) << row.name;
            EXPECT_EQ(kept, static_cast<int>(ReadList(row.function, *it).size())) << row.name;
        }
    }
}

TEST(ComponentList, of_a_phase_counts_the_vapour_whichever_is_asked_for) {
    Stream stream({"Phase Comp Mole Frac", "Vapour Phase"});
    AddArray(stream.node, {"Phase Comp Mole Frac", "Solid Phase"}, {"Carbon"});
    for (const char* phase : {"Solid Phase", "Aqueous Phase", "Overall"}) {
        Ref<FIIterator> it = stream.Iterate(phase);
        EXPECT_EQ(3, Call(CTPhaseComponentArray, it.Get(), nullptr, kCountIndex)) << phase;
    }
}

TEST(ComponentStep, goes_to_the_element_of_the_variable) {
    for (const StepRow& row : kSteps) {
        Stream stream(row.path);
        for (int index = 0; index < 3; ++index) {
            for (int move : {1, 2, -1}) {
                Ref<FIIterator> it = stream.Iterate();
                it->SetVarText(row.variable, FIValue::OfInt(index));
                EXPECT_TRUE(Call(row.function, it.Get(), move)) << row.name;
                EXPECT_EQ(kComponents[index], NameAt(*it)) << row.name << ", move " << move;
                EXPECT_EQ("REAL " + std::to_string(index) + ".5", Read(*it, "value")) << row.name;
                EXPECT_EQ(2 + static_cast<int>(row.path.size()), it->Depth()) << row.name;
            }
        }
    }
}

TEST(ComponentStep, reads_the_variable_as_a_number) {
    struct Case {
        FIValue value;
        const char* element;  // null: there is none
    };
    const Case cases[] = {
        {FIValue(), "Methane"},        {FIValue("1"), "Ethane"}, {FIValue::OfReal(2.9), "Water"},
        {FIValue("Water"), "Methane"}, {FIValue("3"), nullptr},  {FIValue::OfInt(-1), nullptr},
    };
    for (const StepRow& row : kSteps) {
        Stream stream(row.path);
        for (const Case& each : cases) {
            Ref<FIIterator> it = stream.Iterate();
            it->SetVarText(row.variable, each.value);
            const bool found = Call(row.function, it.Get(), 1);
            EXPECT_EQ(each.element != nullptr, found) << row.name << ": " << Shown(each.value);
            if (found) {
                EXPECT_EQ(each.element, NameAt(*it)) << row.name;
            }
        }
    }
}

TEST(ComponentStep, asked_only_stays_where_it_is) {
    for (const StepRow& row : kSteps) {
        Stream stream(row.path);
        Ref<FIIterator> it = stream.Iterate();
        EXPECT_FALSE(Call(row.function, it.Get(), 0)) << row.name;
        EXPECT_EQ("Case.Feed", Place(*it)) << row.name;
        for (const auto& [index, found] : {std::pair{0, true}, {2, true}, {3, false}}) {
            it->SetVarText(row.variable, FIValue::OfInt(index));
            EXPECT_EQ(found, Call(row.function, it.Get(), 0)) << row.name << " at " << index;
            EXPECT_EQ(1, it->Depth()) << row.name << " at " << index;
            EXPECT_EQ("Case.Feed", Place(*it)) << row.name << " at " << index;
        }
    }
}

// One way to fail: how much of the path there is, the variable, and the frames that a move leaves.
struct Failure {
    std::size_t names;
    bool variable_set;
    int frames;
};

TEST(ComponentStep, a_failed_move_leaves_the_frames_that_it_does_not_take_back) {
    for (const StepRow& row : kSteps) {
        const bool nested = row.path.size() == 2;
        const Failure failures[] = {
            {0, true, row.left.without_first},
            {1, true, nested ? row.left.without_second : row.left.past_end},
            {row.path.size(), false, row.left.without_variable},
            {row.path.size(), true, row.left.past_end},
        };
        for (const Failure& failure : failures) {
            for (int move : {0, 1}) {
                Stream stream({});
                Below(stream.node, {row.path.begin(), row.path.begin() + failure.names});
                Ref<FIIterator> it = stream.Iterate();
                if (failure.variable_set) it->SetVarText(row.variable, FIValue::OfInt(0));
                EXPECT_FALSE(Call(row.function, it.Get(), move)) << row.name;
                EXPECT_EQ(1 + (move ? failure.frames : 0), it->Depth())
                    << row.name << ", move " << move << ", " << failure.names << " names, variable "
                    << (failure.variable_set ? "set" : "unset");
            }
        }
    }
}

TEST(ComponentStep, a_phase_needs_its_name) {
    for (const StepRow& row : kSteps) {
        if (row.variable != std::string("PhaseCmpCnt")) continue;
        Stream stream(row.path);
        for (int move : {0, 1}) {
            Ref<FIIterator> it = stream.Iterate(nullptr);
            it->SetVarText(row.variable, FIValue::OfInt(0));
            EXPECT_FALSE(Call(row.function, it.Get(), move)) << row.name;
            EXPECT_EQ("Case.Feed", Place(*it)) << row.name;
        }
    }
}

TEST(ComponentStep, one_node_serves_the_name_and_the_fraction) {
    Stream stream({"Comp Mole Frac"});
    for (int index = -1; index < 4; ++index) {
        Ref<FIIterator> name = stream.Iterate();
        name->SetVarText("CmpCnt", FIValue::OfInt(index));
        Ref<FIIterator> fraction = Ref<FIIterator>::Adopt(name->Copy());
        EXPECT_EQ(Call(CTComponent, name.Get(), 1), Call(CTMoleFraction, fraction.Get(), 1))
            << index;
        EXPECT_EQ(Place(*name), Place(*fraction)) << index;
    }
}

TEST(ComponentStep, takes_the_phase_that_is_named) {
    const char* const phases[] = {"Overall",      "Vapour Phase",        "Total Liquid Phase",
                                  "Liquid Phase", "Second Liquid Phase", "Aqueous Phase",
                                  "Solid Phase"};
    Stream stream({});
    for (const char* phase : phases) {
        AddArray(stream.node, {"Phase Comp Mole Frac", phase}, {std::string("in ") + phase});
    }
    for (const char* phase : phases) {
        Ref<FIIterator> it = stream.Iterate(phase);
        it->SetVarText("PhaseCmpCnt", FIValue::OfInt(0));
        EXPECT_TRUE(Call(CTPhaseMoleFraction, it.Get(), 1)) << phase;
        EXPECT_EQ(std::string("in ") + phase, NameAt(*it));
    }
}

TEST(ComponentStep, the_second_liquid_is_counted_and_read_under_different_names) {
    Stream stream({"Heavy Liquid", "Comp Mole Frac"});
    Ref<FIIterator> it = stream.Iterate();
    EXPECT_EQ(3, Call(CTLiquid2PhaseComponentArray, it.Get(), nullptr, kCountIndex));
    for (int index = 0; index < 3; ++index) {
        EXPECT_EQ(index, Call(CTLiquid2PhaseComponentArray, it.Get(), nullptr, index));
        for (int move : {0, 1})
            EXPECT_FALSE(Call(CTLiquid2PhaseComponent, it.Get(), move)) << index;
    }
}

TEST(ComponentStep, sees_variables_that_were_set_above) {
    Stream stream({"Comp Mole Frac"});
    Ref<FIIterator> it = stream.root.Iterate();
    it->SetVarText("CmpCnt", FIValue::OfInt(2));
    ASSERT_TRUE(it->SeekChild("Feed"));
    EXPECT_TRUE(Call(CTComponent, it.Get(), 1));
    EXPECT_EQ("Water", NameAt(*it));
}

}  // namespace

}  // namespace fixtop
