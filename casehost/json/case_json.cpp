// SPDX-License-Identifier: Apache-2.0
// A whole case as JSON text: its top level, read and written.

#include <new>

#include "casehost/case_file.h"
#include "casehost/units.h"
#include "json/basis_json.h"
#include "json/fields.h"
#include "json/object_json.h"
#include "json/words.h"

namespace fixtop::casehost {

namespace {

using json::Fields;
using json::JsonNode;
using json::JsonText;
using json::kObjectLists;
using json::Tree;

bool IsCaseFile(Tree& tree, Fields& fields, const JsonNode& root) {
    const std::string format = fields.Text("format");
    const long version = fields.Integer("version", 0);
    if (format == json::kFormatName && version == json::kFormatVersion) return true;
    tree.Report(root, "not a case file: expected format \"" + std::string(json::kFormatName) +
                          "\", version " + std::to_string(json::kFormatVersion));
    return false;
}

void ReadBasics(Tree& tree, Fields& fields, CaseData& data) {
    data.name = fields.Text("name");
    data.title = fields.Text("title");
    data.source = fields.Text("source");
    data.recorded = fields.Flag("recorded", data.recorded);
    data.dynamic = fields.Flag("dynamic", data.dynamic);
    data.online = fields.Flag("online", data.online);
    data.unit_set = static_cast<unsigned>(fields.Integer("unitSet", 0, 0, kUnitSets - 1));
    data.solve_turns = static_cast<int>(fields.Integer("solveTurns", data.solve_turns, 1, 1000));
    data.property_package = fields.Text("propertyPackage");
    data.compounds = json::ReadAll(tree, fields.Array("compounds"), json::ReadCompound);
    if (const JsonNode* basis = fields.Array("basis")) data.basis = json::ReadBasis(tree, *basis);
}

std::unique_ptr<CaseData> ReadCase(Tree& tree, const JsonNode& root) {
    auto data = std::make_unique<CaseData>();
    Fields fields(tree, root);
    if (!IsCaseFile(tree, fields, root)) return nullptr;
    ReadBasics(tree, fields, *data);
    json::Shapes shapes;
    if (const JsonNode* node = fields.Object("shapes")) shapes = json::ReadShapes(tree, *node);
    json::ObjectReader objects(tree, shapes);
    if (const JsonNode* node = fields.Object("flowsheet")) objects.ReadFlowsheet(*node, data->main);
    for (const auto& list : kObjectLists) {
        objects.Read(fields.Array(list.name), (*data).*list.objects);
    }
    fields.Done();
    if (tree.Problems().empty()) json::CheckReferences(tree, root, *data);
    return tree.Problems().empty() ? std::move(data) : nullptr;
}

class TopLevel {
 public:
    explicit TopLevel(const CaseData& data) : data_(data) {}

    std::string Write() {
        shapes_.Collect(data_.main.objects);
        for (const auto& list : kObjectLists) shapes_.Collect(data_.*list.objects);
        text_.Raw("{");
        Basics();
        Line("compounds");
        WriteLines(text_, "[]", data_.compounds, 1,
                   [this](const CompoundData& each) { json::WriteCompound(text_, each); });
        Line("basis");
        json::WriteBasis(text_, data_.basis, 1);
        Line("shapes");
        json::WriteShapes(text_, shapes_, 1);
        Line("flowsheet");
        json::WriteFlowsheet(text_, data_.main, shapes_, 1);
        for (const auto& list : kObjectLists) {
            Line(list.name);
            json::WriteObjects(text_, data_.*list.objects, shapes_, 1);
        }
        text_.Raw("\n}\n");
        return text_.Take();
    }

 private:
    // A member on a line of its own: its name, or the whole of it.
    template <class... Value>
    void Line(const char* name, const Value&... value) {
        text_.Line(1, first_);
        text_.Key(name, value...);
    }

    void Basics() {
        Line("format", json::kFormatName);
        Line("version", json::kFormatVersion);
        Line("name", data_.name);
        Line("title", data_.title);
        Line("source", data_.source);
        Line("recorded", data_.recorded);
        Line("dynamic", data_.dynamic);
        Line("online", data_.online);
        Line("unitSet", data_.unit_set);
        Line("solveTurns", data_.solve_turns);
        Line("propertyPackage", data_.property_package);
    }

    const CaseData& data_;
    json::ShapeNames shapes_;
    JsonText text_;
    bool first_ = true;
};

}  // namespace

ReadResult ReadCaseText(const std::string& file, std::string_view text) {
    try {
        Tree tree(file, text);
        ReadResult result;
        if (const JsonNode* root = tree.Root()) result.data = ReadCase(tree, *root);
        result.problems = tree.Problems();
        return result;
    } catch (const std::bad_alloc&) {
        return {nullptr, {{file, "not enough memory for this file"}}};
    }
}

std::string CaseToText(const CaseData& data) {
    return TopLevel(data).Write();
}

}  // namespace fixtop::casehost
