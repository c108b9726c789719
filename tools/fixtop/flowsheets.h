// SPDX-License-Identifier: Apache-2.0
#pragma once

// The flowsheets of the neutral view and what they hold, for words that go through a whole case.

#include <functional>
#include <string>
#include <vector>

#include "fixtop/client.h"
#include "node.h"

namespace fixtop {

// An object of a flowsheet, by its own name behind those of the sub-flowsheets that lead to it.
struct FlowsheetObject {
    Node node;
    std::string name;  // "Raw Gas", "Stabiliser/Overhead"
    std::string path;  // from the top
};

// Visits the objects of a list, such as Stream, of the main flowsheet and then of those below it.
// Throws Interrupted.
void ForEachObject(const Node& top, const client::Pattern& list,
                   const std::function<void(const FlowsheetObject& object)>& visit);

// The unit operations at ends of streams that the neutral view has no class for, by their names.
std::vector<std::string> UnitsWithoutClass(const Node& top);

// The class that a type of the neutral view names: "QSIPump" of "Object(QSIPump)".
std::string ClassOf(const std::string& type);

}  // namespace fixtop
