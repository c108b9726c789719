// SPDX-License-Identifier: Apache-2.0
#pragma once

// Call: what a script gives to a member, in the order in which it is written there. What does not
// fit throws CallError.

#include <string>
#include <vector>

#include "dispatch/script_value.h"

namespace fixtop::hovex {

class Call {
 public:
    // Throws CallError for arguments by name, which no member has. Of a store the value is the
    // last.
    explicit Call(const DISPPARAMS& given);

    int Count() const { return static_cast<int>(given_.size()); }
    // Neither left out nor Null.
    bool Has(int index) const {
        return index < Count() && !IsNothing(At(index)) && !IsLeftOut(At(index));
    }
    const VARIANT& At(int index) const { return given_[static_cast<std::size_t>(index)].Get(); }
    std::string Text(int index) const { return TextOf(At(index)); }
    // Empty when it is left out.
    std::string TextIfAny(int index) const { return Has(index) ? Text(index) : std::string(); }
    int Integer(int index) const { return IntegerOf(At(index)); }

 private:
    std::vector<ScriptValue> given_;
};

}  // namespace fixtop::hovex
