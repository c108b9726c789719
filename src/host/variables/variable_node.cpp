// SPDX-License-Identifier: Apache-2.0
#include "host/variables/variable_node.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

#include "framework/nodes/shield.h"
#include "host/adapter.h"
#include "host/variables/dimension_context.h"
#include "host/variables/variable_rows.h"

namespace fixtop {

namespace {

using Self = HVarsEntry;

constexpr std::size_t kNameLimit = 255;

// ">" becomes "&lt;" as well: clients have the texts stored so.
const char* EntityOf(char c) {
    switch (c) {
        case '"':
            return "&quot;";
        case '&':
            return "&amp;";
        case '<':
        case '>':
            return "&lt;";
        default:
            return nullptr;
    }
}

// Where a name ends that is shown as it is: at its NUL, or else at the first entity.
const char* EndOfPlain(const char* name) {
    static constexpr auto kStops = [] {
        std::array<bool, 256> stops{};
        for (unsigned char c : {'\0', '"', '&', '<', '>'}) stops[c] = true;
        return stops;
    }();
#pragma GCC unroll 8
    while (!kStops[static_cast<unsigned char>(*name)]) ++name;
    return name;
}

// Ends at the character whose escape no longer fits.
std::string EscapedName(const char* name) {
    std::string escaped;
    for (std::size_t i = 0; name[i] != '\0' && i < kNameLimit; ++i) {
        const char* entity = EntityOf(name[i]);
        const std::size_t length = entity ? std::strlen(entity) : 1;
        if (escaped.size() + length > kNameLimit) break;
        escaped.append(entity ? entity : &name[i], length);
    }
    return escaped;
}

}  // namespace

HVarsEntry::HVarsEntry(HVarsContext* context, const host::VariableNameInfo* row, ListSpot spot)
    : context_(Ref<HVarsContext>::Share(context)), row_(row), spot_(spot) {
    beside_ = {-1, -1, context->FollowsAttachments(), IsCustomBlock(*row), false};
    const bool may_lead = row->value_kind == host::kAttachment;
    if (!may_lead && !row->offset_descriptions) return;
    branch_ = std::make_unique<Branch>();
    const int given = row->offset_descriptions ? row->offset_description_count : 0;
    branch_->offsets.assign(row->offset_descriptions,
                            row->offset_descriptions + std::clamp(given, 0, 3));
    beside_.follow_attachment =
        may_lead && Dimensions() == 0 && FollowsAt(Description(), beside_.attachments);
}

int HVarsEntry::CountDimensions() const {
    const host::Text text = row_->TextDescription();
    const std::string& places = text.Str();
    int count = 0;
    for (auto at = places.find('['); at != std::string::npos; at = places.find('[', at + 1)) {
        ++count;
    }
    if (std::in_range<std::int8_t>(count)) beside_.dimensions = static_cast<std::int8_t>(count);
    return count;
}

host::VarType HVarsEntry::AskUnitType() const {
    const host::VarType type = Description().GetVariablePart()->UnitType();
    if (std::in_range<std::int16_t>(type)) beside_.unit_type = static_cast<std::int16_t>(type);
    return type;
}

host::Viewable* HVarsEntry::OwnerThroughCorrelation() const {
    const HAttachment* attachment = context_->Attachment();
    if (IsGone()) return nullptr;
    return attachment ? attachment->Holder() : Owner();
}

const host::VarDescription& HVarsEntry::OffsetDescription(int dimension) const {
    const auto index = static_cast<std::size_t>(dimension);
    const bool has_one = branch_ && index < branch_->offsets.size();
    return has_one ? branch_->offsets[index] : host::TheEmptyVarDesc;
}

host::Viewable* HVarsEntry::HolderAt(const host::VarDescription& address) const {
    host::Viewable* object = EffectiveOwner();
    return object ? FindHolder(Owner(), object, address) : nullptr;
}

bool HVarsEntry::IsCompositionVariable() const {
    return IsComposition(Owner(), Description());
}

const host::LinkedList* HVarsEntry::AttachedVariables() {
    return branch_->attached.Of(*this, *CaseRecord());
}

bool HVarsEntry::LeadsSomewhere() {
    return Dimensions() == 0 && beside_.follow_attachment && !IsSkippingAttachments(GetVarSet()) &&
           AttachedVariables();
}

bool HVarsEntry::FollowsAt(const host::VarDescription& address, bool attachments) const {
    if (row_->value_kind != host::kAttachment) return false;
    // An attachment to an inner part of the owner is always followed.
    if (attachments) return true;
    FIValue value;
    if (!beside_.custom_block) ReadRaw(At(address), nullptr, value);
    return !value.IsNull() && Owner() && LeadsInside(Owner(), HolderAt(address));
}

void HVarsEntry::GetName(FIValue& out) {
    if (IsGone()) return out.Clear();
    const char* name = VariableView::Name(*row_);
    const char* end = EndOfPlain(name);
    const auto length = static_cast<std::size_t>(end - name);
    if (*end == '\0' && length <= kNameLimit) {
        out.SetText(name, length);
    } else {
        out.SetText(EscapedName(name));
    }
}

void HVarsEntry::ReadValue(FIValue& out) {
    out.Clear();
    if (!beside_.custom_block) ReadValueAt(Description(), GetVarSet(), out);
}

void HVarsEntry::ReadValueAt(const host::VarDescription& address, FIVarSet* vars, FIValue& out) {
    ReadRaw(At(address), vars, out);
    if (out.Kind() == FIValue::kReal) ToShownUnit(UnitType(), vars, out);
}

void HVarsEntry::ReadMoniker(FIValue& out) {
    out.Clear();
    host::HostServices* services = TheAdapter().Services();
    if (!services) return;
    std::string moniker = services->RelativeMoniker(nullptr, EffectiveOwner(), false).Str();
    const std::string variable = row_->TextDescription().Str();
    if (!moniker.ends_with('/') && !variable.starts_with(':')) moniker += '/';
    out.SetText(moniker + variable);
}

const char* HVarsEntry::StoreAt(const host::VarDescription& address, FIVarSet* vars,
                                const FIValue& value) {
    const HVariable variable = At(address);
    if (row_->value_kind != host::kReal) return StoreValue(variable, value, CaseRecord());
    FIValue internal = value;
    ToInternalUnit(UnitType(), vars, internal);
    if (IsNoNumber(internal)) return kNotStored;
    if (!IsCompositionVariable()) return StoreValue(variable, internal, CaseRecord());
    if (variable.object) StoreComposition(variable, internal);
    return nullptr;
}

void HVarsEntry::GetAttribute(const FIValue& name, FIValue& out) {
    ReadVariableAttribute(*this, name, out);
}

bool HVarsEntry::StandsWith(const LivingNode& other) const {
    const auto* that = dynamic_cast<const HVarsEntry*>(&other);
    return that && OwnerNumber() == that->OwnerNumber() && row_ == that->row_;
}

void HVarsEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) {
    WriteAttribute(*this, name, value, mode, kNotSupportedHere, out);
}

bool HVarsEntry::IsContainer() {
    return !IsGone() && (Dimensions() > 0 || LeadsSomewhere());
}

FIContext* HVarsEntry::GetContext() {
    if (IsGone()) return EmptyContext();
    NodeAbove self(context_->Options(), beside_.attachments, this);
    FIContext* context = nullptr;
    if (Dimensions() > 0) {
        context = new Shielded<HVarDimsContext>(this, 0, Description(), std::move(self));
    } else if (LeadsSomewhere()) {
        context = new Shielded<HVarsContext>(AttachedVariables(), Holder(), self, this);
    } else {
        return EmptyContext();
    }
    return HandOut(context);
}

std::span<const AttrRow<HVarsEntry>> HVarsEntry::AttributeRows() {
    constexpr auto has_dimension = [](Self& self, std::intptr_t number) {
        return self.Dimensions() > number;
    };
    constexpr auto read_offset = [](Self& self, FIValue& out, std::intptr_t number) {
        out.SetText(self.OffsetDescription(static_cast<int>(number)).GetMoniker().CStr());
    };
    static const auto rows = VariableRows<Self>({
        {"can_enter",
         [](Self& self, FIValue& out) {
             out.Clear();
             if (!ShowsState(self)) return;
             const char* status = ReadStatus(self.Variable(), self.GetVarSet());
             out.SetInt(std::strcmp(status, "Calculated") == 0 ? 0 : 1);
         }},
        {"isleaf",
         [](Self& self, FIValue& out) {
             const bool followed =
                 self.beside_.follow_attachment && !IsSkippingAttachments(self.GetVarSet());
             out.SetInt(self.Dimensions() == 0 && !followed ? 1 : 0);
         }},
        {"path", ReadPathRow<Self>,
         [](Self& self, std::intptr_t) { return self.GetVarSet() != nullptr; }},
        {"moniker", [](Self& self, FIValue& out) { self.ReadMoniker(out); }},
        {"offsetmoniker0", read_offset, 0, has_dimension},
        {"offsetmoniker1", read_offset, 1, has_dimension},
        {"fullattachmoniker", [](Self& self, FIValue& out) { ReadFullMoniker(self.Holder(), out); },
         IsScalarAttachment<Self>},
        AttachmentsRow<Self>(),
        SkipCorrelationsRow<Self>(),
        SkipAttachmentsRow<Self>(),
    });
    return rows;
}

}  // namespace fixtop
