// SPDX-License-Identifier: Apache-2.0
#pragma once

// All functions of this folder that a map file may name, with their kinds. The module exports the
// same names.

#include <span>

#include "fixtop/semantic_function.h"

namespace fixtop {

std::span<const NamedFunction> SemanticFunctionTable();

}  // namespace fixtop
