// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "framework/iterator/iterator.h"
#include "framework/nodes/empties.h"
#include "host/adapter.h"
#include "host/variables/moniker_match.h"
#include "host/variables/variable_node.h"
#include "host/variables/variable_values.h"
#include "support/cursor_harness.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"

namespace fixtop {

namespace {

class Variables : public testing::Test {
 protected:
    Variables() : feed(host.main.Add("Feed", host.stream)) {}

    Ref<HVarsContext> List(scripted::Plain& owner, bool attachments = true) {
        return Ref<HVarsContext>::Share(new HVarsContext(
            owner.VariableNames(), &owner, {&options, attachments, nullptr}, nullptr));
    }
    Ref<FIEntry> Node(scripted::Row& row) { return NodeOf(feed, row); }
    Ref<FIEntry> NodeOf(scripted::Plain& owner, scripted::Row& row, bool attachments = true) {
        return Ref<FIEntry>::Share(List(owner, attachments)->MakeEntry(row));
    }
    std::string KeyOf(const char* moniker, const char* path) {
        scripted::Plain object;
        object.AddReal(moniker, "Var", 1.0);
        return KeyAndRest(*List(object), path);
    }

    scripted::Host host;
    scripted::Plain& feed;
    HovexOptions options{&host.simulation_case};
};

// ---- The list ----

TEST_F(Variables, cursor_is_a_cursor) {
    feed.AddReal(":D.1", "Temperature", 1.0);
    feed.AddReal(":D.2", "Pressure", 1.0);
    feed.AddReal(":D.3", "P < 3", 1.0);
    auto context = List(feed);
    scripted::Plain bare;
    auto empty = List(bare);
    CursorFamily family = HostListFamily("HVarsCursorBase", *context,
                                         {"Temperature", "Pressure", "P < 3"}, empty.Get());
    family.names = {"Temperature", "Pressure", "P &lt; 3"};
    family.seeks_entries = false;
    CheckCursorFamily(family);
    EXPECT_EQ(EmptyCursor(), context->MakeCursor(kKeyCursor));
}

TEST_F(Variables, search_from_the_present_row_counts_it) {
    for (const char* name : {"A", "B", "A"}) feed.AddReal(":D.1", name, 1.0);
    auto context = List(feed);
    auto cursor = ChildrenOf(*context);
    auto first = ChildrenOf(*context);
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "A"));
    EXPECT_EQ(0, cursor->Compare(*first));
    EXPECT_TRUE(cursor->Seek(kFromPresent, 1));
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "A"));
    EXPECT_EQ(1, cursor->Compare(*first));
    EXPECT_TRUE(cursor->SeekName(kFromEnd, "A"));
    EXPECT_EQ(0, cursor->Compare(*first));
}

// ---- Names ----

TEST_F(Variables, names_are_escaped_within_255_bytes) {
    const std::string a250(250, 'a');
    const std::string a255(255, 'a');
    const std::pair<std::string, std::string> cases[] = {
        {"plain", "plain"},
        {"a\"b&c<d>e", "a&quot;b&amp;c&lt;d&lt;e"},
        {a255, a255},
        {a255 + "b", a255},
        {a250 + "<", a250 + "&lt;"},
        {a250 + "a<", a250 + "a&lt;"},
        {a250 + "aa<b", a250 + "aa"},
        {a250 + "&b", a250 + "&amp;"},
        {a250 + "\"b", a250},
        {a250 + "<bcd", a250 + "&lt;b"},
    };
    for (const auto& [name, shown] : cases) {
        auto& row = feed.AddReal(":D.1", name.c_str(), 1.0);
        auto entry = Node(row);
        EXPECT_EQ(shown, NameOf(*entry)) << name;
        EXPECT_EQ(shown, Read(*entry, "id"));
        EXPECT_EQ(shown, Read(*entry, "display_name"));
        EXPECT_EQ(shown, Read(*entry, "browser_name"));
    }
}

TEST_F(Variables, what_the_host_has_no_name_for_is_nameless) {
    auto& row = feed.AddReal(":D.1", "T", 25.0, 1);
    row.name = nullptr;
    host.unit_set = 2;
    host.unit_types[0].units[2].name = nullptr;
    auto entry = Node(row);
    EXPECT_EQ("", NameOf(*entry));
    EXPECT_EQ("", Read(*entry, "uom"));
    TestVarSet vars;
    entry->SetVarSet(&vars);
    FIValue old;
    vars.SetUnit(FIValue(), FIValue("C"), old);
    EXPECT_EQ("REAL 25", Read(*entry, "value")) << "another unit than the nameless one";
}

// ---- Attributes ----

TEST_F(Variables, table_has_34_rows) {
    EXPECT_EQ(StandardRowsAnd({"moniker", "offsetmoniker0", "offsetmoniker1", "fullattachmoniker",
                               "attachments", "skipcorrelations", "skipattachments"}),
              AllRows<HVarsEntry>());
    EXPECT_EQ(34u, HVarsEntry::AttributeRows().size());
}

TEST_F(Variables, units_are_none_while_no_host_is_installed) {
    TestVarSet vars;
    FIValue value = FIValue::OfReal(2.5);
    FIValue out("left over");
    TheAdapter().Install(nullptr);
    ReadUnitOptions(1, out);
    EXPECT_EQ("(NULL)", Shown(out));
    ReadUnit(1, &vars, out);
    EXPECT_EQ("(NULL)", Shown(out));
    ToShownUnit(1, &vars, value);
    ToInternalUnit(1, &vars, value);
    EXPECT_EQ("REAL 2.5", Shown(value));
    SetShownUnit(1, &vars, FIValue("C"), out);
    EXPECT_EQ("Not supported", Shown(out));
    TheAdapter().Install(&host);
}

TEST_F(Variables, a_number_shows_its_rows) {
    auto entry = Node(feed.AddReal(":D.1", "T", 25.0, 1));
    EXPECT_EQ(kNumberRows, ShownRows(*entry));
    EXPECT_EQ("REAL 25", Read(*entry, "value"));
    EXPECT_EQ("Temperature", Read(*entry, "dimension"));
    EXPECT_EQ("C", Read(*entry, "uom"));
    EXPECT_EQ("C\nF\nK", Read(*entry, "uom_options"));
    EXPECT_EQ("Real", Read(*entry, "type"));
    EXPECT_EQ("INT 1", Read(*entry, "isleaf"));
    EXPECT_EQ("INT 0", Read(*entry, "has_children"));
    EXPECT_EQ("INT 0", Read(*entry, "is_container"));
    EXPECT_EQ("Specified", Read(*entry, "status"));
    EXPECT_EQ("INT 1", Read(*entry, "can_enter"));
    EXPECT_EQ("/Feed:D.1", Read(*entry, "moniker"));
    EXPECT_EQ("Main", Read(*entry, "container"));
    EXPECT_EQ("a SimulationObjectObject", Read(*entry, "container_type"));
    EXPECT_EQ("a SimulationObjectObject", Read(*entry, "container_category"));
    EXPECT_EQ("(NULL)", Read(*entry, "upper_limit"));
    EXPECT_EQ("(NULL)", Read(*entry, "spec_value"));
    EXPECT_EQ("(NULL)", Read(*entry, "path"));
    EXPECT_FALSE(entry->IsContainer());
    EXPECT_EQ(EmptyContext(), entry->GetContext());
    EXPECT_TRUE(host.always_from_case);
    TestVarSet vars;
    entry->SetVarSet(&vars);
    EXPECT_EQ("Top.here", Read(*entry, "path"));
}

TEST_F(Variables, rows_are_shown_by_kind_and_dimensions) {
    struct Case {
        const char* moniker;
        int kind;
        host::VarType unit_type;
        bool read_by_somebody;
        const char* value;    // what a scalar shows after "id"
        const char* options;  // after "can_enter"
        const char* path;     // after "has_children"
        const char* status;   // after the limits
        const char* last;     // after "moniker"
    };
    constexpr auto none = host::kVariableUnitType;
    const Case cases[] = {
        {":D.1", host::kReal, none, false, " value", "", "", " status", ""},
        {":D.1", host::kReal, 1, false, " value dimension uom", " uom_options", "", " status", ""},
        {":D.1", host::kReal, none, true, " value", "", " path", " status", ""},
        {":E.1", host::kEnumeration, none, false, " value", " option_list", "", " status", ""},
        {":T.1", host::kText, none, false, " value", "", "", " status", ""},
        {":A.1", host::kAttachment, none, false, " value", "", "", " status", " fullattachmoniker"},
        {":M.1", host::kMessage, none, false, " value", "", "", " status", ""},
        {":D.[]", host::kReal, 1, false, "", "", "", "", " offsetmoniker0"},
        {":D.[].[]", host::kReal, 1, true, "", "", " path", "", " offsetmoniker0 offsetmoniker1"},
        {":D.[].[].[]", host::kReal, 1, false, "", "", "", "", " offsetmoniker0 offsetmoniker1"},
        {":E.[]", host::kEnumeration, none, false, "", " option_list", "", "", " offsetmoniker0"},
        {":A.[]", host::kAttachment, none, false, "", "", "", "", " offsetmoniker0"},
    };
    for (const Case& each : cases) {
        host::VarDescription::Facts facts;
        facts.unit_type = each.unit_type;
        auto entry = Node(feed.AddRow(each.moniker, "V", each.kind, facts));
        TestVarSet vars;
        if (each.read_by_somebody) entry->SetVarSet(&vars);
        const std::string rows =
            std::string("id") + each.value + " can_enter" + each.options +
            " browser_name type container container_category container_type display_name isleaf "
            "has_children" +
            each.path + " upper_limit lower_limit" + each.status + " is_container moniker" +
            each.last + " attachments skipcorrelations skipattachments";
        EXPECT_EQ(SplitNames(rows), ShownRows(*entry)) << each.moniker << " kind " << each.kind;
    }
}

TEST_F(Variables, types_follow_kind_and_dimensions) {
    struct Case {
        const char* text;
        int kind;
        const char* type;
    };
    const Case cases[] = {
        {":D.1", 1, "Real"},
        {":D.1", 2, "String"},
        {":D.1", 3, "String"},
        {":D.1", 4, "Attachment"},
        {":D.1", 5, "Message"},
        {":D.1.[]", 1, "Array"},
        {":D.1.[].[]", 1, "2-Dim Array"},
        {":D.1.[].[].[]", 1, "3-Dim Array"},
        {":D.1.[].[].[].[]", 1, "multi-Dim Array"},
    };
    for (const Case& each : cases) {
        auto entry = Node(feed.AddRow(each.text, "V", each.kind));
        EXPECT_EQ(each.type, Read(*entry, "type")) << each.text << " kind " << each.kind;
    }
}

TEST_F(Variables, dimensions_are_counted_once_a_node) {
    scripted::Row& row = feed.AddReal(":D.1", "Var", 1.0);
    auto context = List(feed);
    const auto before = Ref<FIEntry>::Share(context->MakeEntry(row));
    EXPECT_EQ("Real", Read(*before, "type"));
    row.text = host::Text(":D.1.[]");
    EXPECT_EQ("Real", Read(*before, "type"));
    EXPECT_EQ("Array", Read(*Ref<FIEntry>::Share(context->MakeEntry(row)), "type"))
        << "nothing is kept from one node to the next";
}

TEST_F(Variables, arrays_show_no_scalar_rows) {
    host::VarDescription::Facts facts;
    facts.unit_type = 1;
    facts.minimum = 1.0;
    facts.maximum = 5.0;
    auto& row = feed.AddRow(":D.1.[].[]", "X", host::kReal, facts);
    const host::VarDescription offsets[2] = {host::VarDescription(":Comp.[]", 0),
                                             host::VarDescription(":Phase.[]", 0)};
    row.offset_descriptions = offsets;
    row.offset_description_count = 1;
    auto entry = Node(row);
    for (const char* name : {"value", "dimension", "uom", "uom_options", "status", "can_enter",
                             "upper_limit", "lower_limit", "option_list", "fullattachmoniker"}) {
        EXPECT_EQ("(NULL)", Read(*entry, name)) << name;
    }
    EXPECT_EQ("INT 0", Read(*entry, "isleaf"));
    EXPECT_EQ("INT 1", Read(*entry, "has_children"));
    EXPECT_EQ(":Comp.[]", Read(*entry, "offsetmoniker0"));
    EXPECT_EQ("", Read(*entry, "offsetmoniker1")) << "the row has no second one";
    EXPECT_TRUE(entry->IsContainer());
    auto line = Node(feed.AddRow(":D.2.[]", "Y", host::kReal));
    EXPECT_EQ("", Read(*line, "offsetmoniker0"));
    EXPECT_EQ("(NULL)", Read(*line, "offsetmoniker1"));
    EXPECT_EQ("Non scalar variable", Write(*entry, "value", FIValue::OfReal(1.0)));
    EXPECT_TRUE(feed.stores.empty());
}

TEST_F(Variables, the_custom_row_shows_nothing) {
    host::VarDescription::Facts facts;
    facts.kind = host::kPartReal;
    facts.minimum = 1.0;
    facts.maximum = 9.0;
    feed.reals[":D.1"] = 5.0;
    auto entry = Node(feed.AddRow(":D.1", "Custom datablock for user input", host::kReal, facts));
    for (const char* name : {"value", "status", "can_enter", "upper_limit", "lower_limit"}) {
        EXPECT_EQ("(NULL)", Read(*entry, name)) << name;
    }
    EXPECT_EQ("Real", Read(*entry, "type"));
    auto other = Node(feed.AddRow(":D.1", "Custom datablock for user Input", host::kReal, facts));
    EXPECT_EQ("REAL 5", Read(*other, "value")) << "any other name counts as one";
}

TEST_F(Variables, limits_are_in_the_unit_of_the_value) {
    host::VarDescription::Facts facts;
    facts.kind = host::kPartReal;
    facts.unit_type = 1;
    facts.minimum = -10.0;
    facts.maximum = 100.0;
    auto entry = Node(feed.AddRow(":D.1", "T", host::kReal, facts));
    EXPECT_EQ("REAL 100", Read(*entry, "upper_limit"));
    EXPECT_EQ("REAL -10", Read(*entry, "lower_limit"));
    TestVarSet vars;
    entry->SetVarSet(&vars);
    EXPECT_EQ("(NULL)", Write(*entry, "uom", FIValue("F")));
    EXPECT_EQ("REAL 212", Read(*entry, "upper_limit"));
    EXPECT_EQ("REAL 14", Read(*entry, "lower_limit"));
}

TEST_F(Variables, limits_and_units_are_those_of_the_variable_part) {
    host::VarDescription::Facts outer;
    outer.moniker = host::Text("Inner.1");
    outer.minimum = 1.0;
    outer.maximum = 2.0;
    outer.unit_type = 2;
    host::VarDescription::Facts part;
    part.moniker = host::Text(":D.7");
    part.kind = host::kPartReal;
    part.minimum = -10.0;
    part.maximum = 100.0;
    part.unit_type = 1;
    auto& row = feed.AddRow("Inner.1", "r", host::kReal);
    row.description = host::VarDescription(outer, host::VarDescription(part));
    EXPECT_EQ("REAL 100", Read(*Node(row), "upper_limit"));
    EXPECT_EQ("REAL -10", Read(*Node(row), "lower_limit"));
    EXPECT_EQ("Temperature", Read(*Node(row), "dimension"));
}

TEST_F(Variables, containers_are_those_of_the_owner) {
    auto& column = host.main.Add("T-100", host.template_op);
    scripted::FlowSheet inner;
    inner.type = &host.simulation_object;
    inner.owner = &column;
    feed.owner = &inner;
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0));
    EXPECT_EQ("T-100", Read(*entry, "container"));
    EXPECT_EQ("a TemplateOpObject", Read(*entry, "container_type"));
    EXPECT_EQ("UnitOp", Read(*entry, "container_category"));
}

TEST_F(Variables, options_are_those_of_arrays_too) {
    auto& row = feed.AddRow(":E.1.[]", "choice", host::kEnumeration);
    row.enumeration = std::make_unique<scripted::Enumeration>(Names{"Off", "On"});
    EXPECT_EQ("Off;On", Read(*Node(row), "option_list"));
    row.enumeration = std::make_unique<scripted::Enumeration>(Names{});
    EXPECT_EQ("", Read(*Node(row), "option_list"));
}

TEST_F(Variables, monikers_are_joined_with_a_slash_where_needed) {
    struct Case {
        const char* object;
        const char* variable;
        const char* moniker;
    };
    const Case cases[] = {{"/S.1", ":D.1", "/S.1:D.1"},
                          {"/S.1", "D.1", "/S.1/D.1"},
                          {"/S.1/", "D.1", "/S.1/D.1"},
                          {"/S.1/", ":D.1", "/S.1/:D.1"}};
    for (const Case& each : cases) {
        host.monikers[&feed] = each.object;
        EXPECT_EQ(each.moniker, Read(*Node(feed.AddReal(each.variable, "V", 1.0)), "moniker"));
    }
}

// ---- Values ----

TEST_F(Variables, kinds_read_as_told) {
    auto& product = host.main.Add("Product", host.stream);
    EXPECT_EQ("REAL 1.5", Read(*Node(feed.AddReal(":D.1", "r", 1.5)), "value"));
    EXPECT_EQ("(NULL)", Read(*Node(feed.AddReal(":D.2", "unset", -32767.0)), "value"));
    EXPECT_EQ("REAL -32767.5", Read(*Node(feed.AddReal(":D.3", "near", -32767.5)), "value"));

    auto& choice = feed.AddRow(":E.1", "choice", host::kEnumeration);
    choice.enumeration = std::make_unique<scripted::Enumeration>(Names{"Off", "On", "Auto"});
    feed.reals[":E.1"] = 1.9;
    EXPECT_EQ("On", Read(*Node(choice), "value")) << "truncated";
    EXPECT_EQ("Off;On;Auto", Read(*Node(choice), "option_list"));
    feed.reals[":E.1"] = -0.9;
    EXPECT_EQ("Off", Read(*Node(choice), "value")) << "towards zero";
    feed.reals[":E.1"] = 7.0;
    EXPECT_EQ("(NULL)", Read(*Node(choice), "value"));
    for (const double number :
         std::initializer_list<double>{NAN, INFINITY, -INFINITY, 1e300, -1e300, 9.3e18}) {
        feed.reals[":E.1"] = number;
        EXPECT_EQ("(NULL)", Read(*Node(choice), "value")) << number;
    }
    choice.enumeration.reset();
    EXPECT_EQ("(NULL)", Read(*Node(choice), "value"));
    EXPECT_EQ("(NULL)", Read(*Node(choice), "option_list"));

    EXPECT_EQ("some words", Read(*Node(feed.AddText(":T.1", "t", "some words")), "value"));
    EXPECT_EQ("", Read(*Node(feed.AddText(":T.2", "t", "")), "value"));
    EXPECT_EQ("Unknown Key", Read(*Node(feed.AddText(":T.3", "t", "Key: secret")), "value"));
    EXPECT_EQ("Key:", Read(*Node(feed.AddText(":T.4", "t", "Key:")), "value"));
    EXPECT_EQ("key: x", Read(*Node(feed.AddText(":T.5", "t", "key: x")), "value"));

    EXPECT_EQ("Product", Read(*Node(feed.AddAttachment(":A.1", "a", &product)), "value"));
    EXPECT_EQ("(NULL)", Read(*Node(feed.AddAttachment(":A.2", "a", nullptr)), "value"));
    EXPECT_EQ("(NULL)", Read(*Node(feed.AddRow(":M.1", "m", host::kMessage)), "value"));
}

TEST_F(Variables, values_of_inner_objects_are_read_there) {
    auto& row = feed.AddReal("Inner.1", "r", -32767.0);
    row.description = host::VarDescription("Inner.1/:D.7", 0);
    scripted::Plain inner;
    inner.reals[":D.7"] = 42.0;
    EXPECT_EQ("(NULL)", Read(*Node(row), "value"));
    feed.resolved["Inner.1/:D.7"] = &inner;
    EXPECT_EQ("REAL 42", Read(*Node(row), "value"));
    EXPECT_EQ("(NULL)", Write(*Node(row), "value", FIValue::OfReal(43.0)));
    EXPECT_EQ(43.0, inner.reals[":D.7"]);
    EXPECT_TRUE(feed.stores.empty());
    host.states[":D.7"] = 2;
    EXPECT_EQ("Default", Read(*Node(row), "status"));
    EXPECT_EQ(&inner, host.status_asked_of);
}

TEST_F(Variables, numbers_are_shown_in_the_unit_asked_for) {
    auto entry = Node(feed.AddReal(":D.1", "T", 100.0, 1));
    TestVarSet vars;
    entry->SetVarSet(&vars);
    struct Case {
        const char* unit;
        const char* answer;
        const char* value;
        const char* uom;
    };
    const Case cases[] = {{"F", "(NULL)", "REAL 212", "F"},
                          {"K", "(NULL)", "REAL 373.15", "K"},
                          {"C", "(NULL)", "REAL 100", "C"},
                          {"bar", "Invalid unit for variable type", "REAL 100", "C"},
                          {"", "Invalid unit for variable type", "REAL 100", "C"}};
    for (const Case& each : cases) {
        EXPECT_EQ(each.answer, Write(*entry, "uom", FIValue(each.unit))) << each.unit;
        EXPECT_EQ(each.value, Read(*entry, "value")) << each.unit;
        EXPECT_EQ(each.uom, Read(*entry, "uom")) << each.unit;
    }
    FIValue old;
    vars.SetUnit(FIValue("Temperature"), FIValue("F"), old);
    EXPECT_EQ("REAL 100", Read(*entry, "value")) << "the unit of another node";
    EXPECT_EQ("C", Read(*entry, "uom"));
    // A unit that the type does not have is passed over, but shown as the unit asked for.
    vars.SetUnit(FIValue(), FIValue("bar"), old);
    EXPECT_EQ("REAL 100", Read(*entry, "value"));
    EXPECT_EQ("bar", Read(*entry, "uom"));
    host.unit_set = 1;
    EXPECT_EQ("REAL 212", Read(*entry, "value")) << "in the default unit";
    host.unit_set = 0;
    vars.SetUnit(FIValue(), FIValue::OfInt(3), old);
    EXPECT_EQ("REAL 100", Read(*entry, "value")) << "only a text names a unit";
    entry->SetVarSet(nullptr);
    EXPECT_EQ("Not supported", Write(*entry, "uom", FIValue("F")));
}

TEST_F(Variables, default_units_follow_the_unit_set_of_the_case) {
    auto entry = Node(feed.AddReal(":D.1", "T", 100.0, 1));
    EXPECT_EQ("REAL 100", Read(*entry, "value"));
    host.unit_set = 1;
    EXPECT_EQ("REAL 212", Read(*entry, "value"));
    EXPECT_EQ("F", Read(*entry, "uom"));
    host.unit_set = 0;
    EXPECT_EQ("REAL 100", Read(*entry, "value"));
}

TEST_F(Variables, a_unit_type_that_is_not_fixed_is_asked_of_the_object) {
    auto entry = Node(feed.AddReal(":D.1", "V", 3.0));
    EXPECT_EQ("(NULL)", Read(*entry, "uom"));
    EXPECT_EQ("(NULL)", Read(*entry, "dimension"));
    EXPECT_EQ("REAL 3", Read(*entry, "value"));
    feed.variable_unit_type = 2;
    EXPECT_EQ("kPa", Read(*entry, "uom"));
    EXPECT_EQ("Pressure", Read(*entry, "dimension"));
}

// ---- Status ----

TEST_F(Variables, states_have_texts) {
    struct Case {
        int state;
        const char* text;
        const char* can_enter;
    };
    const Case cases[] = {{0, "Calculated", "INT 0"}, {1, "Specified", "INT 1"},
                          {2, "Default", "INT 1"},    {3, "Specified", "INT 1"},
                          {4, "Missing", "INT 1"},    {-1, "Missing", "INT 1"},
                          {99, "Missing", "INT 1"}};
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0));
    for (const Case& each : cases) {
        host.states[":D.1"] = each.state;
        EXPECT_EQ(each.text, Read(*entry, "status")) << each.state;
        EXPECT_EQ(each.can_enter, Read(*entry, "can_enter")) << each.state;
    }
    host.states.clear();
    EXPECT_EQ("Specified", Read(*entry, "status")) << "the host left the state alone";
    host.states[":D.1"] = 0;
    feed.reals[":D.1"] = -32767.0;
    EXPECT_EQ("Missing", Read(*entry, "status"));
    EXPECT_EQ("INT 1", Read(*entry, "can_enter"));
    EXPECT_EQ("Missing", Read(*Node(feed.AddRow(":M.1", "m", host::kMessage)), "status"));
    // The states of words and choices are the host's as well.
    auto& choice = feed.AddRow(":E.1", "choice", host::kEnumeration);
    choice.enumeration = std::make_unique<scripted::Enumeration>(Names{"Off", "On"});
    feed.reals[":E.1"] = 1.0;
    host.states[":E.1"] = host.states[":T.1"] = 0;
    EXPECT_EQ("Calculated", Read(*Node(choice), "status"));
    EXPECT_EQ("Calculated", Read(*Node(feed.AddText(":T.1", "t", "words")), "status"));
    feed.reals[":E.1"] = 9.0;
    EXPECT_EQ("Missing", Read(*Node(choice), "status")) << "no such option";
}

TEST_F(Variables, state_of_an_attachment_is_asked_of_what_it_points_at) {
    auto& product = host.main.Add("Product", host.stream);
    auto entry = Node(feed.AddAttachment(":A.1", "a", &product));
    host.states[":A.1"] = 0;
    EXPECT_EQ("Calculated", Read(*entry, "status"));
    EXPECT_EQ(&product, host.status_asked_of);
    Read(*Node(feed.AddReal(":D.1", "T", 1.0)), "status");
    EXPECT_EQ(&feed, host.status_asked_of) << "of a number";
}

// ---- Attachments ----

TEST_F(Variables, followed_attachments_show_the_variables_of_the_object) {
    auto& product = host.main.Add("Product", host.stream);
    product.AddReal(":D.1", "T", 7.0);
    auto& row = feed.AddAttachment(":A.1", "a", &product);
    auto entry = Node(row);
    EXPECT_EQ("INT 0", Read(*entry, "isleaf"));
    EXPECT_EQ("INT 1", Read(*entry, "has_children"));
    EXPECT_EQ("INT 1", Read(*entry, "is_container"));
    EXPECT_EQ("/Product(Product)", Read(*entry, "fullattachmoniker"));
    EXPECT_EQ(Names({"T"}), ChildNames(*entry));
    EXPECT_EQ("REAL 7", Read(*Child(*entry, "T"), "value"));
    EXPECT_EQ("/Product:D.1", Read(*Child(*entry, "T"), "moniker"));

    auto unfollowed = NodeOf(feed, row, false);
    EXPECT_EQ("INT 1", Read(*unfollowed, "isleaf"));
    EXPECT_EQ("INT 0", Read(*unfollowed, "has_children"));
    EXPECT_EQ(EmptyContext(), unfollowed->GetContext());
    EXPECT_FALSE(unfollowed->IsContainer());

    TestVarSet vars;
    entry->SetVarSet(&vars);
    const std::pair<FIValue, const char*> switches[] = {{FIValue::OfInt(1), "INT 1"},
                                                        {FIValue("1"), "INT 0"},
                                                        {FIValue::OfInt(2), "INT 0"},
                                                        {FIValue::OfReal(1.0), "INT 0"}};
    for (const auto& [value, isleaf] : switches) {
        EXPECT_EQ("(NULL)", Write(*entry, "skipattachments", value));
        EXPECT_EQ(isleaf, Read(*entry, "isleaf")) << Shown(value);
        EXPECT_EQ(std::string(isleaf) == "INT 1", !entry->IsContainer()) << Shown(value);
    }
    product.has_rows = false;
    EXPECT_EQ("INT 0", Read(*Node(row), "has_children"));
    EXPECT_EQ("INT 0", Read(*Node(row), "isleaf"));
}

TEST_F(Variables, what_is_followed_is_settled_when_the_node_is_made) {
    auto& product = host.main.Add("Product", host.stream);
    product.AddReal(":D.1", "T", 7.0);
    auto& row = feed.AddAttachment(":A.1", "a", &product);
    auto followed = NodeOf(feed, row, true);
    auto unfollowed = NodeOf(feed, row, false);
    EXPECT_EQ("(NULL)", Write(*followed, "attachments", FIValue::OfInt(0)));
    EXPECT_EQ("(NULL)", Write(*unfollowed, "attachments", FIValue::OfInt(1)));
    EXPECT_EQ(Names({"T"}), ChildNames(*followed));
    EXPECT_EQ(Names(), ChildNames(*unfollowed));
    row.text = host::Text(":A.1.[]");
    EXPECT_EQ("Attachment", Read(*followed, "type")) << "so are the dimensions";
    EXPECT_EQ("Array", Read(*Node(row), "type"));
}

TEST_F(Variables, attachments_into_the_owner_are_always_followed) {
    auto& part = host.main.Add("Part", host.utility);
    part.AddReal(":D.1", "T", 7.0);
    host.monikers[&part] = "/S.1(Feed)/P.1(Part)";
    auto& row = feed.AddAttachment(":A.1", "a", &part);
    EXPECT_TRUE(NodeOf(feed, row, false)->IsContainer());
    EXPECT_EQ("INT 0", Read(*NodeOf(feed, row, false), "is_container")) << "no flowsheet object";
    for (const char* moniker : {"/S.1(Feed2)/P.1(Part)", "/S.1(My Feed)/P.1(Part)"}) {
        host.monikers[&part] = moniker;
        EXPECT_FALSE(NodeOf(feed, row, false)->IsContainer()) << moniker;
    }
    host.monikers[&part] = "/S.1(Feed)/P.1(Part)";
    auto entry = NodeOf(feed, row, false);
    TestVarSet vars;
    entry->SetVarSet(&vars);
    Write(*entry, "skipattachments", FIValue::OfInt(1));
    EXPECT_FALSE(entry->IsContainer());
    EXPECT_EQ("INT 1", Read(*entry, "isleaf"));
}

TEST_F(Variables, only_attachments_are_containers) {
    auto& number = feed.AddReal(":D.1", "T", 1.0);
    auto& array = feed.AddRow(":A.1.[]", "Links", host::kAttachment);
    auto& link = feed.AddAttachment(":A.2", "Link", &feed);
    // The host answers for any address.
    feed.attachments[":D.1"] = feed.attachments[":A.1.[]"] = &feed;
    EXPECT_EQ("INT 0", Read(*Node(number), "is_container"));
    EXPECT_EQ("INT 0", Read(*Node(array), "is_container"));
    EXPECT_EQ("INT 1", Read(*Node(link), "is_container"));
}

TEST_F(Variables, the_custom_row_leads_nowhere_by_itself) {
    auto& part = host.main.Add("Part", host.utility);
    part.AddReal(":D.1", "T", 7.0);
    host.monikers[&part] = "/S.1(Feed)/P.1(Part)";
    auto& row = feed.AddAttachment(":A.1", "Custom datablock for user input", &part);
    EXPECT_FALSE(NodeOf(feed, row, false)->IsContainer()) << "it has no value";
    EXPECT_TRUE(NodeOf(feed, row, true)->IsContainer());
}

TEST_F(Variables, attachments_in_a_circle_end_at_the_repeat) {
    auto& product = host.main.Add("Product", host.stream);
    product.AddAttachment(":A.2", "back", &feed);
    auto root = Node(feed.AddAttachment(":A.1", "on", &product));
    for (bool history : {false, true}) {
        auto it = Ref<FIIterator>::Adopt(new FIIterator(root.Get(), history));
        ASSERT_TRUE(it->SeekPath(FIValue("back.on")));
        EXPECT_TRUE(it->CanDescend());
        ASSERT_TRUE(it->SeekChild("back"));
        EXPECT_EQ(history, it->CanDescend());
        EXPECT_EQ(history, it->DownFirst());
        EXPECT_EQ(history ? 4 : 3, it->Depth());
    }
}

TEST_F(Variables, an_attachment_to_nothing_has_no_children) {
    auto entry = Node(feed.AddAttachment(":A.1", "a", nullptr));
    EXPECT_EQ("(NULL)", Read(*entry, "fullattachmoniker"));
    EXPECT_EQ("INT 0", Read(*entry, "has_children"));
    EXPECT_EQ("INT 0", Read(*entry, "is_container"));
    EXPECT_EQ(EmptyContext(), entry->GetContext());
}

TEST_F(Variables, an_address_that_names_an_inner_object_leads_to_it) {
    scripted::Plain inner;
    inner.name = host::Text("Inner");
    inner.type = &host.utility;
    inner.AddReal(":D.1", "x", 2.0);
    auto& row = feed.AddAttachment("Inner.1", "a", nullptr);
    feed.resolved["Inner.1"] = &inner;
    EXPECT_EQ(Names({"x"}), ChildNames(*Node(row)));
    // With more than one part, the attachment of the object reached counts.
    row.description = host::VarDescription("Inner.1/:A.1", 0);
    feed.resolved["Inner.1/:A.1"] = &inner;
    EXPECT_EQ(Names(), ChildNames(*Node(row)));
    inner.attachments["Inner.1/:A.1"] = &feed;
    EXPECT_EQ(Names({"a"}), ChildNames(*Node(row)));
    // An address that comes back to the object itself leads to what is attached there.
    row.description = host::VarDescription("Inner.1", 0);
    feed.resolved["Inner.1"] = &feed;
    EXPECT_EQ(Names(), ChildNames(*Node(row)));
    feed.attachments["Inner.1"] = &inner;
    EXPECT_EQ(Names({"x"}), ChildNames(*Node(row)));
}

TEST_F(Variables, correlations_read_on_the_object_they_are_attached_to) {
    auto& holder = host.main.Add("Corr", host.correlation);
    auto& row = holder.AddReal(":D.9", "Density", 1.0);
    holder.AddText(":T.9", "Name", "Key: x");
    auto entry = Node(feed.AddAttachment(":A.1", "corr", &holder));
    auto density = Child(*entry, "Density");
    ASSERT_TRUE(density);
    EXPECT_EQ("REAL 1", Read(*density, "value"));
    EXPECT_EQ("Unknown Key", Read(*Child(*entry, "Name"), "value"));

    TestVarSet vars;
    density->SetVarSet(&vars);
    EXPECT_EQ("(NULL)", Write(*density, "skipcorrelations", FIValue::OfInt(1)));
    EXPECT_EQ("(NULL)", Read(*density, "value"));
    EXPECT_EQ("Missing", Read(*density, "status"));
    auto name = Child(*entry, "Name");
    name->SetVarSet(&vars);
    EXPECT_EQ("Unknown Key", Read(*name, "value")) << "only numbers are skipped";
    EXPECT_EQ("INT 0", Read(*name, "skipattachments")) << "not set in the var set";
    const scripted::Type special("SpecialCorrelationObject", &host.correlation);
    holder.type = &special;
    EXPECT_EQ("REAL 1", Read(*density, "value")) << "a subclass is not skipped";
    holder.type = &host.correlation;
    EXPECT_EQ("(NULL)", Write(*density, "skipcorrelations", FIValue::OfInt(2)));
    EXPECT_EQ("REAL 1", Read(*density, "value")) << "only 1 skips";
    EXPECT_EQ("INT 2", Read(*density, "skipcorrelations"));
    // Listed on its own, the holder's variables are its own.
    EXPECT_EQ("REAL 1", Read(*NodeOf(holder, row), "value"));
}

TEST_F(Variables, a_correlation_is_asked_for_its_own_unit_type) {
    auto& holder = host.main.Add("Corr", host.correlation);
    holder.AddReal(":D.9", "Density", 300.0);
    holder.variable_unit_type = 2;
    auto& row = feed.AddAttachment(":A.1", "corr", &holder);
    auto density = Child(*Node(row), "Density");
    ASSERT_TRUE(density);
    auto& other = host.main.Add("Other", host.utility);
    other.reals[":D.9"] = 400.0;
    other.variable_unit_type = 1;
    feed.attachments[":A.1"] = &other;
    TestVarSet vars;
    density->SetVarSet(&vars);
    EXPECT_EQ("Pressure", Read(*density, "dimension"));
    EXPECT_EQ("(NULL)", Write(*density, "uom", FIValue("bar")));
    EXPECT_EQ("REAL 4", Read(*density, "value")) << "of the object that it describes";
}

TEST_F(Variables, switches_are_written_on_variables) {
    auto entry = Node(feed.AddReal(":D.1", "T", 1.0));
    EXPECT_EQ("INT 1", Read(*entry, "attachments"));
    EXPECT_EQ("(NULL)", Write(*entry, "attachments", FIValue::OfInt(0)));
    EXPECT_EQ("INT 0", Read(*entry, "attachments"));
    EXPECT_EQ("(NULL)", Write(*entry, "attachments", FIValue::OfInt(-1)));
    EXPECT_EQ("INT 1", Read(*entry, "attachments")) << "any number but 0";
    EXPECT_EQ("INT 0", Read(*entry, "skipattachments"));
    EXPECT_EQ("Not supported", Write(*entry, "skipattachments", FIValue::OfInt(1)));
    EXPECT_EQ("Not supported", Write(*entry, "status", FIValue("x")));
    EXPECT_EQ("Not supported", Write(*entry, "", FIValue("x")));
    EXPECT_TRUE(entry->CanHold());
    entry->BeginBatch();
    EXPECT_EQ("", host.solver.calls) << "a variable ends no batch";
}

// ---- Paths in the host's notation ----

TEST_F(Variables, host_paths_name_variables) {
    struct Case {
        const char* moniker;
        const char* path;
        const char* answer;
    };
    const Case cases[] = {
        // A whole moniker and what may follow it.
        {":Double.501", ":Double.501", "Var|"},
        {":Double.501", "Double.501", "Var|"},
        {":Double.501", ":DOUBLE.501", "Var|"},
        {":Double.501", ":Double.501/x", "Var|x"},
        {":Double.501", ":Double.501:x", "Var|x"},
        {":Double.501", ":Double.501#3", "Var|"},
        {":Double.501", ":Double.501.3", "Var|"},
        {":Double.501", ":Double.5011", "(NULL)|:Double.5011"},
        {":Double.501", ":Double.50", "(NULL)|:Double.50"},
        {":Double.501", "", "(NULL)|"},
        // Indices of arrays.
        {":Double.501.[]", ":Double.501.3", "Var.#3|"},
        {":Double.501.[]", ":Double.501.12/:x", "Var.#12|:x"},
        {":Double.501.[].[]", ":Double.501.3.4", "Var.#3.#4|"},
        {":Double.501.[]", ":Double.501(Ethane)", "Var|(Ethane)"},
        {":Double.501.[]", ":DOUBLE.501.3", "Var.#3|"},
        {":Double.501.[]", ":DOUBLE.501(x)", "Var|(x)"},
        {":Double.501.[]", ":Double.502.3", "(NULL)|:Double.502.3"},
        {":Double501[]", ":Double5013", "(NULL)|:Double5013"},
        {":Double.501.[]", ":Double.501.3x", "(NULL)|:Double.501.3x"},
        {":Double.501.[]/:Name.0", ":Double.501.3/:Name.0", "Var.#3|"},
        // A colon inside stands for a slash too.
        {"Sub.1:Double.2", "Sub.1/Double.2", "Var|"},
        {"Sub.1:Double.2", "Sub.1:Double.2/y", "Var|y"},
        {"Sub.1:A.2:B.3", "Sub.1/A.2/B.3", "Var|"},
        {"S:Double.2", "S/Double.2", "Var|"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(each.answer, KeyOf(each.moniker, each.path)) << each.moniker << " " << each.path;
    }
    feed.AddReal(":D.1", "first", 1.0);
    feed.AddReal(":D.2", "second", 1.0);
    EXPECT_EQ("second|", KeyAndRest(*List(feed), ":D.2"));
}

}  // namespace

}  // namespace fixtop
