// SPDX-License-Identifier: Apache-2.0
#pragma once

// The set of units in which words with tables show numbers: one of the case's, or the library's.

#include <string>

#include "fixtop/client.h"
#include "node.h"

namespace CLI {
class App;
}

namespace fixtop {

class UnitChoice {
 public:
    // --units
    void Declare(CLI::App& app);
    // Throws client::CaseError, with the sets that there are, for any other name.
    void Use(const client::Case& open_case);
    // As it was asked for; empty for that of the case.
    const std::string& Name() const { return name_; }
    // The unit to ask for at a node: the first of its quantity in the set of the library; empty,
    // for the one that the case shows, in a set of the case.
    std::string UnitOf(const Node& node) const;

 private:
    std::string name_;
    bool is_librarys_ = false;
};

}  // namespace fixtop
