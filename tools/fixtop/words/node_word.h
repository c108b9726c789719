// SPDX-License-Identifier: Apache-2.0
#pragma once

// A word that shows one node, in text or as JSON.

#include "case_session.h"
#include "word.h"

namespace fixtop {

class NodeWord : public Word {
 public:
    ExitCode Run(CommandContext& around) final {
        std::string problem;
        try {
            const auto other = Other(*around.session);
            CaseSession& session = other ? *other : *around.session;
            const auto found = Locate(session, path_, problem);
            if (!found) {
                around.out.Note(problem + Beside(session));
                return ExitCode::kFailed;
            }
            Show(Shown(session, found->node), around.out);
            problem = Lacking();
            if (!problem.empty()) around.out.Note(problem);
            return problem.empty() ? ExitCode::kOk : ExitCode::kFailed;
        } catch (const client::CaseError& error) {
            around.out.Note(MessageOf(error));
            return ExitCode::kUnreadable;
        }
    }

 protected:
    // The path and the choice of JSON.
    CLI::Option* DeclareNode(CLI::App& app, const char* help) {
        AddJson(app, json_);
        return AddName(app, "PATH", path_, help);
    }
    bool AsJson() const { return json_; }
    const std::string& Path() const { return path_; }

 private:
    // The session in which the path is looked up; null for the one at work.
    virtual std::unique_ptr<CaseSession> Other(const CaseSession&) { return nullptr; }
    // What is told behind the reason why nothing was found.
    virtual std::string Beside(const CaseSession&) const { return ""; }
    // Which node is shown for the one that was found.
    virtual Node Shown(CaseSession&, const Node& found) { return found; }
    virtual void Show(const Node& node, Output& out) = 0;
    // What could not be shown as it was asked for; empty when all was.
    virtual std::string Lacking() const { return ""; }

    std::string path_;
    bool json_ = false;
};

}  // namespace fixtop
