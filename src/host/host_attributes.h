#pragma once

// The attribute rows that all families of host nodes have in common: the 27 standard names in their
// order, and the three switches "attachments", "skipcorrelations" and "skipattachments".

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <vector>

#include "fixtop/var_set.h"
#include "framework/attr_map.h"
#include "framework/standard_attributes.h"

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
// Stores a skip switch in the var set; false when `name` is no skip switch or there is no var set.
bool SetSkipSwitch(FIVarSet* vars, const FIValue& name, const FIValue& value);
// The switch "attachments": false when `name` is another one.
bool SetAttachmentsSwitch(bool& follow, const FIValue& name, const FIValue& value);

// The handlers of the switch rows for an entry that has a method FollowsAttachments().
template <class T>
void ReadAttachmentsRow(T& owner, FIValue& out) {
    out.SetInt(owner.FollowsAttachments() ? 1 : 0);
}
template <class T>
void ReadSkipCorrelationsRow(T& owner, FIValue& out) {
    static const FIValue name(kSkipCorrelations);
    ReadSkipSwitch(owner.GetVarSet(), name, out);
}
template <class T>
void ReadSkipAttachmentsRow(T& owner, FIValue& out) {
    static const FIValue name(kSkipAttachments);
    ReadSkipSwitch(owner.GetVarSet(), name, out);
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

// The write that nodes without a value have: the three switches, else `refusal`.
template <class T>
void SetSwitches(T& owner, bool& follow, const FIValue& name, const FIValue& value,
                 const char* refusal, FIValue& out) {
    out.Clear();
    if (SetAttachmentsSwitch(follow, name, value)) return;
    if (SetSkipSwitch(owner.GetVarSet(), name, value)) return;
    out = FIValue(refusal);
}

}  // namespace fixtop
