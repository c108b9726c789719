// SPDX-License-Identifier: Apache-2.0
#include "objects/clipboard.h"

#include <windows.h>

#include <algorithm>

namespace fixtop::hovex {

namespace {

constexpr char kFormat[] = "QSI Format";

UINT Format() {
    static const UINT format = RegisterClipboardFormatA(kFormat);
    return format;
}

// The bytes of a block up to the first NUL, which it need not have.
std::string TextIn(HGLOBAL block) {
    const auto* const begin = static_cast<const char*>(GlobalLock(block));
    if (!begin) return "";
    std::string text(begin, std::find(begin, begin + GlobalSize(block), '\0'));
    GlobalUnlock(block);
    return text;
}

}  // namespace

std::optional<std::string> SelectionOnClipboard() {
    if (!OpenClipboard(nullptr)) return std::nullopt;
    HGLOBAL const block = GetClipboardData(Format());
    const std::string text = block ? TextIn(block) : "";
    CloseClipboard();
    if (text.empty()) return std::nullopt;
    return text;
}

}  // namespace fixtop::hovex
