#pragma once

// Equipment of the built-in case that the solver has no model for: a distillation column, a pipe, a
// compressor's curves, reactors. Their numbers were put down once, with closed balances, and stay
// as they are. What belongs to one of them stands in a sub-flowsheet beside it.

#include <vector>

#include "casehost/case_data.h"

namespace fixtop::casehost::demo {

// Feed and products of the column.
struct ColumnStream {
    const char* name;
    double temperature_C;
    double pressure_kPa;
    double molar_flow;  // kgmole/h
    std::vector<double> fractions;
};
std::vector<ColumnStream> ColumnStreams();

std::vector<ObjectData> Equipment();

}  // namespace fixtop::casehost::demo
