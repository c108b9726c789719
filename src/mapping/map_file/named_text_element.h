// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "xml/named_element.h"

namespace fixtop {

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
