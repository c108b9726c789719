// SPDX-License-Identifier: Apache-2.0
#pragma once

// Enumerations of the model, and the tables that map an application's option names to theirs.

#include <map>
#include <memory>
#include <set>
#include <string>

#include "diagnostics/instance_counts.h"
#include "model/named_object.h"

namespace fixtop {

class CCDMClassLibrary;

// Its name is the translate name that it belongs to. One table serves both directions.
class CCDMEnumMap : public CCDMNamedObject {
 public:
    using CCDMNamedObject::CCDMNamedObject;

    // Null when the application's name is not in the table.
    const std::string* NeutralName(const std::string& application) const;
    // The first application name, in the order of the table, that stands for a neutral one.
    const std::string* ApplicationName(const std::string& neutral) const;

    std::map<std::string, std::string> entries;  // application's name to neutral name
};

using EnumMaps = std::map<std::string, std::unique_ptr<CCDMEnumMap>>;  // by translate name

class CCDMEnumeration : public CCDMNamedObject, private Counted<CountedClass::CCDMEnumeration> {
 public:
    CCDMEnumeration(std::string enum_name, CCDMClassLibrary& owner)
        : CCDMNamedObject(std::move(enum_name)), library(&owner) {}

    std::set<std::string> options;  // the neutral names
    EnumMaps enumMaps;
    CCDMClassLibrary* library;
    bool isClosed = false;  // values outside the options are worth a message
};

}  // namespace fixtop
