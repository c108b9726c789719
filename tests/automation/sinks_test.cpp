// SPDX-License-Identifier: Apache-2.0
// What the sinks of a collection hear.

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "automation/collection.h"
#include "automation/fake_collection.h"
#include "automation/objects.h"
#include "automation/script_nodes.h"

namespace fixtop {

namespace {

class Sink final : public IQSISink {
 public:
    Sink() { ++alive; }
    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId&, void** out) override {
        *out = nullptr;
        return kResultNoInterface;
    }
    std::uint32_t FIXTOP_MEMBER AddRef() override { return ++references; }
    std::uint32_t FIXTOP_MEMBER Release() override {
        const std::uint32_t left = --references;
        if (left == 0) delete this;
        return left;
    }
    HRESULT FIXTOP_MEMBER Invoke(std::int32_t event, const Variant& detail) override {
        held = references;
        const int none = detail.type == Variant::kNull ? 500 : 600;
        heard.push_back(event * 1000 + (detail.type == Variant::kInt ? detail.number : none));
        if (on_call) std::exchange(on_call, nullptr)();
        // Held for the call, whatever was let go of within it.
        EXPECT_GE(references, 1u);
        return kResultFail;
    }

    static inline int alive = 0;
    static inline std::uint32_t held = 0;
    static inline std::vector<int> heard;
    std::function<void()> on_call;
    std::function<void()> on_end;
    std::uint32_t references = 1;

 private:
    ~Sink() {
        --alive;
        if (on_end) on_end();
    }
};

class Sinks : public testing::Test {
 protected:
    Sinks() {
        Sink::heard.clear();
        AddNode();
    }
    ~Sinks() override {
        point_.Reset();
        collection_.Reset();
        EXPECT_TRUE(fake_->subscribers.empty());
        EXPECT_FALSE(fake_->watching);
        EXPECT_EQ(0, Sink::alive);
    }
    void AddNode() {
        const auto node = NodeAt(root_);
        EXPECT_EQ(kResultOk, collection_->AddNode(node.Get()));
    }
    // Held by the collection alone; `sink` is lent.
    std::uint32_t Advise(Sink** sink = nullptr) {
        const auto made = Ref<Sink>::Adopt(new Sink);
        std::uint32_t cookie = 0;
        EXPECT_EQ(kResultOk, point_->Advise(made.Get(), &cookie));
        EXPECT_NE(0u, cookie);
        EXPECT_EQ(2u, CountOf(*made));
        if (sink) *sink = made.Get();
        return cookie;
    }
    std::vector<int> Heard() { return std::exchange(Sink::heard, {}); }

    ScriptNode root_{"Root"};
    Ref<FakeCollection> fake_ = Ref<FakeCollection>::Adopt(new FakeCollection);
    Ref<IQSICollection> collection_ =
        Ref<IQSICollection>::Adopt(new CQSICollection(Ref<FICollectionBase>::Share(fake_.Get())));
    Ref<IQSIConnectionPoint> point_ = Take<IQSIConnectionPoint>(
        [&](IQSIConnectionPoint** out) { return collection_->GetConnectionPoints(out); });
};

TEST_F(Sinks, each_sink_hears_of_each_change_once_with_the_place_of_the_item) {
    AddNode();
    Advise();
    Advise();
    EXPECT_TRUE(fake_->watching);
    EXPECT_EQ(1u, fake_->subscribers.size()) << "one subscription for all sinks";
    fake_->Change(1);
    EXPECT_EQ(std::vector<int>({1001, 1001}), Heard());
    EXPECT_EQ(2u, Sink::held) << "by the list, and for the call";
    fake_->Change(0, kNodeDeleted);
    EXPECT_EQ(std::vector<int>({1000, 1000}), Heard());
    fake_->Change(-1);
    EXPECT_EQ(std::vector<int>({1500, 1500}), Heard()) << "of the type kNull";
}

TEST_F(Sinks, sink_that_left_hears_nothing) {
    const std::uint32_t one = Advise();
    const std::uint32_t other = Advise();
    EXPECT_NE(one, other);
    EXPECT_EQ(kResultOk, point_->Unadvise(one));
    EXPECT_EQ(1, Sink::alive);
    EXPECT_EQ(kResultFalse, point_->Unadvise(one));
    EXPECT_EQ(kResultFalse, point_->Unadvise(0));
    EXPECT_EQ(kResultFalse, point_->Unadvise(other + 1));
    fake_->Change(0);
    EXPECT_EQ(std::vector<int>({1000}), Heard());
    EXPECT_EQ(kResultOk, point_->Unadvise(other));
    EXPECT_FALSE(fake_->watching) << "with the last one the watch ends";
    EXPECT_TRUE(fake_->subscribers.empty());
    Advise();
    EXPECT_TRUE(fake_->watching);
}

TEST_F(Sinks, empty_collection_is_watched_from_its_first_item_on) {
    fake_->Clear();
    Advise();
    EXPECT_FALSE(fake_->watching);
    AddNode();
    EXPECT_TRUE(fake_->watching);
    fake_->Change(0);
    EXPECT_EQ(std::vector<int>({1000}), Heard());
    AddNode();
    EXPECT_EQ(1u, fake_->subscribers.size());
}

TEST_F(Sinks, sink_leaves_from_within_its_call) {
    Sink* sink = nullptr;
    const std::uint32_t cookie = Advise(&sink);
    Advise();
    sink->on_call = [&] { EXPECT_EQ(kResultOk, point_->Unadvise(cookie)); };
    fake_->Change(0);
    EXPECT_EQ(2u, Heard().size());
    EXPECT_EQ(1, Sink::alive);
    fake_->Change(0);
    EXPECT_EQ(1u, Heard().size());
}

TEST_F(Sinks, sink_that_another_one_takes_out_before_its_turn_is_not_called) {
    Sink* sink = nullptr;
    Advise(&sink);
    const std::uint32_t later = Advise();
    sink->on_call = [&] { EXPECT_EQ(kResultOk, point_->Unadvise(later)); };
    fake_->Change(0);
    EXPECT_EQ(1u, Heard().size());
}

TEST_F(Sinks, sink_that_comes_within_a_call_hears_of_the_next_change) {
    Sink* sink = nullptr;
    Advise(&sink);
    sink->on_call = [&] { Advise(); };
    fake_->Change(0);
    EXPECT_EQ(1u, Heard().size());
    fake_->Change(0);
    EXPECT_EQ(2u, Heard().size());
}

TEST_F(Sinks, change_within_a_call_reaches_all) {
    Sink* sink = nullptr;
    Advise(&sink);
    Advise();
    sink->on_call = [&] { fake_->Change(-1); };
    fake_->Change(0);
    EXPECT_EQ(std::vector<int>({1000, 1500, 1500, 1000}), Heard());
}

TEST_F(Sinks, sink_that_stands_there_twice_hears_twice) {
    Sink* sink = nullptr;
    const std::uint32_t one = Advise(&sink);
    std::uint32_t other = 0;
    EXPECT_EQ(kResultOk, point_->Advise(sink, &other));
    EXPECT_NE(one, other);
    fake_->Change(0);
    EXPECT_EQ(std::vector<int>({1000, 1000}), Heard());
    EXPECT_EQ(kResultOk, point_->Unadvise(one));
    EXPECT_EQ(1, Sink::alive);
    fake_->Change(0);
    EXPECT_EQ(std::vector<int>({1000}), Heard());
}

TEST_F(Sinks, node_is_added_from_within_a_call) {
    Sink* sink = nullptr;
    Advise(&sink);
    sink->on_call = [&] { AddNode(); };
    fake_->Change(0);
    EXPECT_EQ(2, fake_->Count());
    fake_->Change(1);
    EXPECT_EQ(std::vector<int>({1000, 1001}), Heard());
    EXPECT_EQ(1u, fake_->subscribers.size());
}

TEST_F(Sinks, all_leave_when_one_ends) {
    Sink* sink = nullptr;
    const std::uint32_t one = Advise(&sink);
    const std::uint32_t other = Advise();
    sink->on_end = [&] { EXPECT_EQ(kResultOk, point_->Unadvise(other)); };
    EXPECT_EQ(kResultOk, point_->Unadvise(one));
    EXPECT_EQ(0, Sink::alive);
    EXPECT_FALSE(fake_->watching);
    Advise(&sink);
    sink->on_end = [&] {
        point_.Reset();
        collection_.Reset();
    };
    EXPECT_EQ(kResultOk, point_->Unadvise(other + 1));
    EXPECT_TRUE(fake_->subscribers.empty());
}

TEST_F(Sinks, collection_is_let_go_from_within_a_call) {
    Sink* sink = nullptr;
    Advise(&sink);
    Advise();
    sink->on_call = [&] {
        collection_.Reset();
        point_.Reset();
    };
    fake_->Change(0);
    EXPECT_EQ(2u, Heard().size()) << "it lasts to the end of the round";
    EXPECT_EQ(0, Sink::alive);
    EXPECT_TRUE(fake_->subscribers.empty());
    fake_->Change(0);
    EXPECT_TRUE(Heard().empty());
}

TEST_F(Sinks, connection_point_keeps_the_collection) {
    Advise();
    collection_.Reset();
    fake_->Change(0);
    EXPECT_EQ(1u, Heard().size());
    point_.Reset();
    EXPECT_EQ(0, Sink::alive);
}

TEST_F(Sinks, null_pointers_are_refused) {
    std::uint32_t cookie = 99;
    EXPECT_EQ(kResultPointer, point_->Advise(nullptr, &cookie));
    EXPECT_EQ(0u, cookie);
    const auto sink = Ref<Sink>::Adopt(new Sink);
    EXPECT_EQ(kResultPointer, point_->Advise(sink.Get(), nullptr));
    EXPECT_EQ(1u, CountOf(*sink));
    EXPECT_FALSE(fake_->watching);
}

}  // namespace

}  // namespace fixtop
