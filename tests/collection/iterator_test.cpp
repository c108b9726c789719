// SPDX-License-Identifier: Apache-2.0
// The walk over the items, which can stand for the entry of each.

#include "collection/selected_tree.h"
#include "framework/nodes/empties.h"

namespace fixtop {

namespace {

constexpr char kNothingRead[] = "No element under this node";
constexpr char kNothingWritten[] = "No element exists under this node";

class ItemWalk : public SelectedTree {
 protected:
    ItemWalk() {
        Add("Feed.Temperature");
        Add("Feed.Pressure");
        Add("Product.Comp.Frac");
    }
    // The name has a point.
    FICollectionElement* Add(const std::string& path) {
        return SelectedTree::Add(path == "Product.Comp.Frac" ? "Product.\"Comp.Frac\"" : path);
    }
    static std::string KeyOf(FICollectionIteratorBase& it) {
        FIValue key("left over");
        it.GetKey(key);
        return Shown(key);
    }
    static std::string Read(FICollectionIteratorBase& it, const char* name = "value") {
        FIValue out;
        it.GetAttribute(Text(name), out);
        return Shown(out);
    }
    Walk Begin() const { return Walk::Adopt(items_->MakeIterator()); }
};

TEST_F(ItemWalk, begins_before_the_first_item) {
    const Walk it = Begin();
    EXPECT_FALSE(it->IsValid());
    EXPECT_EQ(nullptr, it->Item());
    EXPECT_TRUE(it->AtFirst());
    EXPECT_FALSE(it->AtEnd());
    EXPECT_EQ("(NULL)", KeyOf(*it));
    EXPECT_TRUE(it->Next());
    EXPECT_EQ("Temperature", KeyOf(*it));
}

TEST_F(ItemWalk, goes_forward_and_back) {
    const Walk it = Begin();
    EXPECT_TRUE(it->First());
    EXPECT_TRUE(it->IsValid());
    EXPECT_TRUE(it->AtFirst());
    EXPECT_EQ(items_->ItemAt(0), it->Item());
    EXPECT_TRUE(it->Next());
    EXPECT_FALSE(it->AtFirst());
    EXPECT_TRUE(it->Next());
    EXPECT_EQ("Comp.Frac", KeyOf(*it));
    EXPECT_FALSE(it->AtEnd());
    EXPECT_FALSE(it->Next());
    EXPECT_TRUE(it->AtEnd());
    EXPECT_FALSE(it->IsValid());
    EXPECT_FALSE(it->Next());
    // From past the end back to the last.
    EXPECT_TRUE(it->Previous());
    EXPECT_EQ(items_->ItemAt(2), it->Item());
    EXPECT_TRUE(it->Previous());
    EXPECT_TRUE(it->Previous());
    EXPECT_FALSE(it->Previous());
    EXPECT_FALSE(it->AtEnd());
    EXPECT_TRUE(it->Next());
    EXPECT_EQ(items_->ItemAt(0), it->Item());
    EXPECT_TRUE(it->Last());
    EXPECT_EQ(items_->ItemAt(2), it->Item());
}

TEST_F(ItemWalk, of_nothing_stands_nowhere) {
    items_->Clear();
    const Walk it = Begin();
    EXPECT_FALSE(it->First());
    EXPECT_TRUE(it->AtEnd());
    EXPECT_FALSE(it->Last());
    EXPECT_FALSE(it->Previous());
    EXPECT_FALSE(it->Next());
    EXPECT_TRUE(it->AtFirst());
}

TEST_F(ItemWalk, goes_on_behind_an_item_that_was_removed_below_it) {
    const Walk it = On(1);
    EXPECT_TRUE(items_->RemoveAt(1));
    EXPECT_FALSE(it->IsValid());
    EXPECT_EQ(kNothingRead, Read(*it));
    const Walk other = On(1);
    EXPECT_TRUE(it->Next());
    EXPECT_EQ(other->Item(), it->Item());
    EXPECT_TRUE(it->Previous());
    EXPECT_EQ("Temperature", KeyOf(*it));
    EXPECT_TRUE(it->Next());
    EXPECT_TRUE(items_->RemoveAt(1));
    EXPECT_TRUE(it->AtEnd());
    items_->Clear();
    EXPECT_FALSE(it->Previous());
    EXPECT_FALSE(it->Next());
}

TEST_F(ItemWalk, knows_its_collection) {
    EXPECT_EQ(items_.Get(), Begin()->Collection());
}

TEST_F(ItemWalk, reads_the_node_of_the_item) {
    const Walk it = On(2);
    EXPECT_EQ("6", Read(*it));
    FIValue name;
    it->GetName(name);
    EXPECT_EQ("Comp.Frac", Shown(name));
    EXPECT_EQ("(NULL)", Read(*it, "nothing of this name"));
    EXPECT_TRUE(it->IsContainer());
    Variable(1, 2).container = false;
    EXPECT_FALSE(it->IsContainer());
}

TEST_F(ItemWalk, past_the_last_reads_and_stores_give_their_texts) {
    const Walk it = Begin();
    EXPECT_TRUE(it->Last());
    EXPECT_FALSE(it->Next());
    EXPECT_EQ(kNothingRead, Read(*it));
    const FIValue one = FIValue::OfInt(1);
    const FIValue unit("K");
    FIValue out;
    it->SetAttribute(Text("value"), one, 0, out);
    EXPECT_EQ(kNothingWritten, Shown(out));
    using Store = void (FIEntry::*)(const FIValue&, int, FIValue&);
    for (Store store : {&FIEntry::SetValue, &FIEntry::SetSpecValue}) {
        out.Clear();
        (*it.*store)(one, 0, out);
        EXPECT_EQ(kNothingWritten, Shown(out));
    }
    using StoreIn = void (FIEntry::*)(const FIValue&, const FIValue&, int, FIValue&);
    for (StoreIn store : {&FIEntry::SetValueInUnit, &FIEntry::SetSpecValueInUnit}) {
        out.Clear();
        (*it.*store)(one, unit, 0, out);
        EXPECT_EQ(kNothingWritten, Shown(out));
    }
    using Show = void (FIEntry::*)(const FIValue&, FIValue&);
    for (Show show : {&FIEntry::SetUnit, &FIEntry::SetSpecUnit}) {
        out.Clear();
        (*it.*show)(unit, out);
        EXPECT_EQ(kNothingWritten, Shown(out));
    }
    using ShowIn = void (FIEntry::*)(const FIValue&, const FIValue&, FIValue&);
    for (ShowIn show : {&FIEntry::SetDisplayUnit, &FIEntry::SetDisplaySpecUnit}) {
        out.Clear();
        (*it.*show)(unit, FIValue(), out);
        EXPECT_EQ(kNothingWritten, Shown(out));
    }
}

TEST_F(ItemWalk, without_a_node_is_the_shared_empty_entry) {
    const Walk it = Begin();
    FIValue out("left over");
    it->GetName(out);
    EXPECT_TRUE(out.IsNull());
    EXPECT_FALSE(it->IsContainer());
    EXPECT_EQ(EmptyContext(), it->GetContext());
    EXPECT_EQ(EmptyEntry()->GetAttributeSource(), it->GetAttributeSource());
    EXPECT_EQ(nullptr, it->GetNode());
    void* service = &out;
    EXPECT_FALSE(it->QueryService(1, &service));
    EXPECT_EQ(nullptr, service);
    EXPECT_EQ(0, it->GetCaps(1, 2));
    it->DoAction(out, 0, 0);
    EXPECT_EQ("Action is not valid", Shown(out));
    it->DoActionEx(out, 0, 0, 0, 0);
    EXPECT_EQ("Action not supported", Shown(out));
    FIErrorRecord record;
    it->DoCommand(0, record);
    EXPECT_EQ("Action is not supported", Shown(record.text));
}

TEST_F(ItemWalk, hands_out_what_is_below_the_node) {
    SelectedTree::Add("Feed");
    const Walk it = Begin();
    it->Last();
    const auto context = Ref<FIContext>::Adopt(it->GetContext());
    const auto children = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
    EXPECT_TRUE(children->SeekName(kFromFirst, "Pressure"));
    const auto source = Ref<FIAttributeSource>::Adopt(On(0)->GetAttributeSource());
    const auto rows = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    EXPECT_TRUE(rows->SeekName(kFromFirst, "value"));
}

TEST_F(ItemWalk, an_iterator_can_stand_on_it) {
    SelectedTree::Add("Feed");
    const Walk it = Begin();
    it->Last();
    const auto below = Ref<FIIterator>::Adopt(new FIIterator(it.Get(), false));
    EXPECT_TRUE(below->SeekPath(Text("Pressure")));
    FIValue value;
    below->GetAttribute(Text("value"), value);
    EXPECT_EQ("2", Shown(value));
}

TEST_F(ItemWalk, compares_with_other_entries_by_the_node) {
    const Walk pressure = On(1);
    const Walk same = On(1);
    EXPECT_EQ(0, pressure->Compare(*same));
    const Walk temperature = On(0);
    EXPECT_GT(0, pressure->Compare(*temperature));
    EXPECT_LT(0, temperature->Compare(*pressure));
}

TEST_F(ItemWalk, passes_subscriptions_and_holds_to_the_node) {
    const Walk it = On(0);
    const auto callback = [](void*, int) {};
    EXPECT_FALSE(it->Subscribe(this, kValueChanged, callback));
    Variable(0, 0).can_notify = true;
    EXPECT_TRUE(it->Subscribe(this, kValueChanged, callback));
    EXPECT_TRUE(it->Unsubscribe(this, kValueChanged));
    EXPECT_FALSE(it->Unsubscribe(this, kValueChanged));
    EXPECT_FALSE(it->CanHold());
    Variable(0, 0).can_hold = true;
    EXPECT_TRUE(it->CanHold());
    it->BeginBatch();
    it->EndBatch(0);
    EXPECT_EQ(Words({"hold", "batch"}), Variable(0, 0).log);
}

TEST_F(ItemWalk, gives_a_reference_to_the_node_of_the_receivers_own) {
    const auto node = Ref<FIReferenceBase>::Adopt(On(1)->GetNode());
    ASSERT_TRUE(node);
    FIValue value;
    node->GetAttribute(Text("value"), value);
    EXPECT_EQ("2", Shown(value));
    node->SetDisplayUnit(Text("bar"), FIValue(), value);
    EXPECT_EQ(std::string::npos, Xml().find("uom"));
    items_->Clear();
    node->GetPath(value);
    EXPECT_EQ("Top.Feed.Pressure", Shown(value));
}

TEST_F(ItemWalk, writes_paths_as_they_are_sought) {
    EXPECT_EQ(Words({"Feed.Temperature", "Feed.Pressure", "Product.\"Comp.Frac\""}), Paths());
    for (const std::string& path : Paths()) EXPECT_TRUE(top_.Iterate()->SeekPath(Text(path)));
}

}  // namespace

}  // namespace fixtop
