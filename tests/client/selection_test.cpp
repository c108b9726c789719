// SPDX-License-Identifier: Apache-2.0
// Selections: chosen on a case, saved, and found again there and on others.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "fixtop/client.h"
#include "support/temporary_folder.h"

namespace fixtop::client {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr char kStreams[] = "appModel.FlowSheetObjects.Streams.";

// Can't be computed again, so that what was calculated stays, and gets old.
constexpr char kRecorded[] = R"({"format": "casehost case", "version": 1, "name": "recorded",
  "title": "", "source": "own", "recorded": true, "online": false, "unitSet": 0,
  "flowsheet": {"objects": [{"name": "Feed", "type": "MaterialStreamObject", "status": "ok",
    "variables": {
      "Temperature": {"spec": {"kind": "real", "quantity": "Temperature"}, "value": 25,
        "state": "specified"},
      "Pressure": {"spec": {"kind": "real", "quantity": "Pressure"}, "value": 100,
        "state": "calculated"}}}]}})";

std::string TextOf(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

void WriteText(const std::filesystem::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

class ClientSelection : public testing::Test {
 protected:
    std::string File(const char* name) const { return (folder_.Path() / name).string(); }

    // Of the built-in case, with names changed in all its texts.
    std::string CaseWith(const std::string& from, const std::string& to) const {
        const std::string file = File("changed.json");
        Case::Open(Case::kDemo).Save(file);
        std::string text = TextOf(file);
        for (std::size_t at = text.find(from); at != std::string::npos;
             at = text.find(from, at + to.size())) {
            text.replace(at, from.size(), to);
        }
        WriteText(file, text);
        return file;
    }
    // The temperatures of two streams, the second one in K.
    Selection TwoTemperatures(const Case& plant) const {
        Selection selection(plant.Top());
        selection.Add(plant.At(std::string(kStreams) + "Raw Gas.Temperature"));
        selection.Add(plant.At(std::string(kStreams) + "Sales Gas.Temperature"), "K");
        return selection;
    }

    TemporaryFolder folder_;
};

TEST_F(ClientSelection, keeps_order_paths_and_units) {
    const Case plant = Case::Open(Case::kDemo);
    const Selection selection = TwoTemperatures(plant);
    ASSERT_EQ(2u, selection.Size());
    EXPECT_EQ(plant.At(std::string(kStreams) + "Raw Gas.Temperature"), *selection.NodeOf(0));
    EXPECT_THAT(selection.Path(1), HasSubstr("Sales Gas"));
    EXPECT_EQ("", selection.Unit(0));
    EXPECT_EQ("K", selection.Unit(1));
}

TEST_F(ClientSelection, adds_a_node_once_and_gives_it_the_later_unit) {
    const Case plant = Case::Open(Case::kDemo);
    const Node node = plant.At(std::string(kStreams) + "Raw Gas.Temperature");
    Selection selection(plant.Top());
    EXPECT_TRUE(selection.Add(node));
    EXPECT_FALSE(selection.Add(node, "K"));
    EXPECT_EQ(1u, selection.Size());
    EXPECT_EQ("K", selection.Unit(0));
    EXPECT_THROW(selection.Add(node, "kPa"), Refused);
}

TEST_F(ClientSelection, reads_values_units_statuses_and_ages_in_one_pass) {
    const Case plant = Case::Open(Case::kDemo);
    Selection selection = TwoTemperatures(plant);
    std::vector<FIValue> values(2), units(2), statuses(2);
    std::vector<Freshness> ages(2);
    selection.Read({values, units, statuses, ages});
    EXPECT_DOUBLE_EQ(30, values[0].AsDouble());
    const Node sales = plant.At(std::string(kStreams) + "Sales Gas.Temperature");
    EXPECT_DOUBLE_EQ(sales.Number("K"), values[1].AsDouble());
    EXPECT_EQ("C", units[0].ToText());
    EXPECT_EQ("K", units[1].ToText());
    EXPECT_EQ("Specified", statuses[0].ToText());
    EXPECT_EQ("Calculated", statuses[1].ToText());
    EXPECT_THAT(ages, ElementsAre(Freshness::kSpecified, Freshness::kCalculated));
}

TEST_F(ClientSelection, tells_values_from_before_a_change_as_old) {
    WriteText(File("recorded.json"), kRecorded);
    const Case plant = Case::Open(File("recorded.json"));
    Selection selection(plant.Top());
    selection.Add(plant.At(std::string(kStreams) + "Feed.Temperature"));
    selection.Add(plant.At(std::string(kStreams) + "Feed.Pressure"));
    plant.At(std::string(kStreams) + "Feed.Temperature").Store(35, "C");
    std::vector<Freshness> ages(2);
    selection.Read({{}, {}, {}, ages});
    EXPECT_THAT(ages, ElementsAre(Freshness::kSpecified, Freshness::kOld));
}

TEST_F(ClientSelection, is_saved_and_found_again_byte_for_byte) {
    const Case plant = Case::Open(Case::kDemo);
    TwoTemperatures(plant).Save(File("two.xml"));
    const Selection again = Selection::Load(File("two.xml"), plant);
    ASSERT_EQ(2u, again.Size());
    EXPECT_EQ("K", again.Unit(1));
    for (const ItemState& state : again.States()) EXPECT_EQ(ItemState::Kind::kSame, state.kind);
    again.Save(File("again.xml"));
    EXPECT_EQ(TextOf(File("two.xml")), TextOf(File("again.xml")));
}

TEST_F(ClientSelection, finds_nodes_of_the_neutral_view_in_that_view) {
    const Case plant = Case::Open(Case::kDemo);
    Selection selection(plant.Neutral());
    selection.Add(plant.Neutral().At("Flowsheet.Stream(Raw Gas).Temperature"), "K");
    selection.Save(File("neutral.xml"));
    const Selection again = Selection::Load(File("neutral.xml"), plant);
    ASSERT_TRUE(again.NodeOf(0));
    EXPECT_EQ("Flowsheet.Stream(Raw Gas).Temperature", again.NodeOf(0)->Path());
    EXPECT_NEAR(303.15, again.NodeOf(0)->Number("K"), 1e-9);
}

TEST_F(ClientSelection, without_a_case_lists_removes_and_saves) {
    TwoTemperatures(Case::Open(Case::kDemo)).Save(File("two.xml"));
    Selection selection = Selection::Load(File("two.xml"));
    ASSERT_EQ(2u, selection.Size());
    const std::string path = selection.Path(0);
    EXPECT_FALSE(selection.NodeOf(0));
    EXPECT_FALSE(selection.Remove("appModel.nothing"));
    EXPECT_TRUE(selection.Remove(path));
    selection.Save(File("two.xml"));
    EXPECT_EQ(1u, Selection::Load(File("two.xml")).Size());
}

TEST_F(ClientSelection, an_item_that_was_renamed_is_moved_and_never_another) {
    TwoTemperatures(Case::Open(Case::kDemo)).Save(File("two.xml"));
    const Case other = Case::Open(CaseWith("Raw Gas", "Raw Gaz"));
    const Selection selection = Selection::Load(File("two.xml"), other);
    const std::vector<ItemState> states = selection.States();
    EXPECT_EQ(ItemState::Kind::kMoved, states[0].kind);
    EXPECT_THAT(states[0].candidates, Contains(HasSubstr("Raw Gaz")));
    for (const std::string& path : states[0].candidates)
        EXPECT_TRUE(other.Top().Find(path)) << path;
    EXPECT_FALSE(selection.NodeOf(0));
    EXPECT_EQ(ItemState::Kind::kSame, states[1].kind);
    EXPECT_THAT(states[1].candidates, ElementsAre());
}

TEST_F(ClientSelection, an_item_that_nothing_is_like_is_gone) {
    TwoTemperatures(Case::Open(Case::kDemo)).Save(File("two.xml"));
    const Case other = Case::Open(CaseWith("Raw Gas", "Quite otherwise"));
    EXPECT_EQ(ItemState::Kind::kGone, Selection::Load(File("two.xml"), other).States()[0].kind);
}

// A name that begins with a number is not the place of that number.
TEST_F(ClientSelection, a_name_with_a_leading_number_is_no_place_on_another_case) {
    const std::string named = CaseWith("Raw Gas", "1 suction");
    {
        const Case plant = Case::Open(named);
        Selection selection(plant.Top());
        selection.Add(plant.At(std::string(kStreams) + "\"1 suction\".Temperature"));
        selection.Save(File("one.xml"));
        EXPECT_EQ(ItemState::Kind::kSame, Selection::Load(File("one.xml"), plant).States()[0].kind);
    }
    const Case other = Case::Open(Case::kDemo);
    Selection selection = Selection::Load(File("one.xml"), other);
    EXPECT_NE(ItemState::Kind::kSame, selection.States()[0].kind);
    EXPECT_FALSE(selection.NodeOf(0));
    std::vector<FIValue> values(1);
    selection.Read({values, {}, {}, {}});
    EXPECT_EQ("No element under this node", values[0].ToText());
    EXPECT_THAT(selection.Store(std::vector{FIValue::OfReal(1)}),
                ElementsAre("No element exists under this node"));
    const auto streams = other.Matches(std::string(kStreams) + "*.Temperature");
    for (const Node& node : streams) EXPECT_NE("1", node.Text());
}

// Streams have names, so that one is never told by its place.
TEST_F(ClientSelection, a_name_that_is_a_number_is_no_place_on_another_case) {
    {
        const Case plant = Case::Open(CaseWith("Raw Gas", "2"));
        Selection selection(plant.Top());
        selection.Add(plant.At(std::string(kStreams) + "\"2\".Temperature"));
        selection.Save(File("two.xml"));
        EXPECT_EQ(ItemState::Kind::kSame, Selection::Load(File("two.xml"), plant).States()[0].kind);
    }
    const Case other = Case::Open(Case::kDemo);
    Selection selection = Selection::Load(File("two.xml"), other);
    EXPECT_FALSE(IsThere(selection.States()[0]));
    EXPECT_EQ(std::string(kStreams) + "2.Temperature", selection.Path(0));
    EXPECT_FALSE(selection.NodeOf(0));
    EXPECT_THAT(selection.Store(std::vector{FIValue::OfReal(1)}),
                ElementsAre("No element exists under this node"));
}

TEST_F(ClientSelection, stores_into_its_items_and_tells_what_was_refused) {
    const Case plant = Case::Open(Case::kDemo);
    Selection selection = TwoTemperatures(plant);
    const std::vector<FIValue> values = {FIValue::OfReal(35), FIValue::OfReal(300)};
    const std::vector<std::string> refused = selection.Store(values);
    EXPECT_THAT(refused, ElementsAre("", Not("")));
    EXPECT_NEAR(35, plant.At(std::string(kStreams) + "Raw Gas.Temperature").Number("C"), 1e-9);
    EXPECT_THAT(selection.Store(std::vector{FIValue::OfReal(305)}, "K"), ElementsAre(""));
    EXPECT_NEAR(31.85, plant.At(std::string(kStreams) + "Raw Gas.Temperature").Number("C"), 1e-9);
}

TEST_F(ClientSelection, a_unit_that_can_not_be_kept_is_refused_with_the_node) {
    const Case plant = Case::Open(Case::kDemo);
    Selection selection(plant.Neutral());
    const Node node =
        plant.Neutral().At("Flowsheet.Stream(Raw Gas).PhaseChange.DewPointTemperature");
    EXPECT_THROW(selection.Add(node, "C"), Refused);
    EXPECT_EQ(0u, selection.Size());
    EXPECT_TRUE(selection.Add(node));
}

TEST_F(ClientSelection, stores_nothing_in_a_unit_that_its_node_does_not_have) {
    const Case plant = Case::Open(Case::kDemo);
    Selection chosen(plant.Top());
    chosen.Add(plant.At(std::string(kStreams) + "Raw Gas.Pressure"));
    chosen.Add(plant.At(std::string(kStreams) + "Raw Gas.Temperature"), "K");
    chosen.Save(File("two.xml"));
    std::string text = TextOf(File("two.xml"));
    text.replace(text.find("uom=\"K\""), 7, "uom=\"degF\"");
    WriteText(File("two.xml"), text);
    Selection selection = Selection::Load(File("two.xml"), plant);
    EXPECT_THAT(selection.Units(), ElementsAre("", "degF"));
    EXPECT_FALSE(selection.States()[0].lacks_unit);
    EXPECT_TRUE(selection.States()[1].lacks_unit);
    const double before = selection.NodeOf(1)->Number("C");
    const std::vector<FIValue> values = {FIValue::OfReal(6100), FIValue::OfReal(86)};
    const std::vector<std::string> refused = selection.Store(values);
    EXPECT_EQ("", refused[0]);
    EXPECT_THAT(refused[1], HasSubstr("degF"));
    EXPECT_EQ(before, selection.NodeOf(1)->Number("C"));
    const std::vector<FIValue> one = {FIValue(), FIValue::OfReal(86)};
    EXPECT_THAT(selection.Store(one, "C"), ElementsAre("", ""));
    EXPECT_NEAR(86, selection.NodeOf(1)->Number("C"), 1e-9);
    EXPECT_THROW(selection.Publish(), CaseError);
}

TEST_F(ClientSelection, tells_what_in_a_file_it_passed_over) {
    const Case plant = Case::Open(Case::kDemo);
    const Selection whole = TwoTemperatures(plant);
    whole.Save(File("two.xml"));
    EXPECT_THAT(Selection::Load(File("two.xml"), plant).Remarks(), IsEmpty());
    WriteText(File("odd.xml"),
              "<CollectionBackup><Pathnode id=\"Top\"><PathNode id=\"appModel\" loc=\"0\"/>"
              "</Pathnode></CollectionBackup>");
    EXPECT_THAT(Selection::Load(File("odd.xml")).Remarks(), ElementsAre(HasSubstr("PathNode")));
    WriteText(File("paths.xml"), "<Selection><Items><Item><Path>" + whole.Path(0) +
                                     "</Path></Item><Item><Path>appModel.Nope</Path></Item>"
                                     "</Items></Selection>");
    const Selection paths = Selection::Load(File("paths.xml"), plant);
    EXPECT_THAT(paths.Paths(), ElementsAre(whole.Path(0)));
    EXPECT_THAT(paths.Remarks(), ElementsAre(HasSubstr("appModel.Nope")));
}

TEST_F(ClientSelection, writes_paths_that_lead_back_also_without_a_case) {
    const Case plant = Case::Open(CaseWith("Raw Gas", "Raw (wet)"));
    Selection selection(plant.Top());
    const Node node = plant.At("appModel.FlowSheetObjects.Streams.\"Raw (wet)\".Temperature");
    selection.Add(node);
    selection.Save(File("wet.xml"));
    Selection alone = Selection::Load(File("wet.xml"));
    EXPECT_EQ(selection.Paths(), alone.Paths());
    EXPECT_EQ(node, plant.At(alone.Path(0)));
    EXPECT_TRUE(alone.Remove(node.Path()));
}

TEST_F(ClientSelection, items_found_by_place_are_removed_by_each_way_of_writing_it) {
    const Case plant = Case::Open(Case::kDemo);
    Selection selection(plant.Top());
    std::vector<Node> reactions =
        plant.At("appModel.Basis.ReactionPackage.ReactionList").Children();
    ASSERT_LT(2u, reactions.size());
    for (const Node& each : reactions) selection.Add(each);
    selection.Save(File("reactions.xml"));
    Selection alone = Selection::Load(File("reactions.xml"));
    EXPECT_TRUE(alone.Remove(alone.Path(1)));
    EXPECT_TRUE(alone.Remove(selection.Path(2)));
    EXPECT_EQ(reactions.size() - 2, alone.Size());
}

TEST_F(ClientSelection, stores_values_as_they_are_typed) {
    const Case plant = Case::Open(Case::kDemo);
    Selection selection = TwoTemperatures(plant);
    const std::vector<std::string> typed = {" 35", "warm"};
    EXPECT_THAT(selection.Store(typed), ElementsAre("", "not a number: warm"));
    EXPECT_NEAR(35, plant.At(std::string(kStreams) + "Raw Gas.Temperature").Number("C"), 1e-9);
    const std::vector<std::string> nothing = {"", ""};
    EXPECT_THAT(selection.Store(nothing), ElementsAre("", ""));
    EXPECT_NEAR(35, plant.At(std::string(kStreams) + "Raw Gas.Temperature").Number("C"), 1e-9);
    const std::vector<std::string> many(5, "40");
    EXPECT_EQ(2u, selection.Store(many).size());
}

TEST_F(ClientSelection, tells_all_paths_units_and_nodes) {
    const Case plant = Case::Open(Case::kDemo);
    const Selection selection = TwoTemperatures(plant);
    const std::vector<std::string> paths = selection.Paths();
    EXPECT_THAT(paths, ElementsAre(selection.Path(0), selection.Path(1)));
    EXPECT_THAT(selection.Units(), ElementsAre("", "K"));
    std::vector<std::string> visited;
    selection.ForEachNode([&](const std::string& path, const std::optional<Node>& node) {
        ASSERT_TRUE(node);
        EXPECT_EQ(plant.At(path), *node);
        visited.push_back(path);
    });
    EXPECT_EQ(paths, visited);
}

TEST_F(ClientSelection, is_published_beside_its_case) {
    Case::Open(Case::kDemo).Save(File("plant.json"));
    const Case plant = Case::Open(File("plant.json"));
    EXPECT_EQ(File("plant.atpub"), plant.PublishedFile());
    const Selection selection = TwoTemperatures(plant);
    EXPECT_EQ(File("plant.atpub"), selection.Publish());
    selection.Save(File("two.xml"));
    EXPECT_EQ(TextOf(File("two.xml")), TextOf(File("plant.atpub")));
    EXPECT_EQ(2u, plant.At("\"QSI Published Variables\"").Children().size());
}

TEST_F(ClientSelection, nodes_that_a_case_publishes_have_paths_and_can_be_chosen) {
    Case::Open(Case::kDemo).Save(File("plant.json"));
    const Case plant = Case::Open(File("plant.json"));
    TwoTemperatures(plant).Publish();
    Selection chosen(plant.Top());
    for (const Node& each : plant.At("\"QSI Published Variables\"").Children()) {
        EXPECT_EQ(each, plant.At(each.Path())) << each.Path();
        EXPECT_EQ(each.Path(), Reference(each).Path());
        EXPECT_TRUE(chosen.Add(each)) << each.Path();
    }
    ASSERT_EQ(2u, chosen.Size());
    EXPECT_EQ("30", chosen.NodeOf(0)->Text());
    chosen.Save(File("chosen.xml"));
    EXPECT_EQ(chosen.Paths(), Selection::Load(File("chosen.xml"), plant).Paths());
}

TEST_F(ClientSelection, that_its_case_does_not_have_whole_is_not_published) {
    TwoTemperatures(Case::Open(Case::kDemo)).Save(File("two.xml"));
    Selection neutral(Case::Open(Case::kDemo).Neutral());
    EXPECT_THROW(neutral.Publish(), CaseError);
    const Case other = Case::Open(CaseWith("Raw Gas", "Raw Gaz"));
    try {
        Selection::Load(File("two.xml"), other).Publish();
        ADD_FAILURE() << "was published";
    } catch (const CaseError& error) {
        EXPECT_THAT(error.what(), HasSubstr("Raw Gas"));
    }
    EXPECT_FALSE(std::filesystem::exists(File("changed.atpub")));
    EXPECT_THROW(Selection::Load(File("two.xml")).Publish(), CaseError);
}

TEST_F(ClientSelection, a_file_that_is_none_is_told_and_one_that_fails_to_be_written_stays) {
    WriteText(File("broken.xml"), "<CollectionBackup><Pathnode id=\"Top\"");
    EXPECT_THROW(Selection::Load(File("broken.xml")), CaseError);
    EXPECT_THROW(Selection::Load(File("missing.xml")), CaseError);
    const Case plant = Case::Open(Case::kDemo);
    try {
        Selection::Load(File("broken.xml"), plant);
        ADD_FAILURE() << "a broken file was read";
    } catch (const CaseError& error) {
        EXPECT_THAT(error.what(), HasSubstr("broken.xml"));
    }
    EXPECT_THROW(TwoTemperatures(plant).Save((folder_.Path() / "no" / "folder.xml").string()),
                 CaseError);
}

}  // namespace

}  // namespace fixtop::client
