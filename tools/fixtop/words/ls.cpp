#include "case_session.h"
#include "words/makers.h"

namespace {

class Ls final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddText(app, "PATH", path_, "Node; the present one when it is left out");
        app.add_flag("--all", all_, "All elements of a long array");
        AddJson(app, json_);
    }

    ExitCode Run(Surroundings& around) override {
        std::string problem;
        const auto found = Locate(*around.session, path_, problem);
        if (!found) {
            around.out.Note(problem);
            return ExitCode::kFailed;
        }
        const std::string parent = json_ ? FullPath(*found->node) : "";
        const auto show = [&](FIIteratorBase& child, const ChildPlace& place) {
            around.out.Line(json_ ? Record(child, JoinPath(parent, StepFor(place)))
                                  : ShownName(child));
            return true;
        };
        if (all_ || json_) {
            ForEachChild(*found->node, show);
        } else if (const int left_out = ForEachFirstChild(*found->node, show)) {
            around.out.Note(FoldedLine(left_out));
        }
        return ExitCode::kOk;
    }

 private:
    static std::string Record(FIIteratorBase& child, const std::string& path) {
        Json record;
        record["name"] = NameOf(child);
        record["path"] = path;
        record["type"] = ToJson(AttributeOf(child, "type"));
        return ToLine(record);
    }

    std::string path_;
    bool all_ = false;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeLs() {
    return std::make_unique<Ls>();
}
