// SPDX-License-Identifier: Apache-2.0
#include "collection/iterator_vars.h"

#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"

namespace fixtop {

FICursorBase* IteratorVars::MakeCursor(int kind) {
    if (kind == kKeyCursor) return EmptyCursor();
    return HandOut(static_cast<FICursorBase*>(new Shielded<IteratorVarsCursorBase>(*this)));
}

IteratorVarsCursorBase::IteratorVarsCursorBase(IteratorVars& list)
    : list_(Ref<IteratorVars>::Share(&list)), child_(Ref<FIIterator>::Adopt(list.Node().Copy())) {
    Stand(0);
}

IteratorVarsCursorBase::IteratorVarsCursorBase(const IteratorVarsCursorBase& other)
    : FlatCursor(other), list_(other.list_), child_(Ref<FIIterator>::Adopt(other.child_->Copy())) {}

int IteratorVarsCursorBase::Count() {
    const auto walk = Ref<FIIterator>::Adopt(list_->Node().Copy());
    int count = 0;
    for (bool on = walk->DownFirst(); on; on = walk->Next()) ++count;
    return count;
}

bool IteratorVarsCursorBase::GoTo(int index) {
    if (stands_ && index == index_ + 1) return child_->Next();
    const int depth = list_->Node().Depth();
    while (child_->Depth() > depth) child_->Up();
    return child_->Down(index);
}

void IteratorVarsCursorBase::GetKey(FIValue& out) {
    out.Clear();
    if (!AtEnd()) ReadPublishedKey(*child_, out);
}

FIEntry* IteratorVarsCursorBase::GetEntry() {
    if (AtEnd()) return nullptr;
    return HandOut(static_cast<FIEntry*>(
        new Shielded<IteratorVarEntry>(*list_, Ref<FIIterator>::Adopt(child_->Copy()), index_)));
}

bool IteratorVarsCursorBase::IsSameList(const IteratorVarsCursorBase& other) const {
    return list_.Get() == other.list_.Get() || list_->Node().Equal(other.list_->Node());
}

}  // namespace fixtop
