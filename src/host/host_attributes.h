// SPDX-License-Identifier: Apache-2.0
#pragma once

// The attribute rows that all families of host nodes have in common: the 27 standard names in their
// order, and the three switches "attachments", "skipcorrelations" and "skipattachments", which all
// families take when they are written, shown or not.

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <vector>

#include "fixtop/var_set.h"
#include "framework/nodes/attr_map.h"
#include "framework/nodes/standard_attributes.h"

namespace fixtop {

// What a node answers to a write that it does not know.
inline constexpr char kNotSupportedHere[] = "Not supported";

// The availability of a row that a family has but never shows.
template <class T>
bool NeverShown(T&, std::intptr_t) {
    return false;
}

// Puts each row in place of the one of its name, or behind the others when there is none.
template <class T>
void PlaceRows(std::vector<AttrRow<T>>& rows, std::initializer_list<AttrRow<T>> given) {
    for (const AttrRow<T>& row : given) {
        const auto place = std::find_if(rows.begin(), rows.end(), [&](const AttrRow<T>& other) {
            return std::strcmp(other.name, row.name) == 0;
        });
        if (place == rows.end()) {
            rows.push_back(row);
        } else {
            *place = row;
        }
    }
}

// A family's table: the standard rows in their order, hidden unless given here, then the given rows
// of other names in the given order.
template <class T>
std::vector<AttrRow<T>> HostAttributeRows(std::initializer_list<AttrRow<T>> given) {
    std::vector<AttrRow<T>> rows;
    rows.reserve(kStandardAttributes.size() + given.size());
    for (const char* name : kStandardAttributes) {
        rows.emplace_back(name, NeverShown<T>);
    }
    PlaceRows(rows, given);
    return rows;
}

// Path of the node that is being read; NULL without a var set.
void ReadPath(FIVarSet* vars, FIValue& out);
// Value of a skip switch as the var set has it; INT 0 when it has none.
void ReadSkipSwitch(FIVarSet* vars, const FIValue& name, FIValue& out);
// A skip switch counts only as the integer 1.
bool IsSkippingAttachments(FIVarSet* vars);
bool IsSkippingCorrelations(FIVarSet* vars);
// Stores a skip switch in the var set; false when there is none.
bool StoreSkipSwitch(FIVarSet* vars, const FIValue& name, const FIValue& value, FIValue& out);

// The rows of the switches, for an entry with methods FollowsAttachments and FollowAttachments.
template <class T>
AttrRow<T> AttachmentsRow(typename AttrRow<T>::Available available = nullptr) {
    return {kAttachments,
            [](T& owner, FIValue& out) { out.SetInt(owner.FollowsAttachments() ? 1 : 0); },
            available,
            [](T& owner, const FIValue& value, int, FIValue& out) {
                out.Clear();
                owner.FollowAttachments(value.AsInt() != 0);
                return true;
            }};
}
template <class T, const char* kName>
AttrRow<T> SkipRow(typename AttrRow<T>::Available available) {
    static const FIValue name(kName);
    return {kName, [](T& owner, FIValue& out) { ReadSkipSwitch(owner.GetVarSet(), name, out); },
            available,
            [](T& owner, const FIValue& value, int, FIValue& out) {
                return StoreSkipSwitch(owner.GetVarSet(), name, value, out);
            }};
}
template <class T>
AttrRow<T> SkipCorrelationsRow(typename AttrRow<T>::Available available = nullptr) {
    return SkipRow<T, kSkipCorrelations>(available);
}
template <class T>
AttrRow<T> SkipAttachmentsRow(typename AttrRow<T>::Available available = nullptr) {
    return SkipRow<T, kSkipAttachments>(available);
}

template <class T>
void ReadNameRow(T& owner, FIValue& out) {
    owner.GetName(out);
}
template <class T>
void ReadPathRow(T& owner, FIValue& out) {
    ReadPath(owner.GetVarSet(), out);
}
template <class T, int number>
void ReadNumberRow(T&, FIValue& out) {
    out.SetInt(number);
}

}  // namespace fixtop
