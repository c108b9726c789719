#pragma once

// Opening the neutral view: class library, map and units are read, and a tree is built on them. The
// library lives as long as the tree: the last context, entry or cursor that is released frees it.
//
// Each answers a counted context that the caller owns, or null, with the reason in the log.

#include <string>

#include "framework/entry.h"
#include "framework/ref.h"
#include "platform/modules.h"

class FIReferenceBase;

struct ModelFiles {
    std::string classes = "QSIAllLibraries.xml";
    std::string map = "hovexmap.xml";
    std::string units = "hunits.xml";
    std::string translateName = "Hovex";
    ModuleHandle unitResources = nullptr;   // where unit and map files have their resources
    ModuleHandle classResources = nullptr;  // null: the same place
};

// From the class definitions alone, without an application: at "QSISimulation", or at the class that
// has the name of the file.
Ref<FIContext> OpenPureModel(ModuleHandle resources);
Ref<FIContext> OpenPureModel(const std::string& name, ModuleHandle resources);
// On a node of the application, at the given class. The reference is copied.
Ref<FIContext> OpenModelOnNode(const ModelFiles& files, const std::string& class_name,
                               FIReferenceBase& application);
// On the top node that the map's function gives, at "QSISimulation".
Ref<FIContext> OpenModelOnTop(const ModelFiles& files);
