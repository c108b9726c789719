// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "fixtop/automation/unknown.h"

namespace fixtop {

// Whether a document object is of the sibling application, which registers its documents under the
// name "Tovan.Document.13.1": kResultOk when its persist interface tells the class of that name,
// kResultFalse when it tells another, or none, or nobody has registered the name.
// kResultNotImplemented where the system has no classes.
HRESULT CheckSiblingDocument(IUnknown* document);

}  // namespace fixtop
