// SPDX-License-Identifier: Apache-2.0
#include "host/published/published_variables.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string>

#include "diagnostics/memory_guard.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"
#include "host/adapter.h"
#include "host/host_attributes.h"
#include "host/variables/variable_values.h"

namespace fixtop {

namespace {

constexpr char kPublished[] = "RTIVariable.500";

host::VarType UnitTypeOf(host::RTIVariable& variable) {
    host::HostServices* services = TheAdapter().Services();
    if (!services) return host::kVariableUnitType;
    return services->GetUnitConvTypeFromVarType(
        services->GetVarTypeFromUnitString(variable.UnitText().CStr()));
}

}  // namespace

HPublishContext::HPublishContext(host::COnlineConnectivityManager& manager, FIEntry* parent,
                                 Ref<CaseLife> life)
    : manager_(&manager, std::move(life)), parent_(Ref<FIEntry>::Share(parent)) {}

int HPublishContext::CountOf(host::COnlineConnectivityManager& manager) {
    host::DimInfo bounds;
    manager.GetVariableDimensions(host::VarDescription(kPublished, 0), bounds);
    const std::int64_t count = std::int64_t{bounds.high[0]} - bounds.low[0] + 1;
    return static_cast<int>(std::clamp<std::int64_t>(count, 0, INT_MAX));
}

int HPublishContext::Count() const {
    host::COnlineConnectivityManager* manager = manager_.Get();
    if (!manager) return 0;
    if (!Life() || !Life()->IsCurrent(counted_at_)) {
        count_ = CountOf(*manager);
        counted_at_ = Life() ? Life()->Revision() : 0;
    }
    return count_;
}

FICursorBase* HPublishContext::MakeCursor(int kind) {
    if (kind == kKeyCursor || IsGone()) return EmptyCursor();
    return HandOut(new Shielded<HPublishCursorBase>(this));
}

host::RTIVariable* HPublishContext::Variable(int number) const {
    const std::string moniker = std::string(kPublished) + "." + std::to_string(number);
    host::COnlineConnectivityManager* manager = manager_.Get();
    if (!manager) return nullptr;
    host::Viewable* found = manager->ResolveVariableOwner(host::VarDescription(moniker.c_str(), 0));
    return found ? manager->AsPublished(found) : nullptr;
}

FIEntry* HPublishContext::MakeEntry(int number) {
    host::RTIVariable* variable = Variable(number);
    if (!variable) return EmptyEntry();
    return new Shielded<HPublishEntry>(this, *variable);
}

bool HPublishCursorBase::Seek(int origin, int delta) {
    if (IsGone() || (origin == kFromPresent && HasLost())) return false;
    if (origin == kFromFirst) position_ = 0;
    if (origin == kFromEnd) position_ = End();
    const long long wanted = static_cast<long long>(position_) + delta;
    return Stand(static_cast<int>(std::clamp<long long>(wanted, 0, End())));
}

bool HPublishCursorBase::SeekName(int origin, const char* name) {
    const int end = End();
    const bool goes_on = origin == kFromPresent;
    if (end == 0 || !name || IsGone() || (goes_on && HasLost())) return false;
    const auto after = [end](int position) { return position + 1 < end ? position + 1 : 0; };
    const int start = goes_on && position_ < end ? position_ : 0;
    int position = goes_on ? after(position_) : 0;
    do {
        host::RTIVariable* variable = List().Variable(position);
        if (variable && variable->GetName() == name) return Stand(position);
        position = after(position);
    } while (position != start);
    Stand(start);
    return false;
}

void HPublishCursorBase::ReadKey(int position, FIValue& out) const {
    out.Clear();
    if (host::RTIVariable* variable = List().Variable(position)) {
        out.SetText(variable->GetName().CStr());
    }
}

HPublishEntry::HPublishEntry(HPublishContext* context, host::RTIVariable& variable)
    : context_(Ref<HPublishContext>::Share(context)),
      variable_(&variable, context->CaseRecord()),
      unit_type_(UnitTypeOf(variable)) {}

std::span<const AttrRow<HPublishEntry>> HPublishEntry::AttributeRows() {
    using Self = HPublishEntry;
    constexpr auto has_unit = [](Self& self, std::intptr_t) { return self.HasUnit(); };
    static const auto rows = HostAttributeRows<Self>({
        {"id", ReadNameRow<Self>},
        {"value", [](Self& self, FIValue& out) { self.ReadValue(out); },
         [](Self& self, const FIValue& value, int, FIValue& out) {
             self.Store(value, out);
             return true;
         }},
        {"dimension", [](Self& self, FIValue& out) { ReadUnitType(self.unit_type_, out); },
         has_unit},
        {"uom", [](Self& self, FIValue& out) { ReadUnit(self.unit_type_, self.GetVarSet(), out); },
         has_unit,
         [](Self& self, const FIValue& value, int, FIValue& out) {
             SetShownUnit(self.unit_type_, self.GetVarSet(), value, out);
             return true;
         }},
        {"type", [](Self&, FIValue& out) { out.SetText("Real"); }},
        {"display_name", ReadNameRow<Self>},
        {"isleaf", ReadNumberRow<Self, 1>},
        {"has_children", ReadNumberRow<Self, 0>},
    });
    return rows;
}

void HPublishEntry::GetName(FIValue& out) {
    host::RTIVariable* variable = variable_.Get();
    out.Clear();
    if (variable) out.SetText(variable->GetName().CStr());
}

void HPublishEntry::ReadValue(FIValue& out) {
    out.Clear();
    const double number = variable_.Get()->GetValue();
    if (number == host::kEmptyReal) return;
    out.SetReal(number);
    ToShownUnit(unit_type_, GetVarSet(), out);
}

void HPublishEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode,
                                 FIValue& out) {
    WriteAttribute(*this, name, value, mode, kNotSupportedHere, out);
}

void HPublishEntry::Store(const FIValue& value, FIValue& out) {
    FIValue internal = value;
    ToInternalUnit(unit_type_, GetVarSet(), internal);
    out.Clear();
    if (IsNoNumber(internal)) return out.SetText(kNotStored);
    auto self = Ref<HPublishEntry>::Share(this);
    memory::Outside([&] { variable_.Get()->SetValue(InternalNumber(internal)); });
    if (IsGone()) out.SetText(kNodeDeletedText);
}

FIContext* HPublishEntry::GetContext() {
    return EmptyContext();
}

}  // namespace fixtop
