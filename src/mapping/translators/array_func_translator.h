// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "mapping/translators/array_translator.h"
#include "mapping/translators/semantic_modules.h"

namespace fixtop {

// As many elements as a function counts, each reached by it.
class CCDMArrayFuncTranslator final : public CCDMArrayTranslator {
 public:
    explicit CCDMArrayFuncTranslator(const SemanticModule* module,
                                     ListLength length = ListLength::kByte)
        : module_(module), length_(length) {}

    const char* DumpBody(std::string& out) const override;
    void SetBody(const std::string& text) override;
    bool Test(FIReferenceBase&) const override { return function_ != nullptr; }
    bool Apply(FIReferenceBase&) const override { return function_ != nullptr; }
    std::unique_ptr<CDTBase> MakeIterator(FIReferenceBase& reference) const override;

 private:
    const SemanticModule* module_;
    ListLength length_;
    std::string function_name_;
    ArrayFunction function_ = nullptr;
    bool steps_on_ = false;
    const LateVariables* late_ = nullptr;
};

}  // namespace fixtop
