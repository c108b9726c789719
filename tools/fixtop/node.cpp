// SPDX-License-Identifier: Apache-2.0
#include "node.h"

#include <array>
#include <cstdio>

#include "terminal.h"

namespace fixtop {

std::string OneLine(const FIValue& value) {
    return OneLine(std::string_view(value.ToText()));
}

std::string NameWithKey(const Node& node) {
    const std::string key = node.Key();
    return key.empty() ? node.Name() : node.Name() + '(' + key + ')';
}

std::string ShownName(const Node& node) {
    return OneLine(NameWithKey(node));
}

std::string TextOf(const Node& node, const char* attribute) {
    return OneLine(node.Attribute(attribute));
}

std::string ShownPath(const Node& node) {
    return OneLine(node.Path());
}

void ForEachChild(const Node& node, const ChildVisitor& visit) {
    node.ForEachChild([&](const client::Child& child) {
        if (terminal::IsInterrupted()) throw Interrupted();
        return visit(child);
    });
}

int ForEachFirstChild(const Node& node, const ChildVisitor& visit) {
    const bool folds = node.IsArray();
    int left_out = 0;
    ForEachChild(node, [&](const client::Child& child) {
        if (!folds || child.index < kFoldedAt) return visit(child);
        ++left_out;
        return true;
    });
    return left_out;
}

std::string FoldedLine(int left_out) {
    return "... " + std::to_string(left_out) + " more, shown by --all";
}

Json ToJson(const FIValue& value) {
    switch (value.Kind()) {
        case FIValue::kNull:
            return nullptr;
        case FIValue::kInt:
            return value.AsInt();
        case FIValue::kReal:
            return value.AsDouble();
        default:
            return value.ToText();
    }
}

Json UnitToJson(const std::string& unit) {
    return unit.empty() ? Json() : Json(unit);
}

void MarkStale(const Node& node, Json& record) {
    if (node.IsStale()) record["stale"] = true;
}

std::string ToLine(const Json& json, int indent) {
    const std::string text = json.Text(indent);
    std::string line;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        const bool two = byte == 0xC2 && static_cast<unsigned char>(text[at + 1]) < 0xA0;
        if (byte != 0x7F && !two) {
            line += text[at];
            continue;
        }
        // JSON lets these stand, a terminal may take them for commands.
        std::array<char, 8> escape;
        std::snprintf(escape.data(), escape.size(), "\\u%04x",
                      two ? static_cast<unsigned char>(text[++at]) : byte);
        line += escape.data();
    }
    return line;
}

}  // namespace fixtop
