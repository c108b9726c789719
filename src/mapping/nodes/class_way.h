// SPDX-License-Identifier: Apache-2.0
#pragma once

// ClassWay: the attributes and classes that lead from the top of a neutral tree to a level, on
// whatever nodes of the application. Which translators of an attribute serve there follows from the
// way alone, unless one of them has a condition; classes and maps do not change once they are read,
// so it is found out once.
//
// The library owns the first way, which owns all that lead on from it, side by side: a tree may go
// on and on. Of such a one only the first kMost ways are remembered.

#include <cstddef>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "mapping/nodes/application_faces.h"

namespace fixtop {

class CCDMAttribute;
class CCDMClass;

class ClassWay {
 public:
    static constexpr std::size_t kMost = 4096;

    // To the top.
    ClassWay() : all_(own_) {}
    ClassWay(const ClassWay&) = delete;
    ClassWay& operator=(const ClassWay&) = delete;

    // On by an attribute whose element is of this class. Lent; null beyond the ways that are
    // remembered.
    ClassWay* Below(const CCDMAttribute& attribute, const CCDMClass& shown);

    // What the choice depends on beside the way.
    struct Request {
        const CCDMAttribute* attribute;
        BranchRequest branch;
        bool has_primary;
        bool has_secondary;
        auto operator<=>(const Request&) const = default;
    };
    // Null while it was not kept; valid as long as the way.
    const FacesChoice* Find(const Request& request) const;
    void Keep(const Request& request, const FacesChoice& choice);

 private:
    using Ways = std::vector<std::unique_ptr<ClassWay>>;

    explicit ClassWay(Ways& all) : all_(all) {}

    Ways own_;   // of the first way: all but itself
    Ways& all_;  // those of the first way
    std::map<std::pair<const CCDMAttribute*, const CCDMClass*>, ClassWay*> below_;
    std::map<Request, FacesChoice> choices_;
};

}  // namespace fixtop
