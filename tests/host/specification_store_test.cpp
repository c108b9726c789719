// SPDX-License-Identifier: Apache-2.0
#include "host/adapter.h"
#include "host/levels/case_nodes.h"
#include "host/solver/solve_wait.h"
#include "specification_fixture.h"

namespace fixtop {

namespace {

// ---- Unique names ----

TEST_F(Specification, equal_tags_get_suffixes) {
    struct Case {
        Names tags;
        Names ids;
    };
    const Case cases[] = {
        {{"A"}, {"A"}},
        {{"A", "B"}, {"A", "B"}},
        {{"A", "A"}, {"A-1", "A-2"}},
        {{"A", "A", "A"}, {"A-1", "A-2", "A-3"}},
        // The first has no namesake directly after it.
        {{"A", "B", "A"}, {"A", "B", "A-2"}},
        {{"A", "B", "A", "A"}, {"A", "B", "A-2", "A-3"}},
        {{"A", "A", "B", "B"}, {"A-1", "A-2", "B-1", "B-2"}},
        {{"A", "a"}, {"A", "a"}},
        {{"A", "A-2"}, {"A", "A-2"}},
    };
    for (const Case& each : cases) {
        scripted::SpecInfo list;
        for (const std::string& tag : each.tags) list.Add(tag.c_str()).number = 1.0;
        EXPECT_EQ(each.ids, Ids(list)) << testing::PrintToString(each.tags);
        EXPECT_EQ(each.tags, ChildNames(*List(list))) << "names stay the tags";
    }
}

TEST_F(Specification, hidden_elements_do_not_count_in_names) {
    info.Add("A");
    Words("A");
    info.Add("B");
    Words("A");
    EXPECT_EQ(Names({"A-1", "A-2"}), Ids(info));
}

// ---- Children ----

TEST_F(Specification, a_sub_specification_is_listed_below) {
    host::CSpecElement& group = info.Add("group");
    group.child = &child;
    child.Add("hidden");
    Ref<FIEntry> entry = Node(group);
    EXPECT_EQ("SpecCollection", Read(*entry, "type"));
    EXPECT_TRUE(entry->IsContainer());
    EXPECT_EQ("INT 0", Read(*entry, "isleaf"));
    EXPECT_EQ("INT 0", Read(*entry, "has_children")) << "nothing that is shown";
    child.Add("x").number = 1.0;
    EXPECT_EQ("INT 1", Read(*entry, "has_children"));
    EXPECT_EQ(Names({"x"}), ChildNames(*entry));
    Ref<FIEntry> below = Child(*entry, "x");
    entry.Reset();
    EXPECT_EQ("/Feed", Read(*below, "moniker")) << "the owner is passed down";
    EXPECT_EQ("Main", Read(*below, "container"));
}

TEST_F(Specification, an_array_set_is_listed_below_when_there_is_no_sub_specification) {
    host::CSpecElement& element = info.Add("table");
    element.array_set = &block;
    Ref<FIEntry> entry = Node(element);
    EXPECT_TRUE(entry->IsContainer());
    EXPECT_EQ("INT 0", Read(*entry, "isleaf"));
    EXPECT_EQ("INT 0", Read(*entry, "has_children"));
    host::GrowableArray<double> column;
    block.source_names.Append(host::Text("x"));
    block.source_numbers.Append(column);
    EXPECT_EQ("INT 0", Read(*entry, "has_children")) << "a column without rows";
    column.Append(1.0);
    block.source_numbers.Append(column);
    block.source_names.Append(host::Text("y"));
    EXPECT_EQ("INT 1", Read(*entry, "has_children"));
    block.source_numbers.Clear();
    block.source_names.Clear();
    block.source_names.Append(host::Text("x"));
    block.source_numbers.Append(column);
    EXPECT_EQ(Names({"Set0"}), ChildNames(*entry));
    EXPECT_EQ("INT 1", Read(*entry, "has_children")) << "after the conversion too";
    element.child = &child;
    EXPECT_EQ("INT 0", Read(*Node(element), "has_children"));
    EXPECT_EQ(Names(), ChildNames(*Node(element)));
}

TEST_F(Specification, an_array_set_of_objects_alone_has_children) {
    host::GrowableArray<host::Viewable*> column;
    column.Append(nullptr);
    block.source_names.Append(host::Text("Attachment"));
    block.source_objects.Append(column);
    host::CSpecElement& element = info.Add("table");
    element.array_set = &block;
    EXPECT_EQ("INT 1", Read(*Node(element), "has_children"));
}

TEST_F(Specification, the_attachments_switch_is_handed_down) {
    child.Add("x").number = 1.0;
    host::CSpecElement& group = info.Add("group");
    group.child = &child;
    attachments = false;
    EXPECT_EQ("INT 0", Read(*Child(*Node(group), "x"), "attachments"));
    Ref<FIEntry> entry = Node(group);
    EXPECT_EQ("(NULL)", Write(*entry, "attachments", FIValue::OfInt(1)));
    EXPECT_EQ("INT 1", Read(*entry, "attachments"));
    EXPECT_EQ("INT 1", Read(*Child(*entry, "x"), "attachments"));
}

TEST_F(Specification, the_basis_lists_its_elements) {
    scripted::Basis manager;
    manager.type = &host.viewable;
    manager.name = host::Text("Basis");
    scripted::SpecSource source;
    source.fill = [](scripted::SpecInfo& filled) { filled.Add("Package").number = 2.0; };
    manager.spec_source = &source;
    host.simulation_case.basis = &manager;
    auto context = Ref<HFandBContext>::Share(
        new HFandBContext(&host.simulation_case, {&options, true, nullptr}));
    Ref<FIEntry> package = Child(*Child(*context, "Basis"), "Package");
    ASSERT_TRUE(package);
    EXPECT_EQ("REAL 2", Read(*package, "value")) << "the nodes keep the list alive";
    EXPECT_EQ("/Basis", Read(*package, "moniker"));
    EXPECT_EQ(1, host.spec_infos);
    package.Reset();
    EXPECT_EQ(0, host.spec_infos);
}

// ---- Stores ----

constexpr char kNoStore[] = "Store not supported for this attribute.";

TEST_F(Specification, switches_are_set_and_everything_else_is_refused) {
    Ref<FIEntry> entry = Node(Words("t"));
    for (const char* name : {"uom", "status", "id", "", "Value", "skipcorrelations"}) {
        EXPECT_EQ(kNoStore, Write(*entry, name, FIValue::OfInt(1))) << name;
    }
    FIValue out;
    for (const FIValue& name : {FIValue(), FIValue::OfInt(3)}) {
        entry->SetAttribute(name, FIValue::OfInt(1), 0, out);
        EXPECT_EQ(kNoStore, Shown(out)) << name.ToText();
    }
    EXPECT_EQ("(NULL)", Write(*entry, "attachments", FIValue::OfInt(0)));
    EXPECT_EQ("INT 0", Read(*entry, "attachments"));
    TestVarSet vars;
    entry->SetVarSet(&vars);
    for (const char* name : {"skipcorrelations", "skipattachments"}) {
        EXPECT_EQ("(NULL)", Write(*entry, name, FIValue::OfInt(1)));
        EXPECT_EQ("INT 1", Read(*entry, name));
    }
}

TEST_F(Specification, only_process_variables_are_stored) {
    scripted::ProcessVariable variable(1.0, 0);
    info.Add("custom").custom = true;
    info.storage.back()->process_variable = &variable;
    info.Add("number").number = 1.0;
    Words("text");
    child.Add("x").number = 1.0;
    info.Add("group").child = &child;
    info.Add("object").attached_object = &owner;
    for (const auto& element : info.storage) {
        for (int mode : {0, 1, 2}) {
            EXPECT_EQ(kNoStore, Store(*Node(*element), FIValue::OfReal(2.0), mode))
                << element->tag.Str() << " mode " << mode;
        }
    }
    EXPECT_EQ("", variable.calls);
    EXPECT_EQ("", host.solver.calls);
}

TEST_F(Specification, stores_have_three_modes) {
    struct Case {
        int mode;
        unsigned bits;
        bool can_specify;
        const char* answer;
        const char* calls;
        const char* solver;
    };
    const Case cases[] = {
        {0, 0x00, true, "(NULL)", "specified ", "task "},
        {0, 0x0c, true, "(NULL)", "specified ", "task "},
        {0, 0x0c, false, "Cannot specify this value.", "", ""},
        {1, 0x04, true, "(NULL)", "specified ", "task "},
        {1, 0x08, false, "(NULL)", "specified ", "task "},
        {1, 0x33, true, "(NULL)", "", ""},
        {2, 0x00, true, "(NULL)", "calculated ", ""},
        {2, 0x0c, false, "(NULL)", "calculated ", ""},
        {3, 0x0c, true, "(NULL)", "", ""},
        {-1, 0x0c, true, "(NULL)", "", ""},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE("mode " + std::to_string(each.mode) + " bits " + std::to_string(each.bits));
        scripted::ProcessVariable variable(1.0, each.bits);
        variable.can_specify = each.can_specify;
        host.solver.calls.clear();
        host.turns = 0;
        Ref<FIEntry> entry = Node(Variable("v", variable));
        EXPECT_EQ(each.answer, Store(*entry, FIValue::OfReal(2.5), each.mode));
        EXPECT_EQ(each.calls, variable.calls);
        EXPECT_EQ(*each.calls ? 2.5 : 1.0, variable.value);
        EXPECT_EQ(each.solver, host.solver.calls);
        EXPECT_EQ(*each.solver ? 1 : 0, host.turns) << "waits after a solve only";
    }
}

TEST_F(Specification, a_variable_below_another_element_is_stored_and_solved) {
    scripted::ProcessVariable variable(1.0, 0);
    child.Add("v").process_variable = &variable;
    host::CSpecElement& group = info.Add("group");
    group.child = &child;
    EXPECT_EQ("(NULL)", Store(*Child(*Node(group), "v"), FIValue::OfReal(2.5), 0));
    EXPECT_EQ(2.5, variable.value);
    EXPECT_EQ("task ", host.solver.calls);
    EXPECT_EQ(1, host.turns);
}

TEST_F(Specification, stored_values_are_numbers) {
    scripted::ProcessVariable variable(1.0, 0);
    Ref<FIEntry> entry = Node(Variable("v", variable));
    const std::pair<FIValue, double> cases[] = {{FIValue::OfInt(3), 3.0},
                                                {FIValue("4.5"), 4.5},
                                                {FIValue("words"), 0.0},
                                                {FIValue(), host::kEmptyReal}};
    for (const auto& [value, stored] : cases) {
        EXPECT_EQ("(NULL)", Store(*entry, value, 0));
        EXPECT_EQ(stored, variable.value) << value.ToText();
    }
}

TEST_F(Specification, a_store_starts_a_solve_while_a_batch_is_open) {
    scripted::ProcessVariable variable(1.0, 0);
    TheAdapter().EditBatch().Add({&owner, {}});
    EXPECT_EQ("(NULL)", Store(*Node(Variable("v", variable)), FIValue::OfReal(2.0), 0));
    TheAdapter().EditBatch().Remove({&owner, {}});
    EXPECT_EQ("task ", host.solver.calls);
}

TEST_F(Specification, an_entry_that_is_let_go_of_inside_its_store_lives_to_its_end) {
    scripted::ProcessVariable variable(1.0, 0);
    Ref<FIEntry> entry = Node(Variable("v", variable));
    FIEntry& raw = *entry;
    host.on_turn = [&](int) { entry.Reset(); };
    EXPECT_EQ("(NULL)", Store(raw, FIValue::OfReal(2.0), 0));
    EXPECT_FALSE(entry);
    EXPECT_EQ(2.0, variable.value);
}

}  // namespace

}  // namespace fixtop
