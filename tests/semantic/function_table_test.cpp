// SPDX-License-Identifier: Apache-2.0
// The table of functions that maps may name, against the list of what the module exports.

#include "semantic/function_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "fixtop/semantic_functions.h"

namespace fixtop {

namespace {

using testing::Contains;
using testing::UnorderedElementsAreArray;

std::vector<std::string> ExportedForMaps() {
    std::ifstream list(FIXTOP_EXPORTS);
    std::vector<std::string> names;
    for (std::string line; std::getline(list, line);) {
        if (line.starts_with("CT") || line == "Find1") names.push_back(line);
    }
    return names;
}

template <class Function>
Function Find(std::string_view name) {
    for (const NamedFunction& row : SemanticFunctionTable()) {
        if (row.name == name) {
            const auto* function = std::get_if<Function>(&row.function);
            return function ? *function : nullptr;
        }
    }
    return nullptr;
}

TEST(FunctionTable, holds_what_the_module_exports_for_maps) {
    const std::vector<std::string> exported = ExportedForMaps();
    ASSERT_THAT(exported, Contains("Find1")) << FIXTOP_EXPORTS;
    std::vector<std::string> named;
    for (const NamedFunction& row : SemanticFunctionTable()) named.emplace_back(row.name);
    EXPECT_THAT(named, UnorderedElementsAreArray(exported));
}

TEST(FunctionTable, kinds_are_those_of_the_functions) {
    EXPECT_EQ(Find<SemanticFunction>("Find1"), &Find1);
    EXPECT_EQ(Find<SemanticFunction>("CTKVL2"), &CTKVL2);
    EXPECT_EQ(Find<ArrayFunction>("CTStreams"), &CTStreams);
    EXPECT_EQ(Find<ArrayFunction>("CTKVL2Array"), &CTKVL2Array);
    EXPECT_EQ(Find<ArrayFunction>("CTPipeSegment"), &CTPipeSegment);
    EXPECT_EQ(Find<ArrayFunction>("CTReactions"), &CTReactions);
    EXPECT_EQ(Find<SemanticFunction>("CTExchangerHot"), &CTExchangerHot);
    EXPECT_EQ(Find<SemanticFunction>("CTHeaterVF"), &CTHeaterVF);
    for (const NamedFunction& row : SemanticFunctionTable()) {
        EXPECT_FALSE(std::holds_alternative<TopNodeFunction>(row.function)) << row.name;
        if (row.name.ends_with("Array")) {
            EXPECT_TRUE(std::holds_alternative<ArrayFunction>(row.function)) << row.name;
        }
    }
}

TEST(FunctionTable, says_which_steps_are_asked_first) {
    std::vector<std::string> asked;
    for (const NamedFunction& row : SemanticFunctionTable()) {
        if (row.asked_first) asked.emplace_back(row.name);
    }
    EXPECT_THAT(asked, UnorderedElementsAreArray({"CTSideColumnDraw", "CTSideColumnReturn"}));
}

TEST(FunctionTable, says_which_lists_have_late_variables) {
    for (const NamedFunction& row : SemanticFunctionTable()) {
        EXPECT_EQ(row.late != nullptr, row.name == "CTColumnStages") << row.name;
        EXPECT_FALSE(row.late && row.steps_on) << row.name;
    }
}

TEST(FunctionTable, has_the_functions_of_columns) {
    const char* const lists[] = {"CTColumnStages",
                                 "CTColumnFeeds",
                                 "CTSectionTray",
                                 "CTColumnSideDraws",
                                 "CTColumnCompMoleFrac",
                                 "CTLiquidFromComposition",
                                 "CTColumnComponentEfficiency",
                                 "CTCondNozzle",
                                 "CTRebNozzle",
                                 "CTCondRebVesselComponentArray",
                                 "CTCondRebVaporComponentArray",
                                 "CTCondRebLiquidComponentArray"};
    const char* const steps[] = {"CTSideDrawFluid",
                                 "CTCondVapor",
                                 "CTCondDistillate",
                                 "CTCondHeavyDistillate",
                                 "CTCondReflux",
                                 "CTRebBoilup",
                                 "CTRebLiquid",
                                 "CTRebLiquid2",
                                 "CTRebVapor",
                                 "CTSideColumnDraw",
                                 "CTSideColumnReturn",
                                 "CTSideColumnReboiler",
                                 "CTSideColumnBottoms",
                                 "CTPumparoundDraw",
                                 "CTPumparoundReturn",
                                 "CTCondRebVesselComponent",
                                 "CTCondRebVaporComponent",
                                 "CTCondRebLiquidComponent"};
    for (const char* name : lists) EXPECT_NE(Find<ArrayFunction>(name), nullptr) << name;
    for (const char* name : steps) EXPECT_NE(Find<SemanticFunction>(name), nullptr) << name;
}

}  // namespace

}  // namespace fixtop
