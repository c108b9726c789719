// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstring>

#include "automation/attribute.h"
#include "automation/objects.h"
#include "automation/script_nodes.h"

namespace fixtop {

namespace {

const char kLong[] = "a text of more than nineteen bytes";

Ref<IQSIAttribute> Of(const FIValue& value) {
    return Ref<IQSIAttribute>::Adopt(new CQSIAttribute(value, {}));
}

std::int32_t TypeOf(const FIValue& value) {
    return TakeNumber<std::int32_t>([&](std::int32_t* out) { return Of(value)->GetType(out); });
}

TEST(QsiAttribute, type_is_3_for_both_kinds_of_text) {
    EXPECT_EQ(0, TypeOf(FIValue()));
    EXPECT_EQ(1, TypeOf(FIValue::OfInt(7)));
    EXPECT_EQ(2, TypeOf(FIValue::OfReal(7)));
    EXPECT_EQ(FIValue::kShortText, FIValue("short").Kind());
    EXPECT_EQ(3, TypeOf(FIValue("short")));
    EXPECT_EQ(FIValue::kLongText, FIValue(kLong).Kind());
    EXPECT_EQ(3, TypeOf(FIValue(kLong)));
}

TEST(QsiAttribute, value_is_written_as_the_type_that_is_asked_for) {
    const auto real = Of(FIValue::OfReal(-2.75));
    std::int32_t number = 99;
    EXPECT_EQ(kResultOk, real->GetValue(1, 4, &number));
    EXPECT_EQ(-2, number);
    double double_number = 99;
    EXPECT_EQ(kResultOk, real->GetValue(2, 8, &double_number));
    EXPECT_EQ(-2.75, double_number);
    char text[6] = "xxxxx";
    EXPECT_EQ(kResultOk, real->GetValue(3, sizeof text, text));
    EXPECT_STREQ("-2.75", text);
    EXPECT_EQ(kResultOk, Of(FIValue("42 m"))->GetValue(1, 100, &number));
    EXPECT_EQ(42, number);
}

TEST(QsiAttribute, value_needs_room_for_all_of_it) {
    const auto attribute = Of(FIValue("12345"));
    char buffer[8];
    struct Case {
        std::int32_t type, size;
    };
    for (const Case& each : {Case{1, 3}, {1, 0}, {1, -1}, {2, 7}, {3, 5}, {3, 0}, {3, -1}}) {
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(kResultFail, attribute->GetValue(each.type, each.size, buffer)) << each.size;
        EXPECT_EQ(std::string(8, 'x'), std::string(buffer, 8)) << each.type << " " << each.size;
    }
    EXPECT_EQ(kResultOk, attribute->GetValue(3, 6, buffer));
    EXPECT_STREQ("12345", buffer);
}

TEST(QsiAttribute, value_of_no_type_or_an_unknown_one_writes_nothing) {
    char buffer[8] = "xxxxxxx";
    for (const std::int32_t type : {0, 4, -1, 100}) {
        EXPECT_EQ(kResultOk, Of(FIValue("12345"))->GetValue(type, 8, buffer)) << type;
        EXPECT_STREQ("xxxxxxx", buffer) << type;
    }
}

TEST(QsiAttribute, text_number_and_real_follow_the_conversions_of_values) {
    struct Case {
        FIValue value;
        const char* text;
        std::int32_t number;
        double real;
    };
    for (const Case& each :
         {Case{FIValue(), "", 0, 0.0}, Case{FIValue::OfInt(-7), "-7", -7, -7.0},
          Case{FIValue::OfReal(0.1), "0.1", 0, 0.1},
          Case{FIValue::OfReal(1e300), "1e+300", -2147483647 - 1, 1e300},
          Case{FIValue("3.5 bar"), "3.5 bar", 3, 3.5}, Case{FIValue("none"), "none", 0, 0.0},
          Case{FIValue(kLong), kLong, 0, 0.0}}) {
        const auto attribute = Of(each.value);
        EXPECT_EQ(each.text, TakeText([&](char** out) { return attribute->GetString(out); }));
        EXPECT_EQ(each.number, TakeNumber<std::int32_t>(
                                   [&](std::int32_t* out) { return attribute->GetInt(out); }))
            << each.text;
        EXPECT_EQ(each.real,
                  TakeNumber<double>([&](double* out) { return attribute->GetDouble(out); }))
            << each.text;
    }
}

// Its 0 is none of the node's.
TEST(QsiAttribute, message_in_the_place_of_a_value_is_no_number) {
    for (const char* message : {"Node deleted", "Node invalid", "No element under this node"}) {
        const auto attribute = Of(FIValue(message));
        std::int32_t number = 99;
        double real = 99;
        EXPECT_EQ(kResultFalse, attribute->GetInt(&number)) << message;
        EXPECT_EQ(0, number);
        EXPECT_EQ(kResultFalse, attribute->GetDouble(&real)) << message;
        EXPECT_EQ(0.0, real);
        number = 99;
        EXPECT_EQ(kResultFalse, attribute->GetValue(1, 4, &number)) << message;
        EXPECT_EQ(0, number);
        EXPECT_EQ(kResultFalse, attribute->GetValue(2, 8, &real)) << message;
        EXPECT_EQ(kResultFail, attribute->GetValue(2, 7, &real)) << message;
        EXPECT_EQ(kResultPointer, attribute->GetInt(nullptr));
        EXPECT_EQ(message, TakeText([&](char** out) { return attribute->GetString(out); }));
        EXPECT_EQ(3, TypeOf(FIValue(message)));
    }
}

TEST(QsiAttribute, keeps_its_value_when_that_of_the_node_changes) {
    ScriptNode root("Root");
    root.Set("value", 1.5);
    const auto node = NodeAt(root);
    const auto value =
        Take<IQSIAttribute>([&](IQSIAttribute** out) { return node->GetAttribute("value", out); });
    EXPECT_EQ(1u, CountOf(*value));
    root.Set("value", 2.5);
    EXPECT_EQ(1.5, TakeNumber<double>([&](double* out) { return value->GetDouble(out); }));
    EXPECT_EQ("2.5", ReadOf(*node, "value"));
}

TEST(QsiAttribute, null_pointers_are_refused) {
    const auto attribute = Of(FIValue::OfInt(1));
    EXPECT_EQ(kResultPointer, attribute->GetType(nullptr));
    EXPECT_EQ(kResultPointer, attribute->GetString(nullptr));
    EXPECT_EQ(kResultPointer, attribute->GetInt(nullptr));
    EXPECT_EQ(kResultPointer, attribute->GetDouble(nullptr));
    for (const std::int32_t type : {1, 2, 3}) {
        EXPECT_EQ(kResultPointer, attribute->GetValue(type, 8, nullptr)) << type;
    }
}

TEST(QsiAttribute, answers_for_its_node_only_when_it_was_read_from_one) {
    ScriptNode root("Root");
    Ref<FIIteratorBase> node;
    EXPECT_EQ(kResultNoInterface, FindHeldNode(Of(FIValue("x")).Get(), kHeldAttributeId, node));
    EXPECT_FALSE(node);
    const auto read = Ref<IQSIAttribute>::Adopt(new CQSIAttribute(FIValue("x"), PlaceAt(root)));
    EXPECT_EQ(kResultOk, FindHeldNode(read.Get(), kHeldAttributeId, node));
    EXPECT_TRUE(node);
    EXPECT_EQ(kResultNoInterface, FindHeldNode(read.Get(), kHeldNodeId, node));
}

}  // namespace

}  // namespace fixtop
