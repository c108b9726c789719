// SPDX-License-Identifier: Apache-2.0
#pragma once

// The readers of the parts of a flowsheet file.

#include "flowsheet_file.h"

namespace fixtop::casehost::importer {

inline constexpr std::size_t kMaxDocumentBytes = std::size_t{512} << 20;
// A document may grow to this many times the size of its archive; small ones always may.
inline constexpr std::size_t kMaxInflation = 200;
inline constexpr std::size_t kFreeInflationBytes = std::size_t{1} << 20;

// The one XML document of an archive, inflated. One whose directory tells a size past a limit is
// not begun; inflation stops as soon as the document grows past one, whatever the directory tells.
// Null when the archive is not as it should be, and a problem then says why.
std::optional<std::string> InflateDocument(std::string_view archive, Problems& problems);

// Also fills the compound names of the reading.
void ReadCompounds(Reading& reading, XmlNode root, CaseData& data);
std::string ReadPackageName(XmlNode root);
// The reactions as objects, and in the basis with the sets that they are in.
void ReadReactions(Reading& reading, XmlNode root, CaseData& data);

// A material stream has its overall numbers, arrays by compound, and arrays "Phase ..." over the
// phases that exist, some of them by compound as well. A phase exists when its mole fraction is
// there and greater than 0; the numbers that the file holds for other phases are leftovers.
void ReadMaterialStream(Reading& reading, const FileObject& stream, ObjectData& object);
// `specified`: a unit operation takes its duty from this stream.
void ReadEnergyStream(Reading& reading, const FileObject& stream, bool specified,
                      ObjectData& object);

// Sets the type and the variables of a unit operation: the rows of unit_rows.h, and what stands in
// lists below the object. An object of an unknown class keeps its class word as type and its
// numbers without a unit, named as in the file; a remark tells so.
void ReadUnit(Reading& reading, const FlowsheetFile& file, XmlNode root, const FileObject& unit,
              ObjectData& object);
// When all objects and ports are there: feeds and products of separators and reactors by the names
// of their phases, what is inside of them, and what goes into and out of reactors.
void ReadVesselStreams(Reading& reading, std::vector<ObjectData>& objects);
void ReadColumnLists(Reading& reading, const FlowsheetFile& file, const FileObject& unit,
                     ObjectData& object);

}  // namespace fixtop::casehost::importer
