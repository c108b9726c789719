#include <sstream>

#include "near_names.h"
#include "node.h"
#include "view.h"
#include "words/makers.h"

namespace fixtop {

namespace {

std::vector<std::string> LinesOf(FIIteratorBase& node, const char* attribute) {
    std::vector<std::string> lines;
    std::istringstream text(AttributeOf(node, attribute).ToText());
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
}

bool IsSet(FIIteratorBase& node, const char* attribute) {
    return AttributeOf(node, attribute).AsInt() != 0;
}

class Classes final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddName(app, "NAME", name_, "Class or enumeration; all classes when it is left out");
        app.add_flag("--enumerations", enumerations_, "List the enumerations");
        AddJson(app, json_);
        AddLibrary(app, view_);
    }

    ExitCode Run(Surroundings& around) override {
        std::string problem;
        const Ref<FIEntry> root = OpenDictionary(view_, problem);
        if (!problem.empty()) around.out.Note(problem);
        if (!root) return ExitCode::kUnreadable;
        const NodeRef top = NodeRef::Adopt(Given(FixtopMakeIterator(root.Get(), false)));
        if (name_.empty()) {
            List(*top, enumerations_ ? kEnumerations : kClasses, around.out);
            return ExitCode::kOk;
        }
        return ShowNamed(*top, around.out);
    }

 private:
    static constexpr char kClasses[] = "Classes";
    static constexpr char kEnumerations[] = "Enumerations";

    void List(FIIteratorBase& top, const char* group, Output& out) const {
        const NodeRef node = CopyOf(top);
        node->SeekChild(group);
        const bool classes = group == kClasses;
        ForEachChild(*node, [&](FIIteratorBase& each, const ChildPlace& place) {
            if (!json_) {
                out.Line(OneLine(place.name));
            } else {
                out.Line(ToLine(classes ? ClassRecord(each) : EnumerationRecord(each)));
            }
            return true;
        });
    }
    ExitCode ShowNamed(FIIteratorBase& top, Output& out) const {
        std::vector<std::string> names;
        for (const char* group : {kClasses, kEnumerations}) {
            const NodeRef node = CopyOf(top);
            node->SeekChild(group);
            const std::vector<std::string> children = ChildNames(*node);
            names.insert(names.end(), children.begin(), children.end());
            if (!node->SeekChild(name_.c_str())) continue;
            (group == kClasses ? &Classes::ShowClass : &Classes::ShowEnumeration)(*node, json_,
                                                                                  out);
            return ExitCode::kOk;
        }
        out.Note("no such class: " + OneLine(name_));
        for (const std::string& near : NearNames(name_, names)) {
            out.Note("  near: " + OneLine(near));
        }
        return ExitCode::kFailed;
    }

    static void ShowClass(FIIteratorBase& node, bool json, Output& out) {
        if (json) return out.Line(ToLine(ClassRecord(node)));
        out.Line("class\t" + OneLine(NameOf(node)));
        for (const std::string& name : LinesOf(node, "superclasses")) {
            out.Line("superclass\t" + OneLine(name));
        }
        out.Line("attribute\ttype\tquantity\tkeys\tdeclared by");
        ForEachChild(node, [&](FIIteratorBase& attribute, const ChildPlace&) {
            std::string keys;
            for (const std::string& key : LinesOf(attribute, "keys")) {
                keys += (keys.empty() ? "" : ",") + OneLine(key);
            }
            out.Line(OneLine(NameOf(attribute)) + '\t' + TextOf(attribute, "type") +
                     (IsSet(attribute, "array") ? "[]" : "") + '\t' +
                     TextOf(attribute, "quantity") + '\t' + keys + '\t' +
                     TextOf(attribute, "owner"));
            return true;
        });
    }
    static void ShowEnumeration(FIIteratorBase& node, bool json, Output& out) {
        if (json) return out.Line(ToLine(EnumerationRecord(node)));
        out.Line("enumeration\t" + OneLine(NameOf(node)) +
                 (IsSet(node, "closed") ? "\tclosed" : "\topen"));
        for (const std::string& option : LinesOf(node, "options")) {
            out.Line("option\t" + OneLine(option));
        }
    }
    static Json ClassRecord(FIIteratorBase& node) {
        Json record;
        record["class"] = NameOf(node);
        record["superclasses"] = LinesOf(node, "superclasses");
        Json& attributes = record["attributes"] = Json::array();
        ForEachChild(node, [&](FIIteratorBase& attribute, const ChildPlace&) {
            Json row;
            row["name"] = NameOf(attribute);
            row["type"] = TextOf(attribute, "type");
            row["array"] = IsSet(attribute, "array");
            row["quantity"] = ToJson(AttributeOf(attribute, "quantity"));
            row["keys"] = LinesOf(attribute, "keys");
            row["owner"] = TextOf(attribute, "owner");
            attributes.push_back(std::move(row));
            return true;
        });
        return record;
    }
    static Json EnumerationRecord(FIIteratorBase& node) {
        Json record;
        record["enumeration"] = NameOf(node);
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
