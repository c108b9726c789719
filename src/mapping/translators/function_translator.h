// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "mapping/translators/semantic_modules.h"
#include "mapping/translators/translator.h"

namespace fixtop {

// The translator to one application node that has a function find it; fails without one. One that
// must be asked before it moves is asked by Apply.
class CCDMFunctionTranslator final : public CCDMTranslator {
 public:
    // The module in which the function is looked up, when its name is read.
    explicit CCDMFunctionTranslator(const SemanticModule* module) : module_(module) {}

    const char* DumpBody(std::string& out) const override;
    void SetBody(const std::string& text) override;
    bool Test(FIReferenceBase& reference) const override;
    bool Apply(FIReferenceBase& reference) const override;
    const std::string& FunctionName() const { return function_name_; }

 private:
    const SemanticModule* module_;
    std::string function_name_;
    SemanticFunction function_ = nullptr;
    bool asked_first_ = false;
};

}  // namespace fixtop
