// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/element_rules.h"

#include <algorithm>
#include <string_view>

namespace fixtop {

namespace {

using Names = const char* const[];

constexpr Names kName = {"Name"};
constexpr Names kType = {"Type"};
constexpr Names kNameAndType = {"Name", "Type"};
constexpr Names kNameAndValue = {"Name", "Value"};
constexpr Names kNameAndAppName = {"Name", "AppName"};
constexpr Names kVar = {"Var"};

// ---- class files

constexpr Names kLibrary = {"Library"};
constexpr Names kIntegerValue = {"IntegerValue"};
constexpr Names kEnumIsClosed = {"EnumIsClosed"};
constexpr Names kNameAndCount = {"Name", "Count"};
constexpr Names kMultiplicity = {"Multiplicity"};

constexpr ElementRule kHeaderChildren[] = {{"Include", kLibrary}};
constexpr ElementRule kClassChildren[] = {{.name = "Superclass", .reads_text = true}};
constexpr ElementRule kOption[] = {{"Option", kName, kIntegerValue}};
constexpr ElementRule kProperty[] = {{"CustomProperty", kNameAndValue}};
constexpr ElementRule kAttributeChildren[] = {
    {.name = "ClassName", .reads_text = true},
    {.name = "EnumName", .reads_text = true},
    {.name = "QuantityType", .reads_text = true},
    {.name = "CustomMetaData", .reads_text = true},
    {.name = "CustomProperties", .children = kProperty},
};
constexpr ElementRule kClassAttributesChildren[] = {
    {.name = "ClassName", .reads_text = true},
    {"Attribute", kNameAndType, kMultiplicity, kAttributeChildren},
};
constexpr Names kFileAndLevel = {"File", "Level"};
constexpr ElementRule kClassFileChildren[] = {
    {.name = "Header", .children = kHeaderChildren},
    {"Include", kLibrary},
    {.name = "Log", .possible = kFileAndLevel},
    {"Class", kName, {}, kClassChildren},
    {"Enumeration", kName, kEnumIsClosed, kOption},
    {.name = "ClassAttributes", .possible = kNameAndCount, .children = kClassAttributesChildren},
    {.name = "QuantityTypeDefn", .is_note = true},
};

// ---- map files

constexpr Names kMapfile = {"Mapfile"};
constexpr Names kFunctionName = {"FunctionName"};
constexpr Names kTranslateName = {"TranslateName"};
constexpr Names kContainers = {"Container", "ContainerId"};
constexpr Names kBranchAndName = {"Branch", "TranslateName"};

constexpr ElementRule kNodeAttribute[] = {{"Attribute", kName, {}, {}, true}};
constexpr ElementRule kTranslatorChildren[] = {
    {.name = "NodeAttributes", .children = kNodeAttribute},
    {.name = "Function", .reads_text = true},
    {.name = "Map", .reads_text = true},
};
constexpr ElementRule kMapOption[] = {{"Option", kNameAndAppName}};
constexpr ElementRule kMappedChildren[] = {
    {"Translate", kType, kBranchAndName, kTranslatorChildren, true},
    {"TranslateArray", kType, kBranchAndName, kTranslatorChildren, true},
    {"Enumeration", kName, kTranslateName, kMapOption},
    {"Condition", kVar, {}, {}, true},
    {"SetVar", kVar, {}, {}, true},
};
constexpr ElementRule kMappedClass[] = {{"Attribute", kName, kContainers, kMappedChildren}};
constexpr ElementRule kModule[] = {{.name = "DLL", .reads_text = true}};
constexpr ElementRule kMapFileChildren[] = {
    {.name = "DefaultBranch", .reads_text = true},
    {.name = "Linkage", .children = kModule},
    {"TopNode", kFunctionName},
    {.name = "TranslateName", .reads_text = true},
    {"Translate", kType, kBranchAndName, kTranslatorChildren, true},
    {"Class", kName, {}, kMappedClass},
    {"Include", kMapfile},
    {"Enumeration", kName, kTranslateName, kMapOption},
    {.name = "Log", .possible = kFileAndLevel},
};

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

// ---- the checks

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

void CheckInside(const ElementRule& rule, const CheckedElement& element, Findings& findings);

const ElementRule* CheckChild(const ElementRule& parent, const CheckedElement& child,
                              Findings& findings) {
    const ElementRule* rule = FindRow(parent.children, child.name);
    if (rule && rule->is_note) return nullptr;
    if (!rule) {
        if (IsNote(child.name)) return nullptr;
        std::vector<std::string> known;
        for (const ElementRule& each : parent.children) known.emplace_back(each.name);
        findings.Mistake(child.place, "nobody reads " + Tag(child.name) + " in " +
                                          Tag(parent.name) + findings.Near(child.name, known));
        return nullptr;
    }
    CheckInside(*rule, child, findings);
    return rule;
}

void CheckInside(const ElementRule& rule, const CheckedElement& element, Findings& findings) {
    CheckAttributes(rule, element, findings);
    if (!rule.reads_text && !element.texts.empty()) {
        findings.Mistake(element.place, "nobody reads the text in " + Tag(rule.name));
    }
    for (const CheckedElement& child : element.children) CheckChild(rule, child, findings);
}

}  // namespace

const ElementRule kClassFileRule = {.name = "QZClassLibrary", .children = kClassFileChildren};
const ElementRule kMapFileRule = {.name = "CCDMMapFile", .children = kMapFileChildren};

const ElementRule* CheckElement(const ElementRule& root, const CheckedElement& element,
                                Findings& findings) {
    return CheckChild(root, element, findings);
}

}  // namespace fixtop
