#pragma once

// The neutral view on the command line: its options, and how it is opened. The messages of the
// module about library, map and units go to a log file where one is asked for, and are told when
// the view can't be opened.

#include <string>

#include <CLI/CLI.hpp>

#include "fixtop/fixtop.h"

namespace fixtop {

struct ViewOptions {
    bool neutral = false;
    // Empty: as shipped.
    std::string library;
    std::string map;
    std::string units;
    std::string translate;
    std::string log;  // empty: none is written
};

// The choice of the neutral view; given before its files, they are refused without it.
void AddNeutral(CLI::App& app, ViewOptions& view);
// The files of the neutral view, and those of its class library alone.
void AddModel(CLI::App& app, ViewOptions& view);
void AddLibrary(CLI::App& app, ViewOptions& view);

// The root of the neutral view of a tree, and the definitions of its classes; null and why. What is
// wrong with units that were asked for stands in `problem` beside a root.
Ref<FIEntry> OpenNeutral(FIEntry& top, const ViewOptions& view, std::string& problem);
Ref<FIEntry> OpenDictionary(const ViewOptions& view, std::string& problem);

}  // namespace fixtop
