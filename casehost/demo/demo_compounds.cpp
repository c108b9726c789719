#include "demo/demo_compounds.h"

namespace fixtop::casehost::demo {

namespace {

struct Row {
    const char* name;
    const char* formula;
    double molar_mass;  // kg/kgmole
    double boiling_K;
    double critical_K;
    double critical_bar;
    double acentric;
    double cp[4];  // kJ/(kgmole K), T in K
};

constexpr Row kRows[] = {
    {"Nitrogen", "N2", 28.013, 77.4, 126.2, 33.9, 0.039, {31.15, -1.357e-2, 2.680e-5, -1.168e-8}},
    {"CO2", "CO2", 44.010, 194.7, 304.1, 73.8, 0.239, {19.80, 7.344e-2, -5.602e-5, 1.715e-8}},
    {"Methane", "CH4", 16.043, 111.6, 190.4, 46.0, 0.011, {19.25, 5.213e-2, 1.197e-5, -1.132e-8}},
    {"Ethane", "C2H6", 30.070, 184.6, 305.4, 48.8, 0.099, {5.409, 1.781e-1, -6.938e-5, 8.713e-9}},
    {"Propane", "C3H8", 44.094, 231.1, 369.8, 42.5, 0.153, {-4.224, 3.063e-1, -1.586e-4, 3.215e-8}},
    {"n-Butane",
     "C4H10",
     58.124,
     272.7,
     425.2,
     38.0,
     0.199,
     {9.487, 3.313e-1, -1.108e-4, -2.822e-9}},
    {"n-Pentane",
     "C5H12",
     72.151,
     309.2,
     469.7,
     33.7,
     0.251,
     {-3.626, 4.873e-1, -2.580e-4, 5.305e-8}},
    {"H2O", "H2O", 18.015, 373.2, 647.3, 221.2, 0.344, {32.24, 1.924e-3, 1.055e-5, -3.596e-9}},
};

constexpr double kBar_kPa = 100;

}  // namespace

std::vector<CompoundData> Compounds() {
    std::vector<CompoundData> compounds;
    for (const Row& row : kRows) {
        CompoundData& compound = compounds.emplace_back();
        compound.name = row.name;
        compound.formula = row.formula;
        compound.molar_mass = row.molar_mass;
        compound.normal_boiling_point_K = row.boiling_K;
        compound.critical_temperature_K = row.critical_K;
        compound.critical_pressure_kPa = row.critical_bar * kBar_kPa;
        compound.acentric_factor = row.acentric;
        compound.cp.assign(row.cp, row.cp + 4);
    }
    return compounds;
}

}  // namespace fixtop::casehost::demo
