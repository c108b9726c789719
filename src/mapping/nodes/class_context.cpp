// SPDX-License-Identifier: Apache-2.0
#include "mapping/nodes/class_context.h"

#include <cstring>

#include "framework/nodes/empties.h"
#include "mapping/nodes/class_cursor.h"
#include "mapping/nodes/class_entry.h"

namespace fixtop {

namespace {

bool IsPseudoName(const FIValue& key) {
    if (!key.IsText()) return false;
    return std::strcmp(key.CStr(), "!Input") == 0 || std::strcmp(key.CStr(), "!Output") == 0;
}

// False when the node has no key for the beginning of the path.
bool SplitKey(FIReference& node, const char* path, FIValue& key, const char** rest) {
    if (!node.Rebind()) return false;
    auto& it = static_cast<FIIterator&>(*node.GetIterator());
    const auto context = Ref<FIContext>::Adopt(it.EntryAt(it.Depth())->GetContext());
    const char* begin = path;
    do {
        context->GetKeyValue(begin, key, rest);
        if (key.IsNull() || !*rest || *rest <= begin) break;
        begin = *rest;
    } while (IsPseudoName(key) && *begin);
    return !key.IsNull() && !IsPseudoName(key);
}

}  // namespace

namespace {

// What is on no node of the application asks for no translators.
ClassWay* WayTo(const ClassPlace& place) {
    if (place.references.IsEmpty()) return nullptr;
    return place.parent ? place.parent->WayBelow() : &place.library->way;
}

}  // namespace

CCDMClassContext::CCDMClassContext(ClassPlace place)
    : place_(std::move(place)), way_(WayTo(place_)) {}

CCDMClassContext::~CCDMClassContext() = default;

FICursorBase* CCDMClassContext::MakeCursor(int kind) {
    if (place_.references.AreGone()) return EmptyCursor();
    if (kind != kKeyCursor) return CCDMClassCursorBase::Make(*this, CCDMAttrCol::Rows::kAll);
    const bool has_keys = place_.attribute && place_.attribute->isArray &&
                          !place_.attribute->keys.empty() && !place_.references.IsEmpty();
    return has_keys ? CCDMClassCursorBase::Make(*this, CCDMAttrCol::Rows::kKeys) : EmptyCursor();
}

void CCDMClassContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    for (const Ref<FIReference>& node : {place_.references.primary, place_.references.secondary}) {
        if (node && SplitKey(*node, path, out, rest)) return;
    }
    FIContext::GetKeyValue(path, out, rest);
}

const AncestorPath* CCDMClassContext::ParentPath() const {
    return place_.parent ? &place_.parent->Path() : nullptr;
}

AncestorPath CCDMClassContext::PathOf(const CCDMAttribute& attribute) const {
    AncestorPath path;
    path.className = attribute.typeName;
    path.id = attribute.name;
    path.parent = ParentPath();
    path.depth = path.parent == nullptr ? 1 : path.parent->depth + 1;
    if (attribute.type == CCDMAttrType::kObject) {
        path.classRecord = Library().FindClass(attribute.typeName);
    }
    return path;
}

FaceQuery CCDMClassContext::QueryFor(const CCDMAttribute& attribute,
                                     const AncestorPath& path) const {
    LastPlace* last = place_.parent ? &place_.parent->Last() : nullptr;
    return {Library(), attribute, path, place_.references, place_.branch, last};
}

FacesChoice CCDMClassContext::ChoiceFor(const CCDMAttribute& attribute) const {
    const ClassWay::Request request = {&attribute, place_.branch, bool{place_.references.primary},
                                       bool{place_.references.secondary}};
    const FacesChoice* known = way_ ? way_->Find(request) : nullptr;
    if (known) return *known;
    const AncestorPath path = PathOf(attribute);
    const FaceQuery query = QueryFor(attribute, path);
    const FacesChoice choice = ChooseTranslators(query);
    if (way_ && !DependsOnVariables(query)) way_->Keep(request, choice);
    return choice;
}

// In a pure tree the class alone says what is below, however deep it stands.
bool CCDMClassContext::IsSameList(const CCDMClassContext& other) const {
    if (this == &other) return true;
    const ClassPlace& that = other.place_;
    if (place_.library.Get() != that.library.Get() || place_.shown != that.shown) return false;
    if (place_.references.IsEmpty() || that.references.IsEmpty()) {
        return place_.references.IsEmpty() && that.references.IsEmpty();
    }
    return CCDMClassEntry::IsSamePlace(place_.parent.Get(), that.parent.Get());
}

}  // namespace fixtop
