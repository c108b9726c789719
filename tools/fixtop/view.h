// SPDX-License-Identifier: Apache-2.0
#pragma once

// The neutral view on the command line: its options. The messages of the module about library, map
// and units go to a log file where one is asked for, and are told when the view can't be opened.

#include <string>

#include <CLI/CLI.hpp>

#include "fixtop/client/case.h"

namespace fixtop {

struct ViewOptions {
    bool neutral = false;
    client::ModelFiles files;
};

// Some file other than the shipped ones was named.
bool HasFiles(const ViewOptions& view);

// The choice of the neutral view; given before its files, they are refused without it.
void AddNeutral(CLI::App& app, ViewOptions& view);
// The files of the neutral view, and those of its class library alone.
void AddModel(CLI::App& app, ViewOptions& view, bool with_units = true);
void AddLibrary(CLI::App& app, ViewOptions& view, bool with_units = true);

// A message of several lines, each of them on one.
std::string OneLineEach(const std::string& text);

}  // namespace fixtop
