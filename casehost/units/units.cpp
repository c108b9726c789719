// SPDX-License-Identifier: Apache-2.0
#include "casehost/units.h"

#include <algorithm>
#include <array>
#include <span>
#include <stdexcept>
#include <string>

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
// divisor of its own where this keeps the number exact. A number's names stand between blanks.
struct Part {
    std::string_view names;
    double number;
    double divisor = 1;
};
constexpr Part kParts[] = {
    {" C K Pa mol gmole s seconds Hz m J W N fraction rev V A ", 1},
    {" F R ", 5, 9},
    {" bar ", 1e5},
    {" atm ", kAtm_Pa},
    {" torr ", kAtm_Pa, 760},
    {" psi psia ", kPsi_Pa},
    {" mmHg ", 13.5951 * kGravity},
    {" kg/cm2 ", 10000 * kGravity},
    {" g L ", 1, 1000},
    {" tonne ", 1000},
    {" lb ", kPound_kg},
    {" lbmole ", 1000 * kPound_kg},
    {" min minutes ", 60},
    {" h hr hours Wh ", kHour_s},
    {" d days ", kDay_s},
    {" ft ", kFoot_m},
    {" in ", kInch_m},
    {" mile ", 5280 * kFoot_m},
    {" mph ", 5280 * kFoot_m, kHour_s},
    {" USGAL ", kGallon_m3},
    {" USGPM ", kGallon_m3, 60},
    {" bbl ", 42 * kGallon_m3},
    {" cal ", kCalorie_J},
    {" Btu ", kBtu_J},
    {" MMBtu ", 1e6 * kBtu_J},
    {" hp ", 550 * kFoot_m* kPound_kg* kGravity},
    {" dyne ", 1, 1e5},
    {" lbf ", kPound_kg* kGravity},
    {" P ", 1, 10},
    {" St ", 1, 10000},
    {" % ", 1, 100},
    {" ppm ", 1, 1e6},
    {" rpm ", 1, 60},
    {" degree ", 1, 360},
    {" rad ", 1, kTurn_rad},
};

// These stand before parts that aren't listed with them: kPa, cm, MW.
constexpr Part kPrefixes[] = {{" k ", 1000}, {" M ", 1e6}, {" m ", 1, 1000}, {" c ", 1, 100}};

const Part* Find(std::span<const Part> parts, std::string_view name) {
    const std::string sought = ' ' + std::string(name) + ' ';
    for (const Part& part : parts) {
        if (part.names.find(sought) != std::string_view::npos) return &part;
    }
    return nullptr;
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

// The default units are told by their places among the units.
struct Row {
    const char* quantity;
    std::array<const char*, 10> units;
    std::array<std::size_t, kUnitSets> defaults;
};
constexpr Row kRows[] = {
    {"Temperature", {"C", "K", "F", "R"}, {0, 1, 2}},
    {"TemperatureDifference", {"C", "K", "F", "R"}, {0, 1, 2}},
    {"Pressure",
     {"kPa", "Pa", "bar", "mbar", "atm", "psia", "MPa", "mmHg", "torr", "kg/cm2"},
     {0, 1, 5}},
    {"PressureDifference", {"kPa", "Pa", "bar", "mbar", "atm", "psi", "MPa", "mmHg"}, {0, 1, 5}},
    {"MolarFlow", {"kgmole/h", "kgmole/s", "mol/s", "mol/h", "lbmole/hr"}, {0, 2, 4}},
    {"MassFlow", {"kg/h", "kg/s", "kg/min", "tonne/d", "tonne/h", "g/s", "lb/hr"}, {0, 1, 6}},
    {"EnergyFlow", {"kJ/h", "kW", "W", "MW", "MJ/h", "Btu/hr", "MMBtu/hr", "kcal/h"}, {0, 2, 5}},
    {"Power", {"kJ/h", "kW", "W", "MW", "hp", "Btu/hr"}, {1, 2, 4}},
    {"Energy", {"kJ", "J", "MJ", "kWh", "Btu", "kcal"}, {0, 1, 4}},
    {"Length", {"m", "cm", "mm", "km", "ft", "in", "mile"}, {0, 0, 4}},
    {"Area", {"m2", "cm2", "mm2", "ft2", "in2"}, {0, 0, 3}},
    {"Volume", {"m3", "L", "cm3", "ft3", "USGAL", "bbl"}, {0, 0, 3}},
    {"VolumetricFlow",
     {"m3/h", "m3/s", "m3/d", "L/s", "L/min", "ft3/hr", "USGPM", "bbl/d"},
     {0, 1, 5}},
    {"Density", {"kg/m3", "g/cm3", "g/L", "lb/ft3"}, {0, 0, 3}},
    {"MolarDensity", {"kgmole/m3", "mol/m3", "mol/L", "lbmole/ft3"}, {0, 1, 3}},
    {"MolarVolume", {"m3/kgmole", "m3/mol", "L/mol", "cm3/mol", "ft3/lbmole"}, {0, 1, 4}},
    {"MolarMass", {"kg/kgmole", "g/mol", "kg/mol", "lb/lbmole"}, {0, 2, 3}},
    {"MolarEnthalpy", {"kJ/kgmole", "J/mol", "kJ/mol", "Btu/lbmole", "cal/mol"}, {0, 1, 3}},
    {"MassEnthalpy", {"kJ/kg", "J/kg", "MJ/kg", "Btu/lb", "kcal/kg"}, {0, 1, 3}},
    {"MolarEntropy", {"kJ/kgmole-C", "kJ/kgmole-K", "J/mol-K", "Btu/lbmole-F"}, {0, 2, 3}},
    {"MassEntropy", {"kJ/kg-C", "kJ/kg-K", "J/kg-K", "Btu/lb-F"}, {0, 2, 3}},
    {"MolarHeatCapacity", {"kJ/kgmole-C", "kJ/kgmole-K", "J/mol-K", "Btu/lbmole-F"}, {0, 2, 3}},
    {"MassHeatCapacity", {"kJ/kg-C", "kJ/kg-K", "J/kg-K", "Btu/lb-F"}, {0, 2, 3}},
    {"Viscosity", {"cP", "Pa-s", "mPa-s", "P", "lb/ft-s"}, {0, 1, 0}},
    {"KinematicViscosity", {"cSt", "m2/s", "mm2/s", "St", "ft2/s"}, {0, 1, 0}},
    {"ThermalConductivity", {"W/m-K", "kJ/h-m-C", "kW/m-K", "Btu/hr-ft-F"}, {0, 0, 3}},
    {"SurfaceTension", {"dyne/cm", "N/m", "mN/m"}, {0, 1, 0}},
    {"HeatTransferCoefficient", {"kJ/h-m2-C", "W/m2-K", "kW/m2-K", "Btu/hr-ft2-F"}, {0, 1, 3}},
    {"UA", {"kJ/C-h", "W/K", "kW/K", "Btu/F-hr"}, {0, 1, 3}},
    {"HeatFlux", {"kJ/h-m2", "W/m2", "kW/m2", "Btu/hr-ft2"}, {0, 1, 3}},
    {"Irradiation", {"kW/m2", "W/m2"}, {0, 1, 0}},
    {"Fraction", {"fraction", "%", "ppm"}, {0, 0, 0}},
    {"Percent", {"%", "fraction"}, {0, 0, 0}},
    {"Time", {"seconds", "minutes", "hours", "days"}, {0, 0, 1}},
    {"Speed", {"m/s", "km/h", "ft/s", "mph"}, {0, 0, 2}},
    {"RotationalSpeed", {"rpm", "rev/s", "rad/s"}, {0, 2, 0}},
    {"Frequency", {"Hz", "kHz"}, {0, 0, 0}},
    {"Mass", {"kg", "g", "tonne", "lb"}, {0, 0, 3}},
    {"Moles", {"kgmole", "mol", "lbmole"}, {0, 1, 2}},
    {"Force", {"N", "kN", "lbf"}, {0, 0, 2}},
    {"Acceleration", {"m/s2", "ft/s2"}, {0, 0, 1}},
    {"FoulingFactor", {"C-h-m2/kJ", "K-m2/W", "F-hr-ft2/Btu"}, {0, 1, 2}},
    {"Voltage", {"V", "kV", "mV"}, {0, 0, 0}},
    {"Current", {"A", "kA", "mA"}, {0, 0, 0}},
    {"Angle", {"degree", "rad"}, {0, 1, 0}},
};

std::vector<Quantity> MakeQuantities() {
    std::vector<Quantity> all;
    for (const Row& row : kRows) {
        Quantity& quantity = all.emplace_back();
        quantity.name = row.quantity;
        quantity.type = static_cast<host::VarType>(all.size());
        for (const std::size_t place : row.defaults) quantity.defaults.push_back(row.units[place]);
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
    const auto found = std::ranges::find(Quantities(), name, &Quantity::name);
    return found == Quantities().end() ? nullptr : &*found;
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
    const auto found = std::ranges::find(quantity.units, name, &host::UnitRecord::name);
    return found == quantity.units.end() ? nullptr : &*found;
}

}  // namespace fixtop::casehost
