// SPDX-License-Identifier: Apache-2.0
#include "objects/session.h"

#include "dispatch/script_error.h"
#include "fixtop/client/error.h"
#include "process_life.h"

namespace fixtop::hovex {

namespace {

constexpr char kNotOpen[] = "no case is open: call Open with a file, or with \"demo\"";
constexpr char kSolving[] = "the solver is running: call Stop, or wait until IsRunning is False";
constexpr char kNoFile[] = "the built-in case has no file of its own: call Save with one";

}  // namespace

const client::Case& Session::Open() const {
    if (!open_) throw ScriptError(kNotOpen);
    return *open_;
}

void Session::OpenFile(const std::string& file) {
    NeedsRest();
    open_ = client::Case::Open(file);
    last_solve_ = {};
    file_ = file == client::Case::kDemo ? "" : file;
}

void Session::Close() {
    NeedsRest();
    if (open_) open_->Close();
    open_.reset();
    file_.clear();
    last_solve_ = {};
}

void Session::Save(const std::string& file) {
    NeedsRest();
    const client::Case& open_case = Open();
    if (file.empty() && file_.empty()) throw ScriptError(kNoFile);
    open_case.Save(file.empty() ? file_ : file);
    if (!file.empty()) file_ = file;
}

void Session::NeedsRest() const {
    if (is_solving_) throw ScriptError(kSolving);
}

void Session::Begin() {
    NeedsRest();
    Open();
    last_solve_ = {};
    is_to_stop_ = false;
    is_solving_ = true;
}

// Nobody is there to hear of an error.
void Session::RunToEnd() try {
    const client::Solver solver = Open().GetSolver();
    last_solve_ = solver.Solve([this] { return ProcessLife::LetCallsIn() && !is_to_stop_; });
    is_solving_ = false;
} catch (const std::exception& error) {
    last_solve_ = {false, error.what(), ""};
    is_solving_ = false;
}

const client::SolveResult& Session::Solve() {
    Begin();
    RunToEnd();
    return last_solve_;
}

void Session::Start() {
    Begin();
    ProcessLife::Post([self = shared_from_this()] { self->RunToEnd(); });
}

}  // namespace fixtop::hovex
