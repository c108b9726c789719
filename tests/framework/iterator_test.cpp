// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "diagnostics/instance_counts.h"
#include "fixtop/reference.h"
#include "framework/iterator/saved_step.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

std::string PathOf(FIIteratorBase& it) {
    FIValue path;
    it.GetPath(path);
    return path.ToText();
}

std::string NameOf(FIIteratorBase& it) {
    FIValue name;
    it.GetName(name);
    return name.IsNull() ? "(NULL)" : name.ToText();
}

std::string VarOf(FIIteratorBase& it, const char* name) {
    FIValue value;
    return it.GetVarText(name, value) ? value.ToText() : "(none)";
}

std::string ReadOf(FIIteratorBase& it, const char* name) {
    FIValue value;
    it.GetAttribute(Text(name), value);
    return value.IsNull() ? "(NULL)" : value.ToText();
}

// Root with children a, b, c; b has x and y.
class Iterator : public ::testing::Test {
 protected:
    Iterator() : a_(root_.Add("a")), b_(root_.Add("b")), c_(root_.Add("c")) {
        b_.Add("x").Add("deep");
        b_.Add("y");
        it_ = root_.Iterate();
    }

    ScriptNode root_{"Root"};
    ScriptNode& a_;
    ScriptNode& b_;
    ScriptNode& c_;
    Ref<FIIterator> it_;
};

TEST_F(Iterator, up_at_the_root_changes_nothing) {
    EXPECT_FALSE(it_->Up());
    EXPECT_EQ("Root", PathOf(*it_));
    EXPECT_EQ(0, it_->Depth());
    EXPECT_TRUE(it_->AtFirst());
    EXPECT_TRUE(it_->AtLast());
    for (auto move :
         {&FIIterator::Next, &FIIterator::Prev, &FIIterator::First, &FIIterator::Last}) {
        EXPECT_FALSE(((*it_).*move)());
        EXPECT_EQ("Root", PathOf(*it_));
    }
}

TEST(EmptyIterator, goes_nowhere_and_reads_null) {
    for (const auto& it : {Ref<FIIterator>::Adopt(new FIIterator),
                           Ref<FIIterator>::Adopt(new FIIterator(EmptyEntry(), false)),
                           Ref<FIIterator>::Adopt(new FIIterator(nullptr, true))}) {
        EXPECT_FALSE(it->Down(0));
        EXPECT_FALSE(it->DownLast());
        EXPECT_FALSE(it->SeekChild("a"));
        EXPECT_FALSE(it->CanDescend());
        EXPECT_EQ("(NULL)", NameOf(*it));
        EXPECT_EQ("(NULL)", ReadOf(*it, "value"));
        EXPECT_EQ(0, it->NameLength());
    }
}

TEST_F(Iterator, moves_reach_the_node_and_answer_whether_there_is_one) {
    using Move = bool (*)(FIIterator&);
    struct Case {
        const char* what;
        std::vector<Move> moves;
        std::vector<bool> answers;
        const char* path;
    };
    const Move down0 = [](FIIterator& it) { return it.Down(0); };
    const Move down2 = [](FIIterator& it) { return it.Down(2); };
    const Move down3 = [](FIIterator& it) { return it.Down(3); };
    const Move down_last = [](FIIterator& it) { return it.DownLast(); };
    const Move down_first = [](FIIterator& it) { return it.DownFirst(); };
    const Move next = [](FIIterator& it) { return it.Next(); };
    const Move prev = [](FIIterator& it) { return it.Prev(); };
    const Move first = [](FIIterator& it) { return it.First(); };
    const Move last = [](FIIterator& it) { return it.Last(); };
    const Move up = [](FIIterator& it) { return it.Up(); };
    const Move child_b = [](FIIterator& it) { return it.SeekChild("b"); };
    const Move child_q = [](FIIterator& it) { return it.SeekChild("q"); };
    const Move from_c = [](FIIterator& it) { return it.SeekChildFrom("c"); };
    const Case cases[] = {
        {"first child", {down0}, {true}, "Root.a"},
        {"third child", {down2}, {true}, "Root.c"},
        {"no fourth child", {down3}, {false}, "Root"},
        {"last child", {down_last}, {true}, "Root.c"},
        {"child of a leaf", {down0, down_first}, {true, false}, "Root.a"},
        {"last child of a leaf", {down0, down_last}, {true, false}, "Root.a"},
        {"next", {down0, next}, {true, true}, "Root.b"},
        {"to the end and up", {down2, next, up}, {true, false, true}, "Root"},
        {"back from the end", {down2, next, prev}, {true, false, true}, "Root.c"},
        {"previous", {down2, prev}, {true, true}, "Root.b"},
        {"previous of the first", {down0, prev}, {true, false}, "Root.a"},
        {"first", {down2, first}, {true, true}, "Root.a"},
        {"last", {down0, last}, {true, true}, "Root.c"},
        {"by name and below", {child_b, down_last}, {true, true}, "Root.b.y"},
        {"no such name", {child_q}, {false}, "Root"},
        {"on to a sibling", {down0, from_c}, {true, true}, "Root.c"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        const auto it = root_.Iterate();
        for (std::size_t i = 0; i < each.moves.size(); ++i) {
            EXPECT_EQ(each.answers[i], each.moves[i](*it)) << "move " << i;
        }
        EXPECT_EQ(each.path, PathOf(*it));
    }
}

TEST_F(Iterator, next_past_the_last_stands_on_the_empty_entry_below_the_parent) {
    for (bool null_at_end : {true, false}) {
        root_.null_at_end = null_at_end;
        const auto it = root_.Iterate();
        ASSERT_TRUE(it->DownLast());
        EXPECT_FALSE(it->AtLast());
        EXPECT_FALSE(it->AtFirst());
        EXPECT_FALSE(it->Next());
        EXPECT_TRUE(it->AtLast());
        EXPECT_EQ(1, it->Depth());
        EXPECT_EQ("(NULL)", NameOf(*it));
        EXPECT_EQ("(NULL)", ReadOf(*it, "value"));
        EXPECT_EQ(EmptyEntry(), it->EntryAt(1));
        EXPECT_TRUE(it->Up());
        EXPECT_EQ("Root", PathOf(*it));
    }
}

TEST_F(Iterator, moving_a_copy_leaves_the_original) {
    ASSERT_TRUE(it_->Down(1));
    ASSERT_TRUE(it_->Down(0));
    const auto copy = Ref<FIIterator>::Adopt(it_->Copy());
    const auto other = Ref<FIIterator>::Adopt(copy->Copy());
    EXPECT_TRUE(copy->Next());
    EXPECT_TRUE(other->Up());
    EXPECT_TRUE(other->Next());
    EXPECT_EQ("Root.b.y", PathOf(*copy));
    EXPECT_EQ("Root.c", PathOf(*other));
    EXPECT_EQ("Root.b.x", PathOf(*it_));
    EXPECT_TRUE(it_->Next());
    EXPECT_EQ("Root.b.y", PathOf(*it_));
    EXPECT_EQ("Root.c", PathOf(*other));
}

TEST_F(Iterator, a_refused_step_back_leaves_the_position_and_its_variables) {
    ASSERT_TRUE(it_->Down(0));
    it_->SetVarText("v", "kept");
    EXPECT_FALSE(it_->Prev());
    EXPECT_EQ("Root.a", PathOf(*it_));
    EXPECT_EQ("kept", VarOf(*it_, "v"));
}

TEST_F(Iterator, variables_belong_to_the_position) {
    it_->SetVarText("v", "at root");
    it_->SetVarText("w", FIValue::OfInt(7));
    ASSERT_TRUE(it_->Down(1));
    EXPECT_EQ("at root", VarOf(*it_, "v"));
    it_->SetVarText("v", "at b");
    EXPECT_EQ("at b", VarOf(*it_, "v"));
    ASSERT_TRUE(it_->Down(0));
    EXPECT_EQ("at b", VarOf(*it_, "v"));
    it_->SetVar(Text("u"), Text("at x"));
    EXPECT_TRUE(it_->Next());
    EXPECT_EQ("(none)", VarOf(*it_, "u"));
    EXPECT_TRUE(it_->Up());
    EXPECT_EQ("at b", VarOf(*it_, "v"));
    EXPECT_TRUE(it_->RemoveVarText("v"));
    EXPECT_EQ("at root", VarOf(*it_, "v"));
    EXPECT_TRUE(it_->RemoveVar(Text("w")));
    EXPECT_FALSE(it_->RemoveVarText("w"));
    EXPECT_FALSE(it_->RemoveVarText("nothing"));
    EXPECT_TRUE(it_->Up());
    EXPECT_EQ("at root", VarOf(*it_, "v"));
    EXPECT_EQ("(none)", VarOf(*it_, "w"));
    FIValue out = Text("before");
    EXPECT_FALSE(it_->GetVar(Text("w"), out));
    EXPECT_TRUE(out.IsNull());
}

TEST_F(Iterator, up_restores_the_variables_and_drops_those_below) {
    it_->SetVarText("v", "at root");
    ASSERT_TRUE(it_->Down(1));
    it_->SetVarText("v", "at b");
    it_->SetVarText("u", "at b");
    EXPECT_TRUE(it_->Up());
    EXPECT_EQ("at root", VarOf(*it_, "v"));
    EXPECT_EQ("(none)", VarOf(*it_, "u"));
    ASSERT_TRUE(it_->Down(1));
    EXPECT_EQ("(none)", VarOf(*it_, "u")) << "gone for good";
    const auto bare = root_.Iterate();
    ASSERT_TRUE(bare->Down(1));
    bare->SetVarText("u", "at b");
    EXPECT_TRUE(bare->Up());
    EXPECT_EQ("(none)", VarOf(*bare, "u")) << "though there are none above";
}

TEST_F(Iterator, is_counted_from_one) {
    FIIterator* it = root_.Iterate().Detach();
    EXPECT_EQ(2, it->AddRef());
    EXPECT_EQ(1, it->Release());
    EXPECT_EQ(it->TypeId(), it_->TypeId());
    EXPECT_EQ(0, it->Release());
}

// An iterator is counted with the variables that it shows, a reference with the iterator it owns.
TEST_F(Iterator, instances_are_counted) {
    constexpr CountedClass kClasses[] = {CountedClass::FIIterator, CountedClass::FIVarSet,
                                         CountedClass::FIReference,
                                         CountedClass::FICollectionElement};
    const auto counts = [&] {
        std::vector<int> both;
        for (CountedClass each : kClasses) {
            both.push_back(CountOf(each).alive);
            both.push_back(CountOf(each).total);
        }
        return both;
    };
    const auto since = [&](const std::vector<int>& before) {
        std::vector<int> difference = counts();
        for (std::size_t i = 0; i < before.size(); ++i) difference[i] -= before[i];
        return difference;
    };
    const std::vector<int> before = counts();
    {
        const auto copy = Ref<FIIterator>::Adopt(it_->Copy());
        EXPECT_EQ((std::vector<int>{1, 1, 1, 1, 0, 0, 0, 0}), since(before));
        const auto reference = Ref<FIReferenceBase>::Adopt(it_->MakeReference());
        EXPECT_EQ((std::vector<int>{2, 2, 2, 2, 1, 1, 0, 0}), since(before));
        const auto element = it_->MakeElement();
        EXPECT_EQ((std::vector<int>{2, 2, 2, 2, 1, 1, 1, 1}), since(before));
    }
    EXPECT_EQ((std::vector<int>{0, 2, 0, 2, 0, 1, 0, 1}), since(before));
}

TEST_F(Iterator, copies_have_their_own_present_variables_and_share_those_above) {
    ASSERT_TRUE(it_->Down(1));
    it_->SetVarText("v", "at b");
    const auto copy = Ref<FIIterator>::Adopt(it_->Copy());
    it_->SetVarText("v", "changed");
    EXPECT_EQ("at b", VarOf(*copy, "v"));
    ASSERT_TRUE(it_->Up());
    it_->SetVarText("late", "at root");
    EXPECT_EQ("at root", VarOf(*copy, "late"));
}

TEST_F(Iterator, own_variables_no_longer_follow_the_source_from_their_level_on) {
    it_->SetVarText("r", "at root");
    ASSERT_TRUE(it_->Down(1));
    it_->SetVarText("v", "at b");
    ASSERT_TRUE(it_->DownFirst());
    ASSERT_TRUE(it_->DownFirst());
    const auto copy = Ref<FIIterator>::Adopt(it_->Copy());
    copy->OwnVariables(1);
    ASSERT_TRUE(it_->Up());
    it_->SetVarText("w", "at x");
    ASSERT_TRUE(it_->Up());
    it_->SetVarText("v", "changed");
    ASSERT_TRUE(it_->Up());
    it_->SetVarText("r", "changed");
    EXPECT_EQ("at b", VarOf(*copy, "v"));
    EXPECT_EQ("(none)", VarOf(*copy, "w"));
    EXPECT_EQ("changed", VarOf(*copy, "r"));
}

TEST_F(Iterator, variables_are_dumped_from_the_root_without_those_shadowed) {
    it_->SetVarText("v", "hidden");
    it_->SetVarText("longname", FIValue::OfReal(1.5));
    it_->SetVarText("shorter", FIValue::OfInt(3));
    it_->SetVar(Text("n"), FIValue());
    ASSERT_TRUE(it_->Down(1));
    it_->SetVarText("v", "shown");
    FIValue out = FIValue::OfInt(1);
    it_->DumpVars(out);
    EXPECT_EQ(
        "Frame\tVariable\t\tType\tValue\n"
        "0\tlongname\tREAL\t\"1.5\"\n"
        "0\tn\t\tNULL\t\"\"\n"
        "0\tshorter\t\tINT\t\"3\"\n"
        "1\tv\t\tSTRING\t\"shown\"\n",
        out.ToText());
}

TEST_F(Iterator, paths_quote_names_with_special_characters) {
    ScriptNode& odd = c_.Add("Feed.1");
    odd.Add("say \"x\"").Add("#12");
    ASSERT_TRUE(it_->Down(2));
    ASSERT_TRUE(it_->DownFirst());
    ASSERT_TRUE(it_->DownFirst());
    ASSERT_TRUE(it_->DownFirst());
    EXPECT_EQ("Root.c.\"Feed.1\".\"say \"\"x\"\"\".#12", PathOf(*it_));
    char text[8];
    it_->PathText(text, sizeof text);
    EXPECT_STREQ("Root.c.", text);
    EXPECT_EQ(static_cast<int>(PathOf(*it_).size()), it_->PathLength());
    it_->NameText(text, sizeof text);
    EXPECT_STREQ("#12", text);
    EXPECT_EQ(3, it_->NameLength());
    FIValue shown;
    it_->GetVarSet()->GetPath(shown);
    EXPECT_EQ(PathOf(*it_), shown.ToText());
}

TEST_F(Iterator, the_path_below_the_root_is_walked_from_the_root) {
    c_.Add("Feed.1").Add("say \"x\"");
    ASSERT_TRUE(it_->Down(2));
    ASSERT_TRUE(it_->DownFirst());
    ASSERT_TRUE(it_->DownFirst());
    FIValue below;
    it_->GetPathFrom(1, below);
    EXPECT_EQ("c.\"Feed.1\".\"say \"\"x\"\"\"", below.ToText());
    const auto again = root_.Iterate();
    EXPECT_TRUE(again->SeekPath(below));
    EXPECT_EQ(PathOf(*it_), PathOf(*again));
    it_->GetPathFrom(4, below);
    EXPECT_EQ("", below.ToText());
    ScriptNode above("above");
    above.Link(root_);
    const auto from_above = above.Iterate();
    EXPECT_TRUE(from_above->SeekPath(Text(PathOf(*it_))));
    EXPECT_EQ("above." + PathOf(*it_), PathOf(*from_above));
}

TEST_F(Iterator, keys_are_the_values_of_the_key_nodes) {
    ScriptNode first("first");
    first.Set("value", "N.1").hidden_key = true;
    ScriptNode second("second");
    second.Set("value", 5);
    b_.keys = {&first, &second};
    ASSERT_TRUE(it_->Down(1));
    char text[32];
    it_->KeyText(text, sizeof text);
    EXPECT_STREQ("\"N.1\", 5", text);
    EXPECT_EQ(8, it_->KeyLength());
    EXPECT_TRUE(it_->IsKeyName("first"));
    EXPECT_FALSE(it_->IsKeyName("second"));
    EXPECT_FALSE(it_->IsKeyName("third"));
    EXPECT_EQ("Root.b(\"N.1\", 5)", PathOf(*it_));
    ASSERT_TRUE(it_->DownFirst());
    EXPECT_EQ("Root.b(\"N.1\", 5).x", PathOf(*it_));
    EXPECT_EQ(0, it_->KeyLength());
    FIValue key = Text("before");
    it_->GetKeyText(-1, key);
    EXPECT_TRUE(key.IsNull());
    it_->GetKeyText(3, key);
    EXPECT_TRUE(key.IsNull());
    it_->GetKeyText(1, key);
    EXPECT_EQ("\"N.1\", 5", key.ToText());
}

TEST_F(Iterator, comparison_goes_from_the_root_down) {
    const auto at = [&](std::vector<int> indexes) {
        auto it = root_.Iterate();
        for (int index : indexes) EXPECT_TRUE(it->Down(index));
        return it;
    };
    struct Case {
        std::vector<int> one;
        std::vector<int> other;
        int sign;
    };
    const Case cases[] = {
        {{}, {}, 0},          {{0}, {0}, 0},       {{0}, {1}, -1},
        {{2}, {1, 1}, 1},     {{1}, {1, 0}, -1},   {{1, 1}, {1}, 1},
        {{1, 0}, {1, 1}, -1}, {{1, 1}, {1, 1}, 0}, {{}, {0}, -1},
    };
    for (const Case& each : cases) {
        const auto one = at(each.one);
        const auto other = at(each.other);
        SCOPED_TRACE(PathOf(*one) + " with " + PathOf(*other));
        const int result = one->Compare(*other);
        EXPECT_EQ(each.sign, (result > 0) - (result < 0));
        EXPECT_EQ(each.sign < 0, one->Less(*other));
        EXPECT_EQ(each.sign > 0, one->Greater(*other));
        EXPECT_EQ(each.sign == 0, one->Equal(*other));
        EXPECT_EQ(each.sign != 0, one->NotEqual(*other));
    }
    ScriptNode stranger("Strange");
    EXPECT_EQ(1, (stranger.Iterate()->Compare(*it_) > 0));
}

TEST(IteratorGraph, stops_at_a_node_that_repeats_an_ancestor) {
    // A flowsheet with a unit that refers to its flowsheet.
    ScriptNode root("Root");
    ScriptNode& flowsheet = root.Add("Flowsheet");
    ScriptNode& unit = flowsheet.Add("Unit");
    unit.Link(flowsheet);

    const auto it = root.Iterate(false);
    EXPECT_TRUE(it->SeekPath(Text("Flowsheet.Unit.Flowsheet")));
    EXPECT_FALSE(it->CanDescend());
    EXPECT_FALSE(it->DownFirst());
    EXPECT_FALSE(it->SeekChild("Unit"));
    EXPECT_EQ("Root.Flowsheet.Unit.Flowsheet", PathOf(*it));
    const auto copy = Ref<FIIterator>::Adopt(it->Copy());
    EXPECT_FALSE(copy->DownFirst());

    const auto with_history = root.Iterate(true);
    EXPECT_TRUE(with_history->SeekPath(Text("Flowsheet.Unit.Flowsheet.Unit.Flowsheet")));
    EXPECT_TRUE(with_history->CanDescend());
    EXPECT_TRUE(Ref<FIIterator>::Adopt(with_history->Copy())->DownFirst());
}

// A chain of nodes, each below the one before, whose cursors call every position equal to theirs.
class AgreeingCursor final : public CountedFromZero<FICursorBase> {
 public:
    explicit AgreeingCursor(int level) : level_(level) {}

    // Levels alternate between two classes.
    const void* TypeId() const override {
        static const char type_ids[2] = {};
        return &type_ids[level_ % 2];
    }
    FICursorBase* Clone(bool) override { return HandOut(this); }
    bool Seek(int, int delta) override { return delta == 0; }
    bool SeekName(int, const char*) override { return false; }
    bool AtBegin() override { return true; }
    bool AtEnd() override { return false; }
    int Compare(FICursorPosition&) override { return 0; }
    void GetKey(FIValue& out) override { out.SetInt(level_); }
    FIEntry* GetEntry() override;

 private:
    int level_;
};

class ChainContext final : public CountedFromZero<FIContext> {
 public:
    explicit ChainContext(int level) : level_(level) {}
    FICursorBase* MakeCursor(int) override { return HandOut(new AgreeingCursor(level_)); }

 private:
    int level_;
};

class ChainEntry final : public CountedFromZero<FIEntry> {
 public:
    explicit ChainEntry(int level) : level_(level) {}
    void GetName(FIValue& out) override { out.SetInt(level_); }
    void GetAttribute(const FIValue&, FIValue& out) override { out.Clear(); }
    FIAttributeSource* GetAttributeSource() override { return EmptyEntry()->GetAttributeSource(); }
    FIContext* GetContext() override { return HandOut(new ChainContext(level_)); }

 private:
    int level_;
};

constexpr int kLowestLevel = 100;

FIEntry* AgreeingCursor::GetEntry() {
    return level_ < kLowestLevel ? HandOut(new ChainEntry(level_ + 1)) : nullptr;
}

TEST(Descent, an_element_without_a_node_is_not_entered) {
    const auto lowest = Ref<FIEntry>::Share(new ChainEntry(kLowestLevel));
    const auto it = Ref<FIIterator>::Adopt(new FIIterator(lowest.Get(), false));
    it->SetVarText("v", "kept");
    EXPECT_FALSE(it->DownFirst());
    EXPECT_EQ(0, it->Depth());
    EXPECT_EQ(lowest.Get(), it->EntryAt(0));
    EXPECT_EQ("kept", VarOf(*it, "v"));
}

// A family that keeps one cursor and hands out that.
class KeptCursorContext final : public CountedFromZero<FIContext> {
 public:
    explicit KeptCursorContext(const Ref<FICursorBase>& kept) : kept_(kept) {}
    FICursorBase* MakeCursor(int) override { return kept_.Counted(); }

 private:
    Ref<FICursorBase> kept_;
};

class KeptCursorEntry final : public CountedFromZero<FIEntry> {
 public:
    explicit KeptCursorEntry(const Ref<FICursorBase>& kept) : kept_(kept) {}
    void GetName(FIValue& out) override { out.SetText("keeper"); }
    void GetAttribute(const FIValue&, FIValue& out) override { out.Clear(); }
    FIAttributeSource* GetAttributeSource() override { return EmptyEntry()->GetAttributeSource(); }
    FIContext* GetContext() override { return HandOut(new KeptCursorContext(kept_)); }

 private:
    Ref<FICursorBase> kept_;
};

TEST(Descent, a_cursor_that_others_hold_is_not_moved) {
    ScriptNode list("list");
    for (const char* name : {"a", "b", "c"}) list.Add(name);
    const Ref<FICursorBase> kept = list.Children();
    const auto keeper = Ref<FIEntry>::Share(new KeptCursorEntry(kept));
    const auto it = Ref<FIIterator>::Adopt(new FIIterator(keeper.Get(), false));
    ASSERT_TRUE(it->Down(2));
    EXPECT_EQ("c", NameOf(*it));
    FIValue key;
    kept->GetKey(key);
    EXPECT_EQ("a", key.ToText());
}

TEST(IteratorGraph, only_cursors_of_one_class_are_a_repeat) {
    const auto top = Ref<FIEntry>::Share(new ChainEntry(0));
    const auto it = Ref<FIIterator>::Adopt(new FIIterator(top.Get(), false));
    EXPECT_TRUE(it->DownFirst());
    EXPECT_TRUE(it->DownFirst());
    EXPECT_TRUE(it->CanDescend()) << "the second level is of another class than the first";
    EXPECT_TRUE(it->DownFirst());
    EXPECT_FALSE(it->CanDescend()) << "the third is of the class of the first";
    EXPECT_FALSE(it->DownFirst());
}

TEST(IteratorGraph, does_not_go_deeper_than_the_limit) {
    ScriptNode node("n");
    node.Link(node);
    const auto it = node.Iterate(true);
    int depth = 0;
    while (it->DownFirst()) ++depth;
    EXPECT_EQ(FIIterator::kDepthLimit, depth);
    EXPECT_TRUE(it->Up());
    EXPECT_TRUE(it->DownFirst());
}

TEST_F(Iterator, a_leaf_can_not_be_entered) {
    a_.container = false;
    EXPECT_TRUE(it_->CanDescend());
    ASSERT_TRUE(it_->Down(0));
    EXPECT_FALSE(it_->CanDescend());
}

TEST_F(Iterator, reads_and_writes_show_the_callers_var_set_for_the_call_alone) {
    const auto other = Ref<FIIterator>::Adopt(it_->Copy());
    FIVarSet* seen = nullptr;
    root_.on_read = root_.on_write = [&](FIVarSet* vars, const std::string&) { seen = vars; };
    const Ref<FIEntry> shared = Ref<FIEntry>::Share(it_->EntryAt(0));
    ASSERT_EQ(shared.Get(), other->EntryAt(0));
    FIValue out;
    it_->GetAttribute(Text("value"), out);
    EXPECT_EQ(it_->GetVarSet(), seen);
    EXPECT_EQ(nullptr, shared->GetVarSet());
    other->GetAttribute(Text("value"), out);
    EXPECT_EQ(other->GetVarSet(), seen);
    it_->SetAttribute(Text("value"), Text("1"), 0, out);
    EXPECT_EQ(it_->GetVarSet(), seen);
    EXPECT_TRUE(out.IsNull());
    shared->SetVarSet(other->GetVarSet());
    it_->SetValue(Text("2"), 0, out);
    EXPECT_EQ(it_->GetVarSet(), seen);
    EXPECT_EQ(other->GetVarSet(), shared->GetVarSet());
    shared->SetVarSet(nullptr);
}

TEST_F(Iterator, refused_operations_pass_their_message) {
    FIValue out;
    const FIValue any = Text("any");
    it_->SetUnit(any, out);
    EXPECT_EQ("Not Supported", out.ToText());
    it_->SetSpecUnit(any, out);
    EXPECT_EQ("Not Supported", out.ToText());
    it_->SetValueInUnit(any, any, 0, out);
    EXPECT_EQ("Not Supported", out.ToText());
    it_->SetSpecValue(any, 0, out);
    EXPECT_EQ("Not Supported", out.ToText());
    it_->SetSpecValueInUnit(any, any, 0, out);
    EXPECT_EQ("Not Supported", out.ToText());
    it_->DoAction(out, 0, 0);
    EXPECT_EQ("Action is not valid", out.ToText());
    it_->DoActionEx(out, 0, 0, 0, 0);
    EXPECT_EQ("Action not supported", out.ToText());
    EXPECT_EQ(0, it_->GetCaps(0, 0));
    FIErrorRecord record;
    it_->DoCommand(0, record);
    EXPECT_EQ(2, record.code);
}

TEST_F(Iterator, the_hold_is_taken_by_the_nearest_node_that_can) {
    struct Case {
        const char* what;
        bool root_holds;
        bool b_holds;
        bool x_holds;
        std::vector<std::string> root_log;
        std::vector<std::string> b_log;
        std::vector<std::string> x_log;
    };
    const Case cases[] = {
        {"itself", true, true, true, {}, {}, {"hold", "set value", "batch"}},
        {"its parent", true, true, false, {}, {"hold", "batch"}, {"set value"}},
        {"the root", true, false, false, {"hold", "batch"}, {}, {"set value"}},
        {"nobody", false, false, false, {}, {}, {"set value", "batch"}},
    };
    ScriptNode& x = *b_.children[0];
    ASSERT_TRUE(it_->SeekPath(Text("b.x")));
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        root_.can_hold = each.root_holds;
        b_.can_hold = each.b_holds;
        x.can_hold = each.x_holds;
        for (ScriptNode* node : {&root_, &b_, &x}) node->log.clear();
        FIValue out;
        it_->SetAttribute(Text("value"), Text("1"), 0, out);
        EXPECT_EQ(each.root_log, root_.log);
        EXPECT_EQ(each.b_log, b_.log);
        EXPECT_EQ(each.x_log, x.log);
    }
}

TEST_F(Iterator, display_units_are_kept_by_quantity_and_copied) {
    FIVarSet& vars = *it_->GetVarSet();
    FIValue out;
    it_->SetDisplayUnit(Text("K"), FIValue(), out);
    EXPECT_TRUE(out.IsNull());
    it_->SetDisplayUnit(Text("bar"), Text("Pressure"), out);
    it_->SetDisplaySpecUnit(Text("F"), Text(""), out);
    vars.GetUnit(FIValue(), out);
    EXPECT_EQ("K", out.ToText());
    vars.GetUnit(Text(""), out);
    EXPECT_EQ("K", out.ToText());
    vars.GetUnit(Text("Pressure"), out);
    EXPECT_EQ("bar", out.ToText());
    vars.GetUnit(Text("Mass"), out);
    EXPECT_TRUE(out.IsNull());
    vars.GetSpecUnit(FIValue(), out);
    EXPECT_EQ("F", out.ToText());

    const auto copy = Ref<FIIterator>::Adopt(it_->Copy());
    FIValue old;
    vars.SetUnit(FIValue(), Text("C"), old);
    EXPECT_EQ("K", old.ToText());
    vars.SetSpecUnit(Text("Mass"), Text("kg"), old);
    EXPECT_TRUE(old.IsNull());
    copy->GetVarSet()->GetUnit(FIValue(), out);
    EXPECT_EQ("K", out.ToText());
    copy->GetVarSet()->GetSpecUnit(FIValue(), out);
    EXPECT_EQ("F", out.ToText());
}

TEST_F(Iterator, the_var_set_has_its_own_variables_and_shows_those_of_the_position) {
    FIVarSet& vars = *it_->GetVarSet();
    it_->SetVarText("v", "of the position");
    FIValue out;
    EXPECT_TRUE(vars.GetVar(Text("v"), out));
    EXPECT_EQ("of the position", out.ToText());
    vars.SetVar(Text("v"), Text("of the set"));
    EXPECT_TRUE(vars.GetVar(Text("v"), out));
    EXPECT_EQ("of the set", out.ToText());
    EXPECT_EQ("of the position", VarOf(*it_, "v"));
    EXPECT_FALSE(vars.GetVar(Text("w"), out));
    EXPECT_TRUE(out.IsNull());
    ASSERT_TRUE(it_->Down(0));
    EXPECT_TRUE(Ref<FIIterator>::Adopt(it_->Copy())->GetVarSet()->GetVar(Text("v"), out));
    EXPECT_EQ("of the set", out.ToText());
}

TEST_F(Iterator, attribute_source_is_the_entrys) {
    root_.Set("one", 1).Set("two", 2);
    const auto source = Ref<FIAttributeSource>::Adopt(it_->GetAttributeSource());
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    ASSERT_TRUE(cursor->Seek(kFromFirst, 1));
    FIValue out;
    cursor->GetValue(out);
    EXPECT_EQ(2, out.AsInt());
}

TEST_F(Iterator, opens_the_node_that_a_host_path_names) {
    // Names end with "/", as in "b/x/deep".
    const auto first_part = [](const char* path, FIValue& out, const char** rest) {
        const std::string text = path;
        const std::size_t end = text.find('/');
        out.SetText(text.substr(0, end));
        *rest = path + (end == std::string::npos ? text.size() : end + 1);
    };
    const auto nothing = [](const char*, FIValue& out, const char** rest) {
        out.Clear();
        *rest = "";
    };
    const auto whole_name = [](const char* path, FIValue& out, const char** rest) {
        out.SetText(path);
        *rest = "";
    };
    const auto stuck = [](const char* path, FIValue& out, const char** rest) {
        out.SetText("");
        *rest = path;
    };
    root_.key_value = b_.key_value = first_part;
    b_.children[0]->key_value = first_part;
    struct Case {
        const char* name;
        const char* path;
    };
    const Case cases[] = {
        {"b", "Root.b"},  {"b/x", "Root.b.x"}, {"b/x/", "Root.b.x"}, {"b/x/deep", "Root.b.x.deep"},
        {"b/q", nullptr}, {"q/x", nullptr},    {"a/x", nullptr},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const auto opened = Ref<FIIteratorBase>::Adopt(it_->OpenAttribute(Text(each.name)));
        ASSERT_EQ(each.path != nullptr, static_cast<bool>(opened));
        if (opened) {
            EXPECT_EQ(each.path, PathOf(*opened));
        }
        EXPECT_EQ("Root", PathOf(*it_));
    }
    // A level that the notation leaves out is entered without consuming any of it.
    root_.key_value = [](const char* path, FIValue& out, const char** rest) {
        out.SetText("b");
        *rest = path;
    };
    const auto opened = Ref<FIIteratorBase>::Adopt(it_->OpenAttribute(Text("x/deep")));
    ASSERT_TRUE(opened);
    EXPECT_EQ("Root.b.x.deep", PathOf(*opened));
    root_.key_value = nothing;
    EXPECT_EQ(nullptr, it_->OpenAttribute(Text("b")));
    // A key is taken as a name before it is taken as a path.
    root_.Add("b.x");
    root_.key_value = whole_name;
    EXPECT_EQ("Root.\"b.x\"", PathOf(*Ref<FIIteratorBase>::Adopt(it_->OpenAttribute(Text("b.x")))));
    EXPECT_EQ("Root.b.x.deep",
              PathOf(*Ref<FIIteratorBase>::Adopt(it_->OpenAttribute(Text("b.x.deep")))));
    root_.key_value = stuck;
    EXPECT_EQ(nullptr, it_->OpenAttribute(Text("b")));
}

TEST_F(Iterator, opens_the_node_to_which_a_context_gives_a_whole_path) {
    struct Case {
        const char* name;
        const char* way;
        const char* path;
    };
    const Case cases[] = {
        {"link", "b", "Root.b"},
        {"link", "b.x", "Root.b.x"},
        {"link", "b.x.deep", "Root.b.x.deep"},
        {"b", "b.x.deep", "Root.b.x.deep"},
        {"/link", "b.x", "Root.b.x"},
        {"link", "q", nullptr},
        {"link", "b.q", nullptr},
        // One level alone, and nothing of a host's path is understood there.
        {"/link", "b", nullptr},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(std::string(each.name) + " by " + each.way);
        // What a context does with the rest that it is handed: nothing, or it says that none is.
        for (const bool takes_all : {false, true}) {
            root_.key_value = [&](const char*, FIValue& out, const char** rest) {
                out.SetText(each.way);
                if (takes_all) *rest = nullptr;
            };
            const auto opened = Ref<FIIteratorBase>::Adopt(it_->OpenAttribute(Text(each.name)));
            const bool is_notation = *each.name == '/' && std::string(each.way) == "b";
            const char* path = is_notation && takes_all ? "Root.b" : each.path;
            EXPECT_EQ(path ? path : "(none)", opened ? PathOf(*opened) : "(none)");
            EXPECT_EQ("Root", PathOf(*it_));
        }
    }
}

TEST_F(Iterator, array_indices_behind_a_key_count_children) {
    ScriptNode& dotted = root_.Add("b.x");
    for (const char* name : {"p", "q"}) dotted.Add(name);
    root_.Add("b.2");
    root_.key_value = [](const char* path, FIValue& out, const char** rest) {
        out.SetText(path);
        *rest = "";
    };
    struct Case {
        const char* key;
        const char* path;
    };
    const Case cases[] = {
        {"b.#1", "Root.b.y"},
        {"b.x.#0", "Root.\"b.x\".p"},
        {"b.x.#1", "Root.\"b.x\".q"},
        {"b.#0.#0", "Root.b.x.deep"},
        {"#1", "Root.b"},
        {"b.2", "Root.\"b.2\""},
        // An index is of digits alone and stands behind a dot.
        {"b.x.#x1", "Root.b.x.deep"},
        {"b.x#1", nullptr},
        {"b.x.#2", nullptr},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.key);
        const auto opened = Ref<FIIteratorBase>::Adopt(it_->OpenAttribute(Text(each.key)));
        EXPECT_EQ(each.path ? each.path : "(none)", opened ? PathOf(*opened) : "(none)");
    }
}

class Freezing : public Iterator {};

TEST_F(Freezing, position_is_found_again_after_the_lists_were_rebuilt) {
    ASSERT_TRUE(it_->SeekPath(Text("b.x.deep")));
    it_->SetVarText("v", "kept");
    it_->Freeze();
    EXPECT_TRUE(it_->IsFrozen());
    root_.RemoveChild("a");
    ScriptNode twin("b");
    ScriptNode& x = twin.Add("x");
    x.Add("other");
    x.Add("deep").Set("value", "new");
    root_.RemoveChild("b");
    root_.Link(twin);
    EXPECT_TRUE(it_->Thaw());
    EXPECT_FALSE(it_->IsFrozen());
    EXPECT_EQ("Root.b.x.deep", PathOf(*it_));
    EXPECT_EQ("new", ReadOf(*it_, "value"));
    EXPECT_EQ("kept", VarOf(*it_, "v"));
    EXPECT_TRUE(it_->Prev());
    EXPECT_EQ("Root.b.x.other", PathOf(*it_));
    // The levels above are the new ones as well.
    twin.Set("value", "new b");
    EXPECT_TRUE(it_->Up());
    EXPECT_TRUE(it_->Up());
    EXPECT_EQ("Root.b", PathOf(*it_));
    EXPECT_EQ("new b", ReadOf(*it_, "value"));
    EXPECT_FALSE(it_->Next()) << "among the children that the root has now";
}

TEST_F(Freezing, fails_and_keeps_the_saved_position_when_a_node_is_gone) {
    ASSERT_TRUE(it_->SeekPath(Text("b.x")));
    it_->Freeze();
    ScriptNode* x = b_.children[0];
    b_.children.clear();
    EXPECT_FALSE(it_->Thaw());
    EXPECT_TRUE(it_->IsFrozen());
    EXPECT_EQ("Root.b.x", PathOf(*it_));
    b_.children = {x};
    EXPECT_TRUE(it_->Thaw());
}

TEST_F(Freezing, finds_children_by_name_key_and_index) {
    struct Case {
        const char* what;
        FIValue key;
        bool found;
    };
    const Case cases[] = {
        {"text key", Text("key of b"), true},
        {"index key", FIValue::OfInt(1), true},
        {"real key", FIValue::OfReal(2.5), true},
        {"index past the end", FIValue::OfInt(9), false},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        b_.key = each.key;
        const auto it = root_.Iterate();
        ASSERT_TRUE(it->Down(1));
        it->Freeze();
        EXPECT_EQ(each.found, it->Thaw());
        EXPECT_EQ("Root.b", PathOf(*it));
    }
}

TEST_F(Freezing, of_siblings_with_one_key_the_saved_node_alone_is_found) {
    for (ScriptNode* each : {&a_, &b_, &c_}) each->key = Text("one key");
    ASSERT_TRUE(it_->Down(1));
    it_->Freeze();
    EXPECT_TRUE(it_->Thaw());
    EXPECT_EQ("Root.b", PathOf(*it_));
    it_->Freeze();
    root_.RemoveChild("b");
    EXPECT_FALSE(it_->Thaw()) << "the two that are left are others";
    root_.RemoveChild("a");
    EXPECT_TRUE(it_->Thaw()) << "one that stands alone has been renamed";
    EXPECT_EQ("Root.c", PathOf(*it_));
}

TEST_F(Freezing, without_frames_is_trivial) {
    it_->Freeze();
    EXPECT_FALSE(it_->IsFrozen());
    EXPECT_TRUE(it_->Thaw());
    EXPECT_EQ("Root", PathOf(*it_));
}

TEST_F(Freezing, past_the_last_child_is_not_found_again) {
    for (bool null_at_end : {true, false}) {
        root_.null_at_end = null_at_end;
        const auto it = root_.Iterate();
        ASSERT_TRUE(it->DownLast());
        EXPECT_FALSE(it->Next());
        it->Freeze();
        EXPECT_FALSE(it->Thaw());
    }
}

TEST_F(Freezing, copies_take_over_what_was_saved) {
    ASSERT_TRUE(it_->SeekPath(Text("b.x")));
    it_->Freeze();
    b_.children[0]->name = Text("renamed");
    const auto copy = Ref<FIIterator>::Adopt(it_->Copy());
    EXPECT_TRUE(copy->IsFrozen());
    EXPECT_FALSE(copy->Thaw());
    b_.children[0]->name = Text("x");
    EXPECT_TRUE(copy->Thaw());
    EXPECT_TRUE(it_->IsFrozen());
    EXPECT_TRUE(it_->Thaw());
}

TEST_F(Freezing, a_move_to_another_level_is_newer_than_what_was_saved) {
    ASSERT_TRUE(it_->SeekPath(Text("b.x")));
    it_->Freeze();
    ASSERT_TRUE(it_->Up());
    EXPECT_TRUE(it_->Thaw());
    EXPECT_EQ("Root.b", PathOf(*it_));
}

TEST_F(Freezing, elements_know_their_parents_and_keys) {
    ASSERT_TRUE(it_->SeekPath(Text("b.x")));
    const auto elements = it_->MakeElements();
    ASSERT_EQ(3u, elements.size());
    EXPECT_EQ(nullptr, elements[0]->Parent());
    EXPECT_TRUE(elements[0]->Key().IsNull());
    EXPECT_EQ(elements[0].get(), elements[1]->Parent());
    EXPECT_EQ("b", elements[1]->Key().ToText());
    EXPECT_EQ("x", elements[2]->Key().ToText());
    Ref<FICursorBase> cursor = root_.Children();
    Ref<FIEntry> entry = root_.Entry();
    EXPECT_FALSE(elements[0]->Resolve(*root_.Entry(), cursor, entry))
        << "nothing leads to the root";
    EXPECT_FALSE(cursor);
    EXPECT_FALSE(entry);
    const auto alone = it_->MakeElement();
    EXPECT_EQ("x", alone->Key().ToText());
    EXPECT_EQ(nullptr, alone->Parent());
    EXPECT_EQ(it_->EntryAt(2), Ref<FIEntry>::Adopt(alone->GetEntry()).Get());
}

}  // namespace

}  // namespace fixtop
