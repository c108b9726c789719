// SPDX-License-Identifier: Apache-2.0
#pragma once

// CCDMTopEntry: the root of a neutral tree, on which an iterator can stand. It is named after the
// class whose attributes are below it.

#include "framework/nodes/attr_map.h"
#include "mapping/nodes/class_context.h"

namespace fixtop {

class CCDMTopEntry : public AttrMapEntry<CCDMTopEntry>, public LivingNode {
 public:
    explicit CCDMTopEntry(Ref<CCDMClassContext> context) : context_(std::move(context)) {}

    static std::span<const AttrRow<CCDMTopEntry>> AttributeRows();

    void GetName(FIValue& out) override;
    void GetAttribute(const FIValue& name, FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    FIContext* GetContext() override { return context_.Counted(); }
    bool IsContainer() override { return !IsGone(); }
    // The node of the application on which the tree stands tells.
    bool Subscribe(void* owner, int kind, FICallback callback) override;
    bool Unsubscribe(void* owner, int kind) override;
    // Those of the application's top, such as its solver.
    bool QueryService(int kind, void** out) override;

    Liveness* Life() const final { return context_->Place().references.Life(); }
    bool IsGone() const final { return context_->Place().references.AreGone(); }
    bool StandsWith(const LivingNode& other) const override;

    const CCDMClassContext& Context() const { return *context_; }

 private:
    const Ref<CCDMClassContext> context_;
};

}  // namespace fixtop
