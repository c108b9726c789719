// SPDX-License-Identifier: Apache-2.0
// The solver as an engine: turns, cancelling, what is written back and what is left alone.

#include <gmock/gmock.h>

#include "process/results.h"
#include "process/sample_process.h"

namespace fixtop::casehost::process::testing {
namespace {

using Progress = SolveEngine::Progress;

const Numbers kFeed = {{cn::kTemperature, 20}, {cn::kPressure, 1000}, {cn::kMolarFlow, 10}};

Sample Chain(int valves) {
    Sample s({"Propane", "n-Hexane"});
    s.Stream("S0", kFeed, {0.5, 0.5});
    for (int i = 1; i <= valves; ++i) {
        std::string number = std::to_string(i), before = std::to_string(i - 1);
        s.Unit(words::kValve, "V" + number, {"S" + before}, {"S" + number},
               {{cn::kPressureDrop, 10}});
    }
    return s;
}

TEST(Engine, case_without_recycle_takes_its_solve_turns) {
    const std::pair<int, int> rows[] = {{6, 3}, {6, 1}, {7, 7}, {6, 2}};
    for (auto [valves, turns] : rows) {
        SCOPED_TRACE(::testing::Message() << valves << " valves in " << turns << " turns");
        Sample s = Chain(valves);
        s.data.solve_turns = turns;
        ASSERT_EQ(s.engine.Prepare(s.data).progress, Progress::running);
        for (int turn = 0; turn + 1 < turns; ++turn) {
            ASSERT_EQ(s.engine.Step(turn).progress, Progress::running) << turn;
        }
        EXPECT_EQ(s.engine.Step(turns - 1).progress, Progress::done);
        EXPECT_EQ(s.engine.Step(turns).progress, Progress::done);
    }
}

TEST(Engine, share_that_is_done_counts_the_steps) {
    Sample s = Chain(4);
    EXPECT_FALSE(s.engine.DoneShare());
    s.data.solve_turns = 4;
    s.engine.Prepare(s.data);
    for (const double share : {0.0, 0.25, 0.5, 0.75}) {
        EXPECT_EQ(s.engine.DoneShare(), share);
        s.engine.Step(0);
    }
    EXPECT_FALSE(s.engine.DoneShare());
    s.engine.Prepare(s.data);
    s.engine.Cancel();
    EXPECT_FALSE(s.engine.DoneShare());
}

TEST(Engine, cancelled_solve_keeps_what_was_found) {
    Sample s = Chain(4);
    s.data.solve_turns = 4;
    s.engine.Prepare(s.data);
    s.engine.Step(0);
    s.engine.Step(1);
    s.engine.Cancel();
    SolveEngine::Outcome outcome = s.engine.Step(2);
    EXPECT_EQ(outcome.progress, Progress::failed);
    EXPECT_EQ(outcome.message, "the solve was cancelled");
    s.data = s.engine.Results();
    EXPECT_EQ(s.Number("S2", cn::kPressure), 980);
    EXPECT_EQ(s.Number("S3", cn::kPressure), kEmpty);
    EXPECT_EQ(s.Find("V2")->status, ObjectStatus::ok);
    EXPECT_EQ(s.Find("V3")->status, ObjectStatus::not_solved);
    EXPECT_EQ(s.Solve().progress, Progress::done);
    EXPECT_EQ(s.Number("S4", cn::kPressure), 960);
}

TEST(Engine, new_prepare_gives_the_solve_under_way_up) {
    Sample s = Chain(3);
    s.engine.Prepare(s.data);
    s.engine.Step(0);
    s.Specify("S0", cn::kPressure, 500);
    ASSERT_EQ(s.Solve().progress, Progress::done);
    EXPECT_EQ(s.Number("S3", cn::kPressure), 470);
}

TEST(Engine, inputs_stay_and_calculated_values_are_marked) {
    Sample s = Chain(1);
    ASSERT_EQ(s.Solve().progress, Progress::done);
    const ValueData given = s.Get("S0", cn::kTemperature).values[0];
    EXPECT_EQ(given.number, 20);
    EXPECT_EQ(given.state, VariableState::specified);
    EXPECT_EQ(s.Get("S1", cn::kTemperature).values[0].state, VariableState::calculated);
    EXPECT_EQ(s.Get("V1", cn::kProductPressure).values[0].state, VariableState::calculated);
    EXPECT_EQ(s.Get("V1", cn::kPressureDrop).values[0].state, VariableState::specified);
}

TEST(Engine, values_that_are_no_longer_found_become_empty) {
    Sample s = Chain(1);
    ASSERT_EQ(s.Solve().progress, Progress::done);
    s.Specify("S0", cn::kPressure, kEmpty);
    for (VariableData& v : s.Find("S0")->variables) {
        if (v.spec->name == cn::kPressure) v.values[0].state = VariableState::missing;
    }
    EXPECT_EQ(s.Solve().message, "stream S0: pressure is not specified");
    for (const char* name : {cn::kTemperature, cn::kMolarFlow, cn::kHeatFlow}) {
        EXPECT_EQ(s.Number("S1", name), kEmpty) << name;
        EXPECT_EQ(s.Get("S1", name).values[0].state, VariableState::missing) << name;
    }
    EXPECT_EQ(s.Number("V1", cn::kProductPressure), kEmpty);
}

TEST(Engine, results_have_the_same_objects_and_leave_the_problem_alone) {
    Sample s = Chain(2);
    auto inner = std::make_shared<FlowsheetData>();
    ObjectData stream = *s.Find("S2");
    stream.name = "Inner";
    inner->objects.push_back(stream);
    s.Unit(words::kTemplate, "TPL", {"S2"}, {}).sub_flowsheet = inner;
    const CaseData before = s.data;
    ASSERT_EQ(s.Solve().message, "");
    ASSERT_EQ(s.data.main.objects.size(), before.main.objects.size());
    for (std::size_t i = 0; i < before.main.objects.size(); ++i) {
        EXPECT_EQ(s.data.main.objects[i].name, before.main.objects[i].name);
        EXPECT_EQ(s.data.main.objects[i].variables.size(), before.main.objects[i].variables.size());
    }
    EXPECT_EQ(s.Number("TPL/Inner", cn::kPressure), 980);
    for (const VariableData& v : inner->objects[0].variables) {
        for (const ValueData& value : v.values) EXPECT_EQ(value.number, kEmpty) << v.spec->name;
    }
}

TEST(Engine, recorded_and_incomplete_cases_are_refused) {
    Sample s = Chain(1);
    s.data.recorded = true;
    EXPECT_EQ(s.engine.Prepare(s.data).message, "a recorded case can't be solved");
    s.data.recorded = false;
    s.data.compounds[0].critical_temperature_K = kEmpty;
    EXPECT_EQ(s.engine.Prepare(s.data).message,
              "compound Propane: critical temperature is missing");
    s.data.compounds.clear();
    EXPECT_EQ(s.engine.Prepare(s.data).message, "the case has no compounds");
    EXPECT_EQ(s.engine.Step(0).progress, Progress::failed);
}

TEST(Engine, case_without_units_solves_its_streams) {
    Sample s({"Propane", "n-Hexane"});
    s.Stream("Alone", kFeed, {0.5, 0.5});
    EXPECT_EQ(s.Solve().progress, Progress::done);
    EXPECT_NE(s.Number("Alone", cn::kMolarEnthalpy), kEmpty);
    Sample empty({"Propane"});
    EXPECT_EQ(empty.Solve().progress, Progress::done);
}

TEST(Results, stream_properties_meet_the_hand_calculation) {
    Sample s({"Argon"});
    s.Stream("Gas", {{cn::kTemperature, 125}, {cn::kPressure, 200}, {cn::kMolarFlow, 10}}, {1});
    ASSERT_EQ(s.Solve().message, "");
    EXPECT_NEAR(s.Number("Gas", cn::kMassFlow), 399.48, 1e-10);
    EXPECT_NEAR(s.Number("Gas", cn::kMolarEnthalpy), 2078.6156545, 1e-8);
    EXPECT_NEAR(s.Number("Gas", cn::kHeatFlow), 20786.156545, 1e-7);
    EXPECT_NEAR(s.Number("Gas", cn::kMolarEntropy),
                20.786156545 * std::log(398.15 / 298.15) - 8.314462618 * std::log(200 / 101.325),
                1e-10);
    // M P / (R T)
    EXPECT_NEAR(s.Number("Gas", cn::kMassDensity), 39.948 * 200 / (8.314462618 * 398.15), 1e-12);
    EXPECT_EQ(s.Number("Gas", cn::kVapourFraction), 1);
    EXPECT_EQ(s.Number("Gas", cn::kMolarMass), 39.948);
}

TEST(Results, phase_arrays_follow_their_labels) {
    Sample s({"Propane", "n-Hexane"});
    s.Stream("Wet", {{cn::kTemperature, 50}, {cn::kPressure, 500}, {cn::kMolarFlow, 1}},
             {0.6, 0.4});
    s.Stream("Dry", {{cn::kTemperature, 250}, {cn::kPressure, 500}, {cn::kMolarFlow, 1}},
             {0.6, 0.4});
    ASSERT_EQ(s.Solve().message, "");
    double v = s.Number("Wet", cn::kVapourFraction);
    EXPECT_EQ(s.Number("Wet", cn::kPhaseFraction, 0), 1);
    EXPECT_EQ(s.Number("Wet", cn::kPhaseFraction, 1), v);
    EXPECT_NEAR(s.Number("Wet", cn::kPhaseFraction, 2), 1 - v, 1e-15);
    for (std::size_t i = 0; i < 2; ++i) {
        double y = s.Number("Wet", cn::kPhaseCompMoleFrac, 2 + i);
        double x = s.Number("Wet", cn::kPhaseCompMoleFrac, 4 + i);
        EXPECT_NEAR(v * y + (1 - v) * x, s.Number("Wet", cn::kPhaseCompMoleFrac, i), 1e-14);
        EXPECT_NEAR(s.Number("Dry", cn::kPhaseCompMoleFrac, 2 + i), i == 0 ? 0.6 : 0.4, 1e-15);
        EXPECT_EQ(s.Number("Dry", cn::kPhaseCompMoleFrac, 4 + i), kEmpty);
    }
    EXPECT_GT(s.Number("Wet", cn::kPhaseCompMoleFrac, 2),
              s.Number("Wet", cn::kPhaseCompMoleFrac, 4));
}

TEST(Results, composition_follows_the_labels_of_the_variable) {
    Sample s({"Methane", "n-Hexane"});
    ObjectData& stream = s.Stream("Feed", kFeed, {0.9, 0.1});
    for (VariableData& v : stream.variables) {
        if (v.spec->name != cn::kCompMoleFrac) continue;
        VariableSpec turned = *v.spec;
        turned.dimensions[0].labels = {"n-Hexane", "Methane"};
        v.spec = std::make_shared<const VariableSpec>(turned);
    }
    ASSERT_EQ(s.Solve().message, "");
    EXPECT_NEAR(s.Number("Feed", cn::kMolarMass), 0.1 * 16.043 + 0.9 * 86.178, 1e-9);
}

}  // namespace
}  // namespace fixtop::casehost::process::testing
