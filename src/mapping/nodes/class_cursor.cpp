// SPDX-License-Identifier: Apache-2.0
#include "mapping/nodes/class_cursor.h"

#include <algorithm>
#include <string_view>

#include "diagnostics/module_log.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/shield.h"
#include "mapping/nodes/class_entry.h"
#include "mapping/translators/reference_move.h"
#include "xml/message_text.h"

namespace fixtop {

// ---- the filter ----

bool CCDMAttrCol::IsKey(const CCDMAttribute& attribute) const {
    const auto& keys = context_.Place().attribute->keys;
    return std::any_of(keys.begin(), keys.end(), [&](const FIValue& key) {
        return key.IsText() && attribute.name == key.CStr();
    });
}

bool CCDMAttrCol::Accepts(const CCDMAttribute& attribute, FacesChoice& choice) const {
    if (rows_ == Rows::kKeys && !IsKey(attribute)) return false;
    choice = context_.ChoiceFor(attribute);
    return !choice.IsEmpty() || context_.Place().references.IsEmpty();
}

// ---- the elements of an array ----

void CCDMClassCursorBase::FaceWalk::Enter(const AppFace& face) {
    if (!face.Node() || !face.array) return;
    reference = face.SharedNode();
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
Ref<FIReference> CCDMClassCursorBase::FaceWalk::CopyOfNode() const {
    Ref<FIReference> copy = reference->UnboundCopy();
    if (copy) static_cast<FIIterator*>(copy->GetIterator())->OwnVariables(base_depth);
    return copy;
}

AppFace CCDMClassCursorBase::FaceWalk::AtElement(const AppFace& face, Use use) const {
    AppFace at = face;
    if (!walk) return at;
    Ref<FIReference> node;
    if (Stands()) node = use == Use::kKeep ? CopyOfNode() : reference;
    at.StandOn(std::move(node));
    at.names_class = face.names_class || walk->NamesClasses();
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

FIReference* CCDMClassCursorBase::Elements::Node() const {
    return primary.Stands() ? primary.reference.Get() : secondary.reference.Get();
}

// Elements that are nodes of their own are told apart by them, others by their number.
bool CCDMClassCursorBase::Elements::IsOnSame(const Elements& other) const {
    FIReference* own = Node();
    FIReference* others = other.Node();
    if (!own || !others || own->ComparePlaces(*others) != 0) return false;
    const int base = primary.Stands() ? primary.base_depth : secondary.base_depth;
    return own->Depth() > base || index == other.index;
}

CCDMClassCursorBase::Elements CCDMClassCursorBase::Elements::Copy() const {
    return {faces, primary.Copy(), secondary.Copy(), index};
}

// ---- the cursor ----

namespace {

std::string NamesFromTop(const AncestorPath& path) {
    const std::string id(path.id);
    return path.parent ? NamesFromTop(*path.parent) + '.' + id : id;
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
      choice_(other.choice_),
      stands_(other.stands_),
      is_lost_(other.is_lost_),
      revision_(other.revision_) {
    if (other.elements_) elements_ = std::make_unique<Elements>(other.elements_->Copy());
}

CCDMClassCursorBase* CCDMClassCursorBase::Make(CCDMClassContext& context, CCDMAttrCol::Rows rows) {
    auto* cursor = new Shielded<CCDMClassCursorBase>(context, rows);
    cursor->AddRef();
    return cursor;
}

const void* CCDMClassCursorBase::TypeId() const {
    static const char type_id = 0;
    return &type_id;
}

FICursorBase* CCDMClassCursorBase::Clone(bool deep) {
    CCDMClassCursorBase* clone = deep ? new Shielded<CCDMClassCursorBase>(*this) : this;
    clone->AddRef();
    return clone;
}

bool CCDMClassCursorBase::Enter(const CCDMAttribute& attribute) {
    elements_.reset();
    if (!filter_.Accepts(attribute, choice_)) return false;
    if (!attribute.isArray || attribute.arrayTranslators.empty() || choice_.IsEmpty()) return true;
    const AncestorPath path = context_->PathOf(attribute);
    elements_ = EnterElements(attribute, path);
    if (!elements_) return true;
    TellIfCut(path, elements_->primary);
    TellIfCut(path, elements_->secondary);
    return elements_->Stands() && HasKeys();
}

std::unique_ptr<CCDMClassCursorBase::Elements> CCDMClassCursorBase::EnterElements(
    const CCDMAttribute& attribute, const AncestorPath& path) const {
    auto elements = std::make_unique<Elements>();
    elements->faces = BindFaces(context_->QueryFor(attribute, path), choice_);
    if (!elements->faces.primary.array && !elements->faces.secondary.array) return nullptr;
    elements->primary.Enter(elements->faces.primary);
    elements->secondary.Enter(elements->faces.secondary);
    return elements;
}

void CCDMClassCursorBase::CatchUp() {
    Liveness* life = context_->Place().references.Life();
    if (is_lost_ || !stands_ || !life || life->IsCurrent(revision_)) return;
    revision_ = life->Revision();
    is_lost_ = context_->Place().references.AreGone();
    if (is_lost_ || !elements_) return;
    const CCDMAttribute& attribute = *walker_.Current();
    auto present = EnterElements(attribute, context_->PathOf(attribute));
    while (present && present->Stands() && !present->IsOnSame(*elements_)) present->Next();
    is_lost_ = !present || !present->Stands();
    if (!is_lost_) elements_ = std::move(present);
}

bool CCDMClassCursorBase::Stands() {
    CatchUp();
    return stands_ && !is_lost_;
}

bool CCDMClassCursorBase::StartFrom(int origin) {
    CatchUp();
    if (origin != kFromPresent) is_lost_ = context_->Place().references.AreGone();
    return !is_lost_;
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
    if (walker_.Current()->keys.empty() || EntryAt(*elements_, Use::kLook)->HasKey()) return true;
    Elements others = elements_->Copy();
    while (others.Next()) {
        if (EntryAt(others, Use::kLook)->HasKey()) return true;
    }
    return false;
}

Ref<CCDMClassEntry> CCDMClassCursorBase::EntryAt(const Elements& elements, Use use) const {
    AppFaces faces = {elements.primary.AtElement(elements.faces.primary, use),
                      elements.secondary.AtElement(elements.faces.secondary, use)};
    return Ref<CCDMClassEntry>::Share(new Shielded<CCDMClassEntry>(
        *context_, *walker_.Current(), std::move(faces), elements.index));
}

bool CCDMClassCursorBase::SettleForward(bool on_attribute) {
    while (on_attribute && !Enter(*walker_.Current())) on_attribute = walker_.Next();
    if (!on_attribute) elements_.reset();
    return Stand(on_attribute);
}

bool CCDMClassCursorBase::SettleBackward(bool on_attribute) {
    while (on_attribute && !Enter(*walker_.Current())) on_attribute = walker_.Prev();
    if (on_attribute && elements_) {
        while (elements_->Next()) {
        }
        elements_->Prev();
    }
    return Stand(on_attribute);
}

bool CCDMClassCursorBase::Stand(bool on_attribute) {
    if (Liveness* life = context_->Place().references.Life()) revision_ = life->Revision();
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
    if (!StartFrom(origin)) return false;
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
    if (!StartFrom(origin)) return false;
    bool on_attribute = origin == kFromPresent ? stands_ : walker_.First();
    const bool is_here =
        origin == kFromPresent && on_attribute && name && walker_.Current()->name == name;
    if (is_here) return true;
    const std::string_view wanted = name ? name : "";
    for (; on_attribute && name; on_attribute = walker_.Next()) {
        const CCDMAttribute& attribute = *walker_.Current();
        if (attribute.name == wanted && Enter(attribute)) return Stand(true);
    }
    elements_.reset();
    return stands_ = false;
}

bool CCDMClassCursorBase::AtBegin() {
    if (Stands() && elements_ && elements_->index > 0) return false;
    CCDMClassCursorBase first(*context_, filter_.Listed());
    return !first.First() || (Stands() && IsOnSame(first));
}

bool CCDMClassCursorBase::IsOnSame(const CCDMClassCursorBase& other) const {
    if (stands_ != other.stands_) return false;
    if (!stands_) return true;
    const int index = elements_ ? elements_->index : 0;
    const int other_index = other.elements_ ? other.elements_->index : 0;
    return index == other_index && walker_.Current() == other.walker_.Current();
}

bool CCDMClassCursorBase::HasLostWith(const CCDMClassCursorBase& other) const {
    const bool in_same = is_lost_ == other.is_lost_ && walker_.Current() == other.walker_.Current();
    if (!in_same || !elements_ || !other.elements_)
        return in_same && !elements_ == !other.elements_;
    return elements_->IsOnSame(*other.elements_);
}

// Which comes first is found by walking, since only positions side by side are compared often.
int CCDMClassCursorBase::Compare(FICursorPosition& other) {
    if (&other == this) return 0;
    if (other.TypeId() != TypeId()) return kNotComparable;
    auto& that = static_cast<CCDMClassCursorBase&>(other);
    if (filter_.Listed() != that.filter_.Listed() || !context_->IsSameList(*that.context_)) {
        return kNotComparable;
    }
    const bool stands = Stands();
    const bool that_stands = that.Stands();
    if (is_lost_ || that.is_lost_) return HasLostWith(that) ? 0 : kNotComparable;
    if (IsOnSame(that)) return 0;
    if (stands != that_stands) return stands ? -1 : 1;
    const CCDMAttribute* own = walker_.Current();
    const CCDMAttribute* others = that.walker_.Current();
    if (own == others) return elements_->index < that.elements_->index ? -1 : 1;
    CCDMAttributeWalker walker(*context_->Place().shown);
    walker.First();
    while (walker.Current() != own && walker.Current() != others) walker.Next();
    return walker.Current() == own ? -1 : 1;
}

void CCDMClassCursorBase::GetKey(FIValue& out) {
    if (Stands()) {
        out.SetText(walker_.Current()->name);
    } else {
        out.Clear();
    }
}

FIEntry* CCDMClassCursorBase::GetEntry() {
    if (!Stands()) return nullptr;
    if (elements_) return EntryAt(*elements_, Use::kKeep).Detach();
    auto* entry = new Shielded<CCDMClassEntry>(*context_, *walker_.Current(), choice_);
    entry->AddRef();
    return entry;
}

}  // namespace fixtop
