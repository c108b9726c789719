// SPDX-License-Identifier: Apache-2.0
#pragma once

// VarMap: variables by name, in the order of FIValue::Compare. FrameVars: the counted map of one
// level of an iterator. A handful of variables is usual, so the map is a sorted array.

#include <vector>

#include "fixtop/value.h"

namespace fixtop {

class VarMap {
 public:
    struct Variable {
        FIValue name;
        FIValue value;
    };

    // Replaces a variable of the same name.
    void Set(const FIValue& name, const FIValue& value);
    // Null when there is none; valid until the map changes.
    const FIValue* Find(const FIValue& name) const;
    bool Remove(const FIValue& name);

    const std::vector<Variable>& Variables() const { return variables_; }

 private:
    std::vector<Variable> variables_;
};

// Starts at one reference.
class FrameVars {
 public:
    FrameVars() = default;
    explicit FrameVars(const VarMap& source) : map(source) {}
    int AddRef() { return ++references_; }
    int Release() {
        const int left = --references_;
        if (left == 0) delete this;
        return left;
    }

    VarMap map;

 private:
    ~FrameVars() = default;

    int references_ = 1;
};

}  // namespace fixtop
