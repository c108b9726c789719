// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "table_maker.h"
#include "words/makers.h"

namespace fixtop {

namespace {

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
            *around.session, pattern_,
            [this](const client::Place& match) { maker_.AddRow(match.node, match.path); });
        if (!problem.empty()) {
            around.out.Note(problem);
            return ExitCode::kFailed;
        }
        const ExitCode code = TellProblems(around.out);
        (json_ ? WriteJson : csv_ ? WriteCsv : WritePlain)(Whole(), around.out);
        return code;
    }

 private:
    void AddGroup(const std::string& path) {
        try {
            maker_.AddColumn({path, attribute_.empty() ? "value" : attribute_});
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
            for (ColumnGroup& group : maker_.Columns()) {
                if (!group.Path().IsSame(named)) continue;
                group.ShowIn([unit = text.substr(sign + 1)](const Node&) { return unit; });
                found = true;
            }
            if (!found) throw CLI::ValidationError("--unit", "no such column: " + text);
        }
    }
    ExitCode TellProblems(Output& out) {
        ExitCode code = ExitCode::kOk;
        const auto tell = [&](const std::string& problem) {
            out.Note(problem);
            code = ExitCode::kFailed;
        };
        for (const std::string& problem : unread_) tell(problem);
        for (const ColumnGroup& group : maker_.Columns()) {
            if (!group.IsThere()) tell(maker_.WhyMissing(group));
            for (const std::string& text : group.Refusals())
                tell(OneLine(group.Path().Text()) + ": " + text);
        }
        return code;
    }
    Table Whole() const {
        Table table = maker_.Whole();
        table.attribute = attribute_ == "value" ? "" : attribute_;
        return table;
    }

    std::string pattern_;
    std::vector<std::string> paths_;
    std::string attribute_;
    std::vector<std::string> units_;
    bool csv_ = false;
    bool json_ = false;
    TableMaker maker_;
    std::vector<std::string> unread_;  // why columns can't be read
};

}  // namespace

std::unique_ptr<Word> MakeTable() {
    return std::make_unique<TableWord>();
}

}  // namespace fixtop
