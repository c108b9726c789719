// SPDX-License-Identifier: Apache-2.0
#include "platform/file_search.h"

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace fixtop {

namespace {

bool IsFile(const std::wstring& name) {
    const DWORD attributes = GetFileAttributesW(name.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// What SearchPath finds; empty for none.
std::wstring Search(const std::wstring& name) {
    const auto search = [&](DWORD size, wchar_t* path) {
        return SearchPathW(nullptr, name.c_str(), nullptr, size, path, nullptr);
    };
    // The size that it asks for has room for the terminator, the length that it answers has not.
    std::wstring path(search(0, nullptr), L'\0');
    const DWORD length = search(static_cast<DWORD>(path.size()), path.data());
    path.resize(length < path.size() ? length : 0);
    return path;
}

}  // namespace

std::string ProgramFolder() {
    wchar_t path[MAX_PATH] = L"";
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::string program = Narrow({path, length});
    const std::size_t separator = program.find_last_of("\\/");
    return separator == std::string::npos ? std::string() : program.substr(0, separator);
}

bool FileExists(const std::string& utf8_name) {
    const auto name = Widen(utf8_name);
    return name && !name->empty() && IsFile(*name);
}

std::string FindFileOnPath(const std::string& name) {
    const auto wide = Widen(name);
    if (!wide || wide->empty()) return {};
    const std::wstring path = Search(*wide);
    return IsFile(path) ? Narrow(path) : std::string();
}

}  // namespace fixtop
