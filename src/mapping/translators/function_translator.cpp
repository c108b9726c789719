// SPDX-License-Identifier: Apache-2.0
#include "mapping/translators/function_translator.h"

#include "diagnostics/module_log.h"
#include "mapping/map_file/map_text.h"
#include "mapping/translators/function_tables.h"
#include "mapping/translators/reference_move.h"
#include "xml/message_text.h"

namespace fixtop {

// The closing text is what readers of these dumps know, like the one of an array.
const char* CCDMFunctionTranslator::DumpBody(std::string& out) const {
    out += "\t<Translate Type=\"Func\">" + function_name_;
    return "</TranslateArray>\n";
}

void CCDMFunctionTranslator::SetBody(const std::string& text) {
    function_ = nullptr;
    function_name_ = PackedText(text);
    if (function_name_.empty()) return;
    if (const auto* row = FindFunctionRow<SemanticFunction>(module_, function_name_)) {
        function_ = std::get<SemanticFunction>(row->function);
        asked_first_ = row->asked_first;
        return;
    }
    LogMessage(MessageText(" Converter Semantic function: %.40s not found", function_name_.c_str())
                   .c_str());
}

bool CCDMFunctionTranslator::Test(FIReferenceBase& reference) const {
    return function_ != nullptr &&
           MoveReference(reference, [this](FIIteratorBase& it) { return function_(&it, 0); });
}

bool CCDMFunctionTranslator::Apply(FIReferenceBase& reference) const {
    return function_ != nullptr && MoveReference(reference, [this](FIIteratorBase& it) {
               return (!asked_first_ || function_(&it, 0)) && function_(&it, 1);
           });
}

}  // namespace fixtop
