// SPDX-License-Identifier: Apache-2.0
#include "live/services_impl.h"

#include <cstdio>
#include <cstdlib>

namespace fixtop::casehost {

bool SessionImpl::HideDocument(host::Document* document, bool hide) {
    for (const auto& each : owner_.Cases()) {
        if (static_cast<host::Document*>(each.get()) != document) continue;
        each->SetVisible(!hide);
        if (!hide) owner_.Activate(*each);
        return true;
    }
    return false;
}

host::Text SessionImpl::SessionText(bool full) {
    std::string text = "Case Host";
    if (!full) return host::Text(text);
    for (const auto& each : owner_.Cases()) text += "; " + each->Name().Str();
    return host::Text(text);
}

CaseHost::ServicesImpl::ServicesImpl(CaseHost& owner, bool with_window)
    : owner_(owner), session_(owner, with_window) {
    records_.ViewableObject = &types::kViewable;
    records_.SimulationObjectObject = &types::kSimulationObject;
    records_.FlowSheetObjectObject = &types::kFlowSheetObject;
    records_.UnitOpObject = &types::kUnitOp;
    records_.TemplateOpObject = &types::kTemplateOp;
}

const host::UnitRecord* CaseHost::ServicesImpl::def_unit(host::VarType type, unsigned set) {
    return DefaultUnit(type, set);
}

const host::UnitRecord* CaseHost::ServicesImpl::findunit(const char* name, host::VarType type) {
    const Quantity* quantity = FindQuantity(type);
    return quantity && name ? FindUnit(*quantity, name) : nullptr;
}

host::VariableType CaseHost::ServicesImpl::GetVarTypeFromUnitString(const char* unit) {
    const Quantity* quantity = unit ? FindQuantityOfUnit(unit) : nullptr;
    return quantity ? VariableTypeOfUnitType(quantity->type) : host::kEmptyDimensionMarker;
}

host::Text CaseHost::ServicesImpl::GetNextConvName() {
    const Quantity* quantity = FindQuantity(walk_type_);
    if (!quantity || walk_at_ >= quantity->units.size()) return host::Text();
    return host::Text(quantity->units[walk_at_++].name);
}

host::Text CaseHost::ServicesImpl::RelativeMoniker(host::Viewable* from, host::Viewable* to, bool) {
    // Without the names a moniker would not lead back to its object, so every one is a full one.
    const Node* target = Node::Of(to);
    if (!target) return host::Text();
    const std::string moniker = target->OwnerCase().MonikerOf(*target);
    const Node* start = Node::Of(from);
    if (!start) return host::Text(moniker);
    const std::string prefix = start->OwnerCase().MonikerOf(*start) + "/";
    return host::Text(moniker.rfind(prefix, 0) == 0 ? moniker.substr(prefix.size()) : moniker);
}

host::Text CaseHost::ServicesImpl::NumToText(double value) {
    if (value == host::kEmptyReal) return host::Text();
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.12lg", value);
    return host::Text(buffer);
}

}  // namespace fixtop::casehost
