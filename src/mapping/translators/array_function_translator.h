// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "mapping/translators/array_translator.h"
#include "mapping/translators/semantic_modules.h"
#include "path/path_step.h"

namespace fixtop {

// Those matches of a path that a function accepts, each where the function leads from it. The body
// is the function's name, the path is set by itself; without one of them there are no elements.
class CCDMArrayFunctionTranslator final : public CCDMArrayTranslator {
 public:
    explicit CCDMArrayFunctionTranslator(const SemanticModule* module) : module_(module) {}

    const char* DumpBody(std::string& out) const override;
    void SetBody(const std::string& text) override;
    void SetPath(const std::string& text);
    bool Test(FIReferenceBase&) const override { return IsUsable(); }
    bool Apply(FIReferenceBase&) const override { return IsUsable(); }
    std::unique_ptr<CDTBase> MakeIterator(FIReferenceBase& reference) const override;

 private:
    bool IsUsable() const { return path_ != nullptr && function_ != nullptr; }

    const SemanticModule* module_;
    std::string path_text_;
    ParsedPath path_;
    std::string function_name_;
    SemanticFunction function_ = nullptr;
};

}  // namespace fixtop
