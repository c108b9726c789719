// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/near_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
