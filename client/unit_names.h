// SPDX-License-Identifier: Apache-2.0
#pragma once

// What else units are called: a host knows one name of each, and engineers type others.

#include <string>
#include <vector>

namespace fixtop::client {

// Whether both are names of one unit, as "degC" and "C", "kmol/hr" and "kgmole/h". Blanks,
// parentheses and the case of letters do not count, but for that of a leading M.
bool IsSameUnit(const std::string& one, const std::string& other);

// Of the attribute "uom_options".
std::vector<std::string> UnitsIn(const std::string& options);

// The one of `units` that a text means; empty when it is none of them, or more than one.
std::string UnitMeant(const std::string& typed, const std::vector<std::string>& units);

}  // namespace fixtop::client
