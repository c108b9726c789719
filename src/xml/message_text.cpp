// SPDX-License-Identifier: Apache-2.0
#include "xml/message_text.h"

#include <cstdarg>
#include <cstdio>

namespace fixtop {

std::string MessageText(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    // The string's own terminator takes the one that is written.
    if (length > 0) std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

}  // namespace fixtop
