// SPDX-License-Identifier: Apache-2.0
#pragma once

// Comparison: values of two cases beside each other, of which those are written that differ.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "collect/selected_items.h"
#include "collect/tolerances.h"
#include "fixtop/value.h"
#include "json.h"
#include "table.h"

namespace fixtop {

struct ComparedItem {
    std::string path;
    // In the first case and in the second; none where that has no such node.
    std::array<std::optional<TableCell>, 2> sides;
};

class Comparison {
 public:
    // --tolerance, --csv and --json
    void Declare(CLI::App& app);
    // A line each item that differs: path, both values, unit and difference; a side that is not
    // there is empty. Counts stale values in a note. Whether any item differs.
    bool Write(const std::vector<ComparedItem>& items, const std::array<std::string, 2>& names,
               Output& out) const;

 private:
    void TakeTolerances(const std::vector<std::string>& texts);
    // Notes the tolerances of units that no value has: they were meant for some.
    void TellUnused(const std::vector<ComparedItem>& items, Output& out) const;
    bool IsSame(const ComparedItem& item) const;

    Tolerances tolerances_;
    ItemFormat format_;
};

}  // namespace fixtop
