// SPDX-License-Identifier: Apache-2.0
#pragma once

// Handlers of elements that are known by their name, for readers to derive from or to fill in.

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "xml/sax_element_handler.h"

namespace fixtop {

// Takes every element of one name.
class NamedElement : public SaxElementHandler {
 public:
    explicit NamedElement(const char* name) : name_(name) {}

    bool OnStart(const std::string& element, const XmlLocator* locator,
                 const XmlAttributes& attributes) final {
        if (element != name_) return false;
        Begin(locator, attributes);
        return true;
    }

 protected:
    // The element begins: read its attributes, add the children.
    virtual void Begin(const XmlLocator*, const XmlAttributes&) {}

    const char* Name() const { return name_.data(); }

 private:
    std::string_view name_;  // ends in a zero
};

// Hands each piece of the element's text to a function.
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

// The top of a chain: it has the handlers of possible root elements.
class DocumentHandler : public SaxElementHandler {
 public:
    // Whether an unknown root element is worth a warning.
    explicit DocumentHandler(bool warn_unknown) { SetWarnUnknown(warn_unknown); }

    template <class Handler, class... Arguments>
    void AddRoot(Arguments&&... arguments) {
        AddChild<Handler>(std::forward<Arguments>(arguments)...);
    }
};

}  // namespace fixtop
