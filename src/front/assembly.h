// SPDX-License-Identifier: Apache-2.0
#pragma once

// Puts a top together from functions that are found by name: the factories of context and solver,
// the combined top entry around them, and the notification of the case.

#include "fixtop/entry.h"
#include "fixtop/iterator.h"
#include "fixtop/ref.h"

namespace fixtop {

// With the files of the neutral view and the name of the application. What it answers is counted.
using ContextFactory = FIContext*(void* session, const char* library, const char* map,
                                  const char* units, const char* name);
FIContext* MakeTopContext(ContextFactory* factory, void* session);

// Empty when the context factory is not present, or no host is installed.
Ref<FIEntry> AssembleCombinedTop(void* session);

// An iterator at the combined top or, as the host shows the case, at its own, which has neither a
// solver nor models; empty when there is no case.
Ref<FIIteratorBase> AssemblePlace(void* session, bool as_host_shows_it);

// A node object around the combined top, from the factory of this name.
void* AssembleNode(void* session, const char* factory, void** out);

// A document object: the one that the finder knows for the identity, else a new one.
void* AssembleDocument(void* session, const void* identity, const char* finder, const char* factory,
                       void** out);

// Asks whichever module has "SetTopAttach" to set the flag of a context, which gives up one
// reference of its own for it. False when none has it.
bool LateSetTopAttach(FIContext* context, bool follow);

}  // namespace fixtop
