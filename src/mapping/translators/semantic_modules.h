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

}  // namespace fixtop
