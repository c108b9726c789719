// SPDX-License-Identifier: Apache-2.0
#include "console.h"

#include <windows.h>

#include "dispatch/text.h"

namespace fixtop::hovex {

namespace {

bool IsUsable(HANDLE file) {
    return file && file != INVALID_HANDLE_VALUE && GetFileType(file) != FILE_TYPE_UNKNOWN;
}

void Write(DWORD which, const std::string& text) {
    if (!IsUsable(GetStdHandle(which))) AttachConsole(ATTACH_PARENT_PROCESS);
    HANDLE const file = GetStdHandle(which);
    const std::string line = text + "\r\n";
    DWORD written = 0;
    DWORD mode = 0;
    if (GetConsoleMode(file, &mode)) {
        const std::wstring wide = Wide(line);
        WriteConsoleW(file, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    } else {
        WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    }
}

}  // namespace

void Say(const std::string& text) {
    Write(STD_OUTPUT_HANDLE, text);
}

void Complain(const std::string& text) {
    Write(STD_ERROR_HANDLE, text);
}

}  // namespace fixtop::hovex
