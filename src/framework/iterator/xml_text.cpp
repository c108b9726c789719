// SPDX-License-Identifier: Apache-2.0
#include "framework/iterator/xml_text.h"

#include <algorithm>

namespace fixtop {

namespace {

struct Utf8Form {
    unsigned char mask;
    unsigned char lead;
    int length;
    char32_t smallest;
};

constexpr Utf8Form kUtf8Forms[] = {
    {0x80, 0x00, 1, 0x0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
};

constexpr char32_t kLargest = 0x10FFFF;

bool IsSurrogate(char32_t code) {
    return code >= 0xD800 && code <= 0xDFFF;
}
bool IsControl(char32_t code) {
    return code < 0x20 && code != '\t' && code != '\n' && code != '\r';
}
bool IsNonCharacter(char32_t code) {
    return code == 0xFFFE || code == 0xFFFF;
}

// Length of the character at the start of `text`, 0 when the bytes there are none.
int DecodeUtf8(std::string_view text, char32_t& code) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    for (const Utf8Form& form : kUtf8Forms) {
        if ((byte(0) & form.mask) != form.lead) continue;
        if (text.size() < static_cast<std::size_t>(form.length)) return 0;
        code = byte(0) & static_cast<unsigned char>(~form.mask);
        for (int i = 1; i < form.length; ++i) {
            if ((byte(i) & 0xC0) != 0x80) return 0;
            code = (code << 6) | (byte(i) & 0x3F);
        }
        const bool valid = code >= form.smallest && code <= kLargest && !IsSurrogate(code);
        return valid ? form.length : 0;
    }
    return 0;
}

const char* ReferenceFor(char32_t code) {
    switch (code) {
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '&':
            return "&amp;";
        case '"':
            return "&quot;";
        case '\t':
            return "&#9;";
        case '\n':
            return "&#10;";
        case '\r':
            return "&#13;";
        default:
            return nullptr;
    }
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool IsInner(char c) {
    return IsLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

}  // namespace

void AppendXmlText(std::string_view text, std::string& out) {
    while (!text.empty()) {
        char32_t code = 0;
        const int length = DecodeUtf8(text, code);
        if (length == 0) {
            out += '?';
            text.remove_prefix(1);
            continue;
        }
        if (const char* reference = ReferenceFor(code)) {
            out += reference;
        } else if (!IsControl(code) && !IsNonCharacter(code)) {
            out.append(text.substr(0, length));
        }
        text.remove_prefix(length);
    }
}

bool IsXmlIdentifier(std::string_view name) {
    return !name.empty() && IsLetter(name.front()) &&
           std::all_of(name.begin(), name.end(), IsInner);
}

}  // namespace fixtop
