#include "framework/collection_element.h"

#include "framework/empties.h"

FICollectionElement::FICollectionElement(FIEntry* entry, FICollectionElement* parent,
                                         FICursorBase* cursor)
    : entry_(Ref<FIEntry>::Share(entry)), parent_(parent) {
    if (!cursor) return;
    cursor->GetKey(key_);
    if (key_.IsNull()) entry->GetName(key_);
    if (key_.Kind() == FIValue::kReal) key_.ConvertTo(FIValue::kShortText);
}

FICollectionElement::FICollectionElement(const FICollectionElement& other,
                                         FICollectionElement* parent)
    : entry_(other.entry_), parent_(parent), key_(other.key_) {}

bool FICollectionElement::Resolve(FIEntry& parent, Ref<FICursorBase>& cursor,
                                  Ref<FIEntry>& entry) const {
    cursor.Reset();
    entry.Reset();
    if (key_.IsNull()) return false;
    const Ref<FIContext> context = Ref<FIContext>::Adopt(parent.GetContext());
    Ref<FICursorBase> found = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
    const bool stands = key_.Kind() == FIValue::kInt ? found->Seek(kFromFirst, key_.AsInt())
                                                     : found->SeekName(kFromFirst, key_.CStr());
    if (!stands) return false;
    entry = FindSame(*found);
    if (!entry || entry.Get() == EmptyEntry()) {
        entry.Reset();
        return false;
    }
    cursor = std::move(found);
    return true;
}

// Several siblings may have one key; then the saved node says which of them it was. One that stands
// alone is taken under another name too, but not when it is told apart by more than its name.
Ref<FIEntry> FICollectionElement::FindSame(FICursorBase& cursor) const {
    auto first = Ref<FIEntry>::Adopt(cursor.GetEntry());
    if (!first || first->Compare(*entry_) == 0) return first;
    bool is_alone = true;
    FIValue key;
    const auto probe = Ref<FICursorBase>::Adopt(cursor.Clone(true));
    while (probe->Seek(kFromPresent, 1)) {
        probe->GetKey(key);
        if (key.Compare(key_) != 0) break;
        is_alone = false;
        auto entry = Ref<FIEntry>::Adopt(probe->GetEntry());
        cursor.Seek(kFromPresent, 1);
        if (entry && entry->Compare(*entry_) == 0) return entry;
    }
    FIValue name;
    FIValue saved_name;
    first->GetName(name);
    entry_->GetName(saved_name);
    return is_alone && name.Compare(saved_name) != 0 ? first : Ref<FIEntry>();
}
