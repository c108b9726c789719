// SPDX-License-Identifier: Apache-2.0
#include "comparison.h"

#include <algorithm>
#include <set>

#include "word.h"

namespace fixtop {

namespace {

FIValue Difference(const ComparedItem& item) {
    const auto& [a, b] = item.sides;
    const bool are_numbers =
        a && b && a->value.IsNumber() && b->value.IsNumber() && a->unit == b->unit;
    return are_numbers ? FIValue::OfReal(b->value.AsDouble() - a->value.AsDouble()) : FIValue();
}

// The unit has a column of its own.
std::optional<TableCell> CellOf(const std::optional<TableCell>& side) {
    if (!side) return std::nullopt;
    return TableCell{side->value, "", side->stale};
}

TableRow RowOf(const ComparedItem& item) {
    const auto& [a, b] = item.sides;
    const TableCell& shown = a ? *a : *b;
    return {item.path,
            item.path,
            {CellOf(a), CellOf(b), TextCell(shown.unit), TableCell{Difference(item), "", false}}};
}

Json SideOf(const std::optional<TableCell>& side) {
    Json record;
    if (!side) return record;
    record["value"] = ToJson(side->value);
    record["uom"] = UnitToJson(side->unit);
    if (side->stale) record["stale"] = true;
    return record;
}

std::string RecordOf(const ComparedItem& item) {
    Json record;
    record["path"] = OneLine(item.path);
    record["a"] = SideOf(item.sides[0]);
    record["b"] = SideOf(item.sides[1]);
    record["difference"] = ToJson(Difference(item));
    return ToLine(record);
}

void TellStale(const std::vector<ComparedItem>& items, std::size_t side, const std::string& name,
               Output& out) {
    const auto stale = std::ranges::count_if(items, [side](const ComparedItem& item) {
        return item.sides[side] && item.sides[side]->stale;
    });
    if (stale == 0) return;
    out.Note(OneLine(name) +
             ": values that are older than a change of the case: " + std::to_string(stale));
}

std::set<std::string> UnitsOf(const std::vector<ComparedItem>& items) {
    std::set<std::string> units;
    for (const ComparedItem& item : items) {
        for (const auto& side : item.sides) {
            if (side && !side->unit.empty()) units.insert(side->unit);
        }
    }
    return units;
}

}  // namespace

void Comparison::Declare(CLI::App& app) {
    app.add_option_function<std::vector<std::string>>(
           "--tolerance", [this](const std::vector<std::string>& texts) { TakeTolerances(texts); },
           "Difference that does not count, in a unit or in all others; may be repeated")
        ->type_name("[UNIT=]NUMBER")
        ->allow_extra_args(false);
    format_.Declare(app);
}

void Comparison::TakeTolerances(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        const std::string problem = tolerances_.Take(GivenName(text));
        if (!problem.empty()) throw CLI::ValidationError("--tolerance", problem);
    }
}

bool Comparison::IsSame(const ComparedItem& item) const {
    const auto& [a, b] = item.sides;
    if (!a || !b) return !a && !b;
    return a->unit == b->unit && tolerances_.AreSame(a->value, b->value, a->unit);
}

void Comparison::TellUnused(const std::vector<ComparedItem>& items, Output& out) const {
    const std::set<std::string> units = UnitsOf(items);
    std::string names;
    for (const std::string& unit : units) names += (names.empty() ? "" : ", ") + OneLine(unit);
    for (const std::string& unit : tolerances_.UnitsBeside(units)) {
        out.Note("--tolerance: no value is compared in " + OneLine(unit) +
                 (names.empty() ? "" : "; units: " + names));
    }
}

bool Comparison::Write(const std::vector<ComparedItem>& items,
                       const std::array<std::string, 2>& names, Output& out) const {
    for (std::size_t side = 0; side < names.size(); ++side) {
        TellStale(items, side, names[side], out);
    }
    TellUnused(items, out);
    Table table;
    table.names = "Path";
    table.headings = {names[0], names[1], "Unit", "Difference"};
    bool differs = false;
    for (const ComparedItem& item : items) {
        if (IsSame(item)) continue;
        differs = true;
        if (format_.AsJson()) {
            out.Line(RecordOf(item));
        } else {
            table.rows.push_back(RowOf(item));
        }
    }
    if (!table.rows.empty()) format_.Write(table, out);
    return differs;
}

}  // namespace fixtop
