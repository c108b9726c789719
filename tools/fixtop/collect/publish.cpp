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
        around.out.Line(OneLine(Load(*around.session).Publish()));
        return ExitCode::kOk;
    }
};

}  // namespace

std::unique_ptr<Word> MakePublish() {
    return std::make_unique<Publish>();
}

}  // namespace fixtop
