// SPDX-License-Identifier: Apache-2.0
#pragma once

// The objects of a flowsheet file with the names and connections that the drawing gives them. The
// file lists its objects twice, joined by an opaque id: once with their numbers, once as drawn.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "reading.h"
#include "xml_tree.h"

namespace fixtop::casehost::importer {

enum class ObjectKind { material_stream, energy_stream, unit };

struct FileObject {
    XmlNode node;     // with the numbers
    XmlNode graphic;  // as drawn
    std::string id;
    std::string tag;   // the name that a user sees, unique in the file
    std::string word;  // class word
    ObjectKind kind = ObjectKind::unit;
};

// One connection. Every connection joins a stream and a unit operation.
struct FileEdge {
    int stream = 0;  // indices of objects
    int unit = 0;
    bool into_unit = false;
    int port = 0;  // position among the unit's inlets or outlets
};

struct FlowsheetFile {
    std::vector<FileObject> objects;
    std::unordered_map<std::string, int> by_id;
    std::vector<FileEdge> edges;

    // Null for an unknown id.
    const FileObject* Find(std::string_view id) const;
};

// Faults stand in the problems; the objects that could be read are in the result.
FlowsheetFile ReadObjects(Reading& reading, XmlNode root);

}  // namespace fixtop::casehost::importer
