// SPDX-License-Identifier: Apache-2.0
#include "framework/iterator/var_map.h"

#include <algorithm>
#include <cstring>

namespace fixtop {

namespace {

bool Less(const FIValue& a, const FIValue& b) {
    return a.Compare(b) < 0;
}

// Both directions are asked, since a number and a text are less than each other.
bool Same(const FIValue& a, const FIValue& b) {
    if (a.IsText() && b.IsText()) return std::strcmp(a.CStr(), b.CStr()) == 0;
    return !Less(a, b) && !Less(b, a);
}

}  // namespace

void VarMap::Set(const FIValue& name, const FIValue& value) {
    for (Variable& variable : variables_) {
        if (Same(variable.name, name)) {
            variable.value = value;
            return;
        }
    }
    const auto place = std::find_if(variables_.begin(), variables_.end(),
                                    [&](const Variable& each) { return Less(name, each.name); });
    variables_.insert(place, Variable{name, value});
}

const FIValue* VarMap::Find(const FIValue& name) const {
    for (const Variable& variable : variables_) {
        if (Same(variable.name, name)) return &variable.value;
    }
    return nullptr;
}

bool VarMap::Remove(const FIValue& name) {
    return std::erase_if(variables_,
                         [&](const Variable& variable) { return Same(variable.name, name); }) > 0;
}

}  // namespace fixtop
