// SPDX-License-Identifier: Apache-2.0
// A saved selection shown as one flat list of children.

#include "collection/published_vars.h"
#include "collection/iterator_vars.h"
#include "collection/selected_tree.h"
#include "framework/nodes/empties.h"

namespace fixtop {

namespace {

using Cursor = Ref<FICursorBase>;

// Feed and two variables of Product are published, in this order.
class Published : public SelectedTree {
 protected:
    Published() {
        top_.Set("id", "Top");
        for (ScriptNode* stream : top_.children) {
            const std::string name = stream->name.ToText();
            stream->Set("path", ("Top." + name).c_str());
            for (ScriptNode* variable : stream->children) {
                variable->Set("path", ("Top." + name + "." + variable->name.ToText()).c_str());
            }
        }
        for (const char* path : {"Feed", "Product.Pressure", "Product.Temperature"}) Add(path);
        Publish();
    }
    void Publish() {
        list_ = Ref<PublishedVars>::Share(new PublishedVars(Xml().c_str(), *top_.Iterate()));
    }
    static Cursor Children(FIContext& list) { return Cursor::Adopt(list.MakeCursor(kChildCursor)); }
    Cursor Children() const { return Children(*list_); }
    static std::string Key(FICursorBase& cursor) {
        FIValue key("left over");
        cursor.GetKey(key);
        return Shown(key);
    }
    static Words Keys(FIContext& list) {
        Words keys;
        const Cursor cursor = Children(list);
        for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
            keys.push_back(Key(*cursor));
        }
        return keys;
    }
    static Ref<FIEntry> EntryOf(FICursorBase& cursor) {
        return Ref<FIEntry>::Adopt(cursor.GetEntry());
    }
    Ref<FIEntry> EntryAt(int index) const {
        const Cursor cursor = Children();
        EXPECT_TRUE(cursor->Seek(kFromFirst, index));
        return EntryOf(*cursor);
    }
    static std::string NameOf(FIEntry& entry) {
        FIValue name;
        entry.GetName(name);
        return Shown(name);
    }

    Ref<PublishedVars> list_;
};

TEST_F(Published, items_are_the_children_by_their_whole_paths) {
    EXPECT_EQ(Words({"\"Top.Feed\"", "\"Top.Product.Pressure\"", "\"Top.Product.Temperature\""}),
              Keys(*list_));
}

TEST_F(Published, the_root_is_none_of_them) {
    items_->Clear();
    for (const char* path : {"Feed", "", "Product"}) Add(path);
    Publish();
    EXPECT_EQ(Words({"\"Top.Feed\"", "\"Top.Product\""}), Keys(*list_));
}

TEST_F(Published, a_selection_of_the_root_alone_gives_an_empty_list) {
    items_->Clear();
    Add("");
    Publish();
    EXPECT_TRUE(Keys(*list_).empty());
    const Cursor cursor = Children();
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_EQ(nullptr, cursor->GetEntry());
    EXPECT_EQ("(NULL)", Key(*cursor));
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "\"Top.Feed\""));
}

TEST_F(Published, of_several_that_are_called_top_the_first_is_taken_out) {
    Stream(0).Set("id", "Top");
    Variable(1, 0).Set("id", "Top");
    Publish();
    EXPECT_EQ(Words({"\"Top.Product.Pressure\"", "\"Top.Product.Temperature\""}), Keys(*list_));
}

TEST_F(Published, a_text_that_is_no_selection_gives_an_empty_list) {
    list_ = Ref<PublishedVars>::Share(new PublishedVars("no document", *top_.Iterate()));
    EXPECT_TRUE(Keys(*list_).empty());
}

TEST_F(Published, paths_begin_where_the_iterator_stands) {
    const Collected below = Collection::Make();
    const auto feed = Stream(0).Iterate();
    ASSERT_TRUE(feed->SeekChild("Pressure"));
    ASSERT_TRUE(below->Add(*feed));
    list_ = Ref<PublishedVars>::Share(new PublishedVars(XmlOf(*below).c_str(), *At("Product")));
    EXPECT_EQ(Words({"\"Top.Product.Pressure\""}), Keys(*list_));
}

TEST_F(Published, has_no_keys) {
    EXPECT_EQ(EmptyCursor(), list_->MakeCursor(kKeyCursor));
    const auto inner = Ref<FIContext>::Adopt(EntryAt(0)->GetContext());
    EXPECT_EQ(EmptyCursor(), inner->MakeCursor(kKeyCursor));
}

TEST_F(Published, a_cursor_begins_on_the_first_and_stays_within_the_list) {
    const Cursor cursor = Children();
    EXPECT_TRUE(cursor->AtBegin());
    EXPECT_EQ("\"Top.Feed\"", Key(*cursor));
    EXPECT_TRUE(cursor->Seek(kFromPresent, 2));
    EXPECT_EQ("\"Top.Product.Temperature\"", Key(*cursor));
    EXPECT_FALSE(cursor->AtBegin());
    EXPECT_FALSE(cursor->Seek(kFromPresent, 5));
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_EQ(nullptr, cursor->GetEntry());
    EXPECT_TRUE(cursor->Seek(kFromPresent, -1));
    EXPECT_EQ("\"Top.Product.Temperature\"", Key(*cursor));
    EXPECT_FALSE(cursor->Seek(kFromEnd, 0));
    EXPECT_TRUE(cursor->Seek(kFromEnd, -2));
    EXPECT_EQ("\"Top.Product.Pressure\"", Key(*cursor));
    EXPECT_TRUE(cursor->Seek(kFromFirst, -4));
    EXPECT_TRUE(cursor->AtBegin());
    EXPECT_FALSE(cursor->Seek(kFromFirst, 3));
}

TEST_F(Published, a_name_is_sought_from_the_first_or_round_from_the_present) {
    const Cursor cursor = Children();
    EXPECT_TRUE(cursor->SeekName(kFromFirst, "\"Top.Product.Temperature\""));
    EXPECT_EQ("\"Top.Product.Temperature\"", Key(*cursor));
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "\"Top.Feed\""));
    EXPECT_TRUE(cursor->AtBegin());
    EXPECT_TRUE(cursor->SeekName(kFromEnd, "\"Top.Product.Pressure\""));
    // Round to where it stands, which itself is not asked.
    EXPECT_FALSE(cursor->SeekName(kFromPresent, "\"Top.Product.Pressure\""));
    EXPECT_EQ("\"Top.Product.Pressure\"", Key(*cursor));
    EXPECT_FALSE(cursor->Seek(kFromEnd, 0));
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "\"Top.Feed\""));
}

TEST_F(Published, a_search_in_vain_leaves_the_cursor_where_it_stood) {
    const Cursor cursor = Children();
    cursor->Seek(kFromFirst, 1);
    for (int origin : {kFromFirst, kFromPresent, kFromEnd}) {
        EXPECT_FALSE(cursor->SeekName(origin, "Top.Feed"));
        EXPECT_EQ("\"Top.Product.Pressure\"", Key(*cursor));
    }
    EXPECT_FALSE(cursor->SeekName(kFromFirst, nullptr));
}

TEST_F(Published, an_entry_is_sought_by_its_name) {
    const Cursor cursor = Children();
    EXPECT_TRUE(cursor->SeekValue(kFromFirst, *EntryAt(2)));
    EXPECT_EQ("\"Top.Product.Temperature\"", Key(*cursor));
}

TEST_F(Published, cursors_compare_by_their_places) {
    const Cursor first = Children();
    const Cursor second = Children();
    EXPECT_EQ(0, first->Compare(*first));
    EXPECT_EQ(0, first->Compare(*second));
    second->Seek(kFromPresent, 1);
    EXPECT_EQ(-1, first->Compare(*second));
    EXPECT_EQ(1, second->Compare(*first));
    EXPECT_EQ(kNotComparable, first->Compare(*EmptyCursor()));
    Publish();
    EXPECT_EQ(0, first->Compare(*Children()));
    Add("Feed.Pressure");
    Publish();
    EXPECT_EQ(kNotComparable, first->Compare(*Children()));
}

TEST_F(Published, a_copy_stands_where_the_cursor_stands) {
    const Cursor cursor = Children();
    cursor->Seek(kFromFirst, 1);
    const Cursor same = Cursor::Adopt(static_cast<FICursorBase*>(cursor->Clone(false)));
    EXPECT_EQ(cursor.Get(), same.Get());
    const Cursor copy = Cursor::Adopt(static_cast<FICursorBase*>(cursor->Clone(true)));
    EXPECT_NE(cursor.Get(), copy.Get());
    EXPECT_EQ(0, cursor->Compare(*copy));
    EXPECT_TRUE(copy->Seek(kFromPresent, 1));
    EXPECT_EQ("\"Top.Product.Temperature\"", Key(*copy));
    EXPECT_EQ("\"Top.Product.Pressure\"", Key(*cursor));
    EXPECT_FALSE(copy->IsHidden());
}

TEST_F(Published, an_entry_is_called_by_the_path_of_its_node_and_reads_it) {
    const Ref<FIEntry> entry = EntryAt(1);
    EXPECT_EQ("\"Top.Product.Pressure\"", NameOf(*entry));
    FIValue value;
    entry->GetAttribute(Text("value"), value);
    EXPECT_EQ("5", Shown(value));
    const auto source = Ref<FIAttributeSource>::Adopt(entry->GetAttributeSource());
    const auto rows = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    EXPECT_TRUE(rows->SeekName(kFromFirst, "value"));
}

TEST_F(Published, an_entry_on_a_leaf_has_the_shared_empty_context) {
    const Ref<FIEntry> leaf = EntryAt(1);
    EXPECT_FALSE(leaf->IsContainer());
    EXPECT_EQ(EmptyContext(), leaf->GetContext());
}

TEST_F(Published, an_entry_with_children_is_browsed_below) {
    const Ref<FIEntry> feed = EntryAt(0);
    EXPECT_TRUE(feed->IsContainer());
    const auto below = Ref<FIContext>::Adopt(feed->GetContext());
    EXPECT_EQ(
        Words({"\"Top.Feed.Temperature\"", "\"Top.Feed.Pressure\"", "\"Top.Feed.Comp.Frac\""}),
        Keys(*below));
    const Cursor cursor = Children(*below);
    EXPECT_TRUE(cursor->SeekName(kFromFirst, "\"Top.Feed.Pressure\""));
    const Ref<FIEntry> pressure = EntryOf(*cursor);
    FIValue value;
    pressure->GetAttribute(Text("value"), value);
    EXPECT_EQ("2", Shown(value));
    EXPECT_EQ("\"Top.Feed.Pressure\"", NameOf(*pressure));
    EXPECT_EQ(EmptyContext(), pressure->GetContext());
}

TEST_F(Published, the_children_of_an_entry_are_walked_like_the_list) {
    const auto below = Ref<FIContext>::Adopt(EntryAt(0)->GetContext());
    const Cursor cursor = Children(*below);
    EXPECT_TRUE(cursor->AtBegin());
    EXPECT_TRUE(cursor->Seek(kFromEnd, -1));
    EXPECT_EQ("\"Top.Feed.Comp.Frac\"", Key(*cursor));
    EXPECT_FALSE(cursor->Seek(kFromPresent, 1));
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_EQ(nullptr, cursor->GetEntry());
    EXPECT_EQ("(NULL)", Key(*cursor));
    EXPECT_TRUE(cursor->Seek(kFromPresent, -2));
    EXPECT_EQ("\"Top.Feed.Pressure\"", Key(*cursor));
    EXPECT_FALSE(cursor->SeekName(kFromPresent, "\"Top.Feed\""));
    EXPECT_EQ("\"Top.Feed.Pressure\"", Key(*cursor));
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "\"Top.Feed.Temperature\""));
    EXPECT_TRUE(cursor->AtBegin());
    const Cursor copy = Cursor::Adopt(static_cast<FICursorBase*>(cursor->Clone(true)));
    EXPECT_TRUE(copy->Seek(kFromPresent, 1));
    EXPECT_EQ(-1, cursor->Compare(*copy));
    EXPECT_EQ("\"Top.Feed.Temperature\"", Key(*cursor));
    EXPECT_EQ(kNotComparable, cursor->Compare(*Children()));
}

TEST_F(Published, an_end_where_the_list_goes_back_to_its_first_is_an_end) {
    Stream(0).null_at_end = false;
    const auto below = Ref<FIContext>::Adopt(EntryAt(0)->GetContext());
    EXPECT_EQ(3u, Keys(*below).size());
}

TEST_F(Published, entries_compare_by_their_places_and_only_with_their_like) {
    const Ref<FIEntry> feed = EntryAt(0);
    const Ref<FIEntry> pressure = EntryAt(1);
    const Ref<FIEntry> temperature = EntryAt(2);
    EXPECT_EQ(0, pressure->Compare(*EntryAt(1)));
    EXPECT_EQ(-1, pressure->Compare(*temperature));
    EXPECT_EQ(1, temperature->Compare(*pressure));
    EXPECT_EQ(kNotComparable, feed->Compare(*pressure));
    EXPECT_EQ(kNotComparable, pressure->Compare(*top_.Entry()));
}

TEST_F(Published, an_item_whose_node_is_not_found_shows_as_nothing) {
    const std::string kept = Xml();
    top_.RemoveChild("Product");
    list_ = Ref<PublishedVars>::Share(new PublishedVars(kept.c_str(), *top_.Iterate()));
    EXPECT_EQ(Words({"\"Top.Feed\"", "(NULL)", "(NULL)"}), Keys(*list_));
    const Ref<FIEntry> entry = EntryAt(1);
    FIValue value;
    entry->GetAttribute(Text("value"), value);
    EXPECT_TRUE(value.IsNull());
    EXPECT_FALSE(entry->IsContainer());
}

TEST_F(Published, a_name_has_at_most_1023_bytes_of_the_path) {
    const std::string name(2000, 'n');
    top_.Add(name.c_str()).Set("path", ("Top." + name).c_str());
    items_->Clear();
    Add(name);
    Publish();
    EXPECT_EQ('"' + ("Top." + name).substr(0, 1023) + '"', NameOf(*EntryAt(0)));
    EXPECT_EQ(Words({"\"Top." + name + '"'}), Keys(*list_));
}

}  // namespace

}  // namespace fixtop
