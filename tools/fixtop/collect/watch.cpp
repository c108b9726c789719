// SPDX-License-Identifier: Apache-2.0
#include "collect/selection_word.h"
#include "watched_solve.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class CollectWatch final : public SelectionWord {
 public:
    void Declare(CLI::App& app) override { solve_.Declare(app); }

 private:
    ExitCode Work(CommandContext& around) override {
        const client::Selection selection = Load(*around.session, around.out);
        const bool all_found = Watch(selection, around.out);
        const ExitCode code = solve_.Run(around);
        return all_found ? code : ExitCode::kFailed;
    }
    bool Watch(const client::Selection& selection, Output& out) {
        const std::vector<std::string> units = selection.Units();
        std::size_t index = 0;
        bool all_found = true;
        selection.ForEachNode([&](const std::string& path, const std::optional<Node>& node) {
            const std::string& unit = units[index++];
            if (node) {
                if (!unit.empty()) node->ShowIn(unit);
                solve_.Watched().Add(*node, path);
            } else {
                out.Note(OneLine(path) + ": not in the case");
                all_found = false;
            }
        });
        return all_found;
    }

    WatchedSolve solve_;
};

}  // namespace

std::unique_ptr<Word> MakeCollectWatch() {
    return std::make_unique<CollectWatch>();
}

}  // namespace fixtop
