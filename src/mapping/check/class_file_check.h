// SPDX-License-Identifier: Apache-2.0
#pragma once

// The check of class files, which gathers what they declare on the way.

#include "mapping/check/checked_library.h"
#include "mapping/check/file_walk.h"
#include "mapping/check/findings.h"

namespace fixtop {

class CCDMUnitSource;

class ClassFileCheck final : public FileWalk {
 public:
    ClassFileCheck(CheckedLibrary& library, Findings& findings);

    // What only all files together tell: names that are unknown. Without units quantities are not
    // looked up.
    void CheckNames(CCDMUnitSource* units);

 protected:
    void OnElement(const CheckedElement& element) override;

 private:
    void OnHeader(const CheckedElement& element);
    void OnInclude(const CheckedElement& element);
    void OnClass(const CheckedElement& element);
    void OnEnumeration(const CheckedElement& element);
    void OnClassAttributes(const CheckedElement& element);
    void AddAttribute(const std::string& class_name, const CheckedElement& element);
    void AddKeys(const CheckedElement& element, CheckedAttribute& attribute);
    void CheckType(const CheckedElement& element);

    void CheckSuperclasses(const std::string& name, const CheckedClass& each);
    void CheckAttribute(const std::string& name, const CheckedAttribute& attribute);
    void CheckTypeName(const std::string& name, const CheckedAttribute& attribute);
    void CheckKeys(const std::string& name, const CheckedAttribute& attribute);
    void CheckQuantity(const Mention& quantity, CCDMUnitSource& units);

    CheckedLibrary& library_;
};

}  // namespace fixtop
