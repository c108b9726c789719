// SPDX-License-Identifier: Apache-2.0
#pragma once

// The check of map files against what class files declare.

#include <set>
#include <string>

#include "mapping/check/checked_library.h"
#include "mapping/check/file_walk.h"
#include "mapping/check/findings.h"
#include "mapping/check/translator_check.h"

namespace fixtop {

class MapFileCheck final : public FileWalk {
 public:
    // `translate_name` is the one in force.
    MapFileCheck(CheckedLibrary& library, std::string translate_name, bool has_resources,
                 Findings& findings);

    // What only the whole map tells.
    void CheckWhole();

 protected:
    void OnElement(const CheckedElement& element) override;

 private:
    void OnDefaultBranch(const CheckedElement& element);
    void OnLinkage(const CheckedElement& element);
    void OnTopNode(const CheckedElement& element);
    void OnTranslateName(const CheckedElement& element);
    void OnTranslate(const CheckedElement& element);
    void OnClass(const CheckedElement& element);
    void OnInclude(const CheckedElement& element);
    void OnEnumeration(const CheckedElement& element);

    void OnAttribute(const std::string& class_name, CheckedClass& mapped,
                     const CheckedElement& element);
    void TellUnknownAttribute(const std::string& class_name, const std::string& name,
                              FindingPlace place);
    void CheckContainers(const CheckedElement& element);
    void AddTranslators(const std::string& name, const CheckedElement& element,
                        CheckedAttribute& attribute);
    void AddTranslator(const std::string& name, const CheckedElement& element,
                       const std::string& scope, CheckedAttribute& attribute);
    void OnOwnEnumeration(const std::string& name, const CheckedElement& element,
                          CheckedAttribute& attribute);
    void CheckOptions(const CheckedElement& element, const CheckedEnumeration& enumeration);
    void AddOptionTable(const CheckedElement& element, std::map<std::string, FindingPlace>& tables);
    void CheckTranslation();
    void CheckMapped(const std::string& class_name, const std::string& name,
                     const CheckedAttribute& attribute);
    // Of an element, or else the default one.
    std::string TranslateNameOf(const CheckedElement& element) const;

    CheckedLibrary& library_;
    const std::string translate_name_;
    std::string default_name_;
    std::set<std::string> translations_;  // that have a translator
    std::string default_branch_ = "Both";
    TranslatorCheck translators_;
    bool has_top_node_ = false;
};

}  // namespace fixtop
