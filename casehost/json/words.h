// SPDX-License-Identifier: Apache-2.0
#pragma once

// The words of case files for enumerated values, by ordinal.

#include <array>
#include <string_view>

namespace fixtop::casehost::json {

inline constexpr std::string_view kFormatName = "casehost case";
inline constexpr int kFormatVersion = 1;

inline constexpr std::array<std::string_view, 6> kKindWords = {"",     "real",       "enumeration",
                                                               "text", "attachment", "message"};
inline constexpr std::array<std::string_view, 5> kStateWords = {
    "calculated", "specified", "defaulted", "specifiedOtherwise", "missing"};
inline constexpr std::array<std::string_view, 5> kStatusWords = {"ok", "notSolved", "warning",
                                                                 "underSpecified", "error"};
inline constexpr std::array<std::string_view, 4> kNamingWords = {"number", "enumeration", "text",
                                                                 "attachedObject"};
inline constexpr std::array<std::string_view, 4> kRoleWords = {"feed", "product", "energyIn",
                                                               "energyOut"};
inline constexpr std::array<std::string_view, 9> kElementWords = {
    "group", "custom", "status", "table", "variable", "object", "number", "text", "document"};

template <class Words, class Value>
std::string_view Word(const Words& words, Value value) {
    return words[static_cast<std::size_t>(value)];
}

}  // namespace fixtop::casehost::json
