// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

#include "diagnostics/seek_table.h"
#include "path/tokenizer.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

std::string PathOf(FIIterator& it) {
    FIValue path;
    it.GetPath(path);
    return path.ToText();
}

// Root: three streams, a unit with vessels, a node without children.
class PathEvaluation : public ::testing::Test {
 protected:
    PathEvaluation() {
        for (int i = 0; i < 3; ++i) {
            ScriptNode& stream = root_.Add("Feed");
            stream.Set("type", "Stream").Set("rank", i).Set("temperature", 20.0 + i);
            stream.Add("Flow").Set("value", 1.0 * i).Set("uom", "kg/h");
            stream.Add("State").Set("value", i == 1 ? "gas" : "liquid");
        }
        ScriptNode& column = root_.Add("Column");
        column.Set("type", "Column");
        ScriptNode& vessels = column.Add("Vessels");
        for (const char* name : {"Condenser", "Main", "Reboiler"}) {
            ScriptNode& vessel = vessels.Add(std::string("Elem") + name[0]);
            vessel.Add("Object Name").Set("value", name);
            vessel.Add("Vessel Pressure").Set("value", 101.5);
        }
        root_.Add("Leaf").Set("text", "1.0").Set("nothing", FIValue());
        it_ = root_.Iterate();
    }

    ScriptNode root_{"Root"};
    Ref<FIIterator> it_;
};

struct WalkCase {
    const char* path;
    // Path after the walk; null when it fails and stays.
    const char* reached;
    // The rank of the node reached, -1 when it has none.
    int rank = -1;
};

// Each walk begins where `from` stands, which is the root.
void ExpectWalks(FIIterator& from, std::span<const WalkCase> walks) {
    for (const WalkCase& each : walks) {
        SCOPED_TRACE(each.path);
        const auto it = Ref<FIIterator>::Adopt(from.Copy());
        EXPECT_EQ(each.reached != nullptr, it->SeekPath(Text(each.path)));
        EXPECT_EQ(each.reached ? each.reached : "Root", PathOf(*it));
        if (each.rank < 0) continue;
        FIValue rank;
        it->GetAttribute(Text("rank"), rank);
        EXPECT_EQ(each.rank, rank.AsInt());
    }
}

// The same by keys from the root, which are the names here.
void ExpectLocates(FIIterator& from, std::span<const WalkCase> walks) {
    for (const WalkCase& each : walks) {
        const auto it = Ref<FIIterator>::Adopt(from.Copy());
        EXPECT_EQ(each.reached != nullptr, it->Locate(Text(each.path))) << each.path;
        EXPECT_EQ(each.reached ? each.reached : "Root", PathOf(*it)) << each.path;
    }
}

TEST_F(PathEvaluation, walks_reach_the_node_that_the_path_names) {
    const WalkCase cases[] = {
        {"", "Root"},
        {"Column", "Root.Column"},
        {"Column.Vessels", "Root.Column.Vessels"},
        {"Feed", "Root.Feed", 0},
        {"*", "Root.Feed", 0},
        {"Feed#0", "Root.Feed", 0},
        {"Feed#1", "Root.Feed", 1},
        {"Feed#2", "Root.Feed", 2},
        {"Feed#3", nullptr},
        {"#3", "Root.Column"},
        {"*#4", "Root.Leaf"},
        {"#5", nullptr},
        {"*#1", "Root.Feed", 1},
        {"*#2147483647", nullptr},
        {"#-1", "Root"},
        {"#-2", "Root.Feed", 0},
        {"Feed#-1", "Root.Feed", 0},
        {"Feed#-5", "Root.Feed", 0},
        {"'Column", "Root.Column"},
        {"'Column.'Vessels", "Root.Column.Vessels"},
        {"Nobody", nullptr},
        {"Column.Nobody", nullptr},
        {"Column.Vessels.Nobody", nullptr},
        {"Leaf.*", nullptr},
        {"Leaf.#0", nullptr},
        {"feed", nullptr},
        {"\"Column\".\"Vessels\"", "Root.Column.Vessels"},
        {"Column.Vessels.*[\"Object Name\"=\"Main\"].\"Vessel Pressure\"",
         "Root.Column.Vessels.ElemM.Vessel Pressure"},
        {"Column.Vessels.*[\"Object Name\"=Reboiler]", "Root.Column.Vessels.ElemR"},
        {"Column.Vessels.*[\"Object Name\"=main]", nullptr},
        {"*[(type)=Column]", "Root.Column"},
        {"*[(type)=\"X\"]", nullptr},
        {"*[(type)]", "Root.Feed", 0},
        {"*[(nothing)]", nullptr},
        {"*[Vessels]", "Root.Column"},
        // No step is taken again on the next sibling when a later one fails.
        {"*.Vessels", nullptr},
        {"*[(rank)=\"1.0\"]", "Root.Feed", 1},
        {"*[(rank)=2]", "Root.Feed", 2},
        {"*[(text)=1]", nullptr},
        {"*[(text)=\"1.0\"]", "Root.Leaf"},
        {"*[[(type)=Stream][State=gas]]", "Root.Feed", 1},
        {"*[(type)=Stream]#1", "Root.Feed", 0},
        {"*#1[(type)=Stream]", "Root.Feed", 1},
        {"*#1[State=liquid]", "Root.Feed", 2},
        {"*[(type)=Stream]![State=liquid]", "Root.Feed", 1},
        {"*[State=gas]|[Vessels]", "Root.Feed", 1},
        {"[Column]", "Root"},
        {"[Column.Vessels]", "Root"},
        {"[Nobody]", nullptr},
        {"[Nobody]|[Column].Column", "Root.Column"},
        {"Column[Nobody]", nullptr},
        {"a[b", nullptr},
        {"Feed(type)", "Root.Feed", 0},
    };
    ExpectWalks(*it_, cases);
}

TEST_F(PathEvaluation, a_key_behind_a_name_chooses_among_siblings_and_the_path_goes_on) {
    ScriptNode root("Root");
    ScriptNode keys[] = {ScriptNode("0"), ScriptNode("1"), ScriptNode("2"), ScriptNode("3")};
    const char* const texts[] = {"Feed", "Product", "N.1", "Other"};
    for (int i = 0; i < 4; ++i) {
        ScriptNode& node = root.Add(i < 3 ? "Stream" : "Operation");
        node.Set("rank", i).keys = {&keys[i].Set("value", texts[i])};
        node.Add("Temperature").Set("rank", 10 + i);
    }
    const WalkCase cases[] = {
        {"Stream", "Root.Stream(Feed)", 0},
        {"Stream(Feed)", "Root.Stream(Feed)", 0},
        {"Stream(Product)", "Root.Stream(Product)", 1},
        {"Stream(Feed).Temperature", "Root.Stream(Feed).Temperature", 10},
        {"Stream(Product).Temperature", "Root.Stream(Product).Temperature", 11},
        {"Stream(\"N.1\").Temperature", "Root.Stream(\"N.1\").Temperature", 12},
        {"%v(Product).Temperature", "Root.Stream(Product).Temperature", 11},
        {"Operation(Other).Temperature", "Root.Operation(Other).Temperature", 13},
        {"Stream(Other).Temperature", nullptr},
        {"Stream(Product).Nobody", nullptr},
        {"Stream.Temperature", "Root.Stream(Feed).Temperature", 10},
        // What is no key is an attribute, which ends a path.
        {"Stream(rank)", "Root.Stream(Feed)", 0},
        {"Stream(rank).Temperature", nullptr},
        {"Stream(Nobody)", nullptr},
        {"Stream(Nobody).Temperature", nullptr},
        {"Stream(Other)", nullptr},
        {"Stream#1(Feed)", nullptr},
        {"Stream#1(N.1)", nullptr},
        {"Stream#1(\"N.1\")", "Root.Stream(\"N.1\")", 2},
        // The step says which siblings may be meant.
        {"*(Product).Temperature", "Root.Stream(Product).Temperature", 11},
        {"*(Other)", "Root.Operation(Other)", 3},
        {"Stream[(rank)=1](Product)", "Root.Stream(Product)", 1},
        {"Stream[(rank)=0](Product)", nullptr},
        {"Stream(Product).(Product)", "Root.Stream(Product)", 1},
        {"Stream(Product).(Feed)", nullptr},
        {"Stream(Product).(rank)", "Root.Stream(Product)", 1},
        {"Stream(Product)(Product)", "Root.Stream(Product)", 1},
        {"Stream(Product)(rank)", "Root.Stream(Product)", 1},
        {"Stream(Product)(rank).Temperature", nullptr},
        {"Stream(Product)(Feed)", nullptr},
        {"Stream(Product)(no such)", nullptr},
        {"Stream(Product)(", nullptr},
        {"Stream(rank)(Product)", nullptr},
        {"Stream(Product).Temperature(rank)(no such)", "Root.Stream(Product).Temperature", 11},
        {"Stream.Temperature(rank).Nobody", "Root.Stream(Feed).Temperature", 10},
    };
    const auto it = root.Iterate();
    it->SetVarText("v", "Stream");
    ExpectWalks(*it, cases);
    ExpectLocates(*it, cases);
}

TEST_F(PathEvaluation, a_path_ends_in_an_attribute_that_the_node_has) {
    const WalkCase cases[] = {
        {"Feed(type)", "Root.Feed", 0},
        {"Feed#1(temperature)", "Root.Feed", 1},
        {"Leaf(nothing)", "Root.Leaf"},
        {"(none)", nullptr},
        {"Feed(no such)", nullptr},
        {"Feed(Type)", nullptr},
        {"Feed.Flow(temperature)", nullptr},
        {"Feed.Flow(uom)", "Root.Feed.Flow"},
        {"*[(type)=Column](no such)", nullptr},
        // These may be asked of any node.
        {"Feed(value)", "Root.Feed", 0},
        {"Column(spec_uom)", "Root.Column"},
        {"(is_hierarchy)", "Root"},
        {"Leaf(skipattachments)", "Root.Leaf"},
        // Filters ask what they like.
        {"Feed[(no such)]", nullptr},
        {"Feed[Flow(no such)]", nullptr},
        {"Column[(no such)]|[(type)=Column]", "Root.Column"},
    };
    ExpectWalks(*it_, cases);
    ExpectLocates(*it_, cases);
}

TEST_F(PathEvaluation, failed_walks_leave_the_iterator_and_its_variables) {
    ASSERT_TRUE(it_->SeekPath(Text("Column.Vessels")));
    it_->SetVarText("v", "kept");
    for (const char* path : {"Nobody", "*.Nobody", "ElemC.\"Object Name\".Nobody", "[Nobody]"}) {
        EXPECT_FALSE(it_->SeekPath(Text(path))) << path;
        EXPECT_EQ("Root.Column.Vessels", PathOf(*it_)) << path;
        FIValue value;
        EXPECT_TRUE(it_->GetVarText("v", value)) << path;
    }
}

TEST_F(PathEvaluation, variables_stand_for_names_counts_and_values) {
    it_->SetVarText("name", "Column");
    it_->SetVarText("any", "*");
    it_->SetVarText("empty", "");
    it_->SetVar(Text("null"), FIValue());
    it_->SetVarText("two", FIValue::OfInt(2));
    it_->SetVarText("text one", "1");
    it_->SetVarText("long", "a name that is longer than eighteen characters");
    root_.Add("a name that is longer than eighteen characters");
    root_.Add("2");
    const WalkCase cases[] = {
        {"%name", "Root.Column"},
        {"%name.Vessels", "Root.Column.Vessels"},
        {"%any", "Root.Feed", 0},
        {"%two", "Root.2"},
        {"%long", "Root.a name that is longer than eighteen characters"},
        {"%missing", "Root.Feed", 0},
        {"%null", "Root.Feed", 0},
        {"%missing[Vessels]", "Root.Column"},
        {"%missing[Nobody]", nullptr},
        {"%empty", "Root"},
        {"%empty#1", "Root.Feed", 1},
        {"Feed#%two", "Root.Feed", 2},
        {"Feed#%\"text one\"", "Root.Feed", 1},
        {"Feed#%missing", "Root.Feed", 0},
        {"#%missing", "Root"},
        {"*[(rank)=\"%two\"]", "Root.Feed", 2},
        {"*[(rank)=\"%text one\"]", "Root.Feed", 1},
        {"*[(type)=\"%two\"]", nullptr},
        {"*[(nothing)=\"%empty\"]", nullptr},
        {"*[(type)=\"%name\"]", "Root.Column"},
        {"*[(type)=\"%missing\"]", nullptr},
        {"Column.%name", nullptr},
    };
    ExpectWalks(*it_, cases);
}

TEST_F(PathEvaluation, names_and_counts_resolve_as_written_or_by_variable) {
    struct Case {
        const char* path;
        const char* name;
        int count;
    };
    it_->SetVarText("v", FIValue::OfReal(2.5));
    const Case cases[] = {
        {"a#3", "a", 3},           {"a", "a", -1}, {"%v#%v", "2.5", 2}, {"%w#%w", nullptr, -1},
        {"'\"VLLE\"", "VLLE", -1}, {"", "", -1},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.path);
        FIValue error;
        const ParsedPath step = ParsePath(Text(each.path), error);
        FIValue name = Text("before");
        step->ResolveName(*it_, name);
        EXPECT_EQ(each.name == nullptr, name.IsNull());
        if (each.name) {
            EXPECT_EQ(each.name, name.ToText());
        }
        EXPECT_EQ(each.count, step->ResolveCount(*it_));
    }
}

TEST_F(PathEvaluation, walk_tells_the_attribute_of_the_last_step) {
    struct Case {
        const char* path;
        const char* attribute;
    };
    const Case cases[] = {{"Feed(type)", "type"}, {"Column.Vessels(x)", "x"}, {"Feed", nullptr}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.path);
        FIValue error;
        const ParsedPath step = ParsePath(Text(each.path), error);
        const auto it = root_.Iterate();
        FIValue attribute = Text("before");
        EXPECT_TRUE(it->Walk(*step, attribute));
        EXPECT_EQ(each.attribute ? each.attribute : "(NULL)",
                  attribute.IsNull() ? "(NULL)" : attribute.ToText());
        const auto other = root_.Iterate();
        EXPECT_TRUE(other->WalkFrom(*step));
        EXPECT_TRUE(other->Equal(*it));
    }
    FIValue error;
    const ParsedPath failing = ParsePath(Text("Feed.Nobody(x)"), error);
    FIValue attribute = Text("before");
    EXPECT_FALSE(it_->Walk(*failing, attribute));
    EXPECT_EQ("before", attribute.ToText());
    EXPECT_EQ("Root", PathOf(*it_));
    EXPECT_FALSE(it_->WalkFrom(*failing));
    EXPECT_EQ("Root", PathOf(*it_));
}

TEST_F(PathEvaluation, a_step_is_taken_alone) {
    FIValue error;
    const ParsedPath step = ParsePath(Text("Column.Vessels"), error);
    EXPECT_TRUE(it_->Step(*step));
    EXPECT_EQ("Root.Column", PathOf(*it_));
    EXPECT_FALSE(it_->Step(*step)) << "no such child below";
    EXPECT_EQ("Root.Column", PathOf(*it_));
    EXPECT_TRUE(it_->Step(*step->Next()));
    EXPECT_EQ("Root.Column.Vessels", PathOf(*it_));
    const auto root = root_.Iterate();
    for (const char* path : {"Feed#7", "*[Nobody]", "Feed[Nobody]", "[Nobody]"}) {
        const ParsedPath failing = ParsePath(Text(path), error);
        EXPECT_FALSE(root->Step(*failing)) << path;
        EXPECT_EQ("Root", PathOf(*root)) << path;
    }
    const auto leaf = root_.Iterate();
    ASSERT_TRUE(leaf->SeekChild("Leaf"));
    for (const char* path : {"*", "#0", "%missing", "x", "[x]"}) {
        const ParsedPath below = ParsePath(Text(path), error);
        EXPECT_FALSE(leaf->Step(*below)) << path;
        EXPECT_EQ("Root.Leaf", PathOf(*leaf)) << path;
    }
}

TEST_F(PathEvaluation, clauses_compare_the_attribute_with_the_text) {
    ScriptNode& node = root_.Add("values");
    node.Set("real", 1.0).Set("text", "1.0").Set("null", FIValue()).Set("word", "Abc");
    node.Set("value", 5).Add("child").Set("value", FIValue());
    node.Add("real child").Set("value", 1.0);
    node.Add("text child").Set("value", "1.0").Set("note", 2);
    struct Case {
        const char* clause;
        bool holds;
    };
    const Case cases[] = {
        {"[(real)=1]", true},
        {"[(real)=\"1.00\"]", true},
        {"[(text)=1]", false},
        {"[(text)=\"1.0\"]", true},
        {"[(word)=abc]", false},
        {"[(word)=Abc]", true},
        {"[(null)=x]", false},
        {"[(null)]", false},
        {"[(real)]", true},
        {"[child]", true},
        {"[child=1]", false},
        {"[(absent)=x]", false},
        {"[=5]", true},
        {"[=6]", false},
        {"[child(value)]", false},
        {"[real child=1]", true},
        {"[text child=1]", false},
        {"[text child=\"1.0\"]", true},
        {"[text child(note)=2]", true},
        {"[text child(none)]", false},
    };
    ASSERT_TRUE(it_->SeekChild("values"));
    for (const Case& each : cases) {
        FIValue error;
        const ParsedPath step = ParsePath(Text(each.clause), error);
        ASSERT_TRUE(error.IsNull()) << error.ToText();
        EXPECT_EQ(each.holds, it_->Filter(*step)) << each.clause;
        EXPECT_EQ(each.holds, it_->EvalClause(*step->filters[0].clause)) << each.clause;
        EXPECT_EQ("Root.values", PathOf(*it_)) << each.clause;
    }
}

TEST_F(PathEvaluation, filters_go_from_left_to_right_and_stop_at_a_true_or) {
    ScriptNode& node = root_.Add("flags");
    node.Set("t", 1);
    std::string read;
    node.on_read = [&](FIVarSet*, const std::string& name) { read += name; };
    struct Case {
        const char* filters;
        bool holds;
        const char* read;
    };
    // The attribute t exists, f and g don't.
    const Case cases[] = {
        {"[(t)]|[(f)]", true, "t"},
        {"[(f)]|[(t)]", true, "ft"},
        {"[(t)]&[(f)]", false, "tf"},
        {"[(f)]&[(t)]", false, "f"},
        {"[(f)][(t)]", false, "f"},
        {"[(t)]|[(f)]&[(g)]", true, "t"},
        {"[(f)]|[(t)]&[(g)]", false, "ftg"},
        {"[(f)]&[(t)]|[(t)]", true, "ft"},
        {"[(f)]|[(g)]", false, "fg"},
        {"[(t)]![(f)]", true, "tf"},
        {"[(t)]![(t)]", false, "tt"},
        {"[(f)]|![(g)]", true, "fg"},
        {"[(t)]&![(f)]&[(t)]", true, "tft"},
        {"|[(f)]", false, "f"},
        {"|[(t)]", true, "t"},
        {"&![(f)]", true, "f"},
        {"|![(t)]", false, "t"},
        {"|![(f)]|[(t)]", true, "f"},
        {"[(f)]&[(t)]&[(t)]", false, "f"},
        {"[(f)]|[(f)]|[(t)]", true, "fft"},
    };
    ASSERT_TRUE(it_->SeekChild("flags"));
    for (const Case& each : cases) {
        FIValue error;
        const ParsedPath step = ParsePath(Text(each.filters), error);
        ASSERT_TRUE(error.IsNull()) << error.ToText();
        read.clear();
        EXPECT_EQ(each.holds, it_->Filter(*step)) << each.filters;
        EXPECT_EQ(each.read, read) << each.filters;
    }
}

// The parser always writes one of the two operators; without either a filter is asked in any case.
TEST_F(PathEvaluation, a_filter_without_an_operator_decides_alone) {
    root_.Set("t", 1);
    FIValue error;
    const ParsedPath step = ParsePath(Text("[(f)][(t)]"), error);
    EXPECT_FALSE(it_->Filter(*step));
    step->filters[1].flags = 0;
    EXPECT_TRUE(it_->Filter(*step));
    step->filters[1].flags = PathFilter::kNot;
    EXPECT_FALSE(it_->Filter(*step));
}

TEST_F(PathEvaluation, clauses_see_the_variables_and_units_of_the_position) {
    it_->SetVarText("v", "Column");
    ASSERT_TRUE(it_->SeekChild("Column"));
    FIVarSet* seen = nullptr;
    root_.children[3]->on_read = [&](FIVarSet* vars, const std::string&) { seen = vars; };
    FIValue error;
    const ParsedPath step = ParsePath(Text("[(type)=\"%v\"]"), error);
    EXPECT_TRUE(it_->Filter(*step));
    ASSERT_NE(nullptr, seen);
    EXPECT_EQ(it_->GetVarSet(), seen);
}

// A seek by key may land on a node whose displayed name is another.
TEST_F(PathEvaluation, the_first_child_is_taken_without_comparing_its_name) {
    ScriptNode& odd = root_.Add("Displayed");
    odd.key = Text("Key");
    EXPECT_TRUE(it_->SeekPath(Text("Key")));
    EXPECT_EQ("Root.Displayed", PathOf(*it_));
    const auto other = root_.Iterate();
    EXPECT_FALSE(other->SeekPath(Text("Displayed")));
}

TEST_F(PathEvaluation, while_no_child_has_passed_later_siblings_are_taken_whatever_their_name) {
    EXPECT_TRUE(it_->SeekPath(Text("Feed[Vessels]")));
    EXPECT_EQ("Root.Column", PathOf(*it_));
}

TEST_F(PathEvaluation, names_are_compared_on_199_characters) {
    const std::string common(199, 'n');
    ScriptNode& first = root_.Add("x");
    first.key = Text(common + "1");
    root_.Add(common + "2").Set("rank", 77);
    root_.Add(common.substr(1) + "2");
    EXPECT_TRUE(it_->SeekPath(Text("\"" + common + "1\"#1")));
    FIValue rank;
    it_->GetAttribute(Text("rank"), rank);
    EXPECT_EQ(77, rank.AsInt());
}

TEST_F(PathEvaluation, numbers_are_names_by_their_text) {
    root_.Add("first").key = Text("12");
    root_.Add("").name = FIValue::OfInt(12);
    EXPECT_TRUE(it_->SeekPath(Text("12#1")));
    FIValue name;
    it_->GetName(name);
    EXPECT_EQ(FIValue::kInt, name.Kind());
}

TEST_F(PathEvaluation, next_match_goes_on_among_the_siblings) {
    struct Case {
        const char* path;
        std::vector<int> ranks;
    };
    const Case cases[] = {
        {"Feed", {1, 2}},      {"*[(rank)]", {1, 2}}, {"Feed[State=liquid]", {2}},
        {"*[State=gas]", {1}}, {"Feed#1", {}},        {"", {}},
        {"%missing", {}},      {"Feed#0", {}},        {"Feed#%missing", {1, 2}},
        {"Nobody", {}},        {"feed", {}},          {"[(rank)]", {}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.path);
        FIValue error;
        const ParsedPath step = ParsePath(Text(each.path), error);
        const auto it = root_.Iterate();
        ASSERT_TRUE(it->DownFirst());
        std::vector<int> ranks;
        while (it->NextMatch(*step)) {
            FIValue rank;
            it->GetAttribute(Text("rank"), rank);
            ranks.push_back(rank.AsInt());
        }
        EXPECT_EQ(each.ranks, ranks);
        EXPECT_EQ(1, it->Depth());
    }
}

TEST_F(PathEvaluation, locate_starts_at_the_root_and_compares_keys) {
    ScriptNode& odd = root_.Add("Displayed");
    odd.key = Text("Key");
    odd.Set("rank", 50);
    ScriptNode& twin = root_.Add("Other");
    twin.key = Text("Key");
    twin.Set("rank", 51);
    root_.Add("").key = FIValue::OfInt(7);
    root_.Add("7");
    ScriptNode& real = root_.Add("real seven");
    real.key = FIValue::OfReal(7.0);
    root_.Add("text seven").key = Text("7.0");
    const WalkCase cases[] = {
        {"Key#1", "Root.Other", 51},
        {"Key", "Root.Displayed", 50},
        {"Column.Vessels.*[\"Object Name\"=Reboiler]", "Root.Column.Vessels.ElemR"},
        {"*#1[State=liquid]", "Root.Feed", 2},
        {"%name", "Root.Column"},
        {"[Column]", "Root"},
        {"", "Root"},
        {"7", "Root."},
        {"7#1", "Root.7"},
        {"7#2", "Root.real seven"},
        {"7#3", nullptr},
        {"#3", "Root.Column"},
        {"*", "Root.Feed", 0},
        {"Key[Nobody]", nullptr},
        {"Displayed", nullptr},
        {"Column.Nobody", nullptr},
        {"[Nobody]", nullptr},
        {"a[b", nullptr},
    };
    for (const WalkCase& each : cases) {
        SCOPED_TRACE(each.path);
        const auto it = root_.Iterate();
        ASSERT_TRUE(it->SeekPath(Text("Column.Vessels")));
        it->SetVarText("name", "Column");
        EXPECT_EQ(each.reached != nullptr, it->Locate(Text(each.path)));
        EXPECT_EQ(each.reached ? each.reached : "Root.Column.Vessels", PathOf(*it));
        if (each.rank < 0) continue;
        FIValue rank;
        it->GetAttribute(Text("rank"), rank);
        EXPECT_EQ(each.rank, rank.AsInt());
    }
}

TEST_F(PathEvaluation, each_advance_among_siblings_is_noted_as_a_shared_seek) {
    struct Case {
        const char* path;
        int advances;
    };
    // The holders are the frame and the step itself.
    constexpr int kHolders = 2;
    const Case cases[] = {{"*", 0}, {"*[State=gas]", 1}, {"*[Vessels]", 3}, {"Feed#2", 2}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.path);
        const auto it = root_.Iterate();
        const int before = SeekCount(kHolders);
        EXPECT_TRUE(it->Locate(Text(each.path)));
        EXPECT_EQ(before + each.advances, SeekCount(kHolders));
        EXPECT_TRUE(root_.Iterate()->SeekPath(Text(each.path)));
        EXPECT_EQ(before + 2 * each.advances, SeekCount(kHolders));
    }
}

}  // namespace

}  // namespace fixtop
