// SPDX-License-Identifier: Apache-2.0
#pragma once

// The functions of a module as a check sees them: by name and kind.

#include <string>

#include "mapping/check/findings.h"
#include "mapping/translators/semantic_modules.h"

namespace fixtop {

// In the order of NamedFunction's kinds.
enum class FunctionKind : int { kStep, kList, kTop };

// What is wrong with a name where a function of this kind is wanted; empty when it is one.
std::string WrongFunction(const SemanticModule& module, const std::string& name, FunctionKind kind,
                          Findings& findings);

}  // namespace fixtop
