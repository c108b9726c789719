// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/check_model.h"

#include "mapping/check/class_file_check.h"
#include "mapping/check/map_file_check.h"
#include "model/class_library.h"

namespace fixtop {

std::vector<Finding> CheckModel(const ModelFiles& files) {
    Findings findings;
    CCDMClassLibrary units(files.unitResources);
    if (!units.ReadUnitFile(files.units.c_str())) {
        findings.Mistake({findings.AddFile(files.units), 0},
                         "units can't be read; quantities are not looked up");
    }
    CheckedLibrary library;
    ClassFileCheck classes(library, findings);
    classes.Read(files.classes);
    classes.CheckNames(units.units.Source());
    // Without any class all of the map would be unknown, and why is told already.
    if (library.classes.empty()) return findings.Sorted();
    MapFileCheck map(library, files.translateName, files.unitResources != nullptr, findings);
    map.Read(files.map);
    map.CheckWhole();
    return findings.Sorted();
}

}  // namespace fixtop
