// SPDX-License-Identifier: Apache-2.0
#include "live/services_impl.h"
#include "live/case.h"

#include <cstdio>

#include "casehost/units.h"
#include "live/basis_spec.h"

namespace fixtop::casehost {

host::ApplicationForm* SessionImpl::GetAppForm() {
    return with_window_ ? this : nullptr;
}

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

host::VariableInfo* VariableTypeTable::FindVarInfo(host::VariableType type) {
    if (UnitTypeOfVariableType(type) == host::kVariableUnitType) return nullptr;
    return &infos_.try_emplace(type, type).first->second;
}

CaseHost::ServicesImpl::ServicesImpl(CaseHost& owner, bool with_window)
    : owner_(owner), session_(owner, with_window) {
    records_.ViewableObject = &types::kViewable;
    records_.SimulationObjectObject = &types::kSimulationObject;
    records_.FlowSheetObjectObject = &types::kFlowSheetObject;
    records_.UnitOpObject = &types::kUnitOp;
    records_.TemplateOpObject = &types::kTemplateOp;
}

unsigned CaseHost::ServicesImpl::DefaultUnits() {
    const Case* active = owner_.ActiveLiveCase();
    return active ? active->UnitSet() : 0;
}

const host::UnitRecord* CaseHost::ServicesImpl::def_unit(host::VarType type, unsigned set) {
    const Quantity* quantity = FindQuantity(type);
    if (!quantity) return nullptr;
    return FindUnit(*quantity, quantity->defaults[set < kUnitSets ? set : 0]);
}

const host::UnitRecord* CaseHost::ServicesImpl::findunit(const char* name, host::VarType type) {
    const Quantity* quantity = FindQuantity(type);
    return quantity && name ? FindUnit(*quantity, name) : nullptr;
}

double CaseHost::ServicesImpl::calc_unit(double value, const host::UnitRecord* unit) {
    return unit && value != host::kEmptyReal ? ToInternal(value, *unit) : value;
}

double CaseHost::ServicesImpl::calc_ounit(double value, const host::UnitRecord* unit) {
    return unit && value != host::kEmptyReal ? FromInternal(value, *unit) : value;
}

const char* CaseHost::ServicesImpl::utypetoa(host::VarType type) {
    const Quantity* quantity = FindQuantity(type);
    return quantity ? quantity->name : "";
}

host::VarType CaseHost::ServicesImpl::GetUnitConvTypeFromVarType(host::VariableType type) {
    return UnitTypeOfVariableType(type);
}

host::VariableType CaseHost::ServicesImpl::GetVarTypeFromUnitString(const char* unit) {
    const Quantity* quantity = unit ? FindQuantityOfUnit(unit) : nullptr;
    return quantity ? VariableTypeOfUnitType(quantity->type) : host::kEmptyDimensionMarker;
}

void CaseHost::ServicesImpl::UnitConvList(host::VarType type) {
    walk_type_ = type;
    walk_at_ = 0;
}

host::Text CaseHost::ServicesImpl::GetFirstConvName() {
    walk_at_ = 0;
    return GetNextConvName();
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

void CaseHost::ServicesImpl::GetVariableStatus(host::Viewable* object,
                                               const host::VarDescription& variable,
                                               host::ModifyState& state, int&) {
    Node* node = Node::Of(object);
    if (node) node->Status(variable, state);
}

bool CaseHost::ServicesImpl::IsOutdated(host::Viewable* object,
                                        const host::VarDescription& variable) {
    Node* node = Node::Of(object);
    return node && node->IsOutdated(variable);
}

const host::ObjectTypeInfo* CaseHost::ServicesImpl::FindObjectType(const host::Text& class_name) {
    return types::Find(class_name.Str());
}

bool CaseHost::ServicesImpl::DescribeMoniker(const host::Text& moniker,
                                             host::VarDescription::Facts& out) {
    const Case* active = owner_.ActiveLiveCase();
    return active && active->DescribeMoniker(moniker.Str(), out);
}

host::CSpecInfo* CaseHost::ServicesImpl::NewSpecInfo() {
    return std::make_unique<SpecInfo>().release();
}

void CaseHost::ServicesImpl::DeleteSpecInfo(host::CSpecInfo* info) {
    const std::unique_ptr<SpecInfo> owned(static_cast<SpecInfo*>(info));
}

void CaseHost::ServicesImpl::SetConfigData(const char* key, double value, bool) {
    if (key) config_[key] = value;
}

double CaseHost::ServicesImpl::ConfigData(const std::string& key) const {
    const auto found = config_.find(key);
    return found == config_.end() ? kEmpty : found->second;
}

host::Text CaseHost::ServicesImpl::NumToText(double value) {
    if (value == host::kEmptyReal) return host::Text();
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.12lg", value);
    return host::Text(buffer);
}

}  // namespace fixtop::casehost
