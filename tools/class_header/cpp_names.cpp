// SPDX-License-Identifier: Apache-2.0
#include "cpp_names.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace fixtop::tools {

namespace {

constexpr auto kKeywords =
    std::to_array<std::string_view>({"alignas",       "alignof",     "and",
                                     "and_eq",        "asm",         "auto",
                                     "bitand",        "bitor",       "bool",
                                     "break",         "case",        "catch",
                                     "char",          "char16_t",    "char32_t",
                                     "char8_t",       "class",       "co_await",
                                     "co_return",     "co_yield",    "compl",
                                     "concept",       "const",       "const_cast",
                                     "consteval",     "constexpr",   "constinit",
                                     "continue",      "decltype",    "default",
                                     "delete",        "do",          "double",
                                     "dynamic_cast",  "else",        "enum",
                                     "explicit",      "export",      "extern",
                                     "false",         "float",       "for",
                                     "friend",        "goto",        "if",
                                     "inline",        "int",         "long",
                                     "mutable",       "namespace",   "new",
                                     "noexcept",      "not",         "not_eq",
                                     "nullptr",       "operator",    "or",
                                     "or_eq",         "private",     "protected",
                                     "public",        "register",    "reinterpret_cast",
                                     "requires",      "return",      "short",
                                     "signed",        "sizeof",      "static",
                                     "static_assert", "static_cast", "struct",
                                     "switch",        "template",    "this",
                                     "thread_local",  "throw",       "true",
                                     "try",           "typedef",     "typeid",
                                     "typename",      "union",       "unsigned",
                                     "using",         "virtual",     "void",
                                     "volatile",      "wchar_t",     "while",
                                     "xor",           "xor_eq"});
static_assert(std::ranges::is_sorted(kKeywords));

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string Identifier(const std::string& name) {
    std::string made;
    for (const char c : name) {
        const char next = IsLetter(c) || IsDigit(c) ? c : '_';
        if (next != '_' || !made.ends_with('_')) made += next;
    }
    return made.empty() || !IsLetter(made.front()) ? 'x' + made : made;
}

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

std::string Octal(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return {'\\', static_cast<char>('0' + byte / 64), static_cast<char>('0' + byte / 8 % 8),
            static_cast<char>('0' + byte % 8)};
}

}  // namespace

std::string CppNames::Take(const std::string& name) {
    std::string made = Identifier(name);
    if (std::ranges::binary_search(kKeywords, made) || IsReserved(made)) made += '_';
    std::string own = made;
    for (int number = 2; IsTaken(own) || IsReserved(own); ++number) {
        own = made + std::to_string(number);
    }
    taken_.insert(own);
    return own;
}

bool CppNames::IsReserved(const std::string& name) const {
    return reserved_.contains(name);
}

bool CppNames::IsTaken(const std::string& name) const {
    return taken_.contains(name) || (outer_ && outer_->IsTaken(name));
}

std::string Literal(const std::string& text) {
    std::string literal = "\"";
    for (const char c : text) {
        if (IsControl(c)) {
            literal += Octal(c);
        } else {
            if (c == '"' || c == '\\') literal += '\\';
            literal += c;
        }
    }
    return literal + '"';
}

std::string InComment(const std::string& text) {
    std::string line = text;
    std::ranges::replace_if(line, IsControl, ' ');
    return line;
}

}  // namespace fixtop::tools
