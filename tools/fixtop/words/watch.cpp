// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "solver_run.h"
#include "words/makers.h"

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

class Watch final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddNames(app, "PATH", paths_, "Nodes to be watched")->required();
        app.add_option("--set", stores_, "Stored before the solve; may be given several times")
            ->type_name("PATH VALUE")
            ->allow_extra_args(false);
        AddJson(app, json_);
    }

    ExitCode Run(CommandContext& around) override {
        const bool all_found = Open(around);
        bool all_stored = true;
        const client::Solver solver = around.session->Solver();
        const auto report = [&] {
            for (const client::Change& change : watch_.Changes()) Write(change, around.out);
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
        return all_found && all_stored && end.complete ? ExitCode::kOk : ExitCode::kFailed;
    }

 private:
    void Write(const client::Change& change, Output& out) const {
        if (json_) {
            Json record;
            record["path"] = OneLine(change.path);
            record["old"] = ToJson(change.before);
            record["new"] = ToJson(change.now);
            record["uom"] = UnitToJson(change.unit);
            out.Line(ToLine(record));
        } else {
            out.Line(OneLine(change.path) + '\t' + OneLine(change.before) + '\t' +
                     OneLine(change.now) + '\t' + OneLine(change.unit));
        }
    }
    bool Open(CommandContext& around) {
        bool all_found = true;
        for (const std::string& path : paths_) {
            std::string problem;
            const auto found = Locate(*around.session, path, problem);
            if (found) {
                watch_.Add(found->node, path);
            } else {
                around.out.Note(problem);
                all_found = false;
            }
        }
        return all_found;
    }
    bool StoreAll(CommandContext& around) const {
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

    std::vector<std::string> paths_;
    std::vector<std::pair<std::string, std::string>> stores_;
    client::Watch watch_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeWatch() {
    return std::make_unique<Watch>();
}

}  // namespace fixtop
