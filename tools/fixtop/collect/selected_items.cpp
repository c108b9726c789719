// SPDX-License-Identifier: Apache-2.0
#include "collect/selected_items.h"

#include <CLI/CLI.hpp>

#include "node.h"
#include "word.h"

namespace fixtop {

namespace {

const char* NameOf(client::Freshness age) {
    switch (age) {
        case client::Freshness::kSpecified:
            return "specified";
        case client::Freshness::kCalculated:
            return "calculated";
        case client::Freshness::kOld:
            return "stale";
        default:
            return "unknown";
    }
}

const char* NameOf(client::ItemState::Kind kind) {
    switch (kind) {
        case client::ItemState::Kind::kSame:
            return "same";
        case client::ItemState::Kind::kByPlace:
            return "by place";
        case client::ItemState::Kind::kMoved:
            return "moved";
        default:
            return "gone";
    }
}

std::string RecordOfItem(const SelectedItems& items, std::size_t item) {
    const client::ItemState& state = items.states[item];
    Json record;
    record["path"] = OneLine(state.path);
    record["found"] = NameOf(state.kind);
    if (items.IsThere(item)) {
        record["value"] = ToJson(items.values[item]);
        record["uom"] = UnitToJson(items.units[item].ToText());
        record["status"] = ToJson(items.statuses[item]);
        record["age"] = NameOf(items.ages[item]);
        return ToLine(record);
    }
    Json& candidates = record["candidates"] = Json::array();
    for (const std::string& path : state.candidates) candidates.push_back(OneLine(path));
    return ToLine(record);
}

TableRow RowOfItem(const SelectedItems& items, std::size_t item) {
    const std::string& path = items.states[item].path;
    TableRow row{path, path, {}};
    row.cells.resize(4);
    if (!items.IsThere(item)) return row;
    row.cells = {TableCell{items.values[item], "", items.IsStale(item)},
                 TextCell(items.units[item].ToText()), TextCell(items.statuses[item].ToText()),
                 TextCell(NameOf(items.ages[item]))};
    return row;
}

}  // namespace

SelectedItems::SelectedItems(const client::Selection& selection)
    : states(selection.States()),
      values(states.size()),
      units(states.size()),
      statuses(states.size()),
      ages(states.size()) {
    selection.Read({values, units, statuses, ages});
}

ExitCode TellMissing(const SelectedItems& items, const std::string& name, Output& out) {
    ExitCode code = ExitCode::kOk;
    int by_place = 0;
    for (std::size_t i = 0; i < items.Size(); ++i) {
        const client::ItemState& state = items.states[i];
        by_place += state.kind == client::ItemState::Kind::kByPlace;
        if (state.lacks_unit) {
            code = ExitCode::kFailed;
            const std::string shown = items.units[i].ToText();
            out.Note(OneLine(state.path) +
                     ": the unit that the selection has for it is none of it; " +
                     (shown.empty() ? "it has none" : "shown in " + OneLine(shown)));
        }
        if (items.IsThere(i)) continue;
        code = ExitCode::kFailed;
        std::string text = OneLine(state.path) + ": not in " + OneLine(name);
        for (const std::string& path : state.candidates) text += "\n  may be: " + OneLine(path);
        out.Note(text);
    }
    if (by_place > 0) {
        out.Note(OneLine(name) +
                 ": found by place in a list, for no name of their own tells them there: " +
                 std::to_string(by_place));
    }
    return code;
}

std::string RecordOfChoice(const std::string& path, const std::string& unit) {
    Json record;
    record["path"] = OneLine(path);
    record["uom"] = UnitToJson(unit);
    return ToLine(record);
}

void ItemFormat::Declare(CLI::App& app) {
    AddJson(app, json_);
    app.add_flag("--csv", csv_, "Write comma-separated values")->excludes("--json");
}

void Write(const SelectedItems& items, const ItemFormat& format, Output& out) {
    Table table;
    table.names = "Path";
    table.headings = {"Value", "Unit", "Status", "Age"};
    for (std::size_t i = 0; i < items.Size(); ++i) {
        if (format.AsJson()) {
            out.Line(RecordOfItem(items, i));
        } else {
            table.rows.push_back(RowOfItem(items, i));
        }
    }
    if (!format.AsJson()) format.Write(table, out);
}

TableCell TextCell(const std::string& text) {
    return {text.empty() ? FIValue() : FIValue(text.c_str()), "", false};
}

}  // namespace fixtop
