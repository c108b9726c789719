#include "platform/modules.h"

#include <string>

#include "platform/names.h"
#include "platform/windows/own_module.h"

namespace {

constexpr std::string_view kOwnName = "fixtop.dll";

// Whether `name` means the file that holds this code: a second copy of it is not to be loaded.
bool IsOwnName(const char* name) {
    if (!SameName(name, kOwnName)) return false;
    char path[MAX_PATH] = "";
    const std::string_view file(path, GetModuleFileNameA(OwnModule(), path, sizeof path));
    return SameName(file.substr(file.find_last_of("\\/") + 1), kOwnName);
}

class DynamicLoader final : public ModuleSystem {
 public:
    ModuleHandle FindLoaded(const char* name) override {
        if (*name == '\0') return nullptr;
        return IsOwnName(name) ? OwnModule() : GetModuleHandleA(name);
    }
    ModuleHandle Load(const char* name) override {
        if (*name == '\0') return nullptr;
        return IsOwnName(name) ? OwnModule() : LoadLibraryA(name);
    }
    void* Function(ModuleHandle module, const char* name) override {
        return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
    }
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
