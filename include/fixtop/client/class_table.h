// SPDX-License-Identifier: Apache-2.0
#pragma once

// ClassTable: what members the classes of the neutral view have, as the class library says it.

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fixtop/client/case.h"

namespace fixtop::client {

struct NeutralMember {
    enum class Kind {
        kValue = 1,   // a number, a text, a choice
        kObject = 2,  // an object of a class
        kArray = 3,   // a list of such objects
    };
    Kind kind = Kind::kValue;
    int number = 0;         // over the bases, the farthest first, from 0
    std::string name;       // of the node below the object, and of each element of a list
    std::string owner;      // the class that declares it
    std::string type;       // "Real", "String", "Integer", "Boolean", "Enumeration", "Object"
    std::string type_name;  // the class of an object, the enumeration of a choice
    std::string quantity;   // "Temperature"; empty for none
};

// "Real", "Object(QSIPhaseFlow)", as nodes have it in their attribute "type".
std::string TypeText(const NeutralMember& member);

struct NeutralClass {
    std::string name;
    std::string interface_name;          // "I" and the name
    const NeutralClass* base = nullptr;  // lent by the table
    int first_number = 0;                // of its own members: so many have its bases
    std::vector<NeutralMember> members;  // its own

    int Count() const { return first_number + static_cast<int>(members.size()); }
    // Whether it is this class, or has it among its bases.
    bool IsA(std::string_view class_name) const;
    // Of the bases as well; null when there is none.
    const NeutralMember* Find(std::string_view member) const;
    const NeutralMember* Find(int number) const;
    // Throws NoMember.
    const NeutralMember& Member(const std::string& member) const;
    // With those of the bases, by number.
    std::vector<NeutralMember> AllMembers() const;
};

class ClassTable {
 public:
    // Reads a class library, and the units for the quantities. Throws CaseError.
    static std::shared_ptr<const ClassTable> Read(const ModelFiles& files = {});
    // The same of files that were read before: leaves the module's log where it is led.
    static std::shared_ptr<const ClassTable> ReadAgain(const ModelFiles& files);

    ClassTable() = default;
    ClassTable(const ClassTable&) = delete;
    ClassTable& operator=(const ClassTable&) = delete;

    // Null when there is no such class. Lent, as all that the table hands out.
    const NeutralClass* Find(std::string_view class_name) const;
    // Each behind its base.
    const std::vector<const NeutralClass*>& Classes() const { return ordered_; }

 private:
    NeutralClass& Add(const std::string& class_name);

    std::map<std::string, NeutralClass, std::less<>> classes_;
    std::vector<const NeutralClass*> ordered_;
};

}  // namespace fixtop::client
