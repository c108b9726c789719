// SPDX-License-Identifier: Apache-2.0
// The live case as data, and results of a solve taken over.

#include "live/basis_tree.h"
#include "live/case.h"

namespace fixtop::casehost {

ObjectData Case::ObjectToData(Node& node) {
    ObjectData data;
    data.name = node.Name().Str();
    data.type = node.Class()->DisplayName().Str();
    data.variables = node.VariablesToData();
    data.stale = IsRecorded() && node.IsStale();
    data.status = data.stale ? node.ResultCondition() : node.Condition();
    data.status_text = node.StatusText();
    const Shape& shape = *node.GetShape();
    for (const auto& row : shape.AllRows()) {
        Node* stream = row->port < 0 ? nullptr : node.PortTarget(*row);
        if (!stream) continue;
        PortData& port = data.ports.emplace_back(shape.Ports()[row->port]);
        port.stream = stream->Name().Str();
    }
    if (FlowsheetNode* inner = node.Inner()) {
        data.sub_flowsheet = std::make_shared<FlowsheetData>(FlowsheetToData(*inner));
    }
    return data;
}

std::vector<ObjectData> Case::ListToData(NodeList& list) {
    std::vector<ObjectData> objects;
    objects.reserve(list.Size());
    for (std::size_t i = 0; i < list.Size(); ++i) objects.push_back(ObjectToData(list.At(i)));
    return objects;
}

CaseData Case::ToData() {
    CaseData data{basics_, {}, {}, {}, {}, {}, {}};
    data.main = FlowsheetToData(*main_);
    data.basis = basis_->Tree().ToData();
    for (const Section& each : sections_) data.*each.data = ListToData(*each.list);
    return data;
}

bool Case::SameStructure(NodeList& list, const std::vector<ObjectData>& other) {
    if (list.Size() != other.size()) return false;
    for (std::size_t i = 0; i < other.size(); ++i) {
        Node& node = list.At(i);
        if (node.Name().Str() != other[i].name) return false;
        if (node.GetShape()->VariableCount() != other[i].variables.size()) return false;
        if (!node.Inner()) continue;
        if (!other[i].sub_flowsheet) return false;
        if (!SameStructure(node.Inner()->Nodes(), other[i].sub_flowsheet->objects)) return false;
    }
    return true;
}

bool Case::ApplyResults(const CaseData& results) {
    if (!SameStructure(main_->Nodes(), results.main.objects)) return false;
    if (!SameStructure(utilities_, results.utilities)) return false;
    ApplyList(main_->Nodes(), results.main.objects);
    ApplyList(utilities_, results.utilities);
    ForEachIn(data_tables_, [](Node& node) { node.SetStale(false); });
    ForEachIn(basis_->Nodes(), [](Node& node) { node.SetStale(false); });
    return true;
}

// Specified values stay as they are; whatever the engine computed replaces the rest.
void Case::ApplyList(NodeList& list, const std::vector<ObjectData>& results) {
    constexpr auto kCalculated = VariableState::calculated;
    for (std::size_t i = 0; i < results.size(); ++i) {
        Node& node = list.At(i);
        for (std::size_t v = 0; v < results[i].variables.size(); ++v) {
            const Row& row = *node.GetShape()->AllRows()[v];
            if (row.value_kind == host::kAttachment) continue;
            const std::vector<ValueData>& values = results[i].variables[v].values;
            const std::span<Cell> cells = node.CellsOf(row);
            for (std::size_t c = 0; c < std::min(cells.size(), values.size()); ++c) {
                const ValueData& value = values[c];
                Cell& cell = cells[c];
                const auto state = static_cast<VariableState>(cell.state);
                // What was calculated before and isn't found now stays calculated, but empty.
                const bool found = value.state == kCalculated;
                if (state != kCalculated && !(found && state == VariableState::missing)) continue;
                cell.number = found ? value.number : kEmpty;
                cell.state = static_cast<std::uint8_t>(kCalculated);
                if (row.value_kind >= host::kText) node.SetTextAt(cell, value.text);
            }
        }
        node.SetCondition(results[i].status, results[i].status_text);
        node.SetStale(false);
        if (node.Inner()) ApplyList(node.Inner()->Nodes(), results[i].sub_flowsheet->objects);
    }
}

}  // namespace fixtop::casehost
