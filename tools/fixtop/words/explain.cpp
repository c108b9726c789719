#include <sstream>

#include "words/makers.h"
#include "words/node_word.h"

namespace fixtop {

namespace {

// One of the nodes of the application on which a neutral node stands.
struct Side {
    const char* words;
    int face;
    const char* value;  // the attributes of the neutral node that show this side
    const char* uom;
};
constexpr Side kSides[] = {{"calculated", 1, "value", "uom"},
                           {"specified", 2, "spec_value", "spec_uom"}};

class Explain final : public NodeWord {
 public:
    void Declare(CLI::App& app) override {
        DeclareNode(app, "Node of the neutral view")->required();
    }

 private:
    void Show(FIIteratorBase& node, Output& out) override {
        if (AsJson()) return out.Line(ToLine(Record(node)));
        Tell(node, out);
    }

    static NodeRef NodeOf(FIIteratorBase& node, const Side& side) {
        return NodeRef::Adopt(FixtopApplicationNode(&node, side.face));
    }
    static std::string Quantity(FIIteratorBase& node, const char* value, const char* uom) {
        const std::string unit = TextOf(node, uom);
        const std::string text = TextOf(node, value);
        return unit.empty() || text.empty() ? text : text + ' ' + unit;
    }

    static void Tell(FIIteratorBase& node, Output& out) {
        out.Line("path\t" + ShownPath(node));
        out.Line("type\t" + TextOf(node, "type"));
        bool bound = false;
        for (const Side& side : kSides) {
            const NodeRef raw = NodeOf(node, side);
            if (!raw) continue;
            bound = true;
            out.Line(std::string(side.words) + "\t" + ShownPath(*raw));
            out.Line("  neutral\t" + Quantity(node, side.value, side.uom));
            out.Line("  raw\t" + Quantity(*raw, "value", "uom"));
        }
        if (!bound) out.Line("calculated\t(nothing in the case)");
        out.Line("translators");
        std::istringstream text(AttributeOf(node, "converters").ToText());
        for (std::string line; std::getline(text, line);) {
            const std::size_t tabs = std::min(line.find_first_not_of('\t'), line.size());
            out.Line(line.substr(0, tabs) + OneLine(line.substr(tabs)));
        }
    }
    static Json Record(FIIteratorBase& node) {
        Json record;
        record["path"] = ShownPath(node);
        record["type"] = TextOf(node, "type");
        for (const Side& side : kSides) {
            const NodeRef raw = NodeOf(node, side);
            if (!raw) continue;
            Json& shown = record[side.words];
            shown["path"] = ShownPath(*raw);
            shown["value"] = ToJson(AttributeOf(node, side.value));
            shown["uom"] = ToJson(AttributeOf(node, side.uom));
            shown["raw_value"] = ToJson(AttributeOf(*raw, "value"));
            shown["raw_uom"] = ToJson(AttributeOf(*raw, "uom"));
        }
        record["converters"] = AttributeOf(node, "converters").ToText();
        return record;
    }
};

}  // namespace

std::unique_ptr<Word> MakeExplain() {
    return std::make_unique<Explain>();
}

}  // namespace fixtop
