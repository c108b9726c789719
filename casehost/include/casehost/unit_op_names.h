// SPDX-License-Identifier: Apache-2.0
#pragma once

// The type words of objects and the display names of the parameters of unit operations, as the
// built-in case and own case files use them and the steady-state solver reads them.
//
// A unit operation finds its streams by its ports (PortData): feeds and products in the order of
// their index, energy streams by energy_in and energy_out. A parameter whose state is `specified`
// is an input; any other is a result that the solver fills. Beside a name stands the unit of the
// numbers stored under it.

namespace fixtop::casehost::words {

inline constexpr char kMaterialStream[] = "MaterialStreamObject";
inline constexpr char kEnergyStream[] = "EnergyStreamObject";
inline constexpr char kPipe[] = "PipeSegObject";
inline constexpr char kCompressor[] = "CompressorObject";
inline constexpr char kExpander[] = "ExpandOpObject";
inline constexpr char kSeparator[] = "FlashTankObject";
inline constexpr char kThreePhaseSeparator[] = "Sep3OpObject";
inline constexpr char kTank[] = "TankOpObject";
inline constexpr char kValve[] = "ValveOpObject";
inline constexpr char kPump[] = "PumpOpObject";
inline constexpr char kHeatExchanger[] = "HeatExOpObject";
inline constexpr char kMixer[] = "MixerOpObject";
inline constexpr char kTee[] = "TeeOpObject";
inline constexpr char kDistillation[] = "DistillationObject";
inline constexpr char kColumn[] = "ColumnOpObject";
inline constexpr char kConversionReactor[] = "ConversionReactorOpObject";
inline constexpr char kEquilibriumReactor[] = "EquilibriumReactorOpObject";
inline constexpr char kGibbsReactor[] = "GibbsReactorOpObject";
inline constexpr char kHeater[] = "HeaterOpObject";
inline constexpr char kCooler[] = "CoolerOpObject";
// A sub-flowsheet. Its feed port n is the n-th inner material stream that no inner unit operation
// makes, its product port n the n-th that none takes, in the order of the inner flowsheet.
inline constexpr char kTemplate[] = "TemplateOpObject";

}  // namespace fixtop::casehost::words

namespace fixtop::casehost::names {

// Of streams, beside stream_names.h.
inline constexpr char kCompMassFrac[] = "Master Comp Mass Frac";     // array by compound
inline constexpr char kPhaseFraction[] = "Phase Fraction";           // array by phase
inline constexpr char kMolarEntropy[] = "Molar Entropy";             // kJ/(kgmole C)
inline constexpr char kMassDensity[] = "Mass Density";               // kg/m3
inline constexpr char kMolarMass[] = "Molecular Weight";             // kg/kgmole
inline constexpr char kMolarHeatCapacity[] = "Molar Heat Capacity";  // kJ/(kgmole C)

// The labels of a phase dimension.
inline constexpr char kOverall[] = "Overall";
inline constexpr char kVapourPhase[] = "Vapour Phase";
inline constexpr char kLiquidPhase[] = "Liquid Phase";

// Of one-in one-out operations. Heater and cooler: two of these three are given, or the product
// temperature or the duty stands specified in the product or energy stream.
inline constexpr char kPressureDrop[] = "Pressure Drop";              // kPa, inlet minus outlet
inline constexpr char kDuty[] = "Duty";                               // kJ/h, positive as named
inline constexpr char kProductTemperature[] = "Product Temperature";  // C
inline constexpr char kProductPressure[] = "Product Pressure";        // kPa

// Pump, compressor, expander: duty is the shaft power, positive into pump and compressor and out of
// the expander.
inline constexpr char kAdiabaticEfficiency[] = "Adiabatic Efficiency";  // percent
inline constexpr char kIsCompressor[] = "IsCompressor";                 // text "YES" or "NO"

// Mixer: enumeration of kEqualizeAll and kLowestInlet, by ordinal 0 and 1.
inline constexpr char kOutletPressureAssignment[] = "Outlet Pressure Assignment";
inline constexpr char kEqualizeAll[] = "Equalize All";
inline constexpr char kLowestInlet[] = "Set Outlet to Lowest Inlet";

// Tee: one fraction for each product, in port order.
inline constexpr char kFlowRatio[] = "Flow Ratio";

// Heat exchanger: feed and product 0 are the tube side, 1 the shell side.
inline constexpr char kTubePressureDrop[] = "Tube Side Pressure Drop";    // kPa
inline constexpr char kShellPressureDrop[] = "Shell Side Pressure Drop";  // kPa
inline constexpr char kUA[] = "UA";                                       // kJ/(C h)
inline constexpr char kLmtd[] = "LMTD";                                   // C difference
inline constexpr char kMinimumApproach[] = "Minimum Approach";            // C difference

// Separators have kPressureDrop and an optional kDuty; product 0 is the vapour, 1 the liquid.

}  // namespace fixtop::casehost::names
