// SPDX-License-Identifier: Apache-2.0
#pragma once

// The walk over a case that finds the mapped attributes which give a value nowhere.

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fixtop/client/check.h"
#include "node.h"

namespace fixtop {

// Why an attribute has no value, and in how many places.
struct MissingReason {
    client::Missing missing;
    int count = 0;
    std::string example;  // the path of the first of these places
};

struct MappedAttribute {
    std::string declared_by;
    int instances = 0;  // of the class
    bool has_value = false;
    bool is_mapped = true;
    std::vector<MissingReason> reasons;  // until it has a value somewhere

    bool GivesNothing() const { return is_mapped && !has_value && instances > 0; }
};

class CaseCheck {
 public:
    // The attributes of a class, by their names.
    using Attributes = std::map<std::string, MappedAttribute>;

    // `definitions` is the root of the class library's own tree.
    explicit CaseCheck(Node definitions) : definitions_(std::move(definitions)) {}

    // From the root of a neutral view; throws Interrupted. An object of the case that is reached
    // again as the same class is not walked again.
    void Walk(const Node& root);
    // Of the classes that were met.
    const std::map<std::string, Attributes>& Classes() const { return classes_; }

 private:
    void Walk(const Node& node, unsigned long long object_above, int depth);
    void Judge(const Node& node, Attributes& attributes) const;
    Attributes& AttributesOf(const std::string& class_name);
    void TellProgress();

    Node definitions_;
    std::map<std::string, Attributes> classes_;
    std::set<std::pair<std::string, unsigned long long>> seen_;
    int objects_ = 0;
};

}  // namespace fixtop
