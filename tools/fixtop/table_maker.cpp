// SPDX-License-Identifier: Apache-2.0
#include "table_maker.h"

#include "case_session.h"

namespace fixtop {

ColumnGroup::ColumnGroup(const std::string& path, std::string attribute, std::string heading)
    : path_(path), heading_(std::move(heading)), attribute_(std::move(attribute)) {
    if (heading_.empty()) heading_ = path;
}

ColumnGroup::Cells ColumnGroup::Read(const Node& node) {
    Cells cells;
    const auto place = path_.First(node);
    if (!place) return cells;
    is_there_ = true;
    Add(*place, heading_, cells);
    return cells;
}

// Without an attribute that the path names, a path to an array is one to its elements.
void ColumnGroup::Add(const client::Place& place, const std::string& heading, Cells& cells) {
    if (place.attribute.empty() && place.node.IsArray()) {
        ForEachChild(place.node, [&](const client::Child& child) {
            Add({child.node, "", ""}, client::JoinPath(heading, child.step), cells);
            return true;
        });
        return;
    }
    if (known_.insert(heading).second) headings_.push_back(heading);
    cells.emplace(heading,
                  CellOf(place.node, place.attribute.empty() ? attribute_ : place.attribute));
}

TableCell ColumnGroup::CellOf(const Node& node, const std::string& attribute) {
    try {
        const std::string unit = unit_of_ ? unit_of_(node) : std::string();
        client::Reading reading = node.Read(unit, attribute);
        const std::string other = client::OtherUnit(attribute, reading, unit);
        if (!other.empty()) refusals_.insert(OneLine(other));
        return {std::move(reading.value), std::move(reading.unit), reading.stale};
    } catch (const client::Refused& refused) {
        refusals_.insert(OneLine(refused.Text()));
        return {};
    }
}

void TableMaker::AddRow(const Node& node, std::string path, std::string name) {
    if (name.empty()) name = NameWithKey(node);
    Row& row = rows_.emplace_back(Row{node, std::move(path), std::move(name), {}});
    for (ColumnGroup& group : groups_) row.cells.push_back(group.Read(node));
}

Table TableMaker::Whole() const {
    Table table;
    for (const Row& row : rows_) table.rows.push_back({row.name, row.path, {}});
    for (std::size_t group = 0; group < groups_.size(); ++group) {
        for (const std::string& heading : groups_[group].Headings()) {
            table.headings.push_back(heading);
            for (std::size_t i = 0; i < rows_.size(); ++i) {
                const auto cell = rows_[i].cells[group].find(heading);
                const bool is_there = cell != rows_[i].cells[group].end();
                table.rows[i].cells.push_back(is_there ? std::optional(cell->second)
                                                       : std::nullopt);
            }
        }
    }
    return table;
}

std::string TableMaker::WhyMissing(const ColumnGroup& column) const {
    for (const Row& row : rows_) {
        const client::NotFound missing = column.Path().WhyMissing(row.node);
        if (!missing.Near().empty()) return MessageOf(missing);
    }
    return MessageOf(column.Path().WhyMissing(rows_.front().node));
}

}  // namespace fixtop
