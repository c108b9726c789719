// SPDX-License-Identifier: Apache-2.0
#pragma once

// Translators: how one attribute of a class is reached on the application's tree. A map file makes
// them, the library's records own them, FindTranslator chooses among those of an attribute.
//
// A reference that is given in is lent. Test leaves it where it stands; Apply moves it and answers
// false when the application has no such node, after which its position is of no use.
//
// The order of the virtual operations is fixed.

#include <map>
#include <memory>
#include <string>

#include "fixtop/reference.h"
#include "fixtop/value.h"
#include "mapping/translators/variable_lists.h"
#include "model/model_types.h"
#include "model/translator_record.h"
#include "path/path_step.h"

namespace fixtop {

// Expressions that stand in for attributes of the application's node, by attribute name. A literal
// is a constant; any other is walked from the node and its attribute read.
using NodeAttributes = std::map<std::string, ParsedPath>;

class CCDMTranslator : public CCDMTranslatorRecord {
 public:
    // Appends the opening text and the body to `out` and answers the closing text.
    virtual const char* DumpBody(std::string& out) const = 0;
    // The text of the element. A body that is no use is logged and leaves a translator that fails.
    virtual void SetBody(const std::string& text) = 0;
    virtual bool Test(FIReferenceBase& reference) const = 0;
    virtual bool Apply(FIReferenceBase& reference) const = 0;

    std::string name;         // the translate name
    std::string container;    // class that must stand above, with dotted parents; empty for any
    std::string containerId;  // attribute that must stand above, likewise
    std::shared_ptr<CCDMConditionList> conditions;  // null when there are none
    std::shared_ptr<CCDMSetVarList> setVars;        // null when there are none
    NodeAttributes nodeAttributes;
    CCDMBranch branch = CCDMBranch::kBoth;
    bool followsPath = false;  // it is a CCDMMapTranslator
};

}  // namespace fixtop
