// SPDX-License-Identifier: Apache-2.0
#include "host/variables/element_names.h"

#include <string>

#include "host/variables/variable_values.h"

namespace fixtop {

namespace {

// The kind by which the names are read, which is not always that of the naming variable itself.
std::int32_t NamingKind(const HVariablePlace& place, const host::VariableNameInfo* row) {
    if (row && !row->description.IsEmpty()) {
        const bool is_text = row->value_kind == host::kText;
        const bool shown_as_real = row->description.Kind() == host::kPartReal;
        return is_text && shown_as_real ? host::kPartText : place.description->Kind();
    }
    const bool is_string_array =
        place.description->Type() == host::kStringArrayType &&
        place.object->GetVariableUnitType(*place.description) == host::kEmptyDimensionMarker;
    return is_string_array ? host::kPartText : place.description->Kind();
}

// A number is no name: its place stands for it. An option of an enumeration is one.
void ReadNumbered(const HVariablePlace& place, const host::VariableNameInfo* row, int index,
                  FIValue& out) {
    if (row) ReadRaw({row, place.object, place.description}, nullptr, out);
    if (!out.IsText()) out.SetText(std::string("#").append(std::to_string(index)));
}

}  // namespace

HElementNames::HElementNames(const HostObject<host::Viewable>& object,
                             const host::VarDescription& dimension)
    : object_(object), dimension_(dimension) {
    const host::Text moniker = dimension.GetMoniker();
    if (moniker == ":") return;
    source_ = moniker.Search('[') == moniker.Length() ? Source::kEnumeration : Source::kArray;
    is_enumeration_of_part_ = moniker.Search(':') != moniker.Length();
}

void HElementNames::SetCounted(int index, FIValue& out) {
    out.SetText(kCounted + std::to_string(index));
}

void HElementNames::Read(int index, FIValue& out) const {
    out.Clear();
    if (!object_.Get()) return;
    switch (source_) {
        case Source::kCount:
            SetCounted(index, out);
            break;
        case Source::kEnumeration:
            ReadEnumeration(index, out);
            break;
        case Source::kArray:
            ReadArray(index, out);
            break;
    }
}

void HElementNames::ReadEnumeration(int index, FIValue& out) const {
    host::Viewable* object = object_.Get();
    const host::VarDescription* part = &dimension_;
    while (is_enumeration_of_part_ && part->NextPart() && !part->NextNotFollowed() &&
           !part->ChainEnds()) {
        if (host::Viewable* holder = object->ResolveVariableOwner(*part)) object = holder;
        part = part->NextPart();
    }
    host::VariableNameInfo* row = object->FindVariableName(*part);
    host::VarEnumInfo* names = row ? object->GetVariableEnum(row) : nullptr;
    const host::VarEnumEntry* entry = names ? names->FindEntry(index) : nullptr;
    if (entry && entry->name) out.SetText(entry->name);
}

void HElementNames::ReadArray(int index, FIValue& out) const {
    host::VarDescription address = dimension_;
    address.FillRunning(&index, 1);
    const HVariablePlace place = FindPlace(object_.Get(), address);
    const host::VariableNameInfo* row = place.object->FindVariableName(*place.description);
    switch (NamingKind(place, row)) {
        case host::kPartReal:
            ReadNumbered(place, row, index, out);
            break;
        case host::kPartText:
            out.SetText(place.object->GetTextValue(*place.description).CStr());
            break;
        case host::kPartAttachment: {
            host::Viewable* attached = place.object->GetVariableAttachment(*place.description);
            if (attached) out.SetText(attached->GetName().CStr());
            if (!attached || attached->GetName().IsEmpty()) SetCounted(index, out);
            break;
        }
        default:
            SetCounted(index, out);
            break;
    }
}

}  // namespace fixtop
