// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

namespace fixtop {

// The base of all records of the model.
class CCDMNamedObject {
 public:
    explicit CCDMNamedObject(std::string object_name) : name(std::move(object_name)) {}
    virtual ~CCDMNamedObject() = default;

    std::string name;
};

}  // namespace fixtop
