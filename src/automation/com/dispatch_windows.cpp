// SPDX-License-Identifier: Apache-2.0
#include "automation/com/dispatch_windows.h"

namespace fixtop {

namespace {

// The interface of a leaf is told to be one for dispatch, as it stands in the library, and the leaf
// itself has members that are called by their places alone.
void TellWhetherDispatch(VARIANT& result) {
    if (V_VT(&result) != VT_DISPATCH || !V_DISPATCH(&result)) return;
    void* dispatch = nullptr;
    ::IUnknown* const object = V_DISPATCH(&result);
    if (FAILED(object->QueryInterface(kDispatchId, &dispatch))) {
        V_VT(&result) = VT_UNKNOWN;
        V_UNKNOWN(&result) = object;
        return;
    }
    V_DISPATCH(&result) = static_cast<::IDispatch*>(dispatch);
    object->Release();
}

}  // namespace

HRESULT TypeDispatch::HandOut(UINT place, ITypeInfo** info) const {
    if (info) *info = nullptr;
    if (place != 0) return RunMember([] { return HRESULT{DISP_E_BADINDEX}; });
    return HandOutObject(info, [&] { return info_.Counted(); });
}

HRESULT TypeDispatch::FindNumbers(LPOLESTR* names, UINT count, DISPID* numbers) const {
    return RunMember([&]() -> HRESULT {
        if (!names || !numbers) return kResultPointer;
        return DispGetIDsOfNames(info_.Get(), names, count, numbers);
    });
}

HRESULT TypeDispatch::Invoke(DispatchMembers& object, DISPID number, WORD flags,
                             DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                             UINT* place) const {
    const HRESULT entered = EnterMember();
    if (entered != kResultOk) return entered;
    // What the system calls answers for itself: nothing may be thrown through the system.
    const HRESULT done = memory::Outside([&]() -> HRESULT {
        return DispInvoke(&object, info_.Get(), number, flags, arguments, result, exception, place);
    });
    if (SUCCEEDED(done) && result) TellWhetherDispatch(*result);
    return done;
}

}  // namespace fixtop
