#include "uom_adapter/uom_definitions.h"

#include "uom_adapter/uom_reader.h"

bool UomDefinitions::Read(const std::string& name) {
    return ReadUomDefinitions(name, *this) && !units_.empty();
}

int UomDefinitions::FindQuantity(const std::string& name) const {
    const auto found = quantity_numbers_.find(name);
    return found == quantity_numbers_.end() ? 0 : found->second;
}

int UomDefinitions::FindUnit(const std::string& name, int quantity) const {
    const UomQuantity* within = Quantity(quantity);
    if (quantity != 0 && within == nullptr) return 0;
    const std::map<std::string, int>& units = within == nullptr ? first_units_ : within->units;
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

int UomDefinitions::AddQuantity(const std::string& name, const std::string& base_unit) {
    const auto [entry, is_new] =
        quantity_numbers_.emplace(name, static_cast<int>(quantities_.size()) + 1);
    if (is_new) quantities_.push_back({name, base_unit, {}});
    return entry->second;
}

void UomDefinitions::AddUnit(const Uom& unit) {
    const int number = static_cast<int>(units_.size()) + 1;
    UomQuantity& quantity = quantities_[static_cast<std::size_t>(unit.quantity) - 1];
    if (!quantity.units.emplace(unit.name, number).second) return;
    units_.push_back(unit);
    first_units_.emplace(unit.name, number);
}
