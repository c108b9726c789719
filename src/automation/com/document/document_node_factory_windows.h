// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "fixtop/automation/unknown.h"
#include "fixtop/ref.h"

namespace fixtop {

// An empty node as the system makes it: by a class that is registered in this process for as long
// as that takes, so that nothing is written where others look. The thread must have begun with the
// system's components.
HRESULT CreateDocumentNode(IUnknown* outer, Ref<IUnknown>& made);

}  // namespace fixtop
