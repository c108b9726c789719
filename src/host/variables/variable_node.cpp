// SPDX-License-Identifier: Apache-2.0
#include "host/variables/variable_node.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

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

// No character of a name is shown as an entity.
bool IsPlain(std::string_view name) {
    return std::none_of(name.begin(), name.end(), [](char c) { return EntityOf(c) != nullptr; });
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

HVarsEntry::HVarsEntry(HVarsContext* context, const host::VariableNameInfo* row)
    : context_(Ref<HVarsContext>::Share(context)),
      row_(row),
      owner_(context->Owner()),
      description_(row->description),
      unit_type_(row->description.GetVariablePart()->UnitType()),
      attachments_(context->FollowsAttachments()),
      custom_block_(IsCustomBlock(*row)),
      options_(context->Options()) {
    const int given = row->offset_descriptions ? row->offset_description_count : 0;
    offsets_.assign(row->offset_descriptions, row->offset_descriptions + std::clamp(given, 0, 3));
    follow_attachment_ = row->value_kind == host::kAttachment && Dimensions() == 0 &&
                         FollowsAt(description_, attachments_);
}

int HVarsEntry::CountDimensions() const {
    const host::Text text = row_->TextDescription();
    dimensions_ = static_cast<int>(std::count(text.Str().begin(), text.Str().end(), '['));
    return dimensions_;
}

host::Viewable* HVarsEntry::OwnerThroughCorrelation() const {
    const HAttachment* attachment = context_->Attachment();
    if (IsGone()) return nullptr;
    return attachment ? attachment->Holder() : Owner();
}

const host::VarDescription& HVarsEntry::OffsetDescription(int dimension) const {
    const auto index = static_cast<std::size_t>(dimension);
    return index < offsets_.size() ? offsets_[index] : host::TheEmptyVarDesc;
}

host::Viewable* HVarsEntry::HolderAt(const host::VarDescription& address) const {
    host::Viewable* object = EffectiveOwner();
    return object ? FindHolder(Owner(), object, address) : nullptr;
}

bool HVarsEntry::IsCompositionVariable() const {
    return IsComposition(Owner(), description_);
}

const host::LinkedList* HVarsEntry::AttachedVariables() {
    return attached_.Of(*this, *CaseRecord());
}

bool HVarsEntry::LeadsSomewhere() {
    return Dimensions() == 0 && follow_attachment_ && !IsSkippingAttachments(GetVarSet()) &&
           AttachedVariables();
}

bool HVarsEntry::FollowsAt(const host::VarDescription& address, bool attachments) const {
    if (row_->value_kind != host::kAttachment) return false;
    FIValue value;
    if (!custom_block_) ReadRaw(At(address), nullptr, value);
    // An attachment to an inner part of the owner is always followed.
    if (!value.IsNull() && Owner() && LeadsInside(Owner(), HolderAt(address))) return true;
    return attachments;
}

void HVarsEntry::GetName(FIValue& out) {
    if (IsGone()) return out.Clear();
    const std::string_view name = VariableView::Name(*row_);
    if (name.size() <= kNameLimit && IsPlain(name)) {
        out.SetText(name.data(), name.size());
    } else {
        out.SetText(EscapedName(name.data()));
    }
}

void HVarsEntry::ReadValue(FIValue& out) {
    out.Clear();
    if (!custom_block_) ReadValueAt(description_, GetVarSet(), out);
}

void HVarsEntry::ReadValueAt(const host::VarDescription& address, FIVarSet* vars, FIValue& out) {
    ReadRaw(At(address), vars, out);
    if (out.Kind() == FIValue::kReal) ToShownUnit(UnitType(), vars, out, &default_unit_);
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
    const NodeAbove self(&options_, attachments_, this);
    FIContext* context = nullptr;
    if (Dimensions() > 0) {
        context = new Shielded<HVarDimsContext>(this, 0, description_, self);
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
                 self.follow_attachment_ && !IsSkippingAttachments(self.GetVarSet());
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
