#include "platform/file_search.h"

#include <windows.h>

namespace {

bool IsFile(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace

std::string ProgramFolder() {
    char path[MAX_PATH] = "";
    const DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string program(path, length);
    const std::size_t separator = program.find_last_of("\\/");
    return separator == std::string::npos ? std::string() : program.substr(0, separator);
}

bool FileExists(const std::string& utf8_name) {
    // The terminator is converted too; 0 for bytes that are no UTF-8.
    const auto convert = [&](wchar_t* wide, int size) {
        return MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8_name.c_str(), -1, wide,
                                   size);
    };
    std::wstring name(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
    return convert(name.data(), static_cast<int>(name.size())) > 0 &&
           IsFile(GetFileAttributesW(name.c_str()));
}

std::string FindFileOnPath(const std::string& name) {
    if (name.empty()) return {};
    char path[MAX_PATH] = "";
    const DWORD length = SearchPathA(nullptr, name.c_str(), nullptr, sizeof path, path, nullptr);
    if (length == 0 || length >= sizeof path) return {};
    return IsFile(GetFileAttributesA(path)) ? std::string(path, length) : std::string();
}
