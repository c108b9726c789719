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
    // Of the view that its nodes were chosen from. Throws CaseError.
    client::Selection Load(const CaseSession& session) const {
        return client::Selection::Load(file_, session.OpenCase());
    }

 private:
    virtual ExitCode Work(CommandContext& around) = 0;

    std::string file_;
};

}  // namespace fixtop
