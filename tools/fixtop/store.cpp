#include "store.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "case_session.h"

namespace fixtop {

namespace {

// The whole text as a number.
std::optional<double> Number(const std::string& text) {
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (end == text.c_str() || *end != '\0' || !std::isfinite(number)) return std::nullopt;
    return number;
}

// The node of the case that a store goes to: in the neutral view another than the one shown.
NodeRef NodeOfCase(FIIteratorBase& node) {
    for (const int face : {2, 1}) {
        if (NodeRef found = NodeRef::Adopt(FixtopApplicationNode(&node, face))) return found;
    }
    return CopyOf(node);
}

double NumberOf(FIIteratorBase& node) {
    return AttributeOf(node, "value").AsDouble();
}

bool IsNear(double a, double b) {
    constexpr double kRounding = 1e-9;
    return std::abs(a - b) <= kRounding * std::max(std::abs(a), std::abs(b));
}

// An element of an array. The tree does not tell whether a fraction was taken, for it is changed by
// being taken: all fractions are divided by their sum.
class Element {
 public:
    explicit Element(FIIteratorBase& shown) : shown_(shown), node_(NodeOfCase(shown)) {
        const NodeRef array = CopyOf(*node_);
        is_element_ = array->Up() && TextOf(*array, "type") == "Array";
        if (!is_element_) return;
        ForEachChild(*array, [this](FIIteratorBase& child, const ChildPlace&) {
            if (!child.Equal(*node_)) others_ += NumberOf(child);
            return true;
        });
    }

    bool Took(double stored) const {
        if (!is_element_) return true;
        const double now = NumberOf(shown_);
        if (IsNear(now, stored)) return true;
        if (now == 0) return false;
        const double in_case = stored * NumberOf(*node_) / now;
        return IsNear(NumberOf(*node_), in_case / (in_case + others_));
    }

 private:
    FIIteratorBase& shown_;
    NodeRef node_;
    bool is_element_ = false;
    double others_ = 0;  // what the other elements are together
};

std::string Put(FIIteratorBase& node, const std::string& attribute, const FIValue& value) {
    FIValue refused;
    node.SetAttribute(FIValue(attribute.c_str()), value, 0, refused);
    return OneLine(refused);
}

}  // namespace

std::string Store(const Located& place, const std::string& value, const std::string& unit) {
    FIIteratorBase& node = *place.node;
    const bool is_value = place.attribute.empty() || place.attribute == "value";
    FIValue stored;
    if (is_value && TextOf(node, "type") == "Real") {
        const std::optional<double> number = Number(value);
        if (!number && !value.empty()) return "not a number: " + OneLine(value);
        if (number) stored.SetReal(*number);
    } else {
        stored.SetText(value);
    }
    const std::string attribute = is_value ? "value" : place.attribute;
    std::string refused = SetUnit(node, attribute, unit);
    if (!refused.empty()) return refused;
    if (!is_value) return Put(node, attribute, stored);
    const Element element(node);
    refused = Put(node, "value", stored);
    const bool is_number = stored.IsNumber() || stored.IsNull();
    if (refused.empty() && is_number && !element.Took(stored.AsDouble())) return "Value not stored";
    return refused;
}

}  // namespace fixtop
