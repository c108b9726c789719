// SPDX-License-Identifier: Apache-2.0
#pragma once

// The translators to one application node that a map names without a function.

#include <string>

#include "mapping/translators/translator.h"

namespace fixtop {

// Goes along a path.
class CCDMMapTranslator final : public CCDMTranslator {
 public:
    CCDMMapTranslator() { followsPath = true; }

    const char* DumpBody(std::string& out) const override;
    void SetBody(const std::string& text) override;
    bool Test(FIReferenceBase& reference) const override;
    bool Apply(FIReferenceBase& reference) const override;
    const std::string& Text() const { return text_; }
    // Null for one that fails.
    const PathStep* Path() const { return path_.get(); }

 private:
    std::string text_;
    // Null for one that does not parse. The empty path stays at the node.
    ParsedPath path_{new PathStep};
};

// Stays where it is: the attribute has overrides alone, or children that are reached from here.
class CCDMDummyTranslator final : public CCDMTranslator {
 public:
    const char* DumpBody(std::string& out) const override;
    void SetBody(const std::string& text) override;
    bool Test(FIReferenceBase&) const override { return true; }
    bool Apply(FIReferenceBase&) const override { return true; }

 private:
    std::string text_;
};

}  // namespace fixtop
