// SPDX-License-Identifier: Apache-2.0
#include "collect/selected_items.h"
#include "collect/selection_word.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class CollectRead final : public SelectionWord {
 public:
    void Declare(CLI::App& app) override { format_.Declare(app); }

 private:
    ExitCode Work(CommandContext& around) override {
        const SelectedItems items(Load(*around.session, around.out));
        const ExitCode code = TellMissing(items, "the case", around.out);
        Write(items, format_, around.out);
        return code;
    }

    ItemFormat format_;
};

}  // namespace

std::unique_ptr<Word> MakeCollectRead() {
    return std::make_unique<CollectRead>();
}

}  // namespace fixtop
