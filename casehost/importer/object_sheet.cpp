// SPDX-License-Identifier: Apache-2.0
#include "object_sheet.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace fixtop::casehost::importer {

namespace {

// How numbers in that unit become internal ones.
host::UnitRecord Resolve(const FileUnit& unit) {
    if (*unit.quantity == '\0') return {1.0, 0.0, ""};
    const Quantity* quantity = FindQuantity(unit.quantity);
    const host::UnitRecord* known = quantity ? FindUnit(*quantity, unit.name) : nullptr;
    if (known) return *known;
    throw std::logic_error(std::string("no unit ") + unit.name + " of " + unit.quantity);
}

Number Converted(Number value, const host::UnitRecord& unit) {
    if (!value) return value;
    const double number = ToInternal(*value, unit);
    return std::isfinite(number) ? Number(number) : std::nullopt;
}

ValueData Stored(Number value, const host::UnitRecord& unit, VariableState state) {
    ValueData stored;
    const Number number = Converted(value, unit);
    if (!number) return stored;
    stored.number = *number;
    stored.state = state;
    return stored;
}

ValueData StoredText(std::string_view text, VariableState state) {
    ValueData stored;
    stored.text = text;
    stored.state = text.empty() ? VariableState::missing : state;
    return stored;
}

VariableSpec RealSpec(const std::string& name, FileUnit unit) {
    VariableSpec spec;
    spec.name = name;
    spec.quantity = unit.quantity;
    return spec;
}

}  // namespace

std::vector<Choice> Words(std::initializer_list<const char*> words) {
    std::vector<Choice> choices;
    for (const char* word : words) choices.push_back({word, word});
    return choices;
}

const VariableData* FindVariable(const ObjectData& object, std::string_view name) {
    const auto has_name = [&](const VariableData& each) { return each.spec->name == name; };
    const auto found = std::ranges::find_if(object.variables, has_name);
    return found == object.variables.end() ? nullptr : &*found;
}

Number NumberOf(const ValueData& value) {
    return value.number == kEmpty ? Number() : Number(value.number);
}

DimensionData LabelledBy(std::vector<std::string> labels) {
    DimensionData dimension;
    dimension.count = static_cast<int>(labels.size());
    dimension.naming = ElementNaming::text;
    dimension.labels = std::move(labels);
    return dimension;
}

DimensionData Numbered(std::size_t count) {
    DimensionData dimension;
    dimension.count = static_cast<int>(count);
    return dimension;
}

Number InInternalUnit(Number value, FileUnit unit) {
    return Converted(value, Resolve(unit));
}

void ObjectSheet::Add(VariableSpec spec, std::vector<ValueData> values) {
    reading_.value_count += values.size();
    object_.variables.push_back({reading_.specs.Share(std::move(spec)), std::move(values)});
}

void ObjectSheet::Real(const std::string& name, FileUnit unit, Number value, VariableState state) {
    Add(RealSpec(name, unit), {Stored(value, Resolve(unit), state)});
}

void ObjectSheet::Text(const std::string& name, std::string_view text, VariableState state) {
    VariableSpec spec;
    spec.name = name;
    spec.kind = ValueKind::text;
    Add(std::move(spec), {StoredText(text, state)});
}

void ObjectSheet::Texts(const std::string& name, DimensionData dimension,
                        const std::vector<std::string>& texts, VariableState state) {
    VariableSpec spec;
    spec.name = name;
    spec.kind = ValueKind::text;
    spec.dimensions.push_back(std::move(dimension));
    std::vector<ValueData> values;
    values.reserve(texts.size());
    for (const std::string& text : texts) values.push_back(StoredText(text, state));
    Add(std::move(spec), std::move(values));
}

void ObjectSheet::Attachment(const std::string& name, const std::string& object) {
    VariableSpec spec;
    spec.name = name;
    spec.kind = ValueKind::attachment;
    Add(std::move(spec), {StoredText(object, VariableState::specified)});
}

void ObjectSheet::Option(const std::string& name, const std::vector<Choice>& choices,
                         std::string_view word, VariableState state) {
    VariableSpec spec;
    spec.name = name;
    spec.kind = ValueKind::enumeration;
    ValueData value;
    for (const Choice& choice : choices) {
        if (EqualIgnoringCase(choice.word, word)) {
            value.number = static_cast<double>(spec.options.size());
        }
        spec.options.push_back(choice.shown);
    }
    if (value.number == kEmpty && !word.empty()) {
        value.number = static_cast<double>(spec.options.size());
        spec.options.emplace_back(word);
    }
    value.state = value.number == kEmpty ? VariableState::missing : state;
    Add(std::move(spec), {value});
}

void ObjectSheet::Array(const std::string& name, FileUnit unit,
                        std::vector<DimensionData> dimensions, const std::vector<Number>& values,
                        VariableState state, Address address) {
    if (reading_.value_count + values.size() > Reading::kMaxValues) {
        if (!reading_.problems.Failed()) {
            reading_.problems.Error("more than " + std::to_string(Reading::kMaxValues) +
                                    " values; expected a smaller flowsheet");
        }
        return;
    }
    VariableSpec spec = RealSpec(name, unit);
    spec.number = address.number;
    spec.variable_type = address.variable_type;
    spec.dimensions = std::move(dimensions);
    std::vector<ValueData> stored;
    stored.reserve(values.size());
    const host::UnitRecord record = Resolve(unit);
    for (const Number& value : values) stored.push_back(Stored(value, record, state));
    Add(std::move(spec), std::move(stored));
}

void ObjectSheet::Numbers(const std::string& name, FileUnit unit,
                          const std::vector<Number>& values) {
    Array(name, unit, {Numbered(values.size())}, values);
}

// Texts and paths of objects alike: an empty one is no value.
void ObjectSheet::AddTexts(VariableSpec spec, const std::vector<std::string>& texts) {
    std::vector<ValueData> values;
    for (const std::string& text : texts) {
        ValueData& value = values.emplace_back();
        value.text = text;
        if (!text.empty()) value.state = VariableState::specified;
    }
    Add(std::move(spec), std::move(values));
}

void ObjectSheet::Texts(const std::string& name, const std::vector<std::string>& texts) {
    VariableSpec spec;
    spec.name = name;
    spec.kind = ValueKind::text;
    spec.dimensions = {Numbered(texts.size())};
    AddTexts(std::move(spec), texts);
}

void ObjectSheet::Link(const std::string& name, const std::string& path) {
    VariableSpec spec;
    spec.name = name;
    spec.kind = ValueKind::attachment;
    AddTexts(std::move(spec), {path});
}

void ObjectSheet::Links(const std::string& name, const std::vector<std::string>& paths,
                        std::vector<std::string> names) {
    VariableSpec spec;
    spec.name = name;
    spec.kind = ValueKind::attachment;
    spec.dimensions = {names.empty() ? Numbered(paths.size()) : LabelledBy(std::move(names))};
    AddTexts(std::move(spec), paths);
}

void ObjectSheet::CopyAs(const VariableData* source, const std::string& name) {
    if (!source) return;
    VariableSpec spec = *source->spec;
    spec.name = name;
    Add(std::move(spec), source->values);
}

}  // namespace fixtop::casehost::importer
