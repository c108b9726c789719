// SPDX-License-Identifier: Apache-2.0
#pragma once

// Modules of the process and the functions that they export, by name.
//
// Names are those of the simulator's files, "hovex.exe" or "hovexeng.dll", whatever the platform
// calls a shared library: on POSIX "x.dll" is libx.so. "fixtop.dll" is the module that this code is
// linked into. In front of the system stands a table of offered modules, with which a host that is
// no file of that name gives its functions. Names of modules do not distinguish case, those of
// functions do.
//
// A plain name is sought beside this module before the system's own places; beside means where this
// module lay when it was loaded. A name with a folder must be a full path. No module ever comes out
// of the working directory, also not by a relative folder of the system's search path. Failure is a
// null.

#include <initializer_list>

#include "platform/module_system.h"
#include "platform/offered_modules.h"

namespace fixtop {

// The lookup of this process: offered modules on top of the system's.
OfferedModules& ProcessModules();

ModuleHandle FindLoadedModule(const char* name);
ModuleHandle LoadModule(const char* name);
void* FindFunction(ModuleHandle module, const char* name);
void UnloadModule(ModuleHandle module);
void OfferModule(const char* name, std::initializer_list<OfferedFunction> functions);
void WithdrawModule(const char* name);

}  // namespace fixtop
