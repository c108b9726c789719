// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the operating system knows of modules; platform/modules.h says how they are named and
// sought.

namespace fixtop {

using ModuleHandle = void*;

class ModuleSystem {
 public:
    virtual ~ModuleSystem() = default;

    // A module that is in the process already.
    virtual ModuleHandle FindLoaded(const char* name) = 0;
    // The same, loaded when it is not.
    virtual ModuleHandle Load(const char* name) = 0;
    virtual void* Function(ModuleHandle module, const char* name) = 0;
    // Gives back what one Load gave; the module leaves the process with the last of them.
    virtual void Unload(ModuleHandle) {}
};

// The system's loader.
ModuleSystem& SystemModules();

}  // namespace fixtop
