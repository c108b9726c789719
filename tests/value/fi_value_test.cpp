// SPDX-License-Identifier: Apache-2.0
#include "fixtop/value.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace fixtop {

namespace {

FIValue Int(std::int32_t number) {
    return FIValue::OfInt(number);
}
FIValue Real(double number) {
    return FIValue::OfReal(number);
}
FIValue Text(const std::string& text) {
    return FIValue(text.c_str());
}
FIValue LongText(const std::string& text) {
    FIValue value(text.c_str());
    value.ConvertTo(FIValue::kLongText);
    return value;
}

// One line for a value: its kind and its text.
std::string Show(const FIValue& value) {
    return std::to_string(value.Kind()) + ":" + value.ToText();
}

TEST(FIValueKind, numbers_and_names_are_fixed) {
    const std::pair<int, const char*> rows[] = {{0, "NULL"},   {1, "INT"},    {2, "REAL"},
                                                {3, "STRING"}, {4, "STRING"}, {5, "UNKNWN"},
                                                {-1, "UNKNWN"}};
    for (const auto& [kind, name] : rows) EXPECT_STREQ(FIValue::KindName(kind), name) << kind;
    EXPECT_EQ(FIValue().Kind(), 0);
    EXPECT_EQ(Int(1).Kind(), 1);
    EXPECT_EQ(Real(1).Kind(), 2);
    EXPECT_EQ(Text("a").Kind(), 3);
    EXPECT_EQ(LongText("a").Kind(), 4);
}

TEST(FIValueSetText, eighteen_characters_stay_inline) {
    struct {
        std::size_t length;
        int kind;
    } rows[] = {{0, 3}, {1, 3}, {17, 3}, {18, 3}, {19, 4}, {20, 4}, {31, 4}, {32, 4}, {5000, 4}};
    for (const auto& row : rows) {
        const std::string text(row.length, 'x');
        for (FIValue value : {Text(text), FIValue()}) {
            value.SetText(text);
            EXPECT_EQ(value.Kind(), row.kind) << row.length;
            EXPECT_EQ(value.CStr(), text) << row.length;
            EXPECT_EQ(value.Length(), static_cast<int>(row.length));
        }
    }
}

TEST(FIValueSetText, long_value_stays_long_for_short_text) {
    FIValue value = Text(std::string(40, 'x'));
    value.SetText("ab");
    EXPECT_EQ(Show(value), "4:ab");
    value.SetText("");
    EXPECT_EQ(Show(value), "4:");
    value.SetText(std::string(100, 'y'));
    EXPECT_EQ(Show(value), "4:" + std::string(100, 'y'));
}

TEST(FIValueSetText, replaces_numbers) {
    FIValue value = Int(4);
    value.SetText("abc");
    EXPECT_EQ(Show(value), "3:abc");
    value.SetReal(2);
    value.SetText(std::string(19, 'z'));
    EXPECT_EQ(Show(value), "4:" + std::string(19, 'z'));
}

TEST(FIValueSetText, null_pointer_is_empty_text) {
    FIValue value = Int(4);
    value.SetText(static_cast<const char*>(nullptr));
    EXPECT_EQ(Show(value), "3:");
    EXPECT_EQ(Show(FIValue(nullptr)), "3:");
}

TEST(FIValueSetText, accepts_part_of_its_own_text) {
    FIValue inline_text = Text("0123456789");
    inline_text.SetText(inline_text.CStr() + 4);
    EXPECT_EQ(Show(inline_text), "3:456789");

    FIValue nineteen = Text("012345678901234567");
    nineteen.AppendChar('8');
    nineteen.SetText(nineteen.CStr());
    EXPECT_EQ(Show(nineteen), "4:0123456789012345678");

    FIValue long_text = Text("0123456789012345678901234567890123456789");
    long_text.SetText(long_text.CStr() + 30);
    EXPECT_EQ(Show(long_text), "4:0123456789");
}

TEST(FIValueSetText, keeps_embedded_nul_in_long_form_only) {
    const std::string text("a\0b", 3);
    FIValue value = LongText("");
    value.SetText(text);
    EXPECT_EQ(value.Length(), 3);
    EXPECT_EQ(value.ToText(), text);
    FIValue inline_value;
    inline_value.SetText(text);
    EXPECT_EQ(Show(inline_value), "3:a");
}

TEST(FIValueSet, numbers_replace_long_text) {
    FIValue value = LongText("abc");
    value.SetInt(-5);
    EXPECT_EQ(Show(value), "1:-5");
    value = LongText("abc");
    value.SetReal(0.5);
    EXPECT_EQ(Show(value), "2:0.5");
    value = LongText("abc");
    value.Clear();
    EXPECT_EQ(Show(value), "0:");
}

TEST(FIValueCopy, is_deep_and_keeps_kind) {
    const std::vector<FIValue> sources = {FIValue(),   Int(7),        Real(1.25),
                                          Text("abc"), LongText("d"), Text(std::string(70, 'q'))};
    for (const FIValue& source : sources) {
        for (const FIValue& former : sources) {
            FIValue copy(former);
            copy.Assign(source);
            EXPECT_EQ(Show(copy), Show(source));
            if (source.IsText()) {
                EXPECT_NE(copy.CStr(), source.CStr());
            }
            FIValue assigned = former;
            assigned = source;
            EXPECT_EQ(Show(assigned), Show(source));
        }
    }
}

TEST(FIValueCopy, assigning_itself_does_nothing) {
    FIValue value = Text(std::string(40, 'x'));
    const char* bytes = value.CStr();
    const FIValue& same = value;
    value.Assign(same);
    value = same;
    EXPECT_EQ(value.CStr(), bytes);
    FIValue& itself = value;
    value = std::move(itself);
    EXPECT_EQ(value.CStr(), bytes);
    EXPECT_EQ(Show(value), "4:" + std::string(40, 'x'));
}

TEST(FIValueCopy, unknown_kind_yields_null) {
    for (int kind : {5, -1, 99}) {
        FIValue strange;
        std::memcpy(static_cast<void*>(&strange), &kind, sizeof kind);
        ASSERT_EQ(strange.Kind(), kind);
        EXPECT_EQ(Show(FIValue(strange)), "0:");
        FIValue assigned = LongText("text");
        assigned.Assign(strange);
        EXPECT_EQ(Show(assigned), "0:");
        strange.Clear();
    }
}

// A text that fits is written into the buffer that the value has. The buffers are so large that no
// heap could extend a smaller one where it lies.
TEST(FIValueCapacity, is_copied_and_never_shrinks) {
    const std::string full(4 << 20, 'x');
    FIValue value = Text(full);
    const char* const bytes = value.CStr();
    value.SetText("short");
    EXPECT_EQ(static_cast<const void*>(value.CStr()), bytes);
    FIValue copied(value);
    FIValue assigned;
    assigned.Assign(value);
    for (FIValue* each : {&value, &copied, &assigned}) {
        const void* const before = each->CStr();
        each->SetText(full);
        EXPECT_EQ(static_cast<const void*>(each->CStr()), before);
        EXPECT_EQ(each->Length(), 4 << 20);
    }
}

TEST(FIValueCapacity, of_a_grown_text_is_that_of_its_copy) {
    FIValue grown = Text(std::string(20, 'a'));
    std::string expected(20, 'a');
    for (int length : {12, 31, 33, 1000, 5000}) {
        grown.AppendText(std::string(length, 'b').c_str());
        expected += std::string(length, 'b');
        FIValue copy(grown);
        EXPECT_EQ(expected, copy.ToText()) << length;
        copy.AppendChar('c');
        EXPECT_EQ(expected + "c", copy.ToText()) << length;
        EXPECT_EQ(expected, grown.ToText()) << length;
    }
}

TEST(FIValueMove, leaves_null_behind) {
    FIValue source = Text(std::string(40, 'x'));
    const char* bytes = source.CStr();
    FIValue taken(std::move(source));
    EXPECT_EQ(taken.CStr(), bytes);
    EXPECT_TRUE(source.IsNull());
    FIValue assigned = LongText("old");
    assigned = std::move(taken);
    EXPECT_EQ(assigned.CStr(), bytes);
    EXPECT_TRUE(taken.IsNull());
}

TEST(FIValueConvert, follows_the_table) {
    const std::string long_digits = "12.5" + std::string(30, ' ');
    struct {
        FIValue from;
        int target;
        const char* result;
    } rows[] = {
        {FIValue(), 0, "0:"},
        {FIValue(), 1, "1:0"},
        {FIValue(), 2, "2:0"},
        {FIValue(), 3, "3:"},
        {FIValue(), 4, "4:"},
        {Int(3), 0, "0:"},
        {Int(3), 1, "1:3"},
        {Int(3), 2, "2:3"},
        {Int(-2147483647 - 1), 3, "3:-2147483648"},
        {Int(3), 4, "4:&d"},
        {Real(3.5), 0, "0:"},
        {Real(3.9), 1, "1:3"},
        {Real(-3.9), 1, "1:-3"},
        {Real(3.5), 2, "2:3.5"},
        {Real(3.5), 3, "3:3.5"},
        {Real(-1.23456789012345e-300), 3, "3:-1.23456789012e-300"},
        {Real(1e300), 3, "3:1e+300"},
        {Real(0.1), 3, "3:0.1"},
        {Real(3.5), 4, "4:&g"},
        {Text("12.5"), 0, "0:"},
        {Text("12.5"), 1, "1:12"},
        {Text("12.5"), 2, "2:12.5"},
        {Text("12.5"), 3, "3:12.5"},
        {Text("12.5"), 4, "4:12.5"},
        {LongText("12.5"), 0, "0:"},
        {Text(long_digits), 1, "1:12"},
        {Text(long_digits), 2, "2:12.5"},
        {LongText("12.5"), 3, "4:12.5"},
        {LongText("12.5"), 4, "4:12.5"},
        {Text("12.5"), 5, "3:12.5"},
        {Int(3), -1, "1:3"},
    };
    for (auto& row : rows) {
        FIValue value = row.from;
        value.ConvertTo(row.target);
        EXPECT_EQ(Show(value), row.result) << Show(row.from) << " to " << row.target;
    }
}

TEST(FIValueScan, reads_the_leading_number) {
    struct {
        const char* text;
        std::int32_t as_int;
        double as_real;
    } rows[] = {
        {"", 0, 0},
        {"x", 0, 0},
        {"-", 0, 0},
        {".", 0, 0},
        {"+-1", 0, 0},
        {"12", 12, 12},
        {"+12", 12, 12},
        {" \t\n-12abc", -12, -12},
        {"1.50", 1, 1.5},
        {".5", 0, 0.5},
        {"-.5e1x", 0, -5},
        {"1e3", 1, 1000},
        {"0x10", 0, 16},
        {"2147483647", 2147483647, 2147483647.0},
        {"4294967297", 1, 4294967297.0},
        {"1e400", 1, HUGE_VAL},
        {"-inf", 0, -HUGE_VAL},
        {"1,5", 1, 1},
        {"12 34", 12, 12},
    };
    for (const auto& row : rows) {
        for (const FIValue& value : {Text(row.text), LongText(row.text)}) {
            const std::string before = Show(value);
            EXPECT_EQ(value.AsInt(), row.as_int) << before;
            EXPECT_EQ(value.AsDouble(), row.as_real) << before;
            EXPECT_EQ(Show(value), before);
        }
    }
    EXPECT_TRUE(std::isnan(Text("nan").AsDouble()));
}

TEST(FIValueNumbers, convert_without_changing_the_value) {
    EXPECT_EQ(FIValue().AsInt(), 0);
    EXPECT_EQ(FIValue().AsDouble(), 0.0);
    EXPECT_EQ(Int(-7).AsInt(), -7);
    EXPECT_EQ(Int(-7).AsDouble(), -7.0);
    EXPECT_EQ(Real(2.9).AsInt(), 2);
    EXPECT_EQ(Real(-2147483648.9).AsInt(), INT_MIN);
    EXPECT_EQ(Real(2147483647.9).AsInt(), INT_MAX);
    EXPECT_EQ(Real(2.9).AsDouble(), 2.9);
    for (double number : {1e10, -1e10, HUGE_VAL, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(Real(number).AsInt(), INT_MIN) << number;
}

TEST(FIValueText, reals_have_twelve_significant_digits) {
    const std::pair<double, const char*> rows[] = {
        {3.5, "3.5"},
        {1e300, "1e+300"},
        {0.1, "0.1"},
        {1.0 / 3, "0.333333333333"},
        {2.0 / 3, "0.666666666667"},
        {-32767.0, "-32767"},
        {100000000000.0, "100000000000"},
        {1000000000000.0, "1e+12"},
        {123456789012.4, "123456789012"},
        {0.0001, "0.0001"},
        {0.00001, "1e-05"},
        {0.0, "0"},
        {-0.0, "-0"},
        {HUGE_VAL, "inf"},
    };
    for (const auto& [number, text] : rows) {
        EXPECT_EQ(Real(number).ToText(), text);
        char buffer[kRealTextSize];
        EXPECT_EQ(FormatReal(number, buffer), static_cast<int>(std::strlen(text)));
        EXPECT_STREQ(buffer, text);
    }
}

TEST(FIValueText, CStr_answers_text_only) {
    EXPECT_STREQ(FIValue().CStr(), "");
    EXPECT_EQ(Int(1).CStr(), nullptr);
    EXPECT_EQ(Real(1).CStr(), nullptr);
    EXPECT_STREQ(Text("a").CStr(), "a");
    EXPECT_STREQ(LongText("a").CStr(), "a");
}

TEST(FIValueText, length_is_that_of_the_formatted_text) {
    EXPECT_EQ(FIValue().Length(), 0);
    EXPECT_EQ(Int(-120).Length(), 4);
    EXPECT_EQ(Real(0.1).Length(), 3);
    EXPECT_EQ(Real(1.0 / 3).Length(), 14);
    EXPECT_EQ(Text("abc").Length(), 3);
    EXPECT_EQ(LongText("abcd").Length(), 4);
}

TEST(FIValueText, CopyText_ends_with_nul_within_size) {
    struct {
        FIValue value;
        int size;
        const char* result;
    } rows[] = {
        {Text("abcdef"), 1, ""},      {Text("abcdef"), 4, "abc"}, {Text("abcdef"), 7, "abcdef"},
        {Text("abcdef"), 6, "abcde"}, {LongText("abc"), 3, "ab"}, {FIValue(), 5, ""},
        {Int(1234), 3, "12"},         {Int(1234), 8, "1234"},     {Real(0.25), 8, "0.25"},
        {Int(1234), 1, ""},           {FIValue(), 1, ""},         {Real(2e9 / 3), 8, "6666666"},
    };
    for (const auto& row : rows) {
        char buffer[9] = "########";
        row.value.CopyText(buffer, row.size);
        EXPECT_STREQ(buffer, row.result) << Show(row.value) << " size " << row.size;
        EXPECT_EQ(buffer[row.size], row.size == 8 ? '\0' : '#') << "written beyond the size";
    }
    char untouched[2] = "#";
    Text("a").CopyText(untouched, 0);
    EXPECT_STREQ(untouched, "#");
}

TEST(FIValueCompare, follows_the_rules) {
    struct {
        FIValue a, b;
        int result;
    } rows[] = {
        {FIValue(), FIValue(), 0},      {FIValue(), Int(0), -1},       {FIValue(), Real(-5), -1},
        {FIValue(), Text(""), 0},       {FIValue(), LongText(""), 0},  {FIValue(), Text("x"), -1},
        {Int(1), Int(2), -1},           {Int(2), Int(2), 0},           {Int(3), Int(2), 1},
        {Int(1), Real(1.5), -1},        {Real(1.5), Int(1), 1},        {Real(1.5), Real(1.5), 0},
        {Int(1), Text("1.0"), 0},       {Int(1), Text("1.9"), 0},      {Real(1.5), Text("1.50"), 0},
        {Real(1.5), LongText("2"), -1}, {Int(5), Text("none"), 1},     {Int(1), FIValue(), -2},
        {Real(1), FIValue(), -2},       {Text("1.0"), Int(1), -2},     {Text("1.0"), Real(1), -2},
        {Text(""), FIValue(), -2},      {Text("a"), LongText("a"), 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.a.Compare(row.b), row.result) << Show(row.a) << " with " << Show(row.b);
    EXPECT_LT(Text("a").Compare(Text("b")), 0);
    EXPECT_GT(Text("b").Compare(LongText("a")), 0);
    EXPECT_GT(Text("a").Compare(Text("B")), 0) << "case matters";
}

TEST(FIValueAppendChar, reaches_nineteen_characters_inline) {
    FIValue value = Text(std::string(18, 'x'));
    value.AppendChar('y');
    EXPECT_EQ(Show(value), "3:" + std::string(18, 'x') + "y");
    value.AppendChar('z');
    EXPECT_EQ(Show(value), "4:" + std::string(18, 'x') + "yz");
}

TEST(FIValueAppendChar, formats_numbers_in_place) {
    const std::pair<FIValue, const char*> rows[] = {
        {FIValue(), "3:c"},
        {Int(-12), "3:-12c"},
        {Real(0.1), "3:0.1c"},
        {LongText("ab"), "4:abc"},
        {Real(-1.23456789012e-300), "4:-1.23456789012e-300c"}};
    for (const auto& [from, result] : rows) {
        FIValue value = from;
        value.AppendChar('c');
        EXPECT_EQ(Show(value), result);
    }
}

TEST(FIValueAppendChar, grows_linearly_to_large_text) {
    FIValue value;
    std::string model;
    for (int i = 0; i < 100000; ++i) {
        value.AppendChar(static_cast<char>('a' + i % 26));
        model.push_back(static_cast<char>('a' + i % 26));
    }
    EXPECT_EQ(value.ToText(), model);
}

TEST(FIValueAppend, numeric_receiver_begins_with_the_letter_of_its_kind) {
    FIValue text = Int(5);
    text.AppendText("x");
    EXPECT_EQ(Show(text), "4:&dx");
    FIValue number = Real(5);
    number.AppendInt(-7);
    EXPECT_EQ(Show(number), "4:&g-7");
    FIValue real = Int(5);
    real.AppendReal(0.1);
    EXPECT_EQ(Show(real), "4:&d0.1");
    FIValue value = Real(5);
    value.AppendValue(FIValue());
    EXPECT_EQ(Show(value), "4:&g");
}

TEST(FIValueAppend, result_is_long_text) {
    FIValue value;
    value.AppendText("");
    EXPECT_EQ(Show(value), "4:");
    value.AppendText(nullptr);
    EXPECT_EQ(Show(value), "4:");
    value.AppendText("a");
    value.AppendInt(12);
    value.AppendReal(2.5);
    value.AppendValue(Text("x.y"));
    value.AppendValue(Int(-3), true, true);
    value.AppendValue(Real(1e-5), true, false);
    EXPECT_EQ(Show(value), "4:a122.5x.y-31e-05");
    FIValue digits;
    digits.AppendReal(1.0 / 3);
    digits.AppendValue(Real(2.0 / 3));
    EXPECT_EQ(Show(digits), "4:0.3333333333330.666666666667");
}

TEST(FIValueAppend, numbers_are_neither_quoted_nor_escaped) {
    for (bool quote : {false, true}) {
        for (bool xml : {false, true}) {
            FIValue value;
            value.AppendValue(Real(-1.5), quote, xml);
            EXPECT_EQ(Show(value), "4:-1.5");
        }
    }
}

TEST(FIValueAppend, value_appended_to_itself_doubles_it) {
    for (const std::string& text :
         {std::string("ab"), std::string(18, 'x'), std::string(32, 'y')}) {
        FIValue value = Text(text);
        value.AppendValue(value);
        EXPECT_EQ(Show(value), "4:" + text + text);
        value.AppendText(value.CStr() + text.size());
        EXPECT_EQ(Show(value), "4:" + text + text + text);
    }
    FIValue number = Int(3);
    number.AppendValue(number);
    EXPECT_EQ(Show(number), "4:&d3");
}

TEST(FIValueAppend, xml_escapes_eight_characters) {
    const std::pair<std::string, const char*> rows[] = {
        {"plain", "plain"},
        {"<", "&lt;"},
        {">", "&gt;"},
        {"&", "&amp;"},
        {"'", "&apos;"},
        {"\"", "&quot;"},
        {"\n", "&#10;"},
        {"\r", "&#13;"},
        {"\t", "\t"},
        {"a&b", "a&amp;b"},
        {"a&amp;b", "a&amp;b"},
        {"&#00;&lt;&gt;&amp;&apos;&quot;&#10;&#13;", "&#00;&lt;&gt;&amp;&apos;&quot;&#10;&#13;"},
        {"&#11;", "&amp;#11;"},
        {"&lt", "&amp;lt"},
        {"a<b>&c", "a&lt;b&gt;&amp;c"},
        {"a.b", "a.b"},
        {"(x)=#1|%v", "(x)=#1|%v"},
        {"", ""},
    };
    for (const auto& [text, escaped] : rows) {
        for (bool quote : {false, true}) {
            FIValue value;
            value.AppendText(text.c_str(), quote, true);
            EXPECT_EQ(value.ToText(), escaped) << text;
            FIValue through_value;
            through_value.AppendValue(Text(text), quote, true);
            EXPECT_EQ(through_value.ToText(), escaped) << text;
            FIValue twice;
            twice.AppendValue(value, quote, true);
            EXPECT_EQ(twice.ToText(), escaped) << text << " escaped again";
        }
    }
    FIValue with_nul = LongText("");
    with_nul.SetText(std::string("a\0b", 3));
    FIValue value;
    value.AppendValue(with_nul, false, true);
    EXPECT_EQ(value.ToText(), "a&#00;b");
}

TEST(FIValueAppend, quotes_text_with_path_characters) {
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},           {"Feed", "Feed"},         {"Feed 1", "Feed 1"},   {"*", "*"},
        {"#12", "#12"},     {"#1a", "\"#1a\""},       {"#", "\"#\""},         {"12#", "\"12#\""},
        {"##", "\"##\""},   {"Feed.1", "\"Feed.1\""}, {"a\"b", "\"a\"\"b\""}, {"\"", "\"\"\"\""},
        {"<tag>", "<tag>"},
    };
    for (const auto& [text, quoted] : rows) {
        FIValue value;
        value.AppendText(text, true);
        EXPECT_EQ(value.ToText(), quoted) << text;
        FIValue through_value;
        through_value.AppendValue(LongText(text), true);
        EXPECT_EQ(through_value.ToText(), quoted) << text;
        FIValue plain;
        plain.AppendText(text);
        EXPECT_EQ(plain.ToText(), text);
    }
    for (char special : std::string("%#'&!|()[].=")) {
        FIValue value;
        const std::string text = std::string("a") + special;
        value.AppendText(text.c_str(), true);
        EXPECT_EQ(value.ToText(), "\"" + text + "\"");
    }
    for (char plain : std::string(" *<>-_/\\{},;:?@$^~`+")) {
        FIValue value;
        value.AppendText(std::string(1, plain).c_str(), true);
        EXPECT_EQ(value.ToText(), std::string(1, plain));
    }
}

TEST(FIValueEscapeForAttribute, replaces_three_characters) {
    struct {
        FIValue from;
        const char* result;
    } rows[] = {
        {Text("a\"b"), "3:a&quot;b"},
        {Text("a&b<c"), "3:a&amp;b&lt;c"},
        {Text("&amp;"), "3:&amp;amp;"},
        {Text("a>b'c\n"), "3:a>b'c\n"},
        {LongText("<"), "4:&lt;"},
        {Text("<<<<<"), "4:&lt;&lt;&lt;&lt;&lt;"},
        {LongText("plain"), "4:plain"},
        {Int(5), "1:5"},
        {FIValue(), "0:"},
    };
    for (auto& row : rows) {
        FIValue value = row.from;
        value.EscapeForAttribute();
        EXPECT_EQ(Show(value), row.result) << Show(row.from);
    }
}

TEST(FIValueStatistics, note_the_largest_capacity) {
    FIValue value = Text(std::string(40, 'x'));
    const FIValue::Statistics before = FIValue::GetStatistics();
    // With the NUL it just fits.
    const std::size_t length = 2 * static_cast<std::size_t>(before.largest_capacity) - 1;
    value.SetText(std::string(length, 'x'));
    const FIValue::Statistics after = FIValue::GetStatistics();
    EXPECT_GT(after.growth_checks, before.growth_checks);
    std::int64_t capacity = 32;
    while (capacity < static_cast<std::int64_t>(length) + 1) capacity *= 2;
    EXPECT_EQ(after.largest_capacity, capacity);
    EXPECT_EQ(after.check_at_largest, after.growth_checks);
    const FIValue made = Text(std::string(length, 'x'));
    EXPECT_EQ(FIValue::GetStatistics().largest_capacity, capacity);
    EXPECT_EQ(FIValue::GetStatistics().check_at_largest, after.check_at_largest);
}

}  // namespace

}  // namespace fixtop
