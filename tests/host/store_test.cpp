// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "framework/iterator/iterator.h"
#include "host/adapter.h"
#include "host/levels/model_nodes.h"
#include "host/solver/solve_wait.h"
#include "host/variables/variable_node.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"

namespace fixtop {

namespace {

class Stores : public testing::Test {
 protected:
    Stores() : feed(host.main.Add("Feed", host.stream)) { feed.stream = &stream; }
    ~Stores() override { TheAdapter().SetWaitsForSolve(true); }

    Ref<FIEntry> Node(scripted::Row& row) {
        auto context = Ref<HVarsContext>::Share(
            new HVarsContext(feed.VariableNames(), &feed, {&options, true, nullptr}, nullptr));
        return Ref<FIEntry>::Share(context->MakeEntry(row));
    }
    scripted::Row& Composition(int number, int type) {
        host::VarDescription::Facts facts;
        facts.kind = host::kPartReal;
        facts.number = number;
        facts.type = type;
        return feed.AddRow(":C.[]", "Fraction", host::kReal, facts);
    }

    scripted::Host host;
    scripted::Stream stream;
    scripted::Plain& feed;
    HovexOptions options{&host.simulation_case};
};

TEST_F(Stores, numbers_are_stored_solved_and_read_back) {
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0, 1));
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfReal(50.0)));
    EXPECT_EQ(50.0, feed.reals[":D.1"]);
    EXPECT_EQ("task ", host.solver.calls);
    EXPECT_EQ(1, host.turns);
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfInt(7)));
    EXPECT_EQ(7.0, feed.reals[":D.1"]);
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue("8.5")));
    EXPECT_EQ(8.5, feed.reals[":D.1"]);
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue()));
    EXPECT_EQ(-32767.0, feed.reals[":D.1"]);
    EXPECT_EQ("(NULL)", Read(*entry, "value"));
}

TEST_F(Stores, numbers_are_taken_in_the_shown_unit) {
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0, 1));
    TestVarSet vars;
    entry->SetVarSet(&vars);
    Write(*entry, "uom", FIValue("K"));
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfReal(373.15)));
    EXPECT_DOUBLE_EQ(100.0, feed.reals[":D.1"]);
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue()));
    EXPECT_EQ(-32767.0, feed.reals[":D.1"]) << "unset is not converted";
}

TEST_F(Stores, refusals_are_told) {
    auto& choice = feed.AddRow(":E.1", "choice", host::kEnumeration);
    choice.enumeration =
        std::make_unique<scripted::Enumeration>(std::vector<std::string>{"Off", "On"});
    feed.reals[":E.1"] = 0.0;
    auto& number = feed.AddReal(":D.1", "T", 1.0);
    auto& text = feed.AddText(":T.1", "t", "before");
    feed.refuse_stores = true;
    EXPECT_EQ("Value not stored", Write(*Node(number), "value", FIValue::OfReal(2.0)));
    EXPECT_EQ("Value not stored", Write(*Node(choice), "value", FIValue("On")));
    EXPECT_EQ("Value not stored", Write(*Node(text), "value", FIValue("after")));
    EXPECT_EQ("(NULL)", Write(*Node(number), "value", FIValue::OfReal(1.0))) << "the same value";
    feed.refuse_stores = false;
    EXPECT_EQ("(NULL)", Write(*Node(choice), "value", FIValue("On")));
    EXPECT_EQ(1.0, feed.reals[":E.1"]);
    EXPECT_EQ("(NULL)", Write(*Node(text), "value", FIValue("after")));
    EXPECT_EQ("after", feed.texts[":T.1"]);
    EXPECT_EQ("(NULL)", Write(*Node(text), "value", FIValue::OfReal(2.5)));
    EXPECT_EQ("2.5", feed.texts[":T.1"]);
    const std::size_t stores = feed.stores.size();
    EXPECT_EQ("Value not stored", Write(*Node(choice), "value", FIValue("Maybe")));
    EXPECT_EQ("Cannot set attachment",
              Write(*Node(feed.AddAttachment(":A.1", "a", &feed)), "value", FIValue("x")));
    EXPECT_EQ("Cannot set message",
              Write(*Node(feed.AddRow(":M.1", "m", host::kMessage)), "value", FIValue("x")));
    EXPECT_EQ(stores, feed.stores.size()) << "nothing reached the host";
}

TEST_F(Stores, a_value_that_the_solve_changes_is_not_stored) {
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0));
    host.on_turn = [&](int) { feed.reals[":D.1"] = 99.0; };
    EXPECT_EQ("Value not stored", Write(*entry, "value", FIValue::OfReal(2.0)));
}

// ---- The wait ----

TEST_F(Stores, waits_while_the_solver_works) {
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0));
    host.solver.on_task = [&] { host.solver.pending = true; };
    host.on_turn = [&](int turn) {
        if (turn == 2) {
            host.solver.pending = false;
            host.solver.solving = true;
        }
        if (turn == 4) {
            host.solver.solving = false;
            host.solver.busy = true;
        }
        if (turn == 6) host.solver.busy = false;
    };
    Write(*entry, "value", FIValue::OfReal(2.0));
    EXPECT_EQ(6, host.turns);
}

TEST_F(Stores, a_solve_that_does_not_begin_is_waited_for_three_turns) {
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0));
    host.solver.pending = true;
    Write(*entry, "value", FIValue::OfReal(2.0));
    EXPECT_EQ(3, host.turns);
    host.turns = 0;
    host.on_turn = [&](int) { host.solver.pending = false; };
    Write(*entry, "value", FIValue::OfReal(3.0));
    EXPECT_EQ(2, host.turns);
    host.turns = 0;
    host.solver.pending = host.solver.solving = true;
    host.on_turn = [&](int) { host.solver.solving = false; };
    Write(*entry, "value", FIValue::OfReal(4.0));
    EXPECT_EQ(1, host.turns) << "it has begun, though another is queued";
}

TEST_F(Stores, a_solver_that_never_ends_is_left_through_stop) {
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0));
    host.solver.busy = true;
    host.on_turn = [&](int turn) { host.solver.stop = turn == 50; };
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfReal(2.0)));
    EXPECT_EQ(50, host.turns);
}

TEST_F(Stores, without_waiting_a_store_returns_at_once) {
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0));
    TheAdapter().SetWaitsForSolve(false);
    host.solver.busy = true;
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfReal(2.0)));
    EXPECT_EQ(0, host.turns);
    EXPECT_EQ("task ", host.solver.calls);
    host.on_turn = [&](int) { host.solver.busy = false; };
    SolveAndWait(*CaseLife::Of(&host.simulation_case), true);
    EXPECT_EQ(1, host.turns) << "array elements wait always";
}

TEST_F(Stores, without_waiting_the_value_may_be_read_back_too_early) {
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0));
    // A host that takes a number over in its next turn.
    feed.refuse_stores = true;
    host.on_turn = [&](int) { feed.reals[":D.1"] = 2.0; };
    TheAdapter().SetWaitsForSolve(false);
    EXPECT_EQ("Value not stored", Write(*entry, "value", FIValue::OfReal(2.0)));
    TheAdapter().SetWaitsForSolve(true);
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfReal(2.0)));
}

TEST_F(Stores, without_a_solver_stores_are_read_back_alone) {
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0));
    host.main.solver = nullptr;
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfReal(2.0)));
    EXPECT_EQ(0, host.turns);
}

// ---- Composition and batches ----

TEST_F(Stores, composition_goes_to_the_edited_variable_and_starts_nothing) {
    struct Case {
        int number;
        const char* stored;
    };
    for (const Case& each : {Case{501, ":C.1351"}, Case{502, ":C.1351"}, Case{530, ":C.1353"}}) {
        auto& row = Composition(each.number, 9);
        row.text = host::Text(":C");
        auto entry = Node(row);
        feed.stores.clear();
        EXPECT_FALSE(entry->CanHold()) << each.number;
        feed.refuse_stores = true;
        EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfReal(0.5))) << "not read back";
        EXPECT_EQ(std::vector<std::string>({each.stored}), feed.stores) << each.number;
    }
    EXPECT_EQ("", host.solver.calls);
}

TEST_F(Stores, the_variable_part_tells_which_composition_is_edited) {
    const std::pair<int, const char*> cases[] = {
        {522, ":C/:D.1352"}, {530, ":C/:D.1353"}, {501, ":C/:D.1351"}};
    for (const auto& [number, stored] : cases) {
        host::VarDescription::Facts inner;
        inner.moniker = host::Text(":D.[]");
        inner.kind = host::kPartReal;
        inner.number = number;
        inner.type = 9;
        host::VarDescription::Facts outer;
        outer.moniker = host::Text(":C");
        outer.number = 501;
        auto& row = feed.AddRow(":C", "Fraction", host::kReal);
        row.description = host::VarDescription(outer, host::VarDescription(inner));
        feed.stores.clear();
        EXPECT_EQ("(NULL)", Write(*Node(row), "value", FIValue()));
        EXPECT_EQ(std::vector<std::string>({stored}), feed.stores) << number;
        EXPECT_EQ(-32767.0, feed.reals[stored]) << "unset";
    }
    EXPECT_EQ("", host.solver.calls);
}

TEST_F(Stores, only_streams_numbers_and_types_of_compositions_count) {
    struct Case {
        int number;
        int type;
        bool composition;
    };
    const Case cases[] = {{501, 9, true},   {502, 14, true}, {530, 11, true}, {501, 8, false},
                          {501, 15, false}, {522, 9, false}, {503, 9, false}};
    for (const Case& each : cases) {
        EXPECT_EQ(!each.composition, Node(Composition(each.number, each.type))->CanHold())
            << each.number << " type " << each.type;
    }
    feed.type = &host.unit_op;
    EXPECT_TRUE(Node(Composition(501, 9))->CanHold());
}

TEST_F(Stores, an_open_batch_neither_solves_nor_waits) {
    auto& choice = feed.AddRow(":E.1", "choice", host::kEnumeration);
    choice.enumeration =
        std::make_unique<scripted::Enumeration>(std::vector<std::string>{"Off", "On"});
    const std::pair<Ref<FIEntry>, FIValue> stores[] = {
        {Node(feed.AddReal(":D.1", "T", 1.0)), FIValue::OfReal(2.0)},
        {Node(choice), FIValue("On")},
        {Node(feed.AddText(":T.1", "t", "before")), FIValue("after")}};
    for (const auto& [entry, value] : stores) {
        EXPECT_EQ("(NULL)", Write(*entry, "value", value));
        EXPECT_EQ("task ", host.solver.calls) << Shown(value);
        host.solver.calls.clear();
    }
    host.turns = 0;
    TheAdapter().EditBatch().Add({&feed, {}});
    for (const auto& [entry, value] : stores) {
        EXPECT_EQ("(NULL)", Write(*entry, "value", value));
        EXPECT_EQ("", host.solver.calls) << Shown(value);
    }
    EXPECT_EQ(0, host.turns);
    EXPECT_TRUE(TheAdapter().EditBatch().Remove({&feed, {}}));
    EXPECT_FALSE(TheAdapter().EditBatch().Remove({&feed, {}}));
}

TEST_F(Stores, a_write_through_an_iterator_holds_the_stream) {
    auto& row = Composition(501, 9);
    row.text = host::Text(":C");
    auto context = Ref<HAandCContext>::Share(new HAandCContext(nullptr, {}));
    auto model = Child(*context, "appModel");
    auto it = Ref<FIIteratorBase>::Adopt(new FIIterator(model.Get(), false));
    ASSERT_TRUE(it->SeekPath(FIValue("FlowSheetObjects.Streams.Feed.Fraction")));
    FIValue out;
    it->SetAttribute(FIValue("value"), FIValue::OfReal(0.5), 0, out);
    EXPECT_EQ("(NULL)", Shown(out));
    EXPECT_EQ("begin session end ", stream.calls);
    EXPECT_EQ("task ", host.solver.calls);
    EXPECT_FALSE(TheAdapter().EditBatch().IsOpen());
}

// ---- Callbacks in the middle of a store ----

TEST_F(Stores, a_node_may_be_given_up_in_the_middle_of_its_store) {
    auto& row = feed.AddReal(":D.1", "T", 1.0, 1);
    auto entry = Node(row);
    FIEntry* bare = entry.Get();
    host.on_turn = [&](int) { entry.Reset(); };
    EXPECT_EQ("(NULL)", Write(*bare, "value", FIValue::OfReal(2.0)));
    EXPECT_EQ(2.0, feed.reals[":D.1"]);
    EXPECT_FALSE(entry);
}

TEST_F(Stores, an_object_may_leave_its_list_in_the_middle_of_a_store) {
    feed.AddReal(":D.1", "T", 1.0);
    auto context = Ref<HAandCContext>::Share(new HAandCContext(nullptr, {}));
    auto model = Child(*context, "appModel");
    auto it = Ref<FIIteratorBase>::Adopt(new FIIterator(model.Get(), false));
    ASSERT_TRUE(it->SeekPath(FIValue("FlowSheetObjects.Streams.Feed.T")));
    context.Reset();
    model.Reset();
    feed.in_store = [&](const std::string&) {
        host.main.objects.Remove(static_cast<host::Viewable*>(&feed));
        it->Up();
        it->Up();
        it->DownFirst();
    };
    auto node = Ref<FIIteratorBase>::Adopt(it->Copy());
    FIValue out;
    node->SetAttribute(FIValue("value"), FIValue::OfReal(2.0), 0, out);
    EXPECT_EQ("(NULL)", Shown(out));
    FIValue value;
    node->GetAttribute(FIValue("value"), value);
    EXPECT_EQ("REAL 2", Shown(value)) << "it stays readable";
}

TEST_F(Stores, a_store_inside_a_store_is_done) {
    auto outer = Node(feed.AddReal(":D.1", "T", 1.0));
    auto inner = Node(feed.AddReal(":D.2", "P", 1.0));
    bool done = false;
    host.on_turn = [&](int) {
        if (done) return;
        done = true;
        EXPECT_EQ("(NULL)", Write(*inner, "value", FIValue::OfReal(5.0)));
    };
    EXPECT_EQ("(NULL)", Write(*outer, "value", FIValue::OfReal(2.0)));
    EXPECT_EQ(5.0, feed.reals[":D.2"]);
    EXPECT_EQ("task task ", host.solver.calls);
}

}  // namespace

}  // namespace fixtop
