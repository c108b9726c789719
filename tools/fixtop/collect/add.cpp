// SPDX-License-Identifier: Apache-2.0
#include <set>

#include "collect/selected_items.h"
#include "collect/selection_word.h"
#include "memory.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class CollectAdd final : public SelectionWord {
 public:
    void Declare(CLI::App& app) override {
        AddNames(app, "PATTERN", patterns_, "Nodes: paths, with wildcards and filters")->required();
        AddName(app, "--unit", unit_, "Unit in which they are shown");
        AddJson(app, json_);
    }

 private:
    ExitCode Work(CommandContext& around) override {
        const int before = MemoryFailures();
        const auto turn = client::Selection::TurnAt(File());
        client::Selection selection = LoadOrBegin(around);
        ExitCode code = ExitCode::kOk;
        const auto refuse = [&](const std::string& problem) {
            around.out.Note(problem);
            code = ExitCode::kFailed;
        };
        std::vector<std::string> added;
        const auto add = [&](const client::Place& match) {
            try {
                if (!match.attribute.empty()) {
                    refuse(OneLine(match.path) + ": nodes are chosen, not attributes of them");
                } else if (selection.Add(match.node, unit_)) {
                    added.push_back(match.path);
                }
            } catch (const client::Refused& refused) {
                refuse(OneLine(match.path) + ": " + OneLine(refused.Text()));
            }
        };
        for (const std::string& pattern : patterns_) {
            const std::string problem = ForEachMatch(*around.session, pattern, add);
            if (!problem.empty()) refuse(problem);
        }
        // What was not found for lack of memory is not to be missing in the file.
        if (MemoryFailures() != before) throw std::bad_alloc();
        // Saved before anything is written: whoever reads may have gone away.
        if (selection.Size() > 0) selection.Save(File());
        if (!json_) {
            for (const std::string& path : added) around.out.Line(OneLine(path));
        } else if (!added.empty()) {
            WriteRecords(selection, {added.begin(), added.end()}, around.out);
        }
        return code;
    }
    static void WriteRecords(const client::Selection& selection, const std::set<std::string>& added,
                             Output& out) {
        const std::vector<std::string> paths = selection.Paths();
        const std::vector<std::string> units = selection.Units();
        for (std::size_t i = 0; i < paths.size(); ++i) {
            if (added.contains(paths[i])) out.Line(RecordOfChoice(paths[i], units[i]));
        }
    }
    client::Selection LoadOrBegin(CommandContext& around) {
        const CaseSession& session = *around.session;
        if (!client::Selection::IsFile(File())) return client::Selection(session.Top());
        client::Selection selection = client::Selection::Load(File(), session.OpenCase());
        RequireWhole(selection, File());
        if (selection.Size() == 0) return client::Selection(session.Top());
        if (*selection.Root() == session.Top()) return selection;
        const bool is_raw = *selection.Root() == session.OpenCase().Top();
        throw client::CaseError(
            {File() + (is_raw ? ": its nodes are of the case's own tree; leave --neutral out"
                              : ": its nodes are of the neutral view; give --neutral")});
    }

    std::vector<std::string> patterns_;
    std::string unit_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeCollectAdd() {
    return std::make_unique<CollectAdd>();
}

}  // namespace fixtop
