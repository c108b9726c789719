// SPDX-License-Identifier: Apache-2.0
#pragma once

// The files of the neutral view.

#include <string>

#include "model/model_types.h"
#include "platform/module_system.h"

namespace fixtop {

inline constexpr char kModelClasses[] = "QSIAllLibraries.xml";
inline constexpr char kTopClass[] = "QSISimulation";

struct ModelFiles {
    std::string classes = kModelClasses;
    std::string map = "hovexmap.xml";
    std::string units = "hunits.xml";
    std::string translateName = "Hovex";
    ModuleHandle unitResources = nullptr;   // where unit and map files have their resources
    ModuleHandle classResources = nullptr;  // null: the same place
    ListLength listLength = ListLength::kByte;
};

}  // namespace fixtop
