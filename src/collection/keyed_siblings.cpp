// SPDX-License-Identifier: Apache-2.0
#include "collection/keyed_siblings.h"

#include "collection/step_ids.h"
#include "framework/iterator/shielded_iterator.h"

namespace fixtop {

bool KeyedSiblings::IsOfList(FIIterator& node) const {
    return list_ && node.Life() == list_->Life() && node.Life()->IsCurrent(revision_) &&
           node.EntryAt(node.Depth() - 1) == list_->EntryAt(list_->Depth());
}

void KeyedSiblings::Read(FIIterator& node) {
    Forget();
    const auto at = Ref<FIIterator>::Adopt(node.Copy());
    if (!at->Up()) return;
    const auto list = Ref<FIIterator>::Adopt(at->Copy());
    for (bool on = at->DownFirst(); on; on = at->Next()) {
        const FIValue id = KeyedIdOf(*at);
        if (!id.IsNull()) ++counts_[id.CStr()];
    }
    // Where nobody knows of changes it is read again.
    if (!node.Life()) return;
    revision_ = node.Life()->Revision();
    list_ = list;
}

bool KeyedSiblings::IsFirst(FIIterator& node, const FIValue& id) {
    if (!IsOfList(node)) Read(node);
    const auto found = counts_.find(id.CStr());
    if (found == counts_.end() || found->second == 1) return found != counts_.end();
    const auto at = Ref<FIIterator>::Adopt(node.Copy());
    if (!at->Up() || !at->DownFirst()) return false;
    while (!at->Equal(node)) {
        if (KeyedIdOf(*at).Compare(id) == 0 || !at->Next()) return false;
    }
    return true;
}

}  // namespace fixtop
