// SPDX-License-Identifier: Apache-2.0
// The neutral view of the built-in case through the module's exports, with the files that it ships.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "open_module.h"
#include "support/temporary_folder.h"

namespace fixtop {

namespace {

using Iterator = Ref<FIIteratorBase>;

std::string Shown(const FIValue& value) {
    return value.IsNull() ? "(NULL)" : value.ToText();
}

std::string Read(FIIteratorBase& it, const char* name) {
    FIValue value;
    it.GetAttribute(FIValue(name), value);
    return Shown(value);
}

std::string PathOf(FIIteratorBase& it) {
    FIValue path;
    it.GetPath(path);
    return path.ToText();
}

// How deep the node of the application stands on which a view is.
int DepthOfApplication(const Ref<FIEntry>& root) {
    const auto it = Iterator::Adopt(FixtopMakeIterator(root.Get(), false));
    const auto node = Iterator::Adopt(FixtopApplicationNode(it.Get(), 1));
    return node ? node->Depth() : -2;
}

class NeutralCase : public NeutralModule {
 protected:
    void SetUp() override {
        NeutralModule::SetUp();
        OpenNeutral("demo");
    }

    static Iterator At(const Ref<FIEntry>& root, const std::string& path) {
        auto it = Iterator::Adopt(FixtopMakeIterator(root.Get(), false));
        EXPECT_TRUE(it->SeekPath(FIValue(path.c_str()))) << path;
        return it;
    }
    Iterator At(const std::string& path) { return At(root_, path); }
    Iterator Raw(const std::string& path) { return At(top_, path); }
};

TEST_F(NeutralCase, every_stream_of_the_case_is_a_stream_of_the_view) {
    std::vector<std::string> expected;
    Iterator it = Raw("appModel.FlowSheetObjects.Streams");
    for (bool on = it->DownFirst(); on; on = it->Next()) {
        if (Read(*it, "type") == "MaterialStreamObject") expected.push_back(Read(*it, "id"));
    }
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(expected, NamesIn("Stream"));
}

TEST_F(NeutralCase, values_are_the_ones_of_the_raw_tree) {
    int compared = 0;
    for (const std::string& name : NamesIn("Stream")) {
        const std::string stream = "Flowsheet.Stream[Name=\"" + name + "\"].";
        const std::string raw = "appModel.FlowSheetObjects.Streams.\"" + name + "\".";
        const std::pair<const char*, const char*> pairs[] = {{"Temperature", "Temperature"},
                                                             {"Pressure", "Pressure"},
                                                             {"MolarFlow", "\"Molar Flow\""}};
        for (const auto& [neutral, application] : pairs) {
            const Iterator one = At(stream + neutral);
            const Iterator other = Raw(raw + application);
            EXPECT_EQ(Read(*other, "value"), Read(*one, "value")) << stream << neutral;
            EXPECT_EQ(PathOf(*other), Read(*one, "path")) << stream << neutral;
            ++compared;
        }
    }
    EXPECT_GE(compared, 9);
}

TEST_F(NeutralCase, application_node_and_converters_explain_a_value) {
    const std::string first = NamesIn("Stream").front();
    const Iterator it = At("Flowsheet.Stream.Temperature");
    const auto node = Iterator::Adopt(FixtopApplicationNode(it.Get(), 1));
    ASSERT_TRUE(node);
    EXPECT_EQ("Top.appModel.FlowSheetObjects.Streams.", PathOf(*node).substr(0, 38));
    EXPECT_EQ(Read(*it, "value"), Read(*node, "value"));
    const std::string why = Read(*it, "converters");
    EXPECT_NE(std::string::npos, why.find("<Translate Type=\"Map\">Temperature</Translate>"))
        << why;
    EXPECT_EQ(nullptr, FixtopApplicationNode(it.Get(), 3));
    EXPECT_EQ(nullptr, FixtopApplicationNode(nullptr, 1));
    EXPECT_EQ(nullptr, FixtopApplicationNode(Raw("appModel").Get(), 1));
    const auto at_root = Iterator::Adopt(FixtopMakeIterator(root_.Get(), false));
    const auto model = Iterator::Adopt(FixtopApplicationNode(at_root.Get(), 1));
    ASSERT_TRUE(model);
    EXPECT_EQ("Top.appModel", PathOf(*model));
    EXPECT_EQ(nullptr, FixtopApplicationNode(at_root.Get(), 2));
}

// Raw Gas has vapour and liquid, but nothing solid.
TEST_F(NeutralCase, components_of_an_absent_phase_are_counted_but_not_shown) {
    const Iterator stream = Raw("appModel.FlowSheetObjects.Streams.\"Raw Gas\"");
    stream->SetVarText("PhaseName", "Solid Phase");
    EXPECT_EQ(8, CTPhaseComponentArray(stream.Get(), nullptr, -1));
    const auto components = [&](const char* phase) {
        const Iterator it = At(std::string("Flowsheet.Stream(Raw Gas).") + phase + ".Composition");
        int count = 0;
        for (bool on = it->SeekChild("Component"); on; on = it->Next()) ++count;
        return count;
    };
    EXPECT_EQ(8, components("Overall.Vapor"));
    EXPECT_EQ(0, components("Solid"));
    EXPECT_EQ("(NULL)", Read(*At("Flowsheet.Stream(Raw Gas).Solid.MolarFlow"), "value"));
}

// What is told of an attribute by an iterator of its own.
class AttributesOfNodes : public NeutralCase {
 protected:
    static std::string Told(FIIteratorBase& it) {
        return Read(it, "value") + ' ' + Read(it, "uom") + ' ' + Read(it, "path");
    }
    // Of the children of each object of the flowsheet, each under its first node of that name.
    void ForEachNode(const std::function<void(FIIteratorBase& node, const Names& names,
                                              const Names& told)>& compare) {
        int compared = 0;
        const Iterator it = At("Flowsheet");
        for (bool on = it->DownFirst(); on; on = it->Next()) {
            Names names;
            Names told;
            const Iterator walk = Iterator::Adopt(it->Copy());
            for (bool below = walk->DownFirst(); below; below = walk->Next()) {
                char name[100];
                walk->NameText(name, sizeof name);
                if (names.empty() || names.back() != name) names.push_back(name);
            }
            const std::string path = PathOf(*it).substr(std::string("QSISimulation.").size());
            for (const std::string& name : names) {
                const Iterator fresh = At(path);
                EXPECT_TRUE(fresh->SeekChild(name.c_str())) << path << ' ' << name;
                told.push_back(Told(*fresh));
            }
            compare(*it, names, told);
            compared += static_cast<int>(names.size());
        }
        EXPECT_GE(compared, 100);
    }
};

TEST_F(AttributesOfNodes, are_the_same_in_any_order) {
    ForEachNode([](FIIteratorBase& node, const Names& names, const Names& told) {
        for (const std::size_t step : {1, 2, 3, 5, 7}) {
            for (std::size_t i = 0, at = 0; i < names.size(); ++i, at += step) {
                at %= names.size();
                ASSERT_TRUE(node.SeekChild(names[at].c_str()));
                EXPECT_EQ(Told(node), told[at]) << PathOf(node) << ", each " << step;
                node.Up();
            }
        }
    });
}

TEST_F(AttributesOfNodes, stay_where_they_are_when_others_are_read) {
    ForEachNode([](FIIteratorBase& node, const Names& names, const Names& told) {
        std::vector<Iterator> kept;
        for (const std::string& name : names) {
            ASSERT_TRUE(node.SeekChild(name.c_str()));
            kept.push_back(Iterator::Adopt(node.Copy()));
            node.Up();
        }
        for (std::size_t i = 0; i < names.size(); ++i) EXPECT_EQ(Told(*kept[i]), told[i]);
    });
}

TEST_F(AttributesOfNodes, keep_their_units_to_themselves) {
    int stored = 0;
    ForEachNode([&](FIIteratorBase& node, const Names& names, const Names& told) {
        for (std::size_t i = 0; i + 1 < names.size(); ++i) {
            FIValue out;
            ASSERT_TRUE(node.SeekChild(names[i].c_str()));
            node.SetUnit(FIValue("F"), out);
            stored += out.IsNull();
            node.Up();
            ASSERT_TRUE(node.SeekChild(names[i + 1].c_str()));
            EXPECT_EQ(Told(node), told[i + 1]) << PathOf(node) << " behind " << names[i];
            node.Up();
        }
    });
    EXPECT_GT(stored, 0);
}

TEST_F(NeutralCase, display_unit_converts_the_value) {
    const Iterator it = At("Flowsheet.Stream.Temperature");
    ASSERT_EQ("C", Read(*it, "uom"));
    FIValue celsius;
    it->GetAttribute(FIValue("value"), celsius);
    FIValue out;
    it->SetDisplayUnit(FIValue("K"), FIValue(), out);
    EXPECT_EQ("(NULL)", Shown(out));
    FIValue kelvin;
    it->GetAttribute(FIValue("value"), kelvin);
    EXPECT_NEAR(celsius.AsDouble() + 273.15, kelvin.AsDouble(), 1e-9);
}

TEST_F(NeutralCase, paths_read_back) {
    int leaves = 0;
    for (const std::string& name : NamesIn("Stream")) {
        Iterator it = At("Flowsheet.Stream[Name=\"" + name + "\"]");
        for (bool on = it->DownFirst(); on; on = it->Next()) {
            const std::string path = PathOf(*it).substr(std::string("QSISimulation.").size());
            const Iterator back = At(path);
            EXPECT_EQ(path, PathOf(*back).substr(std::string("QSISimulation.").size()));
            EXPECT_EQ(Read(*it, "path"), Read(*back, "path")) << path;
            ++leaves;
        }
    }
    EXPECT_GT(leaves, 20);
}

TEST_F(NeutralCase, reference_survives_a_store_that_solves) {
    const auto reference =
        Ref<FIReferenceBase>::Adopt(At("Flowsheet.Stream.Temperature")->MakeReference());
    const auto raw =
        Iterator::Adopt(FixtopApplicationNode(At("Flowsheet.Stream.Temperature").Get(), 1));
    FIValue before;
    reference->GetAttribute(FIValue("value"), before);
    FIValue out;
    raw->SetAttribute(FIValue("value"), FIValue::OfReal(before.AsDouble() + 1), 0, out);
    FIValue after;
    reference->GetAttribute(FIValue("value"), after);
    EXPECT_EQ(Read(*raw, "value"), Shown(after));
}

TEST_F(NeutralCase, map_without_a_given_top_asks_its_own_function) {
    const auto root = Ref<FIEntry>::Adopt(FixtopOpenModel(nullptr, nullptr));
    ASSERT_TRUE(root);
    EXPECT_EQ(Read(*At("Flowsheet.Stream.Temperature"), "value"),
              Read(*At(root, "Flowsheet.Stream.Temperature"), "value"));
}

// What each function of the module is made for is known, whatever a map takes it for.
TEST_F(NeutralCase, map_calls_functions_of_the_module_in_their_own_form_only) {
    // A model that does not open has no depth. One whose root function is none stays on the top.
    constexpr int kClosed = -1;
    struct Row {
        const char* top;
        const char* root;
        int depth;
    };
    const Row rows[] = {
        {"GetTopHovexEntry", "Find1", 1},        {"GetTopFIEntryV", "Find1", 1},
        {"GetTopHovexEntry", "CTStreams", 0},    {"GetTopHovexEntry", "GetTopHovexEntry", 0},
        {"GetTopHovexEntry", "printECounts", 0}, {"Find1", "Find1", kClosed},
        {"CTStreams", "Find1", kClosed},         {"GetCombinedEntry", "Find1", kClosed}};
    const TemporaryFolder folder;
    const FixtopModelFiles files = {nullptr, "own_map.xml", nullptr, nullptr};
    for (const Row& row : rows) {
        folder.Write(
            "own_map.xml",
            std::string("<CCDMMapFile><TranslateName>Hovex</TranslateName>"
                        "<Linkage><DLL>fixtop.dll</DLL></Linkage><TopNode FunctionName='") +
                row.top + "'/><Translate Type='Function'>" + row.root +
                "</Translate></CCDMMapFile>");
        const auto root = Ref<FIEntry>::Adopt(FixtopOpenModel(nullptr, &files));
        EXPECT_EQ(row.depth, root ? DepthOfApplication(root) : kClosed)
            << row.top << " " << row.root;
    }
}

TEST_F(NeutralCase, one_object_is_shown_as_a_class) {
    const std::string name = NamesIn("Stream").front();
    const Iterator raw = Raw("appModel.FlowSheetObjects.Streams.\"" + name + "\"");
    const auto root =
        Ref<FIEntry>::Adopt(FixtopOpenModelOnNode(raw.Get(), "QSIMaterialStream", nullptr));
    ASSERT_TRUE(root);
    EXPECT_EQ(Read(*At("Flowsheet.Stream.Temperature"), "value"),
              Read(*At(root, "Temperature"), "value"));
    EXPECT_EQ(nullptr, FixtopOpenModelOnNode(raw.Get(), nullptr, nullptr));
    EXPECT_EQ(nullptr, FixtopOpenModelOnNode(nullptr, "QSIMaterialStream", nullptr));
}

TEST_F(NeutralCase, definitions_open_without_a_case) {
    const auto pure = Ref<FIEntry>::Adopt(FixtopOpenPureModel(nullptr, "QSIMaterialStream"));
    ASSERT_TRUE(pure);
    EXPECT_EQ("Real", Read(*At(pure, "Temperature"), "type"));
    const auto simulation = Ref<FIEntry>::Adopt(FixtopOpenPureModel(nullptr, nullptr));
    EXPECT_EQ("Object(QSIMaterialStream)", Read(*At(simulation, "Flowsheet.Stream"), "type"));
    const auto dictionary = Ref<FIEntry>::Adopt(FixtopOpenDictionary(nullptr));
    ASSERT_TRUE(dictionary);
    const Iterator temperature = At(dictionary, "Classes.QSIMaterialStream.Temperature");
    EXPECT_EQ("Temperature", Read(*temperature, "quantity"));
    EXPECT_EQ("QSIMaterialFlow", Read(*temperature, "owner"));
    const FixtopModelFiles none = {"no such file.xml", "no such map.xml", "", "Other"};
    EXPECT_EQ(nullptr, FixtopOpenModel(top_.Get(), &none));
}

// ---- for those who write class and map files

TEST_F(NeutralCase, why_an_attribute_has_no_value_is_told_of_objects_of_the_view) {
    const Iterator stream = At("Flowsheet.Stream(Raw Gas)");
    FIValue reason("before");
    EXPECT_EQ(kFixtopHasValue, FixtopWhyMissing(stream.Get(), "Temperature", reason));
    EXPECT_TRUE(reason.IsNull());
    EXPECT_EQ(kFixtopHasValue, FixtopWhyMissing(stream.Get(), "Composition", reason));
    EXPECT_EQ(kFixtopUnmapped, FixtopWhyMissing(stream.Get(), "Nix", reason));
    const Iterator top = Iterator::Adopt(FixtopMakeIterator(root_.Get(), false));
    EXPECT_EQ(kFixtopHasValue, FixtopWhyMissing(top.Get(), "Flowsheet", reason));
    EXPECT_EQ(kFixtopHasValue, FixtopWhyMissing(At("Flowsheet").Get(), "Stream", reason));
    for (const Iterator& other :
         {At("Flowsheet.Stream.Temperature"), Raw("appModel"), Iterator()}) {
        EXPECT_EQ(kFixtopNotNeutral, FixtopWhyMissing(other.Get(), "Temperature", reason));
    }
    EXPECT_EQ(kFixtopNotNeutral, FixtopWhyMissing(stream.Get(), nullptr, reason));
}

TEST_F(NeutralCase, nodes_of_one_object_have_its_number_in_both_views) {
    const auto number = FixtopObjectNumber(At("Flowsheet.Stream(Raw Gas)").Get());
    EXPECT_NE(0u, number);
    EXPECT_EQ(number,
              FixtopObjectNumber(Raw("appModel.FlowSheetObjects.Streams.\"Raw Gas\"").Get()));
    EXPECT_EQ(number, FixtopObjectNumber(At("Flowsheet.Stream(Raw Gas).Overall").Get()));
    EXPECT_NE(number, FixtopObjectNumber(At("Flowsheet.Stream(Tail Gas)").Get()));
    EXPECT_EQ(0u, FixtopObjectNumber(nullptr));
}

TEST(CheckedFiles, are_visited_until_the_visitor_has_enough) {
    TemporaryFolder folder;
    folder.Write("c.xml", "<QZClassLibrary><Class Name='A'/>\n<Clas/>\n<Nix/></QZClassLibrary>");
    FixtopSetLog("", nullptr, nullptr);
    struct Told {
        std::vector<std::string> lines;
        std::size_t most;
    };
    const auto visit = [](void* owner, const FixtopFinding* finding) {
        auto& told = *static_cast<Told*>(owner);
        EXPECT_EQ(FixtopFinding::kMistake, finding->kind);
        told.lines.push_back(std::string(finding->file) + ":" + std::to_string(finding->line));
        return told.lines.size() < told.most;
    };
    FixtopModelFiles files{"c.xml", "no_map.xml", nullptr, nullptr};
    Told all{{}, 9};
    EXPECT_EQ(3, FixtopCheckModel(&files, visit, &all));
    EXPECT_EQ((std::vector<std::string>{"c.xml:2", "c.xml:3", "no_map.xml:0"}), all.lines);
    Told first{{}, 1};
    EXPECT_EQ(1, FixtopCheckModel(&files, visit, &first));
    EXPECT_EQ(0, FixtopCheckModel(&files, nullptr, nullptr));
    FixtopSetLog(nullptr, nullptr, nullptr);
}

}  // namespace

}  // namespace fixtop
