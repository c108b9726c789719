// SPDX-License-Identifier: Apache-2.0
#pragma once

// Elements of a model file as a check sees them: whole, with their lines.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "mapping/check/finding.h"
#include "xml/xml_file.h"

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

// What is read of a file: its root alone, then each element directly below it when that is whole,
// in their order.
struct ElementVisits {
    std::function<bool(const CheckedElement& root)> root;  // false: nothing below it is wanted
    std::function<void(const CheckedElement& element)> element;
};

// Reads a file as the readers of models do, within their bounds. What is wrong with it as XML, or
// that it can't be found, is told; the latter at `from`, where it is named, or else as the file's
// own.
void ReadElements(const std::string& name, ModelFileOrigin origin, bool has_resources,
                  const FindingPlace* from, const ElementVisits& visits, Findings& findings);

}  // namespace fixtop
