// SPDX-License-Identifier: Apache-2.0
#include "mapping/translators/array_translators.h"

#include "diagnostics/error_log.h"
#include "mapping/map_file/map_text.h"
#include "mapping/walks/filtered_walk.h"
#include "mapping/walks/function_walk.h"
#include "mapping/walks/path_walk.h"
#include "xml/message_text.h"

namespace fixtop {

namespace {

// Null, and logged, when there is no such function; null for the empty name.
template <class Function>
Function FindFilter(const SemanticModule* module, const std::string& name) {
    if (name.empty()) return nullptr;
    const auto function = FindFunctionAs<Function>(module, name);
    if (function == nullptr) {
        LogMessage(MessageText(" Filter Semantic function: %.40s not found", name.c_str()).c_str());
    }
    return function;
}

std::unique_ptr<CDTBase> OnFirst(std::unique_ptr<CDTBase> walk) {
    walk->First();
    return walk;
}

}  // namespace

const char* CCDMArrayMapTranslator::DumpBody(std::string& out) const {
    out += "\t<TranslateArray Type=\"Map\">" + text_;
    return "</TranslateArray>";
}

void CCDMArrayMapTranslator::SetBody(const std::string& text) {
    text_ = TrimmedText(text);
    path_ = CompilePath(text_);
}

std::unique_ptr<CDTBase> CCDMArrayMapTranslator::MakeIterator(FIReferenceBase& reference) const {
    return OnFirst(std::make_unique<CDTPathIterator>(path_.get(), reference));
}

const char* CCDMArrayFunctionTranslator::DumpBody(std::string& out) const {
    out += "\t<TranslateArray Type=\"Func\">" + path_text_;
    if (!path_text_.empty() && !function_name_.empty()) out += ' ';
    out += function_name_;
    return "</TranslateArray>\n";
}

void CCDMArrayFunctionTranslator::SetBody(const std::string& text) {
    function_name_ = PackedText(text);
    function_ = FindFilter<SemanticFunction>(module_, function_name_);
}

void CCDMArrayFunctionTranslator::SetPath(const std::string& text) {
    path_text_ = TrimmedText(text);
    path_ = CompilePath(path_text_);
}

std::unique_ptr<CDTBase> CCDMArrayFunctionTranslator::MakeIterator(
    FIReferenceBase& reference) const {
    return OnFirst(
        std::make_unique<CDTFilter>(std::make_unique<CDTPathIterator>(path_.get(), reference),
                                    reference, CDTVariableFilter(function_)));
}

const char* CCDMArrayFuncTranslator::DumpBody(std::string& out) const {
    out += "\t<TranslateArray Type=\"ArrayFunc\">" + function_name_;
    return "</TranslateArray>\n";
}

void CCDMArrayFuncTranslator::SetBody(const std::string& text) {
    function_name_ = PackedText(text);
    function_ = FindFilter<ArrayFunction>(module_, function_name_);
    const NamedFunction* row = FindFunctionRow<ArrayFunction>(module_, function_name_);
    steps_on_ = row && row->steps_on;
}

std::unique_ptr<CDTBase> CCDMArrayFuncTranslator::MakeIterator(FIReferenceBase& reference) const {
    return std::make_unique<CDTVariableIterator>(function_, reference, length_, steps_on_);
}

}  // namespace fixtop
