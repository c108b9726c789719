// SPDX-License-Identifier: Apache-2.0
#include "collection/published_vars.h"

#include <functional>
#include <string_view>

#include "collection/shielded_collection.h"
#include "framework/iterator/shielded_iterator.h"
#include "framework/nodes/empties.h"

namespace fixtop {

namespace {

constexpr char kTop[] = "Top";

// Whether the item refers to the root of the tree.
bool IsTop(const FICollectionElement& item) {
    static const FIValue id_name("id");
    if (!item.node) return false;
    FIValue id;
    item.node->GetAttribute(id_name, id);
    return id.IsText() && id.Compare(FIValue(kTop)) == 0;
}

}  // namespace

PublishedVars::PublishedVars(const char* text, FIIterator& top)
    : top_(Ref<FIIterator>::Adopt(new Shielded<FIIterator>(top.EntryAt(top.Depth()), true))),
      text_hash_(std::hash<std::string_view>()(text)),
      items_(Ref<Collection>::Adopt(new Shielded<Collection>())) {
    items_->Load(text, *top_);
    int index = 0;
    for (auto* each = items_->ItemAt(0); each && !IsTop(*each); each = each->Next()) ++index;
    items_->RemoveAt(index);
}

FICursorBase* PublishedVars::MakeCursor(int kind) {
    if (kind == kKeyCursor) return EmptyCursor();
    return HandOut(static_cast<FICursorBase*>(new Shielded<PublishedVarsCursorBase>(*this)));
}

bool PublishedVars::IsSame(const PublishedVars& other) const {
    if (this == &other) return true;
    return text_hash_ == other.text_hash_ && items_->Count() == other.items_->Count() &&
           top_->Equal(*other.top_);
}

Ref<FIIterator> PublishedVars::NodeAt(int index) const {
    const FICollectionElement* item = items_->ItemAt(index);
    if (!item || !item->node || !item->node->Rebind()) {
        return Ref<FIIterator>::Adopt(new Shielded<FIIterator>());
    }
    return Ref<FIIterator>::Adopt(static_cast<FIIterator*>(item->node->Copy()));
}

void PublishedVarsCursorBase::GetKey(FIValue& out) {
    out.Clear();
    if (!AtEnd()) ReadPublishedKey(*list_->NodeAt(index_), out);
}

FIEntry* PublishedVarsCursorBase::GetEntry() {
    if (AtEnd()) return nullptr;
    return HandOut(static_cast<FIEntry*>(
        new Shielded<PublishedVarEntry>(*list_, list_->NodeAt(index_), index_)));
}

}  // namespace fixtop
