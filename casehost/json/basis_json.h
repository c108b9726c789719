// SPDX-License-Identifier: Apache-2.0
#pragma once

// The basis in case files: its compounds and its elements.

#include "casehost/case_data.h"
#include "json/json_text.h"
#include "json/json_tree.h"

namespace fixtop::casehost::json {

CompoundData ReadCompound(Tree& tree, const JsonNode& node);
void WriteCompound(JsonText& text, const CompoundData& compound);

std::vector<BasisElement> ReadBasis(Tree& tree, const JsonNode& array);
// An array, its elements at `depth` plus one.
void WriteBasis(JsonText& text, const std::vector<BasisElement>& elements, int depth);

}  // namespace fixtop::casehost::json
