// SPDX-License-Identifier: Apache-2.0
// Reactions of sets, and what reactors tell of theirs.

#include <gtest/gtest.h>

#include <limits>

#include "fixtop/semantic_functions.h"
#include "semantic/unit_node.h"

namespace fixtop {

namespace {

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
        Call(CTActiveReactions, it.Get(), nullptr, 1);
        EXPECT_EQ(OfSet("Shift", true, "(NULL)"), VariablesOf(*it)) << each.what;
        EXPECT_EQ("Case.Unit", Place(*it)) << each.what;
    }
}

TEST(ReactionSet, an_id_that_is_a_number_becomes_its_text) {
    ReactionSet set({"Reforming"}, {"Combustion"}, {});
    Below(set.node, {"ActiveReactionList", "ActiveReaction"}).Set("value", 7);
    Below(set.node, {"InactiveReactionList", "InactiveReaction"}).Set("value", 2.5);
    EXPECT_EQ(OfSet("7", true, "(NULL)"), ElementOf(set, CTActiveReactions, 0).variables);
    EXPECT_EQ(OfSet("2.5", false, "(NULL)"), ElementOf(set, CTActiveReactions, 1).variables);
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
    Call(CTLocalReaction, it.Get(), nullptr, 0);
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
    Call(CTLocalReaction, it.Get(), nullptr, 1);
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
