// SPDX-License-Identifier: Apache-2.0
// A library under the name of another module. It leaves a line in the file that the environment
// names once it runs, and has nothing that anybody asks for.

#include <cstdio>
#include <cstdlib>

namespace fixtop {

namespace {

const bool g_has_run = [] {
    const char* name = std::getenv("FIXTOP_PLANTED_MARK");
    std::FILE* mark = name ? std::fopen(name, "a") : nullptr;
    if (!mark) return false;
    std::fputs("ran\n", mark);
    std::fclose(mark);
    return true;
}();

}  // namespace

extern "C"
#ifdef _WIN32
    __declspec(dllexport)
#endif
        bool PlantedModuleHasRun() {
    return g_has_run;
}

}  // namespace fixtop
