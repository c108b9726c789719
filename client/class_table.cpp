// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/class_table.h"

#include <algorithm>

#include "case_state.h"
#include "fixtop/client/error.h"
#include "fixtop/client/near_names.h"
#include "module_files.h"
#include "module_log.h"
#include "visit.h"

namespace fixtop::client {

namespace {

NeutralMember MemberOf(const FixtopMember& row) {
    return {static_cast<NeutralMember::Kind>(row.kind),
            row.number,
            row.name,
            row.owner,
            row.type,
            row.typeName,
            row.quantity};
}

static_assert(static_cast<int>(NeutralMember::Kind::kValue) == FixtopMember::kValue);
static_assert(static_cast<int>(NeutralMember::Kind::kArray) == FixtopMember::kArray);

}  // namespace

std::string TypeText(const NeutralMember& member) {
    return member.type_name.empty() ? member.type : member.type + '(' + member.type_name + ')';
}

bool NeutralClass::IsA(std::string_view class_name) const {
    const NeutralClass* at = this;
    while (at && at->name != class_name) at = at->base;
    return at != nullptr;
}

const NeutralMember* NeutralClass::Find(std::string_view member) const {
    for (const NeutralClass* at = this; at; at = at->base) {
        const auto found = std::ranges::find(at->members, member, &NeutralMember::name);
        if (found != at->members.end()) return &*found;
    }
    return nullptr;
}

const NeutralMember* NeutralClass::Find(int number) const {
    if (number < 0 || number >= Count()) return nullptr;
    const NeutralClass* at = this;
    while (number < at->first_number) at = at->base;
    return &at->members[static_cast<std::size_t>(number - at->first_number)];
}

const NeutralMember& NeutralClass::Member(const std::string& member) const {
    if (const NeutralMember* found = Find(member)) return *found;
    std::vector<std::string> names;
    for (const NeutralMember& each : AllMembers()) names.push_back(each.name);
    throw NoMember(name, member, NearNames(member, names));
}

std::vector<NeutralMember> NeutralClass::AllMembers() const {
    std::vector<NeutralMember> all;
    if (base) all = base->AllMembers();
    all.insert(all.end(), members.begin(), members.end());
    return all;
}

std::shared_ptr<const ClassTable> ClassTable::Read(const ModelFiles& files) {
    const ModuleLog log(files.log);
    auto table = ReadAgain(files);
    if (!table->Classes().empty()) return table;
    std::vector<std::string> problems = log.Lines();
    problems.insert(problems.begin(), "the class library has no class");
    throw CaseError(std::move(problems));
}

std::shared_ptr<const ClassTable> ClassTable::ReadAgain(const ModelFiles& files) {
    const FixtopModelFiles given = GivenFiles(files, true);
    auto table = std::make_shared<ClassTable>();
    NeutralClass* present = nullptr;
    Visitor<FixtopMember> visitor([&](const FixtopMember& row) {
        if (row.kind == FixtopMember::kInterface) {
            present = &table->Add(row.className);
            present->interface_name = row.interfaceName;
            present->base = row.baseName ? table->Find(row.baseName) : nullptr;
            present->first_number = row.number;
        } else {
            present->members.push_back(MemberOf(row));
        }
        return true;
    });
    Whole([&] { return FixtopVisitMembers(&given, nullptr, visitor.Call(), &visitor); });
    visitor.Rethrow();
    return table;
}

NeutralClass& ClassTable::Add(const std::string& class_name) {
    NeutralClass& added = classes_[class_name];
    added.name = class_name;
    ordered_.push_back(&added);
    return added;
}

const NeutralClass* ClassTable::Find(std::string_view class_name) const {
    const auto found = classes_.find(class_name);
    return found == classes_.end() ? nullptr : &found->second;
}

}  // namespace fixtop::client
