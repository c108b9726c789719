// SPDX-License-Identifier: Apache-2.0
#include "model/model_types.h"

#include <array>
#include <cstddef>

namespace fixtop {

namespace {

// The place in the table is the number.
constexpr std::array<const char*, 7> kAttrTypes = {"None",    "Real",        "String", "Integer",
                                                   "Boolean", "Enumeration", "Object"};
static_assert(static_cast<int>(CCDMAttrType::kObject) == kAttrTypes.size() - 1);

constexpr std::array<const char*, 4> kBranches = {"", "Both", "Calc", "Spec"};
static_assert(static_cast<int>(CCDMBranch::kSpec) == kBranches.size() - 1);

template <class Number, std::size_t kSize>
Number FromText(const std::array<const char*, kSize>& table, std::string_view text) {
    for (std::size_t i = 0; i < kSize; ++i) {
        if (text == table[i]) return static_cast<Number>(i);
    }
    return static_cast<Number>(0);
}

}  // namespace

CCDMAttrType AttrTypeFromText(std::string_view text) {
    return FromText<CCDMAttrType>(kAttrTypes, text);
}

const char* AttrTypeText(CCDMAttrType type) {
    const auto number = static_cast<std::size_t>(type);
    return number < kAttrTypes.size() ? kAttrTypes[number] : kAttrTypes[0];
}

std::span<const char* const> AttrTypeTexts() {
    return kAttrTypes;
}

std::span<const char* const> BranchTexts() {
    return std::span(kBranches).subspan(1);
}

CCDMBranch BranchFromText(std::string_view text) {
    return FromText<CCDMBranch>(kBranches, text);
}

}  // namespace fixtop
