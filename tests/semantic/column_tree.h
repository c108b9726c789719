// SPDX-License-Identifier: Apache-2.0
#pragma once

// A raw column, or a part of one, in a scripted case: values below it, and what stands beside it.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "semantic/raw_tree.h"

namespace fixtop {

// Iterator variables as text.
using Variables = std::map<std::string, std::string>;
using Values = std::vector<FIValue>;

struct ColumnTree {
    // The nodes between the case and the column.
    explicit ColumnTree(const NamePath& way_to_column = {"Main"})
        : way(way_to_column), beside(Below(root, way)), node(beside.Add("T-100")) {}

    ScriptNode& Set(const NamePath& path, const FIValue& value) {
        return Below(node, path).Set("value", value);
    }
    ScriptNode& Set(const NamePath& path, const char* text) { return Set(path, FIValue(text)); }
    // An array whose elements are called "Elem0", "Elem1", ...
    void SetArray(const NamePath& path, const Values& values) {
        ScriptNode& array = Below(node, path);
        for (const FIValue& value : values) {
            array.Add("Elem" + std::to_string(array.children.size())).Set("value", value);
        }
    }
    // On the column.
    Ref<FIIterator> Iterate() {
        Ref<FIIterator> it = root.Iterate();
        for (const std::string& name : way) EXPECT_TRUE(it->SeekChild(name.c_str()));
        EXPECT_TRUE(it->SeekChild("T-100"));
        return it;
    }

    ScriptNode root{"Case"};
    NamePath way;
    ScriptNode& beside;
    ScriptNode& node;
};

// Those of the variables that are set.
inline Variables SetOf(FIIteratorBase& it, const NamePath& names) {
    Variables set;
    for (const std::string& name : names) {
        const std::string value = Variable(it, name.c_str());
        if (value != "(unset)") set[name] = value;
    }
    return set;
}

inline NamePath NamesOf(const Variables& variables) {
    NamePath names;
    for (const auto& [name, value] : variables) names.push_back(name);
    return names;
}

}  // namespace fixtop
