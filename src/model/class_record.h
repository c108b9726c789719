// SPDX-License-Identifier: Apache-2.0
#pragma once

// Classes of the model. Records live as long as the library that made them and are held by plain
// pointers; the text of every key is compared byte by byte.

#include <map>
#include <memory>
#include <memory_resource>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/instance_counts.h"
#include "model/attribute_record.h"
#include "model/named_object.h"

namespace fixtop {

class CCDMClass : public CCDMNamedObject, private Counted<CountedClass::CCDMClass> {
 public:
    CCDMClass(std::string class_name, CCDMClassLibrary& owner)
        : CCDMNamedObject(std::move(class_name)), library(&owner) {}

    // Looks in this class only, else makes the record; the caller lists it in `attributes`.
    CCDMAttribute* GetOrCreateAttribute(const std::string& attribute);
    // Looks in this class only; null when absent.
    CCDMAttribute* FindAttribute(const std::string& attribute) const;

    // How many levels up the ancestor of that name stands, 1 for a direct superclass; the first way
    // in the order of the names counts. 0 when there is no such ancestor.
    int DistanceToClass(std::string_view ancestor) const;

    // Direct superclasses by name: they may be defined later, and are resolved on each walk.
    std::set<std::string> superclasses;
    std::map<std::string, std::unique_ptr<CCDMAttribute>> attributeIndex;
    // In the order of the files. An attribute that is declared twice is listed twice.
    std::vector<CCDMAttribute*> attributes;
    CCDMClassLibrary* library;

 private:
    using Seen = std::pmr::vector<const CCDMClass*>;

    int Distance(std::string_view ancestor, int depth, Seen& seen) const;
};

}  // namespace fixtop
