// SPDX-License-Identifier: Apache-2.0
#pragma once

// Objects of the neutral view by the members of their class:
//
//     const TypedObject stream(plant.Neutral().At("Flowsheet.Stream(Raw Gas)"));
//     stream.ValueOf("Temperature").Number("C");
//     for (const auto& part : stream.ObjectOf("Composition").ArrayOf("Component")) ...
//
// A member for which the case has nothing is absent, which is no error: it is false, its members
// are absent too, and its list is empty. A name that the class does not have is one: NoMember. All
// are values, and keep the case open.

#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "fixtop/client/class_table.h"
#include "fixtop/client/node.h"

namespace fixtop::client {

// Where there is no node: a path from the top, and the part of it that leads somewhere.
struct AbsentPath {
    std::string path;
    std::string found;
};

// A node, or the place where there is none.
class TypedPlace {
 public:
    explicit operator bool() const { return node_.has_value(); }
    // Throws NotFound when it is absent.
    const Node& ToNode() const;

 protected:
    TypedPlace(std::optional<Node> node, AbsentPath absent)
        : node_(std::move(node)), absent_(std::move(absent)) {}

    std::optional<Node> node_;
    AbsentPath absent_;
};

// A number, a text, a choice.
class ValueNode : public TypedPlace {
 public:
    ValueNode(std::optional<Node> node, AbsentPath absent)
        : TypedPlace(std::move(node), std::move(absent)) {}

    // As Node; of an absent one NULL, without unit and status.
    Reading Read(const std::string& unit = "") const;
    // As Node; throws NotFound when it is absent.
    double Number(const std::string& unit = "") const { return ToNode().Number(unit); }
    // Empty for none.
    std::string Text() const;
    // As Node; throws NotFound when it is absent.
    void Store(double number, const std::string& unit = "") const { ToNode().Store(number, unit); }
    void Store(const std::string& text, const std::string& unit = "") const {
        ToNode().Store(text, unit);
    }
};

class TypedArray;
class TypedObject;
using TypedMember = std::variant<ValueNode, TypedObject, TypedArray>;

class TypedObject : public TypedPlace {
 public:
    // Throws WrongType when the node is no object of a class of its neutral view.
    explicit TypedObject(const Node& node);
    // Nothing then.
    static std::optional<TypedObject> Of(const Node& node);

    // Its own, which may descend from the one that a member declares; that of an absent one is the
    // declared one.
    const NeutralClass& Class() const { return *class_; }
    bool IsA(std::string_view class_name) const { return class_->IsA(class_name); }

    // All of these throw NoMember.
    TypedMember Member(const std::string& name) const;
    // These throw WrongType when the member is of another kind.
    ValueNode ValueOf(const std::string& name) const;
    TypedObject ObjectOf(const std::string& name) const;
    TypedArray ArrayOf(const std::string& name) const;

 protected:
    // For a class of its own: throws WrongType unless the object is of that class, or absent.
    TypedObject(const TypedObject& object, std::string_view class_name);

 private:
    friend class TypedArray;
    using Table = std::shared_ptr<const ClassTable>;

    TypedObject(std::optional<Node> node, AbsentPath absent, Table table,
                const NeutralClass* declared);
    // As the step of a path leads there.
    std::optional<Node> NodeAt(const std::string& step) const;
    AbsentPath AbsentAt(const std::string& step) const;
    TypedObject Below(const std::string& step, const NeutralClass* declared) const;
    const NeutralMember& MemberOf(const std::string& name, NeutralMember::Kind kind) const;

    Table table_;
    const NeutralClass* class_;
};

// The elements of a list of objects, in the order of the tree.
class TypedArray {
 public:
    class Iterator;

    // Of its elements, as the member declares it.
    const NeutralClass& Class() const { return *declared_; }
    // Counts them each time.
    int Count() const;
    // From 0; absent when there is none.
    TypedObject At(int index) const;
    // By what tells it from the others; absent when there is none.
    TypedObject At(const std::string& key) const;
    TypedObject operator[](int index) const { return At(index); }
    Iterator begin() const;
    std::default_sentinel_t end() const { return {}; }

 private:
    friend class TypedObject;
    TypedArray(TypedObject object, std::string name, const NeutralClass* declared)
        : object_(std::move(object)), name_(std::move(name)), declared_(declared) {}

    TypedObject object_;
    std::string name_;
    const NeutralClass* declared_;
};

// Moves from element to element; goes with the array of which it is.
class TypedArray::Iterator {
 public:
    using value_type = TypedObject;
    using difference_type = std::ptrdiff_t;

    const TypedObject& operator*() const { return present_; }
    const TypedObject* operator->() const { return &present_; }
    Iterator& operator++();
    void operator++(int) { ++*this; }
    bool operator==(std::default_sentinel_t) const { return !present_; }

 private:
    friend class TypedArray;
    Iterator(const TypedArray& array, TypedObject first)
        : array_(&array), present_(std::move(first)) {}

    const TypedArray* array_;
    TypedObject present_;
};

}  // namespace fixtop::client
