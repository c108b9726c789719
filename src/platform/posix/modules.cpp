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

// The file that holds this code, or the program itself when it is linked into that.
ModuleHandle OwnModule() {
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&OwnModule), &info) != 0 && info.dli_fname != nullptr) {
        if (void* own = dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD)) return own;
    }
    return dlopen(nullptr, RTLD_LAZY);
}

class DynamicLoader final : public ModuleSystem {
 public:
    ModuleHandle FindLoaded(const char* name) override { return Open(name, RTLD_NOLOAD); }
    ModuleHandle Load(const char* name) override { return Open(name, 0); }
    void* Function(ModuleHandle module, const char* name) override { return dlsym(module, name); }

 private:
    static ModuleHandle Open(const char* name, int mode) {
        if (*name == '\0') return nullptr;
        if (SameName(name, kOwnName)) return OwnModule();
        return dlopen(LibraryName(name).c_str(), RTLD_LAZY | mode);
    }
};

}  // namespace

ModuleSystem& SystemModules() {
    static DynamicLoader loader;
    return loader;
}
