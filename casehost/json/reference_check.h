// SPDX-License-Identifier: Apache-2.0
#pragma once

// Checks that ports and attachments of a case that was read name objects of the case, and that a
// unit operation has each port once. Problems stand at the JSON nodes that `data` was read from.

#include "json/json_tree.h"

namespace fixtop::casehost::json {

void CheckReferences(Tree& tree, const JsonNode& root, const CaseData& data);

}  // namespace fixtop::casehost::json
