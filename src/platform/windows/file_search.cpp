#include "platform/file_search.h"

#include <windows.h>

std::string ProgramFolder() {
    char path[MAX_PATH] = "";
    const DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string program(path, length);
    const std::size_t separator = program.find_last_of("\\/");
    return separator == std::string::npos ? std::string() : program.substr(0, separator);
}

std::string FindFileOnPath(const std::string& name) {
    if (name.empty()) return {};
    char path[MAX_PATH] = "";
    const DWORD length = SearchPathA(nullptr, name.c_str(), nullptr, sizeof path, path, nullptr);
    if (length == 0 || length >= sizeof path) return {};
    const DWORD attributes = GetFileAttributesA(path);
    const bool file =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    return file ? std::string(path, length) : std::string();
}
