// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "case_session.h"
#include "fixtop/client/near_names.h"
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
            // A list of paths would have as many messages.
            tells_held_ = path != "-";
            if (path != "-") {
                read(path);
                continue;
            }
            const auto read_line = [&](const std::string& line) { read(FromOneLine(line)); };
            if (!ForEachInputLine(read_line, around.out)) return ExitCode::kUnreadable;
        }
        return code;
    }

    bool TellsFailures() const override { return true; }

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
            const bool lacks_value = attribute == "value" && !place.node.IsVariable();
            const std::string problem = lacks_value && !place.node.IsGone() && !unit_.empty()
                                            ? NothingIn(unit_, place.node)
                                            : OneLine(refused.Text());
            return Refuse(path, problem, false, out);
        }
        if (!attribute_.empty() && reading.value.IsNull()) {
            const std::string unknown = UnknownAttribute(place.node);
            if (!unknown.empty()) return Refuse(path, unknown, false, out);
        }
        if (reading.stale) out.Note(path + ": older than a change of the case");
        const std::string problem = OneLine(client::OtherUnit(attribute, reading, unit_));
        const bool is_holder =
            attribute == "value" && reading.value.IsNull() && !place.node.IsVariable();
        if (json_) {
            Json record = Record(path, attribute, reading);
            if (!problem.empty()) record["error"] = problem;
            if (is_holder) AddHeld(place.node, record);
            out.Line(ToLine(record));
        } else {
            out.Line(OneLine(reading.value));
            if (is_holder && tells_held_) {
                out.Note(Called(path) + ": no value, but " + Held(place.node));
            }
        }
        if (!problem.empty()) out.Note(path + ": " + problem);
        return problem.empty();
    }
    // What is wrong with the one that is asked for; empty when the node lists it.
    std::string UnknownAttribute(const Node& node) const {
        std::vector<std::string> names = {"value", "stale"};
        for (const auto& [name, value] : node.Attributes()) names.push_back(name);
        if (std::ranges::find(names, attribute_) != names.end()) return "";
        std::string near;
        for (const std::string& name : client::NearNames(attribute_, names)) {
            near += (near.empty() ? "; near: " : ", ") + OneLine(name);
        }
        return "no such attribute: " + OneLine(attribute_) + near;
    }
    bool Refuse(const std::string& path, const std::string& problem, bool names_path,
                Output& out) const {
        out.Note(names_path ? problem : Called(path) + ": " + problem);
        if (json_) {
            Json record;
            record["path"] = path;
            record["error"] = problem;
            out.Line(ToLine(record));
        }
        return false;
    }
    // The empty path leads to the top.
    static std::string Called(const std::string& path) {
        return path.empty() ? "the top node" : path;
    }
    // "MaterialStreamObject with Temperature, Pressure and 3 more"
    static std::string Held(const Node& node) {
        constexpr int kNamed = 6;
        std::string names;
        int count = 0;
        ForEachChild(node, [&](const client::Child& child) {
            if (++count <= kNamed) names += (count > 1 ? ", " : " with ") + OneLine(child.step);
            return true;
        });
        if (count > kNamed) names += " and " + std::to_string(count - kNamed) + " more";
        return TextOf(node, "type") + (count == 0 ? " with nothing in it" : names);
    }
    // What a node without a value holds, and what of it can be shown in the unit.
    static std::string NothingIn(const std::string& unit, const Node& node) {
        std::string names;
        ForEachChild(node, [&](const client::Child& child) {
            if (CanBeIn(unit, child.node))
                names += (names.empty() ? "" : ", ") + OneLine(child.step);
            return true;
        });
        return "no value, but " + Held(node) + "; in " + OneLine(unit) +
               " can be shown: " + (names.empty() ? "nothing" : names);
    }
    static bool CanBeIn(const std::string& unit, const Node& node) {
        if (!node.IsVariable() || node.Attribute("uom_options").IsNull()) return false;
        try {
            Node(node).ShowIn(unit);
        } catch (const client::Refused&) {
            return false;
        }
        return true;
    }
    static void AddHeld(const Node& node, Json& record) {
        record["type"] = TextOf(node, "type");
        Json& steps = record["holds"] = Json::array();
        ForEachChild(node, [&](const client::Child& child) {
            steps.push_back(OneLine(child.step));
            return true;
        });
    }
    static Json Record(const std::string& path, const std::string& attribute,
                       const client::Reading& reading) {
        Json record;
        record["path"] = path;
        if (attribute != "value") record["attr"] = attribute;
        record["value"] = ToJson(reading.value);
        record["uom"] = UnitToJson(reading.unit);
        record["status"] = reading.status.empty() ? Json() : Json(reading.status);
        if (reading.stale) record["stale"] = true;
        return record;
    }

    std::vector<std::string> paths_;
    std::string attribute_;
    std::string unit_;
    bool first_ = false;
    bool all_ = false;
    bool json_ = false;
    bool tells_held_ = true;
};

}  // namespace

std::unique_ptr<Word> MakeGet() {
    return std::make_unique<Get>();
}

}  // namespace fixtop
