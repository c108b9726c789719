// SPDX-License-Identifier: Apache-2.0
// CCDMClassEntry: what it is and where it stands.

#include "mapping/nodes/class_entry.h"

#include "diagnostics/module_log.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"
#include "mapping/nodes/attribute_cursor.h"
#include "xml/message_text.h"

namespace fixtop {

CCDMClassEntry::CCDMClassEntry(CCDMClassContext& context, const CCDMAttribute& attribute,
                               const FacesChoice& choice)
    : context_(Ref<CCDMClassContext>::Share(&context)),
      attribute_(attribute),
      path_(context.PathOf(attribute)) {
    if (!context.Place().references.IsEmpty()) {
        faces_ = BindFaces(context.QueryFor(attribute, path_), choice);
    }
}

// An element may be of a class of its own, which stands in its path then.
CCDMClassEntry::CCDMClassEntry(CCDMClassContext& context, const CCDMAttribute& attribute,
                               AppFaces faces, int index)
    : context_(Ref<CCDMClassContext>::Share(&context)),
      attribute_(attribute),
      path_(context.PathOf(attribute)),
      faces_(std::move(faces)) {
    path_.index = index;
    const AppFace& face = faces_.First();
    if (!face.Node() || !face.names_class) return;
    if (!face.Node()->GetIterator()->GetVarText(kSubclassVariable, subclass_)) return;
    if (subclass_.IsNull() || subclass_.Length() == 0) {
        subclass_.Clear();
        return;
    }
    subclass_.ConvertTo(FIValue::kShortText);
    path_.className = subclass_.CStr();
    path_.classRecord = Library().FindClass(path_.className);
}

int CCDMClassEntry::Release() {
    const int left = --references_;
    if (left <= 0) delete this;
    return left;
}

void CCDMClassEntry::GetName(FIValue& out) {
    out.SetText(attribute_.name);
}

FIAttributeSource* CCDMClassEntry::GetAttributeSource() {
    AddRef();
    return this;
}

FIAttributeCursorBase* CCDMClassEntry::MakeCursor() {
    return CCDMAttrCursorBase::Make(*this);
}

Liveness* CCDMClassEntry::Life() const {
    const FIReference* node = AnyFace().Node();
    return node ? node->Life() : nullptr;
}

// One that is not bound yet would be gone with the other.
bool CCDMClassEntry::IsGone() const {
    const FIReference* first = ValueFace().Node();
    if (first && !first->IsGone()) return false;
    const AppFace& other = &ValueFace() == &faces_.primary ? faces_.secondary : faces_.primary;
    const FIReference* second = other.Node();
    return (first || second) && (!second || second->IsGone());
}

bool CCDMClassEntry::IsMissing() const {
    return faces_.IsEmpty() && !context_->Place().references.IsEmpty();
}

bool CCDMClassEntry::IsContainer() {
    return IsObject() && !IsMissing() && !IsGone();
}

bool CCDMClassEntry::HasKey() {
    if (!path_.classRecord || !IsContainer()) return true;
    const auto context = Ref<FIContext>::Adopt(GetContext());
    const auto keys = Ref<FICursorBase>::Adopt(context->MakeCursor(kKeyCursor));
    bool has_keys = false;
    for (bool on = keys->Seek(kFromFirst, 0); on; on = keys->Seek(kFromPresent, 1)) {
        has_keys = true;
        const auto key = Ref<FIEntry>::Adopt(keys->GetEntry());
        if (!static_cast<CCDMClassEntry&>(*key).IsMissing()) return true;
    }
    return !has_keys;
}

FIContext* CCDMClassEntry::GetContext() {
    if (!IsContainer()) return EmptyContext();
    if (!path_.classRecord) {
        const char* message = subclass_.IsNull() ? "Error, could not find class type %s\n"
                                                 : "Error, could not find subclass type %s\n";
        LogMessage(MessageText(message, std::string(path_.className).c_str()).c_str());
        return EmptyContext();
    }
    const ClassPlace& here = context_->Place();
    // The face that was asked for stays the first one all the way down.
    const AppReferences references =
        here.branch == BranchRequest::kSpec
            ? AppReferences{faces_.primary.SharedNode(), faces_.secondary.SharedNode()}
            : faces_.ByFace();
    auto below = Ref<CCDMClassContext>::Share(new Shielded<CCDMClassContext>(
        {here.library, path_.classRecord, &attribute_, Ref<CCDMClassEntry>::Share(this),
         here.branch, references}));
    return below.Detach();
}

bool CCDMClassEntry::Subscribe(void* owner, int kind, FICallback callback) {
    for (const AppFace* face : {&faces_.primary, &faces_.secondary}) {
        if (face->Node() && face->Node()->Subscribe(owner, kind, callback)) return true;
    }
    return false;
}

bool CCDMClassEntry::Unsubscribe(void* owner, int kind) {
    for (const AppFace* face : {&faces_.primary, &faces_.secondary}) {
        if (face->Node() && face->Node()->Unsubscribe(owner, kind)) return true;
    }
    return false;
}

// Whether the element is a node of its own below the array's: then its object tells it from others,
// wherever it stands in the list and whatever it is called. Else the elements are one node, told
// apart by their number.
bool CCDMClassEntry::IsOwnNode() const {
    FIReference* array = context_->Place().references.First();
    FIReference* own = faces_.First().Node();
    return own && array && own->Depth() > array->Depth();
}

bool CCDMClassEntry::IsOnSameNode(const CCDMClassEntry& other) const {
    FIReference* own = faces_.First().Node();
    FIReference* others = other.faces_.First().Node();
    if (!own || !others || !IsOwnNode()) return path_.index == other.path_.index;
    return own->ComparePlaces(*others) == 0;
}

// The one that stands at the same place of one tree, however the lists on the way have moved.
bool CCDMClassEntry::IsSamePlace(const CCDMClassEntry* one, const CCDMClassEntry* other) {
    while (one && other && one != other) {
        const bool is_same = one->path_.id == other->path_.id &&
                             one->path_.className == other->path_.className &&
                             one->IsOnSameNode(*other);
        if (!is_same) return false;
        one = one->context_->Place().parent.Get();
        other = other->context_->Place().parent.Get();
    }
    return one == other;
}

std::uint64_t CCDMClassEntry::ObjectNumber() const {
    const FIReference* first = faces_.First().Node();
    const FIReference* second = faces_.secondary.Node();
    const std::uint64_t number = first ? first->Place().ObjectNumber() : 0;
    return !second || second->Place().ObjectNumber() == number ? number : 0;
}

bool CCDMClassEntry::IsTracked() const {
    const FIReference* first = faces_.First().Node();
    return first && first->Place().IsTracked();
}

LivingNode::Mark CCDMClassEntry::MarkOf() const {
    const FIReference* first = faces_.First().Node();
    Mark mark = first ? first->Place().MarkOf() : Mark();
    if (!IsOwnNode()) mark.ordinal = path_.index;
    return mark;
}

bool CCDMClassEntry::StandsWith(const LivingNode& other) const {
    const auto* that = dynamic_cast<const CCDMClassEntry*>(&other);
    return that && &attribute_ == &that->attribute_ && IsOnSameNode(*that);
}

int CCDMClassEntry::Compare(FIEntry& other) {
    const int by_name = FIEntry::Compare(other);
    const auto* that = by_name == 0 ? dynamic_cast<CCDMClassEntry*>(&other) : nullptr;
    if (!that || IsOnSameNode(*that)) return by_name;
    const int by_index = (path_.index > that->path_.index) - (path_.index < that->path_.index);
    if (by_index != 0 || !IsOwnNode()) return by_index;
    return faces_.First().Node()->ComparePlaces(*that->faces_.First().Node());
}

}  // namespace fixtop
