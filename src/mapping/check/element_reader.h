// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "mapping/check/checked_element.h"
#include "mapping/check/element_visits.h"
#include "mapping/check/findings.h"
#include "platform/xml_reader.h"

namespace fixtop {

// Puts elements together; those that are open stand one in the other.
class ElementReader final : public XmlContentHandler, public XmlErrorHandler {
 public:
    // The visits and the findings must outlive the reader.
    ElementReader(int file, const ElementVisits& visits, Findings& findings)
        : file_(file), visits_(visits), findings_(findings) {}

    void StartElement(const std::string& name, const XmlAttributes& attributes,
                      const XmlLocator& locator) override;
    void EndElement(const std::string& name, const XmlLocator& locator) override;
    void Text(const std::string& text, const XmlLocator& locator) override;
    void Warning(const std::string&, const XmlLocator&) override {}
    void Error(const std::string& text, const XmlLocator& locator) override;
    void FatalError(const std::string& text, const XmlLocator& locator) override;

    bool HasToldWhy() const { return has_told_; }

 private:
    void CheckLength(std::size_t length, const XmlLocator& locator);

    const int file_;
    const ElementVisits& visits_;
    Findings& findings_;
    std::vector<CheckedElement> open_;
    int depth_ = 0;
    bool is_wanted_ = false;
    bool has_told_ = false;
};

}  // namespace fixtop
