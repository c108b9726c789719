// SPDX-License-Identifier: Apache-2.0
#pragma once

// Unit operations: the rows of unit_rows.h, and what stands in lists below the object.

#include "flowsheet_file.h"

namespace fixtop::casehost::importer {

// Sets the type and the variables. An object of an unknown class keeps its class word as type and
// its numbers without a unit, named as in the file; a remark tells so.
void ReadUnit(Reading& reading, const FlowsheetFile& file, XmlNode root, const FileObject& unit,
              ObjectData& object);

// The parts of ReadUnit that stand in lists, by class.
void ReadColumnLists(Reading& reading, const FlowsheetFile& file, const FileObject& unit,
                     ObjectData& object);
void ReadReactorLists(Reading& reading, XmlNode root, const FileObject& unit, ObjectData& object);
void ReadRecycleLists(Reading& reading, const FileObject& unit, ObjectData& object);

}  // namespace fixtop::casehost::importer
