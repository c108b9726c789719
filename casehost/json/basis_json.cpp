#include "json/basis_json.h"

#include "casehost/units.h"
#include "json/fields.h"
#include "json/words.h"

namespace casehost::json {

namespace {

using Kind = BasisElement::Kind;

template <class Item>
std::vector<Item> ReadAll(const JsonNode* array, Item (*read)(Tree&, const JsonNode&), Tree& tree) {
    std::vector<Item> items;
    for (const JsonNode* each = array ? array->first : nullptr; each && !tree.Full();
         each = each->next) {
        items.push_back(read(tree, *each));
    }
    return items;
}

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
        column.objects = ReadAll(fields.Array("objects"), TextOrNull, tree);
    } else {
        column.numbers = ReadAll(fields.Array("numbers"), NumberOrNull, tree);
    }
    fields.Done();
    return column;
}

void ReadQuantity(Tree& tree, Fields& fields, BasisElement& element) {
    const JsonNode* node = fields.Find("quantity");
    if (!node) return;
    element.quantity = TextOf(tree, *node);
    if (!FindQuantity(element.quantity)) {
        tree.Report(*node, "no such quantity: " + Tree::Describe(*node));
    }
}

void ReadVariable(Tree& tree, Fields& fields, BasisElement& element) {
    element.number = fields.Number("number");
    ReadQuantity(tree, fields, element);
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
            element.elements = ReadAll(fields.Array("elements"), ReadElement, tree);
            break;
        case Kind::table:
            element.columns = ReadAll(fields.Array("columns"), ReadColumn, tree);
            break;
        case Kind::variable:
            ReadVariable(tree, fields, element);
            break;
        case Kind::number:
            element.number = fields.Number("number");
            ReadQuantity(tree, fields, element);
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

template <class Item, class Write>
void WriteList(JsonText& text, const std::vector<Item>& items, Write write) {
    text.Raw("[");
    for (const Item& each : items) {
        if (&each != &items.front()) text.Raw(", ");
        write(each);
    }
    text.Raw("]");
}

void WritePath(JsonText& text, const std::string& path) {
    if (path.empty()) {
        text.Raw("null");
    } else {
        text.Text(path);
    }
}

void WriteColumns(JsonText& text, const std::vector<BasisColumn>& columns) {
    WriteList(text, columns, [&](const BasisColumn& column) {
        text.Raw("{");
        text.Key("name");
        text.Text(column.name);
        text.Raw(", ");
        if (column.name == kObjectColumn) {
            text.Key("objects");
            WriteList(text, column.objects,
                      [&](const std::string& path) { WritePath(text, path); });
        } else {
            text.Key("numbers");
            WriteList(text, column.numbers, [&](double number) { text.Number(number); });
        }
        text.Raw("}");
    });
}

void WriteElement(JsonText& text, const BasisElement& element, int depth) {
    const auto member = [&](const char* name) {
        text.Raw(", ");
        text.Key(name);
    };
    text.Raw("{");
    text.Key("tag");
    text.Text(element.tag);
    member("kind");
    text.Text(Word(kElementWords, element.kind));
    if (element.kind == Kind::group) member("elements"), WriteBasis(text, element.elements, depth);
    if (element.kind == Kind::table) member("columns"), WriteColumns(text, element.columns);
    if (element.kind == Kind::object)
        member("object"), WritePath(text, element.text);
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
    return ReadAll(&array, ReadElement, tree);
}

void WriteBasis(JsonText& text, const std::vector<BasisElement>& elements, int depth) {
    if (elements.empty()) {
        text.Raw("[]");
        return;
    }
    text.Raw("[");
    bool first = true;
    for (const BasisElement& each : elements) {
        text.Line(depth + 1, first);
        WriteElement(text, each, depth + 1);
    }
    bool no_comma = true;
    text.Line(depth, no_comma);
    text.Raw("]");
}

}  // namespace casehost::json
