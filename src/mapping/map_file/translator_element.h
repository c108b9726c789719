// SPDX-License-Identifier: Apache-2.0
#pragma once

// The element of a map file that makes translators.

#include <string>

#include "mapping/map_file/translator_forms.h"
#include "mapping/map_file/translator_scope.h"
#include "mapping/translators/translator.h"
#include "mapping/translators/variable_lists.h"
#include "model/class_library.h"
#include "xml/sax_element_handler.h"

namespace fixtop {

class TranslatorElement final : public SaxElementHandler {
 public:
    // Translators go into `target`; library, target and scope must outlive the handler. `branch`
    // stands in for one that is not given.
    TranslatorElement(const TranslatorForm& form, const CCDMClassLibrary& library,
                      TranslatorMap& target, TranslatorScope& scope, CCDMBranch branch);

    // Refuses an element without a Type, after an error.
    bool OnStart(const std::string& element, const XmlLocator* locator,
                 const XmlAttributes& attributes) override;
    // Each piece of the text is a body, but for white space between the elements inside.
    void OnText(const std::string& text, const XmlLocator* locator) override;

 private:
    void Make(const std::string& type, const std::string& translate_name, CCDMBranch branch);

    const TranslatorForm& form_;
    const CCDMClassLibrary& library_;
    TranslatorMap& target_;
    TranslatorScope& scope_;
    CCDMBranch branch_;
    // Of the element that is open; null where Type names none.
    CCDMTranslator* translator_ = nullptr;
};

}  // namespace fixtop
