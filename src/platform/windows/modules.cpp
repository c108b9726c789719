// SPDX-License-Identifier: Apache-2.0
#include "platform/modules.h"

#include <algorithm>
#include <string>

#include "platform/names.h"
#include "platform/windows/own_module.h"

namespace fixtop {

namespace {

constexpr std::string_view kOwnName = "fixtop.dll";

// Neither the working directory nor the search path of the environment is among these.
constexpr DWORD kSystemPlaces = LOAD_LIBRARY_SEARCH_DEFAULT_DIRS;

// The full path of the file that holds this code; empty when the system does not tell.
std::string OwnFile() {
    char path[MAX_PATH] = "";
    const DWORD length = GetModuleFileNameA(OwnModule(), path, sizeof path);
    return length < sizeof path ? std::string(path, length) : std::string();
}

// Whether `name` means the file that holds this code: a second copy of it is not to be loaded.
bool IsOwnName(const char* name) {
    if (!SameName(name, kOwnName)) return false;
    const std::string file = OwnFile();
    return SameName(std::string_view(file).substr(file.find_last_of("\\/") + 1), kOwnName);
}

// "C:\folder" or "\\server\share".
bool IsFullPath(std::string_view path) {
    const auto is_separator = [&](std::size_t at) { return path[at] == '\\' || path[at] == '/'; };
    if (path.size() < 3) return false;
    return path[1] == ':' ? is_separator(2) : is_separator(0) && is_separator(1);
}

// What the file needs is sought beside it, then in the system's places.
HMODULE LoadFile(std::string path) {
    if (!IsFullPath(path)) return nullptr;
    std::replace(path.begin(), path.end(), '/', '\\');
    return LoadLibraryExA(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | kSystemPlaces);
}

std::string SearchPathOfEnvironment() {
    std::string path(GetEnvironmentVariableA("PATH", nullptr, 0), '\0');
    const DWORD length =
        GetEnvironmentVariableA("PATH", path.data(), static_cast<DWORD>(path.size()));
    path.resize(length < path.size() ? length : 0);
    return path;
}

// In the full paths among the folders of the environment's search path.
HMODULE LoadOnSearchPath(const std::string& name) {
    const std::string path = SearchPathOfEnvironment();
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find(';', begin), path.size());
        if (HMODULE module = LoadFile(path.substr(begin, end - begin) + '\\' + name)) return module;
        begin = end + 1;
    }
    return nullptr;
}

HMODULE LoadPlain(const std::string& name) {
    const std::string file = OwnFile();
    if (HMODULE module = LoadFile(file.substr(0, file.find_last_of("\\/") + 1) + name)) {
        return module;
    }
    if (HMODULE module = LoadLibraryExA(name.c_str(), nullptr, kSystemPlaces)) return module;
    return LoadOnSearchPath(name);
}

class DynamicLoader final : public ModuleSystem {
 public:
    ModuleHandle FindLoaded(const char* name) override {
        if (*name == '\0') return nullptr;
        return IsOwnName(name) ? OwnModule() : GetModuleHandleA(name);
    }
    ModuleHandle Load(const char* name) override {
        if (*name == '\0') return nullptr;
        if (IsOwnName(name)) return OwnModule();
        const bool is_plain = std::string_view(name).find_first_of("\\/:") == std::string::npos;
        return is_plain ? LoadPlain(name) : LoadFile(name);
    }
    void* Function(ModuleHandle module, const char* name) override {
        return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
    }
    void Unload(ModuleHandle module) override { FreeLibrary(static_cast<HMODULE>(module)); }
};

}  // namespace

HMODULE OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExA(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const char*>(&OwnModule), &module);
    return module;
}

ModuleSystem& SystemModules() {
    static DynamicLoader loader;
    return loader;
}

}  // namespace fixtop
