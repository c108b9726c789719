// SPDX-License-Identifier: Apache-2.0
#pragma once

// Late binding: finds a function by its exported name in whichever module of the process has it.

#include "platform/modules.h"

namespace fixtop {

// The modules are asked in this order, and the first hit is taken: the running host ("hovex.exe",
// or "rifmos.exe" when that is not in the process), then "hovexeng.dll", then "fixtop.dll"; the
// last two are loaded when they aren't yet. Null when none of them has the name: a feature that is
// not present.
void* FindProvider(ModuleSystem& modules, const char* name);
// The same among the modules of this process, or among those given by SetProviderModules.
void* FindProvider(const char* name);
// Null: the modules of the process. Not owned.
void SetProviderModules(ModuleSystem* modules);

template <class Function>
Function* FindProviderAs(const char* name) {
    return reinterpret_cast<Function*>(FindProvider(name));
}

// Names of the functions that the front looks up beside its own exports.
//
// The node object of an iterator: void* (FIIteratorBase*, void** out). Both share the iterator and
// answer the counted node, also through `out`.
inline constexpr char kNodeFactory[] = "MakeQSINode";
inline constexpr char kAlternateNodeFactory[] = "GetTopVNode";
// The document that exists for an identity already, counted, or null:
// void* (void* session, const void* identity, void** out).
inline constexpr char kDocumentFinder[] = "FindDocumentAgg";
// A new document around a top, which it shares:
// void* (FIEntry* top, void* session, const void* identity, void** out).
inline constexpr char kDocumentFactory[] = "MakeDocumentAgg";
// The same two for the alternate entry set.
inline constexpr char kAlternateDocumentFinder[] = "FindVDocumentAgg";
inline constexpr char kAlternateDocumentFactory[] = "MakeVDocumentAgg";

}  // namespace fixtop
