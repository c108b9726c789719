// SPDX-License-Identifier: Apache-2.0
// The neutral tree: what is listed, what entries are bound to, arrays, paths.

#include "framework/nodes/empties.h"
#include "model_fixture.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

Names Children(FIIterator& it) {
    const auto context = Ref<FIContext>::Adopt(it.EntryAt(it.Depth())->GetContext());
    return ChildNames(*context);
}

TEST_F(Model, bound_tree_lists_what_a_translator_serves) {
    const auto it = Open();
    EXPECT_THAT(Children(*it), ElementsAre("Flowsheet"));
    EXPECT_THAT(
        Children(*At("Flowsheet.Stream")),
        ElementsAre("Name", "Temperature", "Pressure", "Phase", "Own", "Loose", "Stages", "Bare",
                    "Label", "Half", "Whole", "Kind", "Unit", "Elsewhere", "Gone", "Odd"));
}

TEST_F(Model, pure_tree_lists_every_attribute_and_the_superclasses_first) {
    const auto it = OpenPure();
    EXPECT_THAT(Children(*it), ElementsAre("Flowsheet", "Unmapped"));
    EXPECT_THAT(
        Children(*At(OpenPure(), "Flowsheet.Stream")),
        ElementsAre("Name", "Temperature", "Pressure", "Phase", "Own", "Loose", "Stages", "Bare",
                    "Label", "Half", "Whole", "Kind", "Unit", "Elsewhere", "Gone", "NoMap", "Odd"));
}

TEST_F(Model, arrays_are_listed_element_by_element) {
    EXPECT_THAT(Children(*At("Flowsheet")),
                ElementsAre("Name", "Stream", "Stream", "Unit", "Unit", "Unit", "Level", "Level",
                            "Level", "Lost", "Faces", "Twins", "Twins", "Twins"));
    EXPECT_EQ("REAL 25", Value("Flowsheet.Stream.Temperature"));
    EXPECT_EQ("REAL 100", Value("Flowsheet.Stream#1.Temperature"));
    EXPECT_EQ("REAL 3.5", Value("Flowsheet.Level#2"));
    EXPECT_FALSE(At("Flowsheet")->SeekPath(Text("Stream#2")));
    EXPECT_FALSE(At("Flowsheet")->SeekPath(Text("Nothing")));
}

TEST_F(Model, elements_are_found_by_what_they_hold) {
    EXPECT_EQ("REAL 100", Value("Flowsheet.Stream[Name=Product].Temperature"));
    EXPECT_EQ("REAL 25", Value("Flowsheet.Stream[Name=Feed].Temperature"));
    EXPECT_FALSE(At("Flowsheet")->SeekPath(Text("Stream[Name=Other]")));
}

TEST_F(Model, keys_name_the_element_in_paths_that_read_back) {
    for (const char* path : {"Flowsheet.Stream.Temperature", "Flowsheet.Stream#1.Temperature",
                             "Flowsheet.Unit#2.Name", "Flowsheet.Stream#1"}) {
        const auto it = At(path);
        FIValue written;
        it->GetPathFrom(1, written);
        const auto back = At(written.ToText());
        EXPECT_EQ(0, EntryAt(*back)->Compare(*EntryAt(*it))) << written.ToText();
        EXPECT_EQ(Read(*it, "path"), Read(*back, "path")) << written.ToText();
    }
    FIValue written;
    At("Flowsheet.Stream#1.Temperature")->GetPath(written);
    EXPECT_EQ("QSISimulation.Flowsheet.Stream(Product).Temperature", written.ToText());
    EXPECT_FALSE(Open()->SeekPath(Text("Flowsheet.Stream(Other).Temperature")));
    EXPECT_EQ("Object(QSIStream)", Value("Flowsheet.Stream(type)", "type"))
        << "no key: an attribute";
}

TEST_F(Model, keys_with_marks_read_back_too) {
    product.Set("id", "Product, dry [2]");
    const auto it = At("Flowsheet.Stream#1.Pressure");
    FIValue written;
    it->GetPathFrom(1, written);
    EXPECT_EQ(R"(Flowsheet.Stream("Product, dry [2]").Pressure)", written.ToText());
    EXPECT_EQ(Read(*it, "path"), Read(*At(written.ToText()), "path"));
    EXPECT_EQ(R"(Stream[Name="Product, dry [2]"])", Value("Flowsheet.Stream#1", "display_name"));
    EXPECT_EQ(
        Read(*it, "path"),
        Value("Flowsheet." + Value("Flowsheet.Stream#1", "display_name") + ".Pressure", "path"));
}

TEST_F(Model, key_cursor_has_the_keys_of_an_element_alone) {
    const auto keys_at = [](Ref<FIIterator> it) {
        const auto context = Ref<FIContext>::Adopt(it->EntryAt(it->Depth())->GetContext());
        const auto cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kKeyCursor));
        Names names;
        for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
            names.push_back(NameOf(*Ref<FIEntry>::Adopt(cursor->GetEntry())));
        }
        return names;
    };
    EXPECT_THAT(keys_at(At("Flowsheet.Stream")), ElementsAre("Name"));
    EXPECT_THAT(keys_at(At("Flowsheet")), IsEmpty()) << "no array";
    EXPECT_THAT(keys_at(At("Flowsheet.Twins")), IsEmpty()) << "no keys";
    EXPECT_THAT(keys_at(Open()), IsEmpty());
    EXPECT_THAT(keys_at(At(OpenPure(), "Flowsheet.Stream")), IsEmpty()) << "no element";
}

TEST_F(Model, element_of_a_subclass_shows_that_class) {
    EXPECT_THAT(Children(*At("Flowsheet.Unit[Name=P-1]")), ElementsAre("Name", "Number", "Head"));
    EXPECT_THAT(Children(*At("Flowsheet.Unit[Name=U-1]")), ElementsAre("Name", "Number"));
    EXPECT_EQ("Object(QSIPump)", Value("Flowsheet.Unit#0", "type"));
    EXPECT_EQ("Object(QSIUnit)", Value("Flowsheet.Unit#2", "type"));
    EXPECT_EQ("QSIPump", Value("Flowsheet.Unit#0", "container_type"));
    EXPECT_EQ("REAL 7.5", Value("Flowsheet.Unit#0.Head"));
}

// P-1 is a QSIPump, which its function names; its parts are none.
class PumpWithParts : public Model {
 protected:
    PumpWithParts() {
        Insert("classes.xml", kTestClasses, R"(<ClassAttributes Name="QSIFaces">)",
               R"(<ClassAttributes Name="QSIPump">
                  <Attribute Name="Part" Type="Object" Multiplicity="n"><ClassName>QSINamed</ClassName></Attribute>
                  <Attribute Name="Drive" Type="Object" Multiplicity="1"><ClassName>QSIDrive</ClassName></Attribute>
                  </ClassAttributes><ClassAttributes Name="QSIDrive">
                  <Attribute Name="Gear" Type="Object" Multiplicity="n"><ClassName>QSINamed</ClassName></Attribute>
                  </ClassAttributes>)");
        Map("");
        ScriptNode& parts = sheetChild("Units").children[0]->Add("Parts");
        for (const char* name : {"A", "B"}) parts.Add(name).Set("id", name);
    }

    void Insert(const char* file, std::string text, const char* before, const std::string& added) {
        text.insert(text.find(before), added);
        folder.Write(file, text);
    }
    // With something beside the translator of "Part".
    void Map(const std::string& beside) {
        Insert("map.xml", kTestMap, R"(<Class Name="QSIFaces">)",
               R"(<Class Name="QSIPump"><Attribute Name="Part">
                  <TranslateArray Type="Map">Parts.*</TranslateArray>)" +
                   beside + R"(</Attribute>
                  <Attribute Name="Drive"><Translate Type="Dummy"/></Attribute></Class>
                  <Class Name="QSIDrive"><Attribute Name="Gear">
                  <TranslateArray Type="Map">Parts.*</TranslateArray></Attribute></Class>)");
    }
};

TEST_F(PumpWithParts, subclass_of_an_element_is_not_that_of_lists_below_it) {
    EXPECT_EQ("Object(QSIPump)", Value("Flowsheet.Unit#0", "type"));
    for (const char* list : {"Flowsheet.Unit#0.Part", "Flowsheet.Unit#0.Drive.Gear"}) {
        for (const char* element : {"", "#1"}) {
            const std::string path = std::string(list) + element;
            EXPECT_EQ("Object(QSINamed)", Value(path, "type")) << path;
            EXPECT_EQ("QSINamed", Value(path, "container_type")) << path;
            EXPECT_THAT(Children(*At(path)), ElementsAre("Name")) << path;
        }
    }
    EXPECT_EQ("B", Value("Flowsheet.Unit#0.Part#1.Name"));
}

TEST_F(PumpWithParts, list_may_set_the_subclass_of_its_own_elements) {
    Map("<SetVar Var=\"Subclass\">QSIDrive</SetVar>");
    EXPECT_EQ("Object(QSIDrive)", Value("Flowsheet.Unit#0.Part#1", "type"));
    EXPECT_EQ("Object(QSINamed)", Value("Flowsheet.Unit#0.Drive.Gear", "type"));
}

// The count of a list is a byte: of 300 units 44 are shown, of 256 none.
TEST_F(Model, cut_list_is_told_once) {
    ScriptNode& units = sheetChild("Units");
    const auto read = [&](int count) {
        for (int i = static_cast<int>(units.children.size()); i < count; ++i) {
            units.Add("U" + std::to_string(i)).Set("id", Text("U" + std::to_string(i)));
        }
        log.Restart();
        testing::internal::CaptureStderr();
        const Ref<FIIterator> it = Open();
        for (int again = 0; again < 3; ++again) {
            EXPECT_TRUE(CopyAt(*it, "Flowsheet")->DownLast());
            EXPECT_EQ(count % 256 > 43, CopyAt(*it, "Flowsheet")->SeekPath(Text("Unit#43")));
            EXPECT_FALSE(CopyAt(*it, "Flowsheet")->SeekPath(Text("Unit#255")));
        }
        return testing::internal::GetCapturedStderr();
    };
    EXPECT_EQ("", read(255));
    EXPECT_THAT(log.Lines(), IsEmpty());
    for (const auto& [count, line] :
         {std::pair(256,
                    "List Flowsheet.Unit on Top.appModel.Sheet: 256 elements, 0 of them are shown"),
          std::pair(
              300,
              "List Flowsheet.Unit on Top.appModel.Sheet: 300 elements, 44 of them are shown")}) {
        EXPECT_EQ(line + std::string("\n"), read(count));
        EXPECT_THAT(log.Lines(), ElementsAre(line));
    }
}

TEST_F(Model, failing_subclass_shows_no_children) {
    const auto it = At("Flowsheet.Unit#1");
    log.Restart();
    EXPECT_THAT(Children(*it), IsEmpty());
    EXPECT_THAT(folder.Read("lines.log"),
                testing::EndsWith(" Error, could not find subclass type QSIStranger\n\n"));
    EXPECT_EQ("Object(QSIStranger)", Read(*it, "type"));
}

TEST_F(Model, failing_class_shows_no_children) {
    const auto it = At("Flowsheet.Lost");
    log.Restart();
    EXPECT_FALSE(it->DownFirst());
    EXPECT_THAT(folder.Read("lines.log"),
                testing::EndsWith(" Error, could not find class type QSINowhere\n\n"));
}

TEST_F(Model, only_objects_have_children) {
    EXPECT_TRUE(At("Flowsheet")->CanDescend());
    const auto leaf = At("Flowsheet.Stream.Temperature");
    EXPECT_FALSE(leaf->CanDescend());
    EXPECT_FALSE(leaf->DownFirst());
    const auto context = Ref<FIContext>::Adopt(EntryAt(*leaf)->GetContext());
    EXPECT_EQ(EmptyContext(), context.Get());
}

TEST_F(Model, variables_of_an_element_are_its_own) {
    const auto sheet_it = At("Flowsheet");
    const auto cursor = ChildrenOf(*EntryAt(*sheet_it));
    ASSERT_TRUE(cursor->SeekName(kFromFirst, "Unit"));
    const auto first = Ref<FIEntry>::Adopt(cursor->GetEntry());
    ASSERT_TRUE(cursor->Seek(kFromPresent, 2));
    const auto third = Ref<FIEntry>::Adopt(cursor->GetEntry());
    EXPECT_EQ("INT 1", Read(*Child(*first, "Number"), "value"));
    EXPECT_EQ("INT 3", Read(*Child(*third, "Number"), "value"));
}

TEST_F(Model, set_variables_are_seen_by_the_attribute) {
    EXPECT_EQ("red", Value("Flowsheet.Stream.Odd"));
    EXPECT_THAT(Value("Flowsheet.Stream.Odd", "dumpvars"),
                testing::HasSubstr("Colour\t\tSTRING\t\"red\""));
    EXPECT_EQ("None", Value("Flowsheet.Stream.Odd", "type"));
}

TEST_F(Model, twins_are_walked_in_step) {
    EXPECT_EQ("C0", Value("Flowsheet.Twins#0", "value"));
    EXPECT_EQ("S0", Value("Flowsheet.Twins#0", "spec_value"));
    EXPECT_EQ("C1", Value("Flowsheet.Twins#1", "value"));
    EXPECT_EQ("S1", Value("Flowsheet.Twins#1", "spec_value"));
    EXPECT_EQ("C2", Value("Flowsheet.Twins#2", "value"));
    EXPECT_EQ("(NULL)", Value("Flowsheet.Twins#2", "spec_value")) << "the shorter face has ended";
}

TEST_F(Model, twins_keep_step_backward) {
    const auto cursor = ChildrenOf(*EntryAt(*At("Flowsheet")));
    ASSERT_TRUE(cursor->Seek(kFromEnd, -1));
    const auto pair_at = [&] {
        const auto entry = Ref<FIEntry>::Adopt(cursor->GetEntry());
        return Read(*entry, "value") + "/" + Read(*entry, "spec_value");
    };
    EXPECT_EQ("C2/(NULL)", pair_at());
    ASSERT_TRUE(cursor->Seek(kFromPresent, -1));
    EXPECT_EQ("C1/S1", pair_at());
    const auto clone = Ref<FICursorBase>::Adopt(cursor->Clone(true));
    ASSERT_TRUE(cursor->Seek(kFromPresent, -1));
    EXPECT_EQ("C0/S0", pair_at());
    EXPECT_EQ("C1", Read(*Ref<FIEntry>::Adopt(clone->GetEntry()), "value"));
}

TEST_F(Model, attribute_of_one_face_has_one_reference) {
    struct Case {
        const char* path;
        BranchRequest primary, secondary;
        bool has_primary, has_secondary;
    };
    using enum BranchRequest;
    for (const Case& each : {Case{"Flowsheet.Faces.Both", kAny, kNone, true, false},
                             Case{"Flowsheet.Faces.Split", kCalc, kSpec, true, true},
                             Case{"Flowsheet.Faces.Turned", kSpec, kCalc, true, true},
                             Case{"Flowsheet.Faces.OnlySpec", kCalc, kSpec, false, true},
                             Case{"Flowsheet.Faces.OnlyCalc", kSpec, kCalc, false, true},
                             Case{"Flowsheet.Stream.Gone", kAny, kNone, false, false}}) {
        const auto it = At(each.path);
        const AppFaces& faces_at = static_cast<CCDMClassEntry&>(*it->EntryAt(it->Depth())).Faces();
        EXPECT_EQ(each.primary, faces_at.primary.request) << each.path;
        EXPECT_EQ(each.secondary, faces_at.secondary.request) << each.path;
        EXPECT_EQ(each.has_primary, faces_at.primary.Node() != nullptr) << each.path;
        EXPECT_EQ(each.has_secondary, faces_at.secondary.Node() != nullptr) << each.path;
    }
}

TEST_F(Model, translators_of_two_faces_are_no_duplicates) {
    log.Restart();
    for (const char* path : {"Flowsheet.Faces.Split", "Flowsheet.Faces.Turned"}) {
        EXPECT_NE("(NULL)", Value(path)) << path;
    }
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(Model, mirror_requests) {
    using enum BranchRequest;
    EXPECT_EQ(kSpec, MirrorRequest(kCalc));
    EXPECT_EQ(kSpec, MirrorRequest(kCalcOnly));
    EXPECT_EQ(kCalc, MirrorRequest(kSpec));
    EXPECT_EQ(kCalc, MirrorRequest(kSpecOnly));
    for (BranchRequest other : {kUnspecified, kBoth, kAny, kNone}) {
        EXPECT_EQ(kNone, MirrorRequest(other));
    }
}

TEST_F(Model, both_faces_lead_to_both_faces_below) {
    for (const char* path :
         {"Flowsheet.Faces.Below.Amount", "Flowsheet.Faces.TurnedBelow.Amount"}) {
        EXPECT_EQ("REAL 5", Value(path)) << path;
        EXPECT_EQ("REAL 6", Value(path, "spec_value")) << path;
        EXPECT_EQ("kPa", Value(path, "spec_uom")) << path;
    }
    EXPECT_EQ("(NULL)", Value("Flowsheet.Faces.SpecBelow.Amount"));
    EXPECT_EQ("REAL 6", Value("Flowsheet.Faces.SpecBelow.Amount", "spec_value"));
}

TEST_F(Model, second_node_is_kept_where_the_map_says_nothing_of_it) {
    const auto it = At("Flowsheet.Faces.Below.CalcAmount");
    const AppFaces& faces_at = static_cast<CCDMClassEntry&>(*it->EntryAt(it->Depth())).Faces();
    FIValue path;
    faces_at.secondary.Node()->GetPath(path);
    EXPECT_EQ("Top.appModel.Sheet.Faces.SpecSide", path.ToText());
    faces_at.primary.Node()->GetPath(path);
    EXPECT_EQ("Top.appModel.Sheet.Faces.CalcSide.Amount", path.ToText());
}

TEST_F(Model, branch_of_the_library_asks_for_one_face_first) {
    struct Case {
        const char* branch;
        BranchRequest primary, secondary;
    };
    using enum BranchRequest;
    for (const Case& each : {Case{"Calc", kCalc, kSpec}, Case{"Spec", kSpec, kCalc}}) {
        folder.Write("map.xml",
                     std::string(kTestMap).replace(
                         std::string(kTestMap).find("<Class Name=\"QSISimulation\">"), 0,
                         std::string("<DefaultBranch>") + each.branch + "</DefaultBranch>"));
        const auto context = OpenModelOnTop(Files());
        ASSERT_TRUE(context);
        EXPECT_EQ(each.primary, context->Place().branch);
        const auto entry = Child(*context, "Flowsheet");
        ASSERT_TRUE(entry) << each.branch;
        const AppFaces& faces_at = static_cast<CCDMClassEntry&>(*entry).Faces();
        EXPECT_EQ(each.primary, faces_at.primary.request);
        EXPECT_EQ(each.secondary, faces_at.secondary.request);
    }
}

TEST_F(Model, asked_face_stays_the_first_on_every_level) {
    for (const char* branch : {"Calc", "Spec"}) {
        std::string map = kTestMap;
        map.insert(map.find("<Class Name=\"QSISimulation\">"),
                   std::string("<DefaultBranch>") + branch + "</DefaultBranch>");
        folder.Write("map.xml", map);
        for (const char* path : {"Flowsheet", "Flowsheet.Stream", "Flowsheet.Stream.Pressure",
                                 "Flowsheet.Faces.Both"}) {
            const auto it = At(path);
            const AppFaces& at = static_cast<CCDMClassEntry&>(*it->EntryAt(it->Depth())).Faces();
            EXPECT_TRUE(at.primary.Node()) << branch << " " << path;
            EXPECT_FALSE(at.secondary.Node()) << branch << " " << path;
        }
    }
}

TEST_F(Model, ancestor_paths_count_from_the_top) {
    const auto it = At("Flowsheet.Unit#0.Head");
    const AncestorPath& path = static_cast<CCDMClassEntry&>(*it->EntryAt(it->Depth())).Path();
    EXPECT_EQ(3, path.depth);
    EXPECT_EQ("", path.className);
    EXPECT_EQ("Head", path.id);
    EXPECT_EQ("QSIPump", path.Level(1)->className) << "the element's class";
    EXPECT_EQ("Unit", path.Level(1)->id);
    EXPECT_EQ(0, path.Level(1)->index);
    EXPECT_EQ("QSIFlowsheet", path.Level(2)->className);
    EXPECT_EQ(-1, path.Level(2)->index);
    EXPECT_EQ(nullptr, path.Level(3));
}

TEST_F(Model, missing_node_reads_null) {
    const auto it = At("Flowsheet.Stream.Gone");
    for (const char* name : {"value", "spec_value", "status", "uom"}) {
        EXPECT_EQ("(NULL)", Read(*it, name)) << name;
    }
    EXPECT_EQ("Real", Read(*it, "type"));
    EXPECT_EQ("Not Supported for pure CCDM class", Set(*it, "value", FIValue::OfReal(1)));
    feed.RemoveChild("Phase");
    EXPECT_EQ("(NULL)", Value("Flowsheet.Stream.Phase"));
    EXPECT_EQ("Enumeration(ePhase)", Value("Flowsheet.Stream.Phase", "type"));
    EXPECT_EQ("ePhase", Read(*At(OpenPure(), "Flowsheet.Stream.Phase"), "value"))
        << "of a tree without application the class";
}

TEST_F(Model, missing_object_has_nothing_below_it) {
    sheet.RemoveChild("Faces");
    const auto it = At("Flowsheet.Faces");
    EXPECT_EQ("(NULL)", Read(*it, "value"));
    EXPECT_EQ("(NULL)", Read(*it, "spec_value"));
    EXPECT_EQ("Object(QSIFaces)", Read(*it, "type"));
    EXPECT_EQ("QSIFaces", Read(*it, "container_type"));
    EXPECT_EQ("INT 1", Read(*it, "isleaf"));
    EXPECT_EQ("INT 0", Read(*it, "has_children"));
    EXPECT_FALSE(it->CanDescend());
    EXPECT_FALSE(it->DownFirst());
    EXPECT_FALSE(it->SeekChild("Both"));
    const auto context = Ref<FIContext>::Adopt(EntryAt(*it)->GetContext());
    EXPECT_EQ(EmptyContext(), context.Get());
}

// The application counts the elements where it has none of what would name them.
TEST_F(Model, list_without_a_single_key_is_hidden) {
    std::string map = kTestMap;
    const std::string named = R"(<Class Name="QSINamed">
    <Attribute Name="Name"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">(id)</Attribute></NodeAttributes></Translate></Attribute>)";
    map.replace(map.find(named), named.size(), R"(<Class Name="QSINamed">
    <Attribute Name="Name"><Translate Type="Map">Tag</Translate></Attribute>)");
    folder.Write("map.xml", map);
    sheetChild("Units").RemoveChild("X-1");
    EXPECT_THAT(Children(*At("Flowsheet")), ElementsAre("Name", "Level", "Level", "Level", "Lost",
                                                        "Faces", "Twins", "Twins", "Twins"));
    for (const char* path : {"Stream", "Stream#1", "Unit", "Unit[Name]"}) {
        EXPECT_FALSE(At("Flowsheet")->SeekPath(Text(path))) << path;
    }
    const auto back = ChildrenOf(*EntryAt(*At("Flowsheet")));
    ASSERT_TRUE(back->Seek(kFromEnd, -9));
    FIValue key;
    back->GetKey(key);
    EXPECT_EQ("Name", key.ToText()) << "backward too";
    product.Add("Tag").Set("value", "made");
    EXPECT_THAT(Children(*At("Flowsheet")),
                ElementsAre("Name", "Stream", "Stream", "Level", "Level", "Level", "Lost", "Faces",
                            "Twins", "Twins", "Twins"));
    EXPECT_EQ("(NULL)", Value("Flowsheet.Stream#0.Name"));
    EXPECT_EQ("made", Value("Flowsheet.Stream#1.Name"));
}

TEST_F(Model, repeating_class_of_a_pure_tree_is_entered_once) {
    folder.Write("classes.xml", R"(<L><ClassAttributes Name="QSISimulation">
        <Attribute Name="Again" Type="Object" Multiplicity="1"><ClassName>QSISimulation</ClassName></Attribute>
        </ClassAttributes></L>)");
    folder.Write("classes.xml",
                 std::string(R"(<QZClassLibrary><ClassAttributes Name="QSISimulation">
        <Attribute Name="Again" Type="Object" Multiplicity="1"><ClassName>QSISimulation</ClassName></Attribute>
        </ClassAttributes></QZClassLibrary>)"));
    const auto it = OpenPure();
    EXPECT_TRUE(it->DownFirst());
    EXPECT_TRUE(it->DownFirst());
    EXPECT_FALSE(it->DownFirst());
    EXPECT_FALSE(it->CanDescend());
}

TEST_F(Model, host_paths_are_split_by_the_application) {
    sheet.key_value = [](const char* path, FIValue& out, const char** rest) {
        const std::string text = path;
        const std::size_t slash = text.find('/');
        out = Text(text.substr(0, slash));
        *rest = path + (slash == std::string::npos ? text.size() : slash + 1);
    };
    const auto context = Ref<FIContext>::Adopt(EntryAt(*At("Flowsheet"))->GetContext());
    EXPECT_EQ("Stream|Temperature", KeyAndRest(*context, "Stream/Temperature"));
    EXPECT_EQ("Stream|", KeyAndRest(*context, "!Input/Stream"));
    EXPECT_EQ("Stream|x", KeyAndRest(*context, "!Output/!Input/Stream/x"));
    EXPECT_EQ("(NULL)|!Input", KeyAndRest(*context, "!Input"));
    sheet.key_value = nullptr;
    EXPECT_EQ("(NULL)|Stream/x", KeyAndRest(*context, "Stream/x"));
    const auto pure = OpenPureModel("classes.xml", kTopClass, nullptr);
    EXPECT_EQ("(NULL)|Stream/x", KeyAndRest(*pure, "Stream/x"));
}

TEST_F(Model, host_paths_are_asked_of_the_second_node_too) {
    for (ScriptNode* child : faces.children) {
        if (child->name.ToText() != "SpecSide") continue;
        child->key_value = [](const char* path, FIValue& out, const char** rest) {
            out = Text("Amount");
            *rest = path + 3;
        };
    }
    const auto context = Ref<FIContext>::Adopt(EntryAt(*At("Flowsheet.Faces.Below"))->GetContext());
    EXPECT_EQ("Amount|def", KeyAndRest(*context, "abcdef"));
}

}  // namespace

}  // namespace fixtop
