// SPDX-License-Identifier: Apache-2.0
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "case_session.h"
#include "solver_run.h"
#include "stores.h"
#include "terminal.h"
#include "words/makers.h"

namespace fixtop {

namespace {

constexpr char kWaits[] = "Not Solved";

// An object that is not well, with what it says of itself. All on one line.
struct Culprit {
    std::string name;
    std::string path;
    std::string status;
};
using Culprits = std::vector<Culprit>;

// Collects the culprits of a flowsheet and of those in it.
class Blame {
 public:
    // Each flowsheet lists the utilities of the whole case.
    void WalkCase(const Node& main, const std::string& path) {
        Walk(main, "", path);
        WalkList(main, "Utilities", "", path);
    }
    Culprits Take() { return std::move(culprits_); }

 private:
    // The node that holds the lists; what its objects' names and paths begin with.
    void Walk(const Node& flowsheet, const std::string& names, const std::string& path) {
        WalkList(flowsheet, "Streams", names, path);
        WalkList(flowsheet, "UnitOps", names, path);
    }
    void WalkList(const Node& flowsheet, const char* list, const std::string& names,
                  const std::string& path) {
        const auto found = flowsheet.Find(list);
        if (!found) return;
        const std::string list_path = client::JoinPath(path, list);
        ForEachChild(found->node, [&](const client::Child& child) {
            Judge(child, names, client::JoinPath(list_path, child.step));
            return true;
        });
    }
    void Judge(const client::Child& child, const std::string& names, const std::string& path) {
        const std::string name = names + OneLine(child.node.Name());
        std::string status = TextOf(child.node, "status");
        if (!status.empty() && status != "OK") {
            culprits_.push_back({name, OneLine(path), std::move(status)});
        }
        if (child.node.Find("UnitOps")) Walk(child.node, name + '/', path);
    }

    Culprits culprits_;
};

Culprits CulpritsOf(CaseSession& session) {
    constexpr char kMain[] = "appModel.FlowSheetObjects";
    Blame blame;
    if (const auto main = session.OpenCase().Top().Find(kMain)) blame.WalkCase(main->node, kMain);
    return blame.Take();
}

class Solve final : public Word {
 public:
    void Declare(CLI::App& app) override {
        stores_.Declare(app);
        AddFile(app, "--save", file_, "Write the solved case to this file");
        app.add_flag("--all", all_, "When it fails, name each object that is not solved");
        AddJson(app, json_);
    }

    ExitCode Run(CommandContext& around) override {
        stores_.StoreAll(around);
        std::vector<std::string> refused = stores_.Refused();
        const client::SolveResult end = SolveHeld(around, refused);
        const bool all_taken = refused.empty();
        // Saved before anything is written: whoever reads may have gone away.
        const ExitCode saved = SaveSolved(*around.session, all_taken, file_, around.out);
        const bool is_whole = end.complete || terminal::IsInterrupted();
        const Culprits culprits = is_whole ? Culprits() : CulpritsOf(*around.session);
        Report(end, culprits, refused, around.out);
        if (!end.complete) TellWhyIncomplete(*around.session, around.out);
        if (!json_) Name(culprits, around.out);
        if (!stores_.Taken().empty()) TellUnsaved(*around.session, file_, around.out);
        if (saved != ExitCode::kOk) return saved;
        return end.complete && all_taken ? ExitCode::kOk : ExitCode::kFailed;
    }

    bool TellsFailures() const override { return json_; }

 private:
    // A solve ends a hold.
    static client::SolveResult SolveHeld(CommandContext& around,
                                         std::vector<std::string>& refused) {
        const client::Released released = SolveWithProgress(*around.session);
        TellReleased(released, around.out);
        refused.insert(refused.end(), released.refused.begin(), released.refused.end());
        return released.solve;
    }
    void Report(const client::SolveResult& end, const Culprits& culprits,
                const std::vector<std::string>& refused, Output& out) const {
        if (!json_) return out.Line(OneLineMessage(end.message));
        Json record;
        record["complete"] = end.complete;
        record["message"] = end.message;
        if (!end.complete) record["problem"] = end.problem.empty() ? Json() : Json(end.problem);
        if (!end.complete) record["failed"] = Json::array();
        for (const Culprit& each : culprits) {
            Json failed;
            failed["path"] = each.path;
            failed["status"] = each.status;
            record["failed"].push_back(std::move(failed));
        }
        if (!end.complete || !refused.empty()) AddError(end, refused, record);
        out.Line(ToLine(record));
    }
    // As the record of a failure that no other one tells.
    static void AddError(const client::SolveResult& end, const std::vector<std::string>& refused,
                         Json& record) {
        std::string error;
        for (const std::string& each : refused) error += each + '\n';
        if (!end.complete) error += end.problem.empty() ? end.message : end.problem;
        if (error.ends_with('\n')) error.pop_back();
        record["error"] = error;
        record["exit"] = static_cast<int>(ExitCode::kFailed);
    }
    // What waits for another object says nothing of the cause, and one mistake makes many wait.
    void Name(const Culprits& culprits, Output& out) const {
        constexpr std::size_t kNamed = 10;
        std::map<std::string, int> counts;
        std::size_t named = 0;
        for (const Culprit& each : culprits) {
            ++counts[each.status];
            if (!all_ && (each.status == kWaits || named == kNamed)) continue;
            ++named;
            out.Note(each.name + ": " + each.status);
        }
        if (named == culprits.size()) return;
        std::string kinds;
        for (const auto& [status, count] : counts) {
            kinds += (kinds.empty() ? "" : ", ") + std::to_string(count) + ' ' + status;
        }
        out.Note(std::to_string(culprits.size()) + (culprits.size() == 1 ? " object" : " objects") +
                 " failed: " + kinds + "; --all names them");
    }

    Stores stores_;
    std::string file_;
    bool json_ = false;
    bool all_ = false;
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
