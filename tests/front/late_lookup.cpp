// SPDX-License-Identifier: Apache-2.0
// Loads the module as it is named, goes to another folder, and has the module look for a host and
// for the unit adapter there. Arguments are name and folder; the status is 0 when it came so far.

#include <cstdio>
#include <filesystem>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace fixtop {

namespace {

#ifdef _WIN32
HMODULE Open(const char* name) {
    return LoadLibraryA(name);
}
void* Function(HMODULE module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(module, name));
}
#else
void* Open(const char* name) {
    return dlopen(name, RTLD_NOW);
}
void* Function(void* module, const char* name) {
    return dlsym(module, name);
}
#endif

}  // namespace

}  // namespace fixtop

using namespace fixtop;

int main(int count, char** values) {
    const auto module = count == 3 ? Open(values[1]) : nullptr;
    if (!module) {
        std::fputs("the module can't be loaded\n", stderr);
        return 1;
    }
    const auto top = reinterpret_cast<void* (*)()>(Function(module, "GetTopHovexEntry"));
    const auto dictionary =
        reinterpret_cast<void* (*)(const void*)>(Function(module, "FixtopOpenDictionary"));
    if (!top || !dictionary) return 1;
    std::filesystem::current_path(values[2]);
    if (top()) std::fputs("there is a host\n", stderr);
    // Kept to the end of the program.
    static const void* const classes = dictionary(nullptr);
    if (!classes) std::fputs("there is no class library\n", stderr);
    return 0;
}
