// SPDX-License-Identifier: Apache-2.0
#include "objects/class_members.h"

#include "dispatch/text.h"
#include "fixtop/client/case.h"

namespace fixtop::hovex {

namespace {

constexpr std::string_view kObject = "Object(";

std::vector<ClassMember> MembersOf(const client::Node& of_class) {
    std::vector<ClassMember> members;
    of_class.ForEachChild([&](const client::Child& child) {
        members.push_back({child.name, child.node.Attribute("array").AsInt() != 0});
        return true;
    });
    return members;
}

}  // namespace

const ClassMembers& ClassMembers::The() {
    static const ClassMembers members;
    return members;
}

ClassMembers::ClassMembers() {
    std::string warning;
    const client::Node dictionary = client::OpenDictionary({}, warning);
    dictionary.At("Classes").ForEachChild([this](const client::Child& child) {
        classes_[child.name] = MembersOf(child.node);
        return true;
    });
}

const ClassMember* ClassMembers::Find(const std::string& class_name,
                                      const std::string& member) const {
    const ClassMember* alike = nullptr;
    const auto found = classes_.find(class_name);
    if (found == classes_.end()) return nullptr;
    for (const ClassMember& each : found->second) {
        if (each.name == member) return &each;
        if (!alike && SameName(each.name, member)) alike = &each;
    }
    return alike;
}

std::string ClassOfType(const std::string& type) {
    if (!type.starts_with(kObject) || !type.ends_with(')')) return "";
    return type.substr(kObject.size(), type.size() - kObject.size() - 1);
}

}  // namespace fixtop::hovex
