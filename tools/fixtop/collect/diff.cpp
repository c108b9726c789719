// SPDX-License-Identifier: Apache-2.0
#include "collect/selected_items.h"
#include "collect/selection_word.h"
#include "comparison.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class CollectDiff final : public SelectionWord {
 public:
    void Declare(CLI::App& app) override {
        AddText(app, "A", names_[0], "Case, or demo")->required();
        AddText(app, "B", names_[1], "Case that is compared with it")->required();
        comparison_.Declare(app);
        AddModel(app, view_);
    }

    bool TellsFailures() const override { return true; }

 private:
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
        std::vector<ComparedItem> items;
        for (std::size_t i = 0; i < a.Size(); ++i) {
            items.push_back({a.states[i].path, {CellOf(a, i), CellOf(b, i)}});
        }
        const bool differs = comparison_.Write(items, names_, out);
        const bool all_there = missing[0] == ExitCode::kOk && missing[1] == ExitCode::kOk;
        return differs || !all_there ? ExitCode::kFailed : ExitCode::kOk;
    }
    static std::optional<TableCell> CellOf(const SelectedItems& items, std::size_t item) {
        if (!items.IsThere(item)) return std::nullopt;
        return TableCell{items.values[item], items.units[item].ToText(), items.IsStale(item)};
    }

    std::array<std::string, 2> names_;
    Comparison comparison_;
    ViewOptions view_;
};

}  // namespace

std::unique_ptr<Word> MakeCollectDiff() {
    return std::make_unique<CollectDiff>();
}

}  // namespace fixtop
