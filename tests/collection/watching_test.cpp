// SPDX-License-Identifier: Apache-2.0
// Whoever subscribes is told of changes of items while the collection watches.

#include <functional>

#include "collection/selected_tree.h"
#include "framework/nodes/top_entry.h"

namespace fixtop {

namespace {

constexpr char kNothingRead[] = "No element under this node";

// A subscriber, which does what the test says when it is called.
struct Listener {
    std::vector<std::pair<FICollectionElement*, int>> heard;
    std::function<void()> act;

    static void Told(void* owner, void* tag, FICollectionElement* item, int kind) {
        auto* self = static_cast<Listener*>(owner);
        EXPECT_EQ(self, tag);
        self->heard.emplace_back(item, kind);
        if (self->act) self->act();
    }
    bool Join(FICollectionBase& items) { return items.Subscribe(this, this, Told); }
    bool Leave(FICollectionBase& items) { return items.Unsubscribe(this, this); }
};

using Heard = std::vector<std::pair<FICollectionElement*, int>>;

class Watching : public SelectedTree {
 protected:
    Watching() {
        for (ScriptNode* stream : top_.children) {
            for (ScriptNode* variable : stream->children) variable->can_notify = true;
        }
        temperature_ = Add("Feed.Temperature");
        pressure_ = Add("Feed.Pressure");
    }
    ScriptNode& TemperatureNode() { return Variable(0, 0); }
    ScriptNode& PressureNode() { return Variable(0, 1); }

    FICollectionElement* temperature_;
    FICollectionElement* pressure_;
    Listener listener_;
};

TEST_F(Watching, tells_each_subscriber_of_each_kind_of_change_of_an_item) {
    Listener other;
    EXPECT_TRUE(listener_.Join(*items_));
    EXPECT_TRUE(other.Join(*items_));
    items_->StartWatching();
    TemperatureNode().Notify(kValueChanged);
    PressureNode().Notify(kStructureChanged);
    TemperatureNode().Notify(kNodeDeleted);
    const Heard expected = {{temperature_, kValueChanged},
                            {pressure_, kStructureChanged},
                            {temperature_, kNodeDeleted}};
    EXPECT_EQ(expected, listener_.heard);
    EXPECT_EQ(expected, other.heard);
}

TEST_F(Watching, is_off_at_first_and_after_its_end) {
    listener_.Join(*items_);
    TemperatureNode().Notify(kValueChanged);
    EXPECT_TRUE(listener_.heard.empty());
    items_->StartWatching();
    TemperatureNode().Notify(kValueChanged);
    EXPECT_EQ(1u, listener_.heard.size());
    items_->StopWatching();
    for (int kind : {kNodeDeleted, kValueChanged, kStructureChanged}) {
        TemperatureNode().Notify(kind);
    }
    EXPECT_EQ(1u, listener_.heard.size());
}

TEST_F(Watching, holds_for_items_that_are_added_meanwhile) {
    items_->StartWatching();
    FICollectionElement* late = Add("Product.Pressure");
    listener_.Join(*items_);
    Variable(1, 1).Notify(kValueChanged);
    EXPECT_EQ(Heard({{late, kValueChanged}}), listener_.heard);
}

TEST_F(Watching, tells_once_though_it_was_begun_twice) {
    listener_.Join(*items_);
    items_->StartWatching();
    items_->StartWatching();
    TemperatureNode().Notify(kValueChanged);
    EXPECT_EQ(1u, listener_.heard.size());
}

TEST_F(Watching, needs_an_item_to_subscribe_to) {
    items_->Clear();
    EXPECT_FALSE(listener_.Join(*items_));
    EXPECT_FALSE(listener_.Leave(*items_));
}

TEST_F(Watching, a_subscriber_leaves_by_its_two_words) {
    EXPECT_TRUE(items_->Subscribe(&listener_, &listener_, Listener::Told));
    EXPECT_FALSE(items_->Unsubscribe(&listener_, nullptr));
    EXPECT_FALSE(items_->Unsubscribe(nullptr, &listener_));
    EXPECT_TRUE(items_->Unsubscribe(&listener_, &listener_));
    EXPECT_FALSE(items_->Unsubscribe(&listener_, &listener_));
    items_->StartWatching();
    TemperatureNode().Notify(kValueChanged);
    EXPECT_TRUE(listener_.heard.empty());
}

TEST_F(Watching, a_subscriber_that_comes_twice_is_told_once) {
    EXPECT_TRUE(listener_.Join(*items_));
    EXPECT_TRUE(listener_.Join(*items_));
    items_->StartWatching();
    TemperatureNode().Notify(kValueChanged);
    EXPECT_EQ(1u, listener_.heard.size());
    EXPECT_FALSE(items_->Subscribe(&listener_, &listener_, nullptr));
}

TEST_F(Watching, one_that_left_an_emptied_collection_is_not_told_of_later_items) {
    listener_.Join(*items_);
    items_->StartWatching();
    items_->Clear();
    EXPECT_FALSE(listener_.Leave(*items_));
    Add("Feed.Temperature");
    TemperatureNode().Notify(kValueChanged);
    EXPECT_TRUE(listener_.heard.empty());
}

TEST_F(Watching, a_removed_item_is_not_told_of) {
    listener_.Join(*items_);
    items_->StartWatching();
    items_->Remove(temperature_);
    TemperatureNode().Notify(kValueChanged);
    TemperatureNode().Notify(kNodeDeleted);
    EXPECT_TRUE(listener_.heard.empty());
    EXPECT_TRUE(TemperatureNode().subscriptions.empty());
    PressureNode().Notify(kValueChanged);
    EXPECT_EQ(1u, listener_.heard.size());
}

TEST_F(Watching, a_subscriber_may_leave_within_its_call) {
    Listener other;
    listener_.Join(*items_);
    other.Join(*items_);
    listener_.act = [&] {
        listener_.Leave(*items_);
        other.Leave(*items_);
    };
    items_->StartWatching();
    TemperatureNode().Notify(kValueChanged);
    TemperatureNode().Notify(kValueChanged);
    EXPECT_EQ(1u, listener_.heard.size());
    EXPECT_TRUE(other.heard.empty());
}

TEST_F(Watching, one_that_comes_within_a_call_waits_for_the_next_change) {
    Listener other;
    listener_.Join(*items_);
    listener_.act = [&] { other.Join(*items_); };
    items_->StartWatching();
    TemperatureNode().Notify(kValueChanged);
    EXPECT_TRUE(other.heard.empty());
    TemperatureNode().Notify(kValueChanged);
    EXPECT_EQ(1u, other.heard.size());
}

TEST_F(Watching, a_subscriber_may_remove_the_item_of_which_it_hears) {
    Listener other;
    listener_.Join(*items_);
    other.Join(*items_);
    listener_.act = [&] { items_->Remove(temperature_); };
    items_->StartWatching();
    TemperatureNode().Notify(kNodeDeleted);
    EXPECT_EQ(Words({"Feed.Pressure"}), Paths());
    EXPECT_EQ(1u, listener_.heard.size());
    // Nobody is shown an item that is none any more.
    EXPECT_TRUE(other.heard.empty());
}

TEST_F(Watching, a_subscriber_may_clear_or_load_the_collection) {
    const std::string kept = Xml();
    listener_.Join(*items_);
    items_->StartWatching();
    listener_.act = [&] { items_->Clear(); };
    TemperatureNode().Notify(kValueChanged);
    EXPECT_EQ(0, items_->Count());
    ASSERT_TRUE(items_->Load(kept.c_str(), *top_.Iterate()));
    listener_.heard.clear();
    listener_.act = [&] { items_->Load(kept.c_str(), *top_.Iterate()); };
    TemperatureNode().Notify(kNodeDeleted);
    EXPECT_EQ(1u, listener_.heard.size());
    EXPECT_EQ(Words({"1", "2"}), Values());
}

TEST_F(Watching, a_subscriber_may_stop_it) {
    Listener other;
    listener_.Join(*items_);
    other.Join(*items_);
    listener_.act = [&] { items_->StopWatching(); };
    items_->StartWatching();
    TemperatureNode().Notify(kValueChanged);
    PressureNode().Notify(kValueChanged);
    EXPECT_EQ(1u, listener_.heard.size());
    EXPECT_TRUE(other.heard.empty());
}

TEST_F(Watching, a_subscriber_may_let_go_of_the_collection) {
    const int alive = CountOf(CountedClass::FICollectionBase).alive;
    FICollectionBase* items = Collection::Make().Detach();
    items->Add(*At("Feed.Temperature"));
    listener_.Join(*items);
    items->StartWatching();
    listener_.act = [&] { items->Release(); };
    TemperatureNode().Notify(kValueChanged);
    EXPECT_EQ(1u, listener_.heard.size());
    EXPECT_EQ(alive, CountOf(CountedClass::FICollectionBase).alive);
    TemperatureNode().Notify(kValueChanged);
    EXPECT_EQ(1u, listener_.heard.size());
}

TEST_F(Watching, a_subscriber_may_read_and_store_within_its_call) {
    listener_.Join(*items_);
    items_->StartWatching();
    Words read;
    listener_.act = [&] {
        read = Values();
        FIValue out;
        On(1)->SetAttribute(Text("value"), FIValue::OfInt(12), 0, out);
    };
    TemperatureNode().Notify(kValueChanged);
    EXPECT_EQ(Words({"1", "2"}), read);
    EXPECT_EQ(Words({"1", "12"}), Values());
}

TEST_F(Watching, a_node_that_is_gone_reads_as_a_reference_to_it_does) {
    listener_.Join(*items_);
    items_->StartWatching();
    TemperatureNode().Notify(kNodeDeleted);
    EXPECT_EQ(Words({"Node deleted", "2"}), Values());
    FIValue out;
    On(0)->SetAttribute(Text("value"), FIValue::OfInt(1), 0, out);
    EXPECT_EQ("Node deleted", Shown(out));
    // It keeps its path and its place.
    EXPECT_EQ(Words({"Feed.Temperature", "Feed.Pressure"}), Paths());
}

TEST_F(Watching, an_item_whose_node_is_gone_takes_the_one_that_is_added_in_its_place) {
    listener_.Join(*items_);
    items_->StartWatching();
    TemperatureNode().Notify(kNodeDeleted);
    Stream(0).RemoveChild("Temperature");
    ScriptNode& other = Stream(0).Add("Temperature").Set("value", 33);
    other.can_notify = true;
    EXPECT_EQ(temperature_, Add("Feed.Temperature"));
    EXPECT_EQ(Words({"33", "2"}), Values());
    listener_.heard.clear();
    other.Notify(kValueChanged);
    EXPECT_EQ(Heard({{temperature_, kValueChanged}}), listener_.heard);
}

TEST_F(Watching, an_item_that_is_found_gone_when_it_is_read_is_told_of_once) {
    for (ScriptNode* variable : Stream(0).children) variable->can_notify = false;
    const Collected items = Collection::Make();
    items->Add(*At("Feed.Temperature"));
    items->StartWatching();
    listener_.Join(*items);
    Stream(0).RemoveChild("Temperature");
    EXPECT_EQ(Words({"1"}), ValuesOf(*items));
    EXPECT_EQ(Words({"Node invalid"}), ValuesOf(*items));
    EXPECT_EQ(Words({"Node deleted"}), ValuesOf(*items));
    EXPECT_EQ(Heard({{items->ItemAt(0), kNodeDeleted}}), listener_.heard);
}

TEST_F(Watching, an_item_without_a_node_looks_for_it_when_it_is_read) {
    const std::string kept = Xml();
    Stream(0).RemoveChild("Pressure");
    ASSERT_TRUE(items_->Load(kept.c_str(), *top_.Iterate()));
    EXPECT_EQ(Words({"1", kNothingRead}), Values());
    Stream(0).Add("Pressure").Set("value", 22);
    Stream(0).children.back()->can_notify = true;
    // Not while it is off.
    EXPECT_EQ(Words({"1", kNothingRead}), Values());
    FIValue out;
    On(1)->GetKey(out);
    EXPECT_EQ(Words({"1", kNothingRead}), Values());
    items_->StartWatching();
    EXPECT_EQ(Words({"1", "22"}), Values());
    listener_.Join(*items_);
    Stream(0).children.back()->Notify(kValueChanged);
    EXPECT_EQ(Heard({{items_->ItemAt(1), kValueChanged}}), listener_.heard);
}

TEST_F(Watching, the_key_of_an_item_brings_its_node_up_to_date) {
    const std::string kept = Xml();
    Stream(0).RemoveChild("Pressure");
    ASSERT_TRUE(items_->Load(kept.c_str(), *top_.Iterate()));
    items_->StartWatching();
    ScriptNode& late = Stream(0).Add("Pressure").Set("value", 22);
    late.can_notify = true;
    listener_.Join(*items_);
    FIValue key;
    On(1)->GetKey(key);
    EXPECT_EQ("Pressure", Shown(key));
    items_->StopWatching();
    EXPECT_EQ(Words({"1", "22"}), Values());
}

// A top that tells of a change tells subscribers of values and those of structure in one round.
class WatchingTop : public Watching {
 protected:
    WatchingTop() {
        for (ScriptNode* stream : top_.children) {
            for (ScriptNode* variable : stream->children) variable->can_notify = false;
        }
        const auto source = top_.Entry();
        const auto context = Ref<FIContext>::Adopt(source->GetContext());
        entry_ = Ref<FIEntry>::Share(new FITopEntry(context.Get(), &notify_, nullptr));
        for (const char* path : {"Feed.Temperature", "Feed.Pressure"}) {
            const auto it = Ref<FIIterator>::Adopt(new FIIterator(entry_.Get(), false));
            EXPECT_TRUE(it->SeekPath(Text(path)));
            EXPECT_TRUE(of_top_->Add(*it));
        }
        listener_.Join(*of_top_);
        of_top_->StartWatching();
    }

    FINotify notify_ = nullptr;
    Ref<FIEntry> entry_;
    const Collected of_top_ = Collection::Make();
};

TEST_F(WatchingTop, tells_of_a_change_of_the_case_once) {
    const Heard once = {{of_top_->ItemAt(0), kValueChanged}, {of_top_->ItemAt(1), kValueChanged}};
    notify_(0);
    EXPECT_EQ(once, listener_.heard);
    notify_(0);
    EXPECT_EQ(4u, listener_.heard.size());
}

TEST_F(WatchingTop, a_change_within_a_call_is_told_in_place_of_the_one_around_it) {
    FICollectionElement* const first = of_top_->ItemAt(0);
    FICollectionElement* const second = of_top_->ItemAt(1);
    listener_.act = [&] {
        listener_.act = nullptr;
        notify_(0);
    };
    notify_(0);
    EXPECT_EQ(Heard({{first, kValueChanged}, {first, kValueChanged}, {second, kValueChanged}}),
              listener_.heard);
}

}  // namespace

}  // namespace fixtop
