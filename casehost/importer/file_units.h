#pragma once

// The units in which the numbers of a flowsheet file stand, and their way into the internal units
// of the case. A number with FileUnit::none stays as it is and has no unit.

#include <string_view>

#include "casehost/units.h"

namespace fixtop::casehost::importer {

enum class FileUnit {
    none,
    kelvin,
    kelvin_difference,
    pascal,
    pascal_difference,
    inverse_pascal,
    kelvin_per_pascal,
    mol_per_second,
    kg_per_second,
    m3_per_second,
    mol_per_m3,
    kg_per_m3,
    kg_per_kmol,
    kilowatt,
    kilowatt_per_m2,
    kj_per_kg,
    kj_per_kmol,
    kj_per_kg_kelvin,
    kj_per_kmol_kelvin,
    kj_per_kg_kelvin_capacity,  // of heat capacities, a quantity of its own
    kj_per_kmol_kelvin_capacity,
    pascal_second,
    m2_per_second,
    watt_per_metre_kelvin,
    newton_per_metre,
    watt_per_m2_kelvin,
    metre,
    m2,
    m3,
    metre_per_second,
    second,
    rpm,
    percent,
    volt,
    ampere,
    count_
};

struct FileUnitRow {
    FileUnit unit;
    const char* quantity;  // of units.h; empty: the number has no unit
    const char* name;      // the unit's name within the quantity
    double scale = 1.0;    // of a number without a quantity: into the case's basic units
};

// The quantity that a variable of that unit has.
std::string_view QuantityOf(FileUnit unit);

// Into the internal unit. Throws std::logic_error when a row is not known to units.h.
double ToCase(double value, FileUnit unit);

}  // namespace fixtop::casehost::importer
