// SPDX-License-Identifier: Apache-2.0
#include "watched_solve.h"

#include "case_session.h"
#include "solver_run.h"

namespace fixtop {

namespace {

// A store returns at once while this lives, so that the solve goes on under our eyes.
class StoresWithoutWaiting {
 public:
    explicit StoresWithoutWaiting(client::Solver solver) : solver_(std::move(solver)) {
        solver_.WaitOnStore(false);
    }
    ~StoresWithoutWaiting() { solver_.WaitOnStore(true); }
    StoresWithoutWaiting(const StoresWithoutWaiting&) = delete;
    StoresWithoutWaiting& operator=(const StoresWithoutWaiting&) = delete;

 private:
    client::Solver solver_;
};

}  // namespace

void WatchedSolve::Declare(CLI::App& app) {
    app.add_option("--set", stores_, "Stored before the solve; may be given several times")
        ->type_name("PATH VALUE")
        ->allow_extra_args(false);
    AddJson(app, json_);
}

ExitCode WatchedSolve::Run(CommandContext& around) {
    bool all_stored = true;
    const client::Solver solver = around.session->Solver();
    const auto report = [&] {
        for (const client::Change& change : watch_.Changes()) Write(change, around.out);
        around.out.Flush();
        return true;
    };
    if (!stores_.empty()) {
        solver.SolveOnStore(true);
        const StoresWithoutWaiting no_wait(solver);
        all_stored = StoreAll(around);
        report();
        solver.WaitUntilIdle(report);
    }
    const client::SolveResult end = solver.Solve(report);
    around.out.Note(OneLineMessage(end.message));
    if (!end.complete) TellWhyIncomplete(*around.session, around.out);
    return all_stored && end.complete ? ExitCode::kOk : ExitCode::kFailed;
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

bool WatchedSolve::StoreAll(CommandContext& around) const {
    bool all_stored = true;
    for (const auto& [given, value] : stores_) {
        const std::string path = GivenName(given);
        std::string problem;
        const auto found = Locate(*around.session, path, problem);
        if (found) problem = Store(*found, GivenText(value), "");
        if (problem.empty()) continue;
        around.out.Note(found ? OneLine(path) + ": " + problem : problem);
        all_stored = false;
    }
    return all_stored;
}

}  // namespace fixtop
