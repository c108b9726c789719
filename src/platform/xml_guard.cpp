#include "platform/xml_guard.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "platform/names.h"

namespace {

constexpr std::array<std::string_view, 4> kEncodings = {"utf-8", "utf-16", "us-ascii",
                                                        "iso-8859-1"};

// The document with every character beyond ASCII as a '?'. Nothing for UTF-16 of odd length.
std::optional<std::string> AsciiView(std::string_view bytes) {
    const auto at = [&](std::size_t i) {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0x100;
    };
    const bool big = (at(0) == 0xFE && at(1) == 0xFF) || (at(0) == 0 && at(1) == '<');
    const bool little = (at(0) == 0xFF && at(1) == 0xFE) || (at(0) == '<' && at(1) == 0);
    std::string text;
    if (!big && !little) {
        text = bytes.substr(bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0);
        std::replace_if(
            text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) < 0; }, '?');
        return text;
    }
    if (bytes.size() % 2 != 0) return std::nullopt;
    for (std::size_t i = at(0) >= 0xFE ? 2 : 0; i < bytes.size(); i += 2) {
        const int unit = big ? at(i) * 256 + at(i + 1) : at(i + 1) * 256 + at(i);
        text += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    return text;
}

// The encoding that the declaration names; empty when it names none.
std::string_view DeclaredEncoding(std::string_view text) {
    if (!text.starts_with("<?xml")) return {};
    const std::string_view declaration = text.substr(0, text.find("?>"));
    const std::size_t word = declaration.find("encoding");
    const std::size_t open = declaration.find_first_of("\"'", word);
    if (word == std::string_view::npos || open == std::string_view::npos) return {};
    const std::size_t close = declaration.find(declaration[open], open + 1);
    return declaration.substr(open + 1, close - open - 1);
}

bool IsKnownEncoding(std::string_view name) {
    return name.empty() ||
           std::any_of(kEncodings.begin(), kEncodings.end(),
                       [&](std::string_view known) { return SameName(known, name); });
}

}  // namespace

const char* RefusalOfXml(std::string_view bytes) {
    const std::optional<std::string> text = AsciiView(bytes);
    if (!text || text->find('\0') != std::string::npos) return "The encoding is not supported";
    if (!IsKnownEncoding(DeclaredEncoding(*text))) return "The encoding is not supported";
    // A document may begin with nothing but blanks and a tag in each of the known encodings.
    const std::size_t first = text->find_first_not_of(" \t\r\n");
    if (first == std::string::npos || (*text)[first] != '<') return "The document has no element";
    if (text->find("<!DOCTYPE") != std::string::npos &&
        text->find("<!ENTITY") != std::string::npos) {
        return "Entity declarations are not allowed";
    }
    return nullptr;
}
