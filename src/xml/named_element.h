// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "xml/sax_element_handler.h"

namespace fixtop {

// Takes every element of one name, for readers to derive from.
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

}  // namespace fixtop
