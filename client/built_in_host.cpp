// SPDX-License-Identifier: Apache-2.0
// The host that comes with the library, for cases that are files.

#include "case_state.h"
#include "casehost/case_host.h"
#include "casehost/standard_host.h"
#include "casehost/units.h"

namespace fixtop::client {

namespace {

std::function<bool()>& StopButton() {
    static std::function<bool()> pressed;
    return pressed;
}

std::vector<std::string> TextsOf(const std::vector<casehost::CaseProblem>& problems) {
    std::vector<std::string> texts;
    texts.reserve(problems.size());
    for (const casehost::CaseProblem& problem : problems) texts.push_back(problem.Text());
    return texts;
}

// A reader names the place; what it says nothing about still has a file.
std::vector<std::string> WithFile(std::vector<std::string> texts, const std::string& file) {
    for (const std::string& text : texts) {
        if (text.find(file) != std::string::npos) return texts;
    }
    if (texts.empty()) return {file};
    texts.front().insert(0, file + ": ");
    return texts;
}

class BuiltInHost final : public HostOfCase {
 public:
    explicit BuiltInHost(const std::string& file_or_demo) {
        casehost::UseStandardParts(host_);
        host_.SetStopButton(StopButton());
        const casehost::OpenResult opened = casehost::OpenCase(host_, file_or_demo);
        std::vector<std::string> texts = TextsOf(opened.problems);
        if (!opened) throw CaseError(WithFile(std::move(texts), file_or_demo));
        FixtopInstallHost(&host_.Services());
        installed_ = this;
        remarks_ = std::move(texts);
    }
    ~BuiltInHost() override { TakeOut(); }

    void* Session() override { return host_.ActiveCase(); }
    bool Turn() override {
        host_.Turn();
        return true;
    }
    std::string SolveProblem() const override { return host_.SolveProblem(); }
    std::optional<double> SolveShare() const override { return host_.SolveShare(); }
    bool HasOldResults() const override { return host_.HasOldResults(); }
    std::vector<std::string> UnitSets() const override {
        return {casehost::kUnitSetNames.begin(), casehost::kUnitSetNames.end()};
    }
    std::string UnitSet() const override { return host_.UnitSet(); }
    void UseUnitSet(const std::string& name) override { host_.UseUnitSet(name); }
    std::string Save(const std::string& file) override {
        const casehost::SaveResult saved = host_.Save(*host_.ActiveLiveCase(), file);
        return saved ? "" : WithFile({saved.problem.Text()}, file).front();
    }
    void Close() override { TakeOut(); }
    std::string PublishedFile() const override { return host_.PublishedFile(); }
    const std::vector<std::string>& Remarks() const override { return remarks_; }

 private:
    // Another one may have been installed by now.
    void TakeOut() {
        if (installed_ == this) FixtopInstallHost(nullptr);
        if (installed_ == this) installed_ = nullptr;
    }

    static inline BuiltInHost* installed_ = nullptr;

    casehost::CaseHost host_;
    std::vector<std::string> remarks_;
};

}  // namespace

std::unique_ptr<HostOfCase> OpenBuiltInHost(const std::string& file_or_demo) {
    return std::make_unique<BuiltInHost>(file_or_demo);
}

void Case::SetStopButton(std::function<bool()> pressed) {
    StopButton() = std::move(pressed);
}

Case Case::Open(const std::string& file_or_demo) {
    return Case(std::make_shared<CaseState>(OpenBuiltInHost(file_or_demo)));
}

}  // namespace fixtop::client
