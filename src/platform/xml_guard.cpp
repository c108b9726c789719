// SPDX-License-Identifier: Apache-2.0
#include "platform/xml_guard.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/names.h"

namespace fixtop {

namespace {

constexpr std::array<std::string_view, 4> kEncodings = {"utf-8", "utf-16", "us-ascii",
                                                        "iso-8859-1"};

constexpr std::string_view kBlanks = " \t\r\n";

// A document of UTF-16 with every character beyond ASCII as one that marks nothing up; nothing for
// an odd length.
std::optional<std::string> NarrowedUtf16(std::string_view bytes, bool big) {
    if (bytes.size() % 2 != 0) return std::nullopt;
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = at(0) >= 0xFE ? 2 : 0; i < bytes.size(); i += 2) {
        const int unit = big ? at(i) * 256 + at(i + 1) : at(i + 1) * 256 + at(i);
        text += unit < 0x80 ? static_cast<char>(unit) : '~';
    }
    return text;
}

struct Markup {
    std::string_view begin;
    std::string_view end;
};
// What may stand in front of a document type declaration.
constexpr std::array kBeforeDoctype = {Markup{"<!--", "-->"}, Markup{"<?", "?>"}};

// Where the document type is declared; npos without such a declaration. It can stand nowhere but in
// front of the first element.
std::size_t FindDoctype(std::string_view text) {
    std::size_t at = 0;
    while ((at = text.find_first_not_of(kBlanks, at)) != text.npos) {
        const std::string_view rest = text.substr(at);
        if (rest.starts_with("<!DOCTYPE")) return at;
        const auto* markup =
            std::find_if(kBeforeDoctype.begin(), kBeforeDoctype.end(),
                         [&](const Markup& each) { return rest.starts_with(each.begin); });
        if (markup == kBeforeDoctype.end()) break;
        const std::size_t end = text.find(markup->end, at + markup->begin.size());
        if (end == text.npos) break;
        at = end + markup->end.size();
    }
    return text.npos;
}

int LineOf(std::string_view text, std::size_t at) {
    return 1 + static_cast<int>(std::count(text.begin(), text.begin() + at, '\n'));
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

constexpr XmlRefusal kUnknownEncoding = {"The encoding is not supported"};

// `text` is the document's, with ASCII characters as they are.
std::optional<XmlRefusal> RefusalOfText(std::string_view text) {
    if (text.find('\0') != text.npos) return kUnknownEncoding;
    if (!IsKnownEncoding(DeclaredEncoding(text))) return kUnknownEncoding;
    // A document may begin with nothing but blanks and a tag in each of the known encodings.
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == text.npos || text[first] != '<') return XmlRefusal{"The document has no element"};
    const std::size_t doctype = FindDoctype(text);
    if (doctype == text.npos) return std::nullopt;
    return XmlRefusal{"a document type declaration is not allowed; expected plain elements only",
                      LineOf(text, doctype)};
}

}  // namespace

std::optional<XmlRefusal> RefusalOfXml(std::string_view bytes) {
    const auto begins = [&](std::string_view lead) { return bytes.starts_with(lead); };
    const bool big = begins("\xFE\xFF") || begins(std::string_view("\0<", 2));
    const bool little = begins("\xFF\xFE") || begins(std::string_view("<\0", 2));
    if (!big && !little) return RefusalOfText(bytes.substr(begins("\xEF\xBB\xBF") ? 3 : 0));
    const std::optional<std::string> narrowed = NarrowedUtf16(bytes, big);
    return narrowed ? RefusalOfText(*narrowed) : kUnknownEncoding;
}

}  // namespace fixtop
