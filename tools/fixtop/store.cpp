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
    std::string refused = SetUnit(node, unit);
    if (!refused.empty()) return refused;
    return Put(node, is_value ? "value" : place.attribute, stored);
}
