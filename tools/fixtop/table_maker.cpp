// SPDX-License-Identifier: Apache-2.0
#include "table_maker.h"

#include <map>

#include "case_session.h"

namespace fixtop {

namespace {

// The path from a row to a match.
std::string WithAttribute(const client::Place& match) {
    if (match.attribute.empty()) return match.path;
    return match.path + '(' + client::WrittenName(match.attribute) + ')';
}

}  // namespace

ColumnGroup::ColumnGroup(const std::string& path, std::string attribute, std::string heading)
    : path_(path), heading_(std::move(heading)), attribute_(std::move(attribute)) {
    if (heading_.empty()) heading_ = path;
}

ColumnGroup::Cells ColumnGroup::Read(const Node& node) {
    Cells cells;
    const auto first = path_.First(node);
    if (!first) return cells;
    is_there_ = true;
    if (!path_.MayMeanMore(node, first->node)) {
        Add(*first, path_.Text(), "", cells);
        return cells;
    }
    int matches = 0;
    path_.ForEachBelow(node, [&](const client::Place& match) {
        ++matches;
        Add(match, WithAttribute(match), "", cells);
        return true;
    });
    has_several_ |= matches > 1;
    return cells;
}

// Without an attribute that the path names, a path to an array is one to its elements.
void ColumnGroup::Add(const client::Place& place, const std::string& match,
                      const std::string& element, Cells& cells) {
    if (place.attribute.empty() && place.node.IsArray()) {
        ForEachChild(place.node, [&](const client::Child& child) {
            Add({child.node, "", ""}, match, client::JoinPath(element, child.step), cells);
            return true;
        });
        return;
    }
    const std::string& attribute = place.attribute.empty() ? attribute_ : place.attribute;
    cells.push_back({match, element, CellOf(place.node, attribute)});
}

std::string ColumnGroup::HeadingOf(const Cell& cell) const {
    return client::JoinPath(has_several_ ? cell.match : heading_, cell.element);
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
    for (std::size_t group = 0; group < groups_.size(); ++group) AddTo(table, group);
    return table;
}

// The columns of a group in order of appearance.
void TableMaker::AddTo(Table& table, std::size_t group) const {
    const std::size_t first = table.headings.size();
    std::map<std::string, std::size_t> places;
    for (const Row& row : rows_) {
        for (const ColumnGroup::Cell& cell : row.cells[group]) {
            const std::string heading = groups_[group].HeadingOf(cell);
            const auto place = places.emplace(heading, first + places.size());
            if (place.second) table.headings.push_back(heading);
        }
    }
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        table.rows[i].cells.resize(table.headings.size());
        for (const ColumnGroup::Cell& cell : rows_[i].cells[group]) {
            auto& shown = table.rows[i].cells[places.at(groups_[group].HeadingOf(cell))];
            if (!shown) shown = cell.cell;
        }
    }
}

std::string TableMaker::WhyMissing(const ColumnGroup& column) const {
    for (const Row& row : rows_) {
        const client::NotFound missing = column.Path().WhyMissing(row.node);
        if (!missing.Near().empty()) return MessageOf(missing);
    }
    return MessageOf(column.Path().WhyMissing(rows_.front().node));
}

}  // namespace fixtop
