#include "file_units.h"

#include <array>
#include <stdexcept>
#include <string>

namespace fixtop::casehost::importer {

namespace {

constexpr FileUnitRow kRows[] = {
    {FileUnit::none, "", ""},
    {FileUnit::kelvin, "Temperature", "K"},
    {FileUnit::kelvin_difference, "TemperatureDifference", "K"},
    {FileUnit::pascal, "Pressure", "Pa"},
    {FileUnit::pascal_difference, "PressureDifference", "Pa"},
    {FileUnit::inverse_pascal, "", "", 1000.0},     // 1/kPa
    {FileUnit::kelvin_per_pascal, "", "", 1000.0},  // C/kPa
    {FileUnit::mol_per_second, "MolarFlow", "mol/s"},
    {FileUnit::kg_per_second, "MassFlow", "kg/s"},
    {FileUnit::m3_per_second, "VolumetricFlow", "m3/s"},
    {FileUnit::mol_per_m3, "MolarDensity", "mol/m3"},
    {FileUnit::kg_per_m3, "Density", "kg/m3"},
    {FileUnit::kg_per_kmol, "MolarMass", "kg/kgmole"},
    {FileUnit::kilowatt, "EnergyFlow", "kW"},
    {FileUnit::kilowatt_per_m2, "Irradiation", "kW/m2"},
    {FileUnit::kj_per_kg, "MassEnthalpy", "kJ/kg"},
    {FileUnit::kj_per_kmol, "MolarEnthalpy", "kJ/kgmole"},
    {FileUnit::kj_per_kg_kelvin, "MassEntropy", "kJ/kg-K"},
    {FileUnit::kj_per_kmol_kelvin, "MolarEntropy", "kJ/kgmole-K"},
    {FileUnit::kj_per_kg_kelvin_capacity, "MassHeatCapacity", "kJ/kg-K"},
    {FileUnit::kj_per_kmol_kelvin_capacity, "MolarHeatCapacity", "kJ/kgmole-K"},
    {FileUnit::pascal_second, "Viscosity", "Pa-s"},
    {FileUnit::m2_per_second, "KinematicViscosity", "m2/s"},
    {FileUnit::watt_per_metre_kelvin, "ThermalConductivity", "W/m-K"},
    {FileUnit::newton_per_metre, "SurfaceTension", "N/m"},
    {FileUnit::watt_per_m2_kelvin, "HeatTransferCoefficient", "W/m2-K"},
    {FileUnit::metre, "Length", "m"},
    {FileUnit::m2, "Area", "m2"},
    {FileUnit::m3, "Volume", "m3"},
    {FileUnit::metre_per_second, "Speed", "m/s"},
    {FileUnit::second, "Time", "seconds"},
    {FileUnit::rpm, "RotationalSpeed", "rpm"},
    {FileUnit::percent, "Percent", "%"},
    {FileUnit::volt, "Voltage", "V"},
    {FileUnit::ampere, "Current", "A"},
};

constexpr std::size_t kCount = static_cast<std::size_t>(FileUnit::count_);

constexpr bool InOrder() {
    for (std::size_t i = 0; i < kCount; ++i) {
        if (kRows[i].unit != static_cast<FileUnit>(i)) return false;
    }
    return true;
}
static_assert(std::size(kRows) == kCount && InOrder(),
              "one row per unit, in the order of the units");

host::UnitRecord Resolve(const FileUnitRow& row) {
    if (*row.quantity == '\0') return {row.scale, 0.0, ""};
    const Quantity* quantity = FindQuantity(row.quantity);
    const host::UnitRecord* unit = quantity ? FindUnit(*quantity, row.name) : nullptr;
    if (!unit) {
        throw std::logic_error(std::string("no unit ") + row.name + " of " + row.quantity);
    }
    return *unit;
}

std::array<host::UnitRecord, kCount> ResolveAll() {
    std::array<host::UnitRecord, kCount> units;
    for (std::size_t i = 0; i < kCount; ++i) units[i] = Resolve(kRows[i]);
    return units;
}

}  // namespace

std::string_view QuantityOf(FileUnit unit) {
    return kRows[static_cast<std::size_t>(unit)].quantity;
}

double ToCase(double value, FileUnit unit) {
    static const std::array<host::UnitRecord, kCount> units = ResolveAll();
    return ToInternal(value, units[static_cast<std::size_t>(unit)]);
}

}  // namespace fixtop::casehost::importer
