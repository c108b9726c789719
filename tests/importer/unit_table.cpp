// The units that the reader asks for, in builds without the case host's own table.
#include "casehost/units.h"

namespace casehost {

const std::vector<Quantity>& Quantities() {
    static const std::vector<Quantity> all = {
        {"Temperature", 1, {{1, 0, "C"}, {1, -273.15, "K"}}, {"C"}},
        {"TemperatureDifference", 2, {{1, 0, "C"}, {1, 0, "K"}}, {"C"}},
        {"Pressure", 3, {{1, 0, "kPa"}, {0.001, 0, "Pa"}}, {"kPa"}},
        {"PressureDifference", 4, {{1, 0, "kPa"}, {0.001, 0, "Pa"}}, {"kPa"}},
        {"MolarFlow", 5, {{1, 0, "kgmole/h"}, {3.6, 0, "mol/s"}}, {"kgmole/h"}},
        {"MassFlow", 6, {{1, 0, "kg/h"}, {3600, 0, "kg/s"}}, {"kg/h"}},
        {"VolumetricFlow", 7, {{1, 0, "m3/h"}, {3600, 0, "m3/s"}}, {"m3/h"}},
        {"MolarDensity", 8, {{1, 0, "kgmole/m3"}, {0.001, 0, "mol/m3"}}, {"kgmole/m3"}},
        {"Density", 9, {{1, 0, "kg/m3"}}, {"kg/m3"}},
        {"MolarMass", 10, {{1, 0, "kg/kgmole"}}, {"kg/kgmole"}},
        {"EnergyFlow", 11, {{1, 0, "kJ/h"}, {3600, 0, "kW"}}, {"kJ/h"}},
        {"Irradiation", 12, {{1, 0, "kW/m2"}}, {"kW/m2"}},
        {"MassEnthalpy", 13, {{1, 0, "kJ/kg"}}, {"kJ/kg"}},
        {"MolarEnthalpy", 14, {{1, 0, "kJ/kgmole"}}, {"kJ/kgmole"}},
        {"MassEntropy", 15, {{1, 0, "kJ/kg-C"}, {1, 0, "kJ/kg-K"}}, {"kJ/kg-C"}},
        {"MolarEntropy", 16, {{1, 0, "kJ/kgmole-C"}, {1, 0, "kJ/kgmole-K"}}, {"kJ/kgmole-C"}},
        {"MassHeatCapacity", 17, {{1, 0, "kJ/kg-C"}, {1, 0, "kJ/kg-K"}}, {"kJ/kg-C"}},
        {"MolarHeatCapacity", 18, {{1, 0, "kJ/kgmole-C"}, {1, 0, "kJ/kgmole-K"}}, {"kJ/kgmole-C"}},
        {"Viscosity", 19, {{1, 0, "cP"}, {1000, 0, "Pa-s"}}, {"cP"}},
        {"KinematicViscosity", 20, {{1, 0, "cSt"}, {1e6, 0, "m2/s"}}, {"cSt"}},
        {"ThermalConductivity", 21, {{1, 0, "W/m-K"}}, {"W/m-K"}},
        {"SurfaceTension", 22, {{1, 0, "dyne/cm"}, {1000, 0, "N/m"}}, {"dyne/cm"}},
        {"HeatTransferCoefficient", 23, {{1, 0, "kJ/h-m2-C"}, {3.6, 0, "W/m2-K"}}, {"kJ/h-m2-C"}},
        {"Length", 24, {{1, 0, "m"}}, {"m"}},
        {"Area", 25, {{1, 0, "m2"}}, {"m2"}},
        {"Volume", 26, {{1, 0, "m3"}}, {"m3"}},
        {"Speed", 27, {{1, 0, "m/s"}}, {"m/s"}},
        {"Time", 28, {{1, 0, "seconds"}}, {"seconds"}},
        {"RotationalSpeed", 29, {{1, 0, "rpm"}}, {"rpm"}},
        {"Percent", 30, {{1, 0, "%"}}, {"%"}},
        {"Voltage", 31, {{1, 0, "V"}}, {"V"}},
        {"Current", 32, {{1, 0, "A"}}, {"A"}},
    };
    return all;
}

const Quantity* FindQuantity(std::string_view name) {
    for (const Quantity& quantity : Quantities()) {
        if (name == quantity.name) return &quantity;
    }
    return nullptr;
}

const Quantity* FindQuantity(host::VarType type) {
    for (const Quantity& quantity : Quantities()) {
        if (type == quantity.type) return &quantity;
    }
    return nullptr;
}

const host::UnitRecord* FindUnit(const Quantity& quantity, std::string_view name) {
    for (const host::UnitRecord& unit : quantity.units) {
        if (name == unit.name) return &unit;
    }
    return nullptr;
}

}  // namespace casehost
