// SPDX-License-Identifier: Apache-2.0
#pragma once

// The system's own XML parser, behind platform/xml_reader.h: it turns bytes into events and knows
// nothing of bounds.

#include <memory>
#include <string_view>

#include "platform/xml_parser_events.h"

namespace fixtop {

class XmlParser {
 public:
    virtual ~XmlParser() = default;
    // Whether the bytes were a well-formed document and no event stopped the parser.
    virtual bool Parse(std::string_view bytes, XmlParserEvents& events) = 0;
    // Places cost a count of lines and are seldom wanted, so they are asked for, within an event:
    // where it ends, and where the characters before it ended.
    virtual XmlPlace EventEnd() const = 0;
    virtual XmlPlace TextEnd() const = 0;
};

// Null when the system has none.
std::unique_ptr<XmlParser> CreateXmlParser();

}  // namespace fixtop
