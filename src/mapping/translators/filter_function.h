// SPDX-License-Identifier: Apache-2.0
#pragma once

// The functions by which array translators filter or reach their elements.

#include <string>

#include "diagnostics/module_log.h"
#include "mapping/translators/function_tables.h"
#include "xml/message_text.h"

namespace fixtop {

// Null, and logged, when there is no such function; null for the empty name.
template <class Function>
Function FindFilter(const SemanticModule* module, const std::string& name) {
    if (name.empty()) return nullptr;
    const auto function = FindFunctionAs<Function>(module, name);
    if (function == nullptr) {
        LogMessage(MessageText(" Filter Semantic function: %.40s not found", name.c_str()).c_str());
    }
    return function;
}

}  // namespace fixtop
