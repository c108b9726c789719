// SPDX-License-Identifier: Apache-2.0
#include "casehost/units.h"

#include <algorithm>
#include <unordered_map>

namespace fixtop::casehost {

const std::vector<Quantity>& Quantities() {
    static const std::vector<Quantity> all = [] {
        std::vector<Quantity> quantities = {
#include "units.inc"
        };
        host::VarType type = 0;
        for (Quantity& each : quantities) each.type = ++type;
        return quantities;
    }();
    return all;
}

const Quantity* FindQuantity(std::string_view name) {
    static const auto by_name = [] {
        std::unordered_map<std::string_view, const Quantity*> index;
        for (const Quantity& each : Quantities()) index.try_emplace(each.name, &each);
        return index;
    }();
    const auto found = by_name.find(name);
    return found == by_name.end() ? nullptr : found->second;
}

const Quantity* FindQuantity(host::VarType type) {
    const std::vector<Quantity>& all = Quantities();
    if (type < 1 || type > static_cast<host::VarType>(all.size())) return nullptr;
    return &all[type - 1];
}

const host::UnitRecord* DefaultUnit(host::VarType type, unsigned set) {
    using OfSets = std::array<const host::UnitRecord*, kUnitSets>;
    static const std::vector<OfSets> by_type = [] {
        std::vector<OfSets> table;
        for (const Quantity& each : Quantities()) {
            OfSets& units = table.emplace_back();
            for (unsigned i = 0; i < kUnitSets; ++i) units[i] = FindUnit(each, each.defaults[i]);
        }
        return table;
    }();
    const auto place = static_cast<std::size_t>(type) - 1;
    return place < by_type.size() ? by_type[place][set < kUnitSets ? set : 0] : nullptr;
}

const Quantity* FindQuantityOfUnit(std::string_view unit) {
    for (const Quantity& quantity : Quantities()) {
        if (FindUnit(quantity, unit)) return &quantity;
    }
    return nullptr;
}

const host::UnitRecord* FindUnit(const Quantity& quantity, std::string_view name) {
    const auto found = std::ranges::find(quantity.units, name, &host::UnitRecord::name);
    return found == quantity.units.end() ? nullptr : &*found;
}

}  // namespace fixtop::casehost
