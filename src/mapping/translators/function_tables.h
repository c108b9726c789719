// SPDX-License-Identifier: Apache-2.0
#pragma once

// Functions by their names in the table of a module that maps may name.

#include <string>
#include <variant>

#include "mapping/translators/semantic_modules.h"

namespace fixtop {

// The row of the function of this name and kind; null without a module, and for a name of another
// kind.
template <class Function>
const NamedFunction* FindFunctionRow(const SemanticModule* module, const std::string& name) {
    if (!module) return nullptr;
    for (const NamedFunction& row : module->functions) {
        if (std::holds_alternative<Function>(row.function) && row.name == name) return &row;
    }
    return nullptr;
}

// The function itself.
template <class Function>
Function FindFunctionAs(const SemanticModule* module, const std::string& name) {
    const NamedFunction* row = FindFunctionRow<Function>(module, name);
    return row ? std::get<Function>(row->function) : nullptr;
}

}  // namespace fixtop
