// SPDX-License-Identifier: Apache-2.0
// A shared library that the module tests load. Like the module it holds the platform room.

#include "platform/modules.h"
#include "support/sample_export.h"

namespace fixtop {

SAMPLE_EXPORT int FixtopSampleModuleExport() {
    return 17;
}

// What this library finds under the name of the module.
SAMPLE_EXPORT void* FixtopSampleModuleLookup(const char* name) {
    const ModuleHandle own = FindLoadedModule("fixtop.dll");
    return own == LoadModule("FIXTOP.dll") ? FindFunction(own, name) : nullptr;
}

}  // namespace fixtop
