// SPDX-License-Identifier: Apache-2.0
#pragma once

// The way that class library, map and unit files are read: a file of the name in the search
// folders, else the resource of that name, through the element handlers of the reader.

#include <string>

#include "xml/sax_element_handler.h"

namespace fixtop {

// How deep files include each other.
inline constexpr int kMostIncludes = 64;

enum class ModelFileOrigin {
    kCaller,   // any name
    kInclude,  // out of a file: the name must stay in the search folders
};

// `kind` is the files' word in the log: "CCDM", "Unit". False when the document could not be found
// or parsed; why is logged.
bool ReadModelFile(const char* kind, const std::string& name, ModelFileOrigin origin,
                   bool has_resources, SaxElementHandler& document);
// The path of a file in the search folders; empty when the resource of that name is meant.
std::string FindModelFile(const std::string& name, ModelFileOrigin origin);
// Tells, once for each, that a file takes the place of a built-in one.
void TellReplaced(const std::string& path);
// Logs that a file could not be parsed; false.
bool FailModelFile(const char* kind, const std::string& name);

}  // namespace fixtop
