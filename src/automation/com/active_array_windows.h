// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/com/dispatch_windows.h"
#include "automation/com/member_records_windows.h"
#include "automation/object.h"
#include "fixtop/iterator.h"

namespace fixtop {

// The table of an interface over a list.
struct ListMembers : DispatchMembers {
    virtual HRESULT FIXTOP_MEMBER Count(LONG* number) = 0;
    // A number counts from 0, a text is a key. Null, and no error, where there is none.
    virtual HRESULT FIXTOP_MEMBER ItemAt(VARIANT index, void** item) = 0;

 protected:
    ~ListMembers() = default;
};

// A list of a node: its children of one name.
class ActiveArray final : public AutomationObject<ListMembers> {
 public:
    // `node` is shared and not moved any more; the type is that of the interface over the list.
    ActiveArray(Ref<FIIteratorBase> node, std::string name, Ref<ITypeInfo> type);

    FIXTOP_DISPATCH_MEMBERS
    HRESULT FIXTOP_MEMBER Invoke(DISPID number, const InterfaceId& id, LCID locale, WORD flags,
                                 DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                 UINT* place) override;
    HRESULT FIXTOP_MEMBER Count(LONG* number) override;
    HRESULT FIXTOP_MEMBER ItemAt(VARIANT index, void** item) override;

 private:
    ~ActiveArray() override = default;
    void* Find(const InterfaceId& id) override;
    // The path from the node; empty for what is no index.
    std::string PathOf(const VARIANT& index) const;

    const Ref<FIIteratorBase> node_;
    const std::string name_;
    const TypeDispatch dispatch_;
    const InterfaceId id_;
    const InterfaceId item_id_;
};

// The node object at a place as the interface of an id, counted: IQSINode, or that of its class.
HRESULT MakeFace(Ref<FIIteratorBase> place, const InterfaceId& id, void** out);

}  // namespace fixtop
