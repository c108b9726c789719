// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/element_check.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace fixtop {

namespace {

// Notes that may stand anywhere.
constexpr std::string_view kNotes[] = {
    "Author",      "CaseFixed", "CategoryName", "Comment",     "Comments",
    "Company",     "Copyright", "DefaultValue", "Description", "DisciplineName",
    "DisplayName", "Format",    "PrimaryGUID",  "Version"};

bool IsNote(const std::string& name) {
    return std::find(std::begin(kNotes), std::end(kNotes), name) != std::end(kNotes);
}

template <class Rows>
const auto* FindRow(const Rows& rows, const std::string& name) {
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.name == name; });
    return found == rows.end() ? nullptr : &*found;
}

std::string Tag(const std::string& name) {
    return "<" + name + ">";
}

void CheckAttributes(const ElementRule& rule, const CheckedElement& element, Findings& findings) {
    for (const char* wanted : rule.wanted) {
        if (element.Find(wanted)) continue;
        findings.Mistake(element.place, Tag(rule.name) + " has no " + wanted);
    }
    std::vector<std::string> known(rule.wanted.begin(), rule.wanted.end());
    known.insert(known.end(), rule.possible.begin(), rule.possible.end());
    for (const auto& [name, value] : element.attributes) {
        if (std::find(known.begin(), known.end(), name) != known.end()) continue;
        findings.Mistake(element.place, "nobody reads " + name + " of " + Tag(rule.name) +
                                            findings.Near(name, known));
    }
}

void CheckInside(const ElementRule& rule, const CheckedElement& element, Findings& findings) {
    CheckAttributes(rule, element, findings);
    if (!rule.reads_text && !element.texts.empty()) {
        findings.Mistake(element.place, "nobody reads the text in " + Tag(rule.name));
    }
    for (const CheckedElement& child : element.children) CheckElement(rule, child, findings);
}

}  // namespace

const ElementRule* CheckElement(const ElementRule& parent, const CheckedElement& element,
                                Findings& findings) {
    const ElementRule* rule = FindRow(parent.children, element.name);
    if (rule && rule->is_note) return nullptr;
    if (!rule) {
        if (IsNote(element.name)) return nullptr;
        std::vector<std::string> known;
        for (const ElementRule& each : parent.children) known.emplace_back(each.name);
        findings.Mistake(element.place, "nobody reads " + Tag(element.name) + " in " +
                                            Tag(parent.name) + findings.Near(element.name, known));
        return nullptr;
    }
    CheckInside(*rule, element, findings);
    return rule;
}

}  // namespace fixtop
