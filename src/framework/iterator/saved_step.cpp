// SPDX-License-Identifier: Apache-2.0
#include "framework/iterator/saved_step.h"

#include "framework/nodes/empties.h"
#include "framework/nodes/living_of.h"

namespace fixtop {

SavedStep::SavedStep(FIEntry* entry, SavedStep* parent, FICursorBase* cursor)
    : entry_(Ref<FIEntry>::Share(entry)),
      parent_(parent),
      living_(dynamic_cast<const LivingNode*>(entry)) {
    if (living_) {
        number_ = living_->ObjectNumber();
        mark_ = living_->MarkOf();
    }
    if (!cursor) return;
    entry->GetName(name_);
    cursor->GetKey(key_);
    if (key_.IsNull()) key_ = name_;
    if (key_.Kind() == FIValue::kReal) key_.ConvertTo(FIValue::kShortText);
}

SavedStep::SavedStep(const SavedStep& other, SavedStep* parent)
    : entry_(other.entry_),
      parent_(parent),
      key_(other.key_),
      name_(other.name_),
      living_(other.living_),
      number_(other.number_),
      mark_(other.mark_) {}

bool SavedStep::Resolve(FIEntry& parent, Ref<FICursorBase>& cursor, Ref<FIEntry>& entry) const {
    const bool is_gone = key_.IsNull() || (living_ && living_->IsGone());
    const bool is_proven = number_ != 0 && living_->IsTracked();
    if (!is_gone && is_proven) {
        entry = entry_;
        return true;
    }
    // A node without a number of its own may be another one of the same key by now.
    if (number_ == 0 || !is_gone) {
        if (!key_.IsNull() && FindByKey(parent, cursor, entry)) return true;
    }
    cursor.Reset();
    entry.Reset();
    return false;
}

bool SavedStep::FindByKey(FIEntry& parent, Ref<FICursorBase>& cursor, Ref<FIEntry>& entry) const {
    const Ref<FIContext> context = Ref<FIContext>::Adopt(parent.GetContext());
    Ref<FICursorBase> found = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
    const bool stands = key_.Kind() == FIValue::kInt ? found->Seek(kFromFirst, key_.AsInt())
                                                     : found->SeekName(kFromFirst, key_.CStr());
    if (stands) entry = FindSame(found);
    if (!entry && number_ != 0) entry = FindNumber(*found);
    cursor = std::move(found);
    return entry && entry.Get() != EmptyEntry();
}

bool SavedStep::HasNumber(FIEntry& entry) const {
    const auto* living = LivingOf(entry);
    return living && living->ObjectNumber() == number_;
}

bool SavedStep::IsSame(FIEntry& entry) const {
    if (number_ != 0) return HasNumber(entry);
    if (!living_) return entry.Compare(*entry_) == 0;
    const auto* living = LivingOf(entry);
    if (!living || living->ObjectNumber() != 0 || living->MarkOf() != mark_) return false;
    FIValue name;
    entry.GetName(name);
    return name.Compare(name_) == 0;
}

Ref<FIEntry> SavedStep::FindNumber(FICursorBase& cursor) const {
    for (bool stands = cursor.Seek(kFromFirst, 0); stands; stands = cursor.Seek(kFromPresent, 1)) {
        auto entry = Ref<FIEntry>::Adopt(cursor.GetEntry());
        if (entry && HasNumber(*entry)) return entry;
    }
    return {};
}

// Several siblings may have one key; then the saved node says which of them it was. One that stands
// alone is taken under another name too, but not when it is told apart by more than its name.
Ref<FIEntry> SavedStep::FindSame(Ref<FICursorBase>& cursor) const {
    auto first = Ref<FIEntry>::Adopt(cursor->GetEntry());
    if (!first || IsSame(*first)) return first;
    bool is_alone = true;
    FIValue key;
    auto probe = Ref<FICursorBase>::Adopt(cursor->Clone(true));
    while (probe->Seek(kFromPresent, 1)) {
        probe->GetKey(key);
        if (key.Compare(key_) != 0) continue;
        is_alone = false;
        auto entry = Ref<FIEntry>::Adopt(probe->GetEntry());
        if (!entry || !IsSame(*entry)) continue;
        cursor = std::move(probe);
        return entry;
    }
    if (number_ != 0) return {};
    FIValue name;
    first->GetName(name);
    return is_alone && name.Compare(name_) != 0 ? first : Ref<FIEntry>();
}

}  // namespace fixtop
