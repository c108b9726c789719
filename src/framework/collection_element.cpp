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
    entry = Ref<FIEntry>::Adopt(found->GetEntry());
    if (!entry || entry.Get() == EmptyEntry()) {
        entry.Reset();
        return false;
    }
    cursor = std::move(found);
    return true;
}
