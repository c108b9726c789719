// SPDX-License-Identifier: Apache-2.0
// Each unit operation alone: balances, hand calculations, and the exact texts of what is missing.

#include <gmock/gmock.h>

#include "process/sample_process.h"

namespace fixtop::casehost::process::testing {
namespace {

using Role = PortData::Role;
using Progress = SolveEngine::Progress;

const Numbers kWarmFeed = {{cn::kTemperature, 26.85}, {cn::kPressure, 2000}, {cn::kMolarFlow, 100}};
const std::vector<double> kMixture = {0.3, 0.2, 0.2, 0.2, 0.1};

Sample Light(const Numbers& feed = kWarmFeed) {
    Sample sample({"Methane", "Ethane", "Propane", "n-Butane", "n-Hexane"});
    sample.Stream("Feed", feed, kMixture);
    return sample;
}

TEST(Mixer, closes_its_balances_and_takes_the_lowest_pressure) {
    Sample sample = Light();
    sample.Stream("Cold", {{cn::kTemperature, -60}, {cn::kPressure, 900}, {cn::kMassFlow, 700}},
                  {0.9, 0.1, 0, 0, 0});
    sample.Stream("Idle", {{cn::kTemperature, 20}, {cn::kPressure, 100}, {cn::kMolarFlow, 0}},
                  {0, 0, 0, 0, 1});
    sample.Unit(words::kMixer, "MIX-100", {"Feed", "Cold", "Idle"}, {"Out"});
    ASSERT_EQ(sample.Solve().message, "");
    ExpectBalanced(sample, {"Feed", "Cold", "Idle"}, {"Out"}, 0);
    EXPECT_EQ(sample.Number("Out", cn::kPressure), 900);
    // 700 kg/h of 17.4457 kg/kgmole.
    EXPECT_NEAR(sample.Number("Out", cn::kMolarFlow), 100 + 700 / 17.4457, 1e-9);
}

TEST(Mixer, equalize_all_warns_of_different_pressures) {
    Sample sample = Light();
    sample.Stream("Other", {{cn::kTemperature, 20}, {cn::kPressure, 900}, {cn::kMolarFlow, 1}},
                  kMixture);
    sample.Unit(words::kMixer, "MIX-100", {"Feed", "Other"}, {"Out"})
        .variables.push_back(Variable(cn::kOutletPressureAssignment, {0}));
    EXPECT_EQ(sample.Solve().progress, Progress::done);
    EXPECT_EQ(sample.Find("MIX-100")->status, ObjectStatus::warning);
    EXPECT_EQ(sample.Find("MIX-100")->status_text,
              "MIX-100: feed pressures differ, the lowest is taken");
}

TEST(Tee, divides_by_its_ratios_and_fills_the_open_one) {
    Sample sample = Light();
    sample.Unit(words::kTee, "TEE-100", {"Feed"}, {"A", "B", "C"})
        .variables.push_back(Variable(cn::kFlowRatio, {0.2, kEmpty, 0.5}));
    ASSERT_EQ(sample.Solve().message, "");
    EXPECT_DOUBLE_EQ(sample.Number("A", cn::kMolarFlow), 20);
    EXPECT_DOUBLE_EQ(sample.Number("B", cn::kMolarFlow), 30);
    EXPECT_DOUBLE_EQ(sample.Number("C", cn::kMolarFlow), 50);
    EXPECT_NEAR(sample.Number("TEE-100", cn::kFlowRatio, 1), 0.3, 1e-15);
    EXPECT_NEAR(sample.Number("B", cn::kTemperature), 26.85, 1e-12);
    ExpectBalanced(sample, {"Feed"}, {"A", "B", "C"}, 0);
}

TEST(Valve, is_isenthalpic_and_meets_bisection) {
    Sample sample = Light();
    sample.Unit(words::kValve, "VLV-100", {"Feed"}, {"Out"}, {{cn::kProductPressure, 500}});
    ASSERT_EQ(sample.Solve().message, "");
    ExpectBalanced(sample, {"Feed"}, {"Out"}, 0);
    EXPECT_NEAR(sample.Number("Out", cn::kTemperature), 268.46513000258824 - 273.15, 1e-8);
    EXPECT_NEAR(sample.Number("Out", cn::kVapourFraction), 0.6435270844180963, 1e-9);
    EXPECT_EQ(sample.Number("VLV-100", cn::kPressureDrop), 1500);
    EXPECT_GT(sample.Number("Out", cn::kMolarEntropy), sample.Number("Feed", cn::kMolarEntropy));
}

TEST(Heater, meets_the_constant_heat_capacity_by_hand) {
    Sample sample({"Argon"});
    sample.Stream("In", {{cn::kTemperature, 25}, {cn::kPressure, 200}, {cn::kMolarFlow, 10}}, {1});
    sample.Unit(words::kHeater, "E-100", {"In"}, {"Out"},
                {{cn::kPressureDrop, 20}, {cn::kProductTemperature, 125}});
    sample.Energy("Q");
    sample.Attach("E-100", Role::energy_in, "Q");
    ASSERT_EQ(sample.Solve().message, "");
    EXPECT_NEAR(sample.Number("E-100", cn::kDuty), 10 * 20.786156545 * 100, 1e-7);
    EXPECT_NEAR(sample.Number("Q", cn::kHeatFlow), 10 * 20.786156545 * 100, 1e-7);
    EXPECT_DOUBLE_EQ(sample.Number("Out", cn::kPressure), 180);
}

TEST(Heater, each_way_of_specifying_leads_back_to_the_same_state) {
    Sample by_temperature = Light();
    by_temperature.Unit(words::kHeater, "E-100", {"Feed"}, {"Out"},
                        {{cn::kPressureDrop, 50}, {cn::kProductTemperature, 60}});
    ASSERT_EQ(by_temperature.Solve().message, "");
    double duty = by_temperature.Number("E-100", cn::kDuty);
    double fraction = by_temperature.Number("Out", cn::kVapourFraction);
    ASSERT_GT(fraction, 0);
    ASSERT_LT(fraction, 1);
    ExpectBalanced(by_temperature, {"Feed"}, {"Out"}, duty);

    const std::pair<const char*, void (*)(Sample&, double, double)> ways[] = {
        {"duty", [](Sample& s, double q, double) { s.Specify("E-100", cn::kDuty, q); }},
        {"energy stream",
         [](Sample& s, double q, double) {
             s.Energy("Q", {{cn::kHeatFlow, q}});
             s.Attach("E-100", Role::energy_in, "Q");
         }},
        {"stream temperature",
         [](Sample& s, double, double) { s.Specify("Out", cn::kTemperature, 60); }},
        {"stream vapour fraction",
         [](Sample& s, double, double v) { s.Specify("Out", cn::kVapourFraction, v); }},
    };
    for (auto [what, specify] : ways) {
        SCOPED_TRACE(what);
        Sample sample = Light();
        sample.Unit(words::kHeater, "E-100", {"Feed"}, {"Out"}, {{cn::kPressureDrop, 50}});
        specify(sample, duty, fraction);
        ASSERT_EQ(sample.Solve().message, "");
        EXPECT_NEAR(sample.Number("Out", cn::kTemperature), 60, 1e-8);
        EXPECT_NEAR(sample.Number("E-100", cn::kDuty), duty, 1e-9 * duty);
    }
}

TEST(Cooler, counts_the_heat_that_leaves) {
    Sample sample = Light();
    sample.Unit(words::kCooler, "E-101", {"Feed"}, {"Out"},
                {{cn::kPressureDrop, 0}, {cn::kDuty, 250000}});
    sample.Energy("Q");
    sample.Attach("E-101", Role::energy_out, "Q");
    ASSERT_EQ(sample.Solve().message, "");
    EXPECT_LT(sample.Number("Out", cn::kTemperature), 26.85);
    EXPECT_NEAR(sample.Number("Q", cn::kHeatFlow), 250000, 1e-6);
    ExpectBalanced(sample, {"Feed"}, {"Out"}, -250000);
}

TEST(Pump, works_by_volume_and_pressure) {
    Sample sample({"Water"});
    sample.Stream("In", {{cn::kTemperature, 20}, {cn::kPressure, 100}, {cn::kMolarFlow, 50}}, {1});
    sample.Unit(words::kPump, "P-100", {"In"}, {"Out"},
                {{cn::kProductPressure, 1100}, {cn::kAdiabaticEfficiency, 80}});
    ASSERT_EQ(sample.Solve().message, "");
    // 50 kgmole/h * 0.0181 m3/kgmole * 1000 kPa / 0.8 = 1131.25 kJ/h.
    EXPECT_NEAR(sample.Number("P-100", cn::kDuty), 1131.25, 1e-6);
    ExpectBalanced(sample, {"In"}, {"Out"}, 1131.25);
    EXPECT_GT(sample.Number("Out", cn::kTemperature), 20);
}

TEST(Compressor, constant_heat_capacity_meets_the_closed_formula) {
    for (double efficiency : {100.0, 75.0, 40.0}) {
        SCOPED_TRACE(efficiency);
        Sample sample({"Argon"});
        sample.Stream("In", {{cn::kTemperature, 25}, {cn::kPressure, 100}, {cn::kMolarFlow, 3}},
                      {1});
        sample.Unit(words::kCompressor, "K-100", {"In"}, {"Out"},
                    {{cn::kProductPressure, 500}, {cn::kAdiabaticEfficiency, efficiency}});
        ASSERT_EQ(sample.Solve().message, "");
        // T2s = T1 (P2/P1)^(R/Cp), W = n Cp (T2s - T1) / efficiency.
        double ideal = 298.15 * std::pow(5, 8.314462618 / 20.786156545);
        double rise = (ideal - 298.15) / (efficiency / 100);
        EXPECT_NEAR(sample.Number("Out", cn::kTemperature), 25 + rise, 1e-8);
        EXPECT_NEAR(sample.Number("K-100", cn::kDuty), 3 * 20.786156545 * rise, 1e-6);
    }
}

TEST(Compressor, mixture_meets_bisection) {
    Sample sample =
        Light({{cn::kTemperature, 146.85}, {cn::kPressure, 300}, {cn::kMolarFlow, 100}});
    sample.Unit(words::kCompressor, "K-100", {"Feed"}, {"Out"},
                {{cn::kProductPressure, 1200}, {cn::kAdiabaticEfficiency, 75}});
    ASSERT_EQ(sample.Solve().message, "");
    EXPECT_NEAR(sample.Number("Out", cn::kTemperature), 491.08765805702205 - 273.15, 1e-6);
    double power = sample.Number("K-100", cn::kDuty);
    EXPECT_NEAR(power, 100 * 5150.964369085914 / 0.75, 1e-2);
    ExpectBalanced(sample, {"Feed"}, {"Out"}, power);
}

TEST(Expander, constant_heat_capacity_meets_the_closed_formula) {
    Sample sample({"Argon"});
    sample.Stream("In", {{cn::kTemperature, 200}, {cn::kPressure, 800}, {cn::kMolarFlow, 3}}, {1});
    sample.Unit(words::kExpander, "K-101", {"In"}, {"Out"},
                {{cn::kPressureDrop, 600}, {cn::kAdiabaticEfficiency, 70}});
    sample.Energy("W");
    sample.Attach("K-101", Role::energy_out, "W");
    ASSERT_EQ(sample.Solve().message, "");
    double fall = 0.7 * 473.15 * (1 - std::pow(0.25, 8.314462618 / 20.786156545));
    EXPECT_NEAR(sample.Number("Out", cn::kTemperature), 200 - fall, 1e-8);
    EXPECT_NEAR(sample.Number("W", cn::kHeatFlow), 3 * 20.786156545 * fall, 1e-6);
}

TEST(Compressor, power_of_an_expander_sets_the_product_pressure) {
    Sample sample({"Argon"});
    sample.Stream("Hot", {{cn::kTemperature, 200}, {cn::kPressure, 800}, {cn::kMolarFlow, 3}}, {1});
    sample.Stream("Low", {{cn::kTemperature, 25}, {cn::kPressure, 100}, {cn::kMolarFlow, 2}}, {1});
    sample.Unit(words::kCompressor, "K-100", {"Low"}, {"High"}, {{cn::kAdiabaticEfficiency, 80}});
    sample.Unit(words::kExpander, "K-101", {"Hot"}, {"Spent"},
                {{cn::kProductPressure, 200}, {cn::kAdiabaticEfficiency, 100}});
    sample.Energy("Shaft");
    sample.Attach("K-101", Role::energy_out, "Shaft");
    sample.Attach("K-100", Role::energy_in, "Shaft");
    ASSERT_EQ(sample.Solve().message, "");
    double exponent = 8.314462618 / 20.786156545;
    double power = 3 * 473.15 * (1 - std::pow(0.25, exponent));  // over Cp
    double ratio = std::pow(1 + 0.8 * power / 2 / 298.15, 1 / exponent);
    EXPECT_NEAR(sample.Number("High", cn::kPressure), 100 * ratio, 1e-6);
    ExpectBalanced(sample, {"Hot", "Low"}, {"Spent", "High"}, 0);
}

struct VesselRow {
    const char* type;
    Numbers given;
    double energy;
};

TEST(Separator, products_are_the_phases_of_the_mixed_feeds) {
    const VesselRow rows[] = {
        {words::kSeparator, {}, 0},
        {words::kTank, {{cn::kPressureDrop, 300}}, 0},
        {words::kThreePhaseSeparator, {{cn::kDuty, 2e5}}, 2e5},
        {words::kSeparator, {{cn::kDuty, -1e5}, {cn::kPressureDrop, 10}}, -1e5},
    };
    for (const VesselRow& row : rows) {
        SCOPED_TRACE(row.type);
        Sample sample = Light();
        sample.Stream("Second",
                      {{cn::kTemperature, 0}, {cn::kPressure, 1500}, {cn::kMolarFlow, 20}},
                      {0.1, 0.1, 0.1, 0.2, 0.5});
        std::vector<std::string> products = {"Vapour", "Liquid"};
        if (row.type == std::string(words::kThreePhaseSeparator)) products.push_back("Heavy");
        sample.Unit(row.type, "V-100", {"Feed", "Second"}, products, row.given);
        ASSERT_EQ(sample.Solve().message, "");
        ExpectBalanced(sample, {"Feed", "Second"}, products, row.energy);
        EXPECT_EQ(sample.Number("Vapour", cn::kVapourFraction), 1);
        EXPECT_EQ(sample.Number("Liquid", cn::kVapourFraction), 0);
        EXPECT_GT(sample.Number("Vapour", cn::kMolarFlow), 0);
        EXPECT_GT(sample.Number("Liquid", cn::kMolarFlow), 0);
        Thermo thermo(sample.data.compounds);
        for (std::size_t i = 0; i < kMixture.size(); ++i) {
            double k = thermo.KValue(i, sample.Number("Vapour", cn::kTemperature) + 273.15,
                                     sample.Number("Vapour", cn::kPressure));
            double y = sample.Number("Vapour", cn::kCompMoleFrac, i);
            EXPECT_NEAR(y, k * sample.Number("Liquid", cn::kCompMoleFrac, i), 1e-10 * y);
        }
    }
}

TEST(Separator, phase_that_is_absent_leaves_a_product_without_flow) {
    Sample sample = Light({{cn::kTemperature, 300}, {cn::kPressure, 100}, {cn::kMolarFlow, 5}});
    sample.Unit(words::kSeparator, "V-100", {"Feed"}, {"Vapour", "Liquid"});
    ASSERT_EQ(sample.Solve().message, "");
    EXPECT_EQ(sample.Number("Vapour", cn::kMolarFlow), 5);
    EXPECT_EQ(sample.Number("Liquid", cn::kMolarFlow), 0);
    EXPECT_NEAR(sample.Number("Liquid", cn::kTemperature), 300, 1e-9);
}

Sample Exchanger(const Numbers& given) {
    Sample sample({"Argon"});
    sample.Stream("Hot", {{cn::kTemperature, 200}, {cn::kPressure, 300}, {cn::kMolarFlow, 10}},
                  {1});
    sample.Stream("Cold", {{cn::kTemperature, 20}, {cn::kPressure, 300}, {cn::kMolarFlow, 20}},
                  {1});
    Numbers all = given;
    all.insert(all.end(), {{cn::kTubePressureDrop, 10}, {cn::kShellPressureDrop, 5}});
    sample.Unit(words::kHeatExchanger, "E-200", {"Hot", "Cold"}, {"Hot Out", "Cold Out"}, all);
    return sample;
}

// Hot 200 to 100 C with twice the cold flow: cold 20 to 70 C. Ends 130 and 80 K,
// LMTD = 50 / ln(130/80), Q = 10 * 20.786156545 * 100.
constexpr double kHandDuty = 20786.156545;
const double kHandLmtd = 50 / std::log(130.0 / 80.0);

TEST(HeatExchanger, each_specification_meets_the_hand_calculation) {
    const std::pair<const char*, Numbers> rows[] = {
        {"duty", {{cn::kDuty, kHandDuty}}},
        {"UA", {{cn::kUA, kHandDuty / kHandLmtd}}},
        {"tube product", {}},
        {"shell product", {}},
    };
    for (const auto& [what, given] : rows) {
        SCOPED_TRACE(what);
        Sample sample = Exchanger(given);
        if (what == std::string("tube product")) sample.Specify("Hot Out", cn::kTemperature, 100);
        if (what == std::string("shell product")) sample.Specify("Cold Out", cn::kTemperature, 70);
        ASSERT_EQ(sample.Solve().message, "");
        EXPECT_NEAR(sample.Number("Hot Out", cn::kTemperature), 100, 1e-8);
        EXPECT_NEAR(sample.Number("Cold Out", cn::kTemperature), 70, 1e-8);
        EXPECT_NEAR(sample.Number("E-200", cn::kDuty), kHandDuty, 1e-6);
        EXPECT_NEAR(sample.Number("E-200", cn::kLmtd), kHandLmtd, 1e-8);
        EXPECT_NEAR(sample.Number("E-200", cn::kUA), kHandDuty / kHandLmtd, 1e-7);
        EXPECT_NEAR(sample.Number("E-200", cn::kMinimumApproach), 80, 1e-8);
        EXPECT_DOUBLE_EQ(sample.Number("Hot Out", cn::kPressure), 290);
        EXPECT_DOUBLE_EQ(sample.Number("Cold Out", cn::kPressure), 295);
        ExpectBalanced(sample, {"Hot", "Cold"}, {"Hot Out", "Cold Out"}, 0);
    }
}

// Effectiveness of counter-current flow with C_min/C_max = 1/2:
// e = (1 - exp(-NTU/2)) / (1 - exp(-NTU/2) / 2).
TEST(HeatExchanger, ua_meets_the_effectiveness_formula_up_to_the_limit) {
    for (double transfer_units : {0.01, 0.5, 2.0, 10.0, 40.0, 1000.0}) {
        SCOPED_TRACE(transfer_units);
        Sample sample = Exchanger({{cn::kUA, transfer_units * 10 * 20.786156545}});
        ASSERT_EQ(sample.Solve().message, "");
        double decay = std::exp(-0.5 * transfer_units);
        double effectiveness = (1 - decay) / (1 - 0.5 * decay);
        EXPECT_NEAR(sample.Number("Hot Out", cn::kTemperature), 200 - 180 * effectiveness, 1e-7);
    }
}

TEST(HeatExchanger, temperature_cross_is_a_warning_without_ua) {
    Sample sample = Exchanger({{cn::kDuty, 20 * 20.786156545 * 190}});
    EXPECT_EQ(sample.Solve().progress, Progress::done);
    EXPECT_EQ(sample.Find("E-200")->status, ObjectStatus::warning);
    EXPECT_EQ(sample.Find("E-200")->status_text, "E-200: temperature cross");
    EXPECT_EQ(sample.Number("E-200", cn::kUA), kEmpty);
}

TEST(HeatExchanger, log_mean_is_continuous_at_equal_ends) {
    EXPECT_EQ(LogMeanDifference(40, 40), 40);
    EXPECT_NEAR(LogMeanDifference(40 + 1e-6, 40), 40 + 0.5e-6, 1e-12);
    EXPECT_NEAR(LogMeanDifference(80, 40), 40 / std::log(2.0), 1e-12);
    EXPECT_NEAR(LogMeanDifference(40, 80), 40 / std::log(2.0), 1e-12);
}

struct TextRow {
    const char* type;
    Numbers given;
    ObjectStatus status;
    const char* text;
};

TEST(UnitTexts, say_what_is_missing_or_contradictory) {
    const auto under = ObjectStatus::under_specified, error = ObjectStatus::error;
    const TextRow rows[] = {
        {words::kValve, {}, under, "U-1: pressure drop or product pressure must be specified"},
        {words::kValve,
         {{cn::kPressureDrop, 1}, {cn::kProductPressure, 1}},
         error,
         "U-1: pressure drop and product pressure are both specified"},
        {words::kValve,
         {{cn::kPressureDrop, 2000}},
         error,
         "U-1: product pressure 0 kPa is not above zero"},
        {words::kValve,
         {{cn::kProductPressure, 2500}},
         error,
         "U-1: product pressure 2500 kPa is above feed pressure 2000 kPa"},
        {words::kHeater,
         {{cn::kPressureDrop, 0}},
         under,
         "U-1: product temperature or duty must be specified"},
        {words::kCooler,
         {{cn::kPressureDrop, 0}, {cn::kDuty, 1}, {cn::kProductTemperature, 1}},
         error,
         "U-1: duty and product temperature are both specified"},
        {words::kHeater,
         {{cn::kPressureDrop, 0}, {cn::kProductTemperature, -300}},
         error,
         "U-1: temperature -300 C is outside the range of the property methods"},
        {words::kPump,
         {{cn::kProductPressure, 3000}},
         under,
         "U-1: adiabatic efficiency must be specified"},
        {words::kPump,
         {{cn::kProductPressure, 300}, {cn::kAdiabaticEfficiency, 50}},
         error,
         "U-1: product pressure 300 kPa is below feed pressure 2000 kPa"},
        {words::kCompressor,
         {{cn::kProductPressure, 3000}, {cn::kAdiabaticEfficiency, 120}},
         error,
         "U-1: adiabatic efficiency 120 % is not within 0 and 100"},
        {words::kCompressor,
         {{cn::kAdiabaticEfficiency, 75}},
         under,
         "U-1: pressure drop or product pressure must be specified"},
        {words::kExpander,
         {{cn::kProductPressure, 3000}, {cn::kAdiabaticEfficiency, 75}},
         error,
         "U-1: product pressure 3000 kPa is above feed pressure 2000 kPa"},
        {words::kDistillation,
         {},
         ObjectStatus::not_solved,
         "U-1: a DistillationObject has no steady-state model"},
    };
    for (const TextRow& row : rows) {
        SCOPED_TRACE(row.text);
        Sample sample = Light();
        sample.Unit(row.type, "U-1", {"Feed"}, {"Out"}, row.given);
        SolveEngine::Outcome outcome = sample.Solve();
        EXPECT_EQ(outcome.progress, Progress::failed);
        EXPECT_EQ(sample.Find("U-1")->status, row.status);
        EXPECT_EQ(sample.Find("U-1")->status_text, row.text);
        EXPECT_EQ(sample.Find("Out")->status, ObjectStatus::not_solved);
        EXPECT_EQ(sample.Find("Out")->status_text, "stream Out: U-1 is not solved");
        EXPECT_EQ(sample.Number("Out", cn::kTemperature), kEmpty);
    }
}

TEST(UnitTexts, tee_and_exchanger_say_what_is_wrong) {
    const std::pair<std::vector<double>, const char*> tees[] = {
        {{kEmpty, kEmpty}, "TEE-1: all flow ratios but one must be specified"},
        {{0.3, 0.6}, "TEE-1: flow ratios sum to 0.9, not to 1"},
        {{1.3, kEmpty}, "TEE-1: flow ratios sum to 1.3, above 1"},
        {{-0.5, 1.5}, "TEE-1: flow ratio -0.5 is below zero"},
    };
    for (const auto& [ratios, text] : tees) {
        Sample sample = Light();
        sample.Unit(words::kTee, "TEE-1", {"Feed"}, {"A", "B"})
            .variables.push_back(Variable(cn::kFlowRatio, ratios));
        EXPECT_EQ(sample.Solve().message, text);
    }
    EXPECT_EQ(Exchanger({}).Solve().message,
              "E-200: duty, UA or an outlet temperature must be specified");
    EXPECT_EQ(Exchanger({{cn::kDuty, 1}, {cn::kUA, 1}}).Solve().message,
              "E-200: duty and UA are both specified");
    Sample bare({"Argon"});
    bare.Stream("Hot", {{cn::kTemperature, 200}, {cn::kPressure, 300}, {cn::kMolarFlow, 1}}, {1});
    bare.Stream("Cold", {{cn::kTemperature, 20}, {cn::kPressure, 300}, {cn::kMolarFlow, 2}}, {1});
    bare.Unit(words::kHeatExchanger, "E-1", {"Hot", "Cold"}, {"A", "B"},
              {{cn::kTubePressureDrop, 0}, {cn::kDuty, 1}});
    EXPECT_EQ(bare.Solve().message,
              "E-1: shell side pressure drop or product pressure must be specified");
}

}  // namespace
}  // namespace fixtop::casehost::process::testing
