// SPDX-License-Identifier: Apache-2.0
// A whole case as JSON text: its top level, read and written.

#include <deque>
#include <new>
#include <optional>

#include "casehost/case_file.h"
#include "casehost/units.h"
#include "json/basis_json.h"
#include "json/case_text.h"
#include "json/fields.h"
#include "json/json_stream.h"
#include "json/object_json.h"
#include "json/words.h"

namespace fixtop::casehost {

namespace {

using json::Fields;
using json::JsonNode;
using json::JsonStream;
using json::JsonText;
using json::kObjectLists;
using json::Tree;

constexpr char kShapes[] = "shapes";
constexpr char kFlowsheet[] = "flowsheet";
constexpr char kObjects[] = "objects";

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

json::Shapes ReadShapes(Tree& tree, const JsonNode* node) {
    return node ? json::ReadShapes(tree, *node) : json::Shapes();
}

// What can only be said of the whole.
bool CheckWhole(Tree& tree, Fields& fields, const JsonNode& root, const CaseData& data) {
    fields.Done();
    if (tree.Problems().empty()) json::CheckReferences(tree, root, data);
    return tree.Problems().empty();
}

std::unique_ptr<CaseData> ReadCase(Tree& tree, const JsonNode& root) {
    auto data = std::make_unique<CaseData>();
    Fields fields(tree, root);
    if (!IsCaseFile(tree, fields, root)) return nullptr;
    ReadBasics(tree, fields, *data);
    const json::Shapes shapes = ReadShapes(tree, fields.Object(kShapes));
    json::ObjectReader objects(tree, shapes);
    if (const JsonNode* node = fields.Object(kFlowsheet)) objects.ReadFlowsheet(*node, data->main);
    for (const auto& list : kObjectLists) {
        objects.Read(fields.Array(list.name), (*data).*list.objects);
    }
    return CheckWhole(tree, fields, root, *data) ? std::move(data) : nullptr;
}

// A case whose objects are made while its text is read: of the lists of objects one object at a
// time is there as nodes. The lists come behind the shapes that they need, as they are written.
class StreamedCase {
 public:
    explicit StreamedCase(JsonStream& text) : text_(text) { root_.kind = JsonNode::Kind::object; }

    // Null when it is no good case, or written otherwise.
    std::unique_ptr<CaseData> Read() {
        const auto member = [this] { return ReadMember(); };
        if (!text_.Take('{') || !UpTo('}', member) || !text_.AtEnd()) return nullptr;
        if (!JsonStream::NamesDiffer(root_) || !HasShapes()) return nullptr;
        Fields fields(tree_, root_);
        if (!IsCaseFile(tree_, fields, root_)) return nullptr;
        ReadBasics(tree_, fields, *data_);
        for (const char* name : {kShapes, kFlowsheet}) fields.Object(name);
        for (const auto& list : kObjectLists) fields.Array(list.name);
        return CheckWhole(tree_, fields, root_, *data_) ? std::move(data_) : nullptr;
    }

 private:
    // Items behind a bracket, as `read` takes them from the text.
    template <class ReadItem>
    bool UpTo(char close, const ReadItem& read) {
        if (text_.Take(close)) return true;
        while (read()) {
            if (text_.Take(close)) return true;
            if (!text_.Take(',')) return false;
        }
        return false;
    }

    bool ReadMember() {
        std::string_view name;
        if (!text_.Name(name)) return false;
        if (name == kFlowsheet) {
            Add(name, JsonNode::Kind::object);
            return ReadFlowsheet();
        }
        for (const auto& list : kObjectLists) {
            if (name != list.name) continue;
            Add(name, JsonNode::Kind::array);
            return ReadObjects(2, (*data_).*list.objects);
        }
        // Objects were read without them.
        if (name == kShapes && objects_) return false;
        JsonNode* node = text_.Kept(1);
        if (node) Link(name, *node);
        return node != nullptr;
    }

    bool ReadFlowsheet() {
        std::string_view name;
        if (!text_.Take('{')) return false;
        if (text_.Take('}')) return true;
        return text_.Name(name) && name == kObjects && ReadObjects(3, data_->main.objects) &&
               text_.Take('}');
    }

    // Shapes are read once, before the first object.
    bool HasShapes() {
        if (objects_) return true;
        const JsonNode* shapes = root_.Find(kShapes);
        if (shapes && shapes->kind != JsonNode::Kind::object) return false;
        shapes_ = ReadShapes(tree_, shapes);
        objects_.emplace(tree_, shapes_);
        return true;
    }

    // Below `depth` arrays and objects.
    bool ReadObjects(int depth, std::vector<ObjectData>& objects) {
        if (!HasShapes()) return false;
        const auto object = [&] {
            const JsonNode* node = text_.Item(depth);
            return node && objects_->ReadNext(*node, objects) && !tree_.Full();
        };
        if (!text_.Take('[') || !UpTo(']', object)) return false;
        objects_->CheckNames(nullptr, objects);
        return true;
    }

    // A member in place of one whose nodes are not kept.
    void Add(std::string_view name, JsonNode::Kind kind) {
        JsonNode& node = lists_.emplace_back();
        node.kind = kind;
        Link(name, node);
    }
    void Link(std::string_view name, JsonNode& node) {
        node.key = name;
        node.parent = &root_;
        (root_.last ? root_.last->next : root_.first) = &node;
        root_.last = &node;
    }

    JsonStream& text_;
    Tree tree_;
    JsonNode root_;
    std::deque<JsonNode> lists_;
    std::unique_ptr<CaseData> data_ = std::make_unique<CaseData>();
    json::Shapes shapes_;
    std::optional<json::ObjectReader> objects_;
};

class TopLevel {
 public:
    TopLevel(const CaseData& data, JsonText::Taker taker) : data_(data), text_(std::move(taker)) {}

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

// Of what was read nothing is left when this comes back.
template <class Text>
std::unique_ptr<CaseData> ReadStream(Text& text) {
    JsonStream stream(text);
    return StreamedCase(stream).Read();
}

}  // namespace

std::unique_ptr<CaseData> ReadGoodCase(std::istream& in) {
    return ReadStream(in);
}

ReadResult ReadAnyCase(const std::string& file, std::string_view text) {
    Tree tree(file, text);
    ReadResult result;
    if (const JsonNode* root = tree.Root()) result.data = ReadCase(tree, *root);
    result.problems = tree.Problems();
    return result;
}

ReadResult ReadCaseText(const std::string& file, std::string_view text) {
    try {
        auto data = ReadStream(text);
        return data ? ReadResult{std::move(data), {}} : ReadAnyCase(file, text);
    } catch (const std::bad_alloc&) {
        return {nullptr, {{file, kNoMemory}}};
    }
}

std::string CaseToText(const CaseData& data) {
    return TopLevel(data, nullptr).Write();
}

void WriteCase(const CaseData& data, const std::function<void(std::string_view)>& take) {
    take(TopLevel(data, take).Write());
}

}  // namespace fixtop::casehost
