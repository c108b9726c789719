// SPDX-License-Identifier: Apache-2.0
#pragma once

// The elements of a map file that make translators.

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "mapping/translators/translator.h"
#include "model/class_library.h"
#include "xml/named_elements.h"

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

// "Translate" or "TranslateArray", with the kinds of translator that its Type may name.
struct TranslatorForm;
extern const TranslatorForm kTranslateForm;
extern const TranslatorForm kTranslateArrayForm;

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

// The text inside as a whole, with an attribute that says whose it is.
class NamedTextElement final : public NamedElement {
 public:
    using Action = std::function<void(const std::string& name, const std::string& text)>;

    NamedTextElement(const char* element, const char* attribute, Action action)
        : NamedElement(element), attribute_(attribute), action_(std::move(action)) {}

    void OnText(const std::string& text, const XmlLocator* locator) override;
    void OnEnd(const XmlLocator* locator) override;

 protected:
    void Begin(const XmlLocator* locator, const XmlAttributes& attributes) override;

 private:
    const char* attribute_;
    Action action_;
    std::string name_;
    std::string text_;
};

}  // namespace fixtop
