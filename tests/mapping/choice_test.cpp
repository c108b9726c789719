// SPDX-License-Identifier: Apache-2.0
// The choice among an attribute's translators. The scores in the tables are worked out by hand.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mapping/translators/find_translator.h"
#include "mapping/translators/scalar_translators.h"
#include "mapping_fixture.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// One candidate; its body tells it from the others.
struct Candidate {
    const char* body;
    const char* container = "";
    const char* id = "";
    CCDMBranch branch = CCDMBranch::kBoth;
    std::vector<std::pair<const char*, const char*>> conditions = {};
};

constexpr auto kCalc = CCDMBranch::kCalc;
constexpr auto kSpec = CCDMBranch::kSpec;
constexpr auto kBothFaces = CCDMBranch::kBoth;

CCDMMapTranslator& Add(TranslatorMap& map, const Candidate& candidate,
                       const char* translate_name = "T") {
    auto made = std::make_unique<CCDMMapTranslator>();
    CCDMMapTranslator& translator = *made;
    translator.SetBody(candidate.body);
    translator.container = candidate.container;
    translator.containerId = candidate.id;
    translator.branch = candidate.branch;
    if (!candidate.conditions.empty()) {
        translator.conditions = std::make_shared<CCDMConditionList>();
        for (const auto& [variable, value] : candidate.conditions) {
            translator.conditions->pairs.emplace_back(variable, Text(value));
        }
    }
    map.emplace(translate_name, std::move(made));
    return translator;
}

std::string BodyOf(const CCDMTranslator* translator) {
    if (translator == nullptr) return "(none)";
    std::string text;
    translator->DumpBody(text);
    return text.substr(text.find('>') + 1);
}

// Unit > Pump > Special, Circle <-> Turn, and a class of two ways to one ancestor.
void Fill(CCDMClassLibrary& library) {
    library.GetOrCreateClass("Pump")->superclasses = {"Unit"};
    library.GetOrCreateClass("Special")->superclasses = {"Pump"};
    library.GetOrCreateClass("Circle")->superclasses = {"Turn"};
    library.GetOrCreateClass("Turn")->superclasses = {"Circle"};
    // In the order of the names the long way comes first.
    library.GetOrCreateClass("Both")->superclasses = {"ALong", "Unit"};
    library.GetOrCreateClass("ALong")->superclasses = {"Unit"};
    library.GetOrCreateClass("Unit");
    library.GetOrCreateClass("Stream");
    library.GetOrCreateClass("Case");
}

struct Row {
    const char* levels;
    std::vector<Candidate> candidates;
    const char* chosen;
    int request = 4;
};

class Choice : public testing::Test {
 protected:
    Choice() { Fill(library_); }

    void Check(const std::vector<Row>& rows) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const Row& row = rows[i];
            TranslatorMap map;
            for (const Candidate& candidate : row.candidates) Add(map, candidate);
            const Levels levels(row.levels, &library_);
            const auto request = static_cast<BranchRequest>(row.request);
            const CCDMTranslator* chosen =
                FindTranslator("T", levels.Path(), map, reference_.Get(), request);
            EXPECT_EQ(BodyOf(chosen), row.chosen) << "row " << i << ": " << row.levels;
            const WeighedTranslators weighed("T", levels.Path(), map, reference_.Get());
            EXPECT_EQ(weighed.Has(request), chosen != nullptr) << "row " << i << ": " << row.levels;
        }
    }

    TemporaryFolder folder_;
    LogLines log_{folder_};
    CCDMClassLibrary library_;
    ScriptNode root_{"Root"};
    Ref<FIReference> reference_;
};

TEST_F(Choice, nearest_container_wins) {
    Check({
        // (100 + 100)
        {"Case:c/Pump:p/:x", {{"any"}}, "any"},
        // 200 against k = 1: 10 + 100
        {"Case:c/Pump:p/:x", {{"any"}, {"pump", "Pump"}}, "pump"},
        {"Case:c/Pump:p/:x", {{"pump", "Pump"}, {"any"}}, "pump"},
        // 110 against k = 2: 120
        {"Case:c/Pump:p/:x", {{"case", "Case"}, {"pump", "Pump"}}, "pump"},
        // the level of the entry itself, k = 0: 100 against 110
        {"Case:c/Pump:p/Stream:x", {{"pump", "Pump"}, {"own", "Stream"}}, "own"},
        // the same class on two levels: the nearer one counts, 110 against 120 of "Case"
        {"Pump:a/Case:c/Pump:p/:x", {{"case", "Case"}, {"pump", "Pump"}}, "pump"},
        // no match: 10000 + 100
        {"Case:c/Pump:p/:x", {{"stream", "Stream"}}, "(none)"},
        {"Case:c/Pump:p/:x", {{"stream", "Stream"}, {"any"}}, "any"},
        // one match is not enough: 10 + 10000
        {"Case:c/Pump:p/:x", {{"pump", "Pump", "none"}}, "(none)"},
        // exact, with the case of letters
        {"Case:c/Pump:p/:x", {{"pump", "pump"}}, "(none)"},
        {"Case:c/Pump:p/:x", {{"pump", "Pum"}}, "(none)"},
        // the tenth level above costs as much as none: k = 10 gives 100 + 100, a tie
        {"Case:c/0:0/1:1/2:2/3:3/4:4/5:5/6:6/7:7/8:8/:x", {{"case", "Case"}, {"any"}}, "case"},
        // from the eleventh on none is nearer: 110 + 100 against 200
        {"Case:c/Z:z/0:0/1:1/2:2/3:3/4:4/5:5/6:6/7:7/8:8/:x", {{"case", "Case"}, {"any"}}, "any"},
    });
}

TEST_F(Choice, container_ids_are_names_of_attributes) {
    Check({
        // 100 + k = 1: 10
        {"Case:c/Pump:p/:x", {{"any"}, {"p", "", "p"}}, "p"},
        {"Case:c/Pump:p/:x", {{"c", "", "c"}, {"p", "", "p"}}, "p"},
        // 100 + 0 for the attribute's own name
        {"Case:c/Pump:p/:x", {{"p", "", "p"}, {"x", "", "x"}}, "x"},
        // 10 + 10 = 20 against 10 + 100 and 100 + 10
        {"Case:c/Pump:p/:x", {{"p", "", "p"}, {"both", "Pump", "p"}, {"pump", "Pump"}}, "both"},
        // an id is never inherited
        {"Case:c/Pump:Pump/:x", {{"unit", "", "Unit"}}, "(none)"},
        // names of classes are no ids
        {"Case:c/Pump:p/:x", {{"pump", "", "Pump"}}, "(none)"},
        {"Case:c/Pump:p/:x", {{"p", "p"}}, "(none)"},
        // dotted: 100 + 10 - 1 = 109 against 110
        {"Case:c/Pump:p/:x", {{"p", "", "p"}, {"c.p", "", "c.p"}}, "c.p"},
        {"Case:c/Pump:p/:x", {{"z.p", "", "z.p"}}, "(none)"},
    });
}

TEST_F(Choice, dotted_containers_need_their_parents_above) {
    Check({
        // 10 - 1 + 100 = 109 against 110
        {"Case:c/Pump:p/:x", {{"pump", "Pump"}, {"dotted", "Case.Pump"}}, "dotted"},
        {"Case:c/Pump:p/:x", {{"dotted", "Case.Pump"}, {"pump", "Pump"}}, "dotted"},
        // the parent stands directly above
        {"Case:c/Stream:s/Pump:p/:x", {{"dotted", "Case.Pump"}}, "(none)"},
        {"Case:c/Pump:p/:x", {{"dotted", "Pump.Case"}}, "(none)"},
        // 10 - 2 + 100 = 108 against 109
        {"Case:c/Stream:s/Pump:p/:x",
         {{"two", "Stream.Pump"}, {"three", "Case.Stream.Pump"}},
         "three"},
        // a mismatch goes on with the next level: k = 2 has Case above, 20 - 1 + 100
        {"Case:c/Pump:o/Pump:p/:x", {{"dotted", "Case.Pump"}, {"any"}}, "dotted"},
        // ... and a plain one at k = 1 is nearer: 110 against 119
        {"Case:c/Pump:o/Pump:p/:x", {{"dotted", "Case.Pump"}, {"pump", "Pump"}}, "pump"},
        // beyond the top there is no class
        {"Pump:p/:x", {{"dotted", "Case.Pump"}}, "(none)"},
        // parents are compared exactly, not by inheritance
        {"Pump:q/Stream:s/:x", {{"dotted", "Unit.Stream"}}, "(none)"},
        // nothing before the first dot is no parent
        {"Case:c/Pump:p/:x", {{"dot", ".Pump"}}, "dot"},
    });
}

TEST_F(Choice, inheritance_costs_its_distance) {
    Check({
        // 10 + 1 + 100 = 111
        {"Case:c/Pump:p/:x", {{"unit", "Unit"}}, "unit"},
        // 110 against 111
        {"Case:c/Pump:p/:x", {{"unit", "Unit"}, {"pump", "Pump"}}, "pump"},
        // 112 against 111 against 110
        {"Special:p/:x", {{"unit", "Unit"}, {"pump", "Pump"}}, "pump"},
        {"Special:p/:x", {{"unit", "Unit"}, {"pump", "Pump"}, {"own", "Special"}}, "own"},
        // by inheritance at k = 1 (112) before exact at k = 2 (120)
        {"Unit:u/Special:p/:x", {{"case", "Unit"}, {"id", "", "u"}}, "case"},
        // 10 - 1 + 1 + 100 = 110 against 111
        {"Case:c/Pump:p/:x", {{"dotted", "Case.Unit"}, {"unit", "Unit"}}, "dotted"},
        // not downward
        {"Unit:u/:x", {{"pump", "Pump"}}, "(none)"},
        // the first way in the order of the names: Both > ALong > Unit is 2, so 112; 111 for ALong
        {"Both:b/:x", {{"unit", "Unit"}, {"along", "ALong"}}, "along"},
        // a circle of superclasses ends
        {"Circle:r/:x", {{"pump", "Pump"}, {"turn", "Turn"}}, "turn"},
        // a class that the library has not
        {"Unknown:u/:x", {{"unit", "Unit"}}, "(none)"},
        {"Unknown:u/:x", {{"own", "Unknown"}}, "own"},
        // at the entry's own level: 0 + 1 + 100
        {"Case:c/Pump:x", {{"case", "Case"}, {"unit", "Unit"}}, "unit"},
    });
}

// The attribute x at k = 0, Pump at 1, Unit at 2, Case at 3; a Pump is a Unit.
TEST_F(Choice, scores_are_summed_over_container_and_id) {
    const char* const levels = "Case:c/Unit:u/Pump:p/:x";
    Check({
        // 10 + 20 = 30 against 30 + 10 = 40
        {levels, {{"far", "Case", "p"}, {"near", "Pump", "u"}}, "near"},
        // 10 + 1 + 100 = 111: the subclass at k = 1 stands before the class at k = 2
        {levels, {{"case", "Case", "p"}, {"unit", "Unit"}}, "case"},
        {levels, {{"case", "Case"}, {"unit", "Unit"}}, "unit"},
        // Case is not above Pump, so k = 2: 20 - 1 + 100 = 119 against 111
        {levels, {{"dotted", "Case.Unit"}, {"unit", "Unit"}}, "unit"},
        // 119 against 100 + 30 = 130
        {levels, {{"dotted", "Case.Unit"}, {"c", "", "c"}}, "dotted"},
        // twice 119, of which 100 + 0 is nearer
        {levels, {{"dotted", "Case.Unit"}, {"c.u", "", "c.u"}, {"x", "", "x"}}, "x"},
        // the subclass at k = 1 with Unit above: 10 - 1 + 1 + 0 = 10 against 9 + 10 = 19
        {levels, {{"exact", "Unit.Pump", "p"}, {"sub", "Unit.Unit", "x"}}, "sub"},
        // 9 + 0 = 9 against 10
        {levels, {{"sub", "Unit.Unit", "x"}, {"exact", "Unit.Pump", "x"}}, "exact"},
        // 10 - 2 + 10 - 2 = 16 against 10 - 2 + 10 - 1 = 17
        {levels, {{"two", "Case.Unit.Pump", "u.p"}, {"three", "Case.Unit.Pump", "c.u.p"}}, "three"},
        // 0 - 3 + 100 = 97 for the whole way of ids against 10 - 1 + 100
        {levels, {{"pump", "Unit.Pump"}, {"way", "", "c.u.p.x"}}, "way"},
    });
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(Choice, dotted_match_of_the_entry_itself_outweighs_a_missing_part) {
    Check({
        // 10000 + 0 - 1 = 9999 is still below the bound
        {"Case:c/Pump:p/:x", {{"dotted", "None", "p.x"}}, "dotted"},
        {"Pump:p/Stream:x", {{"dotted", "Pump.Stream", "none"}}, "dotted"},
        {"Case:c/Pump:p/:x", {{"dotted", "None", "p.x"}, {"longer", "None", "c.p.x"}}, "longer"},
        {"Case:c/Pump:p/:x", {{"dotted", "None", "p.x"}, {"any"}}, "any"},
        // 10000 + 0 and 10000 + 10 - 1 are not
        {"Case:c/Pump:p/:x", {{"plain", "None", "x"}}, "(none)"},
        {"Case:c/Pump:p/:x", {{"above", "None", "c.p"}}, "(none)"},
    });
}

TEST_F(Choice, parent_without_a_name_stands_beyond_the_top) {
    Check({
        // 10 - 1 + 100 = 109 against 110
        {"Pump:p/:x", {{"pump", "Pump"}, {"top", "..Pump"}}, "top"},
        {"Case:c/Pump:p/:x", {{"top", "..Pump"}}, "(none)"},
        // 100 + 10 - 2 = 108 against 109
        {"Case:c/Pump:p/:x", {{"c.p", "", "c.p"}, {"top", "", "..c.p"}}, "top"},
    });
}

TEST_F(Choice, branches_serve_their_requests) {
    struct Serves {
        CCDMBranch branch;
        std::vector<int> requests;
    };
    const Serves rows[] = {{kBothFaces, {0, 1, 2, 3, 4, 5}},
                           {kCalc, {2, 4, 6}},
                           {kSpec, {3, 4, 7}},
                           {CCDMBranch::kUnspecified, {}}};
    const Levels levels("Pump:p/:x", &library_);
    for (const Serves& row : rows) {
        TranslatorMap map;
        Add(map, {"one", "", "", row.branch});
        for (int request = 0; request <= 7; ++request) {
            const bool serves =
                std::find(row.requests.begin(), row.requests.end(), request) != row.requests.end();
            const auto* found = FindTranslator("T", levels.Path(), map, nullptr,
                                               static_cast<BranchRequest>(request));
            EXPECT_EQ(found != nullptr, serves)
                << "branch " << static_cast<int>(row.branch) << ", request " << request;
        }
    }
}

TEST_F(Choice, branch_comes_before_the_score) {
    Check({
        {"Pump:p/:x", {{"near", "Pump", "", kCalc}, {"far", "", "", kSpec}}, "far", 3},
        {"Pump:p/:x", {{"near", "Pump", "", kCalc}, {"far", "", "", kSpec}}, "near", 2},
        {"Pump:p/:x", {{"near", "Pump", "", kCalc}, {"far", "", "", kSpec}}, "near", 4},
        {"Pump:p/:x", {{"near", "Pump", "", kCalc}, {"far", "", "", kSpec}}, "(none)", 5},
        {"Pump:p/:x", {{"near", "Pump", "", kBothFaces}, {"far", "", "", kSpec}}, "far", 7},
        {"Pump:p/:x", {{"near", "Pump", "", kBothFaces}, {"far", "", "", kSpec}}, "near", 3},
    });
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(Choice, translate_name_selects_the_candidates) {
    TranslatorMap map;
    Add(map, {"mine"}, "T");
    Add(map, {"other", "Pump"}, "U");
    const Levels levels("Pump:p/:x", &library_);
    const auto find = [&](const char* name) {
        return BodyOf(FindTranslator(name, levels.Path(), map, nullptr, BranchRequest::kAny));
    };
    EXPECT_EQ(find("T"), "mine");
    EXPECT_EQ(find("U"), "other");
    EXPECT_EQ(find("t"), "(none)");
    EXPECT_EQ(find(""), "(none)");
}

TEST_F(Choice, conditions_read_the_variables_of_the_reference) {
    ScriptNode& child = root_.Add("child");
    child.can_notify = true;
    auto it = root_.Iterate();
    it->SetVarText("above", "yes");
    ASSERT_TRUE(it->DownFirst());
    it->SetVarText("phase", "Overall");
    it->SetVarText("number", FIValue::OfInt(3));
    it->SetVarText("null", FIValue());
    reference_ = ReferenceTo(*it);
    const Candidate any = {"any"};
    const auto with = [](std::vector<std::pair<const char*, const char*>> conditions) {
        return Candidate{"held", "Pump", "", kBothFaces, std::move(conditions)};
    };
    Check({
        {"Pump:p/:x", {any, with({{"phase", "Overall"}})}, "held"},
        {"Pump:p/:x", {any, with({{"phase", "overall"}})}, "any"},
        {"Pump:p/:x", {any, with({{"phase", "Overall"}, {"above", "yes"}})}, "held"},
        {"Pump:p/:x", {any, with({{"phase", "Overall"}, {"above", "no"}})}, "any"},
        {"Pump:p/:x", {any, with({{"above", "no"}, {"phase", "Overall"}})}, "any"},
        {"Pump:p/:x", {any, with({{"unset", "x"}})}, "any"},
        {"Pump:p/:x", {with({{"unset", "x"}})}, "(none)"},
        {"Pump:p/:x", {any, with({{"number", "3"}})}, "held"},
        {"Pump:p/:x", {any, with({{"number", "4"}})}, "any"},
        {"Pump:p/:x", {any, with({{"null", "x"}})}, "any"},
    });
    EXPECT_THAT(log_.Lines(), IsEmpty()) << "a condition that fails is no mistake";
    EXPECT_EQ(NameOf(*reference_), "child");
}

TEST_F(Choice, no_condition_holds_without_a_reference) {
    Check({{"Pump:p/:x",
            {{"any"}, {"held", "Pump", "", kBothFaces, {{"phase", "Overall"}}}},
            "any"}});
}

TEST_F(Choice, tie_is_decided_by_the_exact_branch) {
    Check({
        {"Pump:p/:x", {{"both"}, {"calc", "", "", kCalc}}, "calc", 2},
        {"Pump:p/:x", {{"calc", "", "", kCalc}, {"both"}}, "calc", 2},
        {"Pump:p/:x", {{"both"}, {"spec", "", "", kSpec}}, "spec", 3},
        // the last of those that are as near is the second
        {"Pump:p/:x", {{"both"}, {"both2"}, {"calc", "", "", kCalc}}, "calc", 2},
    });
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(Choice, tie_is_told_when_the_branch_does_not_decide) {
    const char* const line =
        "Duplicate translators: Class , Attribute x, Container <blank>, ContainerID <blank>";
    Check({{"Pump:p/:x", {{"first"}, {"again"}}, "first", 2}});
    EXPECT_THAT(log_.Lines(), ElementsAre(line)) << "neither is of branch 2";
    log_.Restart();
    Check({{"Pump:p/:x", {{"first"}, {"again"}}, "first", 1}});
    EXPECT_THAT(log_.Lines(), ElementsAre(line)) << "both are of branch 1";
    log_.Restart();
    Check({{"Pump:p/:x", {{"calc", "", "", kCalc}, {"spec", "", "", kSpec}}, "calc", 4}});
    EXPECT_THAT(log_.Lines(), ElementsAre(line)) << "a request for any face is no branch";
    log_.Restart();
    Check({{"Pump:p/Stream:x",
            {{"a", "Pump", "p"}, {"b", "Pump", "p"}, {"c", "Pump", "p"}},
            "a",
            2}});
    EXPECT_THAT(log_.Lines(), ElementsAre("Duplicate translators: Class Stream, Attribute x, "
                                          "Container Pump, ContainerID p"))
        << "once a choice";
}

TEST_F(Choice, is_asked_about_without_being_made) {
    const Row rows[] = {
        {"Pump:p/:x", {}, "(none)"},
        {"Pump:p/:x", {{"calc", "", "", kCalc}, {"spec", "", "", kSpec}}, "calc"},
        {"Pump:p/:x", {{"calc", "", "", kCalc}}, "(none)", 3},
        {"Pump:p/:x", {{"stream", "Stream"}}, "(none)"},
        {"Pump:p/:x", {{"stream", "Stream"}, {"pump", "Pump"}}, "pump"},
        {"Pump:p/:x", {{"held", "", "", kBothFaces, {{"phase", "Overall"}}}}, "(none)"},
        // 10000 + 0 - 1: the parts of a dotted id count against the class that is missing
        {"Pump:p/:x", {{"dotted", "Stream", "p.x"}}, "dotted"},
    };
    for (const Row& row : rows) {
        TranslatorMap map;
        for (const Candidate& candidate : row.candidates) Add(map, candidate);
        const Levels levels(row.levels, &library_);
        const WeighedTranslators weighed("T", levels.Path(), map, reference_.Get());
        const bool has = weighed.Has(static_cast<BranchRequest>(row.request));
        EXPECT_EQ(has, std::string(row.chosen) != "(none)") << row.chosen;
    }
    EXPECT_THAT(log_.Lines(), IsEmpty());
    Check({std::begin(rows), std::end(rows)});
}

TEST_F(Choice, tie_that_a_nearer_one_beats_is_no_tie) {
    Check({{"Pump:p/:x", {{"a"}, {"b"}, {"pump", "Pump"}}, "pump", 2},
           {"Pump:p/:x", {{"pump", "Pump"}, {"a"}, {"b"}}, "pump", 2}});
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

// ---- what is written about the choice

constexpr char kNot[] = "<!--   Not best Container/Id-->\n";
constexpr char kUsed[] = "<!--   ****   USED   ****   -->\n";
constexpr char kConditional[] = "<!--   Failed Conditional   -->\n";
constexpr char kNoContainer[] = "<!--   No Container match   -->\n";
constexpr char kNoId[] = "<!--   No ContainerId match -->\n";

std::string Element(const char* body) {
    return std::string("\t<Translate Type=\"Map\">") + body + "</Translate>\n";
}

struct Told {
    std::vector<Candidate> candidates;
    std::string text;
    int request = 4;
};

TEST_F(Choice, dump_tells_of_every_candidate) {
    const Told rows[] = {
        {{}, ""},
        {{{"a"}}, kUsed + Element("a")},
        {{{"a", "Pump"}, {"b"}}, kUsed + Element("a") + kNot + Element("b")},
        {{{"a"}, {"b", "Pump"}}, kNot + Element("a") + kUsed + Element("b")},
        {{{"a", "", "", kCalc}, {"b"}}, Element("a") + kUsed + Element("b"), 3},
        {{{"a", "", "", kCalc}}, Element("a"), 7},
        {{{"a", "None"}}, kNoContainer + Element("a")},
        {{{"a", "", "none"}}, kNoId + Element("a")},
        {{{"a", "None", "none"}, {"b"}},
         std::string(kNoContainer) + kNoId + Element("a") + kUsed + Element("b")},
        {{{"a", "Pump", "", kBothFaces, {{"v", "1"}}}, {"b"}},
         kConditional + Element("a") + kUsed + Element("b")},
        // each new best one takes the mark over
        {{{"a"}, {"b", "", "p"}, {"c", "Pump", "p"}},
         kNot + Element("a") + kNot + Element("b") + kUsed + Element("c")},
        // 10000 - 1 is a match though one part is missing
        {{{"a", "None", "p.x"}}, std::string(kNoContainer) + kUsed + Element("a")},
        // a tie that the branch decides is not marked
        {{{"a"}, {"b", "", "", kCalc}}, kNot + Element("a") + kNot + Element("b"), 2},
        {{{"b", "", "", kCalc}, {"a"}}, kNot + Element("b") + kNot + Element("a"), 2},
        {{{"a"}, {"b"}}, kUsed + Element("a") + kNot + Element("b"), 2},
    };
    const Levels levels("Pump:p/:x", &library_);
    for (const Told& row : rows) {
        TranslatorMap map;
        for (const Candidate& candidate : row.candidates) Add(map, candidate);
        std::string dump = "before\n";
        FindTranslator("T", levels.Path(), map, nullptr, static_cast<BranchRequest>(row.request),
                       &dump);
        EXPECT_EQ(dump, "before\n" + row.text);
    }
}

}  // namespace

}  // namespace fixtop
