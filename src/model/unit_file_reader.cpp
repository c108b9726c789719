// SPDX-License-Identifier: Apache-2.0
// The reader of unit files, root element CCDMUnitFile. It warns of unknown elements and attributes.

#include <array>

#include "model/class_library.h"
#include "xml/document_handler.h"
#include "xml/named_element.h"
#include "xml/text_element.h"
#include "xml/xml_file.h"

namespace fixtop {

namespace {

// Elements that people write for each other.
constexpr std::array<const char*, 4> kIgnored = {"Version", "Author", "Company", "Comments"};

class TranslateElement final : public NamedElement {
 public:
    explicit TranslateElement(CCDMUnitsList& units) : NamedElement("Translate"), units_(units) {}

 protected:
    void Begin(const XmlLocator* locator, const XmlAttributes& attributes) override {
        std::string app;
        std::string ccdm;
        std::string quantity;
        std::string ignored;
        CountAttributes(attributes);
        GetAttribute("App", attributes, app);
        if (!GetAttribute("Ccdm", attributes, ccdm)) ccdm = app;
        const bool has_quantity = GetAttribute("Quantity", attributes, quantity);
        const bool is_default = GetAttribute("Default", attributes, ignored);
        WarnUnexpectedAttributes(Name(), locator);
        units_.AddTranslation(app, ccdm, has_quantity ? quantity.c_str() : nullptr, is_default);
    }

 private:
    CCDMUnitsList& units_;
};

class UnitFileElement final : public NamedElement {
 public:
    explicit UnitFileElement(CCDMUnitsList& units) : NamedElement("CCDMUnitFile"), units_(units) {
        SetWarnUnknown(true);
    }

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override {
        AddChild<TextElement>("Provider", [this](const std::string& text, const XmlLocator*) {
            units_.SetProvider(text.c_str());
        });
        AddChild<TextElement>("InitString", [this](const std::string& text, const XmlLocator*) {
            units_.SetInitString(text.c_str());
        });
        AddChild<TranslateElement>(units_);
        for (const char* element : kIgnored) AddChild<NamedElement>(element);
    }

 private:
    CCDMUnitsList& units_;
};

}  // namespace

bool CCDMClassLibrary::ReadUnitFile(const char* file) {
    if (file == nullptr) return false;
    DocumentHandler document(true);
    document.AddRoot<UnitFileElement>(units);
    return ReadModelFile("Unit", file, ModelFileOrigin::kCaller, unitResourceModule != nullptr,
                         document);
}

}  // namespace fixtop
