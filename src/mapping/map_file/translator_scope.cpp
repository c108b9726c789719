// SPDX-License-Identifier: Apache-2.0
#include "mapping/map_file/translator_scope.h"

namespace fixtop {

namespace {

FIValue TextValue(const std::string& text) {
    FIValue value;
    value.SetText(text);
    return value;
}

}  // namespace

void TranslatorScope::Join(CCDMTranslator& translator) {
    translator.container = container_;
    translator.containerId = container_id_;
    translator.conditions = conditions_;
    translator.setVars = set_vars_;
    translators_.push_back(&translator);
}

void TranslatorScope::AddCondition(const std::string& variable, const std::string& value) {
    if (!conditions_) {
        conditions_ = std::make_shared<CCDMConditionList>();
        ShareLists();
    }
    conditions_->pairs.emplace_back(variable, TextValue(value));
}

void TranslatorScope::AddSetVar(const std::string& variable, const std::string& value) {
    if (set_vars_) return;
    set_vars_ = std::make_shared<CCDMSetVarList>();
    set_vars_->pairs.emplace_back(variable, TextValue(value));
    ShareLists();
}

void TranslatorScope::ShareLists() {
    for (CCDMTranslator* translator : translators_) {
        translator->conditions = conditions_;
        translator->setVars = set_vars_;
    }
}

}  // namespace fixtop
