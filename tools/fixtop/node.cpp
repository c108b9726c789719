#include "node.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>

#include "fixtop/cursor.h"
#include "fixtop/fixtop.h"
#include "terminal.h"

namespace fixtop {

namespace {

constexpr std::array kVariableTypes = {"Real",    "String",  "Attachment",
                                       "Message", "Integer", "Boolean"};
// Of the neutral view, with the name of the class or enumeration behind it.
constexpr char kObjectType[] = "Object(";
constexpr char kEnumerationType[] = "Enumeration(";

// The characters that names of variables show as entities, though they are sought without them.
// `>` and `<` are shown alike.
struct Entity {
    const char* text;
    char character;
};
constexpr std::array kEntities = {Entity{"&quot;", '"'}, Entity{"&lt;", '<'}, Entity{"&lt;", '>'},
                                  Entity{"&amp;", '&'}};

std::string WithoutEntities(const std::string& shown) {
    std::string name;
    for (std::size_t at = 0; at < shown.size();) {
        const auto* entity = std::find_if(kEntities.begin(), kEntities.end(), [&](const Entity& e) {
            return shown.compare(at, std::strlen(e.text), e.text) == 0;
        });
        name += entity == kEntities.end() ? shown[at] : entity->character;
        at += entity == kEntities.end() ? 1 : std::strlen(entity->text);
    }
    return name;
}

// Whether an attribute is a quantity: a value or a limit.
bool IsInUnit(const std::string& attribute) {
    return attribute == "value" || attribute == "spec_value" || attribute.ends_with("_limit");
}

bool HasChild(FIIteratorBase& parent, const std::string& name) {
    return CopyOf(parent)->SeekChild(name.c_str());
}

ChildPlace PlaceOf(FIIteratorBase& parent, std::string shown, int index,
                   std::map<std::string, int>& seen) {
    ChildPlace place;
    place.name = std::move(shown);
    place.index = index;
    place.repeat = seen[place.name]++;
    if (place.name.find('&') == std::string::npos || HasChild(parent, place.name)) return place;
    const std::string name = WithoutEntities(place.name);
    place.by_index = place.repeat > 0 || !HasChild(parent, name);
    if (!place.by_index) place.name = name;
    return place;
}

}  // namespace

std::string NameOf(FIIteratorBase& node) {
    FIValue name;
    node.GetName(name);
    return name.ToText();
}

std::string KeyOf(FIIteratorBase& node) {
    const int length = node.KeyLength();
    if (length <= 0) return "";
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    node.KeyText(text.data(), length + 1);
    text.pop_back();
    return WithoutQuotes(text);
}

std::string NameWithKey(FIIteratorBase& node) {
    const std::string key = KeyOf(node);
    return key.empty() ? NameOf(node) : NameOf(node) + '(' + key + ')';
}

std::string ShownName(FIIteratorBase& node) {
    return OneLine(NameWithKey(node));
}

FIValue AttributeOf(FIIteratorBase& node, const char* name) {
    FIValue value;
    node.GetAttribute(FIValue(name), value);
    return value;
}

std::string OneLine(const FIValue& value) {
    return OneLine(std::string_view(value.ToText()));
}

std::string TextOf(FIIteratorBase& node, const char* attribute) {
    return OneLine(AttributeOf(node, attribute));
}

bool IsStale(FIIteratorBase& node) {
    return AttributeOf(node, "stale").AsInt() == 1;
}

// What stands on one line parses alike, and comes back in the message.
std::string ParseError(const std::string& expression) {
    FIValue steps;
    FIValue error;
    const bool parses = FixtopDescribePath(FIValue(OneLine(expression).c_str()), steps, error);
    return parses ? "" : error.ToText();
}

std::string SetUnit(FIIteratorBase& node, const std::string& attribute, const std::string& unit) {
    if (unit.empty()) return "";
    const char* name = attribute == "spec_value" ? "spec_uom" : "uom";
    FIValue refused;
    node.SetAttribute(FIValue(name), FIValue(unit.c_str()), 0, refused);
    return OneLine(refused);
}

// The neutral view tells limits as the application has them, whatever unit its values are shown in:
// it takes the empty unit for that, which other nodes refuse.
std::string UnitOf(FIIteratorBase& node, const std::string& attribute) {
    if (attribute == "value") return AttributeOf(node, "uom").ToText();
    if (attribute == "spec_value") return AttributeOf(node, "spec_uom").ToText();
    if (!IsInUnit(attribute)) return "";
    const NodeRef plain = CopyOf(node);
    FIValue refused;
    plain->SetAttribute(FIValue("uom"), FIValue(""), 0, refused);
    return AttributeOf(*plain, "uom").ToText();
}

std::string OtherUnit(const std::string& attribute, const FIValue& value, const std::string& unit,
                      const std::string& wanted) {
    if (wanted.empty() || unit == wanted || !IsInUnit(attribute) || !value.IsNumber()) return "";
    return "shown " + (unit.empty() ? "without a unit" : "in " + OneLine(unit)) + ", not in " +
           OneLine(wanted);
}

bool IsVariable(FIIteratorBase& node) {
    const std::string type = TextOf(node, "type");
    if (type.starts_with(kObjectType)) return false;
    if (type.starts_with(kEnumerationType) ||
        std::find(kVariableTypes.begin(), kVariableTypes.end(), type) != kVariableTypes.end()) {
        return true;
    }
    // Lists of the basis have an empty text for a value.
    const FIValue value = AttributeOf(node, "value");
    return !value.IsNull() && (!value.ToText().empty() || TextOf(node, "isleaf") == "1");
}

bool IsArray(FIIteratorBase& node) {
    return TextOf(node, "type").ends_with("Array");
}

void ForEachChild(FIIteratorBase& node, const ChildVisitor& visit) {
    const NodeRef child = CopyOf(node);
    if (!child->DownFirst()) return;
    std::map<std::string, int> seen;
    std::set<std::pair<std::string, std::string>> keys;
    int index = 0;
    do {
        if (terminal::IsInterrupted()) throw Interrupted();
        ChildPlace place = PlaceOf(node, NameOf(*child), index++, seen);
        std::string key = KeyOf(*child);
        if (!key.empty() && keys.emplace(place.name, key).second) place.key = std::move(key);
        if (!visit(*child, place)) return;
    } while (child->Next());
}

int ForEachFirstChild(FIIteratorBase& node, const ChildVisitor& visit) {
    const bool folds = IsArray(node);
    int left_out = 0;
    ForEachChild(node, [&](FIIteratorBase& child, const ChildPlace& place) {
        if (!folds || place.index < kFoldedAt) return visit(child, place);
        ++left_out;
        return true;
    });
    return left_out;
}

std::string FoldedLine(int left_out) {
    return "... " + std::to_string(left_out) + " more, shown by --all";
}

std::vector<std::string> ChildNames(FIIteratorBase& node) {
    std::vector<std::string> names;
    ForEachChild(node, [&](FIIteratorBase&, const ChildPlace& place) {
        names.push_back(place.name);
        return true;
    });
    return names;
}

std::vector<std::pair<std::string, FIValue>> AttributesOf(FIIteratorBase& node) {
    std::vector<std::pair<std::string, FIValue>> attributes;
    const auto source = Ref<FIAttributeSource>::Adopt(node.GetAttributeSource());
    if (!source) return attributes;
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    if (!cursor) return attributes;
    for (bool found = cursor->Seek(kFromFirst, 0); found; found = cursor->Seek(kFromPresent, 1)) {
        FIValue name;
        FIValue value;
        cursor->GetKey(name);
        cursor->GetValue(value);
        attributes.emplace_back(name.ToText(), std::move(value));
    }
    return attributes;
}

std::string FullPath(FIIteratorBase& node) {
    const NodeRef parent = CopyOf(node);
    std::string path;
    while (parent->Depth() > 0) {
        const NodeRef child = CopyOf(*parent);
        parent->Up();
        ForEachChild(*parent, [&](FIIteratorBase& sibling, const ChildPlace& place) {
            if (!sibling.Equal(*child)) return true;
            path = path.empty() ? StepFor(place) : JoinPath(StepFor(place), path);
            return false;
        });
    }
    return path;
}

std::string ShownPath(FIIteratorBase& node) {
    return OneLine(FullPath(node));
}

Json ToJson(const FIValue& value) {
    switch (value.Kind()) {
        case FIValue::kNull:
            return nullptr;
        case FIValue::kInt:
            return value.AsInt();
        case FIValue::kReal:
            return std::strtod(value.ToText().c_str(), nullptr);
        default:
            return value.ToText();
    }
}

void MarkStale(FIIteratorBase& node, Json& record) {
    if (IsStale(node)) record["stale"] = true;
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
