// SPDX-License-Identifier: Apache-2.0
// No function is left out: the tests together call each with every outcome that it has.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "semantic/function_call.h"

namespace fixtop {

namespace {

class AllOutcomes : public testing::Environment {
    void TearDown() override {
        const testing::UnitTest& run = *testing::UnitTest::GetInstance();
        if (run.test_to_run_count() < run.total_test_count()) return;
        EXPECT_THAT(OutcomesNotSeen(), testing::IsEmpty());
    }
};

const testing::Environment* const kAllOutcomes = testing::AddGlobalTestEnvironment(new AllOutcomes);

}  // namespace

}  // namespace fixtop
