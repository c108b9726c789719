// SPDX-License-Identifier: Apache-2.0
#include "platform/xml_reader.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/file_search.h"
#include "platform/open_file.h"
#include "platform/xml_guard.h"
#include "support/temporary_folder.h"

namespace fixtop {

namespace {

void WriteUnder(const std::filesystem::path& path, const char* text) {
    std::ofstream(path, std::ios::binary) << text;
}

// Writes every event as one short text.
class Recorder final : public XmlContentHandler, public XmlErrorHandler {
 public:
    void StartElement(const std::string& name, const XmlAttributes& attributes,
                      const XmlLocator& locator) override {
        std::string event = "<" + name;
        for (const auto& [key, value] : attributes) {
            event.append(" ").append(key).append("='").append(value).append("'");
        }
        Add(event + ">", locator);
    }
    void EndElement(const std::string& name, const XmlLocator& locator) override {
        Add("</" + name + ">", locator);
    }
    void Text(const std::string& text, const XmlLocator& locator) override {
        Add("'" + text + "'", locator);
    }
    void Warning(const std::string&, const XmlLocator&) override { ++warnings; }
    void Error(const std::string&, const XmlLocator&) override { ++errors; }
    void FatalError(const std::string& text, const XmlLocator& locator) override {
        ++fatals;
        fatal = text;
        fatal_line = locator.Line();
        file = locator.File();
    }

    std::string Joined() const {
        std::string all;
        for (const std::string& event : events) all += event;
        return all;
    }

    std::vector<std::string> events;
    std::vector<int> lines;
    std::vector<int> columns;
    std::string file;
    std::string fatal;
    int fatal_line = 0;
    int warnings = 0;
    int errors = 0;
    int fatals = 0;

 private:
    void Add(const std::string& event, const XmlLocator& locator) {
        events.push_back(event);
        lines.push_back(locator.Line());
        columns.push_back(locator.Column());
        file = locator.File();
    }
};

XmlOutcome Parse(const std::string& text, Recorder& recorder) {
    const std::unique_ptr<XmlReader> reader = CreateXmlReader();
    if (!reader || !reader->Attach(recorder, recorder)) return XmlOutcome::kNotFound;
    return reader->ParseText(text, "text.xml");
}

std::string Nested(int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "<a>";
    for (int i = 0; i < depth; ++i) text += "</a>";
    return text;
}

std::string Utf16(const std::string& ascii, bool big) {
    std::string text = big ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : ascii) {
        if (big) text += '\0';
        text += c;
        if (!big) text += '\0';
    }
    return text;
}

struct WellFormed {
    const char* text;
    const char* events;
};

TEST(XmlReader, tells_elements_attributes_and_text) {
    const WellFormed rows[] = {
        {"<a/>", "<a></a>"},
        {"<?xml version='1.0'?>\n<a x='1' y=\"2\"/>\n", "<a x='1' y='2'></a>"},
        {"<a><b>t</b> </a>", "<a><b>'t'</b>' '</a>"},
        {"<a>1 &lt; 2 &amp;\n&#51;</a>", "<a>'1 < 2 &\n3'</a>"},
        {"<a>x<!-- c -->y</a>", "<a>'x''y'</a>"},
        {"<a>x<?p q?>y</a>", "<a>'xy'</a>"},
        {"<a>x<![CDATA[<y>]]>z</a>", "<a>'x''<y>''z'</a>"},
        {"<a k='&quot;&#x41;'/>", "<a k='\"A'></a>"},
        {"<p:a xmlns:p='u'/>", "<p:a xmlns:p='u'></p:a>"},
        {"<a>\xC3\xA9</a>", "<a>'\xC3\xA9'</a>"},
        {"\xEF\xBB\xBF<a>x</a>", "<a>'x'</a>"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>", "<a>'\xC3\xA9'</a>"},
        {"<a>one\r\ntwo</a>", "<a>'one\ntwo'</a>"},
        {"<a>!DOCTYPE !ENTITY</a>", "<a>'!DOCTYPE !ENTITY'</a>"},
        {"<a><![CDATA[<!DOCTYPE a>]]></a>", "<a>'<!DOCTYPE a>'</a>"},
        {"<!-- <!DOCTYPE a> --><?p <!DOCTYPE a>?><a><!-- <!DOCTYPE a> --></a>", "<a></a>"},
        {"<!--><!DOCTYPE a>--><a/>", "<a></a>"},
    };
    for (const WellFormed& row : rows) {
        Recorder recorder;
        EXPECT_EQ(Parse(row.text, recorder), XmlOutcome::kDone) << row.text << recorder.fatal;
        EXPECT_EQ(recorder.Joined(), row.events) << row.text;
        EXPECT_EQ(recorder.fatals + recorder.errors + recorder.warnings, 0) << row.text;
    }
}

TEST(XmlReader, reads_both_orders_of_utf16) {
    for (const bool big : {false, true}) {
        Recorder recorder;
        EXPECT_EQ(Parse(Utf16("<a k='v'>x</a>", big), recorder), XmlOutcome::kDone) << big;
        EXPECT_EQ(recorder.Joined(), "<a k='v'>'x'</a>") << big;
    }
}

TEST(XmlReader, long_text_comes_in_one_piece) {
    std::string body;
    for (int i = 0; i < 5000; ++i) body += "line " + std::to_string(i) + "\n";
    Recorder recorder;
    EXPECT_EQ(Parse("<a>" + body + "</a>", recorder), XmlOutcome::kDone);
    ASSERT_EQ(recorder.events.size(), 3u);
    EXPECT_EQ(recorder.events[1], "'" + body + "'");
}

TEST(XmlReader, locator_stands_behind_the_tag) {
    Recorder recorder;
    Parse("<a>\n <b\n  x='1'>text</b>\n</a>", recorder);
    EXPECT_EQ(recorder.file, "text.xml");
    ASSERT_EQ(recorder.Joined(), "<a>'\n '<b x='1'>'text'</b>'\n'</a>");
    const std::vector<int>& lines = recorder.lines;
    EXPECT_EQ((std::vector<int>{lines[0], lines[2], lines[4], lines[6]}),
              (std::vector<int>{1, 3, 3, 4}));
    for (const int column : recorder.columns) EXPECT_GT(column, 0);
}

TEST(XmlReader, locator_stands_behind_the_text) {
    Recorder recorder;
    Parse("<a>one\ntwo<b/>three\n\n<?p\n?></a>", recorder);
    ASSERT_EQ(recorder.Joined(), "<a>'one\ntwo'<b></b>'three\n\n'</a>");
    const std::vector<int>& lines = recorder.lines;
    EXPECT_EQ((std::vector<int>{lines[1], lines[4], lines[5]}), (std::vector<int>{2, 4, 5}));
}

TEST(XmlReader, malformed_text_is_one_fatal_error) {
    for (const char* text :
         {"<a>", "<a></b>", "<a><b></a></b>", "<a", "<a x=1/>", "<a x='1' x='2'/>", "<a>&none;</a>",
          "<a/><b/>", "<a/>text", "text", "", "   ", "<a>\xFF\xFF</a>", "<1/>", "<a><</a>",
          "<?xml version='1.0' encoding='UTF-7'?><a/>",
          "<?xml version='1.0' encoding='EBCDIC'?><a/>", "<a>&#0;</a>", "<![CDATA[x]]>"}) {
        Recorder recorder;
        EXPECT_EQ(Parse(text, recorder), XmlOutcome::kFailed) << text;
        EXPECT_EQ(recorder.fatals, 1) << text;
        EXPECT_NE(recorder.fatal, "") << text;
    }
}

TEST(XmlReader, fatal_error_tells_the_line) {
    Recorder recorder;
    EXPECT_EQ(Parse("<a>\n<b>\n</c>\n</a>", recorder), XmlOutcome::kFailed);
    // One system names the line of the wrong tag, another that of the last right one.
    EXPECT_GE(recorder.fatal_line, 2);
    EXPECT_LE(recorder.fatal_line, 3);
    EXPECT_EQ(recorder.file, "text.xml");
}

constexpr char kDoctypeRefused[] =
    "a document type declaration is not allowed; expected plain elements only";

TEST(XmlReader, document_types_are_refused_before_anything_is_read) {
    struct {
        std::string text;
        int line;
    } rows[] = {
        {"<!DOCTYPE a><a/>", 1},
        {"<!DOCTYPE a SYSTEM 'nowhere.dtd'><a/>", 1},
        {"<!DOCTYPE a [<!ENTITY x 'xxxxxxxxxx'><!ENTITY y '&x;&x;&x;'>]><a>&y;</a>", 1},
        {"<!DOCTYPE a [<!ENTITY x SYSTEM 'file.txt'>]><a>&x;</a>", 1},
        {"<!DOCTYPE a [<!ENTITY % p 'x'>%p;]><a/>", 1},
        {"<!DOCTYPE a [<!ATTLIST a b CDATA 'default'>]><a/>", 1},
        {"<?xml version='1.0'?>\n<!-- a\n<b> --><?p\n<b>?>\n\t<!DOCTYPE a><a/>", 5},
        {"<!-->--><!DOCTYPE a><a/>", 1},
        {"<!DOCTYPE a", 1},
        {"\xEF\xBB\xBF<!DOCTYPE a><a/>", 1},
    };
    for (const auto& row : rows) {
        for (const std::string& text : {row.text, Utf16(row.text, false), Utf16(row.text, true)}) {
            if (text != row.text && row.text[0] == '\xEF') continue;
            Recorder recorder;
            EXPECT_EQ(Parse(text, recorder), XmlOutcome::kFailed) << text;
            EXPECT_EQ(recorder.fatal, kDoctypeRefused) << text;
            EXPECT_EQ(recorder.fatal_line, row.line) << text;
            EXPECT_TRUE(recorder.events.empty()) << text;
        }
    }
}

// In UTF-16 a character beyond ASCII in front of '>' does not end an instruction.
TEST(XmlReader, document_types_do_not_hide_behind_wide_characters) {
    std::string text;
    for (const char16_t unit : std::u16string(u"\uFEFF<?p \u5B57><a?><!DOCTYPE a><a/>")) {
        text += static_cast<char>(unit & 0xFF);
        text += static_cast<char>(unit >> 8);
    }
    Recorder recorder;
    EXPECT_EQ(Parse(text, recorder), XmlOutcome::kFailed);
    EXPECT_EQ(recorder.fatal, kDoctypeRefused);
}

TEST(XmlReader, encodings_that_hide_text_are_refused) {
    using namespace std::string_literals;
    for (const std::string& text :
         {"<\0\0\0a\0\0\0/\0\0\0>\0\0\0"s, "\0\0\0<\0\0\0a\0\0\0/\0\0\0>"s, "<a>\0</a>"s,
          "\xFF\xFE<\0a"s, "\x4C\xA7\x94\x93"s, "+ADw-a/+AD4-"s}) {
        EXPECT_TRUE(RefusalOfXml(text)) << text;
        Recorder recorder;
        EXPECT_EQ(Parse(text, recorder), XmlOutcome::kFailed);
    }
}

TEST(XmlReader, depth_is_bounded) {
    Recorder at_limit;
    EXPECT_EQ(Parse(Nested(kMaxXmlDepth - 1), at_limit), XmlOutcome::kDone) << at_limit.fatal;
    EXPECT_EQ(at_limit.events.size(), 2u * (kMaxXmlDepth - 1));
    for (const int depth : {kMaxXmlDepth + 1, 100000}) {
        Recorder recorder;
        EXPECT_EQ(Parse(Nested(depth), recorder), XmlOutcome::kFailed) << depth;
        EXPECT_EQ(recorder.fatals, 1) << depth;
        EXPECT_LE(recorder.events.size(), static_cast<std::size_t>(kMaxXmlDepth)) << depth;
    }
}

TEST(XmlReader, length_is_bounded) {
    std::string text = "<a>";
    text.append(kMaxXmlBytes, ' ');
    text += "</a>";
    Recorder recorder;
    EXPECT_EQ(Parse(text, recorder), XmlOutcome::kFailed);
    EXPECT_EQ(recorder.fatal, "The document is too long");
}

TEST(XmlReader, reads_files) {
    const TemporaryFolder folder;
    folder.Write("a.xml", "<a>x</a>");
    folder.Write("bad.xml", "<a>");
    Recorder recorder;
    const std::unique_ptr<XmlReader> reader = CreateXmlReader();
    ASSERT_TRUE(reader->Attach(recorder, recorder));
    EXPECT_EQ(reader->ParseFile(folder.File("none.xml")), XmlOutcome::kNotFound);
    EXPECT_EQ(reader->ParseFile(folder.File("a.xml")), XmlOutcome::kDone);
    EXPECT_EQ(recorder.file, folder.File("a.xml"));
    EXPECT_EQ(reader->ParseFile(folder.File("bad.xml")), XmlOutcome::kFailed);
    EXPECT_EQ(reader->ParseFile(folder.File("a.xml")), XmlOutcome::kDone) << "used again";
    EXPECT_EQ(recorder.Joined(), "<a>'x'</a><a><a>'x'</a>");
}

TEST(XmlReader, without_handlers_nothing_is_parsed) {
    EXPECT_EQ(CreateXmlReader()->ParseText("<a/>", "a"), XmlOutcome::kFailed);
}

// Reads another document out of an event of the first.
class Including final : public XmlContentHandler {
 public:
    explicit Including(Recorder& inner) : inner_(inner) {}
    void StartElement(const std::string&, const XmlAttributes&, const XmlLocator&) override {
        outcome = Parse("<inner/>", inner_);
    }
    void EndElement(const std::string&, const XmlLocator&) override {}
    void Text(const std::string&, const XmlLocator&) override {}

    XmlOutcome outcome = XmlOutcome::kFailed;

 private:
    Recorder& inner_;
};

TEST(XmlReader, documents_may_be_read_within_an_event) {
    Recorder recorder;
    Including including(recorder);
    const std::unique_ptr<XmlReader> reader = CreateXmlReader();
    ASSERT_TRUE(reader->Attach(including, recorder));
    EXPECT_EQ(reader->ParseText("<outer/>", "outer"), XmlOutcome::kDone);
    EXPECT_EQ(including.outcome, XmlOutcome::kDone);
    EXPECT_EQ(recorder.Joined(), "<inner></inner>");
}

class Throwing final : public XmlContentHandler {
 public:
    explicit Throwing(int event) : event_(event) {}
    void StartElement(const std::string&, const XmlAttributes&, const XmlLocator&) override {
        Throw(0);
    }
    void EndElement(const std::string&, const XmlLocator&) override { Throw(1); }
    void Text(const std::string&, const XmlLocator&) override { Throw(2); }

    int calls_after = 0;

 private:
    void Throw(int event) {
        calls_after += thrown_;
        if (event != event_) return;
        thrown_ = 1;
        throw std::runtime_error("handler");
    }
    int event_;
    int thrown_ = 0;
};

TEST(XmlReader, exceptions_of_handlers_come_out) {
    for (const int event : {0, 1, 2}) {
        Recorder errors;
        Throwing throwing(event);
        const std::unique_ptr<XmlReader> reader = CreateXmlReader();
        ASSERT_TRUE(reader->Attach(throwing, errors));
        EXPECT_THROW(reader->ParseText("<a>x<b>y</b></a>", "a"), std::runtime_error) << event;
        EXPECT_EQ(throwing.calls_after, 0) << event;
        EXPECT_EQ(errors.fatals, 0) << event;
    }
}

TEST(XmlReaderFactory, can_be_replaced) {
    const XmlReaderFactory none = []() -> std::unique_ptr<XmlReader> { return nullptr; };
    const XmlReaderFactory former = SetXmlReaderFactory(none);
    EXPECT_EQ(CreateXmlReader(), nullptr);
    EXPECT_EQ(SetXmlReaderFactory(nullptr), none);
    EXPECT_NE(CreateXmlReader(), nullptr);
    EXPECT_EQ(SetXmlReaderFactory(former), former) << "null leads back to the system's reader";
}

TEST(FileSearch, names_that_leave_the_folders_are_told_apart) {
    for (const char* name : {"a.xml", "folder/a.xml", "folder\\a.xml", "..a.xml", "a..", "./a.xml",
                             "com.xml", "com10.xml", "acom1.xml", "nulls.xml", "null", "lpt",
                             "console.xml", "a.nul", "com1a.xml"}) {
        EXPECT_TRUE(StaysInSearchFolders(name)) << name;
    }
    for (const char* name : {"", "/a.xml", "\\a.xml", "C:a.xml", "C:\\a.xml", "..", "../a.xml",
                             "..\\a.xml", "a/../../b.xml", "a\\..\\..\\b.xml", "a/..",
                             "file://host/a.xml", "\\\\host\\share\\a.xml"}) {
        EXPECT_FALSE(StaysInSearchFolders(name)) << name;
    }
    for (const char* name : {"...", ".. ", ". .", "sub/.. /a.xml", "sub\\... \\a.xml", "a/. "}) {
        EXPECT_FALSE(StaysInSearchFolders(name)) << name << ": may be read as a parent";
    }
}

// To open one can wait for ever, or write to a printer.
TEST(FileSearch, names_of_devices_are_refused_on_every_system) {
    for (const char* name : {"NUL",         "nul",           "nul.xml",
                             "NUL.tar.xml", "nul .xml",      "CON",
                             "con.log",     "PRN",           "aux.xml",
                             "COM1",        "com1.xml",      "COM0",
                             "com9 .log",   "LPT1.xml",      "lpt0",
                             "COM\u00b9",   "lpt\u00b3.xml", "CONIN$",
                             "conout$.xml", "folder/nul",    "folder\\COM1.xml",
                             "nul/a.xml"}) {
        EXPECT_FALSE(StaysInSearchFolders(name)) << name;
    }
}

// A name that no code page of one byte holds.
TEST(XmlReader, file_names_are_utf8) {
    const TemporaryFolder folder;
    const std::string name = "Str\u00f6me \u6d41.xml";
    const FilePtr none = OpenFile(name, "rb");
    EXPECT_EQ(none, nullptr);
    EXPECT_FALSE(FileExists(name));
    EXPECT_EQ(FindFileOnPath(name), "");
    WriteUnder(std::u8string(name.begin(), name.end()), "<a/>");
    EXPECT_TRUE(FileExists(name));
    const std::string path = FindFileOnPath(name);
    ASSERT_TRUE(path.ends_with(name)) << path;
    Recorder recorder;
    const std::unique_ptr<XmlReader> reader = CreateXmlReader();
    ASSERT_TRUE(reader->Attach(recorder, recorder));
    EXPECT_EQ(reader->ParseFile(path), XmlOutcome::kDone);
    EXPECT_EQ(recorder.Joined(), "<a></a>");
    EXPECT_EQ(recorder.file, path);
    const FilePtr file = OpenFile(name, "a");
    ASSERT_NE(file, nullptr);
    EXPECT_GT(std::fprintf(file.get(), "x"), 0);
}

TEST(OpenFile, names_that_are_no_file_give_null) {
    const TemporaryFolder folder;
    for (const char* name : {"", "none.txt", "no folder/a.txt"}) {
        EXPECT_EQ(OpenFile(name, "rb"), nullptr) << name;
    }
    EXPECT_EQ(OpenFile("no folder/a.txt", "w"), nullptr);
}

}  // namespace

}  // namespace fixtop
