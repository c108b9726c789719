// SPDX-License-Identifier: Apache-2.0
// Items follow their nodes to new names, and never lead to others that are called as they were.

#include "collection/case_fixture.h"

namespace fixtop {

namespace {

class RenamedItems : public SelectedCase {
 protected:
    void SetUp() override {
        SelectedCase::SetUp();
        OpenNeutral("demo");
        items_ = MakeCollection();
        for (const char* stream : {"Raw Gas", "Tail Gas", "Sales Gas"}) Add(stream);
    }
    void TearDown() override {
        items_.Reset();
        SelectedCase::TearDown();
    }
    static std::string PathOf(const std::string& stream) {
        return std::string(kStreams) + '.' + stream + ".Temperature";
    }
    void Add(const std::string& stream) {
        ASSERT_TRUE(items_->Add(*At(Raw(), PathOf(stream)))) << stream;
    }
    void Rename(const std::string& from, const std::string& to) {
        host::Viewable* const stream = Stream(from);
        ASSERT_TRUE(stream);
        ASSERT_TRUE(Open().Rename(stream, to));
        host_.RunHostLoop();
    }
    Names Streams(const Names& streams) const {
        Names paths;
        for (const std::string& each : streams) paths.push_back(PathOf(each));
        return paths;
    }
    // What is written now leads to the nodes that are items now.
    void ExpectSameWhenLoaded() {
        const Collected again = MakeCollection();
        ASSERT_TRUE(again->Load(XmlOf(*items_).c_str(), *Raw()));
        EXPECT_EQ(ValuesOf(*items_), ValuesOf(*again));
        EXPECT_EQ(PathsOf(*items_), PathsOf(*again));
    }

    Collected items_;
};

TEST_F(RenamedItems, without_a_change_nothing_is_done) {
    FICollectionElement* const first = items_->ItemAt(0);
    items_->FollowNames();
    EXPECT_EQ(first, items_->ItemAt(0));
}

TEST_F(RenamedItems, a_renamed_node_keeps_its_place_its_units_and_gets_its_path) {
    const auto walk = Walk::Adopt(items_->MakeIterator());
    ASSERT_TRUE(walk->First() && walk->Next());
    FIValue out;
    walk->SetAttribute(FIValue("uom"), FIValue("K"), 0, out);
    const Names values = ValuesOf(*items_);
    Rename("Tail Gas", "Other Gas");
    EXPECT_EQ(Streams({"Raw Gas", "Tail Gas", "Sales Gas"}), PathsOf(*items_));
    items_->FollowNames();
    EXPECT_EQ(Streams({"Raw Gas", "Other Gas", "Sales Gas"}), PathsOf(*items_));
    EXPECT_EQ(values, ValuesOf(*items_));
    EXPECT_EQ(Names({"C", "K", "C"}), ValuesOf(*items_, "uom"));
    items_->FollowNames();
    ExpectSameWhenLoaded();
}

TEST_F(RenamedItems, two_that_change_names_stay_who_they_are) {
    const Names values = ValuesOf(*items_);
    Rename("Raw Gas", "Meanwhile");
    Rename("Sales Gas", "Raw Gas");
    Rename("Meanwhile", "Sales Gas");
    items_->FollowNames();
    EXPECT_EQ(Streams({"Sales Gas", "Tail Gas", "Raw Gas"}), PathsOf(*items_));
    EXPECT_EQ(values, ValuesOf(*items_));
    ExpectSameWhenLoaded();
}

TEST_F(RenamedItems, another_that_is_called_so_now_can_be_chosen) {
    Rename("Tail Gas", "Other Gas");
    Rename("Cold Gas", "Tail Gas");
    Add("Tail Gas");
    EXPECT_EQ(Streams({"Raw Gas", "Other Gas", "Sales Gas", "Tail Gas"}), PathsOf(*items_));
    Add("Other Gas");
    EXPECT_EQ(4, items_->Count());
    ExpectSameWhenLoaded();
}

TEST_F(RenamedItems, one_whose_node_is_gone_keeps_its_path_unless_another_is_called_so) {
    ASSERT_TRUE(Open().Delete(Stream("Tail Gas")));
    host_.RunHostLoop();
    items_->FollowNames();
    EXPECT_EQ(Streams({"Raw Gas", "Tail Gas", "Sales Gas"}), PathsOf(*items_));
    Rename("Sales Gas", "Tail Gas");
    items_->FollowNames();
    EXPECT_EQ(Streams({"Raw Gas", "Tail Gas"}), PathsOf(*items_));
    ExpectSameWhenLoaded();
}

TEST_F(RenamedItems, changes_are_told_as_to_one_that_was_chosen_by_the_new_name) {
    const auto listen = [](FICollectionBase& items, int& told) {
        items.Subscribe(&told, nullptr, [](void* owner, void*, FICollectionElement*, int kind) {
            *static_cast<int*>(owner) += kind == kValueChanged;
        });
        items.StartWatching();
    };
    int told = 0;
    int told_other = 0;
    listen(*items_, told);
    Rename("Raw Gas", "First Gas");
    items_->FollowNames();
    while (items_->Count() > 1) items_->Remove(items_->ItemAt(1));
    const Collected other = MakeCollection();
    ASSERT_TRUE(other->Add(*At(Raw(), PathOf("First Gas"))));
    listen(*other, told_other);
    told = 0;
    FIValue out;
    At(Raw(), PathOf("First Gas"))->SetAttribute(FIValue("value"), FIValue::OfReal(44), 0, out);
    EXPECT_TRUE(out.IsNull());
    EXPECT_GT(told, 0);
    EXPECT_EQ(told_other, told);
}

TEST_F(RenamedItems, of_a_closed_case_stay) {
    const Names paths = PathsOf(*items_);
    host_.Close(Open());
    host_.RunHostLoop();
    items_->FollowNames();
    EXPECT_EQ(paths, PathsOf(*items_));
}

}  // namespace

}  // namespace fixtop
