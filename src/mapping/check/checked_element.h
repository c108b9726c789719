// SPDX-License-Identifier: Apache-2.0
#pragma once

// Elements of a model file as a check sees them: whole, with their lines.

#include <string>
#include <utility>
#include <vector>

#include "mapping/check/finding.h"

namespace fixtop {

struct CheckedElement {
    std::string name;
    FindingPlace place;  // where its tag ends
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<std::string> texts;  // between its tags, each piece by itself, blank ones left out
    std::vector<CheckedElement> children;

    // Null when it has no such attribute.
    const std::string* Find(const char* attribute) const;
    // Empty when it has none.
    std::string Get(const char* attribute) const;
    // Of all pieces.
    std::string Text() const;

    template <class Visit>
    void ForEach(const char* child_name, Visit visit) const {
        for (const CheckedElement& child : children) {
            if (child.name == child_name) visit(child);
        }
    }
};

}  // namespace fixtop
