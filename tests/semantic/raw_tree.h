// SPDX-License-Identifier: Apache-2.0
#pragma once

// Raw nodes for semantic functions, made of scripted nodes: arrays below paths, variables and
// positions as text.

#include <string>
#include <vector>

#include "fixtop/semantic_function.h"
#include "semantic/function_call.h"
#include "support/host_reading.h"
#include "support/scripted_tree.h"

namespace fixtop {

using NamePath = std::vector<std::string>;

// The node below these names; those that are missing are added.
inline ScriptNode& Below(ScriptNode& node, const NamePath& names) {
    ScriptNode* at = &node;
    for (const std::string& name : names) {
        ScriptNode* found = nullptr;
        for (ScriptNode* child : at->children) {
            if (child->name.ToText() == name) found = child;
        }
        at = found ? found : &at->Add(name);
    }
    return *at;
}

// An array whose elements have the values 0.5, 1.5, ...
inline ScriptNode& AddArray(ScriptNode& node, const NamePath& names, const NamePath& elements) {
    ScriptNode& array = Below(node, names);
    double value = 0.5;
    for (const std::string& element : elements) array.Add(element).Set("value", value++);
    return array;
}

// "INT 3", "YES", or "(unset)".
inline std::string Variable(FIIteratorBase& it, const char* name) {
    FIValue value;
    return it.GetVarText(name, value) ? Shown(value) : "(unset)";
}

inline std::string Place(FIIteratorBase& it) {
    FIValue path;
    it.GetPath(path);
    return path.ToText();
}

// Place and depth.
inline std::string At(FIIteratorBase& it) {
    return Place(it) + " at " + std::to_string(it.Depth());
}

inline std::string NameAt(FIIteratorBase& it) {
    FIValue name;
    it.GetName(name);
    return Shown(name);
}

// A list as its callers read it: the count once, then each element from the place of the count.
struct ListElement {
    std::string name;
    std::string subclass;
    bool operator==(const ListElement&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const ListElement& element) {
    return out << element.name << " (" << element.subclass << ")";
}

inline std::vector<ListElement> ReadList(ArrayFunction function, FIIteratorBase& it) {
    FIValue of_count;
    const int count = static_cast<unsigned char>(Call(function, &it, &of_count, kCountIndex));
    const int depth = it.Depth();
    std::vector<ListElement> elements;
    for (int i = 0; i < count; ++i) {
        while (it.Depth() > depth) it.Up();
        FIValue subclass;
        Call(function, &it, &subclass, i);
        elements.push_back({NameAt(it), Shown(subclass)});
    }
    while (it.Depth() > depth) it.Up();
    return elements;
}

}  // namespace fixtop
