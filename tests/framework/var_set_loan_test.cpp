// SPDX-License-Identifier: Apache-2.0
// Variables that an attribute cursor gives its owner, and what is left when they or the cursor go.

#include <gtest/gtest.h>

#include "framework/iterator/shown_scope.h"
#include "framework/nodes/attr_map.h"
#include "framework/nodes/empties.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

// Shows the display unit of whoever reads it.
class UnitEntry final : public AttrMapEntry<UnitEntry> {
 public:
    static std::span<const AttrRow<UnitEntry>> AttributeRows() {
        static constexpr AttrRow<UnitEntry> rows[] = {{"uom", &ReadUnit}};
        return rows;
    }
    void GetName(FIValue& out) override { out = Text("unit"); }
    FIContext* GetContext() override { return EmptyContext(); }

 private:
    static void ReadUnit(UnitEntry& owner, FIValue& out) {
        out = Text("own");
        if (FIVarSet* vars = owner.GetVarSet()) vars->GetUnit(FIValue(), out);
    }
};

using Cursor = Ref<FIAttributeCursorBase>;

class LentVariables : public ::testing::Test {
 protected:
    Cursor MakeCursor() { return Cursor::Adopt(entry_->MakeCursor()); }
    Ref<FIIterator> Reader(const char* unit) {
        Ref<FIIterator> reader = Ref<FIIterator>::Adopt(it_->Copy());
        FIValue old;
        reader->GetVarSet()->SetUnit(FIValue(), Text(unit), old);
        return reader;
    }
    static std::string Value(FIAttributeCursorBase& cursor) {
        FIValue value;
        cursor.GetValue(value);
        return value.ToText();
    }

    ScriptNode node_{"node"};
    Ref<FIIterator> it_ = node_.Iterate();
    Ref<UnitEntry> entry_ = Ref<UnitEntry>::Share(new UnitEntry);
};

TEST_F(LentVariables, are_taken_back_when_the_iterator_that_lent_them_goes) {
    const Cursor cursor = MakeCursor();
    Ref<FIIterator> reader = Reader("F");
    cursor->SetVarSet(reader->GetVarSet());
    EXPECT_EQ("F", Value(*cursor));
    reader.Reset();
    EXPECT_EQ(nullptr, cursor->GetVarSet());
    EXPECT_EQ("own", Value(*cursor));
    EXPECT_EQ("own", Value(*MakeCursor()));
}

TEST_F(LentVariables, are_taken_back_when_the_cursor_goes) {
    const Ref<FIIterator> reader = Reader("F");
    Cursor cursor = MakeCursor();
    cursor->SetVarSet(reader->GetVarSet());
    cursor.Reset();
    EXPECT_EQ(nullptr, entry_->GetVarSet());
}

TEST_F(LentVariables, stay_while_a_cursor_is_left_that_was_given_them) {
    Ref<FIIterator> reader = Reader("F");
    Cursor cursor = MakeCursor();
    cursor->SetVarSet(reader->GetVarSet());
    Cursor clone = Cursor::Adopt(cursor->Clone(true));
    Cursor other = MakeCursor();
    other->SetVarSet(reader->GetVarSet());
    cursor.Reset();
    EXPECT_EQ("F", Value(*clone));
    clone.Reset();
    EXPECT_EQ("F", Value(*other));
    reader.Reset();
    EXPECT_EQ("own", Value(*other));
}

TEST_F(LentVariables, of_somebody_else_are_left_alone) {
    Ref<FIIterator> first = Reader("F");
    const Ref<FIIterator> second = Reader("K");
    Cursor cursor = MakeCursor();
    Cursor other = MakeCursor();
    cursor->SetVarSet(first->GetVarSet());
    other->SetVarSet(second->GetVarSet());
    EXPECT_EQ("K", Value(*cursor)) << "the owner has one set";
    first.Reset();
    EXPECT_EQ("K", Value(*cursor));
    cursor.Reset();
    EXPECT_EQ("K", Value(*other));
    other->SetVarSet(nullptr);
    EXPECT_EQ("own", Value(*other));
}

TEST_F(LentVariables, are_lent_on_when_the_cursor_is_given_others) {
    Ref<FIIterator> first = Reader("F");
    Ref<FIIterator> second = Reader("K");
    const Cursor cursor = MakeCursor();
    cursor->SetVarSet(first->GetVarSet());
    cursor->SetVarSet(second->GetVarSet());
    first.Reset();
    EXPECT_EQ("K", Value(*cursor));
    second.Reset();
    EXPECT_EQ("own", Value(*cursor));
}

// Many sets and cursors that go in all orders: what is left is never one that has gone.
TEST_F(LentVariables, may_go_in_any_order) {
    for (int order = 0; order < 120; ++order) {
        std::vector<Ref<FIIterator>> readers{Reader("F"), Reader("K")};
        std::vector<Cursor> cursors;
        for (int i = 0; i < 3; ++i) {
            cursors.push_back(MakeCursor());
            cursors.back()->SetVarSet(readers[i % 2]->GetVarSet());
        }
        int rest = order;
        for (int left = 5; left > 0; --left) {
            const int chosen = rest % left;
            rest /= left;
            const auto cursors_left = static_cast<int>(cursors.size());
            if (chosen < cursors_left) {
                cursors.erase(cursors.begin() + chosen);
            } else {
                readers.erase(readers.begin() + (chosen - cursors_left));
            }
            FIVarSet* const shown = entry_->GetVarSet();
            bool is_there = shown == nullptr;
            for (const auto& reader : readers) is_there |= reader->GetVarSet() == shown;
            EXPECT_TRUE(is_there) << "order " << order << ", " << left << " left";
        }
        EXPECT_EQ(nullptr, entry_->GetVarSet()) << "order " << order;
    }
}

TEST_F(LentVariables, that_go_in_the_middle_of_a_call_are_not_shown_again) {
    const Cursor cursor = MakeCursor();
    Ref<FIIterator> reader = Reader("F");
    cursor->SetVarSet(reader->GetVarSet());
    {
        const ShownScope shown(Ref<FIEntry>::Share(entry_.Get()), it_->GetVarSet());
        EXPECT_EQ(it_->GetVarSet(), entry_->GetVarSet());
        reader.Reset();
        EXPECT_EQ(it_->GetVarSet(), entry_->GetVarSet()) << "as long as the call lasts";
    }
    EXPECT_EQ("own", Value(*cursor));
}

TEST_F(LentVariables, of_a_call_give_way_to_those_before) {
    const Cursor cursor = MakeCursor();
    const Ref<FIIterator> reader = Reader("F");
    cursor->SetVarSet(reader->GetVarSet());
    { const ShownScope shown(Ref<FIEntry>::Share(entry_.Get()), it_->GetVarSet()); }
    EXPECT_EQ("F", Value(*cursor));
}

}  // namespace

}  // namespace fixtop
