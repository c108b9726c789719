// SPDX-License-Identifier: Apache-2.0
// Objects of which a client has carried the pointer to another thread.

#include "automation/other_thread.h"

#include "automation/collection.h"
#include "automation/script_nodes.h"
#include "diagnostics/instance_counts.h"

namespace fixtop {

namespace {

class OtherThread : public testing::Test {
 protected:
    OtherThread() {
        feed_.Set("value", 12.5).Set("id", "Feed");
        feed_.Add("One").Set("id", "One").Set("value", 1);
    }

    ScriptNode root_{"Root"};
    ScriptNode& feed_ = root_.Add("Feed");
    Ref<IQSINode> node_ = ChildOf(*NodeAt(root_), "Feed");
};

TEST_F(OtherThread, members_of_a_node_are_refused) {
    ExpectRefused(node_.Get(), 3, 14);
    EXPECT_EQ("Root.Feed", PathOf(*node_)) << "it is as it was";
    EXPECT_EQ(1u, CountOf(*node_));
}

TEST_F(OtherThread, members_of_a_v_node_are_refused) {
    const auto node = VNodeAt(feed_);
    bool was_asked = false;
    feed_.on_write = [&](FIVarSet*, const std::string&) { was_asked = true; };
    ExpectRefused(node.Get(), 3, 28);
    ExpectRefused(node.Get(), 31, 38);
    const char* const names[] = {"value"};
    Variant values[1];
    values[0].type = Variant::kInt;
    char* error = nullptr;
    EXPECT_EQ(kResultWrongThread,
              OnOtherThread([&] { return node->GetArrayValues(1, names, values); }));
    EXPECT_EQ(Variant::kEmpty, values[0].type);
    values[0].type = Variant::kInt;
    EXPECT_EQ(kResultWrongThread,
              OnOtherThread([&] { return node->SetArrayValues(1, names, values, &error); }));
    EXPECT_EQ(nullptr, error);
    EXPECT_FALSE(was_asked);
}

TEST_F(OtherThread, members_of_an_attribute_and_of_walks_are_refused) {
    const auto value =
        Take<IQSIAttribute>([&](IQSIAttribute** out) { return node_->GetAttribute("value", out); });
    ExpectRefused(value.Get(), 3, 7);
    const auto rows = Take<IQSIAttributeIterator>(
        [&](IQSIAttributeIterator** out) { return node_->GetAttributes(out); });
    ExpectRefused(rows.Get(), 3, 9);
    const auto children =
        Take<IQSINodeIterator>([&](IQSINodeIterator** out) { return node_->GetChildren(out); });
    ExpectRefused(children.Get(), 3, 10);
    EXPECT_EQ("One", TakeText([&](char** out) { return children->GetName(out); }));
}

TEST_F(OtherThread, members_of_a_walk_without_attributes_are_refused) {
    const auto rows = Take<IQSIAttributeIterator>(
        [&](IQSIAttributeIterator** out) { return NodeAt(root_)->GetAttributes(out); });
    ExpectRefused(rows.Get(), 3, 9);
}

TEST_F(OtherThread, members_of_a_collection_its_walk_and_its_point_are_refused) {
    const auto collection =
        Take<IQSICollection>([&](IQSICollection** out) { return node_->GetAltPath("*", out); });
    ExpectRefused(collection.Get(), 3, 12);
    const auto items = Take<IQSICollectionIterator>(
        [&](IQSICollectionIterator** out) { return collection->GetIterator(out); });
    ExpectRefused(items.Get(), 3, 12);
    const auto point = Take<IQSIConnectionPoint>(
        [&](IQSIConnectionPoint** out) { return collection->GetConnectionPoints(out); });
    ExpectRefused(point.Get(), 3, 4);
    EXPECT_EQ(1u, CountOf(*items));
    std::int32_t count = 0;
    double* values = nullptr;
    EXPECT_EQ(kResultOk, collection->GetValues(&count, &values));
    EXPECT_EQ(1, count);
    EXPECT_EQ(1.0, *values);
    FreeAsClient(values);
}

TEST_F(OtherThread, count_is_kept_by_any_thread) {
    EXPECT_EQ(2u, OnOtherThread([&] { return node_->AddRef(); }));
    EXPECT_EQ(1u, OnOtherThread([&] { return node_->Release(); }));
    constexpr int kRounds = 10000;
    const auto count = [&] {
        for (int i = 0; i < kRounds; ++i) {
            node_->AddRef();
            node_->Release();
        }
    };
    std::thread other(count);
    count();
    other.join();
    EXPECT_EQ(1u, CountOf(*node_));
}

TEST_F(OtherThread, object_that_another_thread_lets_go_of_ends_on_its_own) {
    const InstanceCount& nodes = CountOf(CountedClass::CQSINode);
    const int before = nodes.alive;
    IQSINode* const held[] = {ChildOf(*node_, "One").Detach(), ChildOf(*node_, "One").Detach(),
                              ChildOf(*node_, "").Detach()};
    for (IQSINode* each : held) EXPECT_EQ(0u, OnOtherThread([&] { return each->Release(); }));
    EXPECT_EQ(before + 3, nodes.alive) << "nothing of the module runs on another thread";
    EXPECT_EQ(kResultWrongThread, OnOtherThread([&] { return node_->SetVariable("a", "b"); }));
    EXPECT_EQ(before + 3, nodes.alive);
    EXPECT_EQ("Root.Feed", PathOf(*node_));
    EXPECT_EQ(before, nodes.alive);
}

TEST_F(OtherThread, first_object_says_which_thread_is_theirs) {
    node_.Reset();
    const std::string path = OnOtherThread([&] { return PathOf(*NodeAt(feed_)); });
    EXPECT_EQ("Feed", path) << "while there are none, any thread may begin";
    EXPECT_EQ("Feed", PathOf(*NodeAt(feed_)));
}

}  // namespace

}  // namespace fixtop
