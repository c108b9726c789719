// SPDX-License-Identifier: Apache-2.0
#include "collect/selected_items.h"
#include "collect/selection_word.h"
#include "input_lines.h"
#include "solver_run.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class CollectWrite final : public SelectionWord {
 public:
    void Declare(CLI::App& app) override {
        app.add_option("VALUE", values_, "Values, one each node; - reads them from standard input")
            ->transform(GivenText)
            ->required();
        AddName(app, "--unit", unit_, "Unit of all values");
        AddFile(app, "--save", saved_, "Write the changed case to this file");
        format_.Declare(app);
    }

 private:
    ExitCode Work(CommandContext& around) override {
        client::Selection selection = Load(*around.session, around.out);
        if (!TakeInput(around.out)) return ExitCode::kUnreadable;
        if (values_.size() != selection.Size()) {
            around.out.Note(OneLineMessage(File()) + ": expected a value for each node, " +
                            std::to_string(selection.Size()) + " and not " +
                            std::to_string(values_.size()) +
                            "; an empty one leaves its node as it is");
            return ExitCode::kUsage;
        }
        const bool all_stored = Store(selection, around);
        // Under another name the case has another list of what it publishes.
        const SelectedItems items(selection);
        // Saved before anything is written: whoever reads may have gone away.
        ExitCode code = SaveSolved(*around.session, saved_, around.out);
        const ExitCode missing = TellMissing(items, "the case", around.out);
        Write(items, format_, around.out);
        TellWhyIncomplete(*around.session, around.out);
        if (code == ExitCode::kOk && !all_stored) code = ExitCode::kFailed;
        return code == ExitCode::kOk ? missing : code;
    }
    // Puts the lines of standard input in place of each -.
    bool TakeInput(Output& out) {
        std::vector<std::string> values;
        for (std::string& value : values_) {
            if (value != "-") {
                values.push_back(std::move(value));
                continue;
            }
            const auto take = [&](const std::string& line) { values.push_back(line); };
            if (!ForEachInputLine(take, out)) return false;
        }
        values_ = std::move(values);
        return true;
    }
    bool Store(client::Selection& selection, CommandContext& around) const {
        const Progress progress(*around.session);
        around.session->Solver().SolveOnStore(true);
        around.session->TheChanges().SetUnsaved(true);
        const std::vector<std::string> refused =
            selection.Store(std::span<const std::string>(values_), unit_);
        const std::vector<std::string> paths = selection.Paths();
        bool all_stored = true;
        for (std::size_t i = 0; i < refused.size(); ++i) {
            if (refused[i].empty()) continue;
            around.out.Note(OneLine(paths[i]) + ": " + OneLine(refused[i]));
            all_stored = false;
        }
        return all_stored;
    }

    std::vector<std::string> values_;
    std::string unit_;
    std::string saved_;
    ItemFormat format_;
};

}  // namespace

std::unique_ptr<Word> MakeCollectWrite() {
    return std::make_unique<CollectWrite>();
}

}  // namespace fixtop
