// SPDX-License-Identifier: Apache-2.0
#include <limits>

#include "words/makers.h"
#include "words/node_word.h"

namespace fixtop {

namespace {

class Tree final : public NodeWord {
 public:
    void Declare(CLI::App& app) override {
        DeclareNode(app, "Node; the present one when it is left out");
        app.add_option("--depth", depth_, "Levels below the node; all when it is left out")
            ->check(CLI::Range(0, std::numeric_limits<int>::max(), "NONNEGATIVE"));
        app.add_flag("--attachments", attachments_, "Go on below attachments");
        app.add_flag("--all", all_, "All elements of long arrays");
    }

 private:
    void Show(const Node& node, Output& out) override {
        if (!AsJson()) return ShowBelow(node, 0, out);
        out.Line(ToLine(Nested(node, depth_), 2));
    }

    static bool IsAttachment(const Node& node) { return TextOf(node, "type") == "Attachment"; }
    bool IsOpen(const Node& node, int levels_left) const {
        return levels_left > 0 && (attachments_ || !IsAttachment(node));
    }

    static std::string Indent(int level) { return std::string(std::size_t{2} * level, ' '); }
    static std::string Describe(const Node& node) {
        const std::string name = ShownName(node);
        const std::string type = TextOf(node, "type");
        if (!node.IsVariable()) return type.empty() ? name : name + "  (" + type + ")";
        const std::string value = TextOf(node, "value");
        const char* joint = type == "Attachment" ? " -> " : " = ";
        if (value.empty()) return name + joint + "(none)";
        const std::string uom = TextOf(node, "uom");
        return name + joint + value + (uom.empty() ? "" : ' ' + uom) +
               (node.IsStale() ? "  (stale)" : "");
    }
    void ShowBelow(const Node& node, int level, Output& out) const {
        out.Line(Indent(level) + Describe(node));
        if (!IsOpen(node, depth_ - level)) return;
        const auto show = [&](const client::Child& child) {
            ShowBelow(child.node, level + 1, out);
            return true;
        };
        if (all_) {
            ForEachChild(node, show);
        } else if (const int left_out = ForEachFirstChild(node, show)) {
            out.Line(Indent(level + 1) + FoldedLine(left_out));
        }
    }
    Json Nested(const Node& node, int levels_left) const {
        Json record;
        record["name"] = node.Name();
        record["type"] = ToJson(node.Attribute("type"));
        if (node.IsVariable()) {
            record["value"] = ToJson(node.Attribute("value"));
            record["uom"] = ToJson(node.Attribute("uom"));
            MarkStale(node, record);
        }
        if (!IsOpen(node, levels_left)) return record;
        Json children = Json::array();
        ForEachChild(node, [&](const client::Child& child) {
            children.push_back(Nested(child.node, levels_left - 1));
            return true;
        });
        if (!children.empty()) record["children"] = std::move(children);
        return record;
    }

    int depth_ = std::numeric_limits<int>::max();
    bool attachments_ = false;
    bool all_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeTree() {
    return std::make_unique<Tree>();
}

}  // namespace fixtop
