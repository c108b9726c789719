// SPDX-License-Identifier: Apache-2.0
#pragma once

// Where objects are named in a case's data, and how their ports are called.

#include <string>

#include "casehost/case_data.h"

namespace fixtop::casehost {

// Calls `visit` with each path of an object in one element of the basis, in order.
template <class Element, class Visit>
void ForEachObjectPath(Element& element, Visit visit) {
    if (element.kind == BasisElement::Kind::object) visit(element.text);
    for (auto& column : element.columns) {
        for (auto& path : column.objects) visit(path);
    }
}

// Name of the row that shows a port: "Inlet 1", "Outlet 2", "Energy Inlet 1", "Energy Outlet 1";
// the number is the port's index plus one.
inline std::string PortRowName(const PortData& port) {
    constexpr const char* kRoleNames[] = {"Inlet ", "Outlet ", "Energy Inlet ", "Energy Outlet "};
    return kRoleNames[static_cast<int>(port.role)] + std::to_string(port.index + 1);
}

}  // namespace fixtop::casehost
