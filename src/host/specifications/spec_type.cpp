// SPDX-License-Identifier: Apache-2.0
#include "host/specifications/spec_type.h"

#include <cmath>

#include "fixtop/host/services.h"
#include "host/adapter.h"

namespace fixtop {

namespace {

// Bits of ProcessVariable::status_bits.
constexpr unsigned kAdjustableBits = 0x03;
constexpr unsigned kHoldsValueBits = 0x30;

// With `out` null a handler only says whether the row is shown, else it gives the value as well.
using Handler = bool (*)(const HSpecType& type, FIValue* out);

bool GiveText(FIValue* out, const char* text) {
    if (out) out->SetText(text);
    return true;
}

bool GiveNumber(FIValue* out, double number) {
    if (out && IsEmptySpecNumber(number)) {
        out->Clear();
    } else if (out) {
        out->SetReal(number);
    }
    return true;
}

bool EmptyValue(const HSpecType&, FIValue* out) {
    return GiveText(out, "");
}
bool TextValue(const HSpecType& type, FIValue* out) {
    return GiveText(out, type.Element().value_text.CStr());
}
bool NumberValue(const HSpecType& type, FIValue* out) {
    return GiveNumber(out, type.Element().number);
}
bool CustomValue(const HSpecType& type, FIValue* out) {
    return IsEmptySpecNumber(type.Element().number) ? TextValue(type, out) : NumberValue(type, out);
}
bool VariableValue(const HSpecType& type, FIValue* out) {
    return GiveNumber(out, type.Element().process_variable->value);
}
bool AttachedName(const HSpecType& type, FIValue* out) {
    host::Viewable* attached = type.Attached();
    if (attached) return GiveText(out, attached->GetName().CStr());
    if (out) out->Clear();
    return true;
}

bool TypeName(const HSpecType& type, FIValue* out) {
    static constexpr const char* kNames[] = {
        "",       "CustomElement", "ProcVarStatus", "ArraySet",      "ProcVar", "AttachedObject",
        "Number", "Text",          "XMLSpecInfo",   "SpecCollection"};
    return GiveText(out, kNames[type.Get()]);
}

const char* DefaultUnitName(const host::Text& moniker) {
    host::HostServices* services = TheAdapter().Services();
    if (!services || moniker.IsEmpty()) return nullptr;
    const host::VarDescription description(moniker.CStr(), 0);
    host::VariableTypes* types = services->pVarTypes();
    host::VariableInfo* info = types ? types->FindVarInfo(description.Type()) : nullptr;
    if (!info) return nullptr;
    const host::VarType type = services->GetUnitConvTypeFromVarType(info->UnitLookupType());
    const host::UnitRecord* unit = services->def_unit(type, services->DefaultUnits());
    return unit && unit->name && *unit->name ? unit->name : nullptr;
}

bool UnitName(const HSpecType& type, FIValue* out) {
    const char* name = DefaultUnitName(type.Element().moniker);
    return name && GiveText(out, name);
}

bool VariableStatus(const HSpecType& type, FIValue* out) {
    const host::ProcessVariable& variable = *type.Element().process_variable;
    if (variable.status_bits & kAdjustableBits) return GiveText(out, "Adjustable");
    return GiveText(out, IsSpecified(variable) ? "Specified" : "Calculated");
}

bool FullMoniker(const HSpecType& type, FIValue* out) {
    host::HostServices* services = TheAdapter().Services();
    if (!out || !services) return services != nullptr;
    const host::Text owner = services->RelativeMoniker(nullptr, type.Owner(), false);
    return GiveText(out, (owner + type.Element().moniker).CStr());
}

// By row and by type; no handler: the row is hidden.
constexpr Handler kHandlers[5][10] = {
    {EmptyValue, CustomValue, EmptyValue, EmptyValue, VariableValue, AttachedName, NumberValue,
     TextValue, EmptyValue, EmptyValue},
    {nullptr, TypeName, TypeName, TypeName, TypeName, TypeName, TypeName, TypeName, TypeName,
     TypeName},
    {nullptr, nullptr, nullptr, nullptr, UnitName, nullptr, UnitName, nullptr, nullptr, nullptr},
    {nullptr, nullptr, nullptr, nullptr, VariableStatus, nullptr, nullptr, nullptr, nullptr,
     nullptr},
    {nullptr, FullMoniker, FullMoniker, FullMoniker, FullMoniker, FullMoniker, FullMoniker,
     FullMoniker, FullMoniker, FullMoniker},
};

bool HoldsValue(const host::ProcessVariable& variable) {
    return (variable.status_bits & kHoldsValueBits) != 0 || !IsEmptySpecNumber(variable.value);
}

}  // namespace

bool IsEmptySpecNumber(double number) {
    return std::abs(number - host::kEmptyReal) <= 1e-10;
}

bool IsSpecified(const host::ProcessVariable& variable) {
    constexpr unsigned kSpecifiedBits = 0x0c;
    return (variable.status_bits & kSpecifiedBits) != 0;
}

HSpecType::HSpecType(const host::CSpecElement& element, host::Viewable* owner,
                     const Ref<CaseLife>& life)
    : element_(element),
      owner_(owner),
      attached_(element.attached_object, element.attached_identity, life),
      number_(Classify(element)) {}

HSpecType::Number HSpecType::Classify(const host::CSpecElement& element) {
    if (element.child) return element.child->CollectionCount() != 0 ? kSpecCollection : kNone;
    if (element.custom) return kCustomElement;
    if (element.status_holder) return kProcVarStatus;
    if (element.array_set) return kArraySet;
    if (element.process_variable) return HoldsValue(*element.process_variable) ? kProcVar : kNone;
    if (element.attached_object) return kAttachedObject;
    if (!IsEmptySpecNumber(element.number)) return kNumber;
    if (!element.value_text.IsEmpty()) return kText;
    if (!element.extra_text.IsEmpty()) return kXmlSpecInfo;
    return kNone;
}

bool HSpecType::Shows(Row row) const {
    const Handler handler = kHandlers[row][number_];
    return handler && handler(*this, nullptr);
}

void HSpecType::Read(Row row, FIValue& out) const {
    out.Clear();
    if (const Handler handler = kHandlers[row][number_]) handler(*this, &out);
}

}  // namespace fixtop
