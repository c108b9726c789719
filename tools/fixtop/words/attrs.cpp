#include "case_session.h"
#include "words/makers.h"

namespace {

class Attrs final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddText(app, "PATH", path_, "Node")->required();
        AddJson(app, json_);
    }

    ExitCode Run(Surroundings& around) override {
        std::string problem;
        const auto found = Locate(*around.session, path_, problem);
        if (!found) {
            around.out.Note(problem);
            return ExitCode::kFailed;
        }
        for (const auto& [name, value] : AttributesOf(*found->node)) {
            if (json_) {
                Json record;
                record["name"] = name;
                record["value"] = ToJson(value);
                around.out.Line(ToLine(record));
            } else {
                around.out.Line(name + '\t' + OneLine(value));
            }
        }
        return ExitCode::kOk;
    }

 private:
    std::string path_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeAttrs() {
    return std::make_unique<Attrs>();
}
