// SPDX-License-Identifier: Apache-2.0
#pragma once

// CollectionIterator: the one walk over the items of a collection; fixtop/collection.h tells the
// operations. When its item is removed it stands on none, before the one that was behind.

#include "collection/collection.h"
#include "collection/item_list.h"

namespace fixtop {

class CollectionIterator : public FICollectionIteratorBase,
                           private Counted<CountedClass::FICollectionIteratorBase> {
 public:
    explicit CollectionIterator(fixtop::Collection& collection)
        : collection_(Ref<fixtop::Collection>::Share(&collection)), at_(collection.Items()) {}

    int AddRef() override { return ++references_; }
    int Release() override;
    const void* TypeId() const override;
    FICollectionBase* Collection() override { return collection_.Get(); }

    FICollectionElement* Item() override { return at_.Item(); }
    bool IsValid() override { return at_.Item() != nullptr; }
    bool First() override { return at_.First(); }
    bool Next() override { return at_.Next(); }
    bool Last() override { return at_.Last(); }
    bool Previous() override { return at_.Previous(); }
    bool AtFirst() override { return at_.AtFirst(); }
    bool AtEnd() override { return at_.AtEnd(); }
    void GetKey(FIValue& out) override;
    void GetPath(FIValue& out) override;
    FIReferenceBase* GetNode() override;
    int Depth() override;
    void GetStep(int level, FIValue& out) override;
    int GetWay() override;
    void GetUnits(FIValue& unit, FIValue& spec_unit) override;

    void GetName(FIValue& out) override;
    void GetAttribute(const FIValue& name, FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    FIAttributeSource* GetAttributeSource() override;
    bool IsContainer() override;
    FIContext* GetContext() override;
    bool Subscribe(void* owner, int kind, FICallback callback) override;
    bool Unsubscribe(void* owner, int kind) override;
    int Compare(FIEntry& other) override;
    void SetUnit(const FIValue& unit, FIValue& out) override;
    void SetSpecUnit(const FIValue& unit, FIValue& out) override;
    void SetValue(const FIValue& value, int mode, FIValue& out) override;
    void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode, FIValue& out) override;
    void SetSpecValue(const FIValue& value, int mode, FIValue& out) override;
    void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                            FIValue& out) override;
    void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override;
    void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override;
    bool QueryService(int kind, void** out) override;
    bool ReleaseService(void** out) override;
    bool CanHold() override;
    void BeginBatch() override;
    void EndBatch(int argument) override;
    int GetCaps(int a, int b) override;
    void DoAction(FIValue& out, int a, int b) override;
    void DoActionEx(FIValue& out, int a, int b, int c, int d) override;
    void DoCommand(int command, FIErrorRecord& error) override;

 private:
    // Null when there is no item or it has no node.
    Ref<FIReference> Node();
    // Calls with the entry of the node, which sees the item's units; with the shared empty entry
    // when there is none.
    template <class Call>
    auto OnEntry(Call call);
    // Calls with the reference of the item; the message in `out` when there is no node.
    template <class Call>
    void OnNode(FIValue& out, Call call);
    // The same for what may change the units of the item, which are kept then.
    template <class Call>
    void OnUnits(FIValue& out, Call call);

    const Ref<fixtop::Collection> collection_;
    ItemPosition at_;
    int references_ = 1;
};

}  // namespace fixtop
