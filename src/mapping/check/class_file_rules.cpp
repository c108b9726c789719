// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/element_rules.h"

namespace fixtop {

namespace {

using Names = const char* const[];

constexpr Names kName = {"Name"};
constexpr Names kNameAndType = {"Name", "Type"};
constexpr Names kNameAndValue = {"Name", "Value"};
constexpr Names kLibrary = {"Library"};
constexpr Names kIntegerValue = {"IntegerValue"};
constexpr Names kEnumIsClosed = {"EnumIsClosed"};
constexpr Names kNameAndCount = {"Name", "Count"};
constexpr Names kMultiplicity = {"Multiplicity"};

constexpr ElementRule kHeaderChildren[] = {{"Include", kLibrary}};
constexpr ElementRule kClassChildren[] = {{.name = "Superclass", .reads_text = true}};
constexpr ElementRule kOption[] = {{"Option", kName, kIntegerValue}};
constexpr ElementRule kProperty[] = {{"CustomProperty", kNameAndValue}};
constexpr ElementRule kAttributeChildren[] = {
    {.name = "ClassName", .reads_text = true},
    {.name = "EnumName", .reads_text = true},
    {.name = "QuantityType", .reads_text = true},
    {.name = "CustomMetaData", .reads_text = true},
    {.name = "CustomProperties", .children = kProperty},
};
constexpr ElementRule kClassAttributesChildren[] = {
    {.name = "ClassName", .reads_text = true},
    {"Attribute", kNameAndType, kMultiplicity, kAttributeChildren},
};
constexpr Names kFileAndLevel = {"File", "Level"};
constexpr ElementRule kClassFileChildren[] = {
    {.name = "Header", .children = kHeaderChildren},
    {"Include", kLibrary},
    {.name = "Log", .possible = kFileAndLevel},
    {"Class", kName, {}, kClassChildren},
    {"Enumeration", kName, kEnumIsClosed, kOption},
    {.name = "ClassAttributes", .possible = kNameAndCount, .children = kClassAttributesChildren},
    {.name = "QuantityTypeDefn", .is_note = true},
};

}  // namespace

const ElementRule kClassFileRule = {.name = "QZClassLibrary", .children = kClassFileChildren};

}  // namespace fixtop
