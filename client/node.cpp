// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/node.h"

#include <algorithm>
#include <array>

#include "case_state.h"
#include "fixtop/client/error.h"
#include "fixtop/client/pattern.h"
#include "texts.h"
#include "unit_names.h"
#include "visit.h"

namespace fixtop::client {

namespace {

constexpr std::array kVariableTypes = {"Real",    "String",  "Attachment",
                                       "Message", "Integer", "Boolean"};
// Of the neutral view, with the name of the class or enumeration behind it.
constexpr char kObjectType[] = "Object(";
constexpr char kEnumerationType[] = "Enumeration(";

// Whether an attribute is a quantity: a value or a limit.
bool IsInUnit(const std::string& attribute) {
    return attribute == "value" || attribute == "spec_value" || attribute.ends_with("_limit");
}

std::string Written(void (*write)(const FIValue&, FIValue&), const std::string& text) {
    FIValue written;
    write(FIValue(text.c_str()), written);
    return written.ToText();
}

// A path may also be one of the host's own, as the attribute moniker shows it.
Ref<FIIteratorBase> OpenHostPath(FIIteratorBase& start, const std::string& path) {
    if (!path.starts_with('/')) return {};
    return Ref<FIIteratorBase>::Adopt(start.OpenAttribute(FIValue(path.c_str())));
}

std::string Put(FIIteratorBase& node, const std::string& attribute, const FIValue& value) {
    FIValue refused;
    node.SetAttribute(FIValue(attribute.c_str()), value, 0, refused);
    return refused.ToText();
}

std::string PutUnit(FIIteratorBase& node, const std::string& attribute, const std::string& unit) {
    return Put(node, attribute == "spec_value" ? "spec_uom" : "uom", FIValue(unit.c_str()));
}

std::string NoSuchUnit(const std::string& unit, const std::vector<std::string>& units) {
    std::string text = "no such unit: " + unit + "; ";
    text += units.empty() ? "it has none" : "expected ";
    for (const std::string& each : units) text += (&each == units.data() ? "" : ", ") + each;
    return text;
}

}  // namespace

Ref<FIIteratorBase> CopyOf(FIIteratorBase& node) {
    return Ref<FIIteratorBase>::Adopt(Given(node.Copy()));
}

bool IsGoneText(const std::string& text) {
    return text == "Node deleted" || text == "Node invalid";
}

void ThrowIfRefused(const Node& node, const std::string& text) {
    if (text.empty()) return;
    if (IsGoneText(text)) throw Gone(node.Path(), text);
    throw Refused(node.Path(), text);
}

std::string WrittenName(const std::string& name) {
    return Written(FixtopWriteName, name);
}
std::string WrittenKey(const std::string& key) {
    return Written(FixtopWriteKey, key);
}
std::string JoinPath(const std::string& path, const std::string& step) {
    return path.empty() || step.empty() ? path + step : path + '.' + step;
}

Node::Node(std::shared_ptr<CaseState> open_case, Ref<FIIteratorBase> place)
    : case_(std::move(open_case)), place_(std::move(place)) {}

Node::Node(const Node& other) : case_(other.case_), place_(CopyOf(*other.place_)) {}

Node& Node::operator=(const Node& other) {
    if (this != &other) *this = Node(other);
    return *this;
}

std::string Node::Name() const {
    FIValue name;
    place_->GetName(name);
    return name.ToText();
}

std::string Node::Key() const {
    FIValue key;
    FixtopKeyOf(place_.Get(), key);
    return key.ToText();
}

std::string Node::Path() const {
    FIValue path;
    FixtopPathTo(place_.Get(), path);
    return path.ToText();
}

std::string Node::Type() const {
    return Attribute("type").ToText();
}

bool Node::IsVariable() const {
    const std::string type = Type();
    if (type.starts_with(kObjectType)) return false;
    if (type.starts_with(kEnumerationType) ||
        std::find(kVariableTypes.begin(), kVariableTypes.end(), type) != kVariableTypes.end()) {
        return true;
    }
    // Lists of the basis have an empty text for a value.
    const FIValue value = Attribute("value");
    return !value.IsNull() && (!value.ToText().empty() || Attribute("isleaf").ToText() == "1");
}

bool Node::IsArray() const {
    return Type().ends_with("Array");
}

bool Node::operator==(const Node& other) const {
    return place_->Equal(*other.place_);
}

std::optional<Node> Node::Parent() const {
    Node parent = *this;
    if (!parent.place_->Up()) return std::nullopt;
    return parent;
}

std::vector<Node> Node::Children() const {
    std::vector<Node> children;
    ForEachChild([&](const Child& child) {
        children.push_back(child.node);
        return true;
    });
    return children;
}

void Node::ForEachChild(const std::function<bool(const Child& child)>& visit) const {
    Visitor<FixtopChild> visitor([&](const FixtopChild& child) {
        return visit({Node(case_, Ref<FIIteratorBase>::Share(child.node)), child.name, child.step,
                      child.index});
    });
    FixtopVisitChildren(place_.Get(), visitor.Call(), &visitor);
    visitor.Rethrow();
}

std::optional<Place> Node::Find(const Pattern& path) const {
    return path.First(*this);
}

std::optional<Place> Node::Find(const std::string& path) const {
    if (auto opened = OpenHostPath(*place_, path)) {
        return Place{Node(case_, std::move(opened)), "", ""};
    }
    return Pattern(path).First(*this);
}

Node Node::At(const std::string& path) const {
    const int before = FixtopMemoryFailures();
    if (auto found = Find(path)) return std::move(found->node);
    if (FixtopMemoryFailures() != before) throw std::bad_alloc();
    throw Pattern(path).WhyMissing(*this);
}

std::vector<Node> Node::Matches(const std::string& pattern) const {
    std::vector<Node> nodes;
    Pattern(pattern).ForEach(*this, [&](const Place& place) {
        nodes.push_back(place.node);
        return true;
    });
    return nodes;
}

FIValue Node::Attribute(const std::string& name) const {
    FIValue value;
    place_->GetAttribute(FIValue(name.c_str()), value);
    return value;
}

std::vector<std::pair<std::string, FIValue>> Node::Attributes() const {
    std::vector<std::pair<std::string, FIValue>> attributes;
    const auto source = Ref<FIAttributeSource>::Adopt(place_->GetAttributeSource());
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

Reading Node::Read(const std::string& unit, const std::string& attribute) const {
    // A unit is asked for on a copy, which costs more than what is read.
    if (!unit.empty()) {
        const Node shown = *this;
        shown.ShowIn(unit, attribute);
        return shown.Read("", attribute);
    }
    Reading reading{Attribute(attribute), UnitOf(attribute), Attribute("status").ToText(),
                    attribute == "value" && IsStale()};
    if (reading.value.IsText() && IsGoneText(reading.value.ToText())) {
        throw Gone(Path(), reading.value.ToText());
    }
    return reading;
}

bool Node::IsGone() const {
    return IsGoneText(Attribute("status").ToText());
}

double Node::Number(const std::string& unit) const {
    const Reading reading = Read(unit);
    if (!reading.value.IsNumber()) {
        throw Refused(Path(), reading.value.IsNull() ? "has no value"
                                                     : "not a number: " + reading.value.ToText());
    }
    const std::string problem = OtherUnit("value", reading, unit);
    ThrowIfRefused(*this, problem);
    return reading.value.AsDouble();
}

std::string Node::Text() const {
    return Read().value.ToText();
}

bool Node::IsStale() const {
    return Attribute("stale").AsInt() == 1;
}

std::string Node::ShowIn(const std::string& unit, const std::string& attribute) const {
    const std::string refused = PutUnit(*place_, attribute, unit);
    if (refused.empty()) return unit;
    if (IsGoneText(refused)) throw Gone(Path(), refused);
    const auto units = UnitsIn(Attribute("uom_options").ToText());
    std::string meant = UnitMeant(unit, units);
    if (meant.empty()) throw Refused(Path(), NoSuchUnit(unit, units));
    ThrowIfRefused(*this, PutUnit(*place_, attribute, meant));
    return meant;
}

// The neutral view tells limits as the application has them, whatever unit its values are shown in:
// it takes the empty unit for that, which other nodes refuse.
std::string Node::UnitOf(const std::string& attribute) const {
    if (attribute == "value") return Attribute("uom").ToText();
    if (attribute == "spec_value") return Attribute("spec_uom").ToText();
    if (!IsInUnit(attribute)) return "";
    const Node plain = *this;
    PutUnit(*plain.place_, "value", "");
    return plain.Attribute("uom").ToText();
}

std::string OtherUnit(const std::string& attribute, const Reading& reading,
                      const std::string& wanted) {
    if (wanted.empty() || IsSameUnit(reading.unit, wanted) || !IsInUnit(attribute) ||
        !reading.value.IsNumber()) {
        return "";
    }
    return "shown " + (reading.unit.empty() ? "without a unit" : "in " + reading.unit) +
           ", not in " + wanted;
}

void Node::SetAttribute(const std::string& name, const FIValue& value) const {
    ThrowIfRefused(*this, Put(*place_, name, value));
}

std::optional<Node> Node::Raw(Side side) const {
    auto raw =
        Ref<FIIteratorBase>::Adopt(FixtopApplicationNode(place_.Get(), static_cast<int>(side)));
    if (!raw) return std::nullopt;
    return Node(case_, std::move(raw));
}

std::optional<Node> Node::Neutral() const {
    return case_->NeutralOf(*this);
}

}  // namespace fixtop::client
