#include "platform/modules.h"

#include <dlfcn.h>

#include <string>

#include "platform/names.h"
#include "platform/no_memory.h"

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

void* OpenLibrary(const char* file, int mode) {
    return OrNoMemory([=] { return dlopen(file, RTLD_LAZY | mode); });
}

// The path of the file that holds this code; empty when the loader does not tell.
std::string OwnFile() {
    Dl_info info;
    const bool known = dladdr(reinterpret_cast<void*>(&OwnFile), &info) != 0;
    return known && info.dli_fname != nullptr ? info.dli_fname : "";
}

// The file that holds this code, or the program itself when it is linked into that.
ModuleHandle OwnModule() {
    if (void* own = OpenLibrary(OwnFile().c_str(), RTLD_NOLOAD)) return own;
    return OpenLibrary(nullptr, 0);
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
            if (void* module = OpenLibrary(beside.c_str(), mode)) return module;
        }
        return OpenLibrary(library.c_str(), mode);
    }
};

}  // namespace

ModuleSystem& SystemModules() {
    static DynamicLoader loader;
    return loader;
}
