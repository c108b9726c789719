// SPDX-License-Identifier: Apache-2.0
#pragma once

// Builders of small cases and checks of balances, for the tests of the process library.

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "casehost/case_data.h"
#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"
#include "process/process_engine.h"

namespace fixtop {

namespace casehost::process::testing {

namespace cn = casehost::names;

struct Constants {
    const char* name;
    double molar_mass, tc, pc, w, volume;
    std::vector<double> cp;
};

inline const std::vector<Constants>& Library() {
    static const std::vector<Constants> rows = {
        {"Methane", 16.043, 190.4, 4600, 0.011, 0.0378, {19.25, 5.213e-2, 1.197e-5, -1.132e-8}},
        {"Ethane", 30.07, 305.4, 4880, 0.099, 0.0550, {5.409, 1.781e-1, -6.938e-5, 8.713e-9}},
        {"Propane", 44.094, 369.8, 4250, 0.153, 0.0758, {-4.224, 3.063e-1, -1.586e-4, 3.215e-8}},
        {"n-Butane", 58.124, 425.2, 3800, 0.199, 0.0966, {9.487, 3.313e-1, -1.108e-4, -2.822e-9}},
        {"n-Hexane", 86.178, 507.5, 3010, 0.299, 0.1316, {-4.413, 5.820e-1, -3.119e-4, 6.494e-8}},
        {"Water", 18.015, 647.3, 22120, 0.344, 0.0181, {32.24, 1.924e-3, 1.055e-5, -3.596e-9}},
        {"Nitrogen", 28.013, 126.2, 3390, 0.039, 0.0347, {31.15, -1.357e-2, 2.680e-5, -1.168e-8}},
        // Monatomic, so that closed formulas of a constant heat capacity hold.
        {"Argon", 39.948, 150.8, 4870, 0.001, 0.0286, {20.786156545}},
    };
    return rows;
}

inline CompoundData Compound(const std::string& name) {
    for (const Constants& row : Library()) {
        if (name != row.name) continue;
        CompoundData c;
        c.name = name;
        c.molar_mass = row.molar_mass;
        c.critical_temperature_K = row.tc;
        c.critical_pressure_kPa = row.pc;
        c.acentric_factor = row.w;
        c.liquid_molar_volume = row.volume;
        c.cp = row.cp;
        return c;
    }
    throw std::invalid_argument(name);
}

inline std::vector<CompoundData> Compounds(std::initializer_list<const char*> names) {
    std::vector<CompoundData> list;
    for (const char* name : names) list.push_back(Compound(name));
    return list;
}

inline VariableData Variable(const std::string& name, const std::vector<double>& values,
                             VariableState state = VariableState::specified,
                             std::vector<DimensionData> dimensions = {}) {
    VariableSpec spec;
    spec.name = name;
    spec.dimensions = std::move(dimensions);
    VariableData variable;
    for (double value : values) {
        variable.values.push_back({value, "", value == kEmpty ? VariableState::missing : state});
    }
    variable.spec = std::make_shared<const VariableSpec>(std::move(spec));
    return variable;
}

using Numbers = std::vector<std::pair<const char*, double>>;

// A case under construction, and after Solve() its results.
class Sample {
 public:
    explicit Sample(std::initializer_list<const char*> compounds) {
        data.compounds = Compounds(compounds);
    }

    ObjectData& Stream(const std::string& name, const Numbers& given = {},
                       const std::vector<double>& fractions = {}) {
        ObjectData stream;
        stream.name = name;
        stream.type = words::kMaterialStream;
        Fill(stream,
             {cn::kTemperature, cn::kPressure, cn::kVapourFraction, cn::kMolarFlow, cn::kMassFlow,
              cn::kMolarEnthalpy, cn::kMolarEntropy, cn::kHeatFlow, cn::kMassDensity,
              cn::kMolarMass},
             given);
        DimensionData by_compound{
            0, static_cast<int>(data.compounds.size()), ElementNaming::attached_object, {}};
        for (const CompoundData& c : data.compounds) by_compound.labels.push_back(c.name);
        DimensionData by_phase{
            0, 3, ElementNaming::enumeration, {cn::kOverall, cn::kVapourPhase, cn::kLiquidPhase}};
        std::vector<double> none(data.compounds.size(), kEmpty);
        stream.variables.push_back(Variable(cn::kCompMoleFrac, fractions.empty() ? none : fractions,
                                            VariableState::specified, {by_compound}));
        stream.variables.push_back(Variable(cn::kPhaseCompMoleFrac,
                                            std::vector<double>(3 * none.size(), kEmpty),
                                            VariableState::missing, {by_phase, by_compound}));
        stream.variables.push_back(Variable(cn::kPhaseFraction, {kEmpty, kEmpty, kEmpty},
                                            VariableState::missing, {by_phase}));
        return Add(std::move(stream));
    }

    ObjectData& Energy(const std::string& name, const Numbers& given = {}) {
        ObjectData stream;
        stream.name = name;
        stream.type = words::kEnergyStream;
        Fill(stream, {cn::kHeatFlow}, given);
        return Add(std::move(stream));
    }

    // `in` and `out` make missing streams of those names.
    ObjectData& Unit(const char* type, const std::string& name, const std::vector<std::string>& in,
                     const std::vector<std::string>& out, const Numbers& given = {}) {
        ObjectData unit;
        unit.name = name;
        unit.type = type;
        auto attach = [&](const std::vector<std::string>& streams, PortData::Role role) {
            for (std::size_t i = 0; i < streams.size(); ++i) {
                if (!Find(streams[i])) Stream(streams[i]);
                unit.ports.push_back({role, static_cast<int>(i), streams[i]});
            }
        };
        attach(in, PortData::Role::feed);
        attach(out, PortData::Role::product);
        Fill(unit,
             {cn::kPressureDrop, cn::kDuty, cn::kProductTemperature, cn::kProductPressure,
              cn::kAdiabaticEfficiency, cn::kUA, cn::kLmtd, cn::kMinimumApproach,
              cn::kTubePressureDrop, cn::kShellPressureDrop},
             given);
        return Add(std::move(unit));
    }

    void Attach(const std::string& unit, PortData::Role role, const std::string& stream) {
        Find(unit)->ports.push_back({role, 0, stream});
    }

    SolveEngine::Outcome Solve() {
        SolveEngine::Outcome outcome = engine.Prepare(data);
        for (int turn = 0; outcome.progress == SolveEngine::Progress::running; ++turn) {
            outcome = engine.Step(turn);
        }
        data = engine.Results();
        return outcome;
    }

    ObjectData* Find(const std::string& path) { return FindIn(data.main, path); }

    const VariableData& Get(const std::string& path, const char* variable) {
        for (const VariableData& v : Find(path)->variables) {
            if (v.spec->name == variable) return v;
        }
        throw std::invalid_argument(path + "." + variable);
    }
    double Number(const std::string& path, const char* variable, std::size_t element = 0) {
        return Get(path, variable).values.at(element).number;
    }
    void Specify(const std::string& path, const char* variable, double value,
                 std::size_t element = 0) {
        for (VariableData& v : Find(path)->variables) {
            if (v.spec->name == variable) {
                v.values.at(element) = {value, "", VariableState::specified};
            }
        }
    }

    CaseData data;
    ProcessEngine engine;

 private:
    static void Fill(ObjectData& object, std::initializer_list<const char*> names,
                     const Numbers& given) {
        std::map<std::string, double> values(given.begin(), given.end());
        for (const char* name : names) values.emplace(name, kEmpty);
        for (const auto& [name, value] : values)
            object.variables.push_back(Variable(name, {value}));
    }
    static ObjectData* FindIn(FlowsheetData& level, const std::string& path) {
        std::size_t slash = path.find('/');
        for (ObjectData& object : level.objects) {
            if (object.name != path.substr(0, slash)) continue;
            if (slash == std::string::npos) return &object;
            return FindIn(*object.sub_flowsheet, path.substr(slash + 1));
        }
        return nullptr;
    }
    ObjectData& Add(ObjectData object) {
        data.main.objects.push_back(std::move(object));
        return data.main.objects.back();
    }
};

// Residuals of a set of feeds and products, relative to what flows in.
struct Balance {
    double mass = 0;
    double component = 0;  // the worst
    double energy = 0;
};

inline Balance CheckBalance(Sample& sample, const std::vector<std::string>& in,
                            const std::vector<std::string>& out, double energy_in = 0) {
    const std::size_t count = sample.data.compounds.size();
    std::vector<double> moles(count, 0.0), scale(count, 0.0);
    double mass = 0, mass_scale = 0, energy = energy_in, energy_scale = std::abs(energy_in);
    auto add = [&](const std::string& stream, double sign) {
        double flow = sample.Number(stream, cn::kMolarFlow);
        mass += sign * sample.Number(stream, cn::kMassFlow);
        mass_scale += sample.Number(stream, cn::kMassFlow);
        energy += sign * flow * sample.Number(stream, cn::kMolarEnthalpy);
        energy_scale += std::abs(flow * sample.Number(stream, cn::kMolarEnthalpy));
        for (std::size_t i = 0; i < count; ++i) {
            double part = flow * sample.Number(stream, cn::kCompMoleFrac, i);
            moles[i] += sign * part;
            scale[i] += part;
        }
    };
    for (const std::string& stream : in) add(stream, 1);
    for (const std::string& stream : out) add(stream, -1);
    Balance balance{std::abs(mass) / mass_scale, 0, std::abs(energy) / energy_scale};
    for (std::size_t i = 0; i < count; ++i) {
        if (scale[i] > 0)
            balance.component = std::max(balance.component, std::abs(moles[i]) / scale[i]);
    }
    return balance;
}

// Mass, component and energy balance close to 1e-9.
inline void ExpectBalanced(Sample& sample, const std::vector<std::string>& in,
                           const std::vector<std::string>& out, double energy_in = 0) {
    const Balance balance = CheckBalance(sample, in, out, energy_in);
    EXPECT_LT(balance.mass, 1e-9);
    EXPECT_LT(balance.component, 1e-9);
    EXPECT_LT(balance.energy, 1e-9);
}

}  // namespace casehost::process::testing

}  // namespace fixtop
