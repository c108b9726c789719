// SPDX-License-Identifier: Apache-2.0
#pragma once

// The translators to one application node.

#include <string>

#include "mapping/translators/function_tables.h"
#include "mapping/translators/translator.h"

namespace fixtop {

// Goes along a path.
class CCDMMapTranslator final : public CCDMTranslator {
 public:
    const char* DumpBody(std::string& out) const override;
    void SetBody(const std::string& text) override;
    bool Test(FIReferenceBase& reference) const override;
    bool Apply(FIReferenceBase& reference) const override;
    const std::string& Text() const { return text_; }

 private:
    std::string text_;
    // Null for one that does not parse. The empty path stays at the node.
    ParsedPath path_{new PathStep};
};

// Has a function find the node; fails without one. One that must be asked before it moves is asked
// by Apply.
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
