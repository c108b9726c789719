// SPDX-License-Identifier: Apache-2.0
#include "watched_solve.h"

#include "case_session.h"
#include "solver_run.h"

namespace fixtop {

void WatchedSolve::Declare(CLI::App& app) {
    stores_.Declare(app);
    AddJson(app, json_);
}

ExitCode WatchedSolve::Run(CommandContext& around) {
    const auto report = [&] {
        for (const client::Change& change : watch_.Changes()) Write(change, around.out);
        around.out.Flush();
        return true;
    };
    bool all_stored = stores_.StoreAll(around);
    report();
    const client::Released released = SolveCase(*around.session, report);
    all_stored &= TellReleased(released, around.out);
    around.out.Note(OneLineMessage(released.solve.message));
    if (!released.solve.complete) TellWhyIncomplete(*around.session, around.out);
    return all_stored && released.solve.complete ? ExitCode::kOk : ExitCode::kFailed;
}

void WatchedSolve::Write(const client::Change& change, Output& out) const {
    if (json_) {
        Json record;
        record["path"] = OneLine(change.path);
        record["old"] = ToJson(change.before);
        record["new"] = ToJson(change.now);
        record["uom"] = UnitToJson(change.unit);
        out.Line(ToLine(record));
    } else {
        out.Line(OneLine(change.path) + '\t' + OneLine(change.before) + '\t' + OneLine(change.now) +
                 '\t' + OneLine(change.unit));
    }
}

}  // namespace fixtop
