// SPDX-License-Identifier: Apache-2.0
#include "json/object_json.h"

#include <unordered_set>

#include "json/fields.h"
#include "json/variable_json.h"
#include "json/words.h"

namespace fixtop::casehost::json {

namespace {

PortData ReadPort(Tree& tree, const JsonNode& node) {
    PortData port;
    Fields fields(tree, node);
    port.role = fields.OneOf("role", kRoleWords, PortData::Role::feed);
    port.index = static_cast<int>(fields.Integer("index", 0, 0, 100'000));
    port.stream = fields.RequiredText("stream");
    fields.Done();
    return port;
}

void WritePort(JsonText& text, const PortData& port) {
    text.Raw("{");
    text.Key("role", Word(kRoleWords, port.role));
    text.Member("index", port.index);
    text.Member("stream", port.stream);
    text.Raw("}");
}

void WriteObject(JsonText& text, const ObjectData& object, ShapeNames& shapes, int depth) {
    bool first = false;
    const auto line = [&](const char* name) {
        text.Line(depth + 1, first);
        text.Key(name);
    };
    text.Raw("{");
    text.Key("name", object.name);
    text.Member("type", object.type);
    text.Member("shape", shapes.Of(object));
    if (object.status != ObjectStatus::ok || !object.status_text.empty()) {
        text.Member("status", Word(kStatusWords, object.status));
        if (!object.status_text.empty()) text.Member("statusText", object.status_text);
    }
    if (object.stale) text.Member("stale", true);
    if (HasValues(object)) line("variables"), WriteVariables(text, object, depth + 1);
    if (!object.ports.empty()) {
        line("ports");
        WriteLine(text, "[]", object.ports, [&](const PortData& port) { WritePort(text, port); });
    }
    if (object.sub_flowsheet) {
        line("flowsheet");
        WriteFlowsheet(text, *object.sub_flowsheet, shapes, depth + 1);
    }
    text.Raw("}");
}

}  // namespace

void ObjectReader::Read(const JsonNode* list, std::vector<ObjectData>& objects) {
    if (!list) return;
    for (const JsonNode* each = list->first; each && !tree_.Full() && !full_; each = each->next) {
        if (!ReadNext(*each, objects)) return;
    }
    CheckNames(list, objects);
}

bool ObjectReader::ReadNext(const JsonNode& node, std::vector<ObjectData>& objects) {
    if (++count_ > kMaxCaseObjects) {
        tree_.Report(node, "more than " + std::to_string(kMaxCaseObjects) + " objects");
        return false;
    }
    ReadObject(node, objects.emplace_back());
    return true;
}

void ObjectReader::ReadFlowsheet(const JsonNode& node, FlowsheetData& flowsheet) {
    Fields fields(tree_, node);
    Read(fields.Array("objects"), flowsheet.objects);
    fields.Done();
}

void ObjectReader::CheckNames(const JsonNode* list, const std::vector<ObjectData>& objects) {
    std::unordered_set<std::string_view> names;
    names.reserve(objects.size());
    const JsonNode* node = list ? list->first : nullptr;
    for (const ObjectData& object : objects) {
        if (!names.insert(object.name).second) {
            tree_.Report(OrNowhere(node),
                         "another object of this list is called \"" + object.name + "\"");
        }
        node = node ? node->next : nullptr;
    }
}

const Shape& ObjectReader::ShapeOf(const JsonNode* name) {
    static const Shape none;
    if (!name) return none;
    const auto known = shapes_.find(TextOf(tree_, *name));
    if (known != shapes_.end()) return known->second;
    tree_.Report(*name, "no such shape: " + Tree::Describe(*name));
    return none;
}

void ObjectReader::ReadObject(const JsonNode& node, ObjectData& object) {
    Fields fields(tree_, node);
    object.name = fields.RequiredText("name");
    object.type = fields.RequiredText("type");
    const Shape& shape = ShapeOf(fields.Find("shape"));
    object.status = fields.OneOf("status", kStatusWords, ObjectStatus::ok);
    object.status_text = fields.Text("statusText");
    object.stale = fields.Flag("stale", false);
    if (!ReadVariables(tree_, fields.Object("variables"), shape, object, room_)) {
        full_ = true;
        tree_.Report(node, "more than " + std::to_string(kMaxCaseValues) + " values in the case");
        return;
    }
    object.ports = ReadAll(tree_, fields.Array("ports"), ReadPort);
    if (const JsonNode* inner = fields.Object("flowsheet")) {
        object.sub_flowsheet = std::make_shared<FlowsheetData>();
        ReadFlowsheet(*inner, *object.sub_flowsheet);
    }
    fields.Done();
}

void WriteObjects(JsonText& text, const std::vector<ObjectData>& objects, ShapeNames& shapes,
                  int depth) {
    WriteLines(text, "[]", objects, depth,
               [&](const ObjectData& each) { WriteObject(text, each, shapes, depth + 1); });
}

void WriteFlowsheet(JsonText& text, const FlowsheetData& flowsheet, ShapeNames& shapes, int depth) {
    bool first = true;
    text.Raw("{");
    text.Line(depth + 1, first);
    text.Key("objects");
    WriteObjects(text, flowsheet.objects, shapes, depth + 1);
    text.Break(depth);
    text.Raw("}");
}

}  // namespace fixtop::casehost::json
