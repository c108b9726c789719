// SPDX-License-Identifier: Apache-2.0
#pragma once

// The selection that a case publishes in a file beside its document, as the children of its model
// node: views of the nodes to which the paths of the file lead.

#include "host/levels/model_nodes.h"

namespace fixtop {

bool HasPublishedFile(host::SimulationCase& simulation_case);

// The list of the case of `models`; the shared empty context where there is no file, or a file that
// is no selection. The tree in which the nodes are sought does not show the list itself.
FIContext* MakePublishedList(const HAandCContext& models);

}  // namespace fixtop
