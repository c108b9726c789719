// SPDX-License-Identifier: Apache-2.0
// The walks over attributes and over children.

#include <gtest/gtest.h>

#include <cstring>
#include <new>

#include "automation/attribute_iterator.h"
#include "automation/objects.h"
#include "automation/script_nodes.h"
#include "framework/nodes/attr_map.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/top_entry.h"

namespace fixtop {

namespace {

// A node with a table of three rows: "id", "type", "server".
class QsiAttributes : public testing::Test {
 protected:
    static Ref<FIIteratorBase> At(FIEntry& entry) {
        return Ref<FIIteratorBase>::Adopt(new FIIterator(&entry, false));
    }
    static std::string Name(IQSIAttributeIterator& it) {
        char* name = NoPointer<char>();
        EXPECT_EQ(kResultOk, it.GetName(&name));
        if (name == NoPointer<char>()) return "(untouched)";
        const std::string text = name;
        FreeAsClient(name);
        return text;
    }
    static HRESULT Next(IQSIAttributeIterator& it, std::int32_t count, std::int32_t expected) {
        std::int32_t moved = 99;
        const HRESULT result = it.Next(count, &moved);
        EXPECT_EQ(expected, moved);
        return result;
    }
    static bool AtEnd(IQSIAttributeIterator& it) {
        return TakeNumber<bool>([&](bool* out) { return it.AtEnd(out); });
    }

    Ref<FIEntry> top_ = Ref<FIEntry>::Share(new FITopEntry(EmptyContext(), nullptr, nullptr));
    Ref<IQSIAttributeIterator> rows_ =
        Ref<IQSIAttributeIterator>::Adopt(new CQSIAttributeIterator(At(*top_)));
    Ref<IQSIAttributeIterator> none_ =
        Ref<IQSIAttributeIterator>::Adopt(new CQSIAttributeIterator(At(*EmptyEntry())));
};

TEST_F(QsiAttributes, walk_begins_on_the_first_and_goes_past_the_last) {
    EXPECT_EQ("id", Name(*rows_));
    EXPECT_FALSE(AtEnd(*rows_));
    EXPECT_EQ(kResultOk, Next(*rows_, 1, 1));
    EXPECT_EQ("type", Name(*rows_));
    EXPECT_EQ(kResultOk, Next(*rows_, 1, 1));
    EXPECT_EQ("server", Name(*rows_));
    EXPECT_EQ(kResultFalse, Next(*rows_, 1, 0));
    EXPECT_TRUE(AtEnd(*rows_));
    EXPECT_EQ("(untouched)", Name(*rows_));
    EXPECT_EQ(kResultFalse, Next(*rows_, 1, 0));
}

TEST_F(QsiAttributes, next_by_nothing_stays) {
    EXPECT_EQ(kResultOk, Next(*rows_, 0, 0));
    EXPECT_EQ("id", Name(*rows_));
    EXPECT_EQ(kResultFalse, Next(*rows_, 5, 2));
    EXPECT_EQ(kResultFalse, Next(*rows_, 0, 0));
}

TEST_F(QsiAttributes, next_goes_by_several_and_back) {
    EXPECT_EQ(kResultOk, Next(*rows_, 2, 2));
    EXPECT_EQ("server", Name(*rows_));
    EXPECT_EQ(kResultOk, Next(*rows_, -1, -1));
    EXPECT_EQ("type", Name(*rows_));
    EXPECT_EQ(kResultOk, Next(*rows_, -5, -1)) << "it still stands on a row";
    EXPECT_EQ("id", Name(*rows_));
    EXPECT_EQ(kResultFalse, Next(*rows_, 3, 2));
    EXPECT_EQ(kResultFalse, Next(*rows_, -1, 0)) << "there is no way back from the end";
}

// Its first attribute and the third are not there for this one.
class Spotty final : public AttrMapEntry<Spotty> {
 public:
    static std::span<const AttrRow<Spotty>> AttributeRows() {
        static constexpr auto never = [](Spotty&, std::intptr_t) { return false; };
        static constexpr auto read = [](Spotty&, FIValue& out) { out.SetText("read"); };
        static constexpr AttrRow<Spotty> rows[] = {
            {"absent", read, never}, {"one", read}, {"gone", read, never}, {"two", read}};
        return rows;
    }
    void GetName(FIValue& out) override { out.SetText("Spotty"); }
    FIContext* GetContext() override { return EmptyContext(); }
};

TEST_F(QsiAttributes, walk_never_stands_on_an_attribute_that_is_not_there) {
    const auto entry = Ref<FIEntry>::Share(new Spotty);
    const auto it = Ref<IQSIAttributeIterator>::Adopt(new CQSIAttributeIterator(At(*entry)));
    EXPECT_EQ("one", Name(*it));
    EXPECT_EQ(kResultOk, Next(*it, -1, 0));
    EXPECT_EQ("one", Name(*it));
    EXPECT_EQ(kResultOk, Next(*it, 1, 1));
    EXPECT_EQ("two", Name(*it));
    EXPECT_EQ(kResultOk, Next(*it, -5, -1));
    EXPECT_EQ("one", Name(*it));
    EXPECT_EQ(kResultFalse, Next(*it, 2, 1));
}

// An attribute that is there as its script says.
class WillfulCursor final : public FIAttributeCursorBase {
 public:
    int AddRef() override { return 1; }
    int Release() override { return 1; }
    const void* TypeId() const override { return this; }
    FIAttributeCursorBase* Clone(bool) override { return this; }
    bool Seek(int origin, int delta) override {
        is_at_end = !has_row || (origin == kFromEnd && !denies_end) || delta != 0;
        return !is_at_end;
    }
    bool SeekName(int, const char*) override { return false; }
    bool SeekValue(int, FIEntry&) override { return false; }
    bool AtBegin() override { return !is_at_end; }
    bool AtEnd() override { return is_at_end; }
    int Compare(FICursorPosition&) override { return kNotComparable; }
    void GetKey(FIValue& out) override {
        if (lacks_memory) throw std::bad_alloc();
        out.SetText("row");
    }
    void GetValue(FIValue& out) override { GetKey(out); }
    FIVarSet* GetVarSet() override { return nullptr; }
    void SetVarSet(FIVarSet*) override {}

    bool has_row = true;
    bool denies_end = false;
    bool lacks_memory = false;
    bool is_at_end = false;
};

// The entry that it is of.
class Willful final : public FIEntry, public FIAttributeSource {
 public:
    int AddRef() override { return 1; }
    int Release() override { return 1; }
    void GetName(FIValue& out) override { out.SetText("Willful"); }
    void GetAttribute(const FIValue&, FIValue& out) override { out.Clear(); }
    FIAttributeSource* GetAttributeSource() override { return this; }
    FIContext* GetContext() override { return EmptyContext(); }
    FIAttributeCursorBase* MakeCursor() override { return &row; }

    WillfulCursor row;
};

TEST_F(QsiAttributes, refused_seeks_are_told) {
    Willful entry;
    const auto it = Ref<IQSIAttributeIterator>::Adopt(new CQSIAttributeIterator(At(entry)));
    entry.row.denies_end = true;
    EXPECT_EQ(kResultFail, it->ToEnd());
    EXPECT_EQ("row", Name(*it));
    entry.row.denies_end = false;
    EXPECT_EQ(kResultOk, it->ToEnd());
    EXPECT_EQ(kResultOk, it->Reset());
    entry.row.has_row = false;
    EXPECT_EQ(kResultFail, it->Reset());
    EXPECT_TRUE(AtEnd(*it));
}

TEST_F(QsiAttributes, memory_that_runs_out_is_told) {
    Willful entry;
    const auto it = Ref<IQSIAttributeIterator>::Adopt(new CQSIAttributeIterator(At(entry)));
    entry.row.lacks_memory = true;
    char buffer[4] = "xxx";
    EXPECT_EQ(kResultOutOfMemory, Refused<char>([&](char** out) { return it->GetName(out); }));
    EXPECT_EQ(kResultOutOfMemory, it->GetNameBuffer(4, buffer));
    EXPECT_STREQ("xxx", buffer);
    EXPECT_EQ(kResultOutOfMemory,
              Refused<IQSIAttribute>([&](IQSIAttribute** out) { return it->GetAttribute(out); }));
    entry.row.lacks_memory = false;
    EXPECT_EQ("row", Name(*it));
}

TEST_F(QsiAttributes, reset_and_to_end) {
    EXPECT_EQ(kResultOk, rows_->ToEnd());
    EXPECT_TRUE(AtEnd(*rows_));
    EXPECT_EQ(kResultOk, rows_->Reset());
    EXPECT_EQ("id", Name(*rows_));
}

TEST_F(QsiAttributes, attribute_is_that_of_the_row) {
    EXPECT_EQ(kResultOk, Next(*rows_, 1, 1));
    const auto type =
        Take<IQSIAttribute>([&](IQSIAttribute** out) { return rows_->GetAttribute(out); });
    EXPECT_EQ("TopNode", TakeText([&](char** out) { return type->GetString(out); }));
    EXPECT_EQ(kResultOk, rows_->ToEnd());
    const auto end =
        Take<IQSIAttribute>([&](IQSIAttribute** out) { return rows_->GetAttribute(out); });
    EXPECT_EQ(0, TakeNumber<std::int32_t>([&](std::int32_t* out) { return end->GetType(out); }));
}

TEST_F(QsiAttributes, name_is_cut_to_its_buffer) {
    EXPECT_EQ(kResultOk, Next(*rows_, 2, 2));
    char buffer[16];
    struct Case {
        std::int32_t size;
        const char* text;
    };
    for (const Case& each : {Case{16, "server"}, {7, "server"}, {6, "serve"}, {1, ""}}) {
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(kResultOk, rows_->GetNameBuffer(each.size, buffer));
        EXPECT_STREQ(each.text, buffer) << each.size;
    }
    for (const std::int32_t size : {0, -1}) {
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(kResultOk, rows_->GetNameBuffer(size, buffer));
        EXPECT_EQ('x', buffer[0]) << size;
    }
}

TEST_F(QsiAttributes, without_rows_it_stands_on_nothing_and_never_moves) {
    EXPECT_TRUE(AtEnd(*none_));
    EXPECT_EQ("(untouched)", Name(*none_));
    char buffer[4] = "xxx";
    EXPECT_EQ(kResultOk, none_->GetNameBuffer(4, buffer));
    EXPECT_STREQ("xxx", buffer);
    auto* const before = NoPointer<IQSIAttribute>();
    IQSIAttribute* attribute = before;
    EXPECT_EQ(kResultFail, none_->GetAttribute(&attribute));
    EXPECT_EQ(before, attribute);
    EXPECT_EQ(kResultFail, Next(*none_, 0, 0));
    EXPECT_EQ(kResultFail, Next(*none_, 1, 0));
    EXPECT_EQ(kResultOk, none_->Reset());
    EXPECT_EQ(kResultOk, none_->ToEnd());
    EXPECT_TRUE(AtEnd(*none_));
}

TEST_F(QsiAttributes, null_pointers_are_refused) {
    for (IQSIAttributeIterator* each : {rows_.Get(), none_.Get()}) {
        EXPECT_EQ(kResultPointer, each->GetNameBuffer(4, nullptr));
        EXPECT_EQ(kResultPointer, each->GetName(nullptr));
        EXPECT_EQ(kResultPointer, each->GetAttribute(nullptr));
        EXPECT_EQ(kResultPointer, each->Next(1, nullptr));
        EXPECT_EQ(kResultPointer, each->AtEnd(nullptr));
    }
    EXPECT_EQ("id", Name(*rows_));
}

// ---- Children ----

class QsiChildren : public testing::Test {
 protected:
    QsiChildren() {
        for (const char* name : {"One", "Two", "Three"}) root_.Add(name);
    }
    Ref<IQSINodeIterator> Walk() {
        return Take<IQSINodeIterator>(
            [&](IQSINodeIterator** out) { return top_->GetChildren(out); });
    }
    static std::string Name(IQSINodeIterator& it) {
        char* name = NoPointer<char>();
        const HRESULT result = it.GetName(&name);
        if (result == kResultFalse && !name) return "(none)";
        EXPECT_EQ(kResultOk, result);
        const std::string text = name;
        FreeAsClient(name);
        return text;
    }
    static HRESULT Move(IQSINodeIterator& it, std::int32_t count, std::int32_t expected) {
        std::int32_t moved = 99;
        const HRESULT result = it.Move(count, &moved);
        EXPECT_EQ(expected, moved);
        return result;
    }
    static bool AtEnd(IQSINodeIterator& it) {
        return TakeNumber<bool>([&](bool* out) { return it.AtEnd(out); });
    }

    ScriptNode root_{"Root"};
    Ref<IQSINode> top_ = NodeAt(root_);
};

TEST_F(QsiChildren, walk_begins_on_the_first_and_goes_past_the_last) {
    const auto it = Walk();
    EXPECT_EQ(1u, CountOf(*it));
    EXPECT_EQ("One", Name(*it));
    EXPECT_EQ(kResultOk, Move(*it, 1, 1));
    EXPECT_EQ("Two", Name(*it));
    EXPECT_EQ(kResultOk, Move(*it, 0, 0));
    EXPECT_EQ("Two", Name(*it));
    EXPECT_EQ(kResultFalse, Move(*it, 5, 1));
    EXPECT_TRUE(AtEnd(*it));
    EXPECT_EQ("(none)", Name(*it));
    EXPECT_EQ(kResultFalse, Move(*it, 1, 0));
    EXPECT_EQ(kResultOk, Move(*it, 0, 0));
}

TEST_F(QsiChildren, walk_goes_back) {
    const auto it = Walk();
    EXPECT_EQ(kResultFalse, Move(*it, -1, 0));
    EXPECT_EQ("One", Name(*it));
    EXPECT_EQ(kResultFalse, Move(*it, 3, 2));
    EXPECT_EQ(kResultOk, Move(*it, -1, -1));
    EXPECT_EQ("Three", Name(*it));
    EXPECT_FALSE(AtEnd(*it));
    EXPECT_EQ(kResultOk, Move(*it, -2, -2));
    EXPECT_EQ("One", Name(*it));
    EXPECT_EQ(kResultOk, Move(*it, 2, 2));
    EXPECT_EQ(kResultFalse, Move(*it, -9, -2));
    EXPECT_EQ("One", Name(*it));
}

TEST_F(QsiChildren, reset_and_to_end) {
    const auto it = Walk();
    EXPECT_EQ(kResultOk, it->ToEnd());
    EXPECT_TRUE(AtEnd(*it));
    EXPECT_EQ("(none)", Name(*it));
    EXPECT_EQ(kResultFalse, Refused<IQSINode>([&](IQSINode** out) { return it->GetNode(out); }));
    EXPECT_EQ(kResultOk, it->Reset());
    EXPECT_FALSE(AtEnd(*it));
    EXPECT_EQ("One", Name(*it));
    EXPECT_EQ(kResultOk, it->ToEnd());
    EXPECT_EQ(kResultOk, Move(*it, -3, -3));
    EXPECT_EQ("One", Name(*it));
    EXPECT_EQ(kResultOk, it->Close());
    EXPECT_EQ("One", Name(*it)) << "closing does nothing";
}

TEST_F(QsiChildren, walk_over_children_that_went_is_refused) {
    const auto it = Walk();
    for (const char* name : {"One", "Two", "Three"}) root_.RemoveChild(name);
    EXPECT_EQ(kResultFail, it->Reset());
    EXPECT_EQ(kResultFail, it->ToEnd());
    EXPECT_TRUE(AtEnd(*it));
}

TEST_F(QsiChildren, node_stays_when_the_walk_goes_on) {
    const auto it = Walk();
    const auto one = Take<IQSINode>([&](IQSINode** out) { return it->GetNode(out); });
    EXPECT_EQ(kResultOk, Move(*it, 1, 1));
    EXPECT_EQ("Root.One", PathOf(*one));
    EXPECT_EQ("Root.Two",
              PathOf(*Take<IQSINode>([&](IQSINode** out) { return it->GetNode(out); })));
    EXPECT_EQ("Root", PathOf(*top_));
}

TEST_F(QsiChildren, walks_are_apart) {
    const auto one = Walk(), other = Walk();
    EXPECT_EQ(kResultOk, Move(*one, 2, 2));
    EXPECT_EQ("Three", Name(*one));
    EXPECT_EQ("One", Name(*other));
}

TEST_F(QsiChildren, name_is_cut_to_its_buffer) {
    const auto it = Walk();
    EXPECT_EQ(kResultOk, Move(*it, 2, 2));
    char buffer[8];
    struct Case {
        std::int32_t size;
        const char* text;
    };
    for (const Case& each : {Case{8, "Three"}, {6, "Three"}, {5, "Thre"}, {1, ""}}) {
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(kResultOk, it->GetNameBuffer(each.size, buffer));
        EXPECT_STREQ(each.text, buffer) << each.size;
    }
    buffer[0] = 'x';
    EXPECT_EQ(kResultOk, it->GetNameBuffer(0, buffer));
    EXPECT_EQ('x', buffer[0]);
    EXPECT_EQ(kResultOk, it->ToEnd());
    EXPECT_EQ(kResultFalse, it->GetNameBuffer(8, buffer));
    EXPECT_STREQ("", buffer);
}

TEST_F(QsiChildren, null_pointers_are_refused) {
    const auto it = Walk();
    EXPECT_EQ(kResultPointer, it->GetNameBuffer(4, nullptr));
    EXPECT_EQ(kResultPointer, it->GetName(nullptr));
    EXPECT_EQ(kResultPointer, it->GetNode(nullptr));
    EXPECT_EQ(kResultPointer, it->Move(1, nullptr));
    EXPECT_EQ(kResultPointer, it->AtEnd(nullptr));
    EXPECT_EQ("One", Name(*it)) << "nothing was done";
}

}  // namespace

}  // namespace fixtop
