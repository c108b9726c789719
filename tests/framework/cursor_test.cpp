// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics/seek_table.h"
#include "framework/nodes/attr_map.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/cursor.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/top_cursor.h"
#include "support/cursor_harness.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

// An entry whose rows are switched on and off by the test.
class TableEntry final : public AttrMapEntry<TableEntry> {
 public:
    ~TableEntry() override { ++destroyed; }
    static std::span<const AttrRow<TableEntry>> AttributeRows() {
        static constexpr AttrRow<TableEntry> rows[] = {
            {"one", &ReadOne, &Shown, std::intptr_t{0}},
            {"two", &ReadExtra, 1, &Shown},
            {"three", &Shown3},
            {"four", &ReadExtra, 3, &Shown},
        };
        return rows;
    }
    void GetName(FIValue& out) override { out = Text("two"); }
    FIContext* GetContext() override { return EmptyContext(); }

    bool shown[4] = {true, true, true, true};
    static inline int destroyed = 0;

 private:
    static bool Shown(TableEntry& owner, std::intptr_t row) { return owner.shown[row]; }
    static bool Shown3(TableEntry& owner, std::intptr_t) { return owner.shown[2]; }
    static void ReadOne(TableEntry&, FIValue& out) { out = Text("first"); }
    static void ReadExtra(TableEntry&, FIValue& out, std::intptr_t extra) {
        out.SetInt(static_cast<int>(extra) * 10);
    }
};

class AttributeTable : public ::testing::Test {
 protected:
    AttributeTable()
        : entry_(Ref<TableEntry>::Share(new TableEntry)),
          cursor_(Ref<FIAttributeCursorBase>::Adopt(entry_->MakeCursor())) {}

    void Show(std::vector<bool> shown) {
        for (std::size_t i = 0; i < shown.size(); ++i) entry_->shown[i] = shown[i];
    }
    std::string Key() {
        FIValue key;
        cursor_->GetKey(key);
        return key.IsNull() ? "(end)" : key.ToText();
    }
    std::string Read(const char* name) {
        FIValue value;
        entry_->GetAttribute(Text(name), value);
        return value.IsNull() ? "(NULL)" : value.ToText();
    }

    Ref<TableEntry> entry_;
    Ref<FIAttributeCursorBase> cursor_;
};

TEST_F(AttributeTable, seek_skips_rows_that_are_not_available) {
    struct Case {
        std::vector<bool> shown;
        int start;  // row to which the cursor is brought, -1 for the end
        int origin;
        int delta;
        bool result;
        const char* key;
    };
    const Case cases[] = {
        {{true, true, true, true}, 0, kFromFirst, 0, true, "one"},
        {{true, true, true, true}, 0, kFromFirst, 3, true, "four"},
        {{true, true, true, true}, 0, kFromFirst, 4, false, "(end)"},
        {{false, true, true, true}, 0, kFromFirst, 0, true, "two"},
        {{false, false, false, false}, 0, kFromFirst, 0, false, "(end)"},
        {{true, false, true, true}, 0, kFromFirst, 1, true, "three"},
        {{true, false, true, true}, 0, kFromPresent, 1, true, "three"},
        {{true, false, false, true}, 0, kFromPresent, 1, true, "four"},
        {{true, true, true, false}, 2, kFromPresent, 1, false, "(end)"},
        {{true, true, true, true}, 3, kFromPresent, -1, true, "three"},
        {{true, false, true, true}, 2, kFromPresent, -1, true, "one"},
        {{true, true, true, true}, 0, kFromPresent, -1, false, "one"},
        {{true, true, true, true}, 2, kFromPresent, -3, false, "one"},
        {{true, true, true, true}, 2, kFromEnd, 0, false, "(end)"},
        {{true, true, true, true}, 2, kFromEnd, -1, false, "(end)"},
        {{true, true, true, true}, -1, kFromPresent, -1, false, "(end)"},
        {{true, true, true, true}, 2, kFromPresent, 0, true, "three"},
        {{true, true, false, true}, 2, kFromPresent, 0, true, "three"},
        {{true, true, false, true}, 3, kFromPresent, -2, true, "one"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(std::string("start ") + std::to_string(each.start) + " origin " +
                     std::to_string(each.origin) + " delta " + std::to_string(each.delta) +
                     " expecting " + each.key);
        Show({true, true, true, true});
        if (each.start < 0) {
            cursor_->Seek(kFromEnd, 0);
        } else {
            ASSERT_TRUE(cursor_->Seek(kFromFirst, each.start));
        }
        Show(each.shown);
        EXPECT_EQ(each.result, cursor_->Seek(each.origin, each.delta));
        EXPECT_EQ(each.key, Key());
    }
}

TEST_F(AttributeTable, new_cursor_stands_on_the_first_row_even_when_it_is_hidden) {
    Show({false, true, true, true});
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(entry_->MakeCursor());
    FIValue key;
    cursor->GetKey(key);
    EXPECT_EQ("one", key.ToText());
    EXPECT_TRUE(cursor->AtBegin());
}

TEST_F(AttributeTable, seek_name_ignores_the_origin_and_hidden_rows) {
    EXPECT_TRUE(cursor_->Seek(kFromFirst, 3));
    EXPECT_TRUE(cursor_->SeekName(kFromPresent, "two"));
    EXPECT_EQ("two", Key());
    EXPECT_FALSE(cursor_->SeekName(kFromFirst, "Two"));
    EXPECT_TRUE(cursor_->AtEnd());
    Show({true, false, true, true});
    EXPECT_FALSE(cursor_->SeekName(kFromFirst, "two"));
    EXPECT_TRUE(cursor_->AtEnd());
    Show({true, true, true, true});
    EXPECT_TRUE(cursor_->SeekValue(kFromFirst, *entry_));
    EXPECT_EQ("two", Key());
}

// Two rows of one name, of which the first is switched by the test.
class TwinEntry final : public AttrMapEntry<TwinEntry> {
 public:
    static std::span<const AttrRow<TwinEntry>> AttributeRows() {
        static constexpr AttrRow<TwinEntry> rows[] = {
            {"twin", [](TwinEntry&, FIValue& out, std::intptr_t row) { out.SetInt(int(row)); }, 1,
             [](TwinEntry& owner, std::intptr_t) { return owner.shows_first; }},
            {"twin", [](TwinEntry&, FIValue& out, std::intptr_t row) { out.SetInt(int(row)); }, 2},
        };
        return rows;
    }
    void GetName(FIValue& out) override { out = Text("twin"); }
    FIContext* GetContext() override { return EmptyContext(); }

    bool shows_first = true;
};

TEST(TwinRows, the_first_of_a_name_is_the_one_looked_up) {
    const auto entry = Ref<TwinEntry>::Share(new TwinEntry);
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(entry->MakeCursor());
    FIValue value;
    entry->GetAttribute(Text("twin"), value);
    EXPECT_EQ(1, value.AsInt());
    EXPECT_TRUE(cursor->SeekName(kFromFirst, "twin"));
    EXPECT_TRUE(cursor->AtBegin());
    entry->shows_first = false;
    entry->GetAttribute(Text("twin"), value);
    EXPECT_TRUE(value.IsNull()) << "one that is not available hides those behind it";
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "twin"));
    EXPECT_TRUE(cursor->Seek(kFromFirst, 0));
    cursor->GetValue(value);
    EXPECT_EQ(2, value.AsInt());
}

// More rows than the index tells apart, some of one beginning.
TEST(RowIndex, finds_each_row_of_a_long_table_and_no_other_name) {
    constexpr int kRows = 500;
    std::vector<std::string> names;
    for (int i = 0; i < kRows; ++i) names.push_back("attribute" + std::to_string(i));
    std::vector<AttrRow<TableEntry>> rows;
    for (const std::string& name : names) rows.emplace_back(name.c_str());
    rows.emplace_back("");
    const AttrRowIndex<TableEntry> index(rows);

    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(index.Find(names[i].c_str()), &rows[i]) << names[i];
    }
    EXPECT_EQ(index.Find(""), &rows[kRows]);
    EXPECT_EQ(index.Find(FIValue()), &rows[kRows]);
    for (const char* stranger : {"attribut", "attribute", "attribute500", "Attribute1"}) {
        EXPECT_EQ(index.Find(stranger), nullptr) << stranger;
    }
    EXPECT_EQ(AttrRowIndex<TableEntry>({}).Find("one"), nullptr);
}

// Keeps what is written to it, and takes even numbers alone.
class WrittenEntry final : public AttrMapEntry<WrittenEntry> {
 public:
    static std::span<const AttrRow<WrittenEntry>> AttributeRows() {
        static constexpr auto read = [](WrittenEntry& owner, FIValue& out) {
            out.SetInt(owner.number);
        };
        static constexpr AttrRow<WrittenEntry> rows[] = {
            {"number", read, &Write},
            {"hidden", read, [](WrittenEntry&, std::intptr_t) { return false; }, &Write},
            {"read_only", read},
            {"read_only", read, &Write},
        };
        return rows;
    }
    void GetName(FIValue& out) override { out = Text("written"); }
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override {
        WriteAttribute(*this, name, value, mode, "refused", out);
    }
    FIContext* GetContext() override { return EmptyContext(); }

    int number = 0;
    int mode_given = 0;

 private:
    static bool Write(WrittenEntry& owner, const FIValue& value, int mode, FIValue& out) {
        if (value.AsInt() % 2 != 0) return false;
        owner.number = value.AsInt();
        owner.mode_given = mode;
        out.Clear();
        return true;
    }
};

TEST(WrittenRows, a_write_goes_to_the_writer_of_the_first_row_of_its_name) {
    struct Case {
        FIValue name;
        int given;
        int expected;
        const char* answer;
    };
    const Case cases[] = {
        {Text("number"), 4, 4, "(NULL)"},   {Text("hidden"), 6, 6, "(NULL)"},
        {Text("number"), 3, 0, "refused"},  {Text("read_only"), 4, 0, "refused"},
        {Text("unknown"), 4, 0, "refused"}, {FIValue(), 4, 0, "refused"},
    };
    for (const Case& each : cases) {
        const auto entry = Ref<WrittenEntry>::Share(new WrittenEntry);
        FIValue value;
        FIValue out = Text("before");
        value.SetInt(each.given);
        entry->SetAttribute(each.name, value, 2, out);
        EXPECT_EQ(each.expected, entry->number) << each.name.ToText() << each.given;
        EXPECT_EQ(each.expected ? 2 : 0, entry->mode_given);
        EXPECT_EQ(each.answer, out.IsNull() ? "(NULL)" : out.ToText());
    }
}

TEST_F(AttributeTable, values_come_from_the_rows_handler) {
    const char* const expected[] = {"first", "10", "(NULL)", "30"};
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(cursor_->Seek(kFromFirst, i));
        FIValue value = Text("before");
        cursor_->GetValue(value);
        EXPECT_EQ(expected[i], value.IsNull() ? "(NULL)" : value.ToText()) << i;
        EXPECT_EQ(expected[i], Read(Key().c_str())) << i;
    }
    cursor_->Seek(kFromEnd, 0);
    FIValue value = Text("before");
    cursor_->GetValue(value);
    EXPECT_TRUE(value.IsNull());
    EXPECT_EQ("(NULL)", Read("five"));
    Show({false, true, true, true});
    EXPECT_EQ("(NULL)", Read("one"));
}

TEST_F(AttributeTable, cursors_compare_by_key) {
    const auto other_entry = Ref<TableEntry>::Share(new TableEntry);
    const auto other = Ref<FIAttributeCursorBase>::Adopt(other_entry->MakeCursor());
    EXPECT_EQ(0, cursor_->Compare(*cursor_));
    EXPECT_EQ(0, cursor_->Compare(*other));
    ASSERT_TRUE(other->Seek(kFromFirst, 3));
    // "one" and "four": the order of the names, not of the rows.
    EXPECT_GT(cursor_->Compare(*other), 0);
    EXPECT_LT(other->Compare(*cursor_), 0);
}

TEST_F(AttributeTable, clones_share_or_copy_the_position) {
    ASSERT_TRUE(cursor_->Seek(kFromFirst, 1));
    const auto shallow = Ref<FIAttributeCursorBase>::Adopt(cursor_->Clone(false));
    EXPECT_EQ(cursor_.Get(), shallow.Get());
    EXPECT_EQ(3, shallow->AddRef());
    shallow->Release();
    const auto deep = Ref<FIAttributeCursorBase>::Adopt(cursor_->Clone(true));
    EXPECT_NE(cursor_.Get(), deep.Get());
    EXPECT_TRUE(deep->Seek(kFromPresent, 1));
    EXPECT_EQ("two", Key());
}

TEST_F(AttributeTable, a_cursor_keeps_its_entry_only_while_counted) {
    TableEntry::destroyed = 0;
    auto* entry = new TableEntry;
    entry->AddRef();
    auto* idle = new AttrMapCursorBase<TableEntry>(entry);
    EXPECT_EQ(2, entry->AddRef());
    EXPECT_EQ(1, entry->Release());
    EXPECT_EQ(1, idle->AddRef());
    EXPECT_EQ(1, entry->Release());
    EXPECT_EQ(0, TableEntry::destroyed);
    EXPECT_EQ(0, idle->Release());
    EXPECT_EQ(1, TableEntry::destroyed);
}

TEST_F(AttributeTable, var_set_is_the_owners) {
    ScriptNode node("node");
    const Ref<FIIterator> it = node.Iterate();
    cursor_->SetVarSet(it->GetVarSet());
    EXPECT_EQ(it->GetVarSet(), entry_->GetVarSet());
    EXPECT_EQ(it->GetVarSet(), cursor_->GetVarSet());
}

// Shows a cursor over attributes as one over children, each named by its key.
class AttributesAsChildren final : public CountedFromZero<FICursorBase> {
 public:
    explicit AttributesAsChildren(Ref<FIAttributeCursorBase> cursor) : cursor_(std::move(cursor)) {}

    const void* TypeId() const override { return cursor_->TypeId(); }
    FICursorBase* Clone(bool deep) override {
        FICursorBase* clone = this;
        if (deep) {
            clone =
                new AttributesAsChildren(Ref<FIAttributeCursorBase>::Adopt(cursor_->Clone(true)));
        }
        clone->AddRef();
        return clone;
    }
    bool Seek(int origin, int delta) override { return cursor_->Seek(origin, delta); }
    bool SeekName(int origin, const char* name) override { return cursor_->SeekName(origin, name); }
    bool SeekValue(int origin, FIEntry& entry) override {
        return cursor_->SeekValue(origin, entry);
    }
    bool AtBegin() override { return cursor_->AtBegin(); }
    bool AtEnd() override { return cursor_->AtEnd(); }
    int Compare(FICursorPosition& other) override {
        if (other.TypeId() != TypeId()) return cursor_->Compare(other);
        return cursor_->Compare(*static_cast<AttributesAsChildren&>(other).cursor_);
    }
    void GetKey(FIValue& out) override { cursor_->GetKey(out); }
    FIEntry* GetEntry() override {
        FIValue key;
        GetKey(key);
        if (key.IsNull()) return nullptr;
        nodes_.push_back(std::make_unique<ScriptNode>(key.ToText()));
        return nodes_.back()->Entry().Detach();
    }

 private:
    Ref<FIAttributeCursorBase> cursor_;
    std::vector<std::unique_ptr<ScriptNode>> nodes_;
};

TEST_F(AttributeTable, cursor_is_a_cursor) {
    const auto all = [&] {
        return Ref<FICursorBase>::Share(new AttributesAsChildren(Ref<FIAttributeCursorBase>::Adopt(
                                            entry_->MakeCursor())))
            .Detach();
    };
    CursorFamily family;
    family.name = "AttrMapCursorBase";
    family.make = all;
    family.keys = {"one", "two", "three", "four"};
    family.seeks_entries = false;
    // Keys are compared, not positions; from the end nothing moves back.
    family.ordered = false;
    family.to_last = family.back_again = SeekOutcome{false, 4};
    CheckCursorFamily(family);
    Show({false, true, false, true});
    family.name = "AttrMapCursorBase with hidden rows";
    family.keys = {"two", "four"};
    family.new_position.reset();
    // The first row is the begin, shown or not, and where a move back ends.
    family.begins_at_first = false;
    family.to_last = family.back_again = SeekOutcome{false, 2};
    family.before_first = family.off_first = SeekOutcome{false, std::nullopt};
    CheckCursorFamily(family);
    Show({false, false, false, false});
    family = CursorFamily();
    family.name = "AttrMapCursorBase with all rows hidden";
    family.make_empty = [&] {
        FICursorBase* cursor = all();
        cursor->Seek(kFromEnd, 0);
        return cursor;
    };
    CheckCursorFamily(family);
}

TEST(CursorFamilies, empty_cursor) {
    CursorFamily family;
    family.name = "EmptyCursorBase";
    family.make_empty = [] { return EmptyCursor(); };
    CheckCursorFamily(family);
}

TEST(CursorFamilies, top_cursor) {
    const auto context = Ref<FIContext>::Share(new TopContext(EmptyContext()));
    CursorFamily family;
    family.name = "TopCursorBase";
    family.make = [&] { return context->MakeCursor(kChildCursor); };
    family.keys = {"Top"};
    // The cursor knows only whether it is past its child.
    family.before_first = SeekOutcome{true, 0};
    family.to_end = SeekOutcome{true, 0};
    family.off_first = SeekOutcome{true, 0};
    CheckCursorFamily(family);
    EXPECT_EQ(EmptyCursor(), context->MakeCursor(kKeyCursor));
}

TEST(CursorFamilies, top_cursor_goes_past_its_child_and_back) {
    const auto context = Ref<FIContext>::Share(new TopContext(EmptyContext()));
    const auto make = [&] { return Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor)); };
    struct Case {
        int origin;
        int delta;
        // Whether it stands on the child afterwards, from the child and from past it.
        bool from_child;
        bool from_end;
    };
    const Case cases[] = {
        {kFromFirst, 1, false, false},  {kFromFirst, -1, true, true},
        {kFromFirst, 0, true, false},   {kFromPresent, 2, false, false},
        {kFromPresent, -2, true, true}, {kFromPresent, 0, true, false},
        {kFromEnd, 1, false, false},    {kFromEnd, -1, true, true},
        {kFromEnd, 0, true, false},     {3, 1, true, false},
        {-1, -1, true, false},          {7, 0, true, false},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(testing::Message() << "Seek(" << each.origin << ", " << each.delta << ")");
        for (bool at_end : {false, true}) {
            const auto cursor = make();
            if (at_end) cursor->SeekName(kFromFirst, "");
            ASSERT_EQ(at_end, cursor->AtEnd());
            const bool stands = at_end ? each.from_end : each.from_child;
            EXPECT_EQ(stands, cursor->Seek(each.origin, each.delta));
            EXPECT_EQ(stands, cursor->AtBegin());
            EXPECT_EQ(!stands, cursor->AtEnd());
        }
    }
    const auto cursor = make();
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "top"));
    EXPECT_FALSE(cursor->SeekName(kFromFirst, nullptr));
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "Top"));
    const auto child = Ref<FIEntry>::Adopt(cursor->GetEntry());
    EXPECT_TRUE(child->IsContainer());
    EXPECT_EQ(EmptyContext(), child->GetContext());
    FIValue value = Text("before");
    child->GetAttribute(Text("id"), value);
    EXPECT_TRUE(value.IsNull());
    EXPECT_EQ(EmptyAttributeCursor(), child->GetAttributeSource()->MakeCursor());
}

// Past the child the key is NULL, which is less than a text; a text and NULL do not compare.
TEST(CursorFamilies, top_cursors_compare_by_key_and_clones_keep_the_end) {
    const auto context = Ref<FIContext>::Share(new TopContext(EmptyContext()));
    const auto child = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
    const auto end = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
    end->Seek(kFromPresent, 1);
    EXPECT_EQ(kNotComparable, child->Compare(*end));
    EXPECT_EQ(-1, end->Compare(*child));
    EXPECT_EQ(0, end->Compare(*end));
    const auto clone = Ref<FICursorBase>::Adopt(end->Clone(true));
    EXPECT_TRUE(clone->AtEnd());
    EXPECT_EQ(0, end->Compare(*clone));
    EXPECT_EQ(nullptr, end->GetEntry());
    EXPECT_FALSE(child->SeekValue(kFromFirst, *ScriptNode("other").Entry()));
    EXPECT_TRUE(child->AtEnd());
    EXPECT_TRUE(child->SeekValue(kFromFirst, *ScriptNode("Top").Entry()));
}

TEST(CursorFamilies, scripted_cursor) {
    ScriptNode parent("parent");
    ScriptNode childless("childless");
    for (const char* name : {"a", "b", "b", "c"}) parent.Add(name);
    parent.Add("d").key = Text("key of d");
    CursorFamily family;
    family.name = "scripted";
    family.make = [&] { return parent.Children().Detach(); };
    family.make_empty = [&] { return childless.Children().Detach(); };
    family.keys = {"a", "b", "b", "c", "key of d"};
    family.names = {"a", "b", "b", "c", "d"};
    family.seeks_entries = false;
    CheckCursorFamily(family);
}

TEST(Unshare, copies_a_cursor_that_more_than_two_hold) {
    ScriptNode parent("parent");
    parent.Add("a");
    for (int holders = 1; holders <= 25; ++holders) {
        Ref<FICursorBase> cursor = parent.Children();
        const std::vector<Ref<FICursorBase>> others(holders - 1, cursor);
        const FICursorBase* before = cursor.Get();
        const int row = std::min(holders, kSeekRows - 1);
        const int seeks = SeekCount(row);
        Unshare(cursor);
        EXPECT_EQ(holders > 2, cursor.Get() != before) << holders << " holders";
        EXPECT_EQ(seeks + (holders > 1 ? 1 : 0), SeekCount(row)) << holders << " holders";
        if (others.empty()) continue;
        const int left = holders > 2 ? holders - 1 : holders;
        EXPECT_EQ(left + 1, others[0]->AddRef()) << holders << " holders";
        others[0]->Release();
    }
}

TEST(Unshare, leaves_the_empty_cursor) {
    Ref<FICursorBase> cursor = Ref<FICursorBase>::Share(EmptyCursor());
    Unshare(cursor);
    EXPECT_EQ(EmptyCursor(), cursor.Get());
}

// The reference that is answered counts as a holder, and the one that is lent stays as it is.
TEST(ShareToMove, copies_a_cursor_that_more_than_two_hold) {
    ScriptNode parent("parent");
    parent.Add("a");
    for (int holders = 1; holders <= 25; ++holders) {
        const Ref<FICursorBase> held = parent.Children();
        const std::vector<Ref<FICursorBase>> others(holders - 1, held);
        FICursorBase* const before = held.Get();
        const int row = std::min(holders + 1, kSeekRows - 1);
        const int seeks = SeekCount(row);
        const Ref<FICursorBase> own = ShareToMove(held);
        EXPECT_EQ(before, held.Get()) << holders << " holders";
        EXPECT_EQ(holders > 1, own.Get() != before) << holders << " holders";
        EXPECT_EQ(seeks + 1, SeekCount(row)) << holders << " holders";
        const int left = holders > 1 ? holders : 2;
        EXPECT_EQ(left + 1, held->AddRef()) << holders << " holders";
        held->Release();
    }
}

TEST(ShareToMove, shares_the_empty_cursor_without_a_record) {
    const Ref<FICursorBase> held = Ref<FICursorBase>::Share(EmptyCursor());
    const int seeks = SeekCount(1) + SeekCount(2);
    EXPECT_EQ(EmptyCursor(), ShareToMove(held).Get());
    EXPECT_EQ(seeks, SeekCount(1) + SeekCount(2));
}

}  // namespace

}  // namespace fixtop
