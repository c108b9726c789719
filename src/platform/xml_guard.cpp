#include "platform/xml_guard.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "platform/names.h"

namespace {

constexpr std::array<std::string_view, 4> kEncodings = {"utf-8", "utf-16", "us-ascii",
                                                        "iso-8859-1"};

// A document of UTF-16 with every character beyond ASCII as a '?'; nothing for an odd length.
std::optional<std::string> NarrowedUtf16(std::string_view bytes, bool big) {
    if (bytes.size() % 2 != 0) return std::nullopt;
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = at(0) >= 0xFE ? 2 : 0; i < bytes.size(); i += 2) {
        const int unit = big ? at(i) * 256 + at(i + 1) : at(i + 1) * 256 + at(i);
        text += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    return text;
}

bool HasDeclaration(std::string_view text, std::string_view declaration) {
    // The second character is rarer than the first.
    const std::string_view tail = declaration.substr(1);
    for (std::size_t at = text.find(tail); at != text.npos; at = text.find(tail, at + 1)) {
        if (at > 0 && text[at - 1] == declaration.front()) return true;
    }
    return false;
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

// `text` is the document's, with ASCII characters as they are.
const char* RefusalOfText(std::string_view text) {
    if (text.find('\0') != text.npos) return "The encoding is not supported";
    if (!IsKnownEncoding(DeclaredEncoding(text))) return "The encoding is not supported";
    // A document may begin with nothing but blanks and a tag in each of the known encodings.
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == text.npos || text[first] != '<') return "The document has no element";
    if (HasDeclaration(text, "<!DOCTYPE") && HasDeclaration(text, "<!ENTITY")) {
        return "Entity declarations are not allowed";
    }
    return nullptr;
}

}  // namespace

const char* RefusalOfXml(std::string_view bytes) {
    const auto begins = [&](std::string_view lead) { return bytes.starts_with(lead); };
    const bool big = begins("\xFE\xFF") || begins(std::string_view("\0<", 2));
    const bool little = begins("\xFF\xFE") || begins(std::string_view("<\0", 2));
    if (!big && !little) return RefusalOfText(bytes.substr(begins("\xEF\xBB\xBF") ? 3 : 0));
    const std::optional<std::string> narrowed = NarrowedUtf16(bytes, big);
    return narrowed ? RefusalOfText(*narrowed) : "The encoding is not supported";
}
