// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>

#include "framework/nodes/empties.h"
#include "host/variables/dimension_node.h"
#include "support/cursor_harness.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"

namespace fixtop {

namespace {

host::DimInfo Bounds(std::initializer_list<std::pair<int, int>> bounds) {
    host::DimInfo info;
    for (const auto& [low, high] : bounds) {
        info.low[info.count] = low;
        info.high[info.count++] = high;
    }
    return info;
}

host::VarDescription Part(const char* moniker, int kind,
                          host::VarDescription next = host::VarDescription(),
                          bool next_not_followed = false, bool chain_ends = false, int type = 0) {
    host::VarDescription::Facts facts;
    facts.moniker = host::Text(moniker);
    facts.kind = kind;
    facts.type = type;
    facts.next_not_followed = next_not_followed;
    facts.chain_ends = chain_ends;
    return host::VarDescription(facts, next);
}

class Arrays : public testing::Test {
 protected:
    Arrays() : feed(host.main.Add("Feed", host.stream)) {}

    scripted::Row& Add(const char* moniker, std::initializer_list<std::pair<int, int>> bounds,
                       int value_kind = host::kReal, int part_kind = host::kPartReal,
                       host::VarType unit_type = host::kVariableUnitType) {
        host::VarDescription::Facts facts;
        facts.kind = part_kind;
        facts.unit_type = unit_type;
        facts.minimum = -10.0;
        facts.maximum = 100.0;
        feed.dimensions[moniker] = Bounds(bounds);
        return feed.AddRow(moniker, "Array", value_kind, facts);
    }
    // Numbered from `low`, with the elements ":D.1.<i>".
    scripted::Row& Line(int low, int high) {
        scripted::Row& row = Add(":D.1.[]", {{low, high}});
        NameBy(row, {host::VarDescription(":", 0)});
        return row;
    }
    // Elements 0 to 2 "Methane", "Ethane", "Propane" by a text array.
    scripted::Row& Fractions(const char* moniker = ":D.501.[]") {
        scripted::Row& row = Add(moniker, {{0, 2}});
        NameBy(row, {Part(":T.9.[]", host::kPartText)});
        feed.texts[":T.9.0"] = "Methane";
        feed.texts[":T.9.1"] = "Ethane";
        feed.texts[":T.9.2"] = "Propane";
        return row;
    }
    static void NameBy(scripted::Row& row, std::vector<host::VarDescription> offsets) {
        row.offsets = std::move(offsets);
        row.offset_descriptions = row.offsets.data();
        row.offset_description_count = static_cast<int>(row.offsets.size());
    }
    Ref<HVarsEntry> Node(scripted::Row& row, bool attachments = true) {
        return NodeOf(feed, row, attachments);
    }
    Ref<HVarsEntry> NodeOf(scripted::Plain& owner, scripted::Row& row, bool attachments = true) {
        auto list = Ref<HVarsContext>::Share(new HVarsContext(
            owner.VariableNames(), &owner, {&options, attachments, nullptr}, nullptr));
        return Ref<HVarsEntry>::Share(new HVarsEntry(list.Get(), &row));
    }
    Ref<FIContext> Level(FIEntry& node) { return Ref<FIContext>::Adopt(node.GetContext()); }
    Ref<FIContext> Level(scripted::Row& row) { return Level(*Node(row)); }
    // The element at a place counted from the first.
    template <class Parent>
    static Ref<FIEntry> At(Parent& parent, int place) {
        auto cursor = ChildrenOf(parent);
        EXPECT_TRUE(cursor->Seek(kFromFirst, place)) << place;
        return Ref<FIEntry>::Adopt(cursor->GetEntry());
    }
    // Names of the elements 0 to 1 of an array whose dimension is described so.
    Names NamedBy(const host::VarDescription& description) {
        scripted::Row& row = Add(":D.77.[]", {{0, 1}});
        NameBy(row, {description});
        return ChildNames(*Node(row));
    }

    scripted::Host host;
    scripted::Plain& feed;
    HovexOptions options{&host.simulation_case};
};

// ---- Levels and cursors ----

TEST_F(Arrays, cursor_is_a_cursor) {
    auto context = Level(Fractions());
    auto empty = Level(Line(0, -1));
    CheckCursorFamily(
        HostFamily("HVarDimsCursorBase", *context, {"Methane", "Ethane", "Propane"}, empty.Get()));
    EXPECT_EQ(EmptyCursor(), context->MakeCursor(kKeyCursor));
}

TEST_F(Arrays, bounds_need_not_begin_at_zero) {
    for (const int low : {-2, 1, 7}) {
        auto context = Level(Line(low, low + 1));
        const std::string first = "Elem" + std::to_string(low);
        SCOPED_TRACE("from " + first);
        CheckCursorFamily(
            HostFamily("HVarDimsCursorBase", *context, {first, "Elem" + std::to_string(low + 1)}));
    }
}

TEST_F(Arrays, the_largest_bounds_are_walked_without_overflow) {
    auto cursor = ChildrenOf(*Level(Line(INT_MIN, INT_MAX)));
    EXPECT_FALSE(cursor->Seek(kFromEnd, 0));
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_TRUE(cursor->Seek(kFromEnd, -1));
    EXPECT_EQ("Elem2147483647", NameOf(*Ref<FIEntry>::Adopt(cursor->GetEntry())));
    EXPECT_FALSE(cursor->Seek(kFromPresent, INT_MAX));
    EXPECT_FALSE(cursor->Seek(kFromFirst, INT_MIN));
    EXPECT_TRUE(cursor->AtBegin());
    EXPECT_TRUE(ChildrenOf(*Level(Line(0, -5)))->AtEnd()) << "high below low has no elements";
}

TEST_F(Arrays, an_element_by_index_asks_for_no_other) {
    auto& row = Line(0, 2000000000);
    auto node = Node(row);
    feed.reals[":D.1.1999999999"] = 4.0;
    EXPECT_EQ("REAL 4", Read(*At(*node, 1999999999), "value"));
}

TEST_F(Arrays, each_dimension_is_a_level) {
    auto& row = Add(":D.3.[].[].[]", {{0, 1}, {1, 2}, {0, 2}});
    NameBy(row, {host::VarDescription(":", 0), host::VarDescription(":", 0),
                 Part(":T.9.[]", host::kPartText)});
    feed.texts[":T.9.1"] = "middle";
    feed.reals[":D.3.1.2.1"] = 42.0;
    auto node = Node(row);
    EXPECT_EQ(Names({"Elem0", "Elem1"}), ChildNames(*node));
    auto plane = At(*node, 1);
    EXPECT_EQ("2-Dim Array", Read(*plane, "type"));
    EXPECT_EQ(Names({"Elem1", "Elem2"}), ChildNames(*plane));
    auto line = At(*plane, 1);
    EXPECT_EQ("Array", Read(*line, "type"));
    auto element = Child(*line, "middle");
    ASSERT_TRUE(element);
    EXPECT_EQ("Real", Read(*element, "type"));
    EXPECT_EQ("REAL 42", Read(*element, "value"));
    EXPECT_EQ("/Feed:D.3.1.2.1", Read(*element, "moniker"));
    EXPECT_EQ("/Feed:D.3.1.2.[]", Read(*line, "moniker"));
    EXPECT_EQ(EmptyContext(), element->GetContext());
}

TEST_F(Arrays, four_dimensions_are_called_so_and_the_fourth_is_empty) {
    auto& row = Add(":D.4.[].[].[].[]", {{0, 1}, {0, 1}, {0, 1}});
    NameBy(row, {host::VarDescription(":", 0), host::VarDescription(":", 0),
                 host::VarDescription(":", 0)});
    auto node = Node(row);
    EXPECT_EQ("multi-Dim Array", Read(*node, "type"));
    auto first = At(*node, 0);
    EXPECT_EQ("3-Dim Array", Read(*first, "type"));
    auto third = At(*At(*first, 0), 0);
    EXPECT_EQ("Array", Read(*third, "type"));
    EXPECT_EQ(Names(), ChildNames(*third)) << "the host serves three dimensions";
    EXPECT_EQ("INT 0", Read(*third, "has_children"));
}

TEST_F(Arrays, a_next_dimension_of_one_element_is_not_told) {
    struct Case {
        int low, high;
        const char* has_children;
    };
    for (const Case& each :
         {Case{0, 1, "INT 1"}, Case{0, 0, "INT 0"}, Case{3, 3, "INT 0"}, Case{0, -1, "INT 0"}}) {
        auto& row = Add(":D.2.[].[]", {{0, 1}, {each.low, each.high}});
        NameBy(row, {host::VarDescription(":", 0), host::VarDescription(":", 0)});
        auto level = At(*Node(row), 0);
        EXPECT_EQ(each.has_children, Read(*level, "has_children")) << each.low << " " << each.high;
        EXPECT_NE(each.has_children, Read(*level, "isleaf")) << each.low << " " << each.high;
        EXPECT_EQ(each.high - each.low + 1, static_cast<int>(ChildNames(*level).size()))
            << "it is there all the same";
    }
}

TEST_F(Arrays, dimensions_of_inner_objects_are_asked_there) {
    scripted::Plain inner;
    feed.resolved["Inner.1/:D.7.[].[]"] = &inner;
    inner.dimensions[":D.7.[].[]"] = Bounds({{0, 1}, {0, 2}});
    auto& row = feed.AddRow("Inner.1.[].[]", "r", host::kReal);
    row.description = Part("Inner.1", host::kPartNone, Part(":D.7.[].[]", host::kPartReal));
    NameBy(row, {host::VarDescription(":", 0), host::VarDescription(":", 0)});
    auto level = At(*Node(row), 1);
    EXPECT_EQ("INT 1", Read(*level, "has_children"));
    EXPECT_EQ(Names({"Elem0", "Elem1", "Elem2"}), ChildNames(*level));
}

TEST_F(Arrays, an_array_without_dimensions_on_the_host_is_empty) {
    auto& row = Line(0, 3);
    feed.dimensions.clear();
    EXPECT_EQ(Names(), ChildNames(*Node(row)));
    EXPECT_EQ("INT 1", Read(*Node(row), "has_children"));
}

TEST_F(Arrays, positions_of_different_lists_do_not_compare) {
    auto& row = Add(":D.2.[].[]", {{0, 1}, {0, 1}});
    NameBy(row, {host::VarDescription(":", 0), host::VarDescription(":", 0)});
    auto node = Node(row);
    auto rows = ChildrenOf(*node);
    auto first = ChildrenOf(*At(*node, 0));
    auto first_again = ChildrenOf(*At(*Node(row), 0));
    auto second = ChildrenOf(*At(*node, 1));
    EXPECT_EQ(0, first->Compare(*first_again)) << "made anew for the same elements";
    EXPECT_EQ(kNotComparable, first->Compare(*second));
    EXPECT_EQ(kNotComparable, first->Compare(*rows));
    auto other = ChildrenOf(*Node(Line(0, 1)));
    EXPECT_EQ(kNotComparable, rows->Compare(*other));
    auto& product = host.main.Add("Product", host.stream);
    product.dimensions[":D.2.[].[]"] = Bounds({{0, 1}, {0, 1}});
    EXPECT_EQ(kNotComparable, rows->Compare(*ChildrenOf(*NodeOf(product, row))))
        << "the same row of another object";
}

TEST_F(Arrays, elements_compare_by_name_and_then_by_index) {
    auto& row = Add(":D.1.[]", {{0, 3}});
    NameBy(row, {Part(":T.9.[]", host::kPartText)});
    for (const auto& [moniker, text] :
         {std::pair{":T.9.0", "B"}, {":T.9.1", "A"}, {":T.9.2", "A"}, {":T.9.3", "C"}}) {
        feed.texts[moniker] = text;
    }
    auto node = Node(row);
    EXPECT_LT(0, At(*node, 0)->Compare(*At(*node, 1)));
    EXPECT_GT(0, At(*node, 0)->Compare(*At(*node, 3)));
    EXPECT_EQ(-1, At(*node, 1)->Compare(*At(*node, 2)));
    EXPECT_EQ(1, At(*node, 2)->Compare(*At(*node, 1)));
    EXPECT_EQ(0, At(*node, 2)->Compare(*At(*Node(row), 2)));
    auto& product = host.main.Add("Product", host.stream);
    product.texts = feed.texts;
    product.dimensions = feed.dimensions;
    EXPECT_EQ(kNotComparable, At(*node, 1)->Compare(*At(*NodeOf(product, row), 1)));
    EXPECT_EQ(kNotComparable, At(*node, 0)->Compare(*Node(feed.AddReal(":D.8", "B", 1.0))));
}

TEST_F(Arrays, a_search_by_entry_takes_its_index) {
    auto& row = Fractions();
    auto cursor = ChildrenOf(*Node(row));
    EXPECT_TRUE(cursor->SeekValue(kFromFirst, *At(*Level(Line(0, 5)), 1)));
    EXPECT_EQ("Ethane", NameOf(*Ref<FIEntry>::Adopt(cursor->GetEntry()))) << "not by its name";
    EXPECT_FALSE(cursor->SeekValue(kFromFirst, *At(*Level(Line(0, 5)), 4)));
    EXPECT_TRUE(cursor->AtEnd());
    auto named = Node(feed.AddReal(":D.8", "Propane", 1.0));
    EXPECT_TRUE(cursor->SeekValue(kFromFirst, *named)) << "another entry is sought by name";
}

// ---- Names ----

TEST_F(Arrays, counted_dimensions_name_their_elements_by_number) {
    EXPECT_EQ(Names({"Elem0", "Elem1"}), NamedBy(host::VarDescription(":", 0)));
}

TEST_F(Arrays, without_a_description_elements_have_no_name_but_a_number) {
    auto& row = Add(":D.77.[]", {{0, 1}});
    auto node = Node(row);
    EXPECT_EQ(Names({"(NULL)", "(NULL)"}), ChildNames(*node));
    EXPECT_TRUE(Child(*node, "Elem1"));
}

TEST_F(Arrays, enumerations_name_elements) {
    auto& phases = feed.AddRow(":E.5", "Phases", host::kEnumeration);
    phases.enumeration = std::make_unique<scripted::Enumeration>(Names{"Vapour"});
    EXPECT_EQ(Names({"Vapour", "(NULL)"}), NamedBy(phases.description)) << "one entry only";
    EXPECT_EQ(Names({"(NULL)", "(NULL)"}), NamedBy(Part(":E.6", host::kPartReal)))
        << "of an unknown row";
}

TEST_F(Arrays, enumerations_of_inner_objects_are_asked_there) {
    scripted::Plain package;
    const Names names = {"A", "B"};
    const auto add_to = [&](scripted::Plain& object, const char* moniker, Names options_of_row) {
        object.AddRow(moniker, "E", host::kEnumeration).enumeration =
            std::make_unique<scripted::Enumeration>(options_of_row);
    };
    add_to(package, ":E.5", names);
    feed.resolved["Pkg.1/:E.5"] = &package;
    const host::VarDescription last = Part(":E.5", host::kPartReal);
    EXPECT_EQ(names, NamedBy(Part("Pkg.1", host::kPartNone, last)));
    // Either flag keeps the walk on this object and this part.
    for (const bool ends : {false, true}) {
        EXPECT_EQ(Names({"(NULL)", "(NULL)"}),
                  NamedBy(Part("Pkg.1", host::kPartNone, last, !ends, ends)));
    }
    // Without ":" nothing is walked.
    feed.resolved["Pkg.1/E.5"] = &package;
    add_to(package, "E.5", names);
    EXPECT_EQ(Names({"(NULL)", "(NULL)"}),
              NamedBy(Part("Pkg.1", host::kPartNone, Part("E.5", host::kPartReal))));
    add_to(feed, "E.5", {"own", "row"});
    EXPECT_EQ(Names({"own", "row"}), NamedBy(Part("E.5", host::kPartReal)));
}

TEST_F(Arrays, texts_name_elements) {
    feed.texts[":T.9.0"] = "Methane";
    EXPECT_EQ(Names({"Methane", ""}), NamedBy(Part(":T.9.[]", host::kPartText)));
    feed.texts[":T.9.1"] = "Key: a & b";
    EXPECT_EQ(Names({"Methane", "Key: a & b"}), NamedBy(Part(":T.9.[]", host::kPartText)))
        << "as the host gives them";
}

TEST_F(Arrays, texts_of_inner_objects_name_elements) {
    scripted::Plain package;
    package.texts[":T.9.0"] = "Methane";
    package.texts[":T.9.1"] = "Ethane";
    feed.resolved["Pkg.1/:T.9.[]"] = &package;
    EXPECT_EQ(Names({"Methane", "Ethane"}),
              NamedBy(Part("Pkg.1", host::kPartNone, Part(":T.9.[]", host::kPartText))));
}

TEST_F(Arrays, attached_objects_name_elements) {
    scripted::Plain nameless;
    feed.attachments[":A.9.0"] = &feed;
    EXPECT_EQ(Names({"Feed", "Elem1"}), NamedBy(Part(":A.9.[]", host::kPartAttachment)));
    feed.attachments[":A.9.1"] = &nameless;
    EXPECT_EQ(Names({"Feed", "Elem1"}), NamedBy(Part(":A.9.[]", host::kPartAttachment)));
}

TEST_F(Arrays, numbers_name_elements_by_their_place) {
    feed.reals[":R.9.0"] = 12.5;
    EXPECT_EQ(Names({"#0", "#1"}), NamedBy(Part(":R.9.[]", host::kPartReal)));
    auto& row = feed.AddRow(":R.9.[]", "Heights", host::kReal);
    EXPECT_EQ(Names({"#0", "#1"}), NamedBy(Part(":R.9.[]", host::kPartReal)));
    // The option of an enumerated array is a name.
    row.value_kind = host::kEnumeration;
    row.enumeration = std::make_unique<scripted::Enumeration>(Names{"Top", "Bottom"});
    feed.reals[":R.9.0"] = 1.0;
    EXPECT_EQ(Names({"Bottom", "#1"}), NamedBy(Part(":R.9.[]", host::kPartReal)));
}

TEST_F(Arrays, parts_of_no_kind_are_counted) {
    EXPECT_EQ(Names({"Elem0", "Elem1"}), NamedBy(Part(":X.9.[]", host::kPartNone)));
    EXPECT_EQ(Names({"Elem0", "Elem1"}), NamedBy(Part(":X.9.[]", 7)));
}

TEST_F(Arrays, text_or_number_is_told_by_the_row) {
    feed.texts[":R.9.0"] = "zero";
    feed.texts[":R.9.1"] = "one";
    const Names texts = {"zero", "one"};
    const Names places = {"#0", "#1"};
    struct Case {
        int row_value_kind;  // 0: no row
        int row_kind;
        int type;
        host::VariableType unit_type;
        Names names;
        const char* why;
    };
    const int none = host::kEmptyDimensionMarker;
    const Case cases[] = {
        {host::kText, host::kPartReal, 0, none, texts, "a text row shown as a number"},
        {host::kReal, host::kPartReal, 0, none, places, "a number row"},
        {host::kText, host::kPartText, 0, none, texts, "the value of a text row is a name"},
        {host::kReal, host::kPartReal, 1519, none, places, "a row counts before the type"},
        {0, 0, 1519, none, texts, "a text-like array"},
        {0, 0, 1519, 3, places, "one with a unit type"},
        {0, 0, 1520, none, places, "another type"},
    };
    for (const Case& each : cases) {
        feed.row_storage.clear();
        feed.variable_unit_type = each.unit_type;
        if (each.row_value_kind) {
            host::VarDescription::Facts facts;
            facts.kind = each.row_kind;
            feed.AddRow(":R.9.[]", "Names", each.row_value_kind, facts);
        }
        EXPECT_EQ(each.names,
                  NamedBy(Part(":R.9.[]", host::kPartReal, {}, false, false, each.type)))
            << each.why;
    }
}

TEST_F(Arrays, a_text_row_that_is_not_shown_as_a_number_keeps_the_kind_of_the_part) {
    feed.texts[":R.9.0"] = feed.texts[":R.9.1"] = "text";
    host::VarDescription::Facts facts;
    for (const int kind : {host::kPartNone, host::kPartText, host::kPartAttachment}) {
        feed.row_storage.clear();
        facts.kind = kind;
        feed.AddRow(":R.9.[]", "Names", host::kText, facts);
        EXPECT_EQ(Names({"Elem0", "Elem1"}), NamedBy(Part(":R.9.[]", host::kPartNone))) << kind;
    }
    feed.row_storage.clear();
    facts.kind = host::kPartReal;
    feed.AddRow(":R.9.[]", "Names", host::kText, facts);
    EXPECT_EQ(Names({"text", "text"}), NamedBy(Part(":R.9.[]", host::kPartNone)));
}

TEST_F(Arrays, names_are_found_before_numbers) {
    auto& row = Fractions();
    feed.texts[":T.9.2"] = "Elem0";
    auto node = Node(row);
    auto cursor = ChildrenOf(*node);
    const auto place = [&](int origin, const char* name) {
        if (!cursor->SeekName(origin, name)) return -1;
        return static_cast<HVarDimsEntry*>(Ref<FIEntry>::Adopt(cursor->GetEntry()).Get())->Index();
    };
    EXPECT_EQ(2, place(kFromFirst, "Elem0")) << "the name";
    EXPECT_EQ(1, place(kFromFirst, "Elem1")) << "the number";
    EXPECT_EQ(1, place(kFromFirst, "Elem1 and more"));
    for (const char* name : {"Elem3", "Elem-1", "Elem", "Elemx", "elem1", "Elem99999999999", ""}) {
        EXPECT_EQ(-1, place(kFromFirst, name)) << name;
        EXPECT_TRUE(cursor->AtEnd()) << name;
    }
    EXPECT_FALSE(cursor->SeekName(kFromFirst, nullptr));
    EXPECT_EQ(0, place(kFromEnd, "Methane"));
    EXPECT_EQ(0, place(kFromPresent, "Methane"));
    EXPECT_EQ(1, place(kFromPresent, "Ethane"));
    EXPECT_EQ(-1, place(kFromPresent, "Methane")) << "behind it";
    EXPECT_EQ(7, [&] {
        auto numbered = ChildrenOf(*Node(Line(5, 9)));
        EXPECT_TRUE(numbered->SeekName(kFromFirst, "Elem7"));
        return static_cast<HVarDimsEntry*>(Ref<FIEntry>::Adopt(numbered->GetEntry()).Get())
            ->Index();
    }());
}

TEST_F(Arrays, counted_elements_are_found_from_everywhere_by_their_number) {
    auto node = Node(Line(5, 9));
    auto cursor = ChildrenOf(*node);
    const auto place = [&](int origin, const char* name) {
        if (!cursor->SeekName(origin, name)) return -1;
        return static_cast<HVarDimsEntry*>(Ref<FIEntry>::Adopt(cursor->GetEntry()).Get())->Index();
    };
    for (const int origin : {kFromFirst, kFromPresent, kFromEnd}) {
        EXPECT_EQ(7, place(origin, "Elem7")) << origin;
        EXPECT_EQ(5, place(origin, "Elem5")) << origin << ", in front of the last one";
        EXPECT_EQ(9, place(origin, "Elem09")) << origin;
        EXPECT_EQ(6, place(origin, "Elem6.5")) << origin;
        for (const char* name : {"Elem4", "Elem10", "Elem", "Methane", "#7", "7", ""}) {
            EXPECT_EQ(-1, place(origin, name)) << name;
            EXPECT_TRUE(cursor->AtEnd()) << name;
        }
    }
}

TEST_F(Arrays, a_name_is_fixed_when_the_element_is_made) {
    auto element = At(*Node(Fractions()), 1);
    feed.texts[":T.9.1"] = "renamed";
    for (const char* row : {"id", "display_name", "browser_name"}) {
        EXPECT_EQ("Ethane", Read(*element, row)) << row;
    }
}

// ---- Attributes ----

TEST_F(Arrays, table_has_31_rows) {
    EXPECT_EQ(StandardRowsAnd({"moniker", "attachments", "skipcorrelations", "skipattachments"}),
              AllRows<HVarDimsEntry>());
    EXPECT_EQ(31u, HVarDimsEntry::AttributeRows().size());
}

TEST_F(Arrays, elements_show_their_rows) {
    auto& row = Add(":D.1.[]", {{0, 1}}, host::kReal, host::kPartReal, 1);
    NameBy(row, {host::VarDescription(":", 0)});
    feed.reals[":D.1.1"] = 25.0;
    auto element = At(*Node(row), 1);
    EXPECT_EQ(kNumberRows, ShownRows(*element));
    EXPECT_EQ("REAL 25", Read(*element, "value"));
    EXPECT_EQ("Temperature", Read(*element, "dimension"));
    EXPECT_EQ("C", Read(*element, "uom"));
    EXPECT_EQ("C\nF\nK", Read(*element, "uom_options"));
    EXPECT_EQ("INT 1", Read(*element, "can_enter"));
    EXPECT_EQ("Main", Read(*element, "container"));
    EXPECT_EQ("INT 1", Read(*element, "isleaf"));
    EXPECT_EQ("INT 0", Read(*element, "has_children"));
    EXPECT_EQ("REAL 100", Read(*element, "upper_limit"));
    EXPECT_EQ("REAL -10", Read(*element, "lower_limit"));
    EXPECT_EQ("Specified", Read(*element, "status"));
    EXPECT_EQ("INT 0", Read(*element, "is_container"));
    EXPECT_EQ("/Feed:D.1.1", Read(*element, "moniker"));
    EXPECT_EQ("INT 1", Read(*element, "attachments"));
    EXPECT_EQ("INT 0", Read(*element, "skipcorrelations"));
    TestVarSet vars;
    element->SetVarSet(&vars);
    EXPECT_EQ("(NULL)", Read(*element, "path"));
    EXPECT_EQ("(NULL)", Read(*At(*Node(row), 0), "value")) << "unset";
    EXPECT_EQ("Missing", Read(*At(*Node(row), 0), "status"));
    EXPECT_FALSE(element->IsContainer());
}

TEST_F(Arrays, levels_before_the_last_show_no_scalar_rows) {
    auto& row = Add(":D.2.[].[]", {{0, 1}, {0, 1}}, host::kReal, host::kPartReal, 1);
    NameBy(row, {host::VarDescription(":", 0), host::VarDescription(":", 0)});
    auto level = At(*Node(row), 0);
    for (const char* name : {"value", "dimension", "uom", "uom_options", "status", "upper_limit",
                             "lower_limit", "option_list"}) {
        EXPECT_EQ("(NULL)", Read(*level, name)) << name;
    }
    EXPECT_EQ("INT 0", Read(*level, "can_enter"));
    EXPECT_EQ("INT 0", Read(*level, "isleaf"));
    EXPECT_EQ("INT 1", Read(*level, "has_children"));
    EXPECT_EQ("INT 0", Read(*level, "is_container"));
    EXPECT_EQ("Main", Read(*level, "container"));
    EXPECT_TRUE(level->IsContainer());
    EXPECT_EQ("Non scalar variable", Write(*level, "value", FIValue::OfReal(1.0)));
    EXPECT_TRUE(feed.stores.empty());
}

TEST_F(Arrays, elements_of_every_kind_read_as_scalars_do) {
    auto& choice = Add(":E.1.[]", {{0, 1}}, host::kEnumeration);
    choice.enumeration = std::make_unique<scripted::Enumeration>(Names{"Off", "On"});
    feed.reals[":E.1.1"] = 1.0;
    EXPECT_EQ("On", Read(*At(*Node(choice), 1), "value"));
    EXPECT_EQ("Off;On", Read(*At(*Node(choice), 1), "option_list"));
    EXPECT_EQ("String", Read(*At(*Node(choice), 1), "type"));
    auto& text = Add(":T.1.[]", {{0, 1}}, host::kText, host::kPartText);
    feed.texts[":T.1.0"] = "words";
    feed.texts[":T.1.1"] = "Key: 5";
    EXPECT_EQ("words", Read(*At(*Node(text), 0), "value"));
    EXPECT_EQ("Unknown Key", Read(*At(*Node(text), 1), "value"));
    EXPECT_EQ("(NULL)", Read(*At(*Node(text), 0), "uom")) << "no unit";
    auto& message = Add(":M.1.[]", {{0, 1}}, host::kMessage, host::kPartNone);
    EXPECT_EQ("(NULL)", Read(*At(*Node(message), 0), "value"));
    EXPECT_EQ("Message", Read(*At(*Node(message), 0), "type"));
}

TEST_F(Arrays, options_are_shown_of_every_level) {
    auto& row = Add(":E.2.[].[]", {{0, 1}, {0, 1}}, host::kEnumeration);
    row.enumeration = std::make_unique<scripted::Enumeration>(Names{"Off", "On"});
    auto level = At(*Node(row), 0);
    EXPECT_EQ("Off;On", Read(*level, "option_list"));
    EXPECT_EQ("Off;On", Read(*At(*level, 0), "option_list"));
}

TEST_F(Arrays, states_are_those_of_the_element) {
    auto node = Node(Line(0, 1));
    feed.reals[":D.1.0"] = feed.reals[":D.1.1"] = 1.0;
    host.states[":D.1.1"] = 0;
    EXPECT_EQ("Specified", Read(*At(*node, 0), "status"));
    EXPECT_EQ("Calculated", Read(*At(*node, 1), "status"));
    EXPECT_EQ("INT 1", Read(*At(*node, 1), "can_enter")) << "not asked for elements";
}

TEST_F(Arrays, elements_of_the_custom_row_show_no_state) {
    auto& row = Line(0, 1);
    row.name = "Custom datablock for user input";
    feed.reals[":D.1.0"] = 1.0;
    auto element = At(*Node(row), 0);
    for (const char* name : {"status", "upper_limit", "lower_limit"}) {
        EXPECT_EQ("(NULL)", Read(*element, name)) << name;
    }
    EXPECT_EQ("REAL 1", Read(*element, "value")) << "but its value";
}

TEST_F(Arrays, the_reader_of_the_element_says_the_unit) {
    auto& row = Add(":D.1.[]", {{0, 0}}, host::kReal, host::kPartReal, 1);
    NameBy(row, {host::VarDescription(":", 0)});
    feed.reals[":D.1.0"] = 100.0;
    auto node = Node(row);
    auto element = At(*node, 0);
    TestVarSet of_array;
    TestVarSet of_element;
    node->SetVarSet(&of_array);
    element->SetVarSet(&of_element);
    FIValue old;
    of_array.SetUnit(FIValue(), FIValue("K"), old);
    EXPECT_EQ("REAL 100", Read(*element, "value"));
    EXPECT_EQ("(NULL)", Write(*element, "uom", FIValue("F")));
    EXPECT_EQ("REAL 212", Read(*element, "value"));
    EXPECT_EQ("F", Read(*element, "uom"));
    EXPECT_EQ("REAL 212", Read(*element, "upper_limit"));
    EXPECT_EQ(&of_array, node->GetVarSet()) << "the array's own is untouched";
    EXPECT_EQ("Invalid unit for variable type", Write(*element, "uom", FIValue("bar")));
    EXPECT_EQ("(NULL)", Write(*element, "value", FIValue::OfReal(32.0)));
    EXPECT_NEAR(0.0, feed.reals[":D.1.0"], 1e-12);
    element->SetVarSet(nullptr);
    EXPECT_EQ("Not supported", Write(*element, "uom", FIValue("F")));
}

TEST_F(Arrays, values_of_inner_objects_are_read_and_stored_there) {
    scripted::Plain inner;
    feed.resolved["Inner.1/:D.7.[]"] = &inner;
    inner.dimensions[":D.7.[]"] = Bounds({{0, 1}});
    auto& row = feed.AddRow("Inner.1.[]", "r", host::kReal);
    row.description = Part("Inner.1", host::kPartNone, Part(":D.7.[]", host::kPartReal));
    NameBy(row, {host::VarDescription(":", 0)});
    inner.reals[":D.7.1"] = 42.0;
    auto element = At(*Node(row), 1);
    EXPECT_EQ("REAL 42", Read(*element, "value"));
    EXPECT_EQ("(NULL)", Write(*element, "value", FIValue::OfReal(43.0)));
    EXPECT_EQ(43.0, inner.reals[":D.7.1"]);
    EXPECT_TRUE(feed.stores.empty());
}

TEST_F(Arrays, switches_are_written_on_elements) {
    auto element = At(*Node(Line(0, 1)), 0);
    EXPECT_EQ("(NULL)", Write(*element, "attachments", FIValue::OfInt(0)));
    EXPECT_EQ("INT 0", Read(*element, "attachments"));
    EXPECT_EQ("Not supported", Write(*element, "skipattachments", FIValue::OfInt(1)));
    EXPECT_EQ("Not supported", Write(*element, "status", FIValue("x")));
    TestVarSet vars;
    element->SetVarSet(&vars);
    EXPECT_EQ("(NULL)", Write(*element, "skipattachments", FIValue::OfInt(1)));
    EXPECT_EQ("INT 1", Read(*element, "skipattachments"));
    EXPECT_EQ("INT 0", Read(*At(*Node(Line(0, 1), false), 0), "attachments")) << "copied down";
    auto& plane = Add(":D.2.[].[]", {{0, 1}, {0, 1}});
    NameBy(plane, {host::VarDescription(":", 0), host::VarDescription(":", 0)});
    auto line = At(*Node(plane, false), 0);
    EXPECT_EQ("INT 0", Read(*At(*line, 0), "attachments")) << "and further down";
    EXPECT_EQ("(NULL)", Write(*line, "attachments", FIValue::OfInt(1)));
    EXPECT_EQ("INT 1", Read(*At(*line, 0), "attachments"));
}

// ---- Paths in the host's notation ----

TEST_F(Arrays, host_paths_name_elements) {
    auto context = Level(Fractions());
    ExpectKeys(*context, {
                             {"(Ethane)", "Ethane|"},
                             {"(Ethane)/:x", "Ethane|:x"},
                             {"(Ethane):x", "Ethane|:x"},
                             {"(Ethane)//x", "Ethane|/x"},
                             {"(Elem2)", "Propane|"},
                             {"(Butane)", "(NULL)|(Butane)"},
                             {"(Ethane", "(NULL)|(Ethane"},
                             {"()", "(NULL)|()"},
                             {"1", "Ethane|"},
                             {"1.x", "Ethane|x"},
                             {"1/x", "Ethane|x"},
                             {"1//x", "Ethane|/x"},
                             {"1:x", "Ethane|:x"},
                             {"1/:Name.0", "Ethane|"},
                             {"1.:Name.0/more", "Ethane|"},
                             {"1#7", "Ethane|"},
                             {"1.#7", "Ethane|"},
                             {"12", "(NULL)|12"},
                             {"-1", "(NULL)|-1"},
                             {"x", "(NULL)|x"},
                             {"", "(NULL)|"},
                         });
    FIValue key("left over");
    const char* rest = "left over";
    context->GetKeyValue(nullptr, key, &rest);
    EXPECT_TRUE(key.IsNull());
    EXPECT_EQ(nullptr, rest);
}

TEST_F(Arrays, host_paths_count_elements_without_a_name) {
    EXPECT_EQ("*#4|x", KeyAndRest(*Level(Line(0, 5)), "4/x"));
    auto& row = Fractions();
    feed.texts[":T.9.1"] = "Elem1";
    feed.texts[":T.9.2"] = "Elem0";
    EXPECT_EQ("*#1|", KeyAndRest(*Level(row), "1"));
    EXPECT_EQ("Elem0|", KeyAndRest(*Level(row), "2")) << "a name of its own";
    auto nameless = Level(Add(":D.5.[]", {{0, 1}}));
    EXPECT_EQ("(NULL)|0", KeyAndRest(*nameless, "0"));
    EXPECT_EQ("(NULL)|(Elem0)/x", KeyAndRest(*nameless, "(Elem0)/x"));
}

TEST_F(Arrays, host_paths_to_attachments_end_in_their_number) {
    auto& row = Add(":A.1.[]", {{0, 2}}, host::kAttachment, host::kPartAttachment);
    NameBy(row, {Part(":T.9.[]", host::kPartText)});
    feed.texts[":T.9.1"] = "Ethane";
    auto context = Level(row);
    EXPECT_EQ("Elem1|", KeyAndRest(*context, "1"));
    EXPECT_EQ("Elem1|", KeyAndRest(*context, "1/:Name.0"));
    EXPECT_EQ("Elem1|", KeyAndRest(*context, "1#2"));
    EXPECT_EQ("Elem7|", KeyAndRest(*context, "7")) << "without a look at the bounds";
    EXPECT_EQ("(NULL)|7/:D.1", KeyAndRest(*context, "7/:D.1"));
    EXPECT_EQ("Ethane|:D.1", KeyAndRest(*context, "1/:D.1"));
}

TEST_F(Arrays, host_paths_need_a_place_for_the_index) {
    auto& row = Line(0, 2);
    row.description = Part(":D.1", host::kPartReal);
    feed.dimensions[":D.1"] = Bounds({{0, 2}});
    EXPECT_EQ("(NULL)|1", KeyAndRest(*Level(row), "1"));
    EXPECT_EQ("Elem1|", KeyAndRest(*Level(row), "(Elem1)"));
}

}  // namespace

}  // namespace fixtop
