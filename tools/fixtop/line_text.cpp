// SPDX-License-Identifier: Apache-2.0
#include "line_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

namespace fixtop {

namespace {

// The characters of UTF-8 by their first byte, with the bounds of the second; all others lie
// between 0x80 and 0xBF.
struct Lead {
    std::uint8_t first;
    std::uint8_t last;
    std::size_t length;
    std::uint8_t low;
    std::uint8_t high;
};
constexpr std::array kLeads = {Lead{0x00, 0x7F, 1, 0x80, 0xBF}, Lead{0xC2, 0xDF, 2, 0x80, 0xBF},
                               Lead{0xE0, 0xE0, 3, 0xA0, 0xBF}, Lead{0xE1, 0xEC, 3, 0x80, 0xBF},
                               Lead{0xED, 0xED, 3, 0x80, 0x9F}, Lead{0xEE, 0xEF, 3, 0x80, 0xBF},
                               Lead{0xF0, 0xF0, 4, 0x90, 0xBF}, Lead{0xF1, 0xF3, 4, 0x80, 0xBF},
                               Lead{0xF4, 0xF4, 4, 0x80, 0x8F}};

// The controls that have a letter.
struct Letter {
    char control;
    char letter;
};
constexpr std::array kLetters = {Letter{'\n', 'n'}, Letter{'\r', 'r'}, Letter{'\t', 't'}};

// Behind a backslash: an x and two digits.
constexpr std::size_t kHexEscape = 4;

std::uint8_t ByteAt(std::string_view text, std::size_t at) {
    return static_cast<std::uint8_t>(text[at]);
}

// Count of bytes of the character that the text begins with; 0 when that is no UTF-8.
std::size_t CharacterLength(std::string_view text) {
    const std::uint8_t first = ByteAt(text, 0);
    const auto* lead = std::find_if(kLeads.begin(), kLeads.end(), [&](const Lead& each) {
        return first >= each.first && first <= each.last;
    });
    if (lead == kLeads.end() || text.size() < lead->length) return 0;
    for (std::size_t at = 1; at < lead->length; ++at) {
        const std::uint8_t low = at == 1 ? lead->low : 0x80;
        const std::uint8_t high = at == 1 ? lead->high : 0xBF;
        if (ByteAt(text, at) < low || ByteAt(text, at) > high) return 0;
    }
    return lead->length;
}

// U+0000 to U+001F, U+007F, and U+0080 to U+009F with their two bytes.
bool IsControl(std::string_view character) {
    const std::uint8_t first = ByteAt(character, 0);
    if (character.size() == 2) return first == 0xC2 && ByteAt(character, 1) < 0xA0;
    return character.size() == 1 && (first < 0x20 || first == 0x7F);
}

struct Escape {
    char byte;
    std::size_t length;  // as it is written
};

// The escape that the text begins with.
std::optional<Escape> ReadEscape(std::string_view text) {
    if (text.size() < 2 || text[0] != '\\') return std::nullopt;
    for (const Letter& each : kLetters) {
        if (text[1] == each.letter) return Escape{each.control, 2};
    }
    if (text[1] != 'x' || text.size() < kHexEscape) return std::nullopt;
    const std::string_view digits = text.substr(2, 2);
    std::uint8_t byte = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, byte, 16);
    // A text ends where it has a zero.
    if (error != std::errc() || stop != end || byte == 0) return std::nullopt;
    return Escape{static_cast<char>(byte), kHexEscape};
}

void AppendEscape(std::string& line, char byte) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    for (const Letter& each : kLetters) {
        if (byte == each.control) {
            line += {'\\', each.letter};
            return;
        }
    }
    const auto number = static_cast<std::uint8_t>(byte);
    line += {'\\', 'x', kDigits[number >> 4], kDigits[number & 15]};
}

// `kept` stand as they are.
std::string Written(std::string_view text, bool to_be_read, std::string_view kept = {}) {
    std::string line;
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        const bool stands = length > 0 && !(to_be_read && ReadEscape(text)) &&
                            (!IsControl(character) || kept.find(character) != kept.npos);
        if (stands) {
            line += character;
        } else {
            for (const char byte : character) AppendEscape(line, byte);
        }
        text.remove_prefix(character.size());
    }
    return line;
}

}  // namespace

std::string OneLine(std::string_view text) {
    return Written(text, true);
}

std::string OneLineMessage(std::string_view text) {
    return Written(text, false);
}

std::string OneField(std::string_view text) {
    return Written(text, true, "\n");
}

std::string FromOneLine(std::string_view line) {
    std::string text;
    while (!line.empty()) {
        const std::optional<Escape> escape = ReadEscape(line);
        text += escape ? escape->byte : line.front();
        line.remove_prefix(escape ? escape->length : 1);
    }
    return text;
}

}  // namespace fixtop
