// SPDX-License-Identifier: Apache-2.0
#include "dispatch/walk.h"

#include <algorithm>
#include <new>
#include <utility>

#include "process_life.h"

namespace fixtop::hovex {

Walk::Walk(Elements elements, std::size_t at) : elements_(std::move(elements)), at_(at) {
    ProcessLife::Begin();
}

Walk::~Walk() {
    ProcessLife::End();
}

ScriptValue Walk::Make(std::vector<ScriptValue> elements) {
    VARIANT made;
    VariantInit(&made);
    made.punkVal =
        new Walk(std::make_shared<const std::vector<ScriptValue>>(std::move(elements)), 0);
    made.vt = VT_UNKNOWN;
    return ScriptValue(made);
}

HRESULT Walk::QueryInterface(REFIID id, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (id != IID_IUnknown && id != IID_IEnumVARIANT) return E_NOINTERFACE;
    AddRef();
    *out = this;
    return S_OK;
}

ULONG Walk::AddRef() {
    return static_cast<ULONG>(InterlockedIncrement(&count_));
}

ULONG Walk::Release() {
    const LONG left = InterlockedDecrement(&count_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
}

HRESULT Walk::Next(ULONG count, VARIANT* into, ULONG* fetched) try {
    if (fetched) *fetched = 0;
    if (!into || (!fetched && count != 1)) return E_POINTER;
    for (ULONG i = 0; i < count; ++i) VariantInit(&into[i]);
    ULONG done = 0;
    for (; done < count && at_ < elements_->size(); ++done) into[done] = (*elements_)[at_++].Copy();
    if (fetched) *fetched = done;
    return done == count ? S_OK : S_FALSE;
} catch (const std::exception&) {
    return E_OUTOFMEMORY;
}

HRESULT Walk::Skip(ULONG count) {
    const std::size_t left = elements_->size() - at_;
    at_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
}

HRESULT Walk::Reset() {
    at_ = 0;
    return S_OK;
}

HRESULT Walk::Clone(IEnumVARIANT** out) {
    if (!out) return E_POINTER;
    *out = new (std::nothrow) Walk(elements_, at_);
    return *out ? S_OK : E_OUTOFMEMORY;
}

}  // namespace fixtop::hovex
