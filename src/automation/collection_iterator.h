// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/collection.h"
#include "fixtop/automation/collection_iterator.h"

namespace fixtop {

class CQSICollectionIterator final : public AutomationObject<IQSICollectionIterator>,
                                     private Counted<CountedClass::CQSICollectionIterator> {
 public:
    CQSICollectionIterator(Ref<CQSICollection> collection, Ref<FICollectionIteratorBase> items)
        : collection_(std::move(collection)), items_(std::move(items)) {}

    HRESULT FIXTOP_MEMBER GetIdBuffer(std::int32_t size, char* buffer) override;
    HRESULT FIXTOP_MEMBER GetId(char** id) override;
    HRESULT FIXTOP_MEMBER GetNode(IQSINode** node) override;
    HRESULT FIXTOP_MEMBER AtEnd(bool* at_end) override;
    HRESULT FIXTOP_MEMBER Move(std::int32_t count) override;
    HRESULT FIXTOP_MEMBER Reset() override;
    HRESULT FIXTOP_MEMBER ToEnd() override;
    HRESULT FIXTOP_MEMBER AddNode(IUnknown* node) override;
    HRESULT FIXTOP_MEMBER AddAttribute(IUnknown* attribute) override;
    HRESULT FIXTOP_MEMBER GetValue(const char* name, IQSIAttribute** attribute) override;

 private:
    ~CQSICollectionIterator() override = default;
    // For a call in which others are told that a node is gone: they may let go of the walk.
    Ref<CQSICollectionIterator> Hold() { return Ref<CQSICollectionIterator>::Share(this); }
    // A place of the item's node; null when it has none.
    Ref<FIIteratorBase> Place();

    const Ref<CQSICollection> collection_;
    const Ref<FICollectionIteratorBase> items_;
};

}  // namespace fixtop
