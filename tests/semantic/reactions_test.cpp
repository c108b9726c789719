// SPDX-License-Identifier: Apache-2.0
// Reactions of the package, of sets and of reactors.

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
        EXPECT_EQ(component, CTReactionComponentOrder(it.Get(), nullptr, component));
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
    CTReactionDenominatorTerm(it.Get(), nullptr, 1);
    EXPECT_EQ((Variables{{"A", "REAL 1.5"}, {"row", "INT 1"}}), VariablesOf(*it));
    CTReactionDenominatorTerm(it.Get(), nullptr, 2);
    EXPECT_EQ((Variables{{"A", "REAL 1.5"}, {"row", "INT 2"}}), VariablesOf(*it));
}

TEST(RateOrder, exponents_of_all_rows_are_one_list) {
    Rate rate;
    Ref<FIIterator> it = rate.Iterate();
    ASSERT_EQ(2, CTReactionComponentOrder(it.Get(), nullptr, kCountIndex));
    EXPECT_EQ("INT 2", Variable(*it, "ncomp"));
    const char* const exponents[2][2] = {{"INT 11", "INT 12"}, {"INT 21", "INT 22"}};
    for (int row = 0; row < 2; ++row) {
        CTReactionDenominatorTerm(it.Get(), nullptr, row);
        for (int component = 0; component < 2; ++component) {
            CTReactionComponentOrder(it.Get(), nullptr, component);
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
    CTReactionComponentOrder(it.Get(), nullptr, 0);
    EXPECT_EQ((Variables{{"component", "CO"}}), VariablesOf(*it));
    it->SetVarText("ncomp", FIValue::OfInt(2));
    CTReactionComponentOrder(it.Get(), nullptr, 1);
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

// ---- Sets

// A set with these reactions and ranks.
struct ReactionSet : UnitNode {
    ReactionSet(const NamePath& active, const NamePath& inactive,
                const std::vector<FIValue>& ranks) {
        AddHalf("ActiveReactionList", "NumberOfActiveRxns", "ActiveReaction", active);
        AddHalf("InactiveReactionList", "NumberOfInactiveRxns", "InactiveReaction", inactive);
        for (const FIValue& rank : ranks) {
            Append({"ReactionRanks"}, "ReactionRankSet", FIValue())
                .Add("ReactionRank")
                .Set("value", rank);
        }
    }
    void AddHalf(const char* list, const char* count, const char* reaction, const NamePath& names) {
        Append({list}, count, FIValue::OfInt(static_cast<int>(names.size())));
        for (const std::string& name : names) Append({list}, reaction, Text(name));
    }
};

Variables OfSet(const char* id, bool active, const char* rank) {
    return {{"RxnID", id}, {"RxnActive", active ? "INT 1" : "INT 0"}, {"RxnRank", rank}};
}

TEST(ReactionSet, lists_the_active_reactions_before_the_others) {
    ReactionSet set({"Reforming", "Shift"}, {"Combustion", "Coking"},
                    {FIValue::OfInt(4), FIValue::OfReal(3.5), FIValue("2"), FIValue::OfInt(1)});
    EXPECT_EQ(4, CountOf(set, CTActiveReactions));
    const Variables expected[] = {
        OfSet("Reforming", true, "REAL 4"), OfSet("Shift", true, "REAL 3.5"),
        OfSet("Combustion", false, "REAL 2"), OfSet("Coking", false, "REAL 1")};
    for (int index = 0; index < 4; ++index) {
        const Element element = ElementOf(set, CTActiveReactions, index);
        EXPECT_EQ(expected[index], element.variables);
        EXPECT_EQ("Case.Unit", element.place);
        EXPECT_EQ(1, element.it->Depth());
    }
}

TEST(ReactionSet, may_have_one_half_only) {
    ReactionSet active({"Reforming"}, {}, {});
    active.node.RemoveChild("InactiveReactionList");
    EXPECT_EQ(1, CountOf(active, CTActiveReactions));
    EXPECT_EQ(OfSet("Reforming", true, "(NULL)"),
              ElementOf(active, CTActiveReactions, 0).variables);

    ReactionSet inactive({}, {"Combustion", "Coking"}, {});
    inactive.node.RemoveChild("ActiveReactionList");
    EXPECT_EQ(2, CountOf(inactive, CTActiveReactions));
    EXPECT_EQ(OfSet("Coking", false, "(NULL)"),
              ElementOf(inactive, CTActiveReactions, 1).variables);
}

TEST(ReactionSet, a_reaction_that_is_counted_but_not_there_is_not_told) {
    ReactionSet set({"Reforming"}, {"Combustion"}, {});
    Below(set.node, {"InactiveReactionList", "NumberOfInactiveRxns"}).Set("value", 2);
    EXPECT_EQ(3, CountOf(set, CTActiveReactions));
    EXPECT_EQ((Variables{{"RxnRank", "(NULL)"}}), ElementOf(set, CTActiveReactions, 2).variables);
    Below(set.node, {"InactiveReactionList"}).RemoveChild("InactiveReaction");
    EXPECT_EQ((Variables{{"RxnRank", "(NULL)"}}), ElementOf(set, CTActiveReactions, 1).variables);
}

TEST(ReactionSet, numbers_of_no_sense_do_no_harm) {
    const int least = std::numeric_limits<int>::min();
    ReactionSet set({"Reforming"}, {"Combustion"}, {});
    Below(set.node, {"ActiveReactionList", "NumberOfActiveRxns"}).Set("value", least);
    Below(set.node, {"InactiveReactionList", "NumberOfInactiveRxns"}).Set("value", -1);
    // -2147483648 - 1 + 2^32
    EXPECT_EQ(2147483647, CountOf(set, CTActiveReactions));
    EXPECT_EQ(OfSet("Combustion", false, "(NULL)"), ElementOf(set, CTActiveReactions, 0).variables);
}

TEST(ReactionRank, is_cleared_where_there_is_none) {
    struct Case {
        const char* what;
        void (*change)(ScriptNode& set);
    };
    const Case cases[] = {
        {"no ranks", [](ScriptNode& set) { set.RemoveChild("ReactionRanks"); }},
        {"no rank sets",
         [](ScriptNode& set) { Below(set, {"ReactionRanks"}).RemoveChild("ReactionRankSet"); }},
        {"too few", [](ScriptNode& set) { Below(set, {"ReactionRanks"}).children.resize(1); }},
        {"no rank",
         [](ScriptNode& set) {
             Below(set, {"ReactionRanks"}).children[1]->RemoveChild("ReactionRank");
         }},
        {"NULL rank",
         [](ScriptNode& set) {
             Below(*Below(set, {"ReactionRanks"}).children[1], {"ReactionRank"})
                 .Set("value", FIValue());
         }},
    };
    for (const Case& each : cases) {
        ReactionSet set({"Reforming", "Shift"}, {}, {FIValue::OfInt(1), FIValue::OfInt(2)});
        each.change(set.node);
        Ref<FIIterator> it = set.Iterate();
        it->SetVarText("RxnRank", FIValue::OfReal(7.0));
        CTActiveReactions(it.Get(), nullptr, 1);
        EXPECT_EQ(OfSet("Shift", true, "(NULL)"), VariablesOf(*it)) << each.what;
        EXPECT_EQ("Case.Unit", Place(*it)) << each.what;
    }
}

// ---- Reactors

const NamePath kSets = {"Basis", "ReactionPackage", "ReactionSetList"};

// A reactor that uses a set; the sets are below the top.
struct Reactor : UnitNode {
    Reactor() { AddSets(root); }
    explicit Reactor(ScriptNode& top) { AddSets(top); }
    static void AddSet(ScriptNode& list, const char* name, const NamePath& reactions) {
        ScriptNode& set = list.Add("ReactionSet");
        set.Add("ReactionSetName").Set("value", name);
        for (const std::string& reaction : reactions) {
            Below(set, {"ActiveReactionList"}).Add("ActiveReaction").Set("value", reaction.c_str());
        }
    }
    void AddSets(ScriptNode& top) {
        Set({"Reaction Set"}, "Set-2");
        ScriptNode& list = Below(top, kSets);
        list.Add("NumberOfReactionSets").Set("value", 3);
        AddSet(list, "Set-1", {"Combustion"});
        list.Add("Comment");
        AddSet(list, "Set-2", {"Reforming", "Shift"});
        AddSet(list, "Set-2", {"Never", "Asked"});
    }
    ScriptNode& SetList() { return Below(root, kSets); }
    ScriptNode& SecondSet() { return *SetList().children[3]; }
};

Variables LocalReaction(int index, const char* name) {
    return {{"RxnElemNum", "Elem" + std::to_string(index)},
            {"RxnIndex", "INT " + std::to_string(index)},
            {"RxnName", name}};
}

Variables LocalReaction(int index) {
    Variables all = LocalReaction(index, "");
    all.erase("RxnName");
    return all;
}

TEST(LocalReaction, has_the_name_of_its_place_in_the_set_of_the_reactor) {
    Reactor reactor;
    const Element first = ElementOf(reactor, CTLocalReaction, 0);
    EXPECT_EQ(LocalReaction(0, "Reforming"), first.variables);
    EXPECT_EQ("Case.Unit", first.place);
    EXPECT_EQ(1, first.it->Depth());
    EXPECT_EQ(LocalReaction(1, "Shift"), ElementOf(reactor, CTLocalReaction, 1).variables);
    EXPECT_EQ(LocalReaction(2), ElementOf(reactor, CTLocalReaction, 2).variables)
        << "not of the next set of the name";
}

TEST(LocalReaction, is_counted_by_extents) {
    Reactor reactor;
    reactor.AddElements({"Est. Molar Extent"}, {FIValue(), FIValue()});
    EXPECT_EQ(2, CountOf(reactor, CTLocalReaction));
}

TEST(LocalReaction, is_found_from_deep_below_the_top) {
    Reactor reactor;
    ScriptNode& inner = Below(reactor.node, {"UnitOps", "R-100"});
    inner.Add("Reaction Set").Set("value", "Set-1");
    Ref<FIIterator> it = reactor.Iterate();
    ASSERT_TRUE(it->SeekPath(FIValue("UnitOps.\"R-100\"")));
    CTLocalReaction(it.Get(), nullptr, 0);
    EXPECT_EQ(LocalReaction(0, "Combustion"), VariablesOf(*it));
    EXPECT_EQ(3, it->Depth());
}

TEST(LocalReaction, is_found_in_a_raw_tree_below_the_top) {
    ScriptNode top("Top");
    ScriptNode& model = top.Add("appModel");
    Reactor reactor(model);
    model.Link(reactor.node);
    Ref<FIIterator> it = top.Iterate();
    ASSERT_TRUE(it->SeekPath(FIValue("appModel.Unit")));
    CTLocalReaction(it.Get(), nullptr, 1);
    EXPECT_EQ(LocalReaction(1, "Shift"), VariablesOf(*it));
    EXPECT_EQ("Top.appModel.Unit", Place(*it));
}

TEST(LocalReaction, has_no_name_without_its_set) {
    struct Case {
        const char* what;
        void (*change)(Reactor& reactor);
    };
    const Case cases[] = {
        {"no set", [](Reactor& r) { r.node.RemoveChild("Reaction Set"); }},
        {"NULL set", [](Reactor& r) { r.Set({"Reaction Set"}, FIValue()); }},
        {"another set", [](Reactor& r) { r.Set({"Reaction Set"}, "set-2"); }},
        {"no basis", [](Reactor& r) { r.root.RemoveChild("Basis"); }},
        {"no number of sets", [](Reactor& r) { r.SetList().RemoveChild("NumberOfReactionSets"); }},
        {"too small a number of sets",
         [](Reactor& r) { Below(r.SetList(), {"NumberOfReactionSets"}).Set("value", 1); }},
        {"no sets", [](Reactor& r) { r.SetList().RemoveChild("ReactionSet"); }},
        {"no active reactions",
         [](Reactor& r) { r.SecondSet().RemoveChild("ActiveReactionList"); }},
    };
    for (const Case& each : cases) {
        Reactor reactor;
        each.change(reactor);
        const Element element = ElementOf(reactor, CTLocalReaction, 1);
        EXPECT_EQ(LocalReaction(1), element.variables) << each.what;
        EXPECT_EQ("Case.Unit", element.place) << each.what;
    }
}

TEST(LocalReaction, passes_sets_without_a_name) {
    Reactor reactor;
    reactor.SetList().children[1]->RemoveChild("ReactionSetName");
    EXPECT_EQ("Shift", ElementOf(reactor, CTLocalReaction, 1).variables["RxnName"]);
}

TEST(LocalReaction, a_number_beyond_all_sets_ends_with_the_last) {
    Reactor reactor;
    reactor.Set({"Reaction Set"}, "none");
    Below(reactor.SetList(), {"NumberOfReactionSets"})
        .Set("value", std::numeric_limits<int>::max());
    EXPECT_EQ(LocalReaction(0), ElementOf(reactor, CTLocalReaction, 0).variables);
}

// The lists whose elements are components of the vessel.
TEST(VesselComponent, is_named_by_the_composition) {
    struct ListRow {
        ArrayFunction function;
        const char* element;
        const char* component;
    };
    const ListRow rows[] = {
        {CTReactantBalance, "BalanceElemNum", "CompName"},
        {CTGibbsFlowSpec, "GibbsFlowSpecElemNum", "GibbsFlowSpecComponentName"},
    };
    UnitNode reactor;
    reactor.AddElements({"Vessel Mole Frac"}, {FIValue::OfReal(0.25), FIValue::OfReal(0.75)});
    Below(reactor.node, {"Vessel Mole Frac", "Elem1"}).Set("id", "Methane");
    for (const ListRow& row : rows) {
        EXPECT_EQ((Variables{{row.element, "Elem0"}, {row.component, "(NULL)"}}),
                  ElementOf(reactor, row.function, 0).variables);
        const Element methane = ElementOf(reactor, row.function, 1);
        EXPECT_EQ((Variables{{row.element, "Elem1"}, {row.component, "Methane"}}),
                  methane.variables);
        EXPECT_EQ("Case.Unit", methane.place);
        EXPECT_EQ((Variables{{row.element, "Elem2"}}),
                  ElementOf(reactor, row.function, 2).variables);
    }
}

}  // namespace

}  // namespace fixtop
