// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/node_object.h"
#include "diagnostics/instance_counts.h"

namespace fixtop {

class CQSINode final : public NodeObject<IQSINode>, private Counted<CountedClass::CQSINode> {
 public:
    static IQSINode* Make(Ref<FIIteratorBase> place) { return new CQSINode(std::move(place)); }

 private:
    explicit CQSINode(Ref<FIIteratorBase> place) : NodeObject(std::move(place), Make) {}
    ~CQSINode() override = default;
};

}  // namespace fixtop
