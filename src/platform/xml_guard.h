// SPDX-License-Identifier: Apache-2.0
#pragma once

// What is looked at before a document reaches the parser.

#include <optional>
#include <string_view>

namespace fixtop {

struct XmlRefusal {
    const char* why;
    int line = 0;  // counted from 1; 0 when it is about the document as a whole
};

// Why the document is not to be parsed: it declares a document type, with whose entities and
// defaults a short text can grow without bound, or it is in an encoding in which this look would
// not see them. Nothing when it may be parsed.
std::optional<XmlRefusal> RefusalOfXml(std::string_view bytes);

}  // namespace fixtop
