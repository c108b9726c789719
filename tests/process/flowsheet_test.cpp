// SPDX-License-Identifier: Apache-2.0
// Whole flowsheets: order, recycles, sub-flowsheets, feeds, statuses and texts.

#include <gmock/gmock.h>

#include "process/sample_process.h"
#include "process/solve_order.h"

namespace fixtop::casehost::process::testing {
namespace {

using Role = PortData::Role;
using Progress = SolveEngine::Progress;

VariableData Ratios(const std::vector<double>& ratios) {
    return Variable(cn::kFlowRatio, ratios);
}

const Numbers kFeed = {{cn::kTemperature, 30}, {cn::kPressure, 3000}, {cn::kMolarFlow, 100}};

// Gas plant with two recycles: flash gas of the second vessel is compressed back to the inlet, and
// a part of the cooled product gas goes round the cooler and the first vessel.
Sample TwoRecycles() {
    Sample s({"Methane", "Ethane", "Propane", "n-Butane", "n-Hexane"});
    s.Stream("Feed", kFeed, {0.5, 0.2, 0.1, 0.1, 0.1});
    s.Unit(words::kMixer, "MIX-100", {"Feed", "Flash Gas", "Gas Back"}, {"Mixed"});
    s.Unit(words::kCooler, "E-100", {"Mixed"}, {"Cooled"},
           {{cn::kPressureDrop, 50}, {cn::kProductTemperature, -10}});
    s.Unit(words::kSeparator, "V-100", {"Cooled"}, {"Gas", "Oil"});
    s.Unit(words::kTee, "TEE-100", {"Gas"}, {"Sales Gas", "Slip"})
        .variables.push_back(Ratios({0.7, kEmpty}));
    s.Unit(words::kCompressor, "K-101", {"Slip"}, {"Gas Back"},
           {{cn::kProductPressure, 3000}, {cn::kAdiabaticEfficiency, 75}});
    s.Unit(words::kValve, "VLV-100", {"Oil"}, {"Low"}, {{cn::kProductPressure, 400}});
    s.Unit(words::kSeparator, "V-101", {"Low"}, {"Vent", "Product Oil"});
    s.Unit(words::kCompressor, "K-100", {"Vent"}, {"Hot Gas"},
           {{cn::kProductPressure, 3050}, {cn::kAdiabaticEfficiency, 70}});
    s.Unit(words::kCooler, "E-101", {"Hot Gas"}, {"Flash Gas"},
           {{cn::kPressureDrop, 50}, {cn::kProductTemperature, 40}});
    return s;
}

TEST(Recycle, two_recycles_close_every_balance) {
    Sample s = TwoRecycles();
    ASSERT_EQ(s.Solve().message, "");
    double energy = s.Number("K-100", cn::kDuty) + s.Number("K-101", cn::kDuty) -
                    s.Number("E-100", cn::kDuty) - s.Number("E-101", cn::kDuty);
    ExpectBalanced(s, {"Feed"}, {"Sales Gas", "Product Oil"}, energy);
    ExpectBalanced(s, {"Feed", "Flash Gas", "Gas Back"}, {"Mixed"});
    ExpectBalanced(s, {"Mixed"}, {"Cooled"}, -s.Number("E-100", cn::kDuty));
    ExpectBalanced(s, {"Cooled"}, {"Gas", "Oil"});
    ExpectBalanced(s, {"Gas"}, {"Sales Gas", "Slip"});
    ExpectBalanced(s, {"Slip"}, {"Gas Back"}, s.Number("K-101", cn::kDuty));
    ExpectBalanced(s, {"Low"}, {"Vent", "Product Oil"});
    ExpectBalanced(s, {"Hot Gas"}, {"Flash Gas"}, -s.Number("E-101", cn::kDuty));
    EXPECT_GT(s.Number("Flash Gas", cn::kMolarFlow), 0.1);
    for (const ObjectData& object : s.data.main.objects) {
        EXPECT_EQ(object.status, ObjectStatus::ok) << object.name << " " << object.status_text;
    }
}

TEST(Recycle, share_that_is_done_is_not_known_within) {
    Sample s = TwoRecycles();
    s.data.solve_turns = 1000;  // a step a turn
    s.engine.Prepare(s.data);
    EXPECT_EQ(s.engine.DoneShare(), 0);
    int unknown = 0;
    while (s.engine.Step(0).progress == Progress::running) {
        unknown += s.engine.DoneShare() ? 0 : 1;
    }
    EXPECT_GT(unknown, 0);
}

TEST(Recycle, changed_feed_changes_the_products) {
    Sample s = TwoRecycles();
    ASSERT_EQ(s.Solve().message, "");
    double oil = s.Number("Product Oil", cn::kMolarFlow),
           gas = s.Number("Sales Gas", cn::kMolarFlow);
    s.Specify("Feed", cn::kMolarFlow, 150);
    ASSERT_EQ(s.Solve().message, "");
    // Everything is given by intensive numbers and ratios, so flows scale with the feed.
    EXPECT_NEAR(s.Number("Product Oil", cn::kMolarFlow), 1.5 * oil, 1e-7);
    EXPECT_NEAR(s.Number("Sales Gas", cn::kMolarFlow), 1.5 * gas, 1e-7);
    s.Specify("Feed", cn::kCompMoleFrac, 0.2, 4);
    s.Specify("Feed", cn::kCompMoleFrac, 0.4, 0);
    ASSERT_EQ(s.Solve().message, "");
    EXPECT_GT(s.Number("Product Oil", cn::kMolarFlow), 1.6 * oil);
    ExpectBalanced(s, {"Feed"}, {"Sales Gas", "Product Oil"},
                   s.Number("K-100", cn::kDuty) + s.Number("K-101", cn::kDuty) -
                       s.Number("E-100", cn::kDuty) - s.Number("E-101", cn::kDuty));
}

// A loop of mixer and tee that returns `back` of what goes round: flow = feed / (1 - back).
TEST(Recycle, return_ratio_meets_the_geometric_sum) {
    for (double back : {0.0, 0.1, 0.5, 0.9, 0.99, 0.999}) {
        SCOPED_TRACE(back);
        Sample s({"Methane", "n-Hexane"});
        s.Stream("Feed", kFeed, {0.5, 0.5});
        s.Unit(words::kMixer, "M", {"Feed", "Back"}, {"Round"});
        s.Unit(words::kTee, "T", {"Round"}, {"Out", "Back"})
            .variables.push_back(Ratios({kEmpty, back}));
        ASSERT_EQ(s.Solve().message, "");
        EXPECT_NEAR(s.Number("Round", cn::kMolarFlow), 100 / (1 - back), 1e-6 / (1 - back));
        ExpectBalanced(s, {"Feed"}, {"Out"});
        ExpectBalanced(s, {"Feed", "Back"}, {"Round"});
    }
}

// Two nested loops: with a of the flow going back far and b near, flow = feed / (1 - a - b).
TEST(Recycle, nested_returns_meet_the_geometric_sum) {
    Sample s({"Methane", "n-Hexane"});
    s.Stream("Feed", kFeed, {0.5, 0.5});
    s.Unit(words::kMixer, "M-1", {"Feed", "Far"}, {"A"});
    s.Unit(words::kMixer, "M-2", {"A", "Near"}, {"B"});
    s.Unit(words::kTee, "T", {"B"}, {"Out", "Far", "Near"})
        .variables.push_back(Ratios({kEmpty, 0.3, 0.25}));
    ASSERT_EQ(s.Solve().message, "");
    EXPECT_NEAR(s.Number("B", cn::kMolarFlow), 100 / 0.45, 1e-7);
    ExpectBalanced(s, {"Feed"}, {"Out"});
}

// Feed-effluent exchanger: the energy recycle goes through a stream that no mixer takes.
TEST(Recycle, heat_of_the_product_warms_the_feed) {
    Sample s({"Methane", "n-Hexane"});
    s.Stream("Feed", kFeed, {0.7, 0.3});
    s.Unit(words::kHeatExchanger, "E-1", {"Feed", "Hot"}, {"Warm", "Out"},
           {{cn::kTubePressureDrop, 10}, {cn::kShellPressureDrop, 10}, {cn::kUA, 3000}});
    s.Unit(words::kHeater, "E-2", {"Warm"}, {"Hot"}, {{cn::kPressureDrop, 20}, {cn::kDuty, 4e5}});
    ASSERT_EQ(s.Solve().message, "");
    ExpectBalanced(s, {"Feed"}, {"Out"}, 4e5);
    ExpectBalanced(s, {"Feed", "Hot"}, {"Warm", "Out"});
    EXPECT_NEAR(s.Number("E-1", cn::kUA) * s.Number("E-1", cn::kLmtd), s.Number("E-1", cn::kDuty),
                1e-6 * s.Number("E-1", cn::kDuty));
    EXPECT_GT(s.Number("Warm", cn::kTemperature), 30);
}

TEST(Recycle, loop_without_outlet_does_not_converge_and_says_so) {
    Sample s({"Methane"});
    s.Stream("Feed", kFeed, {1});
    s.Unit(words::kMixer, "M", {"Feed", "Back"}, {"Round"});
    s.Unit(words::kTee, "T", {"Round"}, {"Out", "Back"}).variables.push_back(Ratios({0, 1}));
    s.Unit(words::kValve, "VLV", {"Out"}, {"End"}, {{cn::kPressureDrop, 10}});
    SolveEngine::Outcome outcome = s.Solve();
    EXPECT_EQ(outcome.progress, Progress::failed);
    EXPECT_EQ(outcome.message, "M: the recycle did not converge in 2000 passes");
    EXPECT_EQ(s.Find("M")->status, ObjectStatus::error);
    EXPECT_EQ(s.Find("T")->status_text, "T: the recycle did not converge in 2000 passes");
    EXPECT_EQ(s.Find("VLV")->status_text, "VLV: stream Out is not solved");
    EXPECT_EQ(s.Number("Round", cn::kMolarFlow), kEmpty);
}

TEST(Recycle, failing_unit_leaves_the_whole_loop_unsolved) {
    Sample s = TwoRecycles();
    s.Find("VLV-100")->variables.clear();
    SolveEngine::Outcome outcome = s.Solve();
    EXPECT_EQ(outcome.message, "VLV-100: pressure drop or product pressure must be specified");
    EXPECT_EQ(s.Find("VLV-100")->status, ObjectStatus::under_specified);
    EXPECT_EQ(s.Find("V-100")->status_text, "V-100: the recycle is not solved");
    EXPECT_EQ(s.Number("Product Oil", cn::kMolarFlow), kEmpty);
    EXPECT_EQ(s.Number("Feed", cn::kMolarFlow), 100);
}

TEST(SolveOrder, groups_follow_the_streams_whatever_the_order_of_the_case) {
    Sample s({"Methane"});
    s.Unit(words::kValve, "Last", {"c"}, {"d"});
    s.Unit(words::kTee, "T", {"a"}, {"c", "b"});
    s.Unit(words::kMixer, "M", {"Feed", "b"}, {"a"});
    s.Unit(words::kValve, "First", {"raw"}, {"Feed"});
    Flowsheet sheet = BuildFlowsheet(s.data);
    std::vector<std::string> order;
    for (const SolveGroup& group : FindSolveOrder(sheet)) {
        std::string text;
        for (int unit : group.units) text += sheet.units[unit].name + " ";
        for (int tear : group.tears) text += "tear " + sheet.streams[tear].name;
        order.push_back(text);
    }
    EXPECT_THAT(order, ::testing::ElementsAre("First ", "M T tear b", "Last "));
}

TEST(SolveOrder, long_chain_is_no_matter_of_the_stack) {
    Sample s({"Methane"});
    const int length = 20000;
    s.data.main.objects.reserve(2 * length + 2);
    s.data.main.objects.push_back({"0", words::kMaterialStream, {}, {}, {}, {}, {}});
    for (int i = 0; i < length; ++i) {
        std::string in = std::to_string(i), out = std::to_string(i + 1);
        s.data.main.objects.push_back({out, words::kMaterialStream, {}, {}, {}, {}, {}});
        s.data.main.objects.push_back({"Valve",
                                       words::kValve,
                                       {},
                                       {{Role::feed, 0, in}, {Role::product, 0, out}},
                                       {},
                                       {},
                                       {}});
    }
    Flowsheet sheet = BuildFlowsheet(s.data);
    std::vector<SolveGroup> groups = FindSolveOrder(sheet);
    ASSERT_EQ(groups.size(), static_cast<std::size_t>(length));
    for (int i = 0; i < length; ++i) ASSERT_EQ(groups[i].units[0], i);
}

struct FeedRow {
    Numbers given;
    std::vector<double> fractions;
    ObjectStatus status;
    const char* text;
};

TEST(FeedTexts, say_what_is_missing_or_contradictory) {
    const auto under = ObjectStatus::under_specified, error = ObjectStatus::error;
    const std::vector<double> half = {0.5, 0.5};
    const Numbers tp = {{cn::kTemperature, 30}, {cn::kPressure, 100}};
    auto with = [](Numbers base, std::pair<const char*, double> more) {
        base.push_back(more);
        return base;
    };
    const Numbers flow = {{cn::kMolarFlow, 1}};
    const FeedRow rows[] = {
        {{{cn::kPressure, 100}, {cn::kMolarFlow, 1}},
         half,
         under,
         "stream Feed 1: temperature is not specified"},
        {{{cn::kTemperature, 30}, {cn::kMolarFlow, 1}},
         half,
         under,
         "stream Feed 1: pressure is not specified"},
        {flow, half, under, "stream Feed 1: temperature and pressure are not specified"},
        {with(flow, {cn::kVapourFraction, 0}), half, under,
         "stream Feed 1: temperature or pressure is not specified"},
        {tp, half, under, "stream Feed 1: flow is not specified"},
        {with(tp, {cn::kMolarFlow, 1}), {}, under, "stream Feed 1: composition is not specified"},
        {with(tp, {cn::kMolarFlow, 1}),
         {0.5, kEmpty},
         under,
         "stream Feed 1: composition of n-Hexane is not specified"},
        {with(with(tp, {cn::kMolarFlow, 1}), {cn::kMassFlow, 1}), half, error,
         "stream Feed 1: molar flow and mass flow are both specified"},
        {with(with(tp, {cn::kMolarFlow, 1}), {cn::kVapourFraction, 1}), half, error,
         "stream Feed 1: temperature, pressure and vapour fraction are all specified"},
        {with(with(flow, {cn::kTemperature, 1}), {cn::kMolarEnthalpy, 1}), half, error,
         "stream Feed 1: temperature and molar enthalpy don't determine the state"},
        {with(tp, {cn::kMolarFlow, -2}), half, error, "stream Feed 1: molar flow -2 is below zero"},
        {with(tp, {cn::kMolarFlow, 1}),
         {1.5, -0.5},
         error,
         "stream Feed 1: fraction -0.5 of n-Hexane is below zero"},
        {with(tp, {cn::kMolarFlow, 1}), {0, 0}, error, "stream Feed 1: composition sums to zero"},
        {with(with(flow, {cn::kPressure, -5}), {cn::kTemperature, 20}), half, error,
         "stream Feed 1: pressure -5 kPa is not above zero"},
        {with(tp, {cn::kMolarFlow, 1}),
         {0.3, 0.3},
         ObjectStatus::warning,
         "stream Feed 1: composition sums to 0.6 and is normalised"},
    };
    for (const FeedRow& row : rows) {
        SCOPED_TRACE(row.text);
        Sample s({"Methane", "n-Hexane"});
        s.Stream("Feed 1", row.given, row.fractions);
        s.Unit(words::kValve, "V-100", {"Feed 1"}, {"Out"}, {{cn::kPressureDrop, 1}});
        SolveEngine::Outcome outcome = s.Solve();
        EXPECT_EQ(s.Find("Feed 1")->status, row.status);
        EXPECT_EQ(s.Find("Feed 1")->status_text, row.text);
        if (row.status == ObjectStatus::warning) {
            EXPECT_EQ(outcome.message, "");
            EXPECT_DOUBLE_EQ(s.Number("Out", cn::kCompMoleFrac, 0), 0.5);
        } else {
            EXPECT_EQ(outcome.message, row.text);
            EXPECT_EQ(s.Find("V-100")->status_text, "V-100: stream Feed 1 is not solved");
        }
    }
}

TEST(Feed, each_pair_of_conditions_leads_to_the_same_state) {
    Sample first({"Propane", "n-Hexane"});
    first.Stream("Feed", {{cn::kTemperature, 50}, {cn::kPressure, 500}, {cn::kMolarFlow, 10}},
                 {0.6, 0.4});
    first.Unit(words::kValve, "V", {"Feed"}, {"Out"}, {{cn::kPressureDrop, 0}});
    ASSERT_EQ(first.Solve().message, "");
    const double v = first.Number("Feed", cn::kVapourFraction);
    ASSERT_GT(v, 0.01);
    ASSERT_LT(v, 0.99);
    const Numbers rows[] = {
        {{cn::kPressure, 500}, {cn::kVapourFraction, v}},
        {{cn::kTemperature, 50}, {cn::kVapourFraction, v}},
        {{cn::kPressure, 500}, {cn::kMolarEnthalpy, first.Number("Feed", cn::kMolarEnthalpy)}},
    };
    for (Numbers given : rows) {
        SCOPED_TRACE(given[0].first + std::string(" and ") + given[1].first);
        // 10 kgmole/h of 0.6 * 44.094 + 0.4 * 86.178 kg/kgmole.
        given.push_back({cn::kMassFlow, 609.276});
        Sample s({"Propane", "n-Hexane"});
        s.Stream("Feed", given, {0.6, 0.4});
        s.Unit(words::kValve, "V", {"Feed"}, {"Out"}, {{cn::kPressureDrop, 0}});
        ASSERT_EQ(s.Solve().message, "");
        EXPECT_NEAR(s.Number("Feed", cn::kTemperature), 50, 1e-8);
        EXPECT_NEAR(s.Number("Feed", cn::kPressure), 500, 1e-7);
        EXPECT_NEAR(s.Number("Feed", cn::kVapourFraction), v, 1e-9);
        EXPECT_NEAR(s.Number("Feed", cn::kMolarFlow), 10, 1e-9);
    }
}

TEST(Product, contradiction_with_a_specified_value_is_an_error) {
    Sample s({"Argon"});
    s.Stream("Feed", {{cn::kTemperature, 30}, {cn::kPressure, 100}, {cn::kMolarFlow, 1}}, {1});
    s.Stream("Out", {{cn::kTemperature, 50}});
    s.Unit(words::kValve, "V", {"Feed"}, {"Out"}, {{cn::kPressureDrop, 10}});
    EXPECT_EQ(s.Solve().message,
              "stream Out: specified temperature 50 C differs from calculated 30 C");
    EXPECT_EQ(s.Find("Out")->status, ObjectStatus::error);
}

TEST(Connections, that_cannot_be_are_named) {
    const std::pair<void (*)(Sample&), const char*> rows[] = {
        {[](Sample& s) { s.Unit(words::kMixer, "M", {}, {"Out"}); }, "M: a feed is not connected"},
        {[](Sample& s) { s.Unit(words::kSeparator, "V", {"Feed"}, {"Gas"}); },
         "V: a product is not connected"},
        {[](Sample& s) {
             s.Unit(words::kValve, "V", {"Feed", "Feed 2"}, {"Out"});
         },
         "V: too many feeds are connected"},
        {[](Sample& s) { s.Unit(words::kValve, "V", {"Feed"}, {"Out"}).ports[0].stream = "No"; },
         "V: stream No does not exist"},
        {[](Sample& s) {
             s.Unit(words::kValve, "V", {"Feed"}, {"Out"}, {{cn::kPressureDrop, 1}});
             s.Unit(words::kValve, "W", {"Feed"}, {"Out 2"}, {{cn::kPressureDrop, 1}});
         },
         "W: stream Feed is already a feed of V"},
        {[](Sample& s) {
             s.Unit(words::kValve, "V", {"Feed"}, {"Out"}, {{cn::kPressureDrop, 1}});
             s.Attach("V", Role::energy_in, "Feed");
         },
         "V: stream Feed is not an energy stream"},
    };
    for (auto [build, text] : rows) {
        SCOPED_TRACE(text);
        Sample s({"Argon"});
        s.Stream("Feed", {{cn::kTemperature, 30}, {cn::kPressure, 100}, {cn::kMolarFlow, 1}}, {1});
        s.Stream("Feed 2", {{cn::kTemperature, 30}, {cn::kPressure, 100}, {cn::kMolarFlow, 1}},
                 {1});
        build(s);
        s.Solve();
        std::vector<std::string> texts;
        for (const ObjectData& object : s.data.main.objects) texts.push_back(object.status_text);
        EXPECT_THAT(texts, ::testing::Contains(text));
    }
}

// The inner part of TwoRecycles' low-pressure end stands in a sub-flowsheet inside the loop.
TEST(SubFlowsheet, is_solved_through_its_boundary_also_inside_a_recycle) {
    Sample flat = TwoRecycles();
    ASSERT_EQ(flat.Solve().message, "");
    Sample s = TwoRecycles();
    auto inner = std::make_shared<FlowsheetData>();
    auto& objects = s.data.main.objects;
    for (const char* name : {"VLV-100", "Low", "V-101"}) {
        auto place = std::find_if(objects.begin(), objects.end(),
                                  [&](const ObjectData& o) { return o.name == name; });
        inner->objects.push_back(*place);
        objects.erase(place);
    }
    for (const char* name : {"Oil", "Vent", "Product Oil"}) {
        ObjectData copy = *s.Find(name);
        copy.name = std::string("Inner ") + name;
        inner->objects.push_back(copy);
    }
    inner->objects[0].ports[0].stream = "Inner Oil";
    inner->objects[2].ports[1].stream = "Inner Vent";
    inner->objects[2].ports[2].stream = "Inner Product Oil";
    s.Unit(words::kTemplate, "TPL", {"Oil"}, {"Vent", "Product Oil"}).sub_flowsheet = inner;

    ASSERT_EQ(s.Solve().message, "");
    EXPECT_EQ(s.Find("TPL")->status, ObjectStatus::ok);
    for (const char* name : {"Product Oil", "Vent", "Flash Gas", "Sales Gas"}) {
        EXPECT_NEAR(s.Number(name, cn::kMolarFlow), flat.Number(name, cn::kMolarFlow), 1e-7)
            << name;
    }
    EXPECT_EQ(s.Number("TPL/Inner Vent", cn::kMolarFlow), s.Number("Vent", cn::kMolarFlow));
    EXPECT_NEAR(s.Number("TPL/Low", cn::kTemperature), flat.Number("Low", cn::kTemperature), 1e-7);

    s.Find("TPL/VLV-100")->variables.clear();
    EXPECT_EQ(s.Solve().message,
              "TPL/VLV-100: pressure drop or product pressure must be specified");
    EXPECT_EQ(s.Find("TPL")->status, ObjectStatus::not_solved);
}

}  // namespace
}  // namespace fixtop::casehost::process::testing
