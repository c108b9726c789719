// SPDX-License-Identifier: Apache-2.0
// Selections on the open case of a simulator whose streams come and go meanwhile.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fixtop/client.h"
#include "fixtop/fixtop.h"
#include "own_host/own_host.h"
#include "support/temporary_folder.h"

namespace fixtop::client {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Kind = ItemState::Kind;

// Can be called otherwise, and notes what it is given.
class NotedStream final : public own::Stream {
 public:
    using own::Stream::Stream;
    const host::Text& GetName() override {
        return other_.Str().empty() ? Stream::GetName() : other_;
    }
    void SetRealValue(const host::VarDescription& variable, double value) override {
        given_.push_back(value);
        Stream::SetRealValue(variable, value);
    }
    void Rename(const char* name) { other_ = host::Text(name); }
    const std::vector<double>& Given() const { return given_; }

 private:
    host::Text other_;
    std::vector<double> given_;
};

class SelectionOfRunningHost : public testing::Test {
 protected:
    void SetUp() override {
        feed_ = &simulator_.Add("Feed", 20, 100);
        simulator_.Add("Product", 50, 500);
        FixtopInstallHost(&simulator_);
        plant_.emplace(Case::OfSession());
    }
    void TearDown() override {
        plant_.reset();
        FixtopInstallHost(nullptr);
    }
    Node Temperature(const std::string& stream) const {
        return plant_->At("appModel.FlowSheetObjects.Streams." + stream + ".Temperature");
    }
    static std::vector<std::string> Values(const Selection& chosen) {
        std::vector<FIValue> values(chosen.Size());
        chosen.Read({values, {}, {}, {}});
        std::vector<std::string> texts;
        for (const FIValue& each : values) texts.push_back(each.ToText());
        return texts;
    }
    Selection Both() const {
        Selection chosen(plant_->Top());
        chosen.Add(Temperature("Feed"));
        chosen.Add(Temperature("Product"));
        return chosen;
    }
    void ExpectFeedGone(const Selection& chosen) const {
        EXPECT_FALSE(chosen.NodeOf(0));
        ASSERT_TRUE(chosen.NodeOf(1));
        EXPECT_EQ(Temperature("Product"), *chosen.NodeOf(1));
        const std::vector<ItemState> states = chosen.States();
        ASSERT_EQ(2u, states.size());
        EXPECT_NE(Kind::kSame, states[0].kind);
        EXPECT_NE(Kind::kByPlace, states[0].kind);
        EXPECT_EQ(Kind::kSame, states[1].kind);
        int visited = 0;
        chosen.ForEachNode([&](const std::string&, const std::optional<Node>& node) {
            EXPECT_EQ(visited++ == 1, node.has_value());
        });
        EXPECT_EQ(2, visited);
    }

    NotedStream& AddNoted(const char* name, double temperature_C) {
        own::Stream& added = simulator_.Add(std::make_unique<NotedStream>(
            name, feed_->GetOwner(&host::kViewableType), temperature_C, 100));
        return static_cast<NotedStream&>(added);
    }
    // Structure has changed.
    void Rename(NotedStream& stream, const char* name) {
        stream.Rename(name);
        simulator_.Delete(simulator_.Add("for a while", 0, 0));
        simulator_.RunLoop();
    }

    std::string File(const char* name) const { return (folder_.Path() / name).string(); }

    const TemporaryFolder folder_;
    own::Services simulator_;
    own::Stream* feed_ = nullptr;
    std::optional<Case> plant_;
};

TEST_F(SelectionOfRunningHost, has_no_node_for_an_item_that_was_deleted) {
    const Selection chosen = Both();
    ASSERT_TRUE(chosen.NodeOf(0));
    simulator_.Delete(*feed_);
    ExpectFeedGone(chosen);
    simulator_.RunLoop();
    ExpectFeedGone(chosen);
}

TEST_F(SelectionOfRunningHost, neither_reads_nor_stores_what_was_deleted) {
    Selection chosen = Both();
    simulator_.Delete(*feed_);
    simulator_.RunLoop();
    EXPECT_THAT(Values(chosen), ElementsAre("Node invalid", "50"));
    const std::vector<FIValue> wanted = {FIValue::OfReal(21), FIValue::OfReal(51)};
    const std::vector<std::string> errors = chosen.Store(wanted);
    ASSERT_EQ(2u, errors.size());
    EXPECT_NE("", errors[0]);
    EXPECT_EQ("", errors[1]);
    EXPECT_EQ(51, Temperature("Product").Number("C"));
}

TEST_F(SelectionOfRunningHost, does_not_take_another_of_the_same_name_for_the_one_it_had) {
    Selection chosen = Both();
    simulator_.Delete(*feed_);
    simulator_.Add("Feed", 70, 500);
    simulator_.RunLoop();
    EXPECT_FALSE(chosen.NodeOf(0));
    EXPECT_THAT(Values(chosen), ElementsAre("Node deleted", "50"));
    // Chosen anew it takes the place of the other, whose path it has.
    EXPECT_FALSE(chosen.Add(Temperature("Feed")));
    EXPECT_EQ(2u, chosen.Size());
    EXPECT_THAT(Values(chosen), ElementsAre("70", "50"));
}

TEST_F(SelectionOfRunningHost, keeps_both_of_two_that_come_to_have_one_name) {
    for (const bool first_gets_the_name_of_the_second : {true, false}) {
        NotedStream& first = AddNoted("First", 1);
        NotedStream& second = AddNoted("Second", 2);
        Selection chosen(plant_->Top());
        chosen.Add(Temperature("First"));
        chosen.Add(Temperature("Second"), "K");
        first_gets_the_name_of_the_second ? Rename(first, "Second") : Rename(second, "First");
        const std::vector<std::string> paths = chosen.Paths();
        ASSERT_EQ(2u, paths.size());
        EXPECT_EQ(1, plant_->At(paths[0]).Number("C")) << paths[0];
        EXPECT_EQ(2, plant_->At(paths[1]).Number("C")) << paths[1];
        EXPECT_THAT(Values(chosen), ElementsAre("1", "275.15"));
        simulator_.Delete(first);
        simulator_.Delete(second);
        simulator_.RunLoop();
    }
}

TEST_F(SelectionOfRunningHost, leads_to_its_node_when_one_before_it_gets_its_name) {
    NotedStream& first = AddNoted("First", 1);
    AddNoted("Second", 2);
    Selection chosen(plant_->Top());
    chosen.Add(Temperature("Second"));
    Rename(first, "Second");
    EXPECT_EQ(2, plant_->At(chosen.Path(0)).Number("C")) << chosen.Path(0);
    chosen.Save(File("second.xml"));
    const Selection loaded = Selection::Load(File("second.xml"), *plant_);
    EXPECT_EQ(2, loaded.NodeOf(0)->Number("C"));
    EXPECT_EQ(Kind::kByPlace, loaded.States()[0].kind);
}

TEST_F(SelectionOfRunningHost, says_that_a_name_of_several_decides_no_more_than_a_place) {
    for (const char* name : {"Twin", "Twin", "Twin (wet)", "Twin (wet)", "Single (wet)"}) {
        AddNoted(name, 1);
    }
    Selection chosen(plant_->Top());
    for (const char* name : {"Twin", "\"Twin (wet)\"", "\"Single (wet)\"", "Product"}) {
        chosen.Add(Temperature(name));
    }
    std::vector<Kind> kinds;
    for (const ItemState& state : chosen.States()) kinds.push_back(state.kind);
    EXPECT_THAT(kinds, ElementsAre(Kind::kByPlace, Kind::kByPlace, Kind::kSame, Kind::kSame));
}

TEST_F(SelectionOfRunningHost, names_that_can_not_be_kept_are_refused_when_it_is_saved) {
    NotedStream& stream = AddNoted("Plain", 1);
    const Selection chosen = [&] {
        Selection both = Both();
        both.Add(Temperature("Plain"));
        return both;
    }();
    chosen.Save(File("names.xml"));
    for (const char* name : {"\x01", "t\tb", "A&amp;B"}) {
        Rename(stream, name);
        try {
            chosen.Save(File("names.xml"));
            ADD_FAILURE() << name << " was saved";
        } catch (const CaseError& error) {
            EXPECT_THAT(error.what(), HasSubstr("Temperature"));
            EXPECT_THAT(error.what(), Not(HasSubstr("Product")));
        }
        EXPECT_EQ(3u, Selection::Load(File("names.xml"), *plant_).Size()) << name;
    }
    Rename(stream, "A & B (\"wet\")");
    chosen.Save(File("names.xml"));
    EXPECT_EQ(1, Selection::Load(File("names.xml"), *plant_).NodeOf(2)->Number("C"));
}

TEST_F(SelectionOfRunningHost, a_path_that_leads_to_another_one_by_now_is_a_candidate) {
    const Selection chosen = Both();
    const std::string path = chosen.Path(0);
    simulator_.Delete(*feed_);
    simulator_.RunLoop();
    simulator_.Add("Feed", 70, 500);
    const std::vector<ItemState> states = chosen.States();
    EXPECT_EQ(Kind::kMoved, states[0].kind);
    EXPECT_THAT(states[0].candidates, ElementsAre(path));
}

TEST_F(SelectionOfRunningHost, path_of_one_that_is_called_as_all_are_leads_to_it) {
    AddNoted("*", 3);
    Selection chosen(plant_->Top());
    for (const Node& each : plant_->At("appModel.FlowSheetObjects.Streams").Children()) {
        if (each.Name() == "*") chosen.Add(each.At("Temperature"));
    }
    ASSERT_EQ(1u, chosen.Size());
    EXPECT_EQ(3, plant_->At(chosen.Path(0)).Number("C")) << chosen.Path(0);
    EXPECT_TRUE(chosen.Remove(chosen.Path(0)));
}

TEST_F(SelectionOfRunningHost, takes_nodes_of_its_own_tree_alone) {
    Selection raw(plant_->Top());
    Selection neutral(plant_->Neutral());
    EXPECT_THROW(raw.Add(plant_->Neutral().At("Flowsheet")), Refused);
    EXPECT_THROW(neutral.Add(Temperature("Feed")), Refused);
    EXPECT_EQ(0u, raw.Size() + neutral.Size());
    Selection below(plant_->At("appModel.FlowSheetObjects.Streams"));
    EXPECT_EQ(plant_->Top(), *below.Root());
    EXPECT_TRUE(below.Add(plant_->At("appModel")));
    EXPECT_EQ("appModel", below.Path(0));
}

TEST_F(SelectionOfRunningHost, a_host_is_never_given_what_is_no_number) {
    NotedStream& stream = AddNoted("Noted", 1);
    const Node node = Temperature("Noted");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(node.Store(nan), Refused);
    EXPECT_THROW(node.Store(nan, "K"), Refused);
    Selection chosen(plant_->Top());
    chosen.Add(node, "K");
    const std::vector<FIValue> values = {FIValue::OfReal(nan)};
    EXPECT_THAT(chosen.Store(values), ElementsAre("Value not stored"));
    const std::vector<FIValue> text = {FIValue("nan")};
    EXPECT_THAT(chosen.Store(text), ElementsAre("Value not stored"));
    EXPECT_THAT(stream.Given(), IsEmpty());
    EXPECT_EQ(1, node.Number("C"));
}

}  // namespace

}  // namespace fixtop::client
