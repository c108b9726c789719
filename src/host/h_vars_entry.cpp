#include "host/h_vars_entry.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "host/host_access.h"
#include "host/host_attributes.h"

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
      through_correlation_(IsA(context->Owner(), CorrelationType())),
      custom_block_(IsCustomBlock(*row)),
      options_(context->Options()) {
    const int given = row->offset_descriptions ? row->offset_description_count : 0;
    for (int i = 0; i < given && i < 3; ++i) offsets_[i] = row->offset_descriptions[i];
    follow_attachment_ = DecideFollowing();
}

int HVarsEntry::Dimensions() const {
    if (dimensions_ < 0) {
        const host::Text text = row_->TextDescription();
        dimensions_ = static_cast<int>(std::count(text.Str().begin(), text.Str().end(), '['));
    }
    return dimensions_;
}

host::Viewable* HVarsEntry::EffectiveOwner() const {
    // The variables of a correlation describe the object that it is attached to.
    const HVarsEntry* attachment = context_->Attachment();
    return attachment && through_correlation_ ? attachment->Holder() : owner_;
}

host::Viewable* HVarsEntry::Holder() const {
    host::Viewable* object = EffectiveOwner();
    return object ? FindHolder(owner_, object, description_) : nullptr;
}

host::VarType HVarsEntry::UnitType() const {
    return EffectiveUnitType(unit_type_, owner_, description_);
}

bool HVarsEntry::HasUnits() const {
    return Dimensions() == 0 && UnitType() != host::kVariableUnitType;
}

bool HVarsEntry::IsCompositionVariable() const {
    return IsComposition(owner_, description_);
}

const host::LinkedList* HVarsEntry::AttachedVariables() {
    if (!attached_variables_) {
        host::Viewable* holder = Holder();
        if (holder) attached_variables_ = holder->VariableNames();
    }
    return attached_variables_;
}

bool HVarsEntry::LeadsSomewhere() {
    return Dimensions() == 0 && follow_attachment_ && !IsSkippingAttachments(GetVarSet()) &&
           AttachedVariables();
}

bool HVarsEntry::DecideFollowing() const {
    if (row_->value_kind != host::kAttachment || Dimensions() != 0) return false;
    FIValue value;
    if (ShowsValue()) ReadRaw(Variable(), nullptr, value);
    if (!value.IsNull() && owner_) {
        // An attachment to an inner part of the owner is always followed.
        FIValue moniker;
        ReadFullAttachMoniker(moniker);
        const std::string own = "(" + owner_->GetName().Str() + ")";
        if (moniker.IsText() && std::strstr(moniker.CStr(), own.c_str())) return true;
    }
    return attachments_;
}

void HVarsEntry::GetName(FIValue& out) {
    if (!std::strpbrk(row_->name, "\"&<>") && std::strlen(row_->name) <= kNameLimit) {
        out.SetText(row_->name);
    } else {
        out.SetText(EscapedName(row_->name));
    }
}

void HVarsEntry::ReadValue(FIValue& out) {
    out.Clear();
    if (!ShowsValue()) return;
    ReadRaw(Variable(), GetVarSet(), out);
    if (out.Kind() == FIValue::kReal) ToShownUnit(UnitType(), GetVarSet(), out, &default_unit_);
}

void HVarsEntry::ReadLimit(double limit, FIValue& out) {
    out.Clear();
    if (!ShowsValue() || limit == host::kEmptyReal) return;
    out.SetReal(limit);
    ToShownUnit(UnitType(), GetVarSet(), out);
}

void HVarsEntry::ReadMoniker(FIValue& out) {
    out.Clear();
    host::HostServices* services = host::InstalledServices();
    if (!services) return;
    std::string moniker = services->RelativeMoniker(nullptr, EffectiveOwner(), false).Str();
    const std::string variable = row_->TextDescription().Str();
    if (!moniker.ends_with('/') && !variable.starts_with(':')) moniker += '/';
    out.SetText(moniker + variable);
}

void HVarsEntry::ReadFullAttachMoniker(FIValue& out) const {
    out.Clear();
    host::HostServices* services = host::InstalledServices();
    host::Viewable* attached = services ? Holder() : nullptr;
    if (attached) out.SetText(services->RelativeMoniker(nullptr, attached, true).CStr());
}

const char* HVarsEntry::Store(const FIValue& value) {
    // The solver runs inside a store, and with it whatever lets go of this node.
    auto self = Ref<HVarsEntry>::Share(this);
    if (Dimensions() != 0) return "Non scalar variable";
    const HVariable variable = Variable();
    if (row_->value_kind != host::kReal) return StoreValue(variable, value, options_.Case());
    FIValue internal = value;
    ToInternalUnit(UnitType(), GetVarSet(), internal);
    if (!IsCompositionVariable()) return StoreValue(variable, internal, options_.Case());
    if (variable.object) StoreComposition(variable, internal);
    return nullptr;
}

void HVarsEntry::SetAttribute(const FIValue& name, const FIValue& value, int, FIValue& out) {
    const char* text = name.IsText() ? name.CStr() : "";
    if (std::strcmp(text, "value") == 0) {
        const char* message = Store(value);
        out.Clear();
        if (message) out.SetText(message);
    } else if (std::strcmp(text, "uom") == 0) {
        SetShownUnit(UnitType(), GetVarSet(), value, out);
    } else {
        SetSwitches(*this, attachments_, name, value, kNotSupportedHere, out);
    }
}

bool HVarsEntry::IsContainer() {
    return Dimensions() > 0 || LeadsSomewhere();
}

FIContext* HVarsEntry::GetContext() {
    if (Dimensions() > 0 || !LeadsSomewhere()) return EmptyContext();
    auto* context =
        new HVarsContext(AttachedVariables(), Holder(), &options_, attachments_, this, this);
    context->AddRef();
    return context;
}

std::span<const AttrRow<HVarsEntry>> HVarsEntry::AttributeRows() {
    constexpr auto is_scalar = [](Self& self, std::intptr_t) { return self.Dimensions() == 0; };
    constexpr auto has_units = [](Self& self, std::intptr_t) { return self.HasUnits(); };
    constexpr auto has_dimension = [](Self& self, std::intptr_t number) {
        return self.Dimensions() > number;
    };
    constexpr auto read_offset = [](Self& self, FIValue& out, std::intptr_t number) {
        out.SetText(self.offsets_[number].GetMoniker().CStr());
    };
    static const auto rows = HostAttributeRows<Self>({
        {"id", ReadNameRow<Self>},
        {"value", [](Self& self, FIValue& out) { self.ReadValue(out); }, is_scalar},
        {"dimension",
         [](Self& self, FIValue& out) {
             out.SetText(host::InstalledServices()->utypetoa(self.UnitType()));
         },
         has_units},
        {"uom", [](Self& self, FIValue& out) { ReadUnit(self.UnitType(), self.GetVarSet(), out); },
         has_units},
        {"can_enter",
         [](Self& self, FIValue& out) {
             out.Clear();
             if (!self.ShowsValue()) return;
             const char* status = ReadStatus(self.Variable(), self.GetVarSet());
             out.SetInt(std::strcmp(status, "Calculated") == 0 ? 0 : 1);
         }},
        {"option_list", [](Self& self, FIValue& out) { ReadOptions(self.Variable(), out); },
         [](Self& self, std::intptr_t) { return self.row_->value_kind == host::kEnumeration; }},
        {"uom_options", [](Self& self, FIValue& out) { ReadUnitOptions(self.UnitType(), out); },
         has_units},
        {"browser_name", ReadNameRow<Self>},
        {"type",
         [](Self& self, FIValue& out) {
             constexpr std::array arrays = {"Array", "2-Dim Array", "3-Dim Array"};
             const auto dimensions = static_cast<std::size_t>(self.Dimensions());
             if (dimensions == 0) {
                 out.SetText(ScalarTypeText(self.row_->value_kind));
             } else {
                 out.SetText(dimensions <= arrays.size() ? arrays[dimensions - 1]
                                                         : "multi-Dim Array");
             }
         }},
        {"container", [](Self& self, FIValue& out) { ReadContainer(self.EffectiveOwner(), out); }},
        {"container_category",
         [](Self& self, FIValue& out) { ReadContainerCategory(self.EffectiveOwner(), out); }},
        {"container_type",
         [](Self& self, FIValue& out) { ReadContainerType(self.EffectiveOwner(), out); }},
        {"display_name", ReadNameRow<Self>},
        {"isleaf",
         [](Self& self, FIValue& out) {
             const bool followed =
                 self.follow_attachment_ && !IsSkippingAttachments(self.GetVarSet());
             out.SetInt(self.Dimensions() == 0 && !followed ? 1 : 0);
         }},
        {"has_children", [](Self& self, FIValue& out) { out.SetInt(self.IsContainer() ? 1 : 0); }},
        {"path", ReadPathRow<Self>,
         [](Self& self, std::intptr_t) { return self.GetVarSet() != nullptr; }},
        {"upper_limit",
         [](Self& self, FIValue& out) {
             self.ReadLimit(self.description_.GetVariablePart()->MaxValue(), out);
         }},
        {"lower_limit",
         [](Self& self, FIValue& out) {
             self.ReadLimit(self.description_.GetVariablePart()->MinValue(), out);
         }},
        {"status",
         [](Self& self, FIValue& out) {
             out.Clear();
             if (self.ShowsValue()) out.SetText(ReadStatus(self.Variable(), self.GetVarSet()));
         },
         is_scalar},
        {"is_container",
         [](Self& self, FIValue& out) {
             const bool attachment =
                 self.Dimensions() == 0 && self.row_->value_kind == host::kAttachment;
             out.SetInt(attachment && IsFlowSheetObject(self.Holder()) ? 1 : 0);
         }},
        {"moniker", [](Self& self, FIValue& out) { self.ReadMoniker(out); }},
        {"offsetmoniker0", read_offset, 0, has_dimension},
        {"offsetmoniker1", read_offset, 1, has_dimension},
        {"fullattachmoniker", [](Self& self, FIValue& out) { self.ReadFullAttachMoniker(out); },
         [](Self& self, std::intptr_t) {
             return self.Dimensions() == 0 && self.row_->value_kind == host::kAttachment;
         }},
        {kAttachments, ReadAttachmentsRow<Self>},
        {kSkipCorrelations, ReadSkipCorrelationsRow<Self>},
        {kSkipAttachments, ReadSkipAttachmentsRow<Self>},
    });
    return rows;
}
