// SPDX-License-Identifier: Apache-2.0
#pragma once

// The functions that maps name where a path can't say how an attribute is reached. They come from
// tables that the program offers, each under the name of a module: a file can't bring code into the
// process, and reaches of this module only what is made for maps, in the form it is made for.

#include <span>
#include <string>

#include "fixtop/semantic_function.h"

namespace fixtop {

// The module that is linked around this code, by the name that maps know it by.
inline constexpr char kOwnModule[] = "fixtop.dll";

// A module that maps may name.
struct SemanticModule {
    std::string name;
    std::span<const NamedFunction> functions;
};

// Lets maps name the module; one of the same name is replaced, for maps read from then on. The
// functions outlive all maps that name them. Names of modules do not distinguish case.
void OfferSemanticModule(const char* name, std::span<const NamedFunction> functions);
// The module is no longer offered; trees that are open keep its functions.
void WithdrawSemanticModule(const char* name);

// The module that a map may take by this name; null for any other.
const SemanticModule* FindSemanticModule(const std::string& name);

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
