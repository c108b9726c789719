// SPDX-License-Identifier: Apache-2.0
#include "automation/v_node.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <utility>

#include "automation/objects.h"
#include "automation/script_nodes.h"
#include "fixtop/var_set.h"
#include "framework/nodes/empties.h"

namespace fixtop {

namespace {

const char kLong[] = "a text of more than nineteen bytes";

class QsvNode : public testing::Test {
 protected:
    QsvNode() {
        feed_.Set("int", 7).Set("real", -2.75).Set("text", "3.5 bar").Set("word", "none");
        feed_.Set("zero", 0).Set("long", kLong).Set("value", 25.5);
        feed_.Add("One");
        feed_.Add("Two");
        leaf_.container = false;
    }
    template <class T>
    T Read(HRESULT (FIXTOP_MEMBER IQSVNode::*member)(const char*, T*), const char* name) {
        return TakeNumber<T>([&](T* out) { return (node_.Get()->*member)(name, out); });
    }
    template <class T>
    T Fact(IQSVNode& node, HRESULT (FIXTOP_MEMBER IQSVNode::*member)(T*)) {
        return TakeNumber<T>([&](T* out) { return (node.*member)(out); });
    }

    ScriptNode feed_{"Feed"};
    ScriptNode leaf_{"Leaf"};
    Ref<IQSVNode> node_ = VNodeAt(feed_);
};

TEST_F(QsvNode, typed_reads_convert) {
    EXPECT_EQ(7, Read(&IQSVNode::GetInt, "int"));
    EXPECT_EQ(-2, Read(&IQSVNode::GetInt, "real"));
    EXPECT_EQ(3, Read(&IQSVNode::GetInt, "text"));
    EXPECT_EQ(0, Read(&IQSVNode::GetInt, "word"));
    EXPECT_EQ(7.0, Read(&IQSVNode::GetDouble, "int"));
    EXPECT_EQ(-2.75, Read(&IQSVNode::GetDouble, "real"));
    EXPECT_EQ(3.5, Read(&IQSVNode::GetDouble, "text"));
    EXPECT_EQ(0.0, Read(&IQSVNode::GetDouble, "word"));
    const auto text = [&](const char* name) {
        return TakeText([&](char** out) { return node_->GetString(name, out); });
    };
    EXPECT_EQ("7", text("int"));
    EXPECT_EQ("-2.75", text("real"));
    EXPECT_EQ("3.5 bar", text("text"));
    EXPECT_EQ(kLong, text("long"));
}

TEST_F(QsvNode, true_is_what_is_not_0) {
    EXPECT_TRUE(Read(&IQSVNode::GetBool, "int"));
    EXPECT_TRUE(Read(&IQSVNode::GetBool, "real"));
    EXPECT_TRUE(Read(&IQSVNode::GetBool, "text"));
    EXPECT_FALSE(Read(&IQSVNode::GetBool, "zero"));
    EXPECT_FALSE(Read(&IQSVNode::GetBool, "word"));
    feed_.Set("half", 0.5);
    EXPECT_TRUE(Read(&IQSVNode::GetBool, "half"));
}

TEST_F(QsvNode, read_without_a_value_is_none) {
    std::int32_t number = 99;
    double real = 99;
    bool is = true;
    EXPECT_EQ(kResultFalse, node_->GetInt("nope", &number));
    EXPECT_EQ(0, number);
    EXPECT_EQ(kResultFalse, node_->GetDouble("nope", &real));
    EXPECT_EQ(0.0, real);
    EXPECT_EQ(kResultFalse, node_->GetBool("nope", &is));
    EXPECT_FALSE(is);
    EXPECT_EQ(kResultFalse,
              Refused<char>([&](char** out) { return node_->GetString("nope", out); }));
}

TEST_F(QsvNode, node_that_is_gone_is_read_as_text_and_never_as_a_number) {
    for (const char* message : {"Node deleted", "Node invalid"}) {
        feed_.Set("value", message);
        std::int32_t number = 99;
        double real = 99;
        bool is = true;
        EXPECT_EQ(kResultFalse, node_->GetInt("value", &number)) << message;
        EXPECT_EQ(0, number);
        EXPECT_EQ(kResultFalse, node_->GetDouble("value", &real)) << message;
        EXPECT_EQ(0.0, real);
        EXPECT_EQ(kResultFalse, node_->GetBool("value", &is)) << message;
        EXPECT_FALSE(is);
        real = 99;
        EXPECT_EQ(kResultFalse, node_->GetDoubleInUnit("K", &real)) << message;
        EXPECT_EQ(0.0, real);
        EXPECT_FALSE(Fact(*node_, &IQSVNode::HasValue)) << message;
        EXPECT_EQ(message, TakeText([&](char** out) { return node_->GetString("value", out); }));
    }
}

TEST_F(QsvNode, stores_go_to_the_attribute_as_their_type) {
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetInt("a", 5, out); }));
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetDouble("b", 2.5, out); }));
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetString("c", "word", out); }));
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetBool("d", true, out); }));
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetBool("e", false, out); }));
    std::string stored;
    for (std::size_t i = feed_.attributes.size() - 5; i < feed_.attributes.size(); ++i) {
        const auto& [name, value] = feed_.attributes[i];
        stored += name + " " + FIValue::KindName(value.Kind()) + " " + value.ToText() + ";";
    }
    EXPECT_EQ("a INT 5;b REAL 2.5;c STRING word;d INT 1;e INT 0;", stored);
}

// An entry that refuses everything.
class Refusing final : public FIEntry {
 public:
    int AddRef() override { return ++references_; }
    int Release() override {
        const int left = --references_;
        if (left == 0) delete this;
        return left;
    }
    void GetName(FIValue& out) override { out.SetText("Refusing"); }
    void GetAttribute(const FIValue&, FIValue& out) override { out.Clear(); }
    FIAttributeSource* GetAttributeSource() override { return EmptyEntry()->GetAttributeSource(); }
    FIContext* GetContext() override { return EmptyContext(); }

 private:
    int references_ = 0;
};

TEST_F(QsvNode, refused_store_hands_out_the_message) {
    const auto top = Ref<FIEntry>::Share(new Refusing);
    auto place = Ref<FIIteratorBase>::Adopt(new FIIterator(top.Get(), false));
    const auto node =
        Ref<IQSVNode>::Adopt(static_cast<IQSVNode*>(CQSVNode::Make(std::move(place))));
    const std::string refused = "Not Supported";
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetInt("a", 5, out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetDouble("a", 5, out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetString("a", "x", out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetBool("a", true, out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetDoubleInUnit(1, "K", out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetSpecDouble(1, out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetSpecDoubleInUnit(1, "K", out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetUnit("K", out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetSpecUnit("K", out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetDisplayUnit("K", "", out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return node->SetDisplaySpecUnit("K", "", out); }));
    double value = 99;
    EXPECT_EQ(kResultFalse, node->GetDoubleInUnit("K", &value));
    EXPECT_EQ(0.0, value);
    const char* names[] = {"a", "b"};
    Variant values[2];
    values[1].type = Variant::kInt;
    EXPECT_EQ(refused,
              Stored([&](char** out) { return node->SetArrayValues(2, names, values, out); }));
}

// Notes what is stored, and refuses some of it.
class Picky final : public FIEntry {
 public:
    int AddRef() override { return 1; }
    int Release() override { return 1; }
    void GetName(FIValue& out) override { out.SetText("Picky"); }
    void GetAttribute(const FIValue&, FIValue& out) override { out.SetReal(7.5); }
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override {
        EXPECT_EQ(0, mode);
        Note(name.ToText(), value, out);
    }
    void SetUnit(const FIValue& unit, FIValue& out) override { Note("own", unit, out); }
    void SetSpecUnit(const FIValue& unit, FIValue& out) override { Note("own spec", unit, out); }
    FIAttributeSource* GetAttributeSource() override { return EmptyEntry()->GetAttributeSource(); }
    FIContext* GetContext() override { return EmptyContext(); }
    std::string Log() { return std::exchange(log_, ""); }

    std::set<std::string> refused;

 private:
    void Note(const std::string& name, const FIValue& value, FIValue& out) {
        log_ += name + "=" + (value.IsNull() ? "NULL" : value.ToText()) + ";";
        out.Clear();
        if (refused.contains(name)) out.SetText("no " + name);
    }

    std::string log_;
};

class PickyNode : public testing::Test {
 protected:
    Picky entry_;
    Ref<IQSVNode> node_ = Ref<IQSVNode>::Adopt(static_cast<IQSVNode*>(
        CQSVNode::Make(Ref<FIIteratorBase>::Adopt(new FIIterator(&entry_, false)))));
};

TEST_F(PickyNode, nothing_is_read_or_stored_in_a_unit_that_is_refused) {
    entry_.refused = {"uom", "spec_uom"};
    double value = 99;
    EXPECT_EQ(kResultFalse, node_->GetDoubleInUnit("K", &value));
    EXPECT_EQ(0.0, value);
    EXPECT_EQ("uom=K;", entry_.Log());
    EXPECT_EQ("no uom", Stored([&](char** out) { return node_->SetDoubleInUnit(1, "K", out); }));
    EXPECT_EQ("uom=K;", entry_.Log());
    EXPECT_EQ("no spec_uom",
              Stored([&](char** out) { return node_->SetSpecDoubleInUnit(1, "K", out); }));
    EXPECT_EQ("spec_uom=K;", entry_.Log());
}

TEST_F(PickyNode, units_of_the_node_itself_are_stored_each_in_its_place) {
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetUnit("K", out); }));
    EXPECT_EQ("own=K;", entry_.Log());
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetSpecUnit("F", out); }));
    EXPECT_EQ("own spec=F;", entry_.Log());
    entry_.refused = {"own", "own spec"};
    EXPECT_EQ("no own", Stored([&](char** out) { return node_->SetUnit("K", out); }));
    EXPECT_EQ("no own spec", Stored([&](char** out) { return node_->SetSpecUnit("F", out); }));
}

TEST_F(PickyNode, first_message_of_an_array_is_told_and_the_rest_is_stored) {
    entry_.refused = {"b", "d"};
    const char* names[] = {"a", "b", "c", "d", "e"};
    Variant values[5];
    for (int i : {0, 1, 3}) {
        values[i].type = Variant::kInt;
        values[i].number = i;
    }
    values[4].type = Variant::kNull;
    EXPECT_EQ("no b",
              Stored([&](char** out) { return node_->SetArrayValues(5, names, values, out); }));
    EXPECT_EQ("a=0;b=1;d=3;e=NULL;", entry_.Log()) << "what is kEmpty is not stored";
}

TEST_F(QsvNode, child_by_index) {
    const auto two = Take<IQSVNode>([&](IQSVNode** out) { return node_->GetChildByIndex(1, out); });
    EXPECT_EQ("Feed.Two", PathOf(*two));
    EXPECT_EQ(1u, CountOf(*two));
    for (const std::int32_t index : {-1, 2, 100, -2147483647 - 1}) {
        EXPECT_EQ(kResultFalse, Refused<IQSVNode>([&](IQSVNode** out) {
                      return node_->GetChildByIndex(index, out);
                  }))
            << index;
    }
}

TEST_F(QsvNode, nodes_that_it_leads_to_are_v_nodes) {
    const auto is_v = [](IQSINode& node) {
        void* out = nullptr;
        const bool is = node.QueryInterface(IQSVNode::kId, &out) == kResultOk;
        if (is) node.Release();
        return is;
    };
    EXPECT_TRUE(is_v(*ChildOf(*node_, "One")));
    EXPECT_TRUE(is_v(*Take<IQSINode>([&](IQSINode** out) { return node_->GetParent(out); })));
    const auto children =
        Take<IQSINodeIterator>([&](IQSINodeIterator** out) { return node_->GetChildren(out); });
    EXPECT_TRUE(is_v(*Take<IQSINode>([&](IQSINode** out) { return children->GetNode(out); })));
}

TEST_F(QsvNode, counts_children) {
    EXPECT_EQ(2, Fact(*node_, &IQSVNode::GetCount));
    EXPECT_EQ("Feed", PathOf(*node_));
    EXPECT_EQ(0, Fact(*VNodeAt(leaf_), &IQSVNode::GetCount));
    leaf_.Add("hidden below what is no container");
    EXPECT_EQ(0, Fact(*VNodeAt(leaf_), &IQSVNode::GetCount));
    ScriptNode empty("Empty");
    EXPECT_EQ(0, Fact(*VNodeAt(empty), &IQSVNode::GetCount));
}

TEST_F(QsvNode, container_and_value) {
    EXPECT_TRUE(Fact(*node_, &IQSVNode::IsContainer));
    EXPECT_TRUE(Fact(*node_, &IQSVNode::HasValue));
    EXPECT_FALSE(Fact(*VNodeAt(leaf_), &IQSVNode::IsContainer));
    EXPECT_FALSE(Fact(*VNodeAt(leaf_), &IQSVNode::HasValue));
}

TEST_F(QsvNode, key_has_a_length_and_fills_a_buffer) {
    ScriptNode key("Name"), number("Number");
    key.Set("value", "Raw Gas");
    number.Set("value", 12);
    feed_.keys = {&key, &number};
    EXPECT_EQ(11, Fact(*node_, &IQSVNode::GetKeyLength)) << "Raw Gas, 12";
    char buffer[16];
    EXPECT_EQ(kResultOk, node_->GetKey(sizeof buffer, buffer));
    EXPECT_STREQ("Raw Gas, 12", buffer);
    EXPECT_EQ(kResultOk, node_->GetKey(4, buffer));
    EXPECT_STREQ("Raw", buffer);
    buffer[0] = 'x';
    EXPECT_EQ(kResultOk, node_->GetKey(0, buffer));
    EXPECT_EQ('x', buffer[0]);
    EXPECT_EQ(0, Fact(*VNodeAt(leaf_), &IQSVNode::GetKeyLength));
    EXPECT_EQ(kResultOk, VNodeAt(leaf_)->GetKey(4, buffer));
    EXPECT_STREQ("", buffer);
}

TEST_F(QsvNode, array_of_values_is_read_one_by_one) {
    std::string read;
    feed_.on_read = [&](FIVarSet*, const std::string& name) { read += name + ";"; };
    const char* names[] = {"int", "real", "long"};
    Variant values[3];
    EXPECT_EQ(kResultOk, node_->GetArrayValues(3, names, values));
    EXPECT_EQ("int;real;long;", read);
    ASSERT_EQ(Variant::kInt, values[0].type);
    EXPECT_EQ(7, values[0].number);
    ASSERT_EQ(Variant::kReal, values[1].type);
    EXPECT_EQ(-2.75, values[1].real);
    ASSERT_EQ(Variant::kText, values[2].type);
    EXPECT_STREQ(kLong, values[2].text);
    FreeAsClient(values[2].text);
}

TEST_F(QsvNode, array_with_a_missing_value_says_so) {
    const char* names[] = {"nope", "int"};
    Variant values[2];
    EXPECT_EQ(kResultFalse, node_->GetArrayValues(2, names, values));
    EXPECT_EQ(Variant::kNull, values[0].type);
    EXPECT_EQ(7, values[1].number);
    EXPECT_EQ(kResultOk, node_->GetArrayValues(0, nullptr, nullptr));
    EXPECT_EQ(kResultFail, node_->GetArrayValues(-1, names, values));
}

TEST_F(QsvNode, array_of_values_is_stored_but_for_the_empty_ones) {
    char text[] = "word";
    Variant values[4];
    values[0].type = Variant::kInt;
    values[0].number = 5;
    values[2].type = Variant::kText;
    values[2].text = text;
    values[3].type = Variant::kReal;
    values[3].real = 1.25;
    const char* names[] = {"a", "b", "c", "d"};
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetArrayValues(4, names, values, out); }));
    EXPECT_EQ("5", ReadOf(*node_, "a"));
    EXPECT_EQ("(none)", ReadOf(*node_, "b"));
    EXPECT_EQ("word", ReadOf(*node_, "c"));
    EXPECT_EQ("1.25", ReadOf(*node_, "d"));
    EXPECT_EQ(kResultFail, Refused<char>([&](char** out) {
                  return node_->SetArrayValues(-1, names, values, out);
              }));
}

// What a store of a unit leaves is told by the tree; here it only has to arrive.
TEST_F(QsvNode, unit_forms_store_the_unit_first) {
    std::string log;
    feed_.on_write = [&](FIVarSet*, const std::string& name) { log += name + ";"; };
    feed_.on_read = [&](FIVarSet*, const std::string& name) { log += "read " + name + ";"; };
    const auto logged = [&] { return std::exchange(log, ""); };
    double value = 0;
    EXPECT_EQ(kResultOk, node_->GetDoubleInUnit("K", &value));
    EXPECT_EQ(25.5, value);
    EXPECT_EQ("uom;read value;", logged());
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetDoubleInUnit(1.5, "F", out); }));
    EXPECT_EQ("uom;value;", logged());
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetSpecDouble(2.5, out); }));
    EXPECT_EQ("spec_value;", logged());
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetSpecDoubleInUnit(3.5, "R", out); }));
    EXPECT_EQ("spec_uom;spec_value;", logged());
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetDisplayUnit("bar", "", out); }));
    EXPECT_EQ("uom;", logged());
    EXPECT_EQ("", Stored([&](char** out) { return node_->SetDisplaySpecUnit("atm", "", out); }));
    EXPECT_EQ("spec_uom;", logged());
    feed_.on_write = {};
    feed_.on_read = {};
    EXPECT_EQ("1.5", ReadOf(*node_, "value"));
    EXPECT_EQ("bar", ReadOf(*node_, "uom"));
    EXPECT_EQ("3.5", ReadOf(*node_, "spec_value"));
    EXPECT_EQ("atm", ReadOf(*node_, "spec_uom"));
}

TEST_F(QsvNode, node_is_let_go_of_in_the_middle_of_a_store_of_its_unit) {
    using Store = HRESULT (FIXTOP_MEMBER IQSVNode::*)(const char*, const char*, char**);
    const Store stores[] = {&IQSVNode::SetDisplayUnit, &IQSVNode::SetDisplaySpecUnit};
    for (const Store store : stores) {
        auto node = VNodeAt(feed_);
        feed_.on_write = [&](FIVarSet*, const std::string&) { node.Reset(); };
        EXPECT_EQ("", Stored([&](char** out) { return (node.Get()->*store)("bar", "", out); }));
        EXPECT_FALSE(node);
    }
}

TEST_F(QsvNode, display_unit_of_a_quantity_goes_to_whoever_reads_by_the_node) {
    std::string units;
    feed_.on_read = [&](FIVarSet* vars, const std::string&) {
        FIValue unit, spec_unit;
        vars->GetUnit(FIValue("Pressure"), unit);
        vars->GetSpecUnit(FIValue("Pressure"), spec_unit);
        units = unit.ToText() + " " + spec_unit.ToText();
    };
    EXPECT_EQ("",
              Stored([&](char** out) { return node_->SetDisplayUnit("bar", "Pressure", out); }));
    EXPECT_EQ(
        "", Stored([&](char** out) { return node_->SetDisplaySpecUnit("atm", "Pressure", out); }));
    EXPECT_EQ("25.5", ReadOf(*node_, "value"));
    EXPECT_EQ("bar atm", units);
}

TEST_F(QsvNode, memory_that_runs_out_is_told) {
    feed_.on_read = [](FIVarSet*, const std::string&) { throw std::bad_alloc(); };
    feed_.on_write = feed_.on_read;
    std::int32_t number = 99;
    double real = 99;
    EXPECT_EQ(kResultOutOfMemory, node_->GetInt("int", &number));
    EXPECT_EQ(0, number);
    EXPECT_EQ(kResultOutOfMemory, node_->GetDoubleInUnit("K", &real));
    EXPECT_EQ(0.0, real);
    EXPECT_EQ(kResultOutOfMemory,
              Refused<char>([&](char** out) { return node_->SetInt("int", 1, out); }));
    const char* names[] = {"int"};
    Variant values[1];
    EXPECT_EQ(kResultOutOfMemory, node_->GetArrayValues(1, names, values));
    EXPECT_EQ(Variant::kEmpty, values[0].type);
    bool has = true;
    EXPECT_EQ(kResultOutOfMemory, node_->HasValue(&has));
    EXPECT_FALSE(has);
    // The text that was read before goes.
    feed_.on_read = [](FIVarSet*, const std::string& name) {
        if (name == "int") throw std::bad_alloc();
    };
    const char* text_first[] = {"long", "int"};
    Variant two[2];
    EXPECT_EQ(kResultOutOfMemory, node_->GetArrayValues(2, text_first, two));
    EXPECT_EQ(Variant::kEmpty, two[0].type);
}

TEST_F(QsvNode, null_pointers_are_refused) {
    const char* const no_text = nullptr;
    std::int32_t number = 99;
    double real = 99;
    bool is = true;
    EXPECT_EQ(kResultPointer, node_->GetInt("int", nullptr));
    EXPECT_EQ(kResultPointer, node_->GetInt(no_text, &number));
    EXPECT_EQ(0, number);
    EXPECT_EQ(kResultPointer, node_->GetDouble(no_text, &real));
    EXPECT_EQ(kResultPointer, node_->GetBool(no_text, &is));
    EXPECT_EQ(kResultPointer, node_->GetString("text", nullptr));
    EXPECT_EQ(kResultPointer, node_->GetChildByIndex(0, nullptr));
    EXPECT_EQ(kResultPointer, node_->GetCount(nullptr));
    EXPECT_EQ(kResultPointer, node_->GetKeyLength(nullptr));
    EXPECT_EQ(kResultPointer, node_->GetKey(5, nullptr));
    EXPECT_EQ(kResultPointer, node_->IsContainer(nullptr));
    EXPECT_EQ(kResultPointer, node_->HasValue(nullptr));
    EXPECT_EQ(kResultPointer, node_->SetInt("int", 1, nullptr));
    EXPECT_EQ(kResultPointer, node_->GetDoubleInUnit("K", nullptr));
    EXPECT_EQ(kResultPointer, node_->GetDoubleInUnit(no_text, &real));
    EXPECT_EQ(0.0, real);
    const auto refused = [](auto call) { return Refused<char>(call); };
    EXPECT_EQ(kResultPointer, refused([&](char** out) { return node_->GetString(no_text, out); }));
    EXPECT_EQ(kResultPointer, refused([&](char** out) { return node_->SetInt(no_text, 1, out); }));
    EXPECT_EQ(kResultPointer,
              refused([&](char** out) { return node_->SetString("a", no_text, out); }));
    EXPECT_EQ(kResultPointer,
              refused([&](char** out) { return node_->SetDoubleInUnit(1, no_text, out); }));
    EXPECT_EQ(kResultPointer,
              refused([&](char** out) { return node_->SetSpecDoubleInUnit(1, no_text, out); }));
    EXPECT_EQ(kResultPointer, refused([&](char** out) { return node_->SetUnit(no_text, out); }));
    EXPECT_EQ(kResultPointer,
              refused([&](char** out) { return node_->SetSpecUnit(no_text, out); }));
    EXPECT_EQ(kResultPointer,
              refused([&](char** out) { return node_->SetDisplayUnit(no_text, "", out); }));
    EXPECT_EQ(kResultPointer,
              refused([&](char** out) { return node_->SetDisplaySpecUnit("K", no_text, out); }));
    const char* names[] = {"int", nullptr};
    Variant values[2];
    values[0].type = Variant::kInt;
    EXPECT_EQ(kResultPointer, node_->GetArrayValues(2, names, values));
    EXPECT_EQ(Variant::kEmpty, values[0].type);
    EXPECT_EQ(kResultPointer, node_->GetArrayValues(1, nullptr, values));
    EXPECT_EQ(kResultPointer, node_->GetArrayValues(1, names, nullptr));
    EXPECT_EQ(kResultPointer,
              refused([&](char** out) { return node_->SetArrayValues(2, names, values, out); }));
    EXPECT_EQ(kResultPointer, node_->SetArrayValues(1, names, values, nullptr));
    EXPECT_EQ("7", ReadOf(*node_, "int")) << "nothing was stored";
}

}  // namespace

}  // namespace fixtop
