// SPDX-License-Identifier: Apache-2.0
#include "changes.h"

#include <algorithm>

#include "case_session.h"

namespace fixtop {

namespace {

// What is stored there, and not computed.
FIValue Given(const Node& node, const std::string& attribute) {
    const bool is_result =
        attribute == "value" && node.Attribute("status").ToText() == "Calculated";
    return is_result ? FIValue() : node.Attribute(attribute);
}

Changes::Former FormerOf(const Node& node, const std::string& attribute) {
    return {node, attribute, Given(node, attribute), node.UnitOf(attribute)};
}

// The value with all its digits, as it is typed.
std::string Typed(const FIValue& value) {
    return value.Kind() == FIValue::kReal ? Json(value.AsDouble()).Text(-1) : value.ToText();
}

void ShowInUnit(const Node& node, const std::string& unit, const std::string& attribute) {
    if (!unit.empty() && node.UnitOf(attribute) != unit) node.ShowIn(unit, attribute);
}

void PutBack(const Changes::Former& former, client::Hold& hold) {
    if (!IsOther(former)) return;
    if (former.attribute == "value") {
        hold.Store(former.node, Typed(former.value));
    } else {
        former.node.SetAttribute(former.attribute, former.value);
    }
}

// Fractions beside the one that is stored change with it.
std::vector<Node> WithSiblings(const Node& node) {
    const auto parent = node.Parent();
    return parent && parent->IsArray() ? parent->Children() : std::vector{node};
}

}  // namespace

void Changes::BeginLine() {
    if (keeps_ && (lines_.empty() || !lines_.back().stored.empty())) lines_.emplace_back();
}

void Changes::Remember(const client::Place& place) {
    if (!keeps_) return;
    const std::string attribute = place.attribute.empty() ? "value" : place.attribute;
    Line& line = lines_.back();
    const std::vector<Node> elements = client::ElementsOf(place.node);
    const Node node = client::NodeOfCase(elements.empty() ? place.node : elements.front());
    if (attribute == "value") {
        for (const Node& each : WithSiblings(node)) {
            line.formers.push_back(FormerOf(each, attribute));
        }
    } else {
        line.formers.push_back(FormerOf(place.node, attribute));
    }
    line.stored.push_back({place.node, attribute, place.node.UnitOf(attribute),
                           PathOf({place.node, place.attribute, place.node.Path()})});
}

std::optional<Changes::Line> Changes::TakeLast() {
    while (!lines_.empty()) {
        Line line = std::move(lines_.back());
        lines_.pop_back();
        if (std::ranges::any_of(line.formers, IsOther)) return line;
    }
    return std::nullopt;
}

bool IsOther(const Changes::Former& former) {
    ShowInUnit(former.node, former.unit, former.attribute);
    const FIValue now = Given(former.node, former.attribute);
    if (now.IsNull() || former.value.IsNull()) return now.IsNull() != former.value.IsNull();
    if (now.IsNumber() && former.value.IsNumber()) return now.AsDouble() != former.value.AsDouble();
    return now.ToText() != former.value.ToText();
}

std::vector<std::string> TakeBack(const Changes::Line& line, client::Hold& hold) {
    std::vector<std::string> refusals;
    const auto try_to = [&](const std::string& path, const auto& work) {
        try {
            work();
        } catch (const client::Refused& refused) {
            refusals.push_back(path + ": " + OneLine(refused.Text()));
        }
    };
    // What was stored twice gets back what stood there first.
    for (auto at = line.formers.rbegin(); at != line.formers.rend(); ++at) {
        const Changes::Former& former = *at;
        try_to(ShownPath(former.node), [&] { PutBack(former, hold); });
    }
    for (const Changes::Stored& stored : line.stored) {
        try_to(stored.path, [&] { ShowInUnit(stored.node, stored.unit, stored.attribute); });
    }
    return refusals;
}

}  // namespace fixtop
