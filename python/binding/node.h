// SPDX-License-Identifier: Apache-2.0
#pragma once

// Node, Reading, Child and Pattern as classes of Python.

#include <pybind11/pybind11.h>

#include <optional>
#include <string>
#include <vector>

#include "fixtop/client/error.h"
#include "fixtop/client/node.h"
#include "fixtop/client/pattern.h"
#include "owner.h"

namespace fixtop::python {

using PyNode = Owned<client::Node>;

// A unit that a node does not take.
class RefusedUnit : public client::Refused {
 public:
    using Refused::Refused;
};

// A value that a node does not take.
class RefusedStore : public client::Refused {
 public:
    using Refused::Refused;
};

pybind11::object NodeOrNone(std::optional<client::Node> node);
pybind11::list NodesOf(std::vector<client::Node> nodes);
// A copy that shows its values in a unit; empty for the node's own. Throws RefusedUnit.
client::Node ShownIn(const client::Node& node, const std::string& unit);
// Of an array, all levels of it, in their order: NaN for those without a value. Throws Refused for
// one that is no number.
std::vector<double> NumbersOf(const client::Node& array, const std::string& unit);

void BindNode(pybind11::module_& module);

}  // namespace fixtop::python
