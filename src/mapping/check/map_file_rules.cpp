// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/element_rules.h"

namespace fixtop {

namespace {

using Names = const char* const[];

constexpr Names kName = {"Name"};
constexpr Names kType = {"Type"};
constexpr Names kNameAndAppName = {"Name", "AppName"};
constexpr Names kVar = {"Var"};
constexpr Names kFileAndLevel = {"File", "Level"};
constexpr Names kMapfile = {"Mapfile"};
constexpr Names kFunctionName = {"FunctionName"};
constexpr Names kTranslateName = {"TranslateName"};
constexpr Names kContainers = {"Container", "ContainerId"};
constexpr Names kBranchAndName = {"Branch", "TranslateName"};

constexpr ElementRule kNodeAttribute[] = {{"Attribute", kName, {}, {}, true}};
constexpr ElementRule kTranslatorChildren[] = {
    {.name = "NodeAttributes", .children = kNodeAttribute},
    {.name = "Function", .reads_text = true},
    {.name = "Map", .reads_text = true},
};
constexpr ElementRule kMapOption[] = {{"Option", kNameAndAppName}};
constexpr ElementRule kMappedChildren[] = {
    {"Translate", kType, kBranchAndName, kTranslatorChildren, true},
    {"TranslateArray", kType, kBranchAndName, kTranslatorChildren, true},
    {"Enumeration", kName, kTranslateName, kMapOption},
    {"Condition", kVar, {}, {}, true},
    {"SetVar", kVar, {}, {}, true},
};
constexpr ElementRule kMappedClass[] = {{"Attribute", kName, kContainers, kMappedChildren}};
constexpr ElementRule kModule[] = {{.name = "DLL", .reads_text = true}};
constexpr ElementRule kMapFileChildren[] = {
    {.name = "DefaultBranch", .reads_text = true},
    {.name = "Linkage", .children = kModule},
    {"TopNode", kFunctionName},
    {.name = "TranslateName", .reads_text = true},
    {"Translate", kType, kBranchAndName, kTranslatorChildren, true},
    {"Class", kName, {}, kMappedClass},
    {"Include", kMapfile},
    {"Enumeration", kName, kTranslateName, kMapOption},
    {.name = "Log", .possible = kFileAndLevel},
};

}  // namespace

const ElementRule kMapFileRule = {.name = "CCDMMapFile", .children = kMapFileChildren};

}  // namespace fixtop
