// SPDX-License-Identifier: Apache-2.0
#include "file_units.h"

#include <stdexcept>

namespace fixtop::casehost::importer {

host::UnitRecord Resolve(const FileUnit& unit) {
    if (*unit.quantity == '\0') return {unit.scale, 0.0, ""};
    const Quantity* quantity = FindQuantity(unit.quantity);
    const host::UnitRecord* known = quantity ? FindUnit(*quantity, unit.name) : nullptr;
    if (!known) {
        throw std::logic_error(std::string("no unit ") + unit.name + " of " + unit.quantity);
    }
    return *known;
}

}  // namespace fixtop::casehost::importer
