// SPDX-License-Identifier: Apache-2.0
#pragma once

// The rows that variables and the elements of arrays show alike. T is an entry with
//
//     int DimensionsBelow();                   // 0 for a scalar
//     const host::VariableNameInfo& Row();
//     bool IsCustom();                         // the custom row
//     host::Viewable* EffectiveOwner();
//     host::Viewable* Holder();                // what a scalar attachment leads to
//     host::VarType UnitType();
//     HVariable Variable();
//     void ReadValue(FIValue& out);
//     const char* Store(const FIValue& value);    // null or the message
//     bool FollowsAttachments() const;
//     void FollowAttachments(bool follow);

#include <array>

#include "fixtop/ref.h"
#include "host/host_access.h"
#include "host/host_attributes.h"
#include "host/variables/variable_values.h"

namespace fixtop {

template <class T>
bool IsScalar(T& owner, std::intptr_t = 0) {
    return owner.DimensionsBelow() == 0;
}
template <class T>
bool IsScalarAttachment(T& owner, std::intptr_t = 0) {
    return IsScalar(owner) && owner.Row().value_kind == host::kAttachment;
}
template <class T>
bool HasUnits(T& owner, std::intptr_t = 0) {
    return IsScalar(owner) && owner.UnitType() != host::kVariableUnitType;
}
// No status and no limits are shown of arrays and of the custom row.
template <class T>
bool ShowsState(T& owner) {
    return IsScalar(owner) && !owner.IsCustom();
}

// A limit in internal units, shown in the unit of the value.
template <class T>
void ReadLimit(T& owner, double limit, FIValue& out) {
    out.Clear();
    if (!ShowsState(owner) || limit == host::kEmptyReal) return;
    out.SetReal(limit);
    ToShownUnit(owner.UnitType(), owner.GetVarSet(), out);
}

template <class T>
void ReadTypeRow(T& owner, FIValue& out) {
    constexpr std::array arrays = {"Array", "2-Dim Array", "3-Dim Array"};
    const auto dimensions = static_cast<std::size_t>(owner.DimensionsBelow());
    if (dimensions == 0) {
        out.SetText(ScalarTypeText(owner.Row().value_kind));
    } else {
        out.SetText(dimensions <= arrays.size() ? arrays[dimensions - 1] : "multi-Dim Array");
    }
}

template <class T>
bool WriteScalar(T& owner, const FIValue& value, int, FIValue& out) {
    // The solver runs inside a store, and with it whatever lets go of this node.
    auto self = Ref<T>::Share(&owner);
    const char* message = IsScalar(owner) ? owner.Store(value) : "Non scalar variable";
    out.Clear();
    if (message) out.SetText(message);
    if (owner.IsGone()) out.SetText(kNodeDeletedText);
    return true;
}
template <class T>
bool WriteShownUnit(T& owner, const FIValue& value, int, FIValue& out) {
    SetShownUnit(owner.UnitType(), owner.GetVarSet(), value, out);
    return true;
}

// The table of a family of variables: the common rows, and in their place or behind them the given.
template <class T>
std::vector<AttrRow<T>> VariableRows(std::initializer_list<AttrRow<T>> given) {
    auto rows = HostAttributeRows<T>({
        {"id", ReadNameRow<T>},
        {"value", [](T& self, FIValue& out) { self.ReadValue(out); }, IsScalar<T>, WriteScalar<T>},
        {"dimension", [](T& self, FIValue& out) { ReadUnitType(self.UnitType(), out); },
         HasUnits<T>},
        {"uom", [](T& self, FIValue& out) { ReadUnit(self.UnitType(), self.GetVarSet(), out); },
         HasUnits<T>, WriteShownUnit<T>},
        {"option_list", [](T& self, FIValue& out) { ReadOptions(self.Variable(), out); },
         [](T& self, std::intptr_t) { return self.Row().value_kind == host::kEnumeration; }},
        {"uom_options", [](T& self, FIValue& out) { ReadUnitOptions(self.UnitType(), out); },
         HasUnits<T>},
        {"browser_name", ReadNameRow<T>},
        {"type", ReadTypeRow<T>},
        {"container", [](T& self, FIValue& out) { ReadContainer(self.EffectiveOwner(), out); }},
        {"container_category",
         [](T& self, FIValue& out) { ReadContainerCategory(self.EffectiveOwner(), out); }},
        {"container_type",
         [](T& self, FIValue& out) { ReadContainerType(self.EffectiveOwner(), out); }},
        {"display_name", ReadNameRow<T>},
        {"has_children", [](T& self, FIValue& out) { out.SetInt(self.IsContainer() ? 1 : 0); }},
        {"upper_limit",
         [](T& self, FIValue& out) {
             ReadLimit(self, self.Variable().description->GetVariablePart()->MaxValue(), out);
         }},
        {"lower_limit",
         [](T& self, FIValue& out) {
             ReadLimit(self, self.Variable().description->GetVariablePart()->MinValue(), out);
         }},
        {"status",
         [](T& self, FIValue& out) {
             out.Clear();
             if (ShowsState(self)) out.SetText(ReadStatus(self.Variable(), self.GetVarSet()));
         },
         IsScalar<T>},
        {"is_container",
         [](T& self, FIValue& out) {
             out.SetInt(IsScalarAttachment(self) && IsFlowSheetObject(self.Holder()) ? 1 : 0);
         }},
    });
    PlaceRows(rows, given);
    return rows;
}

// An attribute by its name: a row of the table, or the mark of a value that is older than a change
// of the case. The mark is read by its name alone, 1 or else NULL, and is not listed.
template <class T>
void ReadVariableAttribute(T& owner, const FIValue& name, FIValue& out) {
    if (owner.IsGone()) return out.SetText(kNodeDeletedText);
    const AttrName wanted(name);
    if (const AttrRow<T>* row = FindAttrRow(owner, wanted)) return row->Read(owner, out);
    out.Clear();
    if (!(wanted == AttrName(kStale)) || !ShowsState(owner)) return;
    if (IsOutdated(owner.Variable())) out.SetInt(1);
}

}  // namespace fixtop
