// SPDX-License-Identifier: Apache-2.0
#include "mapping/translators/array_function_translator.h"

#include "mapping/map_file/map_text.h"
#include "mapping/translators/filter_function.h"
#include "mapping/walks/filtered_walk.h"
#include "mapping/walks/path_walk.h"

namespace fixtop {

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
    auto walk =
        std::make_unique<CDTFilter>(std::make_unique<CDTPathIterator>(path_.get(), reference),
                                    reference, CDTVariableFilter(function_));
    walk->First();
    return walk;
}

}  // namespace fixtop
