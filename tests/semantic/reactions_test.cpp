// SPDX-License-Identifier: Apache-2.0
// Reactions of the package and their rates.

#include <gtest/gtest.h>

#include <limits>

#include "fixtop/semantic_functions.h"
#include "semantic/unit_node.h"

namespace fixtop {

namespace {

// ---- The package

// A package of reactions of these types, with other children before, between and behind them.
struct Package : UnitNode {
    explicit Package(const NamePath& types) {
        Append({"ReactionList"}, "NumberOfReactions", FIValue::OfInt(99));
        for (const std::string& type : types) {
            ScriptNode& reaction = Append({"ReactionList"}, "Reaction", Text("of type " + type));
            reaction.Add("ReactionType").Set("value", type.c_str());
            Append({"ReactionList"}, "Comment", FIValue());
            Append({"ReactionList"}, "Reactions", FIValue());
        }
    }
    ScriptNode& Reaction(int index) {
        return *Below(node, {"ReactionList"}).children[1 + 3 * index];
    }
};

TEST(ReactionList, counts_the_reactions_among_its_children) {
    for (int count : {0, 1, 2, 5}) {
        Package package(NamePath(count, "ConversionRxnObject"));
        EXPECT_EQ(count, CountOf(package, CTReactions));
    }
}

TEST(ReactionList, an_element_is_the_nth_reaction_whatever_stands_between) {
    Package package({"ConversionRxnObject", "a", "b", "EquilibriumRxnObject"});
    const char* const values[] = {"of type ConversionRxnObject", "of type a", "of type b",
                                  "of type EquilibriumRxnObject"};
    for (int index = 0; index < 4; ++index) {
        const Element element = ElementOf(package, CTReactions, index);
        EXPECT_EQ("Case.Unit.ReactionList.Reaction", element.place);
        EXPECT_EQ(3, element.it->Depth());
        EXPECT_EQ(values[index], Read(*element.it, "value"));
    }
}

TEST(ReactionList, every_type_has_its_class_and_the_way_to_its_rate) {
    struct ClassRow {
        const char* type;
        const char* class_name;
        const char* rate;
    };
    const ClassRow rows[] = {
        {"ConversionRxnObject", "QSIConversionReaction", ""},
        {"LHKineticRxnObject", "QSICatalyticRateReaction", "KineticBasis"},
        {"SimpleRateRxnObject", "QSISimpleRateReaction", "KineticBasis"},
        {"EquilibriumRxnObject", "QSIEquilibriumReaction", ""},
        {"KineticRxnObject", "QSIReversibleKineticReaction", ""},
        {"kineticrxnobject", "(NULL)", "(NULL)"},
        {"KineticRxnObjects", "(NULL)", "(NULL)"},
        {"", "(NULL)", "(NULL)"},
    };
    for (const ClassRow& row : rows) {
        Package package({row.type});
        const Element element = ElementOf(package, CTReactions, 0);
        EXPECT_EQ(row.class_name, element.subclass) << row.type;
        EXPECT_EQ((Variables{{"rxnPath", row.rate}}), element.variables) << row.type;
        EXPECT_EQ("Case.Unit.ReactionList.Reaction", element.place) << row.type;
    }
}

TEST(ReactionList, a_reaction_without_a_type_has_no_class) {
    Package package({"ConversionRxnObject", "ConversionRxnObject", "ConversionRxnObject"});
    package.Reaction(0).RemoveChild("ReactionType");
    Below(package.Reaction(1), {"ReactionType"}).Set("value", FIValue());
    Below(package.Reaction(2), {"ReactionType"}).Set("value", FIValue::OfInt(3));
    for (int index = 0; index < 3; ++index) {
        const Element element = ElementOf(package, CTReactions, index);
        EXPECT_EQ("(NULL)", element.subclass);
        EXPECT_EQ((Variables{{"rxnPath", "(NULL)"}}), element.variables);
        EXPECT_EQ("Case.Unit.ReactionList.Reaction", element.place);
    }
}

TEST(ReactionList, the_rate_is_below_the_reaction_or_the_reaction_itself) {
    Package package({"LHKineticRxnObject", "KineticRxnObject"});
    Below(package.Reaction(0), {"KineticBasis", "Phase"}).Set("value", "below");
    Below(package.Reaction(1), {"Phase"}).Set("value", "itself");
    const char* const values[] = {"below", "itself"};
    for (int index = 0; index < 2; ++index) {
        const Element element = ElementOf(package, CTReactions, index);
        ASSERT_TRUE(element.it->SeekPath(FIValue("%rxnPath.Phase")));
        EXPECT_EQ(values[index], Read(*element.it, "value"));
    }
}

TEST(ReactionList, without_reactions_nothing_is_set) {
    Package others({});
    Package one({"ConversionRxnObject"});
    UnitNode none;
    struct Case {
        UnitNode& node;
        int index;
        const char* place;
    };
    const Case cases[] = {{others, 0, "Case.Unit.ReactionList"},
                          {one, 1, "Case.Unit.ReactionList"},
                          {none, 0, "Case.Unit"}};
    for (const Case& each : cases) {
        const Element element = ElementOf(each.node, CTReactions, each.index);
        EXPECT_EQ(Variables(), element.variables);
        EXPECT_EQ("(NULL)", element.subclass);
        EXPECT_EQ(each.place, element.place);
    }
}

// ---- Rates

// A reaction with two rows of two components.
struct Rate : UnitNode {
    Rate() {
        Append({}, "NumberOfRows", FIValue::OfInt(2));
        Append({}, "NumberOfReactants", FIValue::OfInt(2));
        for (double number : {0.5, 1.5}) {
            Append({}, "PreFactor", FIValue::OfReal(number));
            Append({}, "ActivationEnergy", FIValue::OfReal(1000.0 * number));
        }
        for (int number : {11, 12, 21, 22}) Append({}, "Exponents", FIValue::OfInt(number));
        const NamePath list = {"KineticBasis", "ReactantList"};
        Append(list, "NumberOfReactants", FIValue::OfInt(2));
        for (const char* name : {"CO", "H2O"}) {
            Append(list, "Reactant", FIValue()).Add("ComponentName").Set("value", name);
            Append(list, "Comment", FIValue());
        }
    }
    // What the lists of rows and of components set for these.
    Variables Order(const FIValue& row, const FIValue& components, int component) {
        Ref<FIIterator> it = Iterate();
        it->SetVarText("row", row);
        it->SetVarText("ncomp", components);
        EXPECT_EQ(component, Call(CTReactionComponentOrder, it.Get(), nullptr, component));
        EXPECT_EQ("Case.Unit", Place(*it));
        Variables all = VariablesOf(*it);
        all.erase("row");
        all.erase("ncomp");
        return all;
    }
};

TEST(RateRow, has_the_numbers_of_its_place_among_those_of_a_key) {
    Rate rate;
    EXPECT_EQ(2, CountOf(rate, CTReactionDenominatorTerm));
    const Element first = ElementOf(rate, CTReactionDenominatorTerm, 0);
    EXPECT_EQ((Variables{{"A", "REAL 0.5"}, {"E", "REAL 500"}, {"row", "INT 0"}}), first.variables);
    EXPECT_EQ("Case.Unit", first.place);
    EXPECT_EQ((Variables{{"A", "REAL 1.5"}, {"E", "REAL 1500"}, {"row", "INT 1"}}),
              ElementOf(rate, CTReactionDenominatorTerm, 1).variables);
}

TEST(RateRow, without_a_number_of_its_own_keeps_that_of_the_row_before) {
    Rate rate;
    rate.node.RemoveChild("ActivationEnergy");
    Ref<FIIterator> it = rate.Iterate();
    Call(CTReactionDenominatorTerm, it.Get(), nullptr, 1);
    EXPECT_EQ((Variables{{"A", "REAL 1.5"}, {"row", "INT 1"}}), VariablesOf(*it));
    Call(CTReactionDenominatorTerm, it.Get(), nullptr, 2);
    EXPECT_EQ((Variables{{"A", "REAL 1.5"}, {"row", "INT 2"}}), VariablesOf(*it));
}

TEST(RateOrder, exponents_of_all_rows_are_one_list) {
    Rate rate;
    Ref<FIIterator> it = rate.Iterate();
    ASSERT_EQ(2, Call(CTReactionComponentOrder, it.Get(), nullptr, kCountIndex));
    EXPECT_EQ("INT 2", Variable(*it, "ncomp"));
    const char* const exponents[2][2] = {{"INT 11", "INT 12"}, {"INT 21", "INT 22"}};
    for (int row = 0; row < 2; ++row) {
        Call(CTReactionDenominatorTerm, it.Get(), nullptr, row);
        for (int component = 0; component < 2; ++component) {
            Call(CTReactionComponentOrder, it.Get(), nullptr, component);
            EXPECT_EQ(exponents[row][component], Variable(*it, "exponent"));
            EXPECT_EQ(component == 0 ? "CO" : "H2O", Variable(*it, "component"));
            EXPECT_EQ("Case.Unit", Place(*it));
        }
    }
}

TEST(RateOrder, is_told_as_far_as_its_numbers_go) {
    Rate rate;
    const FIValue one = FIValue::OfInt(1);
    const FIValue two = FIValue::OfInt(2);
    const Variables component = {{"component", "H2O"}};
    EXPECT_EQ((Variables{{"exponent", "INT 22"}, {"component", "H2O"}}), rate.Order(one, two, 1));
    EXPECT_EQ((Variables{{"exponent", "INT 12"}, {"component", "H2O"}}),
              rate.Order(FIValue(), two, 1));
    EXPECT_EQ(component, rate.Order(two, two, 1)) << "no third row";
    EXPECT_EQ(Variables(), rate.Order(two, two, 2)) << "no third component";
    const FIValue largest = FIValue::OfInt(std::numeric_limits<int>::max());
    EXPECT_EQ(component, rate.Order(largest, two, 1)) << "no such row";
    // 3 * 1431655765 + 1 is 2^32, which 32 bits take for 0.
    EXPECT_EQ(component, rate.Order(FIValue::OfInt(1431655765), FIValue::OfInt(3), 1));
    EXPECT_EQ(component, rate.Order(FIValue::OfInt(-1), two, 1)) << "no such row";
}

TEST(RateOrder, needs_a_row_for_an_exponent_but_not_for_a_component) {
    Rate rate;
    Ref<FIIterator> it = rate.Iterate();
    Call(CTReactionComponentOrder, it.Get(), nullptr, 0);
    EXPECT_EQ((Variables{{"component", "CO"}}), VariablesOf(*it));
    it->SetVarText("ncomp", FIValue::OfInt(2));
    Call(CTReactionComponentOrder, it.Get(), nullptr, 1);
    EXPECT_EQ((Variables{{"component", "H2O"}, {"ncomp", "INT 2"}}), VariablesOf(*it));
}

TEST(RateOrder, a_component_is_told_where_the_reactants_are) {
    struct Case {
        const char* what;
        void (*change)(ScriptNode& list);
    };
    const Case cases[] = {
        {"no number", [](ScriptNode& list) { list.RemoveChild("NumberOfReactants"); }},
        {"too small a number",
         [](ScriptNode& list) { Below(list, {"NumberOfReactants"}).Set("value", 1); }},
        {"no reactants", [](ScriptNode& list) { list.RemoveChild("Reactant"); }},
        {"a reactant too few", [](ScriptNode& list) { list.children.resize(3); }},
        {"a reactant without a component",
         [](ScriptNode& list) { list.children[3]->RemoveChild("ComponentName"); }},
    };
    for (const Case& each : cases) {
        Rate rate;
        each.change(Below(rate.node, {"KineticBasis", "ReactantList"}));
        EXPECT_EQ((Variables{{"exponent", "INT 12"}}),
                  rate.Order(FIValue::OfInt(0), FIValue::OfInt(2), 1))
            << each.what;
    }
}

}  // namespace

}  // namespace fixtop
