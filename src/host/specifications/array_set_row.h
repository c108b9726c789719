// SPDX-License-Identifier: Apache-2.0
#pragma once

// HArraySetElemContext, HArraySetElemCursorBase, HArraySetElemEntry: one row of an array set, an
// element for each column under the column's name.

#include "framework/nodes/counted.h"
#include "host/specifications/array_set.h"

namespace fixtop {

class HArraySetElemContext : public CountedFromZero<FIContext>, public LivingNode {
 public:
    // `parent` is the row's node.
    HArraySetElemContext(HArraySetContext* table, int row, FIEntry* parent);

    FICursorBase* MakeCursor(int kind) override;
    FIEntry* MakeEntry(int column);

    Liveness* Life() const final { return table_->Life(); }
    bool IsGone() const final { return table_->IsGone(); }

    int Count() const { return table_->ColumnCount(); }
    bool IsSameList(const HArraySetElemContext& other) const {
        return table_->IsSameList(*other.table_) && row_ == other.row_;
    }
    const host::Text& ColumnName(int column) const { return table_->Block().names[column]; }
    // Null when the column has no text in this row.
    const host::Text* TextAt(int column) const;

 private:
    Ref<HArraySetContext> table_;
    int row_;
    Ref<FIEntry> parent_;
};

class HArraySetElemCursorBase : public IndexCursor<HArraySetElemCursorBase, HArraySetElemContext> {
 public:
    using IndexCursor::IndexCursor;

    bool SeekName(int origin, const char* name) override;

 protected:
    void ReadKey(int position, FIValue& out) const override;
};

class HArraySetElemEntry : public AttrMapEntry<HArraySetElemEntry>, public LivingNode {
 public:
    HArraySetElemEntry(HArraySetElemContext* context, int column);

    static std::span<const AttrRow<HArraySetElemEntry>> AttributeRows();

    void GetName(FIValue& out) override {
        if (IsGone()) return out.Clear();
        out.SetText(context_->ColumnName(column_).Str());
    }
    Liveness* Life() const final { return context_->Life(); }
    bool IsGone() const final { return context_->IsGone(); }
    Mark MarkOf() const override { return {column_, 0, {}}; }
    bool StandsWith(const LivingNode& other) const override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    bool IsContainer() override { return false; }
    FIContext* GetContext() override { return EmptyContext(); }

    bool FollowsAttachments() const { return attachments_; }
    void FollowAttachments(bool follow) { attachments_ = follow; }

 private:
    Ref<HArraySetElemContext> context_;
    int column_;
    bool attachments_ = true;
};

}  // namespace fixtop
