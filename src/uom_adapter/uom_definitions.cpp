// SPDX-License-Identifier: Apache-2.0
#include "uom_adapter/uom_definitions.h"

#include "uom_adapter/uom_reader.h"

namespace fixtop {

std::string UomDefinitions::Read(const std::string& name) {
    std::string problem = ReadUomDefinitions(name, *this);
    if (problem.empty() && units_.empty()) problem = "file " + name + " defines no unit";
    return problem;
}

void UomDefinitions::Clear() noexcept {
    first_units_.clear();
    quantity_numbers_.clear();
    units_.clear();
    quantities_.clear();
}

int UomDefinitions::FindQuantity(std::string_view name) const {
    const auto found = quantity_numbers_.find(name);
    return found == quantity_numbers_.end() ? 0 : found->second;
}

int UomDefinitions::FindUnit(std::string_view name, int quantity) const {
    const UomQuantity* within = Quantity(quantity);
    if (quantity != 0 && within == nullptr) return 0;
    const UomNumbers& units = within == nullptr ? first_units_ : within->units;
    const auto found = units.find(name);
    return found == units.end() ? 0 : found->second;
}

const UomQuantity* UomDefinitions::Quantity(int number) const {
    const auto index = static_cast<std::size_t>(number) - 1;
    return index < quantities_.size() ? &quantities_[index] : nullptr;
}

const Uom* UomDefinitions::Unit(int number) const {
    const auto index = static_cast<std::size_t>(number) - 1;
    return index < units_.size() ? &units_[index] : nullptr;
}

double UomDefinitions::Convert(double value, int from_unit, int to_unit) const {
    const Uom* from = Unit(from_unit);
    const Uom* to = Unit(to_unit);
    if (from == nullptr || to == nullptr || from == to) return value;
    if (Quantity(from->quantity)->base_unit != Quantity(to->quantity)->base_unit) return value;
    const double base = from->formula == UomFormula::kLinear
                            ? from->factor * value + from->offset
                            : from->factor / (value + from->offset);
    return to->formula == UomFormula::kLinear ? (base - to->offset) / to->factor
                                              : to->factor / base - to->offset;
}

int UomDefinitions::AddQuantity(std::string_view name, std::string_view base_unit) {
    if (const int known = FindQuantity(name); known != 0) return known;
    const UomQuantity& quantity =
        quantities_.emplace_back(UomQuantity{std::string(name), std::string(base_unit), {}});
    const int number = static_cast<int>(quantities_.size());
    quantity_numbers_.emplace(quantity.name, number);
    return number;
}

void UomDefinitions::AddUnit(Uom unit) {
    UomNumbers& units = quantities_[static_cast<std::size_t>(unit.quantity) - 1].units;
    if (units.contains(unit.name)) return;
    const Uom& added = units_.emplace_back(std::move(unit));
    const int number = static_cast<int>(units_.size());
    units.emplace(added.name, number);
    first_units_.emplace(added.name, number);
}

}  // namespace fixtop
