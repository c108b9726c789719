// SPDX-License-Identifier: Apache-2.0
#include "collect/selection_word.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Publish final : public SelectionWord {
 public:
    void Declare(CLI::App&) override {}

 private:
    ExitCode Work(CommandContext& around) override {
        const client::Selection selection =
            client::Selection::Load(File(), around.session->OpenCase());
        RequireWhole(selection, File());
        around.out.Line(OneLine(selection.Publish()));
        return ExitCode::kOk;
    }
};

}  // namespace

std::unique_ptr<Word> MakePublish() {
    return std::make_unique<Publish>();
}

}  // namespace fixtop
