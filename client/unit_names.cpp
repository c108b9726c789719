// SPDX-License-Identifier: Apache-2.0
#include "unit_names.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string_view>

namespace fixtop::client {

namespace {

struct Spelling {
    std::string_view written;
    std::string_view meant;
};

// Signs that stand for plain ones. Products are joined by "-".
constexpr Spelling kSigns[] = {
    {"°", "deg"}, {"℃", "degC"}, {"℉", "degF"}, {"²", "2"}, {"³", "3"}, {"·", "-"}, {"⋅", "-"},
    {"**", ""},   {"*", "-"},    {"^", ""},     {".", "-"}, {"(", ""},  {")", ""},
};

// Factors, in small letters but for a leading M.
constexpr Spelling kFactors[] = {
    {"celsius", "c"},   {"degc", "c"},        {"degk", "k"},       {"kelvin", "k"},
    {"degf", "f"},      {"fahrenheit", "f"},  {"degr", "r"},       {"rankine", "r"},
    {"bara", "bar"},    {"mbara", "mbar"},    {"kpaa", "kpa"},     {"psia", "psi"},
    {"Mmhg", "mmhg"},   {"hr", "h"},          {"hrs", "h"},        {"hour", "h"},
    {"hours", "h"},     {"minute", "min"},    {"minutes", "min"},  {"sec", "s"},
    {"second", "s"},    {"seconds", "s"},     {"day", "d"},        {"days", "d"},
    {"kgmole", "kmol"}, {"kgmol", "kmol"},    {"kmole", "kmol"},   {"mole", "mol"},
    {"gmole", "mol"},   {"gmol", "mol"},      {"Mol", "mol"},      {"lbmole", "lbmol"},
    {"t", "tonne"},     {"te", "tonne"},      {"tonnes", "tonne"}, {"lbs", "lb"},
    {"lbm", "lb"},      {"mmbtu", "Mmbtu"},   {"liter", "l"},      {"litre", "l"},
    {"usgal", "gal"},   {"gallon", "gal"},    {"barrel", "bbl"},   {"M2", "m2"},
    {"M3", "m3"},       {"mi", "mile"},       {"miles", "mile"},   {"inch", "in"},
    {"dyne", "dyn"},    {"degree", "deg"},    {"degrees", "deg"},  {"percent", "%"},
    {"pct", "%"},       {"frac", "fraction"},
};

// Whole units, with their factors as above.
constexpr Spelling kUnits[] = {
    {"usgpm", "gal/min"}, {"gpm", "gal/min"}, {"lpm", "l/min"},   {"bpd", "bbl/d"},
    {"mph", "mile/h"},    {"kph", "km/h"},    {"rev/min", "rpm"}, {"kg/cm2", "kgf/cm2"},
    {"lb/in2", "psi"},    {"lbf/in2", "psi"},
};

template <std::size_t Rows>
std::string MeantBy(const Spelling (&rows)[Rows], const std::string& written) {
    const auto* row = std::ranges::find(rows, written, &Spelling::written);
    return row == std::end(rows) ? written : std::string(row->meant);
}

void ReplaceAll(std::string& text, std::string_view written, std::string_view meant) {
    for (std::size_t at = 0; (at = text.find(written, at)) != std::string::npos;) {
        text.replace(at, written.size(), meant);
        at += meant.size();
    }
}

// mW and MW are as far apart as units can be; all other letters are clear in either case.
std::string Folded(std::string factor) {
    const bool is_mega = factor.starts_with('M');
    for (char& letter : factor) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    if (is_mega) factor[0] = 'M';
    return factor;
}

std::string Joined(std::vector<std::string> factors) {
    std::ranges::sort(factors);
    std::string text;
    for (const std::string& factor : factors) text += (text.empty() ? "" : "-") + factor;
    return text;
}

// "kJ/kgmole-C": everything behind a "/" divides. The order of factors does not count.
std::string Plain(const std::string& unit) {
    std::vector<std::string> above, below;
    std::vector<std::string>* side = &above;
    for (std::size_t begin = 0; begin <= unit.size();) {
        const std::size_t end = std::min(unit.find_first_of("-/", begin), unit.size());
        if (end > begin) {
            side->push_back(MeantBy(kFactors, Folded(unit.substr(begin, end - begin))));
        }
        if (end < unit.size() && unit[end] == '/') side = &below;
        begin = end + 1;
    }
    return MeantBy(kUnits, Joined(above) + (below.empty() ? "" : "/" + Joined(below)));
}

// What a text may be: a blank joins what is one word, as in "bar g", or factors, as in "W/m2 K".
std::vector<std::string> Readings(std::string text) {
    for (const auto& [written, meant] : kSigns) ReplaceAll(text, written, meant);
    std::vector<std::string> readings;
    for (const std::string_view blank : {"", "-"}) {
        std::string unit = text;
        ReplaceAll(unit, " ", blank);
        readings.push_back(Plain(unit));
    }
    return readings;
}

}  // namespace

bool IsSameUnit(const std::string& one, const std::string& other) {
    if (one == other) return true;
    const std::vector<std::string> others = Readings(other);
    return std::ranges::any_of(Readings(one), [&](const std::string& reading) {
        return !reading.empty() && std::ranges::find(others, reading) != others.end();
    });
}

std::vector<std::string> UnitsIn(const std::string& options) {
    std::istringstream lines(options);
    std::vector<std::string> units;
    for (std::string unit; std::getline(lines, unit);) units.push_back(unit);
    return units;
}

std::string UnitMeant(const std::string& typed, const std::vector<std::string>& units) {
    if (std::ranges::find(units, typed) != units.end()) return typed;
    std::string meant;
    for (const std::string& unit : units) {
        if (!IsSameUnit(typed, unit)) continue;
        if (!meant.empty()) return "";
        meant = unit;
    }
    return meant;
}

}  // namespace fixtop::client
