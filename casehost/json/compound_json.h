// SPDX-License-Identifier: Apache-2.0
#pragma once

// The constants of one compound in case files.

#include "json/json_text.h"
#include "json/json_tree.h"

namespace fixtop::casehost::json {

CompoundData ReadCompound(Tree& tree, const JsonNode& node);
void WriteCompound(JsonText& text, const CompoundData& compound);

}  // namespace fixtop::casehost::json
