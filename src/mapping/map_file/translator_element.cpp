// SPDX-License-Identifier: Apache-2.0
#include "mapping/map_file/translator_element.h"

#include "mapping/map_file/map_text.h"
#include "mapping/map_file/node_attributes_element.h"
#include "mapping/map_file/unless_blank.h"
#include "mapping/translators/array_function_translator.h"
#include "xml/message_text.h"
#include "xml/text_element.h"

namespace fixtop {

TranslatorElement::TranslatorElement(const TranslatorForm& form, const CCDMClassLibrary& library,
                                     TranslatorMap& target, TranslatorScope& scope,
                                     CCDMBranch branch)
    : form_(form), library_(library), target_(target), scope_(scope), branch_(branch) {
    SetWarnUnknown(true);
}

bool TranslatorElement::OnStart(const std::string& element, const XmlLocator* locator,
                                const XmlAttributes& attributes) {
    if (element != form_.element) return false;
    std::string branch_text;
    std::string translate_name;
    std::string type;
    CountAttributes(attributes);
    GetAttribute("Branch", attributes, branch_text);
    GetAttribute("TranslateName", attributes, translate_name);
    GetAttribute("Type", attributes, type);
    WarnUnexpectedAttributes(element, locator);
    if (type.empty()) {
        SevereError(MessageText("No Type attribute specified for %s", form_.element), locator);
        return false;
    }
    const CCDMBranch branch = BranchFromText(branch_text);
    Make(type, translate_name.empty() ? library_.defaultTranslateName : translate_name,
         branch == CCDMBranch::kUnspecified ? branch_ : branch);
    return true;
}

void TranslatorElement::Make(const std::string& type, const std::string& translate_name,
                             CCDMBranch branch) {
    translator_ = nullptr;
    for (const TranslatorKind& kind : form_.kinds) {
        if (type != kind.type) continue;
        std::unique_ptr<CCDMTranslator> made = kind.make(library_);
        CCDMTranslator* const translator = translator_ = made.get();
        translator->name = translate_name;
        translator->branch = branch;
        target_.emplace(translate_name, std::move(made));
        scope_.Join(*translator);
        AddChild<NodeAttributesElement>(translator->nodeAttributes);
        if (kind.body_element == nullptr) return;
        AddChild<TextElement>(kind.body_element, UnlessBlank([translator](const std::string& text) {
                                  translator->SetBody(text);
                              }));
        if (auto* filter = dynamic_cast<CCDMArrayFunctionTranslator*>(translator)) {
            AddChild<TextElement>(
                "Map", UnlessBlank([filter](const std::string& text) { filter->SetPath(text); }));
        }
        return;
    }
}

void TranslatorElement::OnText(const std::string& text, const XmlLocator*) {
    if (translator_ != nullptr && !IsBlank(text)) translator_->SetBody(text);
}

}  // namespace fixtop
