#include "store.h"

#include <cmath>
#include <cstdlib>
#include <optional>

#include "case_session.h"

namespace {

// The whole text as a number.
std::optional<double> Number(const std::string& text) {
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (end == text.c_str() || *end != '\0' || !std::isfinite(number)) return std::nullopt;
    return number;
}

std::string Put(FIIteratorBase& node, const std::string& attribute, const FIValue& value) {
    FIValue refused;
    node.SetAttribute(FIValue(attribute.c_str()), value, 0, refused);
    return refused.ToText();
}

}  // namespace

std::string Store(const Located& place, const std::string& value, const std::string& unit) {
    FIIteratorBase& node = *place.node;
    const bool is_value = place.attribute.empty() || place.attribute == "value";
    FIValue stored;
    if (is_value && TextOf(node, "type") == "Real") {
        const std::optional<double> number = Number(value);
        if (!number && !value.empty()) return "not a number: " + value;
        if (number) stored.SetReal(*number);
    } else {
        stored.SetText(value);
    }
    const std::string attribute = is_value ? "value" : place.attribute;
    const std::string refused = SetUnit(node, attribute, unit);
    return refused.empty() ? Put(node, attribute, stored) : refused;
}
