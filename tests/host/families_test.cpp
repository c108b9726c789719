// SPDX-License-Identifier: Apache-2.0
// The harness over the lists that stand below other nodes: each dimension of an array, what a
// specification shows, and the variables of an attached object.

#include "framework/nodes/empties.h"
#include "host/specifications/array_set.h"
#include "host/variables/dimension_node.h"
#include "specification_fixture.h"
#include "support/cursor_harness.h"

namespace fixtop {

namespace {

// Adds an array "Table" whose dimensions are counted but for the last, which texts name.
scripted::Row& AddTable(scripted::Plain& object, int dimensions) {
    std::string moniker = ":D.1";
    for (int i = 0; i < dimensions; ++i) moniker += ".[]";
    host::DimInfo& bounds = object.dimensions[moniker];
    bounds.count = static_cast<unsigned>(dimensions);
    const int low[] = {0, 4, -1};
    for (int i = 0; i < dimensions; ++i) {
        bounds.low[i] = low[i];
        bounds.high[i] = low[i] + 2;
    }
    auto& row = object.AddRow(moniker.c_str(), "Table", host::kReal);
    row.offsets.assign(static_cast<std::size_t>(dimensions - 1), host::VarDescription(":", 0));
    host::VarDescription::Facts names;
    names.moniker = host::Text(":T.9.[]");
    names.kind = host::kPartText;
    row.offsets.emplace_back(names);
    row.offset_descriptions = row.offsets.data();
    row.offset_description_count = dimensions;
    const int first = low[dimensions - 1];
    for (int i = first; i < first + 3; ++i) {
        object.texts[":T.9." + std::to_string(i)] = std::string("Name ") + char('A' + i - first);
    }
    return row;
}

Ref<FIEntry> Third(FIContext& context) {
    auto cursor = ChildrenOf(context);
    EXPECT_TRUE(cursor->Seek(kFromFirst, 2));
    return Ref<FIEntry>::Adopt(cursor->GetEntry());
}

class Families : public Specification {
 protected:
    Ref<FIContext> VariablesOf(scripted::Plain& object) {
        return Ref<FIContext>::Share(
            new HVarsContext(object.VariableNames(), &object, {&options, true, nullptr}, nullptr));
    }
};

TEST_F(Families, every_dimension_is_a_cursor) {
    const Names keys[] = {{"Elem0", "Elem1", "Elem2"}, {"Elem4", "Elem5", "Elem6"}};
    for (const int dimensions : {1, 2, 3}) {
        auto& object = host.main.Add("Object", host.unit_op);
        AddTable(object, dimensions);
        Ref<FIEntry> node = Child(*VariablesOf(object), "Table");
        for (int dimension = 0; dimension < dimensions; ++dimension) {
            SCOPED_TRACE(testing::Message() << "dimension " << dimension << " of " << dimensions);
            auto context = Ref<FIContext>::Adopt(node->GetContext());
            const bool last = dimension == dimensions - 1;
            CheckCursorFamily(
                HostFamily("HVarDimsCursorBase", *context,
                           last ? Names{"Name A", "Name B", "Name C"} : keys[dimension]));
            node = Third(*context);
            EXPECT_EQ(last, Ref<FIContext>::Adopt(node->GetContext()).Get() == EmptyContext());
        }
    }
}

TEST_F(Families, specification_elements_of_every_type_are_a_cursor) {
    scripted::ProcessVariable variable(1.0, 0);
    scripted::ProcessVariable unset(host::kEmptyReal, 0);
    child.Add("inside").number = 1.0;
    Variable("hidden first", unset);
    info.Add("custom").custom = true;
    info.Add("status").status_holder = &status_holder;
    info.Add("hidden");
    info.Add("set").array_set = &block;
    Variable("variable", variable);
    info.Add("object").attached_object = &owner;
    info.Add("number").number = 1.0;
    Words("text");
    info.Add("extra").extra_text = host::Text("<x/>");
    info.Add("group").child = &child;
    Variable("hidden last", unset);
    auto context = List(info);
    scripted::SpecInfo all_hidden;
    all_hidden.Add("hidden");
    auto empty = List(all_hidden);
    CheckCursorFamily(HostListFamily(
        "HSpecCursorBase", *context,
        {"custom", "status", "set", "variable", "object", "number", "text", "extra", "group"},
        empty.Get()));
}

TEST_F(Families, what_lies_below_a_specification_element_is_a_cursor) {
    for (const char* tag : {"one", "two", "three"}) child.Add(tag).number = 1.0;
    host::CSpecElement& group = info.Add("group");
    group.child = &child;
    Ref<FIEntry> node = Node(group);
    auto below = Ref<FIContext>::Adopt(node->GetContext());
    CheckCursorFamily(HostListFamily("HSpecCursorBase below", *below, {"one", "two", "three"}));

    host::GrowableArray<double> numbers;
    for (const double number : {1.0, 2.0, 3.0}) numbers.Append(number);
    for (const char* name : {"X", "Y", "Z"}) {
        block.source_names.Append(host::Text(name));
        block.source_numbers.Append(numbers);
    }
    host::CSpecElement& table = info.Add("table");
    table.array_set = &block;
    Ref<FIEntry> table_node = Node(table);
    auto rows = Ref<FIContext>::Adopt(table_node->GetContext());
    CursorFamily family = HostFamily("HArraySetCursorBase below", *rows, {"Set0", "Set1", "Set2"});
    family.to_end = SeekOutcome{true, 0};
    family.to_last = SeekOutcome{false, 0};
    family.missing = SeekOutcome{true, 0};
    CheckCursorFamily(family);
    Ref<FIEntry> third = Third(*rows);
    auto elements = Ref<FIContext>::Adopt(third->GetContext());
    family = HostFamily("HArraySetElemCursorBase below", *elements, {"X", "Y", "Z"});
    family.to_end = SeekOutcome{true, 0};
    family.to_last = SeekOutcome{false, 0};
    CheckCursorFamily(family);
}

TEST_F(Families, variables_of_an_attached_object_are_a_cursor) {
    auto& vessel = host.main.Add("Vessel", host.unit_op);
    for (const char* name : {"T", "P", "F"}) owner.AddReal(":D.1", name, 1.0);
    vessel.AddAttachment(":A.1", "Link", &owner);
    auto& links = vessel.AddAttachment(":A.2.[]", "Links", nullptr);
    links.offsets = {host::VarDescription(":", 0)};
    links.offset_descriptions = links.offsets.data();
    links.offset_description_count = 1;
    vessel.dimensions[":A.2.[]"].count = 1;
    vessel.dimensions[":A.2.[]"].high[0] = 1;
    vessel.attachments[":A.2.1"] = &owner;
    auto variables = VariablesOf(vessel);
    for (const auto& node :
         {Child(*variables, "Link"), Child(*Child(*variables, "Links"), "Elem1")}) {
        ASSERT_TRUE(node);
        auto context = Ref<FIContext>::Adopt(node->GetContext());
        CheckCursorFamily(HostListFamily("HVarsCursorBase below", *context, {"T", "P", "F"}));
    }
}

// ---- Stores into elements ----

// An element of every kind of array, alone at index 1.
class ElementStores : public Families {
 protected:
    ElementStores() : unit(host.main.Add("V-1", host.unit_op)) {}

    Ref<FIEntry> Element(int value_kind, host::VarType unit_type = host::kVariableUnitType) {
        host::VarDescription::Facts facts;
        facts.kind = value_kind == host::kText ? host::kPartText : host::kPartReal;
        facts.unit_type = unit_type;
        const std::string moniker = ":K" + std::to_string(value_kind) + ".[]";
        auto& row = unit.AddRow(moniker.c_str(), "Array", value_kind, facts);
        row.offsets = {host::VarDescription(":", 0)};
        row.offset_descriptions = row.offsets.data();
        row.offset_description_count = 1;
        row.enumeration = std::make_unique<scripted::Enumeration>(Names{"Off", "On", "Auto"});
        host::DimInfo& bounds = unit.dimensions[moniker];
        bounds.count = 1;
        bounds.low[0] = bounds.high[0] = 1;
        auto context = Ref<HVarsContext>::Share(
            new HVarsContext(unit.VariableNames(), &unit, {&options, true, nullptr}, nullptr));
        auto array = Ref<FIEntry>::Share(context->MakeEntry(row));
        Ref<FIEntry> element = Child(*array, "Elem1");
        EXPECT_TRUE(element);
        return element;
    }

    scripted::Plain& unit;
};

TEST_F(ElementStores, what_was_stored_is_read_back) {
    struct Case {
        int kind;
        FIValue value;
        const char* shown;
        const char* moniker;
    };
    const Case cases[] = {
        {host::kReal, FIValue::OfReal(2.5), "REAL 2.5", ":K1.1"},
        {host::kReal, FIValue("3.5"), "REAL 3.5", ":K1.1"},
        {host::kReal, FIValue(), "(NULL)", ":K1.1"},
        {host::kEnumeration, FIValue("Auto"), "Auto", ":K2.1"},
        {host::kEnumeration, FIValue("Off"), "Off", ":K2.1"},
        {host::kText, FIValue("some words"), "some words", ":K3.1"},
        {host::kText, FIValue::OfReal(0.5), "0.5", ":K3.1"},
        {host::kText, FIValue(""), "", ":K3.1"},
    };
    for (const Case& each : cases) {
        Ref<FIEntry> element = Element(each.kind);
        unit.stores.clear();
        host.solver.calls.clear();
        EXPECT_EQ("(NULL)", Write(*element, "value", each.value)) << Shown(each.value);
        EXPECT_EQ(each.shown, Read(*element, "value"));
        EXPECT_EQ(Names({each.moniker}), unit.stores) << "that element, once";
        EXPECT_EQ("task ", host.solver.calls);
    }
    EXPECT_EQ(0.0, unit.reals[":K2.1"]) << "the ordinal of the option";
}

TEST_F(ElementStores, a_number_goes_through_the_unit_of_its_reader) {
    Ref<FIEntry> element = Element(host::kReal, 1);
    TestVarSet vars;
    element->SetVarSet(&vars);
    EXPECT_EQ("(NULL)", Write(*element, "uom", FIValue("K")));
    EXPECT_EQ("(NULL)", Write(*element, "value", FIValue::OfReal(373.15)));
    EXPECT_DOUBLE_EQ(100.0, unit.reals[":K1.1"]);
    EXPECT_EQ("REAL 373.15", Read(*element, "value"));
    EXPECT_EQ("(NULL)", Write(*element, "value", FIValue()));
    EXPECT_EQ(host::kEmptyReal, unit.reals[":K1.1"]) << "unset is not converted";
}

TEST_F(ElementStores, every_refusal_has_its_text) {
    struct Case {
        int kind;
        FIValue value;
        const char* answer;
    };
    const Case cases[] = {
        {host::kReal, FIValue::OfReal(2.0), "Value not stored"},
        {host::kEnumeration, FIValue("On"), "Value not stored"},
        {host::kEnumeration, FIValue("Maybe"), "Value not stored"},
        {host::kText, FIValue("after"), "Value not stored"},
        {host::kAttachment, FIValue("V-1"), "Cannot set attachment"},
        {host::kMessage, FIValue("after"), "Cannot set message"},
    };
    unit.refuse_stores = true;
    for (const Case& each : cases) {
        Ref<FIEntry> element = Element(each.kind);
        EXPECT_EQ(each.answer, Write(*element, "value", each.value)) << each.kind;
    }
}

}  // namespace

}  // namespace fixtop
