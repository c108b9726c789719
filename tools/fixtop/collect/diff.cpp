// SPDX-License-Identifier: Apache-2.0
#include "collect/selected_items.h"
#include "collect/selection_word.h"
#include "collect/tolerances.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class CollectDiff final : public SelectionWord {
 public:
    void Declare(CLI::App& app) override {
        AddText(app, "A", names_[0], "Case, or demo")->required();
        AddText(app, "B", names_[1], "Case that is compared with it")->required();
        app.add_option_function<std::vector<std::string>>(
               "--tolerance",
               [this](const std::vector<std::string>& texts) { TakeTolerances(texts); },
               "Difference that does not count, in a unit or in all others; may be repeated")
            ->type_name("[UNIT=]NUMBER")
            ->allow_extra_args(false);
        format_.Declare(app);
        AddModel(app, view_);
    }

 private:
    void TakeTolerances(const std::vector<std::string>& texts) {
        for (const std::string& text : texts) {
            const std::string problem = tolerances_.Take(GivenName(text));
            if (!problem.empty()) throw CLI::ValidationError("--tolerance", problem);
        }
    }
    // One case is open at a time.
    ExitCode Work(CommandContext& around) override {
        auto opened = CaseSession::Open(names_[0], view_, around.out);
        if (!opened) return ExitCode::kUnreadable;
        const SelectedItems a(Load(*opened, around.out));
        opened.reset();
        opened = CaseSession::Open(names_[1], view_, around.out);
        if (!opened) return ExitCode::kUnreadable;
        const client::Selection in_b = Load(*opened, around.out);
        SelectedItems b(in_b);
        std::size_t item = 0;
        in_b.ForEachNode([&](const std::string&, const std::optional<Node>& node) {
            if (node) ShowInUnitOf(a, item, *node, b);
            ++item;
        });
        return Compare(a, b, around.out);
    }
    // Values are told apart in the unit that the first case shows.
    static void ShowInUnitOf(const SelectedItems& a, std::size_t item, const Node& in_b,
                             SelectedItems& b) {
        const std::string unit = a.units[item].ToText();
        if (!a.IsThere(item) || !b.IsThere(item)) return;
        if (unit.empty() || unit == b.units[item].ToText()) return;
        try {
            const client::Reading reading = in_b.Read(unit);
            b.values[item] = reading.value;
            b.units[item].SetText(reading.unit);
        } catch (const client::Refused&) {
            // It is no such quantity there, and so another value.
        }
    }
    ExitCode Compare(const SelectedItems& a, const SelectedItems& b, Output& out) const {
        const ExitCode missing[] = {TellMissing(a, names_[0], out), TellMissing(b, names_[1], out)};
        TellStale(a, names_[0], out);
        TellStale(b, names_[1], out);
        Table table;
        table.names = "Path";
        table.headings = {names_[0], names_[1], "Unit", "Difference"};
        bool differs = false;
        for (std::size_t i = 0; i < a.Size(); ++i) {
            if (IsSame(a, b, i)) continue;
            differs = true;
            if (format_.AsJson()) {
                out.Line(Record(a, b, i));
            } else {
                table.rows.push_back(RowOf(a, b, i));
            }
        }
        if (!table.rows.empty()) format_.Write(table, out);
        const bool all_there = missing[0] == ExitCode::kOk && missing[1] == ExitCode::kOk;
        return differs || !all_there ? ExitCode::kFailed : ExitCode::kOk;
    }
    static void TellStale(const SelectedItems& items, const std::string& name, Output& out) {
        int stale = 0;
        for (std::size_t i = 0; i < items.Size(); ++i) stale += items.IsStale(i);
        if (stale == 0) return;
        out.Note(OneLine(name) +
                 ": values that are older than a change of the case: " + std::to_string(stale));
    }
    bool IsSame(const SelectedItems& a, const SelectedItems& b, std::size_t item) const {
        if (!a.IsThere(item) || !b.IsThere(item)) return a.IsThere(item) == b.IsThere(item);
        const std::string unit = a.units[item].ToText();
        return unit == b.units[item].ToText() &&
               tolerances_.AreSame(a.values[item], b.values[item], unit);
    }
    static FIValue Difference(const SelectedItems& a, const SelectedItems& b, std::size_t item) {
        const FIValue &one = a.values[item], &other = b.values[item];
        const bool are_numbers =
            one.IsNumber() && other.IsNumber() && a.units[item].ToText() == b.units[item].ToText();
        return are_numbers ? FIValue::OfReal(other.AsDouble() - one.AsDouble()) : FIValue();
    }
    static std::optional<TableCell> CellOf(const SelectedItems& items, std::size_t item) {
        if (!items.IsThere(item)) return std::nullopt;
        return TableCell{items.values[item], "", items.IsStale(item)};
    }
    static TableRow RowOf(const SelectedItems& a, const SelectedItems& b, std::size_t item) {
        const std::string& path = a.states[item].path;
        return {path,
                path,
                {CellOf(a, item), CellOf(b, item),
                 TextCell((a.IsThere(item) ? a : b).units[item].ToText()),
                 TableCell{Difference(a, b, item), "", false}}};
    }
    static Json SideOf(const SelectedItems& items, std::size_t item) {
        Json side;
        if (!items.IsThere(item)) return side;
        side["value"] = ToJson(items.values[item]);
        side["uom"] = UnitToJson(items.units[item].ToText());
        if (items.IsStale(item)) side["stale"] = true;
        return side;
    }
    static std::string Record(const SelectedItems& a, const SelectedItems& b, std::size_t item) {
        Json record;
        record["path"] = OneLine(a.states[item].path);
        record["a"] = SideOf(a, item);
        record["b"] = SideOf(b, item);
        record["difference"] = ToJson(Difference(a, b, item));
        return ToLine(record);
    }

    std::string names_[2];
    Tolerances tolerances_;
    ItemFormat format_;
    ViewOptions view_;
};

}  // namespace

std::unique_ptr<Word> MakeCollectDiff() {
    return std::make_unique<CollectDiff>();
}

}  // namespace fixtop
