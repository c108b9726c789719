// SPDX-License-Identifier: Apache-2.0
#pragma once

// Suggests what somebody meant who mistyped a name.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fixtop {

// Count of characters to be inserted, deleted or replaced to turn one name into the other; letters
// of either case are equal.
std::size_t EditDistance(std::string_view a, std::string_view b);

// The names that are nearest to `wanted`, nearest first, at most `limit`; names that have little in
// common with it are left out.
std::vector<std::string> NearNames(const std::string& wanted, const std::vector<std::string>& names,
                                   std::size_t limit = 3);

}  // namespace fixtop
