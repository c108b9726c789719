// SPDX-License-Identifier: Apache-2.0
#pragma once

// The members of a typed interface as a type library describes them.

#include <vector>

#include "automation/com/load_types_windows.h"

namespace fixtop {

struct MemberRecord {
    std::string name;
    // The interface of what the member answers, its id, and whether it is one over a list.
    Ref<ITypeInfo> result;
    InterfaceId id{};
    bool is_list = false;
};

// By their numbers: those of the farthest base first. At most MemberTable::kMostMembers.
std::vector<MemberRecord> ReadMemberRecords(ITypeInfo& info);
// The interface and its bases, the nearest first, without the dispatch interface.
std::vector<Ref<ITypeInfo>> WithBases(ITypeInfo& info);

}  // namespace fixtop
