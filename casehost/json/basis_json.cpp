// SPDX-License-Identifier: Apache-2.0
#include "json/basis_json.h"

#include "json/fields.h"
#include "json/words.h"

namespace fixtop::casehost::json {

namespace {

using Kind = BasisElement::Kind;

double NumberOrNull(Tree& tree, const JsonNode& node) {
    return node.kind == JsonNode::Kind::null ? kEmpty : NumberOf(tree, node);
}

std::string TextOrNull(Tree& tree, const JsonNode& node) {
    return node.kind == JsonNode::Kind::null ? std::string() : TextOf(tree, node);
}

BasisColumn ReadColumn(Tree& tree, const JsonNode& node) {
    BasisColumn column;
    Fields fields(tree, node);
    column.name = fields.RequiredText("name");
    if (column.name == kObjectColumn) {
        column.objects = ReadAll(tree, fields.Array("objects"), TextOrNull);
    } else {
        column.numbers = ReadAll(tree, fields.Array("numbers"), NumberOrNull);
    }
    fields.Done();
    return column;
}

void ReadVariable(Fields& fields, BasisElement& element) {
    element.number = fields.Number("number");
    element.quantity = fields.Quantity("quantity");
    element.adjustable = fields.Flag("adjustable", false);
    element.fixed = fields.Flag("fixed", false);
    const bool calculated = fields.Flag("calculated", false);
    if (element.number == kEmpty) return;
    element.state = calculated ? VariableState::calculated : VariableState::specified;
}

BasisElement ReadElement(Tree& tree, const JsonNode& node) {
    BasisElement element;
    Fields fields(tree, node);
    element.tag = fields.RequiredText("tag");
    element.kind =
        static_cast<Kind>(fields.Word("kind", kElementWords, static_cast<std::size_t>(Kind::text)));
    switch (element.kind) {
        case Kind::group:
            element.elements = ReadAll(tree, fields.Array("elements"), ReadElement);
            break;
        case Kind::table:
            element.columns = ReadAll(tree, fields.Array("columns"), ReadColumn);
            break;
        case Kind::variable:
            ReadVariable(fields, element);
            break;
        case Kind::number:
            element.number = fields.Number("number");
            element.quantity = fields.Quantity("quantity");
            break;
        case Kind::custom:
            element.number = fields.Number("number");
            element.text = fields.Text("text");
            break;
        case Kind::object:
            if (const JsonNode* path = fields.Find("object")) {
                element.text = TextOrNull(tree, *path);
            }
            break;
        case Kind::text:
        case Kind::document:
            element.text = fields.Text("text");
            break;
        case Kind::status:
            break;
    }
    fields.Done();
    return element;
}

void WriteColumns(JsonText& text, const std::vector<BasisColumn>& columns) {
    WriteLine(text, "[]", columns, [&](const BasisColumn& column) {
        text.Raw("{");
        text.Key("name");
        text.Text(column.name);
        if (column.name == kObjectColumn) {
            text.Member("objects");
            WriteLine(text, "[]", column.objects,
                      [&](const std::string& path) { text.TextOrNull(path); });
        } else {
            text.Member("numbers");
            WriteLine(text, "[]", column.numbers, [&](double number) { text.Number(number); });
        }
        text.Raw("}");
    });
}

void WriteElement(JsonText& text, const BasisElement& element, int depth) {
    const auto member = [&](const char* name) { text.Member(name); };
    text.Raw("{");
    text.Key("tag");
    text.Text(element.tag);
    member("kind");
    text.Text(Word(kElementWords, element.kind));
    if (element.kind == Kind::group) member("elements"), WriteBasis(text, element.elements, depth);
    if (element.kind == Kind::table) member("columns"), WriteColumns(text, element.columns);
    if (element.kind == Kind::object)
        member("object"), text.TextOrNull(element.text);
    else if (!element.text.empty())
        member("text"), text.Text(element.text);
    if (element.number != kEmpty) member("number"), text.Number(element.number);
    if (!element.quantity.empty()) member("quantity"), text.Text(element.quantity);
    if (element.state == VariableState::calculated) member("calculated"), text.Flag(true);
    if (element.adjustable) member("adjustable"), text.Flag(true);
    if (element.fixed) member("fixed"), text.Flag(true);
    text.Raw("}");
}

}  // namespace

std::vector<BasisElement> ReadBasis(Tree& tree, const JsonNode& array) {
    return ReadAll(tree, &array, ReadElement);
}

void WriteBasis(JsonText& text, const std::vector<BasisElement>& elements, int depth) {
    WriteLines(text, "[]", elements, depth,
               [&](const BasisElement& each) { WriteElement(text, each, depth + 1); });
}

}  // namespace fixtop::casehost::json
