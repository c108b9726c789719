// SPDX-License-Identifier: Apache-2.0
#include "collect/selection_word.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class CollectRemove final : public SelectionWord {
 public:
    void Declare(CLI::App& app) override {
        AddNames(app, "PATH", paths_, "Nodes, by the paths that list writes")->required();
        AddJson(app, json_);
    }

 private:
    ExitCode Work(CommandContext& around) override {
        const auto turn = client::Selection::TurnAt(File());
        client::Selection selection = client::Selection::Load(File());
        RequireWhole(selection, File());
        ExitCode code = ExitCode::kOk;
        std::vector<std::string> removed;
        for (const std::string& path : paths_) {
            const std::string problem = Take(path, selection);
            if (problem.empty()) {
                removed.push_back(path);
                continue;
            }
            around.out.Note(problem);
            code = ExitCode::kFailed;
        }
        if (!removed.empty()) selection.Save(File());
        if (!json_) return code;
        for (const std::string& path : removed) {
            Json record;
            record["removed"] = OneLine(path);
            around.out.Line(ToLine(record));
        }
        return code;
    }
    // Answers what is wrong.
    static std::string Take(const std::string& path, client::Selection& selection) {
        try {
            return selection.Remove(path) ? "" : "not in the selection: " + OneLine(path);
        } catch (const client::PathError& error) {
            return MessageOf(error);
        }
    }

    std::vector<std::string> paths_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeCollectRemove() {
    return std::make_unique<CollectRemove>();
}

}  // namespace fixtop
