// SPDX-License-Identifier: Apache-2.0
#include <limits>
#include <set>

#include "unit_choice.h"
#include "words/makers.h"
#include "words/node_word.h"

namespace fixtop {

namespace {

class Tree final : public NodeWord {
 public:
    void Declare(CLI::App& app) override {
        DeclareNode(app, "Node; the present one when it is left out");
        app.add_option("--depth", depth_, "Levels below the node; all when it is left out")
            ->check(CLI::Range(0, std::numeric_limits<int>::max(), "NONNEGATIVE"));
        AddNames(app, "--unit", wanted_, "Unit for all values that have it; may be repeated")
            ->allow_extra_args(false);
        units_.Declare(app);
        app.add_flag("--attachments", attachments_, "Go on below attachments");
        app.add_flag("--all", all_, "All elements of long arrays");
    }

 private:
    Node Shown(CaseSession& session, const Node& found) override {
        units_.Use(session.OpenCase());
        return found;
    }
    void Show(const Node& node, Output& out) override {
        if (!AsJson()) return ShowBelow(node, 0, out);
        out.Line(ToLine(Nested(node, node.Path(), depth_), 2));
    }

    // In the first of the units that is one of it, or else as it is.
    client::Reading Read(const Node& node) const {
        client::Reading plain = node.Read();
        if (plain.unit.empty()) return plain;
        std::vector<std::string> units = wanted_;
        units.push_back(units_.UnitOf(node));
        for (const std::string& unit : units) {
            try {
                client::Reading reading = node.Read(unit);
                const bool has_unit = !unit.empty() && !reading.unit.empty();
                if (has_unit && client::OtherUnit("value", reading, unit).empty()) {
                    used_.insert(unit);
                    return reading;
                }
            } catch (const client::Refused&) {
                // One for other quantities.
            }
        }
        return plain;
    }
    std::string Lacking() const override {
        std::string units;
        for (const std::string& unit : wanted_) {
            if (!used_.contains(unit)) units += (units.empty() ? "" : ", ") + OneLine(unit);
        }
        return units.empty() ? "" : "no value is shown in: " + units;
    }
    static bool IsSpecified(const std::string& status) {
        return status == "Specified" || status == "Default";
    }

    static bool IsAttachment(const Node& node) { return TextOf(node, "type") == "Attachment"; }
    bool IsOpen(const Node& node, int levels_left) const {
        return levels_left > 0 && (attachments_ || !IsAttachment(node));
    }

    static std::string Indent(int level) { return std::string(std::size_t{2} * level, ' '); }
    std::string Describe(const Node& node) const {
        const std::string name = ShownName(node);
        const std::string type = TextOf(node, "type");
        if (!node.IsVariable()) return type.empty() ? name : name + "  (" + type + ")";
        const client::Reading reading = Read(node);
        const std::string value = OneLine(reading.value);
        const char* joint = type == "Attachment"          ? " -> "
                            : IsSpecified(reading.status) ? " := "
                                                          : " = ";
        if (value.empty()) return name + joint + "(none)";
        return name + joint + value + (reading.unit.empty() ? "" : ' ' + OneLine(reading.unit)) +
               (reading.stale ? "  (stale)" : "");
    }
    void ShowBelow(const Node& node, int level, Output& out) const {
        out.Line(Indent(level) + Describe(node));
        if (!IsOpen(node, depth_ - level)) return;
        const auto show = [&](const client::Child& child) {
            ShowBelow(child.node, level + 1, out);
            return true;
        };
        if (all_) {
            ForEachChild(node, show);
        } else if (const int left_out = ForEachFirstChild(node, show)) {
            out.Line(Indent(level + 1) + FoldedLine(left_out));
        }
    }
    Json Nested(const Node& node, const std::string& path, int levels_left) const {
        Json record;
        record["path"] = OneLine(path);
        record["name"] = node.Name();
        record["type"] = ToJson(node.Attribute("type"));
        if (node.IsVariable()) {
            const client::Reading reading = Read(node);
            record["value"] = ToJson(reading.value);
            record["uom"] = UnitToJson(reading.unit);
            record["status"] = reading.status.empty() ? Json() : Json(reading.status);
            if (reading.stale) record["stale"] = true;
        }
        if (!IsOpen(node, levels_left)) return record;
        Json children = Json::array();
        ForEachChild(node, [&](const client::Child& child) {
            children.push_back(
                Nested(child.node, client::JoinPath(path, child.step), levels_left - 1));
            return true;
        });
        if (!children.empty()) record["children"] = std::move(children);
        return record;
    }

    int depth_ = std::numeric_limits<int>::max();
    std::vector<std::string> wanted_;
    UnitChoice units_;
    mutable std::set<std::string> used_;  // of the units, while the tree is shown
    bool attachments_ = false;
    bool all_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeTree() {
    return std::make_unique<Tree>();
}

}  // namespace fixtop
