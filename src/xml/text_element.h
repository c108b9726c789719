// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "xml/named_element.h"

namespace fixtop {

// Takes every element of one name and hands each piece of its text to a function.
class TextElement final : public NamedElement {
 public:
    using Action = std::function<void(const std::string& text, const XmlLocator* locator)>;

    TextElement(const char* name, Action action) : NamedElement(name), action_(std::move(action)) {}

    void OnText(const std::string& text, const XmlLocator* locator) override {
        action_(text, locator);
    }

 private:
    Action action_;
};

}  // namespace fixtop
