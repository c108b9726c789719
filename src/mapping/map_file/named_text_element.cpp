// SPDX-License-Identifier: Apache-2.0
#include "mapping/map_file/named_text_element.h"

namespace fixtop {

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
