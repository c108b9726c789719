// SPDX-License-Identifier: Apache-2.0
#include "platform/free_threading.h"

#include <windows.h>
// The component services follow the base header.
#include <objbase.h>

namespace fixtop {

namespace {

// {00000003-0000-0000-C000-000000000046}
constexpr IID kMarshalInterface = {3, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

IUnknown* AsUnknown(void* object) {
    return static_cast<IUnknown*>(object);
}

}  // namespace

FreeThreadedMarshaler::~FreeThreadedMarshaler() {
    if (inner_) AsUnknown(inner_)->Release();
}

bool FreeThreadedMarshaler::Query(void* object, const void* interface_id, void** out) noexcept {
    *out = nullptr;
    if (!interface_id || !IsEqualIID(*static_cast<const IID*>(interface_id), kMarshalInterface)) {
        return false;
    }
    if (!inner_) {
        IUnknown* made = nullptr;
        if (FAILED(CoCreateFreeThreadedMarshaler(AsUnknown(object), &made))) return false;
        inner_ = made;
    }
    return SUCCEEDED(AsUnknown(inner_)->QueryInterface(kMarshalInterface, out));
}

}  // namespace fixtop
