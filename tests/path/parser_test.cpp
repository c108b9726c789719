// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <utility>

#include "path/tokenizer.h"
#include "support/debug_capture.h"
#include "support/vtable_slot.h"

namespace fixtop {

namespace {

std::string Dump(const std::string& path) {
    FIValue error;
    const ParsedPath step = ParsePath(FIValue(path.c_str()), error);
    return error.IsNull() ? Describe(*step) : error.ToText();
}

TEST(PathParser, builds_the_written_chain) {
    const std::pair<const char*, const char*> rows[] = {
        {"", R"("")"},
        {"a", R"("a")"},
        {"a.b", R"("a"."b")"},
        {"a . b", R"("a "." b")"},
        {"a.", R"("a"."")"},
        {".a", R"(""."a")"},
        {"\"a\"\"b\"", R"("a""b")"},
        {"*", R"("*")"},
        {"%v", R"(%"v")"},
        {"'a", R"('"a")"},
        {"'", R"('"")"},
        {"%", R"(%"")"},
        {"'%", R"('%"")"},
        {"'%RxnID", R"('%"RxnID")"},
        {"%'a", R"(%"")"},
        {"'\"VLLE\"", R"('"VLLE")"},
        {"%rxnPath.Phase", R"(%"rxnPath"."Phase")"},
        {"a#3", R"("a"#3)"},
        {"#3", R"(""#3)"},
        {"a#-1", R"("a"#-1)"},
        {"a#3x", R"("a"#3)"},
        {"a#x", R"("a"#0)"},
        {"a#%n", R"("a"#%"n")"},
        {"a#3.b", R"("a"#3."b")"},
        {"a#3[x]", R"("a"#3&["x"])"},
        {"a[x]", R"("a"&["x"])"},
        {"a[]", R"("a"&[""])"},
        {"a[x].b", R"("a"&["x"]."b")"},
        {"a[x=1]", R"("a"&["x"="1"])"},
        {"a[x=Standard]", R"("a"&["x"="Standard"])"},
        {"a[x=\"1.5\"]", R"("a"&["x"="1.5"])"},
        {"a[x=\"%v\"]", R"("a"&["x"="%v"])"},
        {"a[x.y=1]", R"("a"&["x"."y"="1"])"},
        {"a[x][y]", R"("a"&["x"]&["y"])"},
        {"a[x]&[y]", R"("a"&["x"]&["y"])"},
        {"a[x]|[y]", R"("a"&["x"]|["y"])"},
        {"a[x]![y]", R"("a"&["x"]&!["y"])"},
        {"a[x]&![y]", R"("a"&["x"]&!["y"])"},
        {"a[x]|![y]", R"("a"&["x"]|!["y"])"},
        {"|[x]", R"(""|["x"])"},
        {"a(type)", R"("a"("type"))"},
        {"(a)", R"(""("a"))"},
        {"a(b).c", R"("a"("b"))"},
        {"a(b)c", R"("a"("b"))"},
        {"a[x](type)", R"("a"&["x"]("type"))"},
        {"[(type)=\"T\"]", R"(""&[""("type")="T"])"},
        {"[[a=b][c=d]]", R"(""&[""&["a"="b"]&["c"="d"]])"},
        {"a]b", R"("a")"},
        {"a=b", R"("a")"},
        {"a%b", R"("a")"},
        {"\"Vessels\".*[\"Object Name\"=\"Condenser\"].\"Vessel Pressure\"",
         R"("Vessels"."*"&["Object Name"="Condenser"]."Vessel Pressure")"},
        {"*[[(type)=\"TraySectionObject\"][\"Type of Tray Section\"=Standard]]",
         R"("*"&[""&[""("type")="TraySectionObject"]&["Type of Tray Section"="Standard"]])"},
    };
    for (const auto& [path, dump] : rows) EXPECT_EQ(Dump(path), dump) << path;
}

TEST(PathParser, count_may_be_any_token) {
    EXPECT_EQ(Dump("a#.b"), R"("a"#0)");
    EXPECT_EQ(Dump("a#%["), R"("a"#%"[")");
    EXPECT_EQ(Dump("a#\"7\""), R"("a"#7)");
}

// The bracket of an inner filter at the end of the text also closes the outer one.
TEST(PathParser, last_token_closes_every_open_clause) {
    EXPECT_EQ(Dump("a[x[y]"), R"("a"&["x"&["y"]])");
    EXPECT_EQ(Dump("a[x[y[z]"), R"("a"&["x"&["y"&["z"]]])");
}

TEST(PathParser, failures_name_the_path) {
    const std::pair<const char*, const char*> rows[] = {
        {"#", "Parse error, count expected following # in: "},
        {"a#", "Parse error, count expected following # in: "},
        {"a#%", "Parse error, count expected following # in: "},
        {"a.b#", "Parse error, count expected following # in: "},
        {"a(", "Parse error, string expected in: "},
        {"a()", "Parse error, string expected in: "},
        {"a([", "Parse error, string expected in: "},
        {"(a", "Parse error, ) expected in: "},
        {"(a]", "Parse error, ) expected in: "},
        {"(a b.c)", "Parse error, ) expected in: "},
        {"[x=", "Parse error, string expected in: "},
        {"a[b=]", "Parse error, string expected in: "},
        {"a[b=%v]", "Parse error, string expected in: "},
        {"a[b", "Parse error, ] expected in: "},
        {"a[", "Parse error, ] expected in: "},
        {"a[b=c", "Parse error, ] expected in: "},
        {"a[b=c.d]", "Parse error, ] expected in: "},
        {"a[(t)", "Parse error, ] expected in: "},
        {"a[b)", "Parse error, ] expected in: "},
        {"![x]", "Parse error, [ expected in: "},
        {"a![x]", "Parse error, [ expected in: "},
        {"a!", "Parse error, [ expected in: "},
        {"a[x]!", "Parse error, [ expected in: "},
        {"a[x]|", "Parse error, [ expected in: "},
        {"a[x]&y", "Parse error, [ expected in: "},
        {"a[x]||[y]", "Parse error, [ expected in: "},
        {"a[x]!![y]", "Parse error, [ expected in: "},
        {"a|b", "Parse error, [ expected in: "},
        {"a[x[]|]", "Parse error, [ expected in: "},
        {"\"a<&>\"[b", "Parse error, ] expected in: "},
    };
    for (const auto& [path, message] : rows)
        EXPECT_EQ(Dump(path), std::string(message) + path) << path;
}

// The token behind a step is consumed with it, for whoever parses what follows.
TEST(PathParser, the_token_after_the_step_is_consumed) {
    struct {
        const char* path;
        const char* last;
        const char* left;
    } rows[] = {{"a(b).c", ".", "c"},   {"a(b)c.d", "c", "."}, {"a]b", "]", "b"},
                {"a=b", "=", "b"},      {"a)b", ")", "b"},     {"a", "a", nullptr},
                {"a(b)", ")", nullptr}, {"a[b]]c", "]", "c"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        PathTokenizer tokens;
        tokens.Assign(FIValue(row.path));
        tokens.Tokenize();
        FIValue error;
        const ParsedPath step(tokens.Parse(error));
        EXPECT_TRUE(error.IsNull());
        EXPECT_EQ(tokens.Peek(-1)->text, row.last);
        ASSERT_EQ(tokens.Peek(0) == nullptr, row.left == nullptr);
        if (row.left) {
            EXPECT_EQ(tokens.Peek(0)->text, row.left);
        }
    }
}

TEST(PathParser, numbers_parse_as_a_name) {
    FIValue error;
    EXPECT_EQ(Describe(*ParsePath(FIValue::OfInt(12), error)), R"("12")");
    EXPECT_EQ(Describe(*ParsePath(FIValue::OfReal(1.5), error)), R"("1.5")");
    EXPECT_EQ(Describe(*ParsePath(FIValue(), error)), R"("")");
    EXPECT_TRUE(error.IsNull());
}

TEST(PathParser, keeps_what_was_read_before_a_failure) {
    FIValue error;
    const ParsedPath step = ParsePath(FIValue("a.b[c=d]|[e"), error);
    EXPECT_FALSE(error.IsNull());
    EXPECT_EQ(Describe(*step), R"("a"."b"&["c"="d"]|["e"])");
}

TEST(PathParser, success_clears_an_old_error) {
    FIValue error("old");
    const ParsedPath step = ParsePath(FIValue("a[b]"), error);
    EXPECT_TRUE(error.IsNull());
    EXPECT_EQ(Describe(*step), R"("a"&["b"])");
}

TEST(PathParser, description_parses_to_the_same_chain) {
    for (const char* path : {"'%a#%n[x=1]|![y.z(t)=\"q\"\"r\"].b#2(c)", "&![a]", "a#%[", "", ".",
                             "[[a=b][c=d]]", "*[\"%\"=\"%v\"]"}) {
        const std::string once = Dump(path);
        EXPECT_EQ(Dump(once), once) << path;
    }
}

TEST(PathParser, flags_have_fixed_values) {
    struct {
        const char* path;
        unsigned flags;
    } rows[] = {{"a[x][y]", 2},  {"a[x]&[y]", 2},  {"a[x]|[y]", 1},
                {"a[x]![y]", 6}, {"a[x]&![y]", 6}, {"a[x]|![y]", 5}};
    for (const auto& row : rows) {
        FIValue error;
        const ParsedPath step = ParsePath(FIValue(row.path), error);
        ASSERT_EQ(step->filters.size(), 2u) << row.path;
        EXPECT_EQ(step->filters[0].flags, 2u) << row.path;
        EXPECT_EQ(step->filters[1].flags, row.flags) << row.path;
    }
}

TEST(PathParser, fields_hold_their_kinds) {
    FIValue error;
    const ParsedPath step = ParsePath(FIValue("a#3[x](t)"), error);
    EXPECT_EQ(step->count.Kind(), FIValue::kInt);
    EXPECT_EQ(step->stepKind.Kind(), FIValue::kInt);
    EXPECT_EQ(step->stepKind.AsInt(), 1);
    EXPECT_STREQ(step->attribute.CStr(), "t");
    EXPECT_EQ(step->next, nullptr);
    EXPECT_FALSE(step->filters[0].clause->value.has_value());
    EXPECT_TRUE(step->filters[0].clause->step->attribute.IsNull());
    EXPECT_TRUE(step->filters[0].clause->step->count.IsNull());

    const ParsedPath variable = ParsePath(FIValue("%a#%n[x=\"\"]"), error);
    EXPECT_EQ(variable->count.Kind(), FIValue::kShortText);
    EXPECT_STREQ(variable->count.CStr(), "n");
    EXPECT_TRUE(variable->isVariable);
    EXPECT_FALSE(variable->isLiteral);
    EXPECT_STREQ(variable->filters[0].clause->value->CStr(), "");
}

std::string Repeat(const std::string& text, int count) {
    std::string out;
    for (int i = 0; i < count; ++i) out += text;
    return out;
}

TEST(PathParser, depth_is_limited) {
    // Each repetition goes one step deeper; the first step is the first level.
    for (const char* deeper : {"[", "a[", "a.", ".", "[x].", "[[", "a[b."}) {
        SCOPED_TRACE(deeper);
        const int levels = std::string(deeper) == "[[" || std::string(deeper) == "a[b." ? 2 : 1;
        const std::string fits = Repeat(deeper, (PathStep::kDepthLimit - 1) / levels);
        EXPECT_EQ(Dump(fits).find("too deep"), std::string::npos);
        const std::string deep = Repeat(deeper, PathStep::kDepthLimit / levels);
        EXPECT_EQ(Dump(deep), "Parse error, path is too deep in: " + deep);
    }
    const std::string far = Repeat("[", 500000);
    EXPECT_TRUE(Dump(far) == "Parse error, path is too deep in: " + far)
        << "nothing deeper is read";
    const std::string wide = Repeat("[x]", 100000);
    EXPECT_EQ(Dump(wide), "\"\"" + Repeat("&[\"x\"]", 100000))
        << "filters side by side are not deep";
}

TEST(PathParser, tokenizer_is_usable_after_a_failure) {
    PathTokenizer tokens;
    FIValue error;
    tokens.Assign(FIValue(Repeat("a.", 3000).c_str()));
    tokens.Tokenize();
    ParsedPath(tokens.Parse(error));
    EXPECT_FALSE(error.IsNull());
    tokens.Assign(FIValue(Repeat("a.", PathStep::kDepthLimit - 1).c_str()));
    tokens.Tokenize();
    ParsedPath(tokens.Parse(error));
    EXPECT_TRUE(error.IsNull());
}

TEST(PathStep, operations_keep_their_order) {
    EXPECT_EQ(VtableSlot(&PathStep::Dump), 0);
    EXPECT_EQ(VtableSlot(&PathStep::Destroy), 1);
    EXPECT_EQ(VtableSlot(&PathStep::Next), 2);
    EXPECT_EQ(VtableSlot(&PathStep::ResolveName), 3);
    EXPECT_EQ(VtableSlot(&PathStep::NameText), 4);
    EXPECT_EQ(VtableSlot(&PathStep::TagText), 5);
    EXPECT_EQ(VtableSlot(&PathStep::SetTag), 6);
    EXPECT_EQ(VtableSlot(&PathStep::IsLiteral), 7);
    EXPECT_EQ(VtableSlot(&PathStep::ResolveCount), 8);
    EXPECT_EQ(VtableSlot(&PathStep::ParseStep), -1);
}

TEST(PathStep, fields_stand_in_order) {
    const ParsedPath step(new PathStep);
    const void* const fields[] = {&step->name,       &step->count,     &step->stepKind,
                                  &step->isVariable, &step->isLiteral, &step->next,
                                  &step->filters,    &step->attribute, &step->tag};
    EXPECT_TRUE(std::is_sorted(std::begin(fields), std::end(fields), std::less<const void*>()));
}

TEST(PathStep, operations_answer_the_fields) {
    FIValue error;
    const ParsedPath step = ParsePath(FIValue("'a.b"), error);
    EXPECT_STREQ(step->NameText(), "a");
    EXPECT_TRUE(step->IsLiteral());
    ASSERT_NE(step->Next(), nullptr);
    EXPECT_STREQ(step->Next()->NameText(), "b");
    EXPECT_FALSE(step->Next()->IsLiteral());
    EXPECT_EQ(step->Next()->Next(), nullptr);
    EXPECT_STREQ(step->TagText(), "");
    step->SetTag("mark");
    EXPECT_STREQ(step->TagText(), "mark");
    step->SetTag(nullptr);
    EXPECT_STREQ(step->TagText(), "");
}

TEST(PathStep, destroying_a_long_chain_does_not_recurse) {
    ParsedPath first(new PathStep);
    PathStep* last = first.get();
    for (int i = 0; i < 1000000; ++i) {
        last->next.reset(new PathStep);
        last = last->Next();
    }
    first.reset();
    EXPECT_EQ(first, nullptr);
}

TEST(PathStep, dump_writes_steps_and_filters_to_the_debug_output) {
    FIValue error;
    const ParsedPath step = ParsePath(FIValue("a[x=1]|![y]![z].b.c"), error);
    const DebugCapture capture;
    step->Dump(2);
    const std::vector<std::string> expected = {
        "  a",     "    &\n", "    [\n", "     x", "    =\n", "     1\n", "    ]\n",
        "    |\n", "    !\n", "    [\n", "     y", "    ]\n", "    &\n",  "    !\n",
        "    [\n", "     z",  "    ]\n", "   b",   "    c",
    };
    EXPECT_EQ(capture.Pieces(), expected);
}

TEST(PathStep, dump_bounds_the_indent) {
    FIValue error;
    const ParsedPath step = ParsePath(FIValue("a"), error);
    const DebugCapture capture;
    step->Dump(1000);
    step->Dump(-1);
    EXPECT_EQ(capture.Pieces(), (std::vector<std::string>{std::string(80, ' ') + "a", "a"}));
}

}  // namespace

}  // namespace fixtop
