#include "value/text_forms.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace text_forms {
namespace {

struct Escape {
    char character;
    std::string_view text;
};

constexpr Escape kXmlEscapes[] = {
    {'\0', "&#00;"},  {'<', "&lt;"},   {'>', "&gt;"},   {'&', "&amp;"},
    {'\'', "&apos;"}, {'"', "&quot;"}, {'\n', "&#10;"}, {'\r', "&#13;"},
};
constexpr std::string_view kXmlCharacters("\0<>&'\"\n\r", 8);
constexpr std::string_view kAttributeCharacters = "\"&<";
static_assert(std::size(kXmlEscapes) == kXmlCharacters.size());

std::string_view EscapeOf(char c) {
    for (const Escape& escape : kXmlEscapes) {
        if (escape.character == c) return escape.text;
    }
    return {};
}

bool BeginsWithEscape(std::string_view text) {
    return std::any_of(std::begin(kXmlEscapes), std::end(kXmlEscapes),
                       [&](const Escape& escape) { return text.starts_with(escape.text); });
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsCount(std::string_view text) {
    return text.size() >= 2 && text[0] == '#' && std::all_of(text.begin() + 1, text.end(), IsDigit);
}

}  // namespace

bool NeedsXmlEscape(std::string_view text) noexcept {
    return text.find_first_of(kXmlCharacters) != std::string_view::npos;
}

void EscapeXml(std::string_view text, std::string& out) {
    while (true) {
        const std::size_t plain = std::min(text.find_first_of(kXmlCharacters), text.size());
        out.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) return;
        if (BeginsWithEscape(text)) {
            out.push_back('&');
        } else {
            out.append(EscapeOf(text[0]));
        }
        text.remove_prefix(1);
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
    return text.find_first_of(kAttributeCharacters) != std::string_view::npos;
}

void EscapeAttribute(std::string_view text, std::string& out) {
    for (char c : text) {
        if (kAttributeCharacters.find(c) != std::string_view::npos) {
            out.append(EscapeOf(c));
        } else {
            out.push_back(c);
        }
    }
}

std::int32_t ScanInt(const char* text) noexcept {
    return static_cast<std::int32_t>(std::strtoll(text, nullptr, 10));
}

double ScanReal(const char* text) noexcept {
    const char* begin = text + std::strspn(text, " \t\n\v\f\r");
    if (*begin == '+' && begin[1] != '-') ++begin;
    const char* digits = *begin == '-' ? begin + 1 : begin;
    double number = 0;
    if (IsDigit(*digits) || *digits == '.') {
        const auto [end, error] = std::from_chars(begin, begin + std::strlen(begin), number);
        // A hexadecimal number or a bare exponent is the scanner's to judge.
        const bool complete = *end == '\0' || std::strchr("eExX", *end) == nullptr;
        if (error == std::errc() && complete) return number;
    }
    number = 0;
    return std::sscanf(text, "%lg", &number) == 1 ? number : 0.0;
}

}  // namespace text_forms
