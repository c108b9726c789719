// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/class_file_check.h"

#include <algorithm>
#include <limits>

#include "mapping/check/listed_names.h"
#include "model/class_file_text.h"
#include "model/unit_source.h"

namespace fixtop {

namespace {

// The types that name something, and in which element.
struct NamingType {
    CCDMAttrType type;
    const char* element;
    std::vector<Mention> CheckedAttribute::*mentions;
};
constexpr NamingType kNamingTypes[] = {
    {CCDMAttrType::kObject, "ClassName", &CheckedAttribute::class_names},
    {CCDMAttrType::kEnumeration, "EnumName", &CheckedAttribute::enum_names},
};

void Gather(const CheckedElement& element, const char* child, std::vector<Mention>& mentions) {
    element.ForEach(child, [&](const CheckedElement& each) {
        for (const std::string& text : each.texts) mentions.push_back({text, each.place});
    });
}

std::vector<std::string> QuantityNames(CCDMUnitSource& units) {
    std::vector<std::string> names;
    for (int number = 1; *units.QuantityName(number) != '\0'; ++number) {
        names.emplace_back(units.QuantityName(number));
    }
    return names;
}

}  // namespace

ClassFileCheck::ClassFileCheck(CheckedLibrary& library, Findings& findings)
    : FileWalk(kClassFileRule, true, std::numeric_limits<std::size_t>::max(), findings),
      library_(library) {}

void ClassFileCheck::OnElement(const CheckedElement& element) {
    struct Row {
        const char* name;
        void (ClassFileCheck::*check)(const CheckedElement& element);
    };
    static constexpr Row kRows[] = {
        {"Header", &ClassFileCheck::OnHeader},
        {"Include", &ClassFileCheck::OnInclude},
        {"Class", &ClassFileCheck::OnClass},
        {"Enumeration", &ClassFileCheck::OnEnumeration},
        {"ClassAttributes", &ClassFileCheck::OnClassAttributes},
    };
    for (const Row& row : kRows) {
        if (element.name == row.name) (this->*row.check)(element);
    }
}

// ---- what a file declares

void ClassFileCheck::OnHeader(const CheckedElement& element) {
    element.ForEach("Include", [&](const CheckedElement& each) { OnInclude(each); });
}

void ClassFileCheck::OnInclude(const CheckedElement& element) {
    const std::string* file = element.Find("Library");
    if (file && !IsOtherLibrary(*file)) Include(*file, element.place);
}

void ClassFileCheck::OnClass(const CheckedElement& element) {
    CheckedClass& declared = library_.classes[element.Get("Name")];
    Gather(element, "Superclass", declared.superclasses);
    std::erase_if(declared.superclasses,
                  [](const Mention& mention) { return IsRootClass(mention.name); });
}

void ClassFileCheck::OnEnumeration(const CheckedElement& element) {
    const std::string name = element.Get("Name");
    CheckedEnumeration& enumeration = library_.enumerations[name];
    if (element.Get("EnumIsClosed").starts_with('1')) enumeration.is_closed = true;
    element.ForEach("Option", [&](const CheckedElement& option) {
        const std::string* option_name = option.Find("Name");
        if (!option_name) return;
        const auto [row, is_new] = enumeration.options.emplace(*option_name, option.place);
        if (is_new) return;
        findings_.Mistake(option.place, "option " + *option_name + " of enumeration " + name +
                                            " is declared twice, first on " +
                                            findings_.Shown(row->second, option.place.file));
    });
}

void ClassFileCheck::OnClassAttributes(const CheckedElement& element) {
    std::string name = element.Get("Name");
    for (const CheckedElement& child : element.children) {
        if (child.name == "ClassName" && !child.texts.empty()) name = child.texts.back();
        if (child.name == "Attribute") AddAttribute(name, child);
    }
    if (name.empty()) findings_.Mistake(element.place, "<ClassAttributes> has no Name");
    library_.classes[name];
}

void ClassFileCheck::AddAttribute(const std::string& class_name, const CheckedElement& element) {
    CheckType(element);
    const std::string* name = element.Find("Name");
    if (!name) return;
    CheckedAttribute declared;
    declared.place = element.place;
    declared.type = AttrTypeFromText(element.Get("Type"));
    const std::string* multiplicity = element.Find("Multiplicity");
    declared.is_array = multiplicity && *multiplicity != "1";
    for (const NamingType& row : kNamingTypes) Gather(element, row.element, declared.*row.mentions);
    Gather(element, "QuantityType", declared.quantities);
    AddKeys(element, declared);
    const auto [row, is_new] =
        library_.classes[class_name].attributes.emplace(*name, std::move(declared));
    if (is_new) return;
    findings_.Mistake(element.place, "attribute " + *name + " of class " + class_name +
                                         " is declared twice, first on " +
                                         findings_.Shown(row->second.place, element.place.file));
}

void ClassFileCheck::AddKeys(const CheckedElement& element, CheckedAttribute& attribute) {
    for (const CheckedElement& child : element.children) {
        if (child.name == "CustomMetaData") {
            for (const std::string& text : child.texts) {
                for (std::string& key : KeysInMetaData(text)) {
                    attribute.keys.push_back({std::move(key), child.place});
                }
            }
        }
        child.ForEach("CustomProperty", [&](const CheckedElement& property) {
            const std::string* value = property.Find("Value");
            if (property.Get("Name") == "Key" && value) {
                attribute.keys.push_back({*value, property.place});
            }
        });
    }
}

void ClassFileCheck::CheckType(const CheckedElement& element) {
    const std::string* type = element.Find("Type");
    if (!type) return;
    const auto known = AttrTypeTexts();
    if (std::find(known.begin(), known.end(), *type) != known.end()) return;
    findings_.Mistake(element.place, "Type " + *type + " is not known" + Right(known));
}

// ---- what is known of all files

void ClassFileCheck::CheckNames(CCDMUnitSource* units) {
    for (const auto& [class_name, each] : library_.classes) {
        CheckSuperclasses(class_name, each);
        for (const auto& [name, attribute] : each.attributes) {
            CheckAttribute(name, attribute);
            if (!units) continue;
            for (const Mention& quantity : attribute.quantities) CheckQuantity(quantity, *units);
        }
    }
}

void ClassFileCheck::CheckSuperclasses(const std::string& name, const CheckedClass& each) {
    for (const Mention& superclass : each.superclasses) {
        const std::string told = "superclass " + superclass.name + " of class " + name;
        if (!library_.FindClass(superclass.name)) {
            findings_.Mistake(
                superclass.place,
                told + " is not known" + findings_.Near(superclass.name, library_.ClassNames()));
        } else if (library_.LeadsTo(superclass.name, name)) {
            findings_.Mistake(superclass.place, told + " leads back to it");
        }
    }
}

void ClassFileCheck::CheckAttribute(const std::string& name, const CheckedAttribute& attribute) {
    for (const NamingType& row : kNamingTypes) {
        const std::vector<Mention>& mentions = attribute.*row.mentions;
        if (row.type == attribute.type) {
            if (!mentions.empty()) continue;
            findings_.Mistake(attribute.place, "attribute " + name + " of Type " +
                                                   AttrTypeText(row.type) + " has no <" +
                                                   row.element + ">");
        } else if (!mentions.empty()) {
            findings_.Mistake(mentions.back().place, std::string("<") + row.element +
                                                         "> is for attributes of Type " +
                                                         AttrTypeText(row.type) + ", " + name +
                                                         " is " + AttrTypeText(attribute.type));
        }
    }
    CheckTypeName(name, attribute);
    CheckKeys(name, attribute);
}

void ClassFileCheck::CheckTypeName(const std::string& name, const CheckedAttribute& attribute) {
    const auto tell = [&](const Mention& mention, const char* what,
                          const std::vector<std::string>& known) {
        findings_.Mistake(mention.place, std::string(what) + " " + mention.name + " of attribute " +
                                             name + " is not known" +
                                             findings_.Near(mention.name, known));
    };
    for (const Mention& mention : attribute.class_names) {
        if (!library_.FindClass(mention.name)) tell(mention, "class", library_.ClassNames());
    }
    for (const Mention& mention : attribute.enum_names) {
        if (library_.FindEnumeration(mention.name)) continue;
        tell(mention, "enumeration", library_.EnumerationNames());
    }
}

void ClassFileCheck::CheckKeys(const std::string& name, const CheckedAttribute& attribute) {
    if (attribute.keys.empty()) return;
    if (attribute.type != CCDMAttrType::kObject || !attribute.is_array) {
        return findings_.Mistake(attribute.keys.front().place,
                                 "a key is for lists of objects, attribute " + name + " is none");
    }
    if (attribute.class_names.empty()) return;
    const std::string& class_name = attribute.class_names.back().name;
    if (!library_.FindClass(class_name)) return;
    const std::set<std::string> known = library_.AttributesOf(class_name);
    for (const Mention& key : attribute.keys) {
        if (known.contains(key.name)) continue;
        findings_.Mistake(key.place, "key " + key.name + " of attribute " + name +
                                         " is no attribute of class " + class_name +
                                         findings_.Near(key.name, {known.begin(), known.end()}));
    }
}

void ClassFileCheck::CheckQuantity(const Mention& quantity, CCDMUnitSource& units) {
    if (units.QuantityId(quantity.name.c_str()) > 0) return;
    findings_.Mistake(quantity.place, "quantity " + quantity.name + " is not known" +
                                          findings_.Near(quantity.name, QuantityNames(units)));
}

}  // namespace fixtop
