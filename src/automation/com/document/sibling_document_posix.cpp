// SPDX-License-Identifier: Apache-2.0
#include "automation/com/document/sibling_document.h"

namespace fixtop {

HRESULT CheckSiblingDocument(IUnknown*) {
    return kResultNotImplemented;
}

}  // namespace fixtop
