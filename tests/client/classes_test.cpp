// SPDX-License-Identifier: Apache-2.0
// The header with a class for each of the neutral view, which has to compile alone.
#include <fixtop/client/classes.h>

// And twice.
#include <fixtop/client/classes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

#include "fixtop/client.h"
#include "odd_classes.h"

namespace fixtop::client {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

using namespace classes;

template <class T>
concept HasStageTemperature = requires(T object) {
    object.Temperature();
};

static_assert(std::is_base_of_v<QSIMaterialFlow, QSIMaterialStream>);
static_assert(std::is_base_of_v<QSIPropertyContainer, QSIMaterialStream>);
static_assert(!std::is_convertible_v<Node, QSIMaterialStream>);
static_assert(HasStageTemperature<QSIMaterialStream>);
static_assert(!HasStageTemperature<QSIFlowsheet>, "a name that the class lacks is no function");
static_assert(std::input_iterator<TypedArray::Iterator>);
static_assert(std::input_iterator<TypedList<QSIMaterialStream>::Iterator>);

class ClientClasses : public ::testing::Test {
 protected:
    std::string ByPath(const std::string& path) const { return plant.Neutral().At(path).Text(); }

    Case plant = Case::Open(Case::kDemo);
    QSISimulation simulation{plant.Neutral()};
};

TEST_F(ClientClasses, value_is_that_of_the_path) {
    const QSIMaterialStream gas = simulation.Flowsheet().Stream().At("Raw Gas");
    EXPECT_EQ("Raw Gas", gas.Name().Text());
    EXPECT_DOUBLE_EQ(30, gas.Temperature().Number("C"));
    // Fahrenheit from Celsius: times 1.8 plus 32.
    EXPECT_NEAR(86, gas.Temperature().Number("F"), 1e-9);
    EXPECT_EQ("Specified", gas.Temperature().Read().status);
    EXPECT_EQ(ByPath("Flowsheet.Stream(Raw Gas).Composition.Component#0.MoleFraction"),
              gas.Composition().Component()[0].MoleFraction().Text());
    EXPECT_EQ(ByPath("Flowsheet.Stream(Raw Gas).Overall.Vapor.Temperature"),
              gas.Overall().Vapor().Temperature().Text());
    EXPECT_EQ("30", gas.Overall().Vapor().Temperature().Text());
}

TEST_F(ClientClasses, value_is_stored) {
    const ValueNode temperature = simulation.Flowsheet().Stream().At("Raw Gas").Temperature();
    temperature.Store(313.15, "K");
    EXPECT_NEAR(40, plant.At("appModel.FlowSheetObjects.Streams.Raw Gas.Temperature").Number("C"),
                1e-9);
    temperature.Store("35", "C");
    EXPECT_DOUBLE_EQ(35, temperature.Number("C"));
}

TEST_F(ClientClasses, list_is_walked_and_indexed_in_the_order_of_the_tree) {
    std::vector<std::string> walked;
    for (const QSIMaterialStream& stream : simulation.Flowsheet().Stream()) {
        walked.push_back(stream.Name().Text());
    }
    std::vector<std::string> found;
    for (const Node& node : plant.Neutral().Matches("Flowsheet.Stream"))
        found.push_back(node.Key());
    EXPECT_EQ(found, walked);
    EXPECT_EQ(35u, walked.size());
    const TypedList<QSIMaterialStream> streams = simulation.Flowsheet().Stream();
    EXPECT_EQ(35, streams.Count());
    for (int index = 0; index < streams.Count(); ++index) {
        EXPECT_EQ(walked[static_cast<std::size_t>(index)], streams[index].Name().Text());
    }
    EXPECT_FALSE(streams[35]);
    EXPECT_FALSE(streams[-1]);
    EXPECT_FALSE(streams.At("Raw Gass"));
}

TEST_F(ClientClasses, element_of_a_list_is_asked_for_its_own_class) {
    std::vector<std::string> compressors;
    for (const QSIUnitOperation& unit : simulation.Flowsheet().UnitOperation()) {
        EXPECT_TRUE(unit.IsA("QSIUnitOperation"));
        EXPECT_EQ("Object(" + unit.Class().name + ")", unit.ToNode().Type());
        if (const auto compressor = As<QSICompressor>(unit)) {
            compressors.push_back(compressor->Name().Text());
        }
    }
    EXPECT_THAT(compressors, ElementsAre("EX-100", "K-100"));
}

TEST_F(ClientClasses, node_of_another_class_is_refused) {
    EXPECT_NO_THROW(QSIUnitOperation(plant.Neutral().At("Flowsheet.UnitOperation(K-100)")));
    EXPECT_NO_THROW(QSICompressor(plant.Neutral().At("Flowsheet.UnitOperation(K-100)")));
    EXPECT_THROW(QSIPump(plant.Neutral().At("Flowsheet.UnitOperation(K-100)")), WrongType);
    EXPECT_THROW(QSICompressor(plant.Top()), WrongType);
    try {
        const QSIMaterialStream stream(plant.Neutral().At("Flowsheet"));
        FAIL() << stream.Class().name;
    } catch (const WrongType& wrong) {
        EXPECT_STREQ("Flowsheet: is a QSIFlowsheet, no QSIMaterialStream", wrong.what());
    }
}

TEST_F(ClientClasses, what_the_case_lacks_is_absent_with_all_below) {
    const QSIMaterialStream none = simulation.Flowsheet().Stream().At("none");
    EXPECT_FALSE(none);
    EXPECT_FALSE(none.Overall().Vapor().Temperature());
    EXPECT_EQ("", none.Temperature().Text());
    EXPECT_TRUE(none.Temperature().Read().value.IsNull());
    EXPECT_EQ(0, none.Composition().Component().Count());
    try {
        none.Overall().Vapor().Temperature().Number("C");
        FAIL() << "a number";
    } catch (const NotFound& missing) {
        EXPECT_EQ("Flowsheet.Stream(none).Overall.Vapor.Temperature", missing.Path());
        EXPECT_EQ("Flowsheet", missing.Found());
    }
    EXPECT_THROW(none.Temperature().Store(1.0), NotFound);
    EXPECT_FALSE(As<QSIMaterialStream>(none));
}

// Names that C++ can't have.
class ClientOddClasses : public ::testing::Test {
 protected:
    static Case Open() {
        const Case opened = Case::Open(Case::kDemo);
        ModelFiles files;
        files.classes = FIXTOP_ODD_FILES "/odd_classes.xml";
        files.map = FIXTOP_ODD_FILES "/odd_map.xml";
        opened.OpenNeutral(files);
        return opened;
    }
    std::string Raw(const std::string& variable) const {
        return plant.At("appModel.FlowSheetObjects.Streams.Raw Gas." + variable).Text();
    }

    Case plant = Open();
    odd::QSISimulation simulation{plant.Neutral()};
};

TEST_F(ClientOddClasses, members_have_the_names_that_the_rule_gives) {
    const odd::Stream gas = simulation.Stream()[0];
    EXPECT_EQ("constant", simulation.QSISimulation_().Text()) << "the name of its class";
    EXPECT_EQ("Raw Gas", gas.class_().Text()) << "a word of C++, of a base";
    EXPECT_EQ(Raw("Molar Flow"), gas.Molar_Flow().Text());
    EXPECT_EQ(Raw("Temperature"), gas.Molar_Flow2().Text()) << "taken by a base";
    EXPECT_FALSE(gas.Molar_Flow3());
    EXPECT_EQ(Raw("Pressure"), gas.x2nd().Text());
    EXPECT_EQ(Raw("Mass Flow"), gas.ToNode_().Text()) << "a function of all objects";
    EXPECT_EQ(Raw("Molar Flow"), gas.Fluid().Molar_Flow().Text()) << "the name of a class";
    EXPECT_FALSE(gas.say_a_b_());
    EXPECT_FALSE(gas.ends_with_());
    EXPECT_FALSE(gas.numbers());
    EXPECT_TRUE(simulation.double_());
    EXPECT_STREQ("union", odd::union_::kClass);
    EXPECT_STREQ("a-b", odd::a_b::kClass);
    EXPECT_STREQ("a_b", odd::a_b2::kClass);
}

TEST_F(ClientOddClasses, object_that_the_map_leads_nowhere_is_absent) {
    EXPECT_FALSE(simulation.nowhere().x2nd());
    EXPECT_EQ("Stream", simulation.nowhere().Class().name);
}

TEST_F(ClientOddClasses, class_that_the_library_of_the_case_lacks_is_told) {
    EXPECT_THROW(QSIMaterialStream(plant.Neutral().At("Stream#0")), WrongType);
    // Of the same name, without the member.
    const QSISimulation shipped(plant.Neutral());
    EXPECT_THROW(shipped.Flowsheet(), NoMember);
}

TEST(ClientModel, class_library_that_is_gone_when_an_object_is_asked_for_is_told) {
    namespace fs = std::filesystem;
    const fs::path copy = fs::temp_directory_path() / "fixtop_gone_classes.xml";
    fs::copy_file(FIXTOP_ODD_FILES "/odd_classes.xml", copy, fs::copy_options::overwrite_existing);
    const Case plant = Case::Open(Case::kDemo);
    ModelFiles files;
    files.classes = copy.string();
    files.map = FIXTOP_ODD_FILES "/odd_map.xml";
    plant.OpenNeutral(files);
    fs::remove(copy);
    EXPECT_THROW(TypedObject(plant.Neutral()), CaseError);
    EXPECT_THROW(TypedObject(plant.Neutral()), CaseError) << "and again";
}

TEST(ClientModel, class_library_without_a_class_is_told) {
    ModelFiles files;
    files.classes = "no_such_file.xml";
    try {
        ClassTable::Read(files);
        FAIL() << "read";
    } catch (const CaseError& error) {
        EXPECT_THAT(error.what(), HasSubstr("no_such_file.xml"));
    }
}

}  // namespace

}  // namespace fixtop::client
