// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>

#include "framework/iterator/iterator.h"
#include "framework/nodes/empties.h"
#include "host/levels/model_nodes.h"
#include "host/published/published_variables.h"
#include "support/cursor_harness.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"

namespace fixtop {

namespace {

class Published : public testing::Test {
 protected:
    // Publishes A, B and C, whatever bounds the manager states for three.
    void PublishThree(int low = 0) {
        host.manager.SetPublishedRange(low, low + 2);
        const char* const names[] = {"A", "B", "C"};
        for (int i = 0; i < 3; ++i) host.manager.Publish(i, names[i], 100.0 + i);
    }
    Ref<FIContext> List() {
        auto models = Ref<HAandCContext>::Share(new HAandCContext(nullptr, {}));
        return Ref<FIContext>::Adopt(Child(*models, "Published Variables")->GetContext());
    }

    scripted::Host host;
};

TEST_F(Published, cursor_is_a_cursor) {
    PublishThree();
    auto list = List();
    scripted::Manager bare;
    auto empty = Ref<FIContext>::Share(new HPublishContext(bare, nullptr, {}));
    CursorFamily family = HostFamily("HPublishCursorBase", *list, {"A", "B", "C"}, empty.Get());
    family.off_first = family.before_first = SeekOutcome{true, 0};
    family.missing = SeekOutcome{false, 0};
    CheckCursorFamily(family);
    EXPECT_EQ(EmptyCursor(), list->MakeCursor(kKeyCursor));
    auto other = Ref<FIContext>::Share(new HPublishContext(bare, nullptr, {}));
    EXPECT_EQ(kNotComparable, ChildrenOf(*list)->Compare(*ChildrenOf(*other)));
    auto cursor = ChildrenOf(*list);
    EXPECT_FALSE(cursor->Seek(kFromPresent, 2147483647));
    EXPECT_FALSE(cursor->Seek(kFromEnd, 2147483647));
    EXPECT_TRUE(cursor->Seek(kFromPresent, -1)) << "clamped to the end";
    EXPECT_EQ("C", cursor_harness::KeyOf(*cursor));
}

TEST_F(Published, numbers_begin_at_0_whatever_the_bounds) {
    EXPECT_EQ(Names(), ChildNames(*List())) << "no dimensions";
    PublishThree(5);
    EXPECT_EQ(Names({"A", "B", "C"}), ChildNames(*List()));
    host.manager.SetPublishedRange(5, 6);
    EXPECT_EQ(Names({"A", "B"}), ChildNames(*List()));
    for (const int high : {4, -20}) {
        host.manager.SetPublishedRange(5, high);
        EXPECT_EQ(Names(), ChildNames(*List()));
        EXPECT_TRUE(ChildrenOf(*List())->AtEnd());
        EXPECT_FALSE(ChildrenOf(*List())->SeekName(kFromFirst, "A"));
    }
}

TEST_F(Published, a_number_without_a_variable_is_empty) {
    PublishThree();
    scripted::Plain other;
    other.name = host::Text("B");
    for (host::Viewable* found :
         {static_cast<host::Viewable*>(nullptr), static_cast<host::Viewable*>(&other)}) {
        host.manager.resolved["RTIVariable.500.1"] = found;
        auto cursor = ChildrenOf(*List());
        EXPECT_TRUE(cursor->Seek(kFromFirst, 1));
        EXPECT_EQ("(NULL)", cursor_harness::KeyOf(*cursor));
        EXPECT_EQ(EmptyEntry(), Ref<FIEntry>::Adopt(cursor->GetEntry()).Get());
        EXPECT_FALSE(cursor->SeekName(kFromFirst, "B"));
        EXPECT_TRUE(cursor->SeekName(kFromFirst, "C"));
    }
}

TEST_F(Published, bounds_of_any_size_give_a_count) {
    PublishThree();
    struct {
        int low, high, last;
    } rows[] = {{INT_MIN, INT_MAX, INT_MAX - 1},
                {0, INT_MAX, INT_MAX - 1},
                {INT_MAX, INT_MIN, -1},
                {INT_MIN, INT_MIN, 0}};
    for (const auto& row : rows) {
        host.manager.SetPublishedRange(row.low, row.high);
        auto cursor = ChildrenOf(*List());
        EXPECT_EQ(row.last >= 0, cursor->Seek(kFromFirst, std::max(row.last, 0))) << row.low;
        EXPECT_FALSE(cursor->Seek(kFromPresent, 1)) << row.low;
    }
}

TEST_F(Published, a_search_goes_round) {
    PublishThree();
    host.manager.Publish(3, "A", 1.0);
    host.manager.SetPublishedRange(0, 3);
    struct Case {
        int start;  // 4 is the end
        int origin;
        const char* name;
        bool found;
        int stands_at;
    };
    const Case cases[] = {
        {2, kFromFirst, "A", true, 0},    {2, kFromEnd, "A", true, 0},
        {2, kFromPresent, "A", true, 3},  {3, kFromPresent, "A", true, 0},
        {0, kFromPresent, "A", true, 3},  {2, kFromPresent, "B", true, 1},
        {1, kFromPresent, "B", false, 1}, {2, kFromPresent, "D", false, 2},
        {2, kFromFirst, "D", false, 0},   {2, kFromEnd, "D", false, 0},
        {4, kFromPresent, "A", true, 0},  {4, kFromPresent, "D", false, 0},
        {0, kFromFirst, "a", false, 0},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(testing::Message()
                     << each.name << " from " << each.origin << " at " << each.start);
        auto cursor = ChildrenOf(*List());
        cursor->Seek(kFromFirst, each.start);
        EXPECT_EQ(each.found, cursor->SeekName(each.origin, each.name));
        auto expected = ChildrenOf(*List());
        expected->Seek(kFromFirst, each.stands_at);
        EXPECT_EQ(0, cursor->Compare(*expected));
    }
    // The only one is found from itself: the search comes round to it.
    host.manager.SetPublishedRange(0, 0);
    EXPECT_TRUE(ChildrenOf(*List())->SeekName(kFromPresent, "A"));
}

TEST_F(Published, table_has_the_standard_rows) {
    EXPECT_EQ(StandardRowsAnd({}), AllRows<HPublishEntry>());
}

TEST_F(Published, variables_show_their_rows) {
    PublishThree();
    auto plain = Child(*List(), "B");
    ASSERT_TRUE(plain);
    EXPECT_EQ(SplitNames("id value type display_name isleaf has_children"), ShownRows(*plain));
    EXPECT_EQ("B", NameOf(*plain));
    EXPECT_EQ("B", Read(*plain, "id"));
    EXPECT_EQ("B", Read(*plain, "display_name"));
    EXPECT_EQ("REAL 101", Read(*plain, "value"));
    EXPECT_EQ("Real", Read(*plain, "type"));
    EXPECT_EQ("INT 1", Read(*plain, "isleaf"));
    EXPECT_EQ("INT 0", Read(*plain, "has_children"));
    EXPECT_EQ(EmptyContext(), plain->GetContext());
    host.manager.published[1]->value = -32767.0;
    EXPECT_EQ("(NULL)", Read(*plain, "value"));
    host.manager.published[1]->unit = host::Text("F");
    auto with_unit = Child(*List(), "B");
    EXPECT_EQ(SplitNames("id value dimension uom type display_name isleaf has_children"),
              ShownRows(*with_unit));
    EXPECT_EQ("Temperature", Read(*with_unit, "dimension"));
    EXPECT_EQ("C", Read(*with_unit, "uom")) << "the default unit of the type";
}

TEST_F(Published, values_go_through_the_unit_of_the_reader) {
    PublishThree();
    scripted::Published& variable = *host.manager.published[0];
    variable.unit = host::Text("C");
    auto entry = Child(*List(), "A");
    EXPECT_EQ("Not supported", Write(*entry, "uom", FIValue("F"))) << "nobody reads";
    TestVarSet vars;
    entry->SetVarSet(&vars);
    EXPECT_EQ("Invalid unit for variable type", Write(*entry, "uom", FIValue("bar")));
    EXPECT_EQ("C", Read(*entry, "uom"));
    EXPECT_EQ("(NULL)", Write(*entry, "uom", FIValue("F")));
    EXPECT_EQ("F", Read(*entry, "uom"));
    EXPECT_EQ("REAL 212", Read(*entry, "value"));
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfReal(32.0)));
    EXPECT_NEAR(0.0, variable.value, 1e-12);
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue()));
    EXPECT_EQ(-32767.0, variable.value) << "unset is not converted";
}

TEST_F(Published, stores_are_not_read_back_and_start_no_solve) {
    PublishThree();
    auto entry = Child(*List(), "A");
    host.manager.published[0]->refuse_stores = true;
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue::OfReal(5.0)));
    EXPECT_EQ(100.0, host.manager.published[0]->value);
    host.manager.published[0]->refuse_stores = false;
    EXPECT_EQ("(NULL)", Write(*entry, "value", FIValue("6.5")));
    EXPECT_EQ(6.5, host.manager.published[0]->value);
    EXPECT_EQ("", host.solver.calls);
    for (const char* name : {"status", "attachments", "skipattachments", ""}) {
        EXPECT_EQ("Not supported", Write(*entry, name, FIValue::OfInt(1))) << name;
    }
}

TEST_F(Published, variables_are_read_by_path) {
    PublishThree();
    auto models = Ref<HAandCContext>::Share(new HAandCContext(nullptr, {}));
    auto model = Child(*models, "Published Variables");
    auto it = Ref<FIIterator>::Adopt(new FIIterator(model.Get(), false));
    ASSERT_TRUE(it->SeekPath(FIValue("C")));
    FIValue out;
    it->GetAttribute(FIValue("value"), out);
    EXPECT_EQ("REAL 102", Shown(out));
    it->SetAttribute(FIValue("value"), FIValue::OfReal(7.0), 0, out);
    EXPECT_EQ("(NULL)", Shown(out));
    EXPECT_EQ(7.0, host.manager.published[2]->value);
}

}  // namespace

}  // namespace fixtop
