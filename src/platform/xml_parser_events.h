// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the system's own XML parser tells.

#include <string>
#include <string_view>

#include "platform/xml_reader.h"

namespace fixtop {

// A place in the document, counted from 1.
struct XmlPlace {
    int line = 0;
    int column = 0;
};

enum class XmlSeverity { kWarning, kError, kFatal };

// A false answer stops the parser, which then tells nothing more. Nothing throws. What is handed
// out is lent for the event. Characters may come in pieces; a break is a comment or the edge of a
// CDATA section.
class XmlParserEvents {
 public:
    virtual bool OnStart(std::string_view name, const XmlAttributes& attributes) noexcept = 0;
    virtual bool OnEnd(std::string_view name) noexcept = 0;
    virtual bool OnCharacters(std::string_view text) noexcept = 0;
    virtual bool OnBreak() noexcept = 0;
    virtual void OnError(XmlSeverity severity, std::string text, XmlPlace place) noexcept = 0;

 protected:
    ~XmlParserEvents() = default;
};

}  // namespace fixtop
