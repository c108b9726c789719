// SPDX-License-Identifier: Apache-2.0
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
    Node Shown(CaseSession& session, const Node& found) override { return session.Listed(found); }
    void Show(const Node& node, Output& out) override {
        const std::string parent = AsJson() ? node.Path() : "";
        const auto show = [&](const client::Child& child) {
            out.Line(AsJson() ? Record(child.node, client::JoinPath(parent, child.step))
                              : ShownName(child.node));
            return true;
        };
        if (all_ || AsJson()) {
            ForEachChild(node, show);
        } else if (const int left_out = ForEachFirstChild(node, show)) {
            out.Note(FoldedLine(left_out));
        }
    }
    static std::string Record(const Node& child, const std::string& path) {
        Json record;
        record["name"] = child.Name();
        record["path"] = OneLine(path);
        record["type"] = ToJson(child.Attribute("type"));
        return ToLine(record);
    }

    bool all_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeLs() {
    return std::make_unique<Ls>();
}

}  // namespace fixtop
