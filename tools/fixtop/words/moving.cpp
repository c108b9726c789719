// SPDX-License-Identifier: Apache-2.0
// The words that only the shell knows.

#include "case_session.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Cd final : public Word {
 public:
    void Declare(CLI::App& app) override { AddName(app, "PATH", path_, "Node"); }

    ExitCode Run(CommandContext& around) override {
        CaseSession& session = *around.session;
        if (path_.empty()) {
            session.MoveTo(session.Top());
            return ExitCode::kOk;
        }
        if (path_ == "..") {
            if (auto parent = session.Here().Parent()) session.MoveTo(std::move(*parent));
            return ExitCode::kOk;
        }
        std::string problem;
        auto found = Locate(session, path_, problem);
        if (!found) {
            around.out.Note(problem);
            return ExitCode::kFailed;
        }
        session.MoveTo(std::move(found->node));
        return ExitCode::kOk;
    }

 private:
    std::string path_;
};

class Pwd final : public Word {
 public:
    void Declare(CLI::App&) override {}
    ExitCode Run(CommandContext& around) override {
        around.out.Line(ShownPath(around.session->Here()));
        return ExitCode::kOk;
    }
};

class Save final : public Word {
 public:
    void Declare(CLI::App& app) override { AddFile(app, "FILE", file_, "File")->required(); }
    ExitCode Run(CommandContext& around) override {
        return SaveTo(*around.session, file_, around.out);
    }

 private:
    std::string file_;
};

class Help final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddNames(app, "WORD", words_, "Word to be explained, as collect add");
    }
    ExitCode Run(CommandContext& around) override {
        words_.emplace_back("--help");
        return Execute(std::move(words_), Place::kShell, around);
    }

 private:
    std::vector<std::string> words_;
};

class Quit final : public Word {
 public:
    void Declare(CLI::App&) override {}
    ExitCode Run(CommandContext& around) override {
        around.leave_shell = true;
        return ExitCode::kOk;
    }
};

}  // namespace

std::unique_ptr<Word> MakeCd() {
    return std::make_unique<Cd>();
}
std::unique_ptr<Word> MakePwd() {
    return std::make_unique<Pwd>();
}
std::unique_ptr<Word> MakeSave() {
    return std::make_unique<Save>();
}
std::unique_ptr<Word> MakeHelp() {
    return std::make_unique<Help>();
}
std::unique_ptr<Word> MakeQuit() {
    return std::make_unique<Quit>();
}

}  // namespace fixtop
