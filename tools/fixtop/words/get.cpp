// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "input_lines.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Get final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddNames(app, "PATH", paths_, "Nodes; - reads paths from standard input")->required();
        AddName(app, "--attr", attribute_, "Attribute to be read; value when it is left out");
        AddName(app, "--unit", unit_, "Unit in which values are wanted");
        AddSeveral(app, first_, all_);
        AddJson(app, json_);
    }

    ExitCode Run(CommandContext& around) override {
        ExitCode code = ExitCode::kOk;
        const auto read = [&](const std::string& path) {
            if (!Read(path, around)) code = ExitCode::kFailed;
        };
        for (const std::string& path : paths_) {
            if (path != "-") {
                read(path);
                continue;
            }
            const auto read_line = [&](const std::string& line) { read(FromOneLine(line)); };
            if (!ForEachInputLine(read_line, around.out)) return ExitCode::kUnreadable;
        }
        return code;
    }

 private:
    bool Read(const std::string& path, CommandContext& around) const {
        bool all_read = true;
        const std::string problem =
            ForEachMeant(*around.session, path, first_, all_,
                         [&](const client::Place& place, const std::string& shown) {
                             all_read &= Show(place, shown, around.out);
                         });
        return problem.empty() ? all_read : Refuse(OneLine(path), problem, true, around.out);
    }
    // Under the path that is told.
    bool Show(const client::Place& place, const std::string& path, Output& out) const {
        const std::string attribute = !attribute_.empty()       ? attribute_
                                      : place.attribute.empty() ? "value"
                                                                : place.attribute;
        client::Reading reading;
        try {
            reading = place.node.Read(unit_, attribute);
        } catch (const client::Refused& refused) {
            return Refuse(path, OneLine(refused.Text()), false, out);
        }
        if (reading.stale) out.Note(path + ": older than a change of the case");
        out.Line(json_ ? Record(path, attribute, reading) : OneLine(reading.value));
        const std::string problem = OneLine(client::OtherUnit(attribute, reading, unit_));
        if (!problem.empty()) out.Note(path + ": " + problem);
        return problem.empty();
    }
    bool Refuse(const std::string& path, const std::string& problem, bool names_path,
                Output& out) const {
        out.Note(names_path ? problem : path + ": " + problem);
        if (json_) {
            Json record;
            record["path"] = path;
            record["error"] = problem;
            out.Line(ToLine(record));
        }
        return false;
    }
    static std::string Record(const std::string& path, const std::string& attribute,
                              const client::Reading& reading) {
        Json record;
        record["path"] = path;
        if (attribute != "value") record["attr"] = attribute;
        record["value"] = ToJson(reading.value);
        record["uom"] = UnitToJson(reading.unit);
        record["status"] = reading.status.empty() ? Json() : Json(reading.status);
        if (reading.stale) record["stale"] = true;
        return ToLine(record);
    }

    std::vector<std::string> paths_;
    std::string attribute_;
    std::string unit_;
    bool first_ = false;
    bool all_ = false;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeGet() {
    return std::make_unique<Get>();
}

}  // namespace fixtop
