// SPDX-License-Identifier: Apache-2.0
// The form of selections: whole paths, one an item.

#include "collection/selected_tree.h"

namespace fixtop {

namespace {

class SelectionText : public SelectedTree {
 protected:
    static std::string Selection(const Words& paths) {
        std::string items;
        for (const std::string& path : paths) items += "<Item><Path>" + path + "</Path></Item>\n";
        return "<Selection>\n<Items>\n" + items + "</Items>\n</Selection>\n";
    }
    bool Load(const std::string& text) { return items_->Load(text.c_str(), *top_.Iterate()); }
};

TEST_F(SelectionText, adds_the_nodes_in_the_order_of_the_text) {
    ASSERT_TRUE(Load(Selection({"Top.Product.Pressure", "Top.Feed", "Top.Feed.\"Comp.Frac\""})));
    EXPECT_EQ(Words({"Product.Pressure", "Feed", "Feed.\"Comp.Frac\""}), Paths());
    EXPECT_EQ(Words({"5", "(NULL)", "3"}), Values());
}

TEST_F(SelectionText, takes_paths_without_the_name_of_the_root_too) {
    ASSERT_TRUE(Load(Selection({"Feed.Pressure", "Top.Feed.Temperature", "Top"})));
    EXPECT_EQ(Words({"Feed.Pressure", "Feed.Temperature", ""}), Paths());
}

TEST_F(SelectionText, a_whole_path_goes_before_one_below_a_child_of_the_same_name) {
    top_.Add("Top").Add("Feed").Add("Pressure").Set("value", 99);
    ASSERT_TRUE(Load(Selection({"Top.Feed.Pressure", "Top.Top.Feed.Pressure"})));
    EXPECT_EQ(Words({"2", "99"}), Values());
}

TEST_F(SelectionText, leaves_out_what_is_not_found) {
    ASSERT_TRUE(Load(Selection({"Top.Nobody", "Top.Feed.Pressure", "", "Feed[[", "Nobody.Feed"})));
    EXPECT_EQ(Words({"Feed.Pressure"}), Paths());
}

TEST_F(SelectionText, adds_a_node_that_is_there_twice_once) {
    ASSERT_TRUE(Load(Selection({"Feed", "Product", "Top.Feed"})));
    EXPECT_EQ(Words({"Feed", "Product"}), Paths());
}

TEST_F(SelectionText, takes_the_place_of_what_was_there) {
    Add("Product");
    ASSERT_TRUE(Load(Selection({"Feed"})));
    EXPECT_EQ(Words({"Feed"}), Paths());
    ASSERT_TRUE(Load("<Selection/>"));
    EXPECT_EQ(0, items_->Count());
}

TEST_F(SelectionText, reads_the_characters_of_a_path_as_they_stand) {
    ScriptNode& odd = top_.Add("a<b>&c");
    odd.Set("value", 7);
    ASSERT_TRUE(Load(Selection({"Feed.Pres<!-- a comment -->sure", "\"a&lt;b&gt;&amp;c\"",
                                "<![CDATA[\"a<b>&c\"]]>", " Feed"})));
    EXPECT_EQ(Words({"2", "7"}), Values());
}

TEST_F(SelectionText, looks_from_the_root_wherever_the_iterator_stands) {
    ASSERT_TRUE(items_->Load(Selection({"Top.Feed.Pressure"}).c_str(), *At("Product")));
    EXPECT_EQ(Words({"2"}), Values());
}

TEST_F(SelectionText, is_kept_in_the_backup_form_from_then_on) {
    ASSERT_TRUE(Load(Selection({"Feed"})));
    EXPECT_EQ(Backup(" <Pathnode id=\"Top\">\n  <Pathnode id=\"Feed\" loc=\"0\"/>\n </Pathnode>\n"),
              Xml());
}

TEST_F(SelectionText, that_is_broken_clears_the_collection) {
    Add("Feed");
    EXPECT_FALSE(Load("<Selection><Items><Item><Path>Feed</Path></Item></Items>"));
    EXPECT_EQ(0, items_->Count());
}

TEST_F(SelectionText, keeps_paths_of_any_length) {
    const std::string name(5000, 'n');
    top_.Add(name).Set("value", 77);
    top_.Add(std::string(4096, 'n')).Set("value", 78);
    ASSERT_TRUE(Load(Selection({name})));
    // Names in paths are compared on their first 199 characters; the child is sought by all.
    EXPECT_EQ(Words({"77"}), Values());
}

}  // namespace

}  // namespace fixtop
