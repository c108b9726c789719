// SPDX-License-Identifier: Apache-2.0
// Every member of every interface, called at its place in the object's table as a client does that
// was compiled with no header of these: it knows places and arguments alone.

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "automation/collection.h"
#include "automation/fake_collection.h"
#include "automation/objects.h"
#include "automation/script_nodes.h"

namespace fixtop {

namespace {

const char* C(const char* text) {
    return text;
}

// What a member hands out as its last argument.
template <class... Arguments>
void* ObjectAt(void* object, int slot, Arguments... arguments) {
    void* out = nullptr;
    EXPECT_EQ(0, CallSlot(object, slot, arguments..., &out)) << slot;
    EXPECT_NE(nullptr, out) << slot;
    return out;
}

template <class... Arguments>
std::string TextAt(void* object, int slot, Arguments... arguments) {
    auto* const text = static_cast<char*>(ObjectAt(object, slot, arguments...));
    const std::string taken = text ? text : "(null)";
    FreeAsClient(text);
    return taken;
}

template <class T, class... Arguments>
T NumberAt(void* object, int slot, Arguments... arguments) {
    T number = T();
    EXPECT_EQ(0, CallSlot(object, slot, arguments..., &number)) << slot;
    return number;
}

// A store that is taken hands out no message.
template <class... Arguments>
void StoreAt(void* object, int slot, Arguments... arguments) {
    char* error = NoPointer<char>();
    EXPECT_EQ(0, CallSlot(object, slot, arguments..., &error)) << slot;
    EXPECT_EQ(nullptr, error) << slot;
}

// The caller had the only reference.
void Drop(void* object) {
    EXPECT_EQ(2, CallSlot(object, 1));
    EXPECT_EQ(1, CallSlot(object, 2));
    EXPECT_EQ(0, CallSlot(object, 2));
}

class Slots : public testing::Test {
 protected:
    Slots() {
        feed_.Set("type", "Object(QSIMaterialStream)").Set("value", 12.5).Set("id", "Feed");
        feed_.Add("One").Set("id", "One").Set("value", 1);
        feed_.Add("Two").Set("id", "Two").Set("value", 2);
        node_ = ChildOf(*NodeAt(root_), "Feed");
        v_node_ = VNodeAt(feed_);
    }
    // The values of a collection, through its own slot.
    static std::vector<double> Values(void* collection) {
        std::int32_t count = 99;
        double* values = nullptr;
        EXPECT_EQ(0, CallSlot(collection, 9, &count, &values));
        std::vector<double> read(values, values + count);
        FreeAsClient(values);
        return read;
    }

    ScriptNode root_{"Root"};
    ScriptNode& feed_ = root_.Add("Feed");
    Ref<IQSINode> node_;
    Ref<IQSVNode> v_node_;
};

TEST_F(Slots, node_and_v_node_have_the_same_first_members) {
    struct Case {
        void* node;
        std::string above;
    };
    for (const Case& each : {Case{node_.Get(), "Root."}, Case{v_node_.Get(), ""}}) {
        void* const node = each.node;
        void* const child = ObjectAt(node, 3, C("One"));
        EXPECT_EQ(each.above + "Feed.One", TextAt(child, 7));
        void* const children = ObjectAt(node, 4);
        EXPECT_EQ("One", TextAt(children, 4));
        void* const value = ObjectAt(node, 5, C("value"));
        EXPECT_EQ("12.5", TextAt(value, 5));
        void* const rows = ObjectAt(node, 6);
        EXPECT_FALSE(NumberAt<bool>(rows, 9));
        EXPECT_EQ(each.above + "Feed", TextAt(node, 7));
        void* const parent = ObjectAt(child, 8);
        EXPECT_EQ(each.above + "Feed", TextAt(parent, 7));
        void* const collection = ObjectAt(node, 9);
        EXPECT_EQ(std::vector<double>({12.5}), Values(collection));
        void* const matches = ObjectAt(node, 10, C("*"));
        EXPECT_EQ(std::vector<double>({1, 2}), Values(matches));
        void* document = node;
        EXPECT_EQ(kResultNoInterface, CallSlot(node, 11, node, &document));
        EXPECT_EQ(nullptr, document);
        EXPECT_EQ(0, CallSlot(node, 12, C("which"), C("Two")));
        void* const two = ObjectAt(node, 3, C("%which"));
        EXPECT_EQ(each.above + "Feed.Two", TextAt(two, 13));
        EXPECT_EQ("QSIMaterialStream", TextAt(node, 14));
        for (void* made : {child, children, value, rows, parent, collection, matches, two}) {
            Drop(made);
        }
    }
}

TEST_F(Slots, reads_and_stores_of_v_node) {
    void* const node = v_node_.Get();
    EXPECT_EQ(12, NumberAt<std::int32_t>(node, 15, C("value")));
    EXPECT_EQ(12.5, NumberAt<double>(node, 16, C("value")));
    EXPECT_EQ("12.5", TextAt(node, 17, C("value")));
    EXPECT_TRUE(NumberAt<bool>(node, 18, C("value")));
    StoreAt(node, 19, C("int"), std::int32_t{7});
    StoreAt(node, 20, C("real"), 2.25);
    StoreAt(node, 21, C("text"), C("word"));
    StoreAt(node, 22, C("bool"), true);
    EXPECT_EQ("7 2.25 word 1", ReadOf(*v_node_, "int") + " " + ReadOf(*v_node_, "real") + " " +
                                   ReadOf(*v_node_, "text") + " " + ReadOf(*v_node_, "bool"));
    void* const second = ObjectAt(node, 23, std::int32_t{1});
    EXPECT_EQ("Feed.Two", TextAt(second, 7));
    Drop(second);
    EXPECT_EQ(2, NumberAt<std::int32_t>(node, 24));
    feed_.keys = {feed_.children[1]};
    EXPECT_EQ(1, NumberAt<std::int32_t>(node, 25)) << "the value 2";
    char key[8] = "xxxxxxx";
    EXPECT_EQ(0, CallSlot(node, 26, std::int32_t{8}, static_cast<char*>(key)));
    EXPECT_STREQ("2", key);
    EXPECT_TRUE(NumberAt<bool>(node, 27));
    EXPECT_TRUE(NumberAt<bool>(node, 28));
    const char* const names[] = {"int", "text"};
    Variant values[2];
    const char* const* const first_name = names;
    EXPECT_EQ(0, CallSlot(node, 29, std::int32_t{2}, first_name, static_cast<Variant*>(values)));
    EXPECT_EQ(7, values[0].number);
    EXPECT_STREQ("word", values[1].text);
    values[0].number = 8;
    const Variant* const first_value = values;
    StoreAt(node, 30, std::int32_t{2}, first_name, first_value);
    EXPECT_EQ("8", ReadOf(*v_node_, "int"));
    FreeAsClient(values[1].text);
}

TEST_F(Slots, units_of_v_node) {
    std::string log;
    feed_.on_write = [&](FIVarSet*, const std::string& name) { log += name + ";"; };
    const auto logged = [&] { return std::exchange(log, ""); };
    void* const node = v_node_.Get();
    EXPECT_EQ(12.5, NumberAt<double>(node, 31, C("K")));
    EXPECT_EQ("uom;", logged());
    StoreAt(node, 32, 1.5, C("F"));
    EXPECT_EQ("uom;value;", logged());
    StoreAt(node, 33, 2.5);
    EXPECT_EQ("spec_value;", logged());
    StoreAt(node, 34, 3.5, C("R"));
    EXPECT_EQ("spec_uom;spec_value;", logged());
    // Entries that have no units of their own refuse one.
    char* error = nullptr;
    EXPECT_EQ(kResultFalse, CallSlot(node, 35, C("K"), &error));
    EXPECT_STREQ("Not Supported", error);
    FreeAsClient(error);
    EXPECT_EQ(kResultFalse, CallSlot(node, 36, C("K"), &error));
    EXPECT_STREQ("Not Supported", error);
    FreeAsClient(error);
    EXPECT_EQ("", logged());
    StoreAt(node, 37, C("bar"), C(""));
    EXPECT_EQ("uom;", logged());
    StoreAt(node, 38, C("atm"), C(""));
    EXPECT_EQ("spec_uom;", logged());
}

TEST_F(Slots, attribute) {
    void* const attribute = ObjectAt(node_.Get(), 5, C("value"));
    EXPECT_EQ(2, NumberAt<std::int32_t>(attribute, 3));
    double real = 0;
    EXPECT_EQ(0, CallSlot(attribute, 4, std::int32_t{2}, std::int32_t{8}, &real));
    EXPECT_EQ(12.5, real);
    EXPECT_EQ("12.5", TextAt(attribute, 5));
    EXPECT_EQ(12, NumberAt<std::int32_t>(attribute, 6));
    EXPECT_EQ(12.5, NumberAt<double>(attribute, 7));
    Drop(attribute);
}

TEST_F(Slots, walk_over_attributes) {
    void* const rows = ObjectAt(node_.Get(), 6);
    char name[8] = "xxxxxxx";
    EXPECT_EQ(0, CallSlot(rows, 3, std::int32_t{4}, static_cast<char*>(name)));
    EXPECT_STREQ("typ", name);
    EXPECT_EQ("type", TextAt(rows, 4));
    EXPECT_EQ(1, NumberAt<std::int32_t>(rows, 6, std::int32_t{1}));
    void* const value = ObjectAt(rows, 5);
    EXPECT_EQ("12.5", TextAt(value, 5));
    Drop(value);
    EXPECT_EQ(0, CallSlot(rows, 7));
    EXPECT_EQ("type", TextAt(rows, 4));
    EXPECT_FALSE(NumberAt<bool>(rows, 9));
    EXPECT_EQ(0, CallSlot(rows, 8));
    EXPECT_TRUE(NumberAt<bool>(rows, 9));
    Drop(rows);
}

TEST_F(Slots, walk_over_children) {
    void* const children = ObjectAt(node_.Get(), 4);
    char name[8] = "xxxxxxx";
    EXPECT_EQ(0, CallSlot(children, 3, std::int32_t{3}, static_cast<char*>(name)));
    EXPECT_STREQ("On", name);
    EXPECT_EQ(1, NumberAt<std::int32_t>(children, 6, std::int32_t{1}));
    EXPECT_EQ("Two", TextAt(children, 4));
    void* const two = ObjectAt(children, 5);
    EXPECT_EQ("Root.Feed.Two", TextAt(two, 7));
    Drop(two);
    EXPECT_EQ(0, CallSlot(children, 7));
    EXPECT_EQ("One", TextAt(children, 4));
    EXPECT_EQ(0, CallSlot(children, 8));
    EXPECT_TRUE(NumberAt<bool>(children, 9));
    EXPECT_EQ(0, CallSlot(children, 10));
    EXPECT_TRUE(NumberAt<bool>(children, 9));
    Drop(children);
}

TEST_F(Slots, collection) {
    void* const collection = ObjectAt(node_.Get(), 10, C("One"));
    void* const walk = ObjectAt(collection, 3);
    EXPECT_EQ(0, CallSlot(collection, 4, node_.Get()));
    void* const two = ObjectAt(node_.Get(), 3, C("Two"));
    void* const value = ObjectAt(two, 5, C("value"));
    EXPECT_EQ(0, CallSlot(collection, 5, value));
    EXPECT_EQ(std::vector<double>({1, 12.5, 2}), Values(collection));
    const char* const texts[] = {"4"};
    const std::int32_t ints[] = {5, 6};
    const double reals[] = {7.5, 8.5, 9.5};
    const char* const* const first_text = texts;
    EXPECT_EQ(0, CallSlot(collection, 6, std::int32_t{1}, first_text, C(nullptr)));
    EXPECT_EQ(std::vector<double>({4, 12.5, 2}), Values(collection));
    EXPECT_EQ(0, CallSlot(collection, 7, std::int32_t{2}, &ints[0], C(nullptr)));
    EXPECT_EQ(std::vector<double>({5, 6, 2}), Values(collection));
    EXPECT_EQ(0, CallSlot(collection, 8, std::int32_t{3}, &reals[0], C(nullptr)));
    auto variant = NumberAt<Variant>(collection, 10);
    EXPECT_EQ(Variant::kRealArray, variant.type);
    EXPECT_EQ(std::vector<double>({7.5, 8.5, 9.5}), TakeReals(variant));
    EXPECT_EQ(0u, TextAt(collection, 11).find("<?xml version=\"1.0\" ?>\n<CollectionBackup>\n"));
    void* const point = ObjectAt(collection, 12);
    for (void* each : {two, value, walk, point, collection}) Drop(each);
}

TEST_F(Slots, walk_over_items) {
    void* const collection = ObjectAt(node_.Get(), 10, C("*"));
    void* const items = ObjectAt(collection, 3);
    EXPECT_EQ(0, CallSlot(items, 7, std::int32_t{2}));
    char id[8] = "xxxxxxx";
    EXPECT_EQ(0, CallSlot(items, 3, std::int32_t{3}, static_cast<char*>(id)));
    EXPECT_STREQ("Tw", id);
    EXPECT_EQ("Two", TextAt(items, 4));
    void* const node = ObjectAt(items, 5);
    EXPECT_EQ("Root.Feed.Two", TextAt(node, 7));
    EXPECT_FALSE(NumberAt<bool>(items, 6));
    EXPECT_EQ(0, CallSlot(items, 8));
    EXPECT_EQ("One", TextAt(items, 4));
    EXPECT_EQ(0, CallSlot(items, 9));
    EXPECT_TRUE(NumberAt<bool>(items, 6));
    EXPECT_EQ(0, CallSlot(items, 10, node_.Get()));
    void* const of_root = ObjectAt(NodeAt(root_.Set("value", 3)).Get(), 5, C("value"));
    EXPECT_EQ(0, CallSlot(items, 11, of_root));
    EXPECT_EQ(std::vector<double>({1, 2, 12.5, 3}), Values(collection));
    EXPECT_EQ(0, CallSlot(items, 8));
    void* const value = ObjectAt(items, 12, C("value"));
    EXPECT_EQ("1", TextAt(value, 5));
    for (void* each : {node, of_root, value, items, collection}) Drop(each);
}

// A sink, and the point where it is announced: the client's table is called by its places as well.
class CalledSink final : public IQSISink {
 public:
    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId&, void** out) override {
        *out = nullptr;
        return kResultNoInterface;
    }
    std::uint32_t FIXTOP_MEMBER AddRef() override { return ++references; }
    std::uint32_t FIXTOP_MEMBER Release() override { return --references; }
    HRESULT FIXTOP_MEMBER Invoke(std::int32_t event, const Variant& detail) override {
        heard.push_back(event);
        EXPECT_EQ(Variant::kInt, detail.type);
        EXPECT_EQ(0, detail.number);
        return kResultFail;
    }

    std::uint32_t references = 1;
    std::vector<std::int32_t> heard;
};

TEST_F(Slots, connection_point) {
    const auto fake = Ref<FakeCollection>::Adopt(new FakeCollection);
    const auto collection =
        Ref<IQSICollection>::Adopt(new CQSICollection(Ref<FICollectionBase>::Share(fake.Get())));
    EXPECT_EQ(kResultOk, collection->AddNode(node_.Get()));
    void* const point = ObjectAt(collection.Get(), 12);
    CalledSink sink;
    const auto cookie = NumberAt<std::uint32_t>(point, 3, static_cast<void*>(&sink));
    EXPECT_EQ(2u, sink.references);
    fake->Change(0);
    EXPECT_EQ(std::vector<std::int32_t>({1}), sink.heard);
    EXPECT_EQ(0, CallSlot(point, 4, cookie));
    EXPECT_EQ(1u, sink.references);
    fake->Change(0);
    EXPECT_EQ(1u, sink.heard.size());
    Drop(point);
}

}  // namespace

}  // namespace fixtop
