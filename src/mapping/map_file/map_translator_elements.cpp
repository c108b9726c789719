// SPDX-License-Identifier: Apache-2.0
#include "mapping/map_file/map_translator_elements.h"

#include <span>

#include "mapping/map_file/map_text.h"
#include "mapping/translators/array_translators.h"
#include "mapping/translators/scalar_translators.h"
#include "xml/message_text.h"

namespace fixtop {

// A kind of translator, by the text of Type.
struct TranslatorKind {
    const char* type;
    std::unique_ptr<CCDMTranslator> (*make)(const CCDMClassLibrary& library);
    // An element inside whose text is the body too; null for none.
    const char* body_element;
};

struct TranslatorForm {
    const char* element;
    std::span<const TranslatorKind> kinds;
};

namespace {

template <class Translator>
std::unique_ptr<CCDMTranslator> MakePlain(const CCDMClassLibrary&) {
    return std::make_unique<Translator>();
}

template <class Translator>
std::unique_ptr<CCDMTranslator> MakeLinked(const CCDMClassLibrary& library) {
    return std::make_unique<Translator>(library.semanticModule);
}

std::unique_ptr<CCDMTranslator> MakeCounted(const CCDMClassLibrary& library) {
    return std::make_unique<CCDMArrayFuncTranslator>(library.semanticModule, library.listLength);
}

constexpr TranslatorKind kScalarKinds[] = {
    {"Dummy", MakePlain<CCDMDummyTranslator>, nullptr},
    {"Function", MakeLinked<CCDMFunctionTranslator>, "Function"},
    {"Map", MakePlain<CCDMMapTranslator>, "Map"},
};
constexpr TranslatorKind kArrayKinds[] = {
    {"Function", MakeLinked<CCDMArrayFunctionTranslator>, "Function"},
    {"Map", MakePlain<CCDMArrayMapTranslator>, "Map"},
    {"ArrayFunc", MakeCounted, nullptr},
};

FIValue TextValue(const std::string& text) {
    FIValue value;
    value.SetText(text);
    return value;
}

// Hands over the pieces of a text that are more than white space.
template <class Action>
TextElement::Action UnlessBlank(Action action) {
    return [action](const std::string& text, const XmlLocator*) {
        if (!IsBlank(text)) action(text);
    };
}

class NodeAttributesElement final : public NamedElement {
 public:
    explicit NodeAttributesElement(NodeAttributes& attributes)
        : NamedElement("NodeAttributes"), attributes_(attributes) {
        SetWarnUnknown(true);
    }

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override {
        AddChild<NamedTextElement>("Attribute", "Name",
                                   [this](const std::string& name, const std::string& text) {
                                       ParsedPath path = CompilePath(text);
                                       if (path) attributes_[name] = std::move(path);
                                   });
    }

 private:
    NodeAttributes& attributes_;
};

}  // namespace

const TranslatorForm kTranslateForm = {"Translate", kScalarKinds};
const TranslatorForm kTranslateArrayForm = {"TranslateArray", kArrayKinds};

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

void NamedTextElement::Begin(const XmlLocator* locator, const XmlAttributes& attributes) {
    name_.clear();
    text_.clear();
    CountAttributes(attributes);
    GetAttribute(attribute_, attributes, name_);
    WarnUnexpectedAttributes(Name(), locator);
}

void NamedTextElement::OnText(const std::string& text, const XmlLocator*) {
    text_ += text;
}

void NamedTextElement::OnEnd(const XmlLocator*) {
    action_(name_, text_);
}

}  // namespace fixtop
