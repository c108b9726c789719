// SPDX-License-Identifier: Apache-2.0
#include "path/recent_paths.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/scripted_tree.h"

namespace fixtop {

namespace {

std::string Shown(const PreparedPath& path) {
    std::string shown = path.Error().IsNull() ? "" : path.Error().ToText();
    for (const PathStretch& stretch : path.Stretches()) {
        if (stretch.error.IsNull()) shown += Describe(*stretch.steps) + ";";
    }
    return shown;
}

std::string ShownRecent(const FIValue& source) {
    return Shown(*RecentPath(source));
}

TEST(RecentPath, is_the_path_of_its_own_text_among_many) {
    std::vector<FIValue> sources;
    for (std::size_t i = 0; i < 8 * kRecentPaths; ++i) {
        sources.push_back(Text("a.*[x=" + std::to_string(i) + "](k" + std::to_string(i) + ").b"));
    }
    for (int round = 0; round < 3; ++round) {
        for (const FIValue& source : sources) {
            ASSERT_EQ(Shown(PreparedPath(source)), ShownRecent(source)) << source.ToText();
            ASSERT_EQ(Shown(PreparedPath(source)), ShownRecent(source)) << source.ToText();
        }
    }
}

TEST(RecentPath, of_one_text_is_parsed_once) {
    const auto first = RecentPath(Text("a.b"));
    EXPECT_EQ(first, RecentPath(Text("a.b")));
    EXPECT_NE(first, RecentPath(Text("a.b ")));
}

TEST(RecentPath, texts_that_are_read_in_turns_are_parsed_once) {
    for (std::size_t i = 0; i < 8 * kRecentPaths; ++i) {
        const auto first = RecentPath(Text("a.b"));
        RecentPath(Text("a" + std::to_string(i)));
        EXPECT_EQ(first, RecentPath(Text("a.b"))) << i;
    }
}

TEST(RecentPath, outlives_those_that_take_its_place) {
    const auto held = RecentPath(Text("a.held(b).c"));
    for (std::size_t i = 0; i < 8 * kRecentPaths; ++i) RecentPath(Text("a" + std::to_string(i)));
    EXPECT_EQ(Shown(PreparedPath(Text("a.held(b).c"))), Shown(*held));
}

TEST(RecentPath, keeps_no_long_text) {
    const std::string fits(kRecentPathLength, 'a');
    EXPECT_EQ(RecentPath(Text(fits)), RecentPath(Text(fits)));
    EXPECT_NE(RecentPath(Text(fits + "a")), RecentPath(Text(fits + "a")));
    EXPECT_EQ(Shown(PreparedPath(Text(fits + "a"))), ShownRecent(Text(fits + "a")));
}

TEST(RecentPath, of_an_error_is_the_error) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Shown(PreparedPath(Text("a[b"))), ShownRecent(Text("a[b")));
    }
    EXPECT_FALSE(RecentPath(Text("a[b"))->Error().IsNull());
}

// A number is a name, and the empty text another path than none at all.
TEST(RecentPath, of_what_is_no_text_is_that_of_its_own) {
    RecentPath(Text(""));
    for (const FIValue& source : {FIValue(), FIValue::OfInt(7), FIValue::OfReal(2.5), Text("")}) {
        EXPECT_EQ(Shown(PreparedPath(source)), ShownRecent(source)) << source.ToText();
    }
}

}  // namespace

}  // namespace fixtop
