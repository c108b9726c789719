// SPDX-License-Identifier: Apache-2.0
#pragma once

// Opening the neutral view: units, class library and map are read, and a tree is built on them. The
// library lives as long as the tree: the last context, entry or cursor that is released frees it.
//
// Each answers null, with the reason in the log, when there is no such tree.

#include <string>

#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "fixtop/reference.h"
#include "mapping/nodes/class_context.h"
#include "mapping/open/model_files.h"
#include "mapping/open/open_library.h"
#include "platform/module_system.h"

namespace fixtop {

// From the class definitions alone, without units and application, at the given class.
Ref<CCDMClassContext> OpenPureModel(const std::string& file, const std::string& class_name,
                                    ModuleHandle resources);
// The shipped library at its top class.
Ref<CCDMClassContext> OpenPureModel(ModuleHandle resources);
// The library and the class of one name.
Ref<CCDMClassContext> OpenPureModel(const std::string& name, ModuleHandle resources);
// On a node of the application, at the given class. The reference is copied.
Ref<CCDMClassContext> OpenModelOnNode(const ModelFiles& files, const std::string& class_name,
                                      FIReferenceBase& application);
// On the given top entry, or with null on the one that the map's function gives, at the top class:
// the map's root translator leads from there to where the tree stands. A map whose function is not
// found opens on neither.
Ref<CCDMClassContext> OpenModelOnTop(const ModelFiles& files, FIEntry* top = nullptr);
// The definitions alone: units and classes are read. Without units the library is whole but for the
// quantities.
Ref<OpenLibrary> ReadDefinitions(const ModelFiles& files);
// The same as a tree.
Ref<FIEntry> OpenDictionary(const ModelFiles& files);

}  // namespace fixtop
