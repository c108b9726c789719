// SPDX-License-Identifier: Apache-2.0
#pragma once

// The translators to many application nodes. Test and Apply leave the reference on the node from
// which the elements are reached, by the walk, and answer whether there can be any: false when the
// body is of no use.

#include <string>

#include "mapping/translators/function_tables.h"
#include "mapping/translators/translator.h"

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
};

}  // namespace fixtop
