// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Find final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddName(app, "PATTERN", pattern_, "Path with wildcards and filters; the present node");
        AddName(app, "--name", name_, "Nodes of this name at any level below, with * for any text");
        AddJson(app, json_);
        app.callback([this] {
            if (pattern_.empty() && name_.empty()) throw CLI::RequiredError("PATTERN or --name");
        });
    }

    ExitCode Run(CommandContext& around) override {
        const std::string problem = Seek(around);
        if (problem.empty()) return ExitCode::kOk;
        around.out.Note(problem);
        return ExitCode::kFailed;
    }

 private:
    std::string Seek(CommandContext& around) const try {
        const client::Search search =
            name_.empty() ? client::Search(pattern_) : client::Search(pattern_, name_);
        return ForEachFound(
            *around.session,
            [&](const Node& start, const FoundVisitor& found) { search.ForEach(start, found); },
            [&](const client::Place& match) {
                const std::string path = PathOf(match);
                around.out.Line(json_ ? Record(match.node, path) : path);
            },
            "nothing matches: " + OneLine(name_.empty() ? pattern_ : name_));
    } catch (const client::PathError& error) {
        return MessageOf(error);
    }
    static std::string Record(const Node& node, const std::string& path) {
        Json record;
        record["path"] = path;
        record["name"] = node.Name();
        record["type"] = ToJson(node.Attribute("type"));
        return ToLine(record);
    }

    std::string pattern_;
    std::string name_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeFind() {
    return std::make_unique<Find>();
}

}  // namespace fixtop
