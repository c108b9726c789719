#include "table.h"

#include <map>
#include <set>

#include "search.h"
#include "words/makers.h"

namespace fixtop {

namespace {

using Cells = std::map<std::string, TableCell>;  // by heading

// The same steps, whatever quotes they are written with.
std::string Plainly(const std::string& path) {
    std::string plain;
    for (const StepText& step : SplitPath(path)) {
        plain = JoinPath(
            plain, QuotedName(step.name) + (step.count ? '#' + *step.count : "") + step.filters);
        if (!step.Parentheses().empty()) plain += '(' + step.Parentheses() + ')';
    }
    return plain;
}

// What one PATH of the line makes: a column, or one for each element of an array.
class ColumnGroup {
 public:
    ColumnGroup(std::string path, std::string attribute)
        : path_(std::move(path)), attribute_(std::move(attribute)) {
        const std::string own = SplitPath(path_).back().attribute;
        opens_arrays_ = own.empty();
        if (!own.empty()) attribute_ = own;
        if (attribute_.empty()) attribute_ = "value";
    }

    const std::string& Path() const { return path_; }
    void ShowIn(std::string unit) { unit_ = std::move(unit); }
    bool IsThere() const { return is_there_; }
    // Headings in order of appearance.
    const std::vector<std::string>& Headings() const { return headings_; }
    // What the module said against the unit, each text once.
    const std::set<std::string>& Refusals() const { return refusals_; }

    Cells Read(FIIteratorBase& node) {
        Cells cells;
        const NodeRef place = CopyOf(node);
        if (!place->SeekPath(FIValue(path_.c_str()))) return cells;
        is_there_ = true;
        Add(*place, path_, cells);
        return cells;
    }

 private:
    void Add(FIIteratorBase& node, const std::string& heading, Cells& cells) {
        if (opens_arrays_ && IsArray(node)) {
            ForEachChild(node, [&](FIIteratorBase& element, const ChildPlace& place) {
                Add(element, JoinPath(heading, StepFor(place)), cells);
                return true;
            });
            return;
        }
        if (known_.insert(heading).second) headings_.push_back(heading);
        cells.emplace(heading, CellOf(node));
    }
    TableCell CellOf(FIIteratorBase& node) {
        std::string refused = SetUnit(node, attribute_, unit_);
        if (!refused.empty()) {
            refusals_.insert(refused);
            return {};
        }
        TableCell cell{AttributeOf(node, attribute_.c_str()), UnitOf(node, attribute_),
                       attribute_ == "value" && IsStale(node)};
        refused = OtherUnit(attribute_, cell.value, cell.unit, unit_);
        if (!refused.empty()) refusals_.insert(refused);
        return cell;
    }

    std::string path_;
    std::string attribute_;
    std::string unit_;
    bool opens_arrays_ = true;
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

    ExitCode Run(Surroundings& around) override {
        const std::string problem =
            ForEachMatch(*around.session, pattern_, [this](const Match& match) { AddRow(match); });
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
        NodeRef node;
        std::string path;
        std::vector<Cells> cells;  // one each group
    };

    // Throws when a unit is for no column.
    void MakeColumns() {
        if (csv_ && json_) throw CLI::ExcludesError("--csv", "--json");
        for (const std::string& path : paths_) groups_.emplace_back(path, attribute_);
        for (const std::string& text : units_) {
            const std::size_t sign = text.rfind('=');
            if (sign == std::string::npos || sign == 0 || sign + 1 == text.size()) {
                throw CLI::ValidationError("--unit", "NAME=UNIT expected: " + text);
            }
            const std::string name = Plainly(text.substr(0, sign));
            bool found = false;
            for (ColumnGroup& group : groups_) {
                if (Plainly(group.Path()) != name) continue;
                group.ShowIn(text.substr(sign + 1));
                found = true;
            }
            if (!found) throw CLI::ValidationError("--unit", "no such column: " + text);
        }
    }
    void AddRow(const Match& match) {
        GatheredRow& row = rows_.emplace_back(GatheredRow{CopyOf(match.node), match.path, {}});
        for (ColumnGroup& group : groups_) row.cells.push_back(group.Read(match.node));
    }
    ExitCode TellProblems(Output& out) const {
        ExitCode code = ExitCode::kOk;
        const auto tell = [&](const std::string& problem) {
            out.Note(problem);
            code = ExitCode::kFailed;
        };
        for (const ColumnGroup& group : groups_) {
            if (!group.IsThere()) tell(WhyMissing(group.Path()));
            for (const std::string& text : group.Refusals())
                tell(OneLine(group.Path()) + ": " + text);
        }
        return code;
    }
    // From the first row that has names near to it, or else from the first.
    std::string WhyMissing(const std::string& path) const {
        if (std::string error = ParseError(path); !error.empty()) return error;
        for (const GatheredRow& row : rows_) {
            std::string problem = DescribeMissing(*row.node, path);
            if (problem.find("\n  near: ") != std::string::npos) return problem;
        }
        return DescribeMissing(*rows_.front().node, path);
    }
    Table Whole() const {
        Table table;
        table.attribute = attribute_ == "value" ? "" : attribute_;
        for (const GatheredRow& row : rows_) {
            table.rows.push_back({NameWithKey(*row.node), row.path, {}});
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
    std::vector<GatheredRow> rows_;
};

}  // namespace

std::unique_ptr<Word> MakeTable() {
    return std::make_unique<TableWord>();
}

}  // namespace fixtop
