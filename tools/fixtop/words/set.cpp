// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "solver_run.h"
#include "stores.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Set final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddName(app, "PATH", first_.path, "Node, or an attribute of it as in Feed(attachments)")
            ->required();
        AddText(app, "VALUE", first_.value,
                "New value, also with a unit behind it (30C or '30 C'); empty takes the value away")
            ->required();
        AddName(app, "--unit", first_.unit, "Unit of the value");
        AddSeveral(app, first_.first, first_.all);
        stores_.Declare(app);
        AddFile(app, "--save", file_, "Write the changed case to this file");
        AddJson(app, json_);
    }

    ExitCode Run(CommandContext& around) override {
        const bool stays_held = around.session->IsHeld();
        bool all_taken = stores_.StoreAll(around, {first_});
        if (stays_held) return End(around, all_taken, nullptr);
        if (stores_.Taken().empty()) {
            around.session->DropHold();
            return ExitCode::kFailed;
        }
        const client::Released released = SolveWithProgress(*around.session);
        all_taken &= TellReleased(released, around.out);
        return End(around, all_taken, &released.solve);
    }

 private:
    // Saved before anything is written: whoever reads may have gone away.
    ExitCode End(CommandContext& around, bool all_taken, const client::SolveResult* solve) const {
        const ExitCode code = SaveSolved(*around.session, all_taken, file_, around.out);
        for (const Stores::Stored& stored : stores_.Taken()) Report(stored, solve, around.out);
        if (!stores_.Taken().empty()) TellUnsaved(*around.session, file_, around.out);
        if (!solve || solve->complete) return code;
        TellWhyIncomplete(*around.session, around.out);
        return code == ExitCode::kOk ? ExitCode::kFailed : code;
    }
    void Report(const Stores::Stored& stored, const client::SolveResult* solve, Output& out) const {
        const client::Place& place = stored.place;
        const std::string name = place.attribute.empty() ? "value" : place.attribute;
        const std::vector<Node> elements = client::ElementsOf(place.node);
        if (!json_) return out.Line(ValuesOf(place.node, name, elements));
        Json record;
        record["path"] = stored.path;
        if (elements.empty()) {
            record["value"] = ToJson(place.node.Attribute(name));
        } else {
            Json& values = record["value"] = Json::array();
            for (const Node& element : elements) values.push_back(ToJson(element.Attribute(name)));
        }
        record["uom"] = UnitToJson(place.node.UnitOf(name));
        record["status"] = ToJson(place.node.Attribute("status"));
        MarkStale(place.node, record);
        if (solve) record["complete"] = solve->complete;
        out.Line(ToLine(record));
    }

    Stores::Given first_;
    Stores stores_;
    std::string file_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeSet() {
    return std::make_unique<Set>();
}

}  // namespace fixtop
