// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/empties.h"
#include "specification_fixture.h"
#include "support/cursor_harness.h"

namespace fixtop {

namespace {

// ---- The list ----

TEST_F(Specification, cursor_is_a_cursor) {
    for (const char* tag : {"Package", "Enthalpy", "Density"}) Words(tag);
    auto context = List(info);
    auto empty = List(child);
    CheckCursorFamily(HostListFamily("HSpecCursorBase", *context,
                                     {"Package", "Enthalpy", "Density"}, empty.Get()));
    EXPECT_EQ(EmptyCursor(), context->MakeCursor(kKeyCursor));
}

TEST_F(Specification, search_by_name_takes_tags_and_starts_where_told) {
    for (const char* tag : {"A", "B", "A"}) Words(tag);
    auto context = List(info);
    auto cursor = ChildrenOf(*context);
    auto first = ChildrenOf(*context);
    EXPECT_TRUE(cursor->Seek(kFromFirst, 1));
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "A"));
    EXPECT_EQ(1, cursor->Compare(*first)) << "the third";
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "A")) << "the present one counts";
    EXPECT_EQ(1, cursor->Compare(*first));
    for (int origin : {kFromFirst, kFromEnd}) {
        EXPECT_TRUE(cursor->Seek(kFromFirst, 2));
        EXPECT_TRUE(cursor->SeekName(origin, "A")) << origin;
        EXPECT_EQ(0, cursor->Compare(*first)) << origin;
    }
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "a")) << "exactly";
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "A-3")) << "the tag, not the unique name";
    EXPECT_FALSE(cursor->SeekName(kFromFirst, nullptr));
}

TEST_F(Specification, search_by_entry_stops_on_that_very_element) {
    for (const char* tag : {"A", "B", "A"}) Words(tag);
    auto context = List(info);
    auto third = Ref<FIEntry>::Share(context->MakeEntry(*info.storage[2]));
    auto cursor = ChildrenOf(*context);
    auto first = ChildrenOf(*context);
    EXPECT_TRUE(cursor->SeekValue(kFromFirst, *third));
    EXPECT_EQ(1, cursor->Compare(*first));
    EXPECT_EQ("A-2", Read(*Ref<FIEntry>::Adopt(cursor->GetEntry()), "id"));
    auto second = Ref<FIEntry>::Share(context->MakeEntry(*info.storage[1]));
    EXPECT_FALSE(cursor->SeekValue(kFromPresent, *second)) << "it stands before the present one";
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_TRUE(cursor->SeekValue(kFromEnd, *second));
    EXPECT_EQ("B", cursor_harness::KeyOf(*cursor));
    host::CSpecElement stranger = *info.storage[0];
    auto copy = Ref<FIEntry>::Share(context->MakeEntry(stranger));
    EXPECT_FALSE(cursor->SeekValue(kFromFirst, *copy)) << "an equal tag is not enough";
    EXPECT_FALSE(cursor->SeekValue(kFromFirst, *EmptyEntry()));
}

// The host fills a specification anew for everyone who asks, and shows of a variable what it has
// then.
TEST_F(Specification, positions_in_two_fillings_compare_by_their_places) {
    scripted::SpecInfo again;
    scripted::ProcessVariable unset(host::kEmptyReal, 0);
    scripted::ProcessVariable set(3.5, 0);
    Variable("Comes and goes", unset);
    again.Add("Comes and goes").process_variable = &set;
    for (const char* tag : {"A", "B", "A"}) {
        Words(tag);
        again.Add(tag).value_text = host::Text("text");
    }
    auto context = List(info);
    auto same = List(again);
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            auto one = ChildrenOf(*context);
            auto other = ChildrenOf(*same);
            ASSERT_TRUE(one->Seek(kFromFirst, i));
            ASSERT_TRUE(other->Seek(kFromFirst, j + 1)) << "behind the variable";
            EXPECT_EQ((i > j) - (i < j), one->Compare(*other)) << i << " and " << j;
            EXPECT_EQ((j > i) - (j < i), other->Compare(*one)) << j << " and " << i;
        }
    }
    again.storage[1]->tag = host::Text("C");
    auto other = ChildrenOf(*same);
    ASSERT_TRUE(other->Seek(kFromFirst, 1));
    EXPECT_EQ(kNotComparable, ChildrenOf(*context)->Compare(*other)) << "another element";
    auto& stranger = host.main.Add("Other", host.stream);
    auto of_other = Ref<HSpecContext>::Share(
        new HSpecContext(&again, &stranger, {&options, attachments, nullptr}));
    EXPECT_EQ(kNotComparable, ChildrenOf(*context)->Compare(*ChildrenOf(*of_other)));
}

TEST_F(Specification, long_lists_are_searched_as_they_are_shown_now) {
    scripted::ProcessVariable variable(host::kEmptyReal, 0);
    for (int i = 0; i < 200; ++i) Words(("T" + std::to_string(i)).c_str());
    Variable("late", variable);
    auto cursor = ChildrenOf(*List(info));
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(cursor->SeekName(kFromFirst, "late"));
    variable.value = 1.0;
    EXPECT_TRUE(cursor->SeekName(kFromFirst, "late"));
    variable.value = host::kEmptyReal;
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "late"));
}

// ---- Types ----

TEST_F(Specification, elements_are_classified_by_the_first_rule_that_fits) {
    scripted::ProcessVariable given(5.0, 0);
    scripted::ProcessVariable marked(host::kEmptyReal, 0x10);
    scripted::ProcessVariable unset(host::kEmptyReal, 0x0f);
    scripted::ProcessVariable nearly(host::kEmptyReal + 5e-11, 0);
    scripted::ProcessVariable almost(host::kEmptyReal + 5e-10, 0);
    child.Add("inside").number = 1.0;
    scripted::SpecInfo hollow;
    // Everything that the later rules ask for is there, so that only the order decides.
    host::CSpecElement full;
    full.process_variable = &given;
    full.status_holder = &status_holder;
    full.child = &child;
    full.custom = true;
    full.attached_object = &owner;
    full.value_text = host::Text("text");
    full.number = 3.0;
    full.array_set = &block;
    full.extra_text = host::Text("extra");
    auto expect = [](HSpecType::Number number, const host::CSpecElement& element) {
        EXPECT_EQ(number, HSpecType::Classify(element));
    };
    host::CSpecElement element = full;
    expect(HSpecType::kSpecCollection, element);
    element.child = &hollow;
    expect(HSpecType::kNone, element);
    element.child = nullptr;
    expect(HSpecType::kCustomElement, element);
    element.custom = false;
    expect(HSpecType::kProcVarStatus, element);
    element.status_holder = nullptr;
    expect(HSpecType::kArraySet, element);
    element.array_set = nullptr;
    expect(HSpecType::kProcVar, element);
    element.process_variable = &marked;
    expect(HSpecType::kProcVar, element);
    element.process_variable = &almost;
    expect(HSpecType::kProcVar, element);
    element.process_variable = &nearly;
    expect(HSpecType::kNone, element);
    element.process_variable = &unset;
    expect(HSpecType::kNone, element);
    element.process_variable = nullptr;
    expect(HSpecType::kAttachedObject, element);
    element.attached_object = nullptr;
    expect(HSpecType::kNumber, element);
    element.number = host::kEmptyReal + 5e-11;
    expect(HSpecType::kText, element);
    element.value_text = host::Text();
    expect(HSpecType::kXmlSpecInfo, element);
    element.extra_text = host::Text();
    expect(HSpecType::kNone, element);
}

TEST_F(Specification, elements_without_a_type_are_not_listed) {
    scripted::ProcessVariable unset(host::kEmptyReal, 0);
    Words("first");
    Variable("no value", unset);
    child.collection_count = 0;
    info.Add("empty collection").child = &child;
    info.Add("nothing");
    Words("last");
    EXPECT_EQ(Names({"first", "last"}), ChildNames(*List(info)));
    unset.value = 1.0;
    EXPECT_EQ(Names({"first", "no value", "last"}), ChildNames(*List(info)));
}

TEST_F(Specification, values_follow_the_type) {
    scripted::ProcessVariable variable(12.5, 0);
    scripted::ProcessVariable marked(host::kEmptyReal, 0x20);
    child.Add("inside").number = 1.0;
    info.Add("1 number").custom = true;
    info.storage.back()->number = 7.0;
    info.storage.back()->value_text = host::Text("words");
    info.Add("1 text").custom = true;
    info.storage.back()->value_text = host::Text("words");
    info.Add("2").status_holder = &status_holder;
    info.Add("3").array_set = &block;
    Variable("4", variable);
    Variable("4 empty", marked);
    info.Add("5").attached_object = &owner;
    info.Add("6").number = 0.25;
    Words("7", "Peng-Robinson");
    info.Add("8").extra_text = host::Text("<more/>");
    info.Add("9").child = &child;
    struct Case {
        const char* tag;
        const char* type;
        const char* value;
    };
    const Case cases[] = {
        {"1 number", "CustomElement", "REAL 7"},
        {"1 text", "CustomElement", "words"},
        {"2", "ProcVarStatus", ""},
        {"3", "ArraySet", ""},
        {"4", "ProcVar", "REAL 12.5"},
        {"4 empty", "ProcVar", "(NULL)"},
        {"5", "AttachedObject", "Feed"},
        {"6", "Number", "REAL 0.25"},
        {"7", "Text", "Peng-Robinson"},
        {"8", "XMLSpecInfo", ""},
        {"9", "SpecCollection", ""},
    };
    ASSERT_EQ(std::size(cases), ChildNames(*List(info)).size());
    for (const Case& each : cases) {
        Ref<FIEntry> entry = Child(*List(info), each.tag);
        ASSERT_TRUE(entry) << each.tag;
        EXPECT_EQ(each.type, Read(*entry, "type")) << each.tag;
        EXPECT_EQ(each.value, Read(*entry, "value")) << each.tag;
        EXPECT_EQ("/Feed", Read(*entry, "moniker")) << each.tag;
    }
}

TEST_F(Specification, the_type_that_is_not_shown_has_an_empty_value_alone) {
    Ref<FIEntry> entry = Node(info.Add("nothing"));
    EXPECT_EQ("", Read(*entry, "value"));
    for (const char* name : {"type", "moniker", "uom", "status"}) {
        EXPECT_EQ("(NULL)", Read(*entry, name)) << name;
    }
}

// ---- Rows ----

TEST_F(Specification, table_has_32_rows) {
    EXPECT_EQ(StandardRowsAnd({"moniker", "attachments", "skipcorrelations", "skipattachments",
                               "noObjectsBelow"}),
              AllRows<HSpecEntry>());
    EXPECT_EQ(32u, HSpecEntry::AttributeRows().size());
}

TEST_F(Specification, rows_are_shown_by_type) {
    host.described[":Double.7"] = 1;
    scripted::ProcessVariable variable(300.0, 0);
    host::CSpecElement& element = Variable("T", variable);
    element.moniker = host::Text(":Double.7");
    const Names common = SplitNames(
        "id value browser_name type container container_category container_type "
        "display_name isleaf has_children moniker attachments skipcorrelations "
        "skipattachments noObjectsBelow");
    Names of_variable = common;
    of_variable.insert(of_variable.begin() + 2, "uom");
    of_variable.insert(of_variable.begin() + 11, "status");
    EXPECT_EQ(of_variable, ShownRows(*Node(element)));
    Names of_number = common;
    of_number.insert(of_number.begin() + 2, "uom");
    host::CSpecElement& number = info.Add("n");
    number.number = 1.0;
    number.moniker = host::Text(":Double.7");
    EXPECT_EQ(of_number, ShownRows(*Node(number)));
    host::CSpecElement& text = Words("t");
    text.moniker = host::Text(":Double.7");
    EXPECT_EQ(common, ShownRows(*Node(text))) << "the moniker has units, the type has not";
    EXPECT_EQ("(NULL)", Read(*Node(text), "uom"));
}

TEST_F(Specification, an_element_reads_as_told) {
    host::CSpecElement& element = Words("Package");
    element.moniker = host::Text(":Text.3");
    Ref<FIEntry> entry = Node(element);
    EXPECT_EQ("Package", NameOf(*entry));
    for (const char* name : {"id", "browser_name", "display_name"}) {
        EXPECT_EQ("Package", Read(*entry, name)) << name;
    }
    EXPECT_EQ("/Feed:Text.3", Read(*entry, "moniker"));
    EXPECT_TRUE(host.always_from_case);
    EXPECT_EQ("Main", Read(*entry, "container"));
    EXPECT_EQ("a SimulationObjectObject", Read(*entry, "container_type"));
    EXPECT_EQ("a SimulationObjectObject", Read(*entry, "container_category"));
    EXPECT_EQ("INT 1", Read(*entry, "isleaf"));
    EXPECT_EQ("INT 0", Read(*entry, "has_children"));
    EXPECT_EQ("INT 1", Read(*entry, "noObjectsBelow"));
    EXPECT_EQ("INT 1", Read(*entry, "attachments"));
    EXPECT_EQ("INT 0", Read(*entry, "skipcorrelations"));
    EXPECT_EQ("INT 0", Read(*entry, "skipattachments"));
    EXPECT_FALSE(entry->IsContainer());
    EXPECT_EQ(EmptyContext(), entry->GetContext());
    host.monikers[&owner] = "/S.1/";
    EXPECT_EQ("/S.1/:Text.3", Read(*entry, "moniker")) << "nothing is put between them";
}

TEST_F(Specification, units_are_those_of_the_variable_that_the_moniker_names) {
    host.described = {{":T.1", 1}, {":P.1", 2}, {":Odd.1", 3}, {":Unknown.1", 100}};
    struct Case {
        const char* moniker;
        const char* unit;
    };
    const Case cases[] = {{":T.1", "C"},  {":P.1", "kPa"},          {":Odd.1", "(NULL)"},
                          {"", "(NULL)"}, {":Unknown.1", "(NULL)"}, {":None.1", "(NULL)"}};
    scripted::ProcessVariable variable(1.0, 0);
    host::CSpecElement& number = info.Add("n");
    number.number = 1.0;
    for (const Case& each : cases) {
        for (host::CSpecElement* element : {&Variable("v", variable), &number}) {
            element->moniker = host::Text(each.moniker);
            EXPECT_EQ(each.unit, Read(*Node(*element), "uom")) << each.moniker;
        }
    }
    number.moniker = host::Text(":T.1");
    host.unit_set = 1;
    EXPECT_EQ("F", Read(*Node(number), "uom"));
    EXPECT_EQ("REAL 1", Read(*Node(number), "value")) << "the host's number";
    host.unit_set = 0;
    host.unit_types[0].units[0].name = "";
    EXPECT_EQ("(NULL)", Read(*Node(number), "uom"));
    host.unit_types[0].units[0].name = "C";
    host.knows_types = false;
    EXPECT_EQ("(NULL)", Read(*Node(number), "uom"));
}

TEST_F(Specification, units_and_states_are_shown_of_no_other_types) {
    host.described[":T.1"] = 1;
    scripted::ProcessVariable variable(1.0, 0x04);
    child.Add("inside").number = 1.0;
    info.Add("custom").custom = true;
    info.storage.back()->number = 7.0;
    info.Add("status").status_holder = &status_holder;
    info.Add("set").array_set = &block;
    info.Add("object").attached_object = &owner;
    Words("text");
    info.Add("extra").extra_text = host::Text("<more/>");
    info.Add("group").child = &child;
    for (const auto& element : info.storage) {
        element->moniker = host::Text(":T.1");
        // What would give a state, were it looked at.
        if (element->custom || element->status_holder) element->process_variable = &variable;
        Ref<FIEntry> entry = Node(*element);
        for (const char* name : {"uom", "status"}) {
            EXPECT_EQ("(NULL)", Read(*entry, name)) << element->tag.Str() << " " << name;
        }
        EXPECT_EQ("/Feed:T.1", Read(*entry, "moniker")) << element->tag.Str();
    }
}

TEST_F(Specification, containers_are_those_of_the_owner) {
    auto& column = host.main.Add("T-100", host.template_op);
    scripted::FlowSheet inner;
    inner.type = &host.simulation_object;
    inner.owner = &column;
    owner.owner = &inner;
    Ref<FIEntry> entry = Node(Words("t"));
    EXPECT_EQ("T-100", Read(*entry, "container"));
    EXPECT_EQ("a TemplateOpObject", Read(*entry, "container_type"));
    EXPECT_EQ("UnitOp", Read(*entry, "container_category"));
}

TEST_F(Specification, status_is_told_by_the_bits) {
    struct Case {
        unsigned bits;
        const char* status;
    };
    const Case cases[] = {{0x00, "Calculated"}, {0x01, "Adjustable"}, {0x02, "Adjustable"},
                          {0x03, "Adjustable"}, {0x04, "Specified"},  {0x08, "Specified"},
                          {0x0c, "Specified"},  {0x0d, "Adjustable"}, {0x30, "Calculated"},
                          {0x34, "Specified"}};
    for (const Case& each : cases) {
        scripted::ProcessVariable variable(1.0, each.bits);
        EXPECT_EQ(each.status, Read(*Node(Variable("v", variable)), "status")) << each.bits;
    }
    EXPECT_EQ("(NULL)", Read(*Node(Words("t")), "status"));
}

}  // namespace

}  // namespace fixtop
