// SPDX-License-Identifier: Apache-2.0
#pragma once

// The check of one translator: its type, its path or function, and its node attributes.

#include "mapping/check/checked_element.h"
#include "mapping/check/findings.h"
#include "mapping/check/function_names.h"

namespace fixtop {

class TranslatorCheck {
 public:
    explicit TranslatorCheck(Findings& findings) : findings_(findings) {}

    // A <Translate> or <TranslateArray>. Answers whether it makes a translator at all.
    bool Check(const CheckedElement& element);
    // What a <DLL> names: functions are looked up in it from then on.
    void Link(const std::string& module, FindingPlace place);
    void CheckFunction(const std::string& name, FunctionKind kind, FindingPlace place);

 private:
    enum class Part;
    struct Type;

    void CheckPath(const std::string& text, FindingPlace place);
    void CheckBody(const Type& type, const CheckedElement& element);
    void CheckPart(Part part, const std::vector<std::string>& pieces, bool may_be_empty,
                   const CheckedElement& element);
    void CheckNodeAttributes(const CheckedElement& element);

    Findings& findings_;
    const SemanticModule* module_ = nullptr;
    bool is_linked_ = false;
};

}  // namespace fixtop
