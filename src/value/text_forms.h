// SPDX-License-Identifier: Apache-2.0
#pragma once

// How text is written into other languages: XML character data, path expressions and XML
// attributes. Pure functions on views; nothing is kept.

#include <string>
#include <string_view>

#include "value/character_set.h"

namespace fixtop::text_forms {

// The thirteen characters that mean something in a path expression.
inline constexpr std::string_view kPathSpecials = "%#'&!|()[].=\"";

inline constexpr CharacterSet IsPathSpecial(kPathSpecials);

// Whether `text` has a character that `EscapeXml` would consider; without one it is its own escape.
bool NeedsXmlEscape(std::string_view text) noexcept;

// Appends `text` to `out` with the eight XML escapes. An `&` that already begins one of the eight
// is kept, so escaping twice changes nothing.
void EscapeXml(std::string_view text, std::string& out);

// Whether `text` must be quoted to stand as one name in a path. A count such as "#12" need not.
bool NeedsPathQuotes(std::string_view text) noexcept;

// Appends `text` in double quotes, those inside doubled.
void QuoteForPath(std::string_view text, std::string& out);

// Whether `text` has one of the characters `"`, `&`, `<`.
bool NeedsAttributeEscape(std::string_view text) noexcept;

// Appends `text` with `"`, `&` and `<` as entities, existing entities escaped once more.
void EscapeAttribute(std::string_view text, std::string& out);

}  // namespace fixtop::text_forms
