// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/object.h"
#include "diagnostics/instance_counts.h"
#include "fixtop/automation/node_iterator.h"
#include "fixtop/iterator.h"
#include "fixtop/ref.h"

namespace fixtop {

// Makes a node object of the family that an iterator belongs to.
using NodeMaker = IQSINode* (*)(Ref<FIIteratorBase> place);

// An iterator that moves. Some lists go back to their first element when they are left at the end:
// here it stays past the last.
class CQSINodeIterator final : public AutomationObject<IQSINodeIterator>,
                               private Counted<CountedClass::CQSINodeIterator> {
 public:
    // `children` stands on a child and is moved by nobody else.
    CQSINodeIterator(Ref<FIIteratorBase> children, NodeMaker make_node);

    HRESULT FIXTOP_MEMBER GetNameBuffer(std::int32_t size, char* buffer) override;
    HRESULT FIXTOP_MEMBER GetName(char** name) override;
    HRESULT FIXTOP_MEMBER GetNode(IQSINode** node) override;
    HRESULT FIXTOP_MEMBER Move(std::int32_t count, std::int32_t* moved) override;
    HRESULT FIXTOP_MEMBER Reset() override;
    HRESULT FIXTOP_MEMBER ToEnd() override;
    HRESULT FIXTOP_MEMBER AtEnd(bool* at_end) override;
    HRESULT FIXTOP_MEMBER Close() override;

 private:
    ~CQSINodeIterator() override = default;
    bool IsPastLast() { return past_last_ || children_->AtLast(); }
    bool StepOn();
    bool StepBack();

    const Ref<FIIteratorBase> children_;
    const NodeMaker make_node_;
    bool past_last_ = false;
};

}  // namespace fixtop
