// SPDX-License-Identifier: Apache-2.0
// Nodes, patterns and values, on the built-in case.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fixtop/client.h"

namespace fixtop::client {

namespace {

using ::testing::ElementsAre;

constexpr char kStreams[] = "appModel.FlowSheetObjects.Streams";

class ClientNode : public ::testing::Test {
 protected:
    Node Streams() const { return plant.At(kStreams); }

    Case plant = Case::Open(Case::kDemo);
};

std::string ReadAs(const Node& node, const std::string& unit) {
    return node.Read(unit).value.ToText() + ' ' + node.Read(unit).unit;
}

TEST_F(ClientNode, value_comes_in_the_unit_that_is_asked_for) {
    const Node temperature = Streams().At("Raw Gas.Temperature");
    EXPECT_EQ("30 C", ReadAs(temperature, ""));
    // Fahrenheit from Celsius: times 1.8 plus 32.
    EXPECT_EQ("86 F", ReadAs(temperature, "F"));
    EXPECT_DOUBLE_EQ(86, temperature.Number("F"));
    EXPECT_EQ("30 C", ReadAs(temperature, "")) << "the node itself is shown as before";
    EXPECT_EQ("Specified", temperature.Read().status);
}

TEST_F(ClientNode, unit_of_another_quantity_is_refused_with_the_path) {
    const Node temperature = Streams().At("Raw Gas.Temperature");
    try {
        temperature.Number("kPa");
        FAIL() << "taken";
    } catch (const Refused& refused) {
        EXPECT_EQ("no such unit: kPa; expected C, K, F, R", refused.Text());
        EXPECT_EQ(std::string(kStreams) + ".Raw Gas.Temperature", refused.Path());
    }
}

TEST_F(ClientNode, number_of_a_text_is_refused) {
    EXPECT_THROW(Streams().Number(), Refused);
}

TEST_F(ClientNode, path_leads_back_to_the_node) {
    for (const Node& node : plant.Top().Matches("appModel.FlowSheetObjects.*.*")) {
        EXPECT_EQ(node, plant.At(node.Path())) << node.Path();
    }
}

TEST_F(ClientNode, children_come_in_order_with_their_steps) {
    std::vector<std::string> steps;
    int index = 0;
    Streams().ForEachChild([&](const Child& child) {
        EXPECT_EQ(index++, child.index);
        EXPECT_EQ(child.node, Streams().At(child.step));
        steps.push_back(child.step);
        return steps.size() < 2;
    });
    EXPECT_EQ(2u, steps.size()) << "false ends the visits";
    EXPECT_EQ("Raw Gas", steps.front());
    EXPECT_GT(Streams().Children().size(), 2u);
}

TEST_F(ClientNode, what_a_visitor_throws_arrives) {
    struct Enough {};
    EXPECT_THROW(Streams().ForEachChild([](const Child&) -> bool { throw Enough(); }), Enough);
    // The module is outside of any work then.
    EXPECT_EQ("Streams", Streams().Name());
}

TEST_F(ClientNode, missing_path_tells_how_far_it_leads_and_what_is_near) {
    try {
        plant.At(std::string(kStreams) + ".Raw Gass.Temperature");
        FAIL() << "found";
    } catch (const NotFound& missing) {
        EXPECT_EQ(kStreams, missing.Found());
        EXPECT_THAT(missing.Near(), ElementsAre("Raw Gas"));
        EXPECT_STREQ(
            "no such node: appModel.FlowSheetObjects.Streams.Raw Gass.Temperature\n"
            "  found: appModel.FlowSheetObjects.Streams\n"
            "  near: Raw Gas",
            missing.what());
    }
}

TEST_F(ClientNode, path_that_does_not_parse_tells_why) {
    try {
        plant.At("Streams.*[Temperature");
        FAIL() << "parsed";
    } catch (const PathError& error) {
        EXPECT_STREQ("Parse error, ] expected in: Streams.*[Temperature", error.what());
        EXPECT_EQ("Streams.*[Temperature", error.Path());
    }
}

TEST_F(ClientNode, find_answers_the_attribute_in_which_a_path_ends) {
    const auto found = Streams().Find("Raw Gas.Temperature(uom)");
    ASSERT_TRUE(found);
    EXPECT_EQ("uom", found->attribute);
    EXPECT_FALSE(Streams().Find("nothing"));
}

TEST_F(ClientNode, pattern_is_prepared_once_and_walked_often) {
    const Pattern warm("*[Temperature=30]");
    const auto first = warm.First(Streams());
    ASSERT_TRUE(first);
    EXPECT_EQ("Raw Gas", first->node.Name());
    const std::vector<Place> all = warm.All(Streams());
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(std::string(kStreams) + ".Raw Gas", all.front().path);
    std::vector<std::string> paths;
    Pattern("*.Temperature(uom)").ForEachBelow(Streams(), [&](const Place& place) {
        paths.push_back(place.path + '/' + place.attribute);
        return paths.size() < 2;
    });
    EXPECT_EQ((std::vector<std::string>{"Raw Gas.Temperature/uom", "Tail Gas.Temperature/uom"}),
              paths);
    EXPECT_TRUE(warm.IsSame(Pattern("*[\"Temperature\"=\"30\"]")));
    EXPECT_FALSE(warm.IsSame(Pattern("*[Temperature=31]")));
}

TEST_F(ClientNode, attributes_are_those_of_the_node) {
    const Node gas = Streams().At("Raw Gas");
    EXPECT_EQ("Raw Gas", gas.Attribute("id").ToText());
    EXPECT_TRUE(gas.Attribute("no such attribute").IsNull());
    EXPECT_EQ("id", gas.Attributes().front().first);
}

TEST_F(ClientNode, copies_are_places_of_their_own) {
    const Node gas = Streams().At("Raw Gas");
    const Node copy = gas;
    copy.Iterator().Up();
    EXPECT_EQ("Raw Gas", gas.Name());
    EXPECT_EQ("Streams", copy.Name());
}

TEST_F(ClientNode, neutral_node_leads_to_its_raw_one_and_back) {
    const Node neutral = plant.Neutral().At("Flowsheet.Stream(Raw Gas)");
    const auto raw = neutral.Raw();
    ASSERT_TRUE(raw);
    EXPECT_EQ(std::string(kStreams) + ".Raw Gas", raw->Path());
    const auto back = raw->Neutral();
    ASSERT_TRUE(back);
    EXPECT_EQ("Flowsheet.Stream(Raw Gas)", back->Path());
    EXPECT_FALSE(Streams().At("Raw Gas.Temperature").Neutral());
    EXPECT_FALSE(raw->Raw());
}

TEST_F(ClientNode, objects_of_all_lists_are_found_in_the_neutral_view) {
    int found = 0;
    for (const char* list : {"Streams", "UnitOps"}) {
        for (const Node& object : plant.At("appModel.FlowSheetObjects").At(list).Children()) {
            const auto neutral = object.Neutral();
            if (!neutral) continue;
            ++found;
            EXPECT_EQ(object.Path(), neutral->Raw().value().Path());
        }
    }
    // Material and energy streams, flowsheets within the flowsheet, other unit operations.
    EXPECT_EQ(35 + 13 + 6 + 16, found);
}

TEST_F(ClientNode, typed_number_is_the_whole_text) {
    const Node temperature = Streams().At("Raw Gas.Temperature");
    for (const auto& [typed, stored] :
         {std::pair("35", 35.0), {" 36", 36.0}, {"+37", 37.0}, {"-3e1", -30.0}, {".5", 0.5}}) {
        temperature.Store(std::string(typed), "C");
        EXPECT_DOUBLE_EQ(stored, temperature.Number("C")) << typed;
    }
    for (const char* typed : {"3,5", "12x", "+-5", "++5", "nan", "inf", "1e999", " ", "0x10"}) {
        EXPECT_THROW(temperature.Store(std::string(typed), "C"), Refused) << typed;
    }
    EXPECT_DOUBLE_EQ(0.5, temperature.Number("C"));
}

TEST(ClientNames, are_quoted_where_a_path_needs_it) {
    EXPECT_EQ("Feed 1", WrittenName("Feed 1"));
    EXPECT_EQ("\"V.1\"", WrittenName("V.1"));
    EXPECT_EQ("\"#3\"", WrittenKey("#3"));
    EXPECT_EQ("a.b", JoinPath("a", "b"));
    EXPECT_EQ("b", JoinPath("", "b"));
}

}  // namespace

}  // namespace fixtop::client
