// SPDX-License-Identifier: Apache-2.0
#pragma once

// The neutral dictionary of what a simulation case contains: classes, their attributes,
// enumerations and units. It knows nothing of a simulator. It is read once, units first, then
// classes, then maps, and only read from then on; its records are held by plain pointers and end
// with it.
//
// A read that fails has logged why and leaves in the library what it had stored.

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "diagnostics/instance_counts.h"
#include "model/class_record.h"
#include "model/enumeration.h"
#include "model/model_types.h"
#include "model/translator_record.h"
#include "model/units_list.h"
#include "platform/modules.h"

namespace fixtop {

inline namespace FI {
class FIEntry;
}

struct SemanticModule;

class CCDMClassLibrary : private Counted<CountedClass::CCDMClassLibrary> {
 public:
    // Without a module unit and map files have no resources to fall back on. Without a second one
    // class library files take theirs from the same place.
    explicit CCDMClassLibrary(ModuleHandle unit_resources = nullptr,
                              ModuleHandle class_resources = nullptr)
        : unitResourceModule(unit_resources),
          classResourceModule(class_resources != nullptr ? class_resources : unit_resources) {}
    CCDMClassLibrary(const CCDMClassLibrary&) = delete;
    CCDMClassLibrary& operator=(const CCDMClassLibrary&) = delete;

    // Null when absent. What enriches the model looks up and can't create.
    CCDMClass* FindClass(std::string_view name) const;
    CCDMEnumeration* FindEnumeration(const std::string& name) const;
    // What defines the model creates a record with its first mention.
    CCDMClass* GetOrCreateClass(const std::string& name);
    CCDMEnumeration* GetOrCreateEnumeration(const std::string& name);

    // A file beside the program or in the working directory, else the resource of that name. Files
    // that it includes are read in their place, each file once; a failing include is passed over.
    bool ReadClassFile(const std::string& file);
    // False for a null name. Reads the file again each time.
    bool ReadUnitFile(const char* file);

    std::map<std::string, std::unique_ptr<CCDMClass>> classes;
    std::map<std::string, std::unique_ptr<CCDMEnumeration>> enumerations;
    TranslatorMap rootTranslators;  // run once on the top node when a model is opened
    const SemanticModule* semanticModule = nullptr;  // what a map's functions are looked up in
    FIEntry* (*topNodeFunction)() = nullptr;         // gives the top application entry
    std::string translateName;                       // in force for this run
    std::string defaultTranslateName;                // of translators that carry none
    std::vector<std::string> classFiles;             // already read
    std::vector<std::string> mapFiles;               // already read
    ListLength listLength = ListLength::kByte;
    CCDMBranch defaultBranch = CCDMBranch::kBoth;
    CCDMUnitsList units;
    ModuleHandle unitResourceModule;
    ModuleHandle classResourceModule;

 private:
    // Of the records in `classes`, by their names: superclasses are found by name on each walk.
    std::unordered_map<std::string_view, CCDMClass*> class_index_;
};

}  // namespace fixtop
