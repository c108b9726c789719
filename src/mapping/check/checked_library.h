// SPDX-License-Identifier: Apache-2.0
#pragma once

// What class files declare, with the places, as far as a check needs it: what is unknown, and where
// else it may have been meant.

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "mapping/check/finding.h"
#include "model/model_types.h"

namespace fixtop {

// A name that a file mentions.
struct Mention {
    std::string name;
    FindingPlace place;
};

struct CheckedAttribute {
    FindingPlace place;
    CCDMAttrType type = CCDMAttrType::kNone;
    bool is_array = false;
    std::vector<Mention> class_names;  // the last one counts
    std::vector<Mention> enum_names;
    std::vector<Mention> quantities;
    std::vector<Mention> keys;
    // What the maps have for it: translators by all that chooses among them, and how many there are
    // under the name that is in force.
    std::map<std::string, FindingPlace> translators;
    std::vector<FindingPlace> plain_translators;
    std::vector<FindingPlace> array_translators;
    std::map<std::string, FindingPlace> option_tables;  // by translate name
};

struct CheckedClass {
    std::vector<Mention> superclasses;
    std::map<std::string, CheckedAttribute> attributes;  // of its own
};

struct CheckedEnumeration {
    std::map<std::string, FindingPlace> options;
    bool is_closed = false;
    std::map<std::string, FindingPlace> option_tables;
};

struct CheckedLibrary {
    std::map<std::string, CheckedClass> classes;
    std::map<std::string, CheckedEnumeration> enumerations;

    const CheckedClass* FindClass(const std::string& name) const;
    CheckedClass* FindClass(const std::string& name);
    CheckedEnumeration* FindEnumeration(const std::string& name);
    // The name of the class, itself or above it, that declares the attribute; empty for none.
    std::string Declarer(const std::string& class_name, const std::string& attribute) const;
    // Its own and those of its superclasses.
    std::set<std::string> AttributesOf(const std::string& class_name) const;
    // Whether the class stands above itself.
    bool LeadsTo(const std::string& class_name, const std::string& wanted) const;
    // Whether any class has an attribute of the name.
    bool HasAttribute(const std::string& name) const;
    std::vector<std::string> ClassNames() const;
    std::vector<std::string> EnumerationNames() const;
    std::vector<std::string> AttributeNames() const;
};

template <class Rows>
std::vector<std::string> NamesIn(const Rows& rows) {
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (const auto& [name, row] : rows) names.push_back(name);
    return names;
}

}  // namespace fixtop
