#pragma once

// Makers of variables and objects, as the parts of the built-in case use them.

#include <string>
#include <vector>

#include "casehost/case_data.h"

namespace fixtop::casehost::demo {

// A number that is given, and one that a solve finds. Quantity "" has no unit.
VariableData Given(const char* name, const char* quantity, double value);
VariableData Found(const char* name, const char* quantity);
VariableData Words(const char* name, const char* text, ValueKind kind = ValueKind::text);
VariableData Choice(const char* name, std::vector<std::string> options, int ordinal);
// An attachment; no object without a path.
VariableData Link(const char* name, const char* path);

// Arrays. Numbers that are left out at the end are empty.
VariableData Table(const char* name, const char* quantity, std::vector<DimensionData> dimensions,
                   VariableState state, std::vector<double> numbers = {});
VariableData List(const char* name, const char* quantity, std::vector<double> numbers);
VariableData WordList(const char* name, std::vector<std::string> texts);
VariableData LinkList(const char* name, std::vector<std::string> paths);
DimensionData ByCompound();

ObjectData Make(const char* name, const char* type, std::vector<VariableData> variables,
                std::vector<PortData> ports = {});
// An object that no solve touches.
ObjectData Aside(const char* name, const char* type, std::vector<VariableData> variables);

}  // namespace fixtop::casehost::demo
