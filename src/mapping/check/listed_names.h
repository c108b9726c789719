// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>

namespace fixtop {

// The texts behind each other; empty when there are none.
template <class Texts>
std::string Listed(const char* lead, const Texts& texts, const char* separator = ", ") {
    std::string list;
    for (const auto& text : texts) list += (list.empty() ? lead : separator) + std::string(text);
    return list;
}

// "; right: A, B".
inline std::string Right(std::span<const char* const> names) {
    return Listed("; right: ", names);
}

}  // namespace fixtop
