// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/log_lines.h"
#include "support/temporary_folder.h"
#include "support/vtable_slot.h"
#include "xml/sax_adapters.h"
#include "xml/sax_element_handler.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FixedLocator final : public XmlLocator {
 public:
    explicit FixedLocator(std::string file = "f.xml", int line = 7)
        : file_(std::move(file)), line_(line) {}
    const char* File() const override { return file_.c_str(); }
    int Line() const override { return line_; }
    int Column() const override { return 1; }

 private:
    std::string file_;
    int line_;
};

using Events = std::vector<std::string>;

// Takes `name`, records what it gets, and has one child for each name in `inside`.
class Recording final : public SaxElementHandler {
 public:
    Recording(std::string name, Events& events, std::vector<std::string> inside, bool warn)
        : name_(std::move(name)), events_(events), inside_(std::move(inside)) {
        SetWarnUnknown(warn);
    }
    ~Recording() override { events_.push_back("gone " + name_); }
    bool OnStart(const std::string& element, const XmlLocator*, const XmlAttributes&) override {
        events_.push_back("ask " + name_);
        if (element != name_) return false;
        for (const std::string& child : inside_) {
            AddChild<Recording>(child, events_, std::vector<std::string>(), false);
        }
        return true;
    }
    void OnText(const std::string& text, const XmlLocator*) override {
        events_.push_back(name_ + " '" + text + "'");
    }
    void OnEnd(const XmlLocator*) override { events_.push_back("end " + name_); }

 private:
    std::string name_;
    Events& events_;
    std::vector<std::string> inside_;
};

class Root final : public SaxElementHandler {
 public:
    Root(Events& events, std::vector<std::string> inside, bool warn) {
        AddChild<Recording>("a", events, std::move(inside), warn);
    }
};

TEST(SaxElementHandler, operations_stand_in_a_fixed_order) {
    const int slots[] = {VtableSlot(&SaxElementHandler::OnEnd),
                         VtableSlot(&SaxElementHandler::OnText),
                         VtableSlot(&SaxElementHandler::OnStart),
                         VtableSlot(&SaxElementHandler::CountAttributes),
                         VtableSlot(&SaxElementHandler::WarnUnexpectedAttributes),
                         VtableSlot(&SaxElementHandler::WarnUnknownElement),
                         VtableSlot(&SaxElementHandler::SevereError),
                         VtableSlot(&SaxElementHandler::Message)};
    for (int i = 0; i < 8; ++i) EXPECT_EQ(slots[i], kDestructorSlots + i) << i;
}

TEST(SaxElementHandler, plain_one_takes_no_element) {
    SaxElementHandler plain;
    EXPECT_FALSE(plain.OnStart("a", nullptr, {{"Name", "x"}}));
    plain.StartElement("a", nullptr, {});
    EXPECT_FALSE(plain.EndElement(nullptr)) << "the end of what was skipped";
    EXPECT_TRUE(plain.EndElement(nullptr));
}

TEST(SaxElementHandler, first_child_that_takes_the_element_is_active_until_it_ends) {
    Events events;
    {
        Root root(events, {"b", "c", "c"}, false);
        const FixedLocator at;
        root.StartElement("a", &at, {});
        root.Text("one", &at);
        root.StartElement("c", &at, {});
        root.Text("two", &at);
        root.Text("three", &at);
        EXPECT_FALSE(root.EndElement(&at));
        root.Text("four", &at);
        EXPECT_FALSE(root.EndElement(&at));
        root.Text("nobody's", &at);
        EXPECT_TRUE(root.EndElement(&at)) << "the top itself";
    }
    EXPECT_THAT(events,
                ElementsAre("ask a", "a 'one'", "ask b", "ask c", "c 'two'", "c 'three'", "end c",
                            "a 'four'", "end a", "gone b", "gone c", "gone c", "gone a"));
}

TEST(SaxElementHandler, unknown_subtree_is_skipped_whole) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    Events events;
    Root root(events, {"b"}, false);
    const FixedLocator at;
    root.StartElement("a", &at, {});
    events.clear();
    root.StartElement("x", &at, {});
    root.StartElement("b", &at, {});
    root.Text("skipped", &at);
    root.EndElement(&at);
    root.Text("skipped", &at);
    root.EndElement(&at);
    root.StartElement("b", &at, {});
    root.Text("taken", &at);
    EXPECT_THAT(events, ElementsAre("ask b", "ask b", "b 'taken'"));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(SaxElementHandler, unknown_element_is_warned_of_once_where_wanted) {
    const TemporaryFolder folder;
    const LogLines log(folder, 5);
    Events events;
    Root root(events, {"b"}, true);
    const FixedLocator at;
    root.StartElement("a", &at, {});
    root.StartElement("x", &at, {});
    root.StartElement("y", &at, {});
    EXPECT_THAT(log.Lines(),
                ElementsAre("  XML Parser Warning: file f.xml at line 7, unknown element <x>"));
}

// Opens the protected operations.
class Teller final : public SaxElementHandler {
 public:
    using SaxElementHandler::GetAttribute;
};

TEST(SaxElementHandler, messages_have_a_form_with_a_place_and_one_without) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    Teller teller;
    const FixedLocator at;
    teller.CountAttributes({{"n", "v"}});
    for (const XmlLocator* locator :
         {static_cast<const XmlLocator*>(&at), static_cast<const XmlLocator*>(nullptr)}) {
        teller.WarnUnexpectedAttributes("E", locator);
        teller.WarnUnknownElement("E", locator);
        teller.SevereError("text", locator);
        teller.Message("text", 6, locator);
    }
    EXPECT_THAT(
        log.Lines(),
        ElementsAre("  XML Parser Warning: file f.xml at line 7, unexpected attribute in E",
                    "  XML Parser Warning: file f.xml at line 7, unknown element <E>",
                    "  XML Parser Severe Error: file f.xml at line 7, text",
                    "  XML Parser Message: file f.xml at line 7, text",
                    "  XML Parser Warning: file, unexpected attribute in E",
                    "  XML Parser Warning: file, unknown element <E>",
                    "   XML Parser Severe Error: file, text", "   XML Parser Message: file, text"));
}

TEST(SaxElementHandler, messages_pass_the_log_level) {
    const TemporaryFolder folder;
    for (const int level : {4, 5, 6}) {
        const LogLines log(folder, level);
        Teller teller;
        teller.CountAttributes({{"n", "v"}});
        teller.WarnUnexpectedAttributes("E", nullptr);
        teller.WarnUnknownElement("E", nullptr);
        teller.Message("text", 6, nullptr);
        teller.SevereError("text", nullptr);
        EXPECT_EQ(log.Lines().size(), level == 4 ? 1u : level == 5 ? 3u : 4u) << level;
    }
}

TEST(SaxElementHandler, messages_show_at_most_999_characters_of_a_path) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    Teller teller;
    const FixedLocator at(std::string(1500, 'p'));
    teller.SevereError("text", &at);
    EXPECT_THAT(log.Lines(), ElementsAre("  XML Parser Severe Error: file " +
                                         std::string(999, 'p') + " at line 7, text"));
}

TEST(SaxElementHandler, attributes_are_got_by_exact_name_and_counted) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    const XmlAttributes attributes = {{"Name", "v"}, {"Other", ""}};
    Teller teller;
    std::string out = "kept";
    EXPECT_FALSE(teller.GetAttribute("name", attributes, out));
    EXPECT_EQ(out, "kept");
    teller.CountAttributes(attributes);
    EXPECT_TRUE(teller.GetAttribute("Name", attributes, out));
    EXPECT_EQ(out, "v");
    teller.WarnUnexpectedAttributes("E", nullptr);
    EXPECT_EQ(log.Lines().size(), 1u) << "one is left";
    EXPECT_TRUE(teller.GetAttribute("Other", attributes, out));
    EXPECT_EQ(out, "");
    teller.WarnUnexpectedAttributes("E", nullptr);
    EXPECT_EQ(log.Lines().size(), 1u);
}

// Keeps everything that reaches it.
class Keeper final : public SaxElementHandler {
 public:
    explicit Keeper(Events& events) : events_(events) {}
    bool OnStart(const std::string& element, const XmlLocator*,
                 const XmlAttributes& attributes) override {
        events_.push_back(element);
        for (const auto& [name, value] : attributes) {
            events_.emplace_back(name);
            events_.emplace_back(value);
        }
        return true;
    }
    void OnText(const std::string& text, const XmlLocator*) override { events_.push_back(text); }

 private:
    Events& events_;
};

class KeeperDocument final : public SaxElementHandler {
 public:
    explicit KeeperDocument(Events& events) { AddChild<Keeper>(events); }
};

TEST(SaxContentAdapter, cuts_names_values_and_texts) {
    Events events;
    KeeperDocument document(events);
    SaxContentAdapter adapter(document);
    const FixedLocator at;
    const std::string long_text(5000, 'x');
    const std::string wide = std::string(4095, 'x') + "\xC3\xA9";
    adapter.StartElement(long_text, {{long_text, long_text}, {"k", wide}}, at);
    adapter.Text(std::string(4096, 'y'), at);
    adapter.Text(std::string(4097, 'y'), at);
    adapter.EndElement(long_text, at);
    const std::string cut(4096, 'x');
    EXPECT_THAT(events, ElementsAre(cut, cut, cut, "k", std::string(4095, 'x'),
                                    std::string(4096, 'y'), std::string(4096, 'y')));
}

TEST(SaxErrorAdapter, errors_are_always_written_and_warnings_by_level) {
    const TemporaryFolder folder;
    const FixedLocator at;
    for (const int level : {0, 5}) {
        const LogLines log(folder, level);
        SaxErrorAdapter adapter;
        adapter.Error("e", at);
        adapter.FatalError("f", at);
        adapter.Warning("w", at);
        Events expected = {"  XML Parser Severe Error: file f.xml at line 7, e",
                           "  XML Parser Severe Error: file f.xml at line 7, f"};
        if (level == 5) expected.push_back("  XML Parser Message: file f.xml at line 7, w");
        EXPECT_EQ(log.Lines(), expected) << level;
    }
}

}  // namespace

}  // namespace fixtop
