// SPDX-License-Identifier: Apache-2.0
#include "collect/selected_items.h"
#include "collect/selection_word.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class CollectList final : public SelectionWord {
 public:
    void Declare(CLI::App& app) override { AddJson(app, json_); }

 private:
    ExitCode Work(CommandContext& around) override {
        const client::Selection selection = Load(around.out);
        const std::vector<std::string> paths = selection.Paths();
        const std::vector<std::string> units = selection.Units();
        for (std::size_t i = 0; i < paths.size(); ++i) {
            around.out.Line(json_ ? RecordOfChoice(paths[i], units[i]) : Line(paths[i], units[i]));
        }
        return ExitCode::kOk;
    }
    static std::string Line(const std::string& path, const std::string& unit) {
        return unit.empty() ? OneLine(path) : OneLine(path) + '\t' + OneLine(unit);
    }

    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeCollectList() {
    return std::make_unique<CollectList>();
}

}  // namespace fixtop
