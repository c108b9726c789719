// SPDX-License-Identifier: Apache-2.0
#pragma once

// The units in which the numbers of a flowsheet file stand, and their way into the internal units
// of the case.

#include "casehost/units.h"

namespace fixtop::casehost::importer {

struct FileUnit {
    const char* quantity;  // of units.h; empty: the number has no unit
    const char* name;      // the unit's name within the quantity
};

namespace file_unit {
inline constexpr FileUnit none{"", ""};
inline constexpr FileUnit kelvin{"Temperature", "K"};
inline constexpr FileUnit kelvin_difference{"TemperatureDifference", "K"};
inline constexpr FileUnit pascal{"Pressure", "Pa"};
inline constexpr FileUnit pascal_difference{"PressureDifference", "Pa"};
inline constexpr FileUnit inverse_pascal{"InversePressure", "1/Pa"};
inline constexpr FileUnit kelvin_per_pascal{"JouleThomsonCoefficient", "K/Pa"};
inline constexpr FileUnit mol_per_second{"MolarFlow", "mol/s"};
inline constexpr FileUnit kg_per_second{"MassFlow", "kg/s"};
inline constexpr FileUnit m3_per_second{"VolumetricFlow", "m3/s"};
inline constexpr FileUnit mol_per_m3{"MolarDensity", "mol/m3"};
inline constexpr FileUnit kg_per_m3{"Density", "kg/m3"};
inline constexpr FileUnit kg_per_kmol{"MolarMass", "kg/kgmole"};
inline constexpr FileUnit kilowatt{"EnergyFlow", "kW"};
inline constexpr FileUnit kilowatt_per_m2{"Irradiation", "kW/m2"};
inline constexpr FileUnit kj_per_kg{"MassEnthalpy", "kJ/kg"};
inline constexpr FileUnit kj_per_kmol{"MolarEnthalpy", "kJ/kgmole"};
inline constexpr FileUnit kj_per_kg_kelvin{"MassEntropy", "kJ/kg-K"};
inline constexpr FileUnit kj_per_kmol_kelvin{"MolarEntropy", "kJ/kgmole-K"};
// Of heat capacities, a quantity of its own.
inline constexpr FileUnit kj_per_kg_kelvin_capacity{"MassHeatCapacity", "kJ/kg-K"};
inline constexpr FileUnit kj_per_kmol_kelvin_capacity{"MolarHeatCapacity", "kJ/kgmole-K"};
inline constexpr FileUnit pascal_second{"Viscosity", "Pa-s"};
inline constexpr FileUnit m2_per_second{"KinematicViscosity", "m2/s"};
inline constexpr FileUnit watt_per_metre_kelvin{"ThermalConductivity", "W/m-K"};
inline constexpr FileUnit newton_per_metre{"SurfaceTension", "N/m"};
inline constexpr FileUnit watt_per_m2_kelvin{"HeatTransferCoefficient", "W/m2-K"};
inline constexpr FileUnit metre{"Length", "m"};
inline constexpr FileUnit m2{"Area", "m2"};
inline constexpr FileUnit m3{"Volume", "m3"};
inline constexpr FileUnit metre_per_second{"Speed", "m/s"};
inline constexpr FileUnit second{"Time", "seconds"};
inline constexpr FileUnit rpm{"RotationalSpeed", "rpm"};
inline constexpr FileUnit percent{"Percent", "%"};
inline constexpr FileUnit volt{"Voltage", "V"};
inline constexpr FileUnit ampere{"Current", "A"};
}  // namespace file_unit

// Of numbers that have been read.
namespace internal_unit {
inline constexpr FileUnit temperature{"Temperature", "C"};
inline constexpr FileUnit pressure{"Pressure", "kPa"};
inline constexpr FileUnit molar_flow{"MolarFlow", "kgmole/h"};
inline constexpr FileUnit mass_flow{"MassFlow", "kg/h"};
inline constexpr FileUnit ua{"UA", "kJ/C-h"};
}  // namespace internal_unit

}  // namespace fixtop::casehost::importer
