// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "mapping/translators/translator.h"
#include "mapping/translators/variable_lists.h"

namespace fixtop {

// What the translators of one attribute element have in common, whether they stand before or behind
// the elements that say it.
class TranslatorScope {
 public:
    TranslatorScope() = default;
    TranslatorScope(std::string container, std::string container_id)
        : container_(std::move(container)), container_id_(std::move(container_id)) {}

    // Joins a translator, which the library owns.
    void Join(CCDMTranslator& translator);
    void AddCondition(const std::string& variable, const std::string& value);
    // One variable alone is set: another one is passed over.
    void AddSetVar(const std::string& variable, const std::string& value);

 private:
    void ShareLists();

    std::string container_;
    std::string container_id_;
    std::shared_ptr<CCDMConditionList> conditions_;
    std::shared_ptr<CCDMSetVarList> set_vars_;
    std::vector<CCDMTranslator*> translators_;
};

}  // namespace fixtop
