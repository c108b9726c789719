// SPDX-License-Identifier: Apache-2.0
#pragma once

// Where objects are named in a case's data, and how their ports are called.

#include <array>
#include <optional>
#include <string>
#include <string_view>

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
inline constexpr std::array<std::string_view, 4> kPortRowNames = {
    "Inlet ", "Outlet ", "Energy Inlet ", "Energy Outlet "};

inline std::string PortRowName(const PortData& port) {
    return std::string(kPortRowNames[static_cast<std::size_t>(port.role)]) +
           std::to_string(port.index + 1);
}

// The role of the port that a row of this name shows; none when the name is no port's.
inline std::optional<PortData::Role> PortRoleOf(std::string_view row) {
    for (std::size_t role = 0; role < kPortRowNames.size(); ++role) {
        if (!row.starts_with(kPortRowNames[role])) continue;
        const std::string_view number = row.substr(kPortRowNames[role].size());
        const bool is_number =
            !number.empty() && number.find_first_not_of("0123456789") == std::string_view::npos;
        if (is_number) return static_cast<PortData::Role>(role);
    }
    return std::nullopt;
}

}  // namespace fixtop::casehost
