// SPDX-License-Identifier: Apache-2.0
#include "class_header.h"

#include <map>
#include <ostream>
#include <set>
#include <utility>
#include <vector>

#include "cpp_names.h"

namespace fixtop::tools {

namespace {

using client::NeutralClass;
using client::NeutralMember;
using Kind = NeutralMember::Kind;

constexpr char kBeginning[] =
    R"(// SPDX-License-Identifier: Apache-2.0
#pragma once

// The classes of the neutral view as classes of C++, made from the class library by the build:
//
//     const QSISimulation simulation(plant.Neutral());
//     for (const auto& stream : simulation.Flowsheet().Stream())
//         std::cout << stream.Name().Text() << ' ' << stream.Temperature().Number("C") << '\n';
//
// Each has the functions of TypedObject and one for each member of its class, by the name of the
// member; fixtop/client/typed.h tells what they answer. Making one of a node, or of an object,
// throws WrongType when that is of another class; As<QSICompressor>(unit_operation) asks.
//
// A name that is no identifier has an underscore for what an identifier can't have, and an x ahead of
// what is no letter; one that C++, TypedObject or the class itself has already an underscore behind it;
// one that is taken a number.

#include <string_view>

#include "fixtop/client/typed_list.h"

)";

// What a generated class says itself, or has from its base.
const std::set<std::string> kOwnNames = {
    "ArrayOf",    "As",        "Class",       "IsA",        "Member",    "Node",    "ObjectOf",
    "ToNode",     "TypedList", "TypedObject", "TypedPlace", "ValueNode", "ValueOf", "absent_path_",
    "class_name", "fixtop",    "kClass",      "node",       "node_",     "object",  "std"};

class Header {
 public:
    Header(std::ostream& out, const client::ClassTable& table, std::string name_space)
        : out_(out), table_(table), name_space_(std::move(name_space)) {
        CppNames names(nullptr, kOwnNames);
        for (const NeutralClass* each : table.Classes())
            class_names_[each] = names.Take(each->name);
        for (const NeutralClass* each : table.Classes()) NameMembers(*each);
    }

    void Write() {
        out_ << kBeginning << "namespace " << name_space_ << " {\n\n";
        for (const char* name : {"Node", "TypedList", "TypedObject", "ValueNode"}) {
            out_ << "using ::fixtop::client::" << name << ";\n";
        }
        out_ << '\n';
        for (const NeutralClass* each : table_.Classes()) {
            out_ << "class " << class_names_.at(each) << ";\n";
        }
        for (const NeutralClass* each : table_.Classes()) WriteClass(*each);
        for (const NeutralClass* each : table_.Classes()) WriteBodies(*each);
        out_ << "\n}  // namespace " << name_space_ << '\n';
    }

 private:
    // A function of a base would be hidden by one of its name.
    void NameMembers(const NeutralClass& each) {
        std::set<std::string> reserved = kOwnNames;
        reserved.insert(class_names_.at(&each));
        const CppNames* outer = each.base ? &scopes_.at(each.base) : nullptr;
        CppNames& names = scopes_.try_emplace(&each, outer, std::move(reserved)).first->second;
        for (const NeutralMember& member : each.members) {
            const std::string name = names.Take(member.name);
            members_[&member] = name;
            functions_.insert(name);
        }
    }

    // Where a function may have the name of the class, that alone would mean the function.
    std::string TypeOf(const NeutralClass* each) const {
        if (!each) return "TypedObject";
        const std::string& name = class_names_.at(each);
        return functions_.contains(name) ? "::" + name_space_ + "::" + name : name;
    }

    std::string ResultOf(const NeutralMember& member) const {
        if (member.kind == Kind::kValue) return "ValueNode";
        const std::string type = TypeOf(table_.Find(member.type_name));
        return member.kind == Kind::kObject ? type : "TypedList<" + type + '>';
    }

    void WriteClass(const NeutralClass& each) {
        const std::string& name = class_names_.at(&each);
        const std::string base = TypeOf(each.base);
        out_ << "\nclass " << name << " : public " << base << " {\n public:\n"
             << "    static constexpr char kClass[] = " << Literal(each.name) << ";\n"
             << "    explicit " << name << "(const Node& node) : " << name
             << "(TypedObject(node)) {}\n"
             << "    explicit " << name << "(const TypedObject& object) : " << name
             << "(object, kClass) {}\n";
        for (const NeutralMember& member : each.members) WriteMember(member);
        out_ << "\n protected:\n    " << name
             << "(const TypedObject& object, std::string_view class_name)\n        : " << base
             << "(object, class_name) {}\n};\n";
    }

    void WriteMember(const NeutralMember& member) {
        out_ << "\n    // " << InComment(TypeText(member));
        if (!member.quantity.empty()) out_ << ", quantity " << InComment(member.quantity);
        out_ << "; declared by " << InComment(member.owner) << ", member " << member.number
             << ".\n    " << ResultOf(member) << ' ' << members_.at(&member) << "() const";
        if (member.kind == Kind::kValue) {
            out_ << " { return ValueOf(" << Literal(member.name) << "); }\n";
        } else {
            out_ << ";\n";
        }
    }

    // Of what needs the classes whole.
    void WriteBodies(const NeutralClass& each) {
        for (const NeutralMember& member : each.members) {
            if (member.kind == Kind::kValue) continue;
            const std::string result = ResultOf(member);
            out_ << "\ninline " << result << ' ' << class_names_.at(&each)
                 << "::" << members_.at(&member) << "() const {\n    return " << result << '('
                 << (member.kind == Kind::kArray ? "ArrayOf" : "ObjectOf") << '('
                 << Literal(member.name) << "));\n}\n";
        }
    }

    std::ostream& out_;
    const client::ClassTable& table_;
    const std::string name_space_;
    std::map<const NeutralClass*, std::string> class_names_;
    std::map<const NeutralClass*, CppNames> scopes_;
    std::map<const NeutralMember*, std::string> members_;
    // All names of members.
    std::set<std::string> functions_;
};

}  // namespace

void WriteClassHeader(std::ostream& out, const client::ClassTable& table,
                      const std::string& name_space) {
    Header(out, table, name_space).Write();
}

}  // namespace fixtop::tools
