// SPDX-License-Identifier: Apache-2.0
// Selections on the open case of a simulator whose streams come and go meanwhile.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "fixtop/client.h"
#include "fixtop/fixtop.h"
#include "own_host/own_host.h"

namespace fixtop::client {

namespace {

using testing::ElementsAre;
using Kind = ItemState::Kind;

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

    own::Services simulator_;
    const own::Stream* feed_ = nullptr;
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

}  // namespace

}  // namespace fixtop::client
