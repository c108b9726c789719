// SPDX-License-Identifier: Apache-2.0
#include "mapping/translators/array_func_translator.h"

#include "mapping/map_file/map_text.h"
#include "mapping/translators/filter_function.h"
#include "mapping/walks/function_walk.h"

namespace fixtop {

const char* CCDMArrayFuncTranslator::DumpBody(std::string& out) const {
    out += "\t<TranslateArray Type=\"ArrayFunc\">" + function_name_;
    return "</TranslateArray>\n";
}

void CCDMArrayFuncTranslator::SetBody(const std::string& text) {
    function_name_ = PackedText(text);
    function_ = FindFilter<ArrayFunction>(module_, function_name_);
    const NamedFunction* row = FindFunctionRow<ArrayFunction>(module_, function_name_);
    steps_on_ = row && row->steps_on;
    late_ = row ? row->late : nullptr;
}

std::unique_ptr<CDTBase> CCDMArrayFuncTranslator::MakeIterator(FIReferenceBase& reference) const {
    return std::make_unique<CDTVariableIterator>(function_, reference, length_, steps_on_, late_);
}

}  // namespace fixtop
