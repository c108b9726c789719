// SPDX-License-Identifier: Apache-2.0
#pragma once

// Between the types of the module and those of the system, which have the same layout.

#include <windows.h>
// The component services follow the base header.
#include <oaidl.h>
#include <oleauto.h>
// A member of nodes has this name.
#undef GetClassName

#include <string>
#include <string_view>

#include "fixtop/automation/unknown.h"
#include "fixtop/ref.h"

namespace fixtop {

inline const GUID& AsGuid(const InterfaceId& id) {
    return reinterpret_cast<const GUID&>(id);
}
inline const InterfaceId& AsInterfaceId(const GUID& id) {
    return reinterpret_cast<const InterfaceId&>(id);
}

// Of the system, which the toolchain's headers only declare.
inline constexpr GUID kDispatchId = {0x00020400, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID kUnknownId = {0, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr GUID kNoId = {};

// A text of the system that is freed; empty when there is none.
class SystemText {
 public:
    SystemText() = default;
    SystemText(const SystemText&) = delete;
    SystemText& operator=(const SystemText&) = delete;
    ~SystemText() { SysFreeString(text_); }
    // Where a call of the system puts a text, once.
    BSTR* Out() { return &text_; }
    std::wstring_view View() const {
        return text_ ? std::wstring_view(text_, SysStringLen(text_)) : std::wstring_view();
    }

 private:
    BSTR text_ = nullptr;
};

// The object that `call` puts into its argument; null when it fails.
template <class T, class Call>
Ref<T> TakeFromSystem(Call call) {
    T* out = nullptr;
    return SUCCEEDED(call(&out)) ? Ref<T>::Adopt(out) : Ref<T>();
}

}  // namespace fixtop
