// SPDX-License-Identifier: Apache-2.0
// No test of this program leaves anything behind that is counted.

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "diagnostics/instance_counts.h"

namespace fixtop {

namespace {

class LiveCounts : public testing::EmptyTestEventListener {
    using Counts = std::map<std::string, int>;

    static Counts Now() {
        return {
#define FIXTOP_ALIVE(group, name) {#name, CountOf(CountedClass::name).alive},
            FIXTOP_COUNTED_CLASSES(FIXTOP_ALIVE)
#undef FIXTOP_ALIVE
        };
    }
    void OnTestStart(const testing::TestInfo&) override {
        before_ = Now();
    }
    void OnTestEnd(const testing::TestInfo&) override {
        EXPECT_EQ(before_, Now());
    }

    Counts before_;
};

[[maybe_unused]] const bool g_listens = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new LiveCounts);
    return true;
}();

}  // namespace

}  // namespace fixtop
