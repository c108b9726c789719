// SPDX-License-Identifier: Apache-2.0
#include "casehost/units.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>

namespace fixtop::casehost {

namespace {

// The defining constants from which every unit below follows.
constexpr double kPound_kg = 0.45359237;  // international avoirdupois pound
constexpr double kFoot_m = 0.3048;        // international foot
constexpr double kInch_m = kFoot_m / 12;
constexpr double kGravity = 9.80665;  // standard gravity, m/s2
constexpr double kAtm_Pa = 101325;
constexpr double kPsi_Pa = kPound_kg * kGravity / (kInch_m * kInch_m);
constexpr double kBtu_J = 1055.05585262;  // International Table
constexpr double kCalorie_J = 4.1868;     // International Table
constexpr double kZero_C = -273.15;
constexpr double kHour_s = 3600;
constexpr double kDay_s = 24 * kHour_s;
constexpr double kGallon_m3 = 231 * kInch_m * kInch_m * kInch_m;  // US liquid gallon
constexpr double kTurn_rad = 6.283185307179586476925;

// The parts that names of units are made of: numbers in kg, m, s, mol, J, K and turns, with a
// divisor of its own where this keeps the number exact.
struct Part {
    const char* name;
    double number;
    double divisor = 1;
};
constexpr Part kParts[] = {
    {"C", 1},
    {"K", 1},
    {"F", 5, 9},
    {"R", 5, 9},
    {"Pa", 1},
    {"bar", 1e5},
    {"atm", kAtm_Pa},
    {"torr", kAtm_Pa, 760},
    {"psi", kPsi_Pa},
    {"psia", kPsi_Pa},
    {"mmHg", 13.5951 * kGravity},
    {"kg/cm2", 10000 * kGravity},
    {"g", 1, 1000},
    {"tonne", 1000},
    {"lb", kPound_kg},
    {"mol", 1},
    {"gmole", 1},
    {"lbmole", 1000 * kPound_kg},
    {"s", 1},
    {"min", 60},
    {"h", kHour_s},
    {"hr", kHour_s},
    {"d", kDay_s},
    {"seconds", 1},
    {"minutes", 60},
    {"hours", kHour_s},
    {"days", kDay_s},
    {"Hz", 1},
    {"m", 1},
    {"ft", kFoot_m},
    {"in", kInch_m},
    {"mile", 5280 * kFoot_m},
    {"mph", 5280 * kFoot_m, kHour_s},
    {"L", 1, 1000},
    {"USGAL", kGallon_m3},
    {"USGPM", kGallon_m3, 60},
    {"bbl", 42 * kGallon_m3},
    {"J", 1},
    {"cal", kCalorie_J},
    {"Btu", kBtu_J},
    {"MMBtu", 1e6 * kBtu_J},
    {"W", 1},
    {"Wh", kHour_s},
    {"hp", 550 * kFoot_m* kPound_kg* kGravity},
    {"N", 1},
    {"dyne", 1, 1e5},
    {"lbf", kPound_kg* kGravity},
    {"P", 1, 10},
    {"St", 1, 10000},
    {"fraction", 1},
    {"%", 1, 100},
    {"ppm", 1, 1e6},
    {"rev", 1},
    {"rpm", 1, 60},
    {"degree", 1, 360},
    {"rad", 1, kTurn_rad},
    {"V", 1},
    {"A", 1},
};

// These stand before parts that aren't listed with them: kPa, cm, MW.
constexpr Part kPrefixes[] = {{"k", 1000}, {"M", 1e6}, {"m", 1, 1000}, {"c", 1, 100}};

template <std::size_t count>
const Part* Find(const Part (&parts)[count], std::string_view name) {
    const auto found = std::find_if(std::begin(parts), std::end(parts),
                                    [&](const Part& part) { return name == part.name; });
    return found == std::end(parts) ? nullptr : found;
}

Part PartOf(std::string_view name) {
    if (const Part* part = Find(kParts, name)) return *part;
    const Part* prefix = Find(kPrefixes, name.substr(0, 1));
    const Part* part = Find(kParts, name.substr(1));
    if (!prefix || !part) throw std::logic_error("no part of a unit: " + std::string(name));
    return {"", prefix->number * part->number, prefix->divisor * part->divisor};
}

// A unit by its name: "kJ/h-m2-C" is a kJ over the product of h, m2 and C.
Part Value(std::string_view unit) {
    if (const Part* whole = Find(kParts, unit)) return *whole;
    Part value = {"", 1};
    for (bool over = false; !unit.empty();) {
        const std::size_t end = std::min(unit.find_first_of("-/"), unit.size());
        std::string_view name = unit.substr(0, end);
        const bool power = name.back() == '2' || name.back() == '3';
        const int times = power ? name.back() - '0' : 1;
        if (power) name.remove_suffix(1);
        const Part part = PartOf(name);
        for (int i = 0; i < times; ++i) {
            (over ? value.divisor : value.number) *= part.number;
            (over ? value.number : value.divisor) *= part.divisor;
        }
        over = over || (end < unit.size() && unit[end] == '/');
        unit.remove_prefix(std::min(end + 1, unit.size()));
    }
    return value;
}

// The zeros of scales are the temperatures' alone.
double OffsetOf(std::string_view quantity, std::string_view unit) {
    if (quantity != "Temperature" || unit == "C") return 0;
    return unit == "F" ? -32 * 5.0 / 9.0 : kZero_C;
}

struct Row {
    const char* quantity;
    std::array<const char*, 10> units;
    std::array<const char*, kUnitSets> defaults;
};
constexpr Row kRows[] = {
    {"Temperature", {"C", "K", "F", "R"}, {"C", "K", "F"}},
    {"TemperatureDifference", {"C", "K", "F", "R"}, {"C", "K", "F"}},
    {"Pressure",
     {"kPa", "Pa", "bar", "mbar", "atm", "psia", "MPa", "mmHg", "torr", "kg/cm2"},
     {"kPa", "Pa", "psia"}},
    {"PressureDifference",
     {"kPa", "Pa", "bar", "mbar", "atm", "psi", "MPa", "mmHg"},
     {"kPa", "Pa", "psi"}},
    {"MolarFlow",
     {"kgmole/h", "kgmole/s", "mol/s", "mol/h", "lbmole/hr"},
     {"kgmole/h", "mol/s", "lbmole/hr"}},
    {"MassFlow",
     {"kg/h", "kg/s", "kg/min", "tonne/d", "tonne/h", "g/s", "lb/hr"},
     {"kg/h", "kg/s", "lb/hr"}},
    {"EnergyFlow",
     {"kJ/h", "kW", "W", "MW", "MJ/h", "Btu/hr", "MMBtu/hr", "kcal/h"},
     {"kJ/h", "W", "Btu/hr"}},
    {"Power", {"kJ/h", "kW", "W", "MW", "hp", "Btu/hr"}, {"kW", "W", "hp"}},
    {"Energy", {"kJ", "J", "MJ", "kWh", "Btu", "kcal"}, {"kJ", "J", "Btu"}},
    {"Length", {"m", "cm", "mm", "km", "ft", "in", "mile"}, {"m", "m", "ft"}},
    {"Area", {"m2", "cm2", "mm2", "ft2", "in2"}, {"m2", "m2", "ft2"}},
    {"Volume", {"m3", "L", "cm3", "ft3", "USGAL", "bbl"}, {"m3", "m3", "ft3"}},
    {"VolumetricFlow",
     {"m3/h", "m3/s", "m3/d", "L/s", "L/min", "ft3/hr", "USGPM", "bbl/d"},
     {"m3/h", "m3/s", "ft3/hr"}},
    {"Density", {"kg/m3", "g/cm3", "g/L", "lb/ft3"}, {"kg/m3", "kg/m3", "lb/ft3"}},
    {"MolarDensity",
     {"kgmole/m3", "mol/m3", "mol/L", "lbmole/ft3"},
     {"kgmole/m3", "mol/m3", "lbmole/ft3"}},
    {"MolarVolume",
     {"m3/kgmole", "m3/mol", "L/mol", "cm3/mol", "ft3/lbmole"},
     {"m3/kgmole", "m3/mol", "ft3/lbmole"}},
    {"MolarMass",
     {"kg/kgmole", "g/mol", "kg/mol", "lb/lbmole"},
     {"kg/kgmole", "kg/mol", "lb/lbmole"}},
    {"MolarEnthalpy",
     {"kJ/kgmole", "J/mol", "kJ/mol", "Btu/lbmole", "cal/mol"},
     {"kJ/kgmole", "J/mol", "Btu/lbmole"}},
    {"MassEnthalpy", {"kJ/kg", "J/kg", "MJ/kg", "Btu/lb", "kcal/kg"}, {"kJ/kg", "J/kg", "Btu/lb"}},
    {"MolarEntropy",
     {"kJ/kgmole-C", "kJ/kgmole-K", "J/mol-K", "Btu/lbmole-F"},
     {"kJ/kgmole-C", "J/mol-K", "Btu/lbmole-F"}},
    {"MassEntropy",
     {"kJ/kg-C", "kJ/kg-K", "J/kg-K", "Btu/lb-F"},
     {"kJ/kg-C", "J/kg-K", "Btu/lb-F"}},
    {"MolarHeatCapacity",
     {"kJ/kgmole-C", "kJ/kgmole-K", "J/mol-K", "Btu/lbmole-F"},
     {"kJ/kgmole-C", "J/mol-K", "Btu/lbmole-F"}},
    {"MassHeatCapacity",
     {"kJ/kg-C", "kJ/kg-K", "J/kg-K", "Btu/lb-F"},
     {"kJ/kg-C", "J/kg-K", "Btu/lb-F"}},
    {"Viscosity", {"cP", "Pa-s", "mPa-s", "P", "lb/ft-s"}, {"cP", "Pa-s", "cP"}},
    {"KinematicViscosity", {"cSt", "m2/s", "mm2/s", "St", "ft2/s"}, {"cSt", "m2/s", "cSt"}},
    {"ThermalConductivity",
     {"W/m-K", "kJ/h-m-C", "kW/m-K", "Btu/hr-ft-F"},
     {"W/m-K", "W/m-K", "Btu/hr-ft-F"}},
    {"SurfaceTension", {"dyne/cm", "N/m", "mN/m"}, {"dyne/cm", "N/m", "dyne/cm"}},
    {"HeatTransferCoefficient",
     {"kJ/h-m2-C", "W/m2-K", "kW/m2-K", "Btu/hr-ft2-F"},
     {"kJ/h-m2-C", "W/m2-K", "Btu/hr-ft2-F"}},
    {"UA", {"kJ/C-h", "W/K", "kW/K", "Btu/F-hr"}, {"kJ/C-h", "W/K", "Btu/F-hr"}},
    {"HeatFlux", {"kJ/h-m2", "W/m2", "kW/m2", "Btu/hr-ft2"}, {"kJ/h-m2", "W/m2", "Btu/hr-ft2"}},
    {"Irradiation", {"kW/m2", "W/m2"}, {"kW/m2", "W/m2", "kW/m2"}},
    {"Fraction", {"fraction", "%", "ppm"}, {"fraction", "fraction", "fraction"}},
    {"Percent", {"%", "fraction"}, {"%", "%", "%"}},
    {"Time", {"seconds", "minutes", "hours", "days"}, {"seconds", "seconds", "minutes"}},
    {"Speed", {"m/s", "km/h", "ft/s", "mph"}, {"m/s", "m/s", "ft/s"}},
    {"RotationalSpeed", {"rpm", "rev/s", "rad/s"}, {"rpm", "rad/s", "rpm"}},
    {"Frequency", {"Hz", "kHz"}, {"Hz", "Hz", "Hz"}},
    {"Mass", {"kg", "g", "tonne", "lb"}, {"kg", "kg", "lb"}},
    {"Moles", {"kgmole", "mol", "lbmole"}, {"kgmole", "mol", "lbmole"}},
    {"Force", {"N", "kN", "lbf"}, {"N", "N", "lbf"}},
    {"Acceleration", {"m/s2", "ft/s2"}, {"m/s2", "m/s2", "ft/s2"}},
    {"FoulingFactor",
     {"C-h-m2/kJ", "K-m2/W", "F-hr-ft2/Btu"},
     {"C-h-m2/kJ", "K-m2/W", "F-hr-ft2/Btu"}},
    {"Voltage", {"V", "kV", "mV"}, {"V", "V", "V"}},
    {"Current", {"A", "kA", "mA"}, {"A", "A", "A"}},
    {"Angle", {"degree", "rad"}, {"degree", "rad", "degree"}},
};

std::vector<Quantity> MakeQuantities() {
    std::vector<Quantity> all;
    for (const Row& row : kRows) {
        Quantity& quantity = all.emplace_back();
        quantity.name = row.quantity;
        quantity.type = static_cast<host::VarType>(all.size());
        quantity.defaults.assign(row.defaults.begin(), row.defaults.end());
        const Part internal = Value(row.units[0]);
        for (const char* unit : row.units) {
            if (!unit) break;
            const Part value = Value(unit);
            const double factor =
                value.number * internal.divisor / (value.divisor * internal.number);
            quantity.units.push_back({factor, OffsetOf(row.quantity, unit), unit});
        }
    }
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
