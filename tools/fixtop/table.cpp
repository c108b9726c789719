// SPDX-License-Identifier: Apache-2.0
#include "table.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace fixtop {

namespace {

constexpr char kGap[] = "  ";

// A column as text: its heading, its unit and a text for each row.
struct TextColumn {
    std::string heading;
    std::string unit;  // of all cells; empty when they have none, or several
    bool numbers = true;
    std::vector<std::string> texts;
    std::vector<bool> stale;  // one each text
};

const std::string* SharedUnit(const Table& table, std::size_t column) {
    const std::string* unit = nullptr;
    for (const TableRow& row : table.rows) {
        const auto& cell = row.cells[column];
        if (!cell || cell->value.IsNull()) continue;
        if (unit && *unit != cell->unit) return nullptr;
        unit = &cell->unit;
    }
    return unit;
}

TextColumn ColumnOf(const Table& table, std::size_t column) {
    const std::string* unit = SharedUnit(table, column);
    TextColumn text{table.headings[column], unit ? *unit : "", true, {}, {}};
    for (const TableRow& row : table.rows) {
        const auto& cell = row.cells[column];
        std::string& shown = text.texts.emplace_back();
        text.stale.push_back(cell && cell->stale);
        if (!cell || cell->value.IsNull()) continue;
        shown = cell->value.ToText();
        text.numbers = text.numbers && cell->value.IsNumber();
        if (!unit && !cell->unit.empty()) shown += ' ' + cell->unit;
    }
    return text;
}

std::vector<TextColumn> ColumnsOf(const Table& table) {
    std::vector<TextColumn> columns = {{table.names, "", false, {}, {}}};
    for (const TableRow& row : table.rows) columns.front().texts.push_back(row.name);
    for (std::size_t i = 0; i < table.headings.size(); ++i) columns.push_back(ColumnOf(table, i));
    return columns;
}

bool HasStale(const TextColumn& column) {
    return std::find(column.stale.begin(), column.stale.end(), true) != column.stale.end();
}

// The digits of all numbers of a column stay below each other.
void AddStars(TextColumn& column) {
    if (!HasStale(column)) return;
    for (std::size_t row = 0; row < column.texts.size(); ++row) {
        column.texts[row] += column.stale[row] ? "*" : column.numbers ? " " : "";
    }
}

// Characters, of which UTF-8 makes up to four bytes.
std::size_t Width(const std::string& text) {
    return std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; });
}

std::string Padded(const std::string& text, std::size_t width, bool to_the_right) {
    const std::string blanks(width - Width(text), ' ');
    return to_the_right ? blanks + text : text + blanks;
}

// A line of the fields that `field` gives for each column.
template <class Field>
std::string PlainLine(const std::vector<TextColumn>& columns,
                      const std::vector<std::size_t>& widths, const Field& field) {
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        line += (i == 0 ? "" : kGap) + Padded(field(columns[i]), widths[i], columns[i].numbers);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

// Spreadsheets take such a text for a formula.
bool LooksLikeFormula(const std::string& text) {
    if (text.empty() || std::string_view("=+-@").find(text.front()) == std::string_view::npos) {
        return false;
    }
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error != std::errc() || stop != end;
}

std::string CsvField(const std::string& whole) {
    std::string text = OneField(whole);
    if (LooksLikeFormula(text)) text.insert(0, 1, '\'');
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

template <class Field>
std::string CsvLine(const std::vector<TextColumn>& columns, const Field& field) {
    std::string line;
    for (const TextColumn& column : columns) {
        line += (&column == &columns.front() ? "" : ",") + CsvField(field(column));
    }
    return line;
}

}  // namespace

void WritePlain(const Table& table, Output& out) {
    std::vector<TextColumn> columns = ColumnsOf(table);
    std::vector<std::size_t> widths;
    bool units = false;
    for (TextColumn& column : columns) {
        column.heading = OneLine(column.heading);
        column.unit = OneLine(column.unit);
        std::size_t& width =
            widths.emplace_back(std::max(Width(column.heading), Width(column.unit)));
        for (std::string& text : column.texts) text = OneLine(text);
        AddStars(column);
        for (const std::string& text : column.texts) width = std::max(width, Width(text));
        units = units || !column.unit.empty();
    }
    out.Line(PlainLine(columns, widths, [](const TextColumn& column) { return column.heading; }));
    if (units) {
        out.Line(PlainLine(columns, widths, [](const TextColumn& column) { return column.unit; }));
    }
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        out.Line(PlainLine(columns, widths,
                           [row](const TextColumn& column) { return column.texts[row]; }));
    }
    if (std::any_of(columns.begin(), columns.end(), HasStale)) {
        out.Note("* older than a change of the case");
    }
}

void WriteCsv(const Table& table, Output& out) {
    const std::vector<TextColumn> columns = ColumnsOf(table);
    out.Line(CsvLine(columns, [](const TextColumn& column) {
        return column.unit.empty() ? column.heading : column.heading + " [" + column.unit + ']';
    }));
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        out.Line(CsvLine(columns, [row](const TextColumn& column) { return column.texts[row]; }));
    }
    for (const TextColumn& column : columns) {
        if (HasStale(column)) {
            out.Note(OneLine(column.heading) + ": values are older than a change of the case");
        }
    }
}

void WriteJson(const Table& table, Output& out) {
    for (const TableRow& row : table.rows) {
        Json record;
        if (!table.title.empty()) record["table"] = table.title;
        record["path"] = OneLine(row.path);
        record["name"] = row.name;
        if (!table.attribute.empty()) record["attr"] = table.attribute;
        Json& cells = record["cells"] = Json::object();
        for (std::size_t i = 0; i < table.headings.size(); ++i) {
            Json& cell = cells[OneLine(table.headings[i])];
            if (!row.cells[i]) continue;
            cell["value"] = ToJson(row.cells[i]->value);
            cell["uom"] = row.cells[i]->unit.empty() ? Json() : Json(row.cells[i]->unit);
            if (row.cells[i]->stale) cell["stale"] = true;
        }
        out.Line(ToLine(record));
    }
}

}  // namespace fixtop
