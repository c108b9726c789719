// SPDX-License-Identifier: Apache-2.0
#pragma once

// CCDMAttrCursorBase: a position in the attributes of a class entry: those of the application's
// nodes, with "spec_value" and "spec_uom" where the two faces are two nodes. Where the second node
// has the value, its "value" and "uom", if the first has no such rows, are listed as "alt_value"
// and "alt_uom". An entry without a node lists the table.
//
// The names are taken when the cursor is made; values are read through the entry. As in tables of
// host nodes, a step back from the end does nothing, and an entry that is gone shows no rows.

#include <memory>
#include <string>
#include <vector>

#include "fixtop/cursor.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/var_set_loan.h"
#include "mapping/nodes/class_entry.h"

namespace fixtop {

class CCDMAttrCursorBase : public CountedFromZero<FIAttributeCursorBase> {
 public:
    using Names = std::vector<std::string>;

    CCDMAttrCursorBase(CCDMClassEntry& entry, std::shared_ptr<const Names> names)
        : entry_(Ref<CCDMClassEntry>::Share(&entry)), lent_(entry), names_(std::move(names)) {}
    // Counted, on the first row.
    static CCDMAttrCursorBase* Make(CCDMClassEntry& entry);

    const void* TypeId() const override;
    FIAttributeCursorBase* Clone(bool deep) override;
    bool Seek(int origin, int delta) override;
    bool SeekName(int origin, const char* name) override;
    bool SeekValue(int origin, FIEntry& entry) override;
    bool AtBegin() override { return row_ == 0; }
    bool AtEnd() override { return row_ == names_->size(); }
    int Compare(FICursorPosition& other) override;
    void GetKey(FIValue& out) override;
    void GetValue(FIValue& out) override;
    FIVarSet* GetVarSet() override { return entry_->GetVarSet(); }
    void SetVarSet(FIVarSet* vars) override { lent_.Lend(vars); }

 private:
    bool Find(const char* name);

    const Ref<CCDMClassEntry> entry_;
    LentVarSet<CCDMClassEntry> lent_;
    const std::shared_ptr<const Names> names_;  // shared by copies
    std::size_t row_ = 0;
};

}  // namespace fixtop
