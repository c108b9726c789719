// SPDX-License-Identifier: Apache-2.0
#include "column.h"

#include <memory>
#include <string>
#include <vector>

namespace fixtop::bench {

namespace {

using casehost::ElementNaming;
using casehost::ObjectData;
using casehost::ValueData;
using casehost::ValueKind;
using casehost::VariableData;
using casehost::VariableSpec;
using casehost::VariableState;

struct Profile {
    const char* name;
    const char* quantity;
    double at_top;
    double step;
};

constexpr Profile kReals[] = {{"Stage Temperature", "Temperature", 40, 0.5},
                              {"Stage Pressure", "Pressure", 500, 0.7},
                              {"Stage Liquid Molar Flow", "MolarFlow", 200, 0.1},
                              {"Stage Vapour Molar Flow", "MolarFlow", 300, 0.1}};

VariableData Make(const char* name, ValueKind kind, const char* quantity,
                  std::vector<ValueData> values, bool is_array) {
    auto spec = std::make_shared<VariableSpec>();
    spec->name = name;
    spec->kind = kind;
    spec->quantity = quantity;
    if (is_array) {
        spec->dimensions = {{0, static_cast<int>(values.size()), ElementNaming::number, {}}};
    }
    VariableData variable;
    variable.spec = std::move(spec);
    variable.values = std::move(values);
    return variable;
}

VariableData MakeProfile(const Profile& profile, int stages) {
    std::vector<ValueData> values;
    for (int i = 0; i < stages; ++i) {
        values.push_back({profile.at_top + i * profile.step, "", VariableState::calculated});
    }
    return Make(profile.name, ValueKind::real, profile.quantity, std::move(values), true);
}

VariableData MakeNames(int stages) {
    std::vector<ValueData> names;
    for (int i = 0; i < stages; ++i) {
        const std::string name = i == 0            ? "Condenser"
                                 : i == stages - 1 ? "Reboiler"
                                                   : "Stage " + std::to_string(i);
        names.push_back({casehost::kEmpty, name, VariableState::specified});
    }
    return Make("Stage Name", ValueKind::text, "", std::move(names), true);
}

}  // namespace

casehost::CaseData MakeColumn(int stages) {
    ObjectData profiles;
    profiles.name = kProfiles;
    profiles.type = "TankOpObject";
    profiles.variables.push_back(MakeNames(stages));
    for (const Profile& each : kReals) profiles.variables.push_back(MakeProfile(each, stages));

    ObjectData column;
    column.name = kColumn;
    column.type = "DistillationObject";
    const ValueData trays{stages - 2.0, "", VariableState::specified};
    column.variables.push_back(Make("Number of Trays", ValueKind::real, "", {trays}, false));
    const ValueData link{casehost::kEmpty, kProfiles, VariableState::specified};
    column.variables.push_back(Make("My SubFlowsheet", ValueKind::attachment, "", {link}, false));

    casehost::CaseData plant;
    plant.name = "column of " + std::to_string(stages);
    plant.source = "own";
    plant.main.objects = {std::move(column), std::move(profiles)};
    return plant;
}

}  // namespace fixtop::bench
