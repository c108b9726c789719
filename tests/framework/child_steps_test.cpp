// SPDX-License-Identifier: Apache-2.0
// The way back to a node: the step that leads to each child and to no other.

#include "framework/path/child_steps.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "support/scripted_tree.h"

namespace fixtop {

namespace {

std::vector<std::string> StepsBelow(ScriptNode& node) {
    std::vector<std::string> steps;
    ForEachChild(*node.Iterate(), [&](FIIterator&, const ChildStep& step) {
        EXPECT_EQ(static_cast<int>(steps.size()), step.index);
        steps.push_back(step.step);
        return true;
    });
    return steps;
}

// Each step leads to the child for which it was made.
void ExpectLeadsBack(ScriptNode& node) {
    const Ref<FIIterator> root = node.Iterate();
    ForEachChild(*root, [&](FIIterator& child, const ChildStep& step) {
        const Ref<FIIterator> sought = Ref<FIIterator>::Adopt(root->Copy());
        EXPECT_TRUE(sought->SeekPath(Text(step.step))) << step.step;
        FIValue rank;
        FIValue wanted;
        sought->GetAttribute(Text("rank"), rank);
        child.GetAttribute(Text("rank"), wanted);
        EXPECT_EQ(wanted.ToText(), rank.ToText()) << step.step;
        return true;
    });
}

struct StepRow {
    std::vector<const char*> names;  // of all children
    std::vector<const char*> steps;
};

class StepTo : public ::testing::TestWithParam<StepRow> {};

TEST_P(StepTo, leads_to_the_child_alone) {
    ScriptNode root("Root");
    int rank = 0;
    for (const char* name : GetParam().names) root.Add(name).Set("rank", rank++);
    const std::vector<std::string> expected(GetParam().steps.begin(), GetParam().steps.end());
    EXPECT_EQ(expected, StepsBelow(root));
    ExpectLeadsBack(root);
}

INSTANTIATE_TEST_SUITE_P(
    Names, StepTo,
    ::testing::Values(StepRow{{"Feed", "Feed 1"}, {"Feed", "Feed 1"}},
                      StepRow{{"V.1", "a\"b"}, {"\"V.1\"", "\"a\"\"b\""}},
                      StepRow{{"Feed", "x", "Feed", "Feed"}, {"Feed", "x", "Feed#1", "Feed#2"}},
                      StepRow{{"V.1", "V.1"}, {"\"V.1\"", "\"V.1\"#1"}},
                      // Unquoted, "#1" counts siblings.
                      StepRow{{"#0", "#1"}, {"#0", "#1"}},
                      StepRow{{"#1", "#0"}, {"\"#1\"", "\"#0\""}},
                      StepRow{{"#0", "#0"}, {"#0", "*#1"}}, StepRow{{"x", ""}, {"x", "*#1"}},
                      StepRow{{"x", "*"}, {"x", "*#1"}}));

TEST(ChildSteps, too_long_a_name_is_counted_instead) {
    ScriptNode root("Root");
    root.Add(std::string(199, 'x'));
    root.Add(std::string(200, 'y'));
    EXPECT_EQ((std::vector<std::string>{std::string(199, 'x'), "*#1"}), StepsBelow(root));
}

TEST(ChildSteps, key_tells_children_of_one_name_apart) {
    ScriptNode root("Root");
    std::vector<std::unique_ptr<ScriptNode>> keys;
    int rank = 0;
    for (const char* key : {"Feed 1", "#3", "V.1", "V.1"}) {
        ScriptNode& child = root.Add("S.1").Set("rank", rank++);
        keys.push_back(std::make_unique<ScriptNode>("Name"));
        child.keys = {&keys.back()->Set("value", key)};
    }
    // The second of one name and key has nothing but its count.
    EXPECT_EQ((std::vector<std::string>{"\"S.1\"(Feed 1)", "\"S.1\"(\"#3\")", "\"S.1\"(\"V.1\")",
                                        "\"S.1\"#3"}),
              StepsBelow(root));
    ExpectLeadsBack(root);
}

TEST(ChildSteps, name_shown_with_entities_is_sought_as_it_is_listed) {
    ScriptNode root("Root");
    ScriptNode& shown = root.Add("A &lt; B").Set("rank", 0);
    shown.key = Text("A < B");
    EXPECT_EQ(std::vector<std::string>{"A < B"}, StepsBelow(root));
}

TEST(ChildSteps, visits_end_when_the_visitor_has_seen_enough) {
    ScriptNode root("Root");
    root.Add("a");
    root.Add("b");
    int visits = 0;
    ForEachChild(*root.Iterate(), [&](FIIterator&, const ChildStep&) { return ++visits < 1; });
    EXPECT_EQ(1, visits);
}

TEST(PathTo, is_made_of_those_steps) {
    ScriptNode root("Root");
    root.Add("V.1");
    ScriptNode& second = root.Add("V.1");
    second.Add("x");
    const Ref<FIIterator> it = root.Iterate();
    EXPECT_EQ("", PathTo(*it));
    ASSERT_TRUE(it->Down(1));
    ASSERT_TRUE(it->DownFirst());
    EXPECT_EQ("\"V.1\"#1.x", PathTo(*it));
}

}  // namespace

}  // namespace fixtop
