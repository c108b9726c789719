// SPDX-License-Identifier: Apache-2.0
#pragma once

// HVarDimsContext and HVarDimsCursorBase: one dimension of an array variable, a level of the tree
// for each, with the elements on the last.

#include "fixtop/ref.h"
#include "framework/nodes/counted.h"
#include "host/node_above.h"
#include "host/variables/element_names.h"
#include "host/variables/variable_node.h"

namespace fixtop {

class HVarDimsContext : public CountedFromZero<FIContext>, public LivingNode {
 public:
    // Dimension `dimension`, counted from 0, of `variable` at an address in which the dimensions
    // before it are filled.
    HVarDimsContext(HVarsEntry* variable, int dimension, const host::VarDescription& address,
                    NodeAbove above);

    FICursorBase* MakeCursor(int kind) override;
    // "(name)" or an index, with one "." or "/" behind it.
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override;

    FIEntry* MakeEntry(int index);
    bool IsSameList(const HVarDimsContext& other) const;

    Liveness* Life() const final { return variable_->Life(); }
    bool IsGone() const final { return variable_->IsGone(); }

    HVarsEntry& Variable() const { return *variable_; }
    int Dimension() const { return dimension_; }
    const host::VarDescription& Address() const { return address_; }
    const HElementNames& Names() const { return names_; }
    const HovexOptions* Options() const { return above_.Options(); }
    bool FollowsAttachments() const { return above_.FollowsAttachments(); }
    // Indices run from Low to before End.
    long long Low() const { return low_; }
    long long End() const { return end_; }

 private:
    void ReadKeyOfName(const char* path, FIValue& out, const char** rest);
    void ReadKeyOfIndex(const char* path, FIValue& out, const char** rest);

    Ref<HVarsEntry> variable_;
    int dimension_;
    host::VarDescription address_;
    NodeAbove above_;
    HElementNames names_;
    long long low_ = 0;
    long long end_ = 0;
};

// The position is an index of the array. It stops at the first index and behind the last.
class HVarDimsCursorBase : public CountedFromZero<FICursorBase> {
 public:
    explicit HVarDimsCursorBase(HVarDimsContext* context);
    HVarDimsCursorBase(HVarDimsContext* context, long long position);

    const void* TypeId() const override;
    FICursorBase* Clone(bool deep) override;
    bool Seek(int origin, int delta) override;
    // By the name of an element, or else as "Elem<index>". Behind the last when there is none.
    bool SeekName(int origin, const char* name) override;
    // To the index of another element of an array.
    bool SeekValue(int origin, FIEntry& entry) override;
    bool AtBegin() override { return position_ == context_->Low(); }
    bool AtEnd() override { return context_->IsGone() || position_ == context_->End(); }
    int Compare(FICursorPosition& other) override;
    void GetKey(FIValue& out) override;
    FIEntry* GetEntry() override;

 private:
    bool GoTo(long long position);
    // From the present position on; behind the last when there is none.
    bool WalkToName(const char* name);
    bool IsOnElement() const { return position_ < context_->End() && !context_->IsGone(); }

    Ref<HVarDimsContext> context_;
    long long position_;
};

}  // namespace fixtop
