// SPDX-License-Identifier: Apache-2.0
// The backup form: written byte for byte, read, and its nodes found.

#include "collection/selected_tree.h"
#include "support/log_lines.h"

namespace fixtop {

namespace {

constexpr char kNothingRead[] = "No element under this node";

class BackupText : public SelectedTree {
 protected:
    bool Load(const std::string& text) { return items_->Load(text.c_str(), *top_.Iterate()); }
    bool LoadSteps(const std::string& body) {
        return Load(Backup("<Pathnode id=\"Top\">" + body + "</Pathnode>"));
    }
    // Written, read and written again it is the same, and so is what is read.
    void ExpectSameAgain() {
        const std::string written = Xml();
        const Collected again = Collection::Make();
        ASSERT_TRUE(again->Load(written.c_str(), *top_.Iterate())) << written;
        EXPECT_EQ(written, XmlOf(*again));
        EXPECT_EQ(Paths(), PathsOf(*again));
        EXPECT_EQ(Values(), ValuesOf(*again));
    }
};

// ---- writing

TEST_F(BackupText, of_an_empty_collection_has_only_its_tags) {
    EXPECT_EQ("<?xml version=\"1.0\" ?>\n<CollectionBackup>\n</CollectionBackup>\n", Xml());
    Add("Feed");
    items_->RemoveAt(0);
    EXPECT_EQ(Backup(""), Xml());
}

TEST_F(BackupText, is_written_byte_for_byte) {
    const auto it = At("Feed.Temperature");
    FIValue out;
    it->SetDisplayUnit(Text("C"), FIValue(), out);
    items_->Add(*it);
    EXPECT_EQ(
        "<?xml version=\"1.0\" ?>\n"
        "<CollectionBackup>\n"
        " <Pathnode id=\"Top\">\n"
        "  <Pathnode id=\"Feed\">\n"
        "   <Pathnode id=\"Temperature\" loc=\"0\" uom=\"C\"/>\n"
        "  </Pathnode>\n"
        " </Pathnode>\n"
        "</CollectionBackup>\n",
        Xml());
}

TEST_F(BackupText, has_steps_in_the_order_of_their_ids_and_places_in_the_order_of_items) {
    Add("Product.Temperature");
    Add("Product.Pressure");
    Add("Feed.Temperature");
    Add("Product");
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n"
                     "  <Pathnode id=\"Feed\">\n"
                     "   <Pathnode id=\"Temperature\" loc=\"2\"/>\n"
                     "  </Pathnode>\n"
                     "  <Pathnode id=\"Product\" loc=\"3\">\n"
                     "   <Pathnode id=\"Pressure\" loc=\"1\"/>\n"
                     "   <Pathnode id=\"Temperature\" loc=\"0\"/>\n"
                     "  </Pathnode>\n"
                     " </Pathnode>\n"),
              Xml());
    ExpectSameAgain();
}

TEST_F(BackupText, numbers_places_from_0_after_a_removal) {
    items_->AddMatches(*top_.Iterate(), Text("Feed.*"));
    items_->RemoveAt(1);
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n"
                     "  <Pathnode id=\"Feed\">\n"
                     "   <Pathnode id=\"Comp.Frac\" loc=\"1\"/>\n"
                     "   <Pathnode id=\"Temperature\" loc=\"0\"/>\n"
                     "  </Pathnode>\n"
                     " </Pathnode>\n"),
              Xml());
}

TEST_F(BackupText, writes_both_units_behind_the_place) {
    const auto it = At("Feed");
    FIValue out;
    it->SetDisplaySpecUnit(Text("kg/h"), FIValue(), out);
    items_->Add(*it);
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n"
                     "  <Pathnode id=\"Feed\" loc=\"0\" specuom=\"kg/h\"/>\n"
                     " </Pathnode>\n"),
              Xml());
    it->SetDisplayUnit(Text("lb/h"), FIValue(), out);
    items_->Clear();
    items_->Add(*it);
    EXPECT_NE(std::string::npos, Xml().find(" loc=\"0\" uom=\"lb/h\" specuom=\"kg/h\"/>"));
    ExpectSameAgain();
}

TEST_F(BackupText, escapes_ids_and_units) {
    top_.Add("a<b>&\"c'").Set("value", 5);
    const auto it = top_.Iterate();
    ASSERT_TRUE(it->SeekChild("a<b>&\"c'"));
    FIValue out;
    it->SetDisplayUnit(Text("<&>\"'"), FIValue(), out);
    items_->Add(*it);
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n"
                     "  <Pathnode id=\"a&lt;b&gt;&amp;&quot;c&apos;\" loc=\"0\" "
                     "uom=\"&lt;&amp;&gt;&quot;&apos;\"/>\n"
                     " </Pathnode>\n"),
              Xml());
    ExpectSameAgain();
}

TEST_F(BackupText, comes_back_the_same_for_names_of_any_kind) {
    const char* const names[] = {"1 suction",
                                 "42",
                                 "3.5",
                                 "a.b.c",
                                 "say \"hi\"",
                                 "[x=1]",
                                 "(key)",
                                 "Feed (old)",
                                 "a&b",
                                 "<tag>",
                                 "W\xc3\xa4rme",
                                 "\xe6\xb8\xa9\xe5\xba\xa6",
                                 "*",
                                 "#2",
                                 "%name",
                                 "two\nlines",
                                 "a name that is longer than what lies inside a value",
                                 " blanks around "};
    double number = 100;
    for (const char* name : names) {
        ScriptNode& node = top_.Add(name);
        node.Set("value", number++);
        node.Add(name).Set("value", number++);
    }
    for (const char* name : names) {
        const auto it = top_.Iterate(true);
        ASSERT_TRUE(it->SeekChild(name));
        ASSERT_TRUE(items_->Add(*it)) << name;
        ASSERT_TRUE(it->SeekChild(name));
        ASSERT_TRUE(items_->Add(*it)) << name;
    }
    Words expected;
    for (double each = 100; each < number; ++each) {
        expected.push_back(FIValue::OfReal(each).ToText());
    }
    EXPECT_EQ(expected, Values());
    ExpectSameAgain();
}

TEST_F(BackupText, does_not_indent_further_than_33_blanks) {
    const auto it = top_.Iterate(true);
    ScriptNode* node = &top_;
    for (int depth = 1; depth <= 40; ++depth) {
        const std::string name = "d" + std::to_string(depth);
        node = &node->Add(name).Set("value", depth);
        ASSERT_TRUE(it->SeekChild(name.c_str()));
    }
    items_->Add(*it);
    const std::string text = Xml();
    const auto blanks_of = [&](const std::string& id) {
        const std::size_t tag = text.find("<Pathnode id=\"" + id + "\"");
        return tag - text.rfind('\n', tag) - 1;
    };
    EXPECT_EQ(1u, blanks_of("Top"));
    EXPECT_EQ(32u, blanks_of("d31"));
    EXPECT_EQ(33u, blanks_of("d32"));
    EXPECT_EQ(33u, blanks_of("d33"));
    EXPECT_EQ(33u, blanks_of("d40"));
    ExpectSameAgain();
}

// ---- reading

TEST_F(BackupText, is_read_and_its_nodes_are_found) {
    ASSERT_TRUE(
        LoadSteps("<Pathnode id=\"Feed\"><Pathnode id=\"Pressure\" loc=\"1\"/>"
                  "<Pathnode id=\"Temperature\" loc=\"0\"/></Pathnode>"));
    EXPECT_EQ(Words({"Feed.Temperature", "Feed.Pressure"}), Paths());
    EXPECT_EQ(Words({"1", "2"}), Values());
}

TEST_F(BackupText, takes_the_place_of_what_was_there) {
    Add("Product.Pressure");
    ASSERT_TRUE(LoadSteps("<Pathnode id=\"Feed\" loc=\"0\"/>"));
    EXPECT_EQ(Words({"Feed"}), Paths());
}

TEST_F(BackupText, puts_items_in_the_order_of_their_places_whatever_the_order_of_the_text) {
    ASSERT_TRUE(
        LoadSteps("<Pathnode id=\"c\" loc=\"12\"/><Pathnode id=\"a\" loc=\"3\"/>"
                  "<Pathnode id=\"d\"/><Pathnode id=\"b\" loc=\"7\"/>"
                  "<Pathnode id=\"f\" loc=\"3\"/><Pathnode id=\"e\"/>"));
    // Equal places as they come; those without one behind all that have one.
    EXPECT_EQ(Words({"a", "f", "b", "c", "d", "e"}), Paths());
}

TEST_F(BackupText, a_leaf_without_a_place_is_an_item_at_the_end) {
    ASSERT_TRUE(LoadSteps("<Pathnode id=\"x\"/><Pathnode id=\"y\" loc=\"5\"/>"));
    EXPECT_EQ(Words({"y", "x"}), Paths());
}

TEST_F(BackupText, an_inner_step_without_a_place_is_no_item) {
    ASSERT_TRUE(LoadSteps("<Pathnode id=\"Feed\"><Pathnode id=\"Pressure\"/></Pathnode>"));
    EXPECT_EQ(Words({"Feed.Pressure"}), Paths());
    ASSERT_TRUE(
        LoadSteps("<Pathnode id=\"Feed\" loc=\"0\"><Pathnode id=\"Pressure\"/></Pathnode>"));
    EXPECT_EQ(Words({"Feed", "Feed.Pressure"}), Paths());
}

TEST_F(BackupText, a_place_below_minus_two_comes_before_all_others) {
    ASSERT_TRUE(
        LoadSteps("<Pathnode id=\"a\" loc=\"0\"/><Pathnode id=\"b\" loc=\"-7\"/>"
                  "<Pathnode id=\"c\"/><Pathnode id=\"d\" loc=\"-3\"/>"));
    EXPECT_EQ(Words({"b", "d", "a", "c"}), Paths());
    // The places are counted anew.
    EXPECT_NE(std::string::npos, Xml().find("<Pathnode id=\"b\" loc=\"0\"/>"));
}

TEST_F(BackupText, a_place_of_minus_one_is_none_and_one_of_minus_two_is_at_the_end) {
    ASSERT_TRUE(
        LoadSteps("<Pathnode id=\"a\" loc=\"-2\"/><Pathnode id=\"b\" loc=\"-1\"/>"
                  "<Pathnode id=\"c\" loc=\"4\"/>"));
    EXPECT_EQ(Words({"c", "a"}), Paths());
}

TEST_F(BackupText, an_empty_unit_reads_like_none) {
    ASSERT_TRUE(LoadSteps("<Pathnode id=\"Feed\" loc=\"0\" uom=\"\" specuom=\"\"/>"));
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n  <Pathnode id=\"Feed\" loc=\"0\"/>\n </Pathnode>\n"),
              Xml());
}

TEST_F(BackupText, gives_the_items_their_units) {
    std::string seen;
    Variable(0, 0).on_read = [&](FIVarSet* vars, const std::string&) {
        FIValue unit;
        FIValue spec_unit;
        vars->GetUnit(FIValue(), unit);
        vars->GetSpecUnit(FIValue(), spec_unit);
        seen = Shown(unit) + "/" + Shown(spec_unit);
    };
    ASSERT_TRUE(
        LoadSteps("<Pathnode id=\"Feed\"><Pathnode id=\"Temperature\" loc=\"0\" uom=\"K\" "
                  "specuom=\"F\"/></Pathnode>"));
    Values();
    EXPECT_EQ("K/F", seen);
}

TEST_F(BackupText, keeps_a_unit_that_begins_with_a_digit_as_text) {
    ASSERT_TRUE(LoadSteps("<Pathnode id=\"Feed\" loc=\"0\" uom=\"1/min\" specuom=\"25\"/>"));
    EXPECT_NE(std::string::npos, Xml().find(" uom=\"1/min\" specuom=\"25\"/>"));
    ExpectSameAgain();
}

TEST_F(BackupText, an_id_is_sought_as_a_name_before_its_number_counts_as_a_place) {
    top_.Add("1 suction").Set("value", 50);
    top_.Add("0").Set("value", 60);
    ASSERT_TRUE(
        LoadSteps("<Pathnode id=\"1 suction\" loc=\"0\"/><Pathnode id=\"0\" loc=\"1\"/>"
                  "<Pathnode id=\"1\" loc=\"2\"><Pathnode id=\"2nd\" loc=\"3\"/>"
                  "</Pathnode>"));
    // The second child of the root is Product, the third of that is its fraction.
    EXPECT_EQ(Words({"50", "60", "(NULL)", "6"}), Values());
    FIValue name;
    On(2)->GetName(name);
    EXPECT_EQ("Product", Shown(name));
    // Where a name would have led the place is a guess, and the path stays as it was chosen.
    EXPECT_EQ(Words({"1 suction", "0", "1", "1.2nd"}), Paths());
    // The ids stay as they were.
    EXPECT_NE(std::string::npos, Xml().find("<Pathnode id=\"2nd\" loc=\"3\"/>"));
    ExpectSameAgain();
}

TEST_F(BackupText, a_place_beyond_the_last_child_leads_nowhere) {
    ASSERT_TRUE(
        LoadSteps("<Pathnode id=\"7\"/><Pathnode id=\"99999999999999999999\"/>"
                  "<Pathnode id=\"-1\"/>"));
    EXPECT_EQ(Words({kNothingRead, kNothingRead, kNothingRead}), Values());
}

// ---- elements with keys

class KeyedList : public BackupText {
 protected:
    KeyedList() {
        double number = 20;
        for (const char* key : {"Raw Gas", "Sales.Gas", "Feed"}) {
            ScriptNode& element = top_.Add("Stream");
            keys_.push_back(std::make_unique<ScriptNode>("Name"));
            keys_.back()->Set("value", key);
            element.keys.push_back(keys_.back().get());
            element.Set("value", number++);
        }
        for (int i = 0; i < 3; ++i) top_.Add("Stage").Set("value", number++);
        // References stay on them, who have one name in the list.
        for (ScriptNode* child : top_.children) child->can_notify = true;
    }
    void AddChildAt(int index) {
        const auto it = top_.Iterate();
        ASSERT_TRUE(it->Down(index));
        ASSERT_TRUE(items_->Add(*it));
    }

    std::vector<std::unique_ptr<ScriptNode>> keys_;
};

TEST_F(KeyedList, elements_are_called_by_name_and_key_as_in_a_path) {
    for (int i : {4, 3, 2}) AddChildAt(i);
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n"
                     "  <Pathnode id=\"Stream(&quot;Sales.Gas&quot;)\" loc=\"1\"/>\n"
                     "  <Pathnode id=\"Stream(Feed)\" loc=\"0\"/>\n"
                     "  <Pathnode id=\"Stream(Raw Gas)\" loc=\"2\"/>\n"
                     " </Pathnode>\n"),
              Xml());
    EXPECT_EQ(Words({"Stream(Feed)", "Stream(\"Sales.Gas\")", "Stream(Raw Gas)"}), Paths());
    EXPECT_EQ(Words({"22", "21", "20"}), Values());
    ExpectSameAgain();
}

TEST_F(KeyedList, elements_without_a_key_are_called_by_their_place) {
    for (int i : {7, 5, 6}) AddChildAt(i);
    // The first of them is the one that its name leads to.
    EXPECT_EQ(Words({"*#7", "Stage", "*#6"}), Paths());
    EXPECT_EQ(Words({"25", "23", "24"}), Values());
    ExpectSameAgain();
}

TEST_F(KeyedList, elements_are_found_by_their_key_wherever_they_are) {
    // In the case's own tree nothing has a key.
    top_.name = FIValue("QSISimulation");
    for (int i : {2, 3}) AddChildAt(i);
    const std::string kept = Xml();
    std::swap(top_.children[2], top_.children[3]);
    ASSERT_TRUE(Load(kept));
    EXPECT_EQ(Words({"20", "21"}), Values());
    keys_[1]->Set("value", "Other");
    ASSERT_TRUE(Load(kept));
    EXPECT_EQ(Words({"20", kNothingRead}), Values());
    EXPECT_EQ(Words({"Stream(Raw Gas)", "Stream(\"Sales.Gas\")"}), Paths());
}

TEST_F(KeyedList, a_child_that_is_called_like_a_name_with_a_key_goes_first) {
    top_.Add("Stream(Feed)").Set("value", 99);
    ASSERT_TRUE(LoadSteps("<Pathnode id=\"Stream(Feed)\" loc=\"0\"/>"));
    EXPECT_EQ(Words({"99"}), Values());
    EXPECT_EQ(Words({"\"Stream(Feed)\""}), Paths());
}

// Nothing but their place tells them apart, and a number in front of a name may be the name of one.
TEST_F(KeyedList, elements_of_one_key_are_all_kept) {
    keys_[1]->Set("value", "Raw Gas");
    top_.Add("3").Set("value", 30);
    top_.Add("03").Set("value", 31);
    for (int i : {3, 2, 8, 9}) AddChildAt(i);
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n"
                     "  <Pathnode id=\"003\" loc=\"0\"/>\n"
                     "  <Pathnode id=\"03\" loc=\"3\"/>\n"
                     "  <Pathnode id=\"3\" loc=\"2\"/>\n"
                     "  <Pathnode id=\"Stream(Raw Gas)\" loc=\"1\"/>\n"
                     " </Pathnode>\n"),
              Xml());
    EXPECT_EQ(Words({"21", "20", "30", "31"}), Values());
    EXPECT_EQ("*#3", Paths()[0]);
    ExpectSameAgain();
}

// ---- what can't be found or read

TEST_F(BackupText, a_step_that_is_not_found_stays_with_its_place_and_unit) {
    const std::string body =
        "  <Pathnode id=\"Nobody\">\n"
        "   <Pathnode id=\"Temperature\" loc=\"0\" uom=\"K\"/>\n"
        "  </Pathnode>\n";
    ASSERT_TRUE(LoadSteps(body));
    EXPECT_EQ(Words({kNothingRead}), Values());
    EXPECT_EQ(nullptr, On(0)->GetNode());
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n" + body + " </Pathnode>\n"), Xml());
}

TEST_F(BackupText, a_step_without_an_id_is_not_written_and_what_is_below_it_neither) {
    ASSERT_TRUE(
        LoadSteps("<Pathnode loc=\"0\"><Pathnode id=\"Below\" loc=\"1\"/></Pathnode>"
                  "<Pathnode id=\"Feed\" loc=\"2\"/>"));
    EXPECT_EQ(3, items_->Count());
    FIValue key("left over");
    On(0)->GetKey(key);
    EXPECT_TRUE(key.IsNull());
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n  <Pathnode id=\"Feed\" loc=\"0\"/>\n </Pathnode>\n"),
              Xml());
}

TEST_F(BackupText, steps_that_lead_to_no_item_are_not_written) {
    ASSERT_TRUE(
        LoadSteps("<Pathnode id=\"a\" loc=\"-1\"/><Pathnode id=\"b\"><Pathnode loc=\"1\"/>"
                  "</Pathnode><Pathnode id=\"Feed\" loc=\"0\"><Pathnode/></Pathnode>"));
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n  <Pathnode id=\"Feed\" loc=\"0\"/>\n </Pathnode>\n"),
              Xml());
    // As they would be items in what is read back.
    const Collected again = Collection::Make();
    ASSERT_TRUE(again->Load(Xml().c_str(), *top_.Iterate()));
    EXPECT_EQ(Words({"Feed"}), PathsOf(*again));
}

TEST_F(BackupText, a_step_that_is_written_twice_is_one) {
    ASSERT_TRUE(
        LoadSteps("<Pathnode id=\"Feed\"><Pathnode id=\"Pressure\"/></Pathnode>"
                  "<Pathnode id=\"Feed\" loc=\"9\"><Pathnode id=\"Temperature\"/>"
                  "</Pathnode>"));
    EXPECT_EQ(Words({"Feed", "Feed.Pressure", "Feed.Temperature"}), Paths());
    ExpectSameAgain();
}

TEST_F(BackupText, of_several_roots_the_last_one_counts) {
    ASSERT_TRUE(
        Load(Backup("<Pathnode id=\"Top\"><Pathnode id=\"Feed\"/></Pathnode>"
                    "<Pathnode id=\"Top\"><Pathnode id=\"Product\"/></Pathnode>")));
    EXPECT_EQ(Words({"Product"}), Paths());
}

TEST_F(BackupText, the_root_is_the_top_whatever_it_is_called) {
    ASSERT_TRUE(Load(Backup("<Pathnode id=\"Old\"><Pathnode id=\"Feed\"/></Pathnode>")));
    FIValue name;
    On(0)->GetName(name);
    EXPECT_EQ("Feed", Shown(name));
    ASSERT_TRUE(Load(Backup("<Pathnode id=\"Top\" loc=\"0\"/>")));
    On(0)->GetName(name);
    EXPECT_EQ("Top", Shown(name));
}

TEST_F(BackupText, an_unknown_element_is_skipped_with_a_warning) {
    const TemporaryFolder folder;
    const LogLines log(folder, 5);
    ASSERT_TRUE(LoadSteps("<Other><Pathnode id=\"Feed\"/></Other><Pathnode id=\"Product\"/>"));
    EXPECT_EQ(Words({"Product"}), Paths());
    ASSERT_EQ(1u, log.Lines().size());
    EXPECT_NE(std::string::npos, log.Lines()[0].find("unknown element <Other>"));
}

TEST_F(BackupText, that_is_none_clears_the_collection) {
    const char* const texts[] = {"",
                                 "no document",
                                 "<CollectionBackup>",
                                 "<CollectionBackup><Pathnode id=\"a\"></CollectionBackup>",
                                 "<Other/>",
                                 "<Pathnode id=\"Top\"/>",
                                 "<!DOCTYPE x [<!ENTITY e \"e\">]><CollectionBackup/>"};
    for (const char* text : texts) {
        Add("Feed");
        EXPECT_FALSE(Load(text)) << text;
        EXPECT_EQ(0, items_->Count()) << text;
        EXPECT_EQ(Backup(""), Xml()) << text;
    }
    Add("Feed");
    EXPECT_FALSE(items_->Load(nullptr, *top_.Iterate()));
    EXPECT_EQ(0, items_->Count());
}

TEST_F(BackupText, that_is_nested_without_end_is_refused) {
    const auto nested = [](int depth) {
        std::string body;
        for (int i = 0; i < depth; ++i) body += "<Pathnode id=\"d\">";
        for (int i = 0; i < depth; ++i) body += "</Pathnode>";
        return Backup(body);
    };
    EXPECT_TRUE(Load(nested(Collection::kMostSteps)));
    EXPECT_FALSE(Load(nested(Collection::kMostSteps + 1)));
    EXPECT_FALSE(Load(nested(100000)));
}

TEST_F(BackupText, keeps_ids_of_any_length) {
    const std::string name(5000, 'n');
    top_.Add(name).Set("value", 77);
    const auto it = top_.Iterate();
    ASSERT_TRUE(it->SeekChild(name.c_str()));
    items_->Add(*it);
    EXPECT_EQ(Words({"77"}), Values());
    ExpectSameAgain();
}

// ---- without an iterator

TEST_F(BackupText, is_read_without_an_iterator_and_sought_from_the_top_that_is_there) {
    const std::string text = Backup(
        " <Pathnode id=\"Top\">\n  <Pathnode id=\"Feed\">\n"
        "   <Pathnode id=\"Pressure\" loc=\"0\"/>\n  </Pathnode>\n </Pathnode>\n");
    EXPECT_TRUE(items_->FromXml(text.c_str()));
    EXPECT_EQ(Words({"Feed.Pressure"}), Paths());
    EXPECT_EQ(Words({kNothingRead}), Values());
    EXPECT_EQ(text, Xml());
    items_->Clear();
    Add("Product");
    EXPECT_TRUE(items_->FromXml(text.c_str()));
    EXPECT_EQ(Words({"2"}), Values());
    EXPECT_FALSE(items_->FromXml("<Selection/>"));
    EXPECT_EQ(0, items_->Count());
    EXPECT_FALSE(items_->FromXml(nullptr));
}

TEST_F(BackupText, the_first_node_that_is_added_gives_a_top_to_what_was_read_without) {
    ASSERT_TRUE(items_->FromXml(
        Backup("<Pathnode id=\"Top\"><Pathnode id=\"Feed\"><Pathnode id=\"Pressure\"/>"
               "</Pathnode></Pathnode>")
            .c_str()));
    Add("Product.Temperature");
    EXPECT_EQ(Words({kNothingRead, "4"}), Values());
    items_->StartWatching();
    EXPECT_EQ(Words({"2", "4"}), Values());
}

TEST_F(BackupText, the_way_to_all_items_is_gone_once) {
    ScriptNode& wide = top_.Add("Wide");
    for (int i = 0; i < 50; ++i) wide.Add("v" + std::to_string(i)).Set("value", i);
    items_->AddMatches(*top_.Iterate(), Text("Wide.*"));
    const std::string kept = Xml();
    int entered = 0;
    const Collected again = Collection::Make();
    top_.on_children = [&] { ++entered; };
    ASSERT_TRUE(again->Load(kept.c_str(), *top_.Iterate()));
    top_.on_children = nullptr;
    EXPECT_EQ(1, entered);
    EXPECT_EQ("49", ValuesOf(*again).back());
}

}  // namespace

}  // namespace fixtop
