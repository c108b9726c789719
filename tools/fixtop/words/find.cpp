#include "search.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Find final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddName(app, "PATTERN", pattern_, "Path with wildcards and filters")->required();
        AddJson(app, json_);
    }

    ExitCode Run(Surroundings& around) override {
        const std::string problem =
            ForEachMatch(*around.session, pattern_, [&](const Match& match) {
                const std::string path = OneLine(
                    match.attribute.empty() ? match.path
                                            : match.path + '(' + QuotedName(match.attribute) + ')');
                around.out.Line(json_ ? Record(match.node, path) : path);
            });
        if (problem.empty()) return ExitCode::kOk;
        around.out.Note(problem);
        return ExitCode::kFailed;
    }

 private:
    static std::string Record(FIIteratorBase& node, const std::string& path) {
        Json record;
        record["path"] = path;
        record["name"] = NameOf(node);
        record["type"] = ToJson(AttributeOf(node, "type"));
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
