// SPDX-License-Identifier: Apache-2.0
#include "line_text.h"

#include <gtest/gtest.h>

#include <random>

namespace fixtop {

namespace {

struct LineRow {
    const char* text;
    const char* line;
};

class OneLineTest : public testing::TestWithParam<LineRow> {};

TEST_P(OneLineTest, writes_what_reads_back) {
    EXPECT_EQ(GetParam().line, OneLine(GetParam().text));
    EXPECT_EQ(GetParam().text, FromOneLine(GetParam().line));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, OneLineTest,
    testing::Values(
        LineRow{"", ""}, LineRow{"Feed 1", "Feed 1"}, LineRow{"a\nb\rc\td", "a\\nb\\rc\\td"},
        LineRow{"\x1b[31mred\x1b[0m", "\\x1b[31mred\\x1b[0m"}, LineRow{"\x01\x7f", "\\x01\\x7f"},
        // U+0080, U+009B and U+009F are controls, U+00A0 is none.
        LineRow{"\xc2\x80\xc2\x9b\xc2\x9f\xc2\xa0", "\\xc2\\x80\\xc2\\x9b\\xc2\\x9f\xc2\xa0"},
        LineRow{"Gr\xc3\xb6\xc3\x9f"
                "e \xe6\xb5\x81 \xf0\x9f\x98\x80",
                "Gr\xc3\xb6\xc3\x9f"
                "e \xe6\xb5\x81 \xf0\x9f\x98\x80"},
        // Bytes that are no UTF-8: alone, cut off, too long a form, half of a pair, beyond the end.
        LineRow{"\x9b", "\\x9b"}, LineRow{"\xe6\xb5", "\\xe6\\xb5"}, LineRow{"\xc3(", "\\xc3("},
        LineRow{"\xc0\x9b", "\\xc0\\x9b"}, LineRow{"\xe0\x82\x9b", "\\xe0\\x82\\x9b"},
        LineRow{"\xed\xa0\x80", "\\xed\\xa0\\x80"},
        LineRow{"\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"}, LineRow{"\xff", "\\xff"},
        // A backslash stands unless it would be read.
        LineRow{"a\\b", "a\\b"}, LineRow{"C:\\Users", "C:\\Users"}, LineRow{"\\", "\\"},
        LineRow{"a\\nb", "a\\x5cnb"}, LineRow{"\\\\n", "\\\\x5cn"}, LineRow{"\\\n", "\\\\n"},
        LineRow{"\\x1b", "\\x5cx1b"}, LineRow{"\\x1", "\\x1"}, LineRow{"\\xg1", "\\xg1"},
        LineRow{"\\x00", "\\x00"}, LineRow{"\\x5c", "\\x5cx5c"}, LineRow{"\\x\x9b", "\\x\\x9b"}));

TEST(FromOneLine, takes_digits_of_either_case_and_what_needs_no_escape) {
    EXPECT_EQ("\x1b\x1b", FromOneLine("\\x1B\\x1b"));
    EXPECT_EQ("A.b", FromOneLine("\\x41\\x2eb"));
    EXPECT_EQ("\x1b\n", FromOneLine("\x1b\n"));
}

// Bytes that are often special, so that they come to stand beside each other.
TEST(OneLine, any_text_reads_back) {
    std::mt19937 random(1);
    const std::string bytes = "\\\\\\xnrt015cbfAF\n\r\t\x1b\x7f\xc2\x9b\xa0\xe6\xb5\x81 .";
    for (int round = 0; round < 100000; ++round) {
        std::string text(random() % 12, ' ');
        for (char& c : text) c = bytes[random() % bytes.size()];
        const std::string line = OneLine(text);
        ASSERT_EQ(text, FromOneLine(line)) << line;
        ASSERT_EQ(std::string::npos, line.find_first_of("\n\r\t\x1b\x7f")) << line;
        ASSERT_EQ(line, OneLine(FromOneLine(line)));
    }
}

TEST(OneLineMessage, backslashes_stay) {
    EXPECT_EQ("C:\\new\\run.json: no \\x1b", OneLineMessage("C:\\new\\run.json: no \x1b"));
}

TEST(OneField, line_feeds_stay) {
    EXPECT_EQ("a\\r\nb\\t\\x9b\\x5cn", OneField("a\r\nb\t\x9b\\n"));
}

}  // namespace

}  // namespace fixtop
