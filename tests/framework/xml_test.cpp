// SPDX-License-Identifier: Apache-2.0
#include <expat.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "framework/iterator/xml_text.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

std::string Escaped(const std::string& text) {
    std::string out;
    AppendXmlText(text, out);
    return out;
}

// Whether a parser of its own takes the text; the values of all attributes in order.
bool Parses(const std::string& xml, std::vector<std::string>* values = nullptr) {
    XML_Parser parser = XML_ParserCreate("UTF-8");
    XML_SetUserData(parser, values);
    XML_SetStartElementHandler(parser,
                               [](void* data, const XML_Char*, const XML_Char** attributes) {
                                   auto* all = static_cast<std::vector<std::string>*>(data);
                                   for (; all && *attributes; attributes += 2)
                                       all->push_back(attributes[1]);
                               });
    const bool good =
        XML_Parse(parser, xml.data(), static_cast<int>(xml.size()), 1) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return good;
}

TEST(XmlText, writes_what_xml_can_hold) {
    struct Case {
        std::string text;
        const char* expected;
    };
    const Case cases[] = {
        {"", ""},
        {"plain", "plain"},
        {"a<b>c", "a&lt;b&gt;c"},
        {"a&b", "a&amp;b"},
        {"a&amp;b", "a&amp;amp;b"},
        {"say \"x\"", "say &quot;x&quot;"},
        {"a\tb\nc\rd", "a&#9;b&#10;c&#13;d"},
        {"a\x01"
         "b\x1f"
         "c",
         "abc"},
        {"20 \xC2\xB0"
         "C",
         "20 \xC2\xB0"
         "C"},
        {"\xE2\x82\xAC", "\xE2\x82\xAC"},
        {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
        {"20 \xB0"
         "C",
         "20 ?C"},
        {"\xC2", "?"},
        // The first and the last character of each length, and the bytes just outside.
        {"\xC2\x80\xDF\xBF", "\xC2\x80\xDF\xBF"},
        {"\xE0\xA0\x80\xEF\xBF\xBD", "\xE0\xA0\x80\xEF\xBF\xBD"},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {"\xC1\xBF", "??"},
        {"\xE0\x9F\xBF", "???"},
        {"\xF0\x8F\xBF\xBF", "????"},
        {"\xED\x9F\xBF\xEE\x80\x80", "\xED\x9F\xBF\xEE\x80\x80"},
        {"\xED\xBF\xBF", "???"},
        {"\xC0\xAF", "??"},
        {"\xED\xA0\x80", "???"},
        {"\xF4\x90\x80\x80", "????"},
        {"\xE2\x82", "??"},
        {"\xEF\xBF\xBE|\xEF\xBF\xBF", "|"},
        {"\xFF", "?"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(each.expected, Escaped(each.text)) << ::testing::PrintToString(each.text);
        EXPECT_TRUE(Parses("<a b=\"" + Escaped(each.text) + "\"/>")) << each.expected;
    }
}

TEST(XmlText, identifiers) {
    for (const char* name : {"value", "spec_uom", "isObject", "_x", "a-b.c1"}) {
        EXPECT_TRUE(IsXmlIdentifier(name)) << name;
    }
    for (const char* name : {"", "1a", "a b", "-a", "a=", "\xC3\xA4"}) {
        EXPECT_FALSE(IsXmlIdentifier(name)) << name;
    }
}

class XmlDump : public ::testing::Test {
 protected:
    XmlDump() {
        ScriptNode& a = root_.Add("a <1>");
        a.Set("value", 1.5).Set("uom", "kg").Set("none", FIValue());
        a.Add("x").Add("deep").Set("n", 1);
        root_.Add("b").Set("bad name", "left out").Set("name", "left out").Set("ok", "\x01\"&");
    }
    std::string Dump(void (FIIterator::*dump)(FIValue&)) {
        FIValue out = Text("before");
        ((*root_.Iterate()).*dump)(out);
        return out.ToText();
    }

    ScriptNode root_{"Root"};
};

constexpr char kOneLevel[] =
    "<Node name=\"Root\">\n"
    "  <Node name=\"a &lt;1&gt;\" value=\"1.5\" uom=\"kg\"/>\n"
    "  <Node name=\"b\" ok=\"&quot;&amp;\"/>\n"
    "</Node>\n";

TEST_F(XmlDump, writes_the_wanted_levels) {
    EXPECT_EQ("<Node name=\"Root\"/>\n", Dump(&FIIterator::DumpNodeFlat));
    EXPECT_EQ(kOneLevel, Dump(&FIIterator::DumpNode));
    EXPECT_EQ(kOneLevel, Dump(&FIIterator::DumpXmlDefault));
    EXPECT_EQ(
        "<Node name=\"Root\">\n"
        "  <Node name=\"a &lt;1&gt;\" value=\"1.5\" uom=\"kg\">\n"
        "    <Node name=\"x\">\n"
        "      <Node name=\"deep\" n=\"1\"/>\n"
        "    </Node>\n"
        "  </Node>\n"
        "  <Node name=\"b\" ok=\"&quot;&amp;\"/>\n"
        "</Node>\n",
        Dump(&FIIterator::DumpNodeDeep));
    FIValue out;
    root_.Iterate()->DumpXml(out, 0);
    EXPECT_EQ("<Node name=\"Root\"/>\n", out.ToText());
    root_.Iterate()->DumpXml(out, 1);
    EXPECT_EQ(kOneLevel, out.ToText());
}

TEST_F(XmlDump, writes_attributes_alone) {
    const auto it = root_.Iterate();
    FIValue out;
    it->DumpAttributes(out);
    EXPECT_EQ("", out.ToText());
    ASSERT_TRUE(it->DownFirst());
    it->DumpAttributes(out);
    EXPECT_EQ("value=\"1.5\" uom=\"kg\"", out.ToText());
}

TEST_F(XmlDump, gives_the_var_set_of_the_entry_back) {
    const Ref<FIEntry> entry = root_.children[0]->Entry();
    const auto owner = root_.Iterate();
    entry->SetVarSet(owner->GetVarSet());
    const auto it = Ref<FIIterator>::Adopt(new FIIterator(entry.Get(), false));
    FIValue out;
    it->DumpAttributes(out);
    EXPECT_EQ("value=\"1.5\" uom=\"kg\"", out.ToText());
    EXPECT_EQ(owner->GetVarSet(), entry->GetVarSet());
}

TEST_F(XmlDump, below_the_root_it_begins_without_indent_and_stays) {
    const auto it = root_.Iterate();
    ASSERT_TRUE(it->SeekPath(Text("*.x")));
    FIValue out;
    it->DumpNode(out);
    EXPECT_EQ("<Node name=\"x\">\n  <Node name=\"deep\" n=\"1\"/>\n</Node>\n", out.ToText());
    EXPECT_EQ(2, it->Depth());
    ASSERT_TRUE(it->DownFirst());
    it->DumpNodeDeep(out);
    EXPECT_EQ("<Node name=\"deep\" n=\"1\"/>\n", out.ToText());
}

TEST_F(XmlDump, ends_at_nodes_that_repeat_an_ancestor) {
    ScriptNode& loop = root_.Add("loop");
    loop.Link(loop);
    const std::string xml = Dump(&FIIterator::DumpNodeDeep);
    std::vector<std::string> values;
    EXPECT_TRUE(Parses(xml, &values)) << xml;
    EXPECT_EQ(2, std::count(values.begin(), values.end(), "loop")) << xml;
}

}  // namespace

}  // namespace fixtop
