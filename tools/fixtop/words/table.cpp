// SPDX-License-Identifier: Apache-2.0
#include "table.h"

#include <map>
#include <set>

#include "case_session.h"
#include "words/makers.h"

namespace fixtop {

namespace {

using Cells = std::map<std::string, TableCell>;  // by heading

// What one PATH of the line makes: a column, or one for each element of an array.
class ColumnGroup {
 public:
    ColumnGroup(const std::string& path, std::string attribute)
        : path_(path), attribute_(std::move(attribute)) {}

    const client::Pattern& Path() const { return path_; }
    void ShowIn(std::string unit) { unit_ = std::move(unit); }
    bool IsThere() const { return is_there_; }
    // Headings in order of appearance.
    const std::vector<std::string>& Headings() const { return headings_; }
    // What the module said against the unit, each text once.
    const std::set<std::string>& Refusals() const { return refusals_; }

    Cells Read(const Node& node) {
        Cells cells;
        const auto place = path_.First(node);
        if (!place) return cells;
        is_there_ = true;
        Add(*place, path_.Text(), cells);
        return cells;
    }

 private:
    // Without an attribute that the path names, a path to an array is one to its elements.
    void Add(const client::Place& place, const std::string& heading, Cells& cells) {
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
    TableCell CellOf(const Node& node, const std::string& attribute) {
        try {
            client::Reading reading = node.Read(unit_, attribute);
            const std::string other = client::OtherUnit(attribute, reading, unit_);
            if (!other.empty()) refusals_.insert(OneLine(other));
            return {std::move(reading.value), std::move(reading.unit), reading.stale};
        } catch (const client::Refused& refused) {
            refusals_.insert(OneLine(refused.Text()));
            return {};
        }
    }

    client::Pattern path_;
    std::string attribute_;
    std::string unit_;
    bool is_there_ = false;
    std::vector<std::string> headings_;
    std::set<std::string> known_;
    std::set<std::string> refusals_;
};

class TableWord final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddName(app, "PATTERN", pattern_, "Path with wildcards and filters; a row each match")
            ->required();
        AddNames(app, "PATH", paths_, "Columns: paths from each of these nodes")->required();
        AddName(app, "--attr", attribute_, "Attribute to be read; value when it is left out");
        AddNames(app, "--unit", units_, "NAME=UNIT: unit of the column, may be repeated")
            ->allow_extra_args(false);
        app.add_flag("--csv", csv_, "Write comma-separated values");
        AddJson(app, json_);
        app.callback([this] { MakeColumns(); });
    }

    ExitCode Run(CommandContext& around) override {
        const std::string problem = ForEachMatch(
            *around.session, pattern_, [this](const client::Place& match) { AddRow(match); });
        if (!problem.empty()) {
            around.out.Note(problem);
            return ExitCode::kFailed;
        }
        const ExitCode code = TellProblems(around.out);
        (json_ ? WriteJson : csv_ ? WriteCsv : WritePlain)(Whole(), around.out);
        return code;
    }

 private:
    struct GatheredRow {
        Node node;
        std::string path;
        std::vector<Cells> cells;  // one each group
    };

    void AddGroup(const std::string& path) {
        try {
            groups_.emplace_back(path, attribute_.empty() ? "value" : attribute_);
        } catch (const client::PathError& error) {
            unread_.push_back(MessageOf(error));
        }
    }
    // Throws when a unit is for no column.
    void MakeColumns() {
        if (csv_ && json_) throw CLI::ExcludesError("--csv", "--json");
        for (const std::string& path : paths_) AddGroup(path);
        for (const std::string& text : units_) {
            const std::size_t sign = text.rfind('=');
            if (sign == std::string::npos || sign == 0 || sign + 1 == text.size()) {
                throw CLI::ValidationError("--unit", "NAME=UNIT expected: " + text);
            }
            const client::Pattern named(text.substr(0, sign));
            bool found = false;
            for (ColumnGroup& group : groups_) {
                if (!group.Path().IsSame(named)) continue;
                group.ShowIn(text.substr(sign + 1));
                found = true;
            }
            if (!found) throw CLI::ValidationError("--unit", "no such column: " + text);
        }
    }
    void AddRow(const client::Place& match) {
        GatheredRow& row = rows_.emplace_back(GatheredRow{match.node, match.path, {}});
        for (ColumnGroup& group : groups_) row.cells.push_back(group.Read(match.node));
    }
    ExitCode TellProblems(Output& out) const {
        ExitCode code = ExitCode::kOk;
        const auto tell = [&](const std::string& problem) {
            out.Note(problem);
            code = ExitCode::kFailed;
        };
        for (const std::string& problem : unread_) tell(problem);
        for (const ColumnGroup& group : groups_) {
            if (!group.IsThere()) tell(WhyMissing(group.Path()));
            for (const std::string& text : group.Refusals())
                tell(OneLine(group.Path().Text()) + ": " + text);
        }
        return code;
    }
    // From the first row that has names near to it, or else from the first.
    std::string WhyMissing(const client::Pattern& path) const {
        for (const GatheredRow& row : rows_) {
            const client::NotFound missing = path.WhyMissing(row.node);
            if (!missing.Near().empty()) return MessageOf(missing);
        }
        return MessageOf(path.WhyMissing(rows_.front().node));
    }
    Table Whole() const {
        Table table;
        table.attribute = attribute_ == "value" ? "" : attribute_;
        for (const GatheredRow& row : rows_) {
            table.rows.push_back({NameWithKey(row.node), row.path, {}});
        }
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

    std::string pattern_;
    std::vector<std::string> paths_;
    std::string attribute_;
    std::vector<std::string> units_;
    bool csv_ = false;
    bool json_ = false;
    std::vector<ColumnGroup> groups_;
    std::vector<std::string> unread_;  // why columns can't be read
    std::vector<GatheredRow> rows_;
};

}  // namespace

std::unique_ptr<Word> MakeTable() {
    return std::make_unique<TableWord>();
}

}  // namespace fixtop
