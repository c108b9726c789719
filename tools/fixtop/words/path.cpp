// SPDX-License-Identifier: Apache-2.0
#include "fixtop/fixtop.h"
#include "line_text.h"
#include "node.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Path final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddName(app, "EXPR", expression_, "Path expression")->required();
        AddJson(app, json_);
    }

    ExitCode Run(CommandContext& around) override {
        FIValue steps;
        FIValue error;
        if (!FixtopDescribePath(FIValue(OneLine(expression_).c_str()), steps, error)) {
            around.out.Note(error.ToText());
            return ExitCode::kFailed;
        }
        std::string text = steps.ToText();
        while (!text.empty() && text.back() == '\n') text.pop_back();
        around.out.Line(json_ ? Record(text) : text);
        return ExitCode::kOk;
    }

 private:
    std::string Record(const std::string& steps) const {
        Json record;
        record["path"] = OneLine(expression_);
        record["steps"] = steps;
        return ToLine(record);
    }

    std::string expression_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakePath() {
    return std::make_unique<Path>();
}

}  // namespace fixtop
