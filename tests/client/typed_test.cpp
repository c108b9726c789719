// SPDX-License-Identifier: Apache-2.0
// Objects of the neutral view by the members of their class, on the built-in case and on recorded
// ones.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "fixtop/client.h"

namespace fixtop::client {

namespace {

namespace fs = std::filesystem;
using Kind = NeutralMember::Kind;

class ClientTyped : public ::testing::Test {
 protected:
    TypedObject At(const std::string& path) const { return TypedObject(plant.Neutral().At(path)); }

    Case plant = Case::Open(Case::kDemo);
};

TEST_F(ClientTyped, object_has_the_members_of_its_class) {
    const TypedObject stream = At("Flowsheet.Stream(Raw Gas)");
    EXPECT_EQ("QSIMaterialStream", stream.Class().name);
    EXPECT_EQ("IQSIMaterialStream", stream.Class().interface_name);
    EXPECT_TRUE(stream.IsA("QSIMaterialStream"));
    EXPECT_TRUE(stream.IsA("QSIMaterialFlow"));
    EXPECT_TRUE(stream.IsA("QSIPropertyContainer"));
    EXPECT_FALSE(stream.IsA("QSIPhaseFlow"));
    // 2 of QSIPropertyContainer, 21 of QSIMaterialFlow, 16 of its own.
    EXPECT_EQ(39, stream.Class().Count());
    EXPECT_EQ(23, stream.Class().first_number);
    const std::vector<NeutralMember> all = stream.Class().AllMembers();
    ASSERT_EQ(39u, all.size());
    for (int number = 0; number < 39; ++number) {
        const NeutralMember& member = all[static_cast<std::size_t>(number)];
        EXPECT_EQ(number, member.number);
        EXPECT_EQ(member.name, stream.Class().Find(number)->name);
        EXPECT_EQ(number, stream.Class().Member(member.name).number);
    }
    EXPECT_EQ(nullptr, stream.Class().Find(39));
    EXPECT_EQ(nullptr, stream.Class().Find(-1));
    EXPECT_EQ(nullptr, stream.Class().Find("temperature"));
}

TEST_F(ClientTyped, member_tells_its_type) {
    const NeutralClass& stream = At("Flowsheet.Stream(Raw Gas)").Class();
    const NeutralMember& temperature = stream.Member("Temperature");
    EXPECT_EQ(Kind::kValue, temperature.kind);
    EXPECT_EQ("Real", TypeText(temperature));
    EXPECT_EQ("Temperature", temperature.quantity);
    EXPECT_EQ("QSIMaterialFlow", temperature.owner);
    EXPECT_EQ("Object(QSIMixedEquilibriumPhase)", TypeText(stream.Member("Overall")));
    EXPECT_EQ("Enumeration(eUnitOperationStatus)", TypeText(stream.Member("StreamStatus")));
    EXPECT_EQ("", stream.Member("Name").quantity);
}

TEST_F(ClientTyped, kind_of_the_answer_is_that_of_the_member) {
    const TypedObject flowsheet = At("Flowsheet");
    const auto name = flowsheet.Member("Name");
    EXPECT_EQ(plant.Neutral().At("Flowsheet.Name").Text(), std::get<ValueNode>(name).Text());
    const auto streams = flowsheet.Member("Stream");
    EXPECT_EQ(35, std::get<TypedArray>(streams).Count());
    EXPECT_EQ("QSIMaterialStream", std::get<TypedArray>(streams).Class().name);
    const auto whole = At("").Member("Flowsheet");
    EXPECT_EQ("QSIFlowsheet", std::get<TypedObject>(whole).Class().name);
    EXPECT_THROW(flowsheet.ValueOf("Stream"), WrongType);
    EXPECT_THROW(flowsheet.ObjectOf("Stream"), WrongType);
    try {
        flowsheet.ArrayOf("Name");
        FAIL() << "a list";
    } catch (const WrongType& wrong) {
        EXPECT_STREQ("QSIFlowsheet.Name is a value, not a list of objects", wrong.what());
    }
}

TEST_F(ClientTyped, unknown_name_tells_what_is_near) {
    const TypedObject stream = At("Flowsheet.Stream(Raw Gas)");
    try {
        stream.ValueOf("Temprature");
        FAIL() << "found";
    } catch (const NoMember& unknown) {
        EXPECT_EQ("Temprature", unknown.Member());
        ASSERT_FALSE(unknown.Near().empty());
        EXPECT_EQ("Temperature", unknown.Near().front());
        EXPECT_STREQ("QSIMaterialStream has no member Temprature\n  near: Temperature",
                     unknown.what());
    }
    EXPECT_THROW(stream.Member("temperature"), NoMember) << "the case of letters counts";
    EXPECT_THROW(stream.Member(""), NoMember);
    EXPECT_THROW(stream.Member("Overall.Vapor"), NoMember);
    EXPECT_THROW(stream.ArrayOf("Stream"), NoMember);
}

TEST_F(ClientTyped, attribute_without_a_node_is_absent) {
    const TypedObject stream = At("Flowsheet.Stream(Raw Gas)");
    ASSERT_NE(nullptr, stream.Class().Find("FlowSpecBasis"));
    ASSERT_FALSE(stream.ToNode().Find("FlowSpecBasis")) << "the map has none";
    const ValueNode basis = stream.ValueOf("FlowSpecBasis");
    EXPECT_FALSE(basis);
    EXPECT_EQ("", basis.Text());
    EXPECT_EQ("", basis.Read().status);
    EXPECT_THROW(basis.ToNode(), NotFound);
    // What an absent object lacks by its class is told nevertheless.
    const TypedObject none = At("Flowsheet").ArrayOf("Stream").At("none");
    EXPECT_EQ("QSIMaterialStream", none.Class().name);
    EXPECT_FALSE(none.ObjectOf("Overall").ObjectOf("Vapor"));
    EXPECT_THROW(none.ValueOf("Temprature"), NoMember);
    EXPECT_EQ(none.ObjectOf("Composition").ArrayOf("Component").Count(), 0);
}

TEST_F(ClientTyped, only_objects_of_the_neutral_view_have_members) {
    EXPECT_EQ("QSISimulation", At("").Class().name);
    EXPECT_THROW(TypedObject(plant.Top()), WrongType);
    EXPECT_THROW(At("Flowsheet.Stream(Raw Gas).Temperature"), WrongType);
    EXPECT_THROW(TypedObject(plant.At("appModel.FlowSheetObjects.Streams.Raw Gas")), WrongType);
}

TEST_F(ClientTyped, element_is_found_by_its_key) {
    const TypedArray streams = At("Flowsheet").ArrayOf("Stream");
    for (const TypedObject& each : streams) {
        EXPECT_EQ(each.ToNode(), streams.At(each.ToNode().Key()).ToNode());
    }
    EXPECT_FALSE(streams.At("type")) << "an attribute is no key";
    EXPECT_FALSE(streams.At(""));
}

TEST_F(ClientTyped, objects_keep_the_case_and_the_classes) {
    std::optional<TypedObject> kept;
    {
        const Case other = std::move(plant);
        kept.emplace(other.Neutral().At("Flowsheet.Stream(Raw Gas)"));
        ModelFiles files;
        other.OpenNeutral(files);
    }
    EXPECT_EQ("30", kept->ValueOf("Temperature").Text());
    EXPECT_EQ("QSIMixedEquilibriumPhase", kept->ObjectOf("Overall").Class().name);
}

// The built-in case with a stream of another name, from a file.
Case WithStream(const std::string& name, const fs::path& file) {
    Case::Open(Case::kDemo).Save(file.string());
    std::stringstream text;
    text << std::ifstream(file).rdbuf();
    const std::string renamed = std::regex_replace(text.str(), std::regex("Tail Gas"), name);
    std::ofstream(file) << renamed;
    return Case::Open(file.string());
}

TEST(ClientTypedKeys, element_whose_key_is_the_name_of_an_attribute_is_found) {
    const fs::path file = fs::temp_directory_path() / "fixtop_typed_keys.json";
    {
        const Case plant = WithStream("type", file);
        const TypedArray streams = TypedObject(plant.Neutral().At("Flowsheet")).ArrayOf("Stream");
        const TypedObject renamed = streams.At("type");
        ASSERT_TRUE(renamed);
        EXPECT_EQ("type", renamed.ValueOf("Name").Text());
        EXPECT_EQ(renamed.ToNode(), streams.At(1).ToNode());
    }
    fs::remove(file);
}

// ---- All of a case

// What the tree has below an object against what its members answer.
class Comparison {
 public:
    explicit Comparison(int deepest) : deepest_(deepest) {}

    void Compare(const TypedObject& object, int depth) {
        ++objects_;
        const Node node = object.ToNode();
        ASSERT_EQ("Object(" + object.Class().name + ")", node.Type());
        std::set<std::string> names;
        for (const NeutralMember& member : object.Class().AllMembers()) {
            names.insert(member.name);
            CompareMember(object, member, depth);
        }
        node.ForEachChild([&](const Child& child) {
            EXPECT_TRUE(names.contains(child.name)) << node.Path() << ' ' << child.name;
            return true;
        });
    }
    int Objects() const { return objects_; }
    int Values() const { return values_; }

 private:
    void CompareMember(const TypedObject& object, const NeutralMember& member, int depth) {
        const std::vector<Node> found = object.ToNode().Matches(WrittenName(member.name));
        const TypedMember answer = object.Member(member.name);
        if (const auto* value = std::get_if<ValueNode>(&answer)) {
            EXPECT_EQ(Kind::kValue, member.kind);
            ASSERT_EQ(found.empty(), !*value) << object.ToNode().Path() << ' ' << member.name;
            if (found.empty()) return;
            ++values_;
            EXPECT_EQ(found.front(), value->ToNode());
            EXPECT_EQ(found.front().Text(), value->Text());
        } else if (const auto* below = std::get_if<TypedObject>(&answer)) {
            EXPECT_EQ(Kind::kObject, member.kind);
            ASSERT_EQ(found.empty(), !*below) << object.ToNode().Path() << ' ' << member.name;
            if (*below) CompareBelow(found.front(), *below, depth);
        } else {
            CompareList(found, std::get<TypedArray>(answer), depth);
        }
    }
    void CompareList(const std::vector<Node>& found, const TypedArray& list, int depth) {
        std::size_t index = 0;
        for (const TypedObject& each : list) {
            ASSERT_LT(index, found.size());
            CompareBelow(found[index], each, depth);
            ++index;
        }
        EXPECT_EQ(found.size(), index);
        EXPECT_EQ(static_cast<int>(index), list.Count());
        EXPECT_FALSE(list.At(static_cast<int>(index)));
        if (index == 0) return;
        const int last = static_cast<int>(index) - 1;
        EXPECT_EQ(found.back(), list.At(last).ToNode());
    }
    void CompareBelow(const Node& found, const TypedObject& below, int depth) {
        EXPECT_EQ(found, below.ToNode());
        if (depth < deepest_) Compare(below, depth + 1);
    }

    int deepest_;
    int objects_ = 0;
    int values_ = 0;
};

TEST_F(ClientTyped, members_are_the_nodes_of_the_built_in_case) {
    Comparison comparison(2);
    comparison.Compare(At(""), 0);
    // The root and its flowsheet; streams, heat streams and unit operations are of the third level.
    EXPECT_GT(comparison.Objects(), 2 + 35 + 13 + 16);
    EXPECT_GT(comparison.Values(), 500);
}

TEST(ClientTypedRecorded, members_are_the_nodes_of_recorded_cases) {
    const char* given = std::getenv("FIXTOP_CASES");
    const fs::path folder = fs::path(given ? given : FIXTOP_CASES) / "real";
    if (!fs::exists(folder)) GTEST_SKIP() << folder;
    int cases = 0;
    for (const auto& file : fs::directory_iterator(folder)) {
        if (file.path().extension() != ".dwxmz") continue;
        ++cases;
        const Case plant = Case::Open(file.path().string());
        Comparison comparison(2);
        comparison.Compare(TypedObject(plant.Neutral()), 0);
        EXPECT_GT(comparison.Values(), 50) << file.path();
    }
    EXPECT_GT(cases, 0);
}

}  // namespace

}  // namespace fixtop::client
