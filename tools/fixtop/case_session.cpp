#include "case_session.h"

#include "casehost/standard_host.h"
#include "terminal.h"

namespace fixtop {

namespace {

std::string Texts(const std::vector<casehost::CaseProblem>& problems, const std::string& file) {
    std::string text;
    for (const casehost::CaseProblem& problem : problems) {
        text += (text.empty() ? "" : "\n") + OneLineMessage(problem.Text());
    }
    // A reader names the place; what it says nothing about still has a file.
    const std::string name = OneLineMessage(file);
    if (text.find(name) == std::string::npos) text.insert(0, name + (text.empty() ? "" : ": "));
    return text;
}

}  // namespace

CaseSession::CaseSession() : host_(std::make_unique<casehost::CaseHost>()) {
    casehost::UseStandardParts(*host_);
    host_->SetStopButton(terminal::IsInterrupted);
    FixtopInstallHost(&host_->Services());
}

std::unique_ptr<CaseSession> CaseSession::Open(const std::string& name, const ViewOptions& view,
                                               std::string& problem) {
    std::unique_ptr<CaseSession> session(new CaseSession);
    const casehost::OpenResult opened = casehost::OpenCase(*session->host_, name);
    if (!opened) {
        problem = Texts(opened.problems, name);
        return nullptr;
    }
    for (const casehost::CaseProblem& remark : opened.problems) {
        session->remarks_.push_back(OneLineMessage(remark.Text()));
    }
    return session->ShowCase(view, problem) ? std::move(session) : nullptr;
}

bool CaseSession::ShowCase(const ViewOptions& view, std::string& problem) {
    entry_ = Ref<FIEntry>::Adopt(Given(GetCombinedEntry(host_->ActiveCase())));
    const Ref<FIEntry> root = view.neutral ? OpenNeutral(*entry_, view, problem) : entry_;
    if (!root) return false;
    top_ = NodeRef::Adopt(Given(FixtopMakeIterator(root.Get(), false)));
    here_ = Top();
    return true;
}

// What stands on the case goes before the case, and the module's host last.
CaseSession::~CaseSession() {
    here_.Reset();
    top_.Reset();
    entry_.Reset();
    // The combined top entry had itself told of changes.
    if (host_->ActiveCase()) UnsetTopNotify(host_->ActiveCase());
    FixtopInstallHost(nullptr);
}

FISolver* CaseSession::Solver() const {
    void* solver = nullptr;
    entry_->QueryService(1, &solver);
    return static_cast<FISolver*>(solver);
}

std::string CaseSession::SolveProblem() const {
    return OneLineMessage(host_->SolveProblem());
}

bool CaseSession::HasOldResults() const {
    return host_->HasOldResults();
}

void CaseSession::Turn() {
    host_->Turn();
}

bool CaseSession::Save(const std::string& file, std::string& problem) {
    const casehost::SaveResult saved = host_->Save(*host_->ActiveLiveCase(), file);
    if (!saved) problem = Texts({saved.problem}, file);
    return saved.ok;
}

ExitCode SaveTo(CaseSession& session, const std::string& file, Output& out) {
    std::string problem;
    if (file.empty()) return ExitCode::kOk;
    if (!session.Save(file, problem)) {
        out.Note(problem);
        return ExitCode::kUnreadable;
    }
    if (session.HasOldResults()) {
        out.Note(OneLineMessage(file) +
                 ": results that are older than a change are saved as stale");
    }
    return ExitCode::kOk;
}

}  // namespace fixtop
