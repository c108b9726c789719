// SPDX-License-Identifier: Apache-2.0
#include "collect/tolerances.h"

#include <charconv>
#include <cmath>

namespace fixtop {

std::string Tolerances::Take(const std::string& text) {
    const std::size_t sign = text.rfind('=');
    const std::size_t begin = sign == std::string::npos ? 0 : sign + 1;
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + begin, end, number);
    const bool is_number = error == std::errc() && stop == end && std::isfinite(number);
    if (!is_number || number < 0 || sign == 0) return "UNIT=NUMBER or NUMBER expected: " + text;
    (begin > 0 ? of_unit_[text.substr(0, sign)] : of_others_) = number;
    return "";
}

bool Tolerances::AreSame(const FIValue& a, const FIValue& b, const std::string& unit) const {
    if (!a.IsNumber() || !b.IsNumber()) return a.Kind() == b.Kind() && a.ToText() == b.ToText();
    const auto found = of_unit_.find(unit);
    const double tolerance = found == of_unit_.end() ? of_others_ : found->second;
    return a.AsDouble() == b.AsDouble() || std::abs(a.AsDouble() - b.AsDouble()) <= tolerance;
}

std::vector<std::string> Tolerances::UnitsBeside(const std::set<std::string>& units) const {
    std::vector<std::string> others;
    for (const auto& [unit, tolerance] : of_unit_) {
        if (!units.contains(unit)) others.push_back(unit);
    }
    return others;
}

}  // namespace fixtop
