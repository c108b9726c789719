// SPDX-License-Identifier: Apache-2.0
#pragma once

// MemberTable: the typed interfaces of the neutral classes, one a class, and their members. From it
// come the type library of the system, the object that poses as its interfaces, the header for
// clients in C++ and the typed members of scripts, so that all have the same numbers.
//
// An interface has the name of its class behind an "I", and its one base is that of the first
// superclass that the library has. Its own members are the attributes of the other superclasses,
// with theirs, and those of the class, in the order of the files; an attribute that is declared
// twice is one member. Members are numbered over the bases, the farthest first, and an interface
// has at most kMostMembers: what a class declares beyond has none. What a class declares again that
// a base has stays the member of the base. A class or an attribute without a name has none.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "model/class_library.h"

namespace fixtop {

struct TypedMember {
    enum class Kind : unsigned char {
        kValue,   // leads to a node without a class: a number, a text, a choice
        kObject,  // to a node of a class
        kArray,   // to a list of nodes of a class
    };
    std::string name;
    Kind kind = Kind::kValue;
    // As the class library says it. That of objects has `type_name`, their class, and that of
    // enumerations the enumeration; the class of a kValue may be missing in the library.
    CCDMAttrType type = CCDMAttrType::kNone;
    std::string type_name;
    bool is_array = false;
    // The class that declares it.
    std::string owner;
    // By name; empty for none, and where the library was read without units.
    std::string quantity;
};

struct TypedInterface {
    std::string name;  // "I" and the class
    std::string class_name;
    // Lent by the table; null where no superclass has one.
    const TypedInterface* base = nullptr;
    // The number of its first own member: so many have its bases.
    int first_number = 0;
    std::vector<TypedMember> members;
    // Attributes of the class that go beyond the limit.
    int left_out = 0;

    int Count() const { return first_number + static_cast<int>(members.size()); }
    // The name of the interface over a list of such objects.
    std::string ArrayName() const { return name + "Array"; }
    // Of the bases as well; null when there is none of this number.
    const TypedMember* Member(int number) const;
    // -1 when there is none of this name, which is compared with the case of letters.
    int NumberOf(std::string_view member) const;
    // All its members stand; always so where the table shows it.
    bool is_made = false;
};

class MemberTable {
 public:
    static constexpr int kMostMembers = 100;

    // Reads the library, which is not needed any more afterwards.
    explicit MemberTable(const CCDMClassLibrary& library);
    MemberTable(const MemberTable&) = delete;
    MemberTable& operator=(const MemberTable&) = delete;

    // By the name of the class; null for none.
    const TypedInterface* Find(std::string_view class_name) const;
    // By the names of the classes, but each behind its base. Lent.
    const std::vector<const TypedInterface*>& Interfaces() const { return ordered_; }

 private:
    TypedInterface* Generate(const CCDMClassLibrary& library, const std::string& class_name);
    void Take(const CCDMClassLibrary& library, TypedInterface& into, const CCDMClass& from);
    void TakeMember(const CCDMClassLibrary& library, TypedInterface& into,
                    const CCDMAttribute& attribute);

    std::map<std::string, TypedInterface, std::less<>> interfaces_;
    std::vector<const TypedInterface*> ordered_;
};

// The class of a node whose attribute "type" has this text, "Object(QSIMaterialStream)"; empty for
// a node that has none.
std::string_view ClassOfTypeText(std::string_view type);

}  // namespace fixtop
