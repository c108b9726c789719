// SPDX-License-Identifier: Apache-2.0
#include "path/tokenizer.h"

#include <gtest/gtest.h>

#include <string>

namespace fixtop {

namespace {

// Punctuation as it stands, strings in < >.
std::string Tokens(const FIValue& source) {
    PathTokenizer tokens;
    tokens.Assign(source);
    tokens.Tokenize();
    std::string out;
    while (const PathToken* token = tokens.Next()) {
        const bool string = token->kind == PathToken::kString;
        if (string) {
            EXPECT_EQ(token->text.data()[token->text.size()], '\0');
        }
        out.append(string ? "<" : "").append(token->text).append(string ? ">" : "");
    }
    return out;
}

TEST(PathTokenizer, splits_text_at_special_characters) {
    struct {
        const char* source;
        const char* tokens;
    } rows[] = {
        {"", ""},
        {"a", "<a>"},
        {"a.b", "<a>.<b>"},
        {"a . b", "<a >.< b>"},
        {" ", "< >"},
        {"Object Name", "<Object Name>"},
        {"*", "<*>"},
        {"%#'&!|()[].=", "%#'&!|()[].="},
        {"a#12", "<a>#<12>"},
        {"[x=Standard]", "[<x>=<Standard>]"},
        {"x = 1", "<x >=< 1>"},
        {"\"\"", "<>"},
        {"\"a.b\"", "<a.b>"},
        {"\"%#'&!|()[].=\"", "<%#'&!|()[].=>"},
        {"\"a\"\"b\"", "<a\"b>"},
        {"\"\"\"\"", "<\">"},
        {"a\"b\"c", "<a><b><c>"},
        {"\"a\".\"b\"", "<a>.<b>"},
        {"\"a\"b\"c\"d", "<a><b><c><d>"},
        {"tab\tand-_/\\{}<>", "<tab\tand-_/\\{}<>>"},
        {"*+,-/:;?@^_`~$\n\r", "<*+,-/:;?@^_`~$\n\r>"},
        {"%rxnPath.Phase", "%<rxnPath>.<Phase>"},
        {"'\"VLLE\"", "'<VLLE>"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Tokens(FIValue(row.source)), row.tokens) << row.source;
        FIValue long_source(row.source);
        long_source.ConvertTo(FIValue::kLongText);
        EXPECT_EQ(Tokens(long_source), row.tokens) << row.source;
    }
}

TEST(PathTokenizer, open_quote_ends_with_the_text) {
    struct {
        const char* source;
        const char* tokens;
    } rows[] = {{"\"", "<>"},         {"\"abc", "<abc>"}, {"a.\"b]", "<a>.<b]>"},
                {"\"a\"\"", "<a\">"}, {"\"\"\"", "<\">"}, {"a\"", "<a><>"}};
    for (const auto& row : rows) EXPECT_EQ(Tokens(FIValue(row.source)), row.tokens) << row.source;
}

TEST(PathTokenizer, numbers_are_one_string) {
    EXPECT_EQ(Tokens(FIValue()), "");
    EXPECT_EQ(Tokens(FIValue::OfInt(-12)), "<-12>");
    EXPECT_EQ(Tokens(FIValue::OfReal(1.5)), "<1.5>");
    EXPECT_EQ(Tokens(FIValue::OfReal(0.1 + 0.2)), "<0.3>");
    EXPECT_EQ(Tokens(FIValue::OfReal(-1.23456789012e-300)), "<-1.23456789012e-300>");
}

TEST(PathTokenizer, token_numbers_are_fixed) {
    PathTokenizer tokens;
    tokens.Assign(FIValue("a."));
    tokens.Tokenize();
    EXPECT_EQ(tokens.Next()->kind, 2);
    EXPECT_EQ(tokens.Next()->kind, 1);
}

TEST(PathTokenizer, peek_is_relative_to_the_position) {
    PathTokenizer tokens;
    EXPECT_EQ(tokens.Next(), nullptr);
    tokens.Assign(FIValue("a.b"));
    EXPECT_EQ(tokens.Peek(0), nullptr) << "assigned but not tokenized";
    tokens.Tokenize();
    EXPECT_EQ(tokens.Peek(-1), nullptr);
    EXPECT_EQ(tokens.Peek(0)->text, "a");
    EXPECT_EQ(tokens.Peek(2)->text, "b");
    EXPECT_EQ(tokens.Peek(3), nullptr);
    EXPECT_EQ(tokens.Next()->text, "a");
    EXPECT_EQ(tokens.Peek(-1)->text, "a");
    EXPECT_EQ(tokens.Peek(0)->text, ".");
    tokens.Next();
    tokens.Next();
    EXPECT_EQ(tokens.Next(), nullptr);
    EXPECT_EQ(tokens.Next(), nullptr);
    EXPECT_EQ(tokens.Peek(-1)->text, "b") << "the end does not move the position";
}

TEST(PathTokenizer, new_source_starts_over) {
    PathTokenizer tokens;
    tokens.Assign(FIValue("a.b"));
    tokens.Tokenize();
    tokens.Next();
    tokens.Assign(FIValue("cc"));
    tokens.Tokenize();
    EXPECT_EQ(tokens.Peek(-1), nullptr);
    EXPECT_EQ(tokens.Next()->text, "cc");
    EXPECT_EQ(tokens.Next(), nullptr);
}

TEST(PathTokenizer, takes_text_of_megabytes) {
    std::string source;
    for (int i = 0; i < 500000; ++i) source += "\"ab\"c.";
    PathTokenizer tokens;
    tokens.Assign(FIValue(source.c_str()));
    tokens.Tokenize();
    int strings = 0, marks = 0;
    while (const PathToken* token = tokens.Next()) {
        ++(token->kind == PathToken::kString ? strings : marks);
        ASSERT_TRUE(token->text == "ab" || token->text == "c" || token->text == ".");
    }
    EXPECT_EQ(strings, 1000000);
    EXPECT_EQ(marks, 500000);
}

}  // namespace

}  // namespace fixtop
