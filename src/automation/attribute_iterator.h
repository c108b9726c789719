// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/object.h"
#include "diagnostics/instance_counts.h"
#include "fixtop/automation/attribute_iterator.h"
#include "fixtop/cursor.h"
#include "fixtop/iterator.h"
#include "fixtop/ref.h"

namespace fixtop {

// A cursor over the attributes of a node, which reads with that node's units and variables.
class CQSIAttributeIterator final : public AutomationObject<IQSIAttributeIterator>,
                                    private Counted<CountedClass::CQSIAttributeIterator> {
 public:
    explicit CQSIAttributeIterator(Ref<FIIteratorBase> node);

    HRESULT FIXTOP_MEMBER GetNameBuffer(std::int32_t size, char* buffer) override;
    HRESULT FIXTOP_MEMBER GetName(char** name) override;
    HRESULT FIXTOP_MEMBER GetAttribute(IQSIAttribute** attribute) override;
    HRESULT FIXTOP_MEMBER Next(std::int32_t count, std::int32_t* moved) override;
    HRESULT FIXTOP_MEMBER Reset() override;
    HRESULT FIXTOP_MEMBER ToEnd() override;
    HRESULT FIXTOP_MEMBER AtEnd(bool* at_end) override;

 private:
    ~CQSIAttributeIterator() override = default;
    bool Stands() { return has_rows_ && !cursor_->AtEnd(); }

    // Before the cursor, whose variables it has.
    const Ref<FIIteratorBase> node_;
    Ref<FIAttributeCursorBase> cursor_;
    bool has_rows_ = false;
};

}  // namespace fixtop
