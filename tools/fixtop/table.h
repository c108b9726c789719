// SPDX-License-Identifier: Apache-2.0
#pragma once

// A table of values, a row each node, and the three ways in which it is written.

#include <optional>
#include <string>
#include <vector>

#include "node.h"
#include "output.h"

namespace fixtop {

// NULL is a cell too; a node that is not there has none.
struct TableCell {
    FIValue value;
    std::string unit;  // empty without one
    bool stale = false;
};

struct TableRow {
    std::string name;
    std::string path;
    std::vector<std::optional<TableCell>> cells;  // one each heading
};

struct Table {
    std::vector<std::string> headings;  // without the one of the names
    std::vector<TableRow> rows;
    std::string attribute;       // what the cells show; empty for value
    std::string names = "Name";  // heading of the first column
    std::string title;           // for JSON, where several tables follow each other; empty without
};

// Columns that stand below each other, numbers to the right, the units in a line below the
// headings. A unit that differs from row to row stands in the cells, and a star behind a stale
// value.
void WritePlain(const Table& table, Output& out);
// Quoted as RFC 4180 has it, line feeds as they are; before a text that spreadsheets would take for
// a formula stands a single quote. A unit stands in the heading: "Temperature
// [C]".
void WriteCsv(const Table& table, Output& out);
// A line each row: path, name and cells by heading; a cell is null where there is no node.
void WriteJson(const Table& table, Output& out);

}  // namespace fixtop
