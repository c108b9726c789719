// SPDX-License-Identifier: Apache-2.0
#pragma once

// Objects, their ports and the flowsheets inside them in case files.

#include "casehost/case_file.h"
#include "json/json_text.h"
#include "json/json_tree.h"
#include "json/shape_json.h"

namespace fixtop::casehost::json {

// The lists of objects beside the flowsheet.
struct ObjectList {
    const char* name;
    std::vector<ObjectData> CaseData::*objects;
};
inline constexpr ObjectList kObjectLists[] = {
    {"utilities", &CaseData::utilities},
    {"dataTables", &CaseData::data_tables},
    {"reactions", &CaseData::reactions},
    {"published", &CaseData::published},
};

// Reads lists of objects; counts all objects that come through it against kMaxCaseObjects, and
// their values against kMaxCaseValues.
class ObjectReader {
 public:
    ObjectReader(Tree& tree, const Shapes& shapes) : tree_(tree), shapes_(shapes) {}

    // `list` may be null.
    void Read(const JsonNode* list, std::vector<ObjectData>& objects);
    // The same in pieces: one object after the other, false when no more are taken; then their
    // names. `list` is null where the nodes are gone.
    bool ReadNext(const JsonNode& node, std::vector<ObjectData>& objects);
    void CheckNames(const JsonNode* list, const std::vector<ObjectData>& objects);
    void ReadFlowsheet(const JsonNode& node, FlowsheetData& flowsheet);

 private:
    void ReadObject(const JsonNode& node, ObjectData& object);
    const Shape& ShapeOf(const JsonNode* name);

    Tree& tree_;
    const Shapes& shapes_;
    std::size_t count_ = 0;
    std::size_t room_ = kMaxCaseValues;
    bool full_ = false;
};

// An array at `depth`, a line for each object.
void WriteObjects(JsonText& text, const std::vector<ObjectData>& objects, ShapeNames& shapes,
                  int depth);
// An object at `depth`.
void WriteFlowsheet(JsonText& text, const FlowsheetData& flowsheet, ShapeNames& shapes, int depth);

// Checks that ports and attachments of a case that was read name objects of the case, and that a
// unit operation has each port once. Problems stand at the JSON nodes below `root` that `data` was
// read from, or where those are gone at some node that says nothing.
void CheckReferences(Tree& tree, const JsonNode& root, const CaseData& data);

}  // namespace fixtop::casehost::json
