// SPDX-License-Identifier: Apache-2.0
#pragma once

// Character data of XML 1.0 from any bytes. Characters that XML can't hold are left out, bytes that
// are no UTF-8 become "?", and markup, line ends and tabs become references, so that the text also
// stands in an attribute and is read back as it was.

#include <string>
#include <string_view>

namespace fixtop {

void AppendXmlText(std::string_view text, std::string& out);

// Whether `name` can stand as the name of an attribute: a letter or `_`, then letters, digits, `_`,
// `-` and `.`.
bool IsXmlIdentifier(std::string_view name);

}  // namespace fixtop
