// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>

#include "framework/iterator/iterator.h"
#include "host/adapter.h"
#include "host/levels/model_nodes.h"
#include "host/solver/solve_wait.h"
#include "host/variables/dimension_node.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"

namespace fixtop {

namespace {

// A stream "Feed" with the arrays "Fraction", a composition, and "Table".
class ArrayStores : public testing::Test {
 protected:
    ArrayStores() : feed(host.main.Add("Feed", host.stream)) {
        feed.stream = &stream;
        AddArray(feed, ":C.[]", "Fraction", 501, 9);
        AddArray(feed, ":D.1.[]", "Table", 1, 0);
        auto context = Ref<HAandCContext>::Share(new HAandCContext(nullptr, {}));
        model = Child(*context, "appModel");
    }
    ~ArrayStores() override { TheAdapter().SetWaitsForSolve(true); }

    void AddArray(scripted::Plain& object, const char* moniker, const char* name, int number,
                  int type) {
        host::VarDescription::Facts facts;
        facts.kind = host::kPartReal;
        facts.number = number;
        facts.type = type;
        auto& row = object.AddRow(moniker, name, host::kReal, facts);
        row.offsets = {host::VarDescription(":", 0)};
        row.offset_descriptions = row.offsets.data();
        row.offset_description_count = 1;
        object.dimensions[moniker].count = 1;
        object.dimensions[moniker].high[0] = 4;
    }
    Ref<FIIteratorBase> Walk(const char* path) {
        auto it = Ref<FIIteratorBase>::Adopt(new FIIterator(model.Get(), false));
        EXPECT_TRUE(it->SeekPath(FIValue(path))) << path;
        return it;
    }
    static std::string Store(FIIteratorBase& it, const FIValue& value) {
        FIValue out("left over");
        it.SetAttribute(FIValue("value"), value, 0, out);
        return Shown(out);
    }
    Ref<FIEntry> Element(scripted::Plain& object, const char* name, int index) {
        auto list = Ref<HVarsContext>::Share(
            new HVarsContext(object.VariableNames(), &object, {&options, true, nullptr}, nullptr));
        auto array = Child(*list, name);
        auto cursor = ChildrenOf(*array);
        EXPECT_TRUE(cursor->Seek(kFromFirst, index));
        return Ref<FIEntry>::Adopt(cursor->GetEntry());
    }

    scripted::Host host;
    scripted::Stream stream;
    scripted::Plain& feed;
    HovexOptions options{&host.simulation_case};
    Ref<FIEntry> model;
};

constexpr char kTable[] = "FlowSheetObjects.Streams.Feed.Table.Elem2";
constexpr char kFraction[] = "FlowSheetObjects.Streams.Feed.Fraction.Elem2";

TEST_F(ArrayStores, an_element_of_a_stream_is_held_without_an_edit_session) {
    EXPECT_EQ("(NULL)", Store(*Walk(kTable), FIValue::OfReal(7.0)));
    EXPECT_EQ(7.0, feed.reals[":D.1.2"]);
    EXPECT_EQ("begin end ", stream.calls);
    EXPECT_EQ("task ", host.solver.calls) << "once, when the hold is given back";
    EXPECT_FALSE(TheAdapter().EditBatch().IsOpen());
}

TEST_F(ArrayStores, the_hold_waits_where_stores_do_not) {
    TheAdapter().SetWaitsForSolve(false);
    EXPECT_EQ("(NULL)", Store(*Walk(kTable), FIValue::OfReal(7.0)));
    EXPECT_EQ(1, host.turns);
}

TEST_F(ArrayStores, elements_of_other_objects_solve_by_themselves) {
    auto& unit = host.main.Add("V-1", host.unit_op);
    AddArray(unit, ":D.1.[]", "Table", 1, 0);
    AddArray(unit, ":C.[]", "Fraction", 501, 9);
    EXPECT_EQ("(NULL)",
              Store(*Walk("FlowSheetObjects.UnitOps.V-1.Table.Elem0"), FIValue::OfReal(7.0)));
    EXPECT_EQ(7.0, unit.reals[":D.1.0"]);
    EXPECT_EQ("task ", host.solver.calls);
    EXPECT_EQ("", stream.calls);
    auto element = Element(unit, "Table", 1);
    EXPECT_TRUE(element->CanHold());
    EXPECT_FALSE(TheAdapter().EditBatch().IsOpen());
    element->BeginBatch();
    EXPECT_EQ("task ", host.solver.calls) << "nothing was held";
    EXPECT_TRUE(Element(unit, "Fraction", 1)->CanHold()) << "no composition outside of streams";
}

TEST_F(ArrayStores, a_fraction_is_held_by_its_stream) {
    feed.refuse_stores = true;
    EXPECT_EQ("(NULL)", Store(*Walk(kFraction), FIValue::OfReal(0.5))) << "not read back";
    EXPECT_EQ(std::vector<std::string>({":C.1351"}), feed.stores);
    EXPECT_EQ("begin session end ", stream.calls);
    EXPECT_EQ("task ", host.solver.calls);
    auto element = Element(feed, "Fraction", 1);
    EXPECT_FALSE(element->CanHold());
    element->BeginBatch();
    EXPECT_EQ("begin session end ", stream.calls);
    EXPECT_EQ("task ", host.solver.calls);
}

TEST_F(ArrayStores, the_host_is_told_the_form_and_the_element_of_a_fraction) {
    struct Case {
        int number;
        const char* stored;
    };
    for (const Case& each : {Case{501, ":X.1351"}, Case{502, ":X.1351"}, Case{530, ":X.1353"}}) {
        scripted::Plain& other = host.main.Add("Other", host.stream);
        AddArray(other, ":X.[]", "Fraction", each.number, 9);
        EXPECT_EQ("(NULL)", Write(*Element(other, "Fraction", 3), "value", FIValue::OfReal(0.5)));
        EXPECT_EQ(std::vector<std::string>({each.stored}), other.stores) << each.number;
    }
    EXPECT_EQ("", host.solver.calls) << "the element's own store starts nothing";
}

TEST_F(ArrayStores, a_batch_of_fractions_is_normalised_and_solved_once) {
    auto stream_node = Child(*Child(*Child(*model, "FlowSheetObjects"), "Streams"), "Feed");
    ASSERT_TRUE(stream_node);
    EXPECT_TRUE(stream_node->CanHold());
    EXPECT_EQ("begin session ", stream.calls);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ("(NULL)",
                  Write(*Element(feed, "Fraction", i), "value", FIValue::OfReal(0.1 * i)));
    }
    EXPECT_EQ(5u, feed.stores.size());
    EXPECT_EQ("begin session ", stream.calls) << "normalisation is put off";
    EXPECT_EQ("", host.solver.calls);
    stream_node->BeginBatch();
    EXPECT_EQ("begin session end ", stream.calls);
    EXPECT_EQ("task ", host.solver.calls);
    EXPECT_FALSE(TheAdapter().EditBatch().IsOpen());
}

// A write through an iterator is a batch of its own, and gives the hold back when it is done.
TEST_F(ArrayStores, each_write_through_an_iterator_is_normalised_and_solved) {
    for (const char* name : {"Elem0", "Elem1"}) {
        const std::string path = std::string("FlowSheetObjects.Streams.Feed.Fraction.") + name;
        EXPECT_EQ("(NULL)", Store(*Walk(path.c_str()), FIValue::OfReal(0.5)));
    }
    EXPECT_EQ("begin session end begin session end ", stream.calls);
    EXPECT_EQ("task task ", host.solver.calls);
}

TEST_F(ArrayStores, a_stream_is_begun_once_and_ended_by_the_last) {
    auto one = Element(feed, "Table", 0);
    auto another = Element(feed, "Table", 1);
    EXPECT_TRUE(one->CanHold());
    EXPECT_TRUE(another->CanHold());
    EXPECT_EQ("begin ", stream.calls);
    EXPECT_EQ("(NULL)", Write(*one, "value", FIValue::OfReal(1.0)));
    EXPECT_EQ("", host.solver.calls) << "the batch is open";
    auto& product = host.main.Add("Product", host.stream);
    TheAdapter().EditBatch().Add({&product, {}});
    one->BeginBatch();
    EXPECT_EQ("begin ", stream.calls) << "another stream is still held";
    EXPECT_EQ("", host.solver.calls);
    TheAdapter().EditBatch().Remove({&product, {}});
    another->BeginBatch();
    EXPECT_EQ("begin end ", stream.calls);
    EXPECT_EQ("task ", host.solver.calls);
}

TEST_F(ArrayStores, a_stream_without_composition_editing_is_held_as_well) {
    feed.stream = nullptr;
    EXPECT_EQ("(NULL)", Store(*Walk(kTable), FIValue::OfReal(7.0)));
    EXPECT_EQ("task ", host.solver.calls);
}

TEST_F(ArrayStores, the_stream_that_finally_holds_the_element_counts) {
    auto& unit = host.main.Add("V-1", host.unit_op);
    AddArray(unit, ":D.1.[]", "Table", 1, 0);
    unit.resolved[":D.1.[]"] = &feed;
    EXPECT_EQ("(NULL)",
              Store(*Walk("FlowSheetObjects.UnitOps.V-1.Table.Elem0"), FIValue::OfReal(7.0)));
    EXPECT_EQ(7.0, feed.reals[":D.1.0"]);
    EXPECT_EQ("begin end ", stream.calls);
}

TEST_F(ArrayStores, refusals_are_told) {
    feed.refuse_stores = true;
    EXPECT_EQ("Value not stored", Store(*Walk(kTable), FIValue::OfReal(7.0)));
    EXPECT_EQ("begin end ", stream.calls);
    feed.refuse_stores = false;
    EXPECT_EQ("(NULL)", Store(*Walk(kTable), FIValue()));
    EXPECT_EQ(-32767.0, feed.reals[":D.1.2"]);
    for (auto& row : feed.row_storage) row->value_kind = host::kAttachment;
    EXPECT_EQ("Cannot set attachment", Store(*Walk(kTable), FIValue("x")));
    for (auto& row : feed.row_storage) row->value_kind = host::kMessage;
    EXPECT_EQ("Cannot set message", Store(*Walk(kTable), FIValue("x")));
}

TEST_F(ArrayStores, an_element_may_be_given_up_in_the_middle_of_its_store) {
    auto it = Walk(kTable);
    FIIteratorBase* bare = it.Get();
    host.on_turn = [&](int) {
        bare->Up();
        bare->Up();
        bare->Up();
    };
    EXPECT_EQ("(NULL)", Store(*bare, FIValue::OfReal(2.0)));
    auto element = Element(feed, "Table", 1);
    FIEntry* entry = element.Get();
    host.on_turn = [&](int) { element.Reset(); };
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfReal(3.0)));
    EXPECT_FALSE(element);
    auto held = Element(feed, "Table", 1);
    FIEntry* holder = held.Get();
    EXPECT_TRUE(holder->CanHold());
    host.on_turn = [&](int) { held.Reset(); };
    holder->BeginBatch();
    EXPECT_FALSE(held);
    EXPECT_FALSE(TheAdapter().EditBatch().IsOpen());
}

// Steps at random through objects and arrays whose bounds change, with stores and deletions between
// them: every step answers, and the hold is always given back.
TEST_F(ArrayStores, a_random_walk_over_a_changing_case_stays_whole) {
    auto& unit = host.main.Add("V-1", host.unit_op);
    AddArray(unit, ":D.1.[]", "Table", 1, 0);
    auto& attached = unit.AddAttachment(":A.1.[]", "Links", nullptr);
    attached.offsets = {host::VarDescription(":", 0)};
    attached.offset_descriptions = attached.offsets.data();
    attached.offset_description_count = 1;
    unit.dimensions[":A.1.[]"] = unit.dimensions[":D.1.[]"];
    unit.attachments[":A.1.1"] = &feed;
    unit.attachments[":A.1.2"] = &unit;
    std::mt19937 random(20260);
    const auto one_of = [&](int count) { return static_cast<int>(random() % count); };
    auto it = Ref<FIIteratorBase>::Adopt(new FIIterator(model.Get(), false));
    int elements = 0;
    int stored = 0;
    for (int step = 0; step < 20000; ++step) {
        switch (one_of(8)) {
            case 0:
            case 1:
                it->Down(one_of(4));
                break;
            case 2:
                it->Next();
                break;
            case 3:
                it->Prev();
                break;
            case 4:
                if (one_of(2) || it->Depth() > 12) it->Up();
                break;
            case 5: {
                FIValue name;
                FIValue out;
                it->GetName(name);
                const bool is_element = name.IsText() && name.ToText().starts_with("Elem");
                elements += is_element;
                it->SetAttribute(FIValue("value"), FIValue::OfInt(step), 0, out);
                stored += is_element && out.IsNull();
                EXPECT_FALSE(TheAdapter().EditBatch().IsOpen()) << "step " << step;
                break;
            }
            case 6: {
                auto& bounds = one_of(2) ? unit.dimensions[":A.1.[]"] : feed.dimensions[":D.1.[]"];
                bounds.high[0] = one_of(6) - 1;
                break;
            }
            default:
                if (one_of(20) == 0) {
                    host.main.objects.Remove(static_cast<host::Viewable*>(&feed));
                } else if (one_of(20) == 0) {
                    host.main.objects.Remove(static_cast<host::Viewable*>(&feed));
                    host.main.objects.Add(static_cast<host::Viewable*>(&feed));
                }
                break;
        }
        FIValue path;
        it->GetPath(path);
        for (const char* attribute : {"value", "status", "has_children", "type", "moniker"}) {
            FIValue value;
            it->GetAttribute(FIValue(attribute), value);
        }
        auto copy = Ref<FIIteratorBase>::Adopt(it->Copy());
        ASSERT_TRUE(copy->Equal(*it)) << path.ToText() << " at step " << step;
    }
    EXPECT_LT(100, elements);
    EXPECT_LT(50, stored);
}

}  // namespace

}  // namespace fixtop
