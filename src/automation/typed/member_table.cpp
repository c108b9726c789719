// SPDX-License-Identifier: Apache-2.0
#include "automation/typed/member_table.h"

#include <algorithm>
#include <set>

namespace fixtop {

namespace {

using Kind = TypedMember::Kind;

constexpr std::string_view kObjectType = "Object(";

// The classes from which `from` takes attributes that its first superclass does not give: each
// superclass once, the higher first, and itself last.
void AppendWithSuperclasses(const CCDMClass& from, std::set<std::string>& seen,
                            std::vector<const CCDMClass*>& into) {
    if (!seen.insert(from.name).second) return;
    for (const std::string& each : from.superclasses) {
        if (const CCDMClass* found = from.library->FindClass(each)) {
            AppendWithSuperclasses(*found, seen, into);
        }
    }
    into.push_back(&from);
}

void NoteAncestors(const TypedInterface* base, std::set<std::string>& seen) {
    for (; base; base = base->base) seen.insert(base->class_name);
}

std::string QuantityOf(const CCDMClassLibrary& library, const CCDMAttribute& attribute) {
    CCDMUnitSource* units = library.units.Source();
    return units && attribute.quantity > 0 ? units->QuantityName(attribute.quantity) : "";
}

}  // namespace

const TypedMember* TypedInterface::Member(int number) const {
    if (number < 0 || number >= Count()) return nullptr;
    return number < first_number ? base->Member(number) : &members[number - first_number];
}

int TypedInterface::NumberOf(std::string_view member) const {
    const int found = base ? base->NumberOf(member) : -1;
    if (found >= 0) return found;
    const auto at = std::ranges::find(members, member, &TypedMember::name);
    return at == members.end() ? -1 : first_number + static_cast<int>(at - members.begin());
}

MemberTable::MemberTable(const CCDMClassLibrary& library) {
    for (const auto& each : library.classes) Generate(library, each.first);
}

const TypedInterface* MemberTable::Find(std::string_view class_name) const {
    const auto at = interfaces_.find(class_name);
    return at == interfaces_.end() ? nullptr : &at->second;
}

// Null when the library has no such class. One of which a superclass descends from it is handed out
// as far as it has come, and is no base there.
TypedInterface* MemberTable::Generate(const CCDMClassLibrary& library,
                                      const std::string& class_name) {
    const CCDMClass* record = library.FindClass(class_name);
    if (!record || class_name.empty()) return nullptr;
    const auto [at, is_new] = interfaces_.try_emplace(class_name);
    TypedInterface& made = at->second;
    if (!is_new) return &made;
    made.name = "I" + class_name;
    made.class_name = class_name;
    for (const std::string& each : record->superclasses) {
        const TypedInterface* base = Generate(library, each);
        if (base && base->is_made && !made.base) made.base = base;
    }
    if (made.base) made.first_number = made.base->Count();
    std::set<std::string> seen;
    NoteAncestors(made.base, seen);
    std::vector<const CCDMClass*> sources;
    AppendWithSuperclasses(*record, seen, sources);
    for (const CCDMClass* source : sources) Take(library, made, *source);
    made.is_made = true;
    ordered_.push_back(&made);
    return &made;
}

void MemberTable::Take(const CCDMClassLibrary& library, TypedInterface& into,
                       const CCDMClass& from) {
    for (const CCDMAttribute* each : from.attributes) {
        if (!each->name.empty() && into.NumberOf(each->name) < 0) TakeMember(library, into, *each);
    }
}

void MemberTable::TakeMember(const CCDMClassLibrary& library, TypedInterface& into,
                             const CCDMAttribute& attribute) {
    if (into.Count() == kMostMembers) {
        ++into.left_out;
        return;
    }
    const bool has_class =
        attribute.type == CCDMAttrType::kObject && library.FindClass(attribute.typeName) != nullptr;
    const Kind object = attribute.isArray ? Kind::kArray : Kind::kObject;
    into.members.push_back({attribute.name, has_class ? object : Kind::kValue, attribute.type,
                            attribute.typeName, attribute.isArray,
                            attribute.owner ? attribute.owner->name : into.class_name,
                            QuantityOf(library, attribute)});
}

std::string_view ClassOfTypeText(std::string_view type) {
    if (!type.starts_with(kObjectType) || !type.ends_with(')')) return {};
    return type.substr(kObjectType.size(), type.size() - kObjectType.size() - 1);
}

}  // namespace fixtop
