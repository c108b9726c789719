// SPDX-License-Identifier: Apache-2.0
// Opening and saving.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "fixtop/client.h"

namespace fixtop::client {

namespace {

using ::testing::HasSubstr;

std::string TemporaryFile(const char* name) {
    return (std::filesystem::temp_directory_path() / name).string();
}

TEST(ClientCase, file_that_is_not_there_is_told_by_its_name) {
    try {
        Case::Open("no such file.json");
        FAIL() << "opened";
    } catch (const CaseError& error) {
        EXPECT_THAT(error.what(), HasSubstr("no such file.json"));
        EXPECT_FALSE(error.Problems().empty());
    }
}

TEST(ClientCase, nodes_keep_their_case_open) {
    Node gas = Case::Open(Case::kDemo).At("appModel.FlowSheetObjects.Streams.Raw Gas");
    EXPECT_EQ("30", gas.At("Temperature").Text());
}

TEST(ClientCase, one_that_can_t_be_opened_leaves_the_open_one_alone) {
    const Case open = Case::Open(Case::kDemo);
    const Node gas = open.At("appModel.FlowSheetObjects.Streams.Raw Gas");
    EXPECT_THROW(Case::Open("no such file.json"), CaseError);
    EXPECT_EQ("30", gas.At("Temperature").Text());
    gas.At("Temperature").Store(31, "C");
    EXPECT_TRUE(open.GetSolver().Solve().complete);
    EXPECT_FALSE(gas.IsGone());
}

TEST(ClientCase, nodes_are_gone_when_their_case_was_closed) {
    const Case open = Case::Open(Case::kDemo);
    const Node temperature = open.At("appModel.FlowSheetObjects.Streams.Raw Gas.Temperature");
    const Reference held(temperature);
    open.Close();
    EXPECT_TRUE(temperature.IsGone());
    EXPECT_THROW(temperature.Number("C"), Gone);
    EXPECT_THROW(temperature.Store(31, "C"), Gone);
    EXPECT_FALSE(open.GetSolver().Solve().complete);
    open.Close();
    const Case next = Case::Open(Case::kDemo);
    EXPECT_TRUE(temperature.IsGone());
    EXPECT_EQ("30", next.At("appModel.FlowSheetObjects.Streams.Raw Gas.Temperature").Text());
}

TEST(ClientCase, handles_of_a_case_end_when_another_host_is_installed) {
    const Case first = Case::Open(Case::kDemo);
    const Reference gas(first.At("appModel.FlowSheetObjects.Streams.Raw Gas"));
    {
        const Case second = Case::Open(Case::kDemo);
        EXPECT_FALSE(gas.IsLive());
        EXPECT_EQ("Node deleted", gas.WhyGone());
        EXPECT_NO_THROW(second.At("appModel"));
    }
    EXPECT_THROW(gas.Get(), Gone);
}

TEST(ClientCase, what_was_stored_is_saved) {
    const std::string file = TemporaryFile("fixtop_client_case_test.json");
    {
        const Case plant = Case::Open(Case::kDemo);
        plant.At("appModel.FlowSheetObjects.Streams.Raw Gas.Temperature").Store(35, "C");
        plant.Save(file);
    }
    EXPECT_EQ("35",
              Case::Open(file).At("appModel.FlowSheetObjects.Streams.Raw Gas.Temperature").Text());
    std::remove(file.c_str());
}

TEST(ClientCase, save_to_an_unknown_kind_of_file_is_refused) {
    EXPECT_THROW(Case::Open(Case::kDemo).Save(TemporaryFile("fixtop_client.xyz")), CaseError);
}

TEST(ClientCase, neutral_view_with_a_map_that_is_not_there_is_told) {
    const Case plant = Case::Open(Case::kDemo);
    ModelFiles files;
    files.map = "no such map.xml";
    EXPECT_THROW(plant.OpenNeutral(files), CaseError);
    EXPECT_EQ("QSISimulation", plant.Neutral().Name());
}

TEST(ClientCase, session_of_a_running_host_is_that_of_the_host) {
    EXPECT_THROW(Case::OfSession(), CaseError);
    const Case plant = Case::Open(Case::kDemo);
    EXPECT_EQ("30",
              Case::OfSession().At("appModel.FlowSheetObjects.Streams.Raw Gas.Temperature").Text());
}

TEST(ClientCase, dictionary_has_the_classes) {
    std::string warning;
    EXPECT_TRUE(OpenDictionary({}, warning).At("Classes").Find("QSIMaterialStream"));
    EXPECT_EQ("", warning);
}

}  // namespace

}  // namespace fixtop::client
