// Case data from JSON text.

#include <cmath>
#include <filesystem>
#include <fstream>

#include "casehost/case_file.h"
#include "casehost/file_path.h"
#include "casehost/units.h"
#include "json/basis_json.h"
#include "json/fields.h"
#include "json/reference_check.h"
#include "json/words.h"

namespace casehost {

namespace {

using json::Fields;
using json::JsonNode;
using json::Tree;

class TextReader {
 public:
    explicit TextReader(Tree& tree) : tree_(tree) {}

    std::unique_ptr<CaseData> Read(const JsonNode& root);

 private:
    using Spec = std::shared_ptr<const VariableSpec>;
    using Shape = std::vector<Spec>;

    void Basics(Fields& fields, CaseData& data);
    CompoundData Compound(const JsonNode& node);
    void Shapes(const JsonNode& node);
    Spec VariableSpecOf(const JsonNode& node);
    DimensionData Dimension(const JsonNode& node);
    std::vector<std::string> Texts(const JsonNode& node);
    void CheckShape(const JsonNode& node, const Shape& shape);

    void Objects(const JsonNode* node, std::vector<ObjectData>& objects);
    void Object(const JsonNode& node, ObjectData& object);
    void Variables(const JsonNode* node, const Shape& shape, ObjectData& object);
    void Variable(const JsonNode& node, VariableData& variable);
    void Value(const JsonNode& node, const VariableSpec& spec, const host::UnitRecord* unit,
               ValueData& value);
    void Real(const JsonNode& node, const VariableSpec& spec, const host::UnitRecord* unit,
              ValueData& value);
    void Option(const JsonNode& node, const VariableSpec& spec, ValueData& value);
    const host::UnitRecord* Unit(const JsonNode* node, const VariableSpec& spec);
    void States(const JsonNode* one, const JsonNode* each, VariableData& variable);
    PortData Port(const JsonNode& node);
    void CheckNames(const JsonNode& list, const std::vector<ObjectData>& objects);

    Tree& tree_;
    std::unordered_map<std::string_view, Shape> shapes_;
    std::size_t object_count_ = 0;
};

std::unique_ptr<CaseData> TextReader::Read(const JsonNode& root) {
    auto data = std::make_unique<CaseData>();
    Fields fields(tree_, root);
    const std::string format = fields.Text("format");
    const long version = fields.Integer("version", 0);
    if (format != json::kFormatName || version != json::kFormatVersion) {
        tree_.Report(root, "not a case file: expected format \"" + std::string(json::kFormatName) +
                               "\", version " + std::to_string(json::kFormatVersion));
        return nullptr;
    }
    Basics(fields, *data);
    if (const JsonNode* basis = fields.Array("basis")) data->basis = json::ReadBasis(tree_, *basis);
    if (const JsonNode* shapes = fields.Object("shapes")) Shapes(*shapes);
    if (const JsonNode* flowsheet = fields.Object("flowsheet")) {
        Fields inner(tree_, *flowsheet);
        Objects(inner.Array("objects"), data->main.objects);
        inner.Done();
    }
    Objects(fields.Array("utilities"), data->utilities);
    Objects(fields.Array("dataTables"), data->data_tables);
    Objects(fields.Array("reactions"), data->reactions);
    Objects(fields.Array("published"), data->published);
    fields.Done();
    if (tree_.Problems().empty()) json::CheckReferences(tree_, root, *data);
    return tree_.Problems().empty() ? std::move(data) : nullptr;
}

void TextReader::Basics(Fields& fields, CaseData& data) {
    data.name = fields.Text("name");
    data.title = fields.Text("title");
    data.source = fields.Text("source");
    data.recorded = fields.Flag("recorded", data.recorded);
    data.dynamic = fields.Flag("dynamic", data.dynamic);
    data.online = fields.Flag("online", data.online);
    data.unit_set = static_cast<unsigned>(fields.Integer("unitSet", 0, 0, kUnitSets - 1));
    data.solve_turns = static_cast<int>(fields.Integer("solveTurns", data.solve_turns, 1, 1000));
    data.property_package = fields.Text("propertyPackage");
    if (const JsonNode* compounds = fields.Array("compounds")) {
        for (const JsonNode* each = compounds->first; each; each = each->next) {
            data.compounds.push_back(Compound(*each));
        }
    }
}

CompoundData TextReader::Compound(const JsonNode& node) {
    CompoundData compound;
    Fields fields(tree_, node);
    compound.name = fields.RequiredText("name");
    compound.formula = fields.Text("formula");
    compound.molar_mass = fields.Number("molarMass");
    compound.critical_temperature_K = fields.Number("criticalTemperature_K");
    compound.critical_pressure_kPa = fields.Number("criticalPressure_kPa");
    compound.acentric_factor = fields.Number("acentricFactor");
    compound.normal_boiling_point_K = fields.Number("normalBoilingPoint_K");
    compound.liquid_molar_volume = fields.Number("liquidMolarVolume");
    if (const JsonNode* cp = fields.Array("cp")) {
        for (const JsonNode* each = cp->first; each; each = each->next) {
            compound.cp.push_back(json::NumberOf(tree_, *each));
        }
    }
    if (const JsonNode* other = fields.Object("other")) {
        for (const JsonNode* each = other->first; each; each = each->next) {
            compound.other[*each->key] = json::TextOf(tree_, *each);
        }
    }
    fields.Done();
    return compound;
}

void TextReader::Shapes(const JsonNode& node) {
    for (const JsonNode* each = node.first; each; each = each->next) {
        if (!json::Expect(tree_, *each, JsonNode::Kind::object, "an object")) continue;
        Shape& shape = shapes_[*each->key];
        for (const JsonNode* variable = each->first; variable; variable = variable->next) {
            shape.push_back(VariableSpecOf(*variable));
        }
        CheckShape(*each, shape);
    }
}

void TextReader::CheckShape(const JsonNode& node, const Shape& shape) {
    for (std::size_t i = 0; i < shape.size(); ++i) {
        for (std::size_t j = 0; shape[i]->number != 0 && j < i; ++j) {
            if (shape[j]->number != shape[i]->number || shape[j]->kind != shape[i]->kind) continue;
            tree_.Report(node, "the variables \"" + shape[j]->name + "\" and \"" + shape[i]->name +
                                   "\" have one number");
        }
    }
}

TextReader::Spec TextReader::VariableSpecOf(const JsonNode& node) {
    auto spec = std::make_shared<VariableSpec>();
    spec->name = *node.key;
    Fields fields(tree_, node);
    spec->kind = static_cast<ValueKind>(fields.Word("kind", json::kKindWords, 1));
    if (spec->kind < ValueKind::real) spec->kind = ValueKind::real;
    spec->quantity = fields.Text("quantity");
    const JsonNode* quantity = node.Find("quantity");
    if (!spec->quantity.empty() && !FindQuantity(spec->quantity)) {
        tree_.Report(*quantity, "no such quantity: " + Tree::Describe(*quantity));
    }
    spec->number = static_cast<int>(fields.Integer("number", 0, 0, 9'999'999));
    spec->variable_type = static_cast<int>(fields.Integer("variableType", 0, 0, 9'999'999));
    std::size_t elements = 1;
    if (const JsonNode* dimensions = fields.Array("dimensions")) {
        for (const JsonNode* each = dimensions->first; each; each = each->next) {
            spec->dimensions.push_back(Dimension(*each));
            elements *= static_cast<std::size_t>(spec->dimensions.back().count);
            if (spec->dimensions.size() > 3) tree_.Report(*each, "more than three dimensions");
            if (elements > kMaxArrayElements) {
                tree_.Report(*dimensions,
                             "more than " + std::to_string(kMaxArrayElements) + " elements");
                spec->dimensions.clear();
                break;
            }
        }
    }
    if (const JsonNode* options = fields.Array("options")) spec->options = Texts(*options);
    spec->minimum = fields.Number("minimum");
    spec->maximum = fields.Number("maximum");
    spec->flagged = fields.Flag("flagged", false);
    fields.Done();
    return spec;
}

DimensionData TextReader::Dimension(const JsonNode& node) {
    DimensionData dimension;
    Fields fields(tree_, node);
    dimension.low = static_cast<int>(fields.Integer("low", 0, -1'000'000, 1'000'000));
    dimension.count = static_cast<int>(fields.Integer("count", 0, 0, kMaxArrayElements));
    dimension.naming = static_cast<ElementNaming>(fields.Word("naming", json::kNamingWords, 0));
    if (const JsonNode* labels = fields.Array("labels")) dimension.labels = Texts(*labels);
    fields.Done();
    const bool named = dimension.naming != ElementNaming::number;
    if (dimension.labels.size() != (named ? static_cast<std::size_t>(dimension.count) : 0)) {
        tree_.Report(node, named ? "expected one label for each of the " +
                                       std::to_string(dimension.count) + " elements, found " +
                                       std::to_string(dimension.labels.size())
                                 : "numbered elements have no labels");
    }
    return dimension;
}

std::vector<std::string> TextReader::Texts(const JsonNode& node) {
    std::vector<std::string> texts;
    for (const JsonNode* each = node.first; each; each = each->next) {
        texts.push_back(json::TextOf(tree_, *each));
    }
    return texts;
}

void TextReader::Objects(const JsonNode* node, std::vector<ObjectData>& objects) {
    if (!node) return;
    for (const JsonNode* each = node->first; each && !tree_.Full(); each = each->next) {
        if (++object_count_ > kMaxCaseObjects) {
            tree_.Report(*each, "more than " + std::to_string(kMaxCaseObjects) + " objects");
            return;
        }
        Object(*each, objects.emplace_back());
    }
    CheckNames(*node, objects);
}

void TextReader::CheckNames(const JsonNode& list, const std::vector<ObjectData>& objects) {
    std::unordered_set<std::string_view> names;
    const JsonNode* node = list.first;
    for (std::size_t i = 0; i < objects.size() && node; ++i, node = node->next) {
        if (names.insert(objects[i].name).second) continue;
        tree_.Report(*node, "another object of this list is called \"" + objects[i].name + "\"");
    }
}

void TextReader::Object(const JsonNode& node, ObjectData& object) {
    Fields fields(tree_, node);
    object.name = fields.RequiredText("name");
    object.type = fields.RequiredText("type");
    const JsonNode* shape_name = fields.Find("shape");
    static const Shape kNone;
    const Shape* shape = &kNone;
    if (shape_name) {
        const auto known = shapes_.find(json::TextOf(tree_, *shape_name));
        if (known != shapes_.end()) {
            shape = &known->second;
        } else {
            tree_.Report(*shape_name, "no such shape: " + Tree::Describe(*shape_name));
        }
    }
    object.status = static_cast<ObjectStatus>(fields.Word("status", json::kStatusWords, 0));
    object.status_text = fields.Text("statusText");
    Variables(fields.Object("variables"), *shape, object);
    if (const JsonNode* ports = fields.Array("ports")) {
        for (const JsonNode* each = ports->first; each; each = each->next)
            object.ports.push_back(Port(*each));
    }
    if (const JsonNode* inner = fields.Object("flowsheet")) {
        object.sub_flowsheet = std::make_shared<FlowsheetData>();
        Fields inner_fields(tree_, *inner);
        Objects(inner_fields.Array("objects"), object.sub_flowsheet->objects);
        inner_fields.Done();
    }
    fields.Done();
}

// Variables that the shape does not have declare themselves where they stand.
void TextReader::Variables(const JsonNode* node, const Shape& shape, ObjectData& object) {
    object.variables.reserve(shape.size());
    for (const Spec& spec : shape) object.variables.push_back({spec, {}});
    std::size_t expected = 0;
    for (const JsonNode* each = node ? node->first : nullptr; each; each = each->next) {
        if (!json::Expect(tree_, *each, JsonNode::Kind::object, "an object")) continue;
        // Most files list the variables in the order of the shape.
        while (expected < shape.size() && shape[expected]->name != *each->key) ++expected;
        if (expected == shape.size()) {
            expected = 0;
            while (expected < shape.size() && shape[expected]->name != *each->key) ++expected;
        }
        VariableData* variable = nullptr;
        if (expected < shape.size()) {
            variable = &object.variables[expected];
        } else {
            const JsonNode* own = each->Find("spec");
            if (!own) {
                tree_.Report(*each, "the object's shape has no variable \"" + *each->key + "\"");
                continue;
            }
            auto spec = std::make_shared<VariableSpec>(*VariableSpecOf(*own));
            spec->name = *each->key;
            variable = &object.variables.emplace_back(VariableData{spec, {}});
        }
        Variable(*each, *variable);
    }
    for (VariableData& variable : object.variables) {
        std::size_t count = 1;
        for (const DimensionData& each : variable.spec->dimensions)
            count *= static_cast<std::size_t>(each.count);
        variable.values.resize(count);
    }
}

void TextReader::Variable(const JsonNode& node, VariableData& variable) {
    const VariableSpec& spec = *variable.spec;
    Fields fields(tree_, node);
    fields.Find("spec");
    const host::UnitRecord* unit = Unit(fields.Find("unit"), spec);
    std::size_t count = 1;
    for (const DimensionData& each : spec.dimensions) count *= static_cast<std::size_t>(each.count);
    variable.values.resize(count);
    if (spec.dimensions.empty()) {
        if (const JsonNode* value = fields.Find("value"))
            Value(*value, spec, unit, variable.values[0]);
    } else if (const JsonNode* values = fields.Array("values")) {
        if (values->Count() != count) {
            tree_.Report(*values, "expected " + std::to_string(count) + " values, found " +
                                      std::to_string(values->Count()));
        } else {
            std::size_t i = 0;
            for (const JsonNode* each = values->first; each; each = each->next) {
                Value(*each, spec, unit, variable.values[i++]);
            }
        }
    }
    States(fields.Find("state"), spec.dimensions.empty() ? nullptr : fields.Array("states"),
           variable);
    fields.Done();
}

const host::UnitRecord* TextReader::Unit(const JsonNode* node, const VariableSpec& spec) {
    if (!node) return nullptr;
    const Quantity* quantity = FindQuantity(spec.quantity);
    const std::string name = json::TextOf(tree_, *node);
    const host::UnitRecord* unit = quantity ? FindUnit(*quantity, name) : nullptr;
    if (unit) return unit;
    std::string message = "the unit " + Tree::Describe(*node) + " is none of ";
    if (!quantity) {
        message = "the variable has no quantity and so no unit";
    } else {
        message += std::string(quantity->name) + " (";
        for (const host::UnitRecord& each : quantity->units) {
            message += (&each == &quantity->units[0] ? "" : ", ") + std::string(each.name);
        }
        message += ')';
    }
    tree_.Report(*node, message);
    return nullptr;
}

void TextReader::States(const JsonNode* one, const JsonNode* each, VariableData& variable) {
    if (one && each) tree_.Report(*each, "\"state\" and \"states\" exclude each other");
    if (each && each->Count() != variable.values.size()) {
        tree_.Report(*each, "expected " + std::to_string(variable.values.size()) +
                                " states, found " + std::to_string(each->Count()));
        return;
    }
    const JsonNode* node = each ? each->first : one;
    for (ValueData& value : variable.values) {
        const bool empty = value.number == kEmpty && value.text.empty();
        if (node) {
            value.state = static_cast<VariableState>(json::WordOf(tree_, *node, json::kStateWords));
        } else if (!empty) {
            value.state = VariableState::specified;
        }
        if (each && node) node = node->next;
        if (tree_.Full()) return;
    }
}

void TextReader::Value(const JsonNode& node, const VariableSpec& spec, const host::UnitRecord* unit,
                       ValueData& value) {
    if (node.kind == JsonNode::Kind::null) return;
    switch (spec.kind) {
        case ValueKind::real:
            return Real(node, spec, unit, value);
        case ValueKind::enumeration:
            return Option(node, spec, value);
        case ValueKind::text:
        case ValueKind::attachment:
        case ValueKind::message:
            value.text = json::TextOf(tree_, node);
            return;
    }
}

void TextReader::Real(const JsonNode& node, const VariableSpec& spec, const host::UnitRecord* unit,
                      ValueData& value) {
    value.number = json::NumberOf(tree_, node);
    if (unit && node.kind == JsonNode::Kind::number) value.number = ToInternal(value.number, *unit);
    const bool below = spec.minimum != kEmpty && value.number < spec.minimum;
    const bool above = spec.maximum != kEmpty && value.number > spec.maximum;
    if (node.kind == JsonNode::Kind::number && (below || above)) {
        tree_.Report(node, std::string("the value is ") +
                               (below ? "below the minimum" : "above the maximum") + " of \"" +
                               spec.name + "\"");
    }
}

void TextReader::Option(const JsonNode& node, const VariableSpec& spec, ValueData& value) {
    if (node.kind == JsonNode::Kind::number) {
        if (std::floor(node.number) != node.number) tree_.Report(node, "expected a whole number");
        value.number = node.number;
        return;
    }
    const std::string word = json::TextOf(tree_, node);
    for (std::size_t i = 0; i < spec.options.size(); ++i) {
        if (spec.options[i] != word) continue;
        value.number = static_cast<double>(i);
        return;
    }
    if (node.kind != JsonNode::Kind::text) return;
    std::string known;
    for (const std::string& each : spec.options) known += (known.empty() ? "" : ", ") + each;
    tree_.Report(node,
                 Tree::Describe(node) + " is no option of \"" + spec.name + "\" (" + known + ")");
}

PortData TextReader::Port(const JsonNode& node) {
    PortData port;
    Fields fields(tree_, node);
    port.role = static_cast<PortData::Role>(fields.Word("role", json::kRoleWords, 0));
    port.index = static_cast<int>(fields.Integer("index", 0, 0, 100'000));
    port.stream = fields.RequiredText("stream");
    fields.Done();
    return port;
}

}  // namespace

ReadResult ReadCaseText(const std::string& file, std::string_view text) {
    Tree tree(file, text);
    ReadResult result;
    if (const JsonNode* root = tree.Root()) result.data = TextReader(tree).Read(*root);
    result.problems = tree.Problems();
    return result;
}

ReadResult ReadCaseFile(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(FilePath(path), error);
    if (error) return {nullptr, {{path, "can't be read: " + error.message()}}};
    if (size > kMaxCaseFileBytes) {
        return {nullptr,
                {{path, "larger than " + std::to_string(kMaxCaseFileBytes >> 20) + " MB"}}};
    }
    std::ifstream file(FilePath(path), std::ios::binary);
    std::string text(static_cast<std::size_t>(size), '\0');
    if (!file.read(text.data(), static_cast<std::streamsize>(size))) {
        return {nullptr, {{path, "can't be read to its end"}}};
    }
    return ReadCaseText(path, text);
}

void RegisterCaseFiles() {
    RegisterReader(".json", ReadCaseFile);
    RegisterWriter(".json", WriteCaseFile);
}

}  // namespace casehost
