// SPDX-License-Identifier: Apache-2.0
#pragma once

// The reactions of a file, the sets that list them, and the reactors that use a set.

#include <string>
#include <vector>

#include "object_sheet.h"
#include "readers.h"

namespace fixtop::casehost::importer {

// A reaction in a set.
struct SetMember {
    XmlNode reaction;  // none when the set names one that the file does not have
    std::string id;
    bool is_active = false;
    Number rank;

    std::string Name() const;
};

// The set of that id; none when there is no such set.
XmlNode FindReactionSet(XmlNode root, std::string_view id);
// The active ones first, both in the order of the set.
std::vector<SetMember> MembersOf(Reading& reading, XmlNode root, XmlNode set);

bool IsReactor(const FileObject& unit);
// What stands in lists below a reactor. Extents and conversions follow the active reactions of the
// set that the reactor uses.
void ReadReactorLists(Reading& reading, XmlNode root, const FileObject& unit, ObjectData& object);

}  // namespace fixtop::casehost::importer
