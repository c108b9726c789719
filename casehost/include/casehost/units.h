// SPDX-License-Identifier: Apache-2.0
#pragma once

// The quantities and units that the case host knows. Numbers inside a case are always in the
// internal unit of their quantity, the first of its list.

#include <array>
#include <string_view>
#include <vector>

#include "fixtop/host/variables.h"

namespace fixtop::casehost {

struct Quantity {
    const char* name;                     // "Temperature", "MolarFlow"
    std::vector<host::UnitRecord> units;  // internal unit first; internal = user * factor + offset
    std::vector<const char*> defaults;    // default unit in each unit set
    host::VarType type = 0;               // 1 and up, never 65
};

// By number.
inline constexpr std::array<const char*, 3> kUnitSetNames = {"Process", "SI", "Field"};
inline constexpr unsigned kUnitSets = kUnitSetNames.size();

const std::vector<Quantity>& Quantities();
// Null for an unknown name or type.
const Quantity* FindQuantity(std::string_view name);
const Quantity* FindQuantity(host::VarType type);
// The first that has a unit of this name, which is the one that the name alone stands for.
const Quantity* FindQuantityOfUnit(std::string_view unit);
// The unit of a quantity in a unit set, the first set for a number that none has; null for an
// unknown type.
const host::UnitRecord* DefaultUnit(host::VarType type, unsigned set);
// Null when the quantity has no such unit.
const host::UnitRecord* FindUnit(const Quantity& quantity, std::string_view name);

inline double ToInternal(double user, const host::UnitRecord& unit) {
    return user * unit.factor + unit.offset;
}
inline double FromInternal(double internal, const host::UnitRecord& unit) {
    return (internal - unit.offset) / unit.factor;
}

}  // namespace fixtop::casehost
