// SPDX-License-Identifier: Apache-2.0
#include "interface_header.h"

#include <map>
#include <ostream>
#include <set>
#include <utility>

#include "cpp_names.h"
#include "fixtop/fixtop.h"

namespace fixtop::tools {

namespace {

using client::NeutralClass;
using client::NeutralMember;
using Kind = NeutralMember::Kind;

constexpr char kBeginning[] =
    R"(// SPDX-License-Identifier: Apache-2.0
#pragma once

// The typed interfaces of the classes of the neutral view, for clients that call them by their places:
// made from the class library by the build, as the type library of FixtopWriteTypeLibrary has them.
// A node of GetQSINode answers to the id of the interface of its class and of those of the bases once
// that library is there.
//
// Each member hands out, counted, what stands in the tree under its name, or null and S_OK where there
// is nothing. A value is a node with the members of fixtop/automation/node.h: it has no dispatch.
//
// Names that C++ does not take are changed as in fixtop/client/classes.h.

#include "fixtop/automation/node.h"

#include <oaidl.h>

)";

// What the tables have from their base, and what this header says itself.
const std::set<std::string> kOwnNames = {
    "AddRef", "Count",  "GetIDsOfNames",  "GetTypeInfo", "GetTypeInfoCount", "IDispatch",
    "Invoke", "ItemAt", "QueryInterface", "Release",     "fixtop",           "kId"};

class InterfaceHeader {
 public:
    InterfaceHeader(std::ostream& out, const client::ClassTable& table, LibraryVersion version)
        : out_(out), table_(table), version_(version) {
        CppNames names(nullptr, kOwnNames);
        for (const NeutralClass* each : table.Classes()) {
            interfaces_[each] = names.Take(each->interface_name);
            arrays_[each] = names.Take(each->interface_name + "Array");
        }
    }

    void Write(const std::string& name_space) {
        out_ << kBeginning << "namespace " << name_space << " {\n\n";
        for (const NeutralClass* each : table_.Classes()) {
            out_ << "struct " << interfaces_.at(each) << ";\nstruct " << arrays_.at(each) << ";\n";
        }
        for (const NeutralClass* each : table_.Classes()) WriteInterface(*each);
        for (const NeutralClass* each : table_.Classes()) WriteArray(*each);
        out_ << "\n}  // namespace " << name_space << '\n';
    }

 private:
    void WriteInterface(const NeutralClass& each) {
        const std::string& name = interfaces_.at(&each);
        Begin(name, each.interface_name, each.base ? interfaces_.at(each.base) : "::IDispatch");
        const CppNames* outer = each.base ? &scopes_.at(each.base) : nullptr;
        std::set<std::string> reserved = kOwnNames;
        reserved.insert(name);
        CppNames& names = scopes_.try_emplace(&each, outer, std::move(reserved)).first->second;
        for (const NeutralMember& member : each.members) {
            out_ << "    // " << InComment(TypeText(member)) << "; member " << member.number
                 << ".\n    virtual ::HRESULT STDMETHODCALLTYPE " << names.Take(member.name) << '('
                 << ResultOf(member) << "** out) = 0;\n";
        }
        End(name);
    }

    void WriteArray(const NeutralClass& each) {
        const std::string& name = arrays_.at(&each);
        Begin(name, each.interface_name + "Array", "::IDispatch");
        out_ << "    virtual ::HRESULT STDMETHODCALLTYPE Count(::LONG* number) = 0;\n"
             << "    // A place from 0, or the text that tells the object from the others.\n"
             << "    virtual ::HRESULT STDMETHODCALLTYPE ItemAt(::VARIANT index, "
             << interfaces_.at(&each) << "** out) = 0;\n";
        End(name);
    }

    void Begin(const std::string& name, const std::string& in_library, const std::string& base) {
        InterfaceId id{};
        FixtopInterfaceId(in_library.c_str(), version_.major, version_.minor, &id);
        out_ << "\nstruct " << name << " : " << base << " {\n    static constexpr ::GUID kId = {"
             << id.data1 << "u, " << id.data2 << ", " << id.data3 << ", {";
        const char* separator = "";
        for (const std::uint8_t byte : id.data4) {
            out_ << std::exchange(separator, ", ") << static_cast<int>(byte);
        }
        out_ << "}};\n";
    }
    void End(const std::string& name) {
        out_ << "\n protected:\n    ~" << name << "() = default;\n};\n";
    }

    std::string ResultOf(const NeutralMember& member) const {
        if (member.kind == Kind::kValue) return "::fixtop::IQSINode";
        const NeutralClass* const of = table_.Find(member.type_name);
        return of ? (member.kind == Kind::kArray ? arrays_ : interfaces_).at(of) : "::IUnknown";
    }

    std::ostream& out_;
    const client::ClassTable& table_;
    const LibraryVersion version_;
    std::map<const NeutralClass*, std::string> interfaces_;
    std::map<const NeutralClass*, std::string> arrays_;
    std::map<const NeutralClass*, CppNames> scopes_;
};

}  // namespace

void WriteInterfaceHeader(std::ostream& out, const client::ClassTable& table,
                          const std::string& name_space, LibraryVersion version) {
    InterfaceHeader(out, table, version).Write(name_space);
}

}  // namespace fixtop::tools
