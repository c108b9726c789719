// SPDX-License-Identifier: Apache-2.0
#pragma once

// HSpecEntry: the node of one element of a specification. Elements with a sub-specification or an
// array set have children; process variables can be stored.
//
// A store starts the solver and waits, so callbacks arrive inside it; the entry keeps itself alive.

#include <string>

#include "fixtop/ref.h"
#include "framework/nodes/attr_map.h"
#include "host/specifications/spec_context.h"

namespace fixtop {

class HSpecEntry : public AttrMapEntry<HSpecEntry>, public LivingNode {
 public:
    HSpecEntry(HSpecContext* context, host::CSpecElement& element);

    static std::span<const AttrRow<HSpecEntry>> AttributeRows();

    // The tag; siblings may share it.
    void GetName(FIValue& out) override;
    // `mode` of a store: 0 specifies what can be specified, 1 specifies anew what is specified
    // already, 2 gives a calculated value and starts no solve. Other modes do nothing.
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    bool IsContainer() override { return !IsGone() && (element_.child || element_.array_set); }
    FIContext* GetContext() override;

    Liveness* Life() const final { return context_->Life(); }
    bool IsGone() const final { return context_->IsGone(); }
    Mark MarkOf() const override { return {ordinal_, 0, {}}; }
    bool StandsWith(const LivingNode& other) const override;
    const host::CSpecElement& Element() const { return element_; }
    // The element of the same place, whoever asked for the specification.
    bool IsSameElement(const HSpecEntry& other) const;
    bool FollowsAttachments() const { return attachments_; }
    void FollowAttachments(bool follow) { attachments_ = follow; }

 private:
    // The tag with a suffix where adjacent or earlier siblings have the same.
    std::string UniqueName() const;
    bool HasChildren() const;
    const char* Store(double value, int mode);

    template <HSpecType::Row row>
    static AttrRow<HSpecEntry> TypeRow(const char* name,
                                       AttrRow<HSpecEntry>::Writer writer = nullptr);
    static bool WriteValue(HSpecEntry& self, const FIValue& value, int mode, FIValue& out);

    Ref<HSpecContext> context_;
    host::CSpecElement& element_;
    const int place_;    // in the list of elements
    const int ordinal_;  // among those of this tag
    HSpecType type_;
    HovexOptions options_;
    bool attachments_;
};

}  // namespace fixtop
