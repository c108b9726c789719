// SPDX-License-Identifier: Apache-2.0
#pragma once

// Walk: what goes over the elements of a collection for a script's "For Each".

#include <windows.h>
// The component services follow the base header.
#include <oaidl.h>

#include <cstddef>
#include <memory>
#include <vector>

#include "dispatch/script_value.h"

namespace fixtop::hovex {

class Walk final : public IEnumVARIANT {
 public:
    // As a member answers it.
    static ScriptValue Make(std::vector<ScriptValue> elements);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* into, ULONG* fetched) override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
    HRESULT STDMETHODCALLTYPE Reset() override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** out) override;

 private:
    using Elements = std::shared_ptr<const std::vector<ScriptValue>>;

    Walk(Elements elements, std::size_t at);
    ~Walk();

    Elements elements_;
    std::size_t at_;
    LONG count_ = 1;
};

}  // namespace fixtop::hovex
