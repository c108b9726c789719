// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/map_file_check.h"

#include <algorithm>

#include "mapping/check/listed_names.h"
#include "mapping/map_file/map_file_reader.h"
#include "mapping/map_file/map_text.h"

namespace fixtop {

namespace {

// Between the parts of a key that none of the parts can hold.
constexpr char kBreak = '\x01';

bool IsBranch(const std::string& text) {
    return BranchFromText(text) != CCDMBranch::kUnspecified;
}

std::string Parent(const CheckedElement& element, const char* attribute) {
    return element.Get(attribute) + kBreak;
}

// Variables and values of the conditions, whatever their order.
std::string ConditionsOf(const CheckedElement& element) {
    std::vector<std::string> conditions;
    element.ForEach("Condition", [&](const CheckedElement& each) {
        conditions.push_back(each.Get("Var") + '=' + each.Text() + kBreak);
    });
    std::sort(conditions.begin(), conditions.end());
    std::string text;
    for (const std::string& condition : conditions) text += condition;
    return text;
}

std::vector<std::string> PartsOf(const std::string& dotted) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= dotted.size();) {
        const std::size_t end = std::min(dotted.find('.', begin), dotted.size());
        parts.push_back(dotted.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

}  // namespace

MapFileCheck::MapFileCheck(CheckedLibrary& library, std::string translate_name, bool has_resources,
                           Findings& findings)
    : FileWalk(kMapFileRule, has_resources, kMostMapFiles, findings),
      library_(library),
      translate_name_(std::move(translate_name)),
      translators_(findings) {}

void MapFileCheck::OnElement(const CheckedElement& element) {
    struct Row {
        const char* name;
        void (MapFileCheck::*check)(const CheckedElement& element);
    };
    static constexpr Row kRows[] = {
        {"DefaultBranch", &MapFileCheck::OnDefaultBranch},
        {"Linkage", &MapFileCheck::OnLinkage},
        {"TopNode", &MapFileCheck::OnTopNode},
        {"TranslateName", &MapFileCheck::OnTranslateName},
        {"Translate", &MapFileCheck::OnTranslate},
        {"Class", &MapFileCheck::OnClass},
        {"Include", &MapFileCheck::OnInclude},
        {"Enumeration", &MapFileCheck::OnEnumeration},
    };
    for (const Row& row : kRows) {
        if (element.name == row.name) (this->*row.check)(element);
    }
}

// ---- settings

void MapFileCheck::OnDefaultBranch(const CheckedElement& element) {
    for (const std::string& text : element.texts) {
        default_branch_ = text;
        if (IsBranch(text)) continue;
        findings_.Mistake(element.place, "branch " + text + " is not known" + Right(BranchTexts()));
    }
}

void MapFileCheck::OnLinkage(const CheckedElement& element) {
    element.ForEach("DLL", [&](const CheckedElement& each) {
        for (const std::string& module : each.texts) translators_.Link(module, each.place);
    });
}

void MapFileCheck::OnTopNode(const CheckedElement& element) {
    has_top_node_ = true;
    const std::string* function = element.Find("FunctionName");
    if (function) translators_.CheckFunction(*function, FunctionKind::kTop, element.place);
}

void MapFileCheck::OnTranslateName(const CheckedElement& element) {
    for (const std::string& text : element.texts) default_name_ = TrimmedText(text);
}

void MapFileCheck::OnTranslate(const CheckedElement& element) {
    if (translators_.Check(element)) translations_.insert(TranslateNameOf(element));
}

void MapFileCheck::OnInclude(const CheckedElement& element) {
    if (const std::string* file = element.Find("Mapfile")) Include(*file, element.place);
}

std::string MapFileCheck::TranslateNameOf(const CheckedElement& element) const {
    const std::string given = element.Get("TranslateName");
    return given.empty() ? default_name_ : given;
}

// ---- classes and their attributes

void MapFileCheck::OnClass(const CheckedElement& element) {
    const std::string* name = element.Find("Name");
    if (!name) return;
    CheckedClass* mapped = library_.FindClass(*name);
    if (!mapped) {
        return findings_.Mistake(element.place, "class " + *name + " is not known" +
                                                    findings_.Near(*name, library_.ClassNames()));
    }
    element.ForEach("Attribute",
                    [&](const CheckedElement& each) { OnAttribute(*name, *mapped, each); });
}

void MapFileCheck::OnAttribute(const std::string& class_name, CheckedClass& mapped,
                               const CheckedElement& element) {
    const std::string* name = element.Find("Name");
    if (!name) return;
    const auto found = mapped.attributes.find(*name);
    if (found == mapped.attributes.end()) {
        return TellUnknownAttribute(class_name, *name, element.place);
    }
    CheckContainers(element);
    AddTranslators(*name, element, found->second);
    element.ForEach("Enumeration", [&](const CheckedElement& each) {
        OnOwnEnumeration(*name, each, found->second);
    });
    int variables = 0;
    element.ForEach("SetVar", [&](const CheckedElement& each) {
        if (++variables == 1) return;
        findings_.Mistake(each.place,
                          "one <SetVar> is read in an <Attribute>, and this is another");
    });
}

void MapFileCheck::TellUnknownAttribute(const std::string& class_name, const std::string& name,
                                        FindingPlace place) {
    const std::string told = "attribute " + name + " of class " + class_name;
    const std::string declarer = library_.Declarer(class_name, name);
    if (!declarer.empty()) {
        return findings_.Mistake(
            place, told + " is declared by " + declarer + "; it has to be mapped in that class");
    }
    const std::set<std::string> known = library_.AttributesOf(class_name);
    findings_.Mistake(place,
                      told + " is not known" + findings_.Near(name, {known.begin(), known.end()}));
}

void MapFileCheck::CheckContainers(const CheckedElement& element) {
    if (const std::string* container = element.Find("Container");
        container && !container->empty()) {
        for (const std::string& part : PartsOf(*container)) {
            if (library_.FindClass(part)) continue;
            findings_.Mistake(element.place, "class " + part + " in Container is not known" +
                                                 findings_.Near(part, library_.ClassNames()));
        }
    }
    if (const std::string* id = element.Find("ContainerId"); id && !id->empty()) {
        for (const std::string& part : PartsOf(*id)) {
            if (library_.HasAttribute(part)) continue;
            findings_.Mistake(element.place, "attribute " + part + " in ContainerId is not known" +
                                                 findings_.Near(part, library_.AttributeNames()));
        }
    }
}

void MapFileCheck::AddTranslators(const std::string& name, const CheckedElement& element,
                                  CheckedAttribute& attribute) {
    const std::string scope =
        Parent(element, "Container") + Parent(element, "ContainerId") + ConditionsOf(element);
    for (const char* form : {"Translate", "TranslateArray"}) {
        element.ForEach(
            form, [&](const CheckedElement& each) { AddTranslator(name, each, scope, attribute); });
    }
}

void MapFileCheck::AddTranslator(const std::string& name, const CheckedElement& element,
                                 const std::string& scope, CheckedAttribute& attribute) {
    const std::string* branch = element.Find("Branch");
    if (branch && !branch->empty() && !IsBranch(*branch)) {
        findings_.Mistake(element.place,
                          "Branch " + *branch + " is not known" + Right(BranchTexts()));
    }
    if (!translators_.Check(element)) return;
    const bool is_array = element.name == "TranslateArray";
    const std::string translate_name = TranslateNameOf(element);
    translations_.insert(translate_name);
    if (translate_name == translate_name_) {
        auto& places = is_array ? attribute.array_translators : attribute.plain_translators;
        places.push_back(element.place);
    }
    if (is_array && !attribute.is_array) {
        findings_.Mistake(element.place, "attribute " + name + " is no list; right: <Translate>");
    }
    const std::string in_force = branch && IsBranch(*branch) ? *branch : default_branch_;
    const std::string key =
        element.name + kBreak + translate_name + kBreak + in_force + kBreak + scope;
    const auto [row, is_new] = attribute.translators.emplace(key, element.place);
    if (is_new) return;
    findings_.Mistake(element.place, "attribute " + name +
                                         " has another translator for the same container, "
                                         "conditions and branch on " +
                                         findings_.Shown(row->second, element.place.file));
}

// ---- option names

void MapFileCheck::OnEnumeration(const CheckedElement& element) {
    const std::string* name = element.Find("Name");
    if (!name) return;
    CheckedEnumeration* enumeration = library_.FindEnumeration(*name);
    if (!enumeration) {
        return findings_.Mistake(element.place,
                                 "enumeration " + *name + " is not known" +
                                     findings_.Near(*name, library_.EnumerationNames()));
    }
    AddOptionTable(element, enumeration->option_tables);
    CheckOptions(element, *enumeration);
}

void MapFileCheck::OnOwnEnumeration(const std::string& name, const CheckedElement& element,
                                    CheckedAttribute& attribute) {
    if (attribute.type != CCDMAttrType::kEnumeration) {
        return findings_.Mistake(element.place, "nobody reads <Enumeration> in attribute " + name +
                                                    ", which is " + AttrTypeText(attribute.type));
    }
    if (attribute.enum_names.empty()) return;
    const std::string& wanted = attribute.enum_names.back().name;
    if (element.Get("Name") != wanted) {
        return findings_.Mistake(element.place, "enumeration " + element.Get("Name") +
                                                    " is not that of attribute " + name +
                                                    "; right: " + wanted);
    }
    AddOptionTable(element, attribute.option_tables);
    if (const CheckedEnumeration* known = library_.FindEnumeration(wanted)) {
        CheckOptions(element, *known);
    }
}

void MapFileCheck::AddOptionTable(const CheckedElement& element,
                                  std::map<std::string, FindingPlace>& tables) {
    const auto [row, is_new] = tables.emplace(TranslateNameOf(element), element.place);
    if (is_new) return;
    findings_.Mistake(element.place, "enumeration " + element.Get("Name") +
                                         " takes the place of the one on " +
                                         findings_.Shown(row->second, element.place.file));
}

void MapFileCheck::CheckOptions(const CheckedElement& element,
                                const CheckedEnumeration& enumeration) {
    // An open one without options takes any name.
    const bool is_any_right = !enumeration.is_closed && enumeration.options.empty();
    std::map<std::string, FindingPlace> application_names;
    element.ForEach("Option", [&](const CheckedElement& option) {
        const std::string* name = option.Find("Name");
        if (name && !is_any_right && !enumeration.options.contains(*name)) {
            findings_.Mistake(option.place,
                              "option " + *name + " of enumeration " + element.Get("Name") +
                                  " is not known" +
                                  findings_.Near(*name, NamesIn(enumeration.options)));
        }
        const std::string* application = option.Find("AppName");
        if (!application) return;
        const auto [row, is_new] = application_names.emplace(*application, option.place);
        if (is_new) return;
        findings_.Mistake(option.place,
                          "AppName " + *application + " is declared twice, and the one on " +
                              findings_.Shown(row->second, option.place.file) + " counts");
    });
}

// ---- the whole map

void MapFileCheck::CheckWhole() {
    if (!has_top_node_ && Start().line > 0) {
        findings_.Mistake(Start(), "no <TopNode> names the function that gives the top of a case");
    }
    CheckTranslation();
    for (const auto& [class_name, each] : library_.classes) {
        for (const auto& [name, attribute] : each.attributes) {
            CheckMapped(class_name, name, attribute);
        }
    }
}

// The tree of one that the map does not have is without values. A map that names none is an
// author's who has not come to that.
void MapFileCheck::CheckTranslation() {
    translations_.erase("");
    if (translations_.empty() || translations_.contains(translate_name_)) return;
    std::string known;
    for (const std::string& name : translations_) known += (known.empty() ? "" : ", ") + name;
    findings_.Mistake(Start(), "no such translation: " + translate_name_ + "; expected " + known);
}

void MapFileCheck::CheckMapped(const std::string& class_name, const std::string& name,
                               const CheckedAttribute& attribute) {
    const bool has_plain = !attribute.plain_translators.empty();
    const bool has_array = !attribute.array_translators.empty();
    if (!has_plain && !has_array) {
        findings_.Unmapped(attribute.place,
                           "attribute " + name + " of class " + class_name + " has no translator");
    } else if (attribute.is_array && !has_array) {
        findings_.Mistake(attribute.plain_translators.front(),
                          "attribute " + name + " is a list; right: <TranslateArray>");
    }
}

}  // namespace fixtop
