// SPDX-License-Identifier: Apache-2.0
// Opening neutral views and class libraries.

#include "case_state.h"
#include "fixtop/client/check.h"
#include "module_files.h"
#include "module_log.h"
#include "visit.h"

namespace fixtop::client {

namespace {

// Units are read first, and the log says this last of them when they could not be.
constexpr char kNoUnits[] = "Failed to initialize units list";

// A model opens without units too, which is not what those expect who named a file of them. Empty
// when it has them.
std::string TroubleWithUnits(const std::vector<std::string>& log) {
    std::string text = "values are not converted";
    for (const std::string& line : log) {
        text += '\n' + line;
        if (line.find(kNoUnits) != std::string::npos) return text;
    }
    return "";
}

const char* GivenText(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

}  // namespace

FixtopModelFiles GivenFiles(const ModelFiles& files, bool whole_lists) {
    return {GivenText(files.classes), GivenText(files.map), GivenText(files.units),
            GivenText(files.translate), whole_lists};
}

std::string OpenModel(const char* what, const ModelFiles& files, bool whole_lists, ModelOpener open,
                      FIEntry* top, Ref<FIEntry>& root) {
    const ModuleLog log(files.log);
    const FixtopModelFiles given = GivenFiles(files, whole_lists);
    root = Ref<FIEntry>::Adopt(open(top, &given));
    if (root) return files.units.empty() ? "" : TroubleWithUnits(log.Lines());
    std::vector<std::string> problems = log.Lines();
    problems.insert(problems.begin(), std::string(what) + " can't be opened");
    throw CaseError(std::move(problems));
}

std::vector<Finding> CheckModel(const ModelFiles& files) {
    const ModuleLog log(files.log);
    const FixtopModelFiles given = GivenFiles(files, true);
    std::vector<Finding> findings;
    Visitor<FixtopFinding> visitor([&](const FixtopFinding& finding) {
        findings.push_back(
            {finding.kind == FixtopFinding::kMistake, finding.file, finding.line, finding.text});
        return true;
    });
    FixtopCheckModel(&given, visitor.Call(), &visitor);
    visitor.Rethrow();
    return findings;
}

std::optional<Missing> WhyMissing(const Node& object, const std::string& attribute) {
    FIValue reason;
    const int absence = FixtopWhyMissing(&object.Iterator(), attribute.c_str(), reason);
    if (absence == kFixtopNotNeutral) return std::nullopt;
    return Missing{static_cast<Absence>(absence), reason.ToText()};
}

unsigned long long ObjectNumber(const Node& node) {
    return FixtopObjectNumber(&node.Iterator());
}

Node OpenDictionary(const ModelFiles& files, std::string& warning) {
    Ref<FIEntry> root;
    const auto open = [](FIEntry*, const FixtopModelFiles* given) {
        return FixtopOpenDictionary(given);
    };
    warning = OpenModel("the class library", files, true, open, nullptr, root);
    return std::make_shared<CaseState>(nullptr)->RootOf(*root);
}

}  // namespace fixtop::client
