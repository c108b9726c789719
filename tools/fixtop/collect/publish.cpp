// SPDX-License-Identifier: Apache-2.0
#include "collect/selection_word.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Publish final : public SelectionWord {
 public:
    void Declare(CLI::App& app) override { AddJson(app, json_); }

 private:
    ExitCode Work(CommandContext& around) override {
        const client::Selection selection =
            client::Selection::Load(File(), around.session->OpenCase());
        RequireWhole(selection, File());
        const std::string file = OneLine(selection.Publish());
        around.out.Line(json_ ? Record(file) : file);
        return ExitCode::kOk;
    }
    static std::string Record(const std::string& file) {
        Json record;
        record["file"] = file;
        return ToLine(record);
    }

    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakePublish() {
    return std::make_unique<Publish>();
}

}  // namespace fixtop
