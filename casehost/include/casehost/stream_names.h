// SPDX-License-Identifier: Apache-2.0
#pragma once

// The display names of the variables that every stream of every case carries, whatever file it came
// from. Beside a name stands the unit of the numbers stored under it.

namespace fixtop::casehost::names {

inline constexpr char kTemperature[] = "Temperature";  // C
inline constexpr char kPressure[] = "Pressure";        // kPa
inline constexpr char kMolarFlow[] = "Molar Flow";     // kgmole/h
inline constexpr char kMassFlow[] = "Mass Flow";       // kg/h
inline constexpr char kVapourFraction[] = "Vapour Fraction";
inline constexpr char kCompMoleFrac[] = "Comp Mole Frac";             // array by compound
inline constexpr char kPhaseCompMoleFrac[] = "Phase Comp Mole Frac";  // array by phase and compound
inline constexpr char kMolarEnthalpy[] = "Molar Enthalpy";            // kJ/kgmole
inline constexpr char kHeatFlow[] = "Heat Flow";                      // kJ/h

}  // namespace fixtop::casehost::names
