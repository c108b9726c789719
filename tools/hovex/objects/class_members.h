// SPDX-License-Identifier: Apache-2.0
#pragma once

// ClassMembers: the attributes of the neutral classes by name, those of the superclasses as well.

#include <map>
#include <string>
#include <vector>

namespace fixtop::hovex {

struct ClassMember {
    std::string name;
    bool is_list = false;
};

class ClassMembers {
 public:
    // Of the shipped class library, which is read at the first call. Throws client::CaseError.
    static const ClassMembers& The();

    bool Knows(const std::string& class_name) const { return classes_.count(class_name) != 0; }
    // Case of letters does not count, but a name that is the same in this too goes first. Null when
    // the class has no such member.
    const ClassMember* Find(const std::string& class_name, const std::string& member) const;

 private:
    ClassMembers();

    std::map<std::string, std::vector<ClassMember>> classes_;
};

// The class of a node whose type is "Object(QSIMaterialStream)"; empty for other types.
std::string ClassOfType(const std::string& type);

}  // namespace fixtop::hovex
