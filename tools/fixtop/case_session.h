#pragma once

// CaseSession: one open case, its tree and its solver. There is one in a process, because the
// module has one host.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "exit_code.h"
#include "fixtop/fixtop.h"
#include "node.h"
#include "output.h"
#include "view.h"

namespace fixtop {

namespace casehost {
class CaseHost;
}

class CaseSession {
 public:
    // Opens a file or, by the name "demo", the case that the program carries, in one of its views.
    // Null and the reason, with file and place, when it can't be read; a session and a warning when
    // the units that the view asks for can't.
    static std::unique_ptr<CaseSession> Open(const std::string& name, const ViewOptions& view,
                                             std::string& problem);
    ~CaseSession();

    // What the reader of the file had to say, though it could read it.
    const std::vector<std::string>& Remarks() const { return remarks_; }
    // An iterator on the top node of the view.
    NodeRef Top() const { return CopyOf(*top_); }
    // Where paths begin: the top node until it is moved.
    FIIteratorBase& Here() const { return *here_; }
    void MoveTo(NodeRef node) { here_ = std::move(node); }

    // Null when the case has none. Lent.
    FISolver* Solver() const;
    // Why the last solve did not complete, as the host knows it; empty when it did.
    std::string SolveProblem() const;
    // Results are shown that are older than a change of the case.
    bool HasOldResults() const;
    // Lets the host go on with what it has begun: one turn of its loop.
    void Turn();
    // False and the reason when the file can't be written.
    bool Save(const std::string& file, std::string& problem);

 private:
    CaseSession();

    bool ShowCase(const ViewOptions& view, std::string& problem);

    std::unique_ptr<casehost::CaseHost> host_;
    Ref<FIEntry> entry_;
    NodeRef top_;
    NodeRef here_;
    std::vector<std::string> remarks_;
};

// Saves to a file, unless its name is empty. Notes why that failed, and when results are saved that
// are older than the case.
ExitCode SaveTo(CaseSession& session, const std::string& file, Output& out);

// A node that a path led to, and the attribute in which the path ended.
struct Located {
    NodeRef node;
    std::string attribute;  // empty when the path names none
};

// Looks a path up from where the session stands, then from the top; a host's own path too, such as
// "/FlowSht.1/StreamObject.400(Feed):Double.201". On failure `problem` is the parse error, or "no
// such node: " and the path with what was found of it and names that are near.
std::optional<Located> Locate(CaseSession& session, const std::string& path, std::string& problem);

// That message, for a path that leads nowhere from `start`.
std::string DescribeMissing(FIIteratorBase& start, const std::string& path);

}  // namespace fixtop
