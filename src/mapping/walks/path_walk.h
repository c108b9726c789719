// SPDX-License-Identifier: Apache-2.0
#pragma once

// The nodes that the last step of a path matches, in the order of the siblings. Earlier steps are
// taken once: their first match has all the elements.

#include "diagnostics/memory_guard.h"
#include "fixtop/iterator.h"
#include "mapping/walks/element_walk.h"

namespace fixtop {

class PathStep;

class CDTPathIterator final : public CDTBase {
 public:
    // The path must outlive the walk; a null pointer has no matches. Stands nowhere before First.
    CDTPathIterator(const PathStep* path, FIReferenceBase& reference)
        : path_(path), reference_(reference) {}
    ~CDTPathIterator() override {
        memory::Contain([this] { Release(); });
    }

    std::unique_ptr<CDTBase> Clone(FIReferenceBase& reference) const override;
    bool HasMore() const override { return !at_end_; }
    bool First() override;
    bool Next() override;
    bool Last() override;
    bool Prev() override;

 private:
    void Release();
    bool StepBack(FIIteratorBase& it) const;

    const PathStep* path_;
    FIReferenceBase& reference_;
    bool at_end_ = true;
    bool entered_ = false;  // the reference is below base_depth_
    int base_depth_ = 0;
    int position_ = 0;  // behind the last element the count
};

}  // namespace fixtop
