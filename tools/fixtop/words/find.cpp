// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Find final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddName(app, "PATTERN", pattern_, "Path with wildcards and filters")->required();
        AddJson(app, json_);
    }

    ExitCode Run(CommandContext& around) override {
        const std::string problem =
            ForEachMatch(*around.session, pattern_, [&](const client::Place& match) {
                const std::string path = PathOf(match);
                around.out.Line(json_ ? Record(match.node, path) : path);
            });
        if (problem.empty()) return ExitCode::kOk;
        around.out.Note(problem);
        return ExitCode::kFailed;
    }

 private:
    static std::string Record(const Node& node, const std::string& path) {
        Json record;
        record["path"] = path;
        record["name"] = node.Name();
        record["type"] = ToJson(node.Attribute("type"));
        return ToLine(record);
    }

    std::string pattern_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeFind() {
    return std::make_unique<Find>();
}

}  // namespace fixtop
