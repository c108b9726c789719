// SPDX-License-Identifier: Apache-2.0
#include "json/shape_json.h"

#include <map>

#include "casehost/case_file.h"
#include "json/fields.h"
#include "json/words.h"

namespace fixtop::casehost::json {

namespace {

constexpr std::size_t kMostDimensions = 3;

DimensionData ReadDimension(Tree& tree, const JsonNode& node) {
    DimensionData dimension;
    Fields fields(tree, node);
    dimension.low = static_cast<int>(fields.Integer("low", 0, -1'000'000, 1'000'000));
    dimension.count = static_cast<int>(fields.Integer("count", 0, 0, kMaxArrayElements));
    dimension.naming = fields.OneOf("naming", kNamingWords, ElementNaming::number);
    dimension.labels = ReadAll(tree, fields.Array("labels"), TextOf);
    fields.Done();
    const bool named = dimension.naming != ElementNaming::number;
    if (dimension.labels.size() != (named ? static_cast<std::size_t>(dimension.count) : 0)) {
        tree.Report(node, named ? "expected one label for each of the " +
                                      std::to_string(dimension.count) + " elements, found " +
                                      std::to_string(dimension.labels.size())
                                : "numbered elements have no labels");
    }
    return dimension;
}

// Stops before the product of the counts is larger than any array may be.
std::vector<DimensionData> ReadDimensions(Tree& tree, const JsonNode* array) {
    std::vector<DimensionData> dimensions;
    std::size_t elements = 1;
    for (const JsonNode* each = array ? array->first : nullptr; each; each = each->next) {
        dimensions.push_back(ReadDimension(tree, *each));
        elements *= static_cast<std::size_t>(dimensions.back().count);
        if (dimensions.size() > kMostDimensions) tree.Report(*each, "more than three dimensions");
        if (elements <= kMaxArrayElements) continue;
        tree.Report(*array, "more than " + std::to_string(kMaxArrayElements) + " elements");
        return {};
    }
    return dimensions;
}

void CheckNumbers(Tree& tree, const JsonNode& node, const Shape& shape) {
    std::map<std::pair<ValueKind, int>, const VariableSpec*> taken;
    for (const SharedSpec& spec : shape) {
        if (spec->number == 0) continue;
        const auto [place, is_new] = taken.try_emplace({spec->kind, spec->number}, spec.get());
        if (is_new) continue;
        tree.Report(node, "the variables \"" + place->second->name + "\" and \"" + spec->name +
                              "\" have one number");
    }
}

void WriteDimension(JsonText& text, const DimensionData& dimension) {
    text.Raw("{");
    text.Key("low", dimension.low);
    text.Member("count", dimension.count);
    text.Member("naming", Word(kNamingWords, dimension.naming));
    if (!dimension.labels.empty()) text.Member("labels", dimension.labels);
    text.Raw("}");
}

void WriteSpec(JsonText& text, const VariableSpec& spec) {
    text.Raw("{");
    text.Key("kind", Word(kKindWords, spec.kind));
    if (!spec.quantity.empty()) text.Member("quantity", spec.quantity);
    if (spec.number != 0) text.Member("number", spec.number);
    if (spec.variable_type != 0) text.Member("variableType", spec.variable_type);
    if (!spec.dimensions.empty()) {
        text.Member("dimensions");
        WriteLine(text, "[]", spec.dimensions,
                  [&](const DimensionData& each) { WriteDimension(text, each); });
    }
    if (!spec.options.empty()) text.Member("options", spec.options);
    if (spec.minimum != kEmpty) text.Member("minimum", spec.minimum);
    if (spec.maximum != kEmpty) text.Member("maximum", spec.maximum);
    if (spec.flagged) text.Member("flagged", true);
    text.Raw("}");
}

}  // namespace

SharedSpec ReadSpec(Tree& tree, const JsonNode& node, std::string_view name) {
    auto spec = std::make_shared<VariableSpec>();
    spec->name = name;
    Fields fields(tree, node);
    spec->kind = fields.OneOf("kind", kKindWords, ValueKind::real);
    if (spec->kind < ValueKind::real) spec->kind = ValueKind::real;
    spec->quantity = fields.Quantity("quantity");
    spec->number = static_cast<int>(fields.Integer("number", 0, 0, 9'999'999));
    spec->variable_type = static_cast<int>(fields.Integer("variableType", 0, 0, 9'999'999));
    spec->dimensions = ReadDimensions(tree, fields.Array("dimensions"));
    spec->options = ReadAll(tree, fields.Array("options"), TextOf);
    spec->minimum = fields.Number("minimum");
    spec->maximum = fields.Number("maximum");
    spec->flagged = fields.Flag("flagged", false);
    fields.Done();
    return spec;
}

Shapes ReadShapes(Tree& tree, const JsonNode& object) {
    Shapes shapes;
    for (const JsonNode* each = object.first; each; each = each->next) {
        if (!Expect(tree, *each, JsonNode::Kind::object, "an object")) continue;
        Shape& shape = shapes[each->key];
        for (const JsonNode* variable = each->first; variable; variable = variable->next) {
            shape.push_back(ReadSpec(tree, *variable, variable->key));
        }
        CheckNumbers(tree, *each, shape);
    }
    return shapes;
}

void ShapeNames::Collect(const std::vector<ObjectData>& objects) {
    for (const ObjectData& object : objects) {
        Of(object);
        if (object.sub_flowsheet) Collect(object.sub_flowsheet->objects);
    }
}

// Equal specs get one number, shared or not, so that the text depends on the data alone.
std::size_t ShapeNames::NumberOf(const VariableSpec& spec) {
    const auto known = spec_numbers_.find(&spec);
    if (known != spec_numbers_.end()) return known->second;
    const auto [from, to] = specs_by_name_.equal_range(spec.name);
    for (auto each = from; each != to; ++each) {
        if (*each->second == spec) {
            return spec_numbers_.emplace(&spec, spec_numbers_.at(each->second)).first->second;
        }
    }
    specs_by_name_.emplace(spec.name, &spec);
    return spec_numbers_.emplace(&spec, spec_numbers_.size()).first->second;
}

const std::string& ShapeNames::Of(const ObjectData& object) {
    std::string key = object.type;
    for (const VariableData& variable : object.variables) {
        key += '\n' + std::to_string(NumberOf(*variable.spec));
    }
    const auto [place, is_new] = shape_by_key_.try_emplace(key, shapes_.size());
    if (is_new) {
        const int count = ++shapes_of_type_[object.type];
        const std::string suffix = count == 1 ? "" : " #" + std::to_string(count);
        shapes_.push_back({object.type + suffix, &object});
    }
    return shapes_[place->second].name;
}

void WriteShapes(JsonText& text, const ShapeNames& shapes, int depth) {
    WriteLines(text, "{}", shapes.All(), depth, [&](const ShapeNames::Named& shape) {
        text.Key(shape.name);
        WriteLines(text, "{}", shape.example->variables, depth + 1,
                   [&](const VariableData& variable) {
                       text.Key(variable.spec->name);
                       WriteSpec(text, *variable.spec);
                   });
    });
}

}  // namespace fixtop::casehost::json
