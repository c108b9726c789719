#include "platform/modules.h"

#include <dlfcn.h>

#include <string>

#include "platform/names.h"

namespace {

constexpr std::string_view kOwnName = "fixtop.dll";
constexpr std::string_view kLibraryEnding = ".dll";

// "folder/x.dll" is folder/libx.so; other names stay.
std::string LibraryName(std::string_view name) {
    if (name.size() <= kLibraryEnding.size() ||
        !SameName(name.substr(name.size() - kLibraryEnding.size()), kLibraryEnding)) {
        return std::string(name);
    }
    name.remove_suffix(kLibraryEnding.size());
    const std::size_t file = name.find_last_of('/') + 1;
    return std::string(name.substr(0, file)) + "lib" + std::string(name.substr(file)) + ".so";
}

// The path of the file that holds this code; empty when the loader does not tell.
std::string OwnFile() {
    Dl_info info;
    const bool known = dladdr(reinterpret_cast<void*>(&OwnFile), &info) != 0;
    return known && info.dli_fname != nullptr ? info.dli_fname : "";
}

// The file that holds this code, or the program itself when it is linked into that.
ModuleHandle OwnModule() {
    if (void* own = dlopen(OwnFile().c_str(), RTLD_LAZY | RTLD_NOLOAD)) return own;
    return dlopen(nullptr, RTLD_LAZY);
}

class DynamicLoader final : public ModuleSystem {
 public:
    ModuleHandle FindLoaded(const char* name) override {
        ModuleHandle module = Open(name, RTLD_NOLOAD);
        // To find a module is not to hold it.
        if (module != nullptr) dlclose(module);
        return module;
    }
    ModuleHandle Load(const char* name) override { return Open(name, 0); }
    void* Function(ModuleHandle module, const char* name) override { return dlsym(module, name); }
    void Unload(ModuleHandle module) override { dlclose(module); }

 private:
    static ModuleHandle Open(const char* name, int mode) {
        if (*name == '\0') return nullptr;
        if (SameName(name, kOwnName)) return OwnModule();
        const std::string library = LibraryName(name);
        if (library.find('/') == std::string::npos) {
            const std::string own = OwnFile();
            const std::string beside = own.substr(0, own.find_last_of('/') + 1) + library;
            if (void* module = dlopen(beside.c_str(), RTLD_LAZY | mode)) return module;
        }
        return dlopen(library.c_str(), RTLD_LAZY | mode);
    }
};

}  // namespace

ModuleSystem& SystemModules() {
    static DynamicLoader loader;
    return loader;
}
