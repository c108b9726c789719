// SPDX-License-Identifier: Apache-2.0
#include "json/variable_json.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <unordered_map>

#include "casehost/units.h"
#include "json/fields.h"
#include "json/words.h"

namespace fixtop::casehost::json {

namespace {

const host::UnitRecord* ReadUnit(Tree& tree, const JsonNode* node, const VariableSpec& spec) {
    if (!node) return nullptr;
    const Quantity* quantity = FindQuantity(spec.quantity);
    const std::string name = TextOf(tree, *node);
    const host::UnitRecord* unit = quantity ? FindUnit(*quantity, name) : nullptr;
    if (unit) return unit;
    if (!quantity) {
        tree.Report(*node, "the variable has no quantity and so no unit");
        return nullptr;
    }
    tree.Report(*node, "the unit " + Tree::Describe(*node) + " is none of " + quantity->name +
                           " (" + Listed(quantity->units, &host::UnitRecord::name) + ")");
    return nullptr;
}

void ReadReal(Tree& tree, const JsonNode& node, const VariableSpec& spec,
              const host::UnitRecord* unit, ValueData& value) {
    value.number = NumberOf(tree, node);
    if (node.kind != JsonNode::Kind::number) return;
    if (unit) value.number = ToInternal(value.number, *unit);
    if (!std::isfinite(value.number)) {
        tree.Report(node, std::string("the value is too large for a number in ") +
                              FindQuantity(spec.quantity)->units[0].name);
        return;
    }
    const bool below = spec.minimum != kEmpty && value.number < spec.minimum;
    const bool above = spec.maximum != kEmpty && value.number > spec.maximum;
    if (!below && !above) return;
    tree.Report(node, std::string("the value is ") +
                          (below ? "below the minimum" : "above the maximum") + " of \"" +
                          spec.name + "\"");
}

void ReadOption(Tree& tree, const JsonNode& node, const VariableSpec& spec, ValueData& value) {
    if (node.kind == JsonNode::Kind::number) {
        if (std::floor(node.number) != node.number) tree.Report(node, "expected a whole number");
        value.number = node.number;
        return;
    }
    const std::string word = TextOf(tree, node);
    const auto found = std::find(spec.options.begin(), spec.options.end(), word);
    if (found != spec.options.end()) {
        value.number = static_cast<double>(found - spec.options.begin());
        return;
    }
    if (node.kind != JsonNode::Kind::text) return;
    tree.Report(node, Tree::Describe(node) + " is no option of \"" + spec.name + "\" (" +
                          Listed(spec.options) + ")");
}

void ReadValue(Tree& tree, const JsonNode& node, const VariableSpec& spec,
               const host::UnitRecord* unit, ValueData& value) {
    if (node.kind == JsonNode::Kind::null) return;
    switch (spec.kind) {
        case ValueKind::real:
            return ReadReal(tree, node, spec, unit, value);
        case ValueKind::enumeration:
            return ReadOption(tree, node, spec, value);
        case ValueKind::text:
        case ValueKind::attachment:
        case ValueKind::message:
            value.text = TextOf(tree, node);
            return;
    }
}

bool HasCount(Tree& tree, const JsonNode& array, std::size_t count, const char* what) {
    const std::size_t found = array.Count();
    if (found == count) return true;
    tree.Report(array, "expected " + std::to_string(count) + " " + what + ", found " +
                           std::to_string(found));
    return false;
}

void ReadStates(Tree& tree, const JsonNode* one, const JsonNode* each, VariableData& variable) {
    if (one && each) tree.Report(*each, "\"state\" and \"states\" exclude each other");
    if (each && !HasCount(tree, *each, variable.values.size(), "states")) return;
    const JsonNode* node = each ? each->first : one;
    for (ValueData& value : variable.values) {
        const bool empty = value.number == kEmpty && value.text.empty();
        if (node) {
            value.state = static_cast<VariableState>(WordOf(tree, *node, kStateWords));
        } else if (!empty) {
            value.state = VariableState::specified;
        }
        if (each && node) node = node->next;
        if (tree.Full()) return;
    }
}

// A scalar has "value" and "state", an array "values" and also "states".
void ReadVariable(Tree& tree, const JsonNode& node, VariableData& variable) {
    const VariableSpec& spec = *variable.spec;
    const bool array = !spec.dimensions.empty();
    Fields fields(tree, node);
    fields.Find("spec");
    const host::UnitRecord* unit = ReadUnit(tree, fields.Find("unit"), spec);
    variable.values.resize(ElementCount(spec));
    const JsonNode* values = array ? fields.Array("values") : fields.Find("value");
    if (values && !array) ReadValue(tree, *values, spec, unit, variable.values[0]);
    if (values && array && HasCount(tree, *values, variable.values.size(), "values")) {
        std::size_t i = 0;
        for (const JsonNode* each = values->first; each; each = each->next) {
            ReadValue(tree, *each, spec, unit, variable.values[i++]);
        }
    }
    ReadStates(tree, fields.Find("state"), array ? fields.Array("states") : nullptr, variable);
    fields.Done();
}

// The places of names in a shape. Most files list the variables in the order of the shape, so the
// search begins at the place found last; only a name that is not close to it needs an index.
class Places {
 public:
    explicit Places(const Shape& shape) : shape_(shape) {}

    // The size of the shape when the name is absent.
    std::size_t Find(std::string_view name) {
        const std::size_t end = std::min(last_ + kClose, shape_.size());
        for (std::size_t place = last_; place < end; ++place) {
            if (shape_[place]->name == name) return last_ = place;
        }
        if (index_.empty()) {
            for (std::size_t i = 0; i < shape_.size(); ++i) index_.emplace(shape_[i]->name, i);
        }
        const auto found = index_.find(name);
        return found == index_.end() ? shape_.size() : last_ = found->second;
    }

 private:
    static constexpr std::size_t kClose = 16;

    const Shape& shape_;
    std::size_t last_ = 0;
    std::unordered_map<std::string_view, std::size_t> index_;
};

// Takes the values of `spec` out of `room`; false when it is too small.
bool TakeRoom(const VariableSpec& spec, std::size_t& room) {
    const std::size_t count = std::max<std::size_t>(ElementCount(spec), 1);
    if (count > room) return false;
    room -= count;
    return true;
}

void WriteValue(JsonText& text, const VariableSpec& spec, const ValueData& value) {
    switch (spec.kind) {
        case ValueKind::real:
            return text.Number(value.number);
        case ValueKind::enumeration:
            if (value.number >= 0 && value.number < static_cast<double>(spec.options.size()) &&
                value.number == std::floor(value.number)) {
                return text.Text(spec.options[static_cast<std::size_t>(value.number)]);
            }
            return text.Number(value.number);
        case ValueKind::text:
        case ValueKind::message:
        case ValueKind::attachment:
            return text.TextOrNull(value.text);
    }
}

void WriteStates(JsonText& text, const std::vector<ValueData>& values) {
    const auto write = [&](const ValueData& value) { text.Text(Word(kStateWords, value.state)); };
    const auto differs = [&](const ValueData& value) { return value.state != values[0].state; };
    if (std::any_of(values.begin(), values.end(), differs)) {
        text.Member("states");
        WriteLine(text, "[]", values, write);
    } else if (!values.empty()) {
        text.Member("state");
        write(values[0]);
    }
}

void WriteVariable(JsonText& text, const VariableData& variable) {
    const VariableSpec& spec = *variable.spec;
    text.Raw("{");
    if (spec.dimensions.empty()) {
        text.Key("value");
        WriteValue(text, spec, variable.values[0]);
    } else {
        text.Key("values");
        WriteLine(text, "[]", variable.values,
                  [&](const ValueData& value) { WriteValue(text, spec, value); });
    }
    if (const Quantity* quantity = FindQuantity(spec.quantity)) {
        text.Member("unit", quantity->units[0].name);
    }
    WriteStates(text, variable.values);
    text.Raw("}");
}

bool HasValue(const VariableData& variable) {
    static const ValueData unset;
    return std::any_of(variable.values.begin(), variable.values.end(),
                       [](const ValueData& value) { return !(value == unset); });
}

}  // namespace

bool ReadVariables(Tree& tree, const JsonNode* node, const Shape& shape, ObjectData& object,
                   std::size_t& room) {
    object.variables.reserve(shape.size());
    for (const SharedSpec& spec : shape) {
        if (!TakeRoom(*spec, room)) return false;
        object.variables.push_back({spec, {}});
    }
    Places places(shape);
    for (const JsonNode* each = node ? node->first : nullptr; each; each = each->next) {
        if (!Expect(tree, *each, JsonNode::Kind::object, "an object")) continue;
        const std::size_t place = places.Find(each->key);
        const JsonNode* own = each->Find("spec");
        if (place < shape.size()) {
            if (own)
                tree.Report(
                    *own, "the object's shape declares \"" + std::string(each->key) + "\" already");
            ReadVariable(tree, *each, object.variables[place]);
        } else if (own) {
            object.variables.push_back({ReadSpec(tree, *own, each->key), {}});
            if (!TakeRoom(*object.variables.back().spec, room)) return false;
            ReadVariable(tree, *each, object.variables.back());
        } else {
            tree.Report(*each,
                        "the object's shape has no variable \"" + std::string(each->key) + "\"");
        }
    }
    for (VariableData& variable : object.variables) {
        variable.values.resize(ElementCount(*variable.spec));
    }
    return true;
}

bool HasValues(const ObjectData& object) {
    return std::any_of(object.variables.begin(), object.variables.end(), HasValue);
}

void WriteVariables(JsonText& text, const ObjectData& object, int depth) {
    std::vector<const VariableData*> written;
    for (const VariableData& variable : object.variables) {
        if (HasValue(variable)) written.push_back(&variable);
    }
    WriteLines(text, "{}", written, depth, [&](const VariableData* variable) {
        text.Key(variable->spec->name);
        WriteVariable(text, *variable);
    });
}

}  // namespace fixtop::casehost::json
