// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "case_check.h"
#include "case_session.h"
#include "words/makers.h"

namespace fixtop {

namespace {

// In the order of client::Absence.
constexpr const char* kAbsences[] = {"",        "unmapped", "no translator",
                                     "no node", "no value", "refused"};

class CheckMap final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddFile(app, "--case", case_, "Walk this case too: a file (.json, .dwxmz) or demo");
        app.add_flag("--unmapped", unmapped_, "Also tell the attributes without a translator");
        AddJson(app, json_);
        AddModel(app, view_);
    }

    ExitCode Run(CommandContext& around) override {
        try {
            return Check(around);
        } catch (const client::CaseError& error) {
            around.out.Note(MessageOf(error));
            return ExitCode::kUnreadable;
        }
    }

    bool TellsFailures() const override { return true; }

 private:
    ExitCode Check(CommandContext& around) const {
        ExitCode code = ExitCode::kOk;
        for (const client::Finding& each : client::CheckModel(view_.files)) {
            if (each.is_mistake) code = ExitCode::kFailed;
            if (each.is_mistake || unmapped_) Tell(each, around.out);
        }
        if (case_.empty()) return code;
        return CheckCase(around.out) ? code : ExitCode::kUnreadable;
    }

    void Tell(const client::Finding& finding, Output& out) const {
        if (json_) {
            Json record;
            record["kind"] = finding.is_mistake ? "mistake" : "unmapped";
            record["file"] = finding.file;
            record["line"] = finding.line;
            record["text"] = finding.text;
            return out.Line(ToLine(record));
        }
        const std::string line = finding.line > 0 ? std::to_string(finding.line) + ": " : " ";
        out.Line(OneLine(finding.file) + ":" + line + OneLine(finding.text));
    }

    // False, and told, when the case or the view can't be opened.
    bool CheckCase(Output& out) const {
        std::string problem;
        ViewOptions view = view_;
        view.neutral = true;
        const auto session = CaseSession::Open(case_, view, problem);
        if (!problem.empty()) out.Note(problem);
        if (!session) return false;
        std::string told;
        CaseCheck check(client::OpenDictionary(view.files, told));
        check.Walk(session->Top());
        int mapped = 0, empty = 0;
        for (const auto& [class_name, attributes] : check.Classes()) {
            for (const auto& [name, attribute] : attributes) {
                mapped += attribute.is_mapped;
                if (!attribute.GivesNothing()) continue;
                ++empty;
                Tell(class_name, name, attribute, out);
            }
        }
        out.Note(std::to_string(empty) + " of " + std::to_string(mapped) +
                 " mapped attributes of " + std::to_string(check.Classes().size()) +
                 " classes have a value nowhere");
        return true;
    }
    // The reasons that hold in most places first.
    void Tell(const std::string& class_name, const std::string& name,
              const MappedAttribute& attribute, Output& out) const {
        std::vector<MissingReason> reasons = attribute.reasons;
        std::stable_sort(reasons.begin(), reasons.end(),
                         [](const auto& a, const auto& b) { return a.count > b.count; });
        for (const MissingReason& each : reasons) {
            const char* kind = kAbsences[static_cast<std::size_t>(each.missing.absence)];
            if (json_) {
                Json record;
                record["kind"] = kind;
                record["class"] = class_name;
                record["attribute"] = name;
                record["declared_by"] = attribute.declared_by;
                record["instances"] = attribute.instances;
                record["count"] = each.count;
                record["text"] = each.missing.text;
                record["example"] = each.example;
                out.Line(ToLine(record));
            } else {
                out.Line(OneLine(class_name + "." + name) + ": " + kind + " in " +
                         std::to_string(each.count) + " of " + std::to_string(attribute.instances) +
                         ": " + OneLine(each.missing.text) + ", as in " +
                         ShownExample(each.example));
            }
        }
    }
    static std::string ShownExample(const std::string& path) {
        return path.empty() ? "the root" : OneLine(path);
    }

    std::string case_;
    bool unmapped_ = false;
    bool json_ = false;
    ViewOptions view_;
};

}  // namespace

std::unique_ptr<Word> MakeCheckMap() {
    return std::make_unique<CheckMap>();
}

}  // namespace fixtop
