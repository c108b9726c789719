// SPDX-License-Identifier: Apache-2.0
// Stores, batches and solves.

#include <gtest/gtest.h>

#include "fixtop/client.h"

namespace fixtop::client {

namespace {

constexpr char kStreams[] = "appModel.FlowSheetObjects.Streams.";

class ClientSolver : public ::testing::Test {
 protected:
    Node At(const std::string& path) const { return plant.At(kStreams + path); }

    Case plant = Case::Open(Case::kDemo);
    Solver solver = plant.GetSolver();
};

TEST_F(ClientSolver, store_is_taken_in_the_unit_that_is_given) {
    At("Raw Gas.Temperature").Store(95, "F");
    // Celsius from Fahrenheit: minus 32, by 1.8.
    EXPECT_DOUBLE_EQ(35, At("Raw Gas.Temperature").Number("C"));
}

TEST_F(ClientSolver, store_that_is_not_taken_tells_why) {
    try {
        At("Sales Gas.Molar Flow").Store(900);
        FAIL() << "stored";
    } catch (const Refused& refused) {
        EXPECT_EQ("Value not stored", refused.Text());
        EXPECT_EQ(std::string(kStreams) + "Sales Gas.Molar Flow", refused.Path());
    }
    EXPECT_THROW(At("Raw Gas.Temperature").Store("warm"), Refused);
}

TEST_F(ClientSolver, solve_ends_complete_and_calls_its_progress) {
    int turns = 0;
    const SolveResult result = solver.Solve([&] {
        ++turns;
        return true;
    });
    EXPECT_TRUE(result.complete) << result.message << result.problem;
    EXPECT_EQ("Solve is complete", result.message);
    EXPECT_GT(turns, 0);
    EXPECT_FALSE(solver.IsRunning());
}

TEST_F(ClientSolver, solve_leaves_stores_solving_as_they_did) {
    for (const bool solves : {true, false}) {
        solver.SolveOnStore(solves);
        EXPECT_TRUE(solver.Solve().complete);
        EXPECT_EQ(solves, solver.SolvesOnStore());
        At("Raw Gas.Temperature").Store(solves ? 31 : 32, "C");
        EXPECT_EQ(solves, solver.IsComplete());
    }
    EXPECT_TRUE(solver.Solve().complete);
    EXPECT_TRUE(solver.IsComplete());
}

TEST_F(ClientSolver, batch_solves_once_for_all_its_stores) {
    ASSERT_TRUE(solver.Solve().complete);
    solver.SolveOnStore(true);
    const std::string before = At("Sales Gas.Molar Flow").Text();
    {
        Batch batch(solver);
        At("Raw Gas.Temperature").Store(32, "C");
        At("Raw Gas.Pressure").Store(5000, "kPa");
        EXPECT_EQ("", At("Sales Gas.Molar Flow").Text()) << "no store starts the solver";
        EXPECT_TRUE(batch.Solve().complete);
    }
    EXPECT_TRUE(solver.SolvesOnStore());
    EXPECT_NE(before, At("Sales Gas.Molar Flow").Text());
}

TEST_F(ClientSolver, batch_that_ends_without_a_solve_lets_stores_solve_again) {
    ASSERT_TRUE(solver.Solve().complete);
    solver.SolveOnStore(true);
    { const Batch batch(solver); }
    EXPECT_TRUE(solver.SolvesOnStore());
}

TEST_F(ClientSolver, progress_that_answers_false_stops_the_solve) {
    At("Raw Gas.Temperature").Store(36, "C");
    const SolveResult result = solver.Solve([] { return false; });
    EXPECT_FALSE(solver.IsRunning());
    EXPECT_FALSE(result.message.empty());
}

}  // namespace

}  // namespace fixtop::client
