// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "solver_run.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Set final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddName(app, "PATH", path_, "Node, or an attribute of it as in Feed(attachments)")
            ->required();
        AddText(app, "VALUE", value_, "New value; empty takes the value away")->required();
        AddName(app, "--unit", unit_, "Unit of the value");
        AddFile(app, "--save", file_, "Write the changed case to this file");
        AddJson(app, json_);
    }

    ExitCode Run(CommandContext& around) override {
        std::string problem;
        const auto found = Locate(*around.session, path_, problem);
        if (found) {
            const Progress progress(*around.session);
            around.session->Solver().SolveOnStore(true);
            problem = Store(*found, value_, unit_);
        }
        if (!problem.empty()) {
            around.out.Note(found ? OneLine(path_) + ": " + problem : problem);
            return ExitCode::kFailed;
        }
        // Saved before anything is written: whoever reads may have gone away.
        const ExitCode code = SaveSolved(*around.session, file_, around.out);
        Report(*found, around.out);
        TellWhyIncomplete(*around.session, around.out);
        return code;
    }

 private:
    void Report(const client::Place& place, Output& out) const {
        const std::string name = place.attribute.empty() ? "value" : place.attribute;
        const FIValue value = place.node.Attribute(name);
        if (!json_) return out.Line(OneLine(value));
        Json record;
        record["path"] = OneLine(path_);
        record["value"] = ToJson(value);
        record["uom"] = UnitToJson(place.node.UnitOf(name));
        record["status"] = ToJson(place.node.Attribute("status"));
        MarkStale(place.node, record);
        out.Line(ToLine(record));
    }

    std::string path_;
    std::string value_;
    std::string unit_;
    std::string file_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeSet() {
    return std::make_unique<Set>();
}

}  // namespace fixtop
