// SPDX-License-Identifier: Apache-2.0
// The XML that documents are written in: what is refused before anything is made of it, and how
// texts are put together.

#include <gtest/gtest.h>

#include "case_reading.h"
#include "casehost/importer.h"

namespace fixtop::casehost::test {

namespace {

struct BadXml {
    const char* name;
    std::string document;
    const char* told;
};

void PrintTo(const BadXml& row, std::ostream* out) {
    *out << row.name;
}

std::string InRoot(const std::string& content) {
    return "<DWSIM_Simulation_Data>\n" + content + "\n</DWSIM_Simulation_Data>";
}

const BadXml kBadXml[] = {
    {"unknown_encoding", "<?xml version=\"1.0\" encoding=\"windows-31j\"?>\n" + InRoot(""),
     "line 1: malformed XML: unknown encoding"},
    {"bytes_that_are_no_utf_8", InRoot("<a>\xE9</a>"),
     "line 2, DWSIM_Simulation_Data/a: malformed XML"},
    {"overlong_utf_8", InRoot("<a>\xC0\xAF</a>"), "line 2, DWSIM_Simulation_Data/a: malformed XML"},
    {"surrogate_in_utf_8", InRoot("<a>\xED\xA0\x80</a>"), "line 2, DWSIM_Simulation_Data/a"},
    {"character_cut_short", InRoot("<a>\xE2\x82</a>"), "line 2, DWSIM_Simulation_Data/a"},
    {"bad_bytes_in_a_comment", InRoot("<!-- \xFF -->"), "line 2, DWSIM_Simulation_Data: malformed"},
    {"control_character", InRoot("<a>\x01</a>"), "line 2, DWSIM_Simulation_Data/a: malformed XML"},
    {"nul", InRoot("<a>" + std::string(1, '\0') + "</a>"),
     "DWSIM_Simulation_Data/a: malformed XML"},
    {"reference_to_an_entity_of_its_own", InRoot("<a>&lol;</a>"), "undefined entity"},
    {"reference_without_an_end", InRoot("<a>a & b</a>"), "malformed XML"},
    {"reference_to_no_character", InRoot("<a>&#0;</a>"), "malformed XML"},
    {"reference_in_an_attribute", InRoot("<a b=\"&lol;\"/>"), "undefined entity"},
    {"doctype_after_a_comment", "<!-- c -->\n<!DOCTYPE a>" + InRoot(""),
     "line 2: a document type declaration is not allowed; expected plain elements only"},
    {"two_roots", InRoot("") + "<a/>", "line 3: malformed XML: junk after document element"},
    {"text_behind_the_root", InRoot("") + "more", "line 3: malformed XML"},
    {"text_before_the_root", "more" + InRoot(""), "line 1: malformed XML"},
    {"element_that_is_left_open", InRoot("<a>"), "DWSIM_Simulation_Data/a: malformed XML"},
    {"end_without_a_beginning", "</a>", "line 1: malformed XML"},
    {"comment_that_is_left_open", InRoot("<!-- "), "malformed XML: unclosed token"},
    {"attribute_twice", InRoot("<a b=\"1\" c=\"2\" b=\"1\"/>"), "duplicate attribute"},
    {"attribute_without_quotes", InRoot("<a b=1/>"), "malformed XML"},
    {"attributes_not_parted", InRoot("<a b=\"1\"c=\"2\"/>"), "malformed XML"},
    {"tag_in_an_attribute", InRoot("<a b=\"<\"/>"), "malformed XML"},
    {"tag_without_a_name", InRoot("< a/>"), "malformed XML"},
    {"tag_that_begins_with_a_digit", InRoot("<1/>"), "malformed XML"},
    {"declaration_inside", InRoot("<?xml version=\"1.0\"?>"), "malformed XML"},
};

class BadXmlDocument : public testing::TestWithParam<BadXml> {};

TEST_P(BadXmlDocument, IsRefusedWithItsPlace) {
    const ReadResult result = ReadDwxmzBytes(ZipOf(GetParam().document), "bad.dwxmz");
    EXPECT_EQ(result.data, nullptr);
    EXPECT_EQ(result.problems.size(), 1u);
    EXPECT_NE(Lines(result).find(GetParam().told), std::string::npos) << Lines(result);
}

INSTANTIATE_TEST_SUITE_P(All, BadXmlDocument, testing::ValuesIn(kBadXml),
                         [](const auto& row) { return row.param.name; });

// What parts texts takes room as elements do.
TEST(LargeXml, SectionsAreBounded) {
    std::string content;
    for (int i = 0; i < 5'000'001; ++i) content += "<![CDATA[]]>";
    const ReadResult result =
        ReadDwxmzBytes(ZipOf({{"case.xml", InRoot(content), false}}), "large.dwxmz");
    EXPECT_NE(Lines(result).find("more than 5000000 elements and attributes"), std::string::npos);
}

TEST(LargeXml, AttributesOfOneTagAreBounded) {
    std::string tag = "<a";
    for (int i = 0; i < 5'000'001; ++i) tag += " a=''";
    const ReadResult result =
        ReadDwxmzBytes(ZipOf({{"case.xml", InRoot(tag + "/>"), false}}), "large.dwxmz");
    EXPECT_NE(Lines(result).find("more than 5000000 elements and attributes"), std::string::npos);
}

// The title of a case whose element for it holds this.
std::string TitleOf(const std::string& content) {
    const ReadResult result = ReadDwxmzBytes(
        ZipOf(SmallFlowsheetWith("<DWSIM_Simulation_Data>",
                                 "<DWSIM_Simulation_Data><Settings><SimulationComments>" + content +
                                     "</SimulationComments></Settings>")),
        "title.dwxmz");
    return result.data ? result.data->title : Lines(result);
}

TEST(XmlText, IsTrimmed) {
    EXPECT_EQ(TitleOf("\r\n  two words\t\n"), "two words");
}

TEST(XmlText, ReferencesStandForTheirCharacters) {
    EXPECT_EQ(TitleOf("&lt;a&gt; &amp; &quot;&apos; &#233;&#x20AC;"),
              "<a> & \"' \xC3\xA9\xE2\x82\xAC");
}

TEST(XmlText, PartsAroundCommentsAndSectionsAreOneText) {
    EXPECT_EQ(TitleOf("one<!-- c --> two <![CDATA[<3>]]><?p?> four"), "one two <3> four");
    EXPECT_EQ(TitleOf("<![CDATA[ one ]]>two"), "one two");
}

TEST(XmlText, BesideElementsIsNotRead) {
    EXPECT_EQ(TitleOf("one<b>two</b>three"), "");
}

TEST(XmlText, NeedsNoByteOrderMark) {
    std::string document = SmallFlowsheet();
    ASSERT_EQ(document.compare(0, 3, "\xEF\xBB\xBF"), 0);
    const ReadResult result = ReadDwxmzBytes(ZipOf(document.substr(3)), "bare");
    EXPECT_NE(result.data, nullptr) << Lines(result);
}

}  // namespace

}  // namespace fixtop::casehost::test
