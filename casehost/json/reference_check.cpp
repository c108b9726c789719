// SPDX-License-Identifier: Apache-2.0
#include "json/object_json.h"

#include <unordered_map>
#include <unordered_set>

#include "naming/object_path.h"
#include "naming/object_type.h"
#include "naming/references.h"

namespace fixtop::casehost::json {

namespace {

using Objects = std::vector<ObjectData>;

// Case data as a world of path, with an index by name for each list.
class DataWorld {
 public:
    using List = const Objects*;
    using Item = const ObjectData*;

    explicit DataWorld(const CaseData& data) : data_(data) {}

    Item Find(List list, const std::string& name) const {
        Names& names = names_[list];
        if (names.empty()) {
            for (const ObjectData& object : *list) names.try_emplace(object.name, &object);
        }
        const auto found = names.find(name);
        return found == names.end() ? nullptr : found->second;
    }
    List Inner(Item item) const {
        return item->sub_flowsheet ? &item->sub_flowsheet->objects : nullptr;
    }
    List Main() const { return &data_.main.objects; }
    List Special(std::string_view word) const {
        if (word == path::kUtilities) return &data_.utilities;
        if (word == path::kTables) return &data_.data_tables;
        if (word == path::kReactions) return &data_.reactions;
        return nullptr;
    }

 private:
    using Names = std::unordered_map<std::string_view, Item>;

    const CaseData& data_;
    mutable std::unordered_map<List, Names> names_;
};

// The nodes of what was read, as long as they are there.
const JsonNode* First(const JsonNode* list) {
    return list ? list->first : nullptr;
}
const JsonNode* Next(const JsonNode* node) {
    return node ? node->next : nullptr;
}
const JsonNode* Member(const JsonNode* object, std::string_view name) {
    return object ? object->Find(name) : nullptr;
}

class Checker {
 public:
    Checker(Tree& tree, const CaseData& data) : tree_(tree), world_(data) {}

    // `scope` is the flowsheet from which the objects of `objects` look.
    void Check(const JsonNode* nodes, const Objects& objects, const Objects* scope, bool ports) {
        const JsonNode* node = First(nodes);
        for (const ObjectData& object : objects) {
            CheckAttachments(OrNowhere(node), object, scope);
            CheckPorts(OrNowhere(node), object, ports ? scope : nullptr);
            if (object.sub_flowsheet) {
                const Objects& inner = object.sub_flowsheet->objects;
                Check(Member(Member(node, "flowsheet"), "objects"), inner, &inner, true);
            }
            node = Next(node);
        }
    }

    void CheckBasis(const JsonNode* nodes, const std::vector<BasisElement>& elements) {
        const JsonNode* node = First(nodes);
        for (const BasisElement& element : elements) {
            ForEachObjectPath(element, [&](const std::string& path) {
                if (path.empty() || path::FindObject(world_, world_.Main(), path)) return;
                tree_.Report(OrNowhere(node), "the object \"" + path + "\" names no object");
            });
            CheckBasis(Member(node, "elements"), element.elements);
            node = Next(node);
        }
    }

 private:
    void CheckAttachments(const JsonNode& node, const ObjectData& object, const Objects* scope) {
        const JsonNode* members = node.Find("variables");
        for (const VariableData& variable : object.variables) {
            if (variable.spec->kind != ValueKind::attachment) continue;
            for (const ValueData& value : variable.values) {
                if (value.text.empty() || path::FindObject(world_, scope, value.text)) continue;
                if (tree_.Full()) return;
                const JsonNode* member = members ? members->Find(variable.spec->name) : nullptr;
                tree_.Report(member ? *member : node,
                             "the attachment \"" + value.text + "\" names no object");
            }
        }
    }

    void CheckPorts(const JsonNode& node, const ObjectData& object, const Objects* scope) {
        if (object.ports.empty()) return;
        const JsonNode* member = First(node.Find("ports"));
        std::unordered_set<std::string> rows;
        std::unordered_set<std::string_view> variables;
        for (const VariableData& each : object.variables) variables.insert(each.spec->name);
        for (const PortData& port : object.ports) {
            const std::string row = PortRowName(port);
            const JsonNode& place = OrNowhere(member);
            if (!rows.insert(row).second) tree_.Report(place, "the port stands twice: " + row);
            if (variables.contains(row)) {
                tree_.Report(place, "a variable has the name of the port: " + row);
            }
            CheckStream(place, port, scope);
            member = Next(member);
        }
    }

    void CheckStream(const JsonNode& node, const PortData& port, const Objects* scope) {
        const ObjectData* stream = scope ? world_.Find(scope, port.stream) : nullptr;
        const ObjectType* type = stream ? types::Find(stream->type) : nullptr;
        if (type && type->IsA(&types::kStream)) return;
        tree_.Report(node, "no stream \"" + port.stream + "\" in this flowsheet");
    }

    Tree& tree_;
    DataWorld world_;
};

}  // namespace

void CheckReferences(Tree& tree, const JsonNode& root, const CaseData& data) {
    Checker checker(tree, data);
    const Objects* main = &data.main.objects;
    const JsonNode* objects = Member(root.Find("flowsheet"), "objects");
    checker.Check(objects, data.main.objects, main, true);
    checker.CheckBasis(root.Find("basis"), data.basis);
    for (const ObjectList& list : kObjectLists) {
        checker.Check(root.Find(list.name), data.*list.objects, main, false);
    }
}

}  // namespace fixtop::casehost::json
