// SPDX-License-Identifier: Apache-2.0
#include "automation/held_node.h"

#include "diagnostics/memory_guard.h"

namespace fixtop {

HRESULT FindHeldNode(IUnknown* object, const InterfaceId& id, Ref<FIIteratorBase>& node) {
    if (!object) return kResultPointer;
    void* found = nullptr;
    const HRESULT answer = memory::Outside([&] { return object->QueryInterface(id, &found); });
    if (answer != kResultOk) return answer;
    if (!found) return kResultNoInterface;
    node = static_cast<HeldNode*>(found)->iterator;
    object->Release();
    return kResultOk;
}

}  // namespace fixtop
