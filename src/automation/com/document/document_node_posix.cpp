// SPDX-License-Identifier: Apache-2.0
#include "automation/com/document/document_node.h"

namespace fixtop {

HRESULT MakeDocumentNode(IUnknown*, IUnknown*, const DocumentPlace&, IUnknown** part) {
    if (!part) return kResultPointer;
    *part = nullptr;
    return kResultNotImplemented;
}

}  // namespace fixtop
