// SPDX-License-Identifier: Apache-2.0
// The exports of typed interfaces.

#include "automation/com/type_library.h"
#include "diagnostics/memory_guard.h"
#include "fixtop/fixtop.h"
#include "mapping/open/model_files.h"
#include "mapping/translators/semantic_modules.h"

namespace fixtop {

bool GetCCDMLibrary(const char* name, int major, int minor, void** out) {
    if (!out) return false;
    *out = memory::Or(nullptr, [=]() -> void* {
        const std::string file = TypeLibraryFile(name, major, minor);
        return file.empty() ? nullptr : LoadTypeLibrary(file);
    });
    return *out != nullptr;
}

HRESULT FixtopWriteTypeLibrary(const char* classes, const char* name, int major, int minor) {
    return memory::Or(kResultOutOfMemory, [=]() -> HRESULT {
        const std::string file = TypeLibraryFile(name, major, minor);
        if (file.empty()) return kResultFail;
        CCDMClassLibrary library(FindLoadedModule(kOwnModule));
        if (!library.ReadClassFile(classes ? classes : kModelClasses)) return kResultFail;
        return WriteTypeLibrary(MemberTable(library), file, major, minor);
    });
}

}  // namespace fixtop
