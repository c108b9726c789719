// SPDX-License-Identifier: Apache-2.0
// Opening neutral views and class libraries.

#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "case_state.h"
#include "fixtop/client/check.h"
#include "module_files.h"
#include "module_log.h"
#include "visit.h"

namespace fixtop::client {

namespace {

constexpr char kNoSuchTranslation[] = "no such translation: ";
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

// The module says so of a name that was asked for, and opens a tree without values. Empty when it
// is known.
std::string TroubleWithTranslation(const std::vector<std::string>& log) {
    constexpr std::string_view kUnknown = "Unknown translation: ";
    for (const std::string& line : log) {
        const std::size_t at = line.find(kUnknown);
        if (at != std::string::npos) return kNoSuchTranslation + line.substr(at + kUnknown.size());
    }
    return "";
}

// The one that was asked for; of a map alone it is a finding like others. Throws CaseError.
void RequireTranslation(const ModelFiles& files, const std::vector<Finding>& findings) {
    if (files.translate.empty()) return;
    for (const Finding& each : findings) {
        if (each.text.starts_with(kNoSuchTranslation)) throw CaseError({each.text});
    }
}

// A log that can't be written would be missed too late. Throws CaseError.
void TryLog(const std::string& file) {
    if (file.empty()) return;
    std::error_code error;
    const std::filesystem::path path(std::u8string(file.begin(), file.end()));
    if (std::filesystem::is_directory(path, error)) {
        throw CaseError({"the log can't be written: " + file + ": is a folder; expected a file"});
    }
    const bool is_new = !std::filesystem::exists(path, error);
    if (!std::ofstream(path, std::ios::app)) {
        throw CaseError({"the log can't be written: " + file +
                         "; expected a file in a folder that can be written to"});
    }
    // It stays away as long as there is nothing to say.
    if (is_new) std::filesystem::remove(path, error);
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
    TryLog(files.log);
    const ModuleLog log(files.log);
    const FixtopModelFiles given = GivenFiles(files, whole_lists);
    root = Ref<FIEntry>::Adopt(open(top, &given));
    const std::string unknown = files.translate.empty() ? "" : TroubleWithTranslation(log.Lines());
    if (!unknown.empty()) throw CaseError({unknown});
    if (root) return files.units.empty() ? "" : TroubleWithUnits(log.Lines());
    std::vector<std::string> problems = log.Lines();
    problems.insert(problems.begin(), std::string(what) + " can't be opened");
    throw CaseError(std::move(problems));
}

std::vector<Finding> CheckModel(const ModelFiles& files) {
    TryLog(files.log);
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
    RequireTranslation(files, findings);
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
