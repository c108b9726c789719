// SPDX-License-Identifier: Apache-2.0
#include "class_factory.h"

#include <new>

#include "objects/case_object.h"
#include "process_life.h"

namespace fixtop::hovex {

namespace {

class Factory final : public IClassFactory {
 public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        if (!out) return E_POINTER;
        const bool is_known = id == IID_IUnknown || id == IID_IClassFactory;
        *out = is_known ? this : nullptr;
        return is_known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** out) override try {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        auto* const made = new CaseObject;
        const HRESULT result = made->QueryInterface(id, out);
        made->Release();
        return result;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        lock ? ProcessLife::Begin() : ProcessLife::End();
        return S_OK;
    }
};

}  // namespace

IClassFactory& CaseFactory() {
    static Factory factory;
    return factory;
}

}  // namespace fixtop::hovex
