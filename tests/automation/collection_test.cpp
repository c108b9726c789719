// SPDX-License-Identifier: Apache-2.0
#include "automation/collection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>

#include "automation/attribute.h"
#include "automation/fake_collection.h"
#include "automation/objects.h"
#include "automation/script_nodes.h"

namespace fixtop {

namespace {

class QsiCollection : public testing::Test {
 protected:
    QsiCollection() {
        for (const char* name : {"One", "Two", "Three"}) {
            root_.Add(name).Set("id", name).Set("value", 1);
        }
    }
    ~QsiCollection() override {
        collection_.Reset();
        EXPECT_EQ(1, FakeCollection::alive) << "only the test holds it";
    }
    Ref<IQSINode> Node(const char* path) { return ChildOf(*NodeAt(root_), path); }
    void AddAll() {
        for (const char* name : {"One", "Two", "Three"}) {
            EXPECT_EQ(kResultOk, collection_->AddNode(Node(name).Get()));
        }
    }
    Ref<IQSICollectionIterator> Items() {
        return Take<IQSICollectionIterator>(
            [&](IQSICollectionIterator** out) { return collection_->GetIterator(out); });
    }
    static std::string Id(IQSICollectionIterator& it) {
        return TakeText([&](char** out) { return it.GetId(out); });
    }
    std::string Values() {
        std::string all;
        for (const auto& item : fake_->items) all += item->value.ToText() + ";";
        return all;
    }

    ScriptNode root_{"Root"};
    Ref<FakeCollection> fake_ = Ref<FakeCollection>::Adopt(new FakeCollection);
    Ref<IQSICollection> collection_ =
        Ref<IQSICollection>::Adopt(new CQSICollection(Ref<FICollectionBase>::Share(fake_.Get())));
};

// An object of others, which answers as it is told.
class Stranger final : public IUnknown {
 public:
    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId&, void** out) override {
        *out = nullptr;
        return answer;
    }
    std::uint32_t FIXTOP_MEMBER AddRef() override { return ++references; }
    std::uint32_t FIXTOP_MEMBER Release() override { return --references; }

    HRESULT answer = kResultNoInterface;
    std::uint32_t references = 1;
};

TEST_F(QsiCollection, nodes_of_both_families_are_added) {
    EXPECT_EQ(kResultOk, collection_->AddNode(Node("Two").Get()));
    const auto v = VNodeAt(root_);
    EXPECT_EQ(kResultOk, collection_->AddNode(v.Get()));
    EXPECT_EQ(1u, CountOf(*v)) << "the object is not kept";
    ASSERT_EQ(2, fake_->Count());
    const auto items = Items();
    EXPECT_EQ(kResultOk, items->Reset());
    EXPECT_EQ("Two", Id(*items));
}

TEST_F(QsiCollection, attribute_adds_the_node_that_it_was_read_from) {
    const auto two = Node("Two");
    const auto value =
        Take<IQSIAttribute>([&](IQSIAttribute** out) { return two->GetAttribute("value", out); });
    EXPECT_EQ(kResultOk, collection_->AddAttribute(value.Get()));
    EXPECT_EQ(1u, CountOf(*value));
    const auto items = Items();
    EXPECT_EQ(kResultOk, items->Reset());
    EXPECT_EQ("Two", Id(*items));
    EXPECT_EQ(kResultOk, items->AddAttribute(value.Get()));
    EXPECT_EQ(2, fake_->Count());
}

TEST_F(QsiCollection, row_of_an_attribute_walk_adds_its_node) {
    const auto rows = Take<IQSIAttributeIterator>(
        [&](IQSIAttributeIterator** out) { return Node("Three")->GetAttributes(out); });
    const auto row =
        Take<IQSIAttribute>([&](IQSIAttribute** out) { return rows->GetAttribute(out); });
    EXPECT_EQ(kResultOk, collection_->AddAttribute(row.Get()));
    EXPECT_EQ(1, fake_->Count());
}

TEST_F(QsiCollection, what_an_argument_answers_is_answered) {
    Stranger stranger;
    const auto value = Ref<IQSIAttribute>::Adopt(new CQSIAttribute(FIValue("x"), {}));
    EXPECT_EQ(kResultNoInterface, collection_->AddNode(&stranger));
    EXPECT_EQ(kResultNoInterface, collection_->AddNode(value.Get())) << "no node";
    EXPECT_EQ(kResultNoInterface, collection_->AddAttribute(value.Get())) << "read from none";
    EXPECT_EQ(kResultNoInterface, collection_->AddAttribute(Node("One").Get()));
    stranger.answer = kResultOutOfMemory;
    EXPECT_EQ(kResultOutOfMemory, collection_->AddAttribute(&stranger));
    stranger.answer = kResultOk;
    EXPECT_EQ(kResultNoInterface, collection_->AddNode(&stranger)) << "done, but null";
    EXPECT_EQ(1u, stranger.references);
    EXPECT_EQ(kResultPointer, collection_->AddNode(nullptr));
    EXPECT_EQ(kResultPointer, collection_->AddAttribute(nullptr));
    EXPECT_EQ(0, fake_->Count());
}

// Stands for a node, and lets go of the collection when it is asked for it.
class Hasty final : public IUnknown {
 public:
    Hasty(Ref<IQSINode> node, Ref<IQSICollection>& collection)
        : node_(std::move(node)), collection_(collection) {}
    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId& id, void** out) override {
        collection_.Reset();
        return node_->QueryInterface(id, out);
    }
    std::uint32_t FIXTOP_MEMBER AddRef() override { return node_->AddRef(); }
    std::uint32_t FIXTOP_MEMBER Release() override { return node_->Release(); }

 private:
    Ref<IQSINode> node_;
    Ref<IQSICollection>& collection_;
};

TEST_F(QsiCollection, collection_is_let_go_of_by_what_it_adds) {
    Hasty hasty(Node("Two"), collection_);
    EXPECT_EQ(kResultOk, collection_->AddNode(&hasty));
    EXPECT_FALSE(collection_);
    EXPECT_EQ(1, fake_->Count());
}

TEST_F(QsiCollection, node_that_is_none_any_more_is_not_added) {
    fake_->refuses_nodes = true;
    EXPECT_EQ(kResultFalse, collection_->AddNode(Node("One").Get()));
}

// ---- Values ----

TEST_F(QsiCollection, values_are_stored_by_kind) {
    AddAll();
    const std::int32_t numbers[] = {1, 2, 3};
    EXPECT_EQ(kResultOk, collection_->SetValueInts(3, numbers, nullptr));
    EXPECT_EQ("1;2;3;", Values());
    EXPECT_EQ(FIValue::kInt, fake_->items[0]->value.Kind());
    EXPECT_EQ("value", fake_->attribute_asked);
    EXPECT_EQ("(NULL)", fake_->unit_asked);
    const double reals[] = {1.5, 2.5, 3.5};
    EXPECT_EQ(kResultOk, collection_->SetValueReals(3, reals, "bar"));
    EXPECT_EQ("1.5;2.5;3.5;", Values());
    EXPECT_EQ(FIValue::kReal, fake_->items[0]->value.Kind());
    EXPECT_EQ("bar", fake_->unit_asked);
    const char* texts[] = {"a", nullptr, "c"};
    EXPECT_EQ(kResultOk, collection_->SetValueTexts(3, texts, nullptr));
    EXPECT_EQ("a;2.5;c;", Values()) << "null leaves an item as it is";
    EXPECT_EQ(3, fake_->stores) << "one batch each";
}

TEST_F(QsiCollection, stores_into_the_first_items_at_most_all) {
    AddAll();
    const std::int32_t numbers[] = {7, 8, 9, 10};
    EXPECT_EQ(kResultOk, collection_->SetValueInts(1, numbers, nullptr));
    EXPECT_EQ("7;;;", Values());
    EXPECT_EQ(kResultOk, collection_->SetValueInts(4, numbers, nullptr));
    EXPECT_EQ("7;8;9;", Values());
    EXPECT_EQ(kResultOk, collection_->SetValueInts(0, nullptr, nullptr));
    EXPECT_EQ(kResultFail, collection_->SetValueInts(-1, numbers, nullptr));
    EXPECT_EQ(kResultPointer, collection_->SetValueInts(1, nullptr, nullptr));
    EXPECT_EQ(kResultPointer, collection_->SetValueReals(1, nullptr, nullptr));
    EXPECT_EQ(kResultPointer, collection_->SetValueTexts(1, nullptr, nullptr));
    EXPECT_EQ("7;8;9;", Values());
}

TEST_F(QsiCollection, refused_value_is_told) {
    AddAll();
    fake_->items[1]->refuses = true;
    const std::int32_t numbers[] = {7, 8, 9};
    EXPECT_EQ(kResultFalse, collection_->SetValueInts(3, numbers, nullptr));
    EXPECT_EQ("7;;9;", Values()) << "the others are stored";
}

TEST_F(QsiCollection, value_whose_item_leaves_before_its_turn_is_not_told_as_stored) {
    AddAll();
    fake_->items[1]->leaves = true;
    const std::int32_t numbers[] = {7, 8, 9};
    EXPECT_EQ(kResultFalse, collection_->SetValueInts(3, numbers, nullptr));
    EXPECT_EQ("7;;9;", Values());
}

TEST_F(QsiCollection, values_are_read_as_reals) {
    AddAll();
    fake_->items[0]->value = FIValue::OfReal(1.5);
    fake_->items[1]->value = FIValue("2.25 bar");
    std::int32_t count = 99;
    double* values = nullptr;
    ASSERT_EQ(kResultOk, collection_->GetValues(&count, &values));
    ASSERT_EQ(3, count);
    EXPECT_EQ(std::vector<double>({1.5, 2.25}), std::vector<double>(values, values + 2));
    EXPECT_TRUE(std::isnan(values[2])) << "nothing was read";
    FreeAsClient(values);
    Variant variant;
    ASSERT_EQ(kResultOk, collection_->GetValueVariant(&variant));
    EXPECT_EQ(Variant::kRealArray, variant.type);
    ASSERT_EQ(3, variant.count);
    const std::vector<double> reals = TakeReals(variant);
    ASSERT_EQ(3u, reals.size());
    EXPECT_EQ(2.25, reals[1]);
    EXPECT_TRUE(std::isnan(reals[2]));
}

// Nobody is to take them for zeros, nor store them as such.
TEST_F(QsiCollection, what_is_no_number_is_nan_and_is_not_stored_back) {
    AddAll();
    const FIValue none[] = {FIValue(), FIValue("Node deleted"), FIValue("bar 2")};
    for (std::size_t i = 0; i < 3; ++i) fake_->items[i]->value = none[i];
    std::int32_t count = 0;
    double* values = nullptr;
    ASSERT_EQ(kResultOk, collection_->GetValues(&count, &values));
    ASSERT_EQ(3, count);
    EXPECT_TRUE(std::isnan(values[0]) && std::isnan(values[1]) && std::isnan(values[2]));
    values[2] = 1.5;
    EXPECT_EQ(kResultOk, collection_->SetValueReals(3, values, nullptr));
    EXPECT_EQ(";Node deleted;1.5;", Values());
    FreeAsClient(values);
    const char* zeros[] = {"0", " -0.0 m", "0x0"};
    for (std::size_t i = 0; i < 3; ++i) fake_->items[i]->value = FIValue(zeros[i]);
    ASSERT_EQ(kResultOk, collection_->GetValues(&count, &values));
    EXPECT_EQ(std::vector<double>({0, 0, 0}), std::vector<double>(values, values + count));
    FreeAsClient(values);
}

TEST_F(QsiCollection, empty_collection_has_no_values_and_allocates_nothing) {
    std::int32_t count = 99;
    double* values = NoPointer<double>();
    EXPECT_EQ(kResultOk, collection_->GetValues(&count, &values));
    EXPECT_EQ(0, count);
    EXPECT_EQ(nullptr, values);
    EXPECT_EQ("", fake_->attribute_asked) << "nothing was read";
    Variant variant;
    variant.count = 99;
    EXPECT_EQ(kResultOk, collection_->GetValueVariant(&variant));
    EXPECT_EQ(Variant::kRealArray, variant.type);
    EXPECT_EQ(0, variant.count);
    EXPECT_EQ(std::vector<double>(), TakeReals(variant));
}

TEST_F(QsiCollection, null_pointers_are_refused) {
    std::int32_t count = 99;
    double* values = NoPointer<double>();
    EXPECT_EQ(kResultPointer, collection_->GetValues(&count, nullptr));
    EXPECT_EQ(0, count);
    EXPECT_EQ(kResultPointer, collection_->GetValues(nullptr, &values));
    EXPECT_EQ(nullptr, values);
    EXPECT_EQ(kResultPointer, collection_->GetValueVariant(nullptr));
    EXPECT_EQ(kResultPointer, collection_->GetIterator(nullptr));
    EXPECT_EQ(kResultPointer, collection_->GetAsXml(nullptr));
    EXPECT_EQ(kResultPointer, collection_->GetConnectionPoints(nullptr));
}

TEST_F(QsiCollection, backup_form_is_handed_out) {
    EXPECT_EQ("<CollectionBackup>\n",
              TakeText([&](char** out) { return collection_->GetAsXml(out); }));
}

// ---- The walk over its items ----

TEST_F(QsiCollection, walk_begins_before_the_first) {
    AddAll();
    const auto items = Items();
    EXPECT_EQ(1u, CountOf(*items));
    EXPECT_EQ("No element under this node", Id(*items));
    EXPECT_EQ(kResultFalse, Refused<IQSINode>([&](IQSINode** out) { return items->GetNode(out); }));
    EXPECT_EQ(kResultOk, items->Move(1));
    EXPECT_EQ("One", Id(*items));
    EXPECT_EQ(kResultOk, items->Move(2));
    EXPECT_EQ("Three", Id(*items));
    EXPECT_EQ(kResultOk, items->Move(0));
    EXPECT_FALSE(TakeNumber<bool>([&](bool* out) { return items->AtEnd(out); }));
    EXPECT_EQ(kResultFalse, items->Move(1));
    EXPECT_TRUE(TakeNumber<bool>([&](bool* out) { return items->AtEnd(out); }));
    EXPECT_EQ("No element under this node", Id(*items));
}

TEST_F(QsiCollection, walk_back_before_the_first_is_refused) {
    AddAll();
    const auto items = Items();
    EXPECT_EQ(kResultOk, items->ToEnd());
    EXPECT_EQ(kResultOk, items->Move(-1)) << "from past the last to the last";
    EXPECT_EQ("Three", Id(*items));
    EXPECT_EQ(kResultOk, items->Move(-2));
    EXPECT_EQ("One", Id(*items));
    EXPECT_EQ(kResultFail, items->Move(-1));
    EXPECT_EQ(kResultOk, items->Reset());
    EXPECT_EQ("One", Id(*items));
}

TEST_F(QsiCollection, walk_over_nothing) {
    const auto items = Items();
    EXPECT_EQ(kResultFail, items->Reset());
    EXPECT_EQ(kResultOk, items->ToEnd());
    EXPECT_TRUE(TakeNumber<bool>([&](bool* out) { return items->AtEnd(out); }));
    EXPECT_EQ(kResultOk, items->Move(0));
    EXPECT_EQ(kResultFalse, items->Move(1));
}

TEST_F(QsiCollection, id_is_cut_to_its_buffer) {
    AddAll();
    const auto items = Items();
    EXPECT_EQ(kResultOk, items->Move(3));
    char buffer[32];
    EXPECT_EQ(kResultOk, items->GetIdBuffer(sizeof buffer, buffer));
    EXPECT_STREQ("Three", buffer);
    EXPECT_EQ(kResultOk, items->GetIdBuffer(4, buffer));
    EXPECT_STREQ("Thr", buffer);
    EXPECT_EQ(kResultOk, items->ToEnd());
    EXPECT_EQ(kResultOk, items->GetIdBuffer(sizeof buffer, buffer));
    EXPECT_STREQ("No element under this node", buffer);
}

TEST_F(QsiCollection, items_hand_out_nodes_and_attributes) {
    AddAll();
    const auto items = Items();
    EXPECT_EQ(kResultOk, items->Move(2));
    const auto node = Take<IQSINode>([&](IQSINode** out) { return items->GetNode(out); });
    EXPECT_EQ("Root.Two", PathOf(*node));
    const auto value =
        Take<IQSIAttribute>([&](IQSIAttribute** out) { return items->GetValue("value", out); });
    EXPECT_EQ(1, TakeNumber<std::int32_t>([&](std::int32_t* out) { return value->GetInt(out); }));
    EXPECT_EQ(kResultFalse, Refused<IQSIAttribute>(
                                [&](IQSIAttribute** out) { return items->GetValue("nope", out); }));
    EXPECT_EQ(kResultOk, collection_->AddAttribute(value.Get())) << "it knows its node";
    fake_->items[1]->node.Reset();
    EXPECT_EQ(kResultFalse, Refused<IQSINode>([&](IQSINode** out) { return items->GetNode(out); }));
    const auto none =
        Take<IQSIAttribute>([&](IQSIAttribute** out) { return items->GetValue("value", out); });
    EXPECT_EQ("No element under this node",
              TakeText([&](char** out) { return none->GetString(out); }));
}

TEST_F(QsiCollection, walk_adds_to_its_collection_and_keeps_it) {
    AddAll();
    const auto items = Items();
    collection_.Reset();
    EXPECT_EQ(kResultOk, items->AddNode(Node("Two").Get()));
    EXPECT_EQ(4, fake_->Count());
    EXPECT_EQ(kResultNoInterface, items->AddAttribute(Node("Two").Get()));
    EXPECT_EQ(kResultPointer, items->AddNode(nullptr));
    EXPECT_EQ(kResultOk, items->Move(4));
    EXPECT_EQ("Two", Id(*items));
}

TEST_F(QsiCollection, what_a_walk_adds_comes_before_the_present_item) {
    const auto all = Take<IQSICollection>(
        [&](IQSICollection** out) { return NodeAt(root_)->GetAltPath("*", out); });
    ScriptNode& four = root_.Add("Four").Set("id", "Four").Set("value", 4);
    root_.Set("value", 9).Set("id", "Root");
    const auto items = Take<IQSICollectionIterator>(
        [&](IQSICollectionIterator** out) { return all->GetIterator(out); });
    EXPECT_EQ(kResultOk, items->Move(2));
    EXPECT_EQ(kResultOk, items->AddNode(Node("Four").Get()));
    EXPECT_EQ("Two", Id(*items)) << "it stays";
    EXPECT_EQ(kResultOk, items->Move(-1));
    EXPECT_EQ("Four", Id(*items));
    const auto value = Take<IQSIAttribute>(
        [&](IQSIAttribute** out) { return NodeAt(root_)->GetAttribute("value", out); });
    EXPECT_EQ(kResultOk, items->Reset());
    EXPECT_EQ(kResultOk, items->AddAttribute(value.Get()));
    EXPECT_EQ(kResultOk, items->AddNode(Node("Three").Get())) << "which is an item already";
    std::string ids;
    for (HRESULT on = items->Reset(); on == kResultOk; on = items->Move(1)) ids += Id(*items) + ";";
    EXPECT_EQ("Root;One;Four;Two;Three;", ids);
    four.Add("Below").Set("id", "Below");
    EXPECT_EQ(kResultOk, items->AddNode(Node("Four.Below").Get())) << "past the last";
    EXPECT_EQ(kResultOk, items->Move(-1));
    EXPECT_EQ("Below", Id(*items));
}

// As a sink may that hears from the read that a node is gone.
TEST_F(QsiCollection, walk_is_let_go_of_in_the_middle_of_its_read) {
    AddAll();
    using Read = std::function<HRESULT(IQSICollectionIterator&)>;
    char buffer[8];
    char* id = nullptr;
    IQSIAttribute* value = nullptr;
    const Read reads[] = {
        [&](IQSICollectionIterator& items) { return items.GetIdBuffer(sizeof buffer, buffer); },
        [&](IQSICollectionIterator& items) { return items.GetId(&id); },
        [&](IQSICollectionIterator& items) { return items.GetValue("value", &value); }};
    for (const Read& read : reads) {
        auto items = Items();
        EXPECT_EQ(kResultOk, items->Reset());
        bool was_let_go = false;
        root_.children[0]->on_read = [&](FIVarSet*, const std::string&) {
            was_let_go = items && CountOf(*items) == 2;
            items.Reset();
        };
        EXPECT_EQ(kResultOk, read(*items));
        EXPECT_TRUE(was_let_go) << "held by the call, and by the test";
        root_.children[0]->on_read = {};
    }
    EXPECT_STREQ("One", buffer);
    EXPECT_STREQ("One", id);
    FreeAsClient(id);
    Ref<IQSIAttribute>::Adopt(value);
}

TEST_F(QsiCollection, walk_refuses_null_pointers) {
    const auto items = Items();
    EXPECT_EQ(kResultPointer, items->GetIdBuffer(4, nullptr));
    EXPECT_EQ(kResultPointer, items->GetId(nullptr));
    EXPECT_EQ(kResultPointer, items->GetNode(nullptr));
    EXPECT_EQ(kResultPointer, items->AtEnd(nullptr));
    EXPECT_EQ(kResultPointer, items->GetValue("id", nullptr));
    EXPECT_EQ(kResultPointer, Refused<IQSIAttribute>([&](IQSIAttribute** out) {
                  return items->GetValue(nullptr, out);
              }));
}

}  // namespace

}  // namespace fixtop
