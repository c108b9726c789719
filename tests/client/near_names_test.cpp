// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/near_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace fixtop::client {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct DistanceRow {
    const char* a;
    const char* b;
    std::size_t distance;
};

class EditDistanceTest : public testing::TestWithParam<DistanceRow> {};

TEST_P(EditDistanceTest, CountsEdits) {
    const DistanceRow& row = GetParam();
    EXPECT_EQ(row.distance, EditDistance(row.a, row.b)) << row.a << " / " << row.b;
    EXPECT_EQ(row.distance, EditDistance(row.b, row.a)) << row.b << " / " << row.a;
}

INSTANTIATE_TEST_SUITE_P(Words, EditDistanceTest,
                         testing::Values(DistanceRow{"", "", 0}, DistanceRow{"", "abc", 3},
                                         DistanceRow{"kitten", "sitting", 3},
                                         DistanceRow{"Feed", "feed", 0},
                                         DistanceRow{"flaw", "lawn", 2},
                                         DistanceRow{"Temperature", "Temprature", 1},
                                         DistanceRow{"ab", "ba", 2}));

TEST(NearNames, nearest_comes_first) {
    EXPECT_THAT(NearNames("Feed 1", {"Product", "Feed 12", "Feed 1x", "Feed 2", "FEED 1"}),
                ElementsAre("FEED 1", "Feed 12", "Feed 1x"));
}

TEST(NearNames, strangers_are_left_out) {
    EXPECT_THAT(NearNames("Pressure", {"Temperature", "Notes"}), IsEmpty());
    EXPECT_THAT(NearNames("", {"a"}), IsEmpty());
}

// All names of up to four letters of three, "A" and "a" being one of them.
std::vector<std::string> ShortNames() {
    std::vector<std::string> names = {""};
    for (std::size_t i = 0; names[i].size() < 4; ++i) {
        for (const char letter : {'a', 'A', 'b'}) names.push_back(names[i] + letter);
    }
    return names;
}

TEST(NearNames, are_those_of_a_small_distance_or_that_begin_so) {
    const std::vector<std::string> names = ShortNames();
    for (const std::string& wanted : names) {
        if (wanted.empty()) continue;
        std::size_t expected = 0;
        for (const std::string& name : names) {
            const bool begins = wanted.size() > 1 && name.size() >= wanted.size() &&
                                EditDistance(name.substr(0, wanted.size()), wanted) == 0;
            expected += begins || EditDistance(name, wanted) <= 1;
        }
        EXPECT_EQ(expected, NearNames(wanted, names, names.size()).size()) << wanted;
    }
}

TEST(NearNames, a_beginning_counts_behind_all_others) {
    EXPECT_THAT(NearNames("Temp", {"Temperature", "Tamp"}), ElementsAre("Tamp", "Temperature"));
}

TEST(NearNames, the_same_name_is_told_once) {
    EXPECT_THAT(NearNames("Fed", {"Feed", "Feed"}), ElementsAre("Feed"));
}

TEST(NearNames, limit_holds) {
    EXPECT_THAT(NearNames("aa", {"ab", "ac", "ad"}, 2), ElementsAre("ab", "ac"));
}

}  // namespace

}  // namespace fixtop::client
