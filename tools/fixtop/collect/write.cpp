// SPDX-License-Identifier: Apache-2.0
#include "collect/selected_items.h"
#include "collect/selection_word.h"
#include "input_lines.h"
#include "solver_run.h"
#include "stores.h"
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
        const client::Selection selection = Load(*around.session, around.out);
        if (!TakeInput(around.out)) return ExitCode::kUnreadable;
        if (values_.size() != selection.Size()) {
            around.out.Note(OneLineMessage(File()) + ": expected a value for each node, " +
                            std::to_string(selection.Size()) + " and not " +
                            std::to_string(values_.size()) +
                            "; an empty one leaves its node as it is");
            return ExitCode::kUsage;
        }
        CaseSession& session = *around.session;
        const bool stays_held = session.IsHeld();
        const Stored stored = Store(selection, session, around.out);
        bool is_done = stored.all;
        const bool is_solved = !stays_held && stored.any;
        if (is_solved) {
            is_done &= Solve(session, around.out);
        } else if (!stays_held) {
            session.DropHold();
        }
        // Under another name the case has another list of what it publishes.
        const SelectedItems items(selection);
        // Saved before anything is written: whoever reads may have gone away.
        ExitCode code = SaveSolved(session, stored.all, saved_, around.out);
        const ExitCode missing = TellMissing(items, "the case", around.out);
        Write(items, format_, around.out);
        if (session.TheChanges().AreUnsaved()) TellUnsaved(session, saved_, around.out);
        if (is_solved) TellWhyIncomplete(session, around.out);
        if (code == ExitCode::kOk && !is_done) code = ExitCode::kFailed;
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
    struct Stored {
        bool all = true;
        bool any = false;
    };
    // As set stores: in the hold of the session, to be taken back by undo.
    Stored Store(const client::Selection& selection, CaseSession& session, Output& out) const {
        const std::vector<client::ItemState> states = selection.States();
        const std::vector<std::string> units = selection.Units();
        Stored stored;
        std::size_t item = 0;
        selection.ForEachNode([&](const std::string& path, const std::optional<Node>& node) {
            const std::size_t at = item++;
            if (values_[at].empty()) return;
            const std::string refused = StoreTo(node, states[at], units[at], values_[at], session);
            stored.any |= refused.empty();
            stored.all &= refused.empty();
            if (!refused.empty()) out.Note(OneLine(path) + ": " + refused);
        });
        return stored;
    }
    // Answers the reason of a refusal.
    std::string StoreTo(const std::optional<Node>& node, const client::ItemState& state,
                        const std::string& unit, const std::string& value,
                        CaseSession& session) const {
        if (!node) return "No element exists under this node";
        if (unit_.empty() && state.lacks_unit) {
            return "the unit that the selection has for it is none of it: " + OneLine(unit);
        }
        if (unit_.empty() && !unit.empty()) node->ShowIn(unit);
        return fixtop::Store(session, {*node, "", ""}, value, unit_);
    }
    // Whether all compositions were taken, and the solve completed. In an open hold neither is
    // known yet.
    static bool Solve(CaseSession& session, Output& out) {
        const client::Released released = SolveWithProgress(session);
        return TellReleased(released, out) && released.solve.complete;
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
