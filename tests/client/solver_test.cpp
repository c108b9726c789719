// SPDX-License-Identifier: Apache-2.0
// Stores, batches and solves.

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

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

TEST_F(ClientSolver, hold_keeps_fractions_as_they_are_until_its_release) {
    Hold hold(solver);
    hold.Store(At("Raw Gas.Comp Mole Frac.Methane"), "0.80");
    EXPECT_EQ(0.8, At("Raw Gas.Comp Mole Frac.Methane").Number());
    EXPECT_EQ(0.1, At("Raw Gas.Comp Mole Frac.Ethane").Number());
    hold.Store(plant.Neutral().At("Flowsheet.Stream(Raw Gas).Composition.Component(Ethane)."
                                  "MoleFraction"),
               "0.05");
    const Released released = hold.Release();
    EXPECT_TRUE(released.solve.complete) << released.solve.problem;
    EXPECT_TRUE(released.normalised.empty() && released.refused.empty());
    EXPECT_EQ(0.8, At("Raw Gas.Comp Mole Frac.Methane").Number());
    EXPECT_EQ(0.05, At("Raw Gas.Comp Mole Frac.Ethane").Number());
}

TEST_F(ClientSolver, hold_tells_the_sum_of_fractions_that_it_normalises) {
    Hold hold(solver);
    hold.Store(At("Raw Gas.Comp Mole Frac"), "1,1,0,0,0,0,0,2");
    const Released released = hold.Release();
    EXPECT_EQ(std::vector{std::string(kStreams) +
                          "Raw Gas.Comp Mole Frac: the fractions sum to 4 and are normalised"},
              released.normalised);
    EXPECT_EQ(0.5, At("Raw Gas.Comp Mole Frac.H2O").Number());
}

TEST_F(ClientSolver, hold_that_is_left_normalises_each_of_its_streams) {
    {
        Hold hold(solver);
        hold.Store(At("Raw Gas.Comp Mole Frac"), "1,1,0,0,0,0,0,2");
        hold.Store(At("Tail Gas.Comp Mole Frac"), "0,0,0,0,0,0,1,1");
    }
    EXPECT_EQ(0.5, At("Raw Gas.Comp Mole Frac.H2O").Number());
    EXPECT_EQ(0.5, At("Tail Gas.Comp Mole Frac.H2O").Number());
}

TEST_F(ClientSolver, hold_leaves_a_composition_without_any_fraction_as_it_was) {
    Hold hold(solver);
    hold.Store(At("Raw Gas.Comp Mole Frac"), "0,0,0,0,0,0,0,0");
    EXPECT_EQ(1, hold.Release().refused.size());
    EXPECT_EQ(0.75, At("Raw Gas.Comp Mole Frac.Methane").Number());
    EXPECT_THROW(Hold(solver).Store(At("Raw Gas.Comp Mole Frac"), "1,2"), Refused);
    for (const char* half :
         {"0.5,0.5,0,0,0,0,0,many", "0.5,0.5,0,0,0,0,0,-1", "0.5,0.5,0,0,0,0,0,1 kg"}) {
        Hold open(solver);
        EXPECT_THROW(open.Store(At("Raw Gas.Comp Mole Frac"), half), Refused) << half;
        EXPECT_TRUE(open.Release().normalised.empty()) << half;
        EXPECT_EQ(0.75, At("Raw Gas.Comp Mole Frac.Methane").Number()) << half;
        EXPECT_EQ(0.02, At("Raw Gas.Comp Mole Frac.Nitrogen").Number()) << half;
    }
    EXPECT_THROW(Hold(solver).Store(At("Sales Gas.Comp Mole Frac.Methane"), "0.5"), Refused);
}

TEST_F(ClientSolver, store_takes_a_unit_behind_the_number) {
    At("Raw Gas.Temperature").Store("95 F");
    EXPECT_DOUBLE_EQ(35, At("Raw Gas.Temperature").Number("C"));
    for (const char* typed : {"95F", " +95F ", "9.5e1degF", "95°F", "95\t°F"}) {
        At("Raw Gas.Temperature").Store("30C");
        EXPECT_DOUBLE_EQ(303.15, At("Raw Gas.Temperature").Number("K"));
        At("Raw Gas.Temperature").Store(typed);
        EXPECT_DOUBLE_EQ(35, At("Raw Gas.Temperature").Number("C")) << typed;
    }
    for (const char* typed :
         {"1_000", "1,5", "1.2.3", "1e999K", "nanK", "++1K", "C", "F30", "30-C"}) {
        try {
            At("Raw Gas.Temperature").Store(typed);
            ADD_FAILURE() << "taken: " << typed;
        } catch (const Refused& refused) {
            EXPECT_EQ(std::string("not a number: ") + typed, refused.Text());
        }
    }
    EXPECT_DOUBLE_EQ(35, At("Raw Gas.Temperature").Number("C"));
    EXPECT_THROW(At("Raw Gas.Temperature").Store("95 F", "C"), Refused);
    EXPECT_THROW(At("Raw Gas.Temperature").Store("95F", "C"), Refused);
    EXPECT_THROW(At("Raw Gas.Temperature").Store("95 kPa"), Refused);
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

TEST_F(ClientSolver, solve_tells_how_much_of_it_is_done) {
    EXPECT_FALSE(solver.DoneShare());
    std::vector<double> shares;
    const auto listener = solver.OnStateChange([&] {
        if (const auto share = solver.DoneShare()) shares.push_back(*share);
    });
    EXPECT_TRUE(solver.Solve().complete);
    ASSERT_GT(shares.size(), 1);
    EXPECT_TRUE(std::ranges::is_sorted(shares));
    EXPECT_GT(shares.front(), 0);
    EXPECT_LT(shares.back(), 1);
    EXPECT_FALSE(solver.DoneShare());
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
