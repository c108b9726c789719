#include "path_text.h"

#include <gtest/gtest.h>

namespace fixtop {

namespace {

// "name|#count|filters|(attribute)" of each step, steps with " / " between them.
std::string Dump(const std::string& path) {
    std::string dump;
    for (const StepText& step : SplitPath(path)) {
        if (!dump.empty()) dump += " / ";
        dump += (step.is_variable ? "%" : "") + step.name;
        if (step.count) dump += "|#" + *step.count;
        if (!step.filters.empty()) dump += "|" + step.filters;
        if (!step.key.empty()) dump += "|=" + step.key;
        if (!step.attribute.empty()) dump += "|(" + step.attribute + ")";
    }
    return dump;
}

struct SplitRow {
    const char* path;
    const char* dump;
};

class SplitPathTest : public testing::TestWithParam<SplitRow> {};

TEST_P(SplitPathTest, CutsSteps) {
    EXPECT_EQ(GetParam().dump, Dump(GetParam().path));
}

INSTANTIATE_TEST_SUITE_P(
    Paths, SplitPathTest,
    testing::Values(SplitRow{"", ""}, SplitRow{"a.b", "a / b"}, SplitRow{"a . b", "a  /  b"},
                    SplitRow{R"("a""b")", R"(a"b)"}, SplitRow{R"("a.b".c)", "a.b / c"},
                    SplitRow{"a#2.b", "a|#2 / b"}, SplitRow{"#2", "|#2"}, SplitRow{"a#%n", "a|#%n"},
                    SplitRow{"%rxn.Phase", "%rxn / Phase"}, SplitRow{"'x", "x"},
                    SplitRow{"*[a.b].c", "*|[a.b] / c"},
                    SplitRow{"*[a=\"]\"].c", "*|[a=\"]\"] / c"},
                    SplitRow{R"(*[[(type)="T"]["A B"=C]].D)", R"(*|[[(type)="T"]["A B"=C]] / D)"},
                    SplitRow{"a[x]|![y]&[z].b", "a|[x]|![y]&[z] / b"},
                    SplitRow{"a(b).c", "a|=b / c"}, SplitRow{"a.(type)", "a / |(type)"},
                    SplitRow{R"(a("b c"))", "a|(b c)"}, SplitRow{"a#1[x](y)", "a|#1|[x]|(y)"},
                    SplitRow{R"(a("b.c").d(e))", "a|=b.c / d|(e)"}, SplitRow{"a(b).", "a|(b)"},
                    SplitRow{"a(b)(c)", "a|=b / |(c)"}, SplitRow{"a(b)(c).d", "a|=b / |=c / d"},
                    SplitRow{"a(b)(", "a|(b)"}, SplitRow{"a(b)c", "a|(b)"}));

struct StepRow {
    ChildPlace place;
    const char* step;
};

class StepForTest : public testing::TestWithParam<StepRow> {};

TEST_P(StepForTest, LeadsToTheChildAlone) {
    EXPECT_EQ(GetParam().step, StepFor(GetParam().place)) << GetParam().place.name;
}

INSTANTIATE_TEST_SUITE_P(
    Places, StepForTest,
    testing::Values(StepRow{{"Feed", 0, 3}, "Feed"}, StepRow{{"Feed 1", 0, 0}, "Feed 1"},
                    StepRow{{"V.1", 0, 0}, "\"V.1\""}, StepRow{{"a\"b", 0, 0}, "\"a\"\"b\""},
                    StepRow{{"Feed", 2, 7}, "Feed#2"}, StepRow{{"V.1", 1, 7}, "\"V.1\"#1"},
                    StepRow{{"#3", 0, 3}, "#3"}, StepRow{{"#3", 0, 2}, "\"#3\""},
                    StepRow{{"#3", 1, 4}, "*#4"}, StepRow{{"", 0, 5}, "*#5"},
                    StepRow{{"*", 0, 5}, "*#5"}, StepRow{{"A &lt; B", 0, 6, true}, "*#6"},
                    StepRow{{"Stream", 0, 1, false, "Feed 1"}, "Stream(Feed 1)"},
                    StepRow{{"Stream", 0, 1, false, "#3"}, "Stream(\"#3\")"},
                    StepRow{{"S.1", 2, 4, false, "V.1"}, "\"S.1\"(\"V.1\")"}));

TEST(StepFor, too_long_a_name_is_counted_instead) {
    EXPECT_EQ("*#4", StepFor({std::string(200, 'x'), 0, 4}));
    EXPECT_EQ(std::string(199, 'x'), StepFor({std::string(199, 'x'), 0, 4}));
}

TEST(WithoutQuotes, doubled_quotes_stand_for_one) {
    EXPECT_EQ("plain, text", WithoutQuotes("plain, text"));
    EXPECT_EQ("a.b, c", WithoutQuotes("\"a.b\", c"));
    EXPECT_EQ("say \"so\"", WithoutQuotes("\"say \"\"so\"\"\""));
    EXPECT_EQ("", WithoutQuotes("\"\""));
}

TEST(JoinPath, nothing_before_the_first_step) {
    EXPECT_EQ("a", JoinPath("", "a"));
    EXPECT_EQ("a.b", JoinPath("a", "b"));
}

}  // namespace

}  // namespace fixtop
