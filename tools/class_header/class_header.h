// SPDX-License-Identifier: Apache-2.0
#pragma once

// Writes the header in which each class of a class library is one of C++.

#include <iosfwd>
#include <string>

#include "fixtop/client/class_table.h"

namespace fixtop::tools {

// `name_space` as it stands behind the word: "fixtop::client::classes".
void WriteClassHeader(std::ostream& out, const client::ClassTable& table,
                      const std::string& name_space);

}  // namespace fixtop::tools
