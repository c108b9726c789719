#include "mapping/class_cursor.h"

#include <algorithm>

#include "diagnostics/error_log.h"
#include "mapping/class_entry.h"
#include "mapping/reference_move.h"
#include "model/message_text.h"

// ---- the filter ----

bool CCDMAttrCol::IsKey(const CCDMAttribute& attribute) const {
    const auto& keys = context_.Place().attribute->keys;
    return std::any_of(keys.begin(), keys.end(), [&](const FIValue& key) {
        return key.Compare(FIValue(attribute.name.c_str())) == 0;
    });
}

bool CCDMAttrCol::Accepts(const CCDMAttribute& attribute) const {
    if (rows_ == Rows::kKeys && !IsKey(attribute)) return false;
    if (context_.Place().references.IsEmpty()) return true;
    return HasFace(context_.QueryFor(attribute, context_.PathOf(attribute)));
}

// ---- the elements of an array ----

void CCDMClassCursorBase::FaceWalk::Enter(const AppFace& face) {
    if (!face.reference || !face.array) return;
    reference = face.reference;
    base_depth = reference->Depth();
    walk = face.array->MakeIterator(*reference);
}

void CCDMClassCursorBase::FaceWalk::Next() {
    if (!walk) return;
    if (walk->HasMore()) {
        walk->Next();
    } else {
        ++past_end;
    }
}

void CCDMClassCursorBase::FaceWalk::Prev() {
    if (!walk) return;
    if (past_end > 0) {
        --past_end;
    } else {
        walk->Prev();
    }
}

CCDMClassCursorBase::FaceWalk CCDMClassCursorBase::FaceWalk::Copy() const {
    FaceWalk copy;
    copy.base_depth = base_depth;
    copy.past_end = past_end;
    if (walk) copy.reference = reference->UnboundCopy();
    if (copy.reference) copy.walk = walk->Clone(*copy.reference);
    return copy;
}

// Later steps of the walk set variables anew, which must not reach the element.
AppFace CCDMClassCursorBase::FaceWalk::AtElement(const AppFace& face) const {
    AppFace at = face;
    if (!walk) return at;
    at.reference = Stands() ? reference->UnboundCopy() : Ref<FIReference>();
    at.names_class = face.names_class || walk->NamesClasses();
    if (at.reference) {
        static_cast<FIIterator*>(at.reference->GetIterator())->OwnVariables(base_depth);
    }
    return at;
}

bool CCDMClassCursorBase::Elements::Next() {
    primary.Next();
    secondary.Next();
    ++index;
    return Stands();
}

bool CCDMClassCursorBase::Elements::Prev() {
    if (index == 0) return false;
    primary.Prev();
    secondary.Prev();
    --index;
    return true;
}

CCDMClassCursorBase::Elements CCDMClassCursorBase::Elements::Copy() const {
    return {faces, primary.Copy(), secondary.Copy(), index};
}

// ---- the cursor ----

namespace {

std::string NamesFromTop(const AncestorPath& path) {
    return path.parent ? NamesFromTop(*path.parent) + '.' + path.id : path.id;
}

}  // namespace

CCDMClassCursorBase::CCDMClassCursorBase(CCDMClassContext& context, CCDMAttrCol::Rows rows)
    : context_(Ref<CCDMClassContext>::Share(&context)),
      filter_(context, rows),
      walker_(*context.Place().shown) {}

CCDMClassCursorBase::CCDMClassCursorBase(const CCDMClassCursorBase& other)
    : CountedFromZero(),
      context_(other.context_),
      filter_(other.filter_),
      walker_(other.walker_),
      stands_(other.stands_) {
    if (other.elements_) elements_ = std::make_unique<Elements>(other.elements_->Copy());
}

CCDMClassCursorBase* CCDMClassCursorBase::Make(CCDMClassContext& context, CCDMAttrCol::Rows rows) {
    auto* cursor = new CCDMClassCursorBase(context, rows);
    cursor->AddRef();
    return cursor;
}

const void* CCDMClassCursorBase::TypeId() const {
    static const char type_id = 0;
    return &type_id;
}

CCDMClassCursorBase* CCDMClassCursorBase::Clone(bool deep) {
    CCDMClassCursorBase* clone = deep ? new CCDMClassCursorBase(*this) : this;
    clone->AddRef();
    return clone;
}

bool CCDMClassCursorBase::Enter(const CCDMAttribute& attribute) {
    elements_.reset();
    if (!filter_.Accepts(attribute)) return false;
    if (!attribute.isArray || attribute.arrayTranslators.empty() ||
        context_->Place().references.IsEmpty()) {
        return true;
    }
    const AncestorPath path = context_->PathOf(attribute);
    auto elements = std::make_unique<Elements>();
    elements->faces = ChooseFaces(context_->QueryFor(attribute, path));
    if (!elements->faces.primary.array && !elements->faces.secondary.array) return true;
    elements->primary.Enter(elements->faces.primary);
    elements->secondary.Enter(elements->faces.secondary);
    TellIfCut(path, elements->primary);
    TellIfCut(path, elements->secondary);
    elements_ = std::move(elements);
    return elements_->Stands() && HasKeys();
}

// Once for each list, since it is walked again with every read.
void CCDMClassCursorBase::TellIfCut(const AncestorPath& path, const FaceWalk& walk) const {
    if (!walk.walk) return;
    const CDTBase::Count count = walk.walk->Counted();
    if (count.there <= count.walked) return;
    const Ref<FIReference> node = walk.reference->UnboundCopy();
    if (!node) return;
    PopTo(*node, walk.base_depth);
    FIValue place;
    node->GetPath(place);
    const std::string list = NamesFromTop(path) + " on " + place.ToText();
    if (!context_->Place().library->IsNew(list)) return;
    LogAndTell(MessageText("List %s: %d elements, %d of them are shown", list.c_str(), count.there,
                           count.walked)
                   .c_str());
}

// One element with a key is enough to show them all.
bool CCDMClassCursorBase::HasKeys() const {
    if (walker_.Current()->keys.empty() || EntryAt(*elements_)->HasKey()) return true;
    Elements others = elements_->Copy();
    while (others.Next()) {
        if (EntryAt(others)->HasKey()) return true;
    }
    return false;
}

Ref<CCDMClassEntry> CCDMClassCursorBase::EntryAt(const Elements& elements) const {
    AppFaces faces = elements.faces;
    faces.primary = elements.primary.AtElement(elements.faces.primary);
    faces.secondary = elements.secondary.AtElement(elements.faces.secondary);
    return Ref<CCDMClassEntry>::Share(
        new CCDMClassEntry(*context_, *walker_.Current(), std::move(faces), elements.index));
}

bool CCDMClassCursorBase::SettleForward(bool on_attribute) {
    while (on_attribute && !Enter(*walker_.Current())) on_attribute = walker_.Next();
    if (!on_attribute) elements_.reset();
    return stands_ = on_attribute;
}

bool CCDMClassCursorBase::SettleBackward(bool on_attribute) {
    while (on_attribute && !Enter(*walker_.Current())) on_attribute = walker_.Prev();
    if (on_attribute && elements_) {
        while (elements_->Next()) {
        }
        elements_->Prev();
    }
    return stands_ = on_attribute;
}

bool CCDMClassCursorBase::First() {
    return SettleForward(walker_.First());
}

bool CCDMClassCursorBase::Next() {
    if (!stands_) return false;
    if (elements_ && elements_->Next()) return true;
    return SettleForward(walker_.Next());
}

bool CCDMClassCursorBase::Last() {
    return SettleBackward(walker_.Last());
}

bool CCDMClassCursorBase::Prev() {
    if (!stands_) return Last();
    if (elements_ && elements_->Prev()) return true;
    if (SettleBackward(walker_.Prev())) return true;
    First();
    return false;
}

bool CCDMClassCursorBase::Seek(int origin, int delta) {
    if (origin == kFromFirst) First();
    if (origin == kFromEnd) {
        elements_.reset();
        stands_ = false;
    }
    for (; delta > 0 && stands_; --delta) Next();
    for (; delta < 0 && Prev(); ++delta) {
    }
    return stands_ && delta == 0;
}

// From the present element on, or among all.
bool CCDMClassCursorBase::SeekName(int origin, const char* name) {
    bool on_attribute = origin == kFromPresent ? stands_ : walker_.First();
    const bool is_here =
        origin == kFromPresent && on_attribute && name && walker_.Current()->name == name;
    if (is_here) return true;
    for (; on_attribute && name; on_attribute = walker_.Next()) {
        if (walker_.Current()->name == name && Enter(*walker_.Current())) return stands_ = true;
    }
    elements_.reset();
    return stands_ = false;
}

bool CCDMClassCursorBase::AtBegin() {
    if (stands_ && elements_ && elements_->index > 0) return false;
    CCDMClassCursorBase first(*context_, filter_.Listed());
    return !first.First() || (stands_ && IsOnSame(first));
}

bool CCDMClassCursorBase::IsOnSame(const CCDMClassCursorBase& other) const {
    if (stands_ != other.stands_) return false;
    if (!stands_) return true;
    const int index = elements_ ? elements_->index : 0;
    const int other_index = other.elements_ ? other.elements_->index : 0;
    return index == other_index && walker_.Current() == other.walker_.Current();
}

// Which comes first is found by walking, since only positions side by side are compared often.
int CCDMClassCursorBase::Compare(FICursorPosition& other) {
    if (&other == this) return 0;
    if (other.TypeId() != TypeId()) return kNotComparable;
    auto& that = static_cast<CCDMClassCursorBase&>(other);
    if (filter_.Listed() != that.filter_.Listed() || !context_->IsSameList(*that.context_)) {
        return kNotComparable;
    }
    if (IsOnSame(that)) return 0;
    if (stands_ != that.stands_) return stands_ ? -1 : 1;
    const CCDMAttribute* own = walker_.Current();
    const CCDMAttribute* others = that.walker_.Current();
    if (own == others) return elements_->index < that.elements_->index ? -1 : 1;
    CCDMAttributeWalker walker(*context_->Place().shown);
    walker.First();
    while (walker.Current() != own && walker.Current() != others) walker.Next();
    return walker.Current() == own ? -1 : 1;
}

void CCDMClassCursorBase::GetKey(FIValue& out) {
    if (stands_) {
        out.SetText(walker_.Current()->name);
    } else {
        out.Clear();
    }
}

FIEntry* CCDMClassCursorBase::GetEntry() {
    if (!stands_) return nullptr;
    if (elements_) return EntryAt(*elements_).Detach();
    auto* entry = new CCDMClassEntry(*context_, *walker_.Current());
    entry->AddRef();
    return entry;
}
