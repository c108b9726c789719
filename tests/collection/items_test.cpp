// SPDX-License-Identifier: Apache-2.0
// Items come and go, and have an order.

#include "collection/selected_tree.h"

namespace fixtop {

namespace {

class Items : public SelectedTree {
 protected:
    static int Steps() { return CountOf(CountedClass::FICollectionElement).alive; }

    int steps_before_ = Steps();
};

TEST_F(Items, an_empty_collection_has_none) {
    EXPECT_EQ(0, items_->Count());
    EXPECT_EQ(nullptr, items_->ItemAt(0));
    EXPECT_EQ(-1, items_->IndexOf(nullptr));
    EXPECT_FALSE(items_->Contains(nullptr));
    EXPECT_FALSE(items_->Remove(nullptr));
    EXPECT_FALSE(items_->RemoveAt(0));
    items_->Clear();
    EXPECT_EQ(0, items_->Count());
}

TEST_F(Items, a_node_that_is_added_becomes_the_last_item) {
    FICollectionElement* first = Add("Product.Pressure");
    FICollectionElement* second = Add("Feed.Temperature");
    ASSERT_TRUE(first && second);
    EXPECT_EQ(Words({"Product.Pressure", "Feed.Temperature"}), Paths());
    EXPECT_EQ(first, items_->ItemAt(0));
    EXPECT_EQ(second, items_->ItemAt(1));
    EXPECT_EQ(0, items_->IndexOf(first));
    EXPECT_EQ(1, items_->IndexOf(second));
}

TEST_F(Items, a_node_that_is_an_item_already_stays_where_it_is) {
    FICollectionElement* first = Add("Feed.Temperature");
    Add("Feed.Pressure");
    EXPECT_EQ(first, Add("Feed.Temperature"));
    EXPECT_EQ(2, items_->Count());
    EXPECT_EQ(0, items_->IndexOf(first));
}

TEST_F(Items, an_item_comes_before_another_one) {
    FICollectionElement* const pressure = Add("Feed.Pressure");
    FICollectionElement* const first = items_->AddBefore(*At("Feed.Temperature"), pressure);
    EXPECT_EQ(Words({"Feed.Temperature", "Feed.Pressure"}), Paths());
    EXPECT_EQ(1, items_->IndexOf(pressure));
    const auto walk = On(1);
    EXPECT_EQ(1, items_->IndexOf(walk->Item()));
    items_->AddBefore(*At("Product.Pressure"), pressure);
    items_->AddBefore(*At("Product"), pressure);
    items_->AddBefore(*At("Feed"), nullptr);
    const Words expected = {"Feed.Temperature", "Product.Pressure", "Product", "Feed.Pressure",
                            "Feed"};
    EXPECT_EQ(expected, Paths());
    EXPECT_EQ(pressure, walk->Item()) << "who stood there stays there";
    EXPECT_TRUE(walk->Previous());
    EXPECT_EQ(2, items_->IndexOf(walk->Item()));
    for (int i = 0; i < 5; ++i) EXPECT_EQ(i, items_->IndexOf(items_->ItemAt(i)));
    EXPECT_EQ(first, items_->AddBefore(*At("Feed.Temperature"), pressure)) << "an item already";
    EXPECT_EQ(expected, Paths());
    const auto others = Collection::Make();
    FICollectionElement* const other = others->Add(*At("Feed"));
    items_->AddBefore(*At("Product.Temperature"), other);
    EXPECT_EQ(5, items_->IndexOf(items_->ItemAt(5))) << "another collection's: the last";
    EXPECT_EQ("Product.Temperature", Paths().back());
    EXPECT_EQ(Words({"Feed"}), PathsOf(*others));
}

TEST_F(Items, items_share_the_steps_above_them) {
    Add("Feed.Temperature");
    // Top, Feed, Temperature.
    EXPECT_EQ(steps_before_ + 3, Steps());
    Add("Feed.Pressure");
    EXPECT_EQ(steps_before_ + 4, Steps());
    Add("Feed");
    EXPECT_EQ(steps_before_ + 4, Steps());
    EXPECT_EQ(3, items_->Count());
}

TEST_F(Items, an_iterator_on_nothing_adds_nothing) {
    const auto nowhere = Ref<FIIterator>::Adopt(new FIIterator());
    EXPECT_EQ(nullptr, items_->Add(*nowhere));
    const auto past = At("Product");
    EXPECT_FALSE(past->Next());
    EXPECT_EQ(nullptr, items_->Add(*past));
    EXPECT_EQ(0, items_->Count());
    EXPECT_EQ(steps_before_, Steps());
}

TEST_F(Items, the_root_may_be_an_item) {
    ASSERT_TRUE(Add(""));
    EXPECT_EQ(Words({""}), Paths());
    FIValue key;
    On(0)->GetKey(key);
    EXPECT_EQ("Top", Shown(key));
}

TEST_F(Items, a_node_of_another_tree_is_refused) {
    Add("Feed");
    ScriptNode other("Other");
    other.Add("Feed");
    const auto it = other.Iterate();
    ASSERT_TRUE(it->SeekPath(Text("Feed")));
    EXPECT_EQ(nullptr, items_->Add(*it));
    EXPECT_EQ(Words({"Feed"}), Paths());
}

TEST_F(Items, a_removed_item_goes_with_the_steps_that_lead_nowhere_else) {
    FICollectionElement* item = Add("Feed.Temperature");
    Add("Product.Temperature");
    EXPECT_EQ(steps_before_ + 5, Steps());
    EXPECT_TRUE(items_->Remove(item));
    EXPECT_EQ(steps_before_ + 3, Steps());
    EXPECT_EQ(Words({"Product.Temperature"}), Paths());
    EXPECT_TRUE(items_->RemoveAt(0));
    EXPECT_EQ(steps_before_, Steps());
    EXPECT_EQ(0, items_->Count());
}

TEST_F(Items, an_item_that_is_a_step_of_others_keeps_them_when_it_is_removed) {
    FICollectionElement* feed = Add("Feed");
    Add("Feed.Temperature");
    EXPECT_TRUE(items_->Remove(feed));
    EXPECT_EQ(Words({"Feed.Temperature"}), Paths());
    EXPECT_FALSE(items_->Contains(feed));
    EXPECT_EQ(steps_before_ + 3, Steps());
    EXPECT_EQ(Words({"1"}), Values());
    // It may become an item again, the last then.
    EXPECT_EQ(feed, Add("Feed"));
    EXPECT_EQ(Words({"Feed.Temperature", "Feed"}), Paths());
}

TEST_F(Items, a_step_that_is_an_item_stays_when_the_last_below_it_is_removed) {
    Add("Feed");
    FICollectionElement* below = Add("Feed.Temperature");
    EXPECT_TRUE(items_->Remove(below));
    EXPECT_EQ(Words({"Feed"}), Paths());
    EXPECT_EQ(steps_before_ + 2, Steps());
}

TEST_F(Items, an_index_outside_removes_nothing) {
    Add("Feed");
    EXPECT_FALSE(items_->RemoveAt(-1));
    EXPECT_FALSE(items_->RemoveAt(1));
    EXPECT_EQ(1, items_->Count());
    EXPECT_EQ(nullptr, items_->ItemAt(-1));
    EXPECT_EQ(nullptr, items_->ItemAt(1));
}

TEST_F(Items, an_item_of_another_collection_is_none_of_this_one) {
    const Collected other = Collection::Make();
    FICollectionElement* item = other->Add(*At("Feed"));
    Add("Feed");
    EXPECT_EQ(-1, items_->IndexOf(item));
    EXPECT_FALSE(items_->Contains(item));
    EXPECT_FALSE(items_->Remove(item));
    EXPECT_EQ(0, other->IndexOf(item));
    EXPECT_TRUE(other->Contains(item));
}

TEST_F(Items, a_step_is_no_item) {
    Add("Feed.Temperature");
    FICollectionElement* step = items_->ItemAt(0)->Parent();
    EXPECT_FALSE(items_->Contains(step));
    EXPECT_EQ(-1, items_->IndexOf(step));
    EXPECT_FALSE(items_->Remove(step));
}

TEST_F(Items, places_are_found_in_whatever_order_they_are_asked_and_removed) {
    ScriptNode& wide = top_.Add("Wide");
    constexpr int kMany = 60;
    for (int i = 0; i < kMany; ++i) wide.Add("v" + std::to_string(i));
    ASSERT_EQ(kMany, items_->AddMatches(*top_.Iterate(), Text("Wide.*")));
    std::vector<FICollectionElement*> model;
    for (int i = 0; i < kMany; ++i) model.push_back(items_->ItemAt(i));
    // A walk through all numbers below the count, in steps of 37.
    for (int i = 0; !model.empty(); i += 37) {
        const int at = i % static_cast<int>(model.size());
        ASSERT_EQ(model[at], items_->ItemAt(at));
        for (std::size_t k = 0; k < model.size(); ++k) {
            ASSERT_EQ(static_cast<int>(k), items_->IndexOf(model[k]));
        }
        ASSERT_TRUE(items_->RemoveAt(at));
        model.erase(model.begin() + at);
        ASSERT_EQ(static_cast<int>(model.size()), items_->Count());
    }
}

TEST_F(Items, places_are_found_when_items_have_come_between) {
    ScriptNode& wide = top_.Add("Wide");
    std::vector<FICollectionElement*> model;
    for (int i = 0; i < 60; ++i) {
        wide.Add("v" + std::to_string(i));
        const int at = 37 * i % (i + 1);
        FICollectionElement* const behind = items_->ItemAt(at);
        model.insert(model.begin() + at,
                     items_->AddBefore(*At("Wide.v" + std::to_string(i)), behind));
        for (int k = 0; k <= i; ++k) {
            const int place = 17 * k % (i + 1);
            ASSERT_EQ(model[place], items_->ItemAt(place));
            ASSERT_EQ(place, items_->IndexOf(model[place]));
        }
    }
}

TEST_F(Items, all_matches_of_a_path_are_added_in_their_order) {
    EXPECT_EQ(2, items_->AddMatches(*top_.Iterate(), Text("*.Pressure")));
    EXPECT_EQ(Words({"Feed.Pressure", "Product.Pressure"}), Paths());
    // Of six nodes two are items already.
    EXPECT_EQ(4, items_->AddMatches(*top_.Iterate(), Text("*.*")));
    EXPECT_EQ(6, items_->Count());
    EXPECT_EQ(0, items_->AddMatches(*top_.Iterate(), Text("Nobody.*")));
    EXPECT_EQ(-1, items_->AddMatches(*top_.Iterate(), Text("Feed[[")));
    EXPECT_EQ(6, items_->Count());
}

TEST_F(Items, matches_are_sought_from_where_the_iterator_stands) {
    EXPECT_EQ(3, items_->AddMatches(*At("Product"), Text("*")));
    EXPECT_EQ(Words({"Product.Temperature", "Product.Pressure", "Product.\"Comp.Frac\""}), Paths());
}

TEST_F(Items, a_way_that_is_too_long_to_be_read_back_is_refused) {
    ScriptNode* node = &top_;
    auto it = top_.Iterate(true);
    std::string path;
    for (int depth = 1; depth < Collection::kMostSteps; ++depth) {
        node = &node->Add("d");
        ASSERT_TRUE(it->SeekChild("d"));
    }
    EXPECT_TRUE(items_->Add(*it));
    node->Add("d");
    ASSERT_TRUE(it->SeekChild("d"));
    EXPECT_EQ(nullptr, items_->Add(*it));
    EXPECT_EQ(1, items_->Count());
    const Collected again = Collection::Make();
    EXPECT_TRUE(again->Load(Xml().c_str(), *top_.Iterate()));
    EXPECT_EQ(Paths(), PathsOf(*again));
}

TEST_F(Items, counters_show_what_is_alive) {
    const int collections = CountOf(CountedClass::FICollectionBase).alive;
    const int iterators = CountOf(CountedClass::FICollectionIteratorBase).alive;
    Collected other = Collection::Make();
    other->Add(*At("Feed"));
    EXPECT_EQ(collections + 1, CountOf(CountedClass::FICollectionBase).alive);
    Walk it = Walk::Adopt(other->MakeIterator());
    EXPECT_EQ(iterators + 1, CountOf(CountedClass::FICollectionIteratorBase).alive);
    other.Reset();
    // The iterator keeps it.
    EXPECT_EQ(collections + 1, CountOf(CountedClass::FICollectionBase).alive);
    EXPECT_TRUE(it->Next());
    it.Reset();
    EXPECT_EQ(collections, CountOf(CountedClass::FICollectionBase).alive);
    EXPECT_EQ(iterators, CountOf(CountedClass::FICollectionIteratorBase).alive);
    EXPECT_EQ(steps_before_, Steps());
}

TEST_F(Items, references_are_counted) {
    FICollectionBase* items = Collection::Make().Detach();
    EXPECT_EQ(2, items->AddRef());
    EXPECT_EQ(1, items->Release());
    EXPECT_EQ(items->TypeId(), items_->TypeId());
    const Walk it = Walk::Adopt(items->MakeIterator());
    EXPECT_NE(items->TypeId(), it->TypeId());
    // The iterator has the other.
    EXPECT_EQ(1, items->Release());
}

}  // namespace

}  // namespace fixtop
