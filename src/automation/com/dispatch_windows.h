// SPDX-License-Identifier: Apache-2.0
#pragma once

// The system's dispatch interface, with the module's own types, over a type of a library.

#include "automation/com/system_types_windows.h"
#include "automation/member.h"

namespace fixtop {

// The same table as the system's IDispatch.
struct DispatchMembers : IUnknown {
    // Of the system's dispatch interface itself.
    static constexpr InterfaceId kId = {0x00020400, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};

    virtual HRESULT FIXTOP_MEMBER GetTypeInfoCount(UINT* count) = 0;
    virtual HRESULT FIXTOP_MEMBER GetTypeInfo(UINT place, LCID locale, ITypeInfo** info) = 0;
    virtual HRESULT FIXTOP_MEMBER GetIDsOfNames(const InterfaceId& id, LPOLESTR* names, UINT count,
                                                LCID locale, DISPID* numbers) = 0;
    virtual HRESULT FIXTOP_MEMBER Invoke(DISPID number, const InterfaceId& id, LCID locale,
                                         WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                         EXCEPINFO* exception, UINT* place) = 0;

 protected:
    ~DispatchMembers() = default;
};

// The members over a type, for an object that begins with them.
class TypeDispatch {
 public:
    explicit TypeDispatch(Ref<ITypeInfo> info) : info_(std::move(info)) {}

    ITypeInfo& Info() const { return *info_; }
    HRESULT Count(UINT* count) const {
        return HandOutNumber(count, [] { return 1U; });
    }
    HRESULT HandOut(UINT place, ITypeInfo** info) const;
    HRESULT FindNumbers(LPOLESTR* names, UINT count, DISPID* numbers) const;
    // The system calls the member at its place in the object's table. An object in the result that
    // has no dispatch interface is told to be none.
    HRESULT Invoke(DispatchMembers& object, DISPID number, WORD flags, DISPPARAMS* arguments,
                   VARIANT* result, EXCEPINFO* exception, UINT* place) const;

 private:
    const Ref<ITypeInfo> info_;
};

// The four members of an object, over its `dispatch_`.
#define FIXTOP_DISPATCH_MEMBERS                                                                \
    HRESULT FIXTOP_MEMBER GetTypeInfoCount(UINT* count) override {                             \
        return dispatch_.Count(count);                                                         \
    }                                                                                          \
    HRESULT FIXTOP_MEMBER GetTypeInfo(UINT place, LCID, ITypeInfo** info) override {           \
        return dispatch_.HandOut(place, info);                                                 \
    }                                                                                          \
    HRESULT FIXTOP_MEMBER GetIDsOfNames(const InterfaceId&, LPOLESTR* names, UINT count, LCID, \
                                        DISPID* numbers) override {                            \
        return dispatch_.FindNumbers(names, count, numbers);                                   \
    }

}  // namespace fixtop
