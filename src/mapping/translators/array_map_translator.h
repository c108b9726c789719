// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "mapping/translators/array_translator.h"
#include "path/path_step.h"

namespace fixtop {

// The matches of a path.
class CCDMArrayMapTranslator final : public CCDMArrayTranslator {
 public:
    const char* DumpBody(std::string& out) const override;
    void SetBody(const std::string& text) override;
    bool Test(FIReferenceBase&) const override { return path_ != nullptr; }
    bool Apply(FIReferenceBase&) const override { return path_ != nullptr; }
    std::unique_ptr<CDTBase> MakeIterator(FIReferenceBase& reference) const override;

 private:
    std::string text_;
    ParsedPath path_;
};

}  // namespace fixtop
