// SPDX-License-Identifier: Apache-2.0
#pragma once

// How far values may be apart: by the unit in which they are shown, or for all others.

#include <map>
#include <set>
#include <string>
#include <vector>

#include "fixtop/value.h"

namespace fixtop {

class Tolerances {
 public:
    // "UNIT=NUMBER" or "NUMBER". Answers what is wrong with it; nothing when it was taken.
    std::string Take(const std::string& text);
    // Numbers are near each other, anything else is alike. In this unit; empty without one.
    bool AreSame(const FIValue& a, const FIValue& b, const std::string& unit) const;

    // The units that were told, without those of the list.
    std::vector<std::string> UnitsBeside(const std::set<std::string>& units) const;

 private:
    std::map<std::string, double> of_unit_;
    double of_others_ = 0;
};

}  // namespace fixtop
