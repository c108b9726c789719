// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "framework/nodes/empties.h"
#include "host/levels/object_node.h"
#include "host/lists/object_list.h"
#include "support/cursor_harness.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"

namespace fixtop {

namespace {

std::string Numbered(const char* stem, int number) {
    return std::string(stem).append(std::to_string(number));
}

class Objects : public testing::Test {
 protected:
    Ref<HFSOContext> List(HFSOContext::Kind kind) {
        return Ref<HFSOContext>::Share(
            new HFSOContext(nullptr, nullptr, kind, {&options, true, nullptr}));
    }
    Ref<FIEntry> Node(host::Viewable& object) {
        return Ref<FIEntry>::Share(List(HFSOContext::kStreams)->MakeEntry(object));
    }

    scripted::Host host;
    HovexOptions options{&host.simulation_case};
};

TEST_F(Objects, cursors_are_cursors) {
    auto empty_streams = List(HFSOContext::kStreams);
    scripted::FlowSheet bare;
    auto Empty = [&](HFSOContext::Kind kind) {
        return Ref<HFSOContext>::Share(
            new HFSOContext(&bare, nullptr, kind, {&options, true, nullptr}));
    };
    for (const char* name : {"S1", "S2", "S3"}) {
        host.main.Add(name, host.stream);
        host.main.Add((std::string("U") + name).c_str(), host.unit_op);
        host.main.Add((std::string("X") + name).c_str(), host.utility);
    }
    auto streams = List(HFSOContext::kStreams);
    auto no_streams = Empty(HFSOContext::kStreams);
    CheckCursorFamily(
        HostListFamily("HFSOCursorBase streams", *streams, {"S1", "S2", "S3"}, no_streams.Get()));
    auto operations = List(HFSOContext::kUnitOps);
    auto no_operations = Empty(HFSOContext::kUnitOps);
    CheckCursorFamily(HostListFamily("HFSOCursorBase operations", *operations,
                                     {"US1", "US2", "US3"}, no_operations.Get()));

    auto no_utilities = Empty(HFSOContext::kUtilities);
    auto no_tables = Empty(HFSOContext::kDataTables);
    scripted::List utilities;
    scripted::List tables;
    scripted::Plain more[4];
    for (int i = 0; i < 4; ++i) {
        more[i].name = host::Text(Numbered("M", i));
        more[i].type = &host.utility;
        (i < 2 ? utilities : tables).Add(static_cast<host::Viewable*>(&more[i]));
    }
    auto all_utilities = List(HFSOContext::kUtilities);
    CursorFamily family;
    family.name = "HUtilCursorBase without utilities";
    family.make_empty = [&] { return no_utilities->MakeCursor(kChildCursor); };
    CheckCursorFamily(family);
    family.name = "HDataTableCursorBase without tables";
    family.make_empty = [&] { return no_tables->MakeCursor(kChildCursor); };
    CheckCursorFamily(family);
    CheckCursorFamily(HostListFamily("HUtilCursorBase of a flowsheet alone", *all_utilities,
                                     {"XS1", "XS2", "XS3"}, no_utilities.Get()));
    host.simulation_case.utilities = &utilities;
    CheckCursorFamily(
        HostListFamily("HUtilCursorBase", *all_utilities, {"XS1", "XS2", "XS3", "M0", "M1"}));
    CheckCursorFamily(
        HostListFamily("HUtilCursorBase of the case alone", *no_utilities, {"M0", "M1"}));
    host.simulation_case.tables = &tables;
    auto all_tables = List(HFSOContext::kDataTables);
    CheckCursorFamily(HostListFamily("HDataTableCursorBase", *all_tables, {"M2", "M3"}));
    // A list of the case that is null is empty.
    host.simulation_case.utilities = nullptr;
    host.simulation_case.tables = nullptr;
    EXPECT_EQ(Names(), ChildNames(*no_utilities));
    EXPECT_EQ(Names(), ChildNames(*no_tables));
}

TEST_F(Objects, utilities_of_the_case_are_shown_whatever_they_are) {
    host.main.Add("Feed", host.stream);
    host.main.Add("Envelope", host.utility);
    scripted::List utilities;
    host.simulation_case.utilities = &utilities;
    auto context = List(HFSOContext::kUtilities);
    auto cursor = ChildrenOf(*context);
    EXPECT_TRUE(cursor->Seek(kFromEnd, 0));
    EXPECT_EQ("Envelope", cursor_harness::KeyOf(*cursor)) << "nothing in the list of the case";
    scripted::Plain more[2];
    more[0].name = host::Text("stream");
    more[0].type = &host.stream;
    more[1].name = host::Text("operation");
    more[1].type = &host.unit_op;
    for (scripted::Plain& each : more) utilities.Add(static_cast<host::Viewable*>(&each));
    EXPECT_EQ(Names({"Envelope", "stream", "operation"}), ChildNames(*context));
}

TEST_F(Objects, search_in_both_lists_of_utilities_begins_where_told) {
    for (const char* name : {"A", "B"}) host.main.Add(name, host.utility);
    scripted::List utilities;
    host.simulation_case.utilities = &utilities;
    scripted::Plain more[2];
    for (int i = 0; i < 2; ++i) {
        more[i].name = host::Text(i == 0 ? "A" : "C");
        more[i].type = &host.utility;
        utilities.Add(static_cast<host::Viewable*>(&more[i]));
    }
    auto context = List(HFSOContext::kUtilities);
    auto cursor = ChildrenOf(*context);
    auto first = ChildrenOf(*context);
    ASSERT_TRUE(cursor->SeekName(kFromFirst, "C"));
    for (int origin : {kFromFirst, kFromEnd}) {
        ASSERT_TRUE(cursor->SeekName(kFromFirst, "C"));
        EXPECT_TRUE(cursor->SeekName(origin, "A")) << origin;
        EXPECT_EQ(0, cursor->Compare(*first)) << "the first of two, from " << origin;
    }
    ASSERT_TRUE(cursor->SeekName(kFromFirst, "B"));
    ASSERT_TRUE(cursor->SeekName(kFromPresent, "A")) << "that of the second list";
    EXPECT_EQ(1, cursor->Compare(*first));
    EXPECT_FALSE(cursor->SeekName(kFromPresent, "B")) << "it stands in the first list";
}

TEST_F(Objects, reactions_are_listed_by_number) {
    scripted::Basis basis;
    scripted::Reactions manager;
    scripted::Plain reactions[3];
    for (int i = 0; i < 3; ++i) {
        reactions[i].name = host::Text(Numbered("R", i));
        reactions[i].type = &host.simulation_object;
        manager.reactions.push_back(&reactions[i]);
    }
    auto context = List(HFSOContext::kReactions);
    EXPECT_EQ(Names(), ChildNames(*context));
    host.simulation_case.basis = &basis;
    EXPECT_EQ(Names(), ChildNames(*context));
    basis.reactions = &manager;
    CursorFamily family = HostFamily("HReactionCursorBase", *context, {"R0", "R1", "R2"});
    scripted::FlowSheet bare;
    scripted::Case other;
    auto no_reactions = Ref<HFSOContext>::Share(
        new HFSOContext(&bare, &other, HFSOContext::kReactions, {&options, true, nullptr}));
    family.make_empty = [&] { return no_reactions->MakeCursor(kChildCursor); };
    // The position may stand before the first number.
    family.before_first = family.off_first = SeekOutcome{false, std::nullopt};
    CheckCursorFamily(family);
    EXPECT_EQ("R1", NameOf(*Child(*context, "R1")));
    // It may stand anywhere outside, and comes back from there.
    struct Step {
        int origin;
        int delta;
        const char* key;
        bool at_begin;
        bool at_end;
    };
    const Step steps[] = {{0, -2, "(NULL)", false, false}, {1, 2, "R0", true, false},
                          {2, 2, "(NULL)", false, false},  {1, -2, "(NULL)", false, true},
                          {1, -1, "R2", false, false},     {2, 2147483647, "(NULL)", false, false},
                          {0, 0, "R0", true, false}};
    auto cursor = ChildrenOf(*context);
    for (const Step& step : steps) {
        SCOPED_TRACE(testing::Message() << "Seek(" << step.origin << ", " << step.delta << ")");
        EXPECT_EQ(std::string(step.key) != "(NULL)", cursor->Seek(step.origin, step.delta));
        EXPECT_EQ(step.key, cursor_harness::KeyOf(*cursor));
        EXPECT_EQ(step.at_begin, cursor->AtBegin());
        EXPECT_EQ(step.at_end, cursor->AtEnd());
    }
    ASSERT_TRUE(cursor->Seek(kFromFirst, 1));
    EXPECT_FALSE(cursor->SeekName(kFromPresent, "R0")) << "the search goes on from the present";
    EXPECT_TRUE(cursor->SeekName(kFromEnd, "R0"));
    EXPECT_EQ(kNotComparable, cursor->Compare(*ChildrenOf(*no_reactions))) << "another case";
    // A number may have no reaction.
    manager.reactions[1] = nullptr;
    EXPECT_FALSE(cursor->Seek(kFromFirst, 1));
    EXPECT_EQ("(NULL)", cursor_harness::KeyOf(*cursor));
    EXPECT_EQ(EmptyEntry(), Ref<FIEntry>::Adopt(cursor->GetEntry()).Get());
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "R2"));
}

TEST_F(Objects, contexts_have_no_key_cursor) {
    for (auto kind : {HFSOContext::kStreams, HFSOContext::kUnitOps, HFSOContext::kUtilities,
                      HFSOContext::kDataTables, HFSOContext::kReactions}) {
        EXPECT_EQ(EmptyCursor(), List(kind)->MakeCursor(kKeyCursor));
        EXPECT_NE(EmptyCursor(), Ref<FICursorBase>::Adopt(List(kind)->MakeCursor(0)).Get());
    }
}

TEST_F(Objects, different_lists_and_classes_do_not_compare) {
    host.main.Add("S1", host.stream);
    scripted::FlowSheet inner;
    inner.Add("S1", host.stream);
    auto one = List(HFSOContext::kStreams);
    auto other = Ref<HFSOContext>::Share(
        new HFSOContext(&inner, nullptr, HFSOContext::kStreams, {&options, true, nullptr}));
    EXPECT_EQ(kNotComparable, ChildrenOf(*one)->Compare(*ChildrenOf(*other)));
    auto utilities = List(HFSOContext::kUtilities);
    EXPECT_EQ(kNotComparable, ChildrenOf(*one)->Compare(*ChildrenOf(*utilities)));
    auto others = Ref<HFSOContext>::Share(
        new HFSOContext(&inner, nullptr, HFSOContext::kUtilities, {&options, true, nullptr}));
    EXPECT_EQ(kNotComparable, ChildrenOf(*utilities)->Compare(*ChildrenOf(*others)));
}

TEST_F(Objects, search_from_the_present_element_goes_on_from_it) {
    for (const char* name : {"A", "B", "A", "C"}) host.main.Add(name, host.stream);
    auto context = List(HFSOContext::kStreams);
    auto cursor = ChildrenOf(*context);
    auto first = ChildrenOf(*context);
    ASSERT_TRUE(cursor->SeekName(kFromFirst, "A"));
    EXPECT_EQ(0, cursor->Compare(*first)) << "the first of two";
    ASSERT_TRUE(cursor->SeekName(kFromPresent, "A"));
    EXPECT_EQ(0, cursor->Compare(*first)) << "the present one counts";
    ASSERT_TRUE(cursor->Seek(kFromPresent, 1));
    ASSERT_TRUE(cursor->SeekName(kFromPresent, "A"));
    EXPECT_EQ(1, cursor->Compare(*first));
    ASSERT_TRUE(cursor->Seek(kFromPresent, 1));
    EXPECT_FALSE(cursor->SeekName(kFromPresent, "A"));
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_FALSE(cursor->SeekName(kFromPresent, "B")) << "nothing goes on from the end";
    EXPECT_TRUE(cursor->SeekName(kFromEnd, "B")) << "a search from the end begins at the first";
}

TEST_F(Objects, cursor_finds_its_element_again_when_the_list_changed) {
    auto& a = host.main.Add("A", host.stream);
    host.main.Add("B", host.stream);
    host.main.Add("C", host.stream);
    auto context = List(HFSOContext::kStreams);
    auto cursor = ChildrenOf(*context);
    ASSERT_TRUE(cursor->SeekName(kFromFirst, "B"));
    host.main.objects.Remove(static_cast<host::Viewable*>(&a));
    FIValue key;
    cursor->GetKey(key);
    EXPECT_EQ("B", Shown(key));
    ASSERT_TRUE(cursor->Seek(kFromPresent, 1));
    cursor->GetKey(key);
    EXPECT_EQ("C", Shown(key));
    host.main.objects.Remove(static_cast<host::Viewable*>(host.main.storage[2].get()));
    EXPECT_FALSE(cursor->Seek(kFromPresent, -1)) << "its element is gone";
    cursor->GetKey(key);
    EXPECT_EQ("B", Shown(key)) << "back at the first";
}

// ---- Long lists ----

void AddMany(scripted::FlowSheet& flowsheet, const scripted::Type& type, int count) {
    for (int i = 0; i < count; ++i) flowsheet.Add(Numbered("S", i).c_str(), type);
}

TEST_F(Objects, search_in_a_long_list_does_not_walk_it) {
    AddMany(host.main, host.stream, 5000);
    auto context = List(HFSOContext::kStreams);
    auto cursor = ChildrenOf(*context);
    EXPECT_TRUE(cursor->SeekName(kFromFirst, "S4999"));
    EXPECT_TRUE(cursor->SeekName(kFromFirst, "S4999"));
    const long before = host.main.objects.steps;
    for (int i = 0; i < 5000; i += 7) {
        const std::string name = Numbered("S", i);
        ASSERT_TRUE(cursor->SeekName(kFromFirst, name.c_str())) << name;
        FIValue key;
        cursor->GetKey(key);
        ASSERT_EQ(name, Shown(key));
    }
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "S5000"));
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_LT(host.main.objects.steps - before, 716 * 70);
    ASSERT_TRUE(cursor->SeekName(kFromFirst, "S3000"));
    ASSERT_TRUE(cursor->Seek(kFromPresent, 1)) << "a found element can be moved on from";
    FIValue key;
    cursor->GetKey(key);
    EXPECT_EQ("S3001", Shown(key));
}

TEST_F(Objects, element_of_a_place_in_a_long_list_is_reached_without_a_walk) {
    AddMany(host.main, host.unit_op, 3);
    AddMany(host.main, host.stream, 5000);
    auto context = List(HFSOContext::kStreams);
    auto cursor = ChildrenOf(*context);
    EXPECT_TRUE(cursor->Seek(kFromFirst, 4999));
    EXPECT_TRUE(cursor->Seek(kFromFirst, 4999));
    const long before = host.main.objects.steps;
    FIValue key;
    for (int i = 1; i < 5000; i += 7) {
        ASSERT_TRUE(cursor->Seek(kFromFirst, i));
        cursor->GetKey(key);
        ASSERT_EQ(Numbered("S", i), Shown(key));
    }
    EXPECT_EQ(before, host.main.objects.steps);
    ASSERT_TRUE(cursor->Seek(kFromFirst, 3000));
    ASSERT_TRUE(cursor->Seek(kFromPresent, 1)) << "a found element can be moved on from";
    cursor->GetKey(key);
    EXPECT_EQ("S3001", Shown(key));
    EXPECT_FALSE(cursor->Seek(kFromFirst, 5000));
    cursor->GetKey(key);
    EXPECT_EQ("S0", Shown(key)) << "off the list it goes back to the first";
}

TEST_F(Objects, places_in_long_lists_are_right_after_every_change) {
    AddMany(host.main, host.stream, 300);
    auto context = List(HFSOContext::kStreams);
    const auto at = [&](int place) {
        FIValue key;
        auto cursor = ChildrenOf(*context);
        if (cursor->Seek(kFromFirst, place)) cursor->GetKey(key);
        return Shown(key);
    };
    for (int i = 0; i < 3; ++i) EXPECT_EQ("S250", at(250));
    host.main.objects.Remove(static_cast<host::Viewable*>(host.main.storage[100].get()));
    for (int i = 0; i < 3; ++i) EXPECT_EQ("S251", at(250));
    for (int i = 0; i < 3; ++i) EXPECT_EQ("(NULL)", at(299));
    host.main.Add("late", host.stream);
    for (int i = 0; i < 3; ++i) EXPECT_EQ("late", at(299));
    host.main.objects.KeepNoRevision();
    for (int i = 0; i < 3; ++i) EXPECT_EQ("S251", at(250));
    host.main.objects.Remove(static_cast<host::Viewable*>(host.main.storage[101].get()));
    for (int i = 0; i < 3; ++i) EXPECT_EQ("S252", at(250)) << "walked where no revision is kept";
}

TEST_F(Objects, places_go_on_in_the_second_list_of_utilities) {
    AddMany(host.main, host.stream, 20);
    AddMany(host.main, host.utility, 20);
    scripted::List utilities;
    host.simulation_case.utilities = &utilities;
    scripted::Plain more[20];
    for (int i = 0; i < 20; ++i) {
        more[i].name = host::Text(Numbered("case", i).c_str());
        more[i].type = &host.utility;
        utilities.Add(static_cast<host::Viewable*>(&more[i]));
    }
    auto context = List(HFSOContext::kUtilities);
    auto cursor = ChildrenOf(*context);
    for (int round = 0; round < 3; ++round) {
        for (int place : {1, 19, 20, 39}) {
            FIValue key;
            ASSERT_TRUE(cursor->Seek(kFromFirst, place));
            cursor->GetKey(key);
            const bool in_first = place < 20;
            EXPECT_EQ(Numbered(in_first ? "S" : "case", in_first ? place : place - 20), Shown(key));
        }
        EXPECT_FALSE(cursor->Seek(kFromFirst, 40));
    }
}

TEST_F(Objects, long_lists_are_searched_right_after_every_change) {
    AddMany(host.main, host.stream, 300);
    auto context = List(HFSOContext::kStreams);
    auto Find = [&](const char* name) { return ChildrenOf(*context)->SeekName(kFromFirst, name); };
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(Find("S250"));
    host.main.storage[250]->name = host::Text("renamed");
    host.main.objects.Changed();
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(Find("S250"));
        EXPECT_TRUE(Find("renamed"));
    }
    host.main.objects.Remove(static_cast<host::Viewable*>(host.main.storage[250].get()));
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(Find("renamed"));
    host.main.Add("late", host.stream);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(Find("late"));
}

TEST_F(Objects, long_lists_give_the_first_of_equal_names_and_keep_kinds_apart) {
    AddMany(host.main, host.utility, 200);
    host.main.Add("twin", host.unit_op).status = 1;
    host.main.Add("twin", host.stream).status = 2;
    host.main.Add("twin", host.stream).status = 3;
    AddMany(host.main, host.unit_op, 200);
    AddMany(host.main, host.stream, 200);
    host.main.Add("last", host.stream);
    auto streams = List(HFSOContext::kStreams);
    auto operations = List(HFSOContext::kUnitOps);
    auto others = List(HFSOContext::kUtilities);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ("Warning", Read(*Child(*streams, "twin"), "status"));
        EXPECT_EQ("Not Solved", Read(*Child(*operations, "twin"), "status"));
        EXPECT_FALSE(Child(*others, "twin"));
        EXPECT_TRUE(Child(*streams, "last"));
        EXPECT_FALSE(Child(*operations, "last"));
        EXPECT_TRUE(Child(*others, "S199"));
    }
}

TEST_F(Objects, lists_without_revision_are_walked) {
    AddMany(host.main, host.stream, 300);
    host.main.objects.KeepNoRevision();
    auto context = List(HFSOContext::kStreams);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(Child(*context, "S299"));
    host.main.storage[299]->name = host::Text("renamed");
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(Child(*context, "renamed"));
        EXPECT_FALSE(Child(*context, "S299"));
    }
}

TEST_F(Objects, more_long_lists_than_are_kept_are_all_searched_right) {
    std::vector<std::unique_ptr<scripted::FlowSheet>> flowsheets;
    for (int i = 0; i < 20; ++i) {
        flowsheets.push_back(std::make_unique<scripted::FlowSheet>());
        AddMany(*flowsheets.back(), host.stream, 100);
        flowsheets.back()->Add(Numbered("own", i).c_str(), host.stream);
    }
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 20; ++i) {
            auto context = Ref<HFSOContext>::Share(new HFSOContext(
                flowsheets[i].get(), nullptr, HFSOContext::kStreams, {&options, true, nullptr}));
            EXPECT_TRUE(Child(*context, Numbered("own", i).c_str()));
            EXPECT_FALSE(Child(*context, Numbered("own", i + 1).c_str()));
        }
    }
}

// ---- Attributes of an object ----

TEST_F(Objects, table_has_33_rows) {
    EXPECT_EQ(StandardRowsAnd({"attachments", "skipcorrelations", "skipattachments", "isObject",
                               "isHierarchy", "noObjectsBelow"}),
              AllRows<HTopEntry>());
    EXPECT_EQ(33u, HTopEntry::AttributeRows().size());
}

TEST_F(Objects, objects_show_their_rows) {
    auto& feed = host.main.Add("Feed", host.stream);
    feed.AddReal(":D.1", "T", 1.0);
    Ref<FIEntry> entry = Node(feed);
    const Names shown = SplitNames(
        "id browser_name type container container_category container_type "
        "display_name isleaf has_children path status is_container "
        "no_containers_below attachments skipcorrelations skipattachments "
        "isObject noObjectsBelow");
    EXPECT_EQ(shown, ShownRows(*entry));
    for (const char* row : {"id", "browser_name", "display_name"}) {
        EXPECT_EQ("Feed", Read(*entry, row));
    }
    EXPECT_EQ("a StreamObject", Read(*entry, "type"));
    EXPECT_EQ("INT 0", Read(*entry, "isleaf"));
    EXPECT_EQ("INT 1", Read(*entry, "has_children"));
    EXPECT_EQ("(NULL)", Read(*entry, "path"));
    EXPECT_EQ("INT 1", Read(*entry, "is_container"));
    EXPECT_EQ("INT 1", Read(*entry, "no_containers_below"));
    EXPECT_EQ("INT 1", Read(*entry, "isObject"));
    EXPECT_EQ("INT 1", Read(*entry, "noObjectsBelow"));
    EXPECT_EQ("(NULL)", Read(*entry, "isHierarchy"));
    EXPECT_EQ("INT 1", Read(*entry, "attachments"));
    EXPECT_EQ("INT 0", Read(*entry, "skipcorrelations"));
    EXPECT_EQ("(NULL)", Read(*entry, "value"));
    EXPECT_TRUE(entry->IsContainer());
    TestVarSet vars;
    entry->SetVarSet(&vars);
    EXPECT_EQ("Top.here", Read(*entry, "path"));
    for (const char* name : {"skipcorrelations", "skipattachments"}) {
        EXPECT_EQ("INT 0", Read(*entry, name)) << name;
        EXPECT_EQ("(NULL)", Write(*entry, name, FIValue::OfInt(1))) << name;
        EXPECT_EQ("INT 1", Read(*entry, name)) << name;
    }
    EXPECT_EQ("(NULL)", Write(*entry, "attachments", FIValue::OfInt(0)));
    EXPECT_EQ("INT 0", Read(*entry, "attachments"));
    EXPECT_EQ("Not supported", Write(*entry, "value", FIValue::OfInt(0)));
    EXPECT_EQ("Not supported", Write(*entry, "", FIValue::OfInt(0)));
}

TEST_F(Objects, template_operations_tell_of_their_hierarchy) {
    auto& column = host.main.Add("T-100", host.template_op);
    auto& special = host.main.Add("T-200", host.special_template);
    EXPECT_EQ("INT 0", Read(*Node(column), "no_containers_below"));
    EXPECT_EQ("INT 1", Read(*Node(special), "no_containers_below")) << "a subclass does not count";
    for (auto* object : {&column, &special}) {
        EXPECT_EQ("INT 1", Read(*Node(*object), "isObject"));
        EXPECT_EQ("INT 1", Read(*Node(*object), "isHierarchy"));
        EXPECT_EQ("(NULL)", Read(*Node(*object), "noObjectsBelow"));
    }
}

TEST_F(Objects, containers_are_told_from_the_outermost) {
    auto& column = host.main.Add("T-100", host.template_op);
    scripted::FlowSheet inner;
    inner.type = &host.simulation_object;
    inner.name = host::Text("Inner");
    inner.owner = &column;
    auto& section = inner.Add("Sec", host.template_op);
    scripted::FlowSheet deep;
    deep.type = &host.simulation_object;
    deep.name = host::Text("Deep");
    deep.owner = &section;
    auto& feed = deep.Add("Feed", host.stream);
    EXPECT_EQ("T-100.Sec", Read(*Node(feed), "container"));
    EXPECT_EQ("a TemplateOpObject", Read(*Node(feed), "container_type"));
    EXPECT_EQ("UnitOp", Read(*Node(feed), "container_category"));
    // Without a flowsheet object above it, simulation objects count.
    auto& plain = host.main.Add("Feed", host.stream);
    EXPECT_EQ("Main", Read(*Node(plain), "container"));
    EXPECT_EQ("a SimulationObjectObject", Read(*Node(plain), "container_type"));
    EXPECT_EQ("a SimulationObjectObject", Read(*Node(plain), "container_category"));
    auto& part = host.main.Add("Part", host.utility);
    part.owner = &plain;
    EXPECT_EQ("Feed", Read(*Node(part), "container"));
    EXPECT_EQ("a StreamObject", Read(*Node(part), "container_category")) << "no unit operation";
    plain.owner = nullptr;
    for (const char* row : {"container", "container_type", "container_category"}) {
        EXPECT_EQ("(NULL)", Read(*Node(plain), row)) << row;
    }
}

TEST_F(Objects, status_numbers_have_texts) {
    auto& feed = host.main.Add("Feed", host.stream);
    const std::pair<int, const char*> cases[] = {
        {0, "OK"},    {1, "Not Solved"}, {2, "Warning"}, {3, "Under-Specified"},
        {4, "Error"}, {17, "Error"},     {-1, "Error"}};
    for (const auto& [status, text] : cases) {
        feed.status = status;
        EXPECT_EQ(text, Read(*Node(feed), "status"));
    }
}

TEST_F(Objects, status_of_a_template_operation_is_the_worst_inside) {
    auto& column = host.main.Add("T-100", host.template_op);
    column.status = 4;
    EXPECT_EQ("OK", Read(*Node(column), "status")) << "without a flowsheet nothing is walked";
    scripted::FlowSheet inner;
    column.inner = &inner;
    inner.Add("a", host.stream).status = 1;
    auto& section = inner.Add("b", host.template_op);
    inner.Add("c", host.utility).status = 4;  // no flowsheet object
    EXPECT_EQ("Not Solved", Read(*Node(column), "status"));
    scripted::FlowSheet deep;
    section.inner = &deep;
    deep.Add("d", host.unit_op).status = 3;
    EXPECT_EQ("Under-Specified", Read(*Node(column), "status"));
}

// ---- What lies below an object ----

TEST_F(Objects, children_are_the_inner_flowsheet_or_the_variables) {
    auto& column = host.main.Add("T-100", host.template_op);
    column.AddReal(":D.1", "Duty", 1.0);
    EXPECT_EQ("INT 0", Read(*Node(column), "has_children"));
    EXPECT_EQ(EmptyContext(), Node(column)->GetContext());
    scripted::FlowSheet inner;
    column.inner = &inner;
    EXPECT_EQ("INT 1", Read(*Node(column), "has_children"));
    EXPECT_EQ(Names({"Streams", "UnitOps", "Utilities", "Reactions"}), ChildNames(*Node(column)));

    auto& feed = host.main.Add("Feed", host.stream);
    feed.AddReal(":D.1", "T", 1.0);
    feed.AddReal(":D.2", "P", 1.0);
    EXPECT_EQ(Names({"T", "P"}), ChildNames(*Node(feed)));
    feed.has_rows = false;
    EXPECT_EQ("INT 0", Read(*Node(feed), "has_children"));
    EXPECT_EQ(EmptyContext(), Node(feed)->GetContext());
    EXPECT_EQ(Names(), ChildNames(*Node(feed)));
}

TEST_F(Objects, a_node_keeps_the_list_of_variables_that_it_has_found) {
    auto& feed = host.main.Add("Feed", host.stream);
    feed.AddReal(":D.1", "T", 1.0);
    feed.has_rows = false;
    Ref<FIEntry> entry = Node(feed);
    EXPECT_EQ("INT 0", Read(*entry, "has_children"));
    feed.has_rows = true;
    EXPECT_EQ("INT 1", Read(*entry, "has_children")) << "asked again as there was none";
    feed.has_rows = false;
    EXPECT_EQ(Names({"T"}), ChildNames(*entry));
    EXPECT_EQ("INT 0", Read(*Node(feed), "has_children")) << "another node";
}

TEST_F(Objects, a_node_without_an_object_is_empty) {
    auto list = List(HFSOContext::kStreams);
    auto entry = Ref<FIEntry>::Share(new HTopEntry(list.Get(), nullptr));
    EXPECT_EQ("INT 0", Read(*entry, "has_children"));
    EXPECT_EQ(EmptyContext(), entry->GetContext());
    EXPECT_EQ("(NULL)", NameOf(*entry));
    EXPECT_EQ("(NULL)", Read(*entry, "type"));
    EXPECT_EQ("(NULL)", Read(*entry, "container"));
    EXPECT_FALSE(entry->CanHold());
}

TEST_F(Objects, children_are_the_specification_when_the_options_say_so) {
    auto& feed = host.main.Add("Feed", host.stream);
    feed.AddReal(":D.1", "T", 1.0);
    options.SetVariableView(false);
    EXPECT_EQ("INT 0", Read(*Node(feed), "has_children")) << "no source";
    scripted::SpecSource source;
    feed.spec_source = &source;
    source.fills_well = false;
    EXPECT_EQ("INT 0", Read(*Node(feed), "has_children"));
    EXPECT_EQ(EmptyContext(), Node(feed)->GetContext());
    source.fills_well = true;
    EXPECT_EQ("INT 1", Read(*Node(feed), "has_children"));
    EXPECT_EQ(0, host.spec_infos);
    auto entry = Node(feed);
    source.fills = 0;
    source.fill = [](scripted::SpecInfo& info) { info.Add("Rating").number = 1.0; };
    EXPECT_EQ(Names({"Rating"}), ChildNames(*entry)) << "not the variables";
    EXPECT_EQ(Names({"Rating"}), ChildNames(*entry));
    EXPECT_EQ(1, source.fills) << "filled once";
    EXPECT_EQ(static_cast<host::Viewable*>(&feed), source.last->owner);
    EXPECT_EQ(options.ReaderOptions(), source.last->options);
}

// ---- Holding ----

TEST_F(Objects, a_stream_is_held_once_and_solved_when_it_is_given_back) {
    auto& feed = host.main.Add("Feed", host.stream);
    auto& product = host.main.Add("Product", host.stream);
    scripted::Stream feed_stream;
    scripted::Stream product_stream;
    feed.stream = &feed_stream;
    product.stream = &product_stream;
    Ref<FIEntry> entry = Node(feed);
    EXPECT_TRUE(entry->CanHold());
    EXPECT_TRUE(Node(feed)->CanHold());
    EXPECT_EQ("begin session ", feed_stream.calls);
    EXPECT_TRUE(Node(product)->CanHold());
    entry->BeginBatch();
    EXPECT_EQ("begin session ", feed_stream.calls) << "another stream is still held";
    EXPECT_EQ("", host.solver.calls);
    Node(product)->BeginBatch();
    EXPECT_EQ("begin session end ", product_stream.calls);
    EXPECT_EQ("task ", host.solver.calls);
    EXPECT_EQ(1, host.turns);
}

TEST_F(Objects, a_stream_that_was_not_held_is_given_back_too) {
    auto& feed = host.main.Add("Feed", host.stream);
    scripted::Stream stream;
    feed.stream = &stream;
    Node(feed)->BeginBatch();
    EXPECT_EQ("end ", stream.calls);
    EXPECT_EQ("task ", host.solver.calls);
}

TEST_F(Objects, other_objects_are_not_held) {
    auto& heater = host.main.Add("E-100", host.unit_op);
    EXPECT_FALSE(Node(heater)->CanHold());
    Node(heater)->BeginBatch();
    EXPECT_EQ("", host.solver.calls);
    // A stream without composition, such as energy.
    auto& energy = host.main.Add("Q", host.stream);
    EXPECT_TRUE(Node(energy)->CanHold());
    Node(energy)->BeginBatch();
    EXPECT_EQ("task ", host.solver.calls);
}

// ---- Paths in the host's notation ----

TEST_F(Objects, host_paths_name_objects) {
    host.main.Add("Feed", host.stream);
    host.main.Add("Feed 2", host.stream);
    auto& column = host.main.Add("T-100", host.template_op);
    auto streams = List(HFSOContext::kStreams);
    ExpectKeys(*streams, {
                             {"(Feed/:Double.1", "Feed|:Double.1"},
                             {"Feed:Double.1", "Feed|Double.1"},
                             {"(Feed 2/x", "Feed 2|x"},
                             {"(Feed)/x", "Feed|x"},
                             {"(Feed):Double.1", "Feed|Double.1"},
                             {"(Feed 2)//x", "Feed 2|/x"},
                             {"(Feed))/x", "(NULL)|(Feed))/x"},
                             {"(Feed)", "(NULL)|(Feed)"},
                             {"Feed)/x", "(NULL)|Feed)/x"},
                             {"Feed.x", "(NULL)|Feed.x"},
                             {"(feed/x", "(NULL)|(feed/x"},
                             {"(Feed 3/x", "(NULL)|(Feed 3/x"},
                             {"", "(NULL)|"},
                             {"(", "(NULL)|("},
                             {nullptr, "(NULL)|(null)"},
                         });
    auto operations = List(HFSOContext::kUnitOps);
    EXPECT_EQ("T-100|FlowSht.1/x", KeyAndRest(*operations, "(T-100/FlowSht.1/x"));
    scripted::FlowSheet inner;
    column.inner = &inner;
    EXPECT_EQ("T-100|x/y", KeyAndRest(*operations, "(T-100/FlowSht.1/x/y"));
    EXPECT_EQ("T-100|x", KeyAndRest(*operations, "(T-100/x"));
    EXPECT_EQ("T-100|x", KeyAndRest(*operations, "(T-100)/FlowSht.1/x"));
    EXPECT_EQ("T-100|x/y", KeyAndRest(*operations, "T-100:FlowSht.1/x/y"));
    scripted::List utilities;
    utilities.Add(static_cast<host::Viewable*>(&column));
    host.simulation_case.utilities = &utilities;
    EXPECT_EQ("T-100|FlowSht.1/x", KeyAndRest(*List(HFSOContext::kUtilities), "T-100/FlowSht.1/x"))
        << "only streams and operations have the step of an inner flowsheet";
}

}  // namespace

}  // namespace fixtop
