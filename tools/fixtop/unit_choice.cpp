// SPDX-License-Identifier: Apache-2.0
#include "unit_choice.h"

#include <algorithm>
#include <cctype>

#include "case_session.h"
#include "word.h"

namespace fixtop {

namespace {

constexpr std::string_view kLibrarys = "Library";

bool IsSame(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) ==
               std::tolower(static_cast<unsigned char>(b));
    });
}

}  // namespace

void UnitChoice::Declare(CLI::App& app) {
    AddText(app, "--units", name_,
            "Set of units: Process, SI, Field, or Library; that of the case when it is left out");
}

void UnitChoice::Use(const client::Case& open_case) {
    is_librarys_ = IsSame(name_, kLibrarys);
    if (name_.empty() || is_librarys_) return;
    try {
        open_case.UseUnitSet(name_);
    } catch (const client::CaseError& error) {
        throw client::CaseError({MessageOf(error) + ", " + std::string(kLibrarys)});
    }
}

std::string UnitChoice::UnitOf(const Node& node) const {
    if (!is_librarys_) return "";
    const FIValue options = node.Attribute("uom_options");
    if (options.IsNull()) return "";
    const std::string units = options.ToText();
    return units.substr(0, units.find('\n'));
}

}  // namespace fixtop
