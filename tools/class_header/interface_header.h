// SPDX-License-Identifier: Apache-2.0
#pragma once

// Writes the header in which the typed interfaces of a class library are tables of C++, as the type
// library of the same version describes them.

#include <iosfwd>
#include <string>

#include "fixtop/client/class_table.h"

namespace fixtop::tools {

struct LibraryVersion {
    int major = 0;
    int minor = 0;
};

// `name_space` as it stands behind the word: "fixtop::interfaces".
void WriteInterfaceHeader(std::ostream& out, const client::ClassTable& table,
                          const std::string& name_space, LibraryVersion version);

}  // namespace fixtop::tools
