// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "solver_run.h"
#include "stores.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Undo final : public Word {
 public:
    void Declare(CLI::App&) override {}

    ExitCode Run(CommandContext& around) override {
        CaseSession& session = *around.session;
        const auto line = session.TheChanges().TakeLast();
        if (!line) {
            around.out.Note("nothing to undo");
            return ExitCode::kFailed;
        }
        const bool stays_held = session.IsHeld();
        const std::vector<std::string> refusals = TakeBack(*line, session.Hold());
        for (const std::string& refusal : refusals) around.out.Note(refusal);
        const bool is_solved = stays_held || Solve(session, around.out);
        for (const Changes::Stored& stored : line->stored) Tell(stored, around.out);
        return refusals.empty() && is_solved ? ExitCode::kOk : ExitCode::kFailed;
    }

 private:
    static bool Solve(CaseSession& session, Output& out) {
        const client::Released released = SolveWithProgress(session);
        const bool all_taken = TellReleased(released, out);
        if (!released.solve.complete) TellWhyIncomplete(session, out);
        return all_taken && released.solve.complete;
    }
    // As it stands now.
    static void Tell(const Changes::Stored& stored, Output& out) {
        const std::vector<Node> elements = client::ElementsOf(stored.node);
        out.Line(stored.path + '\t' + ValuesOf(stored.node, stored.attribute, elements));
    }
};

}  // namespace

std::unique_ptr<Word> MakeUndo() {
    return std::make_unique<Undo>();
}

}  // namespace fixtop
