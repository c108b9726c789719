// SPDX-License-Identifier: Apache-2.0
#include "semantic/function_table.h"

#include "fixtop/semantic_functions.h"
#include "semantic/stage_kind.h"

namespace fixtop {

namespace {

// The compiler takes the kind from the function.
constexpr NamedFunction kFunctions[] = {
#define FIXTOP_STEP(name) {#name, name},
#define FIXTOP_ASKED_STEP(name) {#name, name, false, true},
#define FIXTOP_LIST(name) {#name, name},
#define FIXTOP_CHILD_LIST(name) {#name, name, true},
#define FIXTOP_LATE_LIST(name, late) {#name, name, false, false, &semantic::late},
#include "fixtop/semantic_function_list.h"
};

}  // namespace

std::span<const NamedFunction> SemanticFunctionTable() {
    return kFunctions;
}

}  // namespace fixtop
