// SPDX-License-Identifier: Apache-2.0
#pragma once

// TableMaker: gathers a table from nodes, a row each, and paths from there, the columns.

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "fixtop/client.h"
#include "table.h"

namespace fixtop {

// What one path makes: a column, or one for each element of an array, and for each node where it
// leads to several.
class ColumnGroup {
 public:
    // A cell by the path from the row to the node, or the heading while there is one in each row,
    // and the one from there to the element.
    struct Cell {
        std::string match;
        std::string element;
        TableCell cell;
    };
    using Cells = std::vector<Cell>;
    // The unit to ask for at a node; empty for its own.
    using UnitOf = std::function<std::string(const Node& node)>;

    // Throws client::PathError. The heading is the path where none is given.
    ColumnGroup(const std::string& path, std::string attribute, std::string heading = "");

    const client::Pattern& Path() const { return path_; }
    void ShowIn(UnitOf unit_of) { unit_of_ = std::move(unit_of); }
    bool IsThere() const { return is_there_; }
    // Of a cell, when all rows are read.
    std::string HeadingOf(const Cell& cell) const;
    // What the module said against the unit, each text once.
    const std::set<std::string>& Refusals() const { return refusals_; }

    Cells Read(const Node& node);

 private:
    void Add(const client::Place& place, const std::string& match, const std::string& element,
             Cells& cells);
    TableCell CellOf(const Node& node, const std::string& attribute);

    client::Pattern path_;
    std::string heading_;
    std::string attribute_;
    UnitOf unit_of_;
    bool is_there_ = false;
    bool has_several_ = false;
    std::set<std::string> refusals_;
};

class TableMaker {
 public:
    void AddColumn(ColumnGroup column) { groups_.push_back(std::move(column)); }
    std::vector<ColumnGroup>& Columns() { return groups_; }
    // Without a name the node's own.
    void AddRow(const Node& node, std::string path, std::string name = "");
    bool IsEmpty() const { return rows_.empty(); }
    // Columns that no node has are left out.
    Table Whole() const;
    // Why no node has a column: from the first row that has names near to it, or else the first.
    std::string WhyMissing(const ColumnGroup& column) const;

 private:
    void AddTo(Table& table, std::size_t group) const;

    struct Row {
        Node node;
        std::string path;
        std::string name;
        std::vector<ColumnGroup::Cells> cells;  // one each group
    };

    std::vector<ColumnGroup> groups_;
    std::vector<Row> rows_;
};

}  // namespace fixtop
