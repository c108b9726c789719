// SPDX-License-Identifier: Apache-2.0
#pragma once

// One raw node on which functions are called, and all variables that they left there.

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "semantic/raw_tree.h"

namespace fixtop {

using Variables = std::map<std::string, std::string>;

// All variables in force, as Variable tells them.
inline Variables VariablesOf(FIIteratorBase& it) {
    FIValue table;
    it.DumpVars(table);
    std::istringstream lines(table.ToText());
    std::string line;
    std::getline(lines, line);
    Variables all;
    while (std::getline(lines, line)) {
        const std::size_t begin = line.find('\t') + 1;
        const std::string name = line.substr(begin, line.find('\t', begin) - begin);
        all[name] = Variable(it, name.c_str());
    }
    return all;
}

// The node Case.Unit. Names are paths into it.
struct UnitNode {
    Ref<FIIterator> Iterate() {
        Ref<FIIterator> it = root.Iterate();
        EXPECT_TRUE(it->SeekChild("Unit"));
        return it;
    }
    ScriptNode& Set(const NamePath& path, const FIValue& value) {
        return Below(node, path).Set("value", value);
    }
    ScriptNode& Set(const NamePath& path, const char* text) { return Set(path, Text(text)); }
    // One more child of this name, also when there is one.
    ScriptNode& Append(const NamePath& path, const std::string& name, const FIValue& value) {
        return Below(node, path).Add(name).Set("value", value);
    }
    // An array of Elem0, Elem1, ...
    void AddElements(const NamePath& path, const std::vector<FIValue>& values) {
        ScriptNode& array = Below(node, path);
        for (const FIValue& value : values) {
            array.Add("Elem" + std::to_string(array.children.size())).Set("value", value);
        }
    }

    ScriptNode root{"Case"};
    ScriptNode& node{root.Add("Unit")};
};

// An element from the node; `it` may have gone below it.
struct Element {
    Ref<FIIterator> it;
    std::string subclass;
    std::string place;
    Variables variables;
};

inline Element ElementOf(UnitNode& unit, ArrayFunction function, int index) {
    Element element{unit.Iterate(), {}, {}, {}};
    FIValue subclass;
    EXPECT_EQ(index, Call(function, element.it.Get(), &subclass, index));
    EXPECT_LE(1, element.it->Depth()) << "never above where it began";
    element.subclass = Shown(subclass);
    element.place = Place(*element.it);
    element.variables = VariablesOf(*element.it);
    return element;
}

// The count from the node, where `it` stays.
inline int CountOf(UnitNode& unit, ArrayFunction function) {
    Ref<FIIterator> it = unit.Iterate();
    FIValue subclass;
    const int count = Call(function, it.Get(), &subclass, kCountIndex);
    EXPECT_EQ("Case.Unit", Place(*it));
    EXPECT_TRUE(subclass.IsNull());
    return count;
}

}  // namespace fixtop
