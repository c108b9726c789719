// SPDX-License-Identifier: Apache-2.0
#include "live/shape.h"

#include <algorithm>
#include <cstdint>

#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"
#include "casehost/units.h"
#include "naming/references.h"

namespace fixtop::casehost {

namespace {

// Variable types from here on are those of the quantities, in the order of their unit types.
constexpr host::VariableType kFirstQuantityType = 2000;
constexpr host::VariableType kFirstCompositionType = 9;
constexpr host::VariableType kLastCompositionType = 14;

// Real variables.
struct WellKnown {
    const char* name;
    std::size_t dimensions;
    int number;
    host::VariableType type;  // 0: by quantity
};

constexpr WellKnown kWellKnown[] = {
    {names::kTemperature, 0, 201, 0},   {names::kPressure, 0, 202, 0},
    {names::kMolarFlow, 0, 203, 0},     {names::kMassFlow, 0, 204, 0},
    {names::kHeatFlow, 0, 205, 0},      {names::kVapourFraction, 0, 206, 0},
    {names::kMolarEnthalpy, 0, 207, 0}, {names::kCompMoleFrac, 1, 501, 9},
    {names::kCompMassFrac, 1, 502, 10}, {"Master Comp Volume Frac", 1, 530, 11},
};

const WellKnown* FindWellKnown(const VariableSpec& spec) {
    for (const WellKnown& known : kWellKnown) {
        if (spec.name == known.name && spec.kind == ValueKind::real &&
            spec.dimensions.size() == known.dimensions) {
            return &known;
        }
    }
    return nullptr;
}

// How monikers and descriptions call a kind of value; by ordinal, which begins at `real`.
struct KindWords {
    const char* class_word;
    host::PartKind part;
};
constexpr KindWords kKinds[] = {
    {"", host::kPartNone},     {"Double", host::kPartReal},           {"Enum", host::kPartReal},
    {"Text", host::kPartText}, {"Attachment", host::kPartAttachment}, {"Message", host::kPartNone}};

const KindWords& WordsOf(ValueKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

std::string Stem(ValueKind kind, int number) {
    return std::string(WordsOf(kind).class_word) + '.' + std::to_string(number);
}

}  // namespace

host::VariableType VariableTypeOf(const VariableSpec& spec) {
    if (spec.variable_type != 0) return spec.variable_type;
    const WellKnown* known = FindWellKnown(spec);
    if (known && known->type != 0) return known->type;
    if (spec.kind == ValueKind::text && !spec.dimensions.empty()) return host::kStringArrayType;
    const Quantity* quantity = FindQuantity(spec.quantity);
    return quantity ? VariableTypeOfUnitType(quantity->type) : 0;
}

host::VarType UnitTypeOfVariableType(host::VariableType type) {
    const bool may_be = type >= kFirstQuantityType;
    return may_be && FindQuantity(type - kFirstQuantityType) ? type - kFirstQuantityType
                                                             : host::kVariableUnitType;
}

host::VariableType VariableTypeOfUnitType(host::VarType type) {
    return kFirstQuantityType + type;
}

EnumNames::EnumNames(const std::vector<std::string>& names, int low) : low_(low) {
    for (const std::string& name : names) entries_.push_back({name.c_str()});
}

const host::VarEnumEntry* EnumNames::Reset() {
    at_ = 0;
    return entries_.empty() ? nullptr : &entries_[0];
}

const host::VarEnumEntry* EnumNames::Next() {
    if (at_ < entries_.size()) ++at_;
    return at_ < entries_.size() ? &entries_[at_] : nullptr;
}

const host::VarEnumEntry* EnumNames::FindEntry(long ordinal) {
    if (ordinal < low_) return nullptr;
    const auto index = static_cast<unsigned long>(ordinal) - static_cast<unsigned long>(low_);
    return index < entries_.size() ? &entries_[index] : nullptr;
}

const host::VarEnumEntry* EnumNames::FindEntry(const host::Text& name, int& ordinal) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (!(name == entries_[i].name)) continue;
        ordinal = static_cast<int>(low_ + static_cast<long>(i));
        return &entries_[i];
    }
    return nullptr;
}

bool Row::IsComposition() const {
    const host::VariableType type = description.Type();
    return value_kind == host::kReal && spec && spec->dimensions.size() == 1 &&
           type >= kFirstCompositionType && type <= kLastCompositionType;
}

int Row::CellOf(const std::array<int, 3>& offsets) const {
    int cell = 0;
    for (std::size_t d = 0; d < spec->dimensions.size(); ++d) {
        const DimensionData& dimension = spec->dimensions[d];
        if (offsets[d] == host::VarDescription::kNoOffset) return -1;
        const std::int64_t index = std::int64_t{offsets[d]} - dimension.low;
        if (index < 0 || index >= dimension.count) return -1;
        cell = cell * dimension.count + static_cast<int>(index);
    }
    return first_cell + cell;
}

int NumberRegistry::NumberOf(const VariableSpec& spec) {
    if (spec.number != 0) return spec.number;
    if (const WellKnown* known = FindWellKnown(spec)) return known->number;
    const std::string key = Stem(spec.kind, static_cast<int>(spec.dimensions.size())) + '\n' +
                            spec.name + '\n' + spec.quantity;
    const auto [place, is_new] = given_.try_emplace(key, next_);
    if (is_new) ++next_;
    return place->second;
}

Shape::Shape(std::vector<std::shared_ptr<const VariableSpec>> specs, std::vector<PortData> ports,
             bool is_stream, NumberRegistry& numbers)
    : id_(static_cast<std::uintptr_t>(NextRevision())), ports_(std::move(ports)) {
    variable_count_ = specs.size();
    for (auto& spec : specs) {
        const int number = numbers.NumberOf(*spec);
        AddRow(std::move(spec), number);
    }
    for (std::size_t i = 0; i < ports_.size(); ++i) {
        auto spec = std::make_shared<VariableSpec>();
        spec->name = PortRowName(ports_[i]);
        spec->kind = ValueKind::attachment;
        const int number = numbers.NumberOf(*spec);
        AddRow(std::move(spec), number).port = static_cast<int>(i);
    }
    if (is_stream) AddLinks(numbers);
    const std::size_t shown = rows_.size();
    list_.Reserve(shown);
    for (std::size_t i = 0; i < shown; ++i) {
        list_.Append(static_cast<host::VariableNameInfo*>(rows_[i].get()));
        AddLabels(*rows_[i], numbers);
    }
}

Row& Shape::AddRow(std::shared_ptr<const VariableSpec> spec, int number) {
    rows_.push_back(std::make_unique<Row>());
    Row& row = *rows_.back();
    row.spec = std::move(spec);
    const std::string stem = Stem(row.spec->kind, number);
    host::VarDescription::Facts facts;
    std::string moniker = ":" + stem;
    for (std::size_t d = 0; d < row.spec->dimensions.size(); ++d) moniker += ".[]";
    facts.moniker = host::Text(moniker);
    facts.kind = WordsOf(row.spec->kind).part;
    facts.number = number;
    facts.type = VariableTypeOf(*row.spec);
    const Quantity* quantity = FindQuantity(row.spec->quantity);
    facts.unit_type = quantity ? quantity->type : host::kVariableUnitType;
    facts.minimum = row.spec->minimum;
    facts.maximum = row.spec->maximum;
    facts.host_word = id_ << kIndexBits | (rows_.size() - 1);
    row.description = host::VarDescription(facts);
    row.name = row.spec->name.c_str();
    row.value_kind = static_cast<std::int32_t>(row.spec->kind);
    row.flags = row.spec->flagged ? 1u << 6 : 0;
    row.first_cell = cell_count_;
    row.cell_count = static_cast<int>(ElementCount(*row.spec));
    const bool scalar_number = row.spec->dimensions.empty() && row.value_kind <= host::kEnumeration;
    scalar_cells_.push_back(scalar_number ? row.first_cell : -1);
    cell_count_ += row.cell_count;
    if (row.spec->kind == ValueKind::enumeration) {
        row.names = std::make_unique<EnumNames>(row.spec->options, 0);
    }
    by_stem_.try_emplace(stem, &row);
    return row;
}

void Shape::AddLinks(NumberRegistry& numbers) {
    for (std::size_t i = 0; i < kLinkNames.size(); ++i) {
        const auto has_name = [&](const auto& row) { return row->spec->name == kLinkNames[i]; };
        if (std::ranges::any_of(rows_, has_name)) continue;
        auto spec = std::make_shared<VariableSpec>();
        spec->name = kLinkNames[i];
        spec->kind = ValueKind::attachment;
        spec->dimensions.resize(1);
        spec->dimensions[0].count = 1;
        const int number = numbers.NumberOf(*spec);
        links_[i] = &AddRow(std::move(spec), number);
    }
}

void Shape::AddLabels(Row& row, NumberRegistry& numbers) {
    const std::size_t dimensions = row.spec->dimensions.size();
    if (dimensions == 0) return;
    for (std::size_t d = 0; d < dimensions && d < 3; ++d) {
        row.offset_storage[d] = OffsetDescription(row.spec->dimensions[d], numbers);
    }
    row.offset_descriptions = row.offset_storage.data();
    row.offset_description_count = static_cast<int>(dimensions);
}

// Numbered elements need no description of their own but the bare ":"; names of an enumeration are
// asked of a hidden enumerated row, texts and attached objects of a hidden array row.
host::VarDescription Shape::OffsetDescription(const DimensionData& dimension,
                                              NumberRegistry& numbers) {
    if (dimension.naming == ElementNaming::number) return host::VarDescription(":", 0);
    auto spec = std::make_shared<VariableSpec>();
    spec->name = "Element Names";
    spec->kind = dimension.naming == ElementNaming::enumeration ? ValueKind::enumeration
                 : dimension.naming == ElementNaming::text      ? ValueKind::text
                                                                : ValueKind::attachment;
    if (spec->kind != ValueKind::enumeration) spec->dimensions = {dimension};
    const int cells_before = cell_count_;
    Row& row = AddRow(std::move(spec), numbers.LabelNumber());
    cell_count_ = cells_before;
    scalar_cells_.back() = -1;
    row.labels = &dimension;
    row.cell_count = 0;
    if (row.value_kind == host::kEnumeration) {
        row.names = std::make_unique<EnumNames>(dimension.labels, dimension.low);
    }
    return row.description;
}

Row* Shape::ByStem(std::string_view stem) const {
    const auto found = by_stem_.find(std::string(stem));
    return found == by_stem_.end() ? nullptr : found->second;
}

Row* Shape::ByName(std::string_view name) const {
    for (std::size_t i = 0; i < list_.Size(); ++i) {
        if (rows_[i]->spec->name == name) return rows_[i].get();
    }
    return nullptr;
}

std::shared_ptr<const VariableSpec> ShapePool::Intern(
    const std::shared_ptr<const VariableSpec>& spec) {
    const auto known = seen_.find(spec.get());
    if (known != seen_.end() && known->second) return known->second;
    const auto [from, to] = by_name_.equal_range(spec->name);
    for (auto candidate = from; candidate != to; ++candidate) {
        if (*candidate->second == *spec) return candidate->second;
    }
    by_name_.emplace(spec->name, spec);
    // Only specs that the pool itself keeps alive are known by their address.
    seen_[spec.get()] = spec;
    return spec;
}

const Shape* ShapePool::Get(const std::vector<VariableData>& variables,
                            const std::vector<PortData>& ports, bool is_stream) {
    std::vector<std::shared_ptr<const VariableSpec>> specs;
    specs.reserve(variables.size());
    std::string key = is_stream ? "stream " : "";
    for (const VariableData& variable : variables) {
        specs.push_back(Intern(variable.spec));
        key += std::to_string(reinterpret_cast<std::uintptr_t>(specs.back().get())) + ' ';
    }
    for (const PortData& port : ports) {
        key += '|' + std::to_string(static_cast<int>(port.role)) + '.' + std::to_string(port.index);
    }
    const Shape*& shape = by_key_[key];
    if (!shape) {
        std::vector<PortData> bare = ports;
        for (PortData& port : bare) port.stream.clear();
        shapes_.push_back(
            std::make_unique<Shape>(std::move(specs), std::move(bare), is_stream, numbers_));
        shape = shapes_.back().get();
    }
    return shape;
}

}  // namespace fixtop::casehost
