// SPDX-License-Identifier: Apache-2.0
// What the streams of a vessel tell of it. They are read by then, so the numbers are the case's.

#include <algorithm>
#include <unordered_map>

#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"
#include "object_sheet.h"
#include "readers.h"

namespace fixtop::casehost::importer {

namespace {

using Role = PortData::Role;
using StreamIndex = std::unordered_map<std::string_view, const ObjectData*>;

constexpr FileUnit kFlow{"MolarFlow", "kgmole/h"};

// The sum of those that are there.
void AddTo(Number& sum, Number value) {
    if (value) sum = sum.value_or(0.0) + *value;
}

class Vessel {
 public:
    Vessel(Reading& reading, const StreamIndex& streams, ObjectData& object)
        : reading_(reading), streams_(streams), object_(object), sheet_(reading, object) {}

    // The names by which its phases go: a vessel gives its vapour off first.
    void WriteStreams() {
        sheet_.Attachment("Feed", NameOf(Role::feed, 0));
        sheet_.Attachment("Vapour", NameOf(Role::product, 0));
        sheet_.Attachment("Liquid", NameOf(Role::product, 1));
    }
    void WriteConditions() {
        const auto first = [this](const char* name) {
            for (const ObjectData* product : Connected(Role::product)) {
                const VariableData* variable = FindVariable(*product, name);
                if (variable) return NumberOf(variable->values[0]);
            }
            return Number();
        };
        sheet_.Real("Vessel Temperature", {"Temperature", "C"}, first(names::kTemperature));
        sheet_.Real("Vessel Pressure", {"Pressure", "kPa"}, first(names::kPressure));
    }
    void WriteBalance() {
        const std::vector<Number> in = CompoundFlows(Role::feed);
        const std::vector<Number> out = CompoundFlows(Role::product);
        std::vector<Number> made(in.size());
        std::vector<Number> fractions = out;
        Number total;
        for (std::size_t i = 0; i < in.size(); ++i) {
            if (in[i] && out[i]) made[i] = *out[i] - *in[i];
            AddTo(total, out[i]);
        }
        for (Number& fraction : fractions) {
            if (fraction) fraction = *fraction / *total;
        }
        WriteCompounds("Total Inflow", kFlow, in);
        WriteCompounds("Total Reaction", kFlow, made);
        WriteCompounds("Total Outflow", kFlow, out);
        WriteCompounds("Vessel Mole Frac", file_unit::none, fractions);
    }

 private:
    std::string NameOf(Role role, int index) const {
        const auto found = std::ranges::find_if(object_.ports, [&](const PortData& port) {
            return port.role == role && port.index == index;
        });
        return found == object_.ports.end() ? "" : found->stream;
    }
    std::vector<const ObjectData*> Connected(Role role) const {
        std::vector<const ObjectData*> connected;
        for (const PortData& port : object_.ports) {
            if (port.role == role) connected.push_back(streams_.at(port.stream));
        }
        return connected;
    }
    std::vector<Number> CompoundFlows(Role role) const {
        std::vector<Number> sums(reading_.compounds.size());
        for (const ObjectData* stream : Connected(role)) {
            const VariableData* flows = FindVariable(*stream, "Comp Molar Flow");
            if (!flows) continue;
            for (std::size_t i = 0; i < sums.size(); ++i)
                AddTo(sums[i], NumberOf(flows->values[i]));
        }
        return sums;
    }
    void WriteCompounds(const char* name, FileUnit unit, const std::vector<Number>& values) {
        sheet_.Array(name, unit, {LabelledBy(reading_.compounds)}, values);
    }

    Reading& reading_;
    const StreamIndex& streams_;
    ObjectData& object_;
    ObjectSheet sheet_;
};

}  // namespace

void ReadVesselStreams(Reading& reading, std::vector<ObjectData>& objects) {
    StreamIndex streams;
    for (const ObjectData& object : objects) streams.emplace(object.name, &object);
    for (ObjectData& object : objects) {
        const bool reacts =
            ListHolds("ConversionReactorOpObject|EquilibriumReactorOpObject|GibbsReactorOpObject",
                      object.type);
        if (!reacts && object.type != words::kSeparator) continue;
        Vessel vessel(reading, streams, object);
        vessel.WriteStreams();
        vessel.WriteConditions();
        if (reacts) vessel.WriteBalance();
    }
}

}  // namespace fixtop::casehost::importer
