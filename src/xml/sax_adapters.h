// SPDX-License-Identifier: Apache-2.0
#pragma once

// What stands between the XML reader and the element handlers.

#include <string>

#include "platform/xml_reader.h"
#include "xml/sax_element_handler.h"

namespace fixtop {

// Feeds the events to the chain that begins at `document`; names, values and texts are cut at
// SaxElementHandler::kTextLimit, not within a character.
class SaxContentAdapter final : public XmlContentHandler {
 public:
    explicit SaxContentAdapter(SaxElementHandler& document) : document_(document) {}

    void StartElement(const std::string& name, const XmlAttributes& attributes,
                      const XmlLocator& locator) override;
    void EndElement(const std::string& name, const XmlLocator& locator) override;
    void Text(const std::string& text, const XmlLocator& locator) override;

 private:
    SaxElementHandler& document_;
    XmlAttributes cut_;
};

// Writes what the parser complains about to the log: errors always, warnings at level 5.
class SaxErrorAdapter final : public XmlErrorHandler {
 public:
    void Warning(const std::string& text, const XmlLocator& locator) override;
    void Error(const std::string& text, const XmlLocator& locator) override;
    void FatalError(const std::string& text, const XmlLocator& locator) override;

 private:
    SaxElementHandler teller_;
};

}  // namespace fixtop
