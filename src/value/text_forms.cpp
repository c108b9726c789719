// SPDX-License-Identifier: Apache-2.0
#include "value/text_forms.h"

#include <algorithm>

namespace fixtop::text_forms {
namespace {

// Each character stands at the place of its escape.
constexpr std::string_view kXmlCharacters("\0<>&'\"\n\r", 8);
constexpr std::string_view kXmlEscapes[] = {"&#00;",  "&lt;",   "&gt;",  "&amp;",
                                            "&apos;", "&quot;", "&#10;", "&#13;"};
static_assert(std::size(kXmlEscapes) == kXmlCharacters.size());

constexpr CharacterSet IsXmlCharacter(kXmlCharacters);
constexpr CharacterSet IsAttributeCharacter("\"&<");

std::string_view EscapeOf(char c) {
    return kXmlEscapes[kXmlCharacters.find(c)];
}

bool BeginsWithEscape(std::string_view text) {
    return std::any_of(std::begin(kXmlEscapes), std::end(kXmlEscapes),
                       [&](std::string_view escape) { return text.starts_with(escape); });
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsCount(std::string_view text) {
    return text.size() >= 2 && text[0] == '#' && std::all_of(text.begin() + 1, text.end(), IsDigit);
}

}  // namespace

bool NeedsXmlEscape(std::string_view text) noexcept {
    return std::any_of(text.begin(), text.end(), IsXmlCharacter);
}

void EscapeXml(std::string_view text, std::string& out) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool keep = !IsXmlCharacter(c) || (c == '&' && BeginsWithEscape(text.substr(i)));
        out.append(keep ? text.substr(i, 1) : EscapeOf(c));
    }
}

bool NeedsPathQuotes(std::string_view text) noexcept {
    return std::any_of(text.begin(), text.end(), IsPathSpecial) && !IsCount(text);
}

void QuoteForPath(std::string_view text, std::string& out) {
    out.push_back('"');
    for (char c : text) {
        if (c == '"') out.push_back('"');
        out.push_back(c);
    }
    out.push_back('"');
}

bool NeedsAttributeEscape(std::string_view text) noexcept {
    return std::any_of(text.begin(), text.end(), IsAttributeCharacter);
}

void EscapeAttribute(std::string_view text, std::string& out) {
    for (char c : text) {
        out.append(IsAttributeCharacter(c) ? EscapeOf(c) : std::string_view(&c, 1));
    }
}

}  // namespace fixtop::text_forms
