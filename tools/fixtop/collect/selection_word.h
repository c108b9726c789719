// SPDX-License-Identifier: Apache-2.0
#pragma once

// A word that works on the selection in a file.

#include <string>

#include "case_session.h"
#include "word.h"

namespace fixtop {

class SelectionWord : public Word {
 public:
    void DeclareFirst(CLI::App& app) final { AddFile(app, "FILE", file_, "Selection")->required(); }
    // What is wrong with a file, or a case, is told.
    ExitCode Run(CommandContext& around) final;

 protected:
    const std::string& File() const { return file_; }
    // Of the view that its nodes were chosen from; what was passed over in the file is noted.
    // Throws CaseError.
    client::Selection Load(const CaseSession& session, Output& out);
    // The same without a case.
    client::Selection Load(Output& out);
    // For who writes the file again: one of which something would be lost throws as well.
    static void RequireWhole(const client::Selection& selection, const std::string& file);

 private:
    // Answers kOk also where something was passed over, which makes the run fail all the same.
    virtual ExitCode Work(CommandContext& around) = 0;

    // Notes it once, also where a file is read for several cases.
    client::Selection Told(client::Selection selection, Output& out);

    std::string file_;
    bool passed_over_ = false;
};

}  // namespace fixtop
