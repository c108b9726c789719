// SPDX-License-Identifier: Apache-2.0
// Opening a view, its root, its life; the class cursor as a cursor; the dictionary.

#include "diagnostics/instance_counts.h"
#include "framework/iterator/saved_step.h"
#include "framework/nodes/empties.h"
#include "mapping/nodes/dictionary.h"
#include "model_fixture.h"
#include "support/cursor_harness.h"

namespace fixtop {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(Model, open_on_the_top_runs_the_root_translator) {
    const auto context = OpenModelOnTop(Files());
    ASSERT_TRUE(context);
    const ClassPlace& place = context->Place();
    EXPECT_EQ("QSISimulation", place.shown->name);
    EXPECT_EQ(nullptr, place.attribute);
    EXPECT_FALSE(place.parent);
    EXPECT_FALSE(place.references.secondary);
    EXPECT_EQ(BranchRequest::kBoth, place.branch);
    EXPECT_EQ("Test", context->Library().translateName);
    FIValue path;
    place.references.primary->GetPath(path);
    EXPECT_EQ("Top.appModel", path.ToText());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(Model, open_on_a_given_top_asks_no_function) {
    ScriptNode other("Other");
    other.Add("appModel").Add("Sheet").Set("id", "Another");
    const auto it = RootOf(OpenModelOnTop(Files(), other.Entry().Get()));
    EXPECT_EQ("Another", Read(*At(it, "Flowsheet.Name"), "value"));
    const std::string link = "<CCDMMapFile><Linkage><DLL>model_test.dll</DLL></Linkage>";
    folder.Write("map.xml", link + "<TopNode FunctionName=\"MakeTop\"/></CCDMMapFile>");
    EXPECT_TRUE(OpenModelOnTop(Files(), other.Entry().Get()))
        << "no root translator: the top itself";
    folder.Write("map.xml", link + "<TopNode FunctionName=\"NoSuch\"/></CCDMMapFile>");
    EXPECT_FALSE(OpenModelOnTop(Files(), other.Entry().Get())) << "no function";
}

TEST_F(Model, open_on_a_node_shows_it_as_the_class) {
    const auto it = top.Iterate();
    ASSERT_TRUE(it->SeekPath(Text("appModel.Sheet.Streams.Product")));
    const auto reference = Ref<FIReferenceBase>::Adopt(it->MakeReference());
    const auto stream = RootOf(OpenModelOnNode(Files(), "QSIStream", *reference));
    EXPECT_EQ("REAL 100", Read(*At(stream, "Temperature"), "value"));
    EXPECT_EQ("Product", NameOf(*Ref<FIEntry>::Share(it->EntryAt(it->Depth())))) << "copied";
    EXPECT_FALSE(OpenModelOnNode(Files(), "QSINowhere", *reference));
    EXPECT_THAT(folder.Read("lines.log"),
                testing::HasSubstr(" Error, could not find class type QSINowhere\n"));
    static_cast<FIReference&>(*reference).OnDeleted();
    EXPECT_FALSE(OpenModelOnNode(Files(), "QSIStream", *reference));
}

TEST_F(Model, open_pure_reads_classes_alone) {
    const auto context = OpenPureModel("classes.xml", kTopClass, nullptr);
    ASSERT_TRUE(context);
    EXPECT_TRUE(context->Place().references.IsEmpty());
    EXPECT_FALSE(context->Library().units.Initialized());
    EXPECT_TRUE(context->Library().mapFiles.empty());
    folder.Write("QSIStream", kTestClasses);
    const auto by_name = OpenPureModel("QSIStream", nullptr);
    ASSERT_TRUE(by_name);
    EXPECT_EQ("QSIStream", by_name->Place().shown->name);
    folder.Write("QSIAllLibraries.xml", kTestClasses);
    EXPECT_EQ("QSISimulation", OpenPureModel(nullptr)->Place().shown->name);
}

TEST_F(Model, failed_opens_leave_nothing) {
    struct Case {
        const char* what;
        const char* file;
        const char* text;
    };
    const int libraries = CountOf(CountedClass::CCDMClassLibrary).alive;
    for (const Case& each : {Case{"classes", "classes.xml", "<broken"},
                             Case{"no top class", "classes.xml", "<QZClassLibrary/>"},
                             Case{"map", "map.xml", "<broken"},
                             Case{"no top function", "map.xml", "<CCDMMapFile/>"}}) {
        folder.Write("classes.xml", kTestClasses);
        folder.Write("map.xml", kTestMap);
        folder.Write(each.file, each.text);
        EXPECT_FALSE(OpenModelOnTop(Files())) << each.what;
        EXPECT_EQ(libraries, CountOf(CountedClass::CCDMClassLibrary).alive) << each.what;
    }
    folder.Write("classes.xml", kTestClasses);
    folder.Write("map.xml", kTestMap);
    EXPECT_FALSE(OpenPureModel("none.xml", nullptr));
    EXPECT_FALSE(OpenDictionary({"none.xml", "", "units.xml", "", nullptr, nullptr}));
    top.children.clear();
    EXPECT_FALSE(OpenModelOnTop(Files())) << "the function has no top";
    EXPECT_EQ(libraries, CountOf(CountedClass::CCDMClassLibrary).alive);
}

TEST_F(Model, root_translator_that_leads_nowhere_leaves_the_tree_on_the_top) {
    top.children[0]->name = Text("notTheModel");
    const auto context = OpenModelOnTop(Files());
    ASSERT_TRUE(context);
    FIValue path;
    context->Place().references.primary->GetPath(path);
    EXPECT_EQ("Top", path.ToText());
}

TEST_F(Model, open_without_units_goes_on) {
    ModelFiles files = Files();
    files.units = "none.xml";
    log.Restart();
    EXPECT_TRUE(OpenModelOnTop(files));
    EXPECT_THAT(log.Lines(), Contains("Failed to initialize units list"));
    SetLogLevel(4);
    log.Restart();
    EXPECT_TRUE(OpenModelOnTop(files));
    EXPECT_THAT(log.Lines(), testing::Not(Contains("Failed to initialize units list")));
}

TEST_F(Model, units_are_read_before_classes_and_maps) {
    EXPECT_EQ("C", Value("Flowsheet.Stream.Temperature", "uom"));
    const auto it = At("Flowsheet.Stream.Temperature");
    EXPECT_GT(static_cast<CCDMClassEntry&>(*it->EntryAt(it->Depth())).Attribute().quantity, 0);
}

TEST_F(Model, root_stands_for_the_tree) {
    top.children[0]->can_notify = true;
    const auto it = Open();
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"id", "QSISimulation"},
        {"browser_name", "QSISimulation"},
        {"type", "Object(QSISimulation)"},
        {"display_name", "QSISimulation"},
        {"isleaf", "INT 0"},
        {"has_children", "INT 1"},
        {"path", "Top.appModel"}};
    for (const auto& [name, value] : rows) EXPECT_EQ(value, Read(*it, name)) << name;
    EXPECT_EQ("(NULL)", Read(*OpenPure(), "path"));
    int told = 0;
    const auto count = [](void* owner, int) { ++*static_cast<int*>(owner); };
    const auto root = EntryAt(*it);
    EXPECT_TRUE(root->Subscribe(&told, kValueChanged, count));
    top.children[0]->Notify(kValueChanged);
    EXPECT_EQ(1, told);
    EXPECT_TRUE(root->Unsubscribe(&told, kValueChanged));
    EXPECT_FALSE(EntryAt(*OpenPure())->Subscribe(&told, kValueChanged, count));
    EXPECT_FALSE(EntryAt(*OpenPure())->Unsubscribe(&told, kValueChanged));
}

TEST_F(Model, library_lives_as_long_as_any_part_of_the_tree) {
    const int before = CountOf(CountedClass::CCDMClassLibrary).alive;
    Ref<FIEntry> entry;
    {
        const auto it = At("Flowsheet.Stream.Temperature");
        entry = EntryAt(*it);
    }
    EXPECT_EQ(before + 1, CountOf(CountedClass::CCDMClassLibrary).alive);
    EXPECT_EQ("REAL 25", Read(*entry, "value"));
    EXPECT_EQ("Stream", Read(*entry, "parent"));
    entry.Reset();
    EXPECT_EQ(before, CountOf(CountedClass::CCDMClassLibrary).alive);
}

TEST_F(Model, two_thousand_opens_leave_nothing_behind) {
    folder.Write("units.xml", "<CCDMUnitFile/>");
    constexpr CountedClass kClasses[] = {
        CountedClass::CCDMClassLibrary, CountedClass::CCDMClass,    CountedClass::CCDMAttribute,
        CountedClass::CCDMEnumeration,  CountedClass::AncestorPath, CountedClass::FIReference,
        CountedClass::FIIterator,       CountedClass::CDTBase};
    std::vector<int> before;
    for (CountedClass each : kClasses) before.push_back(CountOf(each).alive);
    for (int i = 0; i < 2000; ++i) {
        const auto it = Open();
        ASSERT_TRUE(it->SeekPath(Text("Flowsheet.Stream#1.Temperature"))) << i;
        FIValue value;
        it->GetAttribute(Text("value"), value);
        ASSERT_EQ(100.0, value.AsDouble()) << i;
    }
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(before[i], CountOf(kClasses[i]).alive) << static_cast<int>(kClasses[i]);
    }
}

// ---- the class cursor ----

// Keys are the attributes' names, which elements of an array share.
TEST_F(Model, class_cursor_behaves_as_a_cursor) {
    const auto bound = Ref<FIContext>::Adopt(EntryAt(*At("Flowsheet.Stream"))->GetContext());
    const auto pure =
        Ref<FIContext>::Adopt(EntryAt(*At(OpenPure(), "Flowsheet.Stream"))->GetContext());
    const auto array = Ref<FIContext>::Adopt(EntryAt(*At("Flowsheet"))->GetContext());
    folder.Write("empty", "<QZClassLibrary><Class Name='empty'/></QZClassLibrary>");
    const auto nothing = OpenPureModel("empty", nullptr);
    CursorFamily family;
    family.new_position.reset();
    family.make_empty = [&] { return nothing->MakeCursor(kChildCursor); };
    family.name = "class cursor, bound";
    family.make = [&] { return bound->MakeCursor(kChildCursor); };
    family.keys = {"Name",   "Temperature", "Pressure", "Phase", "Own",   "Loose",
                   "Stages", "Bare",        "Label",    "Half",  "Whole", "Kind",
                   "Unit",   "Elsewhere",   "Gone",     "Odd"};
    CheckCursorFamily(family);
    family.name = "class cursor, pure";
    family.make = [&] { return pure->MakeCursor(kChildCursor); };
    family.keys.insert(family.keys.end() - 1, "NoMap");
    CheckCursorFamily(family);
    family.name = "class cursor, keys";
    family.make = [&] { return bound->MakeCursor(kKeyCursor); };
    family.keys = {"Name"};
    CheckCursorFamily(family);
    family.name = "class cursor, arrays";
    family.make = [&] { return array->MakeCursor(kChildCursor); };
    family.keys = {"Name",  "Stream", "Stream", "Unit",  "Unit",  "Unit",  "Level",
                   "Level", "Level",  "Lost",   "Faces", "Twins", "Twins", "Twins"};
    CheckCursorFamily(family);
}

TEST_F(Model, search_goes_on_from_the_present_element) {
    const auto context = Ref<FIContext>::Adopt(EntryAt(*At("Flowsheet"))->GetContext());
    const auto cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
    ASSERT_TRUE(cursor->Seek(kFromFirst, 2));
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "Stream"));
    EXPECT_EQ("Product", Read(*Child(*Ref<FIEntry>::Adopt(cursor->GetEntry()), "Name"), "value"));
    EXPECT_TRUE(cursor->SeekName(kFromPresent, "Level"));
    EXPECT_FALSE(cursor->SeekName(kFromPresent, "Name"));
    EXPECT_FALSE(cursor->SeekName(kFromFirst, nullptr));
}

TEST_F(Model, redefined_attribute_is_hidden_backward) {
    folder.Write("classes.xml", R"(<QZClassLibrary>
        <ClassAttributes Name="Base"><Attribute Name="A"/><Attribute Name="B"/></ClassAttributes>
        <Class Name="QSISimulation"><Superclass>Base</Superclass></Class>
        <ClassAttributes Name="QSISimulation"><Attribute Name="B"/><Attribute Name="C"/></ClassAttributes>
        </QZClassLibrary>)");
    const auto context = OpenPureModel("classes.xml", kTopClass, nullptr);
    EXPECT_THAT(ChildNames(*context), ElementsAre("A", "B", "B", "C"));
    std::vector<std::string> backward;
    const auto cursor = ChildrenOf(*context);
    for (bool on = cursor->Seek(kFromEnd, -1); on; on = cursor->Seek(kFromPresent, -1)) {
        backward.push_back(NameOf(*Ref<FIEntry>::Adopt(cursor->GetEntry())));
    }
    EXPECT_THAT(backward, ElementsAre("C", "B", "A"));
}

TEST_F(Model, positions_of_different_places_do_not_compare) {
    const auto one = At("Flowsheet.Stream#0");
    const auto other = At(Ref<FIIterator>::Adopt(one->Copy()), "Name");
    const auto children = [](FIIterator& it) { return ChildrenOf(*EntryAt(it)); };
    const auto tree = Open();
    const auto first = At(Ref<FIIterator>::Adopt(tree->Copy()), "Flowsheet.Stream#0");
    const auto again = At(Ref<FIIterator>::Adopt(tree->Copy()), "Flowsheet.Stream#0");
    const auto second = At(Ref<FIIterator>::Adopt(tree->Copy()), "Flowsheet.Stream#1");
    EXPECT_EQ(0, children(*first)->Compare(*children(*again)));
    EXPECT_EQ(kNotComparable, children(*first)->Compare(*children(*second)));
    EXPECT_EQ(kNotComparable, children(*first)->Compare(*children(*one))) << "another tree";
    EXPECT_EQ(0, first->Compare(*again));
    EXPECT_LT(first->Compare(*second), 0);
    EXPECT_GT(second->Compare(*first), 0);
    (void)other;
}

// ---- durable references on the neutral tree ----

TEST_F(Model, reference_finds_its_element_again) {
    top.can_notify = true;
    const auto it = At("Flowsheet.Stream#1.Temperature");
    const auto reference = Ref<FIReference>::Adopt(new FIReference(*it));
    EXPECT_EQ("REAL 100", Read(*reference, "value"));
    streams.children.insert(streams.children.begin(), streams.children[1]);
    top.Notify(kValueChanged);
    EXPECT_EQ("REAL 100", Read(*reference, "value"));
    EXPECT_EQ("Product", Read(*At("Flowsheet.Stream#0.Name"), "value"));
    std::swap(streams.children[0], streams.children[1]);
    streams.RemoveChild("Product");
    top.Notify(kValueChanged);
    EXPECT_EQ("Node invalid", Read(*reference, "value"));
    EXPECT_EQ("Node deleted", Read(*reference, "value"));
}

TEST_F(Model, reference_hears_of_changes_through_the_application) {
    feed.children[0]->can_notify = true;
    const auto it = At("Flowsheet.Stream#0.Temperature");
    const auto reference = Ref<FIReference>::Adopt(new FIReference(*it));
    int told = 0;
    const auto count = [](void* owner, int) { ++*static_cast<int*>(owner); };
    EXPECT_FALSE(EntryAt(*it)->Unsubscribe(&told, kValueChanged)) << "nobody listens yet";
    EXPECT_TRUE(reference->Subscribe(&told, kValueChanged, count));
    feed.children[0]->Notify(kValueChanged);
    EXPECT_EQ(1, told);
    EXPECT_TRUE(reference->Unsubscribe(&told, kValueChanged));
    feed.children[0]->Notify(kNodeDeleted);
    EXPECT_EQ("Node deleted", Read(*reference, "value"));
    EXPECT_FALSE(EntryAt(*At(OpenPure(), "Flowsheet"))->Subscribe(&told, kValueChanged, count));
}

TEST_F(Model, nobody_listens_after_the_tree_is_gone) {
    top.can_notify = sheet.can_notify = feed.can_notify = feed.children[0]->can_notify = true;
    {
        const auto it = At("Flowsheet.Stream#0.Temperature");
        const auto reference = Ref<FIReference>::Adopt(new FIReference(*it));
        EXPECT_EQ("REAL 25", Read(*reference, "value"));
        EXPECT_FALSE(feed.children[0]->subscriptions.empty());
    }
    for (ScriptNode* node : {&top, &sheet, &feed, feed.children[0]}) {
        EXPECT_TRUE(node->subscriptions.empty()) << node->name.ToText();
    }
}

// ---- the dictionary ----

TEST_F(Model, dictionary_tells_classes_and_enumerations) {
    const auto root = OpenDictionary(Files());
    ASSERT_TRUE(root);
    const auto it = Ref<FIIterator>::Adopt(new FIIterator(root.Get(), false));
    const auto at = [&](const char* path) { return At(Ref<FIIterator>::Adopt(it->Copy()), path); };
    EXPECT_THAT(ChildNames(*root), ElementsAre("Classes", "Enumerations"));
    EXPECT_EQ("QSINamed", Read(*at("Classes.QSIStream"), "superclasses"));
    EXPECT_EQ("", Read(*at("Classes.QSIFlowsheet"), "superclasses"));
    EXPECT_EQ("Real", Read(*at("Classes.QSIStream.Temperature"), "type"));
    EXPECT_EQ("Temperature", Read(*at("Classes.QSIStream.Temperature"), "quantity"));
    EXPECT_EQ("(NULL)", Read(*at("Classes.QSIStream.Bare"), "quantity"));
    EXPECT_EQ("QSINamed", Read(*at("Classes.QSIStream.Name"), "owner"));
    EXPECT_EQ("Object(QSIStream)", Read(*at("Classes.QSIFlowsheet.Stream"), "type"));
    EXPECT_EQ("INT 1", Read(*at("Classes.QSIFlowsheet.Stream"), "array"));
    EXPECT_EQ("Name", Read(*at("Classes.QSIFlowsheet.Stream"), "keys"));
    EXPECT_EQ("INT 0", Read(*at("Classes.QSIStream.Temperature"), "array"));
    EXPECT_EQ("Liquid\nVapor", Read(*at("Enumerations.ePhase"), "options"));
    EXPECT_EQ("INT 1", Read(*at("Enumerations.ePhase"), "closed"));
    EXPECT_EQ("INT 0", Read(*at("Enumerations.eOpen"), "closed"));
    EXPECT_THAT(ShownRows(*root), ElementsAre("id", "type"));
    EXPECT_FALSE(at("Enumerations.ePhase")->CanDescend());
    EXPECT_EQ("(NULL)", Read(*at("Classes"), "no such row"));
}

TEST_F(Model, dictionary_cursors_behave_as_cursors) {
    const auto root = OpenDictionary(Files());
    const auto enumerations = Child(*root, "Enumerations");
    const auto context = Ref<FIContext>::Adopt(enumerations->GetContext());
    const auto option = Child(*enumerations, "ePhase");
    const auto nothing = Ref<FIContext>::Adopt(option->GetContext());
    CursorFamily family;
    family.name = "dictionary";
    family.make = [&] { return context->MakeCursor(kChildCursor); };
    family.make_empty = [&] { return nothing->MakeCursor(kChildCursor); };
    family.keys = {"eOpen", "ePhase"};
    CheckCursorFamily(family);
    EXPECT_EQ(EmptyCursor(), context->MakeCursor(kKeyCursor));
    const auto source = Ref<FIAttributeSource>::Adopt(option->GetAttributeSource());
    const auto rows = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    rows->SetVarSet(nullptr);
    EXPECT_EQ(nullptr, rows->GetVarSet());
    FIValue out;
    ASSERT_TRUE(rows->SeekValue(kFromFirst, *ScriptNode("closed").Entry()));
    rows->GetValue(out);
    EXPECT_EQ("INT 1", Shown(out));
    rows->Seek(kFromEnd, 0);
    rows->GetValue(out);
    EXPECT_TRUE(out.IsNull());
    const auto other = ChildrenOf(*root);
    EXPECT_EQ(kNotComparable, other->Compare(*ChildrenOf(*context)));
}

}  // namespace

}  // namespace fixtop
