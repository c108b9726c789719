// SPDX-License-Identifier: Apache-2.0
#pragma once

// The variables of one object in case files: their values, units and states.

#include "json/json_text.h"
#include "json/json_tree.h"
#include "json/shape_json.h"

namespace fixtop::casehost::json {

// The variables of `shape` in its order, and those that declare themselves where they stand; `node`
// may be null. Every variable comes out with all its values. `room` is the number of values that
// may still be made; false, and nothing of use in `object`, when these are more.
bool ReadVariables(Tree& tree, const JsonNode* node, const Shape& shape, ObjectData& object,
                   std::size_t& room);

// Whether any variable has a value or a state to write.
bool HasValues(const ObjectData& object);
// An object with a member for each variable that has a value, at `depth`.
void WriteVariables(JsonText& text, const ObjectData& object, int depth);

}  // namespace fixtop::casehost::json
