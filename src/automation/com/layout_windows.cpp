// SPDX-License-Identifier: Apache-2.0
// The interfaces against those of the system: where a check fails, no client of the system's kind
// could hold these objects.

#include <windows.h>
// The component services follow the base header.
#include <unknwn.h>

#include <cstddef>
#include <type_traits>

#include "fixtop/automation/unknown.h"
#include "fixtop/automation/variant.h"

namespace fixtop {

static_assert(sizeof(FI::IUnknown) == sizeof(::IUnknown));
static_assert(sizeof(FI::HRESULT) == sizeof(::HRESULT) && std::is_signed_v<::HRESULT>);
static_assert(sizeof(ULONG) == sizeof(std::uint32_t) && std::is_unsigned_v<ULONG>);

static_assert(sizeof(InterfaceId) == sizeof(GUID) && alignof(InterfaceId) == alignof(GUID));
static_assert(offsetof(InterfaceId, data1) == offsetof(GUID, Data1));
static_assert(offsetof(InterfaceId, data2) == offsetof(GUID, Data2));
static_assert(offsetof(InterfaceId, data3) == offsetof(GUID, Data3));
static_assert(offsetof(InterfaceId, data4) == offsetof(GUID, Data4));

static_assert(kResultOk == S_OK && kResultFalse == S_FALSE);
static_assert(kResultFail == E_FAIL && kResultNoInterface == E_NOINTERFACE);
static_assert(kResultPointer == E_POINTER && kResultOutOfMemory == E_OUTOFMEMORY);
static_assert(kResultNotImplemented == E_NOTIMPL && kResultWrongThread == RPC_E_WRONG_THREAD);

static_assert(sizeof(Variant) == sizeof(VARIANT));
static_assert(offsetof(Variant, real) == offsetof(VARIANT, dblVal));
constexpr bool Is(Variant::Type type, int of_system) {
    return static_cast<int>(type) == of_system;
}
static_assert(Is(Variant::kEmpty, VT_EMPTY) && Is(Variant::kNull, VT_NULL));
static_assert(Is(Variant::kInt, VT_I4) && Is(Variant::kReal, VT_R8));
static_assert(Is(Variant::kText, VT_LPSTR) && Is(Variant::kRealArray, VT_ARRAY | VT_R8));

}  // namespace fixtop
