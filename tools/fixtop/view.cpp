// SPDX-License-Identifier: Apache-2.0
#include "view.h"

#include <sstream>

#include "line_text.h"

namespace fixtop {

namespace {

constexpr char kGroup[] = "Neutral view";
constexpr char kNeutral[] = "--neutral";

struct OptionRow {
    const char* name;
    const char* type;
    const char* help;
};

void Add(CLI::App& app, const OptionRow& row, std::string& text) {
    CLI::Option* option = app.add_option(row.name, text, row.help);
    option->type_name(row.type)->group(kGroup);
    if (CLI::Option* neutral = app.get_option_no_throw(kNeutral)) option->needs(neutral);
}

}  // namespace

bool HasFiles(const ViewOptions& view) {
    const client::ModelFiles& files = view.files;
    for (const std::string* name :
         {&files.classes, &files.map, &files.units, &files.translate, &files.log}) {
        if (!name->empty()) return true;
    }
    return false;
}

void AddNeutral(CLI::App& app, ViewOptions& view) {
    app.add_flag(kNeutral, view.neutral,
                 "Show the case as classes of the library; paths begin below QSISimulation")
        ->group(kGroup);
}

void AddModel(CLI::App& app, ViewOptions& view, bool with_units) {
    AddLibrary(app, view, with_units);
    Add(app, {"--map", "FILE", "Map to the case; hovexmap.xml when it is left out"},
        view.files.map);
    Add(app, {"--translate", "NAME", "Translation of the map; Hovex when it is left out"},
        view.files.translate);
}

void AddLibrary(CLI::App& app, ViewOptions& view, bool with_units) {
    Add(app, {"--library", "FILE", "Class library; QSIAllLibraries.xml when it is left out"},
        view.files.classes);
    if (with_units) {
        Add(app, {"--units", "FILE", "Names of units; hunits.xml when it is left out"},
            view.files.units);
    }
    Add(app, {"--log", "FILE", "Write to it what the module says about these files"},
        view.files.log);
}

std::string OneLineEach(const std::string& text) {
    std::string lines;
    std::istringstream read(text);
    for (std::string line; std::getline(read, line);) {
        lines += (lines.empty() ? "" : "\n") + OneLineMessage(line);
    }
    return lines;
}

}  // namespace fixtop
