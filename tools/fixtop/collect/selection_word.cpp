// SPDX-License-Identifier: Apache-2.0
#include "collect/selection_word.h"

namespace fixtop {

ExitCode SelectionWord::Run(CommandContext& around) {
    try {
        passed_over_ = false;
        const ExitCode code = Work(around);
        return code == ExitCode::kOk && passed_over_ ? ExitCode::kFailed : code;
    } catch (const client::CaseError& error) {
        around.out.Note(MessageOf(error));
        return ExitCode::kUnreadable;
    }
}

client::Selection SelectionWord::Load(const CaseSession& session, Output& out) {
    return Told(client::Selection::Load(file_, session.OpenCase()), out);
}

client::Selection SelectionWord::Load(Output& out) {
    return Told(client::Selection::Load(file_), out);
}

client::Selection SelectionWord::Told(client::Selection selection, Output& out) {
    if (passed_over_) return selection;
    for (const std::string& remark : selection.Remarks()) {
        out.Note(OneLine(file_) + ": " + OneLine(remark));
    }
    passed_over_ = !selection.Remarks().empty();
    return selection;
}

void SelectionWord::RequireWhole(const client::Selection& selection, const std::string& file) {
    if (selection.Remarks().empty()) return;
    std::vector<std::string> problems = {file + ": is not changed, for this in it would be lost:"};
    problems.insert(problems.end(), selection.Remarks().begin(), selection.Remarks().end());
    throw client::CaseError(std::move(problems));
}

}  // namespace fixtop
