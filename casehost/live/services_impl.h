// SPDX-License-Identifier: Apache-2.0
#pragma once

// The host's free functions, the session and the window, over the cases of one CaseHost.

#include <cstdlib>
#include <map>
#include <string>

#include "casehost/case_host.h"
#include "casehost/units.h"
#include "live/basis_spec.h"
#include "live/case.h"

namespace fixtop::casehost {

class SessionImpl final : public host::Session, public host::ApplicationForm {
 public:
    SessionImpl(CaseHost& owner, bool with_window) : owner_(owner), with_window_(with_window) {}

    host::SimulationCase* ActiveCase() override { return owner_.ActiveCase(); }
    host::ApplicationForm* GetAppForm() override { return with_window_ ? this : nullptr; }
    bool HideDocument(host::Document* document, bool hide) override;
    host::Text SessionText(bool full) override;
    void GetWindowPlacement(host::WindowPlacement& out) override { out = placement_; }
    void SetWindowPlacement(const host::WindowPlacement& placement) override {
        placement_ = placement;
    }

 private:
    CaseHost& owner_;
    bool with_window_;
    host::WindowPlacement placement_{4};
};

class VariableTypeTable final : public host::VariableTypes {
 public:
    host::VariableInfo* FindVarInfo(host::VariableType type) override {
        const bool known = UnitTypeOfVariableType(type) != host::kVariableUnitType;
        return known ? &infos_.try_emplace(type, type).first->second : nullptr;
    }

 private:
    struct Info final : host::VariableInfo {
        explicit Info(host::VariableType known) : type(known) {}
        host::VariableType UnitLookupType() const override { return type; }
        host::VariableType type;
    };
    std::map<host::VariableType, Info> infos_;
};

class CaseHost::ServicesImpl final : public host::HostServices {
 public:
    ServicesImpl(CaseHost& owner, bool with_window);

    unsigned DefaultUnits() override {
        const Case* active = owner_.ActiveLiveCase();
        return active ? active->UnitSet() : 0;
    }
    const host::UnitRecord* def_unit(host::VarType type, unsigned set) override;
    const host::UnitRecord* findunit(const char* name, host::VarType type) override;
    double calc_unit(double value, const host::UnitRecord* unit) override {
        return unit && value != host::kEmptyReal ? ToInternal(value, *unit) : value;
    }
    double calc_ounit(double value, const host::UnitRecord* unit) override {
        return unit && value != host::kEmptyReal ? FromInternal(value, *unit) : value;
    }
    const char* utypetoa(host::VarType type) override {
        const Quantity* quantity = FindQuantity(type);
        return quantity ? quantity->name : "";
    }
    host::VarType GetUnitConvTypeFromVarType(host::VariableType type) override {
        return UnitTypeOfVariableType(type);
    }
    host::VariableType GetVarTypeFromUnitString(const char* unit) override;
    void UnitConvList(host::VarType type) override {
        walk_type_ = type;
        walk_at_ = 0;
    }
    host::Text GetFirstConvName() override {
        walk_at_ = 0;
        return GetNextConvName();
    }
    host::Text GetNextConvName() override;

    host::Text RelativeMoniker(host::Viewable* from, host::Viewable* to, bool full) override;
    void GetVariableStatus(host::Viewable* object, const host::VarDescription& variable,
                           host::ModifyState& state, int&) override {
        if (Node* node = Node::Of(object)) node->Status(variable, state);
    }
    bool IsOutdated(host::Viewable* object, const host::VarDescription& variable) override {
        Node* node = Node::Of(object);
        return node && node->IsOutdated(variable);
    }
    const host::ObjectTypeInfo* FindObjectType(const host::Text& class_name) override {
        return types::Find(class_name.Str());
    }
    const host::ObjectTypeRecords& ObjectTypes() override { return records_; }
    host::VariableTypes* pVarTypes() override { return &variable_types_; }
    bool DescribeMoniker(const host::Text& moniker, host::VarDescription::Facts& out) override {
        const Case* active = owner_.ActiveLiveCase();
        return active && active->DescribeMoniker(moniker.Str(), out);
    }

    host::CSpecInfo* NewSpecInfo() override { return std::make_unique<SpecInfo>().release(); }
    void DeleteSpecInfo(host::CSpecInfo* info) override {
        const std::unique_ptr<SpecInfo> owned(static_cast<SpecInfo*>(info));
    }

    host::Session* pSession() override { return &session_; }
    void UpdateViews(host::Viewable*) override { ++view_updates_; }
    void SetConfigData(const char* key, double value, bool) override {
        if (key) config_[key] = value;
    }
    host::Text NumToText(double value) override;
    void WaitForTurn(unsigned long) override { owner_.Turn(); }
    void* IFace_malloc(std::size_t size) override { return std::malloc(size); }
    void* IFace_realloc(void* block, std::size_t size) override {
        return std::realloc(block, size);
    }
    void IFace_free(void* block) override { std::free(block); }

    const std::uint64_t* StructureRevision() override { return Identities::Revision(); }
    bool Lives(std::uint64_t identity) override { return Identities::Lives(identity); }

    unsigned long ViewUpdates() const { return view_updates_; }
    double ConfigData(const std::string& key) const {
        const auto found = config_.find(key);
        return found == config_.end() ? kEmpty : found->second;
    }

 private:
    CaseHost& owner_;
    SessionImpl session_;
    host::ObjectTypeRecords records_;
    VariableTypeTable variable_types_;
    std::map<std::string, double> config_;
    host::VarType walk_type_ = 0;
    std::size_t walk_at_ = 0;
    unsigned long view_updates_ = 0;
};

}  // namespace fixtop::casehost
