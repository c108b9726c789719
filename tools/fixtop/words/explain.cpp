// SPDX-License-Identifier: Apache-2.0
#include <sstream>

#include "words/makers.h"
#include "words/node_word.h"

namespace fixtop {

namespace {

// One of the nodes of the application on which a neutral node stands.
struct Side {
    const char* words;
    Node::Side side;
    const char* value;  // the attributes of the neutral node that show this side
    const char* uom;
};
constexpr Side kSides[] = {{"calculated", Node::Side::kCalculated, "value", "uom"},
                           {"specified", Node::Side::kSpecified, "spec_value", "spec_uom"}};

class Explain final : public NodeWord {
 public:
    void Declare(CLI::App& app) override {
        DeclareNode(app, "Node of the neutral view")->required();
    }

 private:
    std::unique_ptr<CaseSession> Other(const CaseSession& session) override {
        return session.InNeutralView();
    }
    // The path may be one of the case's own tree, as most other words write them.
    std::string Beside(const CaseSession& session) const override try {
        if (!session.OpenCase().Top().Find(Path())) return "";
        return "\n  it is a node of the case's own tree; expected one of the neutral view, which "
               "find --neutral lists";
    } catch (const client::PathError&) {
        return "";
    }
    void Show(const Node& node, Output& out) override {
        if (AsJson()) return out.Line(ToLine(Record(node)));
        Tell(node, out);
    }

    static std::string Quantity(const Node& node, const char* value, const char* uom) {
        const std::string unit = TextOf(node, uom);
        const std::string text = TextOf(node, value);
        if (text.empty()) return "(none)";
        return unit.empty() ? text : text + ' ' + unit;
    }

    static void Tell(const Node& node, Output& out) {
        out.Line("path\t" + ShownPath(node));
        out.Line("type\t" + TextOf(node, "type"));
        bool bound = false;
        for (const Side& side : kSides) {
            const auto raw = node.Raw(side.side);
            if (!raw) continue;
            bound = true;
            out.Line(std::string(side.words) + "\t" + ShownPath(*raw));
            if (node.IsVariable()) {
                out.Line("  neutral\t" + Quantity(node, side.value, side.uom));
            }
            if (raw->IsVariable()) out.Line("  raw\t" + Quantity(*raw, "value", "uom"));
        }
        if (!bound) out.Line("calculated\t(nothing in the case)");
        out.Line("translators");
        std::istringstream text(node.Attribute("converters").ToText());
        for (std::string line; std::getline(text, line);) {
            const std::size_t tabs = std::min(line.find_first_not_of('\t'), line.size());
            out.Line(line.substr(0, tabs) + OneLine(line.substr(tabs)));
        }
    }
    static Json Record(const Node& node) {
        Json record;
        record["path"] = ShownPath(node);
        record["type"] = TextOf(node, "type");
        for (const Side& side : kSides) {
            const auto raw = node.Raw(side.side);
            if (!raw) continue;
            Json& shown = record[side.words];
            shown["path"] = ShownPath(*raw);
            shown["value"] = ToJson(node.Attribute(side.value));
            shown["uom"] = ToJson(node.Attribute(side.uom));
            shown["raw_value"] = ToJson(raw->Attribute("value"));
            shown["raw_uom"] = ToJson(raw->Attribute("uom"));
        }
        record["converters"] = node.Attribute("converters").ToText();
        return record;
    }
};

}  // namespace

std::unique_ptr<Word> MakeExplain() {
    return std::make_unique<Explain>();
}

}  // namespace fixtop
