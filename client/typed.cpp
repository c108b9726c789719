// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/typed.h"

#include <utility>

#include "case_state.h"
#include "fixtop/client/error.h"
#include "visit.h"

namespace fixtop::client {

namespace {

using Kind = NeutralMember::Kind;

constexpr std::string_view kObjectType = "Object(";

WrongType NoSuchObject(const Node& node, const std::string& text) {
    const std::string path = node.Path();
    return WrongType((path.empty() ? "the top" : path) + ": " + text);
}

// Empty for a node that is no object.
std::string ClassOf(const Node& node) {
    const std::string type = node.Type();
    if (!type.starts_with(kObjectType) || !type.ends_with(')')) return "";
    return type.substr(kObjectType.size(), type.size() - kObjectType.size() - 1);
}

const NeutralClass* OwnClass(const ClassTable& table, const Node& node) {
    return table.Find(ClassOf(node));
}

WrongType IsNoObject(const Node& node) {
    const std::string type = node.Type();
    return NoSuchObject(node, "is no object of a class" + (type.empty() ? "" : ", but " + type));
}

std::string Element(const std::string& name, int index) {
    return WrittenName(name) + '#' + std::to_string(index);
}

const char* KindText(Kind kind) {
    switch (kind) {
        case Kind::kValue:
            return "a value";
        case Kind::kObject:
            return "an object";
        default:
            return "a list of objects";
    }
}

}  // namespace

const Node& TypedPlace::ToNode() const {
    if (!node_) throw NotFound(absent_.path, absent_.found, {});
    return *node_;
}

Reading ValueNode::Read(const std::string& unit) const {
    return node_ ? node_->Read(unit) : Reading();
}

std::string ValueNode::Text() const {
    return node_ ? node_->Text() : "";
}

TypedObject::TypedObject(const Node& node)
    : TypedObject(node, {}, node.OpenCase()->Classes(), nullptr) {
    if (!class_) throw IsNoObject(node);
}

std::optional<TypedObject> TypedObject::Of(const Node& node) {
    if (ClassOf(node).empty()) return std::nullopt;
    TypedObject object(node, {}, node.OpenCase()->Classes(), nullptr);
    if (!object.class_) return std::nullopt;
    return object;
}

TypedObject::TypedObject(const TypedObject& object, std::string_view class_name)
    : TypedObject(object) {
    if (!node_ || IsA(class_name)) return;
    throw NoSuchObject(*node_, "is a " + class_->name + ", no " + std::string(class_name));
}

TypedObject::TypedObject(std::optional<Node> node, AbsentPath absent, Table table,
                         const NeutralClass* declared)
    : TypedPlace(std::move(node), std::move(absent)), table_(std::move(table)), class_(declared) {
    const NeutralClass* own = node_ ? OwnClass(*table_, *node_) : nullptr;
    if (own) class_ = own;
}

TypedMember TypedObject::Member(const std::string& name) const {
    switch (class_->Member(name).kind) {
        case Kind::kValue:
            return ValueOf(name);
        case Kind::kObject:
            return ObjectOf(name);
        default:
            return ArrayOf(name);
    }
}

ValueNode TypedObject::ValueOf(const std::string& name) const {
    MemberOf(name, Kind::kValue);
    const std::string step = WrittenName(name);
    auto node = NodeAt(step);
    AbsentPath absent = node ? AbsentPath() : AbsentAt(step);
    return {std::move(node), std::move(absent)};
}

TypedObject TypedObject::ObjectOf(const std::string& name) const {
    const NeutralMember& member = MemberOf(name, Kind::kObject);
    return Below(WrittenName(name), table_->Find(member.type_name));
}

TypedArray TypedObject::ArrayOf(const std::string& name) const {
    const NeutralMember& member = MemberOf(name, Kind::kArray);
    return {*this, name, table_->Find(member.type_name)};
}

// A path that ends in an attribute leads to no member.
std::optional<Node> TypedObject::NodeAt(const std::string& step) const {
    if (!node_) return std::nullopt;
    auto place = Whole([&] { return node_->Find(step); });
    if (!place || !place->attribute.empty()) return std::nullopt;
    return std::move(place->node);
}

AbsentPath TypedObject::AbsentAt(const std::string& step) const {
    if (!node_) return {JoinPath(absent_.path, step), absent_.found};
    const std::string path = node_->Path();
    return {JoinPath(path, step), path};
}

TypedObject TypedObject::Below(const std::string& step, const NeutralClass* declared) const {
    auto node = NodeAt(step);
    AbsentPath absent = node ? AbsentPath() : AbsentAt(step);
    return {std::move(node), std::move(absent), table_, declared};
}

const NeutralMember& TypedObject::MemberOf(const std::string& name, Kind kind) const {
    const NeutralMember& member = class_->Member(name);
    if (member.kind == kind) return member;
    throw WrongType(class_->name + '.' + name + " is " + KindText(member.kind) + ", not " +
                    KindText(kind));
}

int TypedArray::Count() const {
    int count = 0;
    for (Iterator at = begin(); at != end(); ++at) ++count;
    return count;
}

TypedObject TypedArray::At(int index) const {
    const std::string step = Element(name_, index);
    if (index >= 0) return object_.Below(step, declared_);
    return {std::nullopt, object_.AbsentAt(step), object_.table_, declared_};
}

TypedObject TypedArray::At(const std::string& key) const {
    const std::string step = WrittenName(name_) + '(' + WrittenKey(key) + ')';
    // No path can say that nothing tells an element from the others.
    if (key.empty()) return {std::nullopt, object_.AbsentAt(step), object_.table_, declared_};
    return object_.Below(step, declared_);
}

TypedArray::Iterator TypedArray::begin() const {
    return Iterator(*this, At(0));
}

// The elements of a list stand side by side.
TypedArray::Iterator& TypedArray::Iterator::operator++() {
    std::optional<Node> next = present_.ToNode();
    const bool more = Whole([&] { return next->Iterator().Next(); });
    if (!more || next->Name() != array_->name_) next.reset();
    present_ = TypedObject(std::move(next), {}, present_.table_, array_->declared_);
    return *this;
}

}  // namespace fixtop::client
