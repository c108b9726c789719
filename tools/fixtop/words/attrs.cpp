// SPDX-License-Identifier: Apache-2.0
#include "words/makers.h"
#include "words/node_word.h"

namespace fixtop {

namespace {

class Attrs final : public NodeWord {
 public:
    void Declare(CLI::App& app) override { DeclareNode(app, "Node")->required(); }

 private:
    void Show(const Node& node, Output& out) override {
        for (const auto& [name, value] : node.Attributes()) {
            if (AsJson()) {
                Json record;
                record["name"] = name;
                record["value"] = ToJson(value);
                out.Line(ToLine(record));
            } else {
                out.Line(OneLine(name) + '\t' + OneLine(value));
            }
        }
    }
};

}  // namespace

std::unique_ptr<Word> MakeAttrs() {
    return std::make_unique<Attrs>();
}

}  // namespace fixtop
