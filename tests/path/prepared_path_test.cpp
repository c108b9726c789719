// SPDX-License-Identifier: Apache-2.0
// Prepared paths: their stretches, their texts, and all the nodes that they lead to.

#include "path/prepared_path.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "framework/path/path_match.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

// The texts of the steps as written, with " / " between them and " // " between stretches.
std::string Cut(const char* expression) {
    const PreparedPath path(Text(expression));
    std::string cut;
    for (const PathStretch& stretch : path.Stretches()) {
        if (&stretch != &path.Stretches().front()) cut += " // ";
        if (!stretch.error.IsNull()) {
            cut += "?";
            continue;
        }
        for (const PathStep* step = stretch.steps.get(); step; step = step->Next()) {
            if (step != stretch.steps.get()) cut += " / ";
            cut += path.BareText(*step) + "|" + path.Text(*step);
        }
    }
    return cut;
}

struct CutRow {
    const char* expression;
    const char* cut;
};

class PreparedPathCut : public ::testing::TestWithParam<CutRow> {};

TEST_P(PreparedPathCut, keeps_the_text_of_each_step) {
    EXPECT_EQ(GetParam().cut, Cut(GetParam().expression));
}

INSTANTIATE_TEST_SUITE_P(
    Expressions, PreparedPathCut,
    ::testing::Values(CutRow{"", "|"}, CutRow{"a.b", "a|a / b|b"}, CutRow{"a . b", "a |a  /  b| b"},
                      CutRow{R"("a.b"."c""d")", R"("a.b"|"a.b" / "c""d"|"c""d")"},
                      CutRow{"a#2.b", "a#2|a#2 / b|b"}, CutRow{"%n#%m", "%n#%m|%n#%m"},
                      CutRow{"'x.y", "'x|'x / y|y"},
                      CutRow{"*[a.b][c=d]|![e].f", "*[a.b][c=d]|![e]|*[a.b][c=d]|![e] / f|f"},
                      CutRow{"a(b)", "a|a(b)"}, CutRow{R"(a("b c").d)", R"(a|a("b c") // d|d)"},
                      CutRow{"a(b)(c)", "a|a(b) // |(c)"},
                      CutRow{"a(b).c(d).e", "a|a(b) // c|c(d) // e|e"},
                      // Behind an attribute nothing is read.
                      CutRow{"a(b)c", "a|a(b)"}, CutRow{"a(b).", "a|a(b)"},
                      CutRow{"a(b).c[", "a|a(b) // ?"}));

TEST(PreparedPath, error_is_that_of_the_first_stretch) {
    EXPECT_EQ("Parse error, ] expected in: a[b", PreparedPath(Text("a[b")).Error().ToText());
    // What follows parentheses counts when it is walked.
    EXPECT_TRUE(PreparedPath(Text("a(b).c[")).Error().IsNull());
}

// Two units with three vessels each; vessels have a name in their key and a pressure.
class PathMatches : public ::testing::Test {
 protected:
    PathMatches() {
        for (const char* unit : {"Column", "Flash"}) {
            ScriptNode& node = root_.Add(unit);
            node.Set("type", unit);
            for (const char* key : {"Top", "Feed", "Top"}) {
                ScriptNode& vessel = node.Add("Vessel");
                keys_.push_back(std::make_unique<ScriptNode>("Name"));
                vessel.keys = {&keys_.back()->Set("value", key)};
                ScriptNode& pressure = vessel.Add("Pressure");
                pressure.Set("value", static_cast<double>(keys_.size()));
                if (keys_.size() != 2) pressure.Set("uom", "kPa");
            }
        }
        it_ = root_.Iterate();
    }

    std::vector<std::string> Matches(const char* expression, int at_most = 100) {
        std::vector<std::string> found;
        const PreparedPath path(Text(expression));
        const int count = ForEachMatch(*it_, path, [&](const PathMatch& match) {
            const Ref<FIIterator> back = root_.Iterate();
            EXPECT_TRUE(back->SeekPath(Text(match.path))) << match.path;
            EXPECT_EQ(0, back->Compare(match.node)) << match.path;
            const std::string attribute = match.attribute.ToText();
            found.push_back(match.path + (attribute.empty() ? "" : "(" + attribute + ")"));
            return static_cast<int>(found.size()) < at_most;
        });
        EXPECT_EQ(static_cast<int>(found.size()), count);
        return found;
    }

    ScriptNode root_{"Root"};
    std::vector<std::unique_ptr<ScriptNode>> keys_;
    Ref<FIIterator> it_;
};

using Paths = std::vector<std::string>;

TEST_F(PathMatches, come_in_the_order_of_the_tree) {
    EXPECT_EQ((Paths{"Column.Vessel(Top)", "Column.Vessel(Feed)", "Column.Vessel#2",
                     "Flash.Vessel(Top)", "Flash.Vessel(Feed)", "Flash.Vessel#2"}),
              Matches("*.Vessel"));
}

TEST_F(PathMatches, below_a_node_have_paths_from_there) {
    ASSERT_TRUE(it_->SeekPath(Text("Column")));
    Paths found;
    const PreparedPath path(Text("*.Pressure(uom)"));
    const int count = ForEachMatchBelow(*it_, path, [&](const PathMatch& match) {
        const Ref<FIIterator> there = Ref<FIIterator>::Adopt(it_->Copy());
        EXPECT_TRUE(there->SeekPath(Text(match.path))) << match.path;
        EXPECT_EQ(0, there->Compare(match.node)) << match.path;
        found.push_back(match.path + "(" + match.attribute.ToText() + ")");
        return true;
    });
    EXPECT_EQ((Paths{"Vessel(Top).Pressure(uom)", "Vessel#2.Pressure(uom)"}), found);
    EXPECT_EQ(2, count);
}

TEST_F(PathMatches, of_every_step_are_followed) {
    EXPECT_EQ((Paths{"Flash.Vessel(Top).Pressure", "Flash.Vessel(Feed).Pressure",
                     "Flash.Vessel#2.Pressure"}),
              Matches("*[(type)=Flash].*.Pressure"));
}

TEST_F(PathMatches, of_a_count_are_one_of_each_parent) {
    EXPECT_EQ((Paths{"Column.Vessel(Feed)", "Flash.Vessel(Feed)"}), Matches("*.Vessel#1"));
    EXPECT_EQ(Paths{}, Matches("*.Vessel#3"));
}

TEST_F(PathMatches, of_a_key_before_a_step_have_it) {
    EXPECT_EQ((Paths{"Column.Vessel(Top).Pressure", "Column.Vessel#2.Pressure"}),
              Matches("Column.Vessel(Top).Pressure"));
}

TEST_F(PathMatches, of_an_attribute_are_nodes_that_have_it) {
    EXPECT_EQ((Paths{"Column.Vessel(Top).Pressure(uom)", "Column.Vessel#2.Pressure(uom)"}),
              Matches("Column.*.Pressure(uom)"));
}

TEST_F(PathMatches, pass_the_filters) {
    EXPECT_EQ(Paths{"Column.Vessel(Feed)"}, Matches("*.*[Pressure=2]"));
}

TEST_F(PathMatches, end_when_the_visitor_has_seen_enough) {
    EXPECT_EQ((Paths{"Column.Vessel(Top)", "Column.Vessel(Feed)"}), Matches("*.*", 2));
}

TEST_F(PathMatches, begin_where_the_iterator_stands) {
    ASSERT_TRUE(it_->SeekChild("Flash"));
    EXPECT_EQ(Paths{"Flash.Vessel(Feed)"}, Matches("Vessel#1"));
    EXPECT_EQ(Paths{"Flash"}, Matches(""));
}

TEST_F(PathMatches, walk_goes_to_the_first_and_tells_the_attribute) {
    FIValue attribute;
    EXPECT_TRUE(it_->SeekPath(PreparedPath(Text("*.Vessel#1.Pressure(value)")), attribute));
    EXPECT_EQ("value", attribute.ToText());
    EXPECT_EQ(3, it_->Depth());
    EXPECT_FALSE(it_->SeekPath(PreparedPath(Text("nothing")), attribute));
    EXPECT_EQ(3, it_->Depth());
}

struct EndRow {
    const char* expression;
    const char* found;
    const char* name;
    const char* step;
    const char* parentheses;  // null for NULL
    bool goes_on;
};

TEST_F(PathMatches, end_of_a_path_that_leads_nowhere_is_told) {
    const std::vector<EndRow> rows = {
        {"Colum.Vessel", "", "Colum", "Colum", nullptr, true},
        {"Column.\"V.1\"#2", "Column", "V.1", "\"V.1\"#2", nullptr, false},
        {"Column.Vessel(Botom)", "Column.Vessel", "Vessel", "Vessel", "Botom", false},
        {"Column.Vessel(Botom).Pressure", "Column.Vessel", "Vessel", "Vessel", "Botom", true},
        {"Column.Vessel(Top).Presure", "Column.Vessel(Top)", "Presure", "Presure", nullptr, false},
        {"Column.Vessel(Top)(", "Column.Vessel(Top)", "", "", nullptr, false},
    };
    for (const EndRow& row : rows) {
        SCOPED_TRACE(row.expression);
        const PathEnd end = EndOf(*it_, PreparedPath(Text(row.expression)));
        EXPECT_EQ(row.found, end.found);
        EXPECT_EQ(row.name, end.name);
        EXPECT_EQ(row.step, end.step);
        EXPECT_EQ(row.parentheses == nullptr, end.parentheses.IsNull());
        EXPECT_EQ(row.parentheses ? row.parentheses : "", end.parentheses.ToText());
        EXPECT_EQ(row.goes_on, end.goes_on);
    }
}

}  // namespace

}  // namespace fixtop
