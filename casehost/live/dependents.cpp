// SPDX-License-Identifier: Apache-2.0
#include "live/dependents.h"

#include <unordered_set>

#include "live/objects.h"

namespace fixtop::casehost {

void DependencyMap::AddNode(Node& node) {
    if (!node.GetShape()) return;
    if (node.Class()->IsA(&types::kUnitOp)) AddPorts(node);
    if (!node.Class()->IsA(&types::kFlowSheetObject)) AddAttachments(node);
    FlowsheetNode* inner = node.Inner();
    if (!inner) return;
    for (std::size_t i = 0; i < inner->Nodes().Size(); ++i) {
        AddEdge(node, inner->Nodes().At(i));
        AddEdge(inner->Nodes().At(i), node);
    }
}

// An energy stream on either side may carry the duty that its unit operation computes.
void DependencyMap::AddPorts(Node& unit) {
    for (const auto& row : unit.GetShape()->AllRows()) {
        Node* stream = row->port < 0 ? nullptr : unit.PortTarget(*row);
        if (!stream) continue;
        const PortData::Role role = unit.GetShape()->Ports()[row->port].role;
        if (role == PortData::Role::feed || role == PortData::Role::energy_in)
            AddEdge(*stream, unit);
        if (role != PortData::Role::feed) AddEdge(unit, *stream);
        if (role == PortData::Role::product || role == PortData::Role::energy_out) {
            makers_[stream] = &unit;
        }
    }
}

void DependencyMap::AddAttachments(Node& node) {
    for (const auto& row : node.GetShape()->AllRows()) {
        if (row->value_kind != host::kAttachment) continue;
        for (const Cell& cell : node.CellsOf(*row)) {
            if (Node* target = node.Target(cell)) AddEdge(*target, node);
        }
    }
}

std::vector<Node*> DependencyMap::Closure(Node& start) const {
    std::vector<Node*> reached = {&start};
    if (const auto maker = makers_.find(&start); maker != makers_.end()) {
        reached.push_back(maker->second);
    }
    std::unordered_set<const Node*> seen(reached.begin(), reached.end());
    for (std::size_t i = 0; i < reached.size(); ++i) {
        const auto found = dependents_.find(reached[i]);
        if (found == dependents_.end()) continue;
        for (Node* next : found->second) {
            if (seen.insert(next).second) reached.push_back(next);
        }
    }
    return reached;
}

}  // namespace fixtop::casehost
