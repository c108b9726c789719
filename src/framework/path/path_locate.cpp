// SPDX-License-Identifier: Apache-2.0
// Finding a path from the root of the chain on which an iterator stands, each step compared with
// the keys of the cursors instead of the displayed names.

#include "framework/iterator/iterator.h"
#include "path/path_step.h"
#include "path/tokenizer.h"

namespace fixtop {

// Names and counts are resolved with the variables of the position from which the search starts.
bool FIIterator::Locate(const FIValue& path) {
    const Ref<FIIterator> searcher = Ref<FIIterator>::Adopt(Copy());
    searcher->ReturnTo(0);
    if (!searcher->FollowPath(path, &FIIterator::HasKey, *this)) return false;
    TakePosition(*searcher);
    return true;
}

bool FIIterator::LocateChain(const PathStep& step) {
    const Ref<FIIterator> searcher = Ref<FIIterator>::Adopt(Copy());
    searcher->ReturnTo(0);
    if (!searcher->WalkBy(step, &FIIterator::HasKey, *this)) return false;
    TakePosition(*searcher);
    return true;
}

bool FIIterator::HasKey(const FIValue& name) const {
    FIValue key;
    GetListedKey(key);
    return key.Compare(name) == 0;
}

void FIIterator::GetListedKey(FIValue& out) const {
    out.Clear();
    if (!frames_.IsEmpty()) Frames().Last().cursor->GetKey(out);
}

void FIIterator::TakePosition(FIIterator& other) {
    Frames().Exchange(other.Frames());
    std::swap(entry_, other.entry_);
    std::swap(vars_, other.vars_);
    frozen_.reset();
}

}  // namespace fixtop
