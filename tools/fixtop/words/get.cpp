#include <cstdio>
#include <iostream>

#include "case_session.h"
#include "terminal.h"
#include "words/makers.h"

namespace {

class Get final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddNames(app, "PATH", paths_, "Nodes; - reads paths from standard input")->required();
        AddName(app, "--attr", attribute_, "Attribute to be read; value when it is left out");
        AddName(app, "--unit", unit_, "Unit in which values are wanted");
        AddJson(app, json_);
    }

    ExitCode Run(Surroundings& around) override {
        ExitCode code = ExitCode::kOk;
        const auto read = [&](const std::string& path) {
            if (!Read(path, around)) code = ExitCode::kFailed;
        };
        for (const std::string& path : paths_) {
            if (path != "-") {
                read(path);
                continue;
            }
            for (std::string line; NextLine(line);) {
                read(FromOneLine(line));
            }
            if (std::ferror(stdin)) {
                around.out.Note("standard input can't be read");
                return ExitCode::kUnreadable;
            }
        }
        return code;
    }

 private:
    static bool NextLine(std::string& line) {
        bool read = false;
        if (!terminal::IsInterrupted()) read = static_cast<bool>(std::getline(std::cin, line));
        if (terminal::IsInterrupted()) throw Interrupted();
        if (!line.empty() && line.back() == '\r') line.pop_back();
        return read;
    }
    bool Read(const std::string& path, Surroundings& around) const {
        std::string problem;
        const auto found = Locate(*around.session, path, problem);
        if (found) problem = SetUnit(*found->node, unit_);
        if (!problem.empty()) return Refuse(path, problem, !found, around.out);
        const std::string attribute = !attribute_.empty()        ? attribute_
                                      : found->attribute.empty() ? "value"
                                                                 : found->attribute;
        const FIValue value = AttributeOf(*found->node, attribute.c_str());
        if (attribute == "value" && IsStale(*found->node)) {
            around.out.Note(OneLine(path) + ": older than a change of the case");
        }
        around.out.Line(json_ ? Record(path, *found->node, attribute, value) : OneLine(value));
        return true;
    }
    bool Refuse(const std::string& path, const std::string& problem, bool names_path,
                Output& out) const {
        out.Note(names_path ? problem : OneLine(path) + ": " + problem);
        if (json_) {
            Json record;
            record["path"] = OneLine(path);
            record["error"] = problem;
            out.Line(ToLine(record));
        }
        return false;
    }
    static std::string Record(const std::string& path, FIIteratorBase& node,
                              const std::string& attribute, const FIValue& value) {
        Json record;
        record["path"] = OneLine(path);
        if (attribute != "value") record["attr"] = attribute;
        record["value"] = ToJson(value);
        record["uom"] = ToJson(AttributeOf(node, "uom"));
        record["status"] = ToJson(AttributeOf(node, "status"));
        MarkStale(node, record);
        return ToLine(record);
    }

    std::vector<std::string> paths_;
    std::string attribute_;
    std::string unit_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeGet() {
    return std::make_unique<Get>();
}
