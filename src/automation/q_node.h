// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/com/typed_faces.h"
#include "automation/node_object.h"
#include "diagnostics/instance_counts.h"

namespace fixtop {

class CQSINode final : public NodeObject<IQSINode>, private Counted<CountedClass::CQSINode> {
 public:
    static IQSINode* Make(Ref<FIIteratorBase> place) { return new CQSINode(std::move(place)); }

 private:
    explicit CQSINode(Ref<FIIteratorBase> place) : NodeObject(std::move(place), Make) {}
    ~CQSINode() override = default;

    void* Find(const InterfaceId& id) override {
        void* const known = NodeObject::Find(id);
        return known ? known : faces_.Find(*this, *iterator, id);
    }

    TypedFaces faces_;
};

}  // namespace fixtop
