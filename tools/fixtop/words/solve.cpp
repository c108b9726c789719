// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "solver_run.h"
#include "stores.h"
#include "terminal.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Solve final : public Word {
 public:
    void Declare(CLI::App& app) override {
        stores_.Declare(app);
        AddFile(app, "--save", file_, "Write the solved case to this file");
        AddJson(app, json_);
    }

    ExitCode Run(CommandContext& around) override {
        bool all_taken = stores_.StoreAll(around);
        const client::SolveResult end = SolveHeld(around, all_taken);
        // Saved before anything is written: whoever reads may have gone away.
        const ExitCode saved = SaveSolved(*around.session, file_, around.out);
        Report(end, around.out);
        if (!end.complete) {
            TellWhyIncomplete(*around.session, around.out);
            if (!terminal::IsInterrupted()) NameCulprits(*around.session, around.out);
        }
        if (saved != ExitCode::kOk) return saved;
        return end.complete && all_taken ? ExitCode::kOk : ExitCode::kFailed;
    }

 private:
    // A solve ends a hold.
    static client::SolveResult SolveHeld(CommandContext& around, bool& all_taken) {
        const client::Released released = SolveWithProgress(*around.session);
        all_taken &= TellReleased(released, around.out);
        return released.solve;
    }
    void Report(const client::SolveResult& end, Output& out) const {
        if (!json_) return out.Line(OneLineMessage(end.message));
        Json record;
        record["complete"] = end.complete;
        record["message"] = end.message;
        out.Line(ToLine(record));
    }
    // The objects of the main flowsheet that are not well, with what they say of themselves.
    static void NameCulprits(CaseSession& session, Output& out) {
        for (const char* list : {"Streams", "UnitOps", "Utilities"}) {
            const auto found =
                session.OpenCase().Top().Find(std::string("appModel.FlowSheetObjects.") + list);
            if (!found) continue;
            ForEachChild(found->node, [&](const client::Child& child) {
                const std::string status = TextOf(child.node, "status");
                if (!status.empty() && status != "OK") {
                    out.Note(OneLine(child.node.Name()) + ": " + status);
                }
                return true;
            });
        }
    }

    Stores stores_;
    std::string file_;
    bool json_ = false;
};

class HoldWord final : public Word {
 public:
    void Declare(CLI::App&) override {}
    ExitCode Run(CommandContext& around) override {
        around.session->Hold();
        return ExitCode::kOk;
    }
};

}  // namespace

std::unique_ptr<Word> MakeHold() {
    return std::make_unique<HoldWord>();
}
std::unique_ptr<Word> MakeSolve() {
    return std::make_unique<Solve>();
}

}  // namespace fixtop
