// SPDX-License-Identifier: Apache-2.0
#pragma once

// HArraySetContext, HArraySetCursorBase, HArraySetEntry: the rows of the table behind an array-set
// element, named "Set0", "Set1" and so on. There are as many as the shortest column has texts.

#include <string>

#include "fixtop/host/array_set.h"
#include "fixtop/ref.h"
#include "framework/nodes/attr_map.h"
#include "framework/nodes/counted.h"
#include "host/lists/index_cursor.h"

namespace fixtop {

class HArraySetContext : public CountedFromZero<FIContext>, public LivingNode {
 public:
    // Turns the columns as the host filled them into texts, once for a block: the host's numbers
    // and objects are gone from it then. Objects that may not be there any more are not asked for
    // their names. `parent` is the element's node, which keeps the block.
    HArraySetContext(host::ArraySetBlock* block, FIEntry* parent, bool objects_are_there = true);

    FICursorBase* MakeCursor(int kind) override;
    FIEntry* MakeEntry(int row);

    Liveness* Life() const final { return living_ ? living_->Life() : nullptr; }
    bool IsGone() const final { return living_ && living_->IsGone(); }

    int Count() const { return row_count_; }
    int ColumnCount() const { return column_count_; }
    // The block behind one element of a specification, which the host fills anew for everyone who
    // asks.
    bool IsSameList(const HArraySetContext& other) const;
    host::ArraySetBlock& Block() const { return *block_; }
    FIEntry& Parent() const { return *parent_; }

 private:
    host::ArraySetBlock* block_;
    int column_count_ = 0;
    int row_count_ = 0;
    Ref<FIEntry> parent_;
    // The parent; null for one that can't go.
    const LivingNode* living_;
};

class HArraySetCursorBase : public IndexCursor<HArraySetCursorBase, HArraySetContext> {
 public:
    using IndexCursor::IndexCursor;

    // Any three characters and the number of the row; no number is 0.
    bool SeekName(int origin, const char* name) override;

 protected:
    void ReadKey(int position, FIValue& out) const override;
};

class HArraySetEntry : public AttrMapEntry<HArraySetEntry>, public LivingNode {
 public:
    HArraySetEntry(HArraySetContext* context, int row);

    static std::span<const AttrRow<HArraySetEntry>> AttributeRows();
    static std::string RowName(int row) { return "Set" + std::to_string(row); }

    void GetName(FIValue& out) override {
        if (IsGone()) return out.Clear();
        out.SetText(RowName(row_));
    }
    bool IsContainer() override { return !IsGone(); }
    Liveness* Life() const final { return context_->Life(); }
    bool IsGone() const final { return context_->IsGone(); }
    Mark MarkOf() const override { return {row_, 0, {}}; }
    bool StandsWith(const LivingNode& other) const override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    FIContext* GetContext() override;

    bool FollowsAttachments() const { return attachments_; }
    void FollowAttachments(bool follow) { attachments_ = follow; }

 private:
    Ref<HArraySetContext> context_;
    int row_;
    bool attachments_ = true;
};

}  // namespace fixtop
