// SPDX-License-Identifier: Apache-2.0
#include "column_parts.h"

#include <algorithm>

#include "casehost/stream_names.h"

namespace fixtop::casehost::importer {

namespace {

constexpr char kCondenser[] = "Condenser";
constexpr char kReboiler[] = "Reboiler";

// As the file names them and as the host does.
constexpr std::pair<const char*, const char*> kCondenserTypes[] = {
    {"Total_Condenser", "Total"}, {"Partial_Condenser", "Partial"}, {"Full_Reflux", "FullReflux"}};

const std::vector<std::string>& LabelsOf(const VariableData& variable, std::size_t dimension = 0) {
    static const std::vector<std::string> none;
    const std::vector<DimensionData>& dimensions = variable.spec->dimensions;
    return dimension < dimensions.size() ? dimensions[dimension].labels : none;
}

// -1 for none.
int IndexOf(const std::vector<std::string>& labels, const std::string& label) {
    const auto found = std::ranges::find(labels, label);
    return found == labels.end() ? -1 : static_cast<int>(found - labels.begin());
}

}  // namespace

Number ValueOf(const ObjectData& object, const std::string& name) {
    const VariableData* variable = FindVariable(object, name);
    return variable ? NumberOf(variable->values[0]) : Number();
}

Number ValueOf(const ObjectData& object, const std::string& name, const std::string& label) {
    const VariableData* variable = FindVariable(object, name);
    const int index = variable ? IndexOf(LabelsOf(*variable), label) : -1;
    return index < 0 ? Number() : NumberOf(variable->values[static_cast<std::size_t>(index)]);
}

bool HasStages(const ObjectData& column) {
    const VariableData* profile = FindVariable(column, "Stage Temperature");
    return profile && !profile->values.empty();
}

ColumnParts::ColumnParts(CaseData& data, const ObjectData& column) : data_(data), column_(column) {
    stages = LabelsOf(*Find("Stage Temperature"));
    for (const CompoundData& compound : data.compounds) compounds.push_back(compound.name);
    for (const PortData& port : column.ports) {
        const bool energy =
            port.role == PortData::Role::energy_in || port.role == PortData::Role::energy_out;
        if (energy) energies.push_back(port.stream);
    }
    feeds = StreamsOf("Feed Stage");
    products = StreamsOf("Product Stage");
    SortProducts();
}

Number ColumnParts::At(const std::string& profile, int stage) const {
    const VariableData* variable = Find(profile);
    const auto index = static_cast<std::size_t>(stage);
    return variable && index < variable->values.size() ? NumberOf(variable->values[index])
                                                       : Number();
}

std::vector<Number> ColumnParts::Fractions(const std::string& profile) const {
    const VariableData& matrix = *Find(profile);
    const std::vector<std::string>& columns = LabelsOf(matrix, 1);
    std::vector<Number> fractions;
    for (std::size_t stage = 0; stage < stages.size(); ++stage) {
        for (const std::string& compound : compounds) {
            const int place = IndexOf(columns, compound);
            const std::size_t index = stage * columns.size() + static_cast<std::size_t>(place);
            fractions.push_back(place < 0 ? Number() : NumberOf(matrix.values[index]));
        }
    }
    return fractions;
}

Number ColumnParts::MolarMass(const std::string& fractions, int stage) const {
    if (!Find(fractions)) return std::nullopt;
    const std::vector<Number> all = Fractions(fractions);
    double mass = 0;
    for (std::size_t i = 0; i < compounds.size(); ++i) {
        const Number fraction = all[static_cast<std::size_t>(stage) * compounds.size() + i];
        const double molar_mass = data_.compounds[i].molar_mass;
        if (!fraction || *fraction == 0) continue;
        if (molar_mass == kEmpty) return std::nullopt;
        mass += *fraction * molar_mass;
    }
    return mass;
}

std::vector<Number> ColumnParts::NetFlows(const std::vector<ColumnStream>& streams) const {
    std::vector<Number> flows(stages.size());
    for (const ColumnStream& stream : streams) {
        Number& flow = flows[static_cast<std::size_t>(stream.stage)];
        const Number more = ValueOf(*stream.object, names::kMolarFlow);
        if (more) flow = flow.value_or(0.0) + *more;
    }
    return flows;
}

bool ColumnParts::HasCondenser() const {
    return stages.front() == kCondenser;
}

bool ColumnParts::HasReboiler() const {
    return stages.size() > 1 && stages.back() == kReboiler;
}

std::vector<int> ColumnParts::Trays() const {
    std::vector<int> trays;
    for (int stage = HasCondenser(); stage <= Bottom() - HasReboiler(); ++stage) {
        trays.push_back(stage);
    }
    return trays;
}

std::string ColumnParts::CondenserType() const {
    const VariableData* type = Find("Condenser Type");
    std::string word = type ? type->values[0].text : "";
    for (const auto& [of_file, of_host] : kCondenserTypes) {
        if (word == of_file) return of_host;
    }
    return word;
}

// A stream that stands at no stage is not told.
std::vector<ColumnStream> ColumnParts::StreamsOf(const std::string& list) {
    std::vector<ColumnStream> streams;
    const VariableData* variable = Find(list);
    const std::size_t count = variable ? variable->values.size() : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Number stage = NumberOf(variable->values[i]);
        const auto has_name = [&](const ObjectData& each) {
            return each.name == LabelsOf(*variable)[i];
        };
        const auto object = std::ranges::find_if(data_.main.objects, has_name);
        if (!stage || object == data_.main.objects.end()) continue;
        streams.push_back({&*object, static_cast<int>(*stage)});
    }
    return streams;
}

void ColumnParts::SortProducts() {
    for (const ColumnStream& product : products) {
        const bool is_vapour = ValueOf(*product.object, names::kVapourFraction).value_or(0) > 0.5;
        if (product.stage == 0 && HasCondenser()) {
            const ObjectData*& liquid = distillate ? heavy_distillate : distillate;
            (is_vapour ? overhead : liquid) = product.object;
        } else if (product.stage == Bottom() && HasReboiler() && !is_vapour) {
            bottoms = product.object;
        } else {
            (is_vapour ? vapour_draws : liquid_draws).push_back(product);
        }
    }
}

}  // namespace fixtop::casehost::importer
