// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/checked_library.h"

#include <functional>

namespace fixtop {

namespace {

template <class Rows>
auto* FindIn(Rows& rows, const std::string& name) {
    const auto found = rows.find(name);
    return found == rows.end() ? nullptr : &found->second;
}

// Visits a class and all above it, each once, until `visit` answers true; whether one did. Classes
// may form chains of any length, so these don't stand on the stack.
bool AnyUpward(
    const CheckedLibrary& library, const std::string& from,
    const std::function<bool(const std::string& name, const CheckedClass& each)>& visit) {
    std::vector<std::string> waiting = {from};
    std::set<std::string> seen = {from};
    while (!waiting.empty()) {
        const std::string name = std::move(waiting.back());
        waiting.pop_back();
        const CheckedClass* each = library.FindClass(name);
        if (!each) continue;
        if (visit(name, *each)) return true;
        for (const Mention& superclass : each->superclasses) {
            if (seen.insert(superclass.name).second) waiting.push_back(superclass.name);
        }
    }
    return false;
}

}  // namespace

const CheckedClass* CheckedLibrary::FindClass(const std::string& name) const {
    return FindIn(classes, name);
}

CheckedClass* CheckedLibrary::FindClass(const std::string& name) {
    return FindIn(classes, name);
}

CheckedEnumeration* CheckedLibrary::FindEnumeration(const std::string& name) {
    return FindIn(enumerations, name);
}

std::string CheckedLibrary::Declarer(const std::string& class_name,
                                     const std::string& attribute) const {
    std::string declarer;
    AnyUpward(*this, class_name, [&](const std::string& name, const CheckedClass& each) {
        if (!each.attributes.contains(attribute)) return false;
        declarer = name;
        return true;
    });
    return declarer;
}

std::set<std::string> CheckedLibrary::AttributesOf(const std::string& class_name) const {
    std::set<std::string> names;
    AnyUpward(*this, class_name, [&](const std::string&, const CheckedClass& each) {
        for (const auto& [name, attribute] : each.attributes) names.insert(name);
        return false;
    });
    return names;
}

bool CheckedLibrary::LeadsTo(const std::string& class_name, const std::string& wanted) const {
    return AnyUpward(*this, class_name,
                     [&](const std::string& name, const CheckedClass&) { return name == wanted; });
}

bool CheckedLibrary::HasAttribute(const std::string& name) const {
    for (const auto& [class_name, each] : classes) {
        if (each.attributes.contains(name)) return true;
    }
    return false;
}

std::vector<std::string> CheckedLibrary::ClassNames() const {
    return NamesIn(classes);
}

std::vector<std::string> CheckedLibrary::EnumerationNames() const {
    return NamesIn(enumerations);
}

std::vector<std::string> CheckedLibrary::AttributeNames() const {
    std::set<std::string> names;
    for (const auto& [class_name, each] : classes) {
        for (const auto& [name, attribute] : each.attributes) names.insert(name);
    }
    return {names.begin(), names.end()};
}

}  // namespace fixtop
