// SPDX-License-Identifier: Apache-2.0
#include "platform/modules.h"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <bit>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "platform/file_search.h"
#include "platform/names.h"
#include "platform/no_memory.h"

namespace fixtop {

namespace fs = std::filesystem;

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

ModuleHandle OpenLibrary(const char* file, int mode) {
    return OrNoMemory([=] { return dlopen(file, RTLD_LAZY | mode); });
}

// The name by which the loader knows the file that holds this code; empty when that is the program,
// or when the loader does not tell.
const char* OwnName() {
    Dl_info info;
    void* record = nullptr;
    const auto code = reinterpret_cast<void*>(&OwnName);
    const bool known = dladdr1(code, &info, &record, RTLD_DL_LINKMAP) != 0 && record != nullptr;
    return known ? static_cast<const link_map*>(record)->l_name : "";
}

ModuleHandle OwnModule() {
    const char* name = OwnName();
    return OpenLibrary(*name == '\0' ? nullptr : name, RTLD_NOLOAD);
}

// The folder of this code, empty when nobody tells. The loader keeps a relative name as it was
// given, which leads elsewhere once the working directory is another one.
const fs::path& OwnFolder() {
    static const fs::path folder = [] {
        std::error_code error;
        const char* name = OwnName();
        return *name == '\0' ? fs::path(ProgramFolder()) : fs::absolute(name, error).parent_path();
    }();
    return folder;
}

// So it is resolved when this code is loaded.
[[maybe_unused]] const fs::path& g_own_folder = OwnFolder();

// The folders in which the loader seeks a plain name for this code, but for those of its cache.
std::vector<fs::path> SearchFolders() {
    const ModuleHandle own = OwnModule();
    std::vector<fs::path> folders;
    Dl_serinfo size;
    if (own == nullptr || dlinfo(own, RTLD_DI_SERINFOSIZE, &size) != 0) return folders;
    const auto bytes = std::make_unique<char[]>(size.dls_size);
    auto* const list = reinterpret_cast<Dl_serinfo*>(bytes.get());
    const bool listed =
        dlinfo(own, RTLD_DI_SERINFOSIZE, list) == 0 && dlinfo(own, RTLD_DI_SERINFO, list) == 0;
    for (unsigned i = 0; listed && i < list->dls_cnt; ++i) {
        folders.emplace_back(list->dls_serpath[i].dls_name);
    }
    dlclose(own);
    return folders;
}

ModuleHandle Open(const fs::path& file, int mode) {
    return OpenLibrary(file.c_str(), mode);
}

// The name under which a module asks to be known; empty without one.
std::string_view OwnNameOf(const dl_phdr_info& module) {
    for (int i = 0; i < module.dlpi_phnum; ++i) {
        if (module.dlpi_phdr[i].p_type != PT_DYNAMIC) continue;
        const auto at = module.dlpi_addr + module.dlpi_phdr[i].p_vaddr;
        const char* texts = nullptr;
        const ElfW(Dyn)* name = nullptr;
        for (auto* entry = std::bit_cast<const ElfW(Dyn)*>(at); entry->d_tag != DT_NULL; ++entry) {
            if (entry->d_tag == DT_STRTAB) texts = std::bit_cast<const char*>(entry->d_un.d_ptr);
            if (entry->d_tag == DT_SONAME) name = entry;
        }
        // What the system puts into each process has places that nobody moved.
        const bool moved = std::bit_cast<ElfW(Addr)>(texts) >= module.dlpi_addr;
        if (name && moved) return texts + name->d_un.d_val;
    }
    return {};
}

// Whether the process has a module of this name, or of one with a version behind it. The loader is
// asked only then, for it seeks in all its folders what it is told not to load.
bool MayBeLoaded(const std::string& library) {
    struct Search {
        std::string_view name;
        bool found;
    } search{library, false};
    const auto look = [](dl_phdr_info* module, std::size_t, void* data) {
        auto& wanted = *static_cast<Search*>(data);
        const std::string_view path = module->dlpi_name;
        const std::string_view file = path.substr(path.find_last_of('/') + 1);
        wanted.found = file.starts_with(wanted.name) || OwnNameOf(*module) == wanted.name;
        return wanted.found ? 1 : 0;
    };
    dl_iterate_phdr(look, &search);
    return search.found;
}

// Where the loader itself would look. Once a relative folder is among its own it is not let look:
// that one lies below whatever folder is current.
ModuleHandle OpenOnSearchPath(const std::string& library, int mode) {
    if (MayBeLoaded(library)) {
        if (ModuleHandle loaded = Open(library, RTLD_NOLOAD)) return loaded;
    }
    if ((mode & RTLD_NOLOAD) != 0) return nullptr;
    const std::vector<fs::path> folders = SearchFolders();
    const auto is_relative = [](const fs::path& folder) { return folder.is_relative(); };
    if (std::none_of(folders.begin(), folders.end(), is_relative)) return Open(library, mode);
    for (const fs::path& folder : folders) {
        if (is_relative(folder)) continue;
        if (ModuleHandle module = Open(folder / library, mode)) return module;
    }
    return nullptr;
}

class DynamicLoader final : public ModuleSystem {
 public:
    ModuleHandle FindLoaded(const char* name) override {
        ModuleHandle module = Seek(name, RTLD_NOLOAD);
        // To find a module is not to hold it.
        if (module != nullptr) dlclose(module);
        return module;
    }
    ModuleHandle Load(const char* name) override { return Seek(name, 0); }
    void* Function(ModuleHandle module, const char* name) override { return dlsym(module, name); }
    void Unload(ModuleHandle module) override { dlclose(module); }

 private:
    static ModuleHandle Seek(const char* name, int mode) {
        if (*name == '\0') return nullptr;
        if (SameName(name, kOwnName)) return OwnModule();
        const std::string library = LibraryName(name);
        if (library.find('/') != std::string::npos) {
            return fs::path(library).is_absolute() ? Open(library, mode) : nullptr;
        }
        if (!OwnFolder().empty()) {
            if (ModuleHandle module = Open(OwnFolder() / library, mode)) return module;
        }
        return OpenOnSearchPath(library, mode);
    }
};

}  // namespace

ModuleSystem& SystemModules() {
    static DynamicLoader loader;
    return loader;
}

}  // namespace fixtop
