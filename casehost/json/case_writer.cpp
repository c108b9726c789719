// Case data as JSON text.

#include <filesystem>
#include <fstream>
#include <unordered_map>

#include "casehost/case_file.h"
#include "casehost/file_path.h"
#include "casehost/units.h"
#include "json/basis_json.h"
#include "json/words.h"

namespace casehost {

namespace {

using json::kNamingWords;
using json::kRoleWords;
using json::kStateWords;
using json::kStatusWords;
using json::Word;

bool IsUnset(const VariableData& variable) {
    static const ValueData unset;
    for (const ValueData& value : variable.values) {
        if (!(value == unset)) return false;
    }
    return true;
}

class TextWriter : private json::JsonText {
 public:
    std::string Write(const CaseData& data);

 private:
    // Shapes are listed before the objects that use them, under names given in order of appearance.
    void CollectShapes(const std::vector<ObjectData>& objects);
    const std::string& ShapeOf(const ObjectData& object);

    void Basics(const CaseData& data, bool& first);
    void Compounds(const std::vector<CompoundData>& compounds, bool& first);
    void Shapes(bool& first);
    void Spec(const VariableSpec& spec);
    void Dimensions(const std::vector<DimensionData>& dimensions);
    void Texts(const std::vector<std::string>& texts);
    void Objects(std::string_view key, const std::vector<ObjectData>& objects, int depth,
                 bool& first);
    void Object(const ObjectData& object, int depth);
    void Variables(const ObjectData& object, int depth, bool& first);
    void Values(const VariableData& variable);
    void Value(const VariableSpec& spec, const ValueData& value);
    void Ports(const std::vector<PortData>& ports);

    std::vector<std::pair<std::string, const ObjectData*>> shapes_;
    std::unordered_map<const VariableSpec*, std::size_t> spec_ids_;
    std::unordered_multimap<std::string, std::pair<const VariableSpec*, std::size_t>>
        specs_by_name_;
    std::unordered_map<std::string, std::size_t> shape_by_key_;
    std::unordered_map<std::string, int> shapes_of_type_;
};

std::string TextWriter::Write(const CaseData& data) {
    const std::vector<ObjectData>* lists[] = {&data.main.objects, &data.utilities,
                                              &data.data_tables, &data.reactions, &data.published};
    for (const auto* list : lists) CollectShapes(*list);
    out_ = "{";
    bool first = true;
    Basics(data, first);
    Compounds(data.compounds, first);
    Line(1, first);
    Key("basis");
    json::WriteBasis(*this, data.basis, 1);
    Shapes(first);
    Line(1, first);
    Key("flowsheet");
    out_ += '{';
    bool inner = true;
    Objects("objects", data.main.objects, 2, inner);
    out_ += "\n  }";
    Objects("utilities", data.utilities, 1, first);
    Objects("dataTables", data.data_tables, 1, first);
    Objects("reactions", data.reactions, 1, first);
    Objects("published", data.published, 1, first);
    out_ += "\n}\n";
    return std::move(out_);
}

void TextWriter::CollectShapes(const std::vector<ObjectData>& objects) {
    for (const ObjectData& object : objects) {
        ShapeOf(object);
        if (object.sub_flowsheet) CollectShapes(object.sub_flowsheet->objects);
    }
}

// Equal specs get one number whether they are shared or not, so that the text depends on the data
// alone.
const std::string& TextWriter::ShapeOf(const ObjectData& object) {
    std::string key = object.type;
    for (const VariableData& variable : object.variables) {
        const VariableSpec* spec = variable.spec.get();
        auto known = spec_ids_.find(spec);
        if (known == spec_ids_.end()) {
            std::size_t id = spec_ids_.size();
            const auto [from, to] = specs_by_name_.equal_range(spec->name);
            for (auto each = from; each != to; ++each) {
                if (*each->second.first == *spec) id = each->second.second;
            }
            if (id == spec_ids_.size()) specs_by_name_.emplace(spec->name, std::pair(spec, id));
            known = spec_ids_.emplace(spec, id).first;
        }
        key += '\n' + std::to_string(known->second);
    }
    const auto [place, is_new] = shape_by_key_.try_emplace(key, shapes_.size());
    if (is_new) {
        const int count = ++shapes_of_type_[object.type];
        shapes_.emplace_back(count == 1 ? object.type : object.type + " #" + std::to_string(count),
                             &object);
    }
    return shapes_[place->second].first;
}

void TextWriter::Basics(const CaseData& data, bool& first) {
    auto text = [&](const char* key, std::string_view value) {
        Line(1, first);
        Key(key);
        Text(value);
    };
    auto flag = [&](const char* key, bool value) {
        Line(1, first);
        Key(key);
        Flag(value);
    };
    auto integer = [&](const char* key, long value) {
        Line(1, first);
        Key(key);
        Integer(value);
    };
    text("format", json::kFormatName);
    integer("version", json::kFormatVersion);
    text("name", data.name);
    text("title", data.title);
    text("source", data.source);
    flag("recorded", data.recorded);
    flag("dynamic", data.dynamic);
    flag("online", data.online);
    integer("unitSet", data.unit_set);
    integer("solveTurns", data.solve_turns);
    text("propertyPackage", data.property_package);
}

void TextWriter::Compounds(const std::vector<CompoundData>& compounds, bool& first) {
    struct Constant {
        const char* key;
        double CompoundData::*value;
    };
    static constexpr Constant kConstants[] = {
        {"molarMass", &CompoundData::molar_mass},
        {"criticalTemperature_K", &CompoundData::critical_temperature_K},
        {"criticalPressure_kPa", &CompoundData::critical_pressure_kPa},
        {"acentricFactor", &CompoundData::acentric_factor},
        {"normalBoilingPoint_K", &CompoundData::normal_boiling_point_K},
        {"liquidMolarVolume", &CompoundData::liquid_molar_volume},
    };
    Line(1, first);
    Key("compounds");
    out_ += '[';
    bool first_compound = true;
    for (const CompoundData& compound : compounds) {
        Line(2, first_compound);
        out_ += "{\"name\": ";
        Text(compound.name);
        out_ += ", \"formula\": ";
        Text(compound.formula);
        for (const Constant& each : kConstants) {
            out_ += std::string(", \"") + each.key + "\": ";
            Number(compound.*each.value);
        }
        out_ += ", \"cp\": [";
        for (std::size_t i = 0; i < compound.cp.size(); ++i) {
            if (i > 0) out_ += ", ";
            Number(compound.cp[i]);
        }
        out_ += "], \"other\": {";
        bool first_other = true;
        for (const auto& [key, value] : compound.other) {
            if (!first_other) out_ += ", ";
            first_other = false;
            Key(key);
            Text(value);
        }
        out_ += "}}";
    }
    out_ += compounds.empty() ? "]" : "\n  ]";
}

void TextWriter::Shapes(bool& first) {
    Line(1, first);
    Key("shapes");
    out_ += '{';
    bool first_shape = true;
    for (const auto& [name, object] : shapes_) {
        Line(2, first_shape);
        Key(name);
        out_ += '{';
        bool first_variable = true;
        for (const VariableData& variable : object->variables) {
            Line(3, first_variable);
            Key(variable.spec->name);
            Spec(*variable.spec);
        }
        out_ += object->variables.empty() ? "}" : "\n    }";
    }
    out_ += shapes_.empty() ? "}" : "\n  }";
}

void TextWriter::Spec(const VariableSpec& spec) {
    out_ += "{\"kind\": ";
    Text(Word(json::kKindWords, spec.kind));
    auto next = [this](const char* key) { out_ += std::string(", \"") + key + "\": "; };
    if (!spec.quantity.empty()) next("quantity"), Text(spec.quantity);
    if (spec.number != 0) next("number"), Integer(spec.number);
    if (spec.variable_type != 0) next("variableType"), Integer(spec.variable_type);
    if (!spec.dimensions.empty()) next("dimensions"), Dimensions(spec.dimensions);
    if (!spec.options.empty()) next("options"), Texts(spec.options);
    if (spec.minimum != kEmpty) next("minimum"), Number(spec.minimum);
    if (spec.maximum != kEmpty) next("maximum"), Number(spec.maximum);
    if (spec.flagged) next("flagged"), Flag(true);
    out_ += '}';
}

void TextWriter::Dimensions(const std::vector<DimensionData>& dimensions) {
    out_ += '[';
    for (std::size_t d = 0; d < dimensions.size(); ++d) {
        if (d > 0) out_ += ", ";
        out_ += "{\"low\": " + std::to_string(dimensions[d].low);
        out_ += ", \"count\": " + std::to_string(dimensions[d].count) + ", \"naming\": ";
        Text(Word(kNamingWords, dimensions[d].naming));
        if (!dimensions[d].labels.empty()) {
            out_ += ", \"labels\": ";
            Texts(dimensions[d].labels);
        }
        out_ += '}';
    }
    out_ += ']';
}

void TextWriter::Texts(const std::vector<std::string>& texts) {
    out_ += '[';
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) out_ += ", ";
        Text(texts[i]);
    }
    out_ += ']';
}

void TextWriter::Objects(std::string_view key, const std::vector<ObjectData>& objects, int depth,
                         bool& first) {
    Line(depth, first);
    Key(key);
    out_ += '[';
    bool first_object = true;
    for (const ObjectData& object : objects) {
        Line(depth + 1, first_object);
        Object(object, depth + 1);
    }
    bool no_comma = true;
    if (!objects.empty()) Line(depth, no_comma);
    out_ += ']';
}

void TextWriter::Object(const ObjectData& object, int depth) {
    out_ += "{\"name\": ";
    Text(object.name);
    out_ += ", \"type\": ";
    Text(object.type);
    out_ += ", \"shape\": ";
    Text(ShapeOf(object));
    bool first = false;
    if (object.status != ObjectStatus::ok || !object.status_text.empty()) {
        out_ += ", \"status\": ";
        Text(Word(kStatusWords, object.status));
        if (!object.status_text.empty()) {
            out_ += ", \"statusText\": ";
            Text(object.status_text);
        }
    }
    Variables(object, depth, first);
    if (!object.ports.empty()) {
        Line(depth + 1, first);
        Ports(object.ports);
    }
    if (object.sub_flowsheet) {
        Line(depth + 1, first);
        Key("flowsheet");
        out_ += '{';
        bool inner = true;
        Objects("objects", object.sub_flowsheet->objects, depth + 2, inner);
        bool no_comma = true;
        Line(depth + 1, no_comma);
        out_ += '}';
    }
    out_ += '}';
}

void TextWriter::Variables(const ObjectData& object, int depth, bool& first) {
    bool none = true;
    for (const VariableData& variable : object.variables) none = none && IsUnset(variable);
    if (none) return;
    Line(depth + 1, first);
    Key("variables");
    out_ += '{';
    bool first_variable = true;
    for (const VariableData& variable : object.variables) {
        if (IsUnset(variable)) continue;
        Line(depth + 2, first_variable);
        Key(variable.spec->name);
        Values(variable);
    }
    bool no_comma = true;
    Line(depth + 1, no_comma);
    out_ += '}';
}

void TextWriter::Values(const VariableData& variable) {
    const VariableSpec& spec = *variable.spec;
    const bool array = !spec.dimensions.empty();
    out_ += array ? "{\"values\": [" : "{\"value\": ";
    bool one_state = true;
    for (std::size_t i = 0; i < variable.values.size(); ++i) {
        if (i > 0) out_ += ", ";
        Value(spec, variable.values[i]);
        one_state = one_state && variable.values[i].state == variable.values[0].state;
    }
    if (array) out_ += ']';
    if (const Quantity* quantity = FindQuantity(spec.quantity)) {
        out_ += ", \"unit\": ";
        Text(quantity->units[0].name);
    }
    if (variable.values.empty()) {
        out_ += '}';
        return;
    }
    out_ += one_state ? ", \"state\": " : ", \"states\": [";
    for (std::size_t i = 0; i < (one_state ? 1 : variable.values.size()); ++i) {
        if (i > 0) out_ += ", ";
        Text(Word(kStateWords, variable.values[i].state));
    }
    out_ += one_state ? "}" : "]}";
}

void TextWriter::Value(const VariableSpec& spec, const ValueData& value) {
    switch (spec.kind) {
        case ValueKind::real:
            Number(value.number);
            return;
        case ValueKind::enumeration:
            if (value.number >= 0 && value.number < static_cast<double>(spec.options.size()) &&
                value.number == static_cast<double>(static_cast<long>(value.number))) {
                Text(spec.options[static_cast<std::size_t>(value.number)]);
            } else {
                Number(value.number);
            }
            return;
        case ValueKind::text:
        case ValueKind::message:
        case ValueKind::attachment:
            if (value.text.empty()) {
                out_ += "null";
            } else {
                Text(value.text);
            }
            return;
    }
}

void TextWriter::Ports(const std::vector<PortData>& ports) {
    Key("ports");
    out_ += '[';
    for (std::size_t i = 0; i < ports.size(); ++i) {
        if (i > 0) out_ += ", ";
        out_ += "{\"role\": ";
        Text(Word(kRoleWords, ports[i].role));
        out_ += ", \"index\": " + std::to_string(ports[i].index) + ", \"stream\": ";
        Text(ports[i].stream);
        out_ += '}';
    }
    out_ += ']';
}

}  // namespace

std::string CaseToText(const CaseData& data) {
    return TextWriter().Write(data);
}

SaveResult WriteCaseFile(const CaseData& data, const std::string& path) {
    const std::string text = CaseToText(data);
    const std::filesystem::path target = FilePath(path);
    const std::filesystem::path beside = FilePath(path + ".part");
    std::error_code error;
    {
        std::ofstream file(beside, std::ios::binary | std::ios::trunc);
        if (!file) return {false, {path, "can't be written"}};
        file.write(text.data(), static_cast<std::streamsize>(text.size()));
        file.flush();
        if (!file) {
            file.close();
            std::filesystem::remove(beside, error);
            return {false, {path, "not written completely"}};
        }
    }
    std::filesystem::rename(beside, target, error);
    if (!error) return {true, {}};
    const std::string reason = error.message();
    std::filesystem::remove(beside, error);
    return {false, {path, "can't be replaced: " + reason}};
}

}  // namespace casehost
