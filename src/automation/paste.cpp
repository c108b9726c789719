// SPDX-License-Identifier: Apache-2.0
#include "automation/paste.h"

#include <string>

#include "automation/collection.h"
#include "automation/held_node.h"
#include "automation/member.h"
#include "collection/make_collection.h"

namespace fixtop {

HRESULT PasteCollection(IUnknown* node, const char* text, std::int32_t size, IQSICollection** out) {
    if (!out) return kResultPointer;
    *out = nullptr;
    Ref<FIIteratorBase> place;
    const HRESULT found = FindHeldNode(node, kHeldNodeId, place);
    if (found != kResultOk) return found;
    if (!text || size <= 0) return kResultFalse;
    const HRESULT result = HandOutObject(out, [&]() -> IQSICollection* {
        const std::string terminated(text, static_cast<std::size_t>(size));
        Ref<FICollectionBase> made = MakeCollectionOf(terminated.c_str(), *place);
        return made ? new CQSICollection(std::move(made)) : nullptr;
    });
    return result == kResultFalse ? kResultFail : result;
}

}  // namespace fixtop
