// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/com/dispatch_windows.h"
#include "automation/com/member_records_windows.h"
#include "automation/typed/member_table.h"
#include "fixtop/iterator.h"

namespace fixtop {

// What the member of a number writes: a type of its own, so that each has a place in the table.
template <int kNumber>
struct MemberResult {
    void* object;
};

// The members 0 to kCount - 1, each of which calls Self::GetMember with its number.
template <class Self, int kCount>
struct NumberedMembers : NumberedMembers<Self, kCount - 1> {
    virtual HRESULT FIXTOP_MEMBER Member(MemberResult<kCount - 1>* out) {
        return static_cast<Self*>(this)->GetMember(kCount - 1, out ? &out->object : nullptr);
    }

 protected:
    ~NumberedMembers() = default;
};
template <class Self>
struct NumberedMembers<Self, 0> : DispatchMembers {
 protected:
    ~NumberedMembers() = default;
};

// A node as an object of a class: poses as any interface of the type library, whose members it
// reads of the type. A part of the node object, which is what it says to be and counts for it.
class ActiveFacade final : public NumberedMembers<ActiveFacade, MemberTable::kMostMembers> {
 public:
    // `place` is shared and not moved any more.
    ActiveFacade(IUnknown& node, Ref<FIIteratorBase> place, Ref<ITypeInfo> type);

    const InterfaceId& Id() const { return id_; }

    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId& id, void** out) override;
    std::uint32_t FIXTOP_MEMBER AddRef() override { return node_.AddRef(); }
    std::uint32_t FIXTOP_MEMBER Release() override { return node_.Release(); }
    FIXTOP_DISPATCH_MEMBERS
    HRESULT FIXTOP_MEMBER Invoke(DISPID number, const InterfaceId& id, LCID locale, WORD flags,
                                 DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                 UINT* place) override;

    // What the member leads to, counted: a node, an object of a class, a list. Null, and no error,
    // where the node has none; kResultNotImplemented beyond the members of the interface.
    HRESULT GetMember(int number, void** out);

 private:
    // Null beyond the members.
    const MemberRecord* Record(int number);
    HRESULT MakeMember(const MemberRecord& record, void** out) const;

    IUnknown& node_;
    const Ref<FIIteratorBase> place_;
    const TypeDispatch dispatch_;
    const InterfaceId id_;
    // Read when a member is first called.
    std::vector<MemberRecord> records_;
};

}  // namespace fixtop
