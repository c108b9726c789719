// SPDX-License-Identifier: Apache-2.0
#include "platform/windows/wide_text.h"

#include <windows.h>

namespace fixtop {

std::optional<std::wstring> Widen(std::string_view utf8) {
    const auto convert = [&](wchar_t* wide, int size) {
        return MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(),
                                   static_cast<int>(utf8.size()), wide, size);
    };
    if (utf8.empty()) return std::wstring();
    std::wstring wide(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
    if (convert(wide.data(), static_cast<int>(wide.size())) == 0) return std::nullopt;
    return wide;
}

std::string Narrow(std::wstring_view wide) {
    const auto convert = [&](char* utf8, int size) {
        return WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), utf8,
                                   size, nullptr, nullptr);
    };
    if (wide.empty()) return {};
    std::string utf8(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(utf8.data(), static_cast<int>(utf8.size()));
    return utf8;
}

}  // namespace fixtop
