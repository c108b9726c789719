// SPDX-License-Identifier: Apache-2.0
#pragma once

// CaseSession: the open case of the program, the view of it that is shown, and the place in it
// where paths begin.

#include <memory>
#include <optional>
#include <string>

#include "changes.h"
#include "exit_code.h"
#include "fixtop/client.h"
#include "node.h"
#include "output.h"
#include "view.h"

namespace fixtop {

class CaseSession {
 public:
    // Opens a file or, by the name "demo", the case that the program carries, in one of its views.
    // Null and the reason, with file and place, when it can't be read; a session and a warning when
    // the units that the view asks for can't.
    static std::unique_ptr<CaseSession> Open(const std::string& name, const ViewOptions& view,
                                             std::string& problem);

    // The same; what is to be said is noted.
    static std::unique_ptr<CaseSession> Open(const std::string& name, const ViewOptions& view,
                                             Output& out);

    const client::Case& OpenCase() const { return case_; }
    // By which it was opened.
    const std::string& Name() const { return name_; }
    client::Solver Solver() const { return case_.GetSolver(); }
    // The top node of the view.
    const Node& Top() const { return top_; }
    // The node as a listing has it: in the neutral view long lists are cut there, which is told.
    Node Listed(const Node& node) const;
    // The same case in the neutral view; null when that is shown already. Throws CaseError.
    std::unique_ptr<CaseSession> InNeutralView() const;
    // Where paths begin: the top node until it is moved.
    const Node& Here() const { return here_; }
    void MoveTo(Node node) { here_ = std::move(node); }

    // Between Hold and Release stores are kept together: see client::Hold. A hold that is open goes
    // on.
    client::Hold& Hold();
    bool IsHeld() const { return hold_ != nullptr; }
    client::Released Release(const client::Solver::Progress& progress = {});
    // Ends a hold in which nothing was stored.
    void DropHold();

    Changes& TheChanges() { return changes_; }

 private:
    CaseSession(client::Case open_case, std::string name, bool is_neutral);

    client::Case case_;
    std::string name_;
    bool is_neutral_;
    Node top_;
    Node here_;
    std::unique_ptr<client::Hold> hold_;
    Changes changes_;
};

// Solves, whether anything has changed or not, at the end of a hold where one is open.
client::Released SolveCase(CaseSession& session, const client::Solver::Progress& progress = {});

// Saves to a file, unless its name is empty. Notes why that failed, and when results are saved that
// are older than the case.
ExitCode SaveTo(CaseSession& session, const std::string& file, Output& out);

// Which of several nodes is meant by a path that leads to them.
enum class Several { kRefuse, kFirst };

// Looks a path up from where the session stands, then from the top; a host's own path too, such as
// "/FlowSht.1/StreamObject.400(Feed):Double.201". On failure `problem` is the parse error, or "no
// such node: " and the path with what was found of it and names that are near, or else the nodes
// that it leads to when they are several.
std::optional<client::Place> Locate(CaseSession& session, const std::string& path,
                                    std::string& problem, Several several = Several::kRefuse);

// Visits the node of a path, or with `all` each that it leads to, under the path that is told of
// it. Answers what is wrong, or an empty text.
std::string ForEachMeant(
    CaseSession& session, const std::string& path, bool first, bool all,
    const std::function<void(const client::Place& place, const std::string& path)>& visit);
// The path to a match and no other, on one line, with the attribute in which the pattern ends.
std::string PathOf(const client::Place& match);

// Visits all nodes that the pattern leads to from where the session stands; from the top when there
// are none. Answers what is wrong with the pattern, or that nothing matches it; empty when
// something did. Throws Interrupted.
std::string ForEachMatch(CaseSession& session, const std::string& pattern,
                         const std::function<void(const client::Place& match)>& visit);

// The same for what `seek` finds below a node; `nothing` is answered when it finds none.
using FoundVisitor = std::function<bool(const client::Place& match)>;
using Seeker = std::function<void(const Node& start, const FoundVisitor& found)>;
std::string ForEachFound(CaseSession& session, const Seeker& seek,
                         const std::function<void(const client::Place& match)>& visit,
                         const std::string& nothing);

// Stores a text where a path led, as typed, in the hold of the session; in a node with `unit` it is
// shown in it from then on. Answers the reason of a refusal, or an empty text.
std::string Store(CaseSession& session, const client::Place& place, const std::string& value,
                  const std::string& unit);

// What an error of the client library says, on lines of its own.
std::string MessageOf(const client::NotFound& error);
std::string MessageOf(const client::PathError& error);
std::string MessageOf(const client::CaseError& error);

}  // namespace fixtop
