// SPDX-License-Identifier: Apache-2.0
// No test of this program leaves anything behind that is counted.

#include <gtest/gtest.h>

#include "diagnostics/instance_counts.h"

namespace fixtop {

namespace {

class LiveCounts : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
#define FIXTOP_IS_GONE(group, name) EXPECT_EQ(0, CountOf(CountedClass::name).alive) << #name;
        FIXTOP_COUNTED_CLASSES(FIXTOP_IS_GONE)
#undef FIXTOP_IS_GONE
    }
};

[[maybe_unused]] const bool g_listens = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new LiveCounts);
    return true;
}();

}  // namespace

}  // namespace fixtop
