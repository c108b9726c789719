// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "watched_solve.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Watch final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddNames(app, "PATH", paths_, "Nodes to be watched")->required();
        solve_.Declare(app);
    }

    ExitCode Run(CommandContext& around) override {
        return Open(around) ? solve_.Run(around) : ExitCode::kFailed;
    }

 private:
    // Nothing is solved, or stored, unless all are there: what is not watched would be missed.
    bool Open(CommandContext& around) {
        bool all_found = true;
        for (const std::string& path : paths_) {
            std::string problem;
            const auto found = Locate(*around.session, path, problem);
            if (found) {
                solve_.Watched().Add(found->node, path);
            } else {
                around.out.Note(problem);
                all_found = false;
            }
        }
        return all_found;
    }

    std::vector<std::string> paths_;
    WatchedSolve solve_;
};

}  // namespace

std::unique_ptr<Word> MakeWatch() {
    return std::make_unique<Watch>();
}

}  // namespace fixtop
