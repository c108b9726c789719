#include "platform/modules.h"

#include <string>

#include "platform/names.h"
#include "platform/windows/own_module.h"

namespace {

constexpr std::string_view kOwnName = "fixtop.dll";

std::string OwnFile() {
    char path[MAX_PATH] = "";
    return std::string(path, GetModuleFileNameA(OwnModule(), path, sizeof path));
}

// Whether `name` means the file that holds this code: a second copy of it is not to be loaded.
bool IsOwnName(const char* name) {
    if (!SameName(name, kOwnName)) return false;
    const std::string file = OwnFile();
    return SameName(std::string_view(file).substr(file.find_last_of("\\/") + 1), kOwnName);
}

// The path of a plain name in the folder of this code; empty for a name with a folder of its own.
std::string BesideOwnModule(const std::string& name) {
    if (name.find_first_of("\\/:") != std::string::npos) return {};
    const std::string file = OwnFile();
    return file.substr(0, file.find_last_of("\\/") + 1) + name;
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
        const std::string beside = BesideOwnModule(name);
        if (!beside.empty()) {
            if (HMODULE module = LoadLibraryA(beside.c_str())) return module;
        }
        return LoadLibraryA(name);
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
