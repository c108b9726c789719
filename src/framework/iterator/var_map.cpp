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
    if (a.IsText() && b.IsText()) {
        return *a.CStr() == *b.CStr() && std::strcmp(a.CStr(), b.CStr()) == 0;
    }
    return !Less(a, b) && !Less(b, a);
}

}  // namespace

bool VarMap::Late::IsAmong(const FIValue& name) const {
    if (!name.IsText()) return false;
    return std::ranges::any_of(variables->names, [text = name.CStr()](const char* each) {
        return *each == *text && std::strcmp(each, text) == 0;
    });
}

VarMap::Array& VarMap::Own() {
    if (!array_ || array_->IsShared()) {
        auto own = Ref<Array>::Adopt(new Array);
        if (array_) {
            own->variables = array_->variables;
            own->late = array_->late;
        }
        array_ = std::move(own);
    }
    return *array_;
}

void VarMap::Set(const FIValue& name, const FIValue& value) {
    std::vector<Variable>& variables = Own().variables;
    for (Variable& variable : variables) {
        if (Same(variable.name, name)) {
            variable.value = value;
            return;
        }
    }
    const auto place = std::find_if(variables.begin(), variables.end(),
                                    [&](const Variable& each) { return Less(name, each.name); });
    variables.insert(place, Variable{name, value});
}

const FIValue* VarMap::Find(const FIValue& name) const {
    for (const Variable& variable : Variables()) {
        if (Same(variable.name, name)) return &variable.value;
    }
    return nullptr;
}

bool VarMap::Remove(const FIValue& name) {
    if (!Find(name)) return false;
    return std::erase_if(Own().variables,
                         [&](const Variable& variable) { return Same(variable.name, name); }) > 0;
}

void VarMap::SetLate(const Late& late) {
    Array& own = Own();
    const bool may_be_set = late.variables && own.late.variables != late.variables;
    if (may_be_set) std::erase_if(own.variables, [&](auto& each) { return late.Has(each.name); });
    own.late = late;
}

}  // namespace fixtop
