// SPDX-License-Identifier: Apache-2.0
#include "value/number_scan.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace fixtop::text_forms {

std::int32_t ScanInt(const char* text) noexcept {
    return static_cast<std::int32_t>(std::strtoll(text, nullptr, 10));
}

double ScanReal(const char* text) noexcept {
    const char* begin = text + std::strspn(text, " \t\n\v\f\r");
    if (*begin == '+' && begin[1] != '-') ++begin;
    const char* digits = *begin == '-' ? begin + 1 : begin;
    double number = 0;
    if (('0' <= *digits && *digits <= '9') || *digits == '.') {
        const auto [end, error] = std::from_chars(begin, begin + std::strlen(begin), number);
        // A hexadecimal number or a bare exponent is the scanner's to judge.
        const bool complete = *end == '\0' || std::strchr("eExX", *end) == nullptr;
        if (error == std::errc() && complete) return number;
    }
    number = 0;
    return std::sscanf(text, "%lg", &number) == 1 ? number : 0.0;
}

}  // namespace fixtop::text_forms
