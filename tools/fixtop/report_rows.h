// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the words with ready tables of the neutral view have in common: rows, and the columns of
// streams.

#include <span>
#include <string>
#include <vector>

#include "node.h"
#include "table_maker.h"

namespace fixtop {

class Output;

struct ReportColumn {
    const char* heading;
    const char* path;  // from the node of the row
};
using ReportColumns = std::span<const ReportColumn>;

struct ReportRow {
    Node node;
    std::string path;
    std::string name;
};
using ReportRows = std::vector<ReportRow>;

// Of material streams.
ReportColumns StreamColumns();
// The objects of a list of all flowsheets. Throws Interrupted.
ReportRows ObjectRows(const Node& top, const std::string& list);
// Notes the unit operations that no table of the neutral view has.
void TellUnitsWithoutClass(const Node& top, Output& out);
// Adds a column for the mole fraction of each component that any of the rows has in a list.
void AddFractions(const ReportRows& rows, const std::string& list, TableMaker& maker);

}  // namespace fixtop
