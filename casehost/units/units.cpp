#include "casehost/units.h"

namespace fixtop::casehost {

namespace {

// The defining constants from which every factor below follows.
constexpr double kPound_kg = 0.45359237;  // international avoirdupois pound
constexpr double kFoot_m = 0.3048;        // international foot
constexpr double kInch_m = kFoot_m / 12;
constexpr double kGravity = 9.80665;  // standard gravity, m/s2
constexpr double kAtm_kPa = 101.325;
constexpr double kPsi_kPa = kPound_kg * kGravity / (kInch_m * kInch_m) / 1000;
constexpr double kMmHg_kPa = 13.5951 * kGravity / 1000;  // conventional density of mercury
constexpr double kBtu_kJ = 1.05505585262;                // International Table
constexpr double kCalorie_kJ = 0.0041868;                // International Table
constexpr double kFahrenheit_C = 5.0 / 9.0;
constexpr double kZero_C = -273.15;
constexpr double kHour_s = 3600;
constexpr double kDay_h = 24;
constexpr double kGallon_m3 = 231 * kInch_m * kInch_m * kInch_m;  // US liquid gallon
constexpr double kBarrel_m3 = 42 * kGallon_m3;
constexpr double kHorsepower_kJh = 550 * kFoot_m * kPound_kg * kGravity * kHour_s / 1000;
constexpr double kFoot2 = kFoot_m * kFoot_m;
constexpr double kFoot3 = kFoot2 * kFoot_m;
constexpr double kTurn_rad = 6.283185307179586476925;

std::vector<Quantity> MakeQuantities() {
    std::vector<Quantity> all = {
        {"Temperature",
         0,
         {{1, 0, "C"},
          {1, kZero_C, "K"},
          {kFahrenheit_C, -32 * kFahrenheit_C, "F"},
          {kFahrenheit_C, kZero_C, "R"}},
         {"C", "K", "F"}},
        {"TemperatureDifference",
         0,
         {{1, 0, "C"}, {1, 0, "K"}, {kFahrenheit_C, 0, "F"}, {kFahrenheit_C, 0, "R"}},
         {"C", "K", "F"}},
        {"Pressure",
         0,
         {{1, 0, "kPa"},
          {0.001, 0, "Pa"},
          {100, 0, "bar"},
          {0.1, 0, "mbar"},
          {kAtm_kPa, 0, "atm"},
          {kPsi_kPa, 0, "psia"},
          {1000, 0, "MPa"},
          {kMmHg_kPa, 0, "mmHg"},
          {kAtm_kPa / 760, 0, "torr"},
          {kGravity * 10, 0, "kg/cm2"}},
         {"kPa", "Pa", "psia"}},
        {"PressureDifference",
         0,
         {{1, 0, "kPa"},
          {0.001, 0, "Pa"},
          {100, 0, "bar"},
          {0.1, 0, "mbar"},
          {kAtm_kPa, 0, "atm"},
          {kPsi_kPa, 0, "psi"},
          {1000, 0, "MPa"},
          {kMmHg_kPa, 0, "mmHg"}},
         {"kPa", "Pa", "psi"}},
        {"MolarFlow",
         0,
         {{1, 0, "kgmole/h"},
          {kHour_s, 0, "kgmole/s"},
          {3.6, 0, "mol/s"},
          {0.001, 0, "mol/h"},
          {kPound_kg, 0, "lbmole/hr"}},
         {"kgmole/h", "mol/s", "lbmole/hr"}},
        {"MassFlow",
         0,
         {{1, 0, "kg/h"},
          {kHour_s, 0, "kg/s"},
          {60, 0, "kg/min"},
          {1000 / kDay_h, 0, "tonne/d"},
          {1000, 0, "tonne/h"},
          {3.6, 0, "g/s"},
          {kPound_kg, 0, "lb/hr"}},
         {"kg/h", "kg/s", "lb/hr"}},
        {"EnergyFlow",
         0,
         {{1, 0, "kJ/h"},
          {kHour_s, 0, "kW"},
          {3.6, 0, "W"},
          {kHour_s * 1000, 0, "MW"},
          {1000, 0, "MJ/h"},
          {kBtu_kJ, 0, "Btu/hr"},
          {kBtu_kJ * 1e6, 0, "MMBtu/hr"},
          {kCalorie_kJ * 1000, 0, "kcal/h"}},
         {"kJ/h", "W", "Btu/hr"}},
        {"Power",
         0,
         {{1, 0, "kJ/h"},
          {kHour_s, 0, "kW"},
          {3.6, 0, "W"},
          {kHour_s * 1000, 0, "MW"},
          {kHorsepower_kJh, 0, "hp"},
          {kBtu_kJ, 0, "Btu/hr"}},
         {"kW", "W", "hp"}},
        {"Energy",
         0,
         {{1, 0, "kJ"},
          {0.001, 0, "J"},
          {1000, 0, "MJ"},
          {kHour_s, 0, "kWh"},
          {kBtu_kJ, 0, "Btu"},
          {kCalorie_kJ * 1000, 0, "kcal"}},
         {"kJ", "J", "Btu"}},
        {"Length",
         0,
         {{1, 0, "m"},
          {0.01, 0, "cm"},
          {0.001, 0, "mm"},
          {1000, 0, "km"},
          {kFoot_m, 0, "ft"},
          {kInch_m, 0, "in"},
          {kFoot_m * 5280, 0, "mile"}},
         {"m", "m", "ft"}},
        {"Area",
         0,
         {{1, 0, "m2"},
          {1e-4, 0, "cm2"},
          {1e-6, 0, "mm2"},
          {kFoot2, 0, "ft2"},
          {kInch_m * kInch_m, 0, "in2"}},
         {"m2", "m2", "ft2"}},
        {"Volume",
         0,
         {{1, 0, "m3"},
          {0.001, 0, "L"},
          {1e-6, 0, "cm3"},
          {kFoot3, 0, "ft3"},
          {kGallon_m3, 0, "USGAL"},
          {kBarrel_m3, 0, "bbl"}},
         {"m3", "m3", "ft3"}},
        {"VolumetricFlow",
         0,
         {{1, 0, "m3/h"},
          {kHour_s, 0, "m3/s"},
          {1 / kDay_h, 0, "m3/d"},
          {3.6, 0, "L/s"},
          {0.06, 0, "L/min"},
          {kFoot3, 0, "ft3/hr"},
          {kGallon_m3 * 60, 0, "USGPM"},
          {kBarrel_m3 / kDay_h, 0, "bbl/d"}},
         {"m3/h", "m3/s", "ft3/hr"}},
        {"Density",
         0,
         {{1, 0, "kg/m3"}, {1000, 0, "g/cm3"}, {1, 0, "g/L"}, {kPound_kg / kFoot3, 0, "lb/ft3"}},
         {"kg/m3", "kg/m3", "lb/ft3"}},
        {"MolarDensity",
         0,
         {{1, 0, "kgmole/m3"},
          {0.001, 0, "mol/m3"},
          {1, 0, "mol/L"},
          {kPound_kg / kFoot3, 0, "lbmole/ft3"}},
         {"kgmole/m3", "mol/m3", "lbmole/ft3"}},
        {"MolarVolume",
         0,
         {{1, 0, "m3/kgmole"},
          {1000, 0, "m3/mol"},
          {1, 0, "L/mol"},
          {0.001, 0, "cm3/mol"},
          {kFoot3 / kPound_kg, 0, "ft3/lbmole"}},
         {"m3/kgmole", "m3/mol", "ft3/lbmole"}},
        {"MolarMass",
         0,
         {{1, 0, "kg/kgmole"}, {1, 0, "g/mol"}, {1000, 0, "kg/mol"}, {1, 0, "lb/lbmole"}},
         {"kg/kgmole", "kg/mol", "lb/lbmole"}},
        {"MolarEnthalpy",
         0,
         {{1, 0, "kJ/kgmole"},
          {1, 0, "J/mol"},
          {1000, 0, "kJ/mol"},
          {kBtu_kJ / kPound_kg, 0, "Btu/lbmole"},
          {kCalorie_kJ * 1000, 0, "cal/mol"}},
         {"kJ/kgmole", "J/mol", "Btu/lbmole"}},
        {"MassEnthalpy",
         0,
         {{1, 0, "kJ/kg"},
          {0.001, 0, "J/kg"},
          {1000, 0, "MJ/kg"},
          {kBtu_kJ / kPound_kg, 0, "Btu/lb"},
          {kCalorie_kJ * 1000, 0, "kcal/kg"}},
         {"kJ/kg", "J/kg", "Btu/lb"}},
        {"MolarEntropy",
         0,
         {{1, 0, "kJ/kgmole-C"},
          {1, 0, "kJ/kgmole-K"},
          {1, 0, "J/mol-K"},
          {kBtu_kJ / kPound_kg / kFahrenheit_C, 0, "Btu/lbmole-F"}},
         {"kJ/kgmole-C", "J/mol-K", "Btu/lbmole-F"}},
        {"MassEntropy",
         0,
         {{1, 0, "kJ/kg-C"},
          {1, 0, "kJ/kg-K"},
          {0.001, 0, "J/kg-K"},
          {kBtu_kJ / kPound_kg / kFahrenheit_C, 0, "Btu/lb-F"}},
         {"kJ/kg-C", "J/kg-K", "Btu/lb-F"}},
        {"MolarHeatCapacity",
         0,
         {{1, 0, "kJ/kgmole-C"},
          {1, 0, "kJ/kgmole-K"},
          {1, 0, "J/mol-K"},
          {kBtu_kJ / kPound_kg / kFahrenheit_C, 0, "Btu/lbmole-F"}},
         {"kJ/kgmole-C", "J/mol-K", "Btu/lbmole-F"}},
        {"MassHeatCapacity",
         0,
         {{1, 0, "kJ/kg-C"},
          {1, 0, "kJ/kg-K"},
          {0.001, 0, "J/kg-K"},
          {kBtu_kJ / kPound_kg / kFahrenheit_C, 0, "Btu/lb-F"}},
         {"kJ/kg-C", "J/kg-K", "Btu/lb-F"}},
        {"Viscosity",
         0,
         {{1, 0, "cP"},
          {1000, 0, "Pa-s"},
          {1, 0, "mPa-s"},
          {100, 0, "P"},
          {kPound_kg / kFoot_m * 1000, 0, "lb/ft-s"}},
         {"cP", "Pa-s", "cP"}},
        {"KinematicViscosity",
         0,
         {{1, 0, "cSt"},
          {1e6, 0, "m2/s"},
          {1, 0, "mm2/s"},
          {100, 0, "St"},
          {kFoot2 * 1e6, 0, "ft2/s"}},
         {"cSt", "m2/s", "cSt"}},
        {"ThermalConductivity",
         0,
         {{1, 0, "W/m-K"},
          {1 / 3.6, 0, "kJ/h-m-C"},
          {1000, 0, "kW/m-K"},
          {kBtu_kJ / 3.6 / kFoot_m / kFahrenheit_C, 0, "Btu/hr-ft-F"}},
         {"W/m-K", "W/m-K", "Btu/hr-ft-F"}},
        {"SurfaceTension",
         0,
         {{1, 0, "dyne/cm"}, {1000, 0, "N/m"}, {1, 0, "mN/m"}},
         {"dyne/cm", "N/m", "dyne/cm"}},
        {"HeatTransferCoefficient",
         0,
         {{1, 0, "kJ/h-m2-C"},
          {3.6, 0, "W/m2-K"},
          {3600, 0, "kW/m2-K"},
          {kBtu_kJ / kFoot2 / kFahrenheit_C, 0, "Btu/hr-ft2-F"}},
         {"kJ/h-m2-C", "W/m2-K", "Btu/hr-ft2-F"}},
        {"UA",
         0,
         {{1, 0, "kJ/C-h"},
          {3.6, 0, "W/K"},
          {3600, 0, "kW/K"},
          {kBtu_kJ / kFahrenheit_C, 0, "Btu/F-hr"}},
         {"kJ/C-h", "W/K", "Btu/F-hr"}},
        {"HeatFlux",
         0,
         {{1, 0, "kJ/h-m2"},
          {3.6, 0, "W/m2"},
          {3600, 0, "kW/m2"},
          {kBtu_kJ / kFoot2, 0, "Btu/hr-ft2"}},
         {"kJ/h-m2", "W/m2", "Btu/hr-ft2"}},
        {"Irradiation", 0, {{1, 0, "kW/m2"}, {0.001, 0, "W/m2"}}, {"kW/m2", "W/m2", "kW/m2"}},
        {"Fraction",
         0,
         {{1, 0, "fraction"}, {0.01, 0, "%"}, {1e-6, 0, "ppm"}},
         {"fraction", "fraction", "fraction"}},
        {"Percent", 0, {{1, 0, "%"}, {100, 0, "fraction"}}, {"%", "%", "%"}},
        {"Time",
         0,
         {{1, 0, "seconds"},
          {60, 0, "minutes"},
          {kHour_s, 0, "hours"},
          {kHour_s * kDay_h, 0, "days"}},
         {"seconds", "seconds", "minutes"}},
        {"Speed",
         0,
         {{1, 0, "m/s"},
          {1 / 3.6, 0, "km/h"},
          {kFoot_m, 0, "ft/s"},
          {kFoot_m * 5280 / kHour_s, 0, "mph"}},
         {"m/s", "m/s", "ft/s"}},
        {"RotationalSpeed",
         0,
         {{1, 0, "rpm"}, {60, 0, "rev/s"}, {60 / kTurn_rad, 0, "rad/s"}},
         {"rpm", "rad/s", "rpm"}},
        {"Frequency", 0, {{1, 0, "Hz"}, {1000, 0, "kHz"}}, {"Hz", "Hz", "Hz"}},
        {"Mass",
         0,
         {{1, 0, "kg"}, {0.001, 0, "g"}, {1000, 0, "tonne"}, {kPound_kg, 0, "lb"}},
         {"kg", "kg", "lb"}},
        {"Moles",
         0,
         {{1, 0, "kgmole"}, {0.001, 0, "mol"}, {kPound_kg, 0, "lbmole"}},
         {"kgmole", "mol", "lbmole"}},
        {"Force",
         0,
         {{1, 0, "N"}, {1000, 0, "kN"}, {kPound_kg * kGravity, 0, "lbf"}},
         {"N", "N", "lbf"}},
        {"Acceleration", 0, {{1, 0, "m/s2"}, {kFoot_m, 0, "ft/s2"}}, {"m/s2", "m/s2", "ft/s2"}},
        {"FoulingFactor",
         0,
         {{1, 0, "C-h-m2/kJ"},
          {1 / 3.6, 0, "K-m2/W"},
          {kFoot2 * kFahrenheit_C / kBtu_kJ, 0, "F-hr-ft2/Btu"}},
         {"C-h-m2/kJ", "K-m2/W", "F-hr-ft2/Btu"}},
        {"Voltage", 0, {{1, 0, "V"}, {1000, 0, "kV"}, {0.001, 0, "mV"}}, {"V", "V", "V"}},
        {"Current", 0, {{1, 0, "A"}, {1000, 0, "kA"}, {0.001, 0, "mA"}}, {"A", "A", "A"}},
        {"Angle", 0, {{1, 0, "degree"}, {360 / kTurn_rad, 0, "rad"}}, {"degree", "rad", "degree"}},
    };
    host::VarType type = 0;
    for (Quantity& quantity : all) quantity.type = ++type;
    return all;
}

}  // namespace

const std::vector<Quantity>& Quantities() {
    static const std::vector<Quantity> all = MakeQuantities();
    return all;
}

const Quantity* FindQuantity(std::string_view name) {
    for (const Quantity& quantity : Quantities()) {
        if (name == quantity.name) return &quantity;
    }
    return nullptr;
}

const Quantity* FindQuantity(host::VarType type) {
    const std::vector<Quantity>& all = Quantities();
    if (type < 1 || type > static_cast<host::VarType>(all.size())) return nullptr;
    return &all[type - 1];
}

const Quantity* FindQuantityOfUnit(std::string_view unit) {
    for (const Quantity& quantity : Quantities()) {
        if (FindUnit(quantity, unit)) return &quantity;
    }
    return nullptr;
}

const host::UnitRecord* FindUnit(const Quantity& quantity, std::string_view name) {
    for (const host::UnitRecord& unit : quantity.units) {
        if (name == unit.name) return &unit;
    }
    return nullptr;
}

}  // namespace fixtop::casehost
