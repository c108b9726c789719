// SPDX-License-Identifier: Apache-2.0
#include <sstream>

#include "case_session.h"
#include "fixtop/client/near_names.h"
#include "view.h"
#include "words/makers.h"

namespace fixtop {

namespace {

std::vector<std::string> LinesOf(const Node& node, const char* attribute) {
    std::vector<std::string> lines;
    std::istringstream text(node.Attribute(attribute).ToText());
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
}

bool IsSet(const Node& node, const char* attribute) {
    return node.Attribute(attribute).AsInt() != 0;
}

class Classes final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddName(app, "NAME", name_, "Class or enumeration; all classes when it is left out");
        app.add_flag("--enumerations", enumerations_, "List the enumerations");
        AddJson(app, json_);
        AddLibrary(app, view_);
    }

    ExitCode Run(CommandContext& around) override {
        try {
            std::string warning;
            const Node top = client::OpenDictionary(view_.files, warning);
            if (!warning.empty()) around.out.Note(OneLineEach(warning));
            return Show(top, around.out);
        } catch (const client::CaseError& error) {
            around.out.Note(MessageOf(error));
            return ExitCode::kUnreadable;
        }
    }

 private:
    static constexpr char kClasses[] = "Classes";
    static constexpr char kEnumerations[] = "Enumerations";

    ExitCode Show(const Node& top, Output& out) const {
        if (name_.empty()) {
            List(top, enumerations_ ? kEnumerations : kClasses, out);
            return ExitCode::kOk;
        }
        return ShowNamed(top, out);
    }
    void List(const Node& top, const char* group, Output& out) const {
        const bool classes = group == kClasses;
        ForEachChild(top.At(group), [&](const client::Child& each) {
            if (!json_) {
                out.Line(OneLine(each.name));
            } else {
                out.Line(ToLine(classes ? ClassRecord(each.node) : EnumerationRecord(each.node)));
            }
            return true;
        });
    }
    ExitCode ShowNamed(const Node& top, Output& out) const {
        std::vector<std::string> names;
        for (const char* group : {kClasses, kEnumerations}) {
            std::optional<Node> found;
            ForEachChild(top.At(group), [&](const client::Child& child) {
                names.push_back(child.name);
                if (child.name == name_) found = child.node;
                return !found;
            });
            if (!found) continue;
            (group == kClasses ? &Classes::ShowClass : &Classes::ShowEnumeration)(*found, json_,
                                                                                  out);
            return ExitCode::kOk;
        }
        out.Note("no such class: " + OneLine(name_));
        for (const std::string& near : client::NearNames(name_, names)) {
            out.Note("  near: " + OneLine(near));
        }
        return ExitCode::kFailed;
    }

    static void ShowClass(const Node& node, bool json, Output& out) {
        if (json) return out.Line(ToLine(ClassRecord(node)));
        out.Line("class\t" + OneLine(node.Name()));
        for (const std::string& name : LinesOf(node, "superclasses")) {
            out.Line("superclass\t" + OneLine(name));
        }
        out.Line("attribute\ttype\tquantity\tkeys\tdeclared by");
        ForEachChild(node, [&](const client::Child& child) {
            const Node& attribute = child.node;
            std::string keys;
            for (const std::string& key : LinesOf(attribute, "keys")) {
                keys += (keys.empty() ? "" : ",") + OneLine(key);
            }
            out.Line(OneLine(attribute.Name()) + '\t' + TextOf(attribute, "type") +
                     (IsSet(attribute, "array") ? "[]" : "") + '\t' +
                     TextOf(attribute, "quantity") + '\t' + keys + '\t' +
                     TextOf(attribute, "owner"));
            return true;
        });
    }
    static void ShowEnumeration(const Node& node, bool json, Output& out) {
        if (json) return out.Line(ToLine(EnumerationRecord(node)));
        out.Line("enumeration\t" + OneLine(node.Name()) +
                 (IsSet(node, "closed") ? "\tclosed" : "\topen"));
        for (const std::string& option : LinesOf(node, "options")) {
            out.Line("option\t" + OneLine(option));
        }
    }
    static Json ClassRecord(const Node& node) {
        Json record;
        record["class"] = node.Name();
        record["superclasses"] = LinesOf(node, "superclasses");
        Json& attributes = record["attributes"] = Json::array();
        ForEachChild(node, [&](const client::Child& child) {
            const Node& attribute = child.node;
            Json row;
            row["name"] = attribute.Name();
            row["type"] = TextOf(attribute, "type");
            row["array"] = IsSet(attribute, "array");
            row["quantity"] = ToJson(attribute.Attribute("quantity"));
            row["keys"] = LinesOf(attribute, "keys");
            row["owner"] = TextOf(attribute, "owner");
            attributes.push_back(std::move(row));
            return true;
        });
        return record;
    }
    static Json EnumerationRecord(const Node& node) {
        Json record;
        record["enumeration"] = node.Name();
        record["closed"] = IsSet(node, "closed");
        record["options"] = LinesOf(node, "options");
        return record;
    }

    std::string name_;
    bool enumerations_ = false;
    bool json_ = false;
    ViewOptions view_;
};

}  // namespace

std::unique_ptr<Word> MakeClasses() {
    return std::make_unique<Classes>();
}

}  // namespace fixtop
