#include "words/makers.h"
#include "words/node_word.h"

namespace fixtop {

namespace {

class Ls final : public NodeWord {
 public:
    void Declare(CLI::App& app) override {
        DeclareNode(app, "Node; the present one when it is left out");
        app.add_flag("--all", all_, "All elements of a long array");
    }

 private:
    void Show(FIIteratorBase& node, Output& out) override {
        const std::string parent = AsJson() ? FullPath(node) : "";
        const auto show = [&](FIIteratorBase& child, const ChildPlace& place) {
            out.Line(AsJson() ? Record(child, JoinPath(parent, StepFor(place))) : ShownName(child));
            return true;
        };
        if (all_ || AsJson()) {
            ForEachChild(node, show);
        } else if (const int left_out = ForEachFirstChild(node, show)) {
            out.Note(FoldedLine(left_out));
        }
    }
    static std::string Record(FIIteratorBase& child, const std::string& path) {
        Json record;
        record["name"] = NameOf(child);
        record["path"] = OneLine(path);
        record["type"] = ToJson(AttributeOf(child, "type"));
        return ToLine(record);
    }

    bool all_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeLs() {
    return std::make_unique<Ls>();
}

}  // namespace fixtop
