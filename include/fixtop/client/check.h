// SPDX-License-Identifier: Apache-2.0
#pragma once

// For those who write class and map files: what is wrong in them, and why an attribute has no value
// in a case.

#include <optional>
#include <string>
#include <vector>

#include "fixtop/client/case.h"
#include "fixtop/client/node.h"

namespace fixtop::client {

// What is wrong in class and map files.
struct Finding {
    // An attribute without a translator is for the author to know, anything else to be mended.
    bool is_mistake = true;
    std::string file;
    int line = 0;  // 0: about the file as a whole
    std::string text;
};
// Of a library and a map, by file and line. Throws CaseError for a translation that the map does
// not have, with those that it has.
std::vector<Finding> CheckModel(const ModelFiles& files);

enum class Absence {
    kHasValue,      // or an object that is there, or a list that shows an element
    kUnmapped,      // the map has no translator for it
    kNoTranslator,  // none of its translators applies here
    kNoNode,        // the one that does leads to no node
    kNoValue,       // the node has no value, or the list no element
    kRefused,       // the value has a unit, or an option, that the class library lacks
};
struct Missing {
    Absence absence = Absence::kHasValue;
    std::string text;  // the same wherever the reason is the same
};
// Why an attribute of its class has no value on an object of the neutral view; null when the node
// is no such object.
std::optional<Missing> WhyMissing(const Node& object, const std::string& attribute);

// What the nodes of one object of the case have in common; 0 for a node that stands on none.
unsigned long long ObjectNumber(const Node& node);

}  // namespace fixtop::client
