// SPDX-License-Identifier: Apache-2.0
#include "process/flowsheet.h"

#include <algorithm>
#include <map>

#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"

namespace fixtop::casehost::process {
namespace {

namespace cn = casehost::names;

double InputNumber(const ValueData& value) {
    return IsInput(value) ? value.number : kEmpty;
}

std::vector<double> InputNumbers(const VariableData& variable) {
    std::vector<double> numbers;
    for (const ValueData& value : variable.values) numbers.push_back(InputNumber(value));
    bool none = std::all_of(numbers.begin(), numbers.end(), [](double v) { return v == kEmpty; });
    return none ? std::vector<double>() : numbers;
}

struct ScalarField {
    const char* name;
    double StreamGiven::*field;
};

constexpr ScalarField kScalars[] = {
    {cn::kTemperature, &StreamGiven::temperature_C},
    {cn::kPressure, &StreamGiven::pressure_kPa},
    {cn::kVapourFraction, &StreamGiven::vapour_fraction},
    {cn::kMolarEnthalpy, &StreamGiven::molar_enthalpy},
    {cn::kMolarFlow, &StreamGiven::molar_flow},
    {cn::kMassFlow, &StreamGiven::mass_flow},
    {cn::kHeatFlow, &StreamGiven::heat_flow},
};

// Fractions in the order of the compounds, whatever order the variable's labels have.
std::vector<double> InputFractions(const VariableData& variable,
                                   const std::vector<CompoundData>& compounds) {
    std::vector<double> numbers = InputNumbers(variable);
    if (numbers.empty()) return numbers;
    std::vector<double> fractions(compounds.size(), kEmpty);
    const auto& dimensions = variable.spec->dimensions;
    const bool labelled = dimensions.size() == 1 && dimensions[0].labels.size() == numbers.size();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        std::size_t place = i;
        if (labelled) {
            const std::string& label = dimensions[0].labels[i];
            place = std::ranges::find(compounds, label, &CompoundData::name) - compounds.begin();
        }
        if (place < fractions.size()) fractions[place] = numbers[i];
    }
    return fractions;
}

StreamGiven ReadStream(const ObjectData& object, const std::vector<CompoundData>& compounds) {
    StreamGiven given;
    for (const VariableData& variable : object.variables) {
        if (!variable.spec || variable.values.empty()) continue;
        const std::string& name = variable.spec->name;
        for (const ScalarField& scalar : kScalars) {
            if (name == scalar.name) given.*scalar.field = InputNumber(variable.values[0]);
        }
        if (name == cn::kCompMoleFrac) given.mole_fractions = InputFractions(variable, compounds);
        if (name == cn::kCompMassFrac) given.mass_fractions = InputFractions(variable, compounds);
    }
    return given;
}

Parameters ReadParameters(const ObjectData& object) {
    Parameters given;
    for (const VariableData& variable : object.variables) {
        if (!variable.spec) continue;
        bool number =
            variable.spec->kind == ValueKind::real || variable.spec->kind == ValueKind::enumeration;
        std::vector<double> numbers = number ? InputNumbers(variable) : std::vector<double>();
        if (!numbers.empty()) given[variable.spec->name] = std::move(numbers);
    }
    return given;
}

bool IsStream(const ObjectData& object) {
    return object.type == words::kMaterialStream || object.type == words::kEnergyStream;
}

class Builder {
 public:
    explicit Builder(CaseData& data) : data_(data) { AddLevel(data.main, ""); }
    Flowsheet Take() { return std::move(sheet_); }

 private:
    using Names = std::map<std::string, int, std::less<>>;

    // Answers the streams of the level by name.
    Names AddLevel(FlowsheetData& level, const std::string& prefix) {
        Names streams;
        for (ObjectData& object : level.objects) {
            if (IsStream(object)) streams.emplace(object.name, AddStream(object, prefix));
        }
        for (ObjectData& object : level.objects) {
            if (IsStream(object)) continue;
            if (object.type == words::kTemplate && object.sub_flowsheet) {
                AddTemplate(object, prefix, streams);
            } else if (!object.ports.empty() || FindUnitModel(object.type)) {
                AddUnit(object, prefix, streams);
            }
        }
        return streams;
    }

    int AddStream(ObjectData& object, const std::string& prefix) {
        StreamNode node;
        node.name = prefix + object.name;
        node.energy = object.type == words::kEnergyStream;
        node.object = &object;
        node.given = ReadStream(object, data_.compounds);
        sheet_.streams.push_back(std::move(node));
        return static_cast<int>(sheet_.streams.size()) - 1;
    }

    void AddUnit(ObjectData& object, const std::string& prefix, const Names& streams) {
        UnitNode unit;
        unit.name = prefix + object.name;
        unit.object = &object;
        unit.model = FindUnitModel(object.type);
        unit.given = ReadParameters(object);
        std::vector<PortData> ports = object.ports;
        std::ranges::stable_sort(ports, {}, &PortData::index);
        const int index = static_cast<int>(sheet_.units.size());
        for (const PortData& port : ports) {
            if (!port.stream.empty()) Connect(unit, index, port, streams);
        }
        if (unit.problem.empty()) unit.problem = CountProblem(unit);
        sheet_.units.push_back(std::move(unit));
    }

    void Connect(UnitNode& unit, int index, const PortData& port, const Names& streams) {
        const bool in = port.role == PortData::Role::feed || port.role == PortData::Role::energy_in;
        const bool energy =
            port.role == PortData::Role::energy_in || port.role == PortData::Role::energy_out;
        auto found = streams.find(port.stream);
        if (found == streams.end()) {
            unit.problem = "stream " + port.stream + " does not exist";
            return;
        }
        StreamNode& stream = sheet_.streams[found->second];
        if (stream.energy != energy) {
            unit.problem = "stream " + port.stream + " is not " +
                           (energy ? "an energy stream" : "a material stream");
            return;
        }
        int& end = in ? stream.taker : stream.maker;
        if (end != kNone) {
            const std::string& other = end == index ? unit.name : sheet_.units[end].name;
            unit.problem = "stream " + port.stream + " is already " +
                           (in ? "a feed" : "a product") + " of " + other;
            return;
        }
        end = index;
        std::vector<int>& list =
            energy ? (in ? unit.energy_in : unit.energy_out) : (in ? unit.feeds : unit.products);
        list.push_back(found->second);
    }

    static std::string CountProblem(const UnitNode& unit) {
        if (!unit.model) return "";
        if (unit.feeds.size() < unit.model->least_feeds) return "a feed is not connected";
        if (unit.feeds.size() > unit.model->most_feeds) return "too many feeds are connected";
        if (unit.products.size() < unit.model->least_products) return "a product is not connected";
        if (unit.products.size() > unit.model->most_products) {
            return "too many products are connected";
        }
        if (unit.energy_in.size() + unit.energy_out.size() > 1) {
            return "more than one energy stream is connected";
        }
        return "";
    }

    void AddTemplate(ObjectData& object, const std::string& prefix, const Names& outer) {
        TemplateNode node{&object, prefix + object.name,  sheet_.units.size(),
                          0,       sheet_.streams.size(), 0};
        Names inner = AddLevel(*object.sub_flowsheet, node.name + "/");
        std::vector<int> entries, exits;
        for (const ObjectData& part : object.sub_flowsheet->objects) {
            if (part.type != words::kMaterialStream) continue;
            int stream = inner.at(part.name);
            if (sheet_.streams[stream].maker == kNone) entries.push_back(stream);
            if (sheet_.streams[stream].taker == kNone) exits.push_back(stream);
        }
        for (const PortData& port : object.ports) {
            auto found = outer.find(port.stream);
            if (found == outer.end()) continue;
            const std::size_t number = static_cast<std::size_t>(port.index);
            if (port.role == PortData::Role::feed && number < entries.size()) {
                AddLink(node.name, found->second, entries[number]);
            } else if (port.role == PortData::Role::product && number < exits.size()) {
                AddLink(node.name, exits[number], found->second);
            }
        }
        node.last_unit = sheet_.units.size();
        node.last_stream = sheet_.streams.size();
        sheet_.templates.push_back(std::move(node));
    }

    void AddLink(const std::string& name, int from, int to) {
        StreamNode& source = sheet_.streams[from];
        StreamNode& target = sheet_.streams[to];
        UnitNode link;
        link.name = name;
        if (source.taker != kNone || target.maker != kNone) {
            link.problem = "stream " + source.name + " can't be joined to " + target.name;
        } else {
            link.feeds = {from};
            link.products = {to};
            source.taker = target.maker = static_cast<int>(sheet_.units.size());
        }
        sheet_.units.push_back(std::move(link));
    }

    CaseData& data_;
    Flowsheet sheet_;
};

}  // namespace

bool IsInput(const ValueData& value) {
    return value.state == VariableState::specified || value.state == VariableState::defaulted ||
           value.state == VariableState::specified_otherwise;
}

Flowsheet BuildFlowsheet(CaseData& data) {
    return Builder(data).Take();
}

}  // namespace fixtop::casehost::process
