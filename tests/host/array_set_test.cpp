// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "framework/nodes/empties.h"
#include "host/specifications/array_set.h"
#include "host/specifications/array_set_row.h"
#include "host/specifications/spec_node.h"
#include "support/cursor_harness.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"

namespace fixtop {

namespace {

class ArraySet : public testing::Test {
 protected:
    ArraySet() : product(host.main.Add("Product", host.stream)) {
        element.tag = host::Text("Table");
        element.array_set = &block;
        auto context =
            Ref<HSpecContext>::Share(new HSpecContext(&info, &product, {&options, true, nullptr}));
        parent = Ref<FIEntry>::Share(context->MakeEntry(element));
    }

    void AddNumbers(const char* name, std::initializer_list<double> numbers) {
        host::GrowableArray<double> column;
        for (double number : numbers) column.Append(number);
        block.source_names.Append(host::Text(name));
        block.source_numbers.Append(column);
    }
    void AddObjects(std::initializer_list<host::Viewable*> objects) {
        host::GrowableArray<host::Viewable*> column;
        for (host::Viewable* object : objects) column.Append(object);
        block.source_names.Append(host::Text("Attachment"));
        block.source_objects.Append(column);
    }
    Ref<HArraySetContext> Rows() {
        return Ref<HArraySetContext>::Share(new HArraySetContext(&block, parent.Get()));
    }
    Ref<FIEntry> Row(int row) { return Ref<FIEntry>::Share(Rows()->MakeEntry(row)); }
    // "name=value name=value" of a row.
    std::string Values(int row) {
        std::string values;
        Ref<FIEntry> entry = Row(row);
        auto cursor = ChildrenOf(*entry);
        for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
            auto cell = Ref<FIEntry>::Adopt(cursor->GetEntry());
            values += (values.empty() ? "" : " ") + NameOf(*cell) + "=" + Read(*cell, "value");
        }
        return values;
    }

    scripted::Host host;
    scripted::Plain& product;
    HovexOptions options{&host.simulation_case};
    scripted::SpecInfo info;
    host::CSpecElement element;
    host::ArraySetBlock block;
    Ref<FIEntry> parent;
};

// ---- Conversion ----

TEST_F(ArraySet, columns_are_turned_into_texts_in_the_order_of_their_names) {
    auto& feed = host.main.Add("Feed", host.stream);
    AddNumbers("Order", {1.5, -2.0});
    AddObjects({&feed, nullptr});
    AddNumbers("Rank", {3.0, 4.0});
    AddObjects({&product, &feed});
    EXPECT_EQ(2, Rows()->Count());
    EXPECT_EQ("Order=1.500000 Attachment=Feed Rank=3.000000 Attachment=Product", Values(0));
    EXPECT_EQ("Order=-2.000000 Attachment= Rank=4.000000 Attachment=Feed", Values(1))
        << "no object is an empty element";
    EXPECT_EQ(4, block.names.Size());
    EXPECT_EQ(4, block.columns.Size());
    EXPECT_EQ(0, block.source_numbers.Size());
    EXPECT_EQ(0, block.source_objects.Size());
}

TEST_F(ArraySet, a_block_is_converted_once) {
    AddNumbers("Order", {1.0, 2.0});
    auto first = Rows();
    auto second = Rows();
    EXPECT_EQ(1, block.names.Size());
    EXPECT_EQ(1, block.columns.Size());
    EXPECT_EQ(2, second->Count());
    EXPECT_EQ(1, second->ColumnCount());
}

TEST_F(ArraySet, a_block_that_is_filled_again_gains_columns) {
    AddNumbers("Order", {1.0, 2.0});
    Rows();
    block.source_names.Clear();
    AddNumbers("More", {5.0, 6.0});
    EXPECT_EQ(2, Rows()->ColumnCount());
    EXPECT_EQ("Order=2.000000 More=6.000000", Values(1));
}

TEST_F(ArraySet, the_shortest_column_counts_the_rows) {
    AddNumbers("Long", {1, 2, 3});
    AddNumbers("Short", {1});
    AddNumbers("Middle", {1, 2});
    EXPECT_EQ(1, Rows()->Count());
    EXPECT_EQ(Names({"Set0"}), ChildNames(*Rows()));
    block = host::ArraySetBlock();
    AddNumbers("Empty", {});
    AddNumbers("Full", {1, 2});
    EXPECT_EQ(0, Rows()->Count());
}

TEST_F(ArraySet, an_empty_block_shows_no_rows) {
    EXPECT_EQ(0, Rows()->Count());
    EXPECT_EQ(Names(), ChildNames(*Rows()));
    EXPECT_EQ("INT 0", Read(*Row(0), "has_children"));
}

TEST_F(ArraySet, a_name_without_a_column_leaves_an_empty_one) {
    AddNumbers("Order", {1, 2});
    block.source_names.Append(host::Text("Missing"));
    EXPECT_EQ(2, Rows()->ColumnCount());
    EXPECT_EQ(0, Rows()->Count());
    EXPECT_EQ("Order=1.000000 Missing=(NULL)", Values(0)) << "only what is there is shown";
}

TEST_F(ArraySet, long_columns_grow_and_are_freed) {
    host::GrowableArray<double> column;
    for (int i = 0; i < 105; ++i) column.Append(i);
    block.source_names.Append(host::Text("Many"));
    block.source_numbers.Append(column);
    EXPECT_EQ(105, Rows()->Count());
    EXPECT_EQ("Many=104.000000", Values(104));
}

// ---- Rows ----

TEST_F(ArraySet, cursor_over_rows_is_a_cursor) {
    AddNumbers("Order", {1, 2, 3});
    auto context = Rows();
    host::ArraySetBlock nothing;
    auto empty = Ref<HArraySetContext>::Share(new HArraySetContext(&nothing, parent.Get()));
    CursorFamily family =
        HostFamily("HArraySetCursorBase", *context, {"Set0", "Set1", "Set2"}, empty.Get());
    // A seek from the end starts where the cursor stands.
    family.to_end = SeekOutcome{true, 0};
    family.to_last = SeekOutcome{false, 0};
    // No number behind the first three characters is the number 0.
    family.missing = SeekOutcome{true, 0};
    CheckCursorFamily(family);
    EXPECT_EQ(EmptyCursor(), context->MakeCursor(kKeyCursor));
}

TEST_F(ArraySet, rows_are_found_by_the_digits_of_their_name) {
    AddNumbers("Order", {1, 2, 3});
    struct Case {
        const char* name;
        bool found;
        const char* key;
    };
    const Case cases[] = {
        {"Set2", true, "Set2"},  {"Row1", true, "Set1"},    {"Set", true, "Set0"},
        {"S", true, "Set0"},     {"", true, "Set0"},        {"Set01x", true, "Set1"},
        {"Setx", true, "Set0"},  {"Set3", false, "(NULL)"}, {"Set99999999999", false, "(NULL)"},
        {"Set-1", false, "Set0"}};
    for (const Case& each : cases) {
        for (int origin : {kFromFirst, kFromPresent, kFromEnd}) {
            auto cursor = ChildrenOf(*Rows());
            cursor->Seek(kFromFirst, 2);
            EXPECT_EQ(each.found, cursor->SeekName(origin, each.name)) << each.name;
            EXPECT_EQ(each.key, cursor_harness::KeyOf(*cursor)) << each.name;
        }
    }
}

TEST_F(ArraySet, seeks_from_the_end_start_where_the_cursor_stands) {
    for (const char* name : {"A", "B", "C"}) AddNumbers(name, {1, 2, 3});
    struct Case {
        Ref<FICursorBase> cursor;
        Names keys;
    };
    const Case cases[] = {{ChildrenOf(*Rows()), {"Set0", "Set1", "Set2"}},
                          {ChildrenOf(*Row(0)), {"A", "B", "C"}}};
    for (const auto& [cursor, keys] : cases) {
        SCOPED_TRACE(keys[0]);
        EXPECT_TRUE(cursor->Seek(kFromFirst, 2));
        EXPECT_TRUE(cursor->Seek(kFromEnd, 0));
        EXPECT_EQ(keys[2], cursor_harness::KeyOf(*cursor));
        EXPECT_TRUE(cursor->Seek(kFromEnd, -1));
        EXPECT_EQ(keys[1], cursor_harness::KeyOf(*cursor));
        EXPECT_FALSE(cursor->Seek(kFromEnd, 2));
        EXPECT_TRUE(cursor->AtEnd());
    }
}

TEST_F(ArraySet, cursors_over_different_tables_do_not_compare) {
    AddNumbers("Order", {1, 2});
    host::ArraySetBlock other = block;
    host::CSpecElement other_element;
    other_element.tag = host::Text("Other");
    other_element.array_set = &other;
    auto list =
        Ref<HSpecContext>::Share(new HSpecContext(&info, &product, {&options, true, nullptr}));
    auto other_parent = Ref<FIEntry>::Share(list->MakeEntry(other_element));
    auto of_other = Ref<HArraySetContext>::Share(new HArraySetContext(&other, other_parent.Get()));
    EXPECT_EQ(kNotComparable, ChildrenOf(*Rows())->Compare(*ChildrenOf(*of_other)));
    EXPECT_EQ(kNotComparable, ChildrenOf(*Row(0))->Compare(*ChildrenOf(*Row(1))));
    EXPECT_EQ(0, ChildrenOf(*Row(1))->Compare(*ChildrenOf(*Row(1))));
}

// The host fills a table anew for everyone who asks.
TEST_F(ArraySet, cursors_over_one_table_filled_twice_compare) {
    AddNumbers("Order", {1, 2});
    host::ArraySetBlock again = block;
    host::CSpecElement same_element = element;
    same_element.array_set = &again;
    scripted::SpecInfo filled_again;
    auto list = Ref<HSpecContext>::Share(
        new HSpecContext(&filled_again, &product, {&options, true, nullptr}));
    auto same_parent = Ref<FIEntry>::Share(list->MakeEntry(same_element));
    auto rows = Ref<HArraySetContext>::Share(new HArraySetContext(&again, same_parent.Get()));
    EXPECT_EQ(0, ChildrenOf(*Rows())->Compare(*ChildrenOf(*rows)));
    auto row = Ref<FIEntry>::Share(rows->MakeEntry(1));
    EXPECT_EQ(0, ChildrenOf(*Row(1))->Compare(*ChildrenOf(*row)));
    EXPECT_EQ(kNotComparable, ChildrenOf(*Row(0))->Compare(*ChildrenOf(*row)));
}

TEST_F(ArraySet, a_row_reads_as_told) {
    AddNumbers("Order", {1, 2});
    Ref<FIEntry> row = Row(1);
    EXPECT_EQ(Names({"id", "can_enter", "browser_name", "type", "display_name", "isleaf",
                     "has_children"}),
              ShownRows(*row));
    EXPECT_EQ("Set1", NameOf(*row));
    for (const char* name : {"id", "browser_name", "display_name"}) {
        EXPECT_EQ("Set1", Read(*row, name)) << name;
    }
    EXPECT_EQ("ArraySetRow", Read(*row, "type"));
    EXPECT_EQ("INT 0", Read(*row, "can_enter"));
    EXPECT_EQ("INT 0", Read(*row, "isleaf"));
    EXPECT_EQ("INT 1", Read(*row, "has_children"));
    EXPECT_TRUE(row->IsContainer());
    EXPECT_EQ(Names({"Order"}), ChildNames(*row));
}

TEST_F(ArraySet, tables_have_30_rows) {
    const Names rows = StandardRowsAnd({"attachments", "skipcorrelations", "skipattachments"});
    EXPECT_EQ(rows, AllRows<HArraySetEntry>());
    EXPECT_EQ(rows, AllRows<HArraySetElemEntry>());
    EXPECT_EQ(30u, rows.size());
}

TEST_F(ArraySet, container_rows_of_a_row_are_hidden_and_know_their_parent) {
    AddNumbers("Order", {1});
    Ref<FIEntry> row = Row(0);
    int asked = 0;
    for (const auto& each : HArraySetEntry::AttributeRows()) {
        const std::string name = each.name;
        if (name.rfind("container", 0) != 0) continue;
        ++asked;
        EXPECT_EQ("(NULL)", Read(*row, each.name));
        auto& own = static_cast<HArraySetEntry&>(*row);
        EXPECT_FALSE(each.IsAvailable(own)) << name;
        FIValue value;
        each.Read(own, value);
        EXPECT_EQ(Read(*parent, each.name), Shown(value)) << name;
        EXPECT_NE("(NULL)", Shown(value)) << name;
    }
    EXPECT_EQ(3, asked);
}

// ---- Elements ----

TEST_F(ArraySet, cursor_over_elements_is_a_cursor) {
    for (const char* name : {"Order", "Rank", "Rate"}) AddNumbers(name, {1, 2});
    Ref<FIEntry> row = Row(1);
    auto context = Ref<FIContext>::Adopt(row->GetContext());
    host::ArraySetBlock nothing;
    auto none = Ref<HArraySetContext>::Share(new HArraySetContext(&nothing, parent.Get()));
    auto empty = Ref<FIContext>::Adopt(Ref<FIEntry>::Share(none->MakeEntry(0))->GetContext());
    CursorFamily family =
        HostFamily("HArraySetElemCursorBase", *context, {"Order", "Rank", "Rate"}, empty.Get());
    family.to_end = SeekOutcome{true, 0};
    family.to_last = SeekOutcome{false, 0};
    CheckCursorFamily(family);
    EXPECT_EQ(EmptyCursor(), context->MakeCursor(kKeyCursor));
}

TEST_F(ArraySet, elements_are_found_by_column_name) {
    for (const char* name : {"A", "B", "A"}) AddNumbers(name, {1});
    auto cursor = ChildrenOf(*Row(0));
    auto first = ChildrenOf(*Row(0));
    EXPECT_TRUE(cursor->Seek(kFromFirst, 1));
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "A"));
    EXPECT_EQ(1, cursor->Compare(*first));
    EXPECT_TRUE(cursor->SeekName(kFromFirst, "A"));
    EXPECT_EQ(0, cursor->Compare(*first));
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "a"));
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_FALSE(cursor->SeekName(kFromFirst, nullptr));
}

TEST_F(ArraySet, an_element_reads_as_told) {
    AddNumbers("Order", {1.25, 2});
    Ref<FIEntry> cell = Child(*Row(0), "Order");
    ASSERT_TRUE(cell);
    EXPECT_EQ(Names({"id", "value", "can_enter", "browser_name", "type", "display_name", "isleaf",
                     "has_children"}),
              ShownRows(*cell));
    EXPECT_EQ("Order", NameOf(*cell));
    for (const char* name : {"id", "browser_name", "display_name"}) {
        EXPECT_EQ("Order", Read(*cell, name)) << name;
    }
    EXPECT_EQ("1.250000", Read(*cell, "value")) << "the host's text of the number";
    EXPECT_EQ("ArraySetElement", Read(*cell, "type"));
    EXPECT_EQ("INT 0", Read(*cell, "can_enter"));
    EXPECT_EQ("INT 0", Read(*cell, "has_children"));
    EXPECT_EQ("INT 1", Read(*cell, "isleaf"));
    EXPECT_FALSE(cell->IsContainer());
    EXPECT_EQ(EmptyContext(), cell->GetContext());
}

// ---- Stores ----

TEST_F(ArraySet, only_the_switches_are_stored) {
    AddNumbers("Order", {1});
    for (Ref<FIEntry> entry : {Row(0), Child(*Row(0), "Order")}) {
        for (const char* name : {"value", "uom", "skipattachments"}) {
            EXPECT_EQ("Not supported", Write(*entry, name, FIValue::OfInt(1))) << name;
        }
        EXPECT_EQ("(NULL)", Write(*entry, "attachments", FIValue::OfInt(0)));
        TestVarSet vars;
        entry->SetVarSet(&vars);
        for (const char* name : {"skipcorrelations", "skipattachments"}) {
            EXPECT_EQ("(NULL)", Write(*entry, name, FIValue::OfInt(1)));
            FIValue stored;
            EXPECT_TRUE(vars.GetVar(FIValue(name), stored));
            EXPECT_EQ("INT 1", Shown(stored));
        }
    }
}

TEST_F(ArraySet, nodes_keep_alive_what_they_stand_on) {
    AddNumbers("Order", {7});
    Ref<FIEntry> cell = Child(*Row(0), "Order");
    parent.Reset();
    EXPECT_EQ("7.000000", Read(*cell, "value"));
}

}  // namespace

}  // namespace fixtop
